// Viewpoints: the tokens of a "VP" value, their equality and the set's
// section.

#include "CVxViewpointSet.h"
#include "CVxProject.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

TEST(Viewpoint, AllTokens)
{
    CVxViewpoint vp;
    vp.LoadFromString(L"Hall|100|200.5|30|45|0|2|0|-10|3|4");
    EXPECT_DOUBLE_EQ(vp.m_x, 100);
    EXPECT_DOUBLE_EQ(vp.m_y, 200.5);
    EXPECT_DOUBLE_EQ(vp.m_height, 30);
    EXPECT_DOUBLE_EQ(vp.m_yaw, 45);
    EXPECT_EQ(vp.m_navigation, CVxViewpoint::NAV_FLY);
    EXPECT_EQ(vp.m_floor, 2);
    EXPECT_FALSE(vp.m_autoHeight);
    EXPECT_DOUBLE_EQ(vp.m_pitch, -10);
    EXPECT_DOUBLE_EQ(vp.m_pauseSeconds, 3);
    EXPECT_DOUBLE_EQ(vp.m_transitionSeconds, 4);
    EXPECT_EQ(vp.SaveToString(), L"Hall|100|200.5|30|45|0|2|0|-10|3|4");
}

TEST(Viewpoint, MissingTokensKeepTheDefaults)
{
    CVxViewpoint vp;
    vp.LoadFromString(L"Kitchen|5");
    EXPECT_EQ(vp, [] {
        CVxViewpoint expected;
        expected.m_name = L"Kitchen";
        expected.m_x = 5;
        return expected;
    }());
}

TEST(Viewpoint, UnreadableNumbersReadAsZeroButThePauses)
{
    CVxViewpoint vp;
    vp.LoadFromString(L"A|x|y|h|yaw|k|f|a|p|q|r");
    EXPECT_DOUBLE_EQ(vp.m_x, 0);
    EXPECT_DOUBLE_EQ(vp.m_y, 0);
    EXPECT_DOUBLE_EQ(vp.m_height, 0);
    EXPECT_DOUBLE_EQ(vp.m_yaw, 0);
    EXPECT_EQ(vp.m_navigation, 0);
    EXPECT_EQ(vp.m_floor, 0);
    EXPECT_FALSE(vp.m_autoHeight);
    EXPECT_DOUBLE_EQ(vp.m_pitch, 0);
    EXPECT_DOUBLE_EQ(vp.m_pauseSeconds, 1);
    EXPECT_DOUBLE_EQ(vp.m_transitionSeconds, 2);
}

TEST(Viewpoint, EqualityHasATolerance)
{
    CVxViewpoint a;
    a.m_name = L"Door";
    a.m_x = 10;
    CVxViewpoint b = a;
    b.m_x += 5e-8;
    b.m_pauseSeconds += 5e-8;
    EXPECT_EQ(a, b);
    b.m_transitionSeconds += 1e-6;
    EXPECT_NE(a, b);
    b = a;
    b.m_autoHeight = false;
    EXPECT_NE(a, b);
    b = a;
    b.m_floor = 1;
    EXPECT_NE(a, b);
    b = a;
    b.m_name = L"door";
    EXPECT_NE(a, b);
    b = a;
    b.m_pitch = 0;
    EXPECT_NE(a, b);
}

TEST(ViewpointSet, SectionRoundTrip)
{
    CVxViewpointSet set;
    CVxViewpoint vp;
    vp.m_name = L"Terrace";
    vp.m_x = 12.25;
    vp.m_yaw = 270;
    set.m_viewpoints.push_back(vp);
    vp.m_name = L"Attic";
    vp.m_floor = 1;
    vp.m_navigation = CVxViewpoint::NAV_EXAMINE;
    set.m_viewpoints.push_back(vp);
    set.m_allFloors = false;

    CVxStringWriter writer;
    set.SaveToFile(&writer, "Viewpoints");
    CVxViewpointSet read;
    read.m_viewpoints.push_back(CVxViewpoint());
    read.Reset();
    ASSERT_TRUE(VxReadSection(writer.GetString(), "Viewpoints", &read));
    EXPECT_EQ(read, set);
}

TEST(ViewpointSet, RotateTurnsPositionAndYaw)
{
    CVxViewpointSet set;
    CVxViewpoint vp;
    vp.m_x = 10;
    vp.m_yaw = 350.7;
    set.m_viewpoints.push_back(vp);
    set.Rotate(90);
    const CVxViewpoint& turned = set.m_viewpoints[0];
    EXPECT_POINT_NEAR(CVxDPoint(turned.m_x, turned.m_y), CVxDPoint(0, 10));
    EXPECT_DOUBLE_EQ(turned.m_yaw, 80);
    set.Rotate(-90);
    EXPECT_DOUBLE_EQ(set.m_viewpoints[0].m_yaw, 350);
}

TEST(ViewpointSet, MoveSnapsToTheProject)
{
    CVxProject project;
    project.m_subUnitMoves = false;
    CVxViewpointSet set;
    CVxViewpoint vp;
    vp.m_x = 1;
    vp.m_y = 2;
    set.m_viewpoints.push_back(vp);
    set.Move(0.4, 0.6, 1.234, &project);
    EXPECT_DOUBLE_EQ(set.m_viewpoints[0].m_x, 1);
    EXPECT_DOUBLE_EQ(set.m_viewpoints[0].m_y, 3);
    EXPECT_DOUBLE_EQ(set.m_viewpoints[0].m_height, 1.23);
}
