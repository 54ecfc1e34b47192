#include "CliUi.h"

#include <cstdio>

#include "base/Ask.h"
#include "batch/BatchHeadless.h"

namespace tarvolin::cli {

bool CliUi::Ask(const std::string& text, int) {
    PrintMessage(text);
    return true;
}

void CliUi::Tell(const std::string& text, int styleWord) {
    const int icon = styleWord & 0x70;
    if (icon == style::Critical || icon == style::Exclamation) PrintMessage(text);
}

bool CliUi::RunBatch(const std::string& batchName, const std::string& folder) {
    BatchOutput console{[](const std::string& line) {
                            std::printf("%s\n", line.c_str());
                            std::fflush(stdout);
                        },
                        {}};
    Status ran = RunBatchHeadless(folder + batchName, console);
    if (!ran) PrintError(ctx_, ran.error());
    return ran.ok();
}

}  // namespace tarvolin::cli
