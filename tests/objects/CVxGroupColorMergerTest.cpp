#include "CVxGroupColorMerger.h"

#include <gtest/gtest.h>

namespace {

struct SMember
{
    unsigned fill;
    CVxAppearance appearance;
    unsigned line;
    int style;
    bool hasFill;
};

} // namespace

class GroupColorMerger : public ::testing::Test
{
protected:
    void SetUp() override
    {
        members = {
            {0x0000FF, CVxAppearance(0x0000FF), 0x000000, 0, true},
            {0x00FF00, CVxAppearance(0x00FF00), 0x000000, 0, true},
            {0x0000FF, CVxAppearance(0x0000FF), 0x000000, 0, true},
            {0x0000FF, CVxAppearance(0x0000FF), 0x000000, 2, true},
            // A line: its fill does not count.
            {0x777777, CVxAppearance(0x777777), 0x000000, 0, false},
            {0x888888, CVxAppearance(0x888888), 0x000000, 0, false},
        };
        for (const SMember& m : members)
            merger.AddItem(m.fill, m.appearance, m.line, m.style, m.hasFill);
    }

    bool Apply(SMember& m) const
    {
        return merger.ApplyResultToPart(m.fill, m.appearance, m.line, m.style, m.hasFill);
    }

    std::vector<SMember> members;
    CVxGroupColorMerger merger;
};

TEST_F(GroupColorMerger, CollectsDistinctCombinations)
{
    ASSERT_EQ(4, merger.GetCount());
    EXPECT_EQ(2, merger.SafeGetItem(0)->memberCount);
    EXPECT_EQ(1, merger.SafeGetItem(1)->memberCount);
    EXPECT_EQ(1, merger.SafeGetItem(2)->memberCount);
    EXPECT_EQ(2, merger.SafeGetItem(3)->memberCount);
    EXPECT_FALSE(merger.SafeGetItem(3)->hasFill);
    EXPECT_EQ(nullptr, merger.SafeGetItem(4));
    EXPECT_EQ(nullptr, merger.SafeGetItem(-1));
}

TEST_F(GroupColorMerger, OnlyChangedCombinationsAreApplied)
{
    CVxGroupColorMerger::CVxItem* red = merger.SafeGetItem(0);
    red->newColor = 0xFFFF00;
    red->newAppearance.SetColor(0xFFFF00);
    merger.DetermineSelection();
    EXPECT_TRUE(merger.SafeGetItem(0)->selected);
    EXPECT_FALSE(merger.SafeGetItem(1)->selected);
    EXPECT_FALSE(merger.SafeGetItem(2)->selected);

    EXPECT_TRUE(Apply(members[0]));
    EXPECT_EQ(0xFFFF00u, members[0].fill);
    EXPECT_EQ(0xFFFF00u, members[0].appearance.GetColor());
    EXPECT_FALSE(Apply(members[1]));
    EXPECT_EQ(0x00FF00u, members[1].fill);
    EXPECT_TRUE(Apply(members[2]));
    // Same fill, other line style: another combination, untouched.
    EXPECT_FALSE(Apply(members[3]));
    EXPECT_EQ(0x0000FFu, members[3].fill);
}

TEST_F(GroupColorMerger, LinesChangeTheirLineOnly)
{
    CVxGroupColorMerger::CVxItem* lines = merger.SafeGetItem(3);
    lines->newLineColor = 0x0000FF;
    lines->newLineStyle = 1;
    merger.DetermineSelection();
    EXPECT_TRUE(Apply(members[4]));
    EXPECT_TRUE(Apply(members[5]));
    EXPECT_EQ(0x0000FFu, members[5].line);
    EXPECT_EQ(1, members[5].style);
    EXPECT_EQ(0x888888u, members[5].fill);
}

TEST_F(GroupColorMerger, NonFillParametersCanBeGivenUp)
{
    CVxGroupColorMerger::CVxItem* item = merger.SafeGetItem(1);
    item->newColor = 0x111111;
    item->newLineColor = 0x222222;
    merger.SafeGetItem(3)->newLineStyle = 4;
    merger.SetNonFillParamsToDefault();
    merger.DetermineSelection();
    EXPECT_TRUE(merger.SafeGetItem(1)->selected);
    EXPECT_FALSE(merger.SafeGetItem(3)->selected);
    EXPECT_TRUE(Apply(members[1]));
    EXPECT_EQ(0x111111u, members[1].fill);
    EXPECT_EQ(0x000000u, members[1].line);
    EXPECT_FALSE(Apply(members[4]));
}
