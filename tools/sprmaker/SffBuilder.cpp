#include "SffBuilder.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>

#include "OutputFile.h"
#include "PcxInput.h"
#include "base/FileRead.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/SffWriter.h"

namespace tarvolin::sprmaker {
namespace {

// A link index is 16 bits: a sprite stored beyond that cannot be linked to, and a
// duplicate of it is stored again.
constexpr uint32_t kMaxLinkTarget = 65535;

std::string FoldCase(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

uint64_t Fnv1a(const std::vector<uint8_t>& bytes) {
    uint64_t h = 1469598103934665603ull;
    for (uint8_t b : bytes) h = (h ^ b) * 1099511628211ull;
    return h;
}

// What the builder remembers of a sprite stored with data of its own.
struct Stored {
    uint8_t PalFlag = 0;
    int CropLeft = 0;
    int CropTop = 0;
};

class Builder {
public:
    Builder(const BuildPlan& plan, const BuildOptions& options, const std::string& folder, SffFileWriter& writer)
        : plan_(plan), options_(options), folder_(folder), writer_(writer) {}

    Status Add(const SpriteEntry& entry, const std::function<void(const SpriteAdded&)>& added) {
        const uint32_t index = writer_.ImageCount();
        const std::string nameKey = FoldCase(entry.File);
        if (entry.LinkDuplicate) {
            if (auto it = byName_.find(nameKey); it != byName_.end()) return AddLinked(entry, it->second, added);
        }
        const std::string path = ResolvePath(folder_, entry.File);
        auto read = ReadWholeFile(path, msg::PcxUnreadable, kMaxPcxFileBytes);
        if (!read) return WithLine(read.error(), entry);
        std::vector<uint8_t> bytes = std::move(read.value());
        if (auto problem = PcxProblem(bytes)) return WithLine(Error{msg::PcxFormat, path, *problem}, entry);

        Stored stored;
        if (options_.Crop) {
            Cropped c = CropPcx(bytes);
            bytes = std::move(c.Bytes);
            stored.CropLeft = c.Left;
            stored.CropTop = c.Top;
        }
        const uint64_t hash = options_.LinkIdentical ? Fnv1a(bytes) : 0;
        if (options_.LinkIdentical && entry.LinkDuplicate) {
            if (auto it = byContent_.find(hash); it != byContent_.end())
                for (const auto& [target, earlier] : it->second)
                    if (earlier == bytes) return AddLinked(entry, target, added);
        }
        std::vector<uint8_t> content = options_.LinkIdentical && index <= kMaxLinkTarget ? bytes : std::vector<uint8_t>{};

        SffSprite sprite;
        sprite.GroupNo = entry.GroupNo;
        sprite.ItemNo = entry.ItemNo;
        auto axis = Shifted(entry, stored, path);
        if (!axis) return axis.error();
        sprite.AxisX = axis.value()[0];
        sprite.AxisY = axis.value()[1];
        // The first sprite of a file always keeps its palette.
        bool own = index == 0 || entry.OwnPalette.value_or(!plan_.SharedPalette);
        if (own && index > 0 && options_.DropSamePalette &&
            std::equal(bytes.end() - kPaletteSize, bytes.end(), lastPalette_.begin()))
            own = false;
        if (own) {
            std::copy(bytes.end() - kPaletteSize, bytes.end(), lastPalette_.begin());
            ++palettes_;
        }
        stored.PalFlag = own ? 0 : 1;
        sprite.PalFlag = stored.PalFlag;
        // A sprite on the previous palette is stored without it; the 0x0C before it stays.
        if (!own) bytes.resize(bytes.size() - kPaletteSize);
        sprite.Data = std::move(bytes);

        if (auto s = writer_.Add(sprite); !s) return s;
        ++unique_;
        if (index <= kMaxLinkTarget) {
            byName_.emplace(nameKey, index);
            stored_.emplace(index, stored);
            if (options_.LinkIdentical) byContent_[hash].emplace_back(index, std::move(content));
        }
        if (added) added(SpriteAdded{entry, sprite.AxisX, sprite.AxisY, sprite.PalFlag, std::nullopt});
        return Ok();
    }

    uint32_t Unique() const { return unique_; }
    uint32_t Palettes() const { return palettes_; }

private:
    // A linked sprite has no data: it takes picture and palette flag from its target, and
    // its axis follows the target's crop.
    Status AddLinked(const SpriteEntry& entry, uint32_t target, const std::function<void(const SpriteAdded&)>& added) {
        const Stored& t = stored_.at(target);
        auto axis = Shifted(entry, t, ResolvePath(folder_, entry.File));
        if (!axis) return axis.error();
        SffSprite sprite;
        sprite.GroupNo = entry.GroupNo;
        sprite.ItemNo = entry.ItemNo;
        sprite.AxisX = axis.value()[0];
        sprite.AxisY = axis.value()[1];
        sprite.LinkIndex = static_cast<uint16_t>(target);
        sprite.PalFlag = t.PalFlag;
        if (auto s = writer_.Add(sprite); !s) return s;
        if (added) added(SpriteAdded{entry, sprite.AxisX, sprite.AxisY, sprite.PalFlag, target});
        return Ok();
    }

    static Result<std::array<int16_t, 2>> Shifted(const SpriteEntry& entry, const Stored& s, const std::string& path) {
        const long x = static_cast<long>(entry.AxisX) - s.CropLeft;
        const long y = static_cast<long>(entry.AxisY) - s.CropTop;
        if (x < -32768 || y < -32768)
            return WithLine(Error{msg::PcxFormat, path, "the crop moves the axis below -32768"}, entry);
        return std::array<int16_t, 2>{static_cast<int16_t>(x), static_cast<int16_t>(y)};
    }

    static Error WithLine(Error e, const SpriteEntry& entry) {
        e.Detail += " (sprite on line " + DecimalText(entry.Line) + ")";
        return e;
    }

    const BuildPlan& plan_;
    const BuildOptions& options_;
    const std::string& folder_;
    SffFileWriter& writer_;
    std::unordered_map<std::string, uint32_t> byName_;
    std::unordered_map<uint32_t, Stored> stored_;
    std::unordered_map<uint64_t, std::vector<std::pair<uint32_t, std::vector<uint8_t>>>> byContent_;
    std::array<uint8_t, kPaletteSize> lastPalette_{};
    uint32_t unique_ = 0;
    uint32_t palettes_ = 0;
};

}  // namespace

std::string ResolvePath(const std::string& folder, const std::string& name) {
    if (!name.empty() && name.front() == '/') return name;
    return folder + name;
}

Result<BuildSummary> BuildSff(const BuildPlan& plan, const BuildOptions& options, const std::string& folder,
                              const std::function<void(const SpriteAdded&)>& added) {
    const std::string out = ResolvePath(folder, plan.OutputName);
    auto claim = OutputClaim::Take(out);
    if (!claim) return claim.error();
    auto writer = SffFileWriter::Create(out, plan.SharedPalette ? kSharedPaletteMode : kIndividualPaletteMode);
    if (!writer) return writer.error();
    SffFileWriter& w = writer.value();
    Builder builder(plan, options, folder, w);
    for (const SpriteEntry& entry : plan.Sprites)
        if (auto s = builder.Add(entry, added); !s) return s.error();

    if (auto s = w.Finish(BackupName(out)); !s) return s.error();
    BuildSummary summary;
    summary.KeptAs = w.KeptAs();
    summary.StaleRemoved = claim.value().StaleRemoved();
    summary.Groups = w.GroupCount();
    summary.Images = w.ImageCount();
    summary.UniqueImages = builder.Unique();
    summary.Palettes = builder.Palettes();
    summary.Bytes = w.Bytes();
    return summary;
}

}  // namespace tarvolin::sprmaker
