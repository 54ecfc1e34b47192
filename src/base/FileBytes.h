#pragma once
// A file's bytes as they stood when it was opened, read where they are needed instead of
// all at once: opening a large SFF reads its subfile headers only, and an export reads
// each sprite as it writes it. The file stays open, so a file put in its place under the
// same name (a rename) changes nothing here. A change to the file itself after opening (a
// write, a truncation) is seen, by the file's size and the time of the last write, and for
// a file written just before it was opened by the system's notice of writes as well; every
// read from then on fails: bytes other than those opened never reach the caller, and a
// file cut short never crashes a reader, since nothing is mapped.
//
// Copies share the open file: a snapshot of the open SFF costs nothing.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

class FileBytes {
public:
    FileBytes() = default;
    // Bytes held in memory (files made by the tests and fuzzers); they never change.
    FileBytes(std::vector<uint8_t> bytes);  // NOLINT: a vector of bytes is a FileBytes
    FileBytes(std::initializer_list<uint8_t> bytes) : FileBytes(std::vector<uint8_t>(bytes)) {}

    // Opens `path`. Only a regular file is taken: a folder, a device, a pipe or a socket is
    // refused before a byte is read (a pipe is opened without waiting for a writer), and so
    // is a file larger than `maxBytes`. The error carries `errorKey`, names the file and
    // says why.
    static Result<FileBytes> Open(const std::string& path, const char* errorKey, uint64_t maxBytes);

    uint64_t size() const;
    bool empty() const { return size() == 0; }
    void clear() { source_.reset(); }

    // `n` bytes from `offset`. An error (ERR_FILE_CHANGED) when the file has changed or
    // been cut on disk since it was opened; a range beyond the file as opened is a
    // programming error and refused the same way.
    Status Read(uint64_t offset, void* out, size_t n) const;
    // The same without looking for a change, for a run of small reads: false when the
    // bytes could not be read. Unchanged() afterwards says whether they were the bytes as
    // opened.
    bool ReadUnchecked(uint64_t offset, void* out, size_t n) const;
    Status Unchanged() const;

    bool operator==(const std::vector<uint8_t>& bytes) const;

private:
    struct Source;
    std::shared_ptr<const Source> source_;
};

}  // namespace tarvolin
