// tarvolin-cli export [--format pcx|png] FILE.sff DIR: every sprite as a PCX file into DIR,
// as Save All PCX does, or as a PNG file.
#include <cstdio>
#include <optional>

#include "CliSession.h"
#include "Commands.h"
#include "base/AtomicFile.h"
#include "base/FolderLock.h"
#include "rebuild/RowCheck.h"
#include "sff/PngExport.h"

namespace tarvolin::cli {

namespace {

// The PNG export with the PCX export's guards: rows without data are refused before
// anything is written, and the folder's work lock is held while it writes.
Status SaveAllPngInto(const Session& work, const std::string& folder) {
    if (auto checked = CheckRowsHaveData(work.Table); !checked) return checked;
    auto lock = FolderLock::Take(folder, kWorkFolderLock);
    if (!lock) return lock.error();
    RemoveStaleTemporaries(folder);
    return SaveAllPng(work.State, work.Table, folder);
}

}  // namespace

int RunExport(const Context& ctx, const Args& args) {
    const std::string format = args.size() == 4 ? args[1] : "pcx";
    if (format != "pcx" && format != "png") {
        std::fprintf(stderr, "tarvolin-cli: unknown format '%s': pcx or png\n", format.c_str());
        return 1;
    }
    CliSession cli(ctx, true);
    if (!cli.Open(args[args.size() - 2])) return 2;
    const std::string folder = AsFolder(args.back());
    if (format == "png") return ExitStatus(ctx, SaveAllPngInto(cli.Work, folder));
    cli.Ui.FolderAnswer = folder;
    return ExitStatus(cli.Work.SavePcx());
}

}  // namespace tarvolin::cli
