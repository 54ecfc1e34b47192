#pragma once
// The fuzzers' invariant check: a broken one names itself on standard error and aborts,
// which libFuzzer reports as a crash with the input that caused it.
#include <cstdio>
#include <cstdlib>

namespace tarvolin::fuzz {

inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

}  // namespace tarvolin::fuzz
