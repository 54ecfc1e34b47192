#include "preview/PreviewCanvas.h"

#include <algorithm>
#include <array>

#include "base/TextHelpers.h"
#include "preview/Pallet.h"
#include "preview/Zoom.h"

namespace tarvolin {

PreviewCanvas::PreviewCanvas() : pixels_(static_cast<size_t>(kClientWidth) * kClientHeight, DisplayColor(0)) {}

uint32_t PreviewCanvas::ColorAt(int32_t x, int32_t y) const {
    if (x < 0 || y < 0 || x >= kClientWidth || y >= kClientHeight) return 0;
    const uint32_t d = pixels_[static_cast<size_t>(y) * kClientWidth + static_cast<size_t>(x)];
    return (d & 0xFFu) << 16 | (d & 0xFF00u) | (d >> 16 & 0xFFu);
}

void PreviewCanvas::SetPixel(int64_t x, int64_t y, uint32_t color) {
    if (x < 0 || y < 0 || x >= kClientWidth || y >= kClientHeight) return;
    pixels_[static_cast<size_t>(y) * kClientWidth + static_cast<size_t>(x)] = DisplayColor(color);
}

void PreviewCanvas::FillRect(int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color) {
    x0 = std::max<int64_t>(x0, 0);
    y0 = std::max<int64_t>(y0, 0);
    x1 = std::min<int64_t>(x1, kClientWidth - 1);
    y1 = std::min<int64_t>(y1, kClientHeight - 1);
    if (x0 > x1 || y0 > y1) return;
    const uint32_t d = DisplayColor(color);
    for (int64_t y = y0; y <= y1; ++y) {
        uint32_t* row = Row(static_cast<int32_t>(y));
        std::fill(row + x0, row + x1 + 1, d);
    }
}

void initSCR(PreviewCanvas& canvas, uint32_t tRGB) { canvas.FillRect(0, 0, kAreaWidth, kAreaHeight, tRGB); }

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

constexpr std::array<Offset, 9> kMarkerCross = {{{0, 0}, {1, 0}, {2, 0}, {-1, 0}, {-2, 0}, {0, 1}, {0, 2}, {0, -1}, {0, -2}}};

// One axis of the sprite's drawing: which source index each client pixel along it shows.
// Blocks of `zoom` pixels from `origin`, `blocks` of them, block i showing source index
// first + min(i, last - first). Pixels outside the client get no entry.
struct AxisMap {
    int32_t Begin = 0;  // first client pixel drawn
    int32_t End = 0;    // one past the last
    std::array<int32_t, std::max(kClientWidth, kClientHeight)> Source{};
};

AxisMap MapAxis(int64_t origin, int64_t blocks, int32_t zoom, int32_t first, int32_t last, int32_t clientSize) {
    AxisMap m;
    const int64_t begin = std::max<int64_t>(origin, 0);
    const int64_t end = std::min<int64_t>(origin + blocks * zoom, clientSize);
    if (begin >= end) return m;
    m.Begin = static_cast<int32_t>(begin);
    m.End = static_cast<int32_t>(end);
    for (int64_t p = begin; p < end; ++p) {
        const int64_t block = (p - origin) / zoom;
        m.Source[static_cast<size_t>(p)] = first + static_cast<int32_t>(std::min<int64_t>(block, last - first));
    }
    return m;
}

// Source start and drawing span of one axis, as the redraw works them out from the bar.
struct Span {
    int32_t Src = 0;
    int64_t Draw = 0;
};

Span SpanOf(int32_t barMax, int32_t barValue, int32_t zoom, int32_t reference, int32_t lastIndex) {
    Span s;
    s.Src = FixToLong((static_cast<double>(barMax) - barValue) / zoom);
    s.Draw = barMax > 0 ? barMax : reference;
    const int64_t full = static_cast<int64_t>(lastIndex) * zoom;
    if (full < s.Src + s.Draw) {
        s.Draw = full;
        s.Src = 0;
    }
    s.Src = std::clamp(s.Src, 0, lastIndex);  // a bar value beyond its range never reads outside the cells
    return s;
}

void DrawSprite(PreviewCanvas& canvas, const PreviewState& state, const ViewInputs& in, int32_t zoom) {
    const PcxPixels& px = state.PcxPixels;
    const Span h = SpanOf(in.HMaximum, in.HValue, zoom, kAreaWidth, px.LastColumn);
    const Span v = SpanOf(in.VMaximum, in.VValue, zoom, kAreaHeight, px.LastLine);
    // The loops run from 0 to the span inclusive in steps of the zoom: span / zoom + 1 blocks.
    const AxisMap cols = MapAxis(state.PicLeft, h.Draw / zoom + 1, zoom, h.Src, px.LastColumn, kClientWidth);
    const AxisMap lines = MapAxis(state.PicTop, v.Draw / zoom + 1, zoom, v.Src, px.LastLine, kClientHeight);
    if (cols.Begin >= cols.End || lines.Begin >= lines.End) return;

    std::array<uint32_t, 256> colors;
    for (int i = 0; i < 256; ++i) colors[static_cast<size_t>(i)] = DisplayColor(ActRGB(state, static_cast<uint8_t>(i), in.HideBackColor));

    const size_t stride = static_cast<size_t>(px.Columns());
    for (int32_t y = lines.Begin; y < lines.End; ++y) {
        const uint8_t* src = px.Cells.data() + static_cast<size_t>(lines.Source[static_cast<size_t>(y)]) * stride;
        uint32_t* out = canvas.Row(y);
        for (int32_t x = cols.Begin; x < cols.End; ++x) out[x] = colors[src[cols.Source[static_cast<size_t>(x)]]];
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

void ViewPCX(PreviewCanvas& canvas, const PreviewState& state, const ViewInputs& in) {
    canvas.Clear(in.WindowColor);
    initSCR(canvas, state.BgColor);
    const int32_t zoom = ZoomFactorOf(in.ZoomNumber);
    // A zoom below 50% would make a factor of 0: nothing of the sprite can be drawn then.
    if (zoom >= 1) DrawSprite(canvas, state, in, zoom);
    drawAxis(canvas, state, state.AxisScreenX, state.AxisScreenY, kWhite, kBlack);
}

}  // namespace tarvolin
