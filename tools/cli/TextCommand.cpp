// tarvolin-cli text FILE.sff OUT.txt: the parameter text and, beside it, the build batch
// (with "pause"), as Make Text does. The batch runs the sprmaker.exe that lies beside
// this program.
#include "CliSession.h"
#include "Commands.h"

namespace tarvolin::cli {

int RunText(const Context& ctx, const Args& args) {
    CliSession cli(ctx, true);
    if (!cli.Open(args[0])) return 2;
    cli.Ui.FileAnswer = args[1];
    return ExitStatus(cli.Work.MakeText());
}

}  // namespace tarvolin::cli
