#include "sff/SffReader.h"

#include <algorithm>
#include <cstring>

#include "base/FileRead.h"
#include "base/Bytes.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/SffLayout.h"

namespace tarvolin {
namespace {

using namespace sff_layout;
constexpr int32_t kMaxImages = 32767;
// Offsets in the file are signed 32-bit numbers: a larger file can't be addressed.
constexpr uint64_t kMaxSffBytes = INT32_MAX;

// The file name without its last four characters (characters, not bytes: "a.b.sff" ->
// "a.b", "sprites" -> "spr"). Nothing when the name is shorter than four characters.
std::optional<std::string> BaseNameOf(const std::string& name) {
    size_t cut = name.size();
    for (int i = 0; i < 4; ++i) {
        if (cut == 0) return std::nullopt;
        --cut;
        while (cut > 0 && (static_cast<unsigned char>(name[cut]) & 0xC0) == 0x80) --cut;
    }
    return name.substr(0, cut);
}

std::string At(size_t index, size_t offset) {
    return "subfile " + std::to_string(index) + " at offset " + std::to_string(offset);
}

std::string PcxNameFor(const std::string& base, int32_t group, int32_t item) {
    return base + "_" + PadZero(5, DecimalText(group)) + "_" + PadZero(5, DecimalText(item)) + ".pcx";
}

// The walk of the subfile chain (steps 5 to 7), with every read checked against the file.
Result<SubfileTable> WalkChain(const std::vector<uint8_t>& b, int32_t imageCount, const std::string& base,
                               const std::string& path, std::vector<int64_t>& ownEnd) {
    SubfileTable table(static_cast<size_t>(imageCount));
    ownEnd.assign(table.size(), 0);
    const int64_t size = static_cast<int64_t>(b.size());
    size_t pos = kFileHeaderSize;  // the first subfile is always taken here
    for (size_t index = 0; index < table.size(); ++index) {
        if (static_cast<int64_t>(pos + kSubfileHeaderSize) > size)
            return Error{msg::SffTooShort, path,
                         At(index, pos) + ": the 32-byte header runs past the end of the file (" +
                             std::to_string(size) + " bytes)"};
        const uint8_t* h = b.data() + pos;
        SubfileRecord& r = table[index];
        r.NextOffset = ReadS32(h + kNextOffset);
        r.AxisX = ReadS16(h + kAxisX);
        r.AxisY = ReadS16(h + kAxisY);
        r.GroupNo = ReadU16(h + kGroupNo);
        r.ItemNo = ReadU16(h + kItemNo);
        r.LinkIndex = ReadU16(h + kLinkIndex);
        r.PalFlag = h[kPalFlag];
        r.DataStart = static_cast<int32_t>(pos + kSubfileHeaderSize);
        r.PcxName = PcxNameFor(base, r.GroupNo, r.ItemNo);
        if (r.NextOffset >= 1) {
            if (r.NextOffset > size)
                return Error{msg::SffOffset, path,
                             At(index, pos) + ": next offset " + std::to_string(r.NextOffset) +
                                 " lies beyond the end of the file (" + std::to_string(size) + " bytes)"};
            if (r.NextOffset < r.DataStart)
                return Error{msg::SffRange, path,
                             At(index, pos) + ": next offset " + std::to_string(r.NextOffset) +
                                 " lies inside the subfile's own header"};
            r.DataEnd = r.NextOffset - 1;
        } else {
            // The chain ends here; the data run for the subfile's length field.
            const int64_t length = ReadU32(h + kDataLength);
            if (r.DataStart + length > size)
                return Error{msg::SffRange, path,
                             At(index, pos) + ": the last subfile's length " + std::to_string(length) +
                                 " runs past the end of the file"};
            r.DataEnd = static_cast<int32_t>(r.DataStart + length - 1);
        }
        ownEnd[index] = static_cast<int64_t>(r.DataEnd) + 1;
        if (r.LinkIndex >= imageCount)
            return Error{msg::SffLink, path,
                         At(index, pos) + ": link index " + std::to_string(r.LinkIndex) + ", but the file has " +
                             std::to_string(imageCount) + " images"};
        // A next offset below 1 ends the chain; so does one at the very end of the file,
        // which is how real files mark their last subfile.
        if (r.NextOffset < 1 || r.NextOffset == size) break;
        pos = static_cast<size_t>(r.NextOffset);
    }
    return table;
}

}  // namespace

std::string SortKeyFor(int32_t groupNo, int32_t itemNo, int32_t palType) {
    if (groupNo == 9000 && (itemNo == 0 || itemNo == 1)) return " 00000" + PadZero(5, DecimalText(itemNo));
    return DecimalText(1LL - palType) + PadZero(5, DecimalText(groupNo)) + PadZero(5, DecimalText(itemNo));
}

std::string PaletteModeWarning(const AppIni& ini) {
    return ini.MsgNotSharedPalette + "\r\n" + ini.MsgCannotDecode + "\r\n\r\n" + ini.MsgNoRebuildGuarantee + "\r\n" +
           ini.MsgContinueProcess;
}

bool ConfirmDiscardTable(const SpriteTable& table, const AppIni& ini, const AskFn& ask) {
    if (table.Empty()) return true;
    return ask(ini.MsgDiscardTable + "\r\n" + ini.MsgContinue, kDiscardTableStyle);
}

Result<OpenReport> OpenSff(const std::string& path, const std::string& sffName, SffState& state,
                            SpriteTable& table, const AppIni& ini, const AskFn& ask) {
    if (!BaseNameOf(sffName))
        return Error{msg::SffNameShort, path, "the name \"" + sffName + "\" has fewer than four characters"};
    auto bytes = ReadWholeFile(path, msg::SffUnreadable, kMaxSffBytes);
    if (!bytes) return bytes.error();
    return OpenSffBytes(std::move(bytes.value()), path, sffName, state, table, ini, ask);
}

Result<OpenReport> OpenSffBytes(std::vector<uint8_t> bytes, const std::string& path, const std::string& sffName,
                                 SffState& state, SpriteTable& table, const AppIni& ini, const AskFn& ask) {
    auto base = BaseNameOf(sffName);
    if (!base) return Error{msg::SffNameShort, path, "the name \"" + sffName + "\" has fewer than four characters"};
    if (bytes.size() > kMaxSffBytes)
        return Error{msg::SffUnreadable, path, "the file is larger than 2 GiB"};
    if (bytes.size() < kPaletteMode + 1)
        return Error{msg::SffTooShort, path,
                     "the file has " + std::to_string(bytes.size()) + " bytes, fewer than its 33-byte header"};

    if (bytes[kPaletteMode] != kSharedPaletteMode && !ask(PaletteModeWarning(ini), kPaletteModeWarningStyle)) {
        state.SffNameCaption.clear();
        state.ImageCaption.clear();
        table.Clear();
        return OpenReport{OpenOutcome::Declined, {}};
    }

    const int32_t imageCount = ReadS32(bytes.data() + kImageCount);
    if (imageCount < 1 || imageCount > kMaxImages)
        return Error{msg::SffImageCount, path,
                     "image count " + std::to_string(imageCount) + " (1 to " + std::to_string(kMaxImages) +
                         " are supported)"};

    std::vector<int64_t> ownEnd;
    auto walked = WalkChain(bytes, imageCount, *base, path, ownEnd);
    if (!walked) return walked.error();
    SubfileTable& records = walked.value();

    // Links take the range and name of the record they point at, as it stands at that
    // moment: before the owner is shortened, and only through earlier records.
    for (SubfileRecord& r : records) {
        if (r.LinkIndex == 0) continue;
        const SubfileRecord& target = records[static_cast<size_t>(r.LinkIndex)];
        r.DataStart = target.DataStart;
        r.DataEnd = target.DataEnd;
        r.PcxName = target.PcxName;
    }

    size_t owner = 0;
    for (size_t i = 1; i < records.size(); ++i) {
        if (records[i - 1].PalFlag == 0 && records[i].PalFlag == 1) {
            owner = i - 1;
            break;
        }
    }
    SubfileRecord& o = records[owner];
    const int64_t paletteEnd = o.NextOffset >= 1 ? o.NextOffset : ownEnd[owner];
    if (paletteEnd < 768)
        return Error{msg::SffPalette, path,
                     At(owner, static_cast<size_t>(o.DataStart) - kSubfileHeaderSize) +
                         ": the palette would end at offset " + std::to_string(paletteEnd) +
                         ", before 768 bytes of file"};

    // Everything is checked: from here on the file is taken.
    Palette palette{};
    std::memcpy(palette.data(), bytes.data() + paletteEnd - 768, 768);
    o.DataEnd -= 768;
    o.PalFlag = 1;

    std::vector<SpriteRow> rows(records.size());
    for (size_t i = 0; i < records.size(); ++i) {
        const SubfileRecord& r = records[i];
        SpriteRow& row = rows[i];
        row[Column::GroupNo] = DecimalText(r.GroupNo);
        row[Column::ItemNo] = DecimalText(r.ItemNo);
        row[Column::PalType] = DecimalText(r.PalFlag);
        row[Column::SortKey] = SortKeyFor(r.GroupNo, r.ItemNo, r.PalFlag);
        row[Column::PPos] = DecimalText(static_cast<long long>(i));
        row[Column::PcxName] = r.PcxName;
        row[Column::AxisX] = DecimalText(r.AxisX);
        row[Column::AxisY] = DecimalText(r.AxisY);
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const SpriteRow& a, const SpriteRow& b) { return a[Column::SortKey] < b[Column::SortKey]; });
    const long width = static_cast<long>(std::to_string(rows.size()).size()) + 1;
    for (size_t i = 0; i < rows.size(); ++i) rows[i][Column::SortNo] = PadZero(width, DecimalText(static_cast<long long>(i + 1)));

    state.SffBytes = std::move(bytes);
    state.Subfiles = std::move(records);
    state.SharedPalette = palette;
    state.ImageCount = imageCount;
    state.SffBaseName = *base;
    state.SffNameCaption = sffName;
    state.ImageCaption = DecimalText(imageCount);
    table.Assign(std::move(rows));
    table.SortBy(Column::SortNo);
    return OpenReport{OpenOutcome::Opened, {}};
}

}  // namespace tarvolin
