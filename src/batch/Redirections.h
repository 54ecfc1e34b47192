#pragma once
// The files of a program line's "<", ">" and ">>", opened for a runner before the program
// starts, as a shell opens them: a missing input stops the line, and the output is made
// even when the program then turns out to be missing. Unlike a shell, no planted link is
// followed: ">" writes a new file beside the target (AtomicFile) and renames it over the
// target when the program has ended, so a symbolic link under the target's name is
// replaced, never written through, and an older file stays whole until then; ">>"
// appends only to what is no link. A device such as /dev/null is written as it is.
#include <optional>
#include <string>

#include "base/AtomicFile.h"
#include "batch/BatchInterpreter.h"

namespace tarvolin {

class Redirections {
public:
    // Both files of the plan opened; on failure nothing, with `failure` set to the console
    // line (CannotOpenText).
    static std::optional<Redirections> Open(const RunPlan& plan, std::string& failure);

    Redirections(Redirections&& other) noexcept;
    Redirections& operator=(Redirections&&) = delete;
    Redirections(const Redirections&) = delete;
    ~Redirections();  // closes what is open; a ">" output not finished is dropped

    int In() const { return in_; }  // the input file, or /dev/null
    // The output for the program's standard output; -1: none, the console.
    int Out() const { return replace_ ? replace_->Descriptor() : out_; }

    // Puts a ">" output in place over its target. Call once the program has ended, however
    // it ended (also when it could not start: a shell has made the file by then). Gives the
    // console line of a failure (CannotFinishText), or nothing.
    std::optional<std::string> Finish();

private:
    Redirections() = default;
    int in_ = -1;
    int out_ = -1;                       // ">>", or a ">" onto a device
    std::optional<AtomicFile> replace_;  // ">" onto a file
};

}  // namespace tarvolin
