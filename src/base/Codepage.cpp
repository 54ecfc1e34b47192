#include "base/Codepage.h"

#include <algorithm>
#include <cerrno>
#include <iconv.h>

namespace tarvolin {
namespace {

// One iconv conversion descriptor per direction and thread; iconv_open is far too slow to
// call per string when a table of 10,000 rows is written.
class Converter {
public:
    Converter(const char* to, const char* from) : cd_(iconv_open(to, from)) {}
    ~Converter() {
        if (cd_ != reinterpret_cast<iconv_t>(-1)) iconv_close(cd_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Converts as much as it can. On an input sequence it cannot convert it stops and
    // returns false with `in` advanced to the offending byte.
    bool Run(std::string_view& in, std::string& out) {
        iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        char buf[4096];
        auto* src = const_cast<char*>(in.data());
        size_t srcLeft = in.size();
        bool clean = true;
        while (srcLeft > 0) {
            char* dst = buf;
            size_t dstLeft = sizeof buf;
            size_t r = iconv(cd_, &src, &srcLeft, &dst, &dstLeft);
            out.append(buf, static_cast<size_t>(dst - buf));
            if (r == static_cast<size_t>(-1) && errno != E2BIG) {
                clean = false;
                break;
            }
        }
        in.remove_prefix(in.size() - srcLeft);
        return clean;
    }

private:
    iconv_t cd_;
};

Converter& Utf8ToCp932() {
    thread_local Converter c("CP932", "UTF-8");
    return c;
}
Converter& Cp932ToUtf8() {
    thread_local Converter c("UTF-8", "CP932");
    return c;
}

bool IsAscii(std::string_view s) {
    for (unsigned char ch : s)
        if (ch >= 0x80) return false;
    return true;
}

size_t Utf8SequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if ((lead >> 5) == 0x6) return 2;
    if ((lead >> 4) == 0xE) return 3;
    if ((lead >> 3) == 0x1E) return 4;
    return 1;
}

}  // namespace

bool IsUtf8(std::string_view text) {
    size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const size_t len = Utf8SequenceLength(lead);
        if (len == 1 && lead >= 0x80) return false;  // a continuation byte or an invalid lead
        if (i + len > text.size()) return false;
        for (size_t k = 1; k < len; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return false;
        i += len;
    }
    return true;
}

namespace {
// Whether the bytes read as CP932 without a single invalid sequence, and come back as the
// same bytes when written again: a name that reads back otherwise would name another file.
bool IsCp932(std::string_view bytes) {
    std::string utf8;
    std::string_view in = bytes;
    if (!Cp932ToUtf8().Run(in, utf8) || !in.empty()) return false;
    return ToCp932(utf8) == bytes;
}
}  // namespace

// Each part of a path by itself, so that a folder in UTF-8 and a file name in Shift JIS
// bytes can stand in one path: '/' is never part of a double-byte CP932 character.
std::optional<std::string> ToCp932Text(std::string_view text) {
    if (IsUtf8(text)) return ToCp932(text);
    std::string out;
    for (size_t at = 0; at <= text.size();) {
        const size_t slash = std::min(text.find('/', at), text.size());
        const std::string_view part = text.substr(at, slash - at);
        if (IsUtf8(part)) {
            auto converted = ToCp932(part);
            if (!converted) return std::nullopt;
            out += *converted;
        } else if (IsCp932(part)) {
            out += part;
        } else {
            return std::nullopt;
        }
        if (slash < text.size()) out += '/';
        at = slash + 1;
    }
    return out;
}

std::optional<std::string> ToCp932(std::string_view utf8) {
    if (IsAscii(utf8)) return std::string(utf8);
    std::string out;
    std::string_view in = utf8;
    if (!Utf8ToCp932().Run(in, out)) return std::nullopt;
    return out;
}

std::string FromCp932(std::string_view cp932) {
    if (IsAscii(cp932)) return std::string(cp932);
    std::string out;
    std::string_view in = cp932;
    while (!in.empty()) {
        if (Cp932ToUtf8().Run(in, out)) break;
        unsigned char bad = static_cast<unsigned char>(in.front());
        bool leadAtEnd = in.size() == 1 && ((bad >= 0x81 && bad <= 0x9F) || (bad >= 0xE0 && bad <= 0xFC));
        if (!leadAtEnd) out += "\xEF\xBF\xBD";
        in.remove_prefix(1);
    }
    return out;
}

long Cp932Length(std::string_view utf8) {
    if (IsAscii(utf8)) return static_cast<long>(utf8.size());  // numbers and most names: no copy
    if (auto bytes = ToCp932Text(utf8)) return static_cast<long>(bytes->size());
    long n = 0;
    size_t i = 0;
    while (i < utf8.size()) {
        size_t len = Utf8SequenceLength(static_cast<unsigned char>(utf8[i]));
        if (i + len > utf8.size()) len = utf8.size() - i;
        auto bytes = ToCp932(utf8.substr(i, len));
        n += bytes ? static_cast<long>(bytes->size()) : 1;
        i += len;
    }
    return n;
}

}  // namespace tarvolin
