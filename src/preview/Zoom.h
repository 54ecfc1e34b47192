#pragma once
// The zoom numbers: the whole-number factor drawn with, the slider's multiples of 100,
// and the test of the zoom text box.
#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvolin {

inline constexpr int32_t kZoomMin = 100;
inline constexpr int32_t kZoomMax = 400;

// The percentage / 100 rounded half to even (150 -> 2, 250 -> 2, 350 -> 4); 0 when it does
// not fit.
int32_t ZoomFactorOf(double zoomNumber);

// The slider's value forced to a multiple of 100, halves to the even neighbour.
int32_t SnapSliderZoom(int32_t sliderValue);

// The text of txtZoom on leaving it: a number from 100 up to below 401, rounded to tens
// (halves to the even ten); nothing when it is refused.
std::optional<int32_t> AcceptZoomText(std::string_view text);

}  // namespace tarvolin
