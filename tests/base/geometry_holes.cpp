// Floor openings taken out of room outlines.

#include "geometry_test_util.h"

#include "CVxDPolygon.h"
#include "CVxPolyInfo.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
std::vector<CVxDPolygon> Subtract(const CVxDPolygon& room, const CVxDPolygon& hole)
{
    return CVxDPolygon::RemoveHoleNew(room, hole);
}
} // namespace

TEST(GeometryHoles, HoleOutsideLeavesTheRoom)
{
    CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    room.edgeWalls = {0, 1, 2, 3};
    const auto result = Subtract(room, GeoHoleRect(20, 20, 30, 30));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_VERTICES_NEAR(result[0], room.points, 0);
    EXPECT_EQ(result[0].edgeWalls, room.edgeWalls);
}

TEST(GeometryHoles, HoleInsideIsBridgedFromTheNearestVertex)
{
    CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    room.edgeWalls = {0, 1, 2, 3};
    room.tag = 4;
    // (1,1) is nearest to the room's corner (0,0).
    const CVxDPolygon hole = GeoPolygon({{3, 3}, {3, 6}, {6, 6}, {6, 3}, {1, 1}}, 1);
    const auto result = Subtract(room, hole);
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_VERTICES_NEAR(
        result[0],
        (std::vector<CVxDPoint>{
            {0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {1, 1}, {3, 3}, {3, 6}, {6, 6}, {6, 3}, {1, 1}}),
        0);
    EXPECT_EQ(result[0].edgeWalls, (std::vector<int32_t>{0, 1, 2, 3, -1, -1, -1, -1, -1, -1, -1}));
    EXPECT_EQ(result[0].kind, CVxDPolygon::KIND_ROOM);
    EXPECT_EQ(result[0].tag, 4);
    EXPECT_NEAR(result[0].GetArea(), 100 - hole.GetArea(), 1e-9);
}

TEST(GeometryHoles, BridgeStartsAtTheNearestPairWherEverItIs)
{
    const CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    const auto result = Subtract(room, GeoHoleRect(7, 7, 9, 9));
    ASSERT_EQ(result.size(), 1u);
    // Corner (10,10) and the hole's corner (9,9).
    EXPECT_VERTICES_NEAR(
        result[0],
        (std::vector<CVxDPoint>{
            {10, 10}, {0, 10}, {0, 0}, {10, 0}, {10, 10}, {9, 9}, {9, 7}, {7, 7}, {7, 9}, {9, 9}}),
        0);
    EXPECT_NEAR(result[0].GetArea(), 96, 1e-9);
}

TEST(GeometryHoles, BridgedCurvedRoomKeepsItsCurves)
{
    CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    room.bezierFlags = {true, false, false, false};
    room.bezierControls = {{0, -10}, {10, -10}};
    const auto result = Subtract(room, GeoHoleRect(4, 4, 6, 6));
    ASSERT_EQ(result.size(), 1u);
    const CVxDPolygon& p = result[0];
    ASSERT_EQ(p.bezierFlags.size(), p.points.size());
    // Room from (0,0): the arch first, then three walls, then the bridge, the
    // hole and the bridge back, all straight.
    EXPECT_EQ(p.bezierFlags,
              (std::vector<bool>{true, false, false, false, false, false, false, false, false, false}));
    EXPECT_EQ(p.bezierControls.size(), 2u);
    EXPECT_NEAR(p.GetArea(), room.GetArea() - 4, 1e-9);
}

TEST(GeometryHoles, HoleCoveringTheRoomLeavesNothing)
{
    EXPECT_TRUE(Subtract(GeoRoomRect(0, 0, 10, 10), GeoHoleRect(-5, -5, 15, 15)).empty());
    // A hole exactly on the outline.
    EXPECT_TRUE(Subtract(GeoRoomRect(0, 0, 10, 10), GeoHoleRect(0, 0, 10, 10)).empty());
}

TEST(GeometryHoles, HoleAcrossAWallCutsANotch)
{
    CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    room.edgeWalls = {0, 1, 2, 3};
    const auto result = Subtract(room, GeoHoleRect(5, 2, 15, 8));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_VERTICES_NEAR(
        result[0],
        (std::vector<CVxDPoint>{{0, 0}, {10, 0}, {10, 2}, {5, 2}, {5, 8}, {10, 8}, {10, 10}, {0, 10}}),
        1e-12);
    EXPECT_NEAR(result[0].GetArea(), 70, 1e-9);
    ASSERT_EQ(result[0].edgeWalls.size(), 8u);
    EXPECT_EQ(result[0].edgeWalls[0], 0);
    EXPECT_EQ(result[0].edgeWalls[1], 1);
    EXPECT_EQ(result[0].edgeWalls[3], -1);
    EXPECT_EQ(result[0].edgeWalls[4], -1);
    EXPECT_EQ(result[0].edgeWalls[7], 3);
}

TEST(GeometryHoles, HoleAcrossTheRoomSplitsIt)
{
    const auto result = Subtract(GeoRoomRect(0, 0, 20, 10), GeoHoleRect(8, -5, 12, 15));
    ASSERT_EQ(result.size(), 2u) << GeoText(result);
    EXPECT_VERTICES_NEAR(result[0], (std::vector<CVxDPoint>{{0, 0}, {8, 0}, {8, 10}, {0, 10}}), 1e-12);
    EXPECT_VERTICES_NEAR(result[1], (std::vector<CVxDPoint>{{20, 0}, {20, 10}, {12, 10}, {12, 0}}), 1e-12);
}

TEST(GeometryHoles, HoleOverACornerCutsItOff)
{
    const auto result = Subtract(GeoRoomRect(0, 0, 10, 10), GeoHoleRect(6, -2, 12, 4));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_VERTICES_NEAR(result[0],
                         (std::vector<CVxDPoint>{{0, 0}, {6, 0}, {6, 4}, {10, 4}, {10, 10}, {0, 10}}), 1e-12);
    EXPECT_NEAR(result[0].GetArea(), 100 - 16, 1e-9);
}

TEST(GeometryHoles, HoleTouchingAWallAtOneVertexCountsAsCrossing)
{
    // A triangular opening whose tip touches the top wall at (5,0).
    const CVxDPolygon hole = GeoPolygon({{5, 0}, {3, 4}, {7, 4}}, 1);
    const auto result = Subtract(GeoRoomRect(0, 0, 10, 10), hole);
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_VERTICES_NEAR(
        result[0],
        (std::vector<CVxDPoint>{{0, 0}, {5, 0}, {3, 4}, {7, 4}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}), 1e-12);
    EXPECT_NEAR(result[0].GetArea(), 100 - 8, 1e-9);
}

TEST(GeometryHoles, HoleSharingAPieceOfWall)
{
    // The opening lies against the top wall from x = 3 to x = 6.
    const auto result = Subtract(GeoRoomRect(0, 0, 10, 10), GeoHoleRect(3, 0, 6, 4));
    ASSERT_FALSE(result.empty());
    EXPECT_NEAR(GeoTotalArea(result), 100 - 12, 1e-9) << GeoText(result);
    for (const CVxDPolygon& p : result)
        EXPECT_FALSE(p.PtInPolygon(CVxDPoint(4.5, 2))) << GeoText(p);
}

TEST(GeometryHoles, HoleThroughACollinearRun)
{
    // The room's top wall is drawn as two pieces meeting at (5,0).
    const CVxDPolygon room = GeoPolygon({{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}, 2);
    const auto result = Subtract(room, GeoHoleRect(3, -2, 7, 3));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_NEAR(result[0].GetArea(), 100 - 12, 1e-9);
    EXPECT_FALSE(result[0].PtInPolygon(CVxDPoint(5, 1)));
}

TEST(GeometryHoles, DegenerateInputGivesTheRoom)
{
    const CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    // Too few vertices, once duplicates are gone.
    auto result = Subtract(room, GeoPolygon({{1, 1}, {1, 1}, {2, 2}}, 1));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_VERTICES_NEAR(result[0], room.points, 0);
    result = Subtract(room, CVxDPolygon());
    ASSERT_EQ(result.size(), 1u);

    const CVxDPolygon point = GeoPolygon({{5, 5}}, 2);
    result = Subtract(point, GeoHoleRect(0, 0, 10, 10));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_VERTICES_NEAR(result[0], point.points, 0);

    // Repeated vertices in the room go before the subtraction; the original
    // comes back unchanged when nothing is cut.
    const CVxDPolygon repeated = GeoPolygon({{0, 0}, {0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 10}}, 2);
    result = Subtract(repeated, GeoHoleRect(20, 20, 30, 30));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_EQ(result[0].points.size(), 6u);
    result = Subtract(repeated, GeoHoleRect(2, 2, 4, 4));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_NEAR(result[0].GetArea(), 96, 1e-9);
}

TEST(GeometryHoles, DamagedCoordinatesAreLeftAlone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    room.points[2].x = nan;
    auto result = Subtract(room, GeoHoleRect(2, 2, 4, 4));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_EQ(result[0].points.size(), 4u);

    CVxDPolygon hole = GeoHoleRect(2, 2, 4, 4);
    hole.points[0].y = std::numeric_limits<double>::infinity();
    result = Subtract(GeoRoomRect(0, 0, 10, 10), hole);
    ASSERT_EQ(result.size(), 1u);
    EXPECT_NEAR(result[0].GetArea(), 100, 1e-9);
}

TEST(GeometryHoles, SameWindingEndsWithinTheGuard)
{
    // Both outlines wound alike break the walk's assumption; it must still
    // end, with pieces no longer than the two outlines together.
    const auto result = Subtract(GeoRoomRect(0, 0, 10, 10), GeoRoomRect(5, 2, 15, 8));
    for (const CVxDPolygon& p : result)
        EXPECT_LE(p.points.size(), 4u + 4u + 4u + 1u) << GeoText(p);
}

TEST(GeometryHoles, ListFormsAndKinds)
{
    std::vector<CVxDPolygon> list{GeoRoomRect(0, 0, 10, 10), GeoRoomRect(20, 0, 30, 10)};
    CVxDPolygon::RemoveHole(list, CVxDPolygon());
    EXPECT_EQ(list.size(), 2u);
    // A strip across both rooms.
    CVxDPolygon::RemoveHole(list, GeoHoleRect(-5, 4, 35, 6));
    EXPECT_EQ(list.size(), 4u) << GeoText(list);
    EXPECT_NEAR(GeoTotalArea(list), 200 - 40, 1e-9);

    const CVxDPolygon room = GeoRoomRect(0, 0, 10, 10);
    std::vector<CVxDPolygon> out{GeoRoomRect(1, 1, 2, 2)};
    CVxDPolygon plain = room;
    plain.kind = 0;
    EXPECT_FALSE(plain.RemoveHole(std::vector<CVxDPolygon>{GeoHoleRect(2, 2, 4, 4)}, out));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_DOUBLE_EQ(out[0].GetArea(), 1);

    // Only openings of the hole kind are taken out.
    CVxDPolygon notAHole = GeoHoleRect(6, 6, 8, 8);
    notAHole.kind = 0;
    ASSERT_TRUE(room.RemoveHole(std::vector<CVxDPolygon>{GeoHoleRect(2, 2, 4, 4), notAHole}, out));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_NEAR(out[0].GetArea(), 96, 1e-9);
    ASSERT_TRUE(room.RemoveHole(GeoHoleRect(2, 2, 4, 4), out));
    EXPECT_NEAR(GeoTotalArea(out), 96, 1e-9);
}

TEST(GeometryHoles, SeveralOpeningsInOneRoom)
{
    std::vector<CVxDPolygon> holes;
    for (int i = 0; i < 5; ++i)
        holes.push_back(GeoHoleRect(1 + 4 * i, 2, 3 + 4 * i, 5));
    std::reverse(holes.begin(), holes.end());
    std::vector<CVxDPolygon> list{GeoRoomRect(0, 0, 20, 10)};
    CVxDPolygon::RemoveHoles(list, holes);
    ASSERT_EQ(list.size(), 1u) << GeoText(list);
    EXPECT_NEAR(list[0].GetArea(), 200 - 5 * 6, 1e-9);
    for (const CVxDPolygon& h : holes)
        EXPECT_FALSE(list[0].PtInPolygon(h.GetCentroid()));
    EXPECT_TRUE(list[0].PtInPolygon(CVxDPoint(2, 8)));
}

TEST(GeometryHoles, OverlappingOpenings)
{
    // Two openings that overlap each other: the second crosses the bridged
    // outline of the first. The result must still leave their union out.
    std::vector<CVxDPolygon> list{GeoRoomRect(0, 0, 20, 20)};
    CVxDPolygon::RemoveHoles(list, {GeoHoleRect(4, 4, 10, 10), GeoHoleRect(8, 8, 14, 14)});
    EXPECT_NEAR(GeoTotalArea(list), 400 - 36 - 36 + 4, 1e-9) << GeoText(list);
}

TEST(GeometryHoles, SortOrderOfOpenings)
{
    const CVxDPolygon a = GeoPolygon({{1, 5}});
    const CVxDPolygon b = GeoPolygon({{2, 0}});
    EXPECT_TRUE(vx_sort_poly_x(a, b));
    EXPECT_FALSE(vx_sort_poly_x(b, a));
    const CVxDPolygon c = GeoPolygon({{1 + 5e-8, 6}});
    EXPECT_TRUE(vx_sort_poly_x(a, c));
    EXPECT_FALSE(vx_sort_poly_x(c, a));
    EXPECT_TRUE(vx_sort_poly_x(CVxDPolygon(), a));
    EXPECT_FALSE(vx_sort_poly_x(a, CVxDPolygon()));
}

TEST(GeometryHoles, WorkingListInsertsCrossingsInOrder)
{
    CVxPolyInfo::List list = CVxPolyInfo::Build(GeoRoomRect(0, 0, 10, 10));
    bool isNew = false;
    EXPECT_EQ(CVxPolyInfo::InsertPoint(list, 1, 0.8, CVxDPoint(10, 8), &isNew), 2);
    EXPECT_TRUE(isNew);
    EXPECT_TRUE(list[2].isOnBoundary);
    EXPECT_EQ(CVxPolyInfo::InsertPoint(list, 1, 0.2, CVxDPoint(10, 2), &isNew), 2);
    EXPECT_EQ(CVxPolyInfo::InsertPoint(list, 1, 0.8 + 1e-8, CVxDPoint(10, 8), &isNew), 3);
    EXPECT_FALSE(isNew);
    EXPECT_EQ(CVxPolyInfo::InsertPoint(list, 3, 0.5, CVxDPoint(0, 5), &isNew), 6);
    EXPECT_EQ(CVxPolyInfo::InsertPoint(list, 0, 0, CVxDPoint(0, 0), &isNew), 0);
    EXPECT_FALSE(isNew);
    EXPECT_EQ(list.size(), 7u);

    CVxPolyInfo::List other(3);
    other[0].crossIndex = 1;
    other[1].crossIndex = 4;
    CVxPolyInfo::ShiftCrossIndices(other, 2);
    EXPECT_EQ(other[0].crossIndex, 1);
    EXPECT_EQ(other[1].crossIndex, 5);
    EXPECT_EQ(other[2].crossIndex, -1);
}
