#pragma once
// Little-endian reads and writes of fixed-width numbers. Callers check the bounds first;
// these only assemble bytes.
#include <cstdint>
#include <cstring>

namespace tarvolin {

inline uint16_t ReadU16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }
inline int16_t ReadS16(const uint8_t* p) { return static_cast<int16_t>(ReadU16(p)); }
inline uint32_t ReadU32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16 |
           static_cast<uint32_t>(p[3]) << 24;
}
inline int32_t ReadS32(const uint8_t* p) { return static_cast<int32_t>(ReadU32(p)); }

inline void WriteU16(uint8_t* p, uint16_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
}
inline void WriteU32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(v >> (8 * i));
}

}  // namespace tarvolin
