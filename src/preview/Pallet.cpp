#include "preview/Pallet.h"

namespace tarvolin {

void PalletSet(PreviewState& state) {
    for (size_t entry = 0; entry < state.PalletTable.size(); ++entry) {
        const uint8_t* rgb = state.PcxPalette.data() + 3 * entry;
        PalletEntry& e = state.PalletTable[entry];
        e.Color = uint32_t{rgb[0]} | uint32_t{rgb[1]} << 8 | uint32_t{rgb[2]} << 16;
        e.Red = rgb[0];
        e.Green = rgb[1];
        e.Blue = rgb[2];
    }
}

uint32_t ActRGB(const PreviewState& state, uint8_t palletId, bool hideBackColor) {
    if (palletId == 0 && hideBackColor) return state.BgColor;
    return state.PalletTable[palletId].Color;
}

uint32_t TrueColourBackground(const TrueColourPixels& picture) {
    if (picture.Rgb.size() < 3) return kBlack;
    return uint32_t{picture.Rgb[0]} | uint32_t{picture.Rgb[1]} << 8 | uint32_t{picture.Rgb[2]} << 16;
}

uint32_t BgColorFor(int whiteBackValue, uint32_t current) {
    if (whiteBackValue == 0) return kBlack;
    if (whiteBackValue == 1) return kWhite;
    return current;
}

}  // namespace tarvolin
