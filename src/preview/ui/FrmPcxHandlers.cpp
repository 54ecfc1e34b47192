// The event handlers of frmPCX: the four number boxes, the arrow buttons, the palette
// check box, Change PCX, the background check boxes, the scroll bars and the zoom.
#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>

#include "base/Ask.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "platform/MessageBox.h"
#include "preview/Pallet.h"
#include "preview/Zoom.h"
#include "preview/ui/FrmPcx.h"

namespace tarvolin {

namespace {

std::string TextOf(const QLineEdit* box) { return box->text().toStdString(); }

// A box's text as the whole number it stands for; nothing for a non-number and for a
// number beyond the signed 32-bit range, which the boxes treat alike.
std::optional<int32_t> WholeNumberOf(const QLineEdit* box) {
    const auto number = ParseNumber(TextOf(box));
    if (!number) return std::nullopt;
    return RoundToInt32(*number);
}

// Lost focus as the boxes mean it: the focus went to another control of the program, in
// this window or in another of the program's (the main window's list or buttons); not to
// another application, and not to a popup menu.
bool LeftForAnotherControl(const QEvent* event) {
    if (event->type() != QEvent::FocusOut) return false;
    const auto reason = static_cast<const QFocusEvent*>(event)->reason();
    if (reason == Qt::PopupFocusReason) return false;
    // When the focus goes with a change of window, the window that takes it is already the
    // active one; there is none when the whole program has lost the focus.
    if (reason == Qt::ActiveWindowFocusReason) return QApplication::activeWindow() != nullptr;
    return true;
}

}  // namespace

void FrmPcx::ConnectHandlers() {
    connect(txtItem, &QLineEdit::textChanged, this, [this] { OnBoxChanged(txtItem, Column::ItemNo, false); });
    connect(txtX, &QLineEdit::textChanged, this, [this] { OnBoxChanged(txtX, Column::AxisX, true); });
    connect(txtY, &QLineEdit::textChanged, this, [this] { OnBoxChanged(txtY, Column::AxisY, true); });
    txtGroup->installEventFilter(this);
    txtZoom->installEventFilter(this);
    sldZoom->installEventFilter(this);

    connect(cmdAxisUp, &QPushButton::clicked, this, [this] { OnArrow(txtY, +1); });
    connect(cmdAxisDown, &QPushButton::clicked, this, [this] { OnArrow(txtY, -1); });
    connect(cmdAxisLeft, &QPushButton::clicked, this, [this] { OnArrow(txtX, +1); });
    connect(cmdAxisRight, &QPushButton::clicked, this, [this] { OnArrow(txtX, -1); });
    // A value set from code counts as a click, as SelectList relies on for chkPallet.
    connect(chkPallet, &QCheckBox::stateChanged, this, [this] { OnPalletClicked(); });
    connect(cmdChangePCX, &QPushButton::clicked, this, [this] {
        if (host_.ChangePcx) host_.ChangePcx();
    });

    connect(chkBgDel, &QCheckBox::stateChanged, this, [this] { ViewPCX(); });
    connect(chkBgWhite, &QCheckBox::stateChanged, this, [this] {
        state_.BgColor = BgColorFor(chkBgWhite->isChecked() ? 1 : 0, state_.BgColor);
        ViewPCX();
    });

    connect(scrlH, &QScrollBar::valueChanged, this, [this](int v) { OnBarChanged(Bar::Horizontal, v); });
    connect(scrlV, &QScrollBar::valueChanged, this, [this](int v) { OnBarChanged(Bar::Vertical, v); });
    // The slider's moments: a drag let go, a step by key, wheel or page click (its
    // position is already the new one then), and below, the key release and the click.
    connect(sldZoom, &QSlider::sliderReleased, this, [this] { OnZoomMoment(); });
    connect(sldZoom, &QSlider::actionTriggered, this, [this] { OnZoomMoment(); });
}

bool FrmPcx::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtGroup && LeftForAnotherControl(event)) {
        OnBoxChanged(txtGroup, Column::GroupNo, false);
    } else if (watched == txtZoom && LeftForAnotherControl(event)) {
        OnZoomTextLeft();
    } else if (watched == sldZoom) {
        if (event->type() == QEvent::MouseButtonPress) zoomHandledSincePress_ = false;
        // A click that neither dragged nor stepped the slider; those were handled already.
        if (event->type() == QEvent::MouseButtonRelease && !sldZoom->isSliderDown() && !zoomHandledSincePress_)
            OnZoomMoment();
        if (event->type() == QEvent::KeyRelease) OnZoomMoment();
    }
    return QWidget::eventFilter(watched, event);
}

