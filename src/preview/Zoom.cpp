#include "preview/Zoom.h"

#include "base/TextHelpers.h"

namespace tarvolin {

int32_t ZoomFactorOf(double zoomNumber) { return RoundToInt32(zoomNumber / 100.0).value_or(0); }

int32_t SnapSliderZoom(int32_t sliderValue) {
    return static_cast<int32_t>(RoundHalfEven(sliderValue / 100.0)) * 100;
}

std::optional<int32_t> AcceptZoomText(std::string_view text) {
    const auto number = ParseNumber(text);
    if (!number || *number >= 401 || *number < 100) return std::nullopt;
    return static_cast<int32_t>(RoundHalfEven(*number / 10.0)) * 10;
}

}  // namespace tarvolin
