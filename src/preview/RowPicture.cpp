#include "preview/RowPicture.h"

#include <algorithm>

#include "preview/Pallet.h"

namespace tarvolin {

Status LoadSubfilePicture(PreviewState& state, const SffState& sff, int64_t subfileIndex) {
    state.PcxBytes.clear();
    if (subfileIndex < 0 || subfileIndex >= static_cast<int64_t>(sff.Subfiles.size())) return Ok();
    Status cut = CutSubfileInto(sff, sff.Subfiles[static_cast<size_t>(subfileIndex)], state.PcxBytes);
    if (!cut) state.PcxBytes.clear();
    return cut;
}

void DecodePicture(PreviewState& state) {
    state.PcxPixels = PcxPixels{};
    state.TrueColourPixels = TrueColourPixels{};
    state.HasPicture = !state.PcxBytes.empty();
    state.TrueColour = state.HasPicture && state.PcxHeaderInfo.NPlanes == 3;
    if (!state.HasPicture) return;
    if (state.TrueColour) {
        state.TrueColourPixels = PcxRleTrueColour(state.PcxBytes, state.PcxHeaderInfo);
        return;
    }
    state.PcxPixels = PcxRle(state.PcxBytes, state.PcxHeaderInfo);
    const size_t size = state.PcxBytes.size();
    if (size < state.PcxPalette.size()) return;
    std::copy(state.PcxBytes.end() - static_cast<std::ptrdiff_t>(state.PcxPalette.size()), state.PcxBytes.end(),
              state.PcxPalette.begin());
    PalletSet(state);
}

}  // namespace tarvolin
