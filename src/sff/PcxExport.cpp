#include "sff/PcxExport.h"

#include "base/MessageKeys.h"
#include "base/AtomicFile.h"
#include "base/TextHelpers.h"

namespace tarvolin {
namespace {

// The record a row points at through its P.Pos. P.Pos is set at opening and never
// edited, so a value outside the table only comes from a table that was not filled by
// OpenSff; it is refused rather than read out of bounds.
Result<const SubfileRecord*> RecordOf(const SffState& state, const SpriteRow& row, const std::string& target) {
    const auto pos = ParseNumber(row[Column::PPos]);
    if (!pos || *pos < 0 || *pos >= static_cast<double>(state.Subfiles.size()) || *pos != static_cast<long>(*pos))
        return Error{msg::WriteFailed, target,
                     "P.Pos \"" + row[Column::PPos] + "\" names no subfile of the open SFF"};
    return &state.Subfiles[static_cast<size_t>(*pos)];
}

// One row's file, its bytes cut into `buffer` (whose room the next file reuses).
Status SaveRow(const SffState& state, const SpriteTable& table, const std::string& folder, int row,
               std::vector<uint8_t>& buffer) {
    const SpriteRow& r = table.Row(row);
    const std::string target = folder + r[Column::PcxName];
    // A row past the end of a short subfile chain has no name; writing it would aim at the
    // folder itself.
    if (r[Column::PcxName].empty())
        return Error{msg::WriteFailed, target, "row " + DecimalText(row) + " has no PCX Name"};
    auto record = RecordOf(state, r, target);
    if (!record) return record.error();
    if (auto cut = CutSubfileInto(state, *record.value(), buffer); !cut) return cut;
    return WriteFileAtomically(target, buffer);
}

}  // namespace

Status SavePcx(const SffState& state, const SpriteTable& table, const std::string& folder, int row) {
    std::vector<uint8_t> buffer;
    return SaveRow(state, table, folder, row, buffer);
}

Status SaveAllPcx(const SffState& state, const SpriteTable& table, const std::string& folder,
                  const std::function<void()>& betweenFiles) {
    const int rows = table.RowCount();
    std::vector<uint8_t> buffer;
    for (int row = 1; row <= rows; ++row) {
        if (!table.Cell(row, Column::PcxPath).empty()) continue;
        if (auto s = SaveRow(state, table, folder, row, buffer); !s) return s;
        if (betweenFiles) betweenFiles();
    }
    return Ok();
}

}  // namespace tarvolin
