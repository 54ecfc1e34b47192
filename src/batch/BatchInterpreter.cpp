#include "batch/BatchInterpreter.h"

#include "base/MessageKeys.h"
#include "base/FileRead.h"

namespace tarvolin {

namespace {
std::string InFolder(const std::string& name, const std::string& folder) {
    if (name.empty() || name.front() == '/') return name;
    return folder + name;
}
}  // namespace

BatchInterpreter::BatchInterpreter(std::vector<BatchStep> steps, std::string folder)
    : steps_(std::move(steps)), folder_(std::move(folder)) {}

const BatchStep* BatchInterpreter::Advance(const BatchOutput& out) {
    while (next_ < steps_.size()) {
        const BatchStep& step = steps_[next_++];
        // With echo on, every line is shown behind the prompt before it runs.
        if (echo_ && !step.Quiet) {
            std::string prompt = folder_.size() > 1 && folder_.back() == '/' ? folder_.substr(0, folder_.size() - 1) : folder_;
            out.Print(prompt + ">" + step.Line);
        }
        switch (step.Kind) {
        case StepKind::EchoOff: echo_ = false; break;
        case StepKind::EchoOn: echo_ = true; break;
        case StepKind::Echo: out.Print(step.Text); break;
        case StepKind::Cls:
            if (out.Clear) out.Clear();
            break;
        case StepKind::Unsupported: out.Print(UnsupportedText(step.Line)); break;
        case StepKind::Pause: out.Print(PressAnyKeyText()); return &step;
        case StepKind::Run: return &step;
        }
    }
    return nullptr;
}

Result<std::vector<BatchStep>> LoadBatch(const std::string& path) {
    // A batch is a few lines; anything near this size is not one.
    constexpr uint64_t kMaxBatchBytes = 1 << 20;
    auto bytes = ReadWholeFile(path, msg::BatchUnreadable, kMaxBatchBytes);
    if (!bytes) return bytes.error();
    const auto& b = bytes.value();
    return ParseBatch(std::string_view(reinterpret_cast<const char*>(b.data()), b.size()));
}

RunPlan PlanRun(const BatchStep& step, const std::string& folder) {
    return RunPlan{InFolder(step.Program, folder), step.Args, InFolder(step.StdinFile, folder),
                   InFolder(step.StdoutFile, folder), step.AppendStdout};
}

std::string CannotRunText(const std::string& program, const std::string& reason) {
    return "'" + program + "' cannot be run: " + reason;
}

std::string CannotOpenText(const std::string& file, bool forOutput, const std::string& reason) {
    return "'" + file + "' cannot be opened for " + (forOutput ? "output: " : "input: ") + reason;
}

std::string CannotFinishText(const std::string& file, const std::string& reason) {
    return "'" + file + "' cannot be put in place: " + reason;
}

std::string UnsupportedText(const std::string& line) {
    return "Not supported here, line skipped: " + line;
}

std::string PressAnyKeyText() { return "Press any key to continue . . ."; }

}  // namespace tarvolin
