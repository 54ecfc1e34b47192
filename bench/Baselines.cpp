// The plain programs that the speed table holds the commands against, written as simply
// as the task allows and sharing no code with Tarvolin, and the runner that times a whole
// process. Usage:
//   bench_baselines walk FILE.sff              the 32-byte subfile headers, read with pread
//   bench_baselines export FILE.sff DIR        every subfile's bytes (a flag-1 subfile with the
//                                              first subfile's last 768 bytes behind them) into
//                                              DIR, each written to a temporary name and renamed
//   bench_baselines inputs PARAMS.txt BYTES OUT  read every file the parameter text names and
//                                              write BYTES bytes into OUT (temporary, rename)
//   bench_baselines read FILE                  the whole file, read in large pieces
//   bench_baselines run COMMAND ARGS...        runs the command and prints "SECONDS PEAK_KB"
//                                              on standard error (its own output goes on)
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace {

[[noreturn]] void Die(const std::string& what) {
    std::perror(what.c_str());
    std::exit(3);
}

uint32_t U32(const uint8_t* p) { return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24; }
uint16_t U16(const uint8_t* p) { return uint16_t(p[0] | p[1] << 8); }

void ReadAt(int fd, void* to, size_t n, uint64_t at) {
    if (pread(fd, to, n, off_t(at)) != ssize_t(n)) Die("pread");
}

// Writes `parts` into `path` through a temporary name in the same folder.
void WriteRenamed(const std::string& path, const std::vector<std::pair<const uint8_t*, size_t>>& parts) {
    const std::string temp = path + ".tmp" + std::to_string(getpid());
    const int fd = open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) Die(temp);
    for (const auto& [data, size] : parts)
        if (write(fd, data, size) != ssize_t(size)) Die(temp);
    if (close(fd) != 0 || rename(temp.c_str(), path.c_str()) != 0) Die(path);
}

int Walk(const char* sff) {
    const int fd = open(sff, O_RDONLY);
    if (fd < 0) Die(sff);
    uint8_t h[32];
    ReadAt(fd, h, 32, 0);
    const uint32_t images = U32(h + 20);
    uint64_t pos = U32(h + 24), groups = 0;
    for (uint32_t i = 0; i < images && pos; ++i) {
        ReadAt(fd, h, 32, pos);
        groups += U16(h + 12);
        pos = U32(h);
    }
    std::printf("%u images, %llu\n", images, static_cast<unsigned long long>(groups));
    return 0;
}

int Export(const char* sff, std::string dir) {
    const int fd = open(sff, O_RDONLY);
    if (fd < 0) Die(sff);
    struct stat st {};
    fstat(fd, &st);
    uint8_t h[32];
    ReadAt(fd, h, 32, 0);
    const uint32_t images = U32(h + 20);
    uint64_t pos = U32(h + 24);
    if (dir.back() != '/') dir += '/';
    std::vector<uint8_t> data, palette(768);
    char name[64];
    for (uint32_t i = 0; i < images; ++i) {
        ReadAt(fd, h, 32, pos);
        const uint64_t next = U32(h) ? U32(h) : uint64_t(st.st_size);
        data.resize(next - pos - 32);
        ReadAt(fd, data.data(), data.size(), pos + 32);
        if (i == 0) std::memcpy(palette.data(), data.data() + data.size() - 768, 768);
        std::snprintf(name, sizeof name, "big_%05u_%05u.pcx", U16(h + 12), U16(h + 14));
        std::vector<std::pair<const uint8_t*, size_t>> parts{{data.data(), data.size()}};
        if (h[18] == 1 && i > 0) parts.emplace_back(palette.data(), palette.size());
        WriteRenamed(dir + name, parts);
        pos = next;
    }
    return 0;
}

// Every file that a line of the parameter text names (a line ending in ".pcx", in the
// text's folder), read and written on into OUT, which is then cut or filled to BYTES.
int Inputs(const char* params, uint64_t bytes, const char* out) {
    std::string folder = params;
    folder = folder.substr(0, folder.rfind('/') + 1);
    FILE* f = std::fopen(params, "rb");
    if (!f) Die(params);
    const std::string temp = std::string(out) + ".tmp" + std::to_string(getpid());
    const int to = open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (to < 0) Die(temp);
    char line[4096];
    std::vector<uint8_t> buf(1 << 20);
    while (std::fgets(line, sizeof line, f)) {
        std::string name = line;
        while (!name.empty() && (name.back() == '\n' || name.back() == '\r')) name.pop_back();
        if (name.size() < 4 || name.compare(name.size() - 4, 4, ".pcx") != 0) continue;
        const int fd = open((folder + name).c_str(), O_RDONLY);
        if (fd < 0) Die(name);
        ssize_t n;
        while ((n = read(fd, buf.data(), buf.size())) > 0)
            if (write(to, buf.data(), size_t(n)) != n) Die(temp);
        close(fd);
    }
    std::fclose(f);
    if (ftruncate(to, off_t(bytes)) != 0 || close(to) != 0 || rename(temp.c_str(), out) != 0) Die(out);
    return 0;
}

int Read(const char* file) {
    const int fd = open(file, O_RDONLY);
    if (fd < 0) Die(file);
    std::vector<uint8_t> buf(1 << 20);
    uint64_t total = 0;
    ssize_t n;
    while ((n = read(fd, buf.data(), buf.size())) > 0) total += uint64_t(n);
    std::printf("%llu bytes\n", static_cast<unsigned long long>(total));
    return 0;
}

int Run(char** argv) {
    timespec start{}, end{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    const pid_t child = fork();
    if (child == 0) {
        execv(argv[0], argv);
        Die(argv[0]);
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child) Die("wait4");
    clock_gettime(CLOCK_MONOTONIC, &end);
    const double seconds = double(end.tv_sec - start.tv_sec) + double(end.tv_nsec - start.tv_nsec) / 1e9;
    std::fprintf(stderr, "%.4f %ld\n", seconds, usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "";
    if (what == "walk" && argc == 3) return Walk(argv[2]);
    if (what == "export" && argc == 4) return Export(argv[2], argv[3]);
    if (what == "inputs" && argc == 5) return Inputs(argv[2], std::strtoull(argv[3], nullptr, 10), argv[4]);
    if (what == "read" && argc == 3) return Read(argv[2]);
    if (what == "run" && argc >= 3) return Run(argv + 2);
    std::fprintf(stderr, "usage: bench_baselines walk|export|inputs|read|run ...\n");
    return 1;
}
