#include "formats/PngFile.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <optional>

#include "base/MessageKeys.h"

namespace tarvolin {

namespace {

// libpng reports an error by calling back, and the callback must not return: it jumps to
// the setjmp of the step that was running. Every step below that calls libpng is a
// function of its own whose locals are plain values, so the jump skips no destructor;
// what outlives a step (the handles, the pixels) belongs to its caller.
struct PngFailure {
    std::jmp_buf Jump;
    char Reason[200] = {};
};

[[noreturn]] void OnError(png_structp png, png_const_charp message) {
    auto* failure = static_cast<PngFailure*>(png_get_error_ptr(png));
    std::snprintf(failure->Reason, sizeof failure->Reason, "%s", message);
    std::longjmp(failure->Jump, 1);
}

void OnWarning(png_structp, png_const_charp) {}  // a damaged ancillary chunk is skipped

// What libpng may allocate for one chunk's data.
constexpr png_alloc_size_t kMaxChunkBytes = 1 << 20;

// Deflate packs at most 1032 bytes into one, so a file of N bytes holds at most about
// 1032 N bytes of pixel data: a header that promises more is refused as truncated before
// anything is allocated for its pixels.
constexpr uint64_t kMaxInflateRatio = 1032;

struct PngSource {
    const uint8_t* Data;
    size_t Size;
    size_t At;
};

void ReadBytes(png_structp png, png_bytep out, size_t count) {
    auto* source = static_cast<PngSource*>(png_get_io_ptr(png));
    if (count > source->Size - source->At) png_error(png, "the file ends early: it is truncated");
    std::memcpy(out, source->Data + source->At, count);
    source->At += count;
}

// The libpng handles of one read or one write, destroyed with it.
class Handles {
public:
    Handles(png_structp png, bool reading) : png_(png), reading_(reading) {
        if (png_) info_ = png_create_info_struct(png_);
    }
    ~Handles() {
        if (reading_) png_destroy_read_struct(&png_, &info_, nullptr);
        else png_destroy_write_struct(&png_, &info_);
    }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;
    bool Made() const { return png_ && info_; }
    png_structp Png() const { return png_; }
    png_infop Info() const { return info_; }

private:
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    bool reading_;
};

// A reader of `source` that skips what the program doesn't need.
void SetUpReading(png_structp png, PngSource& source) {
    png_set_read_fn(png, &source, ReadBytes);
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // the size is checked by ReadPng
    png_set_chunk_malloc_max(png, kMaxChunkBytes);
    // Text, colour profiles and the like are not needed: they are skipped unread rather
    // than buffered (libpng takes a chunk that is too large for the limit above only as a
    // warning, and would allocate what its length field says). tRNS is kept: it makes a
    // colour of an RGB or grey PNG transparent.
    png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    static constexpr png_byte kKept[] = "tRNS";
    png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_AS_DEFAULT, kKept, 1);
}

struct Header {
    png_uint_32 Width = 0;
    png_uint_32 Height = 0;
    int BitDepth = 0;
    int ColourType = 0;
};

bool ReadHeader(png_structp png, png_infop info, PngFailure& failure, Header& header, Palette& colours) {
    if (setjmp(failure.Jump)) return false;
    png_read_info(png, info);
    int interlace = 0;
    png_get_IHDR(png, info, &header.Width, &header.Height, &header.BitDepth, &header.ColourType, &interlace, nullptr,
                 nullptr);
    png_colorp palette = nullptr;
    int entries = 0;
    if (png_get_PLTE(png, info, &palette, &entries) != 0)
        for (int i = 0; i < entries && i < 256; ++i) {
            colours[static_cast<size_t>(i) * 3] = palette[i].red;
            colours[static_cast<size_t>(i) * 3 + 1] = palette[i].green;
            colours[static_cast<size_t>(i) * 3 + 2] = palette[i].blue;
        }
    return true;
}

// Asks libpng for one byte a palette index, or 8-bit RGBA for anything else; gives the
// bytes of one line as libpng will deliver it.
bool PrepareLines(png_structp png, png_infop info, PngFailure& failure, bool indexed, size_t& lineBytes) {
    if (setjmp(failure.Jump)) return false;
    if (indexed) {
        png_set_packing(png);
    } else {
        png_set_expand(png);  // grey of fewer bits to 8, a transparent colour (tRNS) to alpha
        png_set_gray_to_rgb(png);
        png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
    }
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    lineBytes = png_get_rowbytes(png, info);
    return true;
}

bool ReadLines(png_structp png, PngFailure& failure, png_bytepp lines) {
    if (setjmp(failure.Jump)) return false;
    png_read_image(png, lines);
    png_read_end(png, nullptr);  // up to IEND: a file cut behind its pixels is truncated too
    return true;
}

std::string Size(uint64_t width, uint64_t height) { return std::to_string(width) + " x " + std::to_string(height); }

// The refusal of a header the program can't take, before a byte of pixels is read.
std::optional<std::string> HeaderRefusal(const Header& h, size_t fileBytes) {
    if (h.BitDepth > 8) return std::to_string(h.BitDepth) + " bits a channel: only PNG files of up to 8 bits are read";
    const uint64_t paddedWidth = h.Width + (h.Width & 1);
    if (h.Width > kMaxPngWidth || h.Height > kMaxPngHeight ||
        paddedWidth * h.Height > static_cast<uint64_t>(kMaxPcxCells))
        return Size(h.Width, h.Height) + " pixels: larger than a picture may be (at most " +
               std::to_string(kMaxPngWidth) + " wide, " + std::to_string(kMaxPngHeight) + " high and 8192 x 8192 in all)";
    const int channels = h.ColourType == PNG_COLOR_TYPE_PALETTE ? 1
                         : h.ColourType == PNG_COLOR_TYPE_GRAY  ? 1
                         : h.ColourType == PNG_COLOR_TYPE_GRAY_ALPHA ? 2
                         : h.ColourType == PNG_COLOR_TYPE_RGB   ? 3
                                                                : 4;
    const uint64_t packed = (uint64_t{h.Width} * static_cast<uint64_t>(channels * h.BitDepth) + 7) / 8 * h.Height;
    if (packed > kMaxInflateRatio * fileBytes)
        return Size(h.Width, h.Height) + " pixels cannot come from a file of " + std::to_string(fileBytes) +
               " bytes: it is truncated";
    return std::nullopt;
}

}  // namespace

