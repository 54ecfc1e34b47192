#pragma once
// Where the tests find the real sample files, and synthetic files made for them.
#include <optional>
#include <string>
#include <vector>

#include "formats/SffWriter.h"

namespace tarvolin::test {

// The folder of real SFF and PCX files (with a final '/'), or nothing when it is absent.
std::optional<std::string> SharedDataDir();

// Every *.sff in the shared folder (or in its `subfolder`, ending in '/'), sorted by name.
std::vector<std::string> SharedSffFiles(const std::string& subfolder = {});

// The folder of the built programs (tarvolin, sprmaker.exe, tarvolin-cli), with a final '/'.
std::string BinDir();

// A PCX image of w x h pixels made from `seed`, with a palette made from `paletteSeed`.
std::vector<uint8_t> MakePcx(int w, int h, int seed, int paletteSeed = 0);
// A hand-made PCX: a header with the given bounds and `planes` planes of 8 bits, then `data`.
std::vector<uint8_t> PcxImage(uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine,
                              const std::vector<uint8_t>& data = {}, uint8_t planes = 1);
// A 24-bit PCX of w x h, no palette: three planes of `bytesPerLine` bytes a line, each byte a run.
std::vector<uint8_t> TrueColourPcx(int w, int h, int bytesPerLine);

// A PNG of the kinds the program's writer doesn't make: IHDR, PLTE and tRNS where given, one
// IDAT of `lines` (each line's packed bytes, filter byte 0 put in front) and IEND.
std::vector<uint8_t> MakePng(uint32_t width, uint32_t height, int bitDepth, int colourType,
                             const std::vector<uint8_t>& lines, const std::vector<uint8_t>& plte = {},
                             const std::vector<uint8_t>& trns = {});

// A subfile for the writer. `withPalette` false drops the PCX's last 768 bytes.
SffSprite MakeSprite(uint16_t group, uint16_t item, uint8_t flag, bool withPalette, int16_t ax = 0, int16_t ay = 0,
                     int w = 4, int h = 3);
// A subfile without data of its own whose link index is `target`.
SffSprite MakeLink(uint16_t group, uint16_t item, uint8_t flag, uint16_t target);

// `a` with `b` behind it; a PCX without its last 768 bytes (data and 0x0C); those 768 bytes.
std::vector<uint8_t> Then(std::vector<uint8_t> a, const std::vector<uint8_t>& b);
std::vector<uint8_t> Bare(std::vector<uint8_t> pcx);
std::vector<uint8_t> PaletteOf(const std::vector<uint8_t>& pcx);

std::vector<uint8_t> ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::vector<uint8_t>& bytes);
// The same for a file's bytes as text.
std::string ReadText(const std::string& path);
void WriteText(const std::string& path, const std::string& text);

}  // namespace tarvolin::test

// Skips the current GoogleTest when the shared data folder is absent.
#define TARVOLIN_REQUIRE_SHARED_DATA(dirVar)                                                   \
    auto dirVar##Opt = ::tarvolin::test::SharedDataDir();                                     \
    if (!dirVar##Opt) GTEST_SKIP() << "../shared/data is absent: real-file test skipped";      \
    const std::string dirVar = *dirVar##Opt
