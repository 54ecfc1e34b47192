#pragma once
// Runs a built program as the build batch does: in a given working folder, with a text on
// its standard input, its output captured.
#include <string>
#include <vector>

namespace tarvolin::test {

struct RunResult {
    int Status = -1;  // exit status; -1 when it did not exit normally
    std::string Out;
    std::string Err;
};

RunResult RunProgram(const std::string& program, const std::vector<std::string>& args, const std::string& workFolder,
                     const std::string& input);

}  // namespace tarvolin::test
