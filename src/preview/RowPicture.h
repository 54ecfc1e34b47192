#pragma once
// A sprite of the open SFF brought onto the screen: its bytes cut out of SffBytes (the
// shared palette appended where its PalFlag is 1) and the last 768 of them taken as the
// raw palette, whichever way they got there.
#include <cstdint>

#include "preview/PreviewState.h"
#include "sff/SffState.h"

namespace tarvolin {

// Fills PcxBytes from the subfile `subfileIndex` (the row's P.Pos) and PcxPalette from its
// last 768 bytes, then rebuilds PalletTable. An index outside the table leaves PcxBytes
// empty; bytes too few for a palette leave PcxPalette and PalletTable as they were, so the
// picture is drawn with the colours of the sprite shown before it.
void LoadSubfilePicture(PreviewState& state, const SffState& sff, int64_t subfileIndex);

}  // namespace tarvolin
