#pragma once
// Runs a build batch in a console window of its own while the program's windows stay alive:
// the lines are done in order, each program as a child process (QProcess) in the batch's
// folder with its redirections, "pause" waits for a key in the console.
//
// The console closes itself when the batch is done, after the key that answers a final
// "pause", as the console of a batch started from a desktop does; a batch without a pause
// thus closes its console at once. Closing the console by hand stops the batch and the
// program it is running. Running() stays true until the batch is done and its console closed.
//
// After a program has run, the runner adds one status line of its own, in a colour that
// stands out, where the batch next waits for a key (below the batch's own closing lines,
// which a "cls" can't wipe it from): the program's exit status and, when it failed, the
// line of its log (its redirected output) that says why.
#include <QObject>
#include <memory>
#include <optional>
#include <string>

#include "batch/BatchInterpreter.h"
#include "batch/Redirections.h"

class QProcess;

namespace tarvolin::platform {

class BatchConsole;

class BatchRunner : public QObject {
    Q_OBJECT
public:
    explicit BatchRunner(QObject* parent = nullptr);
    ~BatchRunner() override;

    // Starts the batch `file` (a bare name) in `folder` (ending with '/'). `showState` is the
    // console's window state: 0 hidden, 2 minimised, 3 maximised, anything else a normal
    // window. False when the batch can't be read; nothing is shown then.
    bool Start(const std::string& file, const std::string& folder, int showState);
    bool Running() const { return running_; }
    BatchConsole* Console() const { return console_.get(); }

signals:
    void Finished();

private:
    void Continue();
    void StartProgram(const BatchStep& step);
    void ProgramEnded();
    void FinishOutput();
    void Stop();
    void Finish();
    BatchOutput ConsoleOutput();
    void NoteEnd(const QString& what, bool ok);
    void PrintStatus();

    std::optional<BatchInterpreter> batch_;
    std::optional<Redirections> files_;  // of the program running
    std::unique_ptr<BatchConsole> console_;
    QProcess* process_ = nullptr;
    bool running_ = false;
    std::string program_;  // the program running or run last, and where its output goes
    std::string log_;
    QString status_;  // the status line not yet shown
    bool statusOk_ = false;
};

}  // namespace tarvolin::platform
