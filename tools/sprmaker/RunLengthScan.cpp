#include "RunLengthScan.h"

#include <algorithm>
#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tarvolin::sprmaker {

// The data are counted 64 bytes at a time, a bit a byte. Every byte is either a start (a
// literal or a run code) or the value behind a run code. A byte that follows one of 0xC0
// or below is a start, whatever came before it; so in a stretch of bytes above 0xC0 that
// begins at a start, the codes stand at its even places and their values at the odd ones,
// one past the stretch included. The stretches that begin at an even bit are the bits that
// adding their first bits clears; the block's cells are its literal starts, one each, and
// the counts of its codes. The block in which the picture is full is read byte by byte.

namespace {

constexpr uint64_t kEvenBits = 0x5555555555555555ull;

bool IsRunCode(uint8_t b) { return b > 0xC0; }

// Set bits counted in a few operations: without a popcount instruction in the target's
// baseline, std::popcount is a library call that costs as much as the rest of a block.
uint64_t SetBits(uint64_t x) {
    x -= (x >> 1) & 0x5555555555555555ull;
    x = (x & 0x3333333333333333ull) + ((x >> 2) & 0x3333333333333333ull);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0Full;
    return (x * 0x0101010101010101ull) >> 56;
}

#if defined(__SSE2__)

// Bit i set where byte i of the 64 at `p` is above 0xC0.
uint64_t HighBytes(const uint8_t* p) {
    const __m128i flip = _mm_set1_epi8(static_cast<char>(0x80));
    const __m128i limit = _mm_set1_epi8(0x40);  // 0xC0 with its top bit flipped, as signed bytes
    uint64_t high = 0;
    for (int k = 0; k < 4; ++k) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k));
        const int above = _mm_movemask_epi8(_mm_cmpgt_epi8(_mm_xor_si128(bytes, flip), limit));
        high |= static_cast<uint64_t>(static_cast<uint16_t>(above)) << (16 * k);
    }
    return high;
}

// The sum of (byte & 0x3F) over the bytes of the 64 at `p` whose bit is set in `mask`.
uint64_t SumCounts(const uint8_t* p, uint64_t mask) {
    const __m128i bit = _mm_setr_epi8(1, 2, 4, 8, 16, 32, 64, -128, 1, 2, 4, 8, 16, 32, 64, -128);
    const __m128i count = _mm_set1_epi8(0x3F);
    __m128i sum = _mm_setzero_si128();
    for (int k = 0; k < 4; ++k) {
        const uint64_t m = mask >> (16 * k);
        const __m128i spread = _mm_set_epi64x(static_cast<int64_t>(((m >> 8) & 0xFF) * 0x0101010101010101ull),
                                              static_cast<int64_t>((m & 0xFF) * 0x0101010101010101ull));
        const __m128i chosen = _mm_cmpeq_epi8(_mm_and_si128(spread, bit), bit);
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k));
        sum = _mm_add_epi64(sum, _mm_sad_epu8(_mm_and_si128(_mm_and_si128(bytes, count), chosen),
                                              _mm_setzero_si128()));
    }
    return static_cast<uint64_t>(_mm_cvtsi128_si64(sum)) +
           static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sum, sum)));
}

#else

uint64_t HighBytes(const uint8_t* p) {
    uint64_t high = 0;
    for (int i = 0; i < 64; ++i) high |= static_cast<uint64_t>(IsRunCode(p[i])) << i;
    return high;
}

uint64_t SumCounts(const uint8_t* p, uint64_t mask) {
    uint64_t sum = 0;
    for (; mask; mask &= mask - 1) sum += p[std::countr_zero(mask)] & 0x3Fu;
    return sum;
}

#endif

}  // namespace

size_t RunLengthEnd(std::span<const uint8_t> data, uint64_t cells) {
    const uint8_t* p = data.data();
    const size_t size = data.size();
    size_t at = 0;
    bool firstIsValue = false;  // byte `at` is the value of a run code before it
    uint64_t left = cells;
    while (left > 0 && at + 64 <= size) {
        const uint64_t high = HighBytes(p + at);
        const uint64_t stretches = high & ~static_cast<uint64_t>(firstIsValue);
        const uint64_t firsts = stretches & ~(stretches << 1);
        const uint64_t evenStretches = stretches & ~(stretches + (firsts & kEvenBits));
        const uint64_t codes = (evenStretches & kEvenBits) | (stretches & ~evenStretches & ~kEvenBits);
        const uint64_t values = (codes << 1) | static_cast<uint64_t>(firstIsValue);
        const uint64_t blockCells = SetBits(~high & ~values) + SumCounts(p + at, codes);
        if (blockCells >= left) break;
        left -= blockCells;
        firstIsValue = (codes >> 63) != 0;
        at += 64;
    }
    if (firstIsValue) ++at;
    while (left > 0 && at < size) {
        const uint8_t b = p[at];
        const bool run = IsRunCode(b);
        left -= std::min<uint64_t>(left, run ? (b & 0x3Fu) : 1u);
        at += run ? 2 : 1;
    }
    return std::min(at, size);
}

}  // namespace tarvolin::sprmaker
