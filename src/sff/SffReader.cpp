#include "sff/SffReader.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

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
// What the walk reads of each subfile: its header and the PCX header behind it.
constexpr size_t kWalkRead = kSubfileHeaderSize + kPcxHeaderSize;

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

std::string At(size_t index, uint64_t offset) {
    return "subfile " + std::to_string(index) + " at offset " + std::to_string(offset);
}

// "base_GGGGG_IIIII.pcx"; the `repeat`-th subfile with the same numbers adds "_repeat".
std::string PcxNameFor(const std::string& base, int32_t group, int32_t item, int repeat = 1) {
    return base + "_" + PadZero(5, DecimalText(group)) + "_" + PadZero(5, DecimalText(item)) +
           (repeat > 1 ? "_" + DecimalText(repeat) : std::string()) + ".pcx";
}

// What the walk learns of each record beyond the record itself.
struct Walked {
    uint64_t Position = 0;  // of its header
    int64_t OwnEnd = 0;     // one past the last byte of its own data, before any link is followed
    uint16_t RawLink = 0;   // the link index as stored
    uint8_t Bits = 0;       // the PCX header's BitsPerPixel and NPlanes, 0 without data
    uint8_t Planes = 0;
    bool OwnData(const SubfileRecord& r) const { return OwnEnd > r.DataStart; }
    // A picture that carries a palette when it stores one: 8 bits in one plane.
    bool Indexed() const { return Bits == 8 && Planes == 1; }
    bool TrueColour() const { return Bits == 8 && Planes == 3; }
};

// The subfile chain as walked, and what opening finds odd about the file.
struct Chain {
    SubfileTable Records;
    std::vector<Walked> Walk;
    size_t Reached = 0;  // records the chain reached; those behind it have no data
    std::vector<QuirkFound> Quirks;
    // Subfiles without data whose link leads to no earlier subfile, by kind.
    std::vector<size_t> SelfLinks, ForwardLinks, LinksBeyond;
};

// Where a next offset that points back lands, in words.
std::string BackTarget(const Chain& chain, size_t index, uint64_t next) {
    if (next < chain.Walk[0].Position) return "inside the file header";
    size_t k = index;
    while (k > 0 && chain.Walk[k].Position > next) --k;
    if (chain.Walk[k].Position == next)
        return k == index ? "this subfile's own header" : "the header of subfile " + std::to_string(k);
    return "inside subfile " + std::to_string(k);
}

