#pragma once
// An SFF version 1 file as the engine shows it, read independently of Tarvolin's reader so
// that the tests can hold the two against each other; the one statement of what it shows:
// - a subfile of length 0 is a link: it shows the picture and palette of the earlier subfile
//   its link index names, 0 included; linked to itself (the engine then refuses the file),
//   to a later subfile or beyond the image count it shows nothing;
// - a subfile with data shows them, whatever its link index says;
// - a 24-bit picture (three planes) shows its own colours and carries no palette;
// - a flag-1 subfile after the first takes the palette of the last earlier 8-bit sprite (one
//   plane) stored with its own: data of its own, at least 768 bytes, a flag other than 1;
// - any other subfile takes the last 768 bytes of its data as its palette.
#include <cstdint>
#include <string>
#include <vector>

#include "formats/Pcx.h"

namespace tarvolin::test {

// A PCX picture decoded by its header alone (width Xmax - Xmin + 1, runs crossing line
// ends, cells the data don't reach 0): Width cells a row, each line's planes in turn.
struct EnginePixels {
    int Width = 0;
    int Height = 0;
    int Planes = 0;
    std::vector<uint8_t> Cells;
    bool operator==(const EnginePixels&) const = default;
};
EnginePixels DecodeAsEngine(const std::vector<uint8_t>& pcx);

struct EngineSprite {
    uint16_t GroupNo = 0;
    uint16_t ItemNo = 0;
    int16_t AxisX = 0;
    int16_t AxisY = 0;
    uint16_t LinkIndex = 0;
    uint8_t PalFlag = 0;
    bool Linked = false;           // shows sprite LinkIndex's picture and palette
    bool Empty = false;            // shows no picture
    bool SelfLinked = false;       // the engine refuses the file
    std::vector<uint8_t> Picture;  // the PCX data it shows (its own or its target's)
    EnginePixels Pixels;           // Picture decoded
    bool HasColours = false;       // false: a 24-bit picture, or no palette stored before a flag-1 sprite
    Palette Colours{};
};

struct EngineFile {
    uint8_t PaletteMode = 0;
    uint32_t GroupCount = 0;
    std::vector<EngineSprite> Sprites;
};

// Fails the current test on a malformed file. `checkLengths` false for real files, whose
// length fields may disagree with the next offset: the data then run to the next offset.
EngineFile EngineView(const std::vector<uint8_t>& sff, bool checkLengths = true);

}  // namespace tarvolin::test
