#include "rebuild/Cp932Text.h"

#include "base/MessageKeys.h"
#include "base/AtomicFile.h"
#include "base/Codepage.h"
#include "base/TextHelpers.h"

namespace tarvolin {

Status Cp932Lines::Add(std::string_view utf8) {
    ++lines_;
    auto bytes = ToCp932(utf8);
    if (!bytes) return Error{msg::NotCp932, {}, "line " + DecimalText(lines_) + ": " + std::string(utf8)};
    bytes_ += *bytes;
    bytes_ += "\r\n";
    return Ok();
}

Status WriteTextResult(const std::string& path, const Result<std::string>& bytes) {
    if (!bytes) {
        Error e = bytes.error();
        e.File = path;
        return e;
    }
    return WriteFileAtomically(path, bytes.value());
}

}  // namespace tarvolin
