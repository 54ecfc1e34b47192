#pragma once
// Reads a settings file in the private-profile format: "[SECTION]" headers and
// "KEY=value" lines, in CP932. Sections and keys match without regard to case, blanks
// around keys and values are trimmed, one pair of enclosing quotes is removed, the first
// match wins, and a value is cut to 1023 bytes of CP932. A missing file, section or key
// gives the default text.
#include <string>
#include <string_view>
#include <vector>

namespace tarvolin {

class PrivateProfile {
public:
    PrivateProfile() = default;  // no file: every lookup gives its default
    static PrivateProfile Load(const std::string& path);
    static PrivateProfile Parse(std::string_view cp932Text);

    // The value as UTF-8, or `defaultText` where file, section or key doesn't exist.
    std::string Get(std::string_view section, std::string_view key, std::string_view defaultText) const;

private:
    struct Entry {
        std::string Key;    // CP932, as written
        std::string Value;  // CP932, trimmed, quotes removed, not yet cut
    };
    struct Section {
        std::string Name;
        std::vector<Entry> Entries;
    };
    std::vector<Section> sections_;
};

}  // namespace tarvolin
