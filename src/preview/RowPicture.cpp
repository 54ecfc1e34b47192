#include "preview/RowPicture.h"

#include <algorithm>

#include "preview/Pallet.h"

namespace tarvolin {

void LoadSubfilePicture(PreviewState& state, const SffState& sff, int64_t subfileIndex) {
    if (subfileIndex < 0 || subfileIndex >= static_cast<int64_t>(sff.Subfiles.size())) {
        state.PcxBytes.clear();
        return;
    }
    state.PcxBytes = CutSubfile(sff, sff.Subfiles[static_cast<size_t>(subfileIndex)]);
    const size_t size = state.PcxBytes.size();
    if (size < state.PcxPalette.size()) return;
    std::copy(state.PcxBytes.end() - static_cast<std::ptrdiff_t>(state.PcxPalette.size()), state.PcxBytes.end(),
              state.PcxPalette.begin());
    PalletSet(state);
}

}  // namespace tarvolin
