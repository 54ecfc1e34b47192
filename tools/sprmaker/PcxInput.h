#pragma once
// The picture files that go into a new SFF: what the builder makes of each (the shared
// acceptance rule, then the picture decoded by its header to find where its palette
// lies), the picture that stands in for none, and the crop of option -c.
#include <cstdint>
#include <string>
#include <vector>

#include "base/Result.h"
#include "formats/Pcx.h"
#include "rebuild/PictureIntake.h"

namespace tarvolin::sprmaker {

struct PictureIntake {
    PictureKind Kind = PictureKind::Empty;
    // The file's last 768 bytes lie wholly behind the picture data, so they are its palette
    // and a sprite on the previous palette can leave them out. False for a file too short
    // to carry a palette behind its picture: the engine then takes its last 768 bytes,
    // picture bytes among them, and the file must be stored whole.
    bool PaletteBehind = false;
    // What is unusual about the file and what the builder does about it, for one warning
    // line of the log; empty for an ordinary sprite (picture data, 0x0C, palette).
    std::string Repair;
};

// Refuses, with key ERR_MSG_0 naming `path`, only what no engine could show (JudgePicture);
// everything else is taken as it is.
Result<PictureIntake> TakePicture(const std::vector<uint8_t>& bytes, const std::string& path);

// What the builder stores for a file without a picture: a 1x1 picture of colour 0, which
// the engine draws transparent, with `palette` behind it. Never a subfile without data,
// which the engine would read as a link to the first sprite.
std::vector<uint8_t> TransparentPixel(const Palette& palette);

// The picture cut down to the smallest rectangle that holds every non-zero pixel,
// encoded anew with the same palette. `left` and `top` say how far the picture's corner
// moved, so that the axis can follow. A picture without a non-zero pixel is kept whole.
// Only for a 256-colour picture with its palette behind it.
struct Cropped {
    std::vector<uint8_t> Bytes;
    int Left = 0;
    int Top = 0;
};
Cropped CropPcx(const std::vector<uint8_t>& checkedBytes);

}  // namespace tarvolin::sprmaker
