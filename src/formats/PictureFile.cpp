#include "formats/PictureFile.h"

#include "base/FileRead.h"
#include "base/MessageKeys.h"
#include "formats/Pcx.h"

namespace tarvolin {

Result<std::vector<uint8_t>> ReadPictureFile(const std::string& path) {
    return ReadWholeFile(path, msg::PcxUnreadable, kMaxPcxFileBytes);
}

}  // namespace tarvolin
