#include "mainwin/FileIdentity.h"

#include <sys/stat.h>

namespace tarvolin {

std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat st {};
    if (path.empty() || stat(path.c_str(), &st) != 0) return std::nullopt;
    return FileIdentity{st.st_dev, st.st_ino};
}

}  // namespace tarvolin
