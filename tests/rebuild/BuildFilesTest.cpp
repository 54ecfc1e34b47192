#include <gtest/gtest.h>

#include "base/MessageKeys.h"
#include "rebuild/BuildFiles.h"
#include "support/TempDir.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

SpriteTable Rows(std::initializer_list<std::pair<const char*, const char*>> pathAndName) {
    SpriteTable table;
    for (const auto& [path, name] : pathAndName) {
        SpriteRow row;
        row[Column::PcxPath] = path;
        row[Column::PcxName] = name;
        table.AddRow(row);
    }
    return table;
}

TEST(BuildFiles, NamesTheTwoFilesOrRefusesBeforeWriting) {
    auto texts = PrepareBuildTexts(Rows({{"", "a.pcx"}}), "f.sff", "/w/f_SFF.txt", true, "/opt/t/");
    ASSERT_TRUE(texts);
    EXPECT_EQ(texts.value().Folder, "/w/");
    EXPECT_EQ(texts.value().BatchName, "f_SFFBuild.bat");

    // A program folder outside CP932 can only be set up here; a row past a short chain and
    // a picture file of a row's own that isn't there are refused with the row named.
    test::TempDir dir;
    const auto refusal = [&](const SpriteTable& t, const std::string& program) {
        auto r = PrepareBuildTexts(t, "f.sff", dir / "f_SFF.txt", true, program);
        return r ? Error{} : r.error();
    };
    EXPECT_EQ(refusal(Rows({{"", "a.pcx"}}), "/opt/😀/").Key, msg::NotCp932);
    const Error empty = refusal(Rows({{"", "a.pcx"}, {"", ""}}), "/t/");
    EXPECT_EQ(empty.Key, msg::RowWithoutData);
    EXPECT_NE(empty.Detail.find("row 2"), std::string::npos) << empty.Detail;
    const Error missing = refusal(Rows({{dir.Path().c_str(), "gone.pcx"}}), "/t/");
    EXPECT_EQ(missing.Key, msg::PcxUnreadable);
    EXPECT_EQ(missing.File, dir / "gone.pcx");
    EXPECT_NE(missing.Detail.find("row 1"), std::string::npos) << missing.Detail;
}

}  // namespace
}  // namespace tarvolin
