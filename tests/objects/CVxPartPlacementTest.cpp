// The frame of a part: corners, caches, hit tests, hanging in walls,
// turning, mirroring, angle handles and table cells.

#include "CVxFont.h"
#include "CVxPart.h"
#include "CVxRoomWalls.h"
#include "VxNumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

::testing::AssertionResult PointNear(const char* actualText, const char* expectedText,
                                     const CVxDPoint& actual, const CVxDPoint& expected)
{
    if (std::fabs(actual.x - expected.x) < 1e-6 && std::fabs(actual.y - expected.y) < 1e-6)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actualText << " is (" << actual.x << ", " << actual.y << "), " << expectedText << " is ("
           << expected.x << ", " << expected.y << ")";
}
#define EXPECT_PT(actual, expected) EXPECT_PRED_FORMAT2(PointNear, actual, expected)

::testing::AssertionResult RectNear(const char* actualText, const char*, const CVxDRect& a, const CVxDRect& e)
{
    if (std::fabs(a.left - e.left) < 1e-6 && std::fabs(a.top - e.top) < 1e-6 &&
        std::fabs(a.right - e.right) < 1e-6 && std::fabs(a.bottom - e.bottom) < 1e-6)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actualText << " is (" << a.left << ", " << a.top << ", " << a.right << ", " << a.bottom
           << "), expected (" << e.left << ", " << e.top << ", " << e.right << ", " << e.bottom << ")";
}
#define EXPECT_RECT(actual, expected) EXPECT_PRED_FORMAT2(RectNear, actual, expected)

CVxPart MakePart(int type, double x, double y, double w, double h, double rotation = 0)
{
    CVxPart part;
    part.inUse = true;
    part.type = static_cast<uint16_t>(type);
    part.x = x;
    part.y = y;
    part.width = w;
    part.height = h;
    part.rotation = rotation;
    return part;
}

CVxDPoint Corner(const CVxPart& part, int i)
{
    CVxDPoint corners[4];
    part.GetRect(corners, 1.0, false);
    return corners[i];
}

CVxDPoint Centre(const CVxPart& part)
{
    CVxDRect box;
    part.GetBoundingRect(&box, 1.0);
    return box.CenterPoint();
}

// One straight wall 500 long along x, 20 thick about its centre line: the
// faces lie at y = -10 and y = 10.
CVxRoomWalls OneWall()
{
    CVxRoomWalls walls;
    walls.GetNewWall()->Set(0, 0, 500, 0, CVxWall::ALIGN_CENTER, 20, 250, 250, true, false);
    return walls;
}

CVxPart Opening(int type, int lib, double width, double rotation)
{
    CVxPart part = MakePart(type, 0, 0, width, 10, rotation);
    part.libObjID = lib;
    part.snapToWall = true;
    part.zHeight = 120;
    part.z = 90;
    return part;
}

// Every corner lies between the two faces of OneWall.
::testing::AssertionResult InsideWall(const CVxPart& part)
{
    for (int i = 0; i < 4; ++i) {
        const CVxDPoint p = Corner(part, i);
        if (std::fabs(p.y) > 10 + 1e-6)
            return ::testing::AssertionFailure() << "corner " << i << " at (" << p.x << ", " << p.y << ")";
    }
    return ::testing::AssertionSuccess();
}

} // namespace

