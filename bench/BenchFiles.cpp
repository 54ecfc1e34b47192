#include "BenchFiles.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include "formats/PcxEncode.h"

namespace tarvolin::bench {

std::vector<uint8_t> NoisyPcx(int w, int h, uint32_t seed, uint32_t paletteSeed) {
    std::vector<uint8_t> px(static_cast<size_t>(w) * static_cast<size_t>(h));
    uint32_t x = seed * 2654435761u + 1;
    for (uint8_t& p : px) {
        x ^= x << 13;
        x ^= x >> 17;
        x ^= x << 5;
        p = static_cast<uint8_t>(x % 192);  // below 0xC0: one byte a pixel, no run
    }
    Palette pal{};
    for (size_t i = 0; i < pal.size(); ++i) pal[i] = static_cast<uint8_t>(i * 3 + paletteSeed);
    return EncodePcx(w, h, px, pal);
}

void PlainWrite(const std::string& path, const std::vector<uint8_t>& bytes) {
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0 || write(fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) || close(fd) != 0) {
        std::perror(path.c_str());
        std::abort();
    }
}

}  // namespace tarvolin::bench
