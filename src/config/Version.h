#pragma once
// The program's version block: major, minor and revision numbers and its description,
// and the texts the version dialog makes of them.
#include <string>

namespace tarvolin {

inline constexpr int kVersionMajor = 0;
inline constexpr int kVersionMinor = 2;
inline constexpr int kVersionRevision = 2;
inline constexpr const char* kFileDescription = "Tarvolin";

// "Version 0.22β": no point between minor and revision; the mark β stands behind every
// version.
inline std::string VersionText(int major, int minor, int revision) {
    return "Version " + std::to_string(major) + "." + std::to_string(minor) + std::to_string(revision) + "β";
}

// The version dialog's title: the description, then " のﾊﾞｰｼﾞｮﾝ情報".
inline std::string AboutTitle(const std::string& description) { return description + " のﾊﾞｰｼﾞｮﾝ情報"; }

}  // namespace tarvolin
