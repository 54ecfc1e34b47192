#pragma once
// Reading input files. Only a regular file is read: a folder, a device such as /dev/zero,
// a pipe or a socket is refused before a byte is read (a pipe is opened without waiting
// for a writer), and so is a file larger than the caller's limit, which is checked from
// the file's size before anything is allocated.
#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

// An open file descriptor, closed with the object.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1) : fd_(fd) {}
    FileDescriptor(FileDescriptor&& o) noexcept : fd_(o.fd_) { o.fd_ = -1; }
    FileDescriptor& operator=(FileDescriptor&& o) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();
    int Get() const { return fd_; }

private:
    int fd_;
};

// A regular file opened for reading, with what fstat said of it then.
struct OpenedFile {
    FileDescriptor Fd;
    struct stat Stat {};
};

// Opens `path` for reading, refused as told above. The error carries `errorKey`, names
// the file and says why: the system's reason, "is a folder", "is not a regular file", or
// the size against `maxBytes`.
Result<OpenedFile> OpenRegularFile(const std::string& path, const char* errorKey, uint64_t maxBytes);

// The whole file, refused the same way.
Result<std::vector<uint8_t>> ReadWholeFile(const std::string& path, const char* errorKey, uint64_t maxBytes);

}  // namespace tarvolin
