#include "sff/PaletteSource.h"

#include "base/TextHelpers.h"
#include "formats/Pcx.h"
#include "formats/PictureFile.h"

namespace tarvolin {

PaletteSources::PaletteSources(const SffState& state) : state_(state) {
    // A subfile's own palette is the last 768 bytes of its data; links have none of theirs.
    for (size_t i = 0; i < state.Subfiles.size(); ++i) {
        const SubfileRecord& r = state.Subfiles[i];
        if (r.LinkIndex == kNoLink && r.DataEnd - r.DataStart + 1 >= static_cast<int32_t>(kPaletteSize))
            storedAt_.try_emplace(r.DataEnd + 1 - static_cast<int32_t>(kPaletteSize), static_cast<int>(i));
    }
}

PaletteOrigin PaletteSources::Of(const SpriteRow& row) const {
    if (!row[Column::PcxPath].empty()) return OfFile(row);
    const SubfileRecord* record = RecordOfRow(state_, row);
    if (!record) return {};
    const int32_t at = record->PaletteAt;
    const Palette* read = PaletteReadAt(state_, at);
    if (!read) return {};
    if (*read == state_.SharedPalette) return {PaletteKind::Shared, -1};
    const auto owner = storedAt_.find(at);
    return owner == storedAt_.end() ? PaletteOrigin{} : PaletteOrigin{PaletteKind::Subfile, owner->second};
}

PaletteOrigin PaletteSources::OfFile(const SpriteRow& row) const {
    if (row[Column::PalType] != "1") return {};
    // Each file is read once for this table: the column is drawn again on every scroll.
    const std::string path = row[Column::PcxPath] + row[Column::PcxName];
    auto [known, isNew] = fileShares_.try_emplace(path, false);
    if (isNew) {
        const auto picture = ReadPictureFile(path);
        known->second = picture && EndsInPalette(picture.value(), state_.SharedPalette);
    }
    return known->second ? PaletteOrigin{PaletteKind::Shared, -1} : PaletteOrigin{};
}

}  // namespace tarvolin
