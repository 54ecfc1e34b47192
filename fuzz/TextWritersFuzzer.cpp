// libFuzzer target: the two texts the rebuild writes, the parameter text and the build
// batch, for a table whose cells, the SFF name, the parameter file's name and the
// program's folder come from the input (FuzzedDataProvider: texts from the front,
// numbers from the back). A text comes out, or it is refused with ERR_CODEPAGE or
// ERR_CONTROL_CHAR for a value that holds such a character (the batch also with
// ERR_PROGRAM_QUOTE, for a program folder with a double quote). What comes out ends every
// line with CR LF, holds no other control character, and reads back: sprmaker.exe reads
// the parameter text as the table's sprites with their numbers, and the batch parses into
// the steps it was written as, its program line naming the parameter file.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ParamInput.h"
#include "Require.h"
#include "base/Codepage.h"
#include "base/MessageKeys.h"
#include "batch/BatchScript.h"
#include "rebuild/BuildBatch.h"
#include "rebuild/ParamText.h"

namespace {

using namespace tarvolin;
using fuzz::Require;

constexpr size_t kMaxValue = 40;  // bytes of one cell, name or folder
constexpr int kMaxRows = 10;

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// What the values of a text hold that refuses it: a value is refused for a control
// character before it is looked at in CP932. Shift JIS bytes pass as they stand, but not
// inside one part of a path with UTF-8 text, as values joined on a line may put them.
struct Faults {
    bool Control = false;
    bool NotCp932 = false;
    bool ShiftJisBytes = false;

    void Note(std::string_view value) {
        if (std::any_of(value.begin(), value.end(), IsControl)) Control = true;
        else if (!ToCp932Text(value)) NotCp932 = true;
        else if (!IsUtf8(value)) ShiftJisBytes = true;
    }
    bool Any() const { return Control || NotCp932; }
};

void CheckRefusal(const Error& e, const Faults& faults) {
    Require((e.Key == msg::ControlCharacter && faults.Control) ||
                (e.Key == msg::NotCp932 && (faults.NotCp932 || faults.ShiftJisBytes)),
            "a text is refused only for a value with a control character or a character CP932 cannot hold");
    Require(e.Detail.rfind("line ", 0) == 0, "a refused text names the line");
}

void CheckLineEnds(const std::string& text) {
    Require(text.ends_with("\r\n"), "the last line ends with CR LF");
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') Require(i + 1 < text.size() && text[i + 1] == '\n', "a CR is followed by LF");
        else if (text[i] == '\n') Require(i > 0 && text[i - 1] == '\r', "an LF follows a CR");
        else Require(!IsControl(text[i]), "no control character but CR LF");
    }
}

bool SameCp932(std::string_view a, std::string_view b) { return ToCp932Text(a) == ToCp932Text(b); }

// The value of a cell that sprmaker.exe reads as the same number: decimal digits with an
// optional minus, within [low, high].
std::optional<long> PlainNumber(const std::string& cell, long low, long high) {
    long value = 0;
    const auto [end, ec] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    if (ec != std::errc() || end != cell.data() + cell.size() || value < low || value > high) return std::nullopt;
    return value;
}

// A line sprmaker.exe reads as a name: not empty (that ends the list), no comment (';')
// and no option block ('#').
bool PlainName(std::string_view name) { return !name.empty() && name.front() != ';' && name.front() != '#'; }

std::string EntryName(const SpriteRow& row) { return row[Column::PcxPath] + row[Column::PcxName]; }

// The sprites of a table whose names and numbers are all plain read back one for one.
void CheckReadBack(const std::string& text, const SpriteTable& table, const std::string& sffName) {
    auto plan = sprmaker::ParseParamText(text);
    if (table.Empty()) {
        Require(!plan && plan.error().Key == msg::ParamLine, "a text without rows makes no SFF");
        return;
    }
    bool plain = PlainName(sffName);
    for (int place = 1; place <= table.RowCount() && plain; ++place) {
        const SpriteRow& row = table.Row(place);
        plain = PlainName(EntryName(row)) && PlainNumber(row[Column::GroupNo], 0, 65535) &&
                PlainNumber(row[Column::ItemNo], 0, 65535) && PlainNumber(row[Column::AxisX], -32768, 32767) &&
                PlainNumber(row[Column::AxisY], -32768, 32767);
    }
    if (!plain) return;  // the text still goes out as the cells stand; sprmaker tells what it can't read
    Require(plan.ok(), "sprmaker.exe reads the text of a table with names and numbers");
    const sprmaker::BuildPlan& p = plan.value();
    Require(SameCp932(p.OutputName, sffName) && p.SharedPalette, "the header names the SFF, in shared-palette mode");
    Require(p.Sprites.size() == static_cast<size_t>(table.RowCount()), "a sprite for every row");
    Require(p.EndLine == static_cast<long>(std::count(text.begin(), text.end(), '\n')) && p.LinesNotRead == 0,
            "the empty last line ends the list");
    for (int place = 1; place <= table.RowCount(); ++place) {
        const SpriteRow& row = table.Row(place);
        const sprmaker::SpriteEntry& s = p.Sprites[static_cast<size_t>(place - 1)];
        Require(SameCp932(s.File, EntryName(row)), "the sprite's file is the row's path and name");
        Require(s.GroupNo == *PlainNumber(row[Column::GroupNo], 0, 65535) &&
                    s.ItemNo == *PlainNumber(row[Column::ItemNo], 0, 65535) &&
                    s.AxisX == *PlainNumber(row[Column::AxisX], -32768, 32767) &&
                    s.AxisY == *PlainNumber(row[Column::AxisY], -32768, 32767),
                "the sprite has the row's numbers");
        if (place < 4 || row[Column::PalType] == "0")
            Require(s.OwnPalette == true, "rows 1 to 3 and a palette type of 0 keep their own palette");
        if (place >= 4 && row[Column::PalType] == "1")
            Require(!s.OwnPalette, "a later row of palette type 1 takes the file's palette mode");
        Require(s.LinkDuplicate, "duplicates are linked");
    }
}

