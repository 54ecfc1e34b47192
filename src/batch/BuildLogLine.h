#pragma once
// The line of a build's log that tells why the builder failed, for the console's status
// line and the main window's word after the build.
#include <string>

namespace tarvolin {

// The last line of the log at `logPath` that begins with "Error", or else its last line
// that holds anything; a sentence saying so when the log is missing or empty. The log's
// CP932 text comes back as UTF-8.
std::string LogErrorLine(const std::string& logPath);

}  // namespace tarvolin
