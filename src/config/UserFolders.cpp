#include "config/UserFolders.h"

#include <cstdlib>

namespace tarvolin {

namespace {
std::string AbsoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value && value[0] == '/' ? std::string(value) : std::string();
}
}  // namespace

std::string UserConfigFolder() {
    std::string base = AbsoluteVariable("XDG_CONFIG_HOME");
    if (base.empty()) {
        const std::string home = AbsoluteVariable("HOME");
        if (home.empty()) return {};
        base = home + "/.config";
    }
    if (base.back() != '/') base += '/';
    return base + "tarvolin/";
}

}  // namespace tarvolin
