#include <gtest/gtest.h>

#include <filesystem>

#include "config/MessageCatalog.h"
#include "rebuild/PcxExport.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::ReadFile;
using test::TempDir;

// fighter.sff: 9000,0 with its own palette; 0,0 the palette owner; 0,1 without a
// palette; 0,2 linked to 0,1; 5,0 with its own palette. `linkFlag` is the linked
// sprite's palette flag.
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
    Opened o;
    Open(o, 1);
    TempDir dir;
    int between = 0;
    ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path(), [&] { ++between; }).ok());
    EXPECT_EQ(between, 5);

    const auto& owner = o.sprites[1].Data;
    const std::vector<uint8_t> shared(owner.end() - 768, owner.end());
    // Flag 0: a byte-for-byte copy.
    EXPECT_EQ(ReadFile(dir / "fighter_09000_00000.pcx"), o.sprites[0].Data);
    EXPECT_EQ(ReadFile(dir / "fighter_00005_00000.pcx"), o.sprites[4].Data);
    // The palette owner comes out with the bytes it had in the SFF.
    EXPECT_EQ(ReadFile(dir / "fighter_00000_00000.pcx"), owner);
    // Flag 1: the data, then the 768 bytes of the shared palette and nothing else.
    auto flagged = o.sprites[2].Data;
    flagged.insert(flagged.end(), shared.begin(), shared.end());
    EXPECT_EQ(ReadFile(dir / "fighter_00000_00001.pcx"), flagged);
    // The linked sprite names its target's file; no file of its own numbers appears.
    EXPECT_FALSE(std::filesystem::exists(dir / "fighter_00000_00002.pcx"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 4);
}

TEST(PcxExport, LinkedRowWritesTheSharedFileAgainWithItsOwnFlag) {
    Opened o;
    Open(o, 0);  // the linked sprite says "own palette": nothing is appended for it
    TempDir dir;
    ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path()).ok());
    // Its row comes after the target's (its key starts with 1), so its bytes stand last.
    EXPECT_EQ(ReadFile(dir / "fighter_00000_00001.pcx"), o.sprites[2].Data);
}

TEST(PcxExport, RowsWithAPcxPathAreSkippedAndNumbersDoNotRename) {
    Opened o;
    Open(o, 1);
    TempDir dir;
    const std::string stale(5000, 'x');  // a longer older file is replaced whole
    test::WriteFile(dir / "fighter_09000_00000.pcx", std::vector<uint8_t>(stale.begin(), stale.end()));
    for (int place = 2; place <= o.table.RowCount(); ++place) o.table.SetCell(place, Column::PcxPath, "/art/");
    o.table.SetCell(1, Column::GroupNo, "77");
    o.table.SetCell(1, Column::PalType, "1");  // PalType never decides the bytes
    int between = 0;
    ASSERT_TRUE(SaveAllPcx(o.state, o.table, dir.Path(), [&] { ++between; }).ok());
    EXPECT_EQ(between, 1);
    EXPECT_EQ(ReadFile(dir / "fighter_09000_00000.pcx"), o.sprites[0].Data);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);

    // Every row skipped: nothing written, and no failure.
    o.table.SetCell(1, Column::PcxPath, "/art/");
    TempDir empty;
    EXPECT_TRUE(SaveAllPcx(o.state, o.table, empty.Path()).ok());
    EXPECT_TRUE(std::filesystem::is_empty(empty.Path()));
}

TEST(PcxExport, AFailedWriteNamesTheFileAndLeavesNothing) {
    Opened o;
    Open(o, 1);
    TempDir dir;
    const std::string missing = dir / "no such folder/";
    int between = 0;
    auto s = SaveAllPcx(o.state, o.table, missing, [&] { ++between; });
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.error().Key, msg::WriteFailed);
    EXPECT_EQ(s.error().File, missing + "fighter_09000_00000.pcx");
    EXPECT_FALSE(s.error().Detail.empty());
    EXPECT_EQ(between, 0);
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path()));

    // A P.Pos that names no record is refused, not read out of bounds.
    o.table.SetCell(2, Column::PPos, "99");
    auto bad = SavePcx(o.state, o.table, dir.Path(), 2);
    ASSERT_FALSE(bad.ok());
    EXPECT_NE(bad.error().Detail.find("99"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path()));
}

}  // namespace
}  // namespace tarvolin
