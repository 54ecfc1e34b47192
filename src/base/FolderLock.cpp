#include "base/FolderLock.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/MessageKeys.h"

namespace tarvolin {

namespace {

// What is wrong with a folder that could not be opened, in the words of a message.
Error FolderError(const std::string& folder, int err) {
    if (err == ENOENT) return Error{msg::WriteFailed, folder, "the folder does not exist"};
    if (err == ENOTDIR) return Error{msg::WriteFailed, folder, "this is no folder"};
    return Error{msg::WriteFailed, folder, std::string("the folder cannot be opened: ") + std::strerror(err)};
}

Error Busy(const std::string& folder, const std::string& lock) {
    return Error{msg::FolderBusy, folder, "another build or export is writing into this folder (" + lock + ")"};
}

// Whether `fd` is still the file that `path` names: a lock file removed by its last
// holder between our open and our lock is locked in vain.
bool StillNamed(int fd, const std::string& path) {
    struct stat held {}, named {};
    return fstat(fd, &held) == 0 && lstat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

}  // namespace

Result<FolderLock> FolderLock::Take(const std::string& folder, FolderItself) {
    const int fd = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return FolderError(folder, errno);
    if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int err = errno;
        close(fd);
        if (err == EWOULDBLOCK) return Busy(folder, "the folder is locked");
        return Error{msg::WriteFailed, folder, std::string("lock the folder: ") + std::strerror(err)};
    }
    return FolderLock(fd, {});
}

Result<FolderLock> FolderLock::Take(const std::string& folder, const std::string& lockName) {
    const std::string path = folder + lockName;
    for (int attempt = 0; attempt < 100; ++attempt) {
        // No O_TRUNC and no link followed: the file is only ever a name to lock on. A lock
        // file another user made may be ours to read only; a read-only open locks as well.
        int fd = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
        if (fd < 0 && errno == EACCES) fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
        if (fd < 0) {
            const int err = errno;
            struct stat st {};
            if (stat(folder.empty() ? "." : folder.c_str(), &st) != 0) return FolderError(folder, errno);
            if (!S_ISDIR(st.st_mode)) return FolderError(folder, ENOTDIR);
            return Error{msg::WriteFailed, path, std::string("lock file: ") + std::strerror(err)};
        }
        if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
            const int err = errno;
            close(fd);
            if (err == EWOULDBLOCK) return Busy(folder, lockName);
            return Error{msg::WriteFailed, path, std::string("lock: ") + std::strerror(err)};
        }
        if (StillNamed(fd, path)) return FolderLock(fd, path);
        close(fd);
    }
    return Busy(folder, lockName);
}

FolderLock::~FolderLock() {
    if (fd_ < 0) return;
    // Removed while still held, so that nobody locks a file on its way out of the folder
    // (and who opened it meanwhile sees it is no longer named and takes a new one).
    if (!removeOnRelease_.empty() && StillNamed(fd_, removeOnRelease_)) unlink(removeOnRelease_.c_str());
    close(fd_);  // closing the last descriptor releases the flock
}

}  // namespace tarvolin
