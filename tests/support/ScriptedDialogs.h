#pragma once
// Doubles of the message box and the file dialog for widget tests: they answer from a
// script in order and record what was shown. Anything shown beyond the script counts as
// unexpected and is answered No / Cancel.
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileDialog.h"
#include "platform/MessageBox.h"
#include "platform/Services.h"

namespace tarvolin::test {

class ScriptedMessageBox : public platform::MessageBox {
public:
    void Answer(platform::Answer a) { script_.push_back(a); }
    platform::Answer Show(QWidget* parent, const std::string& text, int styleWord) override;

    std::vector<std::string> Shown;  // the texts
    int Unexpected = 0;

private:
    std::deque<platform::Answer> script_;
};

class ScriptedFileDialog : public platform::FileDialog {
public:
    void Choose(std::string path) { script_.emplace_back(std::move(path)); }
    void Cancel() { script_.emplace_back(std::nullopt); }
    std::optional<std::string> Show(QWidget* parent, const FileDialogSetup& setup) override;

    std::vector<FileDialogSetup> Shown;
    int Unexpected = 0;

private:
    std::deque<std::optional<std::string>> script_;
};

// Both doubles and the Services that hand them to a window.
struct ScriptedServices {
    ScriptedMessageBox Box;
    ScriptedFileDialog Files;
    platform::Services Services{Box, Files};
};

}  // namespace tarvolin::test