// The walk of the subfile chain from the first subfile on, every read checked against the
// file. A next offset of 0, or one at the very end of the file (how real files mark their
// last subfile), ends the chain.
Result<Chain> WalkChain(const FileBytes& b, int32_t imageCount, uint64_t first, const std::string& base,
                        const std::string& path) {
    Chain chain;
    chain.Records.resize(static_cast<size_t>(imageCount));
    chain.Walk.resize(chain.Records.size());
    const uint64_t size = b.size();
    uint64_t pos = first;
    uint8_t h[kWalkRead] = {};
    for (size_t index = 0; index < chain.Records.size(); ++index) {
        if (pos + kSubfileHeaderSize > size)
            return Error{msg::SffTooShort, path,
                         At(index, pos) + ": the 32-byte header runs past the end of the file (" +
                             std::to_string(size) + " bytes)"};
        const size_t got = static_cast<size_t>(std::min<uint64_t>(kWalkRead, size - pos));
        std::memset(h, 0, sizeof h);
        b.ReadUnchecked(pos, h, got);
        SubfileRecord& r = chain.Records[index];
        Walked& w = chain.Walk[index];
        const uint32_t next = ReadU32(h + kNextOffset);
        const uint32_t length = ReadU32(h + kDataLength);
        r.AxisX = ReadS16(h + kAxisX);
        r.AxisY = ReadS16(h + kAxisY);
        r.GroupNo = ReadU16(h + kGroupNo);
        r.ItemNo = ReadU16(h + kItemNo);
        w.RawLink = ReadU16(h + kLinkIndex);
        r.PalFlag = h[kPalFlag];
        r.DataStart = static_cast<int32_t>(pos + kSubfileHeaderSize);
        r.NextOffset = static_cast<int32_t>(std::min<uint64_t>(next, size));
        r.PcxName = PcxNameFor(base, r.GroupNo, r.ItemNo);
        w.Position = pos;
        if (next == 0) {
            // The chain ends here; the data run for the subfile's length field.
            if (r.DataStart + uint64_t{length} > size)
                return Error{msg::SffRange, path,
                             At(index, pos) + ": the last subfile's length " + std::to_string(length) +
                                 " runs past the end of the file (" + std::to_string(size) + " bytes)"};
            r.DataEnd = static_cast<int32_t>(r.DataStart + int64_t{length} - 1);
        } else if (next > size) {
            return Error{msg::SffOffset, path,
                         At(index, pos) + ": next offset " + std::to_string(next) +
                             " lies beyond the end of the file (" + std::to_string(size) + " bytes)"};
        } else if (next <= pos) {
            return Error{msg::SffRange, path,
                         At(index, pos) + ": next offset " + std::to_string(next) + " points back to " +
                             BackTarget(chain, index, next) + ": the chain would run in a circle"};
        } else if (next < pos + kSubfileHeaderSize) {
            return Error{msg::SffRange, path,
                         At(index, pos) + ": next offset " + std::to_string(next) +
                             " lies inside the subfile's own 32-byte header"};
        } else {
            r.DataEnd = static_cast<int32_t>(next) - 1;
            if (length != next - r.DataStart) NoteQuirk(chain.Quirks, QuirkKind::LengthField, index);
        }
        w.OwnEnd = static_cast<int64_t>(r.DataEnd) + 1;
        if (w.OwnEnd - r.DataStart > static_cast<int64_t>(kPcxHeaderSize) && got == kWalkRead) {
            const PcxHeaderInfo pcx = ReadPcxHeader(std::span(h + kSubfileHeaderSize, kPcxHeaderSize));
            w.Bits = pcx.BitsPerPixel;
            w.Planes = pcx.NPlanes;
            r.HeaderTaken = !PcxRefusal(pcx, PcxLayouts::IndexedOrTrueColour);
        }
        chain.Reached = index + 1;
        if (next == 0 || next == size) break;
        pos = next;
    }
    if (auto s = b.Unchanged(); !s) return s.error();
    if (chain.Reached < chain.Records.size()) {
        NoteQuirk(chain.Quirks, QuirkKind::ShortChain, chain.Reached);
        chain.Quirks.back().Count = chain.Records.size() - chain.Reached;
    }
    return chain;
}

// Links as the engine follows them. A subfile with data of its own shows them whatever
// its link index says (real files carry stale ones, made by editors that moved sprites
// about). One without data shows the earlier subfile its link index names, subfile 0
// included; a link to itself, to a later subfile or beyond the image count leads to no
// sprite the engine has loaded by then, and the subfile shows no picture. LinkIndex
// ends up naming only links that are followed.
void FollowLinks(Chain& chain) {
    const size_t count = chain.Records.size();
    for (size_t i = 0; i < count; ++i) {
        SubfileRecord& r = chain.Records[i];
        const Walked& w = chain.Walk[i];
        r.LinkIndex = kNoLink;
        if (i >= chain.Reached) continue;
        const size_t link = w.RawLink;
        if (w.OwnData(r)) {
            if (link != 0) NoteQuirk(chain.Quirks, QuirkKind::StaleLink, i);
        } else if (link < i) {
            r.LinkIndex = static_cast<int32_t>(link);
            if (link == 0) NoteQuirk(chain.Quirks, QuirkKind::LinkToFirst, i);
        } else {
            const QuirkKind kind = link == i ? QuirkKind::SelfLink
                                   : link < count ? QuirkKind::ForwardLink
                                                  : QuirkKind::LinkBeyond;
            NoteQuirk(chain.Quirks, kind, i);
            (kind == QuirkKind::SelfLink      ? chain.SelfLinks
             : kind == QuirkKind::ForwardLink ? chain.ForwardLinks
                                              : chain.LinksBeyond)
                .push_back(i);
        }
    }
}

