#pragma once
// The text files of the rebuild (parameter text, build batch) are CP932 with CR LF, and a
// line that CP932 cannot hold, or that holds a control character, refuses the whole file
// before anything is written. A name in Shift JIS bytes (valid CP932, no UTF-8) goes into
// the file as it stands.
#include <initializer_list>
#include <string>
#include <string_view>

#include "base/Result.h"

namespace tarvolin {

// Lines in CP932, each ended by CR LF, counted from 1 for the error's detail.
class Cp932Lines {
public:
    // Nothing is appended when the line holds a control character (below 0x20, or 0x7F:
    // ERR_CONTROL_CHAR) or a character that CP932 cannot hold (ERR_CODEPAGE); the error
    // names the line number and its text.
    Status Add(std::string_view utf8) { return Add({utf8}); }
    // A line made of values, each converted on its own: a value in Shift JIS bytes that ends
    // in half a character must not take the first byte of the next one as its other half.
    Status Add(std::initializer_list<std::string_view> values);
    std::string Take() { return std::move(bytes_); }
    void Reserve(size_t n) { bytes_.reserve(n); }

private:
    std::string bytes_;
    long lines_ = 0;
};

}  // namespace tarvolin
