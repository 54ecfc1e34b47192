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
