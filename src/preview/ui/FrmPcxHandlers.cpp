// The event handlers of frmPCX: the number boxes and the zoom box, the arrow buttons and
// keys, the palette check box, Change PCX and a dropped file, the background check boxes,
// the scroll bars, the slider and Fit.
#include <QApplication>
#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>

#include "base/Ask.h"
#include "base/TextHelpers.h"
#include "platform/MessageBox.h"
#include "preview/Pallet.h"
#include "preview/Zoom.h"
#include "preview/ui/FrmPcx.h"
#include "preview/ui/PictureArea.h"

namespace tarvolin {

namespace {

std::string TextOf(const QLineEdit* box) {
    return box->text().toStdString();
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

// The first local file of a drag, if it brings one.
QString DroppedFile(const QMimeData* data) {
    if (!data || !data->hasUrls()) return {};
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) return url.toLocalFile();
    return {};
}

}  // namespace

void FrmPcx::ConnectHandlers() {
    for (QLineEdit* box : {txtGroup, txtItem, txtX, txtY, txtZoom}) {
        box->installEventFilter(this);
        connect(box, &QLineEdit::returnPressed, this, [this, box] {
            if (box == txtZoom)
                CommitZoom();
            else
                CommitBox(box);
        });
    }
    picArea->installEventFilter(this);
    picArea->setCursor(Qt::OpenHandCursor);

    connect(cmdAxisUp, &QPushButton::clicked, this, [this] { Nudge(0, +1); });
    connect(cmdAxisDown, &QPushButton::clicked, this, [this] { Nudge(0, -1); });
    connect(cmdAxisLeft, &QPushButton::clicked, this, [this] { Nudge(+1, 0); });
    connect(cmdAxisRight, &QPushButton::clicked, this, [this] { Nudge(-1, 0); });
    // A run of arrow presses ends when the focus goes anywhere but the buttons and the area.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        for (QWidget* nudger :
             {static_cast<QWidget*>(picArea), static_cast<QWidget*>(cmdAxisUp), static_cast<QWidget*>(cmdAxisDown),
              static_cast<QWidget*>(cmdAxisLeft), static_cast<QWidget*>(cmdAxisRight)})
            if (now == nudger) return;
        nudgeRun_ = 0;
    });
    // The user's click only: showing a row sets the box without writing the cell back.
    connect(chkPallet, &QCheckBox::clicked, this, [this](bool on) { WriteCell(Column::PalType, on ? "1" : "0", 0); });
    connect(cmdChangePCX, &QPushButton::clicked, this, [this] {
        if (host_.ChangePcx) host_.ChangePcx();
    });

    connect(chkBgDel, &QCheckBox::stateChanged, this, [this] { ViewPCX(); });
    connect(chkBgWhite, &QCheckBox::stateChanged, this, [this] {
        state_.BgColor = BgColorFor(chkBgWhite->isChecked() ? 1 : 0, state_.BgColor);
        ViewPCX();
    });

    connect(scrlH, &QScrollBar::valueChanged, this, [this](int value) {
        if (!settingControls_) ScrollBy(static_cast<int>(value - state_.View.Left), 0);
    });
    connect(scrlV, &QScrollBar::valueChanged, this, [this](int value) {
        if (!settingControls_) ScrollBy(0, static_cast<int>(value - state_.View.Top));
    });
    connect(sldZoom, &QSlider::valueChanged, this, [this](int stop) {
        if (settingControls_) return;
        cmdFit->setChecked(false);
        SetZoom(ZoomStops()[static_cast<size_t>(stop)], picArea->rect().center());
    });
    connect(cmdFit, &QPushButton::toggled, this, [this](bool on) {
        if (!on) return;
        PlaceAnew();
        ViewPCX();
    });
}

bool FrmPcx::eventFilter(QObject* watched, QEvent* event) {
    if (watched == picArea) return OnAreaEvent(event) || QWidget::eventFilter(watched, event);
    if (LeftForAnotherControl(event)) {
        if (watched == txtZoom)
            CommitZoom();
        else if (auto* box = qobject_cast<QLineEdit*>(watched))
            CommitBox(box);
    }
    return QWidget::eventFilter(watched, event);
}

void FrmPcx::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFile(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void FrmPcx::dropEvent(QDropEvent* event) {
    const QString path = DroppedFile(event->mimeData());
    if (path.isEmpty()) return;
    event->acceptProposedAction();
    if (host_.ChangePcxFile) host_.ChangePcxFile(path.toStdString());
}

int FrmPcx::CurrentRow() const {
    const int row = host_.SelectedRow;
    return row >= 1 && row <= host_.Table.RowCount() ? row : 0;
}

void FrmPcx::WriteCell(Column column, const std::string& text, uint64_t run) {
    const int row = CurrentRow();
    // A cell that already holds the text makes no step of the history.
    if (row == 0 || host_.Table.Cell(row, column) == text) return;
    host_.Edit(row, column, text, run);
}

void FrmPcx::Refuse(QLineEdit* box, const std::string& text, int styleWord) {
    // The message box takes the focus from the box; that is no leaving of it.
    committing_ = true;
    ShowMessage(text, styleWord);
    committing_ = false;
    box->setFocus();
    box->selectAll();
}

void FrmPcx::CommitBox(QLineEdit* box) {
    if (committing_) return;
    // A number beyond the signed 32-bit range counts as no number.
    const auto parsed = ParseNumber(TextOf(box));
    const auto number = parsed ? RoundToInt32(*parsed) : std::nullopt;
    if (!number) {
        Refuse(box, host_.Ini.MsgEnterNumber, style::Exclamation);
        return;
    }
    // The box shows the whole number the cell gets (1.5 becomes 2 in both).
    const std::string text = DecimalText(*number);
    box->setText(QString::fromStdString(text));
    if (CurrentRow() == 0) return;
    if (box == txtX || box == txtY) {
        MoveAxisTo(box == txtX ? *number : state_.View.AxisX, box == txtY ? *number : state_.View.AxisY, 0);
        return;
    }
    WriteCell(box == txtGroup ? Column::GroupNo : Column::ItemNo, text, 0);
}

void FrmPcx::CommitZoom() {
    if (committing_) return;
    const auto zoom = AcceptZoomText(TextOf(txtZoom));
    if (!zoom) {
        ShowZoom();
        Refuse(txtZoom, std::to_string(kZoomMin) + "～" + std::to_string(kZoomMax) + host_.Ini.MsgRangeSuffix,
               style::Ok);
        return;
    }
    if (*zoom == state_.View.Zoom) return;
    cmdFit->setChecked(false);
    SetZoom(*zoom, picArea->rect().center());
}

void FrmPcx::MoveAxisTo(int32_t x, int32_t y, uint64_t run) {
    if (CurrentRow() == 0) return;
    txtX->setText(QString::number(x));
    txtY->setText(QString::number(y));
    WriteCell(Column::AxisX, DecimalText(x), run);
    WriteCell(Column::AxisY, DecimalText(y), run);
    if (x != state_.View.AxisX || y != state_.View.AxisY) SetAxis(x, y);
}

void FrmPcx::Nudge(int dx, int dy) {
    if (CurrentRow() == 0) return;
    const int64_t x = int64_t{state_.View.AxisX} + dx;
    const int64_t y = int64_t{state_.View.AxisY} + dy;
    if (x != static_cast<int32_t>(x) || y != static_cast<int32_t>(y)) return;
    if (nudgeRun_ == 0) nudgeRun_ = ++lastRun_;
    MoveAxisTo(static_cast<int32_t>(x), static_cast<int32_t>(y), nudgeRun_);
}

}  // namespace tarvolin
