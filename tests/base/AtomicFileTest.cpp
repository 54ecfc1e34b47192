// Files are written whole or not at all, nothing is left beside them, nothing replaced is lost.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/AtomicFile.h"
#include "base/TextHelpers.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;
using test::FileBytes;

Bytes B(const std::string& text) { return Bytes(text.begin(), text.end()); }

// Writes and commits `text` with `backup`: the error, or the name the replaced file is kept as.
Result<std::string> Commit(const std::string& path, const std::string& text, const std::string& backup) {
    auto file = AtomicFile::Create(path);
    if (!file) return file.error();
    Status s = file.value().Write(text.data(), text.size());
    if (s) s = file.value().Commit(backup);
    if (!s) return s.error();
    return GetFileName(file.value().KeptAs());
}

TEST(AtomicFile, NewReplacedAndPatchedFiles) {
    test::TempDir dir;
    const std::string target = dir / "a.pcx";
    ASSERT_TRUE(WriteFileAtomically(target, std::string("first, longer content")));
    ASSERT_TRUE(WriteFileAtomically(target, std::string("new")));  // cut to the new length
    EXPECT_EQ(dir.Contents(), (FileBytes{{"a.pcx", B("new")}}));

    auto file = AtomicFile::Create(target);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value().Write("1234", 4));
    ASSERT_TRUE(file.value().WriteAt(1, "99", 2));
    EXPECT_EQ(file.value().Size(), 4u);
    ASSERT_TRUE(file.value().Commit(dir / "a.pcx.bak"));
    EXPECT_EQ(dir.Contents(), (FileBytes{{"a.pcx", B("1994")}, {"a.pcx.bak", B("new")}}));

    const auto missing = WriteFileAtomically(dir / "no/such/folder/x.pcx", std::string("x"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().File, dir / "no/such/folder/x.pcx");
}

// Each differing generation gets the next free backup name (a name taken otherwise is passed
// over); one equal to the newest backup, not merely starting with its bytes, adds no copy.
TEST(AtomicFile, BackupsKeepEveryDifferingGeneration) {
    test::TempDir dir;
    std::string kept;
    auto commit = [&](const std::string& text) {
        const auto r = Commit(dir / "x.sff", text, dir / "x.sff.bak");
        kept += (r ? r.value() : r.error().Detail) + "|";
    };
    for (const char* text : {"original", "A", "A", "B"}) commit(text);
    fs::create_directory(dir / "x.sff.bak3");
    for (const char* text : {"C", "CC"}) commit(text);
    EXPECT_EQ(kept, "|x.sff.bak|x.sff.bak2|x.sff.bak2|x.sff.bak4|x.sff.bak5|");
    EXPECT_EQ(dir.Contents(), (FileBytes{{"x.sff", B("CC")}, {"x.sff.bak", B("original")}, {"x.sff.bak2", B("A")},
                                         {"x.sff.bak3", {}}, {"x.sff.bak4", B("B")}, {"x.sff.bak5", B("C")}}));
}

TEST(AtomicFile, ATargetThatIsNoRegularFileIsNeverMovedAside) {
    test::TempDir dir;
    fs::create_directory(dir / "out.sff");
    test::WriteFile(dir / "out.sff/inside.pcx", {1, 2, 3});
    const FileBytes before = dir.Contents();
    for (const std::string& backup : {std::string(), dir / "out.sff.bak"}) {
        const auto r = Commit(dir / "out.sff", "new", backup);
        ASSERT_FALSE(r) << backup;
        EXPECT_EQ(r.error().File, dir / "out.sff");
        EXPECT_EQ(dir.Contents(), before);  // no backup, no temporary
    }
}

TEST(AtomicFile, TemporaryNamesAreRecognisedExactly) {
    for (const char* name : {".a.pcx.tmp0123456789abcdef", "..hidden.tmpffffffffffffffff", ".x.tmp.tmp0000000000000000"})
        EXPECT_TRUE(IsTemporaryName(name)) << name;
    for (const char* name : {"a.pcx.tmp0123456789abcdef", ".tmp0123456789abcdef", "..tmp0123456789abcdef",
                             ".a.pcx.tmp0123456789ABCDEF", ".a.pcx.tmp0123456789abcde", ".a.pcx.tmp0123456789abcdef0",
                             ".a.pcx.tnp0123456789abcdef", ".a.pcx.tmp0123456789abcdeg", ".a.pcx", ""})
        EXPECT_FALSE(IsTemporaryName(name)) << name;
}

// A writer in a child process stopped half-way; `whileAlive` runs before it is killed (-9).
void KillWriterMidway(const test::TempDir& dir, const std::function<void()>& whileAlive) {
    const pid_t pid = fork();
    if (pid == 0) {
        auto file = AtomicFile::Create(dir / "killed.pcx");
        if (file && file.value().Write("half", 4)) test::WriteFile(dir / "ready", {});
        for (;;) pause();
    }
    for (int i = 0; i < 1000 && !fs::exists(dir / "ready"); ++i) usleep(5000);
    if (fs::remove(dir / "ready")) whileAlive();
    else ADD_FAILURE() << "the writer never got under way";
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

// A writer killed with SIGKILL leaves its temporary file; the next cleaning removes it,
// and nothing else: not a live writer's file, nor anything of another name or kind.
TEST(AtomicFile, StaleTemporariesOfKilledWritersAreRemoved) {
    test::TempDir dir;
    KillWriterMidway(dir, [&] { EXPECT_EQ(RemoveStaleTemporaries(dir.Path()), 0u); });  // it lives: its file stays
    const FileBytes left = dir.Contents();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_TRUE(IsTemporaryName(left.begin()->first)) << left.begin()->first;

    auto live = AtomicFile::Create(dir / "live.pcx");
    ASSERT_TRUE(live);
    test::WriteFile(dir / ".b.pcx.tmp00000000000000ff", {7});  // the form, but no writer ever held it
    test::WriteFile(dir / "keep.pcx", {1});
    test::WriteFile(dir / ".keep.pcx.tmp12345", {2});
    fs::create_symlink(dir / "keep.pcx", dir / ".link.pcx.tmp0000000000000001");
    fs::create_directory(dir / ".dir.tmp0000000000000002");
    ASSERT_EQ(mkfifo((dir / ".fifo.tmp0000000000000003").c_str(), 0666), 0);

    EXPECT_EQ(RemoveStaleTemporaries(dir.Path()), 2u);  // the killed writer's file and the lookalike
    ASSERT_TRUE(live.value().Write("x", 1));
    ASSERT_TRUE(live.value().Commit());
    EXPECT_EQ(dir.Contents(), (FileBytes{{".dir.tmp0000000000000002", {}}, {".fifo.tmp0000000000000003", {}},
                                         {".keep.pcx.tmp12345", {2}}, {".link.pcx.tmp0000000000000001", {'@'}},
                                         {"keep.pcx", {1}}, {"live.pcx", B("x")}}));
    EXPECT_EQ(RemoveStaleTemporaries(dir / "missing/"), 0u);
}

}  // namespace
}  // namespace tarvolin
