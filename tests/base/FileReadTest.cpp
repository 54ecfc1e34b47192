// Whole-file reads refuse what is no regular file, and what is too large, before reading.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "base/FileRead.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

TEST(FileRead, OnlyRegularFilesOfAllowedSize) {
    test::TempDir dir;
    test::WriteFile(dir / "five", std::vector<uint8_t>{1, 2, 3, 4, 5});
    auto ok = ReadWholeFile(dir / "five", "KEY", 5);
    ASSERT_TRUE(ok.ok());
    EXPECT_EQ(ok.value(), (std::vector<uint8_t>{1, 2, 3, 4, 5}));

    auto big = ReadWholeFile(dir / "five", "KEY", 4);
    ASSERT_FALSE(big.ok());
    EXPECT_EQ(big.error().Key, "KEY");
    EXPECT_EQ(big.error().File, dir / "five");
    EXPECT_NE(big.error().Detail.find("5 bytes"), std::string::npos) << big.error().Detail;

    // A pipe would block an open() without O_NONBLOCK until a writer came: it must be
    // refused at once, as must a device and a folder.
    ASSERT_EQ(mkfifo((dir / "fifo").c_str(), 0600), 0);
    const struct {
        std::string Path;
        const char* Says;
    } refused[] = {{dir / "fifo", "pipe"}, {"/dev/zero", "device"}, {dir.Path(), "folder"}, {dir / "none", "No such"}};
    for (const auto& r : refused) {
        auto read = ReadWholeFile(r.Path, "KEY", 1 << 20);
        ASSERT_FALSE(read.ok()) << r.Path;
        EXPECT_NE(read.error().Detail.find(r.Says), std::string::npos) << r.Path << ": " << read.error().Detail;
    }
}

}  // namespace
}  // namespace tarvolin
