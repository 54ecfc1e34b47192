#pragma once
// Writes the sprites of the open SFF as picture files: one file per row without a PcxPath,
// named by the row's PCX Name, holding the sprite's bytes from SffBytes with the palette
// it takes in the file appended where its data don't end in it (CutSubfile); or the same
// sprite as a PNG file (PngExport) under that name with ".png".
#include <functional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

enum class PictureFormat { Pcx, Png };

// The name a row's sprite is written under in `format`.
std::string ExportName(const SpriteRow& row, PictureFormat format);

// One row (place counted from 1) into `folder` (ends with '/'), as a PCX file.
Status SavePcx(const SffState& state, const SpriteTable& table, const std::string& folder, int row);

// The rows `places` (counted from 1, in the order given; empty: every row, in table order)
// that have no PcxPath, each as a file of `format`; `betweenFiles` runs after each written
// file (the windows let waiting events through there). Stops at the first failure.
Status SaveRows(const SffState& state, const SpriteTable& table, const std::string& folder, PictureFormat format,
                const std::vector<int>& places = {}, const std::function<void()>& betweenFiles = {});

// Every row as a PCX file.
inline Status SaveAllPcx(const SffState& state, const SpriteTable& table, const std::string& folder,
                         const std::function<void()>& betweenFiles = {}) {
    return SaveRows(state, table, folder, PictureFormat::Pcx, {}, betweenFiles);
}

}  // namespace tarvolin
