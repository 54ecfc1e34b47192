#include "config/UserState.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "base/AtomicFile.h"
#include "base/FileRead.h"
#include "base/MessageKeys.h"

namespace tarvolin {

namespace {

constexpr const char* kFileName = "state.txt";
constexpr uint64_t kMaxStateBytes = 64 * 1024;
constexpr int kLargest = 1 << 20;  // no window is larger or further away

std::optional<WindowPlace> PlaceIn(std::istringstream& words) {
    WindowPlace p;
    if (!(words >> p.X >> p.Y >> p.Width >> p.Height)) return std::nullopt;
    const bool sane = p.Width > 0 && p.Height > 0 && p.Width < kLargest && p.Height < kLargest &&
                      std::abs(p.X) < kLargest && std::abs(p.Y) < kLargest;
    return sane ? std::optional(p) : std::nullopt;
}

std::string PlaceLine(const char* name, const std::optional<WindowPlace>& p) {
    if (!p) return {};
    return std::string(name) + " " + std::to_string(p->X) + " " + std::to_string(p->Y) + " " +
           std::to_string(p->Width) + " " + std::to_string(p->Height) + "\n";
}

}  // namespace

UserState LoadUserState(const std::string& folder) {
    UserState state;
    if (folder.empty()) return state;
    auto bytes = ReadWholeFile(folder + kFileName, msg::SffUnreadable, kMaxStateBytes);
    if (!bytes) return state;
    std::istringstream text(std::string(bytes.value().begin(), bytes.value().end()));
    std::string line;
    while (std::getline(text, line)) {
        std::istringstream words(line);
        std::string key;
        words >> key;
        if (key == "main") state.Main = PlaceIn(words);
        else if (key == "preview") state.Preview = PlaceIn(words);
        else if (key == "recent" && line.size() > 7 && state.RecentFiles.size() < kRecentFiles)
            state.RecentFiles.push_back(line.substr(7));
    }
    return state;
}

Status SaveUserState(const std::string& folder, const UserState& state) {
    if (folder.empty()) return Ok();
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    std::string text = PlaceLine("main", state.Main) + PlaceLine("preview", state.Preview);
    for (const std::string& path : state.RecentFiles) text += "recent " + path + "\n";
    return WriteFileAtomically(folder + kFileName, text);
}

void RememberFile(UserState& state, const std::string& path) {
    if (path.empty() || path.find_first_of("\r\n") != std::string::npos) return;
    std::erase(state.RecentFiles, path);
    state.RecentFiles.insert(state.RecentFiles.begin(), path);
    if (state.RecentFiles.size() > kRecentFiles) state.RecentFiles.resize(kRecentFiles);
}

}  // namespace tarvolin
