// The batch runner's console window on real batches: what it shows, its pause, its close.
// What the lines mean is the headless runner's test; a build: the main window's test.
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
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

void Put(const std::string& path, const std::string& utf8) { test::WriteText(path, *ToCp932(utf8)); }
platform::BatchConsole* OpenConsole() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* c = qobject_cast<platform::BatchConsole*>(w); c && c->isVisible()) return c;
    return nullptr;
}

}  // namespace

class BatchRunnerTest : public QObject {
    Q_OBJECT
private slots:
    void ConsoleShowsTheLinesAndPauseWaitsForAKey();
    void ClosingTheConsoleStopsTheBatchAndOnlyAMissingBatchFails();
};

void BatchRunnerTest::ConsoleShowsTheLinesAndPauseWaitsForAKey() {
    test::TempDir dir;
    Put(dir / "p.txt", "x");
    Put(dir / "b.bat", "@echo off\r\necho cleared\r\ncls\r\n\"/nowhere/sprmaker.exe\" < p.txt > CreateLog.txt\r\n"
                       "echo 終了.\r\n\"/bin/sh\" -c \"echo from-the-tool\"\r\n"
                       "\"/bin/sh\" -c \"echo Error: it broke; echo done; exit 3\" > log.txt\r\nxcopy a b\r\npause\r\n"
                       "echo after\r\npause\r\n");
    platform::BatchRunner runner;
    QSignalSpy finished(&runner, &platform::BatchRunner::Finished);
    QVERIFY(runner.Start("b.bat", dir.Path(), 1));
    platform::BatchConsole& console = *runner.Console();
    const QString pause = QString::fromStdString(PressAnyKeyText());
    QTRY_VERIFY(console.Text().contains(pause));
    // Before the pause, the runner's line on the last program: its exit status and the
    // log's error line.
    QCOMPARE(console.Text(), QString::fromStdString(CannotRunText("/nowhere/sprmaker.exe", "No such file or directory") +
                                                    "\n終了.\nfrom-the-tool\n" + UnsupportedText("xcopy a b") +
                                                    "\nsh: exit status 3: Error: it broke\n") +
                                 pause + "\n");
    QTest::qWait(50);
    QTest::keyClick(&console, Qt::Key_Shift);  // a modifier alone doesn't answer it
    QVERIFY(!console.Text().contains("after"));
    QTest::keyClick(&console, Qt::Key_Space);
    QTRY_VERIFY(console.Text().contains("after"));
    QVERIFY(runner.Running() && console.isVisible());
    QCOMPARE(finished.count(), 0);
    QTest::keyClick(&console, Qt::Key_A);  // the final pause: the batch ends, the console closes
    QVERIFY(!runner.Running());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(OpenConsole(), nullptr);
}

void BatchRunnerTest::ClosingTheConsoleStopsTheBatchAndOnlyAMissingBatchFails() {
    test::TempDir dir;
    Put(dir / "b.bat", "@echo off\r\n\"/bin/sleep\" 30\r\n\"/bin/pwd\" > where.txt\r\n");
    platform::BatchRunner runner;
    QVERIFY(runner.Start("b.bat", dir.Path() + "/", 1));
    QTest::qWait(50);
    QVERIFY(runner.Running());
    // Whole on the screen; its title names the batch with one slash between names.
    QCOMPARE(runner.Console()->windowTitle().toStdString(), dir / "b.bat");
    QVERIFY(runner.Console()->screen()->availableGeometry().contains(runner.Console()->frameGeometry()));
    runner.Console()->close();
    QVERIFY(!runner.Running());  // the sleeping program was stopped, not waited for
    QTest::qWait(50);
    QVERIFY(!std::filesystem::exists(dir / "where.txt"));  // the lines after it never ran

    QVERIFY(!platform::RunAndWait("none.bat", dir.Path(), 1));
    QCOMPARE(OpenConsole(), nullptr);
    Put(dir / "bad.bat", "\"/nowhere/tool\" < none.txt\r\ngoto end\r\n");  // every line fails: started and ended
    QVERIFY(platform::RunAndWait("bad.bat", dir.Path(), 1));
}

QTEST_MAIN(BatchRunnerTest)
#include "BatchRunnerTest.moc"
