#pragma once
// The two ways between a PNG file and the PCX picture that the preview decodes and the
// builder stores.
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

// A PNG file's bytes as a 256-colour PCX image of the same picture (EncodePcx: lines
// padded to an even length with colour 0, then 0x0C and the palette).
// - A PNG with a palette keeps its indices and its palette as they are; fewer bits a pixel
//   are widened, palette entries the file lacks are black, its tRNS is not looked at.
// - Any other PNG (RGB, grey, with or without alpha) of at most 256 colours is turned into
//   indices. Fully transparent pixels become index 0 whatever their colour, and entry 0
//   takes the colour of the first of them; the other colours take indices from 1 in the
//   order in which they first appear, line by line. Without a fully transparent pixel the
//   indices start at 0, so the colour of the top-left pixel, as a rule a sprite's
//   background, becomes colour 0, which the engine draws transparent. Alpha other than 0
//   is dropped: a half-transparent pixel keeps its colour.
// Refused: more than 256 colours (ERR_PNG_FORMAT with their count, fully transparent
// pixels counting as one colour), and whatever ReadPng refuses.
Result<std::vector<uint8_t>> PcxFromPng(std::span<const uint8_t> png, const std::string& path);

// A sprite's PCX image as a PNG file of the pixels the engine shows: Xmax - Xmin + 1
// columns and Ymax - Ymin + 1 lines, each line BytesPerLine bytes a plane, runs crossing
// line ends; cells past BytesPerLine, and those no data reach, are colour 0. So the pad
// column of an odd width, which the preview shows, is not part of the PNG, and a PNG made
// into a PCX again (PcxFromPng) shows the engine the same picture. A 256-colour picture
// becomes an 8-bit PNG with a palette of all 256 entries, the image's last 768 bytes, with
// colour 0 transparent; a 24-bit one an RGB PNG. `axis` ("X,Y") goes into the text chunk
// "tarvolin:axis". Refused (ERR_MSG_0, naming `path`): what the builder refuses, and a
// picture without pixels or larger than ReadPng takes back.
Result<std::vector<uint8_t>> PngFromPcx(std::span<const uint8_t> pcx, const std::string& axis, const std::string& path);

}  // namespace tarvolin
