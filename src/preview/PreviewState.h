#pragma once
// The state of the preview screen: the sprite on it (bytes, header, decoded picture, raw
// palette), the ready colours, the colour of the picture area, and the view: the zoom, the
// axis numbers the picture is placed by and which part of it the canvas shows. Owned by
// the preview window, handed by reference to the drawing and placing functions, which are
// plain functions over it.
#include <array>
#include <cstdint>
#include <vector>

#include "formats/Pcx.h"
#include "preview/ViewPlacement.h"

namespace tarvolin {

// One ready colour; Color is Red + Green * 256 + Blue * 65536 (0x00BBGGRR).
struct PalletEntry {
    uint8_t Red = 0;
    uint8_t Green = 0;
    uint8_t Blue = 0;
    uint32_t Color = 0;
};
using PalletTable = std::array<PalletEntry, 256>;

// What the canvas shows and where: the zoom, the axis numbers (txtX, txtY as last
// taken), the canvas's size and the view's start along each direction (ViewPlacement).
struct PreviewView {
    int32_t Zoom = 100;
    int32_t AxisX = 0;
    int32_t AxisY = 0;
    int32_t Width = 1;
    int32_t Height = 1;
    int64_t Left = 0;
    int64_t Top = 0;
};

struct PreviewState {
    std::vector<uint8_t> PcxBytes;  // empty after a refused picture
    ::tarvolin::PcxHeaderInfo PcxHeaderInfo;
    // The picture: palette indices, or colours for a 24-bit picture (TrueColour set).
    ::tarvolin::PcxPixels PcxPixels;
    ::tarvolin::TrueColourPixels TrueColourPixels;
    bool TrueColour = false;
    // False for the empty screen: nothing shown yet, a refused picture, Initialize.
    bool HasPicture = false;
    Palette PcxPalette{};
    ::tarvolin::PalletTable PalletTable{};
    uint32_t BgColor = 0;
    PreviewView View;

    int32_t Columns() const { return TrueColour ? TrueColourPixels.Columns : PcxPixels.Columns(); }
    int32_t Lines() const { return TrueColour ? TrueColourPixels.Lines : PcxPixels.Lines(); }
    ViewLine Across() const { return {Columns(), View.AxisX, View.Zoom, View.Width}; }
    ViewLine Down() const { return {Lines(), View.AxisY, View.Zoom, View.Height}; }
};

}  // namespace tarvolin
