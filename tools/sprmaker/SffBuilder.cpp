#include "SffBuilder.h"

#include <algorithm>
#include <array>
#include <map>
#include <sys/stat.h>
#include <unordered_map>

#include "OutputFile.h"
#include "PcxInput.h"
#include "ReadAhead.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/SffLayout.h"
#include "formats/SffWriter.h"

namespace tarvolin::sprmaker {
namespace {

// A sprite stored beyond kMaxLinkTarget cannot be linked to, and a duplicate of it is
// stored again. Link index 0 means "no link" to every reader, so the first sprite cannot be
// linked to either.
bool LinkTargetPossible(uint32_t index) { return index >= 1 && index <= kMaxLinkTarget; }

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

    // `prepared` is the entry's picture as ReadAhead read and judged it.
    Status Add(const SpriteEntry& entry, PreparedPicture prepared,
               const std::function<void(const SpriteAdded&)>& added) {
        const uint32_t index = writer_.ImageCount();
        const std::string nameKey = FoldCase(entry.File);
        const std::string& path = prepared.Path;
        const auto known = entry.LinkDuplicate ? byName_.find(nameKey) : byName_.end();
        if (known != byName_.end() && LinkTargetPossible(known->second))
            return AddLinked(entry, path, known->second, stored_.at(known->second), added);
        // A duplicate of the first sprite is stored again from the bytes first read.
        if (known != byName_.end()) {
            prepared.Bytes = firstBytes_;
            prepared.Intake = TakePicture(prepared.Bytes, path);
        } else if (prepared.Repeat) {
            prepared = PreparePicture(path);  // its earlier namesake was linked by content
        }
        std::vector<uint8_t> bytes = std::move(prepared.Bytes);
        if (index == 0) firstBytes_ = bytes;
        auto& taken = prepared.Intake;
        if (!taken) return WithLine(taken.error(), entry);
        PictureIntake& picture = taken.value();
        std::vector<std::string> warnings;
        if (!picture.Repair.empty()) warnings.push_back(picture.Repair);
        if (picture.Kind == PictureKind::Empty) {
            // The palette a file of 768 bytes is, else the one in force.
            Palette palette = lastPalette_.value_or(Palette{});
            if (bytes.size() == kPaletteSize) std::copy(bytes.begin(), bytes.end(), palette.begin());
            bytes = TransparentPixel(palette);
            picture = PictureIntake{PictureKind::Indexed, true, {}};
        }

        Stored stored;
        if (options_.Crop && picture.PaletteBehind) {
            Cropped c = CropPcx(bytes);
            bytes = std::move(c.Bytes);
            stored.CropLeft = c.Left;
            stored.CropTop = c.Top;
        }
        const uint64_t hash = options_.LinkIdentical ? Fnv1a(bytes) : 0;
        if (options_.LinkIdentical && entry.LinkDuplicate) {
            if (auto it = byContent_.find(hash); it != byContent_.end())
                for (const auto& [target, earlier] : it->second)
                    if (earlier == bytes) return AddLinked(entry, path, target, stored, added);
        }
        std::vector<uint8_t> content =
            options_.LinkIdentical && LinkTargetPossible(index) ? bytes : std::vector<uint8_t>{};

        SffSprite sprite;
        sprite.GroupNo = entry.GroupNo;
        sprite.ItemNo = entry.ItemNo;
        auto axis = Shifted(entry, stored, path);
        if (!axis) return axis.error();
        sprite.AxisX = axis.value()[0];
        sprite.AxisY = axis.value()[1];
        stored.PalFlag = OnPreviousPalette(index, entry, picture, bytes, warnings) ? 1 : 0;
        sprite.PalFlag = stored.PalFlag;
        // Stored as the file stands, so that whatever lies between picture and palette reaches
        // the SFF as the engine read it before; a sprite on the previous palette leaves out
        // the file's last 768 bytes and nothing else.
        if (sprite.PalFlag == 1) bytes.resize(bytes.size() - kPaletteSize);
        sprite.Data = std::move(bytes);

        if (auto s = writer_.Add(sprite); !s) return s;
        written_.push_back({sprite.PalFlag, writer_.Bytes(), &entry});
        ++unique_;
        if (picture.Kind == PictureKind::Indexed) NotePalette(sprite);
        if (index <= kMaxLinkTarget) {
            // A name first met on the first sprite names its first copy from then on.
            if (auto [it, isNew] = byName_.emplace(nameKey, index); !isNew && it->second == 0) it->second = index;
            stored_.emplace(index, stored);
            if (options_.LinkIdentical && LinkTargetPossible(index))
                byContent_[hash].emplace_back(index, std::move(content));
        }
        if (added) added(SpriteAdded{entry, sprite.AxisX, sprite.AxisY, sprite.PalFlag, std::nullopt, warnings});
        return Ok();
    }

    // Readers take the shared palette from the last 768 bytes of the palette owner, so an
    // SFF whose owner ends before 768 bytes of file (empty or tiny first sprites) is one
    // that no reader opens: it is never made.
    Status CheckPaletteOwner(const std::string& out) const {
        if (written_.empty()) return Ok();
        const size_t owner =
            sff_layout::PaletteOwner(written_.size(), [&](size_t i) { return written_[i].PalFlag; });
        const Written& w = written_[owner];
        if (w.End >= kPaletteSize) return Ok();
        return WithLine(Error{msg::SffPalette, out,
                              "the shared palette would be the 768 bytes before the end of sprite " +
                                  DecimalText(static_cast<long long>(owner) + 1) + " (" + w.Entry->File +
                                  "), which ends at offset " + DecimalText(static_cast<long long>(w.End)) +
                                  ": the first sprites need a picture with its palette"},
                        *w.Entry);
    }

