#include <gtest/gtest.h>

#include <filesystem>

#include "base/Codepage.h"
#include "base/MessageKeys.h"
#include "base/AtomicFile.h"
#include "batch/BatchHeadless.h"
#include "batch/BuildLogLine.h"
#include "rebuild/BuildBatch.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

using test::ReadText;
using test::WriteText;

// Runs a batch written in UTF-8 (stored as CP932): what its console showed, "#" for a cls.
std::vector<std::string> RunBatch(const std::string& batchPath, const std::string& utf8) {
    WriteText(batchPath, *ToCp932(utf8));
    std::vector<std::string> console;
    BatchOutput out{[&](const std::string& line) { console.push_back(line); }, [&] { console.push_back("#"); }};
    EXPECT_TRUE(RunBatchHeadless(batchPath, out).ok());
    return console;
}

TEST(BatchHeadless, RedirectsInputAndOutputInTheBatchFolder) {
    test::TempDir dir;
    WriteText(dir / "in put.txt", "line one\r\nline two\r\n");
    WriteText(dir / "Log.txt", std::string(5000, 'x'));  // longer than the new output: replaced, not patched
    // The test runs elsewhere: the relative names must resolve in the batch's folder.
    ASSERT_NE(std::filesystem::current_path().string() + "/", dir.Path());
    auto console = RunBatch(dir / "b.bat",
                            "@echo off\r\necho 作成中 ...\r\n\"/bin/cat\" < in put.txt > Log.txt\r\n"
                            "\"/bin/pwd\" > where.txt\r\ncls\r\necho 終了.\r\npause\r\n");
    EXPECT_EQ(ReadText(dir / "Log.txt"), "line one\r\nline two\r\n");
    EXPECT_EQ(ReadText(dir / "where.txt"), std::filesystem::canonical(dir.Path()).string() + "\n");
    EXPECT_EQ(console, (std::vector<std::string>{"作成中 ...", "#", "終了.", "Press any key to continue . . ."}));
}

// A missing tool or input is reported and the batch goes on (the missing tool's message: the
// command-line build test); a batch that can't be read is an error naming it.
TEST(BatchHeadless, AMissingToolInputOrBatchIsReported) {
    test::TempDir dir;
    WriteText(dir / "p.txt", "x");
    auto console = RunBatch(dir / "b.bat",
                            "@echo off\r\n\"/nowhere/sprmaker.exe\" < p.txt > CreateLog.txt\r\n"
                            "\"/bin/cat\" < missing.txt > out.txt\r\necho still here\r\n");
    ASSERT_EQ(console.size(), 3u);
    EXPECT_EQ(console[1], CannotOpenText(dir / "missing.txt", false, "No such file or directory"));
    EXPECT_EQ(console[2], "still here");
    // The output redirection of the missing tool was made before it was looked for.
    EXPECT_TRUE(std::filesystem::exists(dir / "CreateLog.txt"));
    EXPECT_FALSE(std::filesystem::exists(dir / "out.txt"));
    auto r = RunBatchHeadless(dir / "none.bat", {[](const std::string&) {}, {}});
    ASSERT_FALSE(r.ok());
    EXPECT_EQ(r.error().Key, msg::BatchUnreadable);
    EXPECT_EQ(r.error().File, dir / "none.bat");
}

TEST(BatchHeadless, ConsoleOutputOfTheToolAndEchoOn) {
    test::TempDir dir;
    auto console = RunBatch(dir / "b.bat",
                            "\"/bin/sh\" -c \"echo to-out; echo to-err 1>&2\" > out.txt\r\n"
                            "@\"/bin/sh\" -c \"printf 'a\\r\\nb'\"\r\n");
    std::string prompt = dir.Path().substr(0, dir.Path().size() - 1) + ">";
    // Echo is on: the first line is shown behind the prompt, the quiet second one is not.
    // Standard error reaches the console even with standard output redirected.
    EXPECT_EQ(console, (std::vector<std::string>{prompt + "\"/bin/sh\" -c \"echo to-out; echo to-err 1>&2\" > out.txt",
                                                 "to-err", "a", "b"}));
    EXPECT_EQ(ReadText(dir / "out.txt"), "to-out\n");
}

