// The preview's hot paths: decoding a sprite and redrawing the picture area.
#include <benchmark/benchmark.h>

#include <random>

#include "formats/Pcx.h"
#include "formats/PcxEncode.h"
#include "preview/PreviewCanvas.h"
#include "preview/RowPicture.h"

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

// A redraw of the picture area (width x height) showing the middle of a 640 x 480 sprite
// at the given zoom: what every scroll, drag step and wheel notch costs.
void BM_ViewPCX(benchmark::State& s) {
    const auto bytes = SpritePcx(640, 480);
    PreviewState state;
    state.PcxBytes = bytes;
    state.PcxHeaderInfo = ReadPcxHeader(bytes);
    DecodePicture(state);
    PreviewView& v = state.View;
    v.Zoom = static_cast<int32_t>(s.range(0));
    v.Width = static_cast<int32_t>(s.range(1));
    v.Height = static_cast<int32_t>(s.range(2));
    v.AxisX = 320;
    v.AxisY = 240;
    v.Left = MarkerOf(state.Across()) - v.Width / 2;
    v.Top = MarkerOf(state.Down()) - v.Height / 2;
    PreviewCanvas canvas;
    canvas.Resize(v.Width, v.Height);
    for (auto _ : s) {
        ViewPCX(canvas, state, false);
        benchmark::DoNotOptimize(canvas.Data());
    }
}
BENCHMARK(BM_ViewPCX)
    ->Args({100, 800, 600})
    ->Args({1600, 800, 600})
    ->Args({1600, 1920, 1080})
    ->Args({25, 1920, 1080})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvolin

BENCHMARK_MAIN();
