#pragma once
// The zoom numbers: the range a zoom may take, the stops of the slider and of the mouse
// wheel, the test of the zoom box, and the screen size of a run of cells at a zoom.
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tarvolin {

inline constexpr int32_t kZoomMin = 25;
inline constexpr int32_t kZoomMax = 1600;

// The zooms the slider stands on and the wheel steps through, ascending.
std::span<const int32_t> ZoomStops();

// The place of the largest stop at or below `zoom` (0 below the first).
int ZoomStopIndex(int32_t zoom);

// The next stop above (`direction` > 0) or below `zoom`; `zoom` itself at either end.
int32_t StepZoom(int32_t zoom, int direction);

// The text of the zoom box: a whole number (rounded, halves to the even neighbour) from
// kZoomMin to kZoomMax; nothing when it is refused.
std::optional<int32_t> AcceptZoomText(std::string_view text);

// Where the edge before cell `cell` lands on the screen at `zoom` percent:
// floor(cell x zoom / 100). Cell c covers the screen pixels ScreenOf(c) .. ScreenOf(c + 1) - 1.
int64_t ScreenOf(int64_t cell, int32_t zoom);

// The cell shown at screen pixel `pixel` (not negative): the last cell whose edge lies at
// or before it.
int64_t CellAt(int64_t pixel, int32_t zoom);

}  // namespace tarvolin
