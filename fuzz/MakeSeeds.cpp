// Writes a seed corpus for each fuzzer: real files from the shared data folder where it is
// there, and small synthetic files made with the project's own writers.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "formats/PcxEncode.h"
#include "formats/SffWriter.h"

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

    CopyMatching(shared, ".sff", out / "fuzz_sff");
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

    CopyMatching(shared, ".pcx", out / "fuzz_pcx");
    Write(out / "fuzz_pcx", "synthetic.pcx", SmallPcx(5, 4));

    CopyMatching(shared, ".txt", out / "fuzz_paramtext");
    Write(out / "fuzz_paramtext", "tarvolin.txt",
          "#\r\n1\r\n2\r\nfighter.sff\r\n#\r\n1\r\n1\r\na.pcx\r\n9000\r\n0\r\n0\r\n0\r\nb.pcx\r\n0\r\n1\r\n-3\r\n90\r\n\r\n");
    return 0;
}
