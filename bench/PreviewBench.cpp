// The preview's hot paths: decoding a sprite and redrawing the screen at 100% and 400%.
#include <benchmark/benchmark.h>

#include <random>

#include "formats/Pcx.h"
#include "formats/PcxEncode.h"
#include "preview/Pallet.h"
#include "preview/PreviewCanvas.h"

namespace tarvolin {
namespace {

// A sprite like a real one: runs of a few colours broken by single pixels.
std::vector<uint8_t> SpritePcx(int w, int h) {
    std::mt19937 random(42);
    std::vector<uint8_t> pixels(static_cast<size_t>(w) * h);
    for (size_t i = 0; i < pixels.size();) {
        const size_t run = random() % 12 + 1;
        const auto color = static_cast<uint8_t>(random() % 256);
        for (size_t k = 0; k < run && i < pixels.size(); ++k) pixels[i++] = color;
    }
    Palette palette{};
    for (size_t i = 0; i < palette.size(); ++i) palette[i] = static_cast<uint8_t>(i * 5);
    return EncodePcx(w, h, pixels, palette);
}

void BM_PcxRle(benchmark::State& s) {
    const auto bytes = SpritePcx(static_cast<int>(s.range(0)), static_cast<int>(s.range(1)));
    const auto header = ReadPcxHeader(bytes);
    for (auto _ : s) benchmark::DoNotOptimize(PcxRle(bytes, header));
    s.SetBytesProcessed(static_cast<int64_t>(s.iterations()) * s.range(0) * s.range(1));
}
BENCHMARK(BM_PcxRle)->Args({640, 480})->Args({4096, 4096})->Unit(benchmark::kMillisecond);

void BM_ViewPCX(benchmark::State& s) {
    const int zoom = static_cast<int>(s.range(0));
    const auto bytes = SpritePcx(640, 480);
    PreviewState state;
    state.PcxPixels = PcxRle(bytes, ReadPcxHeader(bytes));
    std::copy(bytes.end() - 768, bytes.end(), state.PcxPalette.begin());
    PalletSet(state);
    // Settled bars of a sprite whose axis is at its centre, as intScr leaves them.
    const int factor = zoom / 100;
    state.PicLeft = state.AxisScreenX - 320 * factor;
    state.PicTop = state.AxisScreenY - 240 * factor;
    ViewInputs in;
    in.ZoomNumber = zoom;
    in.HMaximum = state.PcxPixels.LastColumn * factor;
    in.VMaximum = state.PcxPixels.LastLine * factor;
    in.HValue = in.HMaximum / 2;
    in.VValue = in.VMaximum / 2;
    PreviewCanvas canvas;
    for (auto _ : s) {
        ViewPCX(canvas, state, in);
        benchmark::DoNotOptimize(canvas.Data());
    }
}
BENCHMARK(BM_ViewPCX)->Arg(100)->Arg(400)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvolin

BENCHMARK_MAIN();
