#pragma once
// The files of a rebuild: the parameter text and the build batch beside it. Both are made
// in memory first, so that a text CP932 can't hold (a cell, the SFF's name, a path) is
// refused before anything is written (the rows: RowCheck); then each is written whole.
#include <string>
#include <vector>

#include "base/Result.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

struct BuildTexts {
    std::string Folder;     // the folder of both files, ending with '/'
    std::string ParamName;  // the parameter text's bare name
    std::string BatchName;  // the batch's bare name, by the "Build.bat" rule
    std::string ParamBytes;
    std::string BatchBytes;
};

// The texts for a parameter file at `paramPath`; `programFolder` holds sprmaker.exe. A
// name in Shift JIS bytes is written under its UTF-8 reading, which the batch names.
Result<BuildTexts> PrepareBuildTexts(const SpriteTable& table, const std::string& sffNameCaption,
                                     const std::string& paramPath, bool pause, const std::string& programFolder);

// Writes the parameter text, then the batch.
Status WriteBuildTexts(const BuildTexts& texts);

// Where a build into `folder` may put the new SFF: under the open SFF's name, and for a
// name in Shift JIS bytes also under its UTF-8 spelling, which the builder gives a file it
// makes anew.
std::vector<std::string> NewSffPaths(const std::string& folder, const std::string& sffNameCaption);

// The name of the parameter text of a build in a folder: SffBaseName + "_SFF.txt".
std::string BuildParamName(const SffState& state);

}  // namespace tarvolin
