// libFuzzer target: sprmaker's builder on pictures from the input. Up to three picture
// files and up to eight sprites that name them, with their numbers, axis, palette and link
// options and the builder's options -c, -f and -p, come from the input (FuzzedDataProvider:
// pictures from the front, numbers from the back). Whatever the builder writes opens in
// the reader without a repair, with as many images as it wrote, each with the numbers it
// was given and cutting out as the picture went in (cropped with -c, the axis shifted to
// match). A build it refuses is about a picture or the palette's place and leaves nothing
// behind.
#include <fuzzer/FuzzedDataProvider.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "DecodeBudget.h"
#include "PcxInput.h"
#include "Require.h"
#include "SffBuilder.h"
#include "base/FileRead.h"
#include "base/FolderLock.h"
#include "base/MessageKeys.h"
#include "config/AppIni.h"
#include "sff/SffReader.h"

namespace {

namespace fs = std::filesystem;
using namespace tarvolin;
using fuzz::Require;

constexpr int kMaxPictures = 3;
constexpr int kMaxSprites = 8;

// A folder of this process for the builder's files, in RAM where /dev/shm is there (the
// builder reads and writes real files, thousands of times a second), emptied after every
// run and removed at exit. The folders of fuzzers that ended without cleaning up (a crash
// found) go when the next one starts.
class Scratch {
public:
    Scratch() {
        const fs::path base = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        RemoveOrphans(base);
        dir_ = base / (kPrefix + std::to_string(getpid()));
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(dir_, ignored);
    }
    std::string Folder() const { return dir_.string() + "/"; }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& e : fs::directory_iterator(dir_)) names.insert(e.path().filename().string());
        return names;
    }
    void Empty() const {
        for (const auto& e : fs::directory_iterator(dir_)) fs::remove_all(e.path());
    }

private:
    static constexpr const char* kPrefix = "tarvolin-fuzz-build-";

    static void RemoveOrphans(const fs::path& base) {
        const std::string prefix = kPrefix;
        for (const auto& e : fs::directory_iterator(base)) {
            const std::string name = e.path().filename().string();
            if (name.rfind(prefix, 0) != 0) continue;
            const long pid = std::strtol(name.c_str() + prefix.size(), nullptr, 10);
            if (pid > 0 && kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) fs::remove_all(e.path());
        }
    }

    fs::path dir_;
};

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The crop decodes the whole declared picture: a larger one is built without -c.
bool CropAffordable(const std::string& bytes) {
    const PcxHeaderInfo h = ReadPcxHeader(std::span(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
    return fuzz::CropCells(h) <= fuzz::kDecodedCells;
}

// What the reader must cut out for a sprite built from `file`: the file as it stands, or
// its crop with the shift of its corner. Nothing for a file that is no picture.
std::optional<sprmaker::Cropped> ExpectedPicture(const std::vector<uint8_t>& file, bool crop) {
    auto taken = sprmaker::TakePicture(file, "expected.pcx");
    if (!taken || taken.value().Kind == PictureKind::Empty) return std::nullopt;
    if (crop && taken.value().PaletteBehind) return sprmaker::CropPcx(file);
    return sprmaker::Cropped{file, 0, 0};
}

void CheckOpens(const Scratch& scratch, const sprmaker::BuildPlan& plan, const sprmaker::BuildOptions& options,
                const sprmaker::BuildSummary& summary) {
    static const AppIni ini = DefaultAppIni();
    const std::string path = scratch.Folder() + plan.OutputName;
    auto bytes = ReadWholeFile(path, msg::SffUnreadable, uint64_t{1} << 30);
    Require(bytes.ok(), "the built SFF can be read");
    SffState state;
    SpriteTable table;
    auto opened = OpenSffBytes(std::move(bytes.value()), path, plan.OutputName, state, table, ini,
                               [](const std::string&, int) { return true; });
    Require(opened.ok() && opened.value().Outcome == OpenOutcome::Opened, "what the builder writes opens");
    Require(opened.value().Notices.empty(), "what the builder writes opens without a repair");
    Require(summary.Images == plan.Sprites.size() && state.Subfiles.size() == plan.Sprites.size() &&
                static_cast<size_t>(table.RowCount()) == plan.Sprites.size(),
            "the SFF holds as many images as the builder wrote");
    for (size_t i = 0; i < plan.Sprites.size(); ++i) {
        const sprmaker::SpriteEntry& entry = plan.Sprites[i];
        const SubfileRecord& record = state.Subfiles[i];
        Require(record.GroupNo == entry.GroupNo && record.ItemNo == entry.ItemNo, "each image has its numbers");
        auto file = ReadWholeFile(scratch.Folder() + entry.File, msg::PcxUnreadable, kMaxPcxFileBytes);
        const auto expected = ExpectedPicture(file.value(), options.Crop);
        if (!expected) continue;
        Require(CutSubfile(state, record) == expected->Bytes, "each image cuts out as its picture went in");
        Require(record.AxisX == entry.AxisX - expected->Left && record.AxisY == entry.AxisY - expected->Top,
                "each image has its axis, shifted by its own crop");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Scratch scratch;
    FuzzedDataProvider in(data, size);
    const uint8_t flags = in.ConsumeIntegral<uint8_t>();
    sprmaker::BuildOptions options;
    options.Crop = flags & 1;
    options.LinkIdentical = flags & 2;
    options.DropSamePalette = flags & 4;
    sprmaker::BuildPlan plan;
    plan.OutputName = "out.sff";
    plan.SharedPalette = flags & 8;

    const int pictures = in.ConsumeIntegralInRange(1, kMaxPictures);
    const int sprites = in.ConsumeIntegralInRange(1, kMaxSprites);
    for (int i = 0; i < sprites; ++i) {
        sprmaker::SpriteEntry e;
        e.File = "p" + std::to_string(in.ConsumeIntegralInRange(0, pictures - 1)) + ".pcx";
        e.Line = 5 + 8 * i;
        e.GroupNo = in.ConsumeIntegral<uint16_t>();
        e.ItemNo = in.ConsumeIntegral<uint16_t>();
        e.AxisX = in.ConsumeIntegral<int16_t>();
        e.AxisY = in.ConsumeIntegral<int16_t>();
        // The option blocks: 0 none (the file's palette mode), 1 own palette, 2 the previous one;
        // 3 and above also ask not to link a duplicate name.
        const int block = in.ConsumeIntegralInRange(0, 5);
        if (block % 3) e.OwnPalette = block % 3 == 1;
        e.LinkDuplicate = block < 3;
        plan.Sprites.push_back(std::move(e));
    }
    std::set<std::string> written;
    for (int i = 0; i < pictures; ++i) {
        const std::string name = "p" + std::to_string(i) + ".pcx";
        const std::string bytes = in.ConsumeRandomLengthString(in.remaining_bytes());
        if (!CropAffordable(bytes)) options.Crop = false;
        WriteFile(scratch.Folder() + name, bytes);
        written.insert(name);
    }

    auto built = sprmaker::BuildSff(plan, options, scratch.Folder());
    std::set<std::string> left = scratch.Names();
    if (!built) {
        const std::string& key = built.error().Key;
        Require(key == msg::PcxFormat || key == msg::PngUnreadable || key == msg::PngFormat || key == msg::SffPalette,
                "a build is refused only for a picture, or for first sprites that leave no room for a palette");
        Require(left == written, "a refused build leaves nothing behind");
    } else {
        written.insert(plan.OutputName);
        Require(left == written, "a build leaves its SFF and nothing else");
        CheckOpens(scratch, plan, options, built.value());
    }
    scratch.Empty();
    return 0;
}
