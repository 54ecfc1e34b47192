#pragma once
// The drawn pictures of the preview window: 13 x 13 outline arrows for the axis buttons
// and the pointing-hand mouse pointer (32 x 32, hot spot 12, 1) over them and the zoom
// slider.
#include <QCursor>
#include <QIcon>

namespace tarvolin {

enum class ArrowDirection { Up, Left, Right, Down };

QIcon OutlineArrowIcon(ArrowDirection direction);
QCursor PointingHandCursor();

}  // namespace tarvolin
