// The project's defaults per unit, the snapping of lengths, floors and the
// deep copy.

#include "CVxProject.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

class Project : public ::testing::Test
{
protected:
    void TearDown() override { VX_GetOptions()->ResetToDefaults(); }
};

struct SVxUnitDefaults
{
    int unit;
    double baseZoom;
    double space;
    double grid;
};

} // namespace

TEST_F(Project, NewProjectInMetresHasMetreSizedDefaults)
{
    CVxProject project;
    project.m_unit = CVxUnits::UNIT_M;
    project.SetDefaultsForUnit(CVxUnits::UNIT_M);
    // As the core starts a project: everything scaled into the unit, the
    // defaults kept.
    project.ScaleAllObjects(0.01, 0.01, 0.01, true, true);

    EXPECT_DOUBLE_EQ(project.m_gridSize, 2);
    EXPECT_DOUBLE_EQ(project.m_spaceLeft, 2);
    EXPECT_DOUBLE_EQ(project.m_spaceBottom, 2);
    EXPECT_DOUBLE_EQ(project.m_baseZoom, 100);
    EXPECT_TRUE(project.m_subUnitMoves);
    const CVxFloor* floor = project.GetFloor();
    EXPECT_DOUBLE_EQ(floor->m_defWallHeight, 2.65);
    EXPECT_DOUBLE_EQ(floor->m_floorThickness, 0.3);
}

TEST_F(Project, DefaultsOfEveryUnitWithItsOwn)
{
    // The first and last of the table and one with sub-unit moves between.
    const SVxUnitDefaults table[] = {
        {CVxUnits::UNIT_MM, 0.1, 1200, 500}, {CVxUnits::UNIT_INCH, 2, 50, 20}, {CVxUnits::UNIT_M, 100, 2, 2}};
    for (const SVxUnitDefaults& row : table) {
        SCOPED_TRACE(row.unit);
        CVxProject project;
        project.SetDefaultsForUnit(row.unit);
        EXPECT_DOUBLE_EQ(project.m_baseZoom, row.baseZoom);
        EXPECT_DOUBLE_EQ(project.m_spaceBottom, row.space);
        EXPECT_DOUBLE_EQ(project.m_gridSize, row.grid);
        EXPECT_EQ(project.m_subUnitMoves, row.unit != CVxUnits::UNIT_MM && row.unit != CVxUnits::UNIT_CM);
        EXPECT_DOUBLE_EQ(project.GetFloor()->m_defWallHeight, 265 / row.baseZoom);
        EXPECT_DOUBLE_EQ(CVxProject::GetDeafaultBaseZoom(row.unit), row.baseZoom);
    }
    // Units without a row of their own fall back to a zoom of 1.
    EXPECT_DOUBLE_EQ(CVxProject::GetDeafaultBaseZoom(CVxUnits::UNIT_YD), 1);
    EXPECT_DOUBLE_EQ(CVxProject::GetDeafaultBaseZoom(CVxUnits::UNIT_KM), 1);
    EXPECT_DOUBLE_EQ(CVxProject::GetDeafaultBaseZoom(-1), 1);
}

TEST_F(Project, MillimetresKeepTheSubUnitSetting)
{
    CVxProject project;
    project.m_subUnitMoves = true;
    project.SetDefaultsForUnit(CVxUnits::UNIT_MM);
    EXPECT_TRUE(project.m_subUnitMoves);
    project.SetDefaultsForUnit(CVxUnits::UNIT_CM);
    EXPECT_FALSE(project.m_subUnitMoves);
}

