#pragma once
// A fresh temporary folder, removed with all in it when the object goes. Path() ends with '/'.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tarvolin::test {

using FileBytes = std::map<std::string, std::vector<uint8_t>>;

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + name; }

    // Everything below, by its path from Path(), with its bytes: a symbolic link (never
    // followed) as "@", a folder, pipe or device as no bytes.
    FileBytes Contents() const;

private:
    std::string path_;
};

}  // namespace tarvolin::test
