#pragma once
// Where the sprite and the axis marker stand: the placing of a freshly shown sprite
// (intScr), the carrying over of the place across a change of zoom (zoomScr), and the
// change handling of the two scroll bars. The bars come in through a small port, because
// setting a bar's value or lowering its maximum runs the bar's change handling at once,
// nested inside these steps; the real window hands in its scroll bars, the tests a model
// that behaves alike.
#include <cstdint>

#include "preview/PreviewState.h"

namespace tarvolin {

class ScrollBarPort {
public:
    virtual ~ScrollBarPort() = default;
    virtual int32_t Minimum() const = 0;
    virtual int32_t Maximum() const = 0;
    virtual int32_t Value() const = 0;
    // Both may change the value (a value is limited to the range) and run the change
    // handling before they return.
    virtual void SetMaximum(int32_t maximum) = 0;
    virtual void SetValue(int32_t value) = 0;
    virtual void Enable() = 0;
};

enum class Bar { Horizontal, Vertical };

// The change handling of a bar whose value is now `value`, up to the redraw: moves the
// marker and the sprite by the difference to the value acted on last (nothing on the
// step away from 0, nothing while the maximum is 0) and records the value. True when it
// acted, and the caller redraws.
bool ApplyBarChange(PreviewState& state, Bar bar, int32_t value, int32_t maximum);

// The sprite's axis numbers (txtX, txtY) and the zoom factor, as intScr and zoomScr read them.
struct AxisInputs {
    int32_t X = 0;
    int32_t Y = 0;
    int32_t ZoomFactor = 1;
};

// Places a freshly shown sprite: spans, picture origin, each bar's range and value.
void intScr(PreviewState& state, const AxisInputs& in, ScrollBarPort& h, ScrollBarPort& v);

// Carries the place over from LastZoom to `sliderValue` (ZoomFactor already the new one).
void zoomScr(PreviewState& state, int32_t sliderValue, const AxisInputs& in, ScrollBarPort& h, ScrollBarPort& v);

}  // namespace tarvolin
