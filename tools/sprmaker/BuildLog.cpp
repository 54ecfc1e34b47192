#include "BuildLog.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/AtomicFile.h"
#include "base/TextHelpers.h"

namespace tarvolin::sprmaker {

std::string VersionLine() { return "sprmaker.exe 0.2.2 (Tarvolin): SFF version 1 builder"; }

std::string SpriteLine(const SpriteAdded& s, uint32_t index) {
    // Appended piece by piece: g++ 12 at -O3 reports a false "restrict" overlap for a
    // literal + temporary chain here.
    std::string line = "#";
    for (const std::string& piece :
         {DecimalText(index), std::string(" "), Shown(s.Entry.File), std::string("  group "), DecimalText(s.Entry.GroupNo),
          std::string(", image "), DecimalText(s.Entry.ItemNo), std::string("  axis "), DecimalText(s.AxisX),
          std::string(","), DecimalText(s.AxisY), std::string("  flag "), DecimalText(s.PalFlag)})
        line += piece;
    if (s.LinkedTo) line += "  linked to " + DecimalText(*s.LinkedTo);
    for (const std::string& warning : s.Warnings) line += "\n" + WarningLine(s.Entry.File, warning);
    return line;
}

std::string WarningLine(const std::string& file, const std::string& what) {
    return "Warning: " + Shown(file) + ": " + Shown(what);
}

std::string SummaryLines(const std::string& output, const BuildSummary& s) {
    std::string text = "Wrote " + Shown(output) + "\n";
    text += "  groups: " + DecimalText(s.Groups) + "\n";
    text += "  images: " + DecimalText(s.Images) + "\n";
    text += "  unique images: " + DecimalText(s.UniqueImages) + "\n";
    text += "  palettes: " + DecimalText(s.Palettes) + "\n";
    text += "  bytes: " + DecimalText(static_cast<long long>(s.Bytes)) + "\n";
    if (!s.KeptAs.empty()) text += "  the file it replaced is kept as " + Shown(s.KeptAs) + "\n";
    if (s.StaleRemoved)
        text += "  temporary files of stopped earlier runs removed from the folder: " +
                DecimalText(static_cast<long long>(s.StaleRemoved)) + "\n";
    return text;
}

std::string NotReadLine(const BuildPlan& plan) {
    if (plan.LinesNotRead == 0) return {};
    return "Note: the empty line " + DecimalText(plan.EndLine) + " ends the list of sprites; " +
           NotReadText(plan.LinesNotRead) + "\n";
}

std::string ErrorLine(const Error& e) {
    std::string line = "Error: ";
    if (!e.File.empty()) line += Shown(e.File) + ": ";
    return line + Shown(e.Detail);
}

std::string UsageText() {
    return "usage: sprmaker.exe [-c] [-f] [-p] [-s | -q] < PARAMETERS.txt\n"
           "\n"
           "Reads the parameter text on standard input and writes the SFF it names.\n"
           "  -c  crop each picture to its non-zero pixels and move the axis to match\n"
           "  -f  link files whose contents are identical\n"
           "  -p  drop a palette equal to the last stored one (the sprite uses the previous palette)\n"
           "  -s  log the summary only\n"
           "  -q  quiet: log errors only\n"
           "  -?, -h  this text\n"
           "Exit status: 0 when the SFF was written, 1 on an error (then no SFF was written or replaced).\n";
}

void LogOutput::Write(const std::string& lines) {
    constexpr size_t kChunk = 64 * 1024;
    pending_ += lines;
    if (pending_.size() >= kChunk) Flush();
}

namespace {

// Where the next write lands. A log opened for appending (">>") writes at the file's end,
// whatever the offset says: it reads 0 until the first write.
off_t NextWriteAt(int fd) {
    struct stat st {};
    const int flags = fcntl(fd, F_GETFL);
    if (flags >= 0 && (flags & O_APPEND) && fstat(fd, &st) == 0 && S_ISREG(st.st_mode)) return st.st_size;
    return lseek(fd, 0, SEEK_CUR);
}

}  // namespace

bool LogOutput::Flush() {
    if (!failure_.empty()) return false;
    // Where the kept lines begin: a write that stops inside them is taken back to the end
    // of the last line written whole.
    const off_t start = NextWriteAt(fd_);
    size_t done = 0;
    while (done < pending_.size()) {
        const ssize_t n = write(fd_, pending_.data() + done, pending_.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            failure_ = WriteFailureReason(n < 0 ? errno : ENOSPC);
            // Back to the end of the last line written whole.
            size_t whole = 0;
            if (const size_t line = done ? pending_.rfind('\n', done - 1) : std::string::npos; line != std::string::npos)
                whole = line + 1;
            const off_t end = start + static_cast<off_t>(whole);
            if (start >= 0 && ftruncate(fd_, end) == 0) lseek(fd_, end, SEEK_SET);
            pending_.clear();
            return false;
        }
        done += static_cast<size_t>(n);
    }
    pending_.clear();
    return true;
}

}  // namespace tarvolin::sprmaker
