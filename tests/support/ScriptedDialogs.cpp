#include "support/ScriptedDialogs.h"

namespace tarvolin::test {

namespace {
// The next answer of `script`, or `otherwise` (counted as unexpected) when none is left.
template <class T>
T Next(std::deque<T>& script, int& unexpected, T otherwise) {
    if (script.empty()) return ++unexpected, otherwise;
    T answer = std::move(script.front());
    script.pop_front();
    return answer;
}
}  // namespace

platform::Answer ScriptedMessageBox::Show(QWidget*, const std::string& text, int styleWord) {
    Shown.push_back(text);
    return Next(script_, Unexpected, (styleWord & 0x0F) == 4 ? platform::Answer::No : platform::Answer::Ok);
}

std::optional<std::string> ScriptedFileDialog::Show(QWidget*, const FileDialogSetup& setup) {
    Shown.push_back(setup);
    return Next(script_, Unexpected, std::optional<std::string>());
}

}  // namespace tarvolin::test
