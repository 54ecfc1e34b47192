// tarvolin-cli text FILE.sff OUT.txt: the parameter text and, beside it, the build batch
// (with "pause"), as Make Text does. The batch runs the sprmaker.exe that lies beside
// this program.
#include <cstdio>

#include "Commands.h"
#include "rebuild/BuildBatch.h"
#include "rebuild/ParamText.h"
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
    const std::string& textPath = args[1];
    const std::string paramName = GetFileName(textPath);
    if (auto s = WriteParamText(textPath, table, state.SffNameCaption); !s) {
        PrintError(ctx, s.error());
        return 2;
    }
    const std::string batchPath = GetFolder(textPath) + BatchNameFor(paramName);
    if (auto s = WriteBuildBat(batchPath, paramName, true, GetFolder(ctx.ProgramPath)); !s) {
        PrintError(ctx, s.error());
        return 2;
    }
    return 0;
}

}  // namespace tarvolin::cli
