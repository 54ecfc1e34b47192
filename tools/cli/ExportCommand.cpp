// tarvolin-cli export FILE.sff DIR: every sprite as a PCX file into DIR, as Save All PCX
// does.

#include "Commands.h"
#include "sff/PcxExport.h"

namespace tarvolin::cli {

int RunExport(const Context& ctx, const Args& args) {
    SffState state;
    SpriteTable table;
    if (!OpenForCli(ctx, args[0], state, table)) return 2;
    return ExitStatus(ctx, SaveAllPcx(state, table, AsFolder(args[1])));
}

}  // namespace tarvolin::cli
