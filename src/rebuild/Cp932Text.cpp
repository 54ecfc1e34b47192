#include "rebuild/Cp932Text.h"

#include <algorithm>

#include "base/MessageKeys.h"
#include "base/Codepage.h"
#include "base/TextHelpers.h"

namespace tarvolin {

Status Cp932Lines::Add(std::string_view utf8) {
    ++lines_;
    // A line break or any other control character in a name would split the line: in the
    // batch, what follows it would run as a command of its own.
    if (std::any_of(utf8.begin(), utf8.end(), IsControlByte))
        return Error{msg::ControlCharacter, {}, "line " + DecimalText(lines_) + ": " + Shown(utf8)};
    auto bytes = ToCp932Text(utf8);
    if (!bytes) return Error{msg::NotCp932, {}, "line " + DecimalText(lines_) + ": " + std::string(utf8)};
    bytes_ += *bytes;
    bytes_ += "\r\n";
    return Ok();
}

}  // namespace tarvolin
