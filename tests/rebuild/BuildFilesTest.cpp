#include <gtest/gtest.h>

#include <filesystem>

#include "config/AppIni.h"
#include "config/MessageCatalog.h"
#include "rebuild/BuildFiles.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

struct Opened {
    SffState State;
    SpriteTable Table;
};

void Open(const test::TempDir& dir, Opened& o) {
    test::WriteFile(dir / "fighter.sff",
                    EncodeSff(kSharedPaletteMode, {test::MakeSprite(0, 0, 0, true), test::MakeSprite(0, 1, 1, false)}));
    ASSERT_TRUE(OpenSff(dir / "fighter.sff", "fighter.sff", o.State, o.Table, DefaultAppIni(),
                        [](const std::string&, int) { return true; }));
}

size_t FilesIn(const std::string& folder) {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST(BuildFiles, WritesPcxTextAndBatchIntoTheFolder) {
    test::TempDir dir;
    Opened o;
    Open(dir, o);
    std::filesystem::create_directory(dir / "out");
    int between = 0;
    auto texts = WriteBuildFiles(o.State, o.Table, dir / "out/", true, "/opt/t/", [&] { ++between; });
    ASSERT_TRUE(texts) << texts.error().Detail;
    EXPECT_EQ(between, 2);
    EXPECT_EQ(texts.value().ParamName, "fighter_SFF.txt");
    EXPECT_EQ(texts.value().BatchName, "fighter_SFFBuild.bat");
    EXPECT_EQ(texts.value().Folder, dir / "out/");
    auto bat = test::ReadFile(dir / "out/fighter_SFFBuild.bat");
    std::string batText(bat.begin(), bat.end());
    EXPECT_NE(batText.find("\"/opt/t/sprmaker.exe\" < fighter_SFF.txt > CreateLog.txt\r\n"), std::string::npos);
    EXPECT_TRUE(batText.ends_with("pause\r\n"));
    EXPECT_EQ(FilesIn(dir / "out"), 4u);  // two PCX files, the text, the batch; no temporary left
}

TEST(BuildFiles, RefusalsComeBeforeAnythingIsWritten) {
    test::TempDir dir;
    Opened o;
    Open(dir, o);
    std::filesystem::create_directory(dir / "out");
    // A cell CP932 can't hold refuses the text; no PCX file has been written by then.
    o.Table.SetCell(2, Column::GroupNo, "Ω€😀");
    auto cell = WriteBuildFiles(o.State, o.Table, dir / "out/", true, "/opt/t/");
    ASSERT_FALSE(cell);
    EXPECT_EQ(cell.error().Key, msg::NotCp932);
    EXPECT_EQ(cell.error().File, dir / "out/fighter_SFF.txt");
    EXPECT_EQ(FilesIn(dir / "out"), 0u);
    o.Table.SetCell(2, Column::GroupNo, "0");
    // So does a program folder the batch can't hold, and a parameter path.
    auto program = WriteBuildFiles(o.State, o.Table, dir / "out/", true, "/opt/😀/");
    ASSERT_FALSE(program);
    EXPECT_EQ(program.error().File, dir / "out/fighter_SFFBuild.bat");
    auto path = PrepareBuildTexts(o.Table, "fighter.sff", dir / "😀/my.txt", true, "/opt/t/");
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().Key, msg::NotCp932);
    EXPECT_EQ(FilesIn(dir / "out"), 0u);
    // A folder that isn't there: the first file's write fails and names it.
    auto missing = WriteBuildFiles(o.State, o.Table, dir / "none/", true, "/opt/t/");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().Key, msg::WriteFailed);
    EXPECT_EQ(missing.error().File, dir / "none/fighter_00000_00000.pcx");
}

}  // namespace
}  // namespace tarvolin
