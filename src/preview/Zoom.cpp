#include "preview/Zoom.h"

#include <algorithm>
#include <array>

#include "base/TextHelpers.h"

namespace tarvolin {

namespace {

constexpr std::array<int32_t, 10> kStops = {25, 50, 100, 200, 300, 400, 600, 800, 1200, 1600};

int64_t FloorDiv(int64_t a, int64_t b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

}  // namespace

std::span<const int32_t> ZoomStops() {
    return kStops;
}

int ZoomStopIndex(int32_t zoom) {
    const auto above = std::upper_bound(kStops.begin(), kStops.end(), zoom);
    return std::max(0, static_cast<int>(above - kStops.begin()) - 1);
}

int32_t StepZoom(int32_t zoom, int direction) {
    if (direction > 0) {
        const auto next = std::upper_bound(kStops.begin(), kStops.end(), zoom);
        return next == kStops.end() ? zoom : *next;
    }
    const auto here = std::lower_bound(kStops.begin(), kStops.end(), zoom);
    return here == kStops.begin() ? zoom : *(here - 1);
}

std::optional<int32_t> AcceptZoomText(std::string_view text) {
    const auto number = ParseNumber(text);
    if (!number) return std::nullopt;
    const auto zoom = RoundToInt32(*number);
    if (!zoom || *zoom < kZoomMin || *zoom > kZoomMax) return std::nullopt;
    return zoom;
}

int64_t ScreenOf(int64_t cell, int32_t zoom) {
    return FloorDiv(cell * zoom, 100);
}

int64_t CellAt(int64_t pixel, int32_t zoom) {
    return (pixel * 100 + 99) / zoom;
}

}  // namespace tarvolin
