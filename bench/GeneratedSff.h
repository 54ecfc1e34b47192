#pragma once
// Large SFF files made on the fly for the benchmarks: `count` sprites of noisy 96 x 96
// pictures (so that run-length coding barely shrinks them), shared-palette layout. About
// 11.7 KB a sprite: 10,000 sprites make the "big" file of 117 MB.
#include <string>

namespace tarvolin::bench {

// Writes the file at `path`.
void WriteGeneratedSff(const std::string& path, int count);

// Writes the file once per process into the temporary folder and gives its path.
const std::string& GeneratedSffPath(int count);

}  // namespace tarvolin::bench
