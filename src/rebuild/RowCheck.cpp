#include "rebuild/RowCheck.h"

#include "base/MessageKeys.h"
#include "formats/Pcx.h"
#include "formats/PictureFile.h"

namespace tarvolin {

namespace {

std::string RowName(const SpriteTable& table, int place) {
    return "row " + std::to_string(place) + " (GroupNo " + table.Cell(place, Column::GroupNo) + ", ItemNo " +
           table.Cell(place, Column::ItemNo) + ", P.Pos " + table.Cell(place, Column::PPos) + ")";
}

bool HasOwnPicture(const SpriteTable& table, int place) { return !table.Cell(place, Column::PcxPath).empty(); }

Status CheckHasData(const SpriteTable& table, int place) {
    if (HasOwnPicture(table, place) || !table.Cell(place, Column::PcxName).empty()) return Ok();
    return Error{msg::RowWithoutData, {}, RowName(table, place) + " has no picture data: the SFF's subfile chain ends before it"};
}

Status CheckOwnPicture(const SpriteTable& table, int place) {
    const std::string path = table.Cell(place, Column::PcxPath) + table.Cell(place, Column::PcxName);
    auto bytes = ReadPictureFile(path);
    if (!bytes) {
        Error e = bytes.error();
        e.Detail = RowName(table, place) + ": " + e.Detail;
        return e;
    }
    // The builder's own acceptance: the build is refused exactly where sprmaker.exe would be.
    if (auto refusal = PcxRefusal(bytes.value(), PcxLayouts::IndexedOrTrueColour))
        return Error{msg::PcxFormat, path, RowName(table, place) + ": " + *refusal};
    return Ok();
}

}  // namespace

Status CheckRowsHaveData(const SpriteTable& table) {
    for (int place = 1; place <= table.RowCount(); ++place)
        if (auto s = CheckHasData(table, place); !s) return s;
    return Ok();
}

Status CheckRowsForBuild(const SpriteTable& table) {
    for (int place = 1; place <= table.RowCount(); ++place) {
        if (auto s = CheckHasData(table, place); !s) return s;
        if (!HasOwnPicture(table, place)) continue;
        if (auto s = CheckOwnPicture(table, place); !s) return s;
    }
    return Ok();
}

}  // namespace tarvolin
