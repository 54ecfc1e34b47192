#pragma once
// What sprmaker.exe takes as a sprite's picture, stated once: the builder takes its
// pictures by this rule, and the commands that export or build check every row's picture
// by the same rule before they write anything.
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tarvolin {

enum class PictureKind {
    Empty,       // no picture: a 0-byte file, or 768 bytes that are a palette and no PCX
    Indexed,     // 256 colours, one plane
    TrueColour,  // 24 bits, three planes: stored as it is, on a palette of its own
};

struct PictureJudgement {
    PictureKind Kind = PictureKind::Empty;
    // Why the builder refuses the picture; nothing when it takes it. Refused is only what
    // no engine could show, by the check the preview uses too, 24-bit pictures allowed.
    std::optional<std::string> Refusal;
};

// A picture file of `size` bytes whose first bytes are `head` (at least the first 128, or
// all of them when there are fewer).
PictureJudgement JudgePicture(std::span<const uint8_t> head, uint64_t size);

}  // namespace tarvolin
