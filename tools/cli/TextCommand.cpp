// tarvolin-cli text FILE.sff OUT.txt: the parameter text and, beside it, the build batch
// (with "pause"), as Make Text does. The batch runs the sprmaker.exe that lies beside
// this program.
#include <cstdio>

#include "Commands.h"
#include "rebuild/BuildFiles.h"
#include "sff/TextHelpers.h"

namespace tarvolin::cli {

int RunText(const Context& ctx, const Args& args) {
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: tarvolin-cli text FILE.sff OUT.txt\n");
        return 1;
    }
    SffState state;
    SpriteTable table;
    if (!OpenForCli(ctx, args[0], state, table)) return 2;
    // The same two files as Make Text: both made in memory first, then written whole.
    auto texts = PrepareBuildTexts(table, state.SffNameCaption, args[1], true, GetFolder(ctx.ProgramPath));
    Status written = texts ? WriteBuildTexts(texts.value()) : Status(texts.error());
    if (!written) {
        PrintError(ctx, written.error());
        return 2;
    }
    return 0;
}

}  // namespace tarvolin::cli
