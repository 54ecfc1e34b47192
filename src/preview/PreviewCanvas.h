#pragma once
// The retained picture of the preview window's client area and the three drawing
// operations on it. Pixels are stored ready for display (0xFFRRGGBB, what a 32-bit RGB
// image holds) and taken and given in the program's colour layout 0x00BBGGRR. A pixel
// outside the client area is ignored, as on the window itself. The drawing writes whole
// rows and clips its loops to the buffer, but sets exactly the pixels that drawing one
// pixel at a time over the full ranges would set.
#include <cstdint>
#include <vector>

#include "preview/PreviewState.h"

namespace tarvolin {

inline constexpr int32_t kClientWidth = 344;
inline constexpr int32_t kClientHeight = 240;
// The picture area's reference size; the painted block is one pixel more each way.
inline constexpr int32_t kAreaWidth = 217;
inline constexpr int32_t kAreaHeight = 185;

class PreviewCanvas {
public:
    PreviewCanvas();

    int32_t Width() const { return kClientWidth; }
    int32_t Height() const { return kClientHeight; }
    const uint32_t* Data() const { return pixels_.data(); }

    // The colour at (x, y) as 0x00BBGGRR; 0 outside.
    uint32_t ColorAt(int32_t x, int32_t y) const;
    void SetPixel(int64_t x, int64_t y, uint32_t color);
    // Fills columns x0..x1 and lines y0..y1, both inclusive, clipped to the buffer.
    void FillRect(int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color);
    void Clear(uint32_t windowColor) { FillRect(0, 0, kClientWidth - 1, kClientHeight - 1, windowColor); }

    uint32_t* Row(int32_t y) { return pixels_.data() + static_cast<size_t>(y) * kClientWidth; }

private:
    std::vector<uint32_t> pixels_;
};

// 0x00BBGGRR -> the stored 0xFFRRGGBB.
constexpr uint32_t DisplayColor(uint32_t color) {
    return 0xFF000000u | (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu);
}

// Paints the picture area, 218 x 186 pixels from (0, 0).
void initSCR(PreviewCanvas& canvas, uint32_t tRGB);

// The axis marker at (x, y): an outline in c1 inside an outline in c2 around a cross of
// arms two pixels long, the cross filled in c2 only when the picture area's colour is c1.
void drawAxis(PreviewCanvas& canvas, const PreviewState& state, int32_t x, int32_t y, uint32_t c1, uint32_t c2);

// What a redraw reads of the window's controls, as plain numbers.
struct ViewInputs {
    int32_t HMaximum = 0;
    int32_t HValue = 0;
    int32_t VMaximum = 0;
    int32_t VValue = 0;
    double ZoomNumber = 100;     // the number in txtZoom
    bool HideBackColor = false;  // chkBgDel
    uint32_t WindowColor = 0xF0F0F0;
};

// The whole client area anew: cleared to the window's colour, the picture area in
// BgColor, the sprite whole at (PicLeft, PicTop) enlarged by the zoom factor, the marker
// on top.
void ViewPCX(PreviewCanvas& canvas, const PreviewState& state, const ViewInputs& in);

}  // namespace tarvolin
