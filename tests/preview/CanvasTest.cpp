// The drawing of the picture area: background block, sprite at 100% and in blocks,
// Hide BackColor, the axis marker on black and on white, clipping to the client area.
#include <gtest/gtest.h>

#include "preview/Pallet.h"
#include "preview/PreviewCanvas.h"

namespace tarvolin {
namespace {

constexpr uint32_t kWindow = 0xC0C0C0;

// A state whose palette gives index i the colour 0x0000i0 + 1 (never black or white).
PreviewState StateWith(int columns, int lines, std::vector<uint8_t> cells) {
    PreviewState s;
    for (int i = 0; i < 256; ++i) {
        s.PcxPalette[static_cast<size_t>(3 * i)] = 1;
        s.PcxPalette[static_cast<size_t>(3 * i + 1)] = static_cast<uint8_t>(i);
    }
    PalletSet(s);
    s.PcxPixels.LastColumn = columns - 1;
    s.PcxPixels.LastLine = lines - 1;
    s.PcxPixels.Cells = std::move(cells);
    return s;
}
constexpr uint32_t ColorOf(int index) { return 1u | static_cast<uint32_t>(index) << 8; }

ViewInputs AtZoom(double zoom, int32_t hMax = 0, int32_t vMax = 0) {
    ViewInputs in;
    in.ZoomNumber = zoom;
    in.HMaximum = hMax;
    in.VMaximum = vMax;
    in.WindowColor = kWindow;
    return in;
}

TEST(Canvas, BackgroundBlockIs218By186) {
    PreviewCanvas c;
    c.Clear(kWindow);
    initSCR(c, kWhite);
    EXPECT_EQ(c.ColorAt(0, 0), kWhite);
    EXPECT_EQ(c.ColorAt(217, 185), kWhite);
    EXPECT_EQ(c.ColorAt(218, 185), kWindow);
    EXPECT_EQ(c.ColorAt(217, 186), kWindow);
    c.SetPixel(-1, 5, kBlack);  // outside: ignored, no fault
    c.SetPixel(344, 5, kBlack);
    EXPECT_EQ(c.ColorAt(343, 5), kWindow);
}

struct MarkerPixel {
    int Dx, Dy;
};
const MarkerPixel kInner[] = {{-1, -2}, {-2, -1}, {-1, -1}, {1, -2}, {1, -1}, {2, -1},
                              {-2, 1},  {-1, 1},  {-1, 2},  {1, 1},  {2, 1},  {1, 2}};
const MarkerPixel kOuter[] = {{-1, -3}, {1, -3}, {-2, -2}, {2, -2}, {-3, -1}, {3, -1},
                              {-3, 1},  {3, 1},  {-2, 2},  {2, 2},  {-1, 3},  {1, 3}};
const MarkerPixel kCross[] = {{0, 0}, {1, 0}, {2, 0}, {-1, 0}, {-2, 0}, {0, 1}, {0, 2}, {0, -1}, {0, -2}};

TEST(Canvas, EmptyScreenAndMarkerOnBlackAndWhite) {
    // Nothing loaded: one cell at the axis, with the marker around it.
    PreviewState s = StateWith(1, 1, {7});
    s.PicLeft = s.AxisScreenX;
    s.PicTop = s.AxisScreenY;
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100));
    const int x = 108, y = 152;
    for (auto p : kInner) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kWhite) << p.Dx << "," << p.Dy;
    for (auto p : kOuter) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kBlack) << p.Dx << "," << p.Dy;
    // On black the cross stays open: the cell and the background show through.
    EXPECT_EQ(c.ColorAt(x, y), ColorOf(7));
    EXPECT_EQ(c.ColorAt(x + 2, y), kBlack);
    EXPECT_EQ(c.ColorAt(x + 3, y), kBlack);
    EXPECT_EQ(c.ColorAt(300, 100), kWindow);

    // On white the cross is filled black, over the cell too.
    s.BgColor = kWhite;
    ViewPCX(c, s, AtZoom(100));
    for (auto p : kCross) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kBlack) << p.Dx << "," << p.Dy;
    for (auto p : kInner) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kWhite);
    EXPECT_EQ(c.ColorAt(x + 3, y), kWhite);

    // Initialize on white: c1 black differs from the area's colour, so the cross stays open.
    c.Clear(kWindow);
    initSCR(c, kWhite);
    drawAxis(c, s, x, y, kBlack, kWhite);
    for (auto p : kInner) EXPECT_EQ(c.ColorAt(x + p.Dx, y + p.Dy), kBlack);
    EXPECT_EQ(c.ColorAt(x, y), kWhite);
}

