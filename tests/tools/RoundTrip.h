#pragma once
// The rebuild that Build SFF does, without windows (export every row, write the parameter
// text, run sprmaker.exe in the folder), and the row-by-row check that the rebuilt file
// shows what the original showed.
#include <map>
#include <string>
#include <vector>

#include "base/Result.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"
#include "support/EngineView.h"

namespace tarvolin::test {

struct OpenedSff {
    std::string Path;
    SffState State;
    SpriteTable Table;
    std::vector<Error> Notices;
};

// Opens `path` as the window does, answering Yes to the palette-mode warning. Fails the
// current test when the file is refused.
bool OpenForRebuild(const std::string& path, OpenedSff& out);

// Export, parameter text and sprmaker.exe in `folder`: the new SFF's bytes, or nothing
// (the current test failed) when sprmaker.exe did not make it. `log` gets its output.
std::vector<uint8_t> Rebuild(const OpenedSff& opened, const std::string& folder, std::string& log);

// Row by row, what differs between the table and the rebuilt file (whose sprite n is row
// n + 1): numbers and axis; the pixels of the row's bytes cut out and of the rebuilt
// sprite; the rebuilt sprite's palette and the exported file's last 768 bytes; links for
// rows that named one file; and what the engine shows of the original sprite (by P.Pos) and
// of the rebuilt one, picture and palette, empty sprites empty.
struct RowTally {
    int Rows = 0;
    int Equal = 0;
    int Linked = 0;
    std::map<std::string, int> Reasons;  // why rows differ, and how many do for each reason
    std::vector<std::string> Examples;   // the first few differing rows, for the failure message
};
RowTally CompareRows(const OpenedSff& opened, const EngineFile& original, const std::string& exportFolder,
                     const EngineFile& rebuilt);

// One line: the file, its rows, how many are equal, how many differ and why.
std::string TallyLine(const std::string& name, const RowTally& tally);

}  // namespace tarvolin::test
