#include "preview/ui/ArrowArt.h"

#include <QBitmap>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygon>
#include <QTransform>

namespace tarvolin {

namespace {

// A transparent picture of the given size and a painter on it, with the plain 1-pixel
// black pen that both drawings use, for sharp pixels at this small size.
QPixmap TransparentPixmap(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

void PreparePen(QPainter& p) {
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QPen(Qt::black, 1));
}

}  // namespace

QIcon OutlineArrowIcon(ArrowDirection direction) {
    QPixmap pixmap = TransparentPixmap(13);
    QPainter p(&pixmap);
    PreparePen(p);
    p.setBrush(Qt::NoBrush);
    // An arrow pointing up: a head as wide as the picture over a shaft half as wide.
    const QPolygon up({QPoint(6, 0), QPoint(12, 6), QPoint(9, 6), QPoint(9, 12), QPoint(3, 12), QPoint(3, 6),
                       QPoint(0, 6)});
    int degrees = 0;
    switch (direction) {
        case ArrowDirection::Up: degrees = 0; break;
        case ArrowDirection::Right: degrees = 90; break;
        case ArrowDirection::Down: degrees = 180; break;
        case ArrowDirection::Left: degrees = 270; break;
    }
    // Turn about the centre pixel (6, 6) so that the arrow stays inside the 13 x 13 square.
    QTransform turn;
    turn.translate(6, 6).rotate(degrees).translate(-6, -6);
    p.drawPolygon(turn.map(up));
    p.end();
    return QIcon(pixmap);
}

QCursor PointingHandCursor() {
    QPixmap pixmap = TransparentPixmap(32);
    QPainter p(&pixmap);
    PreparePen(p);
    p.setBrush(Qt::white);
    // The index finger points up with its tip at (12, 1); three folded fingers and the
    // thumb make the hand below it.
    QPainterPath hand;
    hand.addRoundedRect(QRectF(10, 1, 5, 14), 2, 2);
    hand.addRoundedRect(QRectF(14, 9, 4, 7), 1.5, 1.5);
    hand.addRoundedRect(QRectF(17, 10, 4, 7), 1.5, 1.5);
    hand.addRoundedRect(QRectF(20, 11, 4, 7), 1.5, 1.5);
    hand.addRoundedRect(QRectF(5, 12, 6, 5), 2, 2);
    hand.addRoundedRect(QRectF(8, 13, 16, 11), 3, 3);
    p.drawPath(hand.simplified());
    p.drawLine(15, 13, 15, 15);
    p.drawLine(18, 14, 18, 16);
    p.drawLine(21, 15, 21, 17);
    p.end();
    return QCursor(pixmap, 12, 1);
}

}  // namespace tarvolin
