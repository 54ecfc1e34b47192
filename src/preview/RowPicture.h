#pragma once
// A sprite brought onto the screen. A sprite of the open SFF has its bytes cut out of
// SffBytes (the palette it takes in the file appended where its data don't end in it:
// CutSubfile); a sprite with a file of its own has the file's bytes. Either way the last
// 768 bytes are its palette: what the engine shows for the SFF's sprites, and for a file's
// picture what the rebuilt SFF will show, since the builder keeps a picture's own palette
// wherever it differs from the one in force.
#include <cstdint>

#include "preview/PreviewState.h"
#include "sff/SffState.h"

namespace tarvolin {

// Fills PcxBytes from the subfile `subfileIndex` (the row's P.Pos); an index outside the
// table leaves PcxBytes empty. The open SFF changed on disk since it was opened
// (ERR_FILE_CHANGED): PcxBytes empty, and the error.
Status LoadSubfilePicture(PreviewState& state, const SffState& sff, int64_t subfileIndex);

// Decodes PcxBytes, whose header the acceptance check took, into the picture: a 24-bit
// picture into colours, any other into palette indices with the last 768 bytes as its
// palette (bytes too few for a palette keep the palette shown before). Empty PcxBytes (a
// refused picture) give the empty screen.
void DecodePicture(PreviewState& state);

}  // namespace tarvolin
