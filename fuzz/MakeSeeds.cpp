// Writes a seed corpus for each fuzzer: real files from the shared data folder where it is
// there, the English settings file, and small synthetic files made with the project's own
// writers (in FuzzedDataProvider's form for the fuzzers that read their input with it).
// Real SFF files are cut down to their first subfiles: a fuzzer runs a seed of a few
// kilobytes thousands of times a second, one of a megabyte a few hundred times.
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "ProviderSeed.h"
#include "base/Bytes.h"
#include "formats/PcxEncode.h"
#include "formats/PngConvert.h"
#include "formats/SffWriter.h"
#include "rebuild/BuildBatch.h"

namespace fs = std::filesystem;

namespace {

void Write(const fs::path& dir, const std::string& name, const std::vector<uint8_t>& bytes) {
    fs::create_directories(dir);
    std::ofstream(dir / name, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                      static_cast<std::streamsize>(bytes.size()));
}

void Write(const fs::path& dir, const std::string& name, const std::string& text) {
    Write(dir, name, std::vector<uint8_t>(text.begin(), text.end()));
}

std::vector<uint8_t> ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Copied by their bytes, not as files: a copy would keep the shared files' read-only mode,
// and the next run could not write the seed again.
void CopyMatching(const fs::path& shared, const std::string& ext, const fs::path& to) {
    if (!fs::is_directory(shared)) return;
    for (const auto& e : fs::directory_iterator(shared))
        if (e.path().extension() == ext) Write(to, e.path().filename().string(), ReadAll(e.path()));
}

uint32_t U32(const std::vector<uint8_t>& b, size_t at) {
    return static_cast<uint32_t>(b[at] | b[at + 1] << 8 | b[at + 2] << 16) | static_cast<uint32_t>(b[at + 3]) << 24;
}

// The header and the first subfiles of a real SFF, as many as fit in `budget` bytes (the
// first one always, up to `firstLimit`), with the image count set to match. The chain
// then ends as real files end it: the last next offset is the file's size. Nothing when
// the file has no subfile small enough.
std::vector<uint8_t> CutSff(const std::vector<uint8_t>& sff, size_t budget = 6144, size_t firstLimit = 16384) {
    namespace L = tarvolin::sff_layout;
    if (sff.size() < L::kFileHeaderSize) return {};
    size_t offset = U32(sff, L::kFirstSubfile), end = 0;
    uint32_t images = 0;
    while (images < 64 && offset + L::kSubfileHeaderSize <= sff.size()) {
        const size_t next = U32(sff, offset + L::kNextOffset);
        if (next <= offset || next > sff.size() || next > (images ? budget : firstLimit)) break;
        end = next;
        offset = next;
        ++images;
    }
    if (images == 0) return {};
    std::vector<uint8_t> cut(sff.begin(), sff.begin() + static_cast<std::ptrdiff_t>(end));
    for (int i = 0; i < 4; ++i) cut[L::kImageCount + i] = static_cast<uint8_t>(images >> (8 * i));
    return cut;
}

void CutSffs(const fs::path& folder, const fs::path& to) {
    if (!fs::is_directory(folder)) return;
    for (const auto& e : fs::directory_iterator(folder))
        if (e.path().extension() == ".sff")
            if (auto cut = CutSff(ReadAll(e.path())); !cut.empty()) Write(to, e.path().filename().string(), cut);
}

tarvolin::Palette SeedPalette() {
    tarvolin::Palette pal{};
    for (size_t i = 0; i < pal.size(); ++i) pal[i] = static_cast<uint8_t>(i * 3);
    return pal;
}

std::vector<uint8_t> SmallPcx(int w, int h) {
    std::vector<uint8_t> px(static_cast<size_t>(w * h));
    for (size_t i = 0; i < px.size(); ++i) px[i] = static_cast<uint8_t>(i % 7 == 0 ? 0xC0 : i);
    return tarvolin::EncodePcx(w, h, px, SeedPalette());
}

// A w x h picture of zeros but for a box of colour 9 at (left, top), bw x bh.
std::vector<uint8_t> BoxPcx(int w, int h, int left, int top, int bw, int bh) {
    std::vector<uint8_t> px(static_cast<size_t>(w * h));
    for (int y = top; y < top + bh; ++y)
        for (int x = left; x < left + bw; ++x) px[static_cast<size_t>(y * w + x)] = 9;
    return tarvolin::EncodePcx(w, h, px, SeedPalette());
}

// An ordinary small picture whose header declares other bounds.
std::vector<uint8_t> DeclaredPcx(uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine) {
    std::vector<uint8_t> pcx = SmallPcx(3, 2);
    tarvolin::WriteU16(pcx.data() + 8, xmax);
    tarvolin::WriteU16(pcx.data() + 10, ymax);
    tarvolin::WriteU16(pcx.data() + 66, bytesPerLine);
    return pcx;
}

void SffSeeds(const fs::path& to, const fs::path& shared) {
    CutSffs(shared, to);
    CutSffs(shared / "corpus", to);
    std::vector<tarvolin::SffSprite> sprites(3);
    for (size_t i = 0; i < sprites.size(); ++i) {
        sprites[i].GroupNo = static_cast<uint16_t>(i);
        sprites[i].PalFlag = i ? 1 : 0;
        sprites[i].Data = SmallPcx(3 + static_cast<int>(i), 2);
    }
    sprites[2].Data.clear();
    sprites[2].LinkIndex = 1;
    Write(to, "synthetic.sff", tarvolin::EncodeSff(tarvolin::kSharedPaletteMode, sprites));
}

// Real pictures, and pictures as large as the checks accept: the widest and the tallest
// whose data still fit in a seed, and headers that declare the largest picture accepted
// (8192 x 8192) and one line more.
void PcxSeeds(const fs::path& to, const fs::path& shared) {
    CopyMatching(shared, ".pcx", to);
    Write(to, "synthetic.pcx", SmallPcx(5, 4));
    Write(to, "wide.pcx", BoxPcx(32766, 2, 16000, 1, 5, 1));
    Write(to, "tall.pcx", BoxPcx(2, 1400, 1, 700, 1, 3));
    Write(to, "largest.pcx", DeclaredPcx(8191, 8191, 8192));
    Write(to, "too-large.pcx", DeclaredPcx(8191, 8192, 8192));
}

// PNG files as the export writes them: a palette, and RGB of a 24-bit picture; and the
// first with the header of the largest picture taken and of one line more (the fuzzer
// sets the chunk checksums right).
void PngSeeds(const fs::path& to) {
    std::vector<uint8_t> trueColour = SmallPcx(4, 3);
    trueColour[65] = 3;  // three planes of 4 bytes a line
    if (auto rgb = tarvolin::PngFromPcx(trueColour, "0,0", "rgb.png")) Write(to, "rgb.png", rgb.value());
    auto indexed = tarvolin::PngFromPcx(SmallPcx(5, 4), "3,-2", "indexed.png");
    if (!indexed) return;
    Write(to, "indexed.png", indexed.value());
    for (const auto& [name, height] : {std::pair{"largest.png", 8192}, std::pair{"too-large.png", 8193}}) {
        std::vector<uint8_t> png = indexed.value();
        for (int i = 0; i < 4; ++i) {
            png[static_cast<size_t>(16 + i)] = static_cast<uint8_t>(8192 >> (24 - 8 * i));
            png[static_cast<size_t>(20 + i)] = static_cast<uint8_t>(height >> (24 - 8 * i));
        }
        Write(to, name, png);
    }
}

// The table, names and folder of the text writers' fuzzer, as it takes them.
using SeedRow = std::array<std::string, 7>;  // path, name, group, item, X, Y, palette type
std::vector<uint8_t> TextWritersSeed(bool pause, const std::string& sffName, const std::string& paramName,
                                     const std::string& programFolder, const std::vector<SeedRow>& rows) {
    tarvolin::fuzz::ProviderSeed seed;
    seed.Number(pause, 0, 255).Text(sffName).Text(paramName).Text(programFolder);
    seed.Number(static_cast<int64_t>(rows.size()), 0, 10);
    for (const SeedRow& row : rows)
        for (const std::string& cell : row) seed.Text(cell);
    return seed.Bytes();
}

void TextWritersSeeds(const fs::path& to) {
    Write(to, "worked.bin",
          TextWritersSeed(true, "fighter.sff", "fighter_SFF.txt", "/opt/tarvolin/",
                          {{"", "fighter_09000_00000.pcx", "9000", "0", "0", "0", "0"},
                           {"", "fighter_09000_00001.pcx", "9000", "1", "0", "0", "0"},
                           {"", "fighter_00000_00000.pcx", "0", "0", "36", "105", "1"},
                           {"", "fighter_00000_00001.pcx", "0", "1", "36", "105", "1"},
                           {"/art/", "new.pcx", "200", "0", "-3", "90", "0"}}));
    Write(to, "japanese.bin",
          TextWritersSeed(false, "技.sff", "技 SFF.txt", "/作業 フォルダ/",
                          {{"/画像/", "技_00000_00000.pcx", "0", "0", "-32768", "32767", "0"},
                           {"", "ソ表.pcx", "65535", "65535", "0", "0", "1"}}));
    // Values sprmaker reads otherwise, and values that refuse the text.
    Write(to, "unusual.bin",
          TextWritersSeed(true, ";not.sff", "a > b_SFF.txt", "/opt/\\tools/",
                          {{"", "#", "+5", " 7 ", "65536", "-0", "x"}, {"", ";c.pcx", "1", "2", "3", "4", "0"}}));
    Write(to, "refused.bin",
          TextWritersSeed(false, "a\tb.sff", "그림.txt", "/opt/\"q\"/", {{"", "a\r\nb.pcx", "1", "2", "3", "4", "0"}}));
}

// The pictures and sprites of the builder's fuzzer, as it takes them.
struct SeedSprite {
    int Picture;
    uint16_t GroupNo;
    uint16_t ItemNo;
    int16_t AxisX;
    int16_t AxisY;
    int Block;  // 0 none, 1 own palette, 2 previous palette; 3 to 5 the same without linking
};
enum SeedFlags : uint8_t { kCrop = 1, kLinkIdentical = 2, kDropSamePalette = 4, kSharedMode = 8 };

std::vector<uint8_t> BuildSeed(uint8_t flags, const std::vector<std::vector<uint8_t>>& pictures,
                               const std::vector<SeedSprite>& sprites) {
    tarvolin::fuzz::ProviderSeed seed;
    const auto count = static_cast<int64_t>(pictures.size());
    seed.Number(flags, 0, 255).Number(count, 1, 3).Number(static_cast<int64_t>(sprites.size()), 1, 8);
    for (const SeedSprite& s : sprites)
        seed.Number(s.Picture, 0, count - 1)
            .Number(s.GroupNo, 0, 65535)
            .Number(s.ItemNo, 0, 65535)
            .Number(s.AxisX, -32768, 32767)
            .Number(s.AxisY, -32768, 32767)
            .Number(s.Block, 0, 5);
    for (const auto& p : pictures) seed.Text(p);
    return seed.Bytes();
}

void BuildSeeds(const fs::path& to) {
    Write(to, "shared.bin",
          BuildSeed(kSharedMode, {SmallPcx(5, 4), SmallPcx(6, 3)},
                    {{0, 9000, 0, 0, 0, 1}, {1, 0, 0, 36, 105, 2}, {0, 0, 1, 36, 105, 0}, {1, 0, 2, -3, 90, 4}}));
    // The same box at two places: cropped alike, linked by content (to a sprite after the
    // first, which no link can name).
    Write(to, "crop-link.bin",
          BuildSeed(kCrop | kLinkIdentical | kDropSamePalette | kSharedMode,
                    {BoxPcx(8, 6, 1, 1, 3, 2), BoxPcx(8, 6, 4, 3, 3, 2)},
                    {{0, 1, 0, 10, 20, 0}, {0, 1, 1, 10, 20, 3}, {1, 1, 2, 10, 20, 0}}));
    // Picture data without a palette behind them first, then an empty file and a bare palette.
    std::vector<uint8_t> bare = SmallPcx(30, 12);
    bare.resize(bare.size() - tarvolin::kPaletteSize);
    const tarvolin::Palette palette = SeedPalette();
    Write(to, "no-palette.bin",
          BuildSeed(0, {bare, {}, std::vector<uint8_t>(palette.begin(), palette.end())},
                    {{0, 0, 0, 0, 0, 1}, {1, 0, 1, 0, 0, 2}, {2, 0, 2, 0, 0, 0}}));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    const fs::path out = argv[1];
    const fs::path shared = argv[2];

    SffSeeds(out / "fuzz_sff", shared);

    Write(out / "fuzz_settings", "full.ini",
          "[FONT]\r\nNAME=Arial\r\nSIZE=9\r\n[MESSAGE]\r\nMSG_004_001=\"Quit?\"\r\n[CAPTION]\r\nMAIN=Tarvolin\r\n");
    Write(out / "fuzz_settings", "empty.ini", "");
    if (argc > 3) Write(out / "fuzz_settings", "tarvolin.en.ini", ReadAll(argv[3]));

    PcxSeeds(out / "fuzz_pcx", shared);
    PngSeeds(out / "fuzz_png");

    CopyMatching(shared, ".txt", out / "fuzz_paramtext");
    Write(out / "fuzz_paramtext", "tarvolin.txt",
          "#\r\n1\r\n2\r\nfighter.sff\r\n#\r\n1\r\n1\r\na.pcx\r\n9000\r\n0\r\n0\r\n0\r\nb.pcx\r\n0\r\n1\r\n-3\r\n90\r\n\r\n");

    // The batch Tarvolin writes, for a name with the characters a shell would take apart,
    // and the lines of a hand-edited one.
    if (auto bat = tarvolin::BuildBatBytes("a & b | c < d > e_SFF.txt", true, "/opt/tar volin/"))
        Write(out / "fuzz_batch", "tarvolin.bat", bat.value());
    Write(out / "fuzz_batch", "edited.bat",
          "rem edited\r\n:: note\r\nECHO On\r\necho.\r\n./tool -x \"a b\" >> log.txt < in.txt\r\n/bin/cat\r\n"
          "\"/bin/cat\" in.txt | more\r\n\"/bin/cat\" 2> err.txt\r\n@pause\r\ncls\r\n");

    TextWritersSeeds(out / "fuzz_textwriters");
    BuildSeeds(out / "fuzz_build");
    return 0;
}
