#include "formats/PngConvert.h"

#include <algorithm>
#include <bit>
#include <unordered_map>

#include "base/MessageKeys.h"
#include "formats/Pcx.h"
#include "formats/PcxEncode.h"
#include "formats/PngFile.h"

namespace tarvolin {

namespace {

uint32_t Rgb(const uint8_t* p) { return uint32_t{p[0]} << 16 | uint32_t{p[1]} << 8 | p[2]; }

// How many colours the RGBA pixels hold, fully transparent ones counting as one: only
// asked once they are too many for a palette, so a set of every 24-bit colour (2 MB) is
// cheaper than a table that grows with the picture.
size_t CountColours(const std::vector<uint8_t>& rgba) {
    std::vector<uint64_t> seen(size_t{1} << 18, 0);
    bool transparent = false;
    for (size_t i = 0; i < rgba.size(); i += 4) {
        if (rgba[i + 3] == 0) {
            transparent = true;
            continue;
        }
        const uint32_t c = Rgb(&rgba[i]);
        seen[c >> 6] |= uint64_t{1} << (c & 63);
    }
    size_t count = transparent ? 1 : 0;
    for (uint64_t word : seen) count += static_cast<size_t>(std::popcount(word));
    return count;
}

// RGBA pixels as palette indices, as PcxFromPng tells.
Status ReduceToPalette(PngImage& image, const std::string& path) {
    const std::vector<uint8_t>& rgba = image.Pixels;
    std::vector<uint8_t> indices(rgba.size() / 4);
    Palette colours{};
    int next = 0;
    for (size_t i = 0; i < rgba.size(); i += 4)
        if (rgba[i + 3] == 0) {
            std::copy_n(&rgba[i], 3, colours.begin());
            next = 1;
            break;
        }
    std::unordered_map<uint32_t, uint8_t> index;
    uint32_t lastColour = 0;
    uint8_t lastIndex = 0;
    bool hasLast = false;
    for (size_t i = 0; i < rgba.size(); i += 4) {
        if (rgba[i + 3] == 0) {
            indices[i / 4] = 0;
            continue;
        }
        const uint32_t colour = Rgb(&rgba[i]);
        if (!hasLast || colour != lastColour) {
            auto found = index.find(colour);
            if (found == index.end()) {
                if (next == 256)
                    return Error{msg::PngFormat, path,
                                 std::to_string(CountColours(rgba)) +
                                     " colours: a picture of the engine holds at most 256 (fully transparent pixels "
                                     "count as one)"};
                found = index.emplace(colour, static_cast<uint8_t>(next)).first;
                std::copy_n(&rgba[i], 3, colours.begin() + next * 3);
                ++next;
            }
            lastColour = colour;
            lastIndex = found->second;
            hasLast = true;
        }
        indices[i / 4] = lastIndex;
    }
    image.Pixels = std::move(indices);
    image.Colours = colours;
    image.Channels = 1;
    return Ok();
}

Error Refused(const std::string& path, const std::string& why) { return Error{msg::PcxFormat, path, why}; }

}  // namespace

Result<std::vector<uint8_t>> PcxFromPng(std::span<const uint8_t> png, const std::string& path) {
    auto read = ReadPng(png, path);
    if (!read) return read.error();
    PngImage& image = read.value();
    if (image.Channels != 1)
        if (auto reduced = ReduceToPalette(image, path); !reduced) return reduced.error();
    return EncodePcx(static_cast<int>(image.Width), static_cast<int>(image.Height), image.Pixels, image.Colours);
}

Result<std::vector<uint8_t>> PngFromPcx(std::span<const uint8_t> pcx, const std::string& axis, const std::string& path) {
    if (auto refused = PcxRefusal(pcx, PcxLayouts::IndexedOrTrueColour)) return Refused(path, *refused);
    const PcxHeaderInfo h = ReadPcxHeader(pcx);
    const auto s16 = [](uint16_t v) { return int64_t{static_cast<int16_t>(v)}; };
    const int64_t width = s16(h.Xmax) - s16(h.Xmin) + 1;
    const int64_t height = s16(h.Ymax) - s16(h.Ymin) + 1;
    const int64_t planeBytes = h.BytesPerLine;  // not above 32767: PcxRefusal
    const int64_t lineBytes = planeBytes * h.NPlanes;
    if (width < 1 || height < 1)
        return Refused(path, "Xmin " + std::to_string(s16(h.Xmin)) + ", Xmax " + std::to_string(s16(h.Xmax)) +
                                 ", Ymin " + std::to_string(s16(h.Ymin)) + ", Ymax " + std::to_string(s16(h.Ymax)) +
                                 ": the engine shows no pixels");
    if (width > kMaxPngWidth || height > kMaxPngHeight || (width + (width & 1)) * height > kMaxPcxCells ||
        lineBytes > 32767 || lineBytes * height > 3 * kMaxPcxCells)
        return Refused(path, std::to_string(width) + " x " + std::to_string(height) + " pixels with " +
                                 std::to_string(lineBytes) + " bytes a line: too large for a picture file");

    // The run-length decoder lays its cells out BytesPerLine apart when its last column is
    // BytesPerLine - 1: one file line of every plane is one of its lines.
    PcxHeaderInfo lines = h;
    lines.BytesPerLine = static_cast<uint16_t>(lineBytes);
    lines.Xmax = static_cast<uint16_t>(lineBytes - 1);
    lines.Ymax = static_cast<uint16_t>(height - 1);
    const PcxPixels cells = lineBytes > 0 ? PcxRle(pcx, lines) : PcxPixels{};

    PngImage image;
    image.Width = static_cast<uint32_t>(width);
    image.Height = static_cast<uint32_t>(height);
    image.Channels = h.NPlanes;
    image.Axis = axis;
    image.Pixels.assign(static_cast<size_t>(width * height * h.NPlanes), 0);
    const int64_t shown = std::min(width, planeBytes);
    for (int64_t y = 0; y < height && lineBytes > 0; ++y)
        for (int64_t plane = 0; plane < h.NPlanes; ++plane)
            for (int64_t x = 0; x < shown; ++x)
                image.Pixels[static_cast<size_t>((y * width + x) * h.NPlanes + plane)] =
                    cells.At(static_cast<int32_t>(plane * planeBytes + x), static_cast<int32_t>(y));
    if (pcx.size() >= kPaletteSize) std::copy(pcx.end() - kPaletteSize, pcx.end(), image.Colours.begin());
    return WritePng(image, path);
}

}  // namespace tarvolin
