#pragma once
// Start-up reading of the settings file: IniPath beside the program and named after it,
// then FONT, MESSAGE and CAPTION in table order, one ReadIni call per entry.
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
