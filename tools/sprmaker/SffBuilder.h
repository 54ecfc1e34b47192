#pragma once
// Builds an SFF version 1 file from a read parameter text: reads and checks each PCX,
// strips the palette of a sprite that uses the previous one, links duplicates, and
// streams everything through the project's SFF writer. Every sprite comes out as the
// engine would show its file: its pixels and the palette its file ends with.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ParamInput.h"
#include "base/Result.h"

namespace tarvolin::sprmaker {

struct BuildOptions {
    bool Crop = false;             // -c
    bool LinkIdentical = false;    // -f
    bool DropSamePalette = false;  // -p
};

// One sprite as it went into the file, for the log.
struct SpriteAdded {
    const SpriteEntry& Entry;
    int16_t AxisX;  // after the shift of a crop
    int16_t AxisY;
    uint8_t PalFlag;
    std::optional<uint32_t> LinkedTo;  // index of the sprite whose data it uses
    std::vector<std::string> Warnings;  // what was unusual and what was done, a line each
};

struct BuildSummary {
    uint32_t Groups = 0;
    uint32_t Images = 0;
    uint32_t UniqueImages = 0;  // sprites stored with data of their own
    uint32_t Palettes = 0;      // sprites stored with a palette
    uint64_t Bytes = 0;
    std::string KeptAs;         // where the replaced SFF's bytes are kept; empty: none was replaced
    size_t StaleRemoved = 0;    // temporary files of stopped earlier runs removed from the folder
};

// `folder` is where relative names lead: empty for the working folder, else ending with
// '/'. The output's folder is held for the whole build (OutputClaim). The file appears
// only when every sprite went in; the file it replaces is then kept as NAME.bak, or
// NAME.bak2, ... when that name is taken (AtomicFile::Commit).
Result<BuildSummary> BuildSff(const BuildPlan& plan, const BuildOptions& options, const std::string& folder,
                              const std::function<void(const SpriteAdded&)>& added = {});

// The highest sprite index a link can name: link indices are 16 bits.
inline constexpr uint32_t kMaxLinkTarget = 65535;

// A name as the builder compares names to link duplicates: ASCII letters in lower case.
std::string FoldCase(std::string name);

// Where a name of the text leads: an absolute path stays, a relative one is put behind
// `folder`.
std::string ResolvePath(const std::string& folder, const std::string& name);

// The same for a name the text gives in the bytes `asWritten`, read as `name` (UTF-8, as
// this system spells names). A name in Shift JIS bytes, as files from Japanese systems
// have them, leads to the file under those bytes when no file has its UTF-8 spelling;
// otherwise, and for a file still to be made, the UTF-8 spelling counts.
std::string ResolveName(const std::string& folder, const std::string& name, const std::string& asWritten);

}  // namespace tarvolin::sprmaker
