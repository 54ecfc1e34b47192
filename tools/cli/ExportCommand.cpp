// tarvolin-cli export FILE.sff DIR: every sprite as a PCX file into DIR, as Save All PCX
// does.
#include <cstdio>

#include "Commands.h"
#include "rebuild/PcxExport.h"

namespace tarvolin::cli {

int RunExport(const Context& ctx, const Args& args) {
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: tarvolin-cli export FILE.sff DIR\n");
        return 1;
    }
    SffState state;
    SpriteTable table;
    if (!OpenForCli(ctx, args[0], state, table)) return 2;
    if (auto s = SaveAllPcx(state, table, AsFolder(args[1])); !s) {
        PrintError(ctx, s.error());
        return 2;
    }
    return 0;
}

}  // namespace tarvolin::cli
