// The desktop program: reads the settings beside the program file once, then runs the
// main window until it is closed. It takes no arguments of its own.
#include <QApplication>

#include "config/Settings.h"
#include "config/ui/AppIcon.h"
#include "mainwin/ui/FrmMain.h"
#include "platform/FileDialog.h"
#include "platform/MessageBox.h"
#include "platform/Services.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    // The name alone: the display name falls back to it (message boxes show it as their
    // title), while setting a display name as well would make Qt append " — Tarvolin" to
    // every window's own title.
    QApplication::setApplicationName(QStringLiteral("Tarvolin"));
    QApplication::setWindowIcon(tarvolin::AppIcon());

    const tarvolin::Settings settings =
        tarvolin::LoadSettings(tarvolin::IniPathFor(QCoreApplication::applicationFilePath().toStdString()));
    tarvolin::platform::QtMessageBox box;
    tarvolin::platform::QtFileDialog files;
    tarvolin::platform::Services services{box, files};

    const std::unique_ptr<tarvolin::FrmMain> main = tarvolin::FrmMain::Start(settings, services);
    return app.exec();
}
