// Save All PCX, Build SFF and Make Text driven through the main window: scripted message
// boxes and file dialog, the real working-folder dialog answered on screen, and for the
// build the real batch console answered with a key.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>

#include "MainWindowFixture.h"
#include "config/FrmPath.h"
#include "config/MessageCatalog.h"
#include "platform/BatchConsole.h"
#include "rebuild/BatchInterpreter.h"
#include "sff/Ask.h"
#include "support/RebuildCheck.h"
#include "support/TestData.h"

using namespace tarvolin;
using test::MainWindowFixture;

namespace {

namespace fs = std::filesystem;

// What the working-folder dialog showed when a command opened it.
struct PathSeen {
    bool Shown = false;
    std::string FieldAtOpening;
};

// Answers the working-folder dialog of the next command: the folder typed and OK, or
// Cancel when there is none. A command that shows no dialog leaves Shown false.
std::shared_ptr<PathSeen> AnswerPath(FrmMain& main, std::optional<std::string> folder) {
    auto seen = std::make_shared<PathSeen>();
    FrmPath* dialog = &main.PathDialog();
    QTimer::singleShot(0, dialog, [seen, dialog, folder] {
        if (!dialog->isVisible()) return;
        seen->Shown = true;
        auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("txtPath"));
        seen->FieldAtOpening = field->text().toStdString();
        if (folder) field->setText(QString::fromStdString(*folder));
        QTest::mouseClick(dialog->findChild<QPushButton*>(folder ? QStringLiteral("cmdOK") : QStringLiteral("cmdCancel")),
                          Qt::LeftButton);
    });
    return seen;
}

// Clicks a command's button and lets the events it left behind run out, so that no
// answer meant for one command reaches the next.
void Run(MainWindowFixture& f, const char* button) {
    f.Click(button);
    QCoreApplication::processEvents();
}

platform::BatchConsole* OpenConsole() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* c = qobject_cast<platform::BatchConsole*>(w); c && c->isVisible()) return c;
    return nullptr;
}

// Presses a key in the batch console once it shows the pause line; keeps what it showed.
class ConsoleAnswerer {
public:
    ConsoleAnswerer() {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            platform::BatchConsole* console = OpenConsole();
            if (!console || !console->Text().contains(QString::fromStdString(PressAnyKeyText()))) return;
            Seen = console->Text().toStdString();
            QTest::keyClick(console, Qt::Key_Space);
        });
        timer_.start(20);
    }
    std::string Seen;

private:
    QTimer timer_;
};

std::vector<std::string> Boxes(MainWindowFixture& f) {
    std::vector<std::string> texts;
    for (const auto& b : f.Dialogs().Box.Shown) texts.push_back(b.Text);
    return texts;
}

size_t FilesIn(const std::string& folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), {}));
}

std::string Text(const std::string& path) {
    auto b = test::ReadFile(path);
    return std::string(b.begin(), b.end());
}

bool HourglassOff(FrmMain& main) { return main.cursor().shape() != Qt::WaitCursor; }

}  // namespace

class BuildCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void emptyTableShowsNothing();
    void cancelInEachDialog();
    void exportRemembersTheFolderAndMakeTextWritesBesideTheChosenName();
    void writeFailuresStopWithTheFileNamed();
    void buildEveryRealFile();
};

void BuildCommandsTest::emptyTableShowsNothing() {
    MainWindowFixture f;
    for (const char* button : {"cmdPCX", "cmdBuildSFF", "cmdText"}) {
        auto seen = AnswerPath(f.Main(), std::nullopt);
        Run(f, button);
        QVERIFY2(!seen->Shown, button);
    }
    QVERIFY(f.Dialogs().Box.Shown.empty());
    QVERIFY(f.Dialogs().Files.Shown.empty());
}

