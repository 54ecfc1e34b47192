// Writes a seed corpus for each fuzzer: real files from the shared data folder where it is
// there, the English settings file, and small synthetic files made with the project's own
// writers. Real SFF files are cut down to their first subfiles: a fuzzer runs a seed of a
// few kilobytes thousands of times a second, one of a megabyte a few hundred times.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "formats/PcxEncode.h"
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

void CopyMatching(const fs::path& shared, const std::string& ext, const fs::path& to) {
    if (!fs::is_directory(shared)) return;
    fs::create_directories(to);
    for (const auto& e : fs::directory_iterator(shared))
        if (e.path().extension() == ext) fs::copy_file(e.path(), to / e.path().filename(), fs::copy_options::overwrite_existing);
}

std::vector<uint8_t> ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
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

std::vector<uint8_t> SmallPcx(int w, int h) {
    tarvolin::Palette pal{};
    for (size_t i = 0; i < pal.size(); ++i) pal[i] = static_cast<uint8_t>(i * 3);
    std::vector<uint8_t> px(static_cast<size_t>(w * h));
    for (size_t i = 0; i < px.size(); ++i) px[i] = static_cast<uint8_t>(i % 7 == 0 ? 0xC0 : i);
    return tarvolin::EncodePcx(w, h, px, pal);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    const fs::path out = argv[1];
    const fs::path shared = argv[2];

    CutSffs(shared, out / "fuzz_sff");
    CutSffs(shared / "corpus", out / "fuzz_sff");
    std::vector<tarvolin::SffSprite> sprites(3);
    for (size_t i = 0; i < sprites.size(); ++i) {
        sprites[i].GroupNo = static_cast<uint16_t>(i);
        sprites[i].PalFlag = i ? 1 : 0;
        sprites[i].Data = SmallPcx(3 + static_cast<int>(i), 2);
    }
    sprites[2].Data.clear();
    sprites[2].LinkIndex = 1;
    Write(out / "fuzz_sff", "synthetic.sff", tarvolin::EncodeSff(tarvolin::kSharedPaletteMode, sprites));

    Write(out / "fuzz_settings", "full.ini",
          "[FONT]\r\nNAME=Arial\r\nSIZE=9\r\n[MESSAGE]\r\nMSG_004_001=\"Quit?\"\r\n[CAPTION]\r\nMAIN=Tarvolin\r\n");
    Write(out / "fuzz_settings", "empty.ini", "");
    if (argc > 3) Write(out / "fuzz_settings", "tarvolin.en.ini", ReadAll(argv[3]));

    CopyMatching(shared, ".pcx", out / "fuzz_pcx");
    Write(out / "fuzz_pcx", "synthetic.pcx", SmallPcx(5, 4));

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
    return 0;
}
