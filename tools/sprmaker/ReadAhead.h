#pragma once
// The pictures of a build, read and judged on a thread of their own ahead of the builder,
// in the plan's order: reading each file and decoding its picture to find where its
// palette lies go on while the builder writes the sprites before it. The builder takes
// them one by one; what it does with them stays in order, on its own thread.
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "ParamInput.h"
#include "PcxInput.h"
#include "base/Result.h"

namespace tarvolin::sprmaker {

struct PreparedPicture {
    std::string Path;            // where the entry's name leads
    std::vector<uint8_t> Bytes;  // the file as read
    Result<PictureIntake> Intake = Error{};  // TakePicture's answer, or why the file can't be read
    // Not read: an earlier sprite had the name, and the builder links to it. Where it
    // can't, it reads the file itself (PreparePicture).
    bool Repeat = false;
};

// The file at `path`, read and judged.
PreparedPicture PreparePicture(std::string path);

class ReadAhead {
public:
    ReadAhead(const std::vector<SpriteEntry>& entries, const std::string& folder);
    ~ReadAhead();  // stops reading and waits for the thread
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    // The next entry's picture; call once for every entry, in order.
    PreparedPicture Next();

private:
    void Run();
    bool HalfFree() const;  // with the lock held

    const std::vector<SpriteEntry>& entries_;
    const std::string folder_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<PreparedPicture> ready_;
    size_t readyBytes_ = 0;
    bool stop_ = false;
    bool readerWaits_ = false;
    bool builderWaits_ = false;
    std::thread thread_;  // last: it starts once everything above stands
};

}  // namespace tarvolin::sprmaker
