#include "platform/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace tarvolin::platform {

namespace {

// Room left for the frame the window manager puts around a window.
constexpr int kFrameRoom = 40;

QRect ScreenFor(const QRect& rect) {
    QScreen* best = QGuiApplication::primaryScreen();
    int bestArea = 0;
    for (QScreen* screen : QGuiApplication::screens()) {
        const QRect common = screen->availableGeometry().intersected(rect);
        if (common.width() * common.height() > bestArea) {
            bestArea = common.width() * common.height();
            best = screen;
        }
    }
    return best ? best->availableGeometry() : QRect(0, 0, 1024, 768);
}

// `rect` moved and shrunk into `screen`, room kept for the frame.
QRect Inside(QRect rect, const QRect& screen) {
    rect.setWidth(std::min(rect.width(), screen.width() - kFrameRoom / 2));
    rect.setHeight(std::min(rect.height(), screen.height() - kFrameRoom));
    // The last place that keeps the frame on the screen; the screen's edge for a window as
    // large as it.
    const int right = std::max(screen.left(), screen.right() - rect.width() - kFrameRoom / 4);
    const int bottom = std::max(screen.top(), screen.bottom() - rect.height() - kFrameRoom);
    rect.moveLeft(std::clamp(rect.left(), screen.left(), right));
    rect.moveTop(std::clamp(rect.top(), screen.top(), bottom));
    return rect;
}

void Put(QWidget& window, const QRect& rect) {
    window.resize(rect.size());
    window.move(rect.topLeft());
}

}  // namespace

WindowPlace PlaceOf(const QWidget& window) {
    const QPoint at = window.frameGeometry().topLeft();
    return WindowPlace{at.x(), at.y(), window.width(), window.height()};
}

void PlaceOnScreen(QWidget& window, const WindowPlace& place) {
    const QRect rect(place.X, place.Y, place.Width, place.Height);
    Put(window, Inside(rect, ScreenFor(rect)));
}

void CentreOnScreen(QWidget& window, const QWidget* over) {
    const QRect anchor = over ? over->frameGeometry() : QRect();
    const QRect screen = ScreenFor(anchor.isValid() ? anchor : QRect(QPoint(0, 0), window.size()));
    QRect rect(QPoint(0, 0), window.size());
    rect.moveCenter(anchor.isValid() ? anchor.center() : screen.center());
    Put(window, Inside(rect, screen));
}

}  // namespace tarvolin::platform
