#include "sff/PngExport.h"

#include "base/AtomicFile.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/Pcx.h"
#include "formats/PngConvert.h"

namespace tarvolin {

std::string PngName(const std::string& pcxName) {
    std::string name = pcxName;
    if (name.size() >= 4) {
        std::string ext = name.substr(name.size() - 4);
        for (char& c : ext) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
        if (ext == ".pcx") name.resize(name.size() - 4);
    }
    return name + ".png";
}

Status SavePng(const SffState& state, const SpriteTable& table, const std::string& folder, int row) {
    const SpriteRow& r = table.Row(row);
    const std::string target = folder + PngName(r[Column::PcxName]);
    const std::string where = "row " + DecimalText(row) + ", P.Pos \"" + r[Column::PPos] + "\": ";
    // P.Pos is set at opening and never edited; a row past a short subfile chain has no
    // PCX Name and no picture.
    const auto pos = ParseNumber(r[Column::PPos]);
    const bool named = !r[Column::PcxName].empty() && pos && *pos >= 0 &&
                       *pos < static_cast<double>(state.Subfiles.size()) && *pos == static_cast<double>(static_cast<size_t>(*pos));
    if (!named) return Error{msg::WriteFailed, target, where + "no sprite of the open SFF"};
    const std::vector<uint8_t> bytes = CutSubfile(state, state.Subfiles[static_cast<size_t>(*pos)]);
    const bool noPicture =
        bytes.empty() ||
        (bytes.size() == kPaletteSize && PcxRefusal(ReadPcxHeader(bytes), PcxLayouts::IndexedOrTrueColour));
    if (noPicture) return WriteFileAtomically(target, std::string());
    auto png = PngFromPcx(bytes, r[Column::AxisX] + "," + r[Column::AxisY], target);
    if (!png) return Error{png.error().Key, target, where + png.error().Detail};
    return WriteFileAtomically(target, png.value());
}

Status SaveAllPng(const SffState& state, const SpriteTable& table, const std::string& folder,
                  const std::function<void()>& betweenFiles) {
    for (int row = 1, rows = table.RowCount(); row <= rows; ++row) {
        if (!table.Cell(row, Column::PcxPath).empty()) continue;
        if (auto saved = SavePng(state, table, folder, row); !saved) return saved;
        if (betweenFiles) betweenFiles();
    }
    return Ok();
}

}  // namespace tarvolin
