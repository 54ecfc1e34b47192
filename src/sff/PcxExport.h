#pragma once
// Writes the sprites of the open SFF as PCX files: one file per row without a PcxPath,
// named by the row's PCX Name, holding the sprite's bytes from SffBytes with the palette
// it takes in the file appended where its data don't end in it (CutSubfile).
#include <functional>
#include <string>

#include "base/Result.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// One row (place counted from 1) into `folder` (ends with '/').
Status SavePcx(const SffState& state, const SpriteTable& table, const std::string& folder, int row);

// Every row without a PcxPath, in table order; `betweenFiles` runs after each written file
// (the windows let waiting events through there). Stops at the first failure.
Status SaveAllPcx(const SffState& state, const SpriteTable& table, const std::string& folder,
                  const std::function<void()>& betweenFiles = {});

}  // namespace tarvolin
