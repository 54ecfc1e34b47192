#pragma once
// An SFF version 1 file as the engine sees it: per sprite its numbers, the picture it
// shows and the palette it is drawn with. A flag-1 sprite takes the palette of the last
// earlier sprite that stored one; a linked sprite takes picture and palette from the
// sprite it links to.
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

// Fails the current test (and gives what it read so far) on a malformed file. The data of
// a subfile run to the next offset; `checkLengths` also wants each length field to say so
// (the engine's own builder overstates it for sprites stored without a palette).
EngineFile EngineView(const std::vector<uint8_t>& sff, bool checkLengths = true);

}  // namespace tarvolin::test
