#pragma once
// The keys and default texts of sections FONT, MESSAGE and CAPTION, in the order they are
// read. One table each serves reading, lookup and the documentation.
#include <span>
#include <string>
#include <string_view>

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

// The key of the text that follows the range of a refused zoom ("100～400" + text).
inline constexpr const char* kRangeSuffixKey = "ERR_MSG_1";

std::span<const MessageEntry> MessageTable();
std::span<const CaptionEntry> CaptionTable();  // frmPath, frmPCX, frmMain: 35 entries

// Refusal keys used by the core, named once here.
namespace msg {
inline constexpr const char* SffUnreadable = "ERR_SFF_READ";
inline constexpr const char* SffNameShort = "ERR_SFF_NAME";
inline constexpr const char* SffTooShort = "ERR_SFF_SHORT";
inline constexpr const char* SffImageCount = "ERR_SFF_COUNT";
inline constexpr const char* SffOffset = "ERR_SFF_OFFSET";
inline constexpr const char* SffLink = "ERR_SFF_LINK";
inline constexpr const char* SffPalette = "ERR_SFF_PALETTE";
inline constexpr const char* SffRange = "ERR_SFF_RANGE";
inline constexpr const char* WriteFailed = "ERR_WRITE";
inline constexpr const char* NotCp932 = "ERR_CODEPAGE";
inline constexpr const char* PcxUnreadable = "ERR_PCX_READ";
inline constexpr const char* BatchUnreadable = "ERR_BATCH_READ";
inline constexpr const char* PcxFormat = "ERR_MSG_0";  // a PCX that is not 256 colours, one plane, RLE
inline constexpr const char* ParamLine = "ERR_PARAM_LINE";
}  // namespace msg

}  // namespace tarvolin
