#pragma once
// The retained picture of the preview's picture area and the drawing operations on it.
// The canvas is as large as the area on screen, so nothing drawn can show outside it.
// Pixels are stored ready for display (0xFFRRGGBB, what a 32-bit RGB image holds) and
// taken and given in the program's colour layout 0x00BBGGRR. A pixel outside the canvas
// is ignored.
#include <cstdint>
#include <vector>

#include "preview/PreviewState.h"

namespace tarvolin {

class PreviewCanvas {
public:
    PreviewCanvas() { Resize(1, 1); }

    // A new size (at least one pixel each way); the content is undefined until redrawn.
    void Resize(int32_t width, int32_t height);
    int32_t Width() const { return width_; }
    int32_t Height() const { return height_; }
    const uint32_t* Data() const { return pixels_.data(); }

    // The colour at (x, y) as 0x00BBGGRR; 0 outside.
    uint32_t ColorAt(int32_t x, int32_t y) const;
    void SetPixel(int64_t x, int64_t y, uint32_t color);
    uint32_t* Row(int32_t y) { return pixels_.data() + static_cast<size_t>(y) * static_cast<size_t>(width_); }

private:
    int32_t width_ = 0;
    int32_t height_ = 0;
    std::vector<uint32_t> pixels_;
};

// 0x00BBGGRR -> the stored 0xFFRRGGBB.
constexpr uint32_t DisplayColor(uint32_t color) {
    return 0xFF000000u | (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu);
}

// Paints the whole picture area.
void initSCR(PreviewCanvas& canvas, uint32_t tRGB);

// The axis marker at (x, y): an outline in c1 inside an outline in c2 around a cross of
// arms two pixels long, the cross filled in c2 only when the picture area's colour is c1.
void drawAxis(PreviewCanvas& canvas, const PreviewState& state, int32_t x, int32_t y, uint32_t c1, uint32_t c2);

// The picture area anew from the state's view: BgColor, the part of the zoomed picture the
// view shows, the marker on top (white in black; on the empty screen in the colours
// opposite to the area's, so that it stands out on white too). `hideBackColor` is the
// value of chkBgDel.
void ViewPCX(PreviewCanvas& canvas, const PreviewState& state, bool hideBackColor);

}  // namespace tarvolin
