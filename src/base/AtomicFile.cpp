#include "base/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include "base/MessageKeys.h"
#include "base/TextHelpers.h"

namespace tarvolin {

namespace {

constexpr const char* kTempMarker = ".tmp";
constexpr size_t kTempDigits = 16;

// Reads up to `size` bytes, fewer only at the end of the file; -1 on an error.
ssize_t ReadFull(int fd, char* buf, size_t size) {
    size_t got = 0;
    while (got < size) {
        const ssize_t n = read(fd, buf + got, size - got);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return -1;
        if (n == 0) break;
        got += static_cast<size_t>(n);
    }
    return static_cast<ssize_t>(got);
}

// Whether the two files hold the same bytes; a file that can't be read is not the same.
bool SameBytes(const std::string& a, const std::string& b) {
    const int fa = open(a.c_str(), O_RDONLY | O_CLOEXEC);
    const int fb = open(b.c_str(), O_RDONLY | O_CLOEXEC);
    bool same = fa >= 0 && fb >= 0;
    std::vector<char> ba(65536), bb(65536);
    while (same) {
        const ssize_t na = ReadFull(fa, ba.data(), ba.size()), nb = ReadFull(fb, bb.data(), bb.size());
        same = na >= 0 && na == nb && std::memcmp(ba.data(), bb.data(), static_cast<size_t>(na)) == 0;
        if (na < static_cast<ssize_t>(ba.size())) break;
    }
    if (fa >= 0) close(fa);
    if (fb >= 0) close(fb);
    return same;
}

std::string NumberedBackup(const std::string& backupPath, int number) {
    return number == 1 ? backupPath : backupPath + DecimalText(number);
}

// Keeps the regular file `target` before a rename replaces it; gives where its bytes are
// kept. A hard link keeps the old file in place until the rename replaces it; where the
// file system has no links the old file is moved aside instead.
Result<std::string> KeepReplaced(const std::string& target, const std::string& backupPath) {
    struct stat st {};
    if (lstat(target.c_str(), &st) != 0) {
        if (errno == ENOENT) return std::string();
        return Error{msg::WriteFailed, target, std::string("look at the file to replace: ") + std::strerror(errno)};
    }
    if (!S_ISREG(st.st_mode))
        return Error{msg::WriteFailed, target, "not a regular file: it is left as it is and nothing is written"};
    std::string newest;
    for (int number = 1;; ++number) {
        const std::string name = NumberedBackup(backupPath, number);
        struct stat bs {};
        if (lstat(name.c_str(), &bs) == 0) {
            newest = name;
            continue;
        }
        if (errno != ENOENT)
            return Error{msg::WriteFailed, name, std::string("look at the backup: ") + std::strerror(errno)};
        if (!newest.empty() && SameBytes(target, newest)) return newest;
        if (link(target.c_str(), name.c_str()) == 0) return name;
        if (errno == EEXIST) continue;  // taken in the meantime: the next number
        if (std::rename(target.c_str(), name.c_str()) == 0) return name;
        return Error{msg::WriteFailed, name, std::string("keep the old file: ") + std::strerror(errno)};
    }
}

}  // namespace

// The temporary name is drawn here rather than by mkstemp: mkstemp's mode 0600 would cost
// a umask round trip and an fchmod per file, while O_EXCL with 0666 lets the umask apply
// as it does to any new file. The export writes thousands of small files this way.
//
// Its 16 hex digits are the writer's process id (8) and a random number (8): a temporary
// whose process is gone was left by a writer that died in the middle (kill -9), and the
// next cleaning can tell so without any lock or system call per file written.
Result<AtomicFile> AtomicFile::Create(const std::string& path) {
    const std::string stem = GetFolder(path) + "." + GetFileName(path) + kTempMarker;
    thread_local std::mt19937 random{std::random_device{}() ^ static_cast<uint32_t>(getpid())};
    for (int attempt = 0; attempt < 100; ++attempt) {
        char suffix[kTempDigits + 1];
        std::snprintf(suffix, sizeof suffix, "%08x%08x", static_cast<unsigned>(getpid()),
                      static_cast<unsigned>(random()));
        std::string temp = stem + suffix;
        const int fd = open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) return AtomicFile(path, std::move(temp), fd);
        if (errno != EEXIST) return Error{msg::WriteFailed, path, WriteFailureReason(errno)};
    }
    return Error{msg::WriteFailed, path, "no free temporary name"};
}

