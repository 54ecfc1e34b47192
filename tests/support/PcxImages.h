#pragma once
// A hand-made 256-colour PCX: the header with the given bounds, then `data` as given.
#include <cstdint>
#include <vector>

#include "formats/Pcx.h"

namespace tarvolin::test {

inline std::vector<uint8_t> PcxImage(uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine,
                                     const std::vector<uint8_t>& data = {}) {
    std::vector<uint8_t> b(kPcxHeaderSize, 0);
    b[0] = 10, b[1] = 5, b[2] = 1, b[3] = 8, b[65] = 1;
    auto put16 = [&b](size_t at, uint16_t v) { b[at] = uint8_t(v), b[at + 1] = uint8_t(v >> 8); };
    put16(8, xmax), put16(10, ymax), put16(66, bytesPerLine);
    b.insert(b.end(), data.begin(), data.end());
    return b;
}

}  // namespace tarvolin::test
