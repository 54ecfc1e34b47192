// tarvolin-cli export [--format pcx|png] FILE.sff DIR: every sprite as a PCX file into DIR,
// as Save All PCX does, or as a PNG file.
#include <cstdio>

#include "CliSession.h"
#include "Commands.h"

namespace tarvolin::cli {

int RunExport(const Context& ctx, const Args& args) {
    const std::string format = args.size() == 4 ? args[1] : "pcx";
    if (format != "pcx" && format != "png") {
        std::fprintf(stderr, "tarvolin-cli: unknown format '%s': pcx or png\n", format.c_str());
        return 1;
    }
    CliSession cli(ctx, true);
    if (!cli.Open(args[args.size() - 2])) return 2;
    cli.Ui.FolderAnswer = AsFolder(args.back());
    return ExitStatus(cli.Work.SaveAll(format == "png" ? PictureFormat::Png : PictureFormat::Pcx));
}

}  // namespace tarvolin::cli
