#pragma once
// Output files are written whole or not at all: the bytes go to a temporary file in the
// target's folder, which is renamed over the target only when everything was written.
// A failure leaves an existing target as it was and no temporary file behind.
//
// The temporary file is named "." + the target's name + ".tmp" + 16 hex digits, the first
// eight of them the writer's process id. A program killed on the way (kill -9) leaves the
// file behind; RemoveStaleTemporaries finds such files by their name and their writer's
// absence, and removes them.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
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
    // Several pieces one after another, in one call to the system where it takes them all.
    Status Write(std::initializer_list<std::span<const uint8_t>> pieces);
    // Writes at an offset: patches bytes already written, or appends when offset is Size().
    Status WriteAt(uint64_t offset, const void* data, size_t size);
    uint64_t Size() const { return size_; }

    // Closes the file and renames it over the target.
    // With a `backupPath`, the file being replaced is never lost: it is kept as
    // `backupPath` when that name is free, else under the first free name of
    // `backupPath` + "2", "3", ... A file whose bytes equal the newest of those backups
    // (the last one before the first free name) gets no new copy: its bytes are there
    // already. A target that is not a regular file is then refused and left as it is.
    Status Commit(const std::string& backupPath = {});
    // After a Commit with a backup path: the name under which the replaced file's bytes
    // are kept (a new backup, or the equal newest one); empty when no file was replaced.
    const std::string& KeptAs() const { return keptAs_; }

    const std::string& Path() const { return path_; }
    // The open temporary file, for handing it to a child process as its output; -1 after
    // Commit or a failure.
    int Descriptor() const { return fd_; }

private:
    AtomicFile(std::string path, std::string temp, int fd) : path_(std::move(path)), temp_(std::move(temp)), fd_(fd) {}
    Error Failure(const char* what, int err) const;
    void Abandon();

    std::string path_;
    std::string temp_;
    int fd_ = -1;
    uint64_t size_ = 0;
    std::string keptAs_;
};

// The whole file in one call.
Status WriteFileAtomically(const std::string& path, std::span<const uint8_t> bytes);
Status WriteFileAtomically(const std::string& path, const std::string& bytes);

// Why a write failed, in words: the file-size limit (ulimit -f) and a full disk are named
// as such, any other failure by the system's text.
std::string WriteFailureReason(int err);

// Makes a write beyond the file-size limit (ulimit -f) fail with EFBIG, which is reported
// like any failed write, instead of raising the signal that ends the program without a
// word. For main() of every program that writes files.
void ReportFileSizeLimitAsError();

// Whether `name` (a bare file name) has the form of an AtomicFile temporary:
// "." NAME ".tmp" and 16 lower-case hex digits, with NAME not empty.
bool IsTemporaryName(const std::string& name);

// Removes from `folder` (ending with '/'; empty: the working folder) the temporary files
// that writers which ended without finishing left behind: regular files whose name has
// the temporary form and whose writing process no longer exists. A file of any other name
// or kind, and one whose writer still runs, is never touched. Call it at the start of
// a command that writes into the folder. Gives the number of files removed; a folder that
// can't be read gives 0.
size_t RemoveStaleTemporaries(const std::string& folder);

}  // namespace tarvolin
