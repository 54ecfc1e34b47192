// Files are written whole or not at all, and nothing is left beside them.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

#include "base/AtomicFile.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Names(const std::string& dir) {
    std::vector<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(AtomicFile, NewReplacedAndAbandonedFiles) {
    test::TempDir dir;
    const std::string target = dir / "a.pcx";
    const std::vector<uint8_t> news{'n', 'e', 'w'};
    ASSERT_TRUE(WriteFileAtomically(target, std::string("first, longer content")));
    ASSERT_TRUE(WriteFileAtomically(target, std::string("new")));  // replaces, and cuts to the new length
    EXPECT_EQ(test::ReadFile(target), news);
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"a.pcx"});

    {  // a write that is never committed leaves the old file as it was
        auto file = AtomicFile::Create(target);
        ASSERT_TRUE(file);
        ASSERT_TRUE(file.value().Write(std::span<const uint8_t>(std::vector<uint8_t>(100, 7))));
    }
    EXPECT_EQ(test::ReadFile(target), news);
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"a.pcx"});

    // Patching bytes already written, then keeping the replaced file as a backup.
    auto file = AtomicFile::Create(target);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value().Write(std::span<const uint8_t>(std::vector<uint8_t>{1, 2, 3, 4})));
    const uint8_t patch[] = {9, 9};
    ASSERT_TRUE(file.value().WriteAt(1, patch, 2));
    EXPECT_EQ(file.value().Size(), 4u);
    ASSERT_TRUE(file.value().Commit(dir / "a.pcx.bak"));
    EXPECT_EQ(test::ReadFile(target), std::vector<uint8_t>({1, 9, 9, 4}));
    EXPECT_EQ(test::ReadFile(dir / "a.pcx.bak"), news);
    EXPECT_EQ(Names(dir.Path()), (std::vector<std::string>{"a.pcx", "a.pcx.bak"}));

    auto missing = WriteFileAtomically(dir / "no/such/folder/x.pcx", std::string("x"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().File, dir / "no/such/folder/x.pcx");
    EXPECT_FALSE(missing.error().Detail.empty());
}

Status CommitText(const std::string& target, const std::string& text, const std::string& backup,
                  std::string* keptAs = nullptr) {
    auto file = AtomicFile::Create(target);
    if (!file) return file.error();
    if (auto s = file.value().Write(text.data(), text.size()); !s) return s;
    auto s = file.value().Commit(backup);
    if (keptAs) *keptAs = file.value().KeptAs();
    return s;
}

std::string TextOf(const std::string& path) {
    auto b = test::ReadFile(path);
    return std::string(b.begin(), b.end());
}

// The replaced file is never lost: each differing generation gets the next free backup
// name, and a generation equal to the newest backup adds no copy.
TEST(AtomicFile, BackupsKeepEveryDifferingGeneration) {
    test::TempDir dir;
    const std::string target = dir / "x.sff", bak = dir / "x.sff.bak";
    std::string kept = "unset";
    ASSERT_TRUE(CommitText(target, "original", bak, &kept));
    EXPECT_EQ(kept, "");  // nothing was replaced
    ASSERT_TRUE(CommitText(target, "A", bak, &kept));
    EXPECT_EQ(kept, bak);
    ASSERT_TRUE(CommitText(target, "A", bak, &kept));  // replaces A, which differs from x.sff.bak
    EXPECT_EQ(kept, bak + "2");
    ASSERT_TRUE(CommitText(target, "B", bak, &kept));  // replaces A again: equal to x.sff.bak2
    EXPECT_EQ(kept, bak + "2");
    EXPECT_EQ(Names(dir.Path()), (std::vector<std::string>{"x.sff", "x.sff.bak", "x.sff.bak2"}));
    EXPECT_EQ(TextOf(bak), "original");
    EXPECT_EQ(TextOf(bak + "2"), "A");
    EXPECT_EQ(TextOf(target), "B");

    // A name that is taken by something else is passed over; a longer file that starts
    // with the newest backup's bytes is no copy of it.
    fs::create_directory(bak + "3");
    ASSERT_TRUE(CommitText(target, "C", bak, &kept));
    EXPECT_EQ(kept, bak + "4");
    EXPECT_EQ(TextOf(bak + "4"), "B");
    ASSERT_TRUE(CommitText(target, "CC", bak, &kept));
    EXPECT_EQ(kept, bak + "5");
    EXPECT_EQ(TextOf(bak + "5"), "C");
}

TEST(AtomicFile, ATargetThatIsNoRegularFileIsNeverMovedAside) {
    test::TempDir dir;
    fs::create_directory(dir / "out.sff");
    test::WriteFile(dir / "out.sff/inside.pcx", {1, 2, 3});
    for (const std::string& backup : {std::string(), dir / "out.sff.bak"}) {
        SCOPED_TRACE(backup);
        auto s = CommitText(dir / "out.sff", "new", backup);
        ASSERT_FALSE(s.ok());
        EXPECT_EQ(s.error().File, dir / "out.sff");
        EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"out.sff"});  // no backup, no temporary
        EXPECT_EQ(test::ReadFile(dir / "out.sff/inside.pcx"), std::vector<uint8_t>({1, 2, 3}));
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

// A writer in a child process that stops half-way through its file; `whileAlive` runs
// while it lives, then it is killed with SIGKILL, as kill -9 does.
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
    const auto left = Names(dir.Path());
    ASSERT_EQ(left.size(), 1u);
    EXPECT_TRUE(IsTemporaryName(left[0])) << left[0];

    auto live = AtomicFile::Create(dir / "live.pcx");
    ASSERT_TRUE(live);
    const std::string lookalike = ".b.pcx.tmp00000000000000ff";  // the pattern, but no writer ever held it
    test::WriteFile(dir / lookalike, {7});
    test::WriteFile(dir / "keep.pcx", {1});
    test::WriteFile(dir / ".keep.pcx.tmp12345", {2});
    test::WriteFile(dir / "elsewhere.pcx", {3});
    fs::create_symlink(dir / "elsewhere.pcx", dir / ".link.pcx.tmp0000000000000001");
    fs::create_directory(dir / ".dir.tmp0000000000000002");
    ASSERT_EQ(mkfifo((dir / ".fifo.tmp0000000000000003").c_str(), 0666), 0);

    EXPECT_EQ(RemoveStaleTemporaries(dir.Path()), 2u);  // the killed writer's file and the lookalike
    auto names = Names(dir.Path());
    EXPECT_EQ(std::count_if(names.begin(), names.end(), [](const std::string& n) { return n.starts_with(".killed"); }), 0);
    EXPECT_FALSE(fs::exists(dir / lookalike));
    for (const char* kept : {"keep.pcx", ".keep.pcx.tmp12345", "elsewhere.pcx", ".link.pcx.tmp0000000000000001",
                             ".dir.tmp0000000000000002", ".fifo.tmp0000000000000003"})
        EXPECT_TRUE(fs::exists(fs::symlink_status(dir / kept))) << kept;
    ASSERT_TRUE(live.value().Write("x", 1));
    ASSERT_TRUE(live.value().Commit());  // the live writer's file survived the cleaning
    EXPECT_EQ(TextOf(dir / "live.pcx"), "x");
    EXPECT_EQ(RemoveStaleTemporaries(dir / "missing/"), 0u);
}

}  // namespace
}  // namespace tarvolin
