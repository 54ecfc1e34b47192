// tarvolin-cli text FILE.sff OUT.txt: the parameter text and, beside it, the build batch
// (with "pause"), as Make Text does. The batch runs the sprmaker.exe that lies beside
// this program.

#include "Commands.h"
#include "base/TextHelpers.h"
#include "rebuild/BuildFiles.h"

namespace tarvolin::cli {

int RunText(const Context& ctx, const Args& args) {
    SffState state;
    SpriteTable table;
    if (!OpenForCli(ctx, args[0], state, table)) return 2;
    // The same two files as Make Text: both made in memory first, then written whole.
    auto texts = PrepareBuildTexts(table, state.SffNameCaption, args[1], true, GetFolder(ctx.ProgramPath));
    return ExitStatus(ctx, texts ? WriteBuildTexts(texts.value()) : Status(texts.error()));
}

}  // namespace tarvolin::cli
