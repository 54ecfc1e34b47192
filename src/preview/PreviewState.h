#pragma once
// The state of the preview screen: the sprite on it (bytes, header, decoded cells, raw
// palette), the ready colours, the colour of the picture area, and where the axis marker
// and the sprite stand. Owned by the preview window, handed by reference to the drawing
// and placing functions, which are plain functions over it.
#include <array>
#include <cstdint>
#include <vector>

#include "formats/Pcx.h"
#include "sff/SffState.h"

namespace tarvolin {

// One ready colour; Color is Red + Green * 256 + Blue * 65536 (0x00BBGGRR).
struct PalletEntry {
    uint8_t Red = 0;
    uint8_t Green = 0;
    uint8_t Blue = 0;
    uint32_t Color = 0;
};
using PalletTable = std::array<PalletEntry, 256>;

// The axis marker's place at window load and after returning to 100%.
inline constexpr int32_t kDefaultAxisX = 108;
inline constexpr int32_t kDefaultAxisY = 152;

struct PreviewState {
    std::vector<uint8_t> PcxBytes;  // empty after a refused picture
    ::tarvolin::PcxHeaderInfo PcxHeaderInfo;
    ::tarvolin::PcxPixels PcxPixels;  // one cell until the first decode
    Palette PcxPalette{};
    ::tarvolin::PalletTable PalletTable{};
    uint32_t BgColor = 0;

    int32_t AxisScreenX = kDefaultAxisX;
    int32_t AxisScreenY = kDefaultAxisY;
    int32_t PicLeft = 0;
    int32_t PicTop = 0;
    int32_t SpanLeft = 0;
    int32_t SpanRight = 0;
    int32_t SpanTop = 0;
    int32_t SpanBottom = 0;
    int32_t LastScrlH = 0;  // 0 also means that no offset is known yet
    int32_t LastScrlV = 0;
    int32_t LastZoom = 100;
};

}  // namespace tarvolin