TEST_F(Project, YardsAndKilometresLeaveEverythingAlone)
{
    for (int unit : {static_cast<int>(CVxUnits::UNIT_YD), static_cast<int>(CVxUnits::UNIT_KM), -1, 8}) {
        SCOPED_TRACE(unit);
        CVxProject project;
        project.SetDefaultsForUnit(CVxUnits::UNIT_FT);
        project.SetDefaultsForUnit(unit);
        EXPECT_DOUBLE_EQ(project.m_gridSize, 5);
        EXPECT_DOUBLE_EQ(project.m_spaceLeft, 6);
        EXPECT_DOUBLE_EQ(project.m_baseZoom, 20);
        EXPECT_DOUBLE_EQ(project.GetFloor()->m_floorThickness, 1.5);
    }
}

TEST_F(Project, StatisticalUnit)
{
    EXPECT_EQ(CVxProject::GetStatisticalUnitForUnit(CVxUnits::UNIT_MM), CVxUnits::UNIT_M);
    EXPECT_EQ(CVxProject::GetStatisticalUnitForUnit(CVxUnits::UNIT_INCH), CVxUnits::UNIT_FT);
    EXPECT_EQ(CVxProject::GetStatisticalUnitForUnit(CVxUnits::UNIT_DM), CVxUnits::UNIT_DM);

    VX_GetOptions()->m_roomStatUnit = L"m";
    EXPECT_EQ(CVxProject::GetStatisticalUnitForUnit(CVxUnits::UNIT_FT), CVxUnits::UNIT_M);
    EXPECT_EQ(CVxProject::GetStatisticalUnitForUnit(CVxUnits::UNIT_CM), CVxUnits::UNIT_M);
    VX_GetOptions()->m_roomStatUnit = L"furlong";
    EXPECT_EQ(CVxProject::GetStatisticalUnitForUnit(CVxUnits::UNIT_FT), CVxUnits::UNIT_FT);

    CVxProject project;
    project.m_unit = CVxUnits::UNIT_INCH;
    EXPECT_EQ(project.GetStatisticalUnit(), CVxUnits::UNIT_FT);
}

TEST_F(Project, WithoutSubUnitMovesLengthsAreWholeUnits)
{
    CVxProject project;
    project.m_subUnitMoves = false;
    double x = 10.5, y = -10.5;
    project.SubUnitCorrection(x, y, VX_DF_DECIMAL);
    EXPECT_DOUBLE_EQ(x, 11);
    EXPECT_DOUBLE_EQ(y, -11);
    double z = 2.4;
    project.SubUnitCorrection(z, VX_DF_INCHES);
    EXPECT_DOUBLE_EQ(z, 2);
}

TEST_F(Project, DecimalPrecisionGivesTenthsOrHundredths)
{
    CVxProject project;
    project.m_subUnitMoves = true;
    project.m_decimalPrecision = 1;
    double x = 1.25, y = -1.24;
    project.SubUnitCorrection(x, y, VX_DF_DECIMAL);
    EXPECT_DOUBLE_EQ(x, 1.3);
    EXPECT_DOUBLE_EQ(y, -1.2);

    project.m_decimalPrecision = 3;
    double z = 1.006;
    project.SubUnitCorrection(z, VX_DF_DECIMAL);
    EXPECT_DOUBLE_EQ(z, 1.01);
}

TEST_F(Project, InchesSnapToSixteenths)
{
    CVxProject project;
    project.m_unit = CVxUnits::UNIT_INCH;
    project.m_subUnitMoves = true;
    project.m_inchesPrecision = 4;
    VX_GetOptions()->m_convertFeetInEdit = true;
    double x = 10.03, y = 10.04;
    project.SubUnitCorrection(x, y, VX_DF_INCHES);
    EXPECT_DOUBLE_EQ(x, 10);
    EXPECT_DOUBLE_EQ(y, 10.06);

    // The decimal format never snaps to fractions.
    double z = 10.04;
    project.SubUnitCorrection(z, VX_DF_DECIMAL);
    EXPECT_DOUBLE_EQ(z, 10.04);

    VX_GetOptions()->m_convertFeetInEdit = false;
    CVxDPoint point(10.034, 10.046);
    project.SubUnitCorrection(&point, VX_DF_FEET);
    EXPECT_POINT_NEAR(point, CVxDPoint(10.03, 10.05));
    project.SubUnitCorrection(nullptr, VX_DF_FEET);
}

