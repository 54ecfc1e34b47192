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
    int32_t DataEnd = 0;  // inclusive; DataEnd < DataStart means an empty range
    int32_t NextOffset = 0;
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

// The PCX image of one subfile cut out of SffBytes: the bytes DataStart..DataEnd, with
// SharedPalette appended where the record's PalFlag is exactly 1. An empty range gives
// only what is appended. Both the export and the preview take their bytes from here.
std::vector<uint8_t> CutSubfile(const SffState& state, const SubfileRecord& record);

}  // namespace tarvolin
