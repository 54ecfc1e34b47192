#include "PcxInput.h"

#include <algorithm>
#include <span>

#include "base/TextHelpers.h"
#include "formats/Pcx.h"
#include "formats/PcxEncode.h"

namespace tarvolin::sprmaker {

std::optional<std::string> PcxProblem(const std::vector<uint8_t>& bytes) {
    if (bytes.size() < kPcxHeaderSize + 1 + kPaletteSize)
        return "only " + DecimalText(static_cast<long long>(bytes.size())) +
               " bytes, too short for a header and a 256-colour palette";
    const PcxHeaderInfo h = ReadPcxHeader(bytes);
    if (!PcxHeaderAccepted(h)) {
        if (h.Manufacturer != 10) return std::string("not a PCX file (its first byte is not 10)");
        if (h.Encoding != 1) return std::string("not run-length encoded");
        if (h.NPlanes != 1) return DecimalText(h.NPlanes) + " colour planes, only 1 is supported";
        return DecimalText(h.BitsPerPixel) + " bits per pixel, only 8 is supported";
    }
    if (h.Xmax < h.Xmin || h.Ymax < h.Ymin) return std::string("its picture size is negative");
    if (h.BytesPerLine < h.Xmax - h.Xmin + 1) return std::string("its line length is shorter than its width");
    if (bytes[bytes.size() - kPaletteSize - 1] != 0x0C)
        return std::string("no 256-colour palette at its end (the byte before the last 768 is not 12)");
    return std::nullopt;
}

Cropped CropPcx(const std::vector<uint8_t>& bytes) {
    const PcxHeaderInfo h = ReadPcxHeader(bytes);
    const int width = h.Xmax - h.Xmin + 1;
    const int height = h.Ymax - h.Ymin + 1;
    // Pictures beyond what the decoder's signed bounds can lay out, or absurdly large
    // ones, are kept whole rather than decoded.
    if (h.BytesPerLine > 32767 || height > 32767 || static_cast<size_t>(h.BytesPerLine) * height > (64u << 20))
        return {bytes, 0, 0};
    // The run-length decoder lays the lines out BytesPerLine apart when the last column is
    // BytesPerLine - 1; the lines are counted from 0 to the height less one.
    PcxHeaderInfo stride = h;
    stride.Xmax = static_cast<uint16_t>(h.BytesPerLine - 1);
    stride.Ymax = static_cast<uint16_t>(height - 1);
    const PcxPixels pixels = PcxRle(std::span(bytes.data(), bytes.size() - kPaletteSize - 1), stride);

    if (pixels.Columns() < width || pixels.Lines() < height) return {bytes, 0, 0};

    int left = width, right = -1, top = height, bottom = -1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (pixels.At(x, y) != 0) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    if (right < 0 || (left == 0 && top == 0 && right == width - 1 && bottom == height - 1)) return {bytes, 0, 0};

    const int w = right - left + 1;
    const int hgt = bottom - top + 1;
    std::vector<uint8_t> cells(static_cast<size_t>(w) * static_cast<size_t>(hgt));
    for (int y = 0; y < hgt; ++y)
        for (int x = 0; x < w; ++x) cells[static_cast<size_t>(y * w + x)] = pixels.At(left + x, top + y);
    Palette palette{};
    std::copy(bytes.end() - kPaletteSize, bytes.end(), palette.begin());
    return {EncodePcx(w, hgt, cells, palette), left, top};
}

}  // namespace tarvolin::sprmaker
