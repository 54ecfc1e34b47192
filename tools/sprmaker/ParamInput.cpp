#include "ParamInput.h"

#include "base/MessageKeys.h"
#include "base/Codepage.h"
#include "base/TextHelpers.h"

namespace tarvolin::sprmaker {
namespace {

// The text's lines. CR LF, LF and a lone CR each end a line (texts saved on old systems
// end their lines with CR alone); no line follows a final line end.
class LineReader {
public:
    explicit LineReader(std::string_view text) : text_(text) {}

    // The next line, or nothing at the end of the input.
    std::optional<std::string_view> Next() {
        if (pos_ >= text_.size()) return std::nullopt;
        size_t end = text_.find_first_of("\r\n", pos_);
        if (end == std::string_view::npos) end = text_.size();
        std::string_view line = text_.substr(pos_, end - pos_);
        pos_ = end + (text_.substr(end, 2) == "\r\n" ? 2 : 1);
        ++number_;
        return line;
    }
    long Number() const { return number_; }

private:
    std::string_view text_;
    size_t pos_ = 0;
    long number_ = 0;
};

char First(std::string_view line) { return line.empty() ? '\0' : line.front(); }

Error LineError(long number, std::string_view line, const std::string& reason) {
    return Error{msg::ParamLine, {}, "line " + DecimalText(number) + " \"" + FromCp932(line) + "\": " + reason};
}

// An error about the place after the last line, where the text ended too soon.
Error EndError(const LineReader& in, const std::string& reason) {
    return Error{msg::ParamLine, {}, "line " + DecimalText(in.Number() + 1) + ": " + reason};
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// A file name in the file system's UTF-8. Bytes that are no CP932 text would name a file
// that cannot exist, so they are refused here, where the line is known.
Result<std::string> NameFrom(long number, std::string_view line) {
    std::string name = FromCp932(line);
    if (ToCp932(name) != std::string(line)) return LineError(number, line, "the name is not valid Shift JIS text");
    return name;
}

// An option block's question and its answer. Lines that start with neither an expected
// question digit nor an answer digit are passed over; the end of the input ends the block
// without an answer. Gives the question digit and the answer digit.
struct OptionAnswer {
    char Question = 0;
    char Answer = 0;
};
std::optional<OptionAnswer> ReadOption(LineReader& in, std::string_view questions) {
    OptionAnswer a;
    while (auto line = in.Next()) {
        const char c = First(*line);
        if (!a.Question) {
            if (c && questions.find(c) != std::string_view::npos) a.Question = c;
        } else if (c == '1' || c == '2') {
            a.Answer = c;
            return a;
        }
    }
    return std::nullopt;
}

// A decimal integer: an optional sign and digits, blanks around them allowed, nothing
// else ("12abc", "0x10" and "5.9" are no numbers). Nothing too when the value leaves
// [low, high].
std::optional<long> ReadNumber(std::string_view line, long low, long high) {
    while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
    while (!line.empty() && IsBlank(line.back())) line.remove_suffix(1);
    bool negative = false;
    if (!line.empty() && (line.front() == '+' || line.front() == '-')) {
        negative = line.front() == '-';
        line.remove_prefix(1);
    }
    if (line.empty()) return std::nullopt;
    long value = 0;
    for (char c : line) {
        if (c < '0' || c > '9') return std::nullopt;
        if (value <= 1000000) value = value * 10 + (c - '0');  // further digits only grow it out of range
    }
    if (negative) value = -value;
    if (value < low || value > high) return std::nullopt;
    return value;
}

// The four numbers of a sprite, from the next four lines that are not comments.
Status ReadNumbers(LineReader& in, SpriteEntry& sprite, std::string_view nameLine) {
    static const struct {
        const char* What;
        long Low, High;
    } kFields[] = {{"group number", 0, 65535}, {"image number", 0, 65535}, {"X axis", -32768, 32767},
                   {"Y axis", -32768, 32767}};
    long values[4] = {};
    for (int k = 0; k < 4; ++k) {
        std::optional<std::string_view> line;
        do line = in.Next();
        while (line && First(*line) == ';');
        if (!line)
            return LineError(sprite.Line, nameLine,
                             "the input ends before the sprite's " + std::string(kFields[k].What));
        auto v = ReadNumber(*line, kFields[k].Low, kFields[k].High);
        if (!v)
            return LineError(in.Number(), *line,
                             std::string(kFields[k].What) + " must be a whole number from " +
                                 DecimalText(kFields[k].Low) + " to " + DecimalText(kFields[k].High));
        values[k] = *v;
    }
    sprite.GroupNo = static_cast<uint16_t>(values[0]);
    sprite.ItemNo = static_cast<uint16_t>(values[1]);
    sprite.AxisX = static_cast<int16_t>(values[2]);
    sprite.AxisY = static_cast<int16_t>(values[3]);
    return Ok();
}

// How many of the remaining lines hold anything but blanks.
long LinesWithText(LineReader& in) {
    long count = 0;
    while (auto line = in.Next())
        if (line->find_first_not_of(" \t") != std::string_view::npos) ++count;
    return count;
}

std::string NotReadNote(long lines) { return lines ? " (" + NotReadText(lines) + ")" : ""; }

}  // namespace

std::string NotReadText(long lines) {
    return "not read: " + DecimalText(lines) + (lines == 1 ? " line" : " lines") + " with text after it";
}

Result<BuildPlan> ParseParamText(std::string_view text) {
    BuildPlan plan;
    LineReader in(text);

    // The output name, after comments and the file options.
    for (;;) {
        auto line = in.Next();
        if (!line) return EndError(in, "the input ends before the name of the SFF to make; nothing is made");
        if (line->empty()) {
            const long number = in.Number();
            return LineError(number, *line,
                             "an empty line stands where the name of the SFF to make must be; nothing is made" +
                                 NotReadNote(LinesWithText(in)));
        }
        const char c = First(*line);
        if (c == ';') continue;
        if (c == '#') {
            // "1. Palette type" -> "1. Individual palette / 2. Shared palette"
            if (auto option = ReadOption(in, "1")) plan.SharedPalette = option->Answer == '2';
            continue;
        }
        auto name = NameFrom(in.Number(), *line);
        if (!name) return name.error();
        plan.OutputName = std::move(name.value());
        plan.OutputAsWritten = std::string(*line);
        break;
    }

    // The sprites, until an empty line or the end of the input.
    SpriteEntry next;
    for (;;) {
        auto line = in.Next();
        if (!line) break;
        if (line->empty()) {
            plan.EndLine = in.Number();
            plan.LinesNotRead = LinesWithText(in);
            break;
        }
        const char c = First(*line);
        if (c == ';') continue;
        if (c == '#') {
            // "1. Palette type" -> 1 own / 2 previous; "2. Duplicate linking" -> 1 link / 2 don't
            auto option = ReadOption(in, "12");
            if (!option) break;
            if (option->Question == '1') next.OwnPalette = option->Answer == '1';
            else next.LinkDuplicate = option->Answer == '1';
            continue;
        }
        auto name = NameFrom(in.Number(), *line);
        if (!name) return name.error();
        next.File = std::move(name.value());
        next.FileAsWritten = std::string(*line);
        next.Line = in.Number();
        if (auto s = ReadNumbers(in, next, *line); !s) return s.error();
        plan.Sprites.push_back(std::move(next));
        next = SpriteEntry{};
    }

    // An SFF without an image is one that no reader opens: it is never made.
    if (!plan.Sprites.empty()) return plan;
    const std::string none = "an SFF needs at least one sprite; nothing is made";
    if (plan.EndLine)
        return LineError(plan.EndLine, "", "the empty line ends the list before its first sprite: " + none +
                                               NotReadNote(plan.LinesNotRead));
    return EndError(in, "the input ends before the first sprite: " + none);
}

}  // namespace tarvolin::sprmaker
