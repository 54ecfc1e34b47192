#include "RoundTrip.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "rebuild/ParamText.h"
#include "sff/PcxExport.h"
#include "sff/SffReader.h"
#include "support/RunProgram.h"
#include "support/TestData.h"

namespace tarvolin::test {

bool OpenForRebuild(const std::string& path, OpenedSff& out) {
    out.Path = path;
    auto opened = OpenSff(path, GetFileName(path), out.State, out.Table, DefaultAppIni(),
                          [](const std::string&, int) { return true; });
    if (!opened) {
        ADD_FAILURE() << path << " is refused: " << opened.error().Key << " " << opened.error().Detail;
        return false;
    }
    out.Notices = opened.value().Notices;
    return true;
}

std::vector<uint8_t> Rebuild(const OpenedSff& o, const std::string& folder, std::string& log) {
    if (auto s = SaveAllPcx(o.State, o.Table, folder); !s) {
        ADD_FAILURE() << "export: " << s.error().File << " " << s.error().Detail;
        return {};
    }
    const std::string text = folder + o.State.SffBaseName + "_SFF.txt";
    if (auto s = WriteParamText(text, o.Table, o.State.SffNameCaption); !s) {
        ADD_FAILURE() << "parameter text: " << s.error().Detail;
        return {};
    }
    const auto run = RunProgram(BinDir() + "sprmaker.exe", {}, text, folder);
    log = run.Out;
    if (run.Status != 0) {
        ADD_FAILURE() << "sprmaker.exe: " << run.Err;
        return {};
    }
    return ReadFile(folder + o.State.SffNameCaption);
}

namespace {

std::string FoldedName(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

bool SamePalette(const std::vector<uint8_t>& file, const Palette& colours) {
    return file.size() >= colours.size() && std::equal(file.end() - 768, file.end(), colours.begin());
}

// Whether the rebuilt sprite shows what the original sprite showed.
void CompareEngineViews(const EngineSprite& before, const EngineSprite& after, std::set<std::string>& reasons) {
    if (before.Empty != after.Empty) reasons.insert("empty in one file only");
    if (before.Empty || after.Empty) return;
    if (before.Pixels != after.Pixels) reasons.insert("the engine's pictures differ");
    if (before.HasColours != after.HasColours || before.Colours != after.Colours)
        reasons.insert("the engine's palettes differ");
}

}  // namespace

RowTally CompareRows(const OpenedSff& o, const EngineFile& original, const std::string& folder,
                     const EngineFile& rebuilt) {
    RowTally tally;
    tally.Rows = o.Table.RowCount();
    if (rebuilt.Sprites.size() != static_cast<size_t>(tally.Rows)) {
        ADD_FAILURE() << tally.Rows << " rows became " << rebuilt.Sprites.size() << " sprites";
        return tally;
    }
    // The sprite that holds each file's picture in the new SFF. The first sprite can't be
    // linked to (link index 0 means no link), so its first duplicate holds it again.
    std::map<std::string, size_t> holder;
    for (int place = 1; place <= tally.Rows; ++place) {
        const size_t index = static_cast<size_t>(place - 1);
        const SpriteRow& row = o.Table.Row(place);
        const EngineSprite& after = rebuilt.Sprites[index];
        std::set<std::string> reasons;
        if (DecimalText(after.GroupNo) != row[Column::GroupNo] || DecimalText(after.ItemNo) != row[Column::ItemNo] ||
            DecimalText(after.AxisX) != row[Column::AxisX] || DecimalText(after.AxisY) != row[Column::AxisY])
            reasons.insert("numbers or axis");

        const SubfileRecord& record = o.State.Subfiles.at(std::stoul(row[Column::PPos]));
        if (!after.Empty && DecodeAsEngine(CutSubfile(o.State, record)) != after.Pixels)
            reasons.insert("pixels of the cut-out bytes");
        const std::vector<uint8_t> exported = ReadFile(folder + row[Column::PcxName]);
        if (after.HasColours && exported.size() >= 768 && !SamePalette(exported, after.Colours))
            reasons.insert("not the exported file's palette");

        auto [first, isNew] = holder.emplace(FoldedName(row[Column::PcxName]), index);
        const bool linkExpected = !isNew && first->second != 0;
        if (!isNew && !linkExpected) first->second = index;
        if (after.Linked != linkExpected || (linkExpected && after.LinkIndex != first->second))
            reasons.insert("not linked as the rows name files");
        tally.Linked += after.Linked;

        CompareEngineViews(original.Sprites.at(std::stoul(row[Column::PPos])), after, reasons);
        if (reasons.empty()) {
            ++tally.Equal;
            continue;
        }
        std::string example = "row " + std::to_string(place) + " (" + row[Column::GroupNo] + "," + row[Column::ItemNo] +
                              ", P.Pos " + row[Column::PPos] + "):";
        for (const std::string& reason : reasons) {
            ++tally.Reasons[reason];
            example += " " + reason + ";";
        }
        if (tally.Examples.size() < 3) tally.Examples.push_back(example);
    }
    return tally;
}

std::string TallyLine(const std::string& name, const RowTally& t) {
    std::string line = name + ": " + std::to_string(t.Rows) + " rows, " + std::to_string(t.Equal) + " equal, " +
                       std::to_string(t.Rows - t.Equal) + " differing";
    for (const auto& [reason, count] : t.Reasons) line += "; " + std::to_string(count) + " " + reason;
    return line + "; " + std::to_string(t.Linked) + " linked";
}

}  // namespace tarvolin::test
