#pragma once
// A picture file chosen by the user (Change PCX, Add) or named in a parameter text, read
// as the PCX image that the preview decodes and the builder stores. A PCX file is taken as
// it stands; other picture formats the program reads are turned into an equivalent PCX
// image here, so that everything after this point knows one format only.
#include <cstdint>
#include <string>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

// The file at `path` as PCX bytes. The error (ERR_PCX_READ) names the file and says why.
// The bytes are not checked here: PcxRefusal is the one acceptance check.
Result<std::vector<uint8_t>> ReadPictureFile(const std::string& path);

}  // namespace tarvolin
