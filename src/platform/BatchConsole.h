#pragma once
// The console window of a running batch: a read-only monospace text area that shows what
// the batch prints. While the batch pauses, the next key pressed in the window (a key that
// is more than a modifier) answers the pause. Closing the window stops the batch.
#include <QWidget>

class QPlainTextEdit;

namespace tarvolin::platform {

class BatchConsole : public QWidget {
    Q_OBJECT
public:
    explicit BatchConsole(const QString& title);

    void PrintLine(const QString& line);
    // The runner's own status line: green when `ok`, red otherwise, bold.
    void PrintStatus(const QString& line, bool ok);
    void Write(const QString& text);  // raw output of a program; CR LF shown as one line end
    void ClearScreen();
    void WaitForKey() { waitingForKey_ = true; }
    QString Text() const;

signals:
    void KeyAnswered();
    void ClosedByUser();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool AnswerKey(const QKeyEvent* event);

    QPlainTextEdit* screen_;
    bool waitingForKey_ = false;
};

}  // namespace tarvolin::platform