TEST(PartFrame, CornersFollowRotationDoorSquareTiltAndLine)
{
    const CVxPart box = MakePart(ptRectangle, 10, 20, 100, 50, 90);
    EXPECT_PT(Corner(box, 0), CVxDPoint(10, 20));
    EXPECT_PT(Corner(box, 1), CVxDPoint(10, 120));
    EXPECT_PT(Corner(box, 2), CVxDPoint(-40, 120));
    EXPECT_PT(Corner(box, 3), CVxDPoint(-40, 20));

    CVxDPoint scaled[4];
    MakePart(ptRectangle, 10.3, -20.5, 100, 50).GetRect(scaled, 2.0, true);
    EXPECT_PT(scaled[0], CVxDPoint(21, -41));

    // The swing of a door is square whatever its wall depth.
    EXPECT_PT(Corner(MakePart(ptDoor, 0, 0, 80, 10), 2), CVxDPoint(80, 80));

    // A tilted board takes its 3D height into its plan depth, and past
    // upright its frame moves back.
    CVxPart board = MakePart(ptRectangle, 0, 0, 100, 50);
    board.zHeight = 200;
    board.rotation3D = 90;
    EXPECT_PT(Corner(board, 3), CVxDPoint(0, 200));
    board.rotation3D = 135;
    const double r = std::sqrt(0.5);
    EXPECT_PT(Corner(board, 0), CVxDPoint(0, -50 * r));
    EXPECT_PT(Corner(board, 3), CVxDPoint(0, -50 * r + 250 * r));
    board.rotation3D = VX_DBL_UNSET;
    EXPECT_PT(Corner(board, 3), CVxDPoint(0, 50));

    const CVxPart line = MakePart(ptLine, 5, 5, 100, 40);
    EXPECT_PT(Corner(line, 1), Corner(line, 0));
    EXPECT_PT(Corner(line, 2), CVxDPoint(5, 45));

    CVxDRect flat;
    line.GetBoundingRect(&flat, 1.0);
    EXPECT_RECT(flat, CVxDRect(5, 5, 5.0001, 45));
}

TEST(PartFrame, CacheIsRebuiltOnlyForANewZoomAndFollowsTheOrigin)
{
    CVxPart group = MakePart(ptComplexObject, 10, 20, 100, 50);
    group.subParts.push_back(MakePart(ptRectangle, 0, 0, 500, 500));
    CVxDPoint exact[4];
    EXPECT_EQ(group.GetCachedRect(5, 5, 2.0, exact)[2].x, 225);
    EXPECT_PT(exact[2], CVxDPoint(225, 145));

    // Moving without invalidating keeps the old frame; scrolling still works.
    group.x = 1000;
    EXPECT_EQ(group.GetCachedRect(0, 0, 2.0, nullptr)[0].x, 20);
    EXPECT_EQ(group.GetCachedRect(0, 0, 3.0, nullptr)[0].x, 3000);

    group.subParts[0].GetCachedRect(0, 0, 1.0, nullptr);
    group.InvalidateCache();
    EXPECT_EQ(group.cacheScale, 0);
    EXPECT_EQ(group.subParts[0].cacheScale, 0);

    VxRECT rect;
    CVxPart line = MakePart(ptLine, 10, 10, 0, 0);
    line.GetCachedBoundingRect(&rect, 0, 0, 1.0);
    EXPECT_EQ(rect.right - rect.left, 1);
    EXPECT_EQ(rect.bottom - rect.top, 1);

    CVxPart door = MakePart(ptDoor, 0, 0, 80, 10);
    door.GetCachedDrawingRect(&rect, 0, 0, 1.0);
    EXPECT_EQ(rect.right - rect.left, 160);
    EXPECT_EQ(rect.bottom - rect.top, 160);

    CVxPart framed = MakePart(ptRectangle, 0, 0, 100, 50);
    framed.thickness = 4;
    framed.GetCachedDrawingRect(&rect, 0, 0, 2.0);
    EXPECT_EQ(rect.left, -8);
    EXPECT_EQ(rect.bottom, 108);
}

TEST(PartFrame, BrokenNumbersGiveDefinedPixels)
{
    CVxPart broken = MakePart(ptRectangle, 0, 0, std::numeric_limits<double>::quiet_NaN(), 1e300);
    VxRECT rect;
    broken.GetCachedDrawingRect(&rect, 0, 0, 1.0);
    EXPECT_LE(rect.bottom, 0xFFFFFF);
    EXPECT_FALSE(broken.PtInPart(1, 1, 1.0, false, 1.0));
    EXPECT_FALSE(MakePart(ptRectangle, 0, 0, 10, 10).PtInPart(1, 1, 0.0, false, 1.0));

    // Groups nested past the limit answer without running away.
    CVxPart nested = MakePart(ptComplexObject, 0, 0, 1000, 1000);
    for (int i = 0; i < 3 * CVxPart::maxGroupDepth; ++i) {
        CVxPart outer = MakePart(ptComplexObject, 0, 0, 1000, 1000);
        outer.subParts.push_back(nested);
        nested = outer;
    }
    EXPECT_FALSE(nested.PtInPart(500, 500, 1.0, false, 1.0));
    nested.Mirror(true);
    nested.Scale(2, 2, 2, false);
}

