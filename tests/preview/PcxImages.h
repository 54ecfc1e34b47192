#pragma once
// Hand-made PCX images for the preview tests: a 256-colour header with the given bounds
// and the run-length data as given (possibly too few), nothing else.
#include <cstdint>
#include <vector>

#include "preview/Pcx.h"

namespace tarvolin::test {

inline std::vector<uint8_t> PcxImage(uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine,
                                     const std::vector<uint8_t>& data = {}) {
    std::vector<uint8_t> b(kPcxHeaderSize, 0);
    b[0] = 10;
    b[1] = 5;
    b[2] = 1;
    b[3] = 8;
    b[8] = static_cast<uint8_t>(xmax);
    b[9] = static_cast<uint8_t>(xmax >> 8);
    b[10] = static_cast<uint8_t>(ymax);
    b[11] = static_cast<uint8_t>(ymax >> 8);
    b[65] = 1;
    b[66] = static_cast<uint8_t>(bytesPerLine);
    b[67] = static_cast<uint8_t>(bytesPerLine >> 8);
    for (uint8_t d : data) b.push_back(d);
    return b;
}

}  // namespace tarvolin::test