bool IsPng(std::span<const uint8_t> bytes) { return bytes.size() >= 8 && png_sig_cmp(bytes.data(), 0, 8) == 0; }

Result<PngImage> ReadPng(std::span<const uint8_t> bytes, const std::string& path) {
    PngFailure failure;
    PngSource source{bytes.data(), bytes.size(), 0};
    Handles handles(png_create_read_struct(PNG_LIBPNG_VER_STRING, &failure, OnError, OnWarning), true);
    if (!handles.Made()) return Error{msg::PngUnreadable, path, "libpng could not start"};
    SetUpReading(handles.Png(), source);
    const auto unreadable = [&] { return Error{msg::PngUnreadable, path, std::string("libpng: ") + failure.Reason}; };

    PngImage image;
    Header header;
    if (!ReadHeader(handles.Png(), handles.Info(), failure, header, image.Colours)) return unreadable();
    if (auto refused = HeaderRefusal(header, bytes.size())) return Error{msg::PngFormat, path, *refused};
    image.Width = header.Width;
    image.Height = header.Height;
    image.Channels = header.ColourType == PNG_COLOR_TYPE_PALETTE ? 1 : 4;
    size_t lineBytes = 0;
    if (!PrepareLines(handles.Png(), handles.Info(), failure, image.Channels == 1, lineBytes)) return unreadable();
    if (lineBytes != size_t{image.Width} * static_cast<size_t>(image.Channels))
        return Error{msg::PngUnreadable, path, std::to_string(lineBytes) + " bytes a line: not the layout asked for"};

    image.Pixels.resize(lineBytes * image.Height);
    std::vector<png_bytep> lines(image.Height);
    for (size_t y = 0; y < lines.size(); ++y) lines[y] = image.Pixels.data() + y * lineBytes;
    if (!ReadLines(handles.Png(), failure, lines.data())) return unreadable();
    return image;
}

namespace {

void AppendBytes(png_structp png, png_bytep data, size_t count) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    bool grown = true;
    try {
        out->insert(out->end(), data, data + count);
    } catch (...) {
        grown = false;
    }
    if (!grown) png_error(png, "out of memory");
}

void NoFlush(png_structp) {}

bool WriteAll(png_structp png, png_infop info, PngFailure& failure, const PngImage& image, png_bytepp lines) {
    if (setjmp(failure.Jump)) return false;
    const bool indexed = image.Channels == 1;
    png_set_IHDR(png, info, image.Width, image.Height, 8, indexed ? PNG_COLOR_TYPE_PALETTE : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_color palette[256];
    png_byte transparent[1] = {0};
    if (indexed) {
        for (size_t i = 0; i < 256; ++i)
            palette[i] = {image.Colours[i * 3], image.Colours[i * 3 + 1], image.Colours[i * 3 + 2]};
        png_set_PLTE(png, info, palette, 256);
        png_set_tRNS(png, info, transparent, 1, nullptr);  // colour 0 is the engine's transparent colour
    }
    png_text axis{};
    axis.compression = PNG_TEXT_COMPRESSION_NONE;
    axis.key = const_cast<png_charp>("tarvolin:axis");
    axis.text = const_cast<png_charp>(image.Axis.c_str());
    if (!image.Axis.empty()) png_set_text(png, info, &axis, 1);
    png_write_info(png, info);
    png_write_image(png, lines);
    png_write_end(png, nullptr);
    return true;
}

}  // namespace

Result<std::vector<uint8_t>> WritePng(const PngImage& image, const std::string& path) {
    if (image.Channels != 1 && image.Channels != 3)
        return Error{msg::WriteFailed, path, std::to_string(image.Channels) + " channels: 1 or 3 are written"};
    std::vector<uint8_t> out;
    PngFailure failure;
    Handles handles(png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure, OnError, OnWarning), false);
    if (!handles.Made()) return Error{msg::WriteFailed, path, "libpng could not start"};
    png_set_write_fn(handles.Png(), &out, AppendBytes, NoFlush);
    const size_t lineBytes = size_t{image.Width} * static_cast<size_t>(image.Channels);
    std::vector<png_bytep> lines(image.Height);
    for (size_t y = 0; y < lines.size(); ++y) lines[y] = const_cast<png_bytep>(image.Pixels.data() + y * lineBytes);
    if (!WriteAll(handles.Png(), handles.Info(), failure, image, lines.data()))
        return Error{msg::WriteFailed, path, std::string("libpng: ") + failure.Reason};
    return out;
}

}  // namespace tarvolin
