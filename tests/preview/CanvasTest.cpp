// The drawing of the client area: the background block, the sprite in blocks of the zoom
// factor, the axis marker on black and on white, clipping to the client area.
#include <gtest/gtest.h>

#include "preview/Pallet.h"
#include "preview/PreviewCanvas.h"

namespace tarvolin {
namespace {

constexpr uint32_t kWindow = 0xC0C0C0;
constexpr uint32_t ColorOf(int index) { return 1u | static_cast<uint32_t>(index) << 8; }

// A sprite of `columns` columns at (left, top), index i coloured ColorOf(i) (never black or
// white); the marker stays at its home (108, 152).
PreviewState Sprite(int columns, std::vector<uint8_t> cells, int left, int top) {
    PreviewState s;
    for (int i = 0; i < 256; ++i) s.PcxPalette[size_t(3 * i)] = 1, s.PcxPalette[size_t(3 * i + 1)] = uint8_t(i);
    PalletSet(s);
    s.PcxPixels.LastColumn = columns - 1;
    s.PcxPixels.LastLine = static_cast<int>(cells.size()) / columns - 1;
    s.PcxPixels.Cells = std::move(cells);
    s.PicLeft = left, s.PicTop = top;
    return s;
}

ViewInputs AtZoom(double zoom, int32_t hMax = 0, int32_t vMax = 0, int32_t hValue = 0) {
    ViewInputs in;
    in.ZoomNumber = zoom;
    in.HMaximum = hMax, in.VMaximum = vMax, in.HValue = hValue;
    in.WindowColor = kWindow;
    return in;
}

// The w x h pixels from (x, y), lines joined by '|': '.' black, 'W' white, '_' the window,
// a digit the sprite's index of that colour.
std::string Picture(const PreviewCanvas& c, int x, int y, int w, int h) {
    std::string s;
    for (int dy = 0; dy < h; ++dy) {
        if (dy) s += '|';
        for (int dx = 0; dx < w; ++dx) {
            const uint32_t p = c.ColorAt(x + dx, y + dy);
            s += p == kBlack ? '.' : p == kWhite ? 'W' : p == kWindow ? '_' : char('0' + (p >> 8));
        }
    }
    return s;
}

TEST(Canvas, BackgroundBlockIs218By186AndOutsidePixelsAreIgnored) {
    PreviewCanvas c;
    c.Clear(kWindow);
    initSCR(c, kWhite);
    c.SetPixel(-1, 5, kBlack);
    c.SetPixel(344, 5, kBlack);
    EXPECT_EQ(Picture(c, 216, 184, 3, 3), "WW_|WW_|___");
    EXPECT_EQ(Picture(c, 0, 0, 1, 1) + Picture(c, 343, 5, 1, 1), "W_");
}

TEST(Canvas, MarkerStandsOnTheSpriteItsCrossOpenOnBlackAndFilledOnWhite) {
    PreviewState s = Sprite(7, std::vector<uint8_t>(49, 7), 108 - 3, 152 - 3);
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100));
    EXPECT_EQ(Picture(c, 105, 149, 7, 7), "77.7.77|7.W7W.7|.WW7WW.|7777777|.WW7WW.|7.W7W.7|77.7.77");
    s.BgColor = kWhite;
    ViewPCX(c, s, AtZoom(100));
    EXPECT_EQ(Picture(c, 105, 149, 7, 7), "77.7.77|7.W.W.7|.WW.WW.|7.....7|.WW.WW.|7.W.W.7|77.7.77");
}

TEST(Canvas, CellsBecomeBlocksOfTheZoomFactor) {
    const PreviewState s = Sprite(3, {1, 2, 3, 4, 5, 6}, 100, 100);
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100, 2, 1));
    EXPECT_EQ(Picture(c, 100, 100, 4, 3), "123.|456.|....");
    ViewPCX(c, s, AtZoom(200, 4, 2));
    EXPECT_EQ(Picture(c, 100, 100, 7, 5), "112233.|112233.|445566.|445566.|.......");
    ViewPCX(c, Sprite(1, {1, 2, 3}, 20, 20), AtZoom(300, 0, 6));  // one column: maximum 0
    EXPECT_EQ(Picture(c, 20, 20, 4, 10), "111.|111.|111.|222.|222.|222.|333.|333.|333.|....");
}

TEST(Canvas, SpriteIsClippedToTheClientNotTheArea) {
    // 400 columns of indices 1..8 repeating, at x = -10: column 10 lands on x 0, and the
    // sprite runs on beyond the picture area to the last client pixel.
    std::vector<uint8_t> counting(400);
    for (size_t i = 0; i < counting.size(); ++i) counting[i] = uint8_t(i % 8 + 1);
    PreviewCanvas c;
    ViewPCX(c, Sprite(400, counting, -10, 5), AtZoom(100, 399, 0));
    EXPECT_EQ(Picture(c, 0, 5, 3, 1) + Picture(c, 250, 5, 1, 2) + Picture(c, 341, 5, 3, 1), "345" "5|_" "812");
    // Bars not yet settled (maximum 10, value 4 on 21 columns, as between a zoom text and the
    // slider): drawing starts at column 6 and covers 11 columns.
    counting.resize(21);
    ViewPCX(c, Sprite(21, counting, 10, 10), AtZoom(100, 10, 0, 4));
    EXPECT_EQ(Picture(c, 10, 10, 12, 1), "78123456781.");
}

}  // namespace
}  // namespace tarvolin
