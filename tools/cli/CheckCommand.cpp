// tarvolin-cli check [--quiet] FILE.sff...: for each file, a line for each kind of quirk it
// holds (how many subfiles, the first of them), what an engine shows there and what a
// rebuild makes of it. The exit status is the worst of the files: 0 when every file is
// clean, 1 when a rebuild repairs or keeps everything found, 2 when a file can't be read
// or a rebuild would be refused.
#include <algorithm>
#include <cstdio>

#include "CliCommon.h"
#include "Commands.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "rebuild/RowCheck.h"
#include "sff/SffReader.h"

namespace tarvolin::cli {

namespace {

enum Status { kClean = 0, kQuirky = 1, kBroken = 2 };

// The pictures of the file that the builder refuses, as one more kind of quirk.
void NoteRefusedPictures(const SffState& state, const SpriteTable& table, std::vector<QuirkFound>& quirks) {
    std::vector<int> subfiles;
    for (const RowProblem& p : FindRowProblems(&state, table))
        if (p.Why.Key == msg::PcxFormat) subfiles.push_back(std::stoi(table.Cell(p.Place, Column::PPos)));
    std::sort(subfiles.begin(), subfiles.end());
    for (int subfile : subfiles) NoteQuirk(quirks, QuirkKind::RefusedPicture, static_cast<size_t>(subfile));
}

std::string QuirkLine(const std::string& file, const QuirkFound& q) {
    const QuirkDescription& d = Describe(q.Kind);
    std::string where;
    if (!d.OfTheHeader)
        where = std::to_string(q.Count) + (q.Count == 1 ? " subfile" : " subfiles") + ", first " +
                std::to_string(q.FirstSubfile) + ": ";
    const char* outcome = d.Outcome == RebuildOutcome::Repairs  ? "repairs it: "
                          : d.Outcome == RebuildOutcome::Keeps ? "keeps it: "
                                                               : "is refused: it ";
    return Shown(file) + ": " + d.Name + ": " + where + d.What + "; an engine shows " + d.EngineShows +
           "; a rebuild " + outcome + d.Rebuild;
}

// Checks one file and prints its lines; gives its status.
Status CheckFile(const Context& ctx, const std::string& path, bool quiet) {
    SffState state;
    SpriteTable table;
    auto opened = OpenSff(path, GetFileName(path), state, table, ctx.Loaded.Ini, [](const std::string&, int) { return true; });
    std::vector<QuirkFound> quirks;
    std::optional<Error> unreadable;
    if (!opened) unreadable = opened.error();
    else quirks = opened.value().Quirks;
    if (!unreadable) NoteRefusedPictures(state, table, quirks);
    if (!unreadable) {
        if (auto unchanged = state.SffBytes.Unchanged(); !unchanged) unreadable = unchanged.error();
    }
    std::string out;
    Status status = kClean;
    if (unreadable) {
        out = Shown(path) + ": unreadable: " + Shown(ctx.Loaded.Ini.Message(unreadable->Key)) + " " +
              Shown(unreadable->Detail) + "\n";
        status = kBroken;
    } else if (quirks.empty()) {
        out = Shown(path) + ": clean\n";
    }
    for (const QuirkFound& q : quirks) {
        out += QuirkLine(path, q) + "\n";
        status = std::max(status, Describe(q.Kind).Outcome == RebuildOutcome::Refuses ? kBroken : kQuirky);
    }
    if (!quiet) std::fwrite(out.data(), 1, out.size(), stdout);
    return status;
}

}  // namespace

int RunCheck(const Context& ctx, const Args& args) {
    const bool quiet = std::find(args.begin(), args.end(), "--quiet") != args.end();
    int worst = kClean;
    bool anyFile = false;
    for (const std::string& arg : args) {
        if (arg == "--quiet") continue;
        anyFile = true;
        worst = std::max(worst, static_cast<int>(CheckFile(ctx, arg, quiet)));
    }
    if (!anyFile) {
        std::fprintf(stderr, "usage: tarvolin-cli check [--quiet] FILE.sff...\n");
        return 1;  // wrong usage, as for every command
    }
    return worst;
}

}  // namespace tarvolin::cli
