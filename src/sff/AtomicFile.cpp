#include "sff/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>
#include <utility>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "config/MessageCatalog.h"
#include "sff/TextHelpers.h"

namespace tarvolin {

namespace {

// A random temporary name beside `path`, opened exclusively. The name is drawn here rather
// than by mkstemp: mkstemp's mode 0600 would cost a umask round trip and an fchmod per file,
// while O_EXCL with 0666 lets the umask apply as it does to any new file.
Result<std::pair<std::string, int>> OpenNamedTemp(const std::string& path) {
    const std::string stem = GetFolder(path) + "." + GetFileName(path) + ".tmp";
    thread_local std::mt19937_64 random{std::random_device{}() ^ static_cast<uint64_t>(getpid())};
    for (int attempt = 0; attempt < 100; ++attempt) {
        char suffix[17];
        std::snprintf(suffix, sizeof suffix, "%016llx", static_cast<unsigned long long>(random()));
        std::string temp = stem + suffix;
        const int fd = open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) return std::pair{std::move(temp), fd};
        if (errno != EEXIST) return Error{msg::WriteFailed, path, std::strerror(errno)};
    }
    return Error{msg::WriteFailed, path, "no free temporary name"};
}

// A nameless file is given its name through /proc/self/fd; without /proc it can't be.
bool CanLinkNamelessFiles() {
    static const bool can = access("/proc/self/fd", X_OK) == 0;
    return can;
}

std::string FdPath(int fd) { return "/proc/self/fd/" + std::to_string(fd); }

}  // namespace

// Where the file system allows it, the new file has no name until Commit links it into
// place (O_TMPFILE): a fresh name then costs one directory operation, as a plain create
// does, and a crash leaves nothing behind. Elsewhere a named temporary file is renamed.
Result<AtomicFile> AtomicFile::Create(const std::string& path) {
    if (CanLinkNamelessFiles()) {
        const std::string folder = GetFolder(path);
        const int fd = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
        if (fd >= 0) return AtomicFile(path, std::string(), fd);
        if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)
            return Error{msg::WriteFailed, path, std::strerror(errno)};
    }
    auto temp = OpenNamedTemp(path);
    if (!temp) return temp.error();
    return AtomicFile(path, std::move(temp.value().first), temp.value().second);
}

AtomicFile::AtomicFile(AtomicFile&& o) noexcept
    : path_(std::move(o.path_)), temp_(std::move(o.temp_)), fd_(o.fd_), size_(o.size_) {
    o.fd_ = -1;
    o.temp_.clear();
}

AtomicFile::~AtomicFile() { Abandon(); }

void AtomicFile::Abandon() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
    if (!temp_.empty()) unlink(temp_.c_str());
    temp_.clear();
}

Error AtomicFile::Failure(const char* what, int err) const {
    return Error{msg::WriteFailed, path_, std::string(what) + ": " + std::strerror(err)};
}

Status AtomicFile::Write(const void* data, size_t size) {
    if (auto s = WriteAt(size_, data, size); !s) return s;
    size_ += size;
    return Ok();
}

Status AtomicFile::WriteAt(uint64_t offset, const void* data, size_t size) {
    const auto* p = static_cast<const uint8_t*>(data);
    while (size > 0) {
        ssize_t n = ::pwrite(fd_, p, size, static_cast<off_t>(offset));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            Error e = Failure("write", n < 0 ? errno : ENOSPC);
            Abandon();
            return e;
        }
        p += n;
        size -= static_cast<size_t>(n);
        offset += static_cast<uint64_t>(n);
    }
    return Ok();
}

Status AtomicFile::Commit(const std::string& backupPath) {
    if (fd_ < 0) return Failure("write", EBADF);
    if (temp_.empty()) return CommitNameless(backupPath);
    if (close(fd_) != 0) {
        fd_ = -1;
        Error e = Failure("close", errno);
        Abandon();
        return e;
    }
    fd_ = -1;
    if (auto s = KeepBackup(backupPath); !s) {
        Abandon();
        return s;
    }
    if (std::rename(temp_.c_str(), path_.c_str()) != 0) {
        Error e = Failure("rename", errno);
        Abandon();
        return e;
    }
    temp_.clear();
    return Ok();
}

// The nameless file takes the target's name at once where that name is free; an existing
// file is replaced by linking under a temporary name first and renaming that over it.
Status AtomicFile::CommitNameless(const std::string& backupPath) {
    if (auto s = KeepBackup(backupPath); !s) {
        Abandon();
        return s;
    }
    const std::string self = FdPath(fd_);
    if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path_.c_str(), AT_SYMLINK_FOLLOW) != 0) {
        if (errno != EEXIST) {
            Error e = Failure("link", errno);
            Abandon();
            return e;
        }
        for (int attempt = 0; temp_.empty() && attempt < 100; ++attempt) {
            auto name = OpenNamedTemp(path_);  // only to reserve a free name
            if (!name) {
                Abandon();
                return name.error();
            }
            close(name.value().second);
            unlink(name.value().first.c_str());
            if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.value().first.c_str(), AT_SYMLINK_FOLLOW) == 0)
                temp_ = name.value().first;
            else if (errno != EEXIST) {
                Error e = Failure("link", errno);
                Abandon();
                return e;
            }
        }
        if (std::rename(temp_.c_str(), path_.c_str()) != 0) {
            Error e = Failure("rename", errno);
            Abandon();
            return e;
        }
        temp_.clear();
    }
    const int fd = fd_;
    fd_ = -1;
    if (close(fd) != 0) return Failure("close", errno);
    return Ok();
}

// A hard link keeps the old file in place until the rename replaces it; where the file
// system has no links the old file is moved aside instead.
Status AtomicFile::KeepBackup(const std::string& backupPath) const {
    struct stat st {};
    if (backupPath.empty() || lstat(path_.c_str(), &st) != 0) return Ok();
    if (unlink(backupPath.c_str()) != 0 && errno != ENOENT)
        return Error{msg::WriteFailed, backupPath, std::string("remove: ") + std::strerror(errno)};
    if (link(path_.c_str(), backupPath.c_str()) != 0 && std::rename(path_.c_str(), backupPath.c_str()) != 0)
        return Error{msg::WriteFailed, backupPath, std::string("keep the old file: ") + std::strerror(errno)};
    return Ok();
}

Status WriteFileAtomically(const std::string& path, std::span<const uint8_t> bytes) {
    auto file = AtomicFile::Create(path);
    if (!file) return file.error();
    if (auto s = file.value().Write(bytes); !s) return s;
    return file.value().Commit();
}

Status WriteFileAtomically(const std::string& path, const std::string& bytes) {
    return WriteFileAtomically(path, std::span(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
}

Result<std::vector<uint8_t>> ReadWholeFile(const std::string& path, const char* errorKey) {
    int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return Error{errorKey, path, std::strerror(errno)};
    struct stat st {};
    if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        int err = errno;
        close(fd);
        return Error{errorKey, path, S_ISDIR(st.st_mode) ? "is a folder" : std::strerror(err)};
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(st.st_size));
    size_t got = 0;
    while (got < bytes.size()) {
        ssize_t n = ::read(fd, bytes.data() + got, bytes.size() - got);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            int err = errno;
            close(fd);
            return Error{errorKey, path, std::strerror(err)};
        }
        if (n == 0) break;
        got += static_cast<size_t>(n);
    }
    close(fd);
    bytes.resize(got);
    return bytes;
}

}  // namespace tarvolin
