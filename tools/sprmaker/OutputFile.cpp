#include "OutputFile.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/stat.h>

#include "base/AtomicFile.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"

namespace tarvolin::sprmaker {
namespace {

// Why the name can't take the new SFF, or nothing. A symbolic link counts as something
// else: the SFF would replace the link, not the file it leads to.
std::optional<std::string> NameProblem(const std::string& outputPath, const std::string& folder) {
    struct stat st {};
    if (stat(folder.c_str(), &st) != 0) return "its folder " + folder + " cannot be reached: " + std::strerror(errno);
    if (!S_ISDIR(st.st_mode)) return "its folder " + folder + " is no folder";
    if (lstat(outputPath.c_str(), &st) != 0) return std::nullopt;
    if (S_ISREG(st.st_mode)) return std::nullopt;
    const char* what = S_ISDIR(st.st_mode) ? "a folder" : S_ISLNK(st.st_mode) ? "a symbolic link" : "a special file";
    return std::string(what) + " stands under this name; the SFF is written only as a new or replacing regular file";
}

}  // namespace

// The name is looked at before the lock, so that a refused name leaves not even a lock
// file behind, and again under the lock, where nothing else changes it.
Result<OutputClaim> OutputClaim::Take(const std::string& outputPath) {
    std::string folder = GetFolder(outputPath);
    if (folder.empty()) folder = "./";
    auto refusal = [&]() -> std::optional<Error> {
        if (auto problem = NameProblem(outputPath, folder))
            return Error{msg::WriteFailed, outputPath, *problem + "; nothing written"};
        return std::nullopt;
    };
    if (auto e = refusal()) return *e;
    auto lock = FolderLock::Take(folder, kBuilderLock);
    if (!lock) return lock.error();
    if (auto e = refusal()) return *e;
    const size_t removed = RemoveStaleTemporaries(folder);
    return OutputClaim(std::move(lock.value()), removed);
}

std::string BackupName(const std::string& outputPath) { return outputPath + ".bak"; }

}  // namespace tarvolin::sprmaker
