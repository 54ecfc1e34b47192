#include "preview/ui/PictureArea.h"

#include <QHelpEvent>
#include <QImage>
#include <QPainter>
#include <QToolTip>

namespace tarvolin {

namespace {

constexpr int kCell = 7;  // pixels a swatch cell, its 1-pixel gap included
constexpr int kSwatchSide = 16 * kCell + 1;

}  // namespace

PictureArea::PictureArea(const PreviewCanvas& canvas, QWidget* parent) : QWidget(parent), canvas_(canvas) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(64, 64);
}

void PictureArea::paintEvent(QPaintEvent*) {
    const QImage picture(reinterpret_cast<const uchar*>(canvas_.Data()), canvas_.Width(), canvas_.Height(),
                         canvas_.Width() * 4, QImage::Format_RGB32);
    QPainter painter(this);
    painter.drawImage(0, 0, picture);
    if (hasFocus()) {  // a thin frame says where the arrow keys go
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

PaletteSwatch::PaletteSwatch(const PreviewState& state, QWidget* parent) : QWidget(parent), state_(state) {}

QSize PaletteSwatch::sizeHint() const {
    return {kSwatchSide, kSwatchSide};
}

void PaletteSwatch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(0, 0, kSwatchSide, kSwatchSide, palette().color(QPalette::Mid));
    if (!Shows()) return;
    for (int i = 0; i < 256; ++i) {
        const PalletEntry& e = state_.PalletTable[static_cast<size_t>(i)];
        painter.fillRect(1 + (i % 16) * kCell, 1 + (i / 16) * kCell, kCell - 1, kCell - 1,
                         QColor(e.Red, e.Green, e.Blue));
    }
}

bool PaletteSwatch::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    auto* help = static_cast<QHelpEvent*>(event);
    const int column = (help->pos().x() - 1) / kCell;
    const int line = (help->pos().y() - 1) / kCell;
    if (!Shows() || column < 0 || column > 15 || line < 0 || line > 15) {
        QToolTip::hideText();
        return true;
    }
    const PalletEntry& e = state_.PalletTable[static_cast<size_t>(line * 16 + column)];
    QToolTip::showText(help->globalPos(),
                       QStringLiteral("%1: %2, %3, %4").arg(line * 16 + column).arg(e.Red).arg(e.Green).arg(e.Blue),
                       this);
    return true;
}

}  // namespace tarvolin
