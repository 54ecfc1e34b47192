#include "rebuild/Cp932Text.h"

#include <algorithm>

#include "base/MessageKeys.h"
#include "base/Codepage.h"
#include "base/TextHelpers.h"

namespace tarvolin {

Status Cp932Lines::Add(std::initializer_list<std::string_view> values) {
    ++lines_;
    std::string line, bytes;
    for (std::string_view value : values) line += value;
    // A line break or any other control character in a name would split the line: in the
    // batch, what follows it would run as a command of its own.
    if (std::any_of(line.begin(), line.end(), IsControlByte))
        return Error{msg::ControlCharacter, {}, "line " + DecimalText(lines_) + ": " + Shown(line)};
    // The builder and the batch read a line back as one name: under its UTF-8 reading, or
    // else as the bytes written. Shift JIS bytes (kept as they stand) joined with UTF-8 text
    // beyond ASCII (converted) on one line match the file under neither reading.
    const auto beyondAscii = [](std::string_view v) {
        return std::any_of(v.begin(), v.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    };
    const bool shiftJis = std::any_of(values.begin(), values.end(), [](std::string_view v) { return !IsUtf8(v); });
    const bool utf8Text = std::any_of(values.begin(), values.end(),
                                      [&](std::string_view v) { return IsUtf8(v) && beyondAscii(v); });
    if (shiftJis && utf8Text)
        return Error{msg::NotCp932, {},
                     "line " + DecimalText(lines_) + ": " + Shown(line) +
                         ": Shift JIS bytes and UTF-8 text in one name, which no reading finds again"};
    for (std::string_view value : values) {
        auto converted = ToCp932Text(value);
        if (!converted) return Error{msg::NotCp932, {}, "line " + DecimalText(lines_) + ": " + line};
        bytes += *converted;
    }
    bytes_ += bytes;
    bytes_ += "\r\n";
    return Ok();
}

}  // namespace tarvolin
