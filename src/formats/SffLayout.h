#pragma once
// The SFF version 1 layout, stated once for the reader and the writer: a 512-byte file
// header, then a chain of subfiles, each a 32-byte header followed by its PCX data. All
// numbers are little-endian.
#include <cstddef>
#include <cstdint>

namespace tarvolin::sff_layout {

inline constexpr size_t kFileHeaderSize = 512;
inline constexpr size_t kSubfileHeaderSize = 32;

// File header.
inline constexpr size_t kSignature = 0;       // "ElecbyteSpr\0", 12 bytes
inline constexpr const char* kSignatureText = "ElecbyteSpr";
inline constexpr size_t kSignatureSize = 12;  // the text and its NUL
inline constexpr size_t kVersion = 12;        // 4 bytes, stored as 0, 1, 0, 1 for 1.01: the last is the major
inline constexpr size_t kGroupCount = 16;     // u32
inline constexpr size_t kImageCount = 20;     // u32
inline constexpr size_t kFirstSubfile = 24;   // u32
inline constexpr size_t kSubfileHeaderLength = 28;  // u32
inline constexpr size_t kPaletteMode = 32;    // u8: 1 shared, 0 individual
inline constexpr uint8_t kSharedPaletteMode = 1;
inline constexpr uint8_t kIndividualPaletteMode = 0;

// Subfile header, relative to its start.
inline constexpr size_t kNextOffset = 0;   // u32, from the start of the file
inline constexpr size_t kDataLength = 4;   // u32; 0 for a linked sprite
inline constexpr size_t kAxisX = 8;        // s16
inline constexpr size_t kAxisY = 10;       // s16
inline constexpr size_t kGroupNo = 12;     // u16
inline constexpr size_t kItemNo = 14;      // u16
inline constexpr size_t kLinkIndex = 16;   // u16
inline constexpr size_t kPalFlag = 18;     // u8: 1 = the previous sprite's palette

// The subfile whose data end in the shared palette, as readers find it: the first one
// with flag 0 that a subfile with flag 1 follows, else subfile 0. Its last 768 bytes are
// taken as the palette, so they must lie in the file: it must end at offset 768 or later.
// `flagAt(i)` gives the palette flag of subfile i of `count`.
template <class FlagAt>
size_t PaletteOwner(size_t count, FlagAt flagAt) {
    for (size_t i = 1; i < count; ++i)
        if (flagAt(i - 1) == 0 && flagAt(i) == 1) return i - 1;
    return 0;
}

}  // namespace tarvolin::sff_layout
