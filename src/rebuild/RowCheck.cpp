#include "rebuild/RowCheck.h"

#include <climits>
#include <cstdlib>
#include <map>
#include <sys/stat.h>

#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/PictureFile.h"
#include "rebuild/PictureIntake.h"

namespace tarvolin {

namespace {

std::string RowName(const SpriteTable& table, int place) {
    return "row " + std::to_string(place) + " (GroupNo " + table.Cell(place, Column::GroupNo) + ", ItemNo " +
           table.Cell(place, Column::ItemNo) + ", P.Pos " + table.Cell(place, Column::PPos) + ")";
}

bool HasOwnPicture(const SpriteTable& table, int place) { return !table.Cell(place, Column::PcxPath).empty(); }

RowProblem Problem(const SpriteTable& table, int place, const char* key, const std::string& file,
                   const std::string& what) {
    return RowProblem{place, Error{key, file, RowName(table, place) + what}};
}

// The row's picture file of its own, read and judged as the builder will.
std::optional<RowProblem> OwnPictureProblem(const SpriteTable& table, int place) {
    const std::string path = table.Cell(place, Column::PcxPath) + table.Cell(place, Column::PcxName);
    auto bytes = ReadPictureFile(path);
    if (!bytes) return Problem(table, place, bytes.error().Key.c_str(), path, ": " + bytes.error().Detail);
    if (auto refused = JudgePicture(bytes.value(), bytes.value().size()).Refusal)
        return Problem(table, place, msg::PcxFormat, path, ": " + *refused);
    return std::nullopt;
}

// Where a file is kept: its folder (as the system knows it, whatever name leads there)
// and its name in that folder.
struct Entry {
    dev_t Device = 0;
    ino_t Folder = 0;
    std::string Name;
    auto operator<=>(const Entry&) const = default;
};

std::optional<Entry> EntryOf(const std::string& folder, const std::string& name) {
    struct stat st {};
    if (stat(folder.empty() ? "." : folder.c_str(), &st) != 0) return std::nullopt;
    return Entry{st.st_dev, st.st_ino, name};
}

// The rows whose own picture lies where the export would write: under the name of the
// path they give, or where that path leads through links.
std::map<Entry, int> OwnPictureEntries(const SpriteTable& table) {
    std::map<Entry, int> entries;
    for (int place = 1; place <= table.RowCount(); ++place) {
        if (!HasOwnPicture(table, place)) continue;
        const std::string path = table.Cell(place, Column::PcxPath) + table.Cell(place, Column::PcxName);
        if (auto e = EntryOf(GetFolder(path), GetFileName(path))) entries.emplace(*e, place);
        char real[PATH_MAX];
        if (realpath(path.c_str(), real))
            if (auto e = EntryOf(GetFolder(real), GetFileName(real))) entries.emplace(*e, place);
    }
    return entries;
}

void FindClashes(const SpriteTable& table, const std::string& folder, PictureFormat format,
                 const std::vector<int>& places, std::vector<RowProblem>& problems) {
    const std::map<Entry, int> own = OwnPictureEntries(table);
    if (own.empty()) return;
    for (const int place : places) {
        if (HasOwnPicture(table, place)) continue;
        const std::string name = ExportName(table.Row(place), format);
        const auto target = EntryOf(folder, name);
        const auto hit = target ? own.find(*target) : own.end();
        if (hit == own.end()) continue;
        const std::string picture = table.Cell(hit->second, Column::PcxPath) + table.Cell(hit->second, Column::PcxName);
        problems.push_back(Problem(table, place, msg::PictureClash, picture,
                                   ": its export " + folder + name + " would replace the picture file " + picture +
                                       " of " + RowName(table, hit->second)));
    }
}

// The rows `places`, or every row when it is empty.
std::vector<int> RowsOf(const SpriteTable& table, const std::vector<int>& places) {
    if (!places.empty()) return places;
    std::vector<int> all(static_cast<size_t>(table.RowCount()));
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int>(i) + 1;
    return all;
}

}  // namespace

std::vector<RowProblem> FindRowProblems(const SffState* state, const SpriteTable& table, const std::string& folder,
                                        PictureFormat format, const std::vector<int>& places) {
    std::vector<RowProblem> problems;
    std::vector<uint8_t> head;
    const std::vector<int> rows = RowsOf(table, places);
    for (const int place : rows) {
        if (HasOwnPicture(table, place)) {
            if (auto p = OwnPictureProblem(table, place)) problems.push_back(std::move(*p));
        } else if (table.Cell(place, Column::PcxName).empty()) {
            problems.push_back(Problem(table, place, msg::RowWithoutData, {},
                                       " has no picture data: the SFF's subfile chain ends before it"));
        } else if (const SubfileRecord* record = state ? RecordOfRow(*state, table.Row(place)) : nullptr) {
            // A header opening found good, with picture data behind it, needs no second look.
            if (record->HeaderTaken) continue;
            CutSubfileUnchecked(*state, *record, head, kPcxHeaderSize);
            if (auto refused = JudgePicture(head, CutSize(*state, *record)).Refusal)
                problems.push_back(Problem(table, place, msg::PcxFormat, state->SffNameCaption, ": " + *refused));
        }
    }
    if (state) {
        // The heads were read without a look for a change: one look vouches for them all.
        if (auto s = state->SffBytes.Unchanged(); !s) return {RowProblem{0, s.error()}};
        FindClashes(table, folder, format, rows, problems);
    }
    return problems;
}

Status Refusal(const std::vector<RowProblem>& problems) {
    if (problems.empty()) return Ok();
    constexpr size_t kNamed = 10;
    Error e = problems.front().Why;
    for (size_t i = 1; i < std::min(problems.size(), kNamed); ++i) e.Detail += "; " + problems[i].Why.Detail;
    if (problems.size() > kNamed) e.Detail += "; and " + std::to_string(problems.size() - kNamed) + " more row(s)";
    return e;
}

Status CheckRowsForBuild(const SpriteTable& table) { return Refusal(FindRowProblems(nullptr, table)); }

Status CheckRowsBeforeExport(const SffState& state, const SpriteTable& table, const std::string& folder,
                             PictureFormat format, const std::vector<int>& places) {
    return Refusal(FindRowProblems(&state, table, folder, format, places));
}

}  // namespace tarvolin
