// sprmaker.exe: the SFF builder that Tarvolin's build batch runs. Reads the parameter
// text on standard input and writes the SFF it names; standard output is the log.
#include <cstdio>
#include <string>

#include "BuildLog.h"
#include "ParamInput.h"
#include "SffBuilder.h"
#include "base/AtomicFile.h"
#include "base/TextHelpers.h"

namespace {

using namespace tarvolin::sprmaker;

enum class Verbosity { All, SummaryOnly, Quiet };

struct CommandLine {
    BuildOptions Options;
    Verbosity Level = Verbosity::All;
    bool Usage = false;
    std::string Unknown;  // the first word that is no option
};

CommandLine ReadCommandLine(int argc, char** argv) {
    CommandLine cl;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word.size() < 2 || word[0] != '-') {
            if (cl.Unknown.empty()) cl.Unknown = word;
            continue;
        }
        for (size_t k = 1; k < word.size(); ++k) {
            switch (word[k]) {
                case 'c': cl.Options.Crop = true; break;
                case 'f': cl.Options.LinkIdentical = true; break;
                case 'p': cl.Options.DropSamePalette = true; break;
                case 's': cl.Level = cl.Level == Verbosity::Quiet ? cl.Level : Verbosity::SummaryOnly; break;
                case 'q': cl.Level = Verbosity::Quiet; break;
                case '?':
                case 'h': cl.Usage = true; break;
                default:
                    if (cl.Unknown.empty()) cl.Unknown = word;
            }
        }
    }
    return cl;
}

std::string ReadStandardInput() {
    std::string text;
    char buf[65536];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, stdin)) > 0) text.append(buf, n);
    return text;
}

// Ends the run with `status`: the log written out, and on standard error a word when it
// could not be written whole (the SFF, when it was written, stands all the same).
int Finish(LogOutput& log, int status) {
    if (!log.Flush()) std::fprintf(stderr, "sprmaker.exe: the log stops early: %s\n", log.Failure().c_str());
    return status;
}

// Errors go to the log and to standard error.
int Fail(LogOutput& log, const tarvolin::Error& error) {
    const std::string line = ErrorLine(error) + "\n";
    log.Write(line);
    std::fwrite(line.data(), 1, line.size(), stderr);
    return Finish(log, 1);
}

}  // namespace

int main(int argc, char** argv) {
    tarvolin::ReportFileSizeLimitAsError();
    LogOutput log(1);
    const CommandLine cl = ReadCommandLine(argc, argv);
    if (cl.Usage) {
        log.Write(UsageText());
        return Finish(log, 0);
    }
    if (!cl.Unknown.empty()) {
        std::fprintf(stderr, "sprmaker.exe: unknown option '%s'\n\n%s", tarvolin::Shown(cl.Unknown).c_str(),
                     UsageText().c_str());
        return 1;
    }
    if (cl.Level == Verbosity::All) log.Write(VersionLine() + "\n");

    auto plan = ParseParamText(ReadStandardInput());
    if (!plan) return Fail(log, plan.error());
    if (cl.Level != Verbosity::Quiet) log.Write(NotReadLine(plan.value()));
    uint32_t index = 0;
    auto logSprite = [&](const SpriteAdded& s) { log.Write(SpriteLine(s, index++) + "\n"); };
    auto summary = BuildSff(plan.value(), cl.Options, "",
                            cl.Level == Verbosity::All ? std::function<void(const SpriteAdded&)>(logSprite)
                                                       : std::function<void(const SpriteAdded&)>());
    if (!summary) return Fail(log, summary.error());
    if (cl.Level != Verbosity::Quiet) log.Write(SummaryLines(plan.value().OutputName, summary.value()));
    return Finish(log, 0);
}
