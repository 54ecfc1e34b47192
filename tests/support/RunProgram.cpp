#include "support/RunProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/TempDir.h"
#include "support/TestData.h"

extern char** environ;

namespace tarvolin::test {

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& args, const std::string& stdinFile,
                      const std::string& workDir) {
    TempDir out;
    const std::string outPath = out / "stdout", errPath = out / "stderr";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, stdinFile.empty() ? "/dev/null" : stdinFile.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (!workDir.empty()) posix_spawn_file_actions_addchdir_np(&actions, workDir.c_str());
    std::vector<std::string> argv0{program};
    argv0.insert(argv0.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& a : argv0) argv.push_back(a.data());
    argv.push_back(nullptr);
    ProgramRun run;
    pid_t pid = 0;
    if (posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ) == 0) {
        int status = 0;
        waitpid(pid, &status, 0);
        run.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    run.Out = ReadText(outPath);
    run.Err = ReadText(errPath);
    return run;
}

}  // namespace tarvolin::test
