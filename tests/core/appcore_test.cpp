// The core's default project, its caption and its transforms.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

// Starts a default project with the given unit in the settings.
void InitWithUnit(const wchar_t* unit)
{
    VX_GetOptions()->m_defaultUnit = unit;
    VX_GetCore()->InitProject();
}

} // namespace

class AppCore : public ::testing::Test
{
protected:
    void TearDown() override
    {
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->SetProjectPath(CVxStringW());
        VX_GetCore()->InitProject();
    }
};

TEST_F(AppCore, DefaultProjectInCentimetres)
{
    InitWithUnit(L"cm");
    const CVxProject& project = VX_GetCore()->GetProject();
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_CM);
    EXPECT_DOUBLE_EQ(project.m_width, 500);
    EXPECT_DOUBLE_EQ(project.m_height, 300);
    EXPECT_DOUBLE_EQ(project.m_gridSize, 50);
    EXPECT_DOUBLE_EQ(project.m_spaceLeft, 120);
    EXPECT_DOUBLE_EQ(VX_GetCore()->GetZoom(), 1.0);
    EXPECT_EQ(project.GetFloorCount(), 1);
    EXPECT_FALSE(project.IsModified());
}

TEST_F(AppCore, DefaultProjectInMetresIsTheSameRoom)
{
    InitWithUnit(L"m");
    CVxProject& project = VX_GetCore()->GetProject();
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_M);
    EXPECT_DOUBLE_EQ(project.m_width, 5);
    EXPECT_DOUBLE_EQ(project.m_height, 3);
    EXPECT_DOUBLE_EQ(project.m_gridSize, 2);
    EXPECT_DOUBLE_EQ(project.m_spaceLeft, 2);
    EXPECT_DOUBLE_EQ(project.m_spaceBottom, 2);
    EXPECT_DOUBLE_EQ(project.m_baseZoom, 100);
    EXPECT_DOUBLE_EQ(VX_GetCore()->GetZoom(), 100);
    EXPECT_TRUE(project.m_subUnitMoves);
    const CVxFloor* floor = project.GetFloor();
    EXPECT_DOUBLE_EQ(floor->m_defWallThickness, 0.1);
    EXPECT_DOUBLE_EQ(floor->m_defWallHeight, 2.65);
    EXPECT_DOUBLE_EQ(floor->m_floorThickness, 0.3);
}

TEST_F(AppCore, UnknownUnitInSettingsMeansCentimetres)
{
    InitWithUnit(L"furlong");
    EXPECT_EQ(VX_GetCore()->GetProject().m_unit, CVxUnits::UNIT_CM);
}

TEST_F(AppCore, CaptionOfAModifiedUntitledProject)
{
    CVxAppCore* core = VX_GetCore();
    CVxStringW shortTitle;
    EXPECT_EQ(core->GetMainWndCaption(shortTitle), L"Plaveno - [untitled]");
    EXPECT_EQ(shortTitle, L"Plaveno");
    core->GetProject().m_modified = true;
    EXPECT_EQ(core->GetMainWndCaption(shortTitle), L"Plaveno - [untitled*]");
    core->SetProjectPath(CVxStringW(L"/plans/house.pvp"));
    EXPECT_EQ(core->GetMainWndCaption(shortTitle), L"Plaveno - [/plans/house.pvp*]");
    EXPECT_EQ(shortTitle, L"Plaveno - house.pvp");
}

TEST_F(AppCore, TransformsMarkTheProjectModifiedAndIgnoreNonsense)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    core->TransformScale(0);
    EXPECT_FALSE(project.IsModified());
    core->TransformConvertUnit(-1, CVxUnits::UNIT_M);
    EXPECT_FALSE(project.IsModified());
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_CM);

    core->TransformConvertUnit(CVxUnits::UNIT_CM, CVxUnits::UNIT_M);
    EXPECT_TRUE(project.IsModified());
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_M);
    EXPECT_DOUBLE_EQ(project.m_width, 5);
    EXPECT_DOUBLE_EQ(project.m_gridSize, 0.5);
}

TEST_F(AppCore, SheetFollowsZoomAndOrigin)
{
    CVxAppCore* core = VX_GetCore();
    core->SetZoom(0.5);
    VxPOINT origin;
    origin.x = 10;
    origin.y = 20;
    core->SetViewOrigin(origin);
    const VxRECT sheet = core->GetSheetRect();
    EXPECT_EQ(sheet.left, 10);
    EXPECT_EQ(sheet.top, 20);
    EXPECT_EQ(sheet.right, 10 + 370);
    EXPECT_EQ(sheet.bottom, 20 + 270);
}
