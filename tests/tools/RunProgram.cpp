#include "RunProgram.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin::test {

RunResult RunProgram(const std::string& program, const std::vector<std::string>& args, const std::string& workFolder,
                     const std::string& input) {
    // The captures live outside the working folder, which the tests look at file by file.
    TempDir capture;
    const std::string in = capture / "in", out = capture / "out", err = capture / "err";
    WriteFile(in, std::vector<uint8_t>(input.begin(), input.end()));
    std::vector<std::string> words{program};
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);

    RunResult r;
    const pid_t pid = fork();
    if (pid == 0) {
        const int fin = open(in.c_str(), O_RDONLY);
        const int fout = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int ferr = open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fin < 0 || fout < 0 || ferr < 0 || chdir(workFolder.c_str()) != 0) _exit(126);
        dup2(fin, 0);
        dup2(fout, 1);
        dup2(ferr, 2);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    int status = 0;
    if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status)) r.Status = WEXITSTATUS(status);
    const auto o = ReadFile(out), e = ReadFile(err);
    r.Out.assign(o.begin(), o.end());
    r.Err.assign(e.begin(), e.end());
    return r;
}

}  // namespace tarvolin::test
