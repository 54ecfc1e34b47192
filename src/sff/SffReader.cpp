#include "sff/SffReader.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

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

// "base_GGGGG_IIIII.pcx"; the `repeat`-th subfile with the same numbers adds "_repeat".
std::string PcxNameFor(const std::string& base, int32_t group, int32_t item, int repeat = 1) {
    return base + "_" + PadZero(5, DecimalText(group)) + "_" + PadZero(5, DecimalText(item)) +
           (repeat > 1 ? "_" + DecimalText(repeat) : std::string()) + ".pcx";
}

// The subfile chain as walked: a record per image, and for each record that the chain
// reached the end of its own data (one past the last byte, before any link is followed).
struct Chain {
    SubfileTable Records;
    std::vector<int64_t> OwnEnd;
    size_t Reached = 0;  // records the chain reached; those behind it have no data
};

// The walk of the subfile chain (steps 5 to 7), with every read checked against the file.
Result<Chain> WalkChain(const std::vector<uint8_t>& b, int32_t imageCount, const std::string& base,
                        const std::string& path) {
    Chain chain;
    SubfileTable& table = chain.Records;
    table.resize(static_cast<size_t>(imageCount));
    chain.OwnEnd.assign(table.size(), 0);
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
        chain.OwnEnd[index] = static_cast<int64_t>(r.DataEnd) + 1;
        chain.Reached = index + 1;
        // A next offset below 1 ends the chain; so does one at the very end of the file,
        // which is how real files mark their last subfile.
        if (r.NextOffset < 1 || r.NextOffset == size) break;
        pos = static_cast<size_t>(r.NextOffset);
    }
    return chain;
}

// A link is followed only by a record without data of its own, as the engine follows
// it: a record with data shows them whatever its link index says (real files carry stale
// ones, made by editors that moved sprites about). A link index at or beyond the image
// count links to nothing and is read as no link. Either way LinkIndex becomes 0, so that
// it names only links that are followed. Gives the records whose index was out of range.
std::vector<size_t> DropUnfollowedLinks(Chain& chain) {
    std::vector<size_t> outOfRange;
    const size_t count = chain.Records.size();
    for (size_t i = 0; i < chain.Reached; ++i) {
        SubfileRecord& r = chain.Records[i];
        if (r.LinkIndex == 0) continue;
        const bool beyond = static_cast<size_t>(r.LinkIndex) >= count;
        if (beyond) outOfRange.push_back(i);
        if (beyond || chain.OwnEnd[i] > r.DataStart) r.LinkIndex = 0;
    }
    return outOfRange;
}

// Real files now and then hold two subfiles with the same group and item numbers, each
// with data of its own. Named alike, the second's file would overwrite the first's on
// export and the builder would link the two, so one picture would be lost: the second gets
// a name with "_2", the third "_3", and so on, in chain order. Linked records take their
// target's name later.
void NameRepeatedNumbers(Chain& chain, const std::string& base) {
    std::map<std::pair<int32_t, int32_t>, int> seen;
    for (size_t i = 0; i < chain.Reached; ++i) {
        SubfileRecord& r = chain.Records[i];
        if (r.LinkIndex != 0) continue;
        const int repeat = ++seen[{r.GroupNo, r.ItemNo}];
        if (repeat > 1) r.PcxName = PcxNameFor(base, r.GroupNo, r.ItemNo, repeat);
    }
}

// What goes behind each record's data when they are cut out: the palette the record
// takes in the file, as the engine takes it. A flag-1 record after the first takes the
// last palette stored before it, the last 768 bytes of the last earlier record with at
// least 768 bytes of data of its own and a flag other than 1; in a file made in shared
// mode by the engine's builder that is always the shared palette, but files with several
// palettes hold others. Before any palette is stored (no real file does that) it takes
// the shared palette. Every other record's data end in the palette the engine takes, so
// nothing goes behind them; the first record counts as one of these whatever its flag.
// Links are left to ResolveLinks.
void AssignPalettes(Chain& chain, int32_t sharedAt) {
    int64_t inForce = -1;
    for (size_t i = 0; i < chain.Reached; ++i) {
        SubfileRecord& r = chain.Records[i];
        if (r.LinkIndex != 0) continue;
        if (r.PalFlag == 1 && i > 0)
            r.PaletteAt = static_cast<int32_t>(inForce >= 0 ? inForce : sharedAt);
        else if (chain.OwnEnd[i] - r.DataStart >= static_cast<int64_t>(kPaletteSize))
            inForce = chain.OwnEnd[i] - static_cast<int64_t>(kPaletteSize);
    }
}

