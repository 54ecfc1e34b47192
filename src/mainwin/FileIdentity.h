#pragma once
// A file told by its device and inode rather than by its name, so that another name for
// it, a hard link or a symbolic link, counts as the same file.
#include <optional>
#include <string>
#include <sys/types.h>

namespace tarvolin {

struct FileIdentity {
    dev_t Device = 0;
    ino_t Inode = 0;
    bool operator==(const FileIdentity&) const = default;
};

// The identity of the file `path` names (links followed); nothing when there is none.
std::optional<FileIdentity> IdentityOf(const std::string& path);

}  // namespace tarvolin
