#pragma once
// A sprite of the open SFF as a PNG file, made from the bytes the PCX export writes for it
// (CutSubfile): the pixels the engine shows, the palette it shows them with, colour 0
// transparent, and the row's axis in the text chunk "tarvolin:axis" (PngFromPcx). A sprite
// without a picture (no data, or only the palette that went behind it) has nothing a PNG
// could hold: its file is written empty, and sprmaker.exe stores an empty file as a 1x1
// fully transparent picture, which shows nothing as the original did. The export itself
// (SaveRows with PictureFormat::Png) is the PCX export's.
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// "fighter_09000_00001.pcx" -> "fighter_09000_00001.png"; a name without ".pcx" at its end
// gets ".png" added.
std::string PngName(const std::string& pcxName);

// The PNG file of `row`'s sprite, whose cut-out bytes are `cut`; `target` names it in a
// refusal (ERR_MSG_0: a picture a PNG can't hold).
Result<std::vector<uint8_t>> PngFileOf(std::span<const uint8_t> cut, const SpriteRow& row, const std::string& target);

}  // namespace tarvolin
