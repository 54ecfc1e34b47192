#include "base/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/MessageKeys.h"
#include "base/TextHelpers.h"

namespace tarvolin {

// The temporary name is drawn here rather than by mkstemp: mkstemp's mode 0600 would cost
// a umask round trip and an fchmod per file, while O_EXCL with 0666 lets the umask apply
// as it does to any new file. The export writes thousands of small files this way.
Result<AtomicFile> AtomicFile::Create(const std::string& path) {
    const std::string stem = GetFolder(path) + "." + GetFileName(path) + ".tmp";
    thread_local std::mt19937_64 random{std::random_device{}() ^ static_cast<uint64_t>(getpid())};
    for (int attempt = 0; attempt < 100; ++attempt) {
        char suffix[17];
        std::snprintf(suffix, sizeof suffix, "%016llx", static_cast<unsigned long long>(random()));
        std::string temp = stem + suffix;
        const int fd = open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) return AtomicFile(path, std::move(temp), fd);
        if (errno != EEXIST) return Error{msg::WriteFailed, path, std::strerror(errno)};
    }
    return Error{msg::WriteFailed, path, "no free temporary name"};
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

}  // namespace tarvolin
