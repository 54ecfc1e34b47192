#pragma once
// What every tarvolin-cli command shares: the settings (for the message texts), error
// output, and opening an SFF the way the main window does, answering the palette-mode
// warning with Yes after printing it.
#include <string>

#include "config/Settings.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin::cli {

struct Context {
    std::string ProgramPath;  // the running tarvolin-cli
    Settings Loaded;          // tarvolin.ini beside the program, or the defaults
};

Context MakeContext(const char* argv0);

// Prints the text on standard error, with CR LF turned into line ends.
void PrintMessage(const std::string& text);
void PrintError(const Context& ctx, const Error& error);

// The exit status for the end of a command: 0, or 2 after printing the error.
int ExitStatus(const Context& ctx, const Status& status);

// A folder given on the command line, with the closing '/' that folders held as text have.
std::string AsFolder(const std::string& folder);

// Opens `path` into state and table. On a refusal prints the message and returns false.
bool OpenForCli(const Context& ctx, const std::string& path, SffState& state, SpriteTable& table);

}  // namespace tarvolin::cli
