#pragma once
// The PCX files that go into a new SFF: the test each must pass before it is used, and the
// crop of option -c.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/Pcx.h"

namespace tarvolin::sprmaker {

// What keeps the bytes from being a sprite: 8 bits per pixel, one plane, run-length
// encoded, a 128-byte header and a 768-byte palette behind the 0x0C marker at the end.
// Nothing when they pass.
std::optional<std::string> PcxProblem(const std::vector<uint8_t>& bytes);

// The picture cut down to the smallest rectangle that holds every non-zero pixel,
// encoded anew with the same palette. `left` and `top` say how far the picture's corner
// moved, so that the axis can follow. A picture without a non-zero pixel is kept whole.
struct Cropped {
    std::vector<uint8_t> Bytes;
    int Left = 0;
    int Top = 0;
};
Cropped CropPcx(const std::vector<uint8_t>& checkedBytes);

}  // namespace tarvolin::sprmaker
