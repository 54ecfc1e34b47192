// tarvolin-cli as a user runs it: the table on standard output, warnings and refusals on
// standard error, the exit status, a build into a fresh folder, and the file the sample
// replaces. What the commands do is tested over the session they share with the window.
#include <gtest/gtest.h>

#include <filesystem>

#include "base/Bytes.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

std::string Cli() { return test::BinDir() + "tarvolin-cli"; }

const std::vector<SffSprite> kSprites = {test::MakeSprite(9000, 0, 0, true), test::MakeSprite(0, 0, 0, true, -3, 90),
                                         test::MakeSprite(0, 1, 1, false)};

TEST(Cli, ListPrintsTheTableAndAnswersTheWarningWithYes) {
    test::TempDir dir;
    test::WriteFile(dir / "fighter.sff", EncodeSff(kSharedPaletteMode, kSprites));
    auto run = test::RunProgram(Cli(), {"list", dir / "fighter.sff"});
    ASSERT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out.substr(0, run.Out.find('\n', run.Out.find('\n') + 1) + 1),
              "SortNo\tGroupNo\tItemNo\tPalType\tSortKey\tP.Pos\tPCX Name\taxisX\taxisY\tPcxPath\n"
              "01\t9000\t0\t0\t 0000000000\t0\tfighter_09000_00000.pcx\t0\t0\t\n");

    test::WriteFile(dir / "indiv.sff", EncodeSff(kIndividualPaletteMode, kSprites));
    auto warned = test::RunProgram(Cli(), {"list", dir / "indiv.sff"});
    EXPECT_EQ(warned.Status, 0);
    EXPECT_NE(warned.Err.find("このSFFファイルは共有パレットモードではありません。\n"), std::string::npos);
    EXPECT_EQ(std::count(warned.Out.begin(), warned.Out.end(), '\n'), 4);

    std::vector<uint8_t> bad = EncodeSff(kSharedPaletteMode, kSprites);
    WriteU32(bad.data() + 20, 0);  // no images
    test::WriteFile(dir / "bad.sff", bad);
    auto refused = test::RunProgram(Cli(), {"list", dir / "bad.sff"});
    EXPECT_EQ(refused.Status, 2);
    EXPECT_EQ(refused.Out, "");
    EXPECT_NE(refused.Err.find("SFFファイルの画像数が正しくありません。\n" + dir / "bad.sff"), std::string::npos);

    EXPECT_EQ(test::RunProgram(Cli(), {"--help"}).Status, 0);
    EXPECT_EQ(test::RunProgram(Cli(), {"list"}).Status, 1);
    EXPECT_EQ(test::RunProgram(Cli(), {"frobnicate"}).Status, 1);
    EXPECT_EQ(test::RunProgram(Cli(), {"export", "--format", "bmp", dir / "fighter.sff", dir.Path()}).Status, 1);
}

TEST(Cli, BuildMakesTheNewSffOrSaysThatNoneWasMade) {
    test::TempDir dir;
    test::WriteFile(dir / "f.sff", EncodeSff(kSharedPaletteMode, kSprites));
    auto run = test::RunProgram(Cli(), {"build", dir / "f.sff", dir / "out"});  // the folder is made
    ASSERT_EQ(run.Status, 0) << run.Out << run.Err;
    EXPECT_NE(run.Out.find("SFF を作成中 ...\nSFF 作成処理終了.\n"), std::string::npos) << run.Out;
    EXPECT_EQ(run.Out.find("Press any key"), std::string::npos);  // the batch has no pause
    EXPECT_NE(run.Out.find(dir / "out/f.sff: 3 sprites\n"), std::string::npos) << run.Out;

    // A copy of the tool with no sprmaker.exe beside it: the batch reports the missing
    // builder and the command sees that nothing new was made, though an SFF of that name
    // stands in the folder from before.
    std::filesystem::copy_file(Cli(), dir / "tarvolin-cli");
    run = test::RunProgram(dir / "tarvolin-cli", {"build", dir / "f.sff", dir / "out"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Out.find("'" + dir.Path() + "sprmaker.exe' cannot be run"), std::string::npos) << run.Out;
    EXPECT_NE(run.Err.find("no new SFF"), std::string::npos) << run.Err;

    test::WriteFile(dir / "old.sff", {1, 2, 3});
    ASSERT_EQ(test::RunProgram(Cli(), {"sample", dir / "old.sff"}).Status, 0);
    EXPECT_EQ(test::ReadFile(dir / "old.sff.bak"), (std::vector<uint8_t>{1, 2, 3}));
    EXPECT_EQ(test::RunProgram(Cli(), {"list", dir / "old.sff"}).Status, 0);
}

}  // namespace
}  // namespace tarvolin
