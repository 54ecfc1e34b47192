#pragma once
// The mouse pointer of a window: 11 is the hourglass, 0 the default.

class QWidget;

namespace tarvolin::platform {

inline constexpr int kHourglass = 11;
inline constexpr int kDefaultPointer = 0;

void SetMousePointer(QWidget* window, int pointer);

}  // namespace tarvolin::platform
