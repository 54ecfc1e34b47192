#pragma once
// One writer at a time in a folder, held with flock() for as long as the FolderLock lives.
// The system drops a lock with its holder, also one killed by kill -9, so a lock is never
// left stale. Nothing is left behind in the folder: the work lock is taken on the folder
// itself, and a named lock file is removed when its lock is released.
#include <string>

#include "base/Result.h"

namespace tarvolin {

// The lock that every Tarvolin command writing working files into a folder takes: the
// folder itself, which any user who may read the folder can lock.
struct FolderItself {};
inline constexpr FolderItself kWorkFolderLock{};
// The lock sprmaker.exe holds while it writes its SFF: a file of that name in the folder
// for as long as it is held, since a build run by Tarvolin's build batch writes into a
// folder whose work lock Tarvolin holds.
inline constexpr const char* kBuilderLock = ".sprmaker.lock";

class FolderLock {
public:
    // Takes the lock of `folder` (ending with '/'). When another holder has it the answer
    // comes at once: an error with key ERR_BUSY naming the folder, never a wait. A folder
    // that is missing, is no folder or can't be opened gives ERR_WRITE naming the folder
    // and what is wrong with it.
    static Result<FolderLock> Take(const std::string& folder, FolderItself);
    // The same with the lock file `lockName` (a bare name) in the folder, made for the
    // time the lock is held; one another user made is locked as it stands.
    static Result<FolderLock> Take(const std::string& folder, const std::string& lockName);

    FolderLock(FolderLock&& other) noexcept : fd_(other.fd_), removeOnRelease_(std::move(other.removeOnRelease_)) {
        other.fd_ = -1;
    }
    FolderLock& operator=(FolderLock&&) = delete;
    FolderLock(const FolderLock&) = delete;
    ~FolderLock();

private:
    FolderLock(int fd, std::string removeOnRelease) : fd_(fd), removeOnRelease_(std::move(removeOnRelease)) {}
    int fd_ = -1;
    std::string removeOnRelease_;  // the lock file, or empty for the folder itself
};

}  // namespace tarvolin