TEST(Canvas, SpriteAt100And200) {
    // 3 x 2 cells, indices 1..6; the marker stands away from the sprite here.
    PreviewState s = StateWith(3, 2, {1, 2, 3, 4, 5, 6});
    s.AxisScreenX = 30;
    s.AxisScreenY = 30;
    s.PicLeft = 100;
    s.PicTop = 100;
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100, 2, 1));
    EXPECT_EQ(c.ColorAt(100, 100), ColorOf(1));
    EXPECT_EQ(c.ColorAt(102, 100), ColorOf(3));
    EXPECT_EQ(c.ColorAt(100, 101), ColorOf(4));
    EXPECT_EQ(c.ColorAt(102, 101), ColorOf(6));
    EXPECT_EQ(c.ColorAt(103, 101), kBlack);
    EXPECT_EQ(c.ColorAt(100, 102), kBlack);

    // At 200 every cell is a 2 x 2 block.
    ViewPCX(c, s, AtZoom(200, 4, 2));
    for (int dy = 0; dy < 2; ++dy)
        for (int dx = 0; dx < 2; ++dx) {
            EXPECT_EQ(c.ColorAt(100 + dx, 100 + dy), ColorOf(1));
            EXPECT_EQ(c.ColorAt(104 + dx, 102 + dy), ColorOf(6));
        }
    EXPECT_EQ(c.ColorAt(102, 100), ColorOf(2));
    EXPECT_EQ(c.ColorAt(106, 103), kBlack);
    EXPECT_EQ(c.ColorAt(105, 104), kBlack);

    // At 200 with the axis on the sprite's cell (1, 1): that block's corner is on the axis,
    // inside the open cross.
    s.AxisScreenX = 108;
    s.AxisScreenY = 152;
    s.PicLeft = 108 - 2 * 1;
    s.PicTop = 152 - 2 * 1;
    ViewPCX(c, s, AtZoom(200, 4, 2));
    EXPECT_EQ(c.ColorAt(108, 152), ColorOf(5));
}

TEST(Canvas, OneColumnAndOneLinePicturesAreDrawn) {
    PreviewState s = StateWith(1, 3, {1, 2, 3});
    s.PicLeft = 20;
    s.PicTop = 20;
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(300, 0, 6));
    EXPECT_EQ(c.ColorAt(20, 20), ColorOf(1));
    EXPECT_EQ(c.ColorAt(22, 28), ColorOf(3));
    EXPECT_EQ(c.ColorAt(23, 28), kBlack);
    EXPECT_EQ(c.ColorAt(22, 29), kBlack);
}

TEST(Canvas, HideBackColorPaintsIndexZeroInTheAreaColour) {
    PreviewState s = StateWith(2, 1, {0, 1});
    s.PicLeft = 10;
    s.PicTop = 10;
    s.BgColor = kWhite;
    PreviewCanvas c;
    ViewInputs in = AtZoom(100, 1, 0);
    ViewPCX(c, s, in);
    EXPECT_EQ(c.ColorAt(10, 10), ColorOf(0));
    in.HideBackColor = true;
    ViewPCX(c, s, in);
    EXPECT_EQ(c.ColorAt(10, 10), kWhite);
    EXPECT_EQ(c.ColorAt(11, 10), ColorOf(1));
}

TEST(Canvas, SpriteIsNotClippedToTheAreaButToTheClient) {
    // 400 columns at x = -10: column 10 lands on x 0, column 353 on the last client pixel.
    std::vector<uint8_t> cells(400);
    for (size_t i = 0; i < cells.size(); ++i) cells[i] = static_cast<uint8_t>(i % 250 + 1);
    PreviewState s = StateWith(400, 1, cells);
    s.PicLeft = -10;
    s.PicTop = 5;
    PreviewCanvas c;
    ViewPCX(c, s, AtZoom(100, 399, 0));
    EXPECT_EQ(c.ColorAt(0, 5), ColorOf(11));
    EXPECT_EQ(c.ColorAt(250, 5), ColorOf(260 % 250 + 1));
    EXPECT_EQ(c.ColorAt(343, 5), ColorOf(353 % 250 + 1));
    EXPECT_EQ(c.ColorAt(250, 6), kWindow);
}

TEST(Canvas, UnsettledBarsStartAtALaterColumn) {
    // Bar maximum 10 with value 4 on a 21-column sprite: drawing starts at column 6 and
    // covers 11 columns, as a redraw between a zoom text and the slider does.
    std::vector<uint8_t> cells(21);
    for (size_t i = 0; i < cells.size(); ++i) cells[i] = static_cast<uint8_t>(i + 1);
    PreviewState s = StateWith(21, 1, cells);
    s.PicLeft = 10;
    s.PicTop = 10;
    ViewInputs in = AtZoom(100, 10, 0);
    in.HValue = 4;
    PreviewCanvas c;
    ViewPCX(c, s, in);
    EXPECT_EQ(c.ColorAt(10, 10), ColorOf(7));
    EXPECT_EQ(c.ColorAt(20, 10), ColorOf(17));
    EXPECT_EQ(c.ColorAt(21, 10), kBlack);
}

}  // namespace
}  // namespace tarvolin
