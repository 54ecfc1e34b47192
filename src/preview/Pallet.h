#pragma once
// Palette indices into colours: the ready table built from the raw palette, and the one
// transparent rule (index 0 painted in the picture area's colour while "Hide BackColor"
// is checked).
#include <cstdint>

#include "formats/Pcx.h"
#include "preview/PreviewState.h"

namespace tarvolin {

inline constexpr uint32_t kBlack = 0x000000;
inline constexpr uint32_t kWhite = 0xFFFFFF;

// Rebuilds PalletTable from PcxPalette.
void PalletSet(PreviewState& state);

// The colour to draw for a palette index; `hideBackColor` is the value of chkBgDel.
uint32_t ActRGB(const PreviewState& state, uint8_t palletId, bool hideBackColor);

// What counts as background in a 24-bit picture, which has no palette index 0: the
// colour of its top-left pixel, the colour that stands round the figure wherever a
// palette picture has index 0. "Hide BackColor" paints every pixel of this colour in the
// picture area's colour.
uint32_t TrueColourBackground(const TrueColourPixels& picture);

// The picture-area colour for the value of chkBgWhite (0 or 1); any other value keeps
// `current`.
uint32_t BgColorFor(int whiteBackValue, uint32_t current);

}  // namespace tarvolin
