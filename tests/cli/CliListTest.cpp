// tarvolin-cli list as a user runs it: the table on standard output, the warning and
// refusals on standard error, and the exit status.
#include <gtest/gtest.h>

#include "base/Bytes.h"
#include "support/RunProgram.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

std::string Cli() { return test::BinDir() + "tarvolin-cli"; }

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t nl; (nl = text.find('\n', start)) != std::string::npos; start = nl + 1)
        lines.push_back(text.substr(start, nl - start));
    return lines;
}

TEST(CliList, PrintsTheTableAndAnswersTheWarningWithYes) {
    test::TempDir dir;
    std::vector<SffSprite> sprites = {test::MakeSprite(9000, 0, 0, true), test::MakeSprite(0, 0, 0, true, -3, 90),
                                      test::MakeSprite(0, 1, 1, false)};
    test::WriteFile(dir / "fighter.sff", EncodeSff(kSharedPaletteMode, sprites));
    auto run = test::RunProgram(Cli(), {"list", dir / "fighter.sff"});
    ASSERT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Err, "");
    auto lines = Lines(run.Out);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "SortNo\tGroupNo\tItemNo\tPalType\tSortKey\tP.Pos\tPCX Name\taxisX\taxisY\tPcxPath");
    EXPECT_EQ(lines[1], "01\t9000\t0\t0\t 0000000000\t0\tfighter_09000_00000.pcx\t0\t0\t");
    EXPECT_EQ(lines[2], "02\t0\t0\t1\t00000000000\t1\tfighter_00000_00000.pcx\t-3\t90\t");

    test::WriteFile(dir / "indiv.sff", EncodeSff(kIndividualPaletteMode, sprites));
    auto warned = test::RunProgram(Cli(), {"list", dir / "indiv.sff"});
    EXPECT_EQ(warned.Status, 0);
    EXPECT_NE(warned.Err.find("このSFFファイルは共有パレットモードではありません。\n"), std::string::npos);
    EXPECT_NE(warned.Err.find("処理を続行しますか？"), std::string::npos);
    EXPECT_EQ(Lines(warned.Out).size(), 4u);
}

TEST(CliList, RefusalsAndUsage) {
    test::TempDir dir;
    std::vector<uint8_t> bad = EncodeSff(kSharedPaletteMode, {test::MakeSprite(1, 1, 0, true)});
    WriteU32(bad.data() + 20, 0);
    test::WriteFile(dir / "bad.sff", bad);
    auto refused = test::RunProgram(Cli(), {"list", dir / "bad.sff"});
    EXPECT_EQ(refused.Status, 2);
    EXPECT_EQ(refused.Out, "");
    EXPECT_NE(refused.Err.find("SFFファイルの画像数が正しくありません。"), std::string::npos);
    EXPECT_NE(refused.Err.find(dir / "bad.sff"), std::string::npos);

    auto missing = test::RunProgram(Cli(), {"list", dir / "none.sff"});
    EXPECT_EQ(missing.Status, 2);
    EXPECT_NE(missing.Err.find("none.sff"), std::string::npos);

    auto help = test::RunProgram(Cli(), {"--help"});
    EXPECT_EQ(help.Status, 0);
    EXPECT_NE(help.Out.find("list FILE.sff"), std::string::npos);
    EXPECT_EQ(test::RunProgram(Cli(), {"list"}).Status, 1);
    EXPECT_EQ(test::RunProgram(Cli(), {"frobnicate"}).Status, 1);
}

}  // namespace
}  // namespace tarvolin
