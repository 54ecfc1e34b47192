#include "support/ScriptedDialogs.h"

namespace tarvolin::test {

platform::Answer ScriptedMessageBox::Show(QWidget*, const std::string& text, int styleWord) {
    Shown.push_back({text, styleWord});
    if (script_.empty()) {
        ++Unexpected;
        return (styleWord & 0x0F) == 4 ? platform::Answer::No : platform::Answer::Ok;
    }
    platform::Answer a = script_.front();
    script_.pop_front();
    return a;
}

std::optional<std::string> ScriptedFileDialog::Show(QWidget*, const FileDialogSetup& setup) {
    Shown.push_back(setup);
    if (script_.empty()) {
        ++Unexpected;
        return std::nullopt;
    }
    auto a = script_.front();
    script_.pop_front();
    return a;
}

}  // namespace tarvolin::test
