#pragma once
// Reading a whole input file. Only a regular file is read: a folder, a device such as
// /dev/zero, a pipe or a socket is refused before a byte is read (a pipe is opened without
// waiting for a writer), and so is a file larger than the caller's limit, which is checked
// from the file's size before anything is allocated.
#include <cstdint>
#include <string>
#include <vector>

#include "base/Result.h"

namespace tarvolin {

// The whole file. The error carries `errorKey`, names the file and says why: the system's
// reason, "is a folder", "is not a regular file", or the size against `maxBytes`.
Result<std::vector<uint8_t>> ReadWholeFile(const std::string& path, const char* errorKey, uint64_t maxBytes);

}  // namespace tarvolin
