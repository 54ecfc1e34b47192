#include "rebuild/PictureIntake.h"

#include "formats/Pcx.h"

namespace tarvolin {

PictureJudgement JudgePicture(std::span<const uint8_t> head, uint64_t size) {
    if (IsEmptyPicture(head, size)) return {PictureKind::Empty, std::nullopt};
    const PcxHeaderInfo header = ReadPcxHeader(head);
    auto refusal = PcxRefusal(header, PcxLayouts::IndexedOrTrueColour);
    if (!refusal && size <= kPcxHeaderSize)
        refusal = "only " + std::to_string(size) + " bytes: no picture data behind the 128-byte header";
    return {header.NPlanes == 3 ? PictureKind::TrueColour : PictureKind::Indexed, refusal};
}

}  // namespace tarvolin
