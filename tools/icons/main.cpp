// Writes the program's icon, as the windows draw it, into PNG files for the desktop's
// icon theme: tarvolin_icon SIZE FILE [SIZE FILE ...]. Run by the build.
#include <QGuiApplication>
#include <QPixmap>

#include <cstdio>
#include <cstdlib>

#include "config/ui/AppIcon.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");  // draws files only, on any machine
    // Qt's notes about the session it runs in (no runtime folder and the like) don't
    // concern a drawing; only real failures are shown.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    QGuiApplication app(argc, argv);
    if (argc < 3 || argc % 2 == 0) {
        std::fprintf(stderr, "usage: tarvolin_icon SIZE FILE [SIZE FILE ...]\n");
        return 1;
    }
    for (int i = 1; i + 1 < argc; i += 2) {
        const int size = std::atoi(argv[i]);
        if (size < 16 || size > 1024 || !tarvolin::AppIconPixmap(size).save(QString::fromLocal8Bit(argv[i + 1]), "PNG")) {
            std::fprintf(stderr, "tarvolin_icon: could not write %s at %s pixels\n", argv[i + 1], argv[i]);
            return 2;
        }
    }
    return 0;
}
