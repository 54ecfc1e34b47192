#include "formats/SffWriter.h"

#include <array>
#include <cstring>

#include "base/Bytes.h"
#include "formats/SffLayout.h"

namespace tarvolin {
namespace {

using namespace sff_layout;

std::array<uint8_t, kFileHeaderSize> FileHeader(uint8_t paletteMode, uint32_t groups, uint32_t images) {
    std::array<uint8_t, kFileHeaderSize> h{};
    std::memcpy(h.data() + kSignature, kSignatureText, kSignatureSize);
    const uint8_t version[] = {0, 1, 0, 1};
    std::memcpy(h.data() + kVersion, version, sizeof version);
    WriteU32(h.data() + kGroupCount, groups);
    WriteU32(h.data() + kImageCount, images);
    WriteU32(h.data() + kFirstSubfile, kFileHeaderSize);
    WriteU32(h.data() + kSubfileHeaderLength, kSubfileHeaderSize);
    h[kPaletteMode] = paletteMode;
    return h;
}

std::array<uint8_t, kSubfileHeaderSize> SubfileHeader(const SffSprite& s, uint32_t nextOffset) {
    std::array<uint8_t, kSubfileHeaderSize> h{};
    WriteU32(h.data() + kNextOffset, nextOffset);
    WriteU32(h.data() + kDataLength, static_cast<uint32_t>(s.Data.size()));
    WriteU16(h.data() + kAxisX, static_cast<uint16_t>(s.AxisX));
    WriteU16(h.data() + kAxisY, static_cast<uint16_t>(s.AxisY));
    WriteU16(h.data() + kGroupNo, s.GroupNo);
    WriteU16(h.data() + kItemNo, s.ItemNo);
    WriteU16(h.data() + kLinkIndex, s.LinkIndex);
    h[kPalFlag] = s.PalFlag;
    return h;
}

}  // namespace

std::vector<uint8_t> EncodeSff(uint8_t paletteMode, const std::vector<SffSprite>& sprites) {
    std::set<uint16_t> groups;
    size_t total = kFileHeaderSize;
    for (const SffSprite& s : sprites) {
        groups.insert(s.GroupNo);
        total += kSubfileHeaderSize + s.Data.size();
    }
    std::vector<uint8_t> out;
    out.reserve(total);
    auto header = FileHeader(paletteMode, static_cast<uint32_t>(groups.size()), static_cast<uint32_t>(sprites.size()));
    out.insert(out.end(), header.begin(), header.end());
    for (const SffSprite& s : sprites) {
        const uint32_t next = static_cast<uint32_t>(out.size() + kSubfileHeaderSize + s.Data.size());
        auto sub = SubfileHeader(s, next);
        out.insert(out.end(), sub.begin(), sub.end());
        out.insert(out.end(), s.Data.begin(), s.Data.end());
    }
    return out;
}

Result<SffFileWriter> SffFileWriter::Create(const std::string& path, uint8_t paletteMode) {
    auto file = AtomicFile::Create(path);
    if (!file) return file.error();
    SffFileWriter w(std::move(file.value()));
    auto header = FileHeader(paletteMode, 0, 0);
    if (auto s = w.file_.Write(header.data(), header.size()); !s) return s.error();
    return w;
}

Status SffFileWriter::Add(const SffSprite& sprite) {
    groups_.insert(sprite.GroupNo);
    ++images_;
    const uint64_t next = file_.Size() + kSubfileHeaderSize + sprite.Data.size();
    if (next > UINT32_MAX) return Error{"ERR_WRITE", file_.Path(), "the SFF would exceed 4 GiB"};
    auto sub = SubfileHeader(sprite, static_cast<uint32_t>(next));
    return file_.Write({std::span<const uint8_t>(sub), std::span<const uint8_t>(sprite.Data)});
}

Status SffFileWriter::Finish(const std::string& backupPath) {
    uint8_t counts[8];
    WriteU32(counts, GroupCount());
    WriteU32(counts + 4, images_);
    if (auto s = file_.WriteAt(kGroupCount, counts, sizeof counts); !s) return s;
    return file_.Commit(backupPath);
}

}  // namespace tarvolin
