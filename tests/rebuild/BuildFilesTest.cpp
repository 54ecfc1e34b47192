#include <gtest/gtest.h>

#include <filesystem>

#include "base/MessageKeys.h"
#include "config/AppIni.h"
#include "rebuild/BuildFiles.h"
#include "sff/SffReader.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

size_t FilesIn(const std::string& folder) {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST(BuildFiles, WritesPcxTextAndBatchOrRefusesBeforeWriting) {
    test::TempDir dir;
    SffState state;
    SpriteTable table;
    test::WriteFile(dir / "fighter.sff",
                    EncodeSff(kSharedPaletteMode, {test::MakeSprite(0, 0, 0, true), test::MakeSprite(0, 1, 1, false)}));
    ASSERT_TRUE(OpenSff(dir / "fighter.sff", "fighter.sff", state, table, DefaultAppIni(),
                        [](const std::string&, int) { return true; }));
    std::filesystem::create_directory(dir / "out");
    int between = 0;
    auto texts = WriteBuildFiles(state, table, dir / "out/", true, "/opt/t/", [&] { ++between; });
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

    // The commands' tests meet a cell or a name CP932 can't hold and a missing folder; a
    // program folder outside CP932 can only be set up here. Refused before anything is written.
    std::filesystem::create_directory(dir / "other");
    auto program = WriteBuildFiles(state, table, dir / "other/", true, "/opt/😀/");
    ASSERT_FALSE(program);
    EXPECT_EQ(program.error().Key, msg::NotCp932);
    EXPECT_EQ(program.error().File, dir / "other/fighter_SFFBuild.bat");
    EXPECT_EQ(FilesIn(dir / "other"), 0u);
}

}  // namespace
}  // namespace tarvolin
