// The batch runner and its console window, on real batches with real programs.
#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "base/Codepage.h"
#include "batch/BatchInterpreter.h"
#include "platform/BatchConsole.h"
#include "platform/BatchRunner.h"
#include "platform/RunAndWait.h"
#include "support/TempDir.h"
#include "support/TestData.h"

using namespace tarvolin;

namespace {

void Put(const std::string& path, const std::string& text) {
    test::WriteFile(path, std::vector<uint8_t>(text.begin(), text.end()));
}
std::string Text(const std::string& path) {
    auto b = test::ReadFile(path);
    return std::string(b.begin(), b.end());
}
void PutBatch(const std::string& path, const std::string& utf8) { Put(path, *ToCp932(utf8)); }

platform::BatchConsole* OpenConsole() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* c = qobject_cast<platform::BatchConsole*>(w); c && c->isVisible()) return c;
    return nullptr;
}

}  // namespace

class BatchRunnerTest : public QObject {
    Q_OBJECT
private slots:
    void RedirectionsAndWorkingDirectory();
    void MissingToolIsReportedAndPauseWaitsForAKey();
    void RunAndWaitKeepsTheWindowsAlive();
    void RunAndWaitFailsOnlyWhenTheBatchCantStart();
    void ClosingTheConsoleStopsTheBatch();
    void OutputReplacesAPlantedLinkAndNamesMayHoldShellCharacters();
};

void BatchRunnerTest::RedirectionsAndWorkingDirectory() {
    test::TempDir dir;
    Put(dir / "in put.txt", "first\r\nsecond\r\n");
    Put(dir / "CreateLog.txt", std::string(3000, 'x'));  // an older, longer log is replaced
    PutBatch(dir / "b.bat",
             "@echo off\r\necho 作成中 ...\r\n\"/bin/cat\" < in put.txt > CreateLog.txt\r\n\"/bin/pwd\" > where.txt\r\n");
    QVERIFY(std::filesystem::current_path().string() + "/" != dir.Path());
    QVERIFY(platform::RunAndWait("b.bat", dir.Path(), 1));
    QCOMPARE(Text(dir / "CreateLog.txt"), std::string("first\r\nsecond\r\n"));
    QCOMPARE(Text(dir / "where.txt"), std::filesystem::canonical(dir.Path()).string() + "\n");
    QCOMPARE(OpenConsole(), nullptr);  // no pause: the console closed itself at the end
}

void BatchRunnerTest::MissingToolIsReportedAndPauseWaitsForAKey() {
    test::TempDir dir;
    Put(dir / "p.txt", "x");
    PutBatch(dir / "b.bat",
             "@echo off\r\necho cleared\r\ncls\r\n\"/nowhere/sprmaker.exe\" < p.txt > CreateLog.txt\r\necho 終了.\r\n"
             "\"/bin/sh\" -c \"echo from-the-tool\"\r\nxcopy a b\r\npause\r\necho after\r\npause\r\n");
    platform::BatchRunner runner;
    QSignalSpy finished(&runner, &platform::BatchRunner::Finished);
    QVERIFY(runner.Start("b.bat", dir.Path(), 1));
    platform::BatchConsole* console = runner.Console();
    QVERIFY(console && console->isVisible());
    QTRY_VERIFY(console->Text().contains(QString::fromStdString(PressAnyKeyText())));
    QString shown = console->Text();  // "cls" cleared the first echo
    QVERIFY2(shown.startsWith(QString::fromStdString(CannotRunText("/nowhere/sprmaker.exe", "No such file or directory"))),
             qPrintable(shown));
    QVERIFY(shown.contains("終了.\nfrom-the-tool\n"));
    QVERIFY(shown.contains(QString::fromStdString(UnsupportedText("xcopy a b"))));
    QVERIFY(!shown.contains("after"));
    // The pause holds: time passes, a modifier alone does nothing.
    QTest::qWait(50);
    QTest::keyClick(console, Qt::Key_Shift);
    QVERIFY(runner.Running());
    QVERIFY(!console->Text().contains("after"));
    QTest::keyClick(console, Qt::Key_Space);  // first pause answered
    QTRY_VERIFY(console->Text().contains("after"));
    QVERIFY(runner.Running());
    QVERIFY(console->isVisible());
    QCOMPARE(finished.count(), 0);
    QTest::keyClick(console, Qt::Key_A);  // the final pause: the batch ends, the console closes
    QVERIFY(!runner.Running());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(OpenConsole(), nullptr);
}

