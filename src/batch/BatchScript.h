#pragma once
// The build batch read back as a list of steps. The runner understands the lines that
// Tarvolin writes ("@echo off", "echo TEXT", a program with "<" and ">", "cls", "pause")
// and a little more that hand-edited batches commonly hold ("echo on", "rem", arguments,
// ">>"); every other line becomes an Unsupported step that the runner reports and skips.
// The program line in the form Tarvolin writes, `"PROGRAM" < NAME > LOG`, takes NAME
// unquoted with any character a file name may hold; in every other program line, '|', '&'
// or a handle redirection ("2>") outside quotes makes the line unsupported.
#include <string>
#include <string_view>
#include <vector>

namespace tarvolin {

enum class StepKind { EchoOff, EchoOn, Echo, Run, Cls, Pause, Unsupported };

struct BatchStep {
    StepKind Kind = StepKind::Unsupported;
    std::string Line;    // the line as written, UTF-8, without the leading '@'
    bool Quiet = false;  // the line began with '@': never echoed
    std::string Text;    // Echo: what it prints
    // Run: the program (quotes removed), its arguments, and the redirections (bare or
    // relative names are relative to the batch's folder; empty: none).
    std::string Program;
    std::vector<std::string> Args;
    std::string StdinFile;
    std::string StdoutFile;
    bool AppendStdout = false;  // ">>" rather than ">"
};

// The steps of a batch given as its bytes (CP932, CR LF or LF). Empty lines and comments
// ("rem", "::") give no step.
std::vector<BatchStep> ParseBatch(std::string_view cp932Bytes);

}  // namespace tarvolin
