#include "batch/Redirections.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvolin {

std::optional<Redirections> Redirections::Open(const RunPlan& plan, std::string& failure) {
    Redirections r;
    r.in_ = open(plan.StdinPath.empty() ? "/dev/null" : plan.StdinPath.c_str(), O_RDONLY | O_CLOEXEC);
    if (r.in_ < 0) {
        failure = CannotOpenText(plan.StdinPath, false, std::strerror(errno));
        return std::nullopt;
    }
    const std::string& out = plan.StdoutPath;
    if (out.empty()) return r;
    struct stat st {};
    const bool exists = lstat(out.c_str(), &st) == 0;
    int err = 0;
    if (exists && S_ISDIR(st.st_mode)) {
        err = EISDIR;
    } else if (plan.AppendStdout || (exists && !S_ISREG(st.st_mode) && !S_ISLNK(st.st_mode))) {
        r.out_ = open(out.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (r.out_ < 0) err = errno;
    } else {
        auto file = AtomicFile::Create(out);
        if (!file) {
            failure = CannotOpenText(out, true, file.error().Detail);
            return std::nullopt;
        }
        r.replace_.emplace(std::move(file.value()));
    }
    if (err) {
        failure = CannotOpenText(out, true, std::strerror(err));
        return std::nullopt;
    }
    return r;
}

Redirections::Redirections(Redirections&& o) noexcept : in_(o.in_), out_(o.out_), replace_(std::move(o.replace_)) {
    o.in_ = o.out_ = -1;
    o.replace_.reset();
}

Redirections::~Redirections() {
    if (in_ >= 0) close(in_);
    if (out_ >= 0) close(out_);
}

std::optional<std::string> Redirections::Finish() {
    if (!replace_) return std::nullopt;
    Status s = replace_->Commit();
    const std::string target = replace_->Path();
    replace_.reset();
    if (!s) return CannotFinishText(target, s.error().Detail);
    return std::nullopt;
}

}  // namespace tarvolin
