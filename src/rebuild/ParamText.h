#pragma once
// The parameter text that sprmaker.exe reads: header, then per row an optional palette
// block and five entry lines, then an empty line; CP932, CR LF.
#include <string>

#include "base/Result.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// The bytes of the text for the table as it stands; an error (ERR_CODEPAGE) when a cell or
// the SFF name holds a character CP932 cannot hold.
Result<std::string> ParamTextBytes(const SpriteTable& table, const std::string& sffNameCaption);

}  // namespace tarvolin
