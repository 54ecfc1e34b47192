// tarvolin-cli build FILE.sff DIR: what Build SFF does, without windows. The PCX files, the
// parameter text and a batch without "pause" go into DIR, the batch runs there with its
// console output on standard output, and the new SFF must then stand in DIR and open.
#include <cstdio>
#include <filesystem>

#include "CliSession.h"
#include "Commands.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"

namespace tarvolin::cli {

int RunBuild(const Context& ctx, const Args& args) {
    const std::string folder = AsFolder(args[1]);
    std::string built;
    {
        CliSession cli(ctx, false);  // no "pause": nobody is there to press a key
        if (!cli.Open(args[0])) return 2;
        // Unlike the folder dialog's answer, a folder named on the command line is made when
        // it is missing: scripts name a fresh output folder more often than not.
        std::error_code ec;
        std::filesystem::create_directories(folder, ec);
        if (ec) return ExitStatus(ctx, Error{msg::WriteFailed, folder, "the folder cannot be made: " + ec.message()});
        cli.Ui.FolderAnswer = folder;
        // Build SFF itself tells whether the new SFF was made (the log's line when not).
        if (const CommandEnd end = cli.Work.BuildSff(); end != CommandEnd::Done) {
            if (end == CommandEnd::NothingToDo) std::fprintf(stderr, "%s: no sprites to build\n", Shown(args[0]).c_str());
            return 2;
        }
        built = cli.Work.BuiltPath();
    }  // the SFF opened for the build is let go before the new one is read
    CliSession rebuilt(ctx, false);
    if (!rebuilt.Open(built)) return 2;
    std::printf("%s: %d sprites\n", Shown(built).c_str(), rebuilt.Work.Table.RowCount());
    return 0;
}

}  // namespace tarvolin::cli
