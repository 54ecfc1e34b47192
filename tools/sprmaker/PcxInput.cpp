#include "PcxInput.h"

#include <algorithm>
#include <span>

#include "RunLengthScan.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"
#include "formats/Pcx.h"
#include "formats/PcxEncode.h"

namespace tarvolin::sprmaker {

namespace {

// One past the last byte of run-length data that the picture takes, decoded by its header
// as the engine decodes it: BytesPerLine bytes a plane, NPlanes planes a line, Ymax - Ymin
// + 1 lines, runs crossing line ends; a run code of count 0 is one literal cell, as the
// preview reads it. The end of the file when the data end before the picture is full.
size_t PictureDataEnd(const std::vector<uint8_t>& bytes, const PcxHeaderInfo& h) {
    const int64_t lines = static_cast<int64_t>(h.Ymax) - h.Ymin + 1;
    const uint64_t cells = lines > 0 ? uint64_t{h.BytesPerLine} * h.NPlanes * static_cast<uint64_t>(lines) : 0;
    if (bytes.size() <= kPcxHeaderSize) return bytes.size();
    return kPcxHeaderSize + RunLengthEnd(std::span(bytes).subspan(kPcxHeaderSize), cells);
}

std::string Bytes(size_t n) {
    return DecimalText(static_cast<long long>(n)) + (n == 1 ? " byte" : " bytes");
}

}  // namespace

Result<PictureIntake> TakePicture(const std::vector<uint8_t>& bytes, const std::string& path) {
    const PictureJudgement judged = JudgePicture(bytes, bytes.size());
    if (judged.Refusal) return Error{msg::PcxFormat, path, *judged.Refusal};
    // What an SFF sprite without picture data of its own exports as: nothing, or only the
    // palette that went behind it.
    const char* kTransparent = ": stored as a 1x1 fully transparent picture";
    if (judged.Kind == PictureKind::Empty)
        return PictureIntake{PictureKind::Empty, false,
                             bytes.empty() ? std::string("an empty file, a sprite without a picture") + kTransparent
                                           : std::string("768 bytes and no PCX header, a palette without a picture") +
                                                 kTransparent + " on that palette"};
    if (judged.Kind == PictureKind::TrueColour)
        return PictureIntake{PictureKind::TrueColour, false,
                             "a 24-bit picture (3 colour planes): stored as it is, with a palette flag of 0"};
    const PcxHeaderInfo h = ReadPcxHeader(bytes);

    const size_t tail = bytes.size() - PictureDataEnd(bytes, h);
    if (tail < kPaletteSize)
        return PictureIntake{PictureKind::Indexed, false,
                             "only " + Bytes(tail) +
                                 " after the picture data, no room for a palette: stored as it is, with a palette "
                                 "flag of 0 (its last 768 bytes are its palette)"};
    if (tail == kPaletteSize + 1 && bytes[bytes.size() - kPaletteSize - 1] == 0x0C)
        return PictureIntake{PictureKind::Indexed, true, {}};
    if (tail == kPaletteSize)
        return PictureIntake{PictureKind::Indexed, true,
                             "no 0x0C between the picture data and the palette (its last 768 bytes): stored as it "
                             "stands"};
    return PictureIntake{PictureKind::Indexed, true,
                         Bytes(tail - kPaletteSize) +
                             " between the picture data and the palette (its last 768 bytes): stored as they stand"};
}

std::vector<uint8_t> TransparentPixel(const Palette& palette) {
    const uint8_t pixel = 0;
    return EncodePcx(1, 1, std::span(&pixel, 1), palette);
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
    const PcxPixels pixels = PcxRle(std::span(bytes.data(), bytes.size() - kPaletteSize), stride);

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
