#pragma once
// What the open SFF says: its bytes, its subfile records, the shared palette, and the
// names that all output is built from. Filled by OpenSff, never changed afterwards but
// by the next opening or Initialize. WorkFolder survives everything until the program ends.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "formats/Pcx.h"

namespace tarvolin {

struct SubfileRecord {
    int32_t AxisX = 0;
    int32_t AxisY = 0;
    int32_t GroupNo = 0;
    int32_t ItemNo = 0;
    int32_t LinkIndex = 0;
    uint8_t PalFlag = 0;
    std::string PcxName;
    int32_t DataStart = 0;
    int32_t DataEnd = -1;  // inclusive; DataEnd < DataStart means an empty range
    int32_t NextOffset = 0;
    // Where in SffBytes the 768-byte palette lies that goes behind the data when they are
    // cut out, or -1 when nothing does: the palette the engine shows the sprite with, where
    // its data don't end in it. Held as an offset because a few palettes serve thousands of
    // records, and SffBytes never change.
    int32_t PaletteAt = -1;
};

using SubfileTable = std::vector<SubfileRecord>;

struct SffState {
    std::vector<uint8_t> SffBytes;
    SubfileTable Subfiles;
    Palette SharedPalette{};
    int32_t ImageCount = 0;
    std::string SffBaseName;
    std::string WorkFolder;      // empty, or a folder ending with '/'
    std::string SffNameCaption;  // the text of lblSffName: the SFF's file name, no folder
    std::string ImageCaption;    // the text of lblImage: the image count as decimal text
};

// The PCX image of one subfile cut out of SffBytes: the bytes DataStart..DataEnd, then the
// palette at PaletteAt where there is one (OpenSff sets it on records with PalFlag 1 and
// on links to them). An empty range gives only what is appended. Both the export and the
// preview take their bytes from here, so that a sprite's file carries the palette the
// engine shows it with, and two rows that name one file write the same bytes.
std::vector<uint8_t> CutSubfile(const SffState& state, const SubfileRecord& record);

}  // namespace tarvolin
