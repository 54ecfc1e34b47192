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
std::vector<uint8_t> Counting(size_t n) {  // indices 1, 2, ... (wrapping past 250)
    std::vector<uint8_t> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = static_cast<uint8_t>(i % 250 + 1);
    return v;
}

struct Probe { int X, Y; uint32_t Color; };
void ExpectPixels(const PreviewCanvas& c, std::initializer_list<Probe> probes) {
    for (const Probe& p : probes) EXPECT_EQ(c.ColorAt(p.X, p.Y), p.Color) << "at " << p.X << "," << p.Y;
}

ViewInputs AtZoom(double zoom, int32_t hMax = 0, int32_t vMax = 0, int32_t hValue = 0) {
    ViewInputs in;
    in.ZoomNumber = zoom;
    in.HMaximum = hMax, in.VMaximum = vMax, in.HValue = hValue;
    in.WindowColor = kWindow;
    return in;
}

TEST(Canvas, BackgroundBlockIs218By186AndOutsidePixelsAreIgnored) {
    PreviewCanvas c;
    c.Clear(kWindow);
    initSCR(c, kWhite);
    c.SetPixel(-1, 5, kBlack);
    c.SetPixel(344, 5, kBlack);
    ExpectPixels(c, {{0, 0, kWhite}, {217, 185, kWhite}, {218, 185, kWindow}, {217, 186, kWindow}, {343, 5, kWindow}});
}

struct Offset { int Dx, Dy; };
const Offset kInner[] = {{-1, -2}, {-2, -1}, {-1, -1}, {1, -2}, {1, -1}, {2, -1},
                         {-2, 1},  {-1, 1},  {-1, 2},  {1, 1},  {2, 1},  {1, 2}};
const Offset kOuter[] = {{-1, -3}, {1, -3}, {-2, -2}, {2, -2}, {-3, -1}, {3, -1},
                         {-3, 1},  {3, 1},  {-2, 2},  {2, 2},  {-1, 3},  {1, 3}};
const Offset kCross[] = {{0, 0}, {1, 0}, {2, 0}, {-1, 0}, {-2, 0}, {0, 1}, {0, 2}, {0, -1}, {0, -2}};

TEST(Canvas, OneCellPictureAndMarkerOnBlackAndWhite) {
    const int x = 108, y = 152;
    PreviewState s = Sprite(1, {7}, x, y);
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100));
    for (auto p : kInner) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kWhite) << p.Dx << "," << p.Dy;
    for (auto p : kOuter) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kBlack) << p.Dx << "," << p.Dy;
    // On black the cross stays open: the cell and the background show through.
    ExpectPixels(c, {{x, y, ColorOf(7)}, {x + 2, y, kBlack}, {300, 100, kWindow}});
    // On white the cross is filled black, over the cell too.
    s.BgColor = kWhite;
    ViewPCX(c, s, AtZoom(100));
    for (auto p : kCross) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kBlack) << p.Dx << "," << p.Dy;
    for (auto p : kInner) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kWhite);
    EXPECT_EQ(c.ColorAt(x + 3, y), kWhite);
}

TEST(Canvas, CellsBecomeBlocksOfTheZoomFactor) {
    const PreviewState s = Sprite(3, {1, 2, 3, 4, 5, 6}, 100, 100);  // 3 x 2
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100, 2, 1));
    ExpectPixels(c, {{100, 100, ColorOf(1)}, {102, 100, ColorOf(3)}, {100, 101, ColorOf(4)}, {102, 101, ColorOf(6)},
                     {103, 101, kBlack}, {100, 102, kBlack}});
    ViewPCX(c, s, AtZoom(200, 4, 2));
    for (int d = 0; d < 4; ++d) {
        EXPECT_EQ(c.ColorAt(100 + d % 2, 100 + d / 2), ColorOf(1));
        EXPECT_EQ(c.ColorAt(104 + d % 2, 102 + d / 2), ColorOf(6));
    }
    ExpectPixels(c, {{102, 100, ColorOf(2)}, {106, 103, kBlack}, {105, 104, kBlack}});
    // One column at 300.
    ViewPCX(c, Sprite(1, {1, 2, 3}, 20, 20), AtZoom(300, 0, 6));
    ExpectPixels(c, {{20, 20, ColorOf(1)}, {22, 28, ColorOf(3)}, {23, 28, kBlack}, {22, 29, kBlack}});
}

TEST(Canvas, SpriteIsClippedToTheClientNotTheArea) {
    // 400 columns at x = -10: column 10 lands on x 0, column 353 on the last client pixel.
    PreviewCanvas c;
    ViewPCX(c, Sprite(400, Counting(400), -10, 5), AtZoom(100, 399, 0));
    ExpectPixels(c, {{0, 5, ColorOf(11)}, {250, 5, ColorOf(260 % 250 + 1)}, {343, 5, ColorOf(353 % 250 + 1)},
                     {250, 6, kWindow}});
    // Bars not yet settled (maximum 10, value 4 on 21 columns, as between a zoom text and the
    // slider): drawing starts at column 6 and covers 11 columns.
    ViewPCX(c, Sprite(21, Counting(21), 10, 10), AtZoom(100, 10, 0, 4));
    ExpectPixels(c, {{10, 10, ColorOf(7)}, {20, 10, ColorOf(17)}, {21, 10, kBlack}});
}

}  // namespace
}  // namespace tarvolin
