#include "platform/BatchRunner.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <unistd.h>

#include "base/TextHelpers.h"
#include "batch/BatchHeadless.h"
#include "batch/BuildLogLine.h"
#include "platform/BatchConsole.h"
#include "platform/WindowPlace.h"

namespace tarvolin::platform {

namespace {
QString Q(const std::string& s) { return QString::fromStdString(s); }

void ShowAs(QWidget* window, int showState) {
    // Whole on the screen, over the window that started it.
    CentreOnScreen(*window, QApplication::activeWindow());
    switch (showState) {
    case 0: break;
    case 2: window->showMinimized(); break;
    case 3: window->showMaximized(); break;
    default: window->show(); break;
    }
    // The key that answers a pause must land in the console: it takes the focus.
    if (showState != 0) {
        window->raise();
        window->activateWindow();
    }
}
}  // namespace

BatchRunner::BatchRunner(QObject* parent) : QObject(parent) {}

BatchRunner::~BatchRunner() { Stop(); }

bool BatchRunner::Start(const std::string& file, const std::string& folder, int showState) {
    if (running_) return false;
    auto steps = LoadBatch(folder + file);
    if (!steps) return false;
    batch_.emplace(std::move(steps.value()), folder);
    console_ = std::make_unique<BatchConsole>(QDir::cleanPath(Q(folder + file)));
    connect(console_.get(), &BatchConsole::KeyAnswered, this, &BatchRunner::Continue);
    connect(console_.get(), &BatchConsole::ClosedByUser, this, &BatchRunner::Finish);
    running_ = true;
    ShowAs(console_.get(), showState);
    Continue();
    return true;
}

BatchOutput BatchRunner::ConsoleOutput() {
    return BatchOutput{[this](const std::string& line) {
                           if (line == PressAnyKeyText()) PrintStatus();
                           console_->PrintLine(Q(line));
                       },
                       [this] { console_->ClearScreen(); }};
}

void BatchRunner::Continue() {
    // Lines that can't run print a line and go on; the loop keeps that from nesting.
    while (running_) {
        const BatchStep* step = batch_->Advance(ConsoleOutput());
        if (!step) return Finish();
        if (step->Kind == StepKind::Pause) return console_->WaitForKey();
        StartProgram(*step);
        if (process_) return;  // started: ProgramEnded goes on
    }
}

void BatchRunner::StartProgram(const BatchStep& step) {
    RunPlan plan = PlanRun(step, batch_->Folder());
    program_ = plan.Program;
    log_ = plan.StdoutPath;
    if (auto problem = ProgramProblem(plan.Program)) {
        NoteEnd(QStringLiteral("not started: ") + Q(*problem), false);
        return console_->PrintLine(Q(CannotRunText(plan.Program, *problem)));
    }
    // The redirections are opened first, as a shell opens them, and handed to the child
    // as its standard input and output; the output is put in place when it has ended.
    std::string failure;
    auto opened = Redirections::Open(plan, failure);
    if (!opened) return console_->PrintLine(Q(failure));
    files_.emplace(std::move(*opened));
    process_ = new QProcess(this);
    process_->setProgram(Q(plan.Program));
    QStringList args;
    for (const auto& a : plan.Args) args << Q(a);
    process_->setArguments(args);
    process_->setWorkingDirectory(Q(batch_->Folder()));
    // Runs in the child between fork and exec, after QProcess has set up its channels.
    process_->setChildProcessModifier([in = files_->In(), out = files_->Out()] {
        dup2(in, STDIN_FILENO);
        if (out >= 0) dup2(out, STDOUT_FILENO);
    });
    connect(process_, &QProcess::readyReadStandardOutput, this,
            [this] { console_->Write(QString::fromUtf8(process_->readAllStandardOutput())); });
    connect(process_, &QProcess::readyReadStandardError, this,
            [this] { console_->Write(QString::fromUtf8(process_->readAllStandardError())); });
    connect(process_, &QProcess::finished, this, &BatchRunner::ProgramEnded);
    connect(process_, &QProcess::errorOccurred, this, [this, program = plan.Program](QProcess::ProcessError e) {
        if (e != QProcess::FailedToStart) return;
        console_->PrintLine(Q(CannotRunText(program, process_->errorString().toStdString())));
        NoteEnd(QStringLiteral("not started: ") + process_->errorString(), false);
        process_->setProperty("failedToStart", true);
        // Queued: this may come from inside start(), while Continue is still on the stack.
        QMetaObject::invokeMethod(this, &BatchRunner::ProgramEnded, Qt::QueuedConnection);
    });
    process_->start();
}

void BatchRunner::ProgramEnded() {
    if (!process_) return;
    console_->Write(QString::fromUtf8(process_->readAllStandardOutput()));
    console_->Write(QString::fromUtf8(process_->readAllStandardError()));
    const bool started = !process_->property("failedToStart").toBool();
    const bool crashed = process_->exitStatus() == QProcess::CrashExit;
    const int code = process_->exitCode();
    process_->disconnect(this);
    process_->deleteLater();
    process_ = nullptr;
    FinishOutput();  // the log is in place from here on
    if (started) {
        const bool ok = !crashed && code == 0;
        QString what = crashed ? QStringLiteral("stopped") : QStringLiteral("exit status %1").arg(code);
        if (!ok && !log_.empty()) what += QStringLiteral(": ") + Q(LogErrorLine(log_));
        NoteEnd(what, ok);
    }
    Continue();
}

void BatchRunner::NoteEnd(const QString& what, bool ok) {
    status_ = Q(GetFileName(program_)) + QStringLiteral(": ") + what;
    statusOk_ = ok;
}

void BatchRunner::PrintStatus() {
    if (status_.isEmpty()) return;
    console_->PrintStatus(status_, statusOk_);
    status_.clear();
}

void BatchRunner::FinishOutput() {
    if (!files_) return;
    if (auto failure = files_->Finish(); failure && console_) console_->PrintLine(Q(*failure));
    files_.reset();
}

void BatchRunner::Stop() {
    if (process_) {
        process_->disconnect(this);
        process_->kill();
        process_->waitForFinished(5000);
        delete process_;
        process_ = nullptr;
    }
    FinishOutput();  // what a stopped program wrote is its log all the same
    running_ = false;
    if (console_) {
        console_->disconnect(this);
        console_->hide();
        console_.release()->deleteLater();
    }
}

void BatchRunner::Finish() {
    Stop();
    emit Finished();
}

}  // namespace tarvolin::platform
