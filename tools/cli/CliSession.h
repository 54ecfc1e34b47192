#pragma once
// A command's session: the window's commands run over the command line's answers, on the
// SFF that the command names.
#include <string>

#include "CliUi.h"
#include "mainwin/Session.h"

namespace tarvolin::cli {

class CliSession {
public:
    // `buildPauses`: whether the batch of a build ends with "pause".
    CliSession(const Context& ctx, bool buildPauses);

    // Opens `sffPath` as Open SFF does; false when it was refused (its message printed).
    bool Open(const std::string& sffPath);

    CliUi Ui;
    Session Work;
};

// The exit status for how a command ended: 0 when done, 2 otherwise (its message, where it
// has one, was printed).
int ExitStatus(CommandEnd end);

}  // namespace tarvolin::cli
