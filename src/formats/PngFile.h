#pragma once
// PNG files read and written through libpng, in memory. The reader takes what a picture
// of the program can become: 8 bits a channel at most, and no more pixels than a PCX
// picture may have; it checks the size in the header before anything is allocated for the
// pixels, and bounds what libpng may allocate for other chunks.
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"
#include "formats/Pcx.h"

namespace tarvolin {

struct PngImage {
    uint32_t Width = 0;
    uint32_t Height = 0;
    // 1: palette indices with Colours as their palette; 3: red, green, blue; 4: red,
    // green, blue, alpha (what the reader makes of every PNG that has no palette).
    int Channels = 1;
    std::vector<uint8_t> Pixels;  // Width * Height * Channels bytes, line after line
    Palette Colours{};            // with 1 channel: the palette; entries the file lacks are black
    // Written as the text chunk "tarvolin:axis" when not empty: the sprite's axis, "X,Y".
    std::string Axis;
};

// The eight bytes every PNG file starts with.
bool IsPng(std::span<const uint8_t> bytes);

// The largest picture the reader takes: what becomes a PCX picture of at most kMaxPcxCells
// cells, its lines padded to an even length, with 16-bit bounds.
inline constexpr uint32_t kMaxPngWidth = 32766;
inline constexpr uint32_t kMaxPngHeight = 32767;

// A PNG as palette indices (1 channel) when it has a palette, fewer bits a pixel widened to
// one byte, else as 8-bit RGBA (grey turned into RGB, a transparent colour into alpha).
// Refused with ERR_PNG_FORMAT naming `path`: 16 bits a channel, more pixels than the limits
// above; with ERR_PNG_READ: whatever libpng can't read (a broken or truncated file).
Result<PngImage> ReadPng(std::span<const uint8_t> bytes, const std::string& path);

// An 8-bit PNG of 1 channel (palette, all 256 entries, with entry 0 transparent) or 3
// (RGB). The error (ERR_WRITE, naming `path`) carries libpng's reason.
Result<std::vector<uint8_t>> WritePng(const PngImage& image, const std::string& path);

}  // namespace tarvolin
