#pragma once
// What the open SFF says: its bytes, its subfile records, the shared palette, and the
// names that all output is built from. Filled by OpenSff, never changed afterwards but
// by the next opening or Initialize. WorkFolder survives everything until the program ends.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/FileBytes.h"
#include "base/Result.h"
#include "formats/Pcx.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// LinkIndex of a record that shows no other record's picture.
inline constexpr int32_t kNoLink = -1;

struct SubfileRecord {
    int32_t AxisX = 0;
    int32_t AxisY = 0;
    int32_t GroupNo = 0;
    int32_t ItemNo = 0;
    // The earlier record whose picture this one shows, or kNoLink: after opening it names
    // only links that are followed (a subfile without data of its own pointing back).
    int32_t LinkIndex = kNoLink;
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
    // The data begin with a PCX header that the builder takes and run on past it: what
    // opening learnt of the picture, so that a check before writing needn't read it again.
    bool HeaderTaken = false;
};

using SubfileTable = std::vector<SubfileRecord>;

struct SffState {
    // The open file's bytes as they were when it was opened, read where needed; a copy of
    // the state shares them.
    FileBytes SffBytes;
    SubfileTable Subfiles;
    Palette SharedPalette{};
    // The palettes that go behind records' data, by their offset (PaletteAt), in order of
    // it: read once at opening, since a few of them serve thousands of records.
    std::vector<std::pair<int32_t, Palette>> Palettes;
    int32_t ImageCount = 0;
    std::string SffBaseName;
    std::string WorkFolder;      // empty, or a folder ending with '/'
    std::string SffNameCaption;  // the text of lblSffName: the SFF's file name, no folder
    std::string ImageCaption;    // the text of lblImage: the image count as decimal text
};

// The record a row of the opened file stands for, by its P.Pos; nothing when P.Pos names
// no subfile (a row added since, or a cell edited by hand).
const SubfileRecord* RecordOfRow(const SffState& state, const SpriteRow& row);

// The palette read at opening that lies at `offset` in SffBytes; nothing when none does.
const Palette* PaletteReadAt(const SffState& state, int32_t offset);

// The PCX image of one subfile cut out of SffBytes: the bytes DataStart..DataEnd, then the
// palette at PaletteAt where there is one (OpenSff sets it on records with PalFlag 1 and
// on links to them). An empty range gives only what is appended. Both the export and the
// preview take their bytes from here, so that a sprite's file carries the palette the
// engine shows it with, and two rows that name one file write the same bytes.

// How many bytes the cut gives.
uint64_t CutSize(const SffState& state, const SubfileRecord& record);
// The first `limit` of them into `out`, replacing what it held (its room is reused). An
// error (ERR_FILE_CHANGED) when the file changed on disk since it was opened.
Status CutSubfileInto(const SffState& state, const SubfileRecord& record, std::vector<uint8_t>& out,
                      uint64_t limit = UINT64_MAX);
// The same without looking for a change, for a run of cuts that SffBytes.Unchanged()
// then vouches for at once.
void CutSubfileUnchecked(const SffState& state, const SubfileRecord& record, std::vector<uint8_t>& out,
                         uint64_t limit = UINT64_MAX);
// All of them; nothing when they can't be read as they were opened.
std::vector<uint8_t> CutSubfile(const SffState& state, const SubfileRecord& record);

}  // namespace tarvolin
