#pragma once
// What every tarvolin-cli command shares: the settings (for the message texts) and error
// output.
#include <string>

#include "config/Settings.h"

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

}  // namespace tarvolin::cli
