// The settings reader on arbitrary bytes: every lookup of start-up must come back.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "config/MessageCatalog.h"
#include "config/Settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    auto file = tarvolin::PrivateProfile::Parse(std::string_view(reinterpret_cast<const char*>(data), size));
    tarvolin::Settings s = tarvolin::LoadSettings("fuzz.ini", file);
    if (s.Captions.size() != tarvolin::CaptionTable().size()) __builtin_trap();
    return 0;
}
