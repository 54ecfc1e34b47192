#pragma once
// frmPCX: the preview and edit screen. One window of fixed size (344 x 240 client pixels)
// without close, minimise or maximise button. The picture area at its top left shows the
// selected sprite with the axis marker; the frames beside and below edit the sprite's
// numbers and set zoom and background. Everything drawn goes into a retained picture of
// the client area that paintEvent shows; the controls lie on top of it and hide what a
// large sprite spills beyond the picture area.
//
// The main window uses it through the entries below: a row shown with its picture, the
// reset of Initialize.
#include <QWidget>
#include <cstdint>
#include <memory>
#include <string>

#include "config/Settings.h"
#include "preview/PreviewCanvas.h"
#include "preview/PreviewState.h"
#include "preview/ScrollPlacement.h"
#include "preview/ui/PreviewHost.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;
class QSlider;

namespace tarvolin {

class FrmPcx : public QWidget {
    Q_OBJECT
public:
    explicit FrmPcx(PreviewHost host, QWidget* parent = nullptr);
    ~FrmPcx() override;

    // A row of the table onto the screen, its picture a sprite of the open SFF: the bytes of
    // subfile `subfile` (-1: none) cut out of `sff`, its last 768 bytes the palette. A
    // refused picture shows its message naming `source` and leaves the empty screen; the
    // row's numbers come into the boxes either way.
    void ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile, const std::string& source);
    // The same for a row whose picture is the file `path` of its own.
    void ShowFileRow(const SpriteRow& row, const std::string& path);
    // The picture Change PCX chose, under the hourglass; the boxes stay as they are.
    void ShowPictureFile(const std::string& path);
    // Initialize: the picture forgotten, the window cleared, the empty picture area in the
    // background colour with the marker at its home, the boxes "0".
    void Reset();

    // Show Screen: on screen with its left edge at the right edge of `ownerFrame` and its top
    // at its top, the focus on the zoom slider; or off screen, the focus on the slider
    // first. The window stays loaded.
    void ShowBeside(const QRect& ownerFrame);
    void HideFromScreen();

    const PreviewState& State() const { return state_; }
    const PreviewCanvas& Canvas() const { return canvas_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void SetTabOrder();
    void ConnectHandlers();
    void ShowNumbersAndPicture(const SpriteRow& row);

    // Tests the header of PcxBytes. A refused picture shows the PCX format message (with
    // `source` and the reason) and erases PcxBytes; the caller sees that by PcxBytes being
    // empty.
    void SetPcx(const std::string& source = {});
    // Reads the file `nam` into PcxBytes and tests it. An unreadable file is reported and
    // leaves PcxBytes empty, like a refused picture.
    void OpenPcx(const std::string& nam);
    // Decodes PcxBytes into PcxPixels. After a refusal (PcxBytes empty) nothing is decoded:
    // the picture becomes the single cell of the empty screen, so the chain that follows
    // shows the row's numbers over an empty screen rather than the sprite shown before,
    // which the row no longer stands for.
    void PcxRle();
    void intScr();
    void ViewPCX();
    void initSCR(uint32_t tRGB);
    void drawAxis(int32_t x, int32_t y, uint32_t c1, uint32_t c2);

    // Field editing.
    void OnBoxChanged(QLineEdit* box, Column column, bool placeAgain);
    void OnArrow(QLineEdit* box, int step);
    void OnPalletClicked();
    void ShowMessage(const std::string& text, int styleWord);

    // Zoom and scrolling.
    void OnBarChanged(Bar bar, int value);
    void OnZoomMoment();
    void OnZoomTextLeft();
    double ZoomNumber() const;
    AxisInputs CurrentAxisInputs();

    PreviewHost host_;
    PreviewState state_;
    PreviewCanvas canvas_;
    std::unique_ptr<ScrollBarPort> hPort_;
    std::unique_ptr<ScrollBarPort> vPort_;
    // The last whole numbers txtX and txtY held, for a placing while one holds no number.
    int32_t acceptedX_ = 0;
    int32_t acceptedY_ = 0;
    bool zoomHandledSincePress_ = false;

    // The controls, named as the window's layout names them (tests find them by name).
    QScrollBar* scrlH = nullptr;
    QScrollBar* scrlV = nullptr;
    QLabel* lblDummy = nullptr;
    QLabel* lblDummy2 = nullptr;
    QLabel* lblDummy3 = nullptr;
    QWidget* Line1 = nullptr;
    QWidget* Line2 = nullptr;
    QGroupBox* fraEdit = nullptr;
    QLabel* lblGroup = nullptr;
    QLineEdit* txtGroup = nullptr;
    QLabel* lblItem = nullptr;
    QLineEdit* txtItem = nullptr;
    QGroupBox* fraAxis = nullptr;
    QLabel* lblX = nullptr;
    QLineEdit* txtX = nullptr;
    QLabel* lblY = nullptr;
    QLineEdit* txtY = nullptr;
    QPushButton* cmdAxisUp = nullptr;
    QPushButton* cmdAxisLeft = nullptr;
    QPushButton* cmdAxisRight = nullptr;
    QPushButton* cmdAxisDown = nullptr;
    QLabel* lblMove = nullptr;
    QCheckBox* chkPallet = nullptr;
    QPushButton* cmdChangePCX = nullptr;
    QGroupBox* fraZoom = nullptr;
    QLineEdit* txtZoom = nullptr;
    QLabel* Label1 = nullptr;
    QSlider* sldZoom = nullptr;
    QCheckBox* chkBgDel = nullptr;
    QCheckBox* chkBgWhite = nullptr;
};

}  // namespace tarvolin