TEST_F(Project, FloorAccessFallsBackToTheFirstFloor)
{
    CVxProject project;
    ASSERT_EQ(project.GetFloorCount(), 1);
    CVxFloor* first = project.GetFloor();
    project.m_floors.push_back(new CVxFloor);
    CVxFloor* second = project.m_floors[1];

    project.m_currentFloor = 1;
    EXPECT_EQ(project.GetFloor(), second);
    project.m_currentFloor = 7;
    EXPECT_EQ(project.GetFloor(), first);
    project.m_currentFloor = 1;
    EXPECT_EQ(project.GetSafeFloor(0), first);
    EXPECT_EQ(project.GetSafeFloor(-1), second);
    EXPECT_EQ(project.GetSafeFloor(2), second);
    // The ground floor has no offset.
    EXPECT_DOUBLE_EQ(project.GetFloorZOffset(0), 0);
    EXPECT_DOUBLE_EQ(project.GetFloorZOffset(-3), 0);

    // Without floors, GetFloor adds one with the project's defaults.
    for (CVxFloor* floor : project.m_floors)
        delete floor;
    project.m_floors.clear();
    project.m_defWallHeight = 300;
    CVxFloor* added = project.GetFloor();
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(project.GetFloorCount(), 1);
    EXPECT_DOUBLE_EQ(added->m_defWallHeight, 300);
}

TEST_F(Project, TotalSizeAddsTheSpaceAround)
{
    CVxProject project;
    project.m_spaceLeft = 10;
    project.m_spaceRight = 20;
    project.m_spaceTop = 1;
    project.m_spaceBottom = 2;
    EXPECT_DOUBLE_EQ(project.GetTotalWidth(), 530);
    EXPECT_DOUBLE_EQ(project.GetTotalHeight(), 303);
}

TEST_F(Project, ResetTakesTheSettings)
{
    VX_GetOptions()->m_defaultUnit = L"ft";
    VX_GetOptions()->m_defWallColor = 0x123456;
    VX_GetOptions()->m_3DWallsTransp = 2;
    VX_GetOptions()->m_defCaptionFont = L"Arial|9|238|0|3";
    CVxProject project;
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_FT);
    EXPECT_EQ(project.m_defWallsColor, 0x123456u);
    EXPECT_EQ(project.GetFloor()->m_wallsColor, 0x123456u);
    EXPECT_EQ(project.m_walls3DStyle, 2);
    EXPECT_DOUBLE_EQ(project.m_captionFont.m_size, 9);
    EXPECT_TRUE(project.m_captionFont.m_italic);
    EXPECT_FALSE(project.IsModified());
}

TEST_F(Project, ConvertUnitScalesTheDefaults)
{
    CVxProject project;
    project.ConvertUnit(CVxUnits::UNIT_CM, CVxUnits::UNIT_M, nullptr);
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_M);
    EXPECT_DOUBLE_EQ(project.m_baseZoom, 100);
    EXPECT_TRUE(project.m_subUnitMoves);
    EXPECT_DOUBLE_EQ(project.m_gridSize, 0.5);
    EXPECT_DOUBLE_EQ(project.m_defWallHeight, 2.65);
    EXPECT_DOUBLE_EQ(project.GetFloor()->m_floorThickness, 0.3);
}

