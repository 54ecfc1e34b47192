#include "platform/Twips.h"

#include <QWidget>

namespace tarvolin::platform {

void PlaceInTwips(QWidget& control, int left, int top, int width, int height) {
    control.setGeometry(Pixels(left), Pixels(top), Pixels(width), Pixels(height));
}

QFont DesignFont(const char* family, double points) {
    QFont f(QString::fromUtf8(family));
    f.setPointSizeF(points);
    return f;
}

}  // namespace tarvolin::platform
