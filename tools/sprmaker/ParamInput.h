#pragma once
// The parameter text that sprmaker.exe reads on its standard input: the name of the SFF
// to make, file options, then per sprite an optional option block, the PCX file name and
// four numbers. Both the texts Tarvolin writes and hand-written ones read here.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace tarvolin::sprmaker {

struct SpriteEntry {
    std::string File;  // UTF-8, as written: relative to the working folder or absolute
    std::string FileAsWritten;  // the name's bytes as they stand in the text (CP932)
    long Line = 0;     // line of the file name, counted from 1
    uint16_t GroupNo = 0;
    uint16_t ItemNo = 0;
    int16_t AxisX = 0;
    int16_t AxisY = 0;
    // Set by the sprite's option block: true = own palette, false = the previous sprite's
    // palette; nothing = the default of the file's palette mode.
    std::optional<bool> OwnPalette;
    bool LinkDuplicate = true;  // a name that already appeared becomes a linked sprite
};

struct BuildPlan {
    std::string OutputName;   // UTF-8, relative to the working folder or absolute
    std::string OutputAsWritten;  // the name's bytes as they stand in the text (CP932)
    bool SharedPalette = false;  // the file's palette mode; individual unless asked
    std::vector<SpriteEntry> Sprites;  // at least one
    // The empty line that ended the list of sprites (0: the text ended), and how many lines
    // with text followed it: they were not read.
    long EndLine = 0;
    long LinesNotRead = 0;
};

// Reads the whole text (CP932; CR LF, LF or a lone CR end a line). A malformed line is an
// error (key ERR_PARAM_LINE) whose detail begins "line N", the line's number, followed by
// its text where it has one. A text without an output name or without a sprite is such an
// error too: nothing is to be made of it.
Result<BuildPlan> ParseParamText(std::string_view cp932Text);

// "not read: N lines with text after it", of the lines behind an empty line.
std::string NotReadText(long lines);

}  // namespace tarvolin::sprmaker
