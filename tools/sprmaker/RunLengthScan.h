#pragma once
// Where a picture's run-length data end, found without decoding it: the builder must know
// whether a file's last 768 bytes lie behind the picture, and counting the cells of every
// file's data is most of what it spends on a picture.
#include <cstddef>
#include <cstdint>
#include <span>

namespace tarvolin::sprmaker {

// How many bytes of `data` (run-length data as the engine reads them: a byte above 0xC0 is
// a run of (byte & 0x3F) cells of the byte behind it, any other byte one cell) make up
// `cells` cells; all of them when they make fewer.
size_t RunLengthEnd(std::span<const uint8_t> data, uint64_t cells);

}  // namespace tarvolin::sprmaker
