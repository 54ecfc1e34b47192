#include <gtest/gtest.h>

#include <filesystem>

#include "base/MessageKeys.h"
#include "sff/PcxExport.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::MakeSprite;
using test::ReadFile;
namespace fs = std::filesystem;

// fighter.sff: 9000,0 and 5,0 with palettes of their own; 0,0 the palette owner; 0,1 without a
// palette; 0,2 linked to 0,1 with palette flag `linkFlag`.
struct Opened {
    std::vector<SffSprite> sprites;
    SffState state;
    SpriteTable table;
};

void Open(Opened& o, uint8_t linkFlag) {
    o.sprites = {MakeSprite(9000, 0, 0, true, 0, 0, 5, 4), MakeSprite(0, 0, 0, true, 36, 105, 6, 3),
                 MakeSprite(0, 1, 1, false, -3, 90, 7, 2), test::MakeLink(0, 2, linkFlag, 2),
                 MakeSprite(5, 0, 0, true, 1, 2, 3, 3)};
    ASSERT_TRUE(OpenSffBytes(EncodeSff(kSharedPaletteMode, o.sprites), "fighter.sff", "fighter.sff", o.state, o.table,
                             AppIni{}, {}));
}

// Flag 0 and the owner: copies of their bytes. Flag 1: the data and the shared palette.
// A linked row names its target's file and writes the same bytes, whatever its own flag.
TEST(PcxExport, EachFileHoldsItsSpritesBytesWithTheSharedPaletteWhereTheFlagIsOne) {
    for (const uint8_t linkFlag : {1, 0}) {
        SCOPED_TRACE(int(linkFlag));
        Opened o;
        Open(o, linkFlag);
        test::TempDir dir;
        int between = 0;
        ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path(), [&] { ++between; }));
        EXPECT_EQ(between, 5);
        EXPECT_EQ(ReadFile(dir / "fighter_09000_00000.pcx"), o.sprites[0].Data);
        EXPECT_EQ(ReadFile(dir / "fighter_00005_00000.pcx"), o.sprites[4].Data);
        EXPECT_EQ(ReadFile(dir / "fighter_00000_00000.pcx"), o.sprites[1].Data);
        const auto flagged = test::Then(o.sprites[2].Data, test::PaletteOf(o.sprites[1].Data));
        EXPECT_EQ(ReadFile(dir / "fighter_00000_00001.pcx"), flagged);
        EXPECT_EQ(CutSubfile(o.state, o.state.Subfiles[3]), flagged);
        EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), {}), 4);
    }
}

TEST(PcxExport, RowsWithAPcxPathAreSkippedNumbersDoNotRenameAndBadPPosIsRefused) {
    Opened o;
    Open(o, 1);
    test::TempDir dir;
    test::WriteFile(dir / "fighter_09000_00000.pcx", std::vector<uint8_t>(5000, 'x'));  // replaced whole
    for (int place = 2; place <= o.table.RowCount(); ++place) o.table.SetCell(place, Column::PcxPath, "/art/");
    o.table.SetCell(1, Column::GroupNo, "77");
    o.table.SetCell(1, Column::PalType, "1");  // PalType never decides the bytes
    ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path()));
    EXPECT_EQ(ReadFile(dir / "fighter_09000_00000.pcx"), o.sprites[0].Data);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), {}), 1);

    o.table.SetCell(1, Column::PcxPath, "/art/");
    test::TempDir empty;
    EXPECT_TRUE(SaveAllPcx(o.state, o.table, empty.Path()));
    EXPECT_TRUE(fs::is_empty(empty.Path()));

    o.table.SetCell(2, Column::PPos, "99");  // read nowhere out of bounds
    const auto bad = SavePcx(o.state, o.table, empty.Path(), 2);
    ASSERT_FALSE(bad);
    EXPECT_NE(bad.error().Detail.find("99"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(empty.Path()));
}

// A file changed on disk since it was opened writes nothing (what counts as one: FileReadTest).
TEST(PcxExport, NothingIsWrittenFromAFileChangedSinceItWasOpened) {
    test::TempDir dir;
    const std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, {MakeSprite(1, 0, 0, true)});
    test::WriteFile(dir / "f.sff", bytes);
    fs::last_write_time(dir / "f.sff", fs::file_time_type::clock::now() - std::chrono::hours(1));
    SffState state;
    SpriteTable table;
    ASSERT_TRUE(OpenSff(dir / "f.sff", "f.sff", state, table, AppIni{}, {}));
    std::vector<uint8_t> other = bytes;
    other.back() ^= 0xFF;
    test::WriteFile(dir / "f.sff", other);
    fs::create_directory(dir / "out");
    const Status saved = SaveAllPcx(state, table, dir / "out/");
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().Key, msg::FileChanged);
    EXPECT_TRUE(fs::is_empty(dir / "out"));
}

}  // namespace
}  // namespace tarvolin
