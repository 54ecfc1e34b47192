#include "base/FileRead.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvolin {

namespace {

// Closes the descriptor on every way out.
struct Fd {
    int Value;
    ~Fd() {
        if (Value >= 0) close(Value);
    }
};

std::string KindOf(mode_t mode) {
    if (S_ISDIR(mode)) return "is a folder";
    if (S_ISFIFO(mode)) return "is not a regular file but a pipe";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "is not a regular file but a device";
    if (S_ISSOCK(mode)) return "is not a regular file but a socket";
    return "is not a regular file";
}

}  // namespace

Result<std::vector<uint8_t>> ReadWholeFile(const std::string& path, const char* errorKey, uint64_t maxBytes) {
    // O_NONBLOCK: opening a pipe must not wait for a writer; a regular file ignores it.
    Fd fd{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
    if (fd.Value < 0) return Error{errorKey, path, std::strerror(errno)};
    struct stat st {};
    if (fstat(fd.Value, &st) != 0) return Error{errorKey, path, std::strerror(errno)};
    if (!S_ISREG(st.st_mode)) return Error{errorKey, path, KindOf(st.st_mode)};
    const uint64_t size = static_cast<uint64_t>(st.st_size);
    if (size > maxBytes)
        return Error{errorKey, path,
                     "the file has " + std::to_string(size) + " bytes, more than the " + std::to_string(maxBytes) +
                         " that are read"};
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    size_t got = 0;
    while (got < bytes.size()) {
        const ssize_t n = ::read(fd.Value, bytes.data() + got, bytes.size() - got);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return Error{errorKey, path, std::strerror(errno)};
        if (n == 0) break;  // the file shrank meanwhile: what is there is the file
        got += static_cast<size_t>(n);
    }
    bytes.resize(got);
    return bytes;
}

}  // namespace tarvolin
