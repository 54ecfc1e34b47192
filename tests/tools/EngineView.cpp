#include "EngineView.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/Bytes.h"

namespace tarvolin::test {

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
        s.Linked = length == 0 && s.LinkIndex < i;
        if (s.Linked) {
            const EngineSprite& t = f.Sprites[s.LinkIndex];
            s.Picture = t.Picture;
            s.Colours = t.Colours;
        } else {
            s.Picture.assign(b.begin() + static_cast<long>(pos) + 32, b.begin() + static_cast<long>(pos + 32 + length));
            if (s.PalFlag == 1 && i > 0) {
                s.Colours = lastStored;
            } else if (s.Picture.size() >= 768) {
                std::copy(s.Picture.end() - 768, s.Picture.end(), s.Colours.begin());
                lastStored = s.Colours;
            }
        }
        f.Sprites.push_back(std::move(s));
        if (i + 1 == images && ReadU32(h) != b.size()) ADD_FAILURE() << "the last next offset is not the file size";
        pos = next;
    }
    return f;
}

}  // namespace tarvolin::test
