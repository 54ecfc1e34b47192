#include "support/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tarvolin::test {

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "tarvolin-test-XXXXXX").string();
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    if (!mkdtemp(buf.data())) throw std::runtime_error("mkdtemp failed");
    path_ = std::string(buf.data()) + "/";
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::remove_all(path_, ec);
}

FileBytes TempDir::Contents() const {
    FileBytes files;
    for (const auto& e : fs::recursive_directory_iterator(path_)) {
        std::vector<uint8_t>& bytes = files[e.path().string().substr(path_.size())];
        if (e.is_symlink()) {
            bytes = {'@'};
        } else if (e.is_regular_file()) {  // never opened otherwise: a pipe would block
            std::ifstream in(e.path(), std::ios::binary);
            bytes.assign(std::istreambuf_iterator<char>(in), {});
        }
    }
    return files;
}

}  // namespace tarvolin::test
