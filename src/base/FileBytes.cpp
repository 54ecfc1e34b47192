#include "base/FileBytes.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>
#include <sys/inotify.h>
#include <unistd.h>

#include "base/FileRead.h"
#include "base/MessageKeys.h"

namespace tarvolin {

namespace {

// A file whose times are younger than this when it is opened may have been changed within
// the same tick of the file system's clock, and a second change in that tick would leave
// its times as they were: such a file is watched for writes as well. (Setting up a watch
// costs little, but ending one waits for the kernel, which every run of a command would feel.)
constexpr int64_t kRecentNanoseconds = 2'000'000'000;

int64_t Nanoseconds(const timespec& t) { return static_cast<int64_t>(t.tv_sec) * 1'000'000'000 + t.tv_nsec; }

bool ChangedLately(const struct stat& st) {
    timespec now {};
    clock_gettime(CLOCK_REALTIME, &now);
    return Nanoseconds(now) - Nanoseconds(st.st_mtim) < kRecentNanoseconds;
}

}  // namespace

struct FileBytes::Source {
    std::string Path;
    FileDescriptor Fd;
    // The system's notice of writes to the file, watched from before the first read of a
    // file changed lately; -1 for any other (its size and times are compared).
    FileDescriptor Watch;
    int WatchId = -1;
    struct stat AtOpen {};
    std::vector<uint8_t> Memory;  // the bytes themselves, when there is no file
    mutable bool Changed = false;

    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() {
        // Removed before the descriptor is closed, which then closes without waiting.
        if (WatchId >= 0) inotify_rm_watch(Watch.Get(), WatchId);
    }

    uint64_t Size() const { return Fd.Get() < 0 ? Memory.size() : static_cast<uint64_t>(AtOpen.st_size); }

    bool StillAsOpened() const {
        if (Fd.Get() < 0 || Changed) return !Changed;
        char events[sizeof(inotify_event) + 256];
        if (WatchId >= 0 && read(Watch.Get(), events, sizeof events) > 0) Changed = true;
        // A write sets the time of the last change of the contents; a new name, a link or new
        // permissions don't, and leave the bytes as they were.
        struct stat now {};
        if (fstat(Fd.Get(), &now) != 0 || now.st_size != AtOpen.st_size ||
            Nanoseconds(now.st_mtim) != Nanoseconds(AtOpen.st_mtim))
            Changed = true;
        return !Changed;
    }
};

FileBytes::FileBytes(std::vector<uint8_t> bytes) {
    auto source = std::make_shared<Source>();
    source->Memory = std::move(bytes);
    source_ = std::move(source);
}

Result<FileBytes> FileBytes::Open(const std::string& path, const char* errorKey, uint64_t maxBytes) {
    auto file = OpenRegularFile(path, errorKey, maxBytes);
    if (!file) return file.error();
    auto source = std::make_shared<Source>();
    source->Path = path;
    source->Fd = std::move(file.value().Fd);
    source->AtOpen = file.value().Stat;
    if (ChangedLately(source->AtOpen)) {
        // The watch is taken by name, so it must be seen to watch the file that is open: a
        // file renamed into place in between would be another one.
        source->Watch = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
        struct stat named {};
        if (source->Watch.Get() >= 0) source->WatchId = inotify_add_watch(source->Watch.Get(), path.c_str(), IN_MODIFY);
        if (source->WatchId >= 0 && (stat(path.c_str(), &named) != 0 || named.st_dev != source->AtOpen.st_dev ||
                                     named.st_ino != source->AtOpen.st_ino))
            inotify_rm_watch(source->Watch.Get(), std::exchange(source->WatchId, -1));
        // What the file is "as opened": taken once the watch stands, before anything is read.
        if (fstat(source->Fd.Get(), &source->AtOpen) != 0) return Error{errorKey, path, std::strerror(errno)};
    }
    FileBytes bytes;
    bytes.source_ = std::move(source);
    return bytes;
}

uint64_t FileBytes::size() const { return source_ ? source_->Size() : 0; }

bool FileBytes::ReadUnchecked(uint64_t offset, void* out, size_t n) const {
    if (n == 0) return true;
    if (!source_ || offset > source_->Size() || n > source_->Size() - offset) return false;
    if (source_->Fd.Get() < 0) {
        std::memcpy(out, source_->Memory.data() + offset, n);
        return true;
    }
    auto* to = static_cast<uint8_t*>(out);
    while (n > 0) {
        const ssize_t got = pread(source_->Fd.Get(), to, n, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {
            // Cut shorter than it was, or unreadable: either way not the bytes as opened.
            source_->Changed = true;
            return false;
        }
        to += got;
        offset += static_cast<uint64_t>(got);
        n -= static_cast<size_t>(got);
    }
    return true;
}

Status FileBytes::Unchanged() const {
    if (!source_ || source_->StillAsOpened()) return Ok();
    return Error{msg::FileChanged, source_->Path,
                 "the file was changed or cut on disk after it was opened; nothing more is read from it"};
}

Status FileBytes::Read(uint64_t offset, void* out, size_t n) const {
    const bool read = ReadUnchecked(offset, out, n);
    if (auto s = Unchanged(); !s) return s;
    if (!read)
        return Error{msg::FileChanged, source_ ? source_->Path : std::string(),
                     std::to_string(n) + " bytes at offset " + std::to_string(offset) + " lie beyond the " +
                         std::to_string(size()) + " bytes of the file as opened"};
    return Ok();
}

bool FileBytes::operator==(const std::vector<uint8_t>& bytes) const {
    if (size() != bytes.size()) return false;
    std::vector<uint8_t> mine(bytes.size());
    return ReadUnchecked(0, mine.data(), mine.size()) && mine == bytes;
}

}  // namespace tarvolin
