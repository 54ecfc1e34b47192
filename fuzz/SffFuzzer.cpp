// OpenSff on arbitrary bytes, then every record cut out: nothing may read outside the file.
#include <cstddef>
#include <cstdint>

#include "config/AppIni.h"
#include "sff/SffReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const tarvolin::AppIni ini = tarvolin::DefaultAppIni();
    tarvolin::SffState state;
    tarvolin::SpriteTable table;
    auto r = tarvolin::OpenSffBytes(std::vector<uint8_t>(data, data + size), "fuzz.sff", "fuzz.sff", state, table, ini,
                                    [](const std::string&, int) { return true; });
    if (r && r.value().Outcome == tarvolin::OpenOutcome::Opened) {
        if (table.RowCount() != state.ImageCount) __builtin_trap();
        for (const auto& rec : state.Subfiles) (void)tarvolin::CutSubfile(state, rec);
    }
    return 0;
}
