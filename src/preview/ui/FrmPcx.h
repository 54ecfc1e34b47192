#pragma once
// frmPCX: the preview and edit screen, a window of its own that the user may size. The
// picture area takes the room, with its scroll bars; the sprite's fields stand on the
// right, zoom and background below. Everything drawn goes into a retained canvas as large
// as the picture area, so nothing drawn shows outside it.
//
// The picture area: a left-button drag moves the axis (the picture follows the mouse under
// the fixed marker), the arrow keys move it by one pixel (Shift: ten), the wheel scrolls,
// Ctrl+wheel zooms about the mouse. A picture file dropped on the window is Change PCX
// with that file.
//
// The main window uses it through the entries below: a row shown with its picture, the
// reset of Initialize, showing and hiding.
#include <QWidget>
#include <cstdint>
#include <string>

#include "config/Settings.h"
#include "preview/PreviewCanvas.h"
#include "preview/PreviewState.h"
#include "preview/ui/PreviewHost.h"
#include "sff/SffState.h"

class QCheckBox;
class QDragEnterEvent;
class QDropEvent;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;
class QSlider;
class QWheelEvent;

namespace tarvolin {

class PictureArea;
class PaletteSwatch;

class FrmPcx : public QWidget {
    Q_OBJECT
public:
    explicit FrmPcx(PreviewHost host, QWidget* parent = nullptr);
    ~FrmPcx() override;

    // A row of the table onto the screen, its picture a sprite of the open SFF: the bytes of
    // subfile `subfile` (-1: none) cut out of `sff`, its last 768 bytes the palette. A
    // refused picture shows its message naming `source` and leaves the empty screen; the
    // row's numbers come into the boxes either way. Another row is placed as on its first
    // showing; the row shown again (after an undo) keeps the marker where it stands.
    void ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile, const std::string& source);
    // The same for a row whose picture is the file `path` of its own, in its own palette.
    void ShowFileRow(const SpriteRow& row, const std::string& path);
    // The picture Change PCX chose, under the hourglass, in its own palette; the boxes stay
    // as they are.
    void ShowPictureFile(const std::string& path);
    // Initialize: the picture forgotten, the empty picture area in the background colour
    // with the marker, the boxes "0".
    void Reset();

    // Show Screen: on screen with its left edge at the right edge of `ownerFrame` and its top
    // at its top, the focus on the zoom slider; or off screen, the focus on the slider
    // first. The window stays loaded.
    void ShowBeside(const QRect& ownerFrame);
    void HideFromScreen();

    const PreviewState& State() const { return state_; }
    const PreviewCanvas& Canvas() const { return canvas_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildControls();
    void LayOut();
    void SetTabOrder();
    void ConnectHandlers();

    // Tests the header of PcxBytes (256 colours or 24 bits). A refused picture shows the
    // PCX format message (with `source` and the reason) and erases PcxBytes.
    void SetPcx(const std::string& source);
    // Reads the file `nam` into PcxBytes and tests it. An unreadable file is reported and
    // leaves PcxBytes empty, like a refused picture.
    void OpenPcx(const std::string& nam);
    // Decodes PcxBytes into the picture; after a refusal, the empty screen.
    void PcxRle();
    void ShowRow(const SpriteRow& row, const std::string& source);
    // Redraws the picture area from the state and sets the bars to the view.
    void ViewPCX();

    // The view (FrmPcxView.cpp).
    void PlaceAnew();
    void SetZoom(int32_t zoom, QPoint anchor);
    void SetAxis(int32_t x, int32_t y);
    void ScrollBy(int dx, int dy);
    void ShowBars();
    void ShowZoom();
    void OnAreaResized();
    bool OnAreaEvent(QEvent* event);
    void OnWheel(QWheelEvent* event);

    // Field editing (FrmPcxHandlers.cpp).
    int CurrentRow() const;
    void WriteCell(Column column, const std::string& text, uint64_t run);
    void CommitBox(QLineEdit* box);
    void CommitZoom();
    void Refuse(QLineEdit* box, const std::string& text, int styleWord);
    void MoveAxisTo(int32_t x, int32_t y, uint64_t run);
    void Nudge(int dx, int dy);
    void ShowMessage(const std::string& text, int styleWord);

    PreviewHost host_;
    PreviewState state_;
    PreviewCanvas canvas_;
    // Whether the view still stands where the picture was placed, so that a new size of
    // the area places it anew rather than keeping the start.
    bool atHome_ = true;
    bool settingControls_ = false;  // the bars and the slider are being set from the view
    bool committing_ = false;       // a box's message is up: its leaving does not count again
    // The place and picture of the row shown, to tell the same row shown again.
    int shownPlace_ = 0;
    std::string shownSource_;
    // Runs of axis moves that are one step of the table's history: the arrow buttons and
    // keys (until another control takes the focus or another row is shown), and one drag.
    uint64_t lastRun_ = 0;
    uint64_t nudgeRun_ = 0;
    uint64_t dragRun_ = 0;
    QPoint dragFrom_;
    int32_t dragAxisX_ = 0;
    int32_t dragAxisY_ = 0;

    // The controls, named as the window's layout names them (tests find them by name).
    PictureArea* picArea = nullptr;
    PaletteSwatch* picPalette = nullptr;
    QScrollBar* scrlH = nullptr;
    QScrollBar* scrlV = nullptr;
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
    QPushButton* cmdFit = nullptr;
    QCheckBox* chkBgDel = nullptr;
    QCheckBox* chkBgWhite = nullptr;
};

}  // namespace tarvolin
