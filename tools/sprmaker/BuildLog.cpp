#include "BuildLog.h"

#include "base/TextHelpers.h"

namespace tarvolin::sprmaker {

std::string VersionLine() { return "sprmaker.exe 0.2.2 (Tarvolin): SFF version 1 builder"; }

std::string SpriteLine(const SpriteAdded& s, uint32_t index) {
    // Appended piece by piece: g++ 12 at -O3 reports a false "restrict" overlap for a
    // literal + temporary chain here.
    std::string line = "#";
    for (const std::string& piece :
         {DecimalText(index), std::string(" "), s.Entry.File, std::string("  group "), DecimalText(s.Entry.GroupNo),
          std::string(", image "), DecimalText(s.Entry.ItemNo), std::string("  axis "), DecimalText(s.AxisX),
          std::string(","), DecimalText(s.AxisY), std::string("  flag "), DecimalText(s.PalFlag)})
        line += piece;
    if (s.LinkedTo) line += "  linked to " + DecimalText(*s.LinkedTo);
    for (const std::string& warning : s.Warnings) line += "\n" + WarningLine(s.Entry.File, warning);
    return line;
}

std::string WarningLine(const std::string& file, const std::string& what) { return "Warning: " + file + ": " + what; }

std::string SummaryLines(const std::string& output, const BuildSummary& s) {
    std::string text = "Wrote " + output + "\n";
    text += "  groups: " + DecimalText(s.Groups) + "\n";
    text += "  images: " + DecimalText(s.Images) + "\n";
    text += "  unique images: " + DecimalText(s.UniqueImages) + "\n";
    text += "  palettes: " + DecimalText(s.Palettes) + "\n";
    text += "  bytes: " + DecimalText(static_cast<long long>(s.Bytes)) + "\n";
    if (!s.KeptAs.empty()) text += "  the file it replaced is kept as " + s.KeptAs + "\n";
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
    if (!e.File.empty()) line += e.File + ": ";
    return line + e.Detail;
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

}  // namespace tarvolin::sprmaker
