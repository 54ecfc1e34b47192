#include "rebuild/Cp932Text.h"

#include <algorithm>

#include "base/MessageKeys.h"
#include "base/Codepage.h"
#include "base/TextHelpers.h"

namespace tarvolin {

namespace {

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// The line with each control character written as \xNN, so that the message shows it
// rather than acting on it.
std::string Visible(std::string_view line) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (char c : line) {
        if (!IsControl(c)) {
            out += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        out += {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
    }
    return out;
}

}  // namespace

Status Cp932Lines::Add(std::string_view utf8) {
    ++lines_;
    // A line break or any other control character in a name would split the line: in the
    // batch, what follows it would run as a command of its own.
    if (std::any_of(utf8.begin(), utf8.end(), IsControl))
        return Error{msg::ControlCharacter, {}, "line " + DecimalText(lines_) + ": " + Visible(utf8)};
    auto bytes = ToCp932(utf8);
    if (!bytes) return Error{msg::NotCp932, {}, "line " + DecimalText(lines_) + ": " + std::string(utf8)};
    bytes_ += *bytes;
    bytes_ += "\r\n";
    return Ok();
}

}  // namespace tarvolin
