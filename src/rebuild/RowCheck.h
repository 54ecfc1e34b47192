#pragma once
// Rows that can't be exported or built, refused before anything is written: a row with no
// picture data (past the end of a short subfile chain it has no PCX Name), and a row
// whose picture file of its own (PcxPath, from Change PCX) can't be read or is a PCX the
// program doesn't take, which sprmaker.exe would fail on after the PCX files were written.
#include "base/Result.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// Every row that the export writes has picture data (ERR_ROW_EMPTY, naming the row).
Status CheckRowsHaveData(const SpriteTable& table);

// The same, and every picture file of a row's own can be read (ERR_PCX_READ) and is
// accepted (ERR_MSG_0); the error names the file and the row.
Status CheckRowsForBuild(const SpriteTable& table);

}  // namespace tarvolin
