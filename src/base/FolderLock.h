#pragma once
// One writer at a time in a folder: a small lock file there, held with flock() for as long
// as the FolderLock lives. The system drops the lock when its holder ends, also by kill -9,
// so a lock is never left stale; the empty lock file itself may stay behind.
#include <string>

#include "base/Result.h"

namespace tarvolin {

class FolderLock {
public:
    // Takes the lock named `lockName` (a bare file name) in `folder` (ending with '/').
    // When another process holds it the answer comes at once: an error with key ERR_BUSY
    // naming the folder, never a wait. A folder where no lock file can be made gives
    // ERR_WRITE with the system's reason.
    static Result<FolderLock> Take(const std::string& folder, const std::string& lockName);

    FolderLock(FolderLock&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
    FolderLock& operator=(FolderLock&&) = delete;
    FolderLock(const FolderLock&) = delete;
    ~FolderLock();

private:
    explicit FolderLock(int fd) : fd_(fd) {}
    int fd_ = -1;
};

// The lock names in use: every Tarvolin command that writes working files into a folder,
// and sprmaker.exe while it writes its SFF there.
inline constexpr const char* kWorkFolderLock = ".tarvolin-work.lock";
inline constexpr const char* kBuilderLock = ".sprmaker.lock";

}  // namespace tarvolin
