// Save All PCX, Build SFF and Make Text driven through the main window: scripted boxes and
// file dialog, the real working-folder dialog and, for a build, the real batch console
// answered on screen; every real SFF opened, shown and rebuilt, and edits reaching the new SFF.
#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <optional>

#include "MainWindowFixture.h"
#include "base/Ask.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "batch/BatchInterpreter.h"
#include "config/ui/FrmPath.h"
#include "platform/BatchConsole.h"
#include "sff/SffReader.h"
#include "support/RebuildCheck.h"
#include "support/TestData.h"

using namespace tarvolin;
using test::MainWindowFixture;

namespace {

namespace fs = std::filesystem;

// Clicks a command's button and answers the working-folder dialog it opens: `folder` typed
// and OK, or Cancel when there is none. Returns what the field held when the dialog came,
// nothing when no dialog came. The events left behind run out before it returns.
std::optional<std::string> Run(MainWindowFixture& f, const char* button, std::optional<std::string> folder = {}) {
    auto seen = std::make_shared<std::optional<std::string>>();
    FrmPath* dialog = &f.Main().PathDialog();
    QTimer::singleShot(0, dialog, [seen, dialog, folder] {
        if (!dialog->isVisible()) return;
        auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("txtPath"));
        *seen = field->text().toStdString();
        if (folder) field->setText(QString::fromStdString(*folder));
        QTest::mouseClick(dialog->findChild<QPushButton*>(folder ? QStringLiteral("cmdOK") : QStringLiteral("cmdCancel")),
                          Qt::LeftButton);
    });
    f.Click(button);
    QCoreApplication::processEvents();
    return *seen;
}

platform::BatchConsole* OpenConsole() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* c = qobject_cast<platform::BatchConsole*>(w); c && c->isVisible()) return c;
    return nullptr;
}

// Build SFF into `out`, pressing a key in the console once it shows the pause line.
// Returns what the console showed then.
std::string BuildInto(MainWindowFixture& f, const std::string& out) {
    std::string seen;
    QTimer keys;
    QObject::connect(&keys, &QTimer::timeout, [&seen] {
        platform::BatchConsole* console = OpenConsole();
        if (!console || !console->Text().contains(QString::fromStdString(PressAnyKeyText()))) return;
        seen = console->Text().toStdString();
        QTest::keyClick(console, Qt::Key_Space);
    });
    keys.start(20);
    fs::create_directories(out);
    Run(f, "cmdBuildSFF", out);
    return seen;
}

std::vector<std::string> Boxes(MainWindowFixture& f) {
    std::vector<std::string> texts;
    for (const auto& b : f.Dialogs().Box.Shown) texts.push_back(b.Text);
    return texts;
}

size_t FilesIn(const std::string& folder) {
    size_t n = 0;
    for (const auto& e : fs::directory_iterator(folder)) n += e.path().filename().string()[0] != '.';  // not the lock
    return n;
}

bool HourglassOff(FrmMain& main) { return main.cursor().shape() != Qt::WaitCursor; }

bool BuilderMissing() { return !fs::exists(QCoreApplication::applicationDirPath().toStdString() + "/sprmaker.exe"); }

}  // namespace

class BuildCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void emptyTableShowsNothing();
    void cancelInEachDialog();
    void exportRemembersTheFolderAndMakeTextWritesBesideTheChosenName();
    void writeFailuresStopWithTheFileNamed();
    void buildEveryRealFile();
    void previewEditsReachTheRebuiltSff();
};

void BuildCommandsTest::emptyTableShowsNothing() {
    MainWindowFixture f;
    for (const char* button : {"cmdPCX", "cmdBuildSFF", "cmdText"}) QVERIFY2(!Run(f, button), button);
    QVERIFY(f.Dialogs().Box.Shown.empty() && f.Dialogs().Files.Shown.empty());
}