// Real files now and then hold two subfiles with the same group and item numbers, each
// with data of its own. Named alike, the second's file would overwrite the first's on
// export and the builder would link the two, so one picture would be lost: the second gets
// a name with "_2", the third "_3", and so on, in chain order. A subfile that shows no
// picture (a link to itself or to no earlier subfile) counts too, so that it never names
// another's picture. Linked records take their target's name later.
void NameRepeatedNumbers(Chain& chain, const std::string& base) {
    std::map<std::pair<int32_t, int32_t>, int> seen;
    for (size_t i = 0; i < chain.Reached; ++i) {
        SubfileRecord& r = chain.Records[i];
        if (r.LinkIndex != kNoLink) continue;
        const int repeat = ++seen[{r.GroupNo, r.ItemNo}];
        if (repeat == 1) continue;
        r.PcxName = PcxNameFor(base, r.GroupNo, r.ItemNo, repeat);
        NoteQuirk(chain.Quirks, QuirkKind::RepeatedNumbers, i);
    }
}

// Whether record i stores a palette that later flag-1 records take: an 8-bit picture (one
// plane) with at least 768 bytes of its own and a flag other than 1 (the first record
// whatever its flag).
bool StoresPalette(const Chain& chain, size_t i) {
    const SubfileRecord& r = chain.Records[i];
    const Walked& w = chain.Walk[i];
    return r.LinkIndex == kNoLink && (r.PalFlag != 1 || i == 0) && w.Indexed() &&
           w.OwnEnd - r.DataStart >= static_cast<int64_t>(kPaletteSize);
}

// What goes behind each record's data when they are cut out: the palette the record
// takes in the file, as the engine takes it. A flag-1 record after the first takes the
// last palette stored before it: the last 768 bytes of the last earlier record with an
// 8-bit picture (one plane) of at least 768 bytes of its own and a flag other than 1. A
// 24-bit picture carries no palette and takes none. In a file made in shared mode by the
// engine's builder the palette taken is always the shared one, but files with several
// palettes hold others. Before any palette is stored (no real file does that) a record
// takes the shared palette. Every other record's data end in the palette the engine
// takes, so nothing goes behind them; the first record counts as one of these whatever its
// flag. Links are left to ResolveLinks.
void AssignPalettes(Chain& chain, int32_t sharedAt) {
    int64_t inForce = -1;
    for (size_t i = 0; i < chain.Reached; ++i) {
        SubfileRecord& r = chain.Records[i];
        const Walked& w = chain.Walk[i];
        if (r.LinkIndex != kNoLink) continue;
        if (w.TrueColour()) {
            NoteQuirk(chain.Quirks, QuirkKind::TrueColour, i);
        } else if (r.PalFlag == 1 && i > 0) {
            r.PaletteAt = static_cast<int32_t>(inForce >= 0 ? inForce : sharedAt);
            if (r.PaletteAt != sharedAt) NoteQuirk(chain.Quirks, QuirkKind::OtherPalette, i);
        } else if (StoresPalette(chain, i)) {
            inForce = w.OwnEnd - static_cast<int64_t>(kPaletteSize);
        }
    }
}

// Links take the range, name and palette of the record they point at, as it
// stands at that moment: before the owner is shortened, and only through earlier records.
// So a linked record cuts out the same bytes as its target, and both rows, which name one
// file, write that file alike.
void ResolveLinks(SubfileTable& records) {
    for (SubfileRecord& r : records) {
        if (r.LinkIndex == kNoLink) continue;
        const SubfileRecord& target = records[static_cast<size_t>(r.LinkIndex)];
        r.DataStart = target.DataStart;
        r.DataEnd = target.DataEnd;
        r.PcxName = target.PcxName;
        r.PaletteAt = target.PaletteAt;
        r.HeaderTaken = target.HeaderTaken;
    }
}

// The first few subfile indices of a list, for a notice.
std::string FirstIndices(const std::vector<size_t>& indices) {
    constexpr size_t kShown = 5;
    std::string text;
    for (size_t k = 0; k < std::min(indices.size(), kShown); ++k) text += (k ? ", " : "") + std::to_string(indices[k]);
    return indices.size() > kShown ? text + ", ..." : text;
}

