#pragma once
// The PCX format as the program reads it: the 128-byte header, the acceptance check that
// the preview and the builder share, and the run-length decoder.
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarvolin {

struct PcxHeaderInfo {
    uint8_t Manufacturer = 0;
    uint8_t Version = 0;
    uint8_t Encoding = 0;
    uint8_t BitsPerPixel = 0;
    uint16_t Xmin = 0;
    uint16_t Ymin = 0;
    uint16_t Xmax = 0;
    uint16_t Ymax = 0;
    uint16_t HDpi = 0;
    uint16_t VDpi = 0;
    std::array<uint8_t, 48> Colormap{};
    uint8_t Reserved = 0;
    uint8_t NPlanes = 0;
    uint16_t BytesPerLine = 0;
    uint16_t PaletteInfo = 0;
    uint16_t HscreenSize = 0;
    uint16_t VscreenSize = 0;
    std::array<uint8_t, 54> Filler{};
};

inline constexpr size_t kPcxHeaderSize = 128;

// A 256-colour palette: red, green, blue per entry, as it stands behind PCX data.
inline constexpr size_t kPaletteSize = 768;
using Palette = std::array<uint8_t, kPaletteSize>;

// The header from the first 128 bytes; bytes missing from a short image read as zero.
PcxHeaderInfo ReadPcxHeader(std::span<const uint8_t> bytes);

// Whether `size` bytes beginning with `head` are what a sprite without picture data of its
// own exports as: nothing, or only the palette that went behind it (768 bytes that are no
// PCX header).
bool IsEmptyPicture(std::span<const uint8_t> head, uint64_t size);

// Whether a 256-colour picture (8 bits, one plane) ends in `palette`: such a picture, asking
// for the shared palette, is stored without a palette of its own and drawn the same.
bool EndsInPalette(std::span<const uint8_t> pcx, const Palette& palette);

// The largest picture the screen takes, in cells: 8192 x 8192. Allocating the full
// 32768 x 32768 that 16-bit bounds allow would take a gigabyte for a few bytes of header,
// so such a picture is refused like any other unsupported PCX.
inline constexpr int64_t kMaxPcxCells = int64_t{1} << 26;

// The largest PCX file read: the largest picture taken, run-length encoded at its worst
// (two bytes a cell), with room to spare.
inline constexpr uint64_t kMaxPcxFileBytes = uint64_t{256} << 20;

// The colour layouts a reader takes. The preview draws 256-colour pictures (8 bits, one
// plane) only; the builder also stores 24-bit pictures (8 bits, three planes) as they are.
enum class PcxLayouts { Indexed, IndexedOrTrueColour };

// Why a header is refused, the first failed test in this order: Manufacturer 10, Encoding
// 1, a colour layout of `layouts`, Xmax, Ymax and BytesPerLine not negative as signed
// 16-bit numbers (so no width of 32768 or more), bounds not negative and at most
// kMaxPcxCells cells. Nothing when it passes.
std::optional<std::string> PcxRefusal(const PcxHeaderInfo& header, PcxLayouts layouts = PcxLayouts::Indexed);

// The one acceptance check of a whole PCX image, for the preview and the builder alike:
// the header tests above, then at least one byte of picture data behind the header.
std::optional<std::string> PcxRefusal(std::span<const uint8_t> bytes, PcxLayouts layouts = PcxLayouts::Indexed);

// The decoded picture: palette indices, line after line with no gap, which is also the
// decoder's scanline buffer. Cell (column, line) is at line * Columns() + column.
struct PcxPixels {
    int32_t LastColumn = 0;
    int32_t LastLine = 0;
    std::vector<uint8_t> Cells = std::vector<uint8_t>(1, 0);  // one cell before anything is decoded

    int32_t Columns() const { return LastColumn + 1; }
    int32_t Lines() const { return LastLine + 1; }
    uint8_t At(int32_t column, int32_t line) const {
        return Cells[static_cast<size_t>(line) * static_cast<size_t>(Columns()) + static_cast<size_t>(column)];
    }
};

// Last column = (BytesPerLine + Xmax) / 2 cut towards zero, last line = Ymax, the three
// read as signed 16-bit numbers. Nothing when either bound comes out negative.
bool PcxBounds(const PcxHeaderInfo& header, int32_t& lastColumn, int32_t& lastLine);

// Decodes the run-length data from offset 128 until the picture is full. Never reads past
// `bytes`: data that end early leave the rest of the picture zero. 0xC0 is one literal
// pixel; runs cross line ends and are cut at the picture's end. A header whose bounds
// come out negative gives the one-cell picture.
PcxPixels PcxRle(std::span<const uint8_t> bytes, const PcxHeaderInfo& header);

// A 24-bit picture (8 bits, three planes) decoded to colours: red, green, blue per pixel,
// line after line with no gap. Each file line holds the red plane, then the green, then
// the blue, BytesPerLine bytes each; the picture is Xmax + 1 columns wide (Xmin is not
// looked at, as for 256-colour pictures), at most BytesPerLine, and Ymax + 1 lines high.
struct TrueColourPixels {
    int32_t Columns = 1;
    int32_t Lines = 1;
    std::vector<uint8_t> Rgb = std::vector<uint8_t>(3, 0);
};

// Decodes a 24-bit picture whose header PcxRefusal took with IndexedOrTrueColour. Never
// reads past `bytes`; data that end early leave the rest black. A header that is not of
// three planes, or whose bounds come out negative, gives one black pixel.
TrueColourPixels PcxRleTrueColour(std::span<const uint8_t> bytes, const PcxHeaderInfo& header);

}  // namespace tarvolin
