#include "support/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace tarvolin::test {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarvolin-test-XXXXXX").string();
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    if (!mkdtemp(buf.data())) throw std::runtime_error("mkdtemp failed");
    path_ = std::string(buf.data()) + "/";
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

}  // namespace tarvolin::test
