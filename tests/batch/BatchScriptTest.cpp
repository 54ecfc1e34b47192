#include <gtest/gtest.h>

#include "base/Codepage.h"
#include "batch/BatchScript.h"
#include "rebuild/BuildBatch.h"

namespace tarvolin {
namespace {

std::vector<StepKind> Kinds(const std::vector<BatchStep>& steps) {
    std::vector<StepKind> kinds;
    for (const auto& s : steps) kinds.push_back(s.Kind);
    return kinds;
}

using K = StepKind;

// The lines of a hand-edited batch (the one Tarvolin writes is read by every run of it).
TEST(BatchScript, HandEditedLines) {
    auto steps = ParseBatch(
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
    // Bytes that are not CP932 do not stop the parse; the last line needs no line end.
    EXPECT_EQ(Kinds(ParseBatch("echo \x81\r\n\xFF\xFE\r\ncls")), (std::vector<K>{K::Echo, K::Unsupported, K::Cls}));
}

// The builder's line takes any parameter name: from the first " < " to the last " > ".
TEST(BatchScript, TheBuildersLineTakesAnyName) {
    for (const std::string name : {"fighter_SFF.txt", "a & b_SFF.txt", "x | y_SFF.txt", "in < out_SFF.txt",
                                   "p > q_SFF.txt", "  lead and trail  ", "a > CreateLog.txt", "\"quoted\"_SFF.txt",
                                   "&|<>_SFF.txt", "技 & 術_SFF.txt"}) {
        SCOPED_TRACE(name);
        auto bytes = BuildBatBytes(name, true, "/opt/my tools/");
        ASSERT_TRUE(bytes.ok());
        auto steps = ParseBatch(bytes.value());
        ASSERT_EQ(Kinds(steps), (std::vector<K>{K::EchoOff, K::Echo, K::Run, K::Cls, K::Echo, K::Echo, K::Pause}));
        EXPECT_EQ(steps[2].Program, "/opt/my tools/sprmaker.exe");
        EXPECT_TRUE(steps[2].Args.empty());
        EXPECT_EQ(steps[2].StdinFile, name);
        EXPECT_EQ(steps[2].StdoutFile, "CreateLog.txt");
        EXPECT_FALSE(steps[2].AppendStdout);
    }
    // Other forms keep the general rules: a pipe or a chain outside quotes is not run.
    auto steps = ParseBatch(
        "\"/bin/cat\" < in.txt > out.txt | more\n"
        "\"/bin/cat\" < in.txt > out.txt & del x\n"
        "\"/bin/cat\" -n < a & b.txt > out.txt\n"
        "\"/bin/cat\" < in.txt >> log.txt\n"
        "\"/bin/cat\" < in.txt > log one.txt\n");
    ASSERT_EQ(Kinds(steps), (std::vector<K>{K::Unsupported, K::Unsupported, K::Unsupported, K::Run, K::Run}));
    EXPECT_TRUE(steps[3].AppendStdout);
    EXPECT_EQ(steps[3].StdoutFile, "log.txt");
    EXPECT_EQ(steps[4].StdoutFile, "log one.txt");
}

}  // namespace
}  // namespace tarvolin
