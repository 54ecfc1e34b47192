#include "base/FileRead.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace tarvolin {

namespace {

std::string KindOf(mode_t mode) {
    if (S_ISDIR(mode)) return "is a folder";
    if (S_ISFIFO(mode)) return "is not a regular file but a pipe";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "is not a regular file but a device";
    if (S_ISSOCK(mode)) return "is not a regular file but a socket";
    return "is not a regular file";
}

}  // namespace

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& o) noexcept {
    if (this != &o) {
        if (fd_ >= 0) close(fd_);
        fd_ = o.fd_;
        o.fd_ = -1;
    }
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (fd_ >= 0) close(fd_);
}

Result<OpenedFile> OpenRegularFile(const std::string& path, const char* errorKey, uint64_t maxBytes) {
    // O_NONBLOCK: opening a pipe must not wait for a writer; a regular file ignores it.
    OpenedFile file{FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)), {}};
    if (file.Fd.Get() < 0) return Error{errorKey, path, std::strerror(errno)};
    if (fstat(file.Fd.Get(), &file.Stat) != 0) return Error{errorKey, path, std::strerror(errno)};
    if (!S_ISREG(file.Stat.st_mode)) return Error{errorKey, path, KindOf(file.Stat.st_mode)};
    const auto size = static_cast<uint64_t>(file.Stat.st_size);
    if (size > maxBytes)
        return Error{errorKey, path,
                     "the file has " + std::to_string(size) + " bytes, more than the " + std::to_string(maxBytes) +
                         " that are read"};
    return file;
}

Result<std::vector<uint8_t>> ReadWholeFile(const std::string& path, const char* errorKey, uint64_t maxBytes) {
    auto file = OpenRegularFile(path, errorKey, maxBytes);
    if (!file) return file.error();
    const int fd = file.value().Fd.Get();
    std::vector<uint8_t> bytes(static_cast<size_t>(file.value().Stat.st_size));
    size_t got = 0;
    while (got < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + got, bytes.size() - got);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return Error{errorKey, path, std::strerror(errno)};
        if (n == 0) break;  // the file shrank meanwhile: what is there is the file
        got += static_cast<size_t>(n);
    }
    bytes.resize(got);
    return bytes;
}

}  // namespace tarvolin
