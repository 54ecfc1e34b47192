#pragma once
// A sprite of the open SFF brought onto the screen: its bytes cut out of SffBytes (the
// palette it takes in the file appended where its data don't end in it: CutSubfile) and
// the last 768 of them taken as the raw palette, whichever way they got there. So the
// screen shows the colours the engine shows, and those of the row's exported file.
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
