#include "config/PrivateProfile.h"

#include "base/Codepage.h"
#include "base/FileRead.h"

namespace tarvolin {
namespace {

constexpr size_t kMaxValueBytes = 1023;

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

bool SameIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
        if (x >= 'a' && x <= 'z') x = static_cast<unsigned char>(x - 32);
        if (y >= 'a' && y <= 'z') y = static_cast<unsigned char>(y - 32);
        if (x != y) return false;
    }
    return true;
}

bool IsLeadByte(unsigned char b) { return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC); }

// Cut to at most kMaxValueBytes without leaving half of a double-byte character.
std::string CutValue(const std::string& v) {
    if (v.size() <= kMaxValueBytes) return v;
    size_t i = 0;
    while (i < kMaxValueBytes) {
        size_t w = IsLeadByte(static_cast<unsigned char>(v[i])) ? 2 : 1;
        if (i + w > kMaxValueBytes) break;
        i += w;
    }
    return v.substr(0, i);
}

}  // namespace

PrivateProfile PrivateProfile::Load(const std::string& path) {
    // A settings file is a few kilobytes. One that can't be read as a regular file of a
    // sane size (a folder, a device, a pipe, a huge file) counts as missing.
    constexpr uint64_t kMaxSettingsBytes = 1 << 20;
    auto bytes = ReadWholeFile(path, "", kMaxSettingsBytes);
    if (!bytes) return {};
    const auto& b = bytes.value();
    return Parse(std::string_view(reinterpret_cast<const char*>(b.data()), b.size()));
}

PrivateProfile PrivateProfile::Parse(std::string_view text) {
    PrivateProfile p;
    Section* current = nullptr;
    while (!text.empty()) {
        size_t eol = text.find_first_of("\r\n");
        std::string_view line = text.substr(0, eol);
        text.remove_prefix(eol == std::string_view::npos ? text.size() : eol + 1);
        line = Trim(line);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            size_t close = line.find(']');
            std::string_view name = line.substr(1, close == std::string_view::npos ? line.size() - 1 : close - 1);
            p.sections_.push_back({std::string(Trim(name)), {}});
            current = &p.sections_.back();
            continue;
        }
        size_t eq = line.find('=');
        if (!current || eq == std::string_view::npos) continue;
        std::string_view value = Trim(line.substr(eq + 1));
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
            value = value.substr(1, value.size() - 2);
        current->Entries.push_back({std::string(Trim(line.substr(0, eq))), std::string(value)});
    }
    return p;
}

std::string PrivateProfile::Get(std::string_view section, std::string_view key, std::string_view defaultText) const {
    for (const Section& s : sections_) {
        if (!SameIgnoringCase(s.Name, section)) continue;
        for (const Entry& e : s.Entries)
            if (SameIgnoringCase(e.Key, key)) return FromCp932(CutValue(e.Value));
        break;  // only the first section of that name is looked at
    }
    return std::string(defaultText);
}

}  // namespace tarvolin
