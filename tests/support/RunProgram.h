#pragma once
// Runs a built program as a separate process and collects its exit status and output.
#include <string>
#include <vector>

namespace tarvolin::test {

struct ProgramRun {
    int Status = -1;  // exit status; -1 when it did not exit normally
    std::string Out;
    std::string Err;
};

// `args` as they are (no shell); `stdinFile` empty: no input; `workDir` empty: the current folder.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& args,
                      const std::string& stdinFile = {}, const std::string& workDir = {});

}  // namespace tarvolin::test