TEST_F(Project, ConvertUnitKeepsTheRoomRectangleThereAndBack)
{
    // Centred walls 20 thick whose outer faces touch the room rectangle, so
    // their reference lines lie 10 inside it on every side.
    CVxProject project;
    project.m_width = 670;
    project.m_height = 500;
    CVxRoomWalls& walls = project.GetFloor()->m_walls;
    walls.RemoveAll();
    const double lines[4][4] = {
        {10, 10, 660, 10}, {660, 10, 660, 490}, {660, 490, 10, 490}, {10, 490, 10, 10}};
    for (const auto& line : lines)
        walls.GetNewWall()->Set(line[0], line[1], line[2], line[3], CVxWall::ALIGN_CENTER, 20, 265, 265, true,
                                false);
    walls.RebuildWalls();

    for (int unit = 0; unit < CVxUnits::UNIT_COUNT; ++unit) {
        if (unit == CVxUnits::UNIT_CM)
            continue;
        SCOPED_TRACE(unit);
        const double factor = CVxUnits::GetUnitCal(CVxUnits::UNIT_CM) / CVxUnits::GetUnitCal(unit);
        project.ConvertUnit(CVxUnits::UNIT_CM, unit, nullptr);
        EXPECT_NEAR(project.m_width, 670 * factor, 1e-9 * factor);
        EXPECT_NEAR(project.m_height, 500 * factor, 1e-9 * factor);
        project.ConvertUnit(unit, CVxUnits::UNIT_CM, nullptr);
        EXPECT_NEAR(project.m_width, 670, 1e-9);
        EXPECT_NEAR(project.m_height, 500, 1e-9);
    }
}

TEST_F(Project, CopyIsDeepAndIndependent)
{
    CVxProject source;
    source.m_floors.push_back(new CVxFloor);
    source.m_currentFloor = 1;
    source.m_floors[1]->m_layers.AddLayer(L"Furniture");
    source.m_floors[1]->m_floorThickness = 42;
    source.m_viewpoints.m_viewpoints.push_back(CVxViewpoint());
    source.m_comments = L"first line";
    source.m_storagePath = L"/tmp/house/";
    source.m_storedFiles.emplace_back(L"/photos/a.jpg", L"/tmp/house/a.jpg");
    source.m_modified = true;
    source.m_captionFont.m_name = L"Verdana";

    CVxProject target;
    target.m_floors.push_back(new CVxFloor);
    target.m_floors.push_back(new CVxFloor);
    source.CopyTo(&target);

    ASSERT_EQ(target.GetFloorCount(), 2);
    EXPECT_NE(target.m_floors[1], source.m_floors[1]);
    EXPECT_EQ(target.m_currentFloor, 1);
    EXPECT_EQ(target.GetFloor()->m_layers, source.GetFloor()->m_layers);
    EXPECT_DOUBLE_EQ(target.GetFloor()->m_floorThickness, 42);
    EXPECT_EQ(target.m_viewpoints.GetCount(), 1);
    EXPECT_EQ(target.m_comments, L"first line");
    EXPECT_EQ(target.m_storagePath, L"/tmp/house/");
    EXPECT_EQ(target.m_storedFiles, source.m_storedFiles);
    EXPECT_TRUE(target.IsModified());
    EXPECT_EQ(target.m_captionFont, source.m_captionFont);

    source.m_floors[1]->m_layers.AddLayer(L"Lights");
    source.m_floors[1]->m_floorThickness = 7;
    EXPECT_EQ(target.GetFloor()->m_layers.GetLayerCount(), 2);
    EXPECT_DOUBLE_EQ(target.GetFloor()->m_floorThickness, 42);

    const CVxProject copy(target);
    ASSERT_EQ(copy.GetFloorCount(), 2);
    EXPECT_NE(copy.m_floors[0], target.m_floors[0]);
    EXPECT_EQ(copy.m_floors[1]->m_layers, target.m_floors[1]->m_layers);
}

TEST_F(Project, CopyToItselfOrNothingChangesNothing)
{
    CVxProject project;
    CVxFloor* floor = project.GetFloor();
    project.CopyTo(&project);
    project.CopyTo(nullptr);
    EXPECT_EQ(project.GetFloor(), floor);
    EXPECT_EQ(project.GetFloorCount(), 1);
}

