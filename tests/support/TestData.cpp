#include "support/TestData.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <zlib.h>

#include "base/Bytes.h"
#include "formats/PcxEncode.h"

namespace tarvolin::test {

std::optional<std::string> SharedDataDir() {
    std::filesystem::path dir(TARVOLIN_SHARED_DATA);
    if (!std::filesystem::is_directory(dir)) return std::nullopt;
    return std::filesystem::canonical(dir).string() + "/";
}

std::vector<std::string> SharedSffFiles(const std::string& subfolder) {
    std::vector<std::string> files;
    auto dir = SharedDataDir();
    if (!dir || !std::filesystem::is_directory(*dir + subfolder)) return files;
    for (const auto& e : std::filesystem::directory_iterator(*dir + subfolder))
        if (e.path().extension() == ".sff") files.push_back(e.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

std::string BinDir() {
    // ctest names the folder; a test run by hand sits in it beside the programs.
    if (const char* env = std::getenv("TARVOLIN_BIN")) return std::string(env) + "/";
    std::error_code ec;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : self.parent_path().string() + "/";
}

std::vector<uint8_t> MakePcx(int w, int h, int seed, int paletteSeed) {
    Palette pal{};
    for (size_t i = 0; i < pal.size(); ++i) pal[i] = static_cast<uint8_t>(i * 7 + paletteSeed * 31);
    std::vector<uint8_t> px(static_cast<size_t>(w * h));
    for (size_t i = 0; i < px.size(); ++i) px[i] = static_cast<uint8_t>((i * 13 + static_cast<size_t>(seed) * 17) % 256);
    return EncodePcx(w, h, px, pal);
}

std::vector<uint8_t> PcxImage(uint16_t xmax, uint16_t ymax, uint16_t bytesPerLine, const std::vector<uint8_t>& data,
                              uint8_t planes) {
    std::vector<uint8_t> b(kPcxHeaderSize, 0);
    b[0] = 10, b[1] = 5, b[2] = 1, b[3] = 8, b[65] = planes;
    WriteU16(b.data() + 8, xmax), WriteU16(b.data() + 10, ymax), WriteU16(b.data() + 66, bytesPerLine);
    return Then(std::move(b), data);
}

std::vector<uint8_t> TrueColourPcx(int w, int h, int bytesPerLine) {
    std::vector<uint8_t> data;
    for (int i = 0; i < bytesPerLine * h * 3; ++i) data.insert(data.end(), {0xC1, static_cast<uint8_t>(i * 7 + i / w)});
    return PcxImage(uint16_t(w - 1), uint16_t(h - 1), uint16_t(bytesPerLine), data, 3);
}

namespace {
// `v` as PNG stores numbers: four bytes, the most significant first.
std::vector<uint8_t> BigEndian(uint64_t v) {
    return {static_cast<uint8_t>(v >> 24), static_cast<uint8_t>(v >> 16), static_cast<uint8_t>(v >> 8),
            static_cast<uint8_t>(v)};
}
void AppendChunk(std::vector<uint8_t>& png, const char* type, const std::vector<uint8_t>& data) {
    png = Then(std::move(png), BigEndian(data.size()));
    const size_t start = png.size();
    png.insert(png.end(), type, type + 4);
    png = Then(std::move(png), data);
    png = Then(std::move(png), BigEndian(crc32(0, png.data() + start, static_cast<uInt>(png.size() - start))));
}
}  // namespace

std::vector<uint8_t> MakePng(uint32_t width, uint32_t height, int bitDepth, int colourType,
                             const std::vector<uint8_t>& lines, const std::vector<uint8_t>& plte,
                             const std::vector<uint8_t>& trns) {
    std::vector<uint8_t> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    AppendChunk(png, "IHDR", Then(Then(BigEndian(width), BigEndian(height)),
                                  {static_cast<uint8_t>(bitDepth), static_cast<uint8_t>(colourType), 0, 0, 0}));
    if (!plte.empty()) AppendChunk(png, "PLTE", plte);
    if (!trns.empty()) AppendChunk(png, "tRNS", trns);
    const int channels[] = {1, 0, 3, 1, 2, 0, 4};
    const size_t lineBytes = (size_t{width} * static_cast<size_t>(channels[colourType] * bitDepth) + 7) / 8;
    std::vector<uint8_t> raw;
    for (size_t at = 0; lineBytes > 0 && at + lineBytes <= lines.size(); at += lineBytes) {
        raw.push_back(0);
        raw.insert(raw.end(), lines.begin() + static_cast<long>(at), lines.begin() + static_cast<long>(at + lineBytes));
    }
    std::vector<uint8_t> packed(compressBound(static_cast<uLong>(raw.size())));
    uLongf packedSize = static_cast<uLongf>(packed.size());
    compress(packed.data(), &packedSize, raw.data(), static_cast<uLong>(raw.size()));
    packed.resize(packedSize);
    AppendChunk(png, "IDAT", packed);
    AppendChunk(png, "IEND", {});
    return png;
}

SffSprite MakeSprite(uint16_t group, uint16_t item, uint8_t flag, bool withPalette, int16_t ax, int16_t ay, int w,
                     int h) {
    SffSprite s;
    s.GroupNo = group;
    s.ItemNo = item;
    s.PalFlag = flag;
    s.AxisX = ax;
    s.AxisY = ay;
    s.Data = MakePcx(w, h, group * 31 + item, group + item);
    if (!withPalette) s.Data = Bare(s.Data);
    return s;
}

SffSprite MakeLink(uint16_t group, uint16_t item, uint8_t flag, uint16_t target) {
    SffSprite s = MakeSprite(group, item, flag, false);
    s.Data.clear();
    s.LinkIndex = target;
    return s;
}

std::vector<uint8_t> Then(std::vector<uint8_t> a, const std::vector<uint8_t>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::vector<uint8_t> Bare(std::vector<uint8_t> pcx) {
    pcx.resize(pcx.size() - std::min<size_t>(pcx.size(), 768));
    return pcx;
}

std::vector<uint8_t> PaletteOf(const std::vector<uint8_t>& pcx) {
    return {pcx.end() - static_cast<long>(std::min<size_t>(pcx.size(), 768)), pcx.end()};
}

std::vector<uint8_t> ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadText(const std::string& path) {
    const std::vector<uint8_t> bytes = ReadFile(path);
    return {bytes.begin(), bytes.end()};
}

void WriteText(const std::string& path, const std::string& text) { WriteFile(path, {text.begin(), text.end()}); }

}  // namespace tarvolin::test