// What opening repaired, a notice for each kind: links that lead to no earlier subfile,
// and rows that the chain never reached.
std::vector<Error> OpeningNotices(const Chain& chain, const std::string& path) {
    std::vector<Error> notices;
    const std::string count = std::to_string(chain.Records.size());
    std::string links;
    const auto add = [&links](const std::vector<size_t>& which, const std::string& what) {
        if (!which.empty()) links += (links.empty() ? "" : "; ") + what + ": subfile(s) " + FirstIndices(which);
    };
    add(chain.SelfLinks, "to itself");
    add(chain.ForwardLinks, "to a later subfile");
    add(chain.LinksBeyond, "at or beyond the image count " + count);
    const size_t linkCount = chain.SelfLinks.size() + chain.ForwardLinks.size() + chain.LinksBeyond.size();
    if (linkCount)
        notices.push_back(Error{msg::SffLinkIgnored, path,
                                std::to_string(linkCount) + " subfile(s) without data of their own link to no earlier "
                                "subfile (" + links + "): they show no picture; a rebuild stores a 1x1 "
                                "transparent picture there"});
    if (chain.Reached < chain.Records.size())
        notices.push_back(Error{msg::SffNoData, path,
                                "the chain of subfiles ends after " + std::to_string(chain.Reached) + " of " + count +
                                    " images: " + std::to_string(chain.Records.size() - chain.Reached) +
                                    " row(s) have no picture"});
    return notices;
}

// The file header: the signature and version checked, the quirks of its fields noted.
struct Header {
    uint8_t PaletteMode = 0;
    int32_t ImageCount = 0;
    uint64_t FirstSubfile = 0;
    uint32_t SubfileHeaderLength = 0;
};

std::string HexBytes(const uint8_t* b, size_t n) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string s;
    for (size_t i = 0; i < n; ++i) s += std::string(i ? " " : "") + kHex[b[i] >> 4] + kHex[b[i] & 15];
    return s;
}

Result<Header> ReadHeader(const FileBytes& bytes, const std::string& path) {
    uint8_t h[kPaletteMode + 1] = {};
    const size_t got = static_cast<size_t>(std::min<uint64_t>(bytes.size(), sizeof h));
    if (auto s = bytes.Read(0, h, got); !s) return s.error();
    const size_t signature = std::min(got, kSignatureSize);
    if (std::memcmp(h, kSignatureText, signature) != 0)
        return Error{msg::SffFormat, path,
                     "it does not begin with the signature \"ElecbyteSpr\" of an SFF file but with the bytes " +
                         HexBytes(h, signature)};
    if (got < sizeof h)
        return Error{msg::SffTooShort, path,
                     "the file has " + std::to_string(got) + " bytes, fewer than its 33-byte header"};
    const uint8_t* version = h + kVersion;
    if (version[3] != 1)
        return Error{msg::SffVersion, path,
                     (version[3] == 2 ? std::string("an SFF of version 2 (its version bytes are ")
                                      : std::string("version bytes ")) +
                         HexBytes(version, 4) + (version[3] == 2 ? ")" : "") +
                         ": only SFF version 1 files are read"};
    Header header;
    header.PaletteMode = h[kPaletteMode];
    header.ImageCount = ReadS32(h + kImageCount);
    header.FirstSubfile = ReadU32(h + kFirstSubfile);
    header.SubfileHeaderLength = ReadU32(h + kSubfileHeaderLength);
    if (header.ImageCount < 1 || header.ImageCount > kMaxImages)
        return Error{msg::SffImageCount, path,
                     "image count " + std::to_string(header.ImageCount) + " (1 to " + std::to_string(kMaxImages) +
                         " are supported)"};
    if (header.FirstSubfile < kFileHeaderSize)
        return Error{msg::SffRange, path,
                     "the first subfile's offset " + std::to_string(header.FirstSubfile) +
                         " lies inside the 512-byte file header"};
    if (header.FirstSubfile > bytes.size())
        return Error{msg::SffOffset, path,
                     "the first subfile's offset " + std::to_string(header.FirstSubfile) +
                         " lies beyond the end of the file (" + std::to_string(bytes.size()) + " bytes)"};
    return header;
}

