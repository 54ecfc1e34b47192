#pragma once
// The kinds of oddity that real SFF files hold, as opening finds them: what each is, what
// an engine shows there, and what a rebuild (tarvolin-cli build, Build SFF) makes of it.
// The command-line tool's check prints them; opening tells some of them as notices.
#include <cstddef>
#include <string>
#include <vector>

namespace tarvolin {

enum class QuirkKind {
    // The file header.
    IndividualPaletteMode,  // the palette-mode byte is not 1
    FirstSubfileOffset,     // the first subfile is not at offset 512
    SubfileHeaderLength,    // the header's subfile-header size is not 32
    // Subfiles.
    LengthField,       // a length field differs from the data up to the next subfile
    StaleLink,         // data of its own and a link index
    LinkToFirst,       // no data, link index 0, after the first subfile
    SelfLink,          // no data, linked to itself
    ForwardLink,       // no data, linked to a later subfile
    LinkBeyond,        // no data, link index at or beyond the image count
    RepeatedNumbers,   // the group and item numbers of an earlier subfile, data of its own
    TrueColour,        // a 24-bit picture
    OtherPalette,      // a flag-1 subfile after a palette other than the shared one
    ShortOwner,        // the palette owner holds fewer than 768 bytes of its own
    ShortChain,        // the chain of subfiles ends before the image count
    RefusedPicture,    // a picture the builder refuses (a damaged PCX header)
};

// What a rebuild makes of a kind of quirk.
enum class RebuildOutcome {
    Repairs,  // the new file has it no more, and shows what the engine showed
    Keeps,    // the new file keeps it, showing what the engine showed
    Refuses,  // the build refuses the file until the rows concerned are deleted or changed
};

struct QuirkFound {
    QuirkKind Kind;
    size_t Count = 0;        // subfiles concerned (1 for a quirk of the header)
    size_t FirstSubfile = 0;  // the first of them, counted from 0
};

struct QuirkDescription {
    const char* Name;         // a word for scripts, e.g. "stale-link"
    const char* What;         // what is odd, of one subfile
    const char* EngineShows;  // what an engine shows there
    RebuildOutcome Outcome;
    const char* Rebuild;      // what the rebuild does
    bool OfTheHeader;         // a quirk of the file header rather than of subfiles
};

const QuirkDescription& Describe(QuirkKind kind);

// Counts one more subfile of `kind` into `found` (kept in the order of QuirkKind).
void NoteQuirk(std::vector<QuirkFound>& found, QuirkKind kind, size_t subfile);

}  // namespace tarvolin
