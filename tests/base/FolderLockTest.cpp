// One writer at a time in a folder, across processes; the lock leaves nothing behind.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include "base/FolderLock.h"
#include "base/MessageKeys.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

// Whether a child process (a lock of its own, as a second program would have) gets it.
template <class Kind>
bool OtherProcessGets(const std::string& folder, Kind kind) {
    const pid_t pid = fork();
    if (pid == 0) {
        const bool got = FolderLock::Take(folder, kind).ok();  // and let go again
        _exit(got ? 0 : 1);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

template <class Kind>
void OneHolderAtATime(Kind kind) {
    test::TempDir dir;
    {
        auto held = FolderLock::Take(dir.Path(), kind);
        ASSERT_TRUE(held.ok()) << held.error().Detail;
        EXPECT_FALSE(OtherProcessGets(dir.Path(), kind));
        auto again = FolderLock::Take(dir.Path(), kind);  // a second holder in this process too
        ASSERT_FALSE(again.ok());
        EXPECT_EQ(again.error().Key, msg::FolderBusy);
        EXPECT_EQ(again.error().File, dir.Path());
    }
    EXPECT_TRUE(OtherProcessGets(dir.Path(), kind));
    EXPECT_TRUE(dir.Contents().empty());

    for (const auto& [folder, says] : {std::pair(dir / "missing/", "the folder does not exist"),
                                       std::pair(dir / "file/", "this is no folder")}) {
        test::WriteFile(dir / "file", {});
        auto refused = FolderLock::Take(folder, kind);
        ASSERT_FALSE(refused.ok());
        EXPECT_EQ(refused.error().Key, msg::WriteFailed);
        EXPECT_EQ(refused.error().File, folder);
        EXPECT_EQ(refused.error().Detail, says);
    }
}

// The work lock on the folder itself, and the builder's lock file (that the two are apart: the
// builds under Tarvolin's lock in SessionTest, CliTest and MainWindowTest).
TEST(FolderLock, OneHolderAtATimeAndNothingLeftBehind) {
    OneHolderAtATime(kWorkFolderLock);
    OneHolderAtATime(std::string(kBuilderLock));
}

}  // namespace
}  // namespace tarvolin