TEST(PartHit, BoxShapesHonourToleranceAndZoom)
{
    CVxPart box = MakePart(ptRectangle, 0, 0, 100, 50);
    EXPECT_TRUE(box.PtInPart(-3, 10, 1.0, false, 4));
    EXPECT_FALSE(box.PtInPart(-3, 10, 1.0, false, 2));
    EXPECT_TRUE(box.PtInPart(-6, 20, 2.0, false, 4));
    EXPECT_FALSE(box.PtInPart(103, 10, 1.0, false, 2));

    // Round shapes test as ellipses and take no tolerance: a hexagon's
    // corners do not hit.
    CVxPart hexagon = MakePart(ptHexagon, 0, 0, 100, 100);
    EXPECT_TRUE(hexagon.PtInPart(50, 50, 1.0, false, 4));
    EXPECT_FALSE(hexagon.PtInPart(3, 3, 1.0, false, 4));
    EXPECT_TRUE(hexagon.PtInPart(3, 3, 1.0, true, 4));

    CVxPart triangle = MakePart(ptTriangle, 0, 0, 100, 100);
    EXPECT_TRUE(triangle.PtInPart(10, 10, 1.0, false, 1));
    EXPECT_FALSE(triangle.PtInPart(90, 90, 1.0, false, 1));
    triangle.rotation3D = 80;
    EXPECT_TRUE(triangle.PtInPart(90, 90, 1.0, false, 1));

    CVxPart line = MakePart(ptLine, 0, 0, 100, 50, 90);
    EXPECT_TRUE(line.PtInPart(-2, 3, 1.0, false, 4));
    EXPECT_FALSE(line.PtInPart(-20, 10, 1.0, false, 4));
}

TEST(PartHit, OutlinesAngleAndGroupMembers)
{
    CVxPart polygon = MakePart(ptPolygon, 0, 0, 100, 100);
    polygon.polygon.points = {CVxDPoint(0, 0), CVxDPoint(1000, 0), CVxDPoint(0, 1000)};
    EXPECT_TRUE(polygon.PtInPart(10, 10, 1.0, false, 1));
    EXPECT_FALSE(polygon.PtInPart(90, 90, 1.0, false, 1));

    CVxPart polyline = MakePart(ptPolyline, 0, 0, 100, 100);
    polyline.polygon.points = {CVxDPoint(0, 0), CVxDPoint(1000, 1000)};
    EXPECT_TRUE(polyline.PtInPart(50, 52, 1.0, false, 3));
    EXPECT_FALSE(polyline.PtInPart(80, 20, 1.0, false, 3));

    CVxPart angle = MakePart(ptAngle, 0, 0, 100, 100);
    angle.angle = 90;
    EXPECT_TRUE(angle.PtInPart(50, 99, 1.0, false, 2));
    EXPECT_TRUE(angle.PtInPart(1, 50, 1.0, false, 2));
    EXPECT_FALSE(angle.PtInPart(50, 50, 1.0, false, 2));

    // A member in the right half of a group 200 wide.
    CVxPart group = MakePart(ptComplexObject, 0, 0, 200, 100);
    EXPECT_FALSE(group.PtInPart(150, 50, 1.0, false, 1));
    group.subParts.push_back(MakePart(ptRectangle, 500, 0, 500, 500));
    EXPECT_TRUE(group.PtInPart(150, 50, 1.0, false, 1));
    EXPECT_FALSE(group.PtInPart(50, 50, 1.0, false, 1));
}