void BuildCommandsTest::cancelInEachDialog() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("fighter.sff", 3));
    const AppIni& ini = main.Ini();

    auto pcx = AnswerPath(main, std::nullopt);
    Run(f, "cmdPCX");
    QVERIFY(pcx->Shown);
    QVERIFY(f.Dialogs().Box.Shown.empty());  // the export's cancel is silent
    QCOMPARE(main.State.WorkFolder, std::string());

    auto build = AnswerPath(main, std::nullopt);
    Run(f, "cmdBuildSFF");
    QVERIFY(build->Shown);
    QCOMPARE(Boxes(f), (std::vector<std::string>{ini.MsgChooseFolder, ini.MsgCancelled + "\r\n" + ini.MsgAborting}));
    QCOMPARE(f.Dialogs().Box.Shown[0].Style, style::Ok + style::Question);
    QCOMPARE(f.Dialogs().Box.Shown[1].Style, style::Ok + style::Exclamation);
    QCOMPARE(main.State.WorkFolder, std::string());

    f.Dialogs().Files.Cancel();
    Run(f, "cmdText");
    QCOMPARE(f.Dialogs().Files.Shown.size(), size_t{2});  // the open, then the save dialog
    const platform::FileDialogSetup& save = f.Dialogs().Files.Shown[1];
    QVERIFY(save.DialogMode == platform::FileDialogSetup::Mode::Save);
    QCOMPARE(save.Title, std::string("Parameter File Save"));
    QCOMPARE(save.Filter, std::string("txt Files(*.txt)|*.txt|"));
    QCOMPARE(save.FileName, std::string("fighter_SFF.txt"));
    QCOMPARE(save.InitialFolder, std::string());  // no folder chosen yet
    QCOMPARE(save.Flags, 6);
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{2});  // its cancel is silent too
    QCOMPARE(FilesIn(f.Dir().Path()), size_t{1});       // only the SFF itself
    QVERIFY(HourglassOff(main));
}

void BuildCommandsTest::exportRemembersTheFolderAndMakeTextWritesBesideTheChosenName() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("fighter.sff", 3));
    const std::string out = f.Dir() / "out/";
    fs::create_directory(out);

    AnswerPath(main, out);
    Run(f, "cmdPCX");
    QCOMPARE(Boxes(f), std::vector<std::string>{main.Ini().MsgPcxDone});
    QCOMPARE(f.Dialogs().Box.Shown[0].Style, style::Ok + style::Information);
    QCOMPARE(main.State.WorkFolder, out);
    QVERIFY(fs::exists(out + "fighter_00000_00000.pcx") && fs::exists(out + "fighter_00002_00000.pcx"));
    QCOMPARE(FilesIn(out), size_t{3});
    QVERIFY(HourglassOff(main));

    // The next use opens on the folder of the last one.
    auto again = AnswerPath(main, std::nullopt);
    Run(f, "cmdPCX");
    QCOMPARE(again->FieldAtOpening, out);
    QCOMPARE(main.State.WorkFolder, out);

    f.Dialogs().Files.Choose(out + "my.dat");
    Run(f, "cmdText");
    QCOMPARE(f.Dialogs().Files.Shown.back().InitialFolder, out);
    QCOMPARE(Boxes(f).back(), main.Ini().MsgTextDone);
    QCOMPARE(f.Dialogs().Box.Shown.back().Style, style::Ok + style::Information);
    // The last four bytes of any chosen name go: my.dat gives myBuild.bat.
    const std::string bat = Text(out + "myBuild.bat");
    QVERIFY(bat.find("sprmaker.exe\" < my.dat > CreateLog.txt\r\n") != std::string::npos);
    QVERIFY(bat.ends_with("pause\r\n"));
    QVERIFY(Text(out + "my.dat").starts_with("#\r\n1\r\n2\r\nfighter.sff\r\n"));
    QCOMPARE(FilesIn(out), size_t{5});  // Make Text writes no PCX file
    QVERIFY(HourglassOff(main));
}

