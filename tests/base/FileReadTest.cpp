// Whole-file reads refuse what is no regular file or too large; open files read as opened or not.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/FileBytes.h"
#include "base/FileRead.h"
#include "base/MessageKeys.h"
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
    const struct { std::string Path; const char* Says; } refused[] = {
        {dir / "fifo", "pipe"}, {"/dev/zero", "device"}, {dir.Path(), "folder"}, {dir / "none", "No such"}};
    for (const auto& r : refused) {
        auto read = ReadWholeFile(r.Path, "KEY", 1 << 20);
        ASSERT_FALSE(read.ok()) << r.Path;
        EXPECT_NE(read.error().Detail.find(r.Says), std::string::npos) << r.Path << ": " << read.error().Detail;
    }
}

// A file put in place under the name changes nothing; the open file written in place (its
// contents and time) or cut short fails every read from then on, lately written or not.
TEST(FileRead, BytesAsOpenedOrNone) {
    test::TempDir dir;
    const std::string path = dir / "f";
    const auto rewrite = [&](const char* bytes, bool truncate) {
        std::fstream f(path, std::ios::in | std::ios::out | std::ios::binary | (truncate ? std::ios::trunc : std::ios::in));
        f << bytes;
    };
    for (const bool lately : {false, true}) {
        SCOPED_TRACE(lately);
        for (int change = 0; change < 3; ++change) {
            test::WriteFile(path, {1, 2, 3, 4, 5, 6});
            if (!lately) std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
            auto opened = FileBytes::Open(path, "KEY", 100);
            ASSERT_TRUE(opened);
            const FileBytes bytes = opened.value();
            uint8_t got[3] = {};
            ASSERT_TRUE(bytes.Read(3, got, 3));
            EXPECT_EQ(got[0] + got[2], 4 + 6);
            if (change == 0) {
                test::WriteFile(dir / "other", {9, 9, 9, 9, 9, 9});
                std::filesystem::rename(dir / "other", path);
                EXPECT_TRUE(bytes.Read(0, got, 3) && got[0] == 1);
                continue;
            }
            rewrite(change == 1 ? "\x07\x07" : "", change == 2);
            const Status read = bytes.Read(0, got, 3);
            ASSERT_FALSE(read);
            EXPECT_EQ(read.error().Key, msg::FileChanged);
            EXPECT_EQ(read.error().File, path);
        }
    }
}

}  // namespace
}  // namespace tarvolin
