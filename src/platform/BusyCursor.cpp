#include "platform/BusyCursor.h"

#include <QWidget>

namespace tarvolin::platform {

void SetMousePointer(QWidget* window, int pointer) {
    if (pointer == kHourglass) window->setCursor(Qt::WaitCursor);
    else window->unsetCursor();
}

}  // namespace tarvolin::platform
