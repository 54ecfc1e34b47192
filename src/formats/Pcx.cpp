#include "formats/Pcx.h"

#include <algorithm>
#include <cstring>

#include "base/Bytes.h"
#include "base/TextHelpers.h"

namespace tarvolin {

PcxHeaderInfo ReadPcxHeader(std::span<const uint8_t> bytes) {
    uint8_t b[kPcxHeaderSize] = {};
    if (!bytes.empty()) std::memcpy(b, bytes.data(), std::min(bytes.size(), kPcxHeaderSize));
    PcxHeaderInfo h;
    h.Manufacturer = b[0];
    h.Version = b[1];
    h.Encoding = b[2];
    h.BitsPerPixel = b[3];
    h.Xmin = ReadU16(b + 4);
    h.Ymin = ReadU16(b + 6);
    h.Xmax = ReadU16(b + 8);
    h.Ymax = ReadU16(b + 10);
    h.HDpi = ReadU16(b + 12);
    h.VDpi = ReadU16(b + 14);
    std::memcpy(h.Colormap.data(), b + 16, 48);
    h.Reserved = b[64];
    h.NPlanes = b[65];
    h.BytesPerLine = ReadU16(b + 66);
    h.PaletteInfo = ReadU16(b + 68);
    h.HscreenSize = ReadU16(b + 70);
    h.VscreenSize = ReadU16(b + 72);
    std::memcpy(h.Filler.data(), b + 74, 54);
    return h;
}

bool IsEmptyPicture(std::span<const uint8_t> head, uint64_t size) {
    return size == 0 || (size == kPaletteSize && PcxRefusal(ReadPcxHeader(head), PcxLayouts::IndexedOrTrueColour));
}

bool EndsInPalette(std::span<const uint8_t> pcx, const Palette& palette) {
    const PcxHeaderInfo header = ReadPcxHeader(pcx);
    if (header.BitsPerPixel != 8 || header.NPlanes != 1 || pcx.size() < kPcxHeaderSize + kPaletteSize) return false;
    return std::equal(palette.begin(), palette.end(), pcx.end() - static_cast<std::ptrdiff_t>(kPaletteSize));
}

namespace {
int32_t Signed(uint16_t v) { return WordFromBytes(static_cast<uint8_t>(v >> 8), static_cast<uint8_t>(v)); }

bool LayoutTaken(const PcxHeaderInfo& h, PcxLayouts layouts) {
    if (h.BitsPerPixel != 8) return false;
    return h.NPlanes == 1 || (h.NPlanes == 3 && layouts == PcxLayouts::IndexedOrTrueColour);
}
}  // namespace

std::optional<std::string> PcxRefusal(const PcxHeaderInfo& h, PcxLayouts layouts) {
    if (h.Manufacturer != 10) return "Manufacturer " + std::to_string(h.Manufacturer) + ", 10 expected";
    if (h.Encoding != 1) return "Encoding " + std::to_string(h.Encoding) + ", 1 expected (run-length encoded)";
    if (!LayoutTaken(h, layouts))
        return "NPlanes " + std::to_string(h.NPlanes) + ", BitsPerPixel " + std::to_string(h.BitsPerPixel) +
               (layouts == PcxLayouts::Indexed ? ", 1 plane of 8 bits expected"
                                               : ", 1 plane (256 colours) or 3 planes (24-bit) of 8 bits expected");
    if (Signed(h.Xmax) < 0 || Signed(h.Ymax) < 0 || Signed(h.BytesPerLine) < 0)
        return "Xmax " + std::to_string(h.Xmax) + ", Ymax " + std::to_string(h.Ymax) + ", BytesPerLine " +
               std::to_string(h.BytesPerLine) + ": beyond 32767, negative as signed 16-bit numbers";
    int32_t lastColumn = 0;
    int32_t lastLine = 0;
    PcxBounds(h, lastColumn, lastLine);  // not negative: neither are the three fields it is made of
    if (static_cast<int64_t>(lastColumn + 1) * (lastLine + 1) > kMaxPcxCells)
        return "last column " + std::to_string(lastColumn) + ", last line " + std::to_string(lastLine) +
               ": picture too large";
    return std::nullopt;
}

std::optional<std::string> PcxRefusal(std::span<const uint8_t> bytes, PcxLayouts layouts) {
    if (bytes.empty()) return std::string("no bytes at all: a sprite without a picture");
    if (auto refused = PcxRefusal(ReadPcxHeader(bytes), layouts)) return refused;
    if (bytes.size() <= kPcxHeaderSize)
        return "only " + std::to_string(bytes.size()) + " bytes: no picture data behind the 128-byte header";
    return std::nullopt;
}

bool PcxBounds(const PcxHeaderInfo& h, int32_t& lastColumn, int32_t& lastLine) {
    lastColumn = FixToLong((static_cast<double>(Signed(h.BytesPerLine)) + Signed(h.Xmax)) / 2.0);
    lastLine = Signed(h.Ymax);
    return lastColumn >= 0 && lastLine >= 0;
}

namespace {
// Expands the run-length data from offset 128 a piece at a time: a run goes on from one
// piece into the next as it goes on from one line into the next. What the data don't reach
// is 0. A 24-bit picture is expanded a line at a time, so a header that promises huge lines
// costs one line of memory, not all of them.
class RunExpander {
public:
    explicit RunExpander(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    void Fill(uint8_t* out, size_t total) {
        size_t target = 0;
        const size_t size = bytes_.size();
        while (target < total) {
            if (pending_ > 0) {
                const size_t n = std::min(pending_, total - target);
                std::memset(out + target, value_, n);
                target += n;
                pending_ -= n;
                continue;
            }
            if (source_ >= size) break;
            const uint8_t b = bytes_[source_];
            if ((b & 0xC0) != 0xC0 || (b & 0x3F) == 0) {
                out[target++] = b;
                ++source_;
                continue;
            }
            if (source_ + 1 >= size) break;  // a run whose value byte is missing: the data end here
            pending_ = b & 0x3F;
            value_ = bytes_[source_ + 1];
            source_ += 2;
        }
        std::memset(out + target, 0, total - target);
    }

private:
    std::span<const uint8_t> bytes_;
    size_t source_ = kPcxHeaderSize;
    size_t pending_ = 0;  // bytes of the current run not yet written
    uint8_t value_ = 0;
};
}  // namespace

PcxPixels PcxRle(std::span<const uint8_t> bytes, const PcxHeaderInfo& header) {
    PcxPixels p;
    if (!PcxBounds(header, p.LastColumn, p.LastLine)) {
        p.LastColumn = p.LastLine = 0;
        return p;
    }
    const size_t total = static_cast<size_t>(p.Columns()) * static_cast<size_t>(p.Lines());
    p.Cells.resize(total);
    RunExpander(bytes).Fill(p.Cells.data(), total);
    return p;
}

TrueColourPixels PcxRleTrueColour(std::span<const uint8_t> bytes, const PcxHeaderInfo& header) {
    TrueColourPixels p;
    const int32_t perPlane = Signed(header.BytesPerLine);
    const int32_t lastLine = Signed(header.Ymax);
    if (header.NPlanes != 3 || perPlane <= 0 || lastLine < 0 || Signed(header.Xmax) < 0) return p;
    p.Columns = std::min(Signed(header.Xmax) + 1, perPlane);
    p.Lines = lastLine + 1;
    std::vector<uint8_t> in(static_cast<size_t>(perPlane) * 3);  // one line: red, green, blue planes
    RunExpander runs(bytes);
    p.Rgb.resize(static_cast<size_t>(p.Columns) * static_cast<size_t>(p.Lines) * 3);
    for (size_t line = 0; line < static_cast<size_t>(p.Lines); ++line) {
        runs.Fill(in.data(), in.size());
        uint8_t* out = p.Rgb.data() + line * static_cast<size_t>(p.Columns) * 3;
        for (size_t x = 0; x < static_cast<size_t>(p.Columns); ++x)
            for (size_t plane = 0; plane < 3; ++plane) out[x * 3 + plane] = in[plane * static_cast<size_t>(perPlane) + x];
    }
    return p;
}

}  // namespace tarvolin