void NoteHeaderQuirks(const Header& header, std::vector<QuirkFound>& quirks) {
    if (header.PaletteMode != kSharedPaletteMode) NoteQuirk(quirks, QuirkKind::IndividualPaletteMode, 0);
    if (header.FirstSubfile != kFileHeaderSize) NoteQuirk(quirks, QuirkKind::FirstSubfileOffset, 0);
    if (header.SubfileHeaderLength != kSubfileHeaderSize) NoteQuirk(quirks, QuirkKind::SubfileHeaderLength, 0);
}

// Every palette that goes behind a record, read once.
Result<std::vector<std::pair<int32_t, Palette>>> PalettesOf(const FileBytes& bytes, const SubfileTable& records) {
    std::vector<int32_t> offsets;
    for (const SubfileRecord& r : records)
        if (r.PaletteAt >= 0) offsets.push_back(r.PaletteAt);
    std::sort(offsets.begin(), offsets.end());
    offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());
    std::vector<std::pair<int32_t, Palette>> palettes(offsets.size());
    for (size_t i = 0; i < offsets.size(); ++i) {
        palettes[i].first = offsets[i];
        if (auto s = bytes.Read(static_cast<uint64_t>(offsets[i]), palettes[i].second.data(), kPaletteSize); !s)
            return s.error();
    }
    return palettes;
}

// The rows, ranked by SortKey (records with equal keys in chain order) and numbered. A
// record with the numbers of an earlier one never sorts before it: its key is raised to the
// earlier one's. The engine shows one of the two pictures under those numbers by their order
// in the file, and a rebuild writes the rows in this order.
std::vector<SpriteRow> RowsOf(const SubfileTable& records) {
    std::vector<std::string> keys(records.size());
    std::vector<size_t> order(records.size());
    std::map<std::pair<int32_t, int32_t>, size_t> highest;  // numbers -> the record with the highest key so far
    for (size_t i = 0; i < records.size(); ++i) {
        keys[i] = SortKeyFor(records[i].GroupNo, records[i].ItemNo, records[i].PalFlag);
        order[i] = i;
        const auto [earlier, first] = highest.try_emplace({records[i].GroupNo, records[i].ItemNo}, i);
        if (first) continue;
        if (keys[i] < keys[earlier->second]) keys[i] = keys[earlier->second];
        else earlier->second = i;
    }
    std::stable_sort(order.begin(), order.end(), [&keys](size_t a, size_t b) { return keys[a] < keys[b]; });
    const long width = static_cast<long>(std::to_string(records.size()).size()) + 1;
    std::vector<SpriteRow> rows(records.size());
    for (size_t place = 0; place < order.size(); ++place) {
        const size_t i = order[place];
        const SubfileRecord& r = records[i];
        SpriteRow& row = rows[place];
        row[Column::SortNo] = PadZero(width, DecimalText(static_cast<long long>(place + 1)));
        row[Column::GroupNo] = DecimalText(r.GroupNo);
        row[Column::ItemNo] = DecimalText(r.ItemNo);
        row[Column::PalType] = DecimalText(r.PalFlag);
        row[Column::SortKey] = std::move(keys[i]);
        row[Column::PPos] = DecimalText(static_cast<long long>(i));
        row[Column::PcxName] = r.PcxName;
        row[Column::AxisX] = DecimalText(r.AxisX);
        row[Column::AxisY] = DecimalText(r.AxisY);
    }
    return rows;
}

Error NameTooShort(const std::string& path, const std::string& sffName) {
    return Error{msg::SffNameShort, path, "the name \"" + sffName + "\" has fewer than four characters"};
}

