// Files are written whole or not at all, and nothing is left beside them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/AtomicFile.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

std::vector<std::string> Names(const std::string& dir) {
    std::vector<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(AtomicFile, NewReplacedAndAbandonedFiles) {
    test::TempDir dir;
    const std::string target = dir / "a.pcx";
    const std::vector<uint8_t> news{'n', 'e', 'w'};
    ASSERT_TRUE(WriteFileAtomically(target, std::string("first, longer content")));
    ASSERT_TRUE(WriteFileAtomically(target, std::string("new")));  // replaces, and cuts to the new length
    EXPECT_EQ(test::ReadFile(target), news);
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"a.pcx"});

    {  // a write that is never committed leaves the old file as it was
        auto file = AtomicFile::Create(target);
        ASSERT_TRUE(file);
        ASSERT_TRUE(file.value().Write(std::span<const uint8_t>(std::vector<uint8_t>(100, 7))));
    }
    EXPECT_EQ(test::ReadFile(target), news);
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"a.pcx"});

    // Patching bytes already written, then keeping the replaced file as a backup.
    auto file = AtomicFile::Create(target);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file.value().Write(std::span<const uint8_t>(std::vector<uint8_t>{1, 2, 3, 4})));
    const uint8_t patch[] = {9, 9};
    ASSERT_TRUE(file.value().WriteAt(1, patch, 2));
    EXPECT_EQ(file.value().Size(), 4u);
    ASSERT_TRUE(file.value().Commit(dir / "a.pcx.bak"));
    EXPECT_EQ(test::ReadFile(target), std::vector<uint8_t>({1, 9, 9, 4}));
    EXPECT_EQ(test::ReadFile(dir / "a.pcx.bak"), news);
    EXPECT_EQ(Names(dir.Path()), (std::vector<std::string>{"a.pcx", "a.pcx.bak"}));

    auto missing = WriteFileAtomically(dir / "no/such/folder/x.pcx", std::string("x"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().File, dir / "no/such/folder/x.pcx");
    EXPECT_FALSE(missing.error().Detail.empty());
}

}  // namespace
}  // namespace tarvolin
