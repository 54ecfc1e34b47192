// The picture area's drawing: the view at any zoom, the axis marker, 24-bit pictures, backgrounds.
#include <gtest/gtest.h>

#include "preview/Pallet.h"
#include "preview/PreviewCanvas.h"

namespace tarvolin {
namespace {

constexpr uint32_t ColorOf(int index) {
    return 1u | static_cast<uint32_t>(index) << 8;
}

// `columns` columns, index i coloured ColorOf(i) (never black or white), seen at `zoom` from
// (left, top) on a 12 x 10 canvas.
PreviewState Sprite(int columns, std::vector<uint8_t> cells, int zoom, int left, int top) {
    PreviewState s;
    for (int i = 0; i < 256; ++i) s.PcxPalette[size_t(3 * i)] = 1, s.PcxPalette[size_t(3 * i + 1)] = uint8_t(i);
    PalletSet(s);
    s.HasPicture = true;
    s.PcxPixels.LastColumn = columns - 1;
    s.PcxPixels.LastLine = static_cast<int>(cells.size()) / columns - 1;
    s.PcxPixels.Cells = std::move(cells);
    s.View = {zoom, 0, 0, 12, 10, left, top};
    return s;
}

// The w x h pixels from (x, y), lines joined by '|': '.' black, 'W' white, a digit the
// picture's index of that colour, '?' anything else.
std::string Picture(const PreviewState& s, bool hide, int x, int y, int w, int h) {
    PreviewCanvas c;
    c.Resize(s.View.Width, s.View.Height);
    ViewPCX(c, s, hide);
    std::string out;
    for (int dy = 0; dy < h; ++dy) {
        if (dy) out += '|';
        for (int dx = 0; dx < w; ++dx) {
            const uint32_t p = c.ColorAt(x + dx, y + dy);
            out += p == kBlack ? '.' : p == kWhite ? 'W' : (p & 0xFF) == 1 ? char('0' + (p >> 8)) : '?';
        }
    }
    return out;
}

TEST(Canvas, MarkerOnThePictureOnWhiteAndOnTheEmptyScreen) {
    PreviewState s = Sprite(7, std::vector<uint8_t>(49, 7), 100, 0, 0);
    s.View.AxisX = s.View.AxisY = 3;
    EXPECT_EQ(Picture(s, false, 0, 0, 7, 7), "77.7.77|7.W7W.7|.WW7WW.|7777777|.WW7WW.|7.W7W.7|77.7.77");
    s.BgColor = kWhite;
    EXPECT_EQ(Picture(s, false, 0, 0, 7, 7), "77.7.77|7.W.W.7|.WW.WW.|7.....7|.WW.WW.|7.W.W.7|77.7.77");
    // The empty screen: the area's colour and the marker in the opposite colours.
    s.HasPicture = false;
    EXPECT_EQ(Picture(s, false, 0, 0, 7, 4), "WWWWWWW|WW.W.WW|W..W..W|WWWWWWW");
    s.BgColor = kBlack;
    EXPECT_EQ(Picture(s, false, 0, 0, 7, 3), ".......|..W.W..|.WW.WW.");
}

TEST(Canvas, TheViewShowsItsPartOfTheZoomedPicture) {
    const std::vector<uint8_t> cells = {1, 2, 3, 4, 5, 6};  // 3 x 2, the marker far off
    auto view = [&](int zoom, int left, int top) {
        PreviewState s = Sprite(3, cells, zoom, left, top);
        s.View.AxisX = s.View.AxisY = 100;
        return Picture(s, false, 0, 0, 8, 5);
    };
    EXPECT_EQ(view(100, -1, -1), "........|.123....|.456....|........|........");
    EXPECT_EQ(view(200, 0, 0), "112233..|112233..|445566..|445566..|........");
    // 150%: cell edges at 0, 1, 3, 4; from (5, 6) at 400%: the last 3 pixels of cell 1.
    EXPECT_EQ(view(150, 0, 0), "1223....|4556....|4556....|........|........");
    EXPECT_EQ(view(400, 5, 6), "5556666.|5556666.|........|........|........");
    EXPECT_EQ(view(50, 0, 0), "5.......|........|........|........|........");
}

TEST(Canvas, TrueColourPicturesAndTheirBackground) {
    PreviewState s = Sprite(1, {0}, 100, 0, 0);
    s.TrueColour = true;
    s.TrueColourPixels = {3, 1, {1, 5, 0, 1, 6, 0, 1, 5, 0}};  // the colours of indices 5, 6, 5
    s.View.AxisX = s.View.AxisY = 100;
    EXPECT_EQ(Picture(s, false, 0, 0, 4, 1), "565.");
    // Hide BackColor: the top-left pixel's colour is the background, painted in the area's.
    EXPECT_EQ(Picture(s, true, 0, 0, 4, 1), ".6..");
}

}  // namespace
}  // namespace tarvolin
