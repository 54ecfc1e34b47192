// tarvolin-cli sample OUT.sff: a small shared-palette SFF drawn by code, so that the
// program can be tried without any outside file. Six sprites: a stance of three frames
// (the first holds the shared palette), a frame linked to the first, and two portraits
// with palettes of their own.
#include <cmath>

#include "Commands.h"
#include "base/AtomicFile.h"
#include "formats/PcxEncode.h"
#include "formats/SffWriter.h"

namespace tarvolin::cli {
namespace {

Palette FighterPalette() {
    Palette p{};
    for (int i = 1; i < 256; ++i) {  // index 0 stays black: the transparent colour
        const double t = i / 255.0;
        p[static_cast<size_t>(i * 3)] = static_cast<uint8_t>(60 + 195 * t);
        p[static_cast<size_t>(i * 3 + 1)] = static_cast<uint8_t>(40 + 120 * std::sin(t * 3.14159));
        p[static_cast<size_t>(i * 3 + 2)] = static_cast<uint8_t>(200 - 150 * t);
    }
    return p;
}

Palette PortraitPalette() {
    Palette p{};
    for (int i = 1; i < 256; ++i) {
        p[static_cast<size_t>(i * 3)] = static_cast<uint8_t>(i);
        p[static_cast<size_t>(i * 3 + 1)] = static_cast<uint8_t>(200 - i / 2);
        p[static_cast<size_t>(i * 3 + 2)] = static_cast<uint8_t>(255 - i);
    }
    return p;
}

// A figure of head, body, arms and legs; `phase` swings the arms.
std::vector<uint8_t> DrawFighter(int w, int h, int phase) {
    std::vector<uint8_t> px(static_cast<size_t>(w * h), 0);
    auto put = [&](int x, int y, int c) {
        if (x >= 0 && y >= 0 && x < w && y < h) px[static_cast<size_t>(y * w + x)] = static_cast<uint8_t>(c);
    };
    const int cx = w / 2;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int dx = x - cx, dy = y - 10;
            if (dx * dx + dy * dy <= 64) put(x, y, 200 - (dx * dx + dy * dy));    // head
            if (std::abs(dx) <= 7 && y >= 18 && y < 42) put(x, y, 90 + y);       // body
            if (y >= 42 && (std::abs(dx - 4) <= 2 || std::abs(dx + 4) <= 2)) put(x, y, 60);  // legs
        }
    for (int i = 0; i < 16; ++i) {  // arms
        put(cx - 8 - i / 2, 20 + i + phase, 170);
        put(cx + 8 + i / 2, 20 + i - phase, 170);
    }
    return px;
}

std::vector<uint8_t> DrawPortrait(int w, int h) {
    std::vector<uint8_t> px(static_cast<size_t>(w * h));
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) px[static_cast<size_t>(y * w + x)] = static_cast<uint8_t>(1 + (x * 7 + y * 5) % 254);
    return px;
}

SffSprite Sprite(uint16_t group, uint16_t item, int16_t ax, int16_t ay, uint8_t flag, std::vector<uint8_t> data) {
    SffSprite s;
    s.GroupNo = group;
    s.ItemNo = item;
    s.AxisX = ax;
    s.AxisY = ay;
    s.PalFlag = flag;
    s.Data = std::move(data);
    return s;
}

// A sprite that uses the previous palette is stored without its last 768 bytes.
std::vector<uint8_t> WithoutPalette(std::vector<uint8_t> pcx) {
    pcx.resize(pcx.size() - 768);
    return pcx;
}

}  // namespace

int RunSample(const Context& ctx, const Args& args) {
    const Palette fighter = FighterPalette();
    const int w = 41, h = 56;  // an odd width, as many real sprites have
    std::vector<SffSprite> sprites;
    sprites.push_back(Sprite(0, 0, 20, 55, 0, EncodePcx(w, h, DrawFighter(w, h, 0), fighter)));
    sprites.push_back(Sprite(0, 1, 20, 55, 1, WithoutPalette(EncodePcx(w, h, DrawFighter(w, h, 3), fighter))));
    sprites.push_back(Sprite(0, 2, 20, 55, 1, WithoutPalette(EncodePcx(w, h, DrawFighter(w, h, 6), fighter))));
    SffSprite linked = Sprite(0, 3, 20, 55, 1, {});
    linked.LinkIndex = 1;
    sprites.push_back(linked);
    sprites.push_back(Sprite(9000, 0, 0, 0, 0, EncodePcx(25, 25, DrawPortrait(25, 25), PortraitPalette())));
    sprites.push_back(Sprite(9000, 1, 0, 0, 0, EncodePcx(120, 140, DrawPortrait(120, 140), PortraitPalette())));
    // An SFF that stands under the name is kept beside it, never simply replaced.
    const std::vector<uint8_t> bytes = EncodeSff(kSharedPaletteMode, sprites);
    auto file = AtomicFile::Create(args[0]);
    if (!file) return ExitStatus(ctx, file.error());
    if (auto written = file.value().Write(bytes); !written) return ExitStatus(ctx, written);
    return ExitStatus(ctx, file.value().Commit(args[0] + ".bak"));
}

}  // namespace tarvolin::cli
