// The desktop program: reads the settings beside the program file once, then runs the
// main window until it is closed. `tarvolin FILE.sff` opens the file at start.
#include <QApplication>
#include <QTimer>

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
    // The file named after the options Qt took for itself, opened once the window is up
    // so that a refusal's message stands over it.
    const QStringList given = QCoreApplication::arguments().mid(1);
    if (!given.isEmpty())
        QTimer::singleShot(0, main.get(), [&main, path = given.front().toStdString()] { main->OpenGiven(path); });
    return app.exec();
}
