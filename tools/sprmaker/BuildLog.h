#pragma once
// The lines sprmaker.exe writes to its log (standard output, which the build batch sends
// to CreateLog.txt).
#include <string>

#include "SffBuilder.h"
#include "base/Result.h"

namespace tarvolin::sprmaker {

std::string VersionLine();
// The sprite's line, then a warning line for each repair made to it.
std::string SpriteLine(const SpriteAdded& sprite, uint32_t index);
std::string WarningLine(const std::string& file, const std::string& what);
std::string SummaryLines(const std::string& output, const BuildSummary& summary);
// The note on lines that followed the empty line ending the list; empty when none did.
std::string NotReadLine(const BuildPlan& plan);
std::string ErrorLine(const Error& error);
std::string UsageText();

}  // namespace tarvolin::sprmaker