// A link planted under the log's name is replaced by the log, and what it pointed at stays
// as it was; ">>" never appends through a link, and ">" onto a folder is refused.
TEST(BatchHeadless, OutputNeverFollowsAPlantedLink) {
    test::TempDir dir, outside;
    WriteText(outside / "secret.txt", "secret");
    WriteText(dir / "p.txt", "parameters\r\n");
    std::filesystem::create_symlink(outside / "secret.txt", dir / "CreateLog.txt");
    std::filesystem::create_symlink(outside / "secret.txt", dir / "more.txt");
    std::filesystem::create_directory(dir / "folder.txt");
    auto console = RunBatch(dir / "b.bat",
                            "@echo off\r\n\"/bin/cat\" < p.txt > CreateLog.txt\r\n\"/bin/cat\" < p.txt >> more.txt\r\n"
                            "\"/bin/cat\" < p.txt > folder.txt\r\n\"/bin/cat\" < p.txt > /dev/null\r\n");
    EXPECT_EQ(console, (std::vector<std::string>{
                           CannotOpenText(dir / "more.txt", true, "Too many levels of symbolic links"),
                           CannotOpenText(dir / "folder.txt", true, "Is a directory")}));
    EXPECT_FALSE(std::filesystem::is_symlink(dir / "CreateLog.txt"));
    EXPECT_EQ(ReadText(dir / "CreateLog.txt"), "parameters\r\n");
    EXPECT_EQ(ReadText(outside / "secret.txt"), "secret");
    EXPECT_TRUE(std::filesystem::is_symlink(dir / "more.txt"));
    EXPECT_TRUE(std::filesystem::is_empty(dir / "folder.txt"));
    for (const auto& e : std::filesystem::directory_iterator(dir.Path()))  // no temporary file left behind
        EXPECT_FALSE(IsTemporaryName(e.path().filename().string())) << e.path();
}

// The batch Tarvolin writes builds an SFF whatever characters its names hold.
TEST(BatchHeadless, TheBuildBatchAndItsLogTakeAnyName) {
    test::TempDir dir;
    test::WriteFile(dir / "a & b.pcx", test::MakePcx(4, 3, 1));
    const std::string param = "x | y < z > w & v_SFF.txt";
    WriteText(dir / param, "#\r\n1\r\n2\r\nout > put & so | on.sff\r\na & b.pcx\r\n0\r\n0\r\n0\r\n0\r\n\r\n");
    auto bytes = BuildBatBytes(param, false, test::BinDir());
    ASSERT_TRUE(bytes.ok());
    WriteText(dir / BatchNameFor(param), bytes.value());
    std::vector<std::string> console;
    ASSERT_TRUE(RunBatchHeadless(dir / BatchNameFor(param), {[&](const std::string& l) { console.push_back(l); }, {}}));
    EXPECT_EQ(console.size(), 3u);  // the batch's three echoes, nothing reported
    EXPECT_TRUE(std::filesystem::is_regular_file(dir / "out > put & so | on.sff"));
    EXPECT_NE(ReadText(dir / "CreateLog.txt").find("Wrote out > put & so | on.sff"), std::string::npos);
    // The log's line that says why, its names in UTF-8 (sprmaker.exe) or in Shift JIS.
    for (const std::string& name : {std::string("キャラ.pcx"), ToCp932("キャラ.pcx").value()}) {
        WriteText(dir / "CreateLog.txt", "#1 a.pcx\r\nError: " + name + ": No such file\r\nmore\r\n");
        EXPECT_EQ(LogErrorLine(dir / "CreateLog.txt"), "Error: キャラ.pcx: No such file");
    }
}

}  // namespace
}  // namespace tarvolin
