// libFuzzer target: the build-batch parser and the interpreter that walks its steps, on any
// bytes. Nothing is run: a program step is only planned for a folder. It must never crash,
// and the steps must hold together: every step has its line, only a program step names a
// program and files, the interpreter hands back only program and pause steps, each once,
// and a plan's paths all lie in the folder or are absolute.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "batch/BatchInterpreter.h"

namespace {

bool Absolute(const std::string& path) { return path.empty() || path.front() == '/'; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tarvolin;
    std::vector<BatchStep> steps = ParseBatch(std::string_view(reinterpret_cast<const char*>(data), size));
    for (const BatchStep& s : steps) {
        if (s.Line.empty()) std::abort();
        const bool names = !s.Program.empty() || !s.Args.empty() || !s.StdinFile.empty() || !s.StdoutFile.empty();
        if ((s.Kind == StepKind::Run) != !s.Program.empty() || (s.Kind != StepKind::Run && names)) std::abort();
    }
    const size_t count = steps.size();
    BatchInterpreter batch(std::move(steps), "/fuzz/folder/");
    size_t handed = 0;
    BatchOutput out{[](const std::string&) {}, [] {}};
    while (const BatchStep* step = batch.Advance(out)) {
        if (++handed > count) std::abort();
        if (step->Kind == StepKind::Pause) continue;
        if (step->Kind != StepKind::Run) std::abort();
        const RunPlan plan = PlanRun(*step, batch.Folder());
        if (plan.Program.empty() || !Absolute(plan.Program) || !Absolute(plan.StdinPath) || !Absolute(plan.StdoutPath))
            std::abort();
    }
    return 0;
}
