#pragma once
// The changes of the preview's view, over the whole state: a picture placed anew, a zoom
// about a point, the axis moved under the fixed marker, a scroll. Each sets the numbers
// and both starts by the rules of ViewPlacement.
#include <cstdint>

#include "preview/PreviewState.h"

namespace tarvolin {

// The marker at canvas pixel (homeX, homeY) as HomeStart places it; with `fit`, at the
// largest zoom that shows the whole content first.
void PlaceView(PreviewState& state, int32_t homeX, int32_t homeY, bool fit);
// The new zoom, the picture's point under canvas pixel (anchorX, anchorY) staying there.
void ZoomView(PreviewState& state, int32_t zoom, int32_t anchorX, int32_t anchorY);
// The new axis numbers, the marker staying on its canvas pixel as far as the starts allow.
void MoveAxis(PreviewState& state, int32_t x, int32_t y);
// The view moved by (dx, dy) canvas pixels, within the starts.
void ScrollView(PreviewState& state, int64_t dx, int64_t dy);
// A new canvas size; the starts kept as far as they are allowed.
void ResizeView(PreviewState& state, int32_t width, int32_t height);

}  // namespace tarvolin
