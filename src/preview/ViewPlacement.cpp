#include "preview/ViewPlacement.h"

#include <algorithm>
#include <cmath>

#include "preview/Zoom.h"

namespace tarvolin {

int64_t MarkerOf(const ViewLine& line) {
    return ScreenOf(line.Axis, line.Zoom);
}

Span ContentOf(const ViewLine& line) {
    const int64_t marker = MarkerOf(line);
    return {std::min<int64_t>(0, marker - kMarkerReach),
            std::max(ScreenOf(line.Cells, line.Zoom), marker + kMarkerReach + 1)};
}

namespace {

int64_t Middle(const ViewLine& line) {
    return line.Canvas / 2;
}

bool Fits(const ViewLine& line) {
    const Span content = ContentOf(line);
    return content.Max - content.Min <= line.Canvas;
}

}  // namespace

Span StartsOf(const ViewLine& line) {
    const Span content = ContentOf(line);
    return {content.Min - Middle(line), content.Max - 1 - Middle(line)};
}

int64_t ClampStart(const ViewLine& line, int64_t start) {
    const Span starts = StartsOf(line);
    return std::clamp(start, starts.Min, starts.Max);
}

int64_t HomeStart(const ViewLine& line, int32_t home) {
    const Span content = ContentOf(line);
    const int64_t last = content.Max - line.Canvas;  // the content's end at the canvas's end
    const int64_t start = std::clamp(MarkerOf(line) - home, std::min(content.Min, last), std::max(content.Min, last));
    return ClampStart(line, start);
}

int64_t ZoomedStart(const ViewLine& before, int64_t start, const ViewLine& after, int32_t anchor) {
    // The point at the middle of the anchor's pixel, in cells, lands in the anchor's pixel.
    const double cell = (static_cast<double>(start + anchor) + 0.5) * 100.0 / before.Zoom;
    return ClampStart(after, static_cast<int64_t>(std::floor(cell * after.Zoom / 100.0)) - anchor);
}

int64_t AxisMovedStart(const ViewLine& before, int64_t start, const ViewLine& after) {
    return ClampStart(after, start + MarkerOf(after) - MarkerOf(before));
}

int32_t FitZoom(ViewLine across, ViewLine down) {
    // The content grows with the zoom: the largest zoom that fits is found by halving.
    auto fits = [&](int32_t zoom) {
        across.Zoom = down.Zoom = zoom;
        return Fits(across) && Fits(down);
    };
    int32_t low = kZoomMin;
    int32_t high = kZoomMax;
    if (!fits(low)) return kZoomMin;
    while (low < high) {
        const int32_t mid = low + (high - low + 1) / 2;
        if (fits(mid))
            low = mid;
        else
            high = mid - 1;
    }
    return low;
}

}  // namespace tarvolin
