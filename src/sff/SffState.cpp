#include "sff/SffState.h"

#include <algorithm>

#include "base/TextHelpers.h"

namespace tarvolin {

namespace {

// The data range, clipped to the file: [start, end) in SffBytes, and whether a palette
// goes behind it.
struct CutPlan {
    uint64_t Start = 0;
    uint64_t End = 0;
    bool Palette = false;
};

CutPlan PlanOf(const SffState& state, const SubfileRecord& record) {
    const auto size = static_cast<int64_t>(state.SffBytes.size());
    const int64_t start = std::max<int64_t>(record.DataStart, 0);
    const int64_t end = std::min<int64_t>(static_cast<int64_t>(record.DataEnd) + 1, size);
    CutPlan plan;
    plan.Start = static_cast<uint64_t>(start);
    plan.End = static_cast<uint64_t>(std::max(start, end));
    plan.Palette = record.PaletteAt >= 0 && record.PaletteAt + static_cast<int64_t>(kPaletteSize) <= size;
    return plan;
}

}  // namespace

const Palette* PaletteReadAt(const SffState& state, int32_t offset) {
    const auto known = std::lower_bound(state.Palettes.begin(), state.Palettes.end(), offset,
                                        [](const auto& p, int32_t at) { return p.first < at; });
    return known != state.Palettes.end() && known->first == offset ? &known->second : nullptr;
}

uint64_t CutSize(const SffState& state, const SubfileRecord& record) {
    const CutPlan plan = PlanOf(state, record);
    return plan.End - plan.Start + (plan.Palette ? kPaletteSize : 0);
}

void CutSubfileUnchecked(const SffState& state, const SubfileRecord& record, std::vector<uint8_t>& out,
                         uint64_t limit) {
    const CutPlan plan = PlanOf(state, record);
    const uint64_t data = std::min(plan.End - plan.Start, limit);
    const uint64_t palette = plan.Palette ? std::min<uint64_t>(kPaletteSize, limit - data) : 0;
    out.resize(data + palette);
    // A read that fails counts as a change of the file, which Unchanged() then reports.
    state.SffBytes.ReadUnchecked(plan.Start, out.data(), data);
    if (palette == 0) return;
    if (const Palette* known = PaletteReadAt(state, record.PaletteAt))
        std::copy_n(known->begin(), palette, out.begin() + static_cast<std::ptrdiff_t>(data));
    else
        state.SffBytes.ReadUnchecked(static_cast<uint64_t>(record.PaletteAt), out.data() + data, palette);
}

Status CutSubfileInto(const SffState& state, const SubfileRecord& record, std::vector<uint8_t>& out, uint64_t limit) {
    CutSubfileUnchecked(state, record, out, limit);
    return state.SffBytes.Unchanged();
}

std::vector<uint8_t> CutSubfile(const SffState& state, const SubfileRecord& record) {
    std::vector<uint8_t> out;
    if (!CutSubfileInto(state, record, out)) out.clear();
    return out;
}

const SubfileRecord* RecordOfRow(const SffState& state, const SpriteRow& row) {
    const auto pos = ParseNumber(row[Column::PPos]);
    if (!pos || *pos < 0 || *pos >= static_cast<double>(state.Subfiles.size()) || *pos != static_cast<long>(*pos))
        return nullptr;
    return &state.Subfiles[static_cast<size_t>(*pos)];
}

}  // namespace tarvolin
