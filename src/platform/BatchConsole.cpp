#include "platform/BatchConsole.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace tarvolin::platform {

BatchConsole::BatchConsole(const QString& title) : screen_(new QPlainTextEdit(this)) {
    setObjectName("BatchConsole");
    setWindowTitle(title);
    screen_->setReadOnly(true);
    screen_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // A long line goes on at the left edge below, as in a console: nothing it says (the
    // builder's error line above all) is cut off at the window's edge.
    screen_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    screen_->setWordWrapMode(QTextOption::WrapAnywhere);
    screen_->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(screen_);
    // About 80 columns by 25 lines, the size of a console.
    QFontMetrics metrics(screen_->font());
    resize(metrics.horizontalAdvance(QLatin1Char('M')) * 82, metrics.lineSpacing() * 26);
    setFocusProxy(screen_);
}

void BatchConsole::PrintLine(const QString& line) { Write(line + QLatin1Char('\n')); }

void BatchConsole::Write(const QString& text) {
    QString plain = text;
    plain.remove(QLatin1Char('\r'));
    screen_->moveCursor(QTextCursor::End);
    screen_->insertPlainText(plain);
    screen_->moveCursor(QTextCursor::End);
}

void BatchConsole::PrintStatus(const QString& line, bool ok) {
    QTextCharFormat status;
    status.setForeground(ok ? QColor(0, 128, 0) : QColor(200, 0, 0));
    status.setFontWeight(QFont::Bold);
    QTextCursor cursor = screen_->textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(line, status);
    cursor.insertText(QStringLiteral("\n"), QTextCharFormat());
    screen_->setTextCursor(cursor);
}

void BatchConsole::ClearScreen() { screen_->clear(); }

QString BatchConsole::Text() const { return screen_->toPlainText(); }

bool BatchConsole::AnswerKey(const QKeyEvent* event) {
    if (!waitingForKey_) return false;
    switch (event->key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Meta:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return false;  // a modifier alone doesn't end a pause
    default:
        waitingForKey_ = false;
        emit KeyAnswered();
        return true;
    }
}

void BatchConsole::keyPressEvent(QKeyEvent* event) {
    if (!AnswerKey(event)) QWidget::keyPressEvent(event);
}

bool BatchConsole::eventFilter(QObject* watched, QEvent* event) {
    if (watched == screen_ && event->type() == QEvent::KeyPress && AnswerKey(static_cast<QKeyEvent*>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

void BatchConsole::closeEvent(QCloseEvent* event) {
    event->accept();
    emit ClosedByUser();
}

}  // namespace tarvolin::platform
