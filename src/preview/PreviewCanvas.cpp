#include "preview/PreviewCanvas.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "preview/Pallet.h"
#include "preview/Zoom.h"

namespace tarvolin {

void PreviewCanvas::Resize(int32_t width, int32_t height) {
    width_ = std::max(width, 1);
    height_ = std::max(height, 1);
    pixels_.assign(static_cast<size_t>(width_) * static_cast<size_t>(height_), DisplayColor(0));
}

uint32_t PreviewCanvas::ColorAt(int32_t x, int32_t y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
    const uint32_t d = pixels_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)];
    return (d & 0xFFu) << 16 | (d & 0xFF00u) | (d >> 16 & 0xFFu);
}

void PreviewCanvas::SetPixel(int64_t x, int64_t y, uint32_t color) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    Row(static_cast<int32_t>(y))[x] = DisplayColor(color);
}

void initSCR(PreviewCanvas& canvas, uint32_t tRGB) {
    const uint32_t d = DisplayColor(tRGB);
    for (int32_t y = 0; y < canvas.Height(); ++y) std::fill_n(canvas.Row(y), canvas.Width(), d);
}

namespace {

struct Offset {
    int32_t Dx;
    int32_t Dy;
};

// Twelve pairs: the inner outline pixel (c1) then the outer one (c2).
constexpr std::array<std::array<Offset, 2>, 12> kMarkerOutline = {{
    {{{-1, -2}, {-1, -3}}},
    {{{-2, -1}, {1, -3}}},
    {{{-1, -1}, {-2, -2}}},
    {{{1, -2}, {2, -2}}},
    {{{1, -1}, {-3, -1}}},
    {{{2, -1}, {3, -1}}},
    {{{-2, 1}, {-3, 1}}},
    {{{-1, 1}, {3, 1}}},
    {{{-1, 2}, {-2, 2}}},
    {{{1, 1}, {2, 2}}},
    {{{2, 1}, {-1, 3}}},
    {{{1, 2}, {1, 3}}},
}};

constexpr std::array<Offset, 9> kMarkerCross = {
    {{0, 0}, {1, 0}, {2, 0}, {-1, 0}, {-2, 0}, {0, 1}, {0, 2}, {0, -1}, {0, -2}}};

// Which cell each canvas pixel along one direction shows: -1 where the picture isn't.
// The pixels that show a cell are one run, from First to End.
struct CellMap {
    std::vector<int32_t> Cell;
    int32_t First = 0;
    int32_t End = 0;
};

CellMap MapCells(int64_t start, int32_t size, int32_t cells, int32_t zoom) {
    CellMap m;
    m.Cell.assign(static_cast<size_t>(size), -1);
    const int64_t pictureEnd = ScreenOf(cells, zoom);
    m.First = static_cast<int32_t>(std::clamp<int64_t>(-start, 0, size));
    m.End = static_cast<int32_t>(std::clamp<int64_t>(pictureEnd - start, m.First, size));
    for (int32_t p = m.First; p < m.End; ++p)
        m.Cell[static_cast<size_t>(p)] = static_cast<int32_t>(CellAt(start + p, zoom));
    return m;
}

// The colour of one cell of the picture, ready for display.
class CellColours {
public:
    CellColours(const PreviewState& state, bool hideBackColor) : state_(state) {
        for (int i = 0; i < 256; ++i)
            indexed_[static_cast<size_t>(i)] = DisplayColor(ActRGB(state, static_cast<uint8_t>(i), hideBackColor));
        hideKey_ = hideBackColor;
        key_ = TrueColourBackground(state.TrueColourPixels);
        area_ = DisplayColor(state.BgColor);
    }
    // One line of the picture into `out` for the canvas pixels First..End of `cols`.
    void Line(int32_t line, const CellMap& cols, uint32_t* out) const {
        if (!state_.TrueColour) {
            const uint8_t* src = state_.PcxPixels.Cells.data() +
                                 static_cast<size_t>(line) * static_cast<size_t>(state_.PcxPixels.Columns());
            for (int32_t x = cols.First; x < cols.End; ++x) out[x] = indexed_[src[cols.Cell[static_cast<size_t>(x)]]];
            return;
        }
        const TrueColourPixels& p = state_.TrueColourPixels;
        const uint8_t* src = p.Rgb.data() + static_cast<size_t>(line) * static_cast<size_t>(p.Columns) * 3;
        for (int32_t x = cols.First; x < cols.End; ++x) {
            const uint8_t* rgb = src + static_cast<size_t>(cols.Cell[static_cast<size_t>(x)]) * 3;
            const uint32_t colour = uint32_t{rgb[0]} | uint32_t{rgb[1]} << 8 | uint32_t{rgb[2]} << 16;
            out[x] = hideKey_ && colour == key_ ? area_ : DisplayColor(colour);
        }
    }

private:
    const PreviewState& state_;
    std::array<uint32_t, 256> indexed_{};
    bool hideKey_ = false;
    uint32_t key_ = 0;
    uint32_t area_ = 0;
};

void DrawPicture(PreviewCanvas& canvas, const PreviewState& state, bool hideBackColor) {
    const PreviewView& v = state.View;
    const CellMap cols = MapCells(v.Left, canvas.Width(), state.Columns(), v.Zoom);
    const CellMap lines = MapCells(v.Top, canvas.Height(), state.Lines(), v.Zoom);
    if (cols.First >= cols.End) return;
    const CellColours colours(state, hideBackColor);
    const size_t bytes = static_cast<size_t>(cols.End - cols.First) * sizeof(uint32_t);
    for (int32_t y = lines.First; y < lines.End; ++y) {
        uint32_t* out = canvas.Row(y);
        const int32_t line = lines.Cell[static_cast<size_t>(y)];
        // Enlarged, a cell's line repeats on the canvas lines below it.
        if (y > lines.First && line == lines.Cell[static_cast<size_t>(y) - 1]) {
            std::memcpy(out + cols.First, canvas.Row(y - 1) + cols.First, bytes);
            continue;
        }
        colours.Line(line, cols, out);
    }
}

}  // namespace

void drawAxis(PreviewCanvas& canvas, const PreviewState& state, int32_t x, int32_t y, uint32_t c1, uint32_t c2) {
    for (const auto& pair : kMarkerOutline) {
        canvas.SetPixel(int64_t{x} + pair[0].Dx, int64_t{y} + pair[0].Dy, c1);
        canvas.SetPixel(int64_t{x} + pair[1].Dx, int64_t{y} + pair[1].Dy, c2);
    }
    if (state.BgColor != c1) return;
    for (const Offset& o : kMarkerCross) canvas.SetPixel(int64_t{x} + o.Dx, int64_t{y} + o.Dy, c2);
}

void ViewPCX(PreviewCanvas& canvas, const PreviewState& state, bool hideBackColor) {
    initSCR(canvas, state.BgColor);
    if (state.HasPicture) DrawPicture(canvas, state, hideBackColor);
    const PreviewView& v = state.View;
    const int64_t x = MarkerOf(state.Across()) - v.Left;
    const int64_t y = MarkerOf(state.Down()) - v.Top;
    if (x < -kMarkerReach || y < -kMarkerReach || x > canvas.Width() + kMarkerReach ||
        y > canvas.Height() + kMarkerReach)
        return;
    const uint32_t c1 = state.HasPicture || state.BgColor != kWhite ? kWhite : kBlack;
    drawAxis(canvas, state, static_cast<int32_t>(x), static_cast<int32_t>(y), c1, c1 == kWhite ? kBlack : kWhite);
}

}  // namespace tarvolin
