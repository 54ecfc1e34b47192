#include "preview/ViewChanges.h"

namespace tarvolin {

namespace {

// Sets the view's numbers by `change`, then each start from the direction as it was, the
// start, the direction as it is now and whether it is the direction across.
template <class Change, class Restart>
void Rearrange(PreviewState& s, Change change, Restart restart) {
    const ViewLine across = s.Across();
    const ViewLine down = s.Down();
    change(s.View);
    s.View.Left = restart(across, s.View.Left, s.Across(), true);
    s.View.Top = restart(down, s.View.Top, s.Down(), false);
}

}  // namespace

void PlaceView(PreviewState& s, int32_t homeX, int32_t homeY, bool fit) {
    if (fit) s.View.Zoom = FitZoom(s.Across(), s.Down());
    s.View.Left = HomeStart(s.Across(), homeX);
    s.View.Top = HomeStart(s.Down(), homeY);
}

void ZoomView(PreviewState& s, int32_t zoom, int32_t anchorX, int32_t anchorY) {
    Rearrange(
        s, [zoom](PreviewView& v) { v.Zoom = zoom; },
        [=](const ViewLine& before, int64_t start, const ViewLine& after, bool across) {
            return ZoomedStart(before, start, after, across ? anchorX : anchorY);
        });
}

void MoveAxis(PreviewState& s, int32_t x, int32_t y) {
    Rearrange(
        s,
        [x, y](PreviewView& v) {
            v.AxisX = x;
            v.AxisY = y;
        },
        [](const ViewLine& before, int64_t start, const ViewLine& after, bool) {
            return AxisMovedStart(before, start, after);
        });
}

void ScrollView(PreviewState& s, int64_t dx, int64_t dy) {
    s.View.Left = ClampStart(s.Across(), s.View.Left + dx);
    s.View.Top = ClampStart(s.Down(), s.View.Top + dy);
}

void ResizeView(PreviewState& s, int32_t width, int32_t height) {
    s.View.Width = width;
    s.View.Height = height;
    ScrollView(s, 0, 0);
}

}  // namespace tarvolin
