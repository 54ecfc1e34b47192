#pragma once
// The session's user interface for tests: all it shows goes into one log, a message by its
// first two lines (with KeyedIni: its key and file). Answers come from one script: "yes",
// "no" or else Cancel; a path or "" (Cancel) for a dialog, paths joined by '|' for several.
#include <deque>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "batch/BatchHeadless.h"
#include "config/MessageCatalog.h"
#include "mainwin/SessionUi.h"

namespace tarvolin::test {

// Settings whose every message is its own key, so that the log names the message shown.
inline AppIni KeyedIni() {
    AppIni ini = DefaultAppIni();
    for (const MessageEntry& e : MessageTable()) (e.Field ? ini.*e.Field : ini.ErrorMessages[e.Key]) = e.Key;
    return ini;
}

class ScriptedSessionUi : public SessionUi {
public:
    std::deque<std::string> Script;
    bool BatchStarts = true;
    bool BatchRuns = false;  // the batch really runs, without a console
    std::function<void()> DuringPump, DuringBatch;
    std::vector<std::string> Log;

    // The log so far, emptied.
    std::vector<std::string> Take() { return std::exchange(Log, {}); }

    bool Ask(const std::string& text, int) override {
        Note("ask " + FirstTwoLines(text));
        return Next() == "yes";
    }
    Reply AskOrCancel(const std::string& text, int) override {
        Note("ask " + FirstTwoLines(text) + " or cancel");
        const std::string answer = Next();
        return answer == "yes" ? Reply::Yes : answer == "no" ? Reply::No : Reply::Cancel;
    }
    void Tell(const std::string& text, int) override { Note("tell " + FirstTwoLines(text)); Told.push_back(text); }
    std::vector<std::string> Told;  // every message whole
    std::optional<std::string> ChooseFile(const FileDialogSetup& setup) override {
        Note("file dialog " + setup.FileName + (setup.InitialFolder.empty() ? "" : " in " + setup.InitialFolder));
        return Chosen();
    }
    std::vector<std::string> ChooseFiles(const FileDialogSetup& setup) override {
        Note("files dialog " + setup.Filter);
        std::vector<std::string> paths;
        std::istringstream answer(Next());
        for (std::string path; std::getline(answer, path, '|');) paths.push_back(path);
        return paths;
    }
    std::optional<std::string> ChooseWorkFolder(const std::string& workFolder) override {
        Note("folder dialog " + workFolder);
        return Chosen();
    }
    void SetBusy(bool busy) override { Note(busy ? "busy" : "idle"); }
    void PumpEvents() override {
        if (DuringPump) DuringPump();
    }
    bool RunBatch(const std::string& batchName, const std::string& folder) override {
        Note("batch " + folder + batchName);
        if (DuringBatch) DuringBatch();
        if (BatchRuns) return RunBatchHeadless(folder + batchName, {[](const std::string&) {}, {}}).ok();
        return BatchStarts;
    }
    void ShowLabels(const std::string& name, const std::string& count) override { Note("labels " + name + "|" + count); }
    void ShowSffRow(const SpriteRow& row, const SffState&, int64_t subfile, const std::string& source) override {
        Note("sff " + std::to_string(subfile) + " " + row[Column::GroupNo] + " " + source);
    }
    void ShowFileRow(const SpriteRow& row, const std::string& path) override {
        Note("file " + path + " " + row[Column::GroupNo]);
    }
    void ShowPictureFile(const std::string& path) override { Note("picture " + path); }
    void ResetPreview() override { Note("reset"); }

private:
    void Note(std::string line) { Log.push_back(std::move(line)); }
    static std::string FirstTwoLines(const std::string& text) {
        const size_t first = text.find("\r\n");
        if (first == std::string::npos) return text;
        return text.substr(0, first) + " | " + text.substr(first + 2, text.find("\r\n", first + 2) - first - 2);
    }
    std::string Next() {
        if (Script.empty()) return {};
        std::string answer = std::move(Script.front());
        Script.pop_front();
        return answer;
    }
    std::optional<std::string> Chosen() {
        std::string path = Next();
        return path.empty() ? std::nullopt : std::optional(path);
    }
};

}  // namespace tarvolin::test