AtomicFile::AtomicFile(AtomicFile&& o) noexcept
    : path_(std::move(o.path_)), temp_(std::move(o.temp_)), fd_(o.fd_), size_(o.size_), keptAs_(std::move(o.keptAs_)) {
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
    return Error{msg::WriteFailed, path_, std::string(what) + ": " + WriteFailureReason(err)};
}

std::string WriteFailureReason(int err) {
    if (err == EFBIG) return "the file-size limit (ulimit -f) stops the write";
    if (err == ENOSPC) return "the disk is full";
    return std::strerror(err);
}

void ReportFileSizeLimitAsError() { std::signal(SIGXFSZ, SIG_IGN); }

Status AtomicFile::Write(const void* data, size_t size) {
    if (auto s = WriteAt(size_, data, size); !s) return s;
    size_ += size;
    return Ok();
}

Status AtomicFile::Write(std::initializer_list<std::span<const uint8_t>> pieces) {
    iovec parts[8];
    size_t count = 0, total = 0;
    for (const auto& piece : pieces) {
        if (count == std::size(parts)) break;
        parts[count++] = iovec{const_cast<uint8_t*>(piece.data()), piece.size()};
        total += piece.size();
    }
    if (count < pieces.size()) {  // more pieces than one call takes: one by one
        for (const auto& piece : pieces)
            if (auto s = Write(piece); !s) return s;
        return Ok();
    }
    const ssize_t n = pwritev(fd_, parts, static_cast<int>(count), static_cast<off_t>(size_));
    if (n == static_cast<ssize_t>(total)) {
        size_ += total;
        return Ok();
    }
    // Short, interrupted or failed: what is left goes piece by piece, which reports a failure.
    size_t done = n > 0 ? static_cast<size_t>(n) : 0;
    for (const auto& piece : pieces) {
        const size_t skip = std::min(done, piece.size());
        done -= skip;
        size_ += skip;
        if (auto s = Write(piece.data() + skip, piece.size() - skip); !s) return s;
    }
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

// The descriptor is closed before the rename, since close is where a network file system
// reports a write that failed.
Status AtomicFile::Commit(const std::string& backupPath) {
    if (fd_ < 0) return Failure("write", EBADF);
    const int closed = close(fd_);
    const int closeErr = errno;
    fd_ = -1;
    if (closed != 0) {
        Error e = Failure("close", closeErr);
        Abandon();
        return e;
    }
    keptAs_.clear();
    if (!backupPath.empty()) {
        auto kept = KeepReplaced(path_, backupPath);
        if (!kept) {
            Abandon();
            return kept.error();
        }
        keptAs_ = std::move(kept.value());
    }
    if (std::rename(temp_.c_str(), path_.c_str()) != 0) {
        Error e = Failure("rename", errno);
        Abandon();
        return e;
    }
    temp_.clear();
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

bool IsTemporaryName(const std::string& name) {
    const size_t marker = std::strlen(kTempMarker);
    if (name.size() < 2 + marker + kTempDigits || name.front() != '.') return false;
    const size_t digits = name.size() - kTempDigits;
    if (name.compare(digits - marker, marker, kTempMarker) != 0) return false;
    for (size_t i = digits; i < name.size(); ++i)
        if (!((name[i] >= '0' && name[i] <= '9') || (name[i] >= 'a' && name[i] <= 'f'))) return false;
    return true;
}

namespace {

// Whether the process that a temporary's name gives as its writer still runs. A process
// that exists but isn't ours to signal (EPERM) runs too; id 0 names no writer.
bool WriterRuns(const std::string& name) {
    const std::string digits = name.substr(name.size() - kTempDigits, 8);
    const auto pid = static_cast<pid_t>(std::strtoul(digits.c_str(), nullptr, 16));
    if (pid <= 0) return false;
    return kill(pid, 0) == 0 || errno == EPERM;
}

}  // namespace

// Only regular files are removed, looked at without following a link; a folder, a link
// or a pipe of that name stays.
size_t RemoveStaleTemporaries(const std::string& folder) {
    const int dirFd = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd < 0) return 0;
    DIR* dir = fdopendir(dirFd);
    if (!dir) {
        close(dirFd);
        return 0;
    }
    size_t removed = 0;
    while (const dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (!IsTemporaryName(name) || WriterRuns(name)) continue;
        struct stat st {};
        if (fstatat(dirFd, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(st.st_mode) &&
            unlinkat(dirFd, name.c_str(), 0) == 0)
            ++removed;
    }
    closedir(dir);
    return removed;
}

}  // namespace tarvolin
