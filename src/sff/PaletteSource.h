#pragma once
// Which palette the engine draws a row's sprite with: the SFF's shared palette, a palette
// of its own (its data end in it, or its picture is a file of its own), or the palette
// another subfile stored (a flag-1 sprite after a sprite with a palette of its own). A
// picture file of its own that asks for the shared palette and ends in it counts as shared:
// the builder stores it without a palette.
#include <map>
#include <optional>
#include <string>

#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

enum class PaletteKind { Shared, Own, Subfile };

struct PaletteOrigin {
    PaletteKind Kind = PaletteKind::Own;
    int Subfile = -1;  // Kind Subfile: the subfile whose stored palette it is
};

// Looks up palettes of one opened file; made anew when another file is opened.
class PaletteSources {
public:
    explicit PaletteSources(const SffState& state);
    PaletteOrigin Of(const SpriteRow& row) const;

private:
    PaletteOrigin OfFile(const SpriteRow& row) const;

    const SffState& state_;
    mutable std::map<std::string, bool> fileShares_;  // a picture file -> ends in the shared palette
    std::map<int32_t, int> storedAt_;  // where a subfile's own palette lies -> the subfile
};

}  // namespace tarvolin
