#pragma once
// The subcommands of tarvolin-cli. Each takes the words after its name, already counted
// by the dispatcher in main.cpp, and returns the exit status.
#include <string>
#include <vector>

#include "CliCommon.h"

namespace tarvolin::cli {

using Args = std::vector<std::string>;

int RunList(const Context& ctx, const Args& args);
int RunSample(const Context& ctx, const Args& args);
int RunExport(const Context& ctx, const Args& args);
int RunText(const Context& ctx, const Args& args);
int RunBuild(const Context& ctx, const Args& args);
int RunCheck(const Context& ctx, const Args& args);

}  // namespace tarvolin::cli
