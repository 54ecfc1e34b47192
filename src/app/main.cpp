// The desktop program: reads the settings file once (beside the program, or in the user's
// config folder), then runs the main window until it is closed. `tarvolin FILE.sff` opens
// the file at start.
#include <QApplication>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <cstring>

#include "base/AtomicFile.h"
#include "config/Settings.h"
#include "config/ui/AppIcon.h"
#include "mainwin/ui/FrmMain.h"
#include "platform/FileDialog.h"
#include "platform/MessageBox.h"
#include "platform/Services.h"

namespace {
// Also the text of the manual page, which the build makes from it.
const char kUsage[] =
    "usage: tarvolin [FILE.sff]\n"
    "\n"
    "Tarvolin takes the sprite archives of a 2D fighting-game engine, SFF files, apart and\n"
    "builds them anew: it shows the sprites of an SFF in a table, writes them out as PCX or\n"
    "PNG pictures, lets you edit their numbers, axes and pictures (PCX or PNG files), and\n"
    "builds a new SFF with sprmaker.exe, which lies beside it.\n"
    "\n"
    "Options:\n"
    "  FILE.sff      the SFF to open at the start\n"
    "  -h, --help    print this help and exit\n"
    "\n";
}  // namespace

int main(int argc, char** argv) {
    // Answered before the window system starts, so that it works without a display.
    if (argc == 2 && (!std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h"))) {
        std::printf("%s%s", kUsage, tarvolin::kSettingsFilePlaces);
        return 0;
    }
    // A write past the file-size limit (ulimit -f) fails with a message, as every other
    // failed write does, instead of ending the program.
    tarvolin::ReportFileSizeLimitAsError();
    QApplication app(argc, argv);
    // The name alone: the display name falls back to it (message boxes show it as their
    // title), while setting a display name as well would make Qt append " — Tarvolin" to
    // every window's own title.
    QApplication::setApplicationName(QStringLiteral("Tarvolin"));
    QApplication::setWindowIcon(tarvolin::AppIcon());

    const tarvolin::Settings settings = tarvolin::LoadSettings(
        tarvolin::FindSettingsFile(tarvolin::IniPathFor(QCoreApplication::applicationFilePath().toStdString())));
    tarvolin::platform::QtMessageBox box;
    tarvolin::platform::QtFileDialog files;
    tarvolin::platform::Services services{box, files};

    const std::unique_ptr<tarvolin::FrmMain> main = tarvolin::FrmMain::Start(settings, services);
    // The file named after the options Qt took for itself, opened once the window is up
    // so that a refusal's message stands over it.
    const QStringList given = QCoreApplication::arguments().mid(1);
    // Made absolute: the recent-files list keeps it for runs started from other folders.
    if (!given.isEmpty())
        QTimer::singleShot(0, main.get(), [&main, path = QFileInfo(given.front()).absoluteFilePath().toStdString()] {
            main->OpenGiven(path);
        });
    return app.exec();
}
