#pragma once
// The keys and default texts of sections FONT, MESSAGE and CAPTION, in the order they are
// read. One table each serves reading, lookup and the documentation.
#include <span>
#include <string>
#include <string_view>

#include "base/MessageKeys.h"
#include "config/AppIni.h"

namespace tarvolin {

struct MessageEntry {
    const char* Key;
    const char* Default;
    std::string AppIni::*Field;  // nullptr for the refusal messages kept in ErrorMessages
};

struct CaptionEntry {
    const char* Key;
    const char* Default;
};

inline constexpr const char* kFontNameDefault = "ＭＳ Ｐゴシック";
inline constexpr const char* kFontSizeDefault = "8";
inline constexpr const char* kFontCharsetDefault = "128";

// The key of the text that follows the range of a refused zoom ("25～1600" + text).
inline constexpr const char* kRangeSuffixKey = "ERR_MSG_1";

std::span<const MessageEntry> MessageTable();
std::span<const CaptionEntry> CaptionTable();  // frmPath, frmPCX, frmMain: 35 entries

}  // namespace tarvolin
