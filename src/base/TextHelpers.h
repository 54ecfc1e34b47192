#pragma once
// The small text and number helpers that every subsystem calls. Lengths and positions
// count bytes of the ANSI code page (CP932), so a double-byte character counts two.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvolin {

// Number of CP932 bytes of the text.
long LenAnsi(std::string_view value);

// `length` CP932 bytes of `value` from byte `start` (counted from 1). A double-byte
// character cut in half at either end is dropped. Out-of-range arguments give what lies
// inside the text (as the original's MidB does), never an error.
std::string MidAnsi(std::string_view value, long start, long length);

// `value` with "0" put in front until it has `width` CP932 bytes; never cut.
std::string PadZero(long width, std::string_view value);

// Two's-complement signed 16-bit number high * 256 + low.
int32_t WordFromBytes(uint8_t high, uint8_t low);

// The value cut towards zero, as a signed 32-bit integer (saturating at the limits).
int32_t FixToLong(double value);

// Rounding to the nearest whole number, exact halves to the even neighbour:
// 1.5 -> 2, 2.5 -> 2, 3.5 -> 4.
double RoundHalfEven(double value);

// The same rounding into a signed 32-bit integer; nothing when the result does not fit.
std::optional<int32_t> RoundToInt32(double value);

// The part of `path` behind its last '/'; the whole text when it holds none.
std::string GetFileName(std::string_view path);

// The folder of `path` with its closing '/': the path less GetFileName's part, cut in
// CP932 bytes as the folder rule says.
std::string GetFolder(std::string_view path);

// The numeric test of the edit boxes: optional blanks, an optional sign, digits with an
// optional decimal point, an optional exponent, optional blanks. An empty text or a lone
// sign is no number. Gives the value.
std::optional<double> ParseNumber(std::string_view text);

// A cell or caption read as a whole number the way the program reads them: ParseNumber,
// then RoundToInt32; nothing for a text that holds no number or one that does not fit.
std::optional<int32_t> WholeNumberIn(std::string_view text);

// A signed 32-bit integer as plain decimal text.
std::string DecimalText(long long value);

// Whether the byte is a control character: below 0x20, or 0x7F.
bool IsControlByte(char c);

// The text as a message shows it: every control character (a line break, a NUL) written
// as \xNN, so that a name from outside can neither break a message's lines nor cut it.
std::string Shown(std::string_view text);

}  // namespace tarvolin
