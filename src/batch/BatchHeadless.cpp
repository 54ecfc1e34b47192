#include "batch/BatchHeadless.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/TextHelpers.h"
#include "batch/Redirections.h"

extern char** environ;

namespace tarvolin {

namespace {

// Closes the descriptors it holds when the run ends, on every path.
struct Fds {
    std::vector<int> Held;
    int Keep(int fd) {
        if (fd >= 0) Held.push_back(fd);
        return fd;
    }
    ~Fds() {
        for (int fd : Held) close(fd);
    }
};

// Hands the child's console output on line by line; a last line without a line end too.
class LineSplitter {
public:
    explicit LineSplitter(const std::function<void(const std::string&)>& print) : print_(print) {}
    void Feed(const char* data, size_t n) {
        for (size_t i = 0; i < n; ++i) {
            if (data[i] == '\n') Flush();
            else if (data[i] != '\r') line_ += data[i];
        }
    }
    void Flush() {
        print_(line_);
        line_.clear();
    }
    void Finish() {
        if (!line_.empty()) Flush();
    }

private:
    const std::function<void(const std::string&)>& print_;
    std::string line_;
};

}  // namespace

std::optional<std::string> ProgramProblem(const std::string& program) {
    struct stat st {};
    if (stat(program.c_str(), &st) != 0) return std::string(std::strerror(errno));
    if (S_ISDIR(st.st_mode)) return std::string(std::strerror(EISDIR));
    if (access(program.c_str(), X_OK) != 0) return std::string(std::strerror(errno));
    return std::nullopt;
}

std::optional<std::string> RunProgramHeadless(const RunPlan& plan, const std::string& folder,
                                              const std::function<void(const std::string&)>& print) {
    Fds fds;
    // The redirections are opened here, before the program starts, as a shell does; the
    // output is put in place when the program has ended, or failed to start.
    std::string failure;
    auto files = Redirections::Open(plan, failure);
    if (!files) return failure;
    auto finish = [&](std::optional<std::string> runFailure) {
        if (auto put = files->Finish()) print(*put);
        return runFailure;
    };
    const int in = files->In(), out = files->Out();
    int pipeFds[2];
    if (pipe2(pipeFds, O_CLOEXEC) != 0) return finish(CannotRunText(plan.Program, std::strerror(errno)));
    int readEnd = fds.Keep(pipeFds[0]);
    int writeEnd = pipeFds[1];

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawn_file_actions_adddup2(&actions, in, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out >= 0 ? out : writeEnd, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, writeEnd, STDERR_FILENO);

    std::vector<std::string> words{plan.Program};
    words.insert(words.end(), plan.Args.begin(), plan.Args.end());
    std::vector<char*> argv;
    for (auto& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);

    pid_t pid = 0;
    int err = posix_spawn(&pid, plan.Program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(writeEnd);  // the child holds its own copy; EOF comes when it ends
    if (err != 0) return finish(CannotRunText(plan.Program, std::strerror(err)));

    LineSplitter lines(print);
    char buf[4096];
    for (;;) {
        ssize_t n = read(readEnd, buf, sizeof buf);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        lines.Feed(buf, static_cast<size_t>(n));
    }
    lines.Finish();
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return finish(std::nullopt);
}

Status RunBatchHeadless(const std::string& batchPath, const BatchOutput& out) {
    auto steps = LoadBatch(batchPath);
    if (!steps) return steps.error();
    std::string folder = GetFolder(batchPath);
    BatchInterpreter batch(std::move(steps.value()), folder.empty() ? "./" : folder);
    while (const BatchStep* step = batch.Advance(out)) {
        if (step->Kind != StepKind::Run) continue;  // a pause: no keyboard to wait for
        if (auto failure = RunProgramHeadless(PlanRun(*step, batch.Folder()), batch.Folder(), out.Print))
            out.Print(*failure);
    }
    return Ok();
}

}  // namespace tarvolin
