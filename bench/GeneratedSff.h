#pragma once
// Large SFF files made on the fly for the benchmarks: `count` sprites of noisy pictures
// (so that run-length coding barely shrinks them), shared-palette layout.
#include <string>

namespace tarvolin::bench {

// Writes the file once per process into the temporary folder and gives its path.
// About 10 KB a sprite: 10,000 sprites make about 100 MB.
const std::string& GeneratedSffPath(int count);

}  // namespace tarvolin::bench
