#pragma once
// OpenSff: reads an SFF (version 1 layout) into SffState and fills the SpriteTable.
#include <string>
#include <vector>

#include "base/Ask.h"
#include "base/Result.h"
#include "config/AppIni.h"
#include "sff/SffQuirks.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

enum class OpenOutcome {
    Opened,    // the table holds the file's rows, row 1 selected
    Declined,  // the user answered No to the palette-mode warning: labels and table emptied
};

// What opening tells besides the table: the repairs that reading a damaged file took,
// each with a message key of section MESSAGE, the file, and what exactly was done. The
// window shows them together in one message box after opening; the command-line tool
// prints them on standard error.
struct OpenReport {
    OpenOutcome Outcome = OpenOutcome::Opened;
    std::vector<Error> Notices;
    // Every kind of oddity found, in the order of QuirkKind (tarvolin-cli check).
    std::vector<QuirkFound> Quirks;
};

// Opens `path`, whose file name (no folder) is `sffName`, as the caption of lblSffName
// holds it. `ask` is called once, for the palette-mode warning, when byte 32 isn't 1.
// A refused file (an error) leaves `state` and `table` exactly as they were. Only the
// headers are read: the pictures are read from the open file when they are cut out.
Result<OpenReport> OpenSff(const std::string& path, const std::string& sffName, SffState& state,
                            SpriteTable& table, const AppIni& ini, const AskFn& ask);

// The same on bytes already in memory (the fuzzers, tests and benchmarks).
Result<OpenReport> OpenSffBytes(std::vector<uint8_t> bytes, const std::string& path, const std::string& sffName,
                                 SffState& state, SpriteTable& table, const AppIni& ini, const AskFn& ask);

// The four texts of the palette-mode warning, joined as its message box shows them.
std::string PaletteModeWarning(const AppIni& ini);
inline constexpr int kPaletteModeWarningStyle = style::YesNo + style::Critical + style::SecondButtonDefault;
// Open SFF's question before it discards a table.
inline constexpr int kDiscardTableStyle = style::YesNo + style::Exclamation + style::SecondButtonDefault;

// The eleven-character key that ranks the rows at opening.
std::string SortKeyFor(int32_t groupNo, int32_t itemNo, int32_t palType);

}  // namespace tarvolin
