#include "mainwin/NewRows.h"

#include <algorithm>
#include <map>

#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/PictureFile.h"

namespace tarvolin {

namespace {

constexpr int32_t kLastItem = 65535;  // item numbers are 16-bit in the SFF

}  // namespace

Result<std::vector<uint8_t>> AcceptedPicture(const std::string& path) {
    auto bytes = ReadPictureFile(path);
    if (!bytes) return bytes.error();
    if (auto refusal = PcxRefusal(bytes.value(), PcxLayouts::IndexedOrTrueColour))
        return Error{msg::PcxFormat, path, *refusal};
    return bytes;
}

FreeItems::FreeItems(const SpriteTable& table, const std::string& group) : used_(kLastItem + 1, false) {
    const auto g = WholeNumberIn(group);
    for (int place = 1; place <= table.RowCount(); ++place) {
        const SpriteRow& row = table.Row(place);
        if (WholeNumberIn(row[Column::GroupNo]) != g) continue;
        const auto item = WholeNumberIn(row[Column::ItemNo]);
        if (item && *item >= 0 && *item <= kLastItem) used_[static_cast<size_t>(*item)] = true;
    }
}

int32_t FreeItems::After(int32_t after) {
    const int32_t start = std::clamp(after + 1, 0, kLastItem + 1);
    for (int32_t k = 0; k <= kLastItem; ++k) {
        const int32_t item = (start + k) % (kLastItem + 1);
        if (used_[static_cast<size_t>(item)]) continue;
        used_[static_cast<size_t>(item)] = true;
        return item;
    }
    return kLastItem + 1;  // a group that uses every number: the next one beyond them
}

SpriteRow RowForPicture(const std::string& path, const std::vector<uint8_t>& pcx, const SpriteRow& current,
                        const Palette& shared, int32_t item) {
    SpriteRow row;
    row[Column::GroupNo] = current[Column::GroupNo];
    row[Column::ItemNo] = DecimalText(item);
    row[Column::PalType] = EndsInPalette(pcx, shared) ? "1" : "0";
    row[Column::AxisX] = current[Column::AxisX];
    row[Column::AxisY] = current[Column::AxisY];
    row[Column::PcxPath] = GetFolder(path);
    row[Column::PcxName] = GetFileName(path);
    return row;
}

std::vector<SpriteRow> CopiesOf(const SpriteTable& table, const std::vector<int>& sources, std::vector<int>& places) {
    std::vector<SpriteRow> copies;
    places.clear();
    // One count of free numbers a group, so that copies into one group never share one.
    std::map<std::optional<int32_t>, FreeItems> groups;
    for (const int source : sources) {
        SpriteRow copy = table.Row(source);
        const std::string& group = copy[Column::GroupNo];
        auto free = groups.try_emplace(WholeNumberIn(group), table, group).first;
        copy[Column::ItemNo] = DecimalText(free->second.After(WholeNumberIn(copy[Column::ItemNo]).value_or(-1)));
        // Not from the opened file: no place or key of the opening.
        copy[Column::SortNo].clear();
        copy[Column::SortKey].clear();
        places.push_back(source + static_cast<int>(copies.size()) + 1);
        copies.push_back(std::move(copy));
    }
    return copies;
}

}  // namespace tarvolin
