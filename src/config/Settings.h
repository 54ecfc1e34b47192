#pragma once
// Start-up reading of the settings file: IniPath beside the program and named after it, or
// in the user's config folder, then FONT, MESSAGE and CAPTION in table order, one ReadIni
// call per entry.
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "config/AppIni.h"
#include "config/PrivateProfile.h"

namespace tarvolin {

// "/opt/t/bin/tarvolin" -> "/opt/t/bin/tarvolin.ini"; the extension of the program file,
// if it has one, is replaced.
std::string IniPathFor(std::string_view programPath);

// The settings file to read: `besideProgram` when a file stands there, else tarvolin.ini
// in the user's config folder (UserConfigFolder) when one stands there, since an installed
// program's folder (/usr/bin) is no place for one; else `besideProgram`, which is missing
// and gives every default.
std::string FindSettingsFile(const std::string& besideProgram);

// The same in words, for the programs' --help.
inline constexpr const char* kSettingsFilePlaces =
    "Captions and messages come from tarvolin.ini beside the program, else from\n"
    "$XDG_CONFIG_HOME/tarvolin/tarvolin.ini (~/.config/tarvolin/ without XDG_CONFIG_HOME);\n"
    "without either the built-in texts are used.\n";

// One value of the settings file, as GetPrivateProfileString would give it.
std::string ReadIni(const PrivateProfile& file, std::string_view section, std::string_view key,
                    std::string_view defaultText);

// Caption key -> text, for the start-up step that applies them.
using CaptionTexts = std::map<std::string, std::string, std::less<>>;

struct Settings {
    AppIni Ini;
    CaptionTexts Captions;
};

// Reads the file at `iniPath` (a missing file gives every default, without a word).
// SIZE or CHARSET that is no number keeps its default.
Settings LoadSettings(const std::string& iniPath);
Settings LoadSettings(const std::string& iniPath, const PrivateProfile& file);

// The text a window shows for an error: the message of its key, then the file and the
// details on lines of their own (CR LF between them, as every two-line message).
std::string FormatError(const AppIni& ini, const Error& error);

// Several such texts in one, a blank line between two (the notices after opening a file).
std::string FormatErrors(const AppIni& ini, const std::vector<Error>& errors);

}  // namespace tarvolin
