#pragma once
// The build batch: six lines (seven with "pause") that feed the parameter text to
// sprmaker.exe beside the program and send its output to CreateLog.txt.
#include <string>

#include "base/Result.h"

namespace tarvolin {

// Where the batch sends what sprmaker.exe writes, in the batch's folder.
inline constexpr const char* kBuildLogName = "CreateLog.txt";

// The batch's bare name for a parameter file's bare name: its CP932 bytes less the last
// four, then "Build.bat" ("fighter_SFF.txt" -> "fighter_SFFBuild.bat").
std::string BatchNameFor(const std::string& paramBareName);

// The bytes of the batch (CP932, CR LF). `programFolder` is the folder of the running
// program, ending with '/'; one that holds a double quote is refused (ERR_PROGRAM_QUOTE),
// since the quoted path of the builder cannot hold one.
Result<std::string> BuildBatBytes(const std::string& paramName, bool pause, const std::string& programFolder);

}  // namespace tarvolin
