#include "config/Settings.h"

#include <sys/stat.h>

#include "config/MessageCatalog.h"
#include "config/UserFolders.h"
#include "base/TextHelpers.h"

namespace tarvolin {

std::string IniPathFor(std::string_view programPath) {
    std::string folder = GetFolder(programPath);
    std::string name = GetFileName(programPath);
    auto dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0) name.resize(dot);
    return folder + name + ".ini";
}

std::string FindSettingsFile(const std::string& besideProgram) {
    struct stat st {};
    const auto present = [&st](const std::string& path) { return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode); };
    if (present(besideProgram)) return besideProgram;
    const std::string folder = UserConfigFolder();
    if (!folder.empty() && present(folder + "tarvolin.ini")) return folder + "tarvolin.ini";
    return besideProgram;
}

std::string ReadIni(const PrivateProfile& file, std::string_view section, std::string_view key,
                    std::string_view defaultText) {
    return file.Get(section, key, defaultText);
}

namespace {
int32_t WholeNumberOr(const std::string& text, int32_t fallback) {
    auto v = ParseNumber(text);
    if (!v) return fallback;
    auto i = RoundToInt32(*v);
    return i ? *i : fallback;
}
}  // namespace

Settings LoadSettings(const std::string& iniPath) { return LoadSettings(iniPath, PrivateProfile::Load(iniPath)); }

Settings LoadSettings(const std::string& iniPath, const PrivateProfile& file) {
    Settings s;
    AppIni& ini = s.Ini;
    ini.IniPath = iniPath;
    ini.FontName = ReadIni(file, "FONT", "NAME", kFontNameDefault);
    ini.FontSize = WholeNumberOr(ReadIni(file, "FONT", "SIZE", kFontSizeDefault), 8);
    ini.FontCharset = WholeNumberOr(ReadIni(file, "FONT", "CHARSET", kFontCharsetDefault), 128);
    for (const MessageEntry& m : MessageTable()) {
        std::string text = ReadIni(file, "MESSAGE", m.Key, m.Default);
        if (m.Field) ini.*(m.Field) = std::move(text);
        else ini.ErrorMessages[m.Key] = std::move(text);
    }
    for (const CaptionEntry& c : CaptionTable()) s.Captions[c.Key] = ReadIni(file, "CAPTION", c.Key, c.Default);
    return s;
}

AppIni DefaultAppIni() { return LoadSettings(std::string(), PrivateProfile()).Ini; }

std::string AppIni::Message(std::string_view key) const {
    for (const MessageEntry& m : MessageTable()) {
        if (key != m.Key) continue;
        if (m.Field) return this->*(m.Field);
        auto it = ErrorMessages.find(key);
        return it != ErrorMessages.end() ? it->second : m.Default;
    }
    return std::string(key);
}

std::string FormatError(const AppIni& ini, const Error& error) {
    std::string text = ini.Message(error.Key);
    // Names from outside may hold control characters: shown escaped, never acted on.
    if (!error.File.empty()) text += "\r\n" + Shown(error.File);
    if (!error.Detail.empty()) text += "\r\n" + Shown(error.Detail);
    return text;
}

std::string FormatErrors(const AppIni& ini, const std::vector<Error>& errors) {
    std::string text;
    for (const Error& e : errors) {
        if (!text.empty()) text += "\r\n\r\n";
        text += FormatError(ini, e);
    }
    return text;
}

}  // namespace tarvolin
