#include "preview/ui/FrmPcx.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QVBoxLayout>

#include "base/Ask.h"
#include "base/TextHelpers.h"
#include "config/MessageCatalog.h"
#include "config/ui/Startup.h"
#include "formats/PictureFile.h"
#include "platform/BusyCursor.h"
#include "platform/MessageBox.h"
#include "preview/Pallet.h"
#include "preview/RowPicture.h"
#include "preview/Zoom.h"
#include "preview/ui/ArrowArt.h"
#include "preview/ui/PictureArea.h"

namespace tarvolin {

namespace {

template <class W>
W* Named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QPushButton* ArrowButton(QWidget* parent, const char* name, ArrowDirection direction) {
    auto* button = Named(new QPushButton(parent), name);
    button->setFixedSize(17, 17);
    button->setIcon(OutlineArrowIcon(direction));
    button->setIconSize(QSize(13, 13));
    button->setCursor(PointingHandCursor());
    return button;
}

// A number box: wide enough for a signed 32-bit number's usual values.
QLineEdit* NumberBox(QWidget* parent, const char* name) {
    auto* box = Named(new QLineEdit(parent), name);
    box->setFixedWidth(64);
    box->setAcceptDrops(false);  // a file dropped on it is Change PCX, like anywhere in the window
    return box;
}

}  // namespace

FrmPcx::FrmPcx(PreviewHost host, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowMaximizeButtonHint),
      host_(host) {
    setObjectName(QStringLiteral("frmPCX"));
    setAcceptDrops(true);
    BuildControls();
    LayOut();
    SetTabOrder();
    ShowDesignCaptions(*this, Window::Pcx);
    for (QLineEdit* box : {txtGroup, txtItem, txtX, txtY}) box->setText(QStringLiteral("0"));
    ConnectHandlers();
    resize(640, 480);
    PlaceAnew();
    ShowZoom();
    ViewPCX();
}

FrmPcx::~FrmPcx() {
    // The application's focus signal would otherwise reach this window while its children go.
    disconnect(qApp, nullptr, this, nullptr);
}

void FrmPcx::BuildControls() {
    picArea = Named(new PictureArea(canvas_, this), "picArea");
    scrlH = Named(new QScrollBar(Qt::Horizontal, this), "scrlH");
    scrlV = Named(new QScrollBar(Qt::Vertical, this), "scrlV");
    for (QScrollBar* bar : {scrlH, scrlV}) {
        bar->setRange(0, 0);
        bar->setFocusPolicy(Qt::StrongFocus);
    }

    fraEdit = Named(new QGroupBox(this), "fraEdit");
    lblGroup = Named(new QLabel(fraEdit), "lblGroup");
    txtGroup = NumberBox(fraEdit, "txtGroup");
    lblItem = Named(new QLabel(fraEdit), "lblItem");
    txtItem = NumberBox(fraEdit, "txtItem");
    fraAxis = Named(new QGroupBox(fraEdit), "fraAxis");
    lblX = Named(new QLabel(fraAxis), "lblX");
    txtX = NumberBox(fraAxis, "txtX");
    lblY = Named(new QLabel(fraAxis), "lblY");
    txtY = NumberBox(fraAxis, "txtY");
    cmdAxisUp = ArrowButton(fraAxis, "cmdAxisUp", ArrowDirection::Up);
    cmdAxisLeft = ArrowButton(fraAxis, "cmdAxisLeft", ArrowDirection::Left);
    cmdAxisRight = ArrowButton(fraAxis, "cmdAxisRight", ArrowDirection::Right);
    cmdAxisDown = ArrowButton(fraAxis, "cmdAxisDown", ArrowDirection::Down);
    lblMove = Named(new QLabel(fraAxis), "lblMove");
    chkPallet = Named(new QCheckBox(fraEdit), "chkPallet");
    cmdChangePCX = Named(new QPushButton(fraEdit), "cmdChangePCX");
    picPalette = Named(new PaletteSwatch(state_, this), "picPalette");

    fraZoom = Named(new QGroupBox(this), "fraZoom");
    txtZoom = NumberBox(fraZoom, "txtZoom");
    txtZoom->setFixedWidth(48);
    Label1 = Named(new QLabel(QStringLiteral("%"), fraZoom), "Label1");
    sldZoom = Named(new QSlider(Qt::Horizontal, fraZoom), "sldZoom");
    sldZoom->setRange(0, static_cast<int>(ZoomStops().size()) - 1);
    sldZoom->setPageStep(1);
    sldZoom->setTickInterval(1);
    sldZoom->setTickPosition(QSlider::TicksBelow);
    sldZoom->setMinimumWidth(120);
    sldZoom->setCursor(PointingHandCursor());
    // The whole picture in the area, at every size of the window, until another zoom is chosen.
    cmdFit = Named(new QPushButton(QStringLiteral("Fit"), fraZoom), "cmdFit");
    cmdFit->setCheckable(true);

    chkBgDel = Named(new QCheckBox(this), "chkBgDel");
    chkBgWhite = Named(new QCheckBox(this), "chkBgWhite");
    for (QPushButton* b : {cmdAxisUp, cmdAxisLeft, cmdAxisRight, cmdAxisDown, cmdChangePCX, cmdFit})
        b->setAutoDefault(false);
}

void FrmPcx::LayOut() {
    auto* edit = new QGridLayout(fraEdit);
    edit->addWidget(lblGroup, 0, 0);
    edit->addWidget(txtGroup, 0, 1);
    edit->addWidget(lblItem, 1, 0);
    edit->addWidget(txtItem, 1, 1);
    edit->addWidget(fraAxis, 2, 0, 1, 2);
    edit->addWidget(chkPallet, 3, 0, 1, 2);
    edit->addWidget(cmdChangePCX, 4, 0, 1, 2);

    auto* axis = new QGridLayout(fraAxis);
    axis->addWidget(lblX, 0, 0);
    axis->addWidget(txtX, 0, 1);
    axis->addWidget(lblY, 1, 0);
    axis->addWidget(txtY, 1, 1);
    auto* arrows = new QGridLayout;
    arrows->setSpacing(0);
    arrows->addWidget(cmdAxisUp, 0, 1);
    arrows->addWidget(cmdAxisLeft, 1, 0);
    arrows->addWidget(cmdAxisRight, 1, 2);
    arrows->addWidget(cmdAxisDown, 2, 1);
    axis->addWidget(lblMove, 2, 0, Qt::AlignBottom);
    axis->addLayout(arrows, 2, 1, Qt::AlignCenter);

    auto* side = new QVBoxLayout;
    side->addWidget(fraEdit);
    side->addWidget(picPalette, 0, Qt::AlignHCenter);
    side->addStretch(1);

    auto* zoom = new QHBoxLayout(fraZoom);
    zoom->addWidget(txtZoom);
    zoom->addWidget(Label1);
    zoom->addWidget(sldZoom, 1);
    zoom->addWidget(cmdFit);
    auto* background = new QVBoxLayout;
    background->addWidget(chkBgDel);
    background->addWidget(chkBgWhite);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(fraZoom, 1);
    bottom->addLayout(background);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(4, 4, 4, 4);
    grid->setSpacing(0);
    grid->addWidget(picArea, 0, 0);
    grid->addWidget(scrlV, 0, 1);
    grid->addWidget(scrlH, 1, 0);
    grid->addLayout(bottom, 2, 0, 1, 2);
    grid->addLayout(side, 0, 2, 3, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
    grid->setColumnMinimumWidth(2, 0);
    side->setContentsMargins(6, 0, 0, 0);
    bottom->setContentsMargins(0, 4, 0, 0);
}

void FrmPcx::SetTabOrder() {
    QWidget* order[] = {picArea,   scrlH,       scrlV,        txtZoom,     sldZoom,   cmdFit,
                        chkBgDel,  chkBgWhite,  txtGroup,     txtItem,     txtX,      txtY,
                        cmdAxisUp, cmdAxisLeft, cmdAxisRight, cmdAxisDown, chkPallet, cmdChangePCX};
    for (size_t i = 0; i + 1 < std::size(order); ++i) setTabOrder(order[i], order[i + 1]);
}

void FrmPcx::SetPcx(const std::string& source) {
    state_.PcxHeaderInfo = ReadPcxHeader(state_.PcxBytes);
    const auto refusal = PcxRefusal(state_.PcxBytes, PcxLayouts::IndexedOrTrueColour);
    if (!refusal) return;
    state_.PcxBytes.clear();
    ShowMessage(FormatError(host_.Ini, Error{msg::PcxFormat, source, *refusal}), style::Ok);
}

void FrmPcx::OpenPcx(const std::string& nam) {
    auto bytes = ReadPictureFile(nam);
    if (!bytes) {
        state_.PcxBytes.clear();
        ShowMessage(FormatError(host_.Ini, bytes.error()), style::Ok);
        return;
    }
    state_.PcxBytes = std::move(bytes.value());
    SetPcx(nam);
}

void FrmPcx::PcxRle() {
    DecodePicture(state_);
    // A 24-bit picture has no palette to share.
    chkPallet->setEnabled(!state_.TrueColour);
    picPalette->update();
}

void FrmPcx::ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile, const std::string& source) {
    if (const Status cut = LoadSubfilePicture(state_, sff, subfile); !cut) {
        // The open SFF changed on disk: that is told, not that the sprite has no picture.
        state_.PcxHeaderInfo = ReadPcxHeader(state_.PcxBytes);
        ShowMessage(FormatError(host_.Ini, cut.error()), style::Ok);
    } else {
        SetPcx(source);
    }
    ShowRow(row, source);
}

void FrmPcx::ShowFileRow(const SpriteRow& row, const std::string& path) {
    OpenPcx(path);
    ShowRow(row, path);
}

void FrmPcx::ShowPictureFile(const std::string& path) {
    {
        platform::Hourglass hourglass(this);
        OpenPcx(path);
    }
    PcxRle();
    nudgeRun_ = 0;
    shownSource_ = path;
    PlaceAnew();
    ViewPCX();
}

void FrmPcx::ShowRow(const SpriteRow& row, const std::string& source) {
    // The same row and picture again (the main window shows a row again after an undo):
    // the marker stays where it stands and the picture moves under it to the row's axis.
    const bool again = state_.HasPicture && host_.SelectedRow == shownPlace_ && source == shownSource_;
    const int32_t columns = state_.Columns();
    const int32_t lines = state_.Lines();
    // A refused picture has left PcxBytes empty: the empty screen, under the row's numbers,
    // so that the row can still be edited or given another picture.
    PcxRle();
    txtGroup->setText(QString::fromStdString(row[Column::GroupNo]));
    txtItem->setText(QString::fromStdString(row[Column::ItemNo]));
    txtX->setText(QString::fromStdString(row[Column::AxisX]));
    txtY->setText(QString::fromStdString(row[Column::AxisY]));
    // 0 and 1 set the box; any other PalType leaves it as it is.
    const auto number = ParseNumber(row[Column::PalType]);
    const auto palType = number ? RoundToInt32(*number) : std::nullopt;
    if (palType == 0 || palType == 1) chkPallet->setChecked(palType == 1);
    nudgeRun_ = 0;
    shownPlace_ = host_.SelectedRow;
    shownSource_ = source;
    const int32_t x = WholeNumberIn(row[Column::AxisX]).value_or(0);
    const int32_t y = WholeNumberIn(row[Column::AxisY]).value_or(0);
    if (again && state_.HasPicture && columns == state_.Columns() && lines == state_.Lines()) {
        SetAxis(x, y);
        return;
    }
    state_.View.AxisX = x;
    state_.View.AxisY = y;
    PlaceAnew();
    ViewPCX();
}

void FrmPcx::Reset() {
    state_.PcxBytes.clear();
    PcxRle();
    for (QLineEdit* box : {txtGroup, txtItem, txtX, txtY}) box->setText(QStringLiteral("0"));
    state_.View.AxisX = state_.View.AxisY = 0;
    shownPlace_ = 0;
    shownSource_.clear();
    nudgeRun_ = 0;
    PlaceAnew();
    ViewPCX();
}

void FrmPcx::ViewPCX() {
    ShowBars();
    tarvolin::ViewPCX(canvas_, state_, chkBgDel->isChecked());
    picArea->update();
}

void FrmPcx::ShowBeside(const QRect& ownerFrame) {
    move(ownerFrame.left() + ownerFrame.width(), ownerFrame.top());
    show();
    activateWindow();
    sldZoom->setFocus();
}

void FrmPcx::HideFromScreen() {
    sldZoom->setFocus();
    hide();
}

void FrmPcx::ShowMessage(const std::string& text, int styleWord) {
    host_.Box.Show(this, text, styleWord);
}

}  // namespace tarvolin