void FrmPcx::OnBoxChanged(QLineEdit* box, Column column, bool placeAgain) {
    const auto number = WholeNumberOf(box);
    if (box == txtX && number) acceptedX_ = *number;
    if (box == txtY && number) acceptedY_ = *number;
    if (!number) {
        // The message box belongs to this window, which it hands the focus back to when it
        // closes, also when the box was left for another window.
        ShowMessage(host_.Ini.MsgEnterNumber, style::Exclamation);
        box->setFocus();
        return;
    }
    const int row = host_.SelectedRow;
    if (host_.Table.Empty() || row < 1 || row > host_.Table.RowCount()) return;
    // The cell gets the rounded whole number; the box keeps what was typed (1.5 stays, 2 is written).
    host_.Edit(row, column, DecimalText(*number), 0);
    if (!placeAgain) return;
    intScr();
    ViewPCX();
}

void FrmPcx::OnArrow(QLineEdit* box, int step) {
    if (host_.Table.Empty()) return;
    // A box holding no number (its message came when it was typed) leaves the button
    // without effect, as does a step beyond the 32-bit range.
    const auto number = WholeNumberOf(box);
    if (!number) return;
    const int64_t moved = int64_t{*number} + step;
    if (moved != static_cast<int32_t>(moved)) return;
    box->setText(QString::fromStdString(DecimalText(moved)));
}

void FrmPcx::OnPalletClicked() {
    const int row = host_.SelectedRow;
    if (host_.Table.Empty() || row < 1 || row > host_.Table.RowCount()) return;
    host_.Edit(row, Column::PalType, chkPallet->isChecked() ? "1" : "0", 0);
}

void FrmPcx::OnBarChanged(Bar bar, int value) {
    const QScrollBar* scroll = bar == Bar::Horizontal ? scrlH : scrlV;
    if (ApplyBarChange(state_, bar, value, scroll->maximum())) ViewPCX();
}

void FrmPcx::OnZoomMoment() {
    zoomHandledSincePress_ = true;
    const int32_t v = SnapSliderZoom(sldZoom->sliderPosition());
    sldZoom->setValue(v);
    txtZoom->setText(QString::number(sldZoom->value()));
    if (v == 100) {
        // Back at 100% the marker returns to its default place.
        state_.AxisScreenX = kDefaultAxisX;
        state_.AxisScreenY = kDefaultAxisY;
    }
    zoomScr(state_, sldZoom->value(), CurrentAxisInputs(), *hPort_, *vPort_);
    ViewPCX();
    state_.LastZoom = sldZoom->value();
}

void FrmPcx::OnZoomTextLeft() {
    const auto zoom = AcceptZoomText(TextOf(txtZoom));
    if (!zoom) {
        ShowMessage(std::to_string(kZoomMin) + "～" + std::to_string(kZoomMax) + host_.Ini.MsgRangeSuffix, style::Ok);
        txtZoom->setText(QStringLiteral("100"));
        txtZoom->setFocus();
        return;
    }
    txtZoom->setText(QString::number(*zoom));
    sldZoom->setValue(*zoom);
}

// The number in txtZoom while it lies in 100..400; anything else (the box being typed
// into when a redraw comes) draws at the zoom the ranges were last worked out for.
double FrmPcx::ZoomNumber() const {
    const auto number = ParseNumber(TextOf(txtZoom));
    if (number && *number >= kZoomMin && *number <= kZoomMax) return *number;
    return state_.LastZoom;
}

AxisInputs FrmPcx::CurrentAxisInputs() {
    // A box that holds no number at this moment counts with the last number it held.
    if (auto x = WholeNumberOf(txtX)) acceptedX_ = *x;
    if (auto y = WholeNumberOf(txtY)) acceptedY_ = *y;
    return {acceptedX_, acceptedY_, ZoomFactorOf(ZoomNumber())};
}

}  // namespace tarvolin