Result<OpenReport> OpenSffFrom(FileBytes bytes, const std::string& path, const std::string& sffName,
                               SffState& state, SpriteTable& table, const AppIni& ini, const AskFn& ask) {
    auto base = BaseNameOf(sffName);
    if (!base) return NameTooShort(path, sffName);
    if (bytes.size() > kMaxSffBytes) return Error{msg::SffUnreadable, path, "the file is larger than 2 GiB"};
    auto header = ReadHeader(bytes, path);
    if (!header) return header.error();
    const Header& head = header.value();

    if (head.PaletteMode != kSharedPaletteMode && !ask(PaletteModeWarning(ini), kPaletteModeWarningStyle)) {
        state.SffNameCaption.clear();
        state.ImageCaption.clear();
        table.Clear();
        return OpenReport{OpenOutcome::Declined, {}, {}};
    }

    auto walked = WalkChain(bytes, head.ImageCount, head.FirstSubfile, *base, path);
    if (!walked) return walked.error();
    Chain& chain = walked.value();
    SubfileTable& records = chain.Records;
    NoteHeaderQuirks(head, chain.Quirks);
    FollowLinks(chain);
    NameRepeatedNumbers(chain, *base);

    const size_t owner = PaletteOwner(records.size(), [&](size_t i) { return records[i].PalFlag; });
    int64_t paletteEnd = chain.Walk[owner].OwnEnd;
    // An owner without data of its own (a link, or a sprite left empty) stores no palette:
    // the shared one is then the first the file stores, which the flag-1 sprites take.
    if (!chain.Walk[owner].OwnData(records[owner])) {
        size_t first = 0;
        while (first < chain.Reached && !StoresPalette(chain, first)) ++first;
        if (first == chain.Reached)
            return Error{msg::SffPalette, path,
                         At(owner, chain.Walk[owner].Position) +
                             " should hold the shared palette but has no data of its own, and no subfile stores a palette"};
        paletteEnd = chain.Walk[first].OwnEnd;
    }
    const bool ownerHoldsPalette = paletteEnd - records[owner].DataStart >= static_cast<int64_t>(kPaletteSize);
    if (paletteEnd < static_cast<int64_t>(kPaletteSize))
        return Error{msg::SffPalette, path,
                     At(owner, chain.Walk[owner].Position) + ": the palette would end at offset " +
                         std::to_string(paletteEnd) + ", before 768 bytes of file"};
    if (!ownerHoldsPalette) NoteQuirk(chain.Quirks, QuirkKind::ShortOwner, owner);

    const int32_t sharedAt = static_cast<int32_t>(paletteEnd - static_cast<int64_t>(kPaletteSize));
    Palette palette{};
    if (auto s = bytes.Read(static_cast<uint64_t>(sharedAt), palette.data(), kPaletteSize); !s) return s.error();
    // Everything is checked: from here on the file is taken.
    AssignPalettes(chain, sharedAt);
    ResolveLinks(records);
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

    std::vector<SpriteRow> rows = RowsOf(records);
    auto palettes = PalettesOf(bytes, records);
    if (!palettes) return palettes.error();
    OpenReport report{OpenOutcome::Opened, OpeningNotices(chain, path), std::move(chain.Quirks)};
    state.SffBytes = std::move(bytes);
    state.Subfiles = std::move(records);
    state.SharedPalette = palette;
    state.Palettes = std::move(palettes.value());
    state.ImageCount = head.ImageCount;
    state.SffBaseName = *base;
    state.SffNameCaption = sffName;
    state.ImageCaption = DecimalText(head.ImageCount);
    // The rows stand in SortNo order already: the list's sort by the row text keeps them.
    table.Assign(std::move(rows));
    return report;
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

Result<OpenReport> OpenSff(const std::string& path, const std::string& sffName, SffState& state,
                            SpriteTable& table, const AppIni& ini, const AskFn& ask) {
    // The file first: a folder or a missing file is named as such, whatever its name.
    auto bytes = FileBytes::Open(path, msg::SffUnreadable, kMaxSffBytes);
    if (!bytes) return bytes.error();
    return OpenSffFrom(std::move(bytes.value()), path, sffName, state, table, ini, ask);
}

Result<OpenReport> OpenSffBytes(std::vector<uint8_t> bytes, const std::string& path, const std::string& sffName,
                                 SffState& state, SpriteTable& table, const AppIni& ini, const AskFn& ask) {
    return OpenSffFrom(FileBytes(std::move(bytes)), path, sffName, state, table, ini, ask);
}

}  // namespace tarvolin