TEST(PartTransform, TurningAboutTheCentreAndMirroringComeBack)
{
    CVxPart box = MakePart(ptRectangle, 10, 20, 100, 50);
    const CVxDPoint centre = Centre(box);
    box.RotateAroundCenter(90);
    EXPECT_DOUBLE_EQ(box.rotation, 90);
    EXPECT_PT(Centre(box), centre);
    box.RotateAroundCenter(-90);
    EXPECT_DOUBLE_EQ(box.rotation, 270);
    EXPECT_PT(Centre(box), centre);

    CVxPart group = MakePart(ptComplexObject, 0, 0, 200, 100);
    group.subParts.push_back(MakePart(ptRectangle, 100, 50, 200, 100));
    group.Mirror(true);
    EXPECT_PT(CVxDPoint(group.subParts[0].x, group.subParts[0].y), CVxDPoint(700, 50));
    group.Mirror(false);
    EXPECT_PT(CVxDPoint(group.subParts[0].x, group.subParts[0].y), CVxDPoint(700, 350));
    group.Mirror(false);
    group.Mirror(true);
    EXPECT_PT(CVxDPoint(group.subParts[0].x, group.subParts[0].y), CVxDPoint(100, 50));

    CVxPart plain = MakePart(ptRectangle, 0, 0, 10, 10);
    plain.GetCachedRect(0, 0, 1.0, nullptr);
    plain.Mirror(true);
    EXPECT_EQ(plain.cacheScale, 1.0);

    CVxPart scaled = MakePart(ptRectangle, 10, 20, 100, 50);
    scaled.zHeight = 30;
    scaled.CreateFont()->m_size = 10;
    scaled.Scale(2, 3, 0.5, false);
    EXPECT_RECT(CVxDRect(scaled.x, scaled.y, scaled.width, scaled.height), CVxDRect(20, 60, 200, 150));
    EXPECT_DOUBLE_EQ(scaled.zHeight, 15);
    EXPECT_DOUBLE_EQ(scaled.GetFont()->m_size, 30);
}

TEST(PartAngle, HandlesRebuildTheFrame)
{
    CVxPart angle = MakePart(ptAngle, 0, 0, 100, 100);
    CVxDPoint vertex, arm1, arm2;
    angle.angle = 60;
    angle.GetAnglePartPoints(vertex, arm1, arm2);
    EXPECT_PT(arm2, CVxDPoint(0.5, 0));
    angle.angle = 120;
    angle.GetAnglePartPoints(vertex, arm1, arm2);
    EXPECT_PT(vertex, CVxDPoint(1 - 1 / 1.5, 1));

    // The points of an opening of 120 degrees about (100, 100) turned by 30.
    const double s = std::sqrt(3.0) / 2;
    vertex.Set(100, 100);
    arm1.Set(100 + 100 * s, 150);
    arm2.Set(100 + 100 * std::cos(-90 * 3.14159265358979323846 / 180), 0);
    angle.SetAnglePartPoints(vertex, arm1, arm2, 1, false);
    EXPECT_NEAR(angle.rotation, 30, 0.01);
    EXPECT_NEAR(angle.angle, 120, 0.01);
    CVxDPoint v, a1, a2;
    angle.GetAnglePartPoints(v, a1, a2);
    CVxDPoint corners[4];
    angle.GetRect(corners, 1.0, false);
    // The vertex drawn from the new frame is where the handle was.
    const CVxDPoint u = (corners[1] - corners[0]);
    const CVxDPoint d = (corners[3] - corners[0]);
    const CVxDPoint drawn = corners[0] + u * v.x + d * v.y;
    EXPECT_NEAR(drawn.x, 100, 0.05);
    EXPECT_NEAR(drawn.y, 100, 0.05);

    arm1.Set(200, 130);
    angle.SetAnglePartPoints(vertex, arm1, arm2, 4, true);
    EXPECT_DOUBLE_EQ(angle.rotation, 0);
}

TEST(PartTable, CellsAreFoundByTheirOutline)
{
    CVxPart table = MakePart(ptTable, 0, 0, 100, 40);
    table.SetTableRowsCols(2, 2);
    for (int r = 0; r < 2; ++r) {
        for (int c = 0; c < 2; ++c) {
            CVxPart& cell = table.subParts[static_cast<size_t>(r * 2 + c)];
            cell = MakePart(ptLabel, c * 50, r * 20, 50, 20);
        }
    }
    int row = -1, col = -1;
    CVxPart* cell = nullptr;
    ASSERT_TRUE(table.GetTableCellAtPos(75, 30, &row, &col, &cell));
    EXPECT_EQ(row, 1);
    EXPECT_EQ(col, 1);
    EXPECT_EQ(cell, &table.subParts[3]);
    EXPECT_FALSE(table.GetTableCellAtPos(120, 30, &row, &col, &cell));
    // Cells missing from the vector are passed over.
    table.subParts.resize(2);
    EXPECT_FALSE(table.GetTableCellAtPos(75, 30, &row, &col, &cell));
    EXPECT_TRUE(table.GetTableCellAtPos(75, 10, nullptr, nullptr, nullptr));
}

