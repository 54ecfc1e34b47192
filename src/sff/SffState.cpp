#include "sff/SffState.h"

#include <algorithm>

namespace tarvolin {

std::vector<uint8_t> CutSubfile(const SffState& state, const SubfileRecord& record) {
    std::vector<uint8_t> out;
    const int64_t size = static_cast<int64_t>(state.SffBytes.size());
    const int64_t start = std::max<int64_t>(record.DataStart, 0);
    const int64_t end = std::min<int64_t>(record.DataEnd, size - 1);
    const bool palette = record.PaletteAt >= 0 && record.PaletteAt + static_cast<int64_t>(kPaletteSize) <= size;
    if (end >= start) {
        out.reserve(static_cast<size_t>(end - start + 1) + (palette ? kPaletteSize : 0));
        out.assign(state.SffBytes.begin() + start, state.SffBytes.begin() + end + 1);
    }
    if (palette) {
        const auto at = state.SffBytes.begin() + record.PaletteAt;
        out.insert(out.end(), at, at + kPaletteSize);
    }
    return out;
}

}  // namespace tarvolin
