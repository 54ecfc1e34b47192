#include "sff/PngExport.h"

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

Result<std::vector<uint8_t>> PngFileOf(std::span<const uint8_t> cut, const SpriteRow& row, const std::string& target) {
    if (IsEmptyPicture(cut, cut.size())) return std::vector<uint8_t>{};
    return PngFromPcx(cut, row[Column::AxisX] + "," + row[Column::AxisY], target);
}

}  // namespace tarvolin
