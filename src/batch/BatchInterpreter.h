#pragma once
// Walks the steps of a build batch for a runner. The steps that end at once (echo, cls,
// lines that are not supported) are done here through the output callbacks; a program to
// run and a pause are handed back to the runner, which does them its own way (the console
// window asynchronously, the command-line tool blocking) and then asks for the next step.
// The console texts of the steps come from here too, so that both runners print the same.
#include <functional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "batch/BatchScript.h"

namespace tarvolin {

struct BatchOutput {
    std::function<void(const std::string&)> Print;  // one line, no line end
    std::function<void()> Clear;                     // "cls"; may be empty
};

class BatchInterpreter {
public:
    // `folder`: the batch's folder, ending with '/'.
    BatchInterpreter(std::vector<BatchStep> steps, std::string folder);

    // Does the steps up to the next Run or Pause and returns it (a Pause has already
    // printed its "press any key" line); nullptr when the batch is done.
    const BatchStep* Advance(const BatchOutput& out);

    const std::string& Folder() const { return folder_; }

private:
    std::vector<BatchStep> steps_;
    std::string folder_;
    size_t next_ = 0;
    bool echo_ = true;
};

// The file of a batch read and parsed; the error names the file when it can't be read.
Result<std::vector<BatchStep>> LoadBatch(const std::string& path);

// A Run step made concrete for the batch's folder: absolute program and file paths. A
// program without a folder part is looked for in the batch's folder, as the batch's own
// working directory is searched first by the shell it was written for.
struct RunPlan {
    std::string Program;
    std::vector<std::string> Args;
    std::string StdinPath;   // empty: no input
    std::string StdoutPath;  // empty: the console
    bool AppendStdout = false;
};
RunPlan PlanRun(const BatchStep& step, const std::string& folder);

// Console lines for what went wrong in a step; the batch goes on after each.
std::string CannotRunText(const std::string& program, const std::string& reason);
std::string CannotOpenText(const std::string& file, bool forOutput, const std::string& reason);
std::string CannotFinishText(const std::string& file, const std::string& reason);
std::string UnsupportedText(const std::string& line);
std::string PressAnyKeyText();

}  // namespace tarvolin
