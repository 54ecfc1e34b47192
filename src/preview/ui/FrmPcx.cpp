#include "preview/ui/FrmPcx.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>

#include "base/Ask.h"
#include "formats/PictureFile.h"
#include "config/MessageCatalog.h"
#include "config/ui/Startup.h"
#include "platform/BusyCursor.h"
#include "platform/MessageBox.h"
#include "base/TextHelpers.h"
#include "preview/Pallet.h"
#include "preview/RowPicture.h"
#include "preview/Zoom.h"
#include "preview/ui/ArrowArt.h"

namespace tarvolin {

namespace {

// A scroll bar of the window as the placing code drives it. QScrollBar raises valueChanged
// synchronously, also when a lowered maximum pushes the value down, so the change handling
// nests exactly where the placing steps set a bar.
class QtScrollBarPort : public ScrollBarPort {
public:
    explicit QtScrollBarPort(QScrollBar* bar) : bar_(bar) {}
    int32_t Minimum() const override { return bar_->minimum(); }
    int32_t Maximum() const override { return bar_->maximum(); }
    int32_t Value() const override { return bar_->value(); }
    void SetMaximum(int32_t maximum) override { bar_->setMaximum(maximum); }
    void SetValue(int32_t value) override { bar_->setValue(value); }
    void Enable() override { bar_->setEnabled(true); }

private:
    QScrollBar* bar_;
};

uint32_t ColorOf(const QColor& c) {
    return static_cast<uint32_t>(c.red()) | static_cast<uint32_t>(c.green()) << 8 | static_cast<uint32_t>(c.blue()) << 16;
}

template <class W>
W* Place(W* widget, const char* name, int x, int y, int w, int h) {
    widget->setObjectName(QString::fromLatin1(name));
    widget->setGeometry(x, y, w, h);
    return widget;
}

// A label with no text in the window's own colour, covering what the picture spills.
QLabel* Cover(QWidget* parent, const char* name, int x, int y, int w, int h) {
    auto* label = Place(new QLabel(parent), name, x, y, w, h);
    label->setAutoFillBackground(true);
    return label;
}

QWidget* Line(QWidget* parent, const char* name, int x, int y, int w, int h) {
    auto* line = Place(new QWidget(parent), name, x, y, w, h);
    QPalette pal = line->palette();
    pal.setColor(QPalette::Window, Qt::black);
    line->setPalette(pal);
    line->setAutoFillBackground(true);
    return line;
}

QPushButton* ArrowButton(QWidget* parent, const char* name, int x, int y, ArrowDirection direction) {
    auto* button = Place(new QPushButton(parent), name, x, y, 17, 17);
    button->setIcon(OutlineArrowIcon(direction));
    button->setIconSize(QSize(13, 13));
    button->setCursor(PointingHandCursor());
    return button;
}

}  // namespace

FrmPcx::FrmPcx(PreviewHost host, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::MSWindowsFixedSizeDialogHint),
      host_(host) {
    setObjectName(QStringLiteral("frmPCX"));
    setFixedSize(kClientWidth, kClientHeight);
    BuildControls();
    SetTabOrder();
    hPort_ = std::make_unique<QtScrollBarPort>(scrlH);
    vPort_ = std::make_unique<QtScrollBarPort>(scrlV);
    // The captions take the width of their text: the fonts here are wider than the ones the
    // layout was drawn for, and a translated caption may be longer. Each has room to its right.
    for (QWidget* w : {static_cast<QWidget*>(lblGroup), static_cast<QWidget*>(lblItem), static_cast<QWidget*>(lblX),
                       static_cast<QWidget*>(lblY), static_cast<QWidget*>(lblMove), static_cast<QWidget*>(chkBgDel),
                       static_cast<QWidget*>(chkBgWhite)})
        w->setProperty(kAutoSizeProperty, kKeepLeft);
    ShowDesignCaptions(*this, Window::Pcx);
    // Window load: boxes "0", one cell, the marker at its default place, the bars placed.
    for (QLineEdit* box : {txtGroup, txtItem, txtX, txtY}) box->setText(QStringLiteral("0"));
    txtZoom->setText(QStringLiteral("100"));
    ConnectHandlers();
    intScr();
    ViewPCX();
}

FrmPcx::~FrmPcx() = default;

void FrmPcx::BuildControls() {
    // Created bottom to top: the covering labels, the lines, then the windowed controls.
    lblDummy = Cover(this, "lblDummy", 216, 184, 17, 17);
    lblDummy2 = Cover(this, "lblDummy2", 232, 0, 240, 3405);
    lblDummy3 = Cover(this, "lblDummy3", -4, 192, 236, 172);
    Line1 = Line(this, "Line1", 0, 200, 233, 1);
    Line2 = Line(this, "Line2", 232, 0, 1, 201);
    scrlH = Place(new QScrollBar(Qt::Horizontal, this), "scrlH", 0, 184, 217, 17);
    scrlV = Place(new QScrollBar(Qt::Vertical, this), "scrlV", 216, 0, 17, 185);
    for (QScrollBar* bar : {scrlH, scrlV}) {
        bar->setRange(0, 0);
        bar->setSingleStep(1);
        bar->setPageStep(10);
        bar->setFocusPolicy(Qt::StrongFocus);
    }

    fraEdit = Place(new QGroupBox(this), "fraEdit", 236, 0, 105, 205);
    lblGroup = Place(new QLabel(fraEdit), "lblGroup", 8, 12, 30, 14);
    txtGroup = Place(new QLineEdit(fraEdit), "txtGroup", 56, 12, 41, 17);
    lblItem = Place(new QLabel(fraEdit), "lblItem", 8, 28, 19, 14);
    txtItem = Place(new QLineEdit(fraEdit), "txtItem", 56, 28, 41, 17);
    fraAxis = Place(new QGroupBox(fraEdit), "fraAxis", 4, 44, 97, 105);
    lblX = Place(new QLabel(fraAxis), "lblX", 4, 12, 30, 14);
    txtX = Place(new QLineEdit(fraAxis), "txtX", 52, 12, 41, 17);
    lblY = Place(new QLabel(fraAxis), "lblY", 4, 28, 31, 14);
    txtY = Place(new QLineEdit(fraAxis), "txtY", 52, 28, 41, 17);
    cmdAxisUp = ArrowButton(fraAxis, "cmdAxisUp", 60, 48, ArrowDirection::Up);
    cmdAxisLeft = ArrowButton(fraAxis, "cmdAxisLeft", 44, 64, ArrowDirection::Left);
    cmdAxisRight = ArrowButton(fraAxis, "cmdAxisRight", 76, 64, ArrowDirection::Right);
    cmdAxisDown = ArrowButton(fraAxis, "cmdAxisDown", 60, 80, ArrowDirection::Down);
    lblMove = Place(new QLabel(fraAxis), "lblMove", 4, 84, 41, 14);
    chkPallet = Place(new QCheckBox(fraEdit), "chkPallet", 12, 152, 81, 15);
    cmdChangePCX = Place(new QPushButton(fraEdit), "cmdChangePCX", 4, 176, 97, 25);

    fraZoom = Place(new QGroupBox(this), "fraZoom", 4, 200, 133, 37);
    txtZoom = Place(new QLineEdit(fraZoom), "txtZoom", 12, 12, 33, 18);
    Label1 = Place(new QLabel(QStringLiteral("%"), fraZoom), "Label1", 48, 12, 17, 17);
    sldZoom = Place(new QSlider(Qt::Horizontal, fraZoom), "sldZoom", 60, 12, 69, 17);
    sldZoom->setRange(kZoomMin, kZoomMax);
    sldZoom->setSingleStep(100);
    sldZoom->setPageStep(100);
    sldZoom->setTickInterval(100);
    sldZoom->setTickPosition(QSlider::TicksBelow);
    sldZoom->setValue(100);
    sldZoom->setCursor(PointingHandCursor());

    chkBgDel = Place(new QCheckBox(this), "chkBgDel", 140, 208, 97, 15);
    chkBgWhite = Place(new QCheckBox(this), "chkBgWhite", 140, 224, 109, 13);
    // Frames are opaque, so that nothing drawn shows through them.
    for (QGroupBox* frame : {fraEdit, fraAxis, fraZoom}) frame->setAutoFillBackground(true);
}

void FrmPcx::SetTabOrder() {
    QWidget* order[] = {scrlH,   scrlV, txtZoom,   sldZoom,     chkBgDel,     chkBgWhite,  txtGroup, txtItem,
                        txtX,    txtY,  cmdAxisUp, cmdAxisLeft, cmdAxisRight, cmdAxisDown, chkPallet, cmdChangePCX};
    for (size_t i = 0; i + 1 < std::size(order); ++i) setTabOrder(order[i], order[i + 1]);
}


void FrmPcx::SetPcx(const std::string& source) {
    state_.PcxHeaderInfo = ReadPcxHeader(state_.PcxBytes);
    const auto refusal = PcxRefusal(state_.PcxBytes);
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
    if (state_.PcxBytes.empty() || PcxRefusal(state_.PcxHeaderInfo)) {
        state_.PcxPixels = PcxPixels{};
        return;
    }
    state_.PcxPixels = tarvolin::PcxRle(state_.PcxBytes, state_.PcxHeaderInfo);
}

void FrmPcx::intScr() { tarvolin::intScr(state_, CurrentAxisInputs(), *hPort_, *vPort_); }

void FrmPcx::ViewPCX() {
    ViewInputs in;
    in.HMaximum = scrlH->maximum();
    in.HValue = scrlH->value();
    in.VMaximum = scrlV->maximum();
    in.VValue = scrlV->value();
    in.ZoomNumber = ZoomNumber();
    in.HideBackColor = chkBgDel->isChecked();
    in.WindowColor = ColorOf(palette().color(QPalette::Window));
    tarvolin::ViewPCX(canvas_, state_, in);
    update();
}

void FrmPcx::initSCR(uint32_t tRGB) {
    tarvolin::initSCR(canvas_, tRGB);
    update();
}

void FrmPcx::drawAxis(int32_t x, int32_t y, uint32_t c1, uint32_t c2) {
    tarvolin::drawAxis(canvas_, state_, x, y, c1, c2);
    update();
}


void FrmPcx::ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile, const std::string& source) {
    LoadSubfilePicture(state_, sff, subfile);
    SetPcx(source);
    ShowNumbersAndPicture(row);
}

