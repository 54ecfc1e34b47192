#pragma once
// Writes 256-colour PCX images: version 5, run-length encoded, one plane, lines padded to
// an even BytesPerLine, then 0x0C and the 768-byte palette.
#include <cstdint>
#include <span>
#include <vector>

#include "formats/Pcx.h"

namespace tarvolin {

// `pixels` holds width * height palette indices, line after line.
std::vector<uint8_t> EncodePcx(int width, int height, std::span<const uint8_t> pixels, const Palette& palette);

}  // namespace tarvolin
