// Outside bytes as a picture, on every road the program takes one: the acceptance check
// on the bytes with both colour layouts; the preview's decoder and its redraw on what the
// preview takes (256-colour and 24-bit pictures, as the builder); sprmaker's intake of a picture file and the crop of its option -c on
// what the builder takes. Decode, redraw and crop take pictures up to kDecodedCells cells
// (DecodeBudget.h says why).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "DecodeBudget.h"
#include "PcxInput.h"
#include "Require.h"
#include "base/MessageKeys.h"
#include "formats/Pcx.h"
#include "preview/PreviewCanvas.h"
#include "preview/RowPicture.h"
#include "preview/ViewChanges.h"
#include "preview/Zoom.h"

namespace {

using namespace tarvolin;
using fuzz::kDecodedCells;
using fuzz::Require;

int64_t DeclaredCells(const PcxHeaderInfo& header) {
    int32_t lastColumn = 0;
    int32_t lastLine = 0;
    if (!PcxBounds(header, lastColumn, lastLine)) return 0;
    return (int64_t{lastColumn} + 1) * (int64_t{lastLine} + 1);
}

void DecodeAndDraw(std::span<const uint8_t> bytes, const PcxHeaderInfo& header) {
    PreviewState state;
    state.PcxBytes.assign(bytes.begin(), bytes.end());
    state.PcxHeaderInfo = header;
    DecodePicture(state);
    const PcxPixels& px = state.PcxPixels;
    int32_t lastColumn = 0;
    int32_t lastLine = 0;
    PcxBounds(header, lastColumn, lastLine);
    Require(state.TrueColour || (px.LastColumn == lastColumn && px.LastLine == lastLine),
            "the decoded picture has the header's bounds");
    Require(px.Cells.size() == static_cast<size_t>(px.Columns()) * static_cast<size_t>(px.Lines()),
            "the decoded picture has a cell for every column of every line");
    const TrueColourPixels& rgb = state.TrueColourPixels;
    Require(rgb.Rgb.size() == static_cast<size_t>(rgb.Columns) * static_cast<size_t>(rgb.Lines) * 3,
            "a 24-bit picture has three bytes for every pixel");
    // One redraw, at a zoom, axis and view start taken from the input's last byte, placed
    // as a fresh picture is and then moved, on one canvas for all runs: allocating and
    // clearing a fresh one for two redraws a run took most of this fuzzer's time.
    static PreviewCanvas canvas;
    canvas.Resize(97, 61);
    const uint8_t last = bytes.back();
    state.View = {ZoomStops()[last % ZoomStops().size()], last * 3 - 200, last / 2 - 40, 97, 61, 0, 0};
    PlaceView(state, 48, 48, last & 1);
    ScrollView(state, last * 5 - 600, 300 - last * 7);
    ViewPCX(canvas, state, last & 2);
}

// The picture as the crop reads it: lines BytesPerLine apart, the file's last 768 bytes
// (its palette) not part of the data.
PcxPixels LinesBytesPerLineApart(const std::vector<uint8_t>& bytes, const PcxHeaderInfo& h, int height) {
    PcxHeaderInfo stride = h;
    stride.Xmax = static_cast<uint16_t>(h.BytesPerLine - 1);
    stride.Ymax = static_cast<uint16_t>(height - 1);
    return PcxRle(std::span(bytes.data(), bytes.size() - kPaletteSize), stride);
}

// Option -c: the picture cut to its non-zero pixels must keep every one of them in its
// place, drop only zeros, keep the palette, and come out as an ordinary file that a second
// crop leaves as it is.
void CheckCrop(const std::vector<uint8_t>& bytes) {
    const PcxHeaderInfo h = ReadPcxHeader(bytes);
    const int width = h.Xmax - h.Xmin + 1;
    const int height = h.Ymax - h.Ymin + 1;
    if (fuzz::CropCells(h) > kDecodedCells) return;
    const sprmaker::Cropped crop = sprmaker::CropPcx(bytes);
    if (crop.Bytes == bytes) {
        Require(crop.Left == 0 && crop.Top == 0, "a picture kept whole keeps its corner");
        return;
    }
    auto again = sprmaker::TakePicture(crop.Bytes, "crop.pcx");
    Require(again && again.value().Kind == PictureKind::Indexed && again.value().PaletteBehind &&
                again.value().Repair.empty(),
            "a cropped picture is an ordinary 256-colour file with its palette behind");
    Require(std::equal(bytes.end() - kPaletteSize, bytes.end(), crop.Bytes.end() - kPaletteSize),
            "the crop keeps the palette");

    const PcxHeaderInfo ch = ReadPcxHeader(crop.Bytes);
    const int w = ch.Xmax + 1;
    const int hgt = ch.Ymax + 1;
    Require(crop.Left >= 0 && crop.Top >= 0 && crop.Left + w <= width && crop.Top + hgt <= height,
            "the crop lies inside the picture");
    const PcxPixels whole = LinesBytesPerLineApart(bytes, h, height);
    Require(whole.Columns() >= width && whole.Lines() >= height, "only a picture that decodes whole is cropped");
    const PcxPixels part = PcxRle(crop.Bytes, ch);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool inside = x >= crop.Left && x < crop.Left + w && y >= crop.Top && y < crop.Top + hgt;
            Require(inside ? whole.At(x, y) == part.At(x - crop.Left, y - crop.Top) : whole.At(x, y) == 0,
                    "the crop keeps every non-zero pixel in its place and drops only zeros");
        }
    const sprmaker::Cropped twice = sprmaker::CropPcx(crop.Bytes);
    Require(twice.Bytes == crop.Bytes && twice.Left == 0 && twice.Top == 0, "a crop is cropped no further");
}

