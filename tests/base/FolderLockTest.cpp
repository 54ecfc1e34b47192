// One writer at a time in a folder, across processes; the lock goes with its holder.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include "base/FolderLock.h"
#include "base/MessageKeys.h"
#include "support/TempDir.h"

namespace tarvolin {
namespace {

// Whether a child process (a lock of its own, as a second program would have) gets it.
bool OtherProcessGets(const std::string& folder) {
    const pid_t pid = fork();
    if (pid == 0) _exit(FolderLock::Take(folder, kBuilderLock).ok() ? 0 : 1);
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(FolderLock, OneHolderAtATimeAndReleasedWithIt) {
    test::TempDir dir;
    {
        auto held = FolderLock::Take(dir.Path(), kBuilderLock);
        ASSERT_TRUE(held.ok()) << held.error().Detail;
        EXPECT_FALSE(OtherProcessGets(dir.Path()));
        auto again = FolderLock::Take(dir.Path(), kBuilderLock);  // a second holder in this process too
        ASSERT_FALSE(again.ok());
        EXPECT_EQ(again.error().Key, msg::FolderBusy);
        EXPECT_EQ(again.error().File, dir.Path());
        EXPECT_TRUE(FolderLock::Take(dir.Path(), kWorkFolderLock).ok());  // another name is another lock
    }
    EXPECT_TRUE(OtherProcessGets(dir.Path()));

    auto nowhere = FolderLock::Take(dir / "missing/", kBuilderLock);
    ASSERT_FALSE(nowhere.ok());
    EXPECT_EQ(nowhere.error().Key, msg::WriteFailed);
}

}  // namespace
}  // namespace tarvolin