void FrmPcx::ShowFileRow(const SpriteRow& row, const std::string& path) {
    OpenPcx(path);
    ShowNumbersAndPicture(row);
}

void FrmPcx::ShowPictureFile(const std::string& path) {
    {
        platform::Hourglass hourglass(this);
        OpenPcx(path);
    }
    // A refused file leaves PcxBytes empty: PcxRle then gives the empty screen, which the
    // rest of the chain places and draws; the row already points at the file.
    PcxRle();
    intScr();
    ViewPCX();
}

void FrmPcx::ShowNumbersAndPicture(const SpriteRow& row) {
    // A refused picture has left PcxBytes empty: PcxRle then gives the empty screen, and
    // the row's numbers still come into the boxes so that the row can be edited (or given
    // another picture by Change PCX).
    PcxRle();
    txtGroup->setText(QString::fromStdString(row[Column::GroupNo]));
    txtItem->setText(QString::fromStdString(row[Column::ItemNo]));
    txtX->setText(QString::fromStdString(row[Column::AxisX]));
    txtY->setText(QString::fromStdString(row[Column::AxisY]));
    // 0 and 1 set the box; any other PalType leaves it as it is, so that showing a row
    // never rewrites its cell.
    const auto number = ParseNumber(row[Column::PalType]);
    const auto palType = number ? RoundToInt32(*number) : std::nullopt;
    if (palType == 0 || palType == 1) chkPallet->setChecked(palType == 1);
    intScr();
    ViewPCX();
}

void FrmPcx::Reset() {
    state_.PcxBytes.clear();
    state_.PcxPixels = PcxPixels{};
    canvas_.Clear(ColorOf(palette().color(QPalette::Window)));
    const bool white = chkBgWhite->isChecked();
    initSCR(white ? kWhite : kBlack);
    drawAxis(kDefaultAxisX, kDefaultAxisY, white ? kBlack : kWhite, white ? kWhite : kBlack);
    // With no rows left the boxes' handlers write nothing back.
    for (QLineEdit* box : {txtGroup, txtItem, txtX, txtY}) box->setText(QStringLiteral("0"));
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

void FrmPcx::paintEvent(QPaintEvent*) {
    const QImage picture(reinterpret_cast<const uchar*>(canvas_.Data()), canvas_.Width(), canvas_.Height(),
                         canvas_.Width() * 4, QImage::Format_RGB32);
    QPainter(this).drawImage(0, 0, picture);
}

void FrmPcx::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    intScr();
    ViewPCX();
}

void FrmPcx::ShowMessage(const std::string& text, int styleWord) { host_.Box.Show(this, text, styleWord); }

}  // namespace tarvolin
