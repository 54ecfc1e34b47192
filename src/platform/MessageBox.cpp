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
    const bool yesNo = (styleWord & 0x0F) == 4;
    if (!yesNo) {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return Answer::Ok;
    }
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton((styleWord & 0x300) == 256 ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

}  // namespace tarvolin::platform
