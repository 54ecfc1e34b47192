#pragma once
// The system's ANSI code page stands for CP932 (Shift JIS). Text inside the program is
// UTF-8; files that the program writes or reads as text, and every byte count of a name
// or path, go through CP932.
#include <optional>
#include <string>
#include <string_view>

namespace tarvolin {

// UTF-8 -> CP932 bytes; nothing when the text holds a character that CP932 cannot hold.
std::optional<std::string> ToCp932(std::string_view utf8);

// Whether the bytes are UTF-8 text.
bool IsUtf8(std::string_view text);

// A text for a CP932 file: UTF-8 text converted as ToCp932 does; bytes that are no UTF-8
// but valid CP932 (a file name in Shift JIS bytes, as archives made on Japanese systems
// have them) pass unchanged, each part of a path between '/' by itself. Nothing for
// anything else.
std::optional<std::string> ToCp932Text(std::string_view text);

// CP932 bytes -> UTF-8. A byte sequence that is not valid CP932 becomes U+FFFD per bad
// byte, so reading never fails; a lead byte left alone at the end is dropped.
std::string FromCp932(std::string_view cp932);

// Byte length of a UTF-8 text in CP932. A character outside CP932 counts as one byte
// (it would be written as '?'): the count stays defined for any text.
long Cp932Length(std::string_view utf8);

}  // namespace tarvolin
