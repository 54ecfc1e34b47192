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

// The log, written in whole lines to a file descriptor (standard output). A write cut
// short by the file-size limit (ulimit -f) or a full disk is taken back to the last whole
// line, and nothing more is written: the log never ends in half a line.
class LogOutput {
public:
    explicit LogOutput(int fd) : fd_(fd) {}
    ~LogOutput() { Flush(); }
    // Whole lines, each ended by '\n'; kept until enough of them make a write worth it.
    void Write(const std::string& lines);
    // Writes what is kept; false once the log could not be written whole.
    bool Flush();
    // Why the log stops early; empty while it is whole.
    const std::string& Failure() const { return failure_; }

private:
    int fd_;
    std::string pending_;
    std::string failure_;
};

}  // namespace tarvolin::sprmaker
