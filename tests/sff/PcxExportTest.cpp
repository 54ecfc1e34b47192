#include <gtest/gtest.h>

#include <filesystem>

#include "sff/PcxExport.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::ReadFile;
namespace fs = std::filesystem;

// fighter.sff: 9000,0 with its own palette; 0,0 the palette owner; 0,1 without a
// palette; 0,2 linked to 0,1 with palette flag `linkFlag`; 5,0 with its own palette.
struct Opened {
    std::vector<SffSprite> sprites;
    SffState state;
    SpriteTable table;
};

void Open(Opened& o, uint8_t linkFlag) {
    o.sprites = {test::MakeSprite(9000, 0, 0, true, 0, 0, 5, 4), test::MakeSprite(0, 0, 0, true, 36, 105, 6, 3),
                 test::MakeSprite(0, 1, 1, false, -3, 90, 7, 2), test::MakeSprite(0, 2, linkFlag, false),
                 test::MakeSprite(5, 0, 0, true, 1, 2, 3, 3)};
    o.sprites[3].Data.clear();
    o.sprites[3].LinkIndex = 2;
    auto r = OpenSffBytes(EncodeSff(kSharedPaletteMode, o.sprites), "fighter.sff", "fighter.sff", o.state, o.table,
                          AppIni{}, [](const std::string&, int) { return true; });
    ASSERT_TRUE(r.ok()) << r.error().Detail;
}

TEST(PcxExport, EachFileHoldsItsSpritesBytesWithTheSharedPaletteWhereTheFlagIsOne) {
    for (const uint8_t linkFlag : {1, 0}) {
        SCOPED_TRACE("linked sprite's flag " + std::to_string(linkFlag));
        Opened o;
        Open(o, linkFlag);
        test::TempDir dir;
        int between = 0;
        ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path(), [&] { ++between; }).ok());
        EXPECT_EQ(between, 5);
        // Flag 0 and the palette owner: byte-for-byte copies.
        EXPECT_EQ(ReadFile(dir / "fighter_09000_00000.pcx"), o.sprites[0].Data);
        EXPECT_EQ(ReadFile(dir / "fighter_00005_00000.pcx"), o.sprites[4].Data);
        EXPECT_EQ(ReadFile(dir / "fighter_00000_00000.pcx"), o.sprites[1].Data);
        // Flag 1: the data, then the 768 bytes of the shared palette. The linked row names its
        // target's file and, whatever its own flag, writes the same bytes again: the engine
        // shows it with its target's picture and palette.
        auto flagged = o.sprites[2].Data;
        flagged.insert(flagged.end(), o.sprites[1].Data.end() - 768, o.sprites[1].Data.end());
        EXPECT_EQ(ReadFile(dir / "fighter_00000_00001.pcx"), flagged);
        EXPECT_EQ(CutSubfile(o.state, o.state.Subfiles[3]), flagged);
        EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), {}), 4);
    }
}

TEST(PcxExport, RowsWithAPcxPathAreSkippedAndNumbersDoNotRename) {
    Opened o;
    Open(o, 1);
    test::TempDir dir;
    test::WriteFile(dir / "fighter_09000_00000.pcx", std::vector<uint8_t>(5000, 'x'));  // replaced whole
    for (int place = 2; place <= o.table.RowCount(); ++place) o.table.SetCell(place, Column::PcxPath, "/art/");
    o.table.SetCell(1, Column::GroupNo, "77");
    o.table.SetCell(1, Column::PalType, "1");  // PalType never decides the bytes
    ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path()).ok());
    EXPECT_EQ(ReadFile(dir / "fighter_09000_00000.pcx"), o.sprites[0].Data);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), {}), 1);

    // Every row skipped: nothing written, and no failure.
    o.table.SetCell(1, Column::PcxPath, "/art/");
    test::TempDir empty;
    EXPECT_TRUE(SaveAllPcx(o.state, o.table, empty.Path()).ok());
    EXPECT_TRUE(fs::is_empty(empty.Path()));
}

// Write failures are met through the commands that export; this is what they can't reach.
TEST(PcxExport, APPosThatNamesNoRecordIsRefusedNotReadOutOfBounds) {
    Opened o;
    Open(o, 1);
    test::TempDir dir;
    o.table.SetCell(2, Column::PPos, "99");
    auto bad = SavePcx(o.state, o.table, dir.Path(), 2);
    ASSERT_FALSE(bad.ok());
    EXPECT_NE(bad.error().Detail.find("99"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(dir.Path()));
}

}  // namespace
}  // namespace tarvolin
