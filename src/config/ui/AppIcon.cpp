#include "config/ui/AppIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace tarvolin {

// A dark tile with three sprite frames stacked behind each other, the front one holding a
// small pixel figure and the axis cross: a sprite archive taken apart.
QPixmap AppIconPixmap(int size) {
    QPixmap pm(size, size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing, true);
    const double s = size / 48.0;  // the drawing is made on a 48-unit grid

    QLinearGradient back(0, 0, 0, size);
    back.setColorAt(0, QColor(0x2B, 0x3F, 0x6B));
    back.setColorAt(1, QColor(0x14, 0x1E, 0x38));
    p.setPen(Qt::NoPen);
    p.setBrush(back);
    p.drawRoundedRect(QRectF(1 * s, 1 * s, 46 * s, 46 * s), 7 * s, 7 * s);

    const QColor frames[] = {QColor(0x8A, 0x5A, 0x1E), QColor(0xC8, 0x82, 0x22), QColor(0xF5, 0xB8, 0x3A)};
    for (int i = 0; i < 3; ++i) {
        const QRectF r((6 + 6 * i) * s, (18 - 6 * i) * s, 24 * s, 24 * s);
        p.setBrush(frames[i]);
        p.setPen(QPen(QColor(0x10, 0x10, 0x10), std::max(1.0, 1.2 * s)));
        p.drawRect(r);
    }

    // The figure on the front frame, as 3-unit pixels.
    p.setRenderHint(QPainter::Antialiasing, false);
    const char* figure[] = {"..##..", "..##..", ".####.", "#.##.#", "..##..", ".#..#.", ".#..#."};
    const double cell = 3 * s;
    const double ox = 18 * s + 3 * s, oy = 6 * s + 1.5 * s;
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x22, 0x22, 0x44));
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 6; ++x)
            if (figure[y][x] == '#') p.drawRect(QRectF(ox + x * cell, oy + y * cell, cell, cell));

    // The axis cross at the figure's feet.
    p.setPen(QPen(QColor(0xE0, 0x20, 0x20), std::max(1.0, 1.5 * s)));
    const double ax = 30 * s, ay = 28.5 * s, arm = 4 * s;
    p.drawLine(QPointF(ax - arm, ay), QPointF(ax + arm, ay));
    p.drawLine(QPointF(ax, ay - arm), QPointF(ax, ay + arm));
    return pm;
}

QIcon AppIcon() {
    QIcon icon;
    for (int size : {24, 32, 48}) icon.addPixmap(AppIconPixmap(size));
    return icon;
}

}  // namespace tarvolin