TEST_F(Project, RoomSectionRoundTrip)
{
    CVxProject source;
    source.m_width = 812.5;
    source.m_height = 410;
    source.m_gridColor = 0x00FF80;
    source.m_unit = CVxUnits::UNIT_INCH;
    source.m_baseZoom = 2;
    source.m_subUnitMoves = true;
    source.m_spaceLeft = 1;
    source.m_spaceTop = 2;
    source.m_spaceRight = 3;
    source.m_spaceBottom = 4;
    source.m_userCoord = true;
    source.m_printTitle = L"Ground floor";
    source.m_captionPrintFont.m_size = 14;
    source.m_comments = L"two\r\nlines";
    source.m_skyBoxTop = L"/sky/top.png";
    source.m_currentFloor = 0;

    CVxStringWriter writer;
    source.SaveToFile(&writer, "Room");
    const std::string text = VxSectionText(writer.GetString(), "Room");
    EXPECT_NE(text.find("FileVersion=1020\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Unit=\"\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("BkgScanVisible"), std::string::npos) << text;
    EXPECT_EQ(text.find("PrintNote1"), std::string::npos) << text;

    CVxProject target;
    ASSERT_TRUE(VxReadSection(writer.GetString(), "Room", &target));
    EXPECT_DOUBLE_EQ(target.m_width, 812.5);
    EXPECT_EQ(target.m_gridColor, 0x00FF80u);
    EXPECT_EQ(target.m_unit, CVxUnits::UNIT_INCH);
    EXPECT_DOUBLE_EQ(target.m_baseZoom, 2);
    EXPECT_TRUE(target.m_subUnitMoves);
    EXPECT_DOUBLE_EQ(target.m_spaceBottom, 4);
    EXPECT_TRUE(target.m_userCoord);
    EXPECT_EQ(target.m_printTitle, L"Ground floor");
    EXPECT_EQ(target.m_captionPrintFont, source.m_captionPrintFont);
    EXPECT_EQ(target.m_captionFont, source.m_captionFont);
    EXPECT_EQ(target.m_comments, L"two\r\nlines");
    EXPECT_EQ(target.m_skyBoxTop, L"/sky/top.png");
    EXPECT_TRUE(target.HasSkyBox());
}

TEST_F(Project, OlderRoomKeys)
{
    CVxProject project;
    const CVxStringA text("[Room]\r\nSpaceAround=10\r\nCaptionFont=Georgia|12|1|0|1\r\nUnit=furlong\r\n"
                          "Width=abc\r\nBaseZoom=0\r\nWallsColor=0x112233\r\nGroundColor=255\r\n"
                          "3DStart=5|7\r\n");
    ASSERT_TRUE(VxReadSection(text, "Room", &project));
    EXPECT_DOUBLE_EQ(project.m_spaceLeft, 10);
    EXPECT_DOUBLE_EQ(project.m_spaceBottom, 10);
    EXPECT_EQ(project.m_captionPrintFont.m_name, L"Georgia");
    EXPECT_TRUE(project.m_captionPrintFont.m_bold);
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_CM);
    EXPECT_DOUBLE_EQ(project.m_width, 500);
    EXPECT_DOUBLE_EQ(project.m_baseZoom, 1);
    EXPECT_EQ(project.m_defWallsColor, 0x112233u);
    EXPECT_EQ(project.m_groundAppear.GetColor(), 255u);
    ASSERT_EQ(project.m_viewpoints.GetCount(), 1);
    const CVxViewpoint& start = project.m_viewpoints.m_viewpoints[0];
    EXPECT_DOUBLE_EQ(start.m_x, 250);
    EXPECT_DOUBLE_EQ(start.m_y, 150);
    EXPECT_DOUBLE_EQ(start.m_yaw, 0);
    EXPECT_EQ(start.m_name, L"Start");
    EXPECT_EQ(start.m_navigation, CVxViewpoint::NAV_WALK);
    EXPECT_TRUE(start.m_autoHeight);
}
