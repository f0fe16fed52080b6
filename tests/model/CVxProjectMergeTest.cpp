// Merging a second project in: floor into floor, or as floors of their own.

#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxProject.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

CVxPart* AddBox(CVxFloor& floor, double x, double y, int layer)
{
    CVxPart* part = floor.GetNewObject(nullptr, true);
    part->type = ptRectangle;
    part->x = x;
    part->y = y;
    part->width = 80;
    part->height = 60;
    part->layer = layer;
    return part;
}

void AddRoom(CVxFloor& floor, const wchar_t* name)
{
    floor.m_planDef.items.emplace_back();
    floor.m_planDef.items.back().name = name;
    floor.m_planDef.items.back().edgeTo = CVxDPoint(100, 0);
}

class ProjectMerge : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // The open project: one floor, a 400 by 300 room, one object, one room.
        CVxFloor& own = *first.GetFloor();
        own.m_walls.SetAsBasicRect(400, 300, 10, 250);
        first.m_width = 400;
        first.m_height = 300;
        AddBox(own, 50, 50, 0);
        AddRoom(own, L"Living");

        // The second: two floors; on the ground floor two layers, a room of
        // its own walls with a red face, and an object hung on its third wall.
        CVxFloor& ground = *second.GetFloor();
        ground.m_layers.AddLayer(CVxStringW(L"Furniture"));
        ground.m_walls.SetAsBasicRect(200, 100, 10, 250);
        CVxAppearance red;
        red.SetColor(0xFF0000);
        ground.m_walls.walls[2].appearanceA = ground.m_walls.AddFindAppearance(red);
        CVxPart* hung = AddBox(ground, 20, 20, 1);
        hung->snapWall = 2;
        AddRoom(ground, L"Studio");
        second.m_floors.push_back(new CVxFloor(*second.m_floors[0]));
        second.m_floors[1]->m_layers.m_layers[0].m_name = L"Upstairs";
        second.m_width = 200;
        second.m_height = 100;
    }
    void TearDown() override { VX_GetOptions()->ResetToDefaults(); }

    CVxProject first;
    CVxProject second;
};

} // namespace

TEST_F(ProjectMerge, FloorIntoFloorAppendsLayersWallsObjectsAndRooms)
{
    const CVxDPoint firstWall = first.GetFloor()->m_walls.walls[0].start;
    const CVxDPoint secondWall = second.GetFloor()->m_walls.walls[0].start;
    const size_t rooms = first.GetFloor()->m_planDef.items.size();
    // Moving a floor keeps its rooms by their edges where they move to.
    CVxProject moved(second);
    moved.MoveAllObjects(400, 50, 0);
    const std::vector<CVxFloorPlanDef::CFloorPlanItem>& secondRooms = moved.GetFloor()->m_planDef.items;
    ASSERT_FALSE(secondRooms.empty());
    first.MergeProject(&second, CVxDPoint(0, 0), CVxDPoint(400, 50), false);

    ASSERT_EQ(first.GetFloorCount(), 2);
    const CVxFloor& ground = *first.m_floors[0];
    ASSERT_EQ(ground.m_layers.GetLayerCount(), 3);
    EXPECT_EQ(ground.m_layers.m_layers[2].m_name, L"Furniture");
    ASSERT_EQ(ground.m_walls.GetWallCount(), 8);
    EXPECT_POINT_NEAR(ground.m_walls.walls[0].start, firstWall);
    EXPECT_POINT_NEAR(ground.m_walls.walls[4].start, secondWall + CVxDPoint(400, 50));
    // The poured wall keeps its face; the others none.
    const CVxWall& red = ground.m_walls.walls[6];
    ASSERT_GE(red.appearanceA, 0);
    EXPECT_EQ(ground.m_walls.appearances[static_cast<size_t>(red.appearanceA)].GetColor(), 0xFF0000u);
    EXPECT_EQ(ground.m_walls.walls[4].appearanceA, -1);

    ASSERT_EQ(ground.CountUsedObjects(), 2);
    const CVxPart& poured = ground.m_objects[1];
    EXPECT_EQ(poured.layer, 2);
    EXPECT_EQ(poured.snapWall, 6);
    EXPECT_POINT_NEAR(CVxDPoint(poured.x, poured.y), CVxDPoint(420, 70));
    EXPECT_EQ(ground.m_objects[0].layer, 0);

    ASSERT_EQ(ground.m_planDef.items.size(), rooms + secondRooms.size());
    EXPECT_EQ(ground.m_planDef.items[rooms - 1].name, L"Living");
    EXPECT_POINT_NEAR(ground.m_planDef.items.back().edgeFrom, secondRooms.back().edgeFrom);
    // The floor beyond the first project's one is taken as it is.
    EXPECT_EQ(first.m_floors[1]->m_layers.GetLayerCount(), 2);
    EXPECT_EQ(first.m_floors[1]->m_layers.m_layers[0].m_name, L"Upstairs");
    // The room rectangle spans both.
    EXPECT_DOUBLE_EQ(first.m_width, 600);
    EXPECT_DOUBLE_EQ(first.m_height, 300);
}

TEST_F(ProjectMerge, NewFloorsKeepBothGroundFloorsApart)
{
    // Shifted to the left of the first, which makes room by moving along.
    first.MergeProject(&second, CVxDPoint(0, 0), CVxDPoint(-100, 0), true);

    ASSERT_EQ(first.GetFloorCount(), 3);
    EXPECT_EQ(first.m_floors[0]->m_walls.GetWallCount(), 4);
    EXPECT_EQ(first.m_floors[0]->m_layers.GetLayerCount(), 1);
    EXPECT_EQ(first.m_floors[0]->CountUsedObjects(), 1);
    EXPECT_EQ(first.m_floors[1]->m_layers.GetLayerCount(), 2);
    EXPECT_EQ(first.m_floors[1]->m_objects[0].layer, 1);
    EXPECT_EQ(first.m_floors[2]->m_layers.m_layers[0].m_name, L"Upstairs");
    EXPECT_DOUBLE_EQ(first.m_floors[0]->m_objects[0].x, 150);
    EXPECT_DOUBLE_EQ(first.m_floors[1]->m_objects[0].x, 20);
}
