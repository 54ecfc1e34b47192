#include "CliSession.h"

#include "base/TextHelpers.h"

namespace tarvolin::cli {

CliSession::CliSession(const Context& ctx, bool buildPauses)
    : Ui(ctx), Work(ctx.Loaded.Ini, Ui, SessionSetup{GetFolder(ctx.ProgramPath), buildPauses}) {}

bool CliSession::Open(const std::string& sffPath) {
    Ui.FileAnswer = sffPath;
    return Work.Open() == CommandEnd::Done;
}

int ExitStatus(CommandEnd end) { return end == CommandEnd::Done ? 0 : 2; }

}  // namespace tarvolin::cli