TEST(PartSnap, WindowsSitInTheWallOnEitherFaceAndStopAtItsEnd)
{
    CVxRoomWalls walls = OneWall();
    CVxPart front = Opening(ptWindow, 0, 100, 0);
    front.SnapToWall(&walls, 100, 5, false, false, false);
    EXPECT_EQ(front.snapWall, 0);
    EXPECT_EQ(front.snapWallSide, 0);
    EXPECT_DOUBLE_EQ(front.height, 20);
    EXPECT_PT(Corner(front, 0), CVxDPoint(100, -10));
    EXPECT_TRUE(InsideWall(front));
    EXPECT_RECT(front.GetWallOpeningRect(&walls, 0, true), CVxDRect(100, 90, 200, 210));

    CVxPart back = Opening(ptWindow, 0, 100, 180);
    back.SnapToWall(&walls, 100, 5, false, false, false);
    EXPECT_EQ(back.snapWallSide, 180);
    EXPECT_PT(Corner(back, 0), CVxDPoint(100, 10));
    EXPECT_TRUE(InsideWall(back));
    EXPECT_RECT(back.GetWallOpeningRect(&walls, 0, true), CVxDRect(0, 90, 100, 210));

    // Dragged past the end, the far edge stops at the end of the run.
    front.SnapToWall(&walls, 480, 5, false, false, false);
    EXPECT_PT(Corner(front, 1), CVxDPoint(500, -10));
    front.SnapToWall(&walls, 300, 5, true, false, false);
    EXPECT_PT(Corner(front, 0), CVxDPoint(250, -10));

    // A stale wall index is no failure: the nearest wall takes the window.
    front.snapWall = 7;
    front.SnapToWall(&walls, 100, 5, false, true, false);
    EXPECT_EQ(front.snapWall, 0);

    // A plain object finds its wall but stays where it is.
    CVxPart shelf = Opening(ptRectangle, 0, 100, 0);
    shelf.x = 33;
    shelf.SnapToWall(&walls, 100, 5, false, false, false);
    EXPECT_DOUBLE_EQ(shelf.x, 33);

    CVxPart broken = Opening(ptWindow, 0, std::numeric_limits<double>::quiet_NaN(), 0);
    broken.SnapToWall(&walls, 100, 5, false, false, false);
    broken.SnapToWall(&walls, std::numeric_limits<double>::infinity(), 5, false, false, false);
    broken.SnapToWall(nullptr, 100, 5, false, false, false);
    EXPECT_EQ(broken.snapWall, -1);
}

TEST(PartSnap, DoorsKeepTheirQuarterTurnWithTheSwingBesideTheWall)
{
    CVxRoomWalls walls = OneWall();
    // Hinge on the face at y = -10, leaf opening away from the wall.
    CVxPart door = Opening(ptDoor, 0, 80, 0);
    door.SnapToWall(&walls, 100, -90, false, false, false);
    EXPECT_EQ(door.snapWallSide, 0);
    EXPECT_PT(Corner(door, 3), CVxDPoint(100, -10));
    EXPECT_PT(Corner(door, 0), CVxDPoint(100, -90));
    EXPECT_RECT(door.GetWallOpeningRect(&walls, 0, false), CVxDRect(100, 90, 180, 210));

    // Hung on the other face, turned round.
    CVxPart other = Opening(ptDoor, 0, 80, 180);
    other.SnapToWall(&walls, 180, 90, false, false, false);
    EXPECT_EQ(other.snapWallSide, 180);
    EXPECT_PT(Corner(other, 3), CVxDPoint(180, 10));
    EXPECT_PT(Corner(other, 2), CVxDPoint(100, 10));
    EXPECT_RECT(other.GetWallOpeningRect(&walls, 0, false), CVxDRect(100, 90, 180, 210));

    // A quarter turn: the hinge edge runs across to the far face.
    CVxPart across = Opening(ptDoor, 0, 80, 90);
    across.SnapToWall(&walls, 180, 10, false, false, false);
    EXPECT_EQ(across.snapWallSide, 90);
    EXPECT_NEAR(Corner(across, 3).y, 10, 1e-6);
    EXPECT_NEAR(Corner(across, 0).y, 10, 1e-6);
    EXPECT_NEAR(Corner(across, 1).y, 90, 1e-6);

    // Snapping again where the door is leaves it there.
    const CVxDPoint before(door.x, door.y);
    door.SnapToWall(&walls, door.x, door.y, false, false, false);
    EXPECT_PT(CVxDPoint(door.x, door.y), before);
}

