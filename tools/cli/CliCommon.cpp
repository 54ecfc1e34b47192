#include "CliCommon.h"

#include <cstdio>
#include <unistd.h>

#include "base/TextHelpers.h"

namespace tarvolin::cli {

namespace {
std::string RunningProgram(const char* argv0) {
    char buf[4096];
    ssize_t n = readlink("/proc/self/exe", buf, sizeof buf - 1);
    if (n > 0) return std::string(buf, static_cast<size_t>(n));
    return argv0 ? argv0 : "tarvolin-cli";
}
}  // namespace

Context MakeContext(const char* argv0) {
    Context ctx;
    ctx.ProgramPath = RunningProgram(argv0);
    // The command-line tool takes its texts from the desktop program's settings file in
    // the same folder, or in the user's config folder, so that one file translates both.
    ctx.Loaded = LoadSettings(FindSettingsFile(GetFolder(ctx.ProgramPath) + "tarvolin.ini"));
    return ctx;
}

void PrintMessage(const std::string& text) {
    std::string out;
    out.reserve(text.size() + 1);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        out += text[i];
    }
    std::fprintf(stderr, "%s\n", out.c_str());
}

void PrintError(const Context& ctx, const Error& error) { PrintMessage(FormatError(ctx.Loaded.Ini, error)); }

int ExitStatus(const Context& ctx, const Status& status) {
    if (status) return 0;
    PrintError(ctx, status.error());
    return 2;
}

std::string AsFolder(const std::string& folder) {
    if (folder.empty()) return "./";
    return folder.back() == '/' ? folder : folder + "/";
}

}  // namespace tarvolin::cli
