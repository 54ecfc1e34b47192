#pragma once
// Writes SFF version 1 files: the 512-byte header, then per sprite a 32-byte subfile
// header and its data. The one writer of the project: the sample file, the tests'
// synthetic files and the builder sprmaker.exe all go through it.
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "base/AtomicFile.h"
#include "base/Result.h"
#include "formats/SffLayout.h"

namespace tarvolin {

struct SffSprite {
    uint16_t GroupNo = 0;
    uint16_t ItemNo = 0;
    int16_t AxisX = 0;
    int16_t AxisY = 0;
    uint16_t LinkIndex = 0;   // 0: not linked
    uint8_t PalFlag = 0;      // 1: uses the previous sprite's palette
    std::vector<uint8_t> Data;  // stored as given; empty for a linked sprite
};

using sff_layout::kIndividualPaletteMode;
using sff_layout::kSharedPaletteMode;

// The whole file in memory.
std::vector<uint8_t> EncodeSff(uint8_t paletteMode, const std::vector<SffSprite>& sprites);

// Streams a file to disk sprite by sprite; the file appears under its name only when
// Finish succeeds (temporary file, then rename).
class SffFileWriter {
public:
    static Result<SffFileWriter> Create(const std::string& path, uint8_t paletteMode);
    Status Add(const SffSprite& sprite);
    // Writes the counts into the header and renames the file into place; with a
    // `backupPath`, a file that stood there is kept under that name.
    Status Finish(const std::string& backupPath = {});
    // After Finish with a backup path: where the replaced file's bytes are kept, or empty.
    const std::string& KeptAs() const { return file_.KeptAs(); }

    uint32_t ImageCount() const { return images_; }
    uint32_t GroupCount() const { return static_cast<uint32_t>(groups_.size()); }
    uint64_t Bytes() const { return file_.Size(); }

private:
    explicit SffFileWriter(AtomicFile file) : file_(std::move(file)) {}
    AtomicFile file_;
    std::set<uint16_t> groups_;
    uint32_t images_ = 0;
};

}  // namespace tarvolin