void BatchRunnerTest::RunAndWaitKeepsTheWindowsAlive() {
    test::TempDir dir;
    PutBatch(dir / "b.bat", "@echo off\r\n\"/bin/sleep\" 0.2\r\necho done\r\npause\r\n");
    // Another window with a timer: it must keep ticking while RunAndWait waits, and only
    // after a few ticks does it answer the pause in the console.
    QLabel other("main window stand-in");
    other.show();
    int ticks = 0;
    bool consoleSeenWhileWaiting = false;
    QTimer timer(&other);
    QObject::connect(&timer, &QTimer::timeout, &other, [&] {
        other.setText(QString::number(++ticks));
        platform::BatchConsole* console = OpenConsole();
        if (console && console->Text().contains("done") && ticks >= 5) {
            consoleSeenWhileWaiting = true;
            QTest::keyClick(console, Qt::Key_Return);
        }
    });
    timer.start(10);
    QVERIFY(platform::RunAndWait("b.bat", dir.Path(), 1));
    timer.stop();
    QVERIFY(consoleSeenWhileWaiting);
    QVERIFY(ticks >= 5);
    QCOMPARE(other.text(), QString::number(ticks));
    QCOMPARE(OpenConsole(), nullptr);
}

void BatchRunnerTest::RunAndWaitFailsOnlyWhenTheBatchCantStart() {
    test::TempDir dir;
    QVERIFY(!platform::RunAndWait("none.bat", dir.Path(), 1));
    QVERIFY(!platform::RunAndWait("", dir.Path(), 1));  // the folder itself is no batch
    QCOMPARE(OpenConsole(), nullptr);
    // A batch whose every line fails still counts as started and ended.
    PutBatch(dir / "bad.bat", "\"/nowhere/tool\" < none.txt\r\ngoto end\r\n");
    QVERIFY(platform::RunAndWait("bad.bat", dir.Path(), 1));
}

void BatchRunnerTest::ClosingTheConsoleStopsTheBatch() {
    test::TempDir dir;
    PutBatch(dir / "b.bat", "@echo off\r\n\"/bin/sleep\" 30\r\n\"/bin/pwd\" > where.txt\r\n");
    platform::BatchRunner runner;
    QVERIFY(runner.Start("b.bat", dir.Path(), 1));
    QTest::qWait(50);
    QVERIFY(runner.Running());
    runner.Console()->close();
    QVERIFY(!runner.Running());  // the sleeping program was stopped, not waited for
    QTest::qWait(50);
    QVERIFY(!std::filesystem::exists(dir / "where.txt"));  // the lines after it never ran
}

// The builder's line with an input name full of shell characters; its log is a planted
// link, which the log replaces while the file it led to stays as it was.
void BatchRunnerTest::OutputReplacesAPlantedLinkAndNamesMayHoldShellCharacters() {
    test::TempDir dir, outside;
    Put(outside / "secret.txt", "secret");
    Put(dir / "a & b | c > d.txt", "parameters\r\n");
    std::filesystem::create_symlink(outside / "secret.txt", dir / "CreateLog.txt");
    std::filesystem::create_symlink(outside / "secret.txt", dir / "more.txt");
    PutBatch(dir / "b.bat",
             "@echo off\r\n\"/bin/cat\" < a & b | c > d.txt > CreateLog.txt\r\n\"/bin/cat\" >> more.txt\r\n"
             "pause\r\n");
    platform::BatchRunner runner;
    QVERIFY(runner.Start("b.bat", dir.Path(), 1));
    QTRY_VERIFY(runner.Console()->Text().contains(QString::fromStdString(PressAnyKeyText())));
    QCOMPARE(runner.Console()->Text(),
             QString::fromStdString(CannotOpenText(dir / "more.txt", true, "Too many levels of symbolic links") + "\n" +
                                    PressAnyKeyText() + "\n"));
    QVERIFY(!std::filesystem::is_symlink(dir / "CreateLog.txt"));
    QCOMPARE(Text(dir / "CreateLog.txt"), std::string("parameters\r\n"));
    QCOMPARE(Text(outside / "secret.txt"), std::string("secret"));
    QTest::keyClick(runner.Console(), Qt::Key_Space);
    QVERIFY(!runner.Running());
}

QTEST_MAIN(BatchRunnerTest)
#include "BatchRunnerTest.moc"
