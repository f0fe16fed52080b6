// Objects on a floor: picking by the pointer, ordering the slots, and the
// whole-floor transforms that carry objects along with the walls.

#include "CVxFloor.h"
#include "CVxProject.h"
#include "VxModelTestUtil.h"

#include <gtest/gtest.h>

namespace {

CVxPart* AddBox(CVxFloor& floor, double x, double y, int layer, double top)
{
    CVxPart* part = floor.GetNewObject(nullptr, true);
    part->x = x;
    part->y = y;
    part->width = 100;
    part->height = 50;
    part->layer = layer;
    part->zHeight = top;
    return part;
}

// A window hung in the top wall (y = 0) of the floor's basic room.
CVxPart* AddWindow(CVxFloor& floor)
{
    CVxPart* window = floor.GetNewObject();
    window->type = ptWindow;
    window->width = 100;
    window->snapToWall = true;
    window->SnapToWall(&floor.m_walls, 200, 2, false, false, false);
    return window;
}

CVxDPoint Corner(const CVxPart& part, int i)
{
    CVxDPoint corners[4];
    part.GetRect(corners, 1.0, false);
    return corners[i];
}

// Every corner of the window lies between the faces of its wall.
::testing::AssertionResult InItsWall(const CVxFloor& floor, const CVxPart& part)
{
    const CVxWall* wall = floor.m_walls.SafeGetWall(part.snapWall);
    if (!wall)
        return ::testing::AssertionFailure() << "no wall " << part.snapWall;
    for (int i = 0; i < 4; ++i) {
        const CVxDPoint p = Corner(part, i);
        const double toA = wall->GetDistFromLine(&wall->cornerA0, &wall->cornerA1, p.x, p.y, nullptr);
        const double toB = wall->GetDistFromLine(&wall->cornerB0, &wall->cornerB1, p.x, p.y, nullptr);
        if (toA + toB > wall->thickness + 1e-6)
            return ::testing::AssertionFailure()
                   << "corner " << i << " at (" << p.x << ", " << p.y << ") is " << toA << " and " << toB
                   << " from the faces of " << wall->GetString().Std();
    }
    return ::testing::AssertionSuccess();
}

} // namespace

TEST(FloorPlacement, FindPartAtTakesTheFirstHitInUseAndHonoursLayers)
{
    CVxFloor floor;
    floor.m_layers.AddLayer(L"Hidden");
    floor.m_layers.SetLayerVisible(1, false);
    floor.m_layers.SetVisibility3D(false);
    AddBox(floor, 0, 0, 1, 100);
    AddBox(floor, 50, 0, 0, 100);
    AddBox(floor, 60, 0, 0, 100)->inUse = false;

    int index = -1;
    EXPECT_EQ(floor.FindPartAt(70, 10, false, false, 2.0, &index), &floor.m_objects[0]);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(floor.FindPartAt(70, 10, false, true, 2.0, &index), &floor.m_objects[1]);
    EXPECT_EQ(floor.FindPartAt(400, 400, false, false, 1.0, &index), nullptr);
    EXPECT_EQ(index, -1);
}

TEST(FloorPlacement, SlotsAreOrderedByLayerAndByTopHeight)
{
    CVxFloor floor;
    AddBox(floor, 0, 0, 2, 10)->caption = L"a";
    AddBox(floor, 0, 0, 1, 30)->caption = L"b";
    AddBox(floor, 0, 0, 0, 20)->inUse = false;
    AddBox(floor, 0, 0, 1, 20)->caption = L"c";
    floor.OrderPartsByLayers();
    ASSERT_EQ(floor.m_objects.size(), 4u);
    EXPECT_EQ(floor.m_objects[0].caption, CVxStringW(L"b"));
    EXPECT_EQ(floor.m_objects[1].caption, CVxStringW(L"c"));
    EXPECT_EQ(floor.m_objects[2].caption, CVxStringW(L"a"));
    EXPECT_FALSE(floor.m_objects[3].inUse);

    floor.OrderPartsByZposition(true, false);
    EXPECT_EQ(floor.m_objects[0].caption, CVxStringW(L"a"));
    EXPECT_EQ(floor.m_objects[2].caption, CVxStringW(L"b"));
    EXPECT_FALSE(floor.m_objects[3].inUse);

    // Only the selected ones swap; the others keep their slots.
    floor.m_objects[0].selected = true;
    floor.m_objects[2].selected = true;
    floor.OrderPartsByZposition(false, true);
    EXPECT_EQ(floor.m_objects[0].caption, CVxStringW(L"b"));
    EXPECT_EQ(floor.m_objects[1].caption, CVxStringW(L"c"));
    EXPECT_EQ(floor.m_objects[2].caption, CVxStringW(L"a"));
}

