#include "sff/PcxExport.h"

#include "base/MessageKeys.h"
#include "base/AtomicFile.h"
#include "base/TextHelpers.h"
#include "sff/PngExport.h"

namespace tarvolin {
namespace {

// The record a row points at through its P.Pos. P.Pos is set at opening and never
// edited, so a value outside the table only comes from a table that was not filled by
// OpenSff; it is refused rather than read out of bounds.
Result<const SubfileRecord*> RecordOf(const SffState& state, const SpriteRow& row, const std::string& target) {
    if (const SubfileRecord* record = RecordOfRow(state, row)) return record;
    return Error{msg::WriteFailed, target, "P.Pos \"" + row[Column::PPos] + "\" names no subfile of the open SFF"};
}

// One row's file, its bytes cut into `buffer` (whose room the next file reuses).
Status SaveRow(const SffState& state, const SpriteTable& table, const std::string& folder, int row,
               PictureFormat format, std::vector<uint8_t>& buffer) {
    const SpriteRow& r = table.Row(row);
    const std::string target = folder + ExportName(r, format);
    // A row past the end of a short subfile chain has no name; writing it would aim at the
    // folder itself.
    if (r[Column::PcxName].empty())
        return Error{msg::WriteFailed, target, "row " + DecimalText(row) + " has no PCX Name"};
    auto record = RecordOf(state, r, target);
    if (!record) return record.error();
    if (auto cut = CutSubfileInto(state, *record.value(), buffer); !cut) return cut;
    if (format == PictureFormat::Pcx) return WriteFileAtomically(target, buffer);
    auto png = PngFileOf(buffer, r, target);
    if (!png) return Error{png.error().Key, target, "row " + DecimalText(row) + ": " + png.error().Detail};
    return WriteFileAtomically(target, png.value());
}

}  // namespace

std::string ExportName(const SpriteRow& row, PictureFormat format) {
    return format == PictureFormat::Pcx ? row[Column::PcxName] : PngName(row[Column::PcxName]);
}

Status SavePcx(const SffState& state, const SpriteTable& table, const std::string& folder, int row) {
    std::vector<uint8_t> buffer;
    return SaveRow(state, table, folder, row, PictureFormat::Pcx, buffer);
}

Status SaveRows(const SffState& state, const SpriteTable& table, const std::string& folder, PictureFormat format,
                const std::vector<int>& places, const std::function<void()>& betweenFiles) {
    std::vector<uint8_t> buffer;
    const auto save = [&](int row) -> Status {
        if (!table.Cell(row, Column::PcxPath).empty()) return Ok();
        if (auto s = SaveRow(state, table, folder, row, format, buffer); !s) return s;
        if (betweenFiles) betweenFiles();
        return Ok();
    };
    if (places.empty()) {
        for (int row = 1, rows = table.RowCount(); row <= rows; ++row)
            if (auto s = save(row); !s) return s;
    }
    for (const int row : places)
        if (auto s = save(row); !s) return s;
    return Ok();
}

}  // namespace tarvolin
