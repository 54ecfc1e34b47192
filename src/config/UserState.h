#pragma once
// What the program keeps for the user between runs, in the per-user folder (never in the
// settings file beside the program, which the user writes by hand): where its two windows
// stood and how large they were, and the last ten SFF files opened. A text file of lines
// "main X Y WIDTH HEIGHT", "preview X Y WIDTH HEIGHT" and "recent PATH"; lines it doesn't
// know are passed over, so a damaged file costs at most what it held.
#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

struct WindowPlace {
    int X = 0, Y = 0, Width = 0, Height = 0;
    bool operator==(const WindowPlace&) const = default;
};

struct UserState {
    std::optional<WindowPlace> Main;
    std::optional<WindowPlace> Preview;
    std::vector<std::string> RecentFiles;  // the newest first
    bool operator==(const UserState&) const = default;
};

inline constexpr size_t kRecentFiles = 10;

// The state in `folder` (UserConfigFolder()); an empty state when there is none or no
// folder.
UserState LoadUserState(const std::string& folder);

// Writes the state whole into `folder`, made when missing.
Status SaveUserState(const std::string& folder, const UserState& state);

// `path` to the front of the recent files, once, at most kRecentFiles kept. A path with a
// line break can't stand on a line and is not kept.
void RememberFile(UserState& state, const std::string& path);

}  // namespace tarvolin
