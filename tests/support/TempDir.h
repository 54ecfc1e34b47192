#pragma once
// A fresh folder under the system's temporary folder, removed with everything in it when
// the object goes. Path() ends with '/'.
#include <string>

namespace tarvolin::test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + name; }

private:
    std::string path_;
};

}  // namespace tarvolin::test