void CheckParamText(const SpriteTable& table, const std::string& sffName) {
    Faults faults;
    faults.Note(sffName);
    for (int place = 1; place <= table.RowCount(); ++place) {
        const SpriteRow& row = table.Row(place);
        // The path and the name of an entry are converted each on its own.
        for (const std::string& value : {row[Column::PcxPath], row[Column::PcxName], row[Column::GroupNo],
                                         row[Column::ItemNo], row[Column::AxisX], row[Column::AxisY]})
            faults.Note(value);
    }
    auto text = ParamTextBytes(table, sffName);
    if (!text) return CheckRefusal(text.error(), faults);
    Require(!faults.Any(), "a value with a control character or outside CP932 is refused");
    CheckLineEnds(text.value());
    CheckReadBack(text.value(), table, sffName);
}

void CheckBatch(const std::string& paramName, bool pause, const std::string& programFolder) {
    Require(BatchNameFor(paramName).ends_with("Build.bat"), "the batch's name ends in Build.bat");
    Faults faults;
    faults.Note(paramName);
    faults.Note(programFolder);
    auto bat = BuildBatBytes(paramName, pause, programFolder);
    const bool quote = programFolder.find('"') != std::string::npos;
    Require(quote == (!bat && bat.error().Key == msg::QuoteInProgramFolder),
            "a program folder with a double quote is refused, since the quoted path can't hold it");
    if (!bat) return quote ? void() : CheckRefusal(bat.error(), faults);
    Require(!faults.Any(), "a value with a control character or outside CP932 is refused");
    CheckLineEnds(bat.value());

    const std::vector<BatchStep> steps = ParseBatch(bat.value());
    const StepKind kinds[] = {StepKind::EchoOff, StepKind::Echo, StepKind::Run, StepKind::Cls,
                              StepKind::Echo,    StepKind::Echo, StepKind::Pause};
    Require(steps.size() == (pause ? 7u : 6u), "the batch reads back as the lines it was written as");
    for (size_t i = 0; i < steps.size(); ++i)
        if (i != 2) Require(steps[i].Kind == kinds[i], "the batch reads back as the steps it was written as");
    Require(steps[0].Quiet, "@echo off is quiet");
    if (paramName.empty()) return;  // no command line names no file
    const BatchStep& run = steps[2];
    Require(run.Kind == StepKind::Run && SameCp932(run.Program, programFolder + "sprmaker.exe"),
            "the program line runs sprmaker.exe from the program's folder");
    Require(SameCp932(run.StdinFile, paramName) && run.StdoutFile == "CreateLog.txt" && !run.AppendStdout &&
                run.Args.empty(),
            "the program line reads the parameter file and writes CreateLog.txt");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider in(data, size);
    const bool pause = in.ConsumeBool();
    const std::string sffName = in.ConsumeRandomLengthString(kMaxValue);
    const std::string paramName = in.ConsumeRandomLengthString(kMaxValue);
    const std::string programFolder = in.ConsumeRandomLengthString(kMaxValue);
    SpriteTable table;
    const int rows = in.ConsumeIntegralInRange(0, kMaxRows);
    for (int place = 1; place <= rows; ++place) {
        SpriteRow row;
        for (Column c : {Column::PcxPath, Column::PcxName, Column::GroupNo, Column::ItemNo, Column::AxisX,
                         Column::AxisY, Column::PalType})
            row[c] = in.ConsumeRandomLengthString(kMaxValue);
        table.AddRow(std::move(row));
    }
    CheckParamText(table, sffName);
    CheckBatch(paramName, pause, programFolder);
    return 0;
}
