#pragma once
// Writes the sprites of the open SFF as PNG files: one file per row without a PcxPath,
// named by the row's PCX Name with ".png" for ".pcx", made from the bytes the PCX export
// writes for it (CutSubfile): the pixels the engine shows, the palette it shows them with,
// colour 0 transparent, and the row's axis in the text chunk "tarvolin:axis" (PngFromPcx).
// A sprite without a picture (no data, or only the palette that went behind it, which
// sprmaker.exe stores as a sprite without a picture) has nothing a PNG could hold: its file
// is written empty, and sprmaker.exe makes the same sprite without a picture of it again.
#include <functional>
#include <string>

#include "base/Result.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// "fighter_09000_00001.pcx" -> "fighter_09000_00001.png"; a name without ".pcx" at its end
// gets ".png" added.
std::string PngName(const std::string& pcxName);

// One row (place counted from 1) into `folder` (ends with '/'). A sprite that can't be a
// PNG (ERR_MSG_0) names the file and the row.
Status SavePng(const SffState& state, const SpriteTable& table, const std::string& folder, int row);

// Every row without a PcxPath, in table order; `betweenFiles` runs after each written file.
// Stops at the first failure.
Status SaveAllPng(const SffState& state, const SpriteTable& table, const std::string& folder,
                  const std::function<void()>& betweenFiles = {});

}  // namespace tarvolin
