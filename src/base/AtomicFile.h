#pragma once
// Output files are written whole or not at all: the bytes go to a temporary file in the
// target's folder, which is renamed over the target only when everything was written.
// A failure leaves an existing target as it was and no temporary file behind.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

class AtomicFile {
public:
    static Result<AtomicFile> Create(const std::string& path);
    AtomicFile(AtomicFile&& other) noexcept;
    AtomicFile& operator=(AtomicFile&&) = delete;
    AtomicFile(const AtomicFile&) = delete;
    ~AtomicFile();  // removes the temporary file unless Commit succeeded

    Status Write(const void* data, size_t size);
    Status Write(std::span<const uint8_t> bytes) { return Write(bytes.data(), bytes.size()); }
    // Writes at an offset: patches bytes already written, or appends when offset is Size().
    Status WriteAt(uint64_t offset, const void* data, size_t size);
    uint64_t Size() const { return size_; }

    // Closes the file and renames it over the target. With a `backupPath`, a target that
    // already exists is kept under that name (an older file there is replaced).
    Status Commit(const std::string& backupPath = {});

    const std::string& Path() const { return path_; }

private:
    AtomicFile(std::string path, std::string temp, int fd) : path_(std::move(path)), temp_(std::move(temp)), fd_(fd) {}
    Error Failure(const char* what, int err) const;
    Status KeepBackup(const std::string& backupPath) const;
    void Abandon();

    std::string path_;
    std::string temp_;
    int fd_ = -1;
    uint64_t size_ = 0;
};

// The whole file in one call.
Status WriteFileAtomically(const std::string& path, std::span<const uint8_t> bytes);
Status WriteFileAtomically(const std::string& path, const std::string& bytes);

}  // namespace tarvolin
