#pragma once
// The session's user interface on the command line: the dialogs are answered with the
// command's arguments, a question is printed and answered Yes (the palette-mode warning:
// the command goes on as after a Yes in the window), warnings and refusals go to standard
// error, and the batch runs without a window with its console on standard output. The
// window's guidance and closing words (question and information icons) are not printed:
// the exit status says how a command ended.
#include <optional>
#include <string>

#include "CliCommon.h"
#include "mainwin/SessionUi.h"

namespace tarvolin::cli {

class CliUi : public SessionUi {
public:
    explicit CliUi(const Context& ctx) : ctx_(ctx) {}

    std::optional<std::string> FileAnswer;    // what the file dialog is answered with
    std::optional<std::string> FolderAnswer;  // what the working-folder dialog is answered with

    bool Ask(const std::string& text, int styleWord) override;
    void Tell(const std::string& text, int styleWord) override;
    std::optional<std::string> ChooseFile(const FileDialogSetup&) override { return FileAnswer; }
    std::optional<std::string> ChooseWorkFolder(const std::string&) override { return FolderAnswer; }
    void SetBusy(bool) override {}
    void PumpEvents() override {}
    bool RunBatch(const std::string& batchName, const std::string& folder) override;
    void ShowLabels(const std::string&, const std::string&) override {}
    void ShowSffRow(const SpriteRow&, const SffState&, int64_t, const std::string&) override {}
    void ShowFileRow(const SpriteRow&, const std::string&) override {}
    void ShowPictureFile(const std::string&) override {}
    void ResetPreview() override {}

private:
    const Context& ctx_;
};

}  // namespace tarvolin::cli
