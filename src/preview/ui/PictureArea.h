#pragma once
// The two drawn parts of the preview window: the picture area, which shows the retained
// canvas (the window draws into the canvas and handles the area's input), and the swatch
// of the shown sprite's palette, 16 x 16 cells of its 256 colours.
#include <QWidget>

#include "preview/PreviewCanvas.h"
#include "preview/PreviewState.h"

namespace tarvolin {

class PictureArea : public QWidget {
public:
    PictureArea(const PreviewCanvas& canvas, QWidget* parent);
    QSize sizeHint() const override { return {400, 360}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const PreviewCanvas& canvas_;
};

// Empty for the empty screen and for a 24-bit picture, which has no palette. A tooltip
// names the index and the colour under the mouse.
class PaletteSwatch : public QWidget {
public:
    PaletteSwatch(const PreviewState& state, QWidget* parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool Shows() const { return state_.HasPicture && !state_.TrueColour; }
    const PreviewState& state_;
};

}  // namespace tarvolin