void BuildCommandsTest::cancelInEachDialog() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    const AppIni& ini = main.Ini();
    f.Open(f.WriteSharedSff("fighter.sff", 3));

    QVERIFY(Run(f, "cmdPCX"));
    QVERIFY(f.Dialogs().Box.Shown.empty());  // the export's cancel is silent
    QVERIFY(Run(f, "cmdBuildSFF"));
    QCOMPARE(Boxes(f), (std::vector<std::string>{ini.MsgChooseFolder, ini.MsgCancelled + "\r\n" + ini.MsgAborting}));
    QCOMPARE(f.Dialogs().Box.Shown[0].Style, style::Ok + style::Question);
    QCOMPARE(f.Dialogs().Box.Shown[1].Style, style::Ok + style::Exclamation);
    QCOMPARE(main.Work().State.WorkFolder, std::string());

    f.Dialogs().Files.Cancel();
    Run(f, "cmdText");
    const platform::FileDialogSetup& save = f.Dialogs().Files.Shown.at(1);  // after the open dialog
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

    Run(f, "cmdPCX", out);
    QCOMPARE(Boxes(f), std::vector<std::string>{main.Ini().MsgPcxDone});
    QCOMPARE(f.Dialogs().Box.Shown[0].Style, style::Ok + style::Information);
    QVERIFY(fs::exists(out + "fighter_00000_00000.pcx") && fs::exists(out + "fighter_00002_00000.pcx"));
    QCOMPARE(FilesIn(out), size_t{3});
    QVERIFY(HourglassOff(main));
    QCOMPARE(Run(f, "cmdPCX"), out);  // the next use opens on the folder of the last one
    QCOMPARE(main.Work().State.WorkFolder, out);

    // The last four bytes of any chosen name go: my.dat gives myBuild.bat.
    f.Dialogs().Files.Choose(out + "my.dat");
    Run(f, "cmdText");
    QCOMPARE(f.Dialogs().Files.Shown.back().InitialFolder, out);
    QCOMPARE(Boxes(f).back(), main.Ini().MsgTextDone);
    const auto bat = test::ReadFile(out + "myBuild.bat");
    QVERIFY(std::string(bat.begin(), bat.end()).find("sprmaker.exe\" < my.dat > CreateLog.txt\r\n") != std::string::npos);
    QVERIFY(fs::exists(out + "my.dat"));
    QCOMPARE(FilesIn(out), size_t{5});  // Make Text writes no PCX file
}

void BuildCommandsTest::writeFailuresStopWithTheFileNamed() {
    MainWindowFixture f;
    FrmMain& main = f.Main();
    f.Open(f.WriteSharedSff("fighter.sff", 2));
    const AppIni& ini = main.Ini();
    const std::string missing = f.Dir() / "none/";
    for (const auto& [button, file] : {std::pair{"cmdPCX", "fighter_00000_00000.pcx"},
                                       {"cmdText", "fighter_SFF.txt"}, {"cmdBuildSFF", "fighter_00000_00000.pcx"}}) {
        if (std::string_view(button) == "cmdText") f.Dialogs().Files.Choose(missing + file);
        Run(f, button, missing);
        QVERIFY2(Boxes(f).back().starts_with(ini.Message(msg::WriteFailed) + "\r\n" + missing), button);
        QVERIFY(HourglassOff(main));
    }
    QCOMPARE(Boxes(f).size(), size_t{4});  // the build asked for the folder first
    QCOMPARE(OpenConsole(), nullptr);     // no batch ran
    QVERIFY(!fs::exists(missing));

    // A text CP932 can't hold is refused before anything is written, not even the PCX files.
    const std::string out = f.Dir() / "out/";
    main.Work().Table.SetCell(2, Column::ItemNo, "★😀");
    BuildInto(f, out);
    QVERIFY(Boxes(f).back().starts_with(ini.Message(msg::NotCp932) + "\r\n" + out + "fighter_SFF.txt"));
    QCOMPARE(FilesIn(out), size_t{0});
    QVERIFY(HourglassOff(main));
}

