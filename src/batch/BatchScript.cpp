#include "batch/BatchScript.h"

#include <optional>

#include "base/Codepage.h"

namespace tarvolin {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trim(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i])) return false;
    return true;
}

// The first word (up to a blank, '.', '<', '>' or the end), for telling the commands apart.
std::string_view FirstWord(std::string_view s) {
    size_t n = 0;
    while (n < s.size() && !IsBlank(s[n]) && s[n] != '.' && s[n] != '<' && s[n] != '>') ++n;
    return s.substr(0, n);
}

std::string Unquote(std::string_view s) {
    s = Trim(s);
    if (s.size() >= 2 && s.front() == '"' && s.back() == '"') s = s.substr(1, s.size() - 2);
    return std::string(s);
}

// Pipes, command chains and handle redirections ("2>") belong to a full shell: a line with
// any of them outside quotes is not run at all rather than run half-understood.
bool HasShellOperators(std::string_view s) {
    bool quoted = false;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '"') quoted = !quoted;
        if (quoted) continue;
        if (s[i] == '|' || s[i] == '&') return true;
        if (s[i] == '>' && i > 0 && s[i - 1] >= '0' && s[i - 1] <= '9' && (i == 1 || IsBlank(s[i - 2]))) return true;
    }
    return false;
}

// Splits "ARGS < IN > OUT" (in any order) into the step. The name behind a redirection runs
// to the next redirection or the end of the line, so a file name with a blank in it (which
// the batch writes unquoted) still names one file. False when a redirection has no name.
bool ParseTail(std::string_view tail, BatchStep& step) {
    size_t i = 0;
    std::string word;
    bool quoted = false;
    auto flushWord = [&] {
        if (!word.empty()) step.Args.push_back(word);
        word.clear();
    };
    while (i < tail.size() && tail[i] != '<' && (tail[i] != '>' || quoted)) {
        char c = tail[i++];
        if (c == '"') quoted = !quoted;
        else if (IsBlank(c) && !quoted) flushWord();
        else word += c;
    }
    flushWord();
    while (i < tail.size()) {
        char op = tail[i++];
        bool append = false;
        if (op == '>' && i < tail.size() && tail[i] == '>') {
            append = true;
            ++i;
        }
        size_t end = tail.find_first_of("<>", i);
        if (end == std::string_view::npos) end = tail.size();
        std::string name = Unquote(tail.substr(i, end - i));
        if (name.empty()) return false;
        if (op == '<') step.StdinFile = name;
        else {
            step.StdoutFile = name;
            step.AppendStdout = append;
        }
        i = end;
    }
    return true;
}

// The line Tarvolin writes to run the builder, `"PROGRAM" < NAME > LOG`, where NAME stands
// bare and unquoted and may be any name the file system allows: blanks, '&', '|', '<' and
// '>' included. So NAME runs from the first " < " to the last " > ", taken as it stands;
// LOG is one plain word. `tail` is what follows the quoted program. False when the tail
// has another form.
bool ParseToolTail(std::string_view tail, BatchStep& step) {
    constexpr std::string_view in = " < ", out = " > ";
    if (!tail.starts_with(in)) return false;
    const size_t last = tail.rfind(out);
    if (last == std::string_view::npos || last <= in.size()) return false;
    const std::string_view log = Trim(tail.substr(last + out.size()));
    if (log.empty() || log.find_first_of("<>|&\" \t") != std::string_view::npos) return false;
    step.StdinFile = std::string(tail.substr(in.size(), last - in.size()));
    step.StdoutFile = std::string(log);
    return true;
}

// A program line: a quoted program, or a first word that is a path ("./tool", "/bin/cat").
std::optional<BatchStep> ParseRun(std::string_view line) {
    BatchStep step;
    step.Kind = StepKind::Run;
    std::string_view tail;
    if (line.front() == '"') {
        size_t close = line.find('"', 1);
        if (close == std::string_view::npos || close == 1) return std::nullopt;
        step.Program = std::string(line.substr(1, close - 1));
        tail = line.substr(close + 1);
        if (ParseToolTail(tail, step)) return step;
    } else {
        size_t end = 0;
        while (end < line.size() && !IsBlank(line[end]) && line[end] != '<' && line[end] != '>') ++end;
        std::string_view first = line.substr(0, end);
        if (first.find('/') == std::string_view::npos) return std::nullopt;
        step.Program = std::string(first);
        tail = line.substr(end);
    }
    if (HasShellOperators(tail) || !ParseTail(tail, step)) return std::nullopt;
    return step;
}

BatchStep ParseLine(std::string_view line, bool quiet) {
    BatchStep step;
    step.Line = std::string(line);
    step.Quiet = quiet;
    std::string_view word = FirstWord(line);
    std::string_view rest = line.substr(word.size());
    if (EqualsNoCase(word, "echo")) {
        if (EqualsNoCase(Trim(rest), "off")) step.Kind = StepKind::EchoOff;
        else if (EqualsNoCase(Trim(rest), "on")) step.Kind = StepKind::EchoOn;
        else {
            // "echo TEXT" prints TEXT as it stands after the one separating character;
            // "echo." and a bare "echo" print an empty line.
            step.Kind = StepKind::Echo;
            if (!rest.empty()) step.Text = std::string(rest.substr(1));
        }
        return step;
    }
    if (Trim(rest).empty() && EqualsNoCase(word, "cls")) step.Kind = StepKind::Cls;
    else if (Trim(rest).empty() && EqualsNoCase(word, "pause")) step.Kind = StepKind::Pause;
    else if (auto run = ParseRun(line)) {
        run->Line = step.Line;
        run->Quiet = quiet;
        return *run;
    }
    return step;  // Unsupported
}

bool IsComment(std::string_view line) {
    std::string_view word = FirstWord(line);
    return line.starts_with("::") || (EqualsNoCase(word, "rem") && (line.size() == 3 || IsBlank(line[3])));
}

}  // namespace

std::vector<BatchStep> ParseBatch(std::string_view cp932Bytes) {
    std::vector<BatchStep> steps;
    size_t pos = 0;
    while (pos < cp932Bytes.size()) {
        size_t end = cp932Bytes.find('\n', pos);
        if (end == std::string_view::npos) end = cp932Bytes.size();
        std::string_view raw = cp932Bytes.substr(pos, end - pos);
        pos = end + 1;
        if (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);
        std::string utf8 = FromCp932(raw);
        std::string_view line = utf8;
        while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
        bool quiet = false;
        if (!line.empty() && line.front() == '@') {
            quiet = true;
            line.remove_prefix(1);
        }
        if (Trim(line).empty() || IsComment(line)) continue;
        // Trailing blanks are kept: "echo TEXT " prints them, as a shell does.
        steps.push_back(ParseLine(line, quiet));
    }
    return steps;
}

}  // namespace tarvolin
