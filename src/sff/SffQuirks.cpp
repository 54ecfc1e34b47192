#include "sff/SffQuirks.h"

#include <algorithm>

namespace tarvolin {

namespace {

using enum RebuildOutcome;

// In the order of QuirkKind.
const QuirkDescription kDescriptions[] = {
    {"palette-mode", "the palette-mode byte is not 1 (individual palettes)",
     "each sprite with its own palette, or the last 8-bit palette before it", Repairs,
     "makes a shared-palette file in which every sprite keeps its colours", true},
    {"first-offset", "the header puts the first subfile elsewhere than at offset 512",
     "the subfiles where the header puts them", Repairs, "puts the first subfile at 512", true},
    {"header-size", "the header's subfile-header size is not 32", "the same: subfile headers are 32 bytes",
     Repairs, "writes 32", true},
    {"length", "the length field differs from the data up to the next subfile", "the data up to the next subfile",
     Repairs, "writes the length of the data", false},
    {"stale-link", "data of its own and a link index", "its own data", Repairs, "writes no link index", false},
    {"link-to-first", "no data of its own and link index 0", "the first subfile's picture", Repairs,
     "stores that picture again, so that every reader shows it", false},
    {"self-link", "no data of its own and a link to itself", "nothing: an engine refuses to load the file",
     Repairs, "stores a 1x1 fully transparent picture there (with a warning), and the engine loads the file",
     false},
    {"forward-link", "no data of its own and a link to a later subfile",
     "nothing: no sprite is loaded under that index yet", Repairs,
     "stores a 1x1 fully transparent picture there (with a warning)", false},
    {"link-beyond", "no data of its own and a link index at or beyond the image count",
     "nothing: there is no such sprite", Repairs, "stores a 1x1 fully transparent picture there (with a warning)",
     false},
    {"repeated-numbers", "the group and item numbers of an earlier subfile, and data of its own",
     "one of the two pictures under those numbers", Keeps,
     "keeps both, the later exported as NAME_GGGGG_IIIII_2.pcx", false},
    {"24-bit", "a 24-bit picture (three colour planes)",
     "its own colours; it carries no palette, so flag-1 sprites after it take the last 8-bit palette before it",
     Keeps, "stores it as it is", false},
    {"other-palette", "palette flag 1 after a palette other than the shared one",
     "that palette, the last one stored before it", Keeps,
     "gives it that palette, stored with it where the rows' order needs it", false},
    {"short-owner", "the palette owner holds fewer than 768 bytes of its own",
     "the 768 bytes before its end as the shared palette", Keeps, "stores its picture as it is", false},
    {"short-chain", "the chain of subfiles ends before the image count: rows without data",
     "nothing there: the file ends before the images the header counts", Refuses,
     "is refused until the rows without data are deleted", false},
    {"refused-picture", "data that are no picture the builder takes (a damaged PCX header)",
     "nothing: the picture can't be decoded", Refuses,
     "is refused until the row is deleted or given another picture (Change PCX)", false},
};

}  // namespace

const QuirkDescription& Describe(QuirkKind kind) { return kDescriptions[static_cast<size_t>(kind)]; }

void NoteQuirk(std::vector<QuirkFound>& found, QuirkKind kind, size_t subfile) {
    auto at = std::lower_bound(found.begin(), found.end(), kind,
                               [](const QuirkFound& q, QuirkKind k) { return q.Kind < k; });
    if (at == found.end() || at->Kind != kind) at = found.insert(at, QuirkFound{kind, 0, subfile});
    ++at->Count;
}

}  // namespace tarvolin