void BuildCommandsTest::buildEveryRealFile() {
    const auto files = test::SharedSffFiles();
    if (files.empty()) QSKIP("../shared/data is absent: real-file round trip skipped");
    if (BuilderMissing()) QSKIP("sprmaker.exe is not built beside the program: round trip skipped");
    for (const std::string& file : files) {
        MainWindowFixture f;
        f.Dialogs().Box.Answer(platform::Answer::Yes);  // the palette-mode warning, where it comes
        f.Open(file);
        // Opened into the table with every row, and every sprite shown without a word.
        const std::vector<uint8_t> bytes = test::ReadFile(file);
        const QString count = QString::number(bytes[20] | bytes[21] << 8);
        QCOMPARE(f.Shown(), QStringLiteral("%1|%2|%2|%2").arg(QString::fromStdString(GetFileName(file)), count));
        const size_t before = f.Dialogs().Box.Shown.size();
        for (int place = 1; place <= f.Main().Work().Table.RowCount(); ++place) {
            f.ShowRow(place);
            QVERIFY2(!f.Main().Preview().State().PcxBytes.empty(), (file + " row " + std::to_string(place)).c_str());
        }
        QCOMPARE(f.Dialogs().Box.Shown.size(), before);

        const std::string out = f.Dir() / "out/";
        const std::string seen = BuildInto(f, out);
        // The console showed the batch: "cls" cleared the first echo, the last ones stand.
        QVERIFY2(seen.find("SFF 作成処理終了.\n") != std::string::npos, seen.c_str());
        QVERIFY(seen.find("SFF を作成中") == std::string::npos);
        QCOMPARE(OpenConsole(), nullptr);
        QCOMPARE(f.Dialogs().Box.Shown.size(), before + 1);  // only the folder request: no failure
        QVERIFY(HourglassOff(f.Main()));
        QVERIFY(fs::exists(out + "CreateLog.txt"));
        QCOMPARE(test::RebuildDifferences(file, out + GetFileName(file)), std::vector<std::string>{});
    }
}

void BuildCommandsTest::previewEditsReachTheRebuiltSff() {
    if (BuilderMissing()) QSKIP("sprmaker.exe is not built beside the program: round trip skipped");
    MainWindowFixture f;
    FrmMain& main = f.Main();
    FrmPcx& w = main.Preview();
    const test::TempDir& dir = f.Dir();
    test::WriteFile(dir / "in.sff", EncodeSff(kSharedPaletteMode, {test::MakeSprite(9000, 0, 0, true),
                                                                   test::MakeSprite(1, 0, 1, false, 10, 20, 6, 5),
                                                                   test::MakeSprite(1, 1, 1, false, 3, 4, 5, 3)}));
    test::WriteFile(dir / "new.pcx", test::MakePcx(7, 5, 9));
    f.Open(dir / "in.sff");
    const auto find = [](const SpriteTable& t, const char* group, const char* item) {
        for (int place = 1; place <= t.RowCount(); ++place)
            if (t.Cell(place, Column::GroupNo) == group && t.Cell(place, Column::ItemNo) == item) return place;
        return 0;
    };

    f.ShowRow(find(main.Work().Table, "1", "0"));
    w.txtGroup->setText(QStringLiteral("77"));
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(w.txtGroup, &out);
    w.txtX->setText(QStringLiteral("-3"));
    QTest::mouseClick(w.cmdAxisUp, Qt::LeftButton);
    QTest::mouseClick(w.chkPallet, Qt::LeftButton);  // shared palette off
    f.ShowRow(find(main.Work().Table, "1", "1"));
    f.Dialogs().Files.Choose(dir / "new.pcx");
    QTest::mouseClick(w.cmdChangePCX, Qt::LeftButton);
    QVERIFY(f.Dialogs().Box.Shown.empty());

    BuildInto(f, dir / "work/");
    SffState rebuilt;
    SpriteTable rows;
    QVERIFY(OpenSff(dir / "work/in.sff", "in.sff", rebuilt, rows, main.Ini(), [](const std::string&, int) { return true; }));
    QCOMPARE(rows.RowCount(), 3);
    const int edited = find(rows, "77", "0");
    QVERIFY(edited > 0);
    QCOMPARE(rows.Cell(edited, Column::AxisX), std::string("-3"));
    QCOMPARE(rows.Cell(edited, Column::AxisY), std::string("21"));
    QCOMPARE(rows.Cell(edited, Column::PalType), std::string("0"));
    const int changed = find(rows, "1", "1");
    QVERIFY(changed > 0);
    const auto picture = CutSubfile(rebuilt, rebuilt.Subfiles.at(std::stoul(rows.Cell(changed, Column::PPos))));
    QCOMPARE(ReadPcxHeader(picture).Xmax, uint16_t{6});  // the outside 7 x 5 picture
    QCOMPARE(ReadPcxHeader(picture).Ymax, uint16_t{4});
}

QTEST_MAIN(BuildCommandsTest)
#include "BuildCommandsTest.moc"
