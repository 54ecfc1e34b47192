// What an export and a build refuse before writing a byte, every row named: pictures the
// builder would refuse, and exports onto a row's own picture file under any path to it.
#include <gtest/gtest.h>

#include <filesystem>

#include "base/MessageKeys.h"
#include "config/AppIni.h"
#include "rebuild/RowCheck.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

TEST(RowCheck, EveryRowTheExportOrTheBuilderWouldFailOnIsNamedBeforeWriting) {
    // w.sff: 1,0 to 1,3; the pictures of 1,1 and 1,3 have a damaged header (no PCX).
    std::vector<SffSprite> sprites;
    for (uint16_t item = 0; item < 4; ++item) sprites.push_back(test::MakeSprite(1, item, 0, true));
    sprites[1].Data[0] = 0;
    sprites[3].Data[2] = 7;
    SffState state;
    SpriteTable table;
    ASSERT_TRUE(OpenSffBytes(EncodeSff(kSharedPaletteMode, sprites), "w.sff", "w.sff", state, table, AppIni{}, {}));
    test::TempDir dir;
    const std::string out = dir / "out/";
    fs::create_directory(out);
    Status refused = CheckRowsBeforeExport(state, table, out);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().Key, msg::PcxFormat);
    EXPECT_EQ(refused.error().File, "w.sff");
    EXPECT_EQ(refused.error().Detail,
              "row 2 (GroupNo 1, ItemNo 1, P.Pos 1): Manufacturer 0, 10 expected; row 4 (GroupNo 1, ItemNo 3, P.Pos 3): "
              "Encoding 7, 1 expected (run-length encoded)");

    // With those two rows pointing at good files of their own, row 4's picture lies where
    // row 1's export goes: named under its own path, through a linked folder, or as the
    // file a link leads to.
    test::WriteFile(out + "mine.pcx", test::MakePcx(3, 3, 1));
    fs::create_directory_symlink(out, dir / "linked");
    fs::create_symlink(out + "w_00001_00000.pcx", dir / "pointer.pcx");
    table.SetCell(2, Column::PcxPath, out);
    table.SetCell(2, Column::PcxName, "mine.pcx");
    table.SetCell(4, Column::PcxName, "w_00001_00000.pcx");
    for (const std::string& path : {out, dir / "linked/"}) {
        table.SetCell(4, Column::PcxPath, path);
        test::WriteFile(out + "w_00001_00000.pcx", test::MakePcx(2, 2, 1));
        refused = CheckRowsBeforeExport(state, table, out);
        ASSERT_FALSE(refused) << path;
        EXPECT_EQ(refused.error().Key, msg::PictureClash);
        EXPECT_EQ(refused.error().Detail, "row 1 (GroupNo 1, ItemNo 0, P.Pos 0): its export " + out +
                                              "w_00001_00000.pcx would replace the picture file " + path +
                                              "w_00001_00000.pcx of row 4 (GroupNo 1, ItemNo 3, P.Pos 3)");
    }
    table.SetCell(4, Column::PcxPath, dir.Path());
    table.SetCell(4, Column::PcxName, "pointer.pcx");
    EXPECT_EQ(CheckRowsBeforeExport(state, table, out).error().Key, msg::PictureClash);
    EXPECT_TRUE(CheckRowsBeforeExport(state, table, dir / "elsewhere/"));
    EXPECT_TRUE(CheckRowsForBuild(table));
}

}  // namespace
}  // namespace tarvolin
