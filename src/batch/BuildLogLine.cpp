#include "batch/BuildLogLine.h"

#include "base/Codepage.h"
#include "base/FileRead.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"

namespace tarvolin {

namespace {
constexpr uint64_t kMaxLogBytes = uint64_t{64} << 20;
}

std::string LogErrorLine(const std::string& logPath) {
    const std::string name = GetFileName(logPath);
    auto bytes = ReadWholeFile(logPath, msg::WriteFailed, kMaxLogBytes);
    if (!bytes) return name + " could not be read: " + bytes.error().Detail;
    const std::string text(bytes.value().begin(), bytes.value().end());
    std::string last, error;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find_first_of("\r\n", start);
        if (end == std::string::npos) end = text.size();
        const std::string line = text.substr(start, end - start);
        if (line.find_first_not_of(" \t") != std::string::npos) last = line;
        if (line.starts_with("Error")) error = line;
        start = end + 1;
    }
    // sprmaker.exe writes names as UTF-8; a log from elsewhere may hold Shift JIS.
    const auto shown = [](const std::string& line) { return IsUtf8(line) ? line : FromCp932(line); };
    if (!error.empty()) return shown(error);
    if (!last.empty()) return shown(last);
    return name + " is empty";
}

}  // namespace tarvolin
