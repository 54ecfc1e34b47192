#pragma once
// The keys of section MESSAGE under which the core's refusals are told: an Error carries
// one of these, and the settings (config) give its text. Named once here, below every
// other folder, so that whatever can fail can name its message without knowing the
// settings.

namespace tarvolin {

namespace msg {
inline constexpr const char* SffUnreadable = "ERR_SFF_READ";
inline constexpr const char* SffNameShort = "ERR_SFF_NAME";
inline constexpr const char* SffTooShort = "ERR_SFF_SHORT";
inline constexpr const char* SffImageCount = "ERR_SFF_COUNT";
inline constexpr const char* SffOffset = "ERR_SFF_OFFSET";
inline constexpr const char* SffPalette = "ERR_SFF_PALETTE";
inline constexpr const char* SffRange = "ERR_SFF_RANGE";
inline constexpr const char* SffFormat = "ERR_SFF_FORMAT";    // no SFF signature
inline constexpr const char* SffVersion = "ERR_SFF_VERSION";  // an SFF of another version than 1
inline constexpr const char* FileChanged = "ERR_FILE_CHANGED";  // the open file changed on disk
inline constexpr const char* WriteFailed = "ERR_WRITE";
inline constexpr const char* NotCp932 = "ERR_CODEPAGE";
inline constexpr const char* PcxUnreadable = "ERR_PCX_READ";
inline constexpr const char* BatchUnreadable = "ERR_BATCH_READ";
inline constexpr const char* PcxFormat = "ERR_MSG_0";  // a PCX that is not 256 colours, one plane, RLE
inline constexpr const char* ParamLine = "ERR_PARAM_LINE";
inline constexpr const char* FolderBusy = "ERR_BUSY";
inline constexpr const char* OutputIsOpenSff = "ERR_SAME_FILE";  // an output would replace the open SFF
inline constexpr const char* ControlCharacter = "ERR_CONTROL_CHAR";  // a line of a text holds a control character
inline constexpr const char* RowWithoutData = "ERR_ROW_EMPTY";  // a row past the end of a short subfile chain
inline constexpr const char* PictureClash = "ERR_PCX_CLASH";  // an export would write over a row's own picture
inline constexpr const char* BuildRunning = "ERR_BUILD_RUNNING";  // Build SFF while the last one still runs
inline constexpr const char* PngUnreadable = "ERR_PNG_READ";  // a PNG file libpng can't read: broken, truncated
inline constexpr const char* PngFormat = "ERR_PNG_FORMAT";  // a PNG of 16 bits, too large, more than 256 colours
inline constexpr const char* QuoteInProgramFolder = "ERR_PROGRAM_QUOTE";  // the batch cannot quote the builder's path
// Notices: what opening a damaged file repaired. The file opens; the user is told.
inline constexpr const char* SffLinkIgnored = "WARN_SFF_LINK";  // links to no earlier subfile
inline constexpr const char* SffNoData = "WARN_SFF_NODATA";
}  // namespace msg

}  // namespace tarvolin
