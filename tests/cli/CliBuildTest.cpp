// tarvolin-cli build as a user runs it: the files in the folder, the batch's console on
// standard output, the new SFF made by sprmaker.exe, and the exit status.
#include <gtest/gtest.h>

#include <filesystem>

#include "formats/SffWriter.h"
#include "support/RebuildCheck.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

std::string Cli() { return test::BinDir() + "tarvolin-cli"; }

TEST(CliBuild, EveryRealFileComesBackWithTheSameSprites) {
    TARVOLIN_REQUIRE_SHARED_DATA(data);
    const auto files = test::SharedSffFiles();
    ASSERT_GE(files.size(), 2u);
    EXPECT_FALSE(test::RebuildDifferences(files[0], files[1]).empty());  // the check does tell files apart
    for (const std::string& file : files) {
        test::TempDir dir;
        std::string out = dir / "out";  // not there yet: the command makes it
        auto run = test::RunProgram(Cli(), {"build", file, out});
        ASSERT_EQ(run.Status, 0) << file << "\n" << run.Out << run.Err;
        EXPECT_NE(run.Out.find("SFF を作成中 ...\nSFF 作成処理終了.\n"), std::string::npos) << run.Out;
        EXPECT_EQ(run.Out.find("Press any key"), std::string::npos);  // the batch has no pause
        const std::string name = std::filesystem::path(file).filename().string();
        EXPECT_TRUE(std::filesystem::exists(out + "/" + name.substr(0, name.size() - 4) + "_SFFBuild.bat"));
        EXPECT_TRUE(std::filesystem::exists(out + "/CreateLog.txt"));
        EXPECT_EQ(test::RebuildDifferences(file, out + "/" + name), std::vector<std::string>{}) << file;
    }
}

TEST(CliBuild, FailuresAndUsage) {
    test::TempDir dir;
    test::WriteFile(dir / "f.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(1, 0, 0, true)}));
    // A copy of the tool with no sprmaker.exe beside it: the batch reports the missing
    // builder on the console and goes on, and the command sees that nothing was made,
    // even with an SFF of that name left from before in the folder.
    std::filesystem::copy_file(Cli(), dir / "tarvolin-cli");
    std::filesystem::create_directory(dir / "out");
    test::WriteFile(dir / "out/f.sff", test::ReadFile(dir / "f.sff"));
    auto run = test::RunProgram(dir / "tarvolin-cli", {"build", dir / "f.sff", dir / "out"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Out.find("'" + dir.Path() + "sprmaker.exe' cannot be run: No such file or directory"),
              std::string::npos)
        << run.Out;
    EXPECT_NE(run.Err.find("no new SFF"), std::string::npos) << run.Err;
    EXPECT_TRUE(std::filesystem::exists(dir / "out/f_00001_00000.pcx"));

    test::WriteFile(dir / "blocker", {1});  // a file where the folder should be
    run = test::RunProgram(Cli(), {"build", dir / "f.sff", dir / "blocker"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Err.find("ファイルを書き込めませんでした。"), std::string::npos) << run.Err;
    EXPECT_NE(run.Err.find(dir / "blocker/"), std::string::npos) << run.Err;

    EXPECT_EQ(test::RunProgram(Cli(), {"build", dir / "f.sff"}).Status, 1);
    EXPECT_EQ(test::RunProgram(Cli(), {"build", dir / "none.sff", dir.Path()}).Status, 2);
}

}  // namespace
}  // namespace tarvolin
