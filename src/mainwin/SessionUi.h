#pragma once
// What the table commands need of a user interface: questions and messages, the file
// dialog and the working-folder dialog, the busy pointer, letting waiting events through,
// running the build batch, and showing the labels and the preview. The main window answers
// with its widgets, tarvolin-cli with its arguments and its standard output and error, the
// tests with a script.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/FileDialogSetup.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

class SessionUi {
public:
    virtual ~SessionUi() = default;

    // A Yes/No question with its message-box style word; true for Yes.
    virtual bool Ask(const std::string& text, int styleWord) = 0;
    // A question with Yes, No and Cancel (the style's buttons are Yes/No/Cancel); those
    // who ask nothing but Yes/No answer Cancel by No.
    enum class Reply { Yes, No, Cancel };
    virtual Reply AskOrCancel(const std::string& text, int styleWord) { return Ask(text, styleWord) ? Reply::Yes : Reply::No; }
    // A message with the OK button alone: guidance, a command's closing word, a refusal.
    virtual void Tell(const std::string& text, int styleWord) = 0;
    // The file dialog; nothing on Cancel.
    virtual std::optional<std::string> ChooseFile(const FileDialogSetup& setup) = 0;
    // The file dialog choosing one file or more; none on Cancel.
    virtual std::vector<std::string> ChooseFiles(const FileDialogSetup& setup) {
        auto one = ChooseFile(setup);
        return one ? std::vector<std::string>{*one} : std::vector<std::string>{};
    }
    // The working-folder dialog, handed `workFolder` (empty: none); the folder ends with
    // '/'. Nothing on Cancel.
    virtual std::optional<std::string> ChooseWorkFolder(const std::string& workFolder) = 0;
    // The hourglass over the main window, on or off.
    virtual void SetBusy(bool busy) = 0;
    // Lets waiting events through once.
    virtual void PumpEvents() = 0;
    // Runs the batch `batchName` in `folder` and waits for its end; false only when it
    // could not be started.
    virtual bool RunBatch(const std::string& batchName, const std::string& folder) = 0;

    // The texts of lblSffName and lblImage.
    virtual void ShowLabels(const std::string& sffName, const std::string& imageCount) = 0;
    // A row onto the preview screen, its picture a sprite of the open SFF: `subfile` is the
    // index its P.Pos names (-1: none), `source` names it in a refusal.
    virtual void ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile,
                            const std::string& source) = 0;
    // A row onto the preview screen, its picture the file `path` of its own.
    virtual void ShowFileRow(const SpriteRow& row, const std::string& path) = 0;
    // Change PCX's picture onto the preview screen, leaving its boxes as they are.
    virtual void ShowPictureFile(const std::string& path) = 0;
    // Initialize's reset of the preview screen: the empty screen, the boxes "0".
    virtual void ResetPreview() = 0;
    // The table, its history or its unsaved state changed (the title's mark follows).
    virtual void TableChanged() {}
};

// The hourglass for as long as a command works: off on every way out, or earlier by
// Release (before a failure's message).
class BusyPointer {
public:
    explicit BusyPointer(SessionUi& ui) : ui_(&ui) { ui.SetBusy(true); }
    ~BusyPointer() { Release(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
    void Release() {
        if (ui_) ui_->SetBusy(false);
        ui_ = nullptr;
    }

private:
    SessionUi* ui_;
};

}  // namespace tarvolin
