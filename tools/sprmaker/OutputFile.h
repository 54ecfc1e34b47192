#pragma once
// The SFF that sprmaker.exe writes, seen from its folder, before anything is written there:
// the name must be free or a regular file (a folder under it is refused, never moved
// aside); the builder's lock is taken in the folder and held for the whole build, so that
// a second build into the same folder is refused rather than interleaving its backups with
// this one's; and the temporary files that a killed earlier run left there are removed.
#include <cstddef>
#include <string>

#include "base/FolderLock.h"
#include "base/Result.h"

namespace tarvolin::sprmaker {

class OutputClaim {
public:
    // Refusals name the output: a folder or anything but a regular file under its name,
    // a folder that isn't there (ERR_WRITE); another build holding the folder (ERR_BUSY).
    static Result<OutputClaim> Take(const std::string& outputPath);

    // Temporary files of earlier, stopped runs that were removed from the folder.
    size_t StaleRemoved() const { return staleRemoved_; }

private:
    OutputClaim(FolderLock lock, size_t staleRemoved) : lock_(std::move(lock)), staleRemoved_(staleRemoved) {}
    FolderLock lock_;
    size_t staleRemoved_ = 0;
};

// The first name under which a replaced SFF is kept; further generations get "2", "3", ...
// behind it (AtomicFile::Commit).
std::string BackupName(const std::string& outputPath);

}  // namespace tarvolin::sprmaker
