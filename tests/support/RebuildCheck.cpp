#include "support/RebuildCheck.h"

#include <map>
#include <utility>

#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "formats/Pcx.h"
#include "sff/SffReader.h"

namespace tarvolin::test {

namespace {

struct Sprite {
    int AxisX = 0, AxisY = 0;
    int Columns = 0, Lines = 0;
    std::vector<uint8_t> Cells;
};
using Sprites = std::map<std::pair<int, int>, Sprite>;

bool Load(const std::string& path, Sprites& out, std::vector<std::string>& diffs) {
    SffState state;
    SpriteTable table;
    auto opened = OpenSff(path, GetFileName(path), state, table, DefaultAppIni(), [](const std::string&, int) { return true; });
    if (!opened) {
        diffs.push_back(path + " does not open: " + opened.error().Key + " " + opened.error().Detail);
        return false;
    }
    for (const SubfileRecord& r : state.Subfiles) {
        std::vector<uint8_t> pcx = CutSubfile(state, r);
        PcxPixels px = PcxRle(pcx, ReadPcxHeader(pcx));
        out[{r.GroupNo, r.ItemNo}] = Sprite{r.AxisX, r.AxisY, px.Columns(), px.Lines(), std::move(px.Cells)};
    }
    return true;
}

}  // namespace

std::vector<std::string> RebuildDifferences(const std::string& originalSff, const std::string& rebuiltSff) {
    std::vector<std::string> diffs;
    Sprites before, after;
    if (!Load(originalSff, before, diffs) || !Load(rebuiltSff, after, diffs)) return diffs;
    if (before.size() != after.size())
        diffs.push_back(std::to_string(before.size()) + " sprites became " + std::to_string(after.size()));
    for (const auto& [key, a] : before) {
        std::string name = std::to_string(key.first) + "," + std::to_string(key.second);
        auto it = after.find(key);
        if (it == after.end()) {
            diffs.push_back(name + " is missing");
            continue;
        }
        const Sprite& b = it->second;
        if (a.AxisX != b.AxisX || a.AxisY != b.AxisY) diffs.push_back(name + ": axis differs");
        if (a.Columns != b.Columns || a.Lines != b.Lines || a.Cells != b.Cells) diffs.push_back(name + ": pixels differ");
    }
    return diffs;
}

}  // namespace tarvolin::test