void BuildCommandsTest::writeFailuresStopWithTheFileNamed() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("fighter.sff", 2));
    const AppIni& ini = main.Ini();
    const std::string missing = f.Dir() / "none/";
    const std::string writeFailed = ini.Message(msg::WriteFailed);

    AnswerPath(main, missing);
    Run(f, "cmdPCX");
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{1});
    QVERIFY(f.Dialogs().Box.Shown[0].Text.starts_with(writeFailed + "\r\n" + missing + "fighter_00000_00000.pcx"));
    QVERIFY(HourglassOff(main));

    f.Dialogs().Files.Choose(missing + "fighter_SFF.txt");
    Run(f, "cmdText");
    QCOMPARE(f.Dialogs().Box.Shown.size(), size_t{2});
    QVERIFY(f.Dialogs().Box.Shown[1].Text.starts_with(writeFailed + "\r\n" + missing + "fighter_SFF.txt"));
    QVERIFY(HourglassOff(main));

    AnswerPath(main, missing);
    Run(f, "cmdBuildSFF");
    QCOMPARE(Boxes(f).size(), size_t{4});
    QCOMPARE(Boxes(f)[2], ini.MsgChooseFolder);
    QVERIFY(Boxes(f)[3].starts_with(writeFailed + "\r\n" + missing + "fighter_00000_00000.pcx"));
    QCOMPARE(OpenConsole(), nullptr);  // no batch ran
    QVERIFY(HourglassOff(main));
    QVERIFY(!fs::exists(missing));

    // A text CP932 can't hold is refused before anything is written: not even the PCX
    // files of a build, and no parameter text under a name CP932 can't hold.
    const std::string out = f.Dir() / "out/";
    fs::create_directory(out);
    main.Table.SetCell(2, Column::ItemNo, "★😀");
    AnswerPath(main, out);
    Run(f, "cmdBuildSFF");
    QCOMPARE(Boxes(f).size(), size_t{6});
    QVERIFY(Boxes(f)[5].starts_with(ini.Message(msg::NotCp932) + "\r\n" + out + "fighter_SFF.txt"));
    main.Table.SetCell(2, Column::ItemNo, "0");
    f.Dialogs().Files.Choose(out + "😀.txt");
    Run(f, "cmdText");
    QCOMPARE(Boxes(f).size(), size_t{7});
    QVERIFY(Boxes(f)[6].starts_with(ini.Message(msg::NotCp932)));
    QCOMPARE(FilesIn(out), size_t{0});
    QVERIFY(HourglassOff(main));
}

void BuildCommandsTest::buildEveryRealFile() {
    const auto files = test::SharedSffFiles();
    if (files.empty()) QSKIP("../shared/data is absent: real-file round trip skipped");
    if (!fs::exists(QCoreApplication::applicationDirPath().toStdString() + "/sprmaker.exe"))
        QSKIP("sprmaker.exe is not built beside the program: round trip skipped");
    for (const std::string& file : files) {
        MainWindowFixture f;
        FrmMain& main = f.Main();
        auto bytes = test::ReadFile(file);
        QVERIFY(bytes.size() > 32);
        if (bytes[32] != 1) f.Dialogs().Box.Answer(platform::Answer::Yes);  // the palette-mode warning
        f.Open(file);
        QVERIFY2(main.Table.RowCount() > 0, file.c_str());
        const size_t before = f.Dialogs().Box.Shown.size();

        const std::string out = f.Dir() / "out/";
        fs::create_directory(out);
        ConsoleAnswerer answerer;
        AnswerPath(main, out);
        Run(f, "cmdBuildSFF");

        // The console showed the batch: "cls" cleared the first echo, the last ones stand.
        QVERIFY2(answerer.Seen.find("SFF 作成処理終了.\n") != std::string::npos, answerer.Seen.c_str());
        QVERIFY(answerer.Seen.find("SFF を作成中") == std::string::npos);
        QCOMPARE(OpenConsole(), nullptr);
        QCOMPARE(f.Dialogs().Box.Shown.size(), before + 1);  // only the folder request: no failure
        QVERIFY(HourglassOff(main));
        const std::string name = fs::path(file).filename().string();
        QVERIFY(fs::exists(out + "CreateLog.txt"));
        QCOMPARE(test::RebuildDifferences(file, out + name), std::vector<std::string>{});
    }
}

QTEST_MAIN(BuildCommandsTest)
#include "BuildCommandsTest.moc"