TEST(PartSnap, DraggedAcrossTheWallAHingedOpeningTurnsIntoItsTwin)
{
    CVxRoomWalls walls = OneWall();
    CVxPart window = Opening(ptWindow, 278, 100, 90);
    window.SnapToWall(&walls, 100, 5, false, false, true);
    EXPECT_EQ(window.libObjID, 279);
    EXPECT_EQ(window.snapWallSide, 0);
    EXPECT_TRUE(InsideWall(window));

    CVxPart kept = Opening(ptWindow, 278, 100, 90);
    kept.SnapToWall(&walls, 100, 5, false, false, false);
    EXPECT_EQ(kept.libObjID, 278);

    // A library door on the other face: the hand and the face both change.
    CVxPart left = Opening(ptLibraryObject, 195, 80, 270);
    left.SnapToWall(&walls, 100, 5, false, false, true);
    EXPECT_EQ(left.libObjID, 196);
    EXPECT_EQ(left.snapWallSide, 180);
    CVxPart right = Opening(ptLibraryObject, 196, 80, 90);
    right.SnapToWall(&walls, 100, 5, false, false, true);
    EXPECT_EQ(right.libObjID, 195);
    EXPECT_EQ(right.snapWallSide, 180);
    EXPECT_TRUE(InsideWall(right));
}

TEST(PartSnap, OpeningsOfAStraightRunAreCutPerWall)
{
    CVxRoomWalls walls;
    walls.GetNewWall()->Set(0, 0, 250, 0, CVxWall::ALIGN_CENTER, 20, 250, 250, true, false);
    walls.GetNewWall()->Set(250, 0, 500, 0, CVxWall::ALIGN_CENTER, 20, 250, 250, true, false);
    walls.GetNewWall()->Set(0, 0, 0, 300, CVxWall::ALIGN_CENTER, 20, 250, 250, true, false);
    walls.walls[0].snapSegment = walls.walls[1].snapSegment = 5;
    walls.walls[2].snapSegment = 6;

    // The window slides over the joint of the run.
    CVxPart window = Opening(ptWindow, 0, 100, 0);
    window.SnapToWall(&walls, 200, 5, false, false, false);
    EXPECT_EQ(window.snapWall, 0);
    EXPECT_PT(Corner(window, 1), CVxDPoint(300, -10));
    EXPECT_RECT(window.GetWallOpeningRect(&walls, 0, true), CVxDRect(200, 90, 300, 210));
    EXPECT_RECT(window.GetWallOpeningRect(&walls, 1, true), CVxDRect(-50, 90, 50, 210));
    EXPECT_TRUE(window.GetWallOpeningRect(&walls, 2, true).IsZero());
    EXPECT_TRUE(window.GetWallOpeningRect(&walls, 9, true).IsZero());

    window.SnapToWall(&walls, 50, 5, false, false, false);
    EXPECT_TRUE(window.GetWallOpeningRect(&walls, 1, true).IsZero());
    EXPECT_FALSE(window.GetWallOpeningRect(&walls, 1, false).IsZero());
    window.snapWall = 40;
    EXPECT_TRUE(window.GetWallOpeningRect(&walls, 0, false).IsZero());
}
