#include "formats/PictureFile.h"

#include "base/FileRead.h"
#include "base/MessageKeys.h"
#include "formats/Pcx.h"
#include "formats/PngConvert.h"
#include "formats/PngFile.h"

namespace tarvolin {

Result<std::vector<uint8_t>> ReadPictureFile(const std::string& path) {
    auto bytes = ReadWholeFile(path, msg::PcxUnreadable, kMaxPcxFileBytes);
    // A PNG is known by its signature, whatever its name says.
    if (bytes && IsPng(bytes.value())) return PcxFromPng(bytes.value(), path);
    return bytes;
}

}  // namespace tarvolin
