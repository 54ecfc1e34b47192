// A row deleted before a rebuild must not change the colours of the rows that stay: every
// remaining sprite of the new SFF shows the picture and palette the engine showed before.
#include <gtest/gtest.h>

#include "RoundTrip.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::MakeSprite;

TEST(PaletteFidelity, DeletingTheSharedPaletteRowKeepsEveryColour) {
    // 9000,1 holds the palette that 0,0 to 0,3 use; 7,0 stores another one, which 7,1 and
    // 7,2 use. In the table the shared rows come before 7,0, and with 9000,1 gone the rows
    // 1 to 3 that always get a palette of their own are others.
    std::vector<SffSprite> sprites = {MakeSprite(9000, 0, 0, true, 0, 0, 6, 6),
                                      MakeSprite(9000, 1, 0, true, 0, 0, 8, 5)};
    for (uint16_t item = 0; item < 4; ++item) sprites.push_back(MakeSprite(0, item, 1, false, 10, 20, 5 + item, 4));
    sprites.push_back(MakeSprite(7, 0, 0, true, 1, 1, 9, 9));
    sprites.push_back(MakeSprite(7, 1, 1, false, 2, 2, 4, 4));
    sprites.push_back(MakeSprite(7, 2, 1, false, 3, 3, 7, 2));
    test::TempDir dir;
    test::WriteFile(dir / "fighter.sff", EncodeSff(kSharedPaletteMode, sprites));

    test::OpenedSff o;
    ASSERT_TRUE(test::OpenForRebuild(dir / "fighter.sff", o));
    const test::EngineFile before = test::EngineView(o.State.SffBytes);
    ASSERT_EQ(o.Table.Cell(2, Column::GroupNo) + "," + o.Table.Cell(2, Column::ItemNo), "9000,1");
    o.Table.RemoveRow(2);  // as Delete does

    test::TempDir work;
    std::string log;
    const std::vector<uint8_t> bytes = test::Rebuild(o, work.Path(), log);
    ASSERT_FALSE(bytes.empty());
    const test::EngineFile after = test::EngineView(bytes);
    const test::RowTally tally = test::CompareRows(o, before, work.Path(), after);
    std::string examples;
    for (const std::string& e : tally.Examples) examples += "\n  " + e;
    EXPECT_EQ(tally.Equal, 8) << test::TallyLine("fighter.sff", tally) << examples;

    // 7,1 follows the shared rows in the table, so the builder keeps its own palette; 7,2
    // follows 7,1 and takes it.
    EXPECT_NE(log.find("fighter_00007_00001.pcx: asked for the previous palette, but its own differs"),
              std::string::npos)
        << log;
    ASSERT_EQ(after.Sprites.size(), 8u);
    EXPECT_EQ(after.Sprites[5].PalFlag, 0);
    EXPECT_EQ(after.Sprites[6].ItemNo, 2);
    EXPECT_EQ(after.Sprites[6].PalFlag, 1);
}

}  // namespace
}  // namespace tarvolin
