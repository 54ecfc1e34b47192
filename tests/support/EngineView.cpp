#include "support/EngineView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "base/Bytes.h"

namespace tarvolin::test {

EnginePixels DecodeAsEngine(const std::vector<uint8_t>& pcx) {
    EnginePixels p;
    if (pcx.size() < 128) return p;
    p.Width = ReadS16(pcx.data() + 8) - ReadS16(pcx.data() + 4) + 1;
    p.Height = ReadS16(pcx.data() + 10) - ReadS16(pcx.data() + 6) + 1;
    p.Planes = pcx[65];
    const size_t stride = ReadU16(pcx.data() + 66);
    if (p.Width <= 0 || p.Height <= 0 || p.Planes <= 0) return p;
    // The run-length data expanded, a line of every plane after another.
    std::vector<uint8_t> lines(stride * static_cast<size_t>(p.Planes) * static_cast<size_t>(p.Height), 0);
    for (size_t at = 128, out = 0; at < pcx.size() && out < lines.size();) {
        const uint8_t b = pcx[at];
        if ((b & 0xC0) == 0xC0 && (b & 0x3F) > 0) {
            if (at + 1 >= pcx.size()) break;
            const size_t n = std::min<size_t>(b & 0x3F, lines.size() - out);
            std::fill_n(lines.begin() + static_cast<long>(out), n, pcx[at + 1]);
            out += n;
            at += 2;
        } else {
            lines[out++] = b;
            ++at;
        }
    }
    const size_t width = static_cast<size_t>(p.Width);
    p.Cells.assign(width * static_cast<size_t>(p.Planes) * static_cast<size_t>(p.Height), 0);
    for (size_t row = 0; row < static_cast<size_t>(p.Planes * p.Height); ++row)
        std::copy_n(lines.begin() + static_cast<long>(row * stride), std::min(width, stride),
                    p.Cells.begin() + static_cast<long>(row * width));
    return p;
}

EngineFile EngineView(const std::vector<uint8_t>& b, bool checkLengths) {
    EngineFile f;
    if (b.size() < 512 || std::string(b.begin(), b.begin() + 12) != std::string("ElecbyteSpr\0", 12)) {
        ADD_FAILURE() << "not an SFF version 1 file";
        return f;
    }
    f.PaletteMode = b[32];
    f.GroupCount = ReadU32(b.data() + 16);
    const uint32_t images = ReadU32(b.data() + 20);
    size_t pos = ReadU32(b.data() + 24);
    bool stored = false;
    Palette lastStored{};
    for (uint32_t i = 0; i < images; ++i) {
        if (pos + 32 > b.size()) {
            ADD_FAILURE() << "subfile " << i << " runs past the end";
            return f;
        }
        const uint8_t* h = b.data() + pos;
        EngineSprite s;
        const uint32_t next = i + 1 < images ? ReadU32(h) : static_cast<uint32_t>(b.size());
        const uint32_t length = checkLengths ? ReadU32(h + 4) : next - static_cast<uint32_t>(pos + 32);
        s.AxisX = ReadS16(h + 8);
        s.AxisY = ReadS16(h + 10);
        s.GroupNo = ReadU16(h + 12);
        s.ItemNo = ReadU16(h + 14);
        s.LinkIndex = ReadU16(h + 16);
        s.PalFlag = h[18];
        if (next < pos + 32 || pos + 32 + length > b.size() || next != pos + 32 + length) {
            ADD_FAILURE() << "subfile " << i << ": length " << length << " and next offset " << next << " disagree";
            return f;
        }
        if (length == 0) {
            s.Linked = s.LinkIndex < i;
            s.SelfLinked = s.LinkIndex == i;
            s.Empty = !s.Linked;
            if (s.Linked) {  // the target's picture and palette
                const EngineSprite& t = f.Sprites[s.LinkIndex];
                std::tie(s.Empty, s.Picture, s.Pixels, s.HasColours, s.Colours) =
                    std::tie(t.Empty, t.Picture, t.Pixels, t.HasColours, t.Colours);
            }
        } else {
            s.Picture.assign(b.begin() + static_cast<long>(pos) + 32, b.begin() + static_cast<long>(pos + 32 + length));
            s.Pixels = DecodeAsEngine(s.Picture);
            const bool eightBit = s.Picture.size() > 65 && s.Picture[3] == 8 && s.Picture[65] == 1;
            const bool trueColour = s.Pixels.Planes == 3;  // its own colours, no palette
            if (!trueColour && s.PalFlag == 1 && i > 0) {
                s.HasColours = stored;
                s.Colours = lastStored;
            } else if (!trueColour && s.Picture.size() >= 768) {
                std::copy(s.Picture.end() - 768, s.Picture.end(), s.Colours.begin());
                s.HasColours = true;
                if (eightBit) stored = true, lastStored = s.Colours;
            }
        }
        f.Sprites.push_back(std::move(s));
        if (i + 1 == images && ReadU32(h) != b.size()) ADD_FAILURE() << "the last next offset is not the file size";
        pos = next;
    }
    return f;
}

}  // namespace tarvolin::test
