#include "preview/ScrollPlacement.h"

#include <algorithm>
#include <limits>

#include "base/TextHelpers.h"
#include "preview/PreviewCanvas.h"

namespace tarvolin {

namespace {

int32_t Saturate(int64_t v) {
    return static_cast<int32_t>(
        std::clamp<int64_t>(v, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

// The fields one bar works on; they are read afresh at each step because the nested
// change handling may have moved them.
struct BarFields {
    int32_t Reference;  // S
    int32_t& Axis;      // A
    int32_t& NearSpan;
    int32_t& FarSpan;
    int32_t& LastValue;
    int32_t& Origin;
    int32_t AxisNumber;  // N
    int32_t LastIndex;
};

BarFields FieldsOf(PreviewState& s, Bar bar, const AxisInputs& in) {
    if (bar == Bar::Horizontal)
        return {kAreaWidth, s.AxisScreenX, s.SpanLeft, s.SpanRight, s.LastScrlH, s.PicLeft, in.X, s.PcxPixels.LastColumn};
    return {kAreaHeight, s.AxisScreenY, s.SpanTop, s.SpanBottom, s.LastScrlV, s.PicTop, in.Y, s.PcxPixels.LastLine};
}

// T: the share of the range that lies before the axis, A / S x maximum, cut towards zero.
int32_t AxisShare(int32_t axis, int32_t reference, int32_t maximum) {
    return FixToLong(static_cast<double>(axis) / reference * maximum);
}

void PlaceBar(BarFields f, int32_t zoom, ScrollBarPort& bar) {
    bar.SetMaximum(Saturate(int64_t{f.LastIndex} * zoom));
    const int32_t maximum = bar.Maximum();
    const int64_t room = int64_t{f.Reference} - f.Axis;
    if (f.NearSpan > f.Axis) {
        bar.SetValue(f.LastValue);
        if (f.LastValue == 0) bar.SetValue(Saturate(int64_t{maximum} - (int64_t{f.NearSpan} - f.Axis)));
    } else if (room < f.FarSpan) {
        bar.SetValue(f.LastValue);
        if (f.LastValue == 0) bar.SetValue(Saturate(int64_t{maximum} - (f.FarSpan - room)));
    } else {
        // The value acted on is set before the bar, so that its change handling finds nothing to do.
        f.LastValue = maximum - AxisShare(f.Axis, f.Reference, maximum);
        bar.SetValue(f.LastValue);
    }
    bar.Enable();
    f.LastValue = bar.Value();
}

void RescaleBar(BarFields f, float ratio, int32_t zoom, ScrollBarPort& bar) {
    bar.SetMaximum(FixToLong(static_cast<float>(bar.Maximum()) * ratio));
    const int32_t maximum = bar.Maximum();
    int64_t last = 0;
    if (bar.Value() != 0) {
        last = FixToLong(static_cast<float>(bar.Value()) * ratio);
    } else {
        last = std::max<int64_t>(int64_t{maximum} - AxisShare(f.Axis, f.Reference, maximum), 0);
    }
    const int64_t fromAxis = int64_t{f.Axis} - int64_t{f.AxisNumber} * zoom;
    if (fromAxis - last < 0 && maximum > f.Reference) last = fromAxis;
    last = std::max<int64_t>(std::min<int64_t>(last, maximum), bar.Minimum());
    f.LastValue = static_cast<int32_t>(last);
    bar.SetValue(f.LastValue);
}

}  // namespace

bool ApplyBarChange(PreviewState& state, Bar bar, int32_t value, int32_t maximum) {
    const AxisInputs none;
    BarFields f = FieldsOf(state, bar, none);
    if (value == f.LastValue) return false;
    const int32_t d = f.LastValue == 0 ? 0 : Saturate(int64_t{value} - f.LastValue);
    if (maximum > 0) {
        f.Axis = Saturate(int64_t{f.Axis} - d);
        f.Origin = Saturate(int64_t{f.Origin} - d);
    }
    f.LastValue = value;
    return true;
}

void intScr(PreviewState& state, const AxisInputs& in, ScrollBarPort& h, ScrollBarPort& v) {
    const int64_t z = in.ZoomFactor;
    state.SpanLeft = Saturate(int64_t{in.X} * z);
    state.SpanRight = Saturate((int64_t{state.PcxPixels.LastColumn} - in.X) * z);
    state.SpanTop = Saturate(int64_t{in.Y} * z);
    state.SpanBottom = Saturate((int64_t{state.PcxPixels.LastLine} - in.Y) * z);
    state.PicLeft = Saturate(int64_t{state.AxisScreenX} - state.SpanLeft);
    state.PicTop = Saturate(int64_t{state.AxisScreenY} - state.SpanTop);
    PlaceBar(FieldsOf(state, Bar::Horizontal, in), in.ZoomFactor, h);
    PlaceBar(FieldsOf(state, Bar::Vertical, in), in.ZoomFactor, v);
}

void zoomScr(PreviewState& state, int32_t sliderValue, const AxisInputs& in, ScrollBarPort& h, ScrollBarPort& v) {
    // Single precision, as the place has always been carried over: 400 / 300 = 1.3333334.
    const float ratio = static_cast<float>(sliderValue) / static_cast<float>(state.LastZoom);
    RescaleBar(FieldsOf(state, Bar::Horizontal, in), ratio, in.ZoomFactor, h);
    RescaleBar(FieldsOf(state, Bar::Vertical, in), ratio, in.ZoomFactor, v);
    state.PicLeft = Saturate(int64_t{state.AxisScreenX} - int64_t{in.X} * in.ZoomFactor);
    state.PicTop = Saturate(int64_t{state.AxisScreenY} - int64_t{in.Y} * in.ZoomFactor);
}

}  // namespace tarvolin
