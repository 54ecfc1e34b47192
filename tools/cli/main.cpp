// tarvolin-cli: Tarvolin's table commands without windows, for scripts.
#include <cstdio>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "Commands.h"
#include "config/Settings.h"
#include "base/AtomicFile.h"
#include "base/TextHelpers.h"

namespace {

constexpr size_t kOneOrMore = SIZE_MAX;

struct Command {
    const char* Name;
    const char* Usage;
    size_t Words;  // how many words follow the command's name; kOneOrMore: any but none
    int (*Run)(const tarvolin::cli::Context&, const tarvolin::cli::Args&);
    const char* Option = nullptr;  // may come first, followed by its value; the command reads both
};

const Command kCommands[] = {
    {"list", "list FILE.sff          print the sprite table, tab-separated", 1, tarvolin::cli::RunList},
    {"sample", "sample OUT.sff         write a small sample SFF drawn by code", 1, tarvolin::cli::RunSample},
    {"export", "export [--format pcx|png] FILE.sff DIR\n"
               "                         write every sprite as a PCX (default) or PNG file into DIR",
     2, tarvolin::cli::RunExport, "--format"},
    {"text", "text FILE.sff OUT.txt  write the parameter text and its build batch beside it", 2,
     tarvolin::cli::RunText},
    {"build", "build FILE.sff DIR     export, parameter text and batch into DIR, run sprmaker.exe there", 2,
     tarvolin::cli::RunBuild},
    {"check", "check [--quiet] FILE.sff...  the quirks of each file: what an engine shows, what a rebuild does",
     kOneOrMore, tarvolin::cli::RunCheck},
};

void PrintUsage(FILE* to) {
    std::fprintf(to, "usage: tarvolin-cli COMMAND ARGS...\n\nCommands:\n");
    for (const Command& c : kCommands) std::fprintf(to, "  %s\n", c.Usage);
    std::fprintf(to, "\n%s\nExit status: 0 done, 1 wrong usage, 2 a file was refused or could not be written.\n",
                 tarvolin::kSettingsFilePlaces);
}

}  // namespace

int main(int argc, char** argv) {
    tarvolin::ReportFileSizeLimitAsError();
    if (argc < 2 || !std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h")) {
        PrintUsage(argc < 2 ? stderr : stdout);
        return argc < 2 ? 1 : 0;
    }
    for (const Command& c : kCommands) {
        if (std::strcmp(argv[1], c.Name) != 0) continue;
        tarvolin::cli::Args args(argv + 2, argv + argc);
        if (args.size() == 1 && (args[0] == "--help" || args[0] == "-h")) {
            std::printf("usage: tarvolin-cli %s\n", c.Usage);
            return 0;
        }
        // An empty word counts as missing: "" for a folder or a file names nothing.
        const size_t optionWords = c.Option && !args.empty() && args[0] == c.Option ? 2 : 0;
        bool complete = c.Words == kOneOrMore ? !args.empty() : args.size() == c.Words + optionWords;
        for (const std::string& a : args) complete = complete && !a.empty();
        if (!complete) {
            std::fprintf(stderr, "usage: tarvolin-cli %s\n", c.Usage);
            return 1;
        }
        return c.Run(tarvolin::cli::MakeContext(argv[0]), args);
    }
    std::fprintf(stderr, "tarvolin-cli: unknown command '%s'\n\n", tarvolin::Shown(argv[1]).c_str());
    PrintUsage(stderr);
    return 1;
}
