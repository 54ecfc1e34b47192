#include "GeneratedSff.h"

#include <cstdlib>
#include <filesystem>
#include <map>

#include "formats/PcxEncode.h"
#include "formats/SffWriter.h"

namespace tarvolin::bench {

void WriteGeneratedSff(const std::string& path, int count) {
    Palette pal{};
    for (size_t i = 0; i < pal.size(); ++i) pal[i] = static_cast<uint8_t>(i);
    uint32_t seed = 12345;
    auto writer = SffFileWriter::Create(path, kSharedPaletteMode);
    if (!writer) std::abort();
    for (int i = 0; i < count; ++i) {
        std::vector<uint8_t> px(96 * 96);
        for (auto& p : px) p = static_cast<uint8_t>((seed = seed * 1103515245u + 12345u) >> 24);
        SffSprite s;
        s.GroupNo = static_cast<uint16_t>(i / 100);
        s.ItemNo = static_cast<uint16_t>(i % 100);
        s.PalFlag = i == 0 ? 0 : 1;
        s.Data = EncodePcx(96, 96, px, pal);
        if (i > 0) s.Data.resize(s.Data.size() - 768);
        if (!writer.value().Add(s)) std::abort();
    }
    if (!writer.value().Finish()) std::abort();
}

const std::string& GeneratedSffPath(int count) {
    static std::map<int, std::string> made;
    auto it = made.find(count);
    if (it != made.end()) return it->second;
    const std::string path =
        (std::filesystem::temp_directory_path() / ("tarvolin-bench-" + std::to_string(count) + ".sff")).string();
    WriteGeneratedSff(path, count);
    return made[count] = path;
}

}  // namespace tarvolin::bench
