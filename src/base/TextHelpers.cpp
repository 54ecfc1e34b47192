#include "base/TextHelpers.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "base/Codepage.h"

namespace tarvolin {

long LenAnsi(std::string_view value) { return Cp932Length(value); }

namespace {
bool IsCp932Lead(unsigned char b) { return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC); }
}  // namespace

std::string MidAnsi(std::string_view value, long start, long length) {
    auto bytes = ToCp932(value);
    std::string b = bytes ? *bytes : std::string(value);
    if (start < 1) start = 1;
    if (length <= 0 || start > static_cast<long>(b.size())) return {};
    size_t from = static_cast<size_t>(start - 1);
    size_t to = std::min(b.size(), from + static_cast<size_t>(length));
    // Find the character boundaries of the CP932 text so that half characters are dropped.
    size_t i = 0;
    size_t first = b.size();
    size_t last = from;
    while (i < b.size()) {
        size_t w = IsCp932Lead(static_cast<unsigned char>(b[i])) && i + 1 < b.size() ? 2 : 1;
        if (i >= from && first == b.size()) first = i;
        if (i >= from && i + w <= to) last = i + w;
        if (i + w > to) break;
        i += w;
    }
    if (first >= last) return {};
    std::string part = b.substr(first, last - first);
    return bytes ? FromCp932(part) : part;
}

std::string PadZero(long width, std::string_view value) {
    long len = LenAnsi(value);
    std::string out;
    if (len < width) out.assign(static_cast<size_t>(width - len), '0');
    out += value;
    return out;
}

int32_t WordFromBytes(uint8_t high, uint8_t low) {
    return static_cast<int16_t>(static_cast<uint16_t>(high << 8 | low));
}

int32_t FixToLong(double value) {
    if (std::isnan(value)) return 0;
    double t = std::trunc(value);
    if (t >= 2147483647.0) return std::numeric_limits<int32_t>::max();
    if (t <= -2147483648.0) return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(t);
}

double RoundHalfEven(double value) {
    // nearbyint rounds in the current mode; make the mode explicit rather than assumed.
    const int old = std::fegetround();
    std::fesetround(FE_TONEAREST);
    double r = std::nearbyint(value);
    std::fesetround(old);
    return r;
}

std::optional<int32_t> RoundToInt32(double value) {
    double r = RoundHalfEven(value);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) return std::nullopt;
    return static_cast<int32_t>(r);
}

std::string GetFileName(std::string_view path) {
    auto pos = path.rfind('/');
    if (pos == std::string_view::npos) return std::string(path);
    return std::string(path.substr(pos + 1));
}

// The path up to and with its last '/'. Cut at the separator itself rather than by a
// count of code-page bytes: a character CP932 can't hold has no defined byte count, and
// for every path it can hold the two give the same folder.
std::string GetFolder(std::string_view path) {
    const auto pos = path.rfind('/');
    return pos == std::string_view::npos ? std::string() : std::string(path.substr(0, pos + 1));
}

std::optional<double> ParseNumber(std::string_view text) {
    size_t i = 0;
    const size_t n = text.size();
    auto blank = [&](size_t k) { return k < n && (text[k] == ' ' || text[k] == '\t'); };
    auto digit = [&](size_t k) { return k < n && text[k] >= '0' && text[k] <= '9'; };
    while (blank(i)) ++i;
    const size_t begin = i;
    if (i < n && (text[i] == '+' || text[i] == '-')) ++i;
    size_t digits = 0;
    while (digit(i)) { ++i; ++digits; }
    if (i < n && text[i] == '.') {
        ++i;
        while (digit(i)) { ++i; ++digits; }
    }
    if (digits == 0) return std::nullopt;
    if (i < n && (text[i] == 'e' || text[i] == 'E')) {
        size_t k = i + 1;
        if (k < n && (text[k] == '+' || text[k] == '-')) ++k;
        if (!digit(k)) return std::nullopt;
        while (digit(k)) ++k;
        i = k;
    }
    const size_t end = i;
    while (blank(i)) ++i;
    if (i != n) return std::nullopt;
    std::string number(text.substr(begin, end - begin));
    char* stop = nullptr;
    double v = std::strtod(number.c_str(), &stop);
    if (!std::isfinite(v)) return std::nullopt;
    return v;
}

std::string DecimalText(long long value) { return std::to_string(value); }

bool IsControlByte(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

std::string Shown(std::string_view text) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        if (!IsControlByte(c)) {
            out += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        out += {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
    }
    return out;
}

std::optional<int32_t> WholeNumberIn(std::string_view text) {
    const auto number = ParseNumber(text);
    return number ? RoundToInt32(*number) : std::nullopt;
}

}  // namespace tarvolin
