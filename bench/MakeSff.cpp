// bench_make_sff OUT.sff [COUNT]: writes the generated SFF of the benchmarks (10,000
// sprites unless told), for the speed table (bench/speed-table.sh).
#include <cstdio>
#include <cstdlib>

#include "GeneratedSff.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_make_sff OUT.sff [COUNT]\n");
        return 1;
    }
    tarvolin::bench::WriteGeneratedSff(argv[1], argc > 2 ? std::atoi(argv[2]) : 10000);
    return 0;
}
