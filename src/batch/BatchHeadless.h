#pragma once
// Runs a build batch without a window: the steps one after another, each program as a
// child process in the batch's folder, waited for before the next line. What a console
// would show goes to `out.Print` line by line. "pause" prints its line and goes on at once,
// as there is no keyboard to wait for; "cls" calls `out.Clear` where there is one.
#include <optional>
#include <string>

#include "base/Result.h"
#include "batch/BatchInterpreter.h"

namespace tarvolin {

// The batch at `batchPath`; the error (ERR_BATCH_READ) only when it can't be read. A
// program that can't be started, a file that can't be opened and an unsupported line are
// reported on the console and the batch goes on.
Status RunBatchHeadless(const std::string& batchPath, const BatchOutput& out);

// Why the program can't be started (missing, not executable), or nothing.
std::optional<std::string> ProgramProblem(const std::string& program);

// One program of a batch, started in `folder` with the plan's redirections, waited for.
// Its standard error, and its standard output when not redirected, go to `print` line by
// line. Returns the console line that reports a failure to start, or nothing.
std::optional<std::string> RunProgramHeadless(const RunPlan& plan, const std::string& folder,
                                              const std::function<void(const std::string&)>& print);

}  // namespace tarvolin
