#pragma once
// The message box of the windows: a text, a style word (buttons 0 = OK, 3 = Yes/No/Cancel,
// 4 = Yes/No; icons
// 16 stop, 32 question, 48 exclamation, 64 information; 256 = second button is the
// default), and no title of its own: the title bar shows the program's name.
#include <string>

class QWidget;

namespace tarvolin::platform {

enum class Answer { Ok, Yes, No, Cancel };

class MessageBox {
public:
    virtual ~MessageBox() = default;
    virtual Answer Show(QWidget* parent, const std::string& text, int styleWord) = 0;

    // For the core's questions: true for Yes.
    bool AskYes(QWidget* parent, const std::string& text, int styleWord) {
        return Show(parent, text, styleWord) == Answer::Yes;
    }
};

// The real one, over QMessageBox.
class QtMessageBox : public MessageBox {
public:
    Answer Show(QWidget* parent, const std::string& text, int styleWord) override;
};

}  // namespace tarvolin::platform
