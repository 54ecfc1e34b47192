// tarvolin-cli export FILE.sff DIR: every sprite as a PCX file into DIR, as Save All PCX
// does.
#include "CliSession.h"
#include "Commands.h"

namespace tarvolin::cli {

int RunExport(const Context& ctx, const Args& args) {
    CliSession cli(ctx, true);
    if (!cli.Open(args[0])) return 2;
    cli.Ui.FolderAnswer = AsFolder(args[1]);
    return ExitStatus(cli.Work.SavePcx());
}

}  // namespace tarvolin::cli
