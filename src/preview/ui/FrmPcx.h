#pragma once
// frmPCX: the preview and edit screen. One window of fixed size (344 x 240 client pixels)
// without close, minimise or maximise button. The picture area at its top left shows the
// selected sprite with the axis marker; the frames beside and below edit the sprite's
// numbers and set zoom and background. Everything drawn goes into a retained picture of
// the client area that paintEvent shows; the controls lie on top of it and hide what a
// large sprite spills beyond the picture area.
//
// The public operations are called by the main window's SelectList in a fixed order:
// SetPcx or OpenPcx, PcxRle, the boxes, intScr, ViewPCX.
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

    // Tests the header of PcxBytes. A refused picture shows the PCX format message (with
    // `source` and the reason) and erases PcxBytes; the caller sees that by PcxBytes being
    // empty.
    void SetPcx(const std::string& source = {});
    // Reads the file `nam` into PcxBytes and tests it. An unreadable file is reported and
    // leaves PcxBytes empty, like a refused picture.
    void OpenPcx(const std::string& nam);
    // Decodes PcxBytes into PcxPixels. After a refusal (PcxBytes empty) nothing is decoded:
    // the picture becomes the single cell of the empty screen, so the chain that follows
    // (boxes, intScr, ViewPCX) shows the row's numbers over an empty screen rather than
    // the sprite shown before, which the row no longer stands for.
    void PcxRle();
    void intScr();
    void ViewPCX();
    void initSCR(uint32_t tRGB);
    void drawAxis(int32_t x, int32_t y, uint32_t c1, uint32_t c2);
    void PalletSet();
    uint32_t ActRGB(uint8_t palletId) const;

    // Initialize's part: PcxBytes erased and PcxPixels one cell again; and the clearing of
    // the whole client area to the window's colour.
    void ForgetPicture();
    void ClearWindow();

    PreviewState& State() { return state_; }
    const PreviewCanvas& Canvas() const { return canvas_; }

    // The controls, named as the window's layout names them.
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

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void SetTabOrder();
    void ConnectHandlers();

    // Field editing.
    void OnBoxChanged(QLineEdit* box, Column column, bool placeAgain);
    void OnArrow(QLineEdit* box, int step);
    void OnPalletClicked();
    void OnChangePcx();
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
};

}  // namespace tarvolin
