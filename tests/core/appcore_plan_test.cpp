// The core's plan of the current floor: found on every change, and drawn as
// the main view shows it.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"
#include "VxTestEnv.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

class AppCorePlan : public ::testing::Test
{
protected:
    void SetUp() override { VX_GetCore()->InitProject(); }
    void TearDown() override
    {
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->InitProject();
    }
};

TEST_F(AppCorePlan, DefaultProjectIsOneRoom)
{
    const CVxFloorPlan& plan = VX_GetCore()->GetFloorPlan();
    EXPECT_EQ(plan.GetRegionCount(), 1);
    EXPECT_EQ(plan.GetOuterRegionCount(), 1);
}

TEST_F(AppCorePlan, RoomsFollowWallEditsAndKeepTheirNameThroughTransforms)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    CVxWall* divider = floor->m_walls.GetNewWall();
    divider->Set(200, 0, 200, 300, CVxWall::ALIGN_CENTER, 10, 265, 265, true, false);
    core->UpdateFloorPlan();
    ASSERT_EQ(core->GetFloorPlan().GetRegionCount(), 2);

    CVxFloorRegion* left =
        core->GetFloorPlan().SafeGetRegion(core->GetFloorPlan().FindRegion(CVxDPoint(50, 50)));
    ASSERT_NE(left, nullptr);
    left->name = L"Hall";
    floor->SetCommonFloorAppearancesAndSave(core->GetFloorPlan(), true);

    core->TransformShift(100, 40);
    const CVxFloorPlan& plan = core->GetFloorPlan();
    const CVxFloorRegion* moved = plan.SafeGetRegion(plan.FindRegion(CVxDPoint(150, 90)));
    ASSERT_NE(moved, nullptr);
    EXPECT_EQ(moved->name, L"Hall");
}

TEST_F(AppCorePlan, DrawProjectPaintsFloorWallsAndSpaceAround)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    floor->m_wallsColor = 0x202020;
    floor->m_floorAppear.SetColor(0x3060C0);
    floor->m_planDef.Clear();
    core->UpdateFloorPlan();
    core->SetZoom(1);

    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    CVxQtDC dc(width, height, false);
    core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width, height}, 0);
    const QImage* image = dc.GetImage();
    ASSERT_NE(image, nullptr);

    const int left = static_cast<int>(project.m_spaceLeft);
    const int top = static_cast<int>(project.m_spaceTop);
    // Inside the room: the floor colour; on the wall outside the room's left
    // edge: the wall colour; far outside: the white ground.
    const QColor room = image->pixelColor(left + 100, top + 100);
    EXPECT_EQ(room.rgb() & 0xFFFFFF, 0xC06030u) << room.name().toStdString();
    const int wallX = left - static_cast<int>(floor->m_defWallThickness / 2);
    const QColor wall = image->pixelColor(wallX, top + 100);
    EXPECT_EQ(wall.rgb() & 0xFFFFFF, 0x202020u) << wall.name().toStdString();
    const QColor ground = image->pixelColor(3, 3);
    EXPECT_EQ(ground.rgb() & 0xFFFFFF, 0xFFFFFFu) << ground.name().toStdString();
}