// Step 8: links take the range, name and palette of the record they point at, as it
// stands at that moment: before the owner is shortened, and only through earlier records.
// So a linked record cuts out the same bytes as its target, and both rows, which name one
// file, write that file alike.
void ResolveLinks(SubfileTable& records) {
    for (SubfileRecord& r : records) {
        if (r.LinkIndex == 0) continue;
        const SubfileRecord& target = records[static_cast<size_t>(r.LinkIndex)];
        r.DataStart = target.DataStart;
        r.DataEnd = target.DataEnd;
        r.PcxName = target.PcxName;
        r.PaletteAt = target.PaletteAt;
    }
}

// The first few subfile indices of a list, for a notice.
std::string FirstIndices(const std::vector<size_t>& indices) {
    constexpr size_t kShown = 5;
    std::string text;
    for (size_t k = 0; k < std::min(indices.size(), kShown); ++k) text += (k ? ", " : "") + std::to_string(indices[k]);
    return indices.size() > kShown ? text + ", ..." : text;
}

// What opening repaired, a notice for each kind: links beyond the table (`outOfRange`),
// and rows that the chain never reached.
std::vector<Error> OpeningNotices(const Chain& chain, const std::vector<size_t>& outOfRange, const std::string& path) {
    std::vector<Error> notices;
    const std::string count = std::to_string(chain.Records.size());
    if (!outOfRange.empty())
        notices.push_back(Error{msg::SffLinkIgnored, path,
                                std::to_string(outOfRange.size()) + " subfile(s) with a link index at or beyond the " +
                                    "image count " + count + " are read as not linked: subfile(s) " +
                                    FirstIndices(outOfRange)});
    if (chain.Reached < chain.Records.size())
        notices.push_back(Error{msg::SffNoData, path,
                                "the chain of subfiles ends after " + std::to_string(chain.Reached) + " of " + count +
                                    " images: " + std::to_string(chain.Records.size() - chain.Reached) +
                                    " row(s) have no picture"});
    return notices;
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

    auto walked = WalkChain(bytes, imageCount, *base, path);
    if (!walked) return walked.error();
    Chain& chain = walked.value();
    SubfileTable& records = chain.Records;

    std::vector<Error> notices = OpeningNotices(chain, DropUnfollowedLinks(chain), path);
    NameRepeatedNumbers(chain, *base);

    const size_t owner = PaletteOwner(records.size(), [&](size_t i) { return records[i].PalFlag; });
    const int64_t paletteEnd = chain.OwnEnd[owner];
    const bool ownerHoldsPalette = paletteEnd - records[owner].DataStart >= static_cast<int64_t>(kPaletteSize);
    if (paletteEnd < static_cast<int64_t>(kPaletteSize))
        return Error{msg::SffPalette, path,
                     At(owner, static_cast<size_t>(records[owner].DataStart) - kSubfileHeaderSize) +
                         ": the palette would end at offset " + std::to_string(paletteEnd) +
                         ", before 768 bytes of file"};

    // Everything is checked: from here on the file is taken.
    const int32_t sharedAt = static_cast<int32_t>(paletteEnd - static_cast<int64_t>(kPaletteSize));
    AssignPalettes(chain, sharedAt);
    ResolveLinks(records);
    Palette palette{};
    std::memcpy(palette.data(), bytes.data() + sharedAt, kPaletteSize);
    // The owner counts as a shared-palette sprite from here on: cut out with the shared
    // palette behind it, it comes to the bytes the file holds for it. An owner whose own
    // data are shorter than a palette (a picture stored without room for one, or a link)
    // keeps what it cuts out: shortened, it would come out as the 768 bytes before its end,
    // headers and all, and its picture would be lost.
    if (ownerHoldsPalette) {
        SubfileRecord& o = records[owner];
        o.DataEnd -= static_cast<int32_t>(kPaletteSize);
        o.PalFlag = 1;
        o.PaletteAt = sharedAt;
    }

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
    return OpenReport{OpenOutcome::Opened, std::move(notices)};
}

}  // namespace tarvolin
