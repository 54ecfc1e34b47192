#include <gtest/gtest.h>

#include "rebuild/BatchScript.h"
#include "sff/Codepage.h"

namespace tarvolin {
namespace {

std::vector<BatchStep> Parse(const std::string& utf8) { return ParseBatch(*ToCp932(utf8)); }

TEST(BatchScript, ReadsTheBatchTarvolinWrites) {
    auto steps = Parse(
        "@echo off\r\n"
        "echo SFF を作成中 ...\r\n"
        "\"/opt/my tools/sprmaker.exe\" < my fighter_SFF.txt > CreateLog.txt\r\n"
        "cls\r\n"
        "echo SFF 作成処理終了.\r\n"
        "pause\r\n");
    ASSERT_EQ(steps.size(), 6u);
    EXPECT_EQ(steps[0].Kind, StepKind::EchoOff);
    EXPECT_TRUE(steps[0].Quiet);
    EXPECT_EQ(steps[1].Kind, StepKind::Echo);
    EXPECT_EQ(steps[1].Text, "SFF を作成中 ...");
    EXPECT_FALSE(steps[1].Quiet);
    const BatchStep& run = steps[2];
    EXPECT_EQ(run.Kind, StepKind::Run);
    EXPECT_EQ(run.Program, "/opt/my tools/sprmaker.exe");
    EXPECT_TRUE(run.Args.empty());
    // An unquoted parameter name with a blank still names one file.
    EXPECT_EQ(run.StdinFile, "my fighter_SFF.txt");
    EXPECT_EQ(run.StdoutFile, "CreateLog.txt");
    EXPECT_FALSE(run.AppendStdout);
    EXPECT_EQ(steps[3].Kind, StepKind::Cls);
    EXPECT_EQ(steps[4].Text, "SFF 作成処理終了.");
    EXPECT_EQ(steps[5].Kind, StepKind::Pause);
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
    ASSERT_EQ(steps.size(), 12u);
    EXPECT_EQ(steps[0].Kind, StepKind::EchoOn);
    EXPECT_EQ(steps[1].Kind, StepKind::Echo);
    EXPECT_EQ(steps[1].Text, "");
    EXPECT_EQ(steps[2].Text, "  two blanks kept ");
    EXPECT_EQ(steps[3].Kind, StepKind::Run);
    EXPECT_EQ(steps[3].Program, "./tool");
    EXPECT_EQ(steps[3].Args, (std::vector<std::string>{"-x", "a b"}));
    EXPECT_EQ(steps[3].StdoutFile, "log.txt");
    EXPECT_TRUE(steps[3].AppendStdout);
    EXPECT_EQ(steps[3].StdinFile, "in.txt");
    EXPECT_EQ(steps[4].Kind, StepKind::Run);
    EXPECT_TRUE(steps[4].StdinFile.empty() && steps[4].StdoutFile.empty());
    EXPECT_EQ(steps[5].Kind, StepKind::Pause);
    for (size_t i = 6; i < steps.size(); ++i) {
        EXPECT_EQ(steps[i].Kind, StepKind::Unsupported) << steps[i].Line;
    }
    EXPECT_EQ(steps[6].Line, "del *.pcx");
}

TEST(BatchScript, BytesThatAreNotCp932DoNotStopTheParse) {
    std::string bytes = "echo \x81\r\n\xFF\xFE\r\ncls";
    auto steps = ParseBatch(bytes);
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps[0].Kind, StepKind::Echo);
    EXPECT_EQ(steps[1].Kind, StepKind::Unsupported);
    EXPECT_EQ(steps[2].Kind, StepKind::Cls);  // the last line needs no line end
}

}  // namespace
}  // namespace tarvolin
