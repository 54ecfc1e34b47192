// Every real SFF of the shared data folder opens the way its engine reads it.
#include <gtest/gtest.h>

#include <map>

#include "config/AppIni.h"
#include "sff/SffReader.h"
#include "support/TestData.h"

namespace tarvolin {
namespace {

struct Expected {
    int Images;
    bool Warns;
    int Linked;
};

TEST(RealSffFiles, OpenWithTheirRowsInKeyOrder) {
    TARVOLIN_REQUIRE_SHARED_DATA(dir);
    const std::map<std::string, Expected> expected = {
        {"codefuman_kfm_shared_linked.sff", {274, false, 42}},
        {"truez_kfm_indivpal.sff", {275, false, 0}},
        {"elecbyte_fightfx_sprmaker.sff", {104, true, 0}},
        {"elecbyte_fight_sprmaker.sff", {43, true, 0}},
    };
    const AppIni ini = DefaultAppIni();
    for (const auto& [name, want] : expected) {
        SCOPED_TRACE(name);
        SffState state;
        SpriteTable table;
        int asked = 0;
        auto r = OpenSff(dir + name, name, state, table, ini, [&](const std::string&, int) { return ++asked, true; });
        ASSERT_TRUE(r) << r.error().Key << " " << r.error().Detail;
        EXPECT_EQ(asked, want.Warns ? 1 : 0);
        EXPECT_EQ(table.RowCount(), want.Images);
        EXPECT_EQ(state.ImageCaption, std::to_string(want.Images));
        int linked = 0;
        for (const SubfileRecord& rec : state.Subfiles) {
            linked += rec.LinkIndex != 0;
            EXPECT_LE(rec.DataEnd, static_cast<int32_t>(state.SffBytes.size()) - 1);
        }
        EXPECT_EQ(linked, want.Linked);
        for (int i = 2; i <= table.RowCount(); ++i)
            EXPECT_LE(table.Cell(i - 1, Column::SortKey), table.Cell(i, Column::SortKey));
        // Every sprite's bytes cut out start like a 256-colour PCX.
        for (const SubfileRecord& rec : state.Subfiles) {
            auto pcx = CutSubfile(state, rec);
            ASSERT_GE(pcx.size(), 128u + 768u);
            EXPECT_EQ(pcx[0], 10);
            EXPECT_EQ(pcx[3], 8);
        }
    }
}

TEST(RealSffFiles, SharedPaletteComesFromTheOwner) {
    TARVOLIN_REQUIRE_SHARED_DATA(dir);
    const AppIni ini = DefaultAppIni();
    SffState state;
    SpriteTable table;
    auto r = OpenSff(dir + "codefuman_kfm_shared_linked.sff", "codefuman_kfm_shared_linked.sff", state, table, ini,
                     [](const std::string&, int) { return true; });
    ASSERT_TRUE(r);
    // 9000,0 and 9000,1 carry palettes; 9000,1 is followed by flag-1 sprites, so it owns it.
    EXPECT_EQ(table.Cell(1, Column::GroupNo), "9000");
    EXPECT_EQ(table.Cell(1, Column::PalType), "0");
    EXPECT_EQ(table.Cell(2, Column::PalType), "1");
    const SubfileRecord& owner = state.Subfiles[1];
    EXPECT_TRUE(std::equal(state.SharedPalette.begin(), state.SharedPalette.end(),
                           state.SffBytes.begin() + owner.NextOffset - 768));
}

}  // namespace
}  // namespace tarvolin
