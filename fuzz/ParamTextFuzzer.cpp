// libFuzzer target: the parameter-text reader of sprmaker.exe on any bytes. It must never
// crash, and what it reads must hold together: an output name and at least one sprite,
// numbers within their ranges (the types hold them), lines counted forward, the empty line
// that ended the list after the last sprite.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "ParamInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tarvolin::sprmaker;
    auto r = ParseParamText(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!r) {
        if (r.error().Detail.rfind("line ", 0) != 0) std::abort();  // every refusal names its line
        return 0;
    }
    const BuildPlan& plan = r.value();
    if (plan.OutputName.empty() || plan.Sprites.empty()) std::abort();
    long lastLine = 0;
    for (const SpriteEntry& s : plan.Sprites) {
        if (s.File.empty() || s.Line <= lastLine) std::abort();
        lastLine = s.Line;
    }
    if (plan.LinesNotRead < 0 || (plan.EndLine != 0 && plan.EndLine <= lastLine + 4)) std::abort();
    if (plan.EndLine == 0 && plan.LinesNotRead != 0) std::abort();
    return 0;
}
