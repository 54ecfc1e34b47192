// Draws the windows into PNG files for the documentation and for looking at the layout:
// the main window with a sample SFF open, the preview window beside it, the whole screen, the version dialog and
// the working-folder dialog. Usage: tarvolin_screenshots SFF OUTDIR
#include <QApplication>
#include <QCheckBox>
#include <QScreen>
#include <QDir>
#include <QTimer>

#include "config/Settings.h"
#include "config/ui/FrmAbout.h"
#include "config/ui/FrmPath.h"
#include "mainwin/ui/FrmMain.h"
#include "support/ScriptedDialogs.h"

using namespace tarvolin;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarvolin"));
    if (argc != 3) {
        fprintf(stderr, "usage: %s SFF OUTDIR\n", argv[0]);
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(out);
    const Settings settings = LoadSettings(std::string());
    test::ScriptedServices dialogs;
    for (int i = 0; i < 2; ++i) dialogs.Box.Answer(platform::Answer::Yes);  // any palette-mode warning
    dialogs.Files.Choose(argv[1]);
    std::unique_ptr<FrmMain> main = FrmMain::Start(settings, dialogs.Services);
    main->move(40, 40);
    main->Work().Open();
    main->Work().Table.Select(3);
    main->Work().SelectList();
    QApplication::processEvents();
    main->grab().save(out + QStringLiteral("/main.png"));
    main->findChild<QCheckBox*>(QStringLiteral("chkScreen"))->click();  // the preview beside the main window
    QApplication::processEvents();
    main->PreviewWindow().grab().save(out + QStringLiteral("/preview.png"));
    if (QScreen* screen = QGuiApplication::primaryScreen())
        screen->grabWindow(0).save(out + QStringLiteral("/desktop.png"));

    FrmAbout about(main.get());
    about.show();
    QApplication::processEvents();
    about.grab().save(out + QStringLiteral("/about.png"));
    about.close();

    QTimer::singleShot(100, [&] {
        FrmPath& path = main->PathDialog();
        path.grab().save(out + QStringLiteral("/folder.png"));
        path.reject();
    });
    AskWorkFolder(main->PathDialog(), QDir::homePath().toStdString() + "/");
    return 0;
}