TEST(FloorPlacement, ResnapFollowsWallsAndSurvivesStaleIndices)
{
    CVxFloor floor;
    CVxPart* window = AddWindow(floor);
    ASSERT_TRUE(InItsWall(floor, *window));
    const int wallIndex = window->snapWall;
    floor.m_walls.walls[static_cast<size_t>(wallIndex)].thickness = 30;
    floor.m_walls.walls[static_cast<size_t>(wallIndex)].RecalculateProperites();
    floor.m_walls.RebuildWalls();
    floor.ResnapAllParts(nullptr);
    EXPECT_DOUBLE_EQ(floor.m_objects[0].height, 30);
    EXPECT_TRUE(InItsWall(floor, floor.m_objects[0]));

    floor.m_objects[0].snapWall = 99;
    floor.m_walls.RemoveAll();
    floor.ResnapAllParts(nullptr);
    EXPECT_EQ(floor.m_objects[0].snapWall, 99);
}

TEST(FloorPlacement, WholeFloorTransformsCarryObjectsWithTheWalls)
{
    CVxProject project;
    CVxFloor floor;
    AddWindow(floor);
    CVxPart* box = AddBox(floor, 100, 100, 0, 80);
    box->rotation = 30;

    floor.MoveAllObjects(40, -20, 5, &project);
    EXPECT_TRUE(InItsWall(floor, floor.m_objects[0]));
    EXPECT_POINT_NEAR(CVxDPoint(floor.m_objects[1].x, floor.m_objects[1].y), CVxDPoint(140, 80));
    EXPECT_DOUBLE_EQ(floor.m_objects[1].z, 5);

    floor.RotateAllObjects(90, &project);
    EXPECT_TRUE(InItsWall(floor, floor.m_objects[0]));
    EXPECT_DOUBLE_EQ(floor.m_objects[1].rotation, 120);
    EXPECT_POINT_NEAR(CVxDPoint(floor.m_objects[1].x, floor.m_objects[1].y), CVxDPoint(-80, 140));

    floor.ScaleAllObjects(2, 2, 1, true, false, &project);
    EXPECT_TRUE(InItsWall(floor, floor.m_objects[0]));
    EXPECT_DOUBLE_EQ(floor.m_objects[1].width, 200);

    // A flip moves every object to its mirror image, and a second flip
    // brings it back.
    CVxDRect before;
    floor.m_objects[1].GetBoundingRect(&before, 1.0);
    floor.MirrorAllObjects(true, &project);
    EXPECT_TRUE(InItsWall(floor, floor.m_objects[0]));
    CVxDRect flipped;
    floor.m_objects[1].GetBoundingRect(&flipped, 1.0);
    EXPECT_NEAR(flipped.top, -before.bottom, 1.0);
    EXPECT_NEAR(flipped.left, before.left, 1.0);
    floor.MirrorAllObjects(false, &project);
    EXPECT_TRUE(InItsWall(floor, floor.m_objects[0]));
    floor.MirrorAllObjects(false, &project);
    floor.MirrorAllObjects(true, &project);
    EXPECT_NEAR(floor.m_objects[1].x, 2 * -80, 1.0);
    EXPECT_NEAR(floor.m_objects[1].y, 2 * 140, 1.0);
    EXPECT_DOUBLE_EQ(floor.m_objects[1].rotation, 120);
}
