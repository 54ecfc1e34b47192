#include "ReadAhead.h"

#include <unordered_set>

#include "SffBuilder.h"
#include "formats/PictureFile.h"

namespace tarvolin::sprmaker {

namespace {
// How far the reading may run ahead: enough to keep both threads busy, little enough that
// large pictures don't pile up in memory.
constexpr size_t kAheadPictures = 64;
constexpr size_t kAheadBytes = size_t{64} << 20;
}  // namespace

PreparedPicture PreparePicture(std::string path) {
    PreparedPicture picture;
    picture.Path = std::move(path);
    auto read = ReadPictureFile(picture.Path);
    if (read) {
        picture.Bytes = std::move(read.value());
        picture.Intake = TakePicture(picture.Bytes, picture.Path);
    } else {
        picture.Intake = read.error();
    }
    return picture;
}

bool ReadAhead::HalfFree() const {
    return ready_.empty() || (ready_.size() <= kAheadPictures / 2 && readyBytes_ <= kAheadBytes / 2);
}

ReadAhead::ReadAhead(const std::vector<SpriteEntry>& entries, const std::string& folder)
    : entries_(entries), folder_(folder), thread_([this] { Run(); }) {}

ReadAhead::~ReadAhead() {
    {
        std::lock_guard lock(mutex_);
        stop_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void ReadAhead::Run() {
    // Names an earlier sprite that a link can name was read for: the builder links a repeat
    // of them (or stores the first sprite's bytes again) without its file.
    std::unordered_set<std::string> linkable;
    for (size_t index = 0; index < entries_.size(); ++index) {
        const SpriteEntry& entry = entries_[index];
        std::string name = FoldCase(entry.File);
        const bool repeat = entry.LinkDuplicate && linkable.contains(name);
        if (index <= kMaxLinkTarget) linkable.insert(std::move(name));
        PreparedPicture picture = repeat ? PreparedPicture{ResolveName(folder_, entry.File, entry.FileAsWritten), {}, Error{}, true}
                                         : PreparePicture(ResolveName(folder_, entry.File, entry.FileAsWritten));
        std::unique_lock lock(mutex_);
        if (!stop_ && !ready_.empty() && (ready_.size() >= kAheadPictures || readyBytes_ >= kAheadBytes)) {
            readerWaits_ = true;
            changed_.wait(lock, [this] { return stop_ || HalfFree(); });
            readerWaits_ = false;
        }
        if (stop_) return;
        readyBytes_ += picture.Bytes.size();
        ready_.push_back(std::move(picture));
        if (builderWaits_) changed_.notify_all();
    }
}

// Each side wakes the other only when it waits, and the reader only once half its room is
// free again: waking a thread for every picture would cost more than reading it.
PreparedPicture ReadAhead::Next() {
    std::unique_lock lock(mutex_);
    if (ready_.empty()) {
        builderWaits_ = true;
        changed_.wait(lock, [this] { return !ready_.empty(); });
        builderWaits_ = false;
    }
    PreparedPicture picture = std::move(ready_.front());
    ready_.pop_front();
    readyBytes_ -= picture.Bytes.size();
    if (readerWaits_ && HalfFree()) changed_.notify_all();
    return picture;
}

}  // namespace tarvolin::sprmaker
