#pragma once
// An SFF version 1 file as the engine sees it: a flag-1 sprite takes the palette of the
// last earlier sprite that stored one; a linked one, picture and palette of its target.
#include <cstdint>
#include <string>
#include <vector>

#include "sff/SffState.h"

namespace tarvolin::test {

struct EngineSprite {
    uint16_t GroupNo = 0;
    uint16_t ItemNo = 0;
    int16_t AxisX = 0;
    int16_t AxisY = 0;
    uint16_t LinkIndex = 0;
    uint8_t PalFlag = 0;
    bool Linked = false;              // length 0 and a link index
    std::vector<uint8_t> Picture;     // the PCX data it shows (its own or its target's)
    Palette Colours{};
};

struct EngineFile {
    uint8_t PaletteMode = 0;
    uint32_t GroupCount = 0;
    std::vector<EngineSprite> Sprites;
};

// Fails the current test (giving what it read so far) on a malformed file. `checkLengths`:
// each length field must reach the next offset (the engine's own builder overstates it).
EngineFile EngineView(const std::vector<uint8_t>& sff, bool checkLengths = true);

}  // namespace tarvolin::test
