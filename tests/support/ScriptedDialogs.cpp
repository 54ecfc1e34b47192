#include "support/ScriptedDialogs.h"

namespace tarvolin::test {

template <class Reply, class Seen>
Reply Scripted<Reply, Seen>::Next(Seen seen, Reply otherwise) {
    Shown.push_back(std::move(seen));
    if (script_.empty()) return otherwise;
    Reply reply = std::move(script_.front());
    script_.pop_front();
    return reply;
}

platform::Answer ScriptedMessageBox::Show(QWidget*, const std::string& text, int styleWord) {
    return Next(text, (styleWord & 0x0F) == 4 ? platform::Answer::No : platform::Answer::Ok);
}

std::optional<std::string> ScriptedFileDialog::Show(QWidget*, const FileDialogSetup& setup) {
    return Next(setup, std::nullopt);
}

}  // namespace tarvolin::test
