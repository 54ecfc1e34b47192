#pragma once
// The rows that Add and Copy put into the table, and the test a picture file passes before
// a row points at it (Add, Change PCX): the builder's own acceptance, so that a row never
// points at a picture the build would refuse.
#include <string>
#include <vector>

#include "base/Result.h"
#include "formats/Pcx.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

// The picture file at `path` as PCX bytes, when the builder takes it; the error names the
// file and why not (ERR_PCX_READ, ERR_MSG_0).
Result<std::vector<uint8_t>> AcceptedPicture(const std::string& path);

// Hands out item numbers that no row of one group uses, counting up from a start.
class FreeItems {
public:
    FreeItems(const SpriteTable& table, const std::string& group);
    // The first number above `after` (or from 0 past 65535) that is free; it is taken.
    int32_t After(int32_t after);

private:
    std::vector<bool> used_;
};

// A new row for the picture `path` (its bytes `pcx`) placed after `current`: the group and
// axis of `current`, item `item`, Share Pallet on when the picture's palette is `shared`.
// The row names the file as a row after Change PCX does; it points at no subfile.
SpriteRow RowForPicture(const std::string& path, const std::vector<uint8_t>& pcx, const SpriteRow& current,
                        const Palette& shared, int32_t item);

// Copies of the rows at `sources` (ascending), each to stand right after its source with
// the next free item number of its group. `places` gets where each copy stands once all
// are in, as SpriteTable::InsertRows takes them.
std::vector<SpriteRow> CopiesOf(const SpriteTable& table, const std::vector<int>& sources, std::vector<int>& places);

}  // namespace tarvolin
