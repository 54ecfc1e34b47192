#include <gtest/gtest.h>

#include "rebuild/BatchScript.h"
#include "sff/Codepage.h"

namespace tarvolin {
namespace {

std::vector<BatchStep> Parse(const std::string& utf8) { return ParseBatch(*ToCp932(utf8)); }

std::vector<StepKind> Kinds(const std::vector<BatchStep>& steps) {
    std::vector<StepKind> kinds;
    for (const auto& s : steps) kinds.push_back(s.Kind);
    return kinds;
}

using K = StepKind;

TEST(BatchScript, ReadsTheBatchTarvolinWrites) {
    auto steps = Parse(
        "@echo off\r\n"
        "echo SFF を作成中 ...\r\n"
        "\"/opt/my tools/sprmaker.exe\" < my fighter_SFF.txt > CreateLog.txt\r\n"
        "cls\r\n"
        "echo SFF 作成処理終了.\r\n"
        "pause\r\n");
    ASSERT_EQ(Kinds(steps), (std::vector<K>{K::EchoOff, K::Echo, K::Run, K::Cls, K::Echo, K::Pause}));
    EXPECT_TRUE(steps[0].Quiet);
    EXPECT_EQ(steps[1].Text, "SFF を作成中 ...");
    EXPECT_FALSE(steps[1].Quiet);
    const BatchStep& run = steps[2];
    EXPECT_EQ(run.Program, "/opt/my tools/sprmaker.exe");
    EXPECT_TRUE(run.Args.empty());
    // An unquoted parameter name with a blank still names one file.
    EXPECT_EQ(run.StdinFile, "my fighter_SFF.txt");
    EXPECT_EQ(run.StdoutFile, "CreateLog.txt");
    EXPECT_FALSE(run.AppendStdout);
    EXPECT_EQ(steps[4].Text, "SFF 作成処理終了.");
}

TEST(BatchScript, HandEditedLines) {
    auto steps = Parse(
        "rem a comment\n"
        ":: another\n"
        "\n"
        "   \n"
        "ECHO On\n"
        "echo.\n"
        "echo   two blanks kept \n"
        "./tool -x \"a b\" >> log.txt < in.txt\n"
        "/bin/cat\n"
        "PAUSE\n"
        "del *.pcx\n"
        "\"/bin/cat\" in.txt | more\n"
        "\"/bin/cat\" 2> err.txt\n"
        "\"/bin/cat\" <\n"
        "\"unclosed < in.txt\n"
        "pause now\n");
    ASSERT_EQ(Kinds(steps), (std::vector<K>{K::EchoOn, K::Echo, K::Echo, K::Run, K::Run, K::Pause, K::Unsupported,
                                            K::Unsupported, K::Unsupported, K::Unsupported, K::Unsupported,
                                            K::Unsupported}));
    EXPECT_EQ(steps[1].Text, "");
    EXPECT_EQ(steps[2].Text, "  two blanks kept ");
    EXPECT_EQ(steps[3].Program, "./tool");
    EXPECT_EQ(steps[3].Args, (std::vector<std::string>{"-x", "a b"}));
    EXPECT_EQ(steps[3].StdoutFile, "log.txt");
    EXPECT_TRUE(steps[3].AppendStdout);
    EXPECT_EQ(steps[3].StdinFile, "in.txt");
    EXPECT_TRUE(steps[4].StdinFile.empty() && steps[4].StdoutFile.empty());
    EXPECT_EQ(steps[6].Line, "del *.pcx");
}

TEST(BatchScript, BytesThatAreNotCp932DoNotStopTheParse) {
    std::string bytes = "echo \x81\r\n\xFF\xFE\r\ncls";
    auto steps = ParseBatch(bytes);
    // The last line needs no line end.
    EXPECT_EQ(Kinds(steps), (std::vector<K>{K::Echo, K::Unsupported, K::Cls}));
}

}  // namespace
}  // namespace tarvolin
