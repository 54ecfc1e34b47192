#pragma once
// Doubles of the message box and the file dialog: they answer from a script in order, keep
// what was shown, and answer No (OK to a box without a question) or Cancel past its end.
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileDialog.h"
#include "platform/MessageBox.h"
#include "platform/Services.h"

namespace tarvolin::test {

template <class Reply, class Seen>
class Scripted {
public:
    std::vector<Seen> Shown;

protected:
    std::deque<Reply> script_;
    // Records `seen`; the next reply of the script, or `otherwise` when none is left.
    Reply Next(Seen seen, Reply otherwise);
};

class ScriptedMessageBox : public platform::MessageBox, public Scripted<platform::Answer, std::string> {
public:
    void Answer(platform::Answer a) { script_.push_back(a); }
    platform::Answer Show(QWidget* parent, const std::string& text, int styleWord) override;
};

class ScriptedFileDialog : public platform::FileDialog, public Scripted<std::optional<std::string>, FileDialogSetup> {
public:
    void Choose(std::string path) { script_.emplace_back(std::move(path)); }
    void Cancel() { script_.emplace_back(std::nullopt); }
    std::optional<std::string> Show(QWidget* parent, const FileDialogSetup& setup) override;
};

// Both doubles and the Services that hand them to a window.
struct ScriptedServices {
    ScriptedMessageBox Box;
    ScriptedFileDialog Files;
    platform::Services Services{Box, Files};
};

}  // namespace tarvolin::test
