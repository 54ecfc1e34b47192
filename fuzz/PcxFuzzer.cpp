// Outside bytes as a sprite of the preview: the header tests, the decoder and a redraw at
// 100% and 400% of whatever was accepted.
#include <cstddef>
#include <cstdint>
#include <span>

#include "formats/Pcx.h"
#include "preview/PreviewCanvas.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tarvolin;
    const std::span<const uint8_t> bytes(data, size);
    PreviewState state;
    state.PcxHeaderInfo = ReadPcxHeader(bytes);
    if (PcxRefusal(state.PcxHeaderInfo)) return 0;
    state.PcxPixels = PcxRle(bytes, state.PcxHeaderInfo);
    PreviewCanvas canvas;
    for (int zoom : {100, 400}) {
        const int factor = zoom / 100;
        ViewInputs in;
        in.ZoomNumber = zoom;
        in.HMaximum = state.PcxPixels.LastColumn * factor;
        in.VMaximum = state.PcxPixels.LastLine * factor;
        in.HValue = static_cast<int32_t>(data[size - 1]) % (in.HMaximum + 1);  // size >= 1: a header was accepted
        state.PicLeft = state.AxisScreenX - in.HValue;
        state.PicTop = state.AxisScreenY;
        ViewPCX(canvas, state, in);
    }
    return 0;
}
