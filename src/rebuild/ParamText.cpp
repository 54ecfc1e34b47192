#include "rebuild/ParamText.h"

#include "rebuild/Cp932Text.h"
#include "base/TextHelpers.h"

namespace tarvolin {
namespace {

// Rows 1 to 3 always carry a palette block, later rows when PalType reads as 0. A PalType
// that is no number at all gets a block too: a sprite with its own palette loses nothing.
bool HasPaletteBlock(int place, const std::string& palType) {
    if (place < 4) return true;
    const auto value = ParseNumber(palType);
    return !value || *value == 0;
}

}  // namespace

Result<std::string> ParamTextBytes(const SpriteTable& table, const std::string& sffNameCaption) {
    Cp932Lines out;
    const int rows = table.RowCount();
    out.Reserve(64 + static_cast<size_t>(rows) * 64);
    for (std::string_view header : {"#", "1", "2"})
        if (auto s = out.Add(header); !s) return s.error();
    if (auto s = out.Add(sffNameCaption); !s) return s.error();
    for (int place = 1; place <= rows; ++place) {
        const SpriteRow& row = table.Row(place);
        if (HasPaletteBlock(place, row[Column::PalType]))
            for (std::string_view block : {"#", "1", "1"})
                if (auto s = out.Add(block); !s) return s.error();
        if (auto s = out.Add({row[Column::PcxPath], row[Column::PcxName]}); !s) return s.error();
        for (const std::string* cell : {&row[Column::GroupNo], &row[Column::ItemNo], &row[Column::AxisX],
                                        &row[Column::AxisY]})
            if (auto s = out.Add(*cell); !s) return s.error();
    }
    if (auto s = out.Add(""); !s) return s.error();
    return out.Take();
}

}  // namespace tarvolin
