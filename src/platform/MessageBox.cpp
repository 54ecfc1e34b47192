#include "platform/MessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace tarvolin::platform {

Answer QtMessageBox::Show(QWidget* parent, const std::string& text, int styleWord) {
    QMessageBox box(parent);
    box.setWindowTitle(QApplication::applicationDisplayName());
    box.setText(QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    switch (styleWord & 0x70) {
        case 16: box.setIcon(QMessageBox::Critical); break;
        case 32: box.setIcon(QMessageBox::Question); break;
        case 48: box.setIcon(QMessageBox::Warning); break;
        case 64: box.setIcon(QMessageBox::Information); break;
        default: box.setIcon(QMessageBox::NoIcon); break;
    }
    const int buttons = styleWord & 0x0F;
    if (buttons != 3 && buttons != 4) {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return Answer::Ok;
    }
    const bool cancel = buttons == 3;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | (cancel ? QMessageBox::Cancel : QMessageBox::NoButton));
    box.setDefaultButton((styleWord & 0x300) == 256 ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(cancel ? QMessageBox::Cancel : QMessageBox::No);
    switch (box.exec()) {
        case QMessageBox::Yes: return Answer::Yes;
        case QMessageBox::No: return Answer::No;
        default: return cancel ? Answer::Cancel : Answer::No;
    }
}

}  // namespace tarvolin::platform
