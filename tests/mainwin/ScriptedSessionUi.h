#pragma once
// The session's user interface for tests: questions and dialogs are answered from a
// script in order (none left: No, Cancel), and everything shown is recorded. What the user
// does while a command lets events through, or while its batch runs, is a function.
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "mainwin/SessionUi.h"

namespace tarvolin::test {

class ScriptedSessionUi : public SessionUi {
public:
    std::deque<bool> Answers;
    std::deque<std::optional<std::string>> Files;
    std::deque<std::optional<std::string>> Folders;
    bool BatchStarts = true;
    std::function<void()> DuringPump;
    std::function<void()> DuringBatch;

    std::vector<std::pair<std::string, int>> Asked;
    std::vector<std::pair<std::string, int>> Told;
    std::vector<FileDialogSetup> FileDialogs;
    std::vector<std::string> FolderDialogs;  // the folder each was handed
    std::vector<std::string> Batches;        // folder and name of each batch run
    std::string Labels;                      // "name|count"
    std::vector<std::string> Preview;        // "sff SUBFILE GROUP SOURCE", "file PATH GROUP", "picture PATH", "reset"
    int BusyTimes = 0;
    bool Busy = false;

    bool Ask(const std::string& text, int styleWord) override {
        Asked.emplace_back(text, styleWord);
        return Take(Answers).value_or(false);
    }
    void Tell(const std::string& text, int styleWord) override { Told.emplace_back(text, styleWord); }
    std::optional<std::string> ChooseFile(const FileDialogSetup& setup) override {
        FileDialogs.push_back(setup);
        return Take(Files).value_or(std::nullopt);
    }
    std::optional<std::string> ChooseWorkFolder(const std::string& workFolder) override {
        FolderDialogs.push_back(workFolder);
        return Take(Folders).value_or(std::nullopt);
    }
    void SetBusy(bool busy) override {
        BusyTimes += busy;
        Busy = busy;
    }
    void PumpEvents() override {
        if (DuringPump) DuringPump();
    }
    bool RunBatch(const std::string& batchName, const std::string& folder) override {
        Batches.push_back(folder + batchName);
        if (DuringBatch) DuringBatch();
        return BatchStarts;
    }
    void ShowLabels(const std::string& sffName, const std::string& imageCount) override {
        Labels = sffName + "|" + imageCount;
    }
    void ShowSffRow(const SpriteRow& row, const SffState&, int64_t subfile, const std::string& source) override {
        Preview.push_back("sff " + std::to_string(subfile) + " " + row[Column::GroupNo] + " " + source);
    }
    void ShowFileRow(const SpriteRow& row, const std::string& path) override {
        Preview.push_back("file " + path + " " + row[Column::GroupNo]);
    }
    void ShowPictureFile(const std::string& path) override { Preview.push_back("picture " + path); }
    void ResetPreview() override { Preview.push_back("reset"); }

private:
    template <class T>
    static std::optional<T> Take(std::deque<T>& script) {
        if (script.empty()) return std::nullopt;
        T answer = std::move(script.front());
        script.pop_front();
        return answer;
    }
};

}  // namespace tarvolin::test
