#pragma once
// How large a picture the fuzzers decode or crop in one run.
//
// A 128-byte header may declare up to 8192 x 8192 cells (kMaxPcxCells), and decoding
// allocates and clears every one of them: 64 MB and about 0.4 s a run under the
// sanitizers, which held the PCX fuzzer at 110 to 200 runs a second, nearly all of it
// spent on zeros. Run data fill at most 63 cells per two bytes, so an input of libFuzzer's
// max_len (4096 bytes, the largest seed being smaller) fills at most about 129,000 cells:
// beyond that a picture decodes into the same data followed by zeros. Pictures up to
// kDecodedCells cells are decoded and cropped, among them the widest and the tallest the
// checks accept (32767 columns of 8 lines, 8 columns of 32768 lines); larger ones still go
// through the acceptance checks and the builder's intake, which allocate nothing for them.
#include <algorithm>
#include <cstdint>

#include "formats/Pcx.h"

namespace tarvolin::fuzz {

inline constexpr int64_t kDecodedCells = int64_t{1} << 18;

// The cells the builder's crop decodes: lines BytesPerLine apart, Ymax - Ymin + 1 of them.
inline int64_t CropCells(const PcxHeaderInfo& h) {
    return int64_t{h.BytesPerLine} * std::max(h.Ymax - h.Ymin + 1, 0);
}

}  // namespace tarvolin::fuzz