// sprmaker's intake refuses exactly what the shared check refuses for the builder, but for
// the two shapes of a sprite without a picture, and tells the kinds apart by the header.
void CheckIntake(const std::vector<uint8_t>& bytes, bool refusedForBuilder) {
    const std::string path = "/fuzz/picture.pcx";
    auto taken = sprmaker::TakePicture(bytes, path);
    const PcxHeaderInfo h = ReadPcxHeader(bytes);
    const bool noPicture =
        bytes.empty() || (bytes.size() == kPaletteSize && PcxRefusal(h, PcxLayouts::IndexedOrTrueColour));
    if (!taken) {
        Require(refusedForBuilder && !noPicture, "the builder refuses only what the check refuses");
        Require(taken.error().Key == msg::PcxFormat && taken.error().File == path && !taken.error().Detail.empty(),
                "a refused picture names its file and what is wrong");
        return;
    }
    const sprmaker::PictureIntake& p = taken.value();
    Require(!refusedForBuilder || noPicture, "the builder takes nothing that the check refuses");
    Require((p.Kind == PictureKind::Empty) == noPicture, "only an empty file or a bare palette is no picture");
    Require((p.Kind == PictureKind::TrueColour) == (!noPicture && h.NPlanes == 3),
            "three planes are a 24-bit picture");
    Require(!p.PaletteBehind || (p.Kind == PictureKind::Indexed && bytes.size() >= kPcxHeaderSize + kPaletteSize),
            "a palette behind the picture data follows a 256-colour header and at least one byte of data");
    if (p.PaletteBehind) CheckCrop(bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    const PcxHeaderInfo header = ReadPcxHeader(bytes);
    const auto forIndexed = PcxRefusal(bytes, PcxLayouts::Indexed);
    const auto forBuilder = PcxRefusal(bytes, PcxLayouts::IndexedOrTrueColour);
    Require((!forIndexed || !forIndexed->empty()) && (!forBuilder || !forBuilder->empty()), "a refusal says why");
    Require(forIndexed || !PcxRefusal(header, PcxLayouts::Indexed), "the bytes pass only with a header that passes");
    Require(forBuilder || !PcxRefusal(header, PcxLayouts::IndexedOrTrueColour),
            "the bytes pass only with a header that passes");
    Require(forBuilder || size > kPcxHeaderSize, "an accepted picture has data behind its header");
    Require(!forBuilder || forIndexed, "a 256-colour picture taken is taken where 24-bit ones are too");

    if (!forBuilder && DeclaredCells(header) <= kDecodedCells) DecodeAndDraw(bytes, header);
    CheckIntake(std::vector<uint8_t>(bytes.begin(), bytes.end()), forBuilder.has_value());
    return 0;
}