    uint32_t Unique() const { return unique_; }
    uint32_t Palettes() const { return palettes_; }

private:
    // Whether the sprite is stored on the previous palette (flag 1) rather than its own
    // (flag 0). It is when the text asks for it (no option block: the file's mode) and its
    // own palette, the file's last 768 bytes, is the one in force; a sprite whose palette
    // differs keeps its own, so that the engine shows it with the colours of its file
    // whatever rows came before it. With -p a sprite that asks for its own palette gives it
    // up when it is the one in force. The first sprite, a 24-bit picture and a file with no
    // palette behind its picture always keep their own.
    bool OnPreviousPalette(uint32_t index, const SpriteEntry& entry, const PictureIntake& picture,
                           const std::vector<uint8_t>& bytes, std::vector<std::string>& warnings) const {
        const bool asked = index > 0 && !entry.OwnPalette.value_or(!plan_.SharedPalette);
        if (index == 0 || !picture.PaletteBehind) return false;
        const bool inForce = lastPalette_ && std::equal(bytes.end() - kPaletteSize, bytes.end(), lastPalette_->begin());
        if (asked && !inForce)
            warnings.push_back("asked for the previous palette, but its own differs from the one in force: stored "
                               "with its own palette");
        return inForce && (asked || options_.DropSamePalette);
    }

    // The engine takes the last 768 bytes of every 8-bit sprite stored with its own data and
    // a flag other than 1 as the palette in force from there on; a 24-bit one carries none.
    void NotePalette(const SffSprite& sprite) {
        if (sprite.PalFlag == 1 || sprite.Data.size() < kPaletteSize) return;
        lastPalette_.emplace();
        std::copy(sprite.Data.end() - kPaletteSize, sprite.Data.end(), lastPalette_->begin());
        ++palettes_;
    }

    // A linked sprite has no data: it takes picture and palette flag from its target. Its
    // axis follows the crop of its own picture, `own`: a file linked by name is its target's
    // and was cut alike, but one linked by content (-f) may be the same picture cut out at
    // another place, and shifted by the target's crop it would stand elsewhere.
    Status AddLinked(const SpriteEntry& entry, const std::string& path, uint32_t target, const Stored& own,
                     const std::function<void(const SpriteAdded&)>& added) {
        const Stored& t = stored_.at(target);
        auto axis = Shifted(entry, own, path);
        if (!axis) return axis.error();
        SffSprite sprite;
        sprite.GroupNo = entry.GroupNo;
        sprite.ItemNo = entry.ItemNo;
        sprite.AxisX = axis.value()[0];
        sprite.AxisY = axis.value()[1];
        sprite.LinkIndex = static_cast<uint16_t>(target);
        sprite.PalFlag = t.PalFlag;
        if (auto s = writer_.Add(sprite); !s) return s;
        written_.push_back({sprite.PalFlag, writer_.Bytes(), &entry});
        if (added) added(SpriteAdded{entry, sprite.AxisX, sprite.AxisY, sprite.PalFlag, target, {}});
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
    std::optional<Palette> lastPalette_;  // none before the first palette is stored
    std::vector<uint8_t> firstBytes_;      // the first sprite's file, for its duplicates
    // Each sprite as written: its palette flag and where it ends in the file.
    struct Written {
        uint8_t PalFlag;
        uint64_t End;
        const SpriteEntry* Entry;
    };
    std::vector<Written> written_;
    uint32_t unique_ = 0;
    uint32_t palettes_ = 0;
};

}  // namespace

std::string FoldCase(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

std::string ResolvePath(const std::string& folder, const std::string& name) {
    if (!name.empty() && name.front() == '/') return name;
    return folder + name;
}

std::string ResolveName(const std::string& folder, const std::string& name, const std::string& asWritten) {
    const std::string utf8 = ResolvePath(folder, name);
    if (asWritten.empty() || asWritten == name) return utf8;
    const std::string raw = ResolvePath(folder, asWritten);
    struct stat st {};
    return lstat(utf8.c_str(), &st) != 0 && lstat(raw.c_str(), &st) == 0 ? raw : utf8;
}

Result<BuildSummary> BuildSff(const BuildPlan& plan, const BuildOptions& options, const std::string& folder,
                              const std::function<void(const SpriteAdded&)>& added) {
    const std::string out = ResolveName(folder, plan.OutputName, plan.OutputAsWritten);
    auto claim = OutputClaim::Take(out);
    if (!claim) return claim.error();
    auto writer = SffFileWriter::Create(out, plan.SharedPalette ? kSharedPaletteMode : kIndividualPaletteMode);
    if (!writer) return writer.error();
    SffFileWriter& w = writer.value();
    Builder builder(plan, options, folder, w);
    ReadAhead pictures(plan.Sprites, folder);
    for (const SpriteEntry& entry : plan.Sprites)
        if (auto s = builder.Add(entry, pictures.Next(), added); !s) return s.error();
    if (auto s = builder.CheckPaletteOwner(out); !s) return s.error();

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
