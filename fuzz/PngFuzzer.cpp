// Outside bytes as a picture file that is a PNG, on the road every picture file takes
// (ReadPictureFile): refused with a message that names the file and says why, or turned
// into a PCX picture that the preview and the builder take, which the PNG export writes
// back as a PNG that reads as the same picture. The chunk checksums of the input are set
// right first, so that the fuzzer's changes reach libpng's parsers and the program's own
// checks instead of stopping at a checksum.
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "DecodeBudget.h"
#include "Require.h"
#include "base/MessageKeys.h"
#include "formats/Pcx.h"
#include "formats/PngConvert.h"
#include "formats/PngFile.h"

namespace {

using namespace tarvolin;
using fuzz::Require;

void FixChunkChecksums(std::vector<uint8_t>& png) {
    size_t at = 8;
    while (at + 12 <= png.size()) {
        const size_t length = size_t{png[at]} << 24 | size_t{png[at + 1]} << 16 | size_t{png[at + 2]} << 8 | png[at + 3];
        if (length > png.size() - at - 12) return;
        const uLong crc = crc32(0, png.data() + at + 4, static_cast<uInt>(length + 4));
        for (size_t i = 0; i < 4; ++i) png[at + 8 + length + i] = static_cast<uint8_t>(crc >> (24 - 8 * i));
        at += length + 12;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<uint8_t> bytes(data, data + size);
    FixChunkChecksums(bytes);
    const std::string path = "/fuzz/picture.png";
    auto pcx = PcxFromPng(bytes, path);
    if (!pcx) {
        const Error& e = pcx.error();
        Require((e.Key == msg::PngUnreadable || e.Key == msg::PngFormat) && e.File == path && !e.Detail.empty(),
                "a refused PNG names its file and what is wrong");
        return 0;
    }
    Require(IsPng(bytes), "only a PNG is read as one");
    Require(!PcxRefusal(pcx.value(), PcxLayouts::Indexed), "a PNG becomes a PCX that the preview and the builder take");
    const PcxHeaderInfo h = ReadPcxHeader(pcx.value());
    if (int64_t{h.BytesPerLine} * (h.Ymax + 1) > fuzz::kDecodedCells) return 0;
    auto png = PngFromPcx(pcx.value(), "1,2", path);
    Require(png.ok(), "what a PNG became can be exported as a PNG");
    auto again = PcxFromPng(png.value(), path);
    Require(again && again.value() == pcx.value(), "the exported PNG reads as the same picture");
    return 0;
}
