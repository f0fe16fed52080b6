// A floor's walls and rooms as the document sees them: the default room,
// the walls and room records in the floor's file sections, and rooms that
// keep their names through whole-project transforms.

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxProject.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

// A project whose one floor is a 400 by 300 room named "Living" next to a
// 200 by 300 room named "Study", with its plan definition saved.
void BuildTwoRooms(CVxProject& project)
{
    project.m_width = 600;
    project.m_height = 300;
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.SetAsBasicRect(600, 300, 10, 250);
    CVxWall* divider = floor->m_walls.GetNewWall();
    divider->Set(400, 0, 400, 300, CVxWall::ALIGN_CENTER, 10, 250, 250, true, false);
    floor->m_walls.RebuildWalls();

    CVxFloorPlan plan;
    plan.CreatePlan(*floor, project.m_unit);
    ASSERT_EQ(plan.GetRegionCount(), 2);
    for (CVxFloorRegion& room : plan.regions) {
        const bool left = room.GetInnerBoundingRect().left < 200;
        room.name = left ? L"Living" : L"Study";
        room.floorAppearance.SetColor(left ? 0x80C0FF : 0x40A040);
    }
    floor->SetCommonFloorAppearancesAndSave(plan, true);
}

// The name of the room that contains the point, after a fresh plan.
CVxStringW RoomNameAt(CVxProject& project, const CVxDPoint& point)
{
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(*floor, project.m_unit);
    const CVxFloorRegion* room = plan.SafeGetRegion(plan.FindRegion(point));
    return room ? room->name : CVxStringW(L"<no room>");
}

} // namespace

TEST(FloorWalls, NewFloorIsTheProjectRoomWithWallsOutside)
{
    CVxProject project;
    project.m_width = 420;
    project.m_height = 280;
    CVxFloor floor;
    floor.Reset(&project);
    ASSERT_EQ(floor.m_walls.GetWallCount(), 4);
    CVxDRect dims;
    ASSERT_TRUE(floor.m_walls.GetRoomDims(dims));
    EXPECT_DOUBLE_EQ(dims.right, 420);
    EXPECT_DOUBLE_EQ(dims.bottom, 280);
    EXPECT_DOUBLE_EQ(floor.m_walls.GetWallThickness(), floor.m_defWallThickness);
    EXPECT_DOUBLE_EQ(floor.GetTotalZHeight(), floor.m_defWallHeight);

    CVxFloorPlan plan;
    plan.CreatePlan(floor, project.m_unit);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    ASSERT_EQ(plan.GetOuterRegionCount(), 1);
    // The room's floor is the project rectangle: the walls stand outside it.
    EXPECT_NEAR(plan.regions[0].innerPolygon.GetArea(), 420.0 * 280.0, 1e-6);
}

TEST(FloorWalls, WallsOpeningsAndRoomsRoundTripThroughTheFloorSections)
{
    CVxProject project;
    BuildTwoRooms(project);
    CVxFloor* floor = project.GetFloor();
    CVxHoleInFloor hole;
    hole.type = CVxHoleInFloor::TYPE_ELLIPSE;
    hole.x = 50;
    hole.y = 60;
    hole.width = 80;
    hole.height = 40;
    floor->m_walls.holes.push_back(hole);

    CVxStringWriter writer;
    floor->SaveToFile(&writer);
    CVxStringReader reader(writer.GetString(), 0);
    reader.Start();
    CVxProject readProject;
    readProject.m_width = 600;
    readProject.m_height = 300;
    CVxFloor* read = readProject.GetFloor();
    ASSERT_TRUE(read->LoadFromFile(&reader, &readProject));

    ASSERT_EQ(read->m_walls.GetWallCount(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(read->m_walls.walls[i].SaveToString(), floor->m_walls.walls[i].SaveToString()) << i;
    ASSERT_EQ(read->m_walls.GetHoleCount(), 1);
    EXPECT_EQ(read->m_walls.holes[0].SaveToString(), floor->m_walls.holes[0].SaveToString());
    // Two rooms and the outer contour.
    EXPECT_EQ(read->m_planDef.items.size(), 3u);
    EXPECT_EQ(RoomNameAt(readProject, CVxDPoint(100, 100)), L"Living");
    EXPECT_EQ(RoomNameAt(readProject, CVxDPoint(500, 100)), L"Study");
}

TEST(FloorWalls, RoomsKeepTheirNamesThroughProjectTransforms)
{
    CVxProject project;
    BuildTwoRooms(project);

    project.MoveAllObjects(35, 20, 0);
    EXPECT_DOUBLE_EQ(project.m_width, 635);
    EXPECT_DOUBLE_EQ(project.m_height, 320);
    EXPECT_EQ(RoomNameAt(project, CVxDPoint(135, 120)), L"Living");
    EXPECT_EQ(RoomNameAt(project, CVxDPoint(535, 120)), L"Study");

    // A quarter turn brings the plan back to the origin, 300 wide and 600
    // deep, with one room above the other.
    project.RotateAllObjects(90);
    CVxDRect bounds;
    ASSERT_TRUE(project.GetUnionWallBoundRect(bounds));
    EXPECT_NEAR(bounds.left, 0, 1e-9);
    EXPECT_NEAR(bounds.top, 0, 1e-9);
    EXPECT_NEAR(bounds.right, 300, 1e-9);
    EXPECT_NEAR(bounds.bottom, 600, 1e-9);
    const CVxStringW top = RoomNameAt(project, CVxDPoint(150, 100));
    const CVxStringW bottom = RoomNameAt(project, CVxDPoint(150, 500));
    EXPECT_TRUE((top == L"Living" && bottom == L"Study") || (top == L"Study" && bottom == L"Living"))
        << top.ToQString().toStdString() << " / " << bottom.ToQString().toStdString();

    project.MirrorAllObjects(true);
    EXPECT_EQ(RoomNameAt(project, CVxDPoint(150, 100)), bottom);
    EXPECT_EQ(RoomNameAt(project, CVxDPoint(150, 500)), top);

    project.ScaleAllObjects(2, 2, 1, true, false);
    EXPECT_EQ(RoomNameAt(project, CVxDPoint(300, 200)), bottom);
    EXPECT_EQ(RoomNameAt(project, CVxDPoint(300, 1000)), top);
}

TEST(FloorWalls, UpperFloorsStandOnTheWallsBelow)
{
    CVxProject project;
    CVxFloor* ground = project.GetFloor();
    ground->m_walls.SetWallZHeight(250);
    auto* upper = new CVxFloor;
    upper->Reset(&project);
    upper->m_floorThickness = 20;
    upper->m_walls.SetWallZHeight(240);
    project.m_floors.push_back(upper);
    EXPECT_DOUBLE_EQ(project.GetFloorZOffset(0), 0);
    EXPECT_DOUBLE_EQ(project.GetFloorZOffset(1), 270);
    // A storey without walls adds only the floor above it.
    ground->m_walls.RemoveAll();
    EXPECT_DOUBLE_EQ(project.GetFloorZOffset(1), 20);
}
