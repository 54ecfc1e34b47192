// The view of frmPCX: placing a picture, zoom, the scroll bars, and the input of the
// picture area (drag, arrow keys, wheel, a new size).
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QWheelEvent>
#include <cmath>

#include "preview/ViewChanges.h"
#include "preview/Zoom.h"
#include "preview/ui/FrmPcx.h"
#include "preview/ui/PictureArea.h"

namespace tarvolin {

namespace {

// Where a freshly shown picture puts its axis marker, as a share of the area: across the
// middle, four fifths down, so that a figure standing on its axis is seen whole above it.
QPoint HomeOf(const PreviewView& v) {
    return {v.Width / 2, v.Height * 4 / 5};
}

// Screen pixels of one arrow of a scroll bar.
constexpr int kScrollStep = 20;

}  // namespace

void FrmPcx::PlaceAnew() {
    const QPoint home = HomeOf(state_.View);
    PlaceView(state_, home.x(), home.y(), cmdFit->isChecked());
    atHome_ = true;
    ShowZoom();
}

void FrmPcx::SetZoom(int32_t zoom, QPoint anchor) {
    ZoomView(state_, zoom, anchor.x(), anchor.y());
    atHome_ = false;
    ShowZoom();
    ViewPCX();
}

void FrmPcx::SetAxis(int32_t x, int32_t y) {
    MoveAxis(state_, x, y);
    ViewPCX();
}

void FrmPcx::ScrollBy(int dx, int dy) {
    ScrollView(state_, dx, dy);
    atHome_ = false;
    ViewPCX();
}

void FrmPcx::ShowBars() {
    settingControls_ = true;
    const auto show = [](QScrollBar* bar, const ViewLine& line, int64_t start) {
        const Span range = StartsOf(line);
        bar->setRange(static_cast<int>(range.Min), static_cast<int>(range.Max));
        bar->setPageStep(line.Canvas);
        bar->setSingleStep(kScrollStep);
        bar->setValue(static_cast<int>(start));
    };
    show(scrlH, state_.Across(), state_.View.Left);
    show(scrlV, state_.Down(), state_.View.Top);
    settingControls_ = false;
}

void FrmPcx::ShowZoom() {
    settingControls_ = true;
    txtZoom->setText(QString::number(state_.View.Zoom));
    sldZoom->setValue(ZoomStopIndex(state_.View.Zoom));
    settingControls_ = false;
}

void FrmPcx::OnAreaResized() {
    ResizeView(state_, std::max(picArea->width(), 1), std::max(picArea->height(), 1));
    canvas_.Resize(state_.View.Width, state_.View.Height);
    if (atHome_ || cmdFit->isChecked()) PlaceAnew();
    ViewPCX();
}

void FrmPcx::OnWheel(QWheelEvent* event) {
    const QPoint angle = event->angleDelta();
    if (event->modifiers() & Qt::ControlModifier) {
        const int direction = angle.y() != 0 ? angle.y() : angle.x();
        if (direction == 0) return;
        cmdFit->setChecked(false);
        SetZoom(StepZoom(state_.View.Zoom, direction), event->position().toPoint());
        return;
    }
    // One notch scrolls as many arrow steps as the desktop's wheel setting says; Shift
    // turns an up-down wheel sideways (where the system has not done so already).
    const double perNotch = double(QApplication::wheelScrollLines()) * kScrollStep / 120.0;
    QPoint d(static_cast<int>(std::lround(-angle.x() * perNotch)),
             static_cast<int>(std::lround(-angle.y() * perNotch)));
    if ((event->modifiers() & Qt::ShiftModifier) && d.x() == 0) d = QPoint(d.y(), 0);
    ScrollBy(d.x(), d.y());
}

bool FrmPcx::OnAreaEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize: OnAreaResized(); return false;
    case QEvent::Wheel: OnWheel(static_cast<QWheelEvent*>(event)); return true;
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton || CurrentRow() == 0) return false;
        dragRun_ = ++lastRun_;
        dragFrom_ = mouse->position().toPoint();
        dragAxisX_ = state_.View.AxisX;
        dragAxisY_ = state_.View.AxisY;
        picArea->setCursor(Qt::ClosedHandCursor);
        return false;
    }
    case QEvent::MouseMove: {
        if (dragRun_ == 0) return false;
        // The picture follows the mouse under the fixed marker: the axis moves against it,
        // by whole cells of the zoomed picture.
        const QPoint moved = static_cast<QMouseEvent*>(event)->position().toPoint() - dragFrom_;
        const auto cells = [this](int pixels) {
            return static_cast<int64_t>(std::lround(pixels * 100.0 / state_.View.Zoom));
        };
        const int64_t x = dragAxisX_ - cells(moved.x());
        const int64_t y = dragAxisY_ - cells(moved.y());
        if (x == static_cast<int32_t>(x) && y == static_cast<int32_t>(y))
            MoveAxisTo(static_cast<int32_t>(x), static_cast<int32_t>(y), dragRun_);
        return true;
    }
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return false;
        dragRun_ = 0;
        picArea->setCursor(Qt::OpenHandCursor);
        return false;
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        const int step = key->modifiers() & Qt::ShiftModifier ? 10 : 1;
        // As the arrow buttons: the picture moves the way the key points.
        switch (key->key()) {
        case Qt::Key_Left: Nudge(step, 0); return true;
        case Qt::Key_Right: Nudge(-step, 0); return true;
        case Qt::Key_Up: Nudge(0, step); return true;
        case Qt::Key_Down: Nudge(0, -step); return true;
        default: return false;
        }
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut: picArea->update(); return false;
    default: return false;
    }
}

}  // namespace tarvolin
