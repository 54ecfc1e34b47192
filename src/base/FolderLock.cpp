#include "base/FolderLock.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "base/MessageKeys.h"

namespace tarvolin {

Result<FolderLock> FolderLock::Take(const std::string& folder, const std::string& lockName) {
    const std::string path = folder + lockName;
    // No O_TRUNC and no symlink followed: the file is only ever a name to lock on.
    const int fd = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (fd < 0) return Error{msg::WriteFailed, path, std::string("lock file: ") + std::strerror(errno)};
    if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int err = errno;
        close(fd);
        if (err == EWOULDBLOCK)
            return Error{msg::FolderBusy, folder, "another build or export is writing into this folder (" + lockName + ")"};
        return Error{msg::WriteFailed, path, std::string("lock: ") + std::strerror(err)};
    }
    return FolderLock(fd);
}

FolderLock::~FolderLock() {
    if (fd_ >= 0) close(fd_);  // closing the last descriptor releases the flock
}

}  // namespace tarvolin
