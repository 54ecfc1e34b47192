#pragma once
// Which part of the zoomed picture the canvas shows. Along each direction the zoomed
// picture has its cell 0 at screen offset 0 and the axis marker at ScreenOf(axis); the
// view's start is the offset shown at the canvas's first pixel. The content is the
// picture together with the marker. A start may put any point of the content at the
// canvas's middle and no further: so every pixel can be reached, something of the content
// is always in view, and the picture can be moved under a fixed marker until its edge
// reaches the middle. A scroll bar's value is the start itself, so one value always shows
// one part.
#include <cstdint>

namespace tarvolin {

// How far the marker's drawing reaches from its centre pixel, each way.
inline constexpr int32_t kMarkerReach = 3;

// One direction of the view.
struct ViewLine {
    int32_t Cells = 1;   // columns or lines of the picture
    int32_t Axis = 0;    // X or Y: the cell the axis lies on
    int32_t Zoom = 100;  // percent
    int32_t Canvas = 1;  // the canvas's width or height in pixels
};

struct Span {
    int64_t Min = 0;
    int64_t Max = 0;
};

// The marker's centre on the zoomed picture.
int64_t MarkerOf(const ViewLine& line);
// The content: from its first pixel to one past its last.
Span ContentOf(const ViewLine& line);
// The starts the view may take: from the content's first pixel to its last at the middle.
Span StartsOf(const ViewLine& line);
int64_t ClampStart(const ViewLine& line, int64_t start);

// The start of a freshly shown picture: the marker at canvas pixel `home`, moved as far as
// needed to show the whole content where the canvas can hold it, and to fill the canvas
// with content where it can't. The marker is always in view.
int64_t HomeStart(const ViewLine& line, int32_t home);

// The start after a change of zoom from `before` to `after`, keeping the picture's point
// under canvas pixel `anchor` there.
int64_t ZoomedStart(const ViewLine& before, int64_t start, const ViewLine& after, int32_t anchor);

// The start after the axis moved from `before` to `after`: the marker stays on its canvas
// pixel and the picture moves under it, as far as the starts allow.
int64_t AxisMovedStart(const ViewLine& before, int64_t start, const ViewLine& after);

// The largest zoom from kZoomMin to kZoomMax at which the content of both directions fits
// its canvas whole; kZoomMin when none does.
int32_t FitZoom(ViewLine across, ViewLine down);

}  // namespace tarvolin
