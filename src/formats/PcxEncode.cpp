#include "formats/PcxEncode.h"

#include "base/Bytes.h"

namespace tarvolin {

std::vector<uint8_t> EncodePcx(int width, int height, std::span<const uint8_t> pixels, const Palette& palette) {
    const int bytesPerLine = width + (width & 1);
    std::vector<uint8_t> out(128, 0);
    out[0] = 10;
    out[1] = 5;
    out[2] = 1;
    out[3] = 8;
    WriteU16(out.data() + 8, static_cast<uint16_t>(width - 1));
    WriteU16(out.data() + 10, static_cast<uint16_t>(height - 1));
    WriteU16(out.data() + 12, 72);
    WriteU16(out.data() + 14, 72);
    out[65] = 1;
    WriteU16(out.data() + 66, static_cast<uint16_t>(bytesPerLine));
    WriteU16(out.data() + 68, 1);
    out.reserve(out.size() + static_cast<size_t>(bytesPerLine * height) + 769);
    std::vector<uint8_t> line(static_cast<size_t>(bytesPerLine), 0);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) line[static_cast<size_t>(x)] = pixels[static_cast<size_t>(y) * width + x];
        // Runs stay inside one line, as the usual writers keep them.
        size_t x = 0;
        while (x < line.size()) {
            const uint8_t v = line[x];
            size_t run = 1;
            while (x + run < line.size() && line[x + run] == v && run < 63) ++run;
            if (run > 1 || (v & 0xC0) == 0xC0) {
                out.push_back(static_cast<uint8_t>(0xC0 | run));
                out.push_back(v);
            } else {
                out.push_back(v);
            }
            x += run;
        }
    }
    out.push_back(0x0C);
    out.insert(out.end(), palette.begin(), palette.end());
    return out;
}

}  // namespace tarvolin
