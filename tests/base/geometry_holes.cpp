// Floor openings taken out of room outlines.

#include "geometry_test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {
std::vector<CVxDPolygon> Subtract(const CVxDPolygon& room, const CVxDPolygon& hole)
{
    return CVxDPolygon::RemoveHoleNew(room, hole);
}

const CVxDPolygon kRoom = GeoRoomRect(0, 0, 10, 10);
// An L-shaped room of 8400 with its inner corner at (60,60).
const CVxDPolygon kLRoom = GeoPolygon({{0, 0}, {100, 0}, {100, 60}, {60, 60}, {60, 100}, {0, 100}}, 2);

CVxDPolygon WithWalls(CVxDPolygon p)
{
    for (size_t i = 0; i < p.points.size(); ++i)
        p.edgeWalls.push_back(static_cast<int32_t>(i));
    return p;
}
} // namespace

TEST(GeometryHoles, HoleOutsideLeavesTheRoom)
{
    const CVxDPolygon room = WithWalls(kRoom);
    const auto result = Subtract(room, GeoHoleRect(20, 20, 30, 30));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_GEO_NEAR(result[0].points, room.points, 0);
    EXPECT_EQ(result[0].edgeWalls, room.edgeWalls);
}

TEST(GeometryHoles, HoleInsideIsBridgedFromTheNearestVertex)
{
    CVxDPolygon room = WithWalls(kRoom);
    room.tag = 4;
    // (1,1) is nearest to the room's corner (0,0).
    const CVxDPolygon hole = GeoPolygon({{3, 3}, {3, 6}, {6, 6}, {6, 3}, {1, 1}}, 1);
    const auto result = Subtract(room, hole);
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_GEO_NEAR(
        result[0].points,
        (GeoPoints{
            {0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {1, 1}, {3, 3}, {3, 6}, {6, 6}, {6, 3}, {1, 1}}),
        0);
    EXPECT_EQ(result[0].edgeWalls, (std::vector<int32_t>{0, 1, 2, 3, -1, -1, -1, -1, -1, -1, -1}));
    EXPECT_EQ(result[0].kind, CVxDPolygon::KIND_ROOM);
    EXPECT_EQ(result[0].tag, 4);
    EXPECT_NEAR(result[0].GetArea(), 100 - 12, 1e-9);

    // Elsewhere the bridge starts where the nearest pair is: (10,10), (9,9).
    const auto corner = Subtract(kRoom, GeoHoleRect(7, 7, 9, 9));
    ASSERT_EQ(corner.size(), 1u);
    EXPECT_GEO_NEAR(
        corner[0].points,
        (GeoPoints{{10, 10}, {0, 10}, {0, 0}, {10, 0}, {10, 10}, {9, 9}, {9, 7}, {7, 7}, {7, 9}, {9, 9}}), 0);
}

TEST(GeometryHoles, BridgedCurvedRoomKeepsItsCurves)
{
    CVxDPolygon room = kRoom;
    room.bezierFlags = {true, false, false, false};
    room.bezierControls = {{0, -10}, {10, -10}};
    const auto result = Subtract(room, GeoHoleRect(4, 4, 6, 6));
    ASSERT_EQ(result.size(), 1u);
    // The arch first, then three walls, the bridge, the hole and the bridge
    // back, all straight.
    EXPECT_EQ(result[0].bezierFlags,
              (std::vector<bool>{true, false, false, false, false, false, false, false, false, false}));
    EXPECT_EQ(result[0].bezierControls.size(), 2u);
    EXPECT_NEAR(result[0].GetArea(), room.GetArea() - 4, 1e-9);
}

TEST(GeometryHoles, HoleCoveringTheRoomLeavesNothing)
{
    EXPECT_TRUE(Subtract(kRoom, GeoHoleRect(-5, -5, 15, 15)).empty());
    EXPECT_TRUE(Subtract(kRoom, GeoHoleRect(0, 0, 10, 10)).empty());
}

TEST(GeometryHoles, HoleAcrossAWallCutsANotch)
{
    const auto result = Subtract(WithWalls(kRoom), GeoHoleRect(5, 2, 15, 8));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_GEO_NEAR(result[0].points,
                    (GeoPoints{{0, 0}, {10, 0}, {10, 2}, {5, 2}, {5, 8}, {10, 8}, {10, 10}, {0, 10}}), 1e-12);
    // Walls stay with the room's edges, the hole's edges have none.
    ASSERT_EQ(result[0].edgeWalls.size(), 8u);
    EXPECT_EQ(result[0].edgeWalls[1], 1);
    EXPECT_EQ(result[0].edgeWalls[3], -1);
    EXPECT_EQ(result[0].edgeWalls[7], 3);
}

TEST(GeometryHoles, HoleAcrossTheRoomSplitsIt)
{
    const auto result = Subtract(GeoRoomRect(0, 0, 20, 10), GeoHoleRect(8, -5, 12, 15));
    ASSERT_EQ(result.size(), 2u) << GeoText(result);
    EXPECT_GEO_NEAR(result[0].points, (GeoPoints{{0, 0}, {8, 0}, {8, 10}, {0, 10}}), 1e-12);
    EXPECT_GEO_NEAR(result[1].points, (GeoPoints{{20, 0}, {20, 10}, {12, 10}, {12, 0}}), 1e-12);
}

TEST(GeometryHoles, HoleOverACornerCutsItOff)
{
    const auto result = Subtract(kRoom, GeoHoleRect(6, -2, 12, 4));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_GEO_NEAR(result[0].points, (GeoPoints{{0, 0}, {6, 0}, {6, 4}, {10, 4}, {10, 10}, {0, 10}}), 1e-12);
}

TEST(GeometryHoles, HoleTouchingAWallAtOneVertexCountsAsCrossing)
{
    // A triangular opening whose tip touches the top wall at (5,0).
    const auto result = Subtract(kRoom, GeoPolygon({{5, 0}, {3, 4}, {7, 4}}, 1));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_GEO_NEAR(result[0].points,
                    (GeoPoints{{0, 0}, {5, 0}, {3, 4}, {7, 4}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}), 1e-12);
}

TEST(GeometryHoles, HoleAlongAWall)
{
    // Against the top wall from x = 3 to 6, from inside.
    auto result = Subtract(kRoom, GeoHoleRect(3, 0, 6, 4));
    EXPECT_NEAR(GeoTotalArea(result), 100 - 12, 1e-9) << GeoText(result);
    // Against a wall of no thickness from the next room: nothing to take.
    result = Subtract(GeoRoomRect(0, 0, 100, 100), GeoHoleRect(100, 40, 110, 60));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_NEAR(result[0].GetArea(), 10000, 1e-9);
    // Through a wall drawn in two collinear pieces meeting at (5,0).
    const CVxDPolygon twoPieces = GeoPolygon({{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}, 2);
    result = Subtract(twoPieces, GeoHoleRect(3, -2, 7, 3));
    ASSERT_EQ(result.size(), 1u) << GeoText(result);
    EXPECT_NEAR(result[0].GetArea(), 100 - 12, 1e-9);
}

TEST(GeometryHoles, RoomCornerLevelWithAnOpeningCorner)
{
    // The ray from the room's corner (80,50) passes the opening's corner
    // (95,50); the opening reaches into the room as the quadrilateral
    // (80,25) (75,30) (75,35) (80,45) of area 62.5.
    const CVxDPolygon room =
        GeoPolygon({{80, 50}, {80, 80}, {50, 90}, {25, 75}, {15, 50}, {20, 20}, {50, 0}, {80, 20}}, 2);
    const CVxDPolygon hole =
        GeoPolygon({{95, 15}, {80, 25}, {75, 30}, {75, 35}, {80, 45}, {95, 50}, {90, 30}}, 1);
    EXPECT_NEAR(GeoTotalArea(Subtract(room, hole)), room.GetArea() - 62.5, 1e-9);
}

TEST(GeometryHoles, DegenerateInputGivesTheRoom)
{
    // Too few vertices once duplicates are gone, none, or damaged numbers.
    auto result = Subtract(kRoom, GeoPolygon({{1, 1}, {1, 1}, {2, 2}}, 1));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_GEO_NEAR(result[0].points, kRoom.points, 0);
    EXPECT_EQ(Subtract(kRoom, CVxDPolygon()).size(), 1u);
    EXPECT_EQ(Subtract(GeoPolygon({{5, 5}}, 2), GeoHoleRect(0, 0, 10, 10)).size(), 1u);
    CVxDPolygon damaged = GeoHoleRect(2, 2, 4, 4);
    damaged.points[0].y = std::numeric_limits<double>::quiet_NaN();
    result = Subtract(kRoom, damaged);
    ASSERT_EQ(result.size(), 1u);
    EXPECT_NEAR(result[0].GetArea(), 100, 1e-9);

    // Repeated vertices go before the subtraction; when nothing is cut the
    // room comes back as it was given.
    const CVxDPolygon repeated = GeoPolygon({{0, 0}, {0, 0}, {10, 0}, {10, 10}, {0, 10}}, 2);
    result = Subtract(repeated, GeoHoleRect(20, 20, 30, 30));
    ASSERT_EQ(result.size(), 1u);
    EXPECT_EQ(result[0].points.size(), 5u);
    EXPECT_NEAR(GeoTotalArea(Subtract(repeated, GeoHoleRect(2, 2, 4, 4))), 96, 1e-9);
}

TEST(GeometryHoles, SameWindingEndsWithinTheGuard)
{
    // Both outlines wound alike break the walk's assumption; it must still
    // end, with pieces no longer than the two working lists together.
    for (const CVxDPolygon& p : Subtract(kRoom, GeoRoomRect(5, 2, 15, 8)))
        EXPECT_LE(p.points.size(), 12u) << GeoText(p);
}

TEST(GeometryHoles, ListFormsAndKinds)
{
    std::vector<CVxDPolygon> list{GeoRoomRect(0, 0, 10, 10), GeoRoomRect(20, 0, 30, 10)};
    CVxDPolygon::RemoveHole(list, CVxDPolygon());
    EXPECT_EQ(list.size(), 2u);
    CVxDPolygon::RemoveHole(list, GeoHoleRect(-5, 4, 35, 6));
    EXPECT_EQ(list.size(), 4u) << GeoText(list);
    EXPECT_NEAR(GeoTotalArea(list), 200 - 40, 1e-9);

    // Only a room is cut, and only by openings.
    std::vector<CVxDPolygon> out{kRoom};
    CVxDPolygon plain = kRoom;
    plain.kind = 0;
    EXPECT_FALSE(plain.RemoveHole(GeoHoleRect(2, 2, 4, 4), out));
    EXPECT_EQ(out.size(), 1u);
    CVxDPolygon notAHole = GeoHoleRect(6, 6, 8, 8);
    notAHole.kind = 0;
    ASSERT_TRUE(kRoom.RemoveHole({GeoHoleRect(2, 2, 4, 4), notAHole}, out));
    EXPECT_NEAR(GeoTotalArea(out), 96, 1e-9);
}

TEST(GeometryHoles, SeveralOpeningsInOneRoom)
{
    std::vector<CVxDPolygon> holes;
    for (int i = 4; i >= 0; --i)
        holes.push_back(GeoHoleRect(1 + 4 * i, 2, 3 + 4 * i, 5));
    std::vector<CVxDPolygon> list{GeoRoomRect(0, 0, 20, 10)};
    CVxDPolygon::RemoveHoles(list, holes);
    ASSERT_EQ(list.size(), 1u) << GeoText(list);
    EXPECT_NEAR(list[0].GetArea(), 200 - 5 * 6, 1e-9);
    for (const CVxDPolygon& h : holes)
        EXPECT_FALSE(list[0].PtInPolygon(h.GetCentroid()));

    // Two openings that overlap: their union is taken out.
    list = {GeoRoomRect(0, 0, 20, 20)};
    CVxDPolygon::RemoveHoles(list, {GeoHoleRect(4, 4, 10, 10), GeoHoleRect(8, 8, 14, 14)});
    EXPECT_NEAR(GeoTotalArea(list), 400 - 36 - 36 + 4, 1e-9) << GeoText(list);
}

TEST(GeometryHoles, OpeningAcrossTheBridgeToAnEarlierOne)
{
    // The first opening is bridged from the corner (0,0) to (40,40); the
    // second lies across that bridge.
    std::vector<CVxDPolygon> list{GeoRoomRect(0, 0, 100, 100)};
    CVxDPolygon::RemoveHole(list, GeoHoleRect(40, 40, 60, 60));
    CVxDPolygon::RemoveHole(list, GeoHoleRect(15, 10, 25, 30));
    ASSERT_EQ(list.size(), 1u) << GeoText(list);
    EXPECT_NEAR(list[0].GetArea(), 10000 - 400 - 200, 1e-9);
    EXPECT_FALSE(list[0].PtInPolygon(CVxDPoint(20, 20)));
    EXPECT_TRUE(list[0].PtInPolygon(CVxDPoint(20, 35)));

    // In the L, the first is bridged from (60,60) to (50,50), and the
    // corner (55,55) of the second touches that bridge from one side.
    list = {kLRoom};
    CVxDPolygon::RemoveHole(list, GeoHoleRect(35, 30, 50, 50));
    CVxDPolygon::RemoveHole(list, GeoHoleRect(55, 50, 75, 55));
    EXPECT_NEAR(GeoTotalArea(list), 8400 - 300 - 100, 1e-9) << GeoText(list);
}

TEST(GeometryHoles, OpeningsInsideWaitForThoseAcrossWalls)
{
    // The first lies inside, and its bridge from (60,100) to (45,95) would
    // run through the second, which crosses the lower wall.
    std::vector<CVxDPolygon> list{kLRoom};
    CVxDPolygon::RemoveHoles(list, {GeoHoleRect(20, 90, 45, 95), GeoHoleRect(50, 90, 55, 110)});
    EXPECT_NEAR(GeoTotalArea(list), 8400 - 125 - 50, 1e-9) << GeoText(list);

    // The first's bridge would end at the inner corner (60,60), which the
    // second touches with its corner and runs along with its side.
    const std::vector<CVxDPolygon> holes{GeoHoleRect(30, 45, 55, 55), GeoHoleRect(35, 60, 60, 80)};
    list = {kLRoom};
    CVxDPolygon::RemoveHoles(list, holes);
    EXPECT_NEAR(GeoTotalArea(list), 8400 - 250 - 500, 1e-9) << GeoText(list);
    std::vector<CVxDPolygon> out;
    ASSERT_TRUE(kLRoom.RemoveHole(holes, out));
    EXPECT_NEAR(GeoTotalArea(out), 8400 - 250 - 500, 1e-9) << GeoText(out);
}

TEST(GeometryHoles, SortOrderOfOpenings)
{
    const CVxDPolygon a = GeoPolygon({{1, 5}});
    EXPECT_TRUE(vx_sort_poly_x(a, GeoPolygon({{2, 0}})));
    EXPECT_FALSE(vx_sort_poly_x(GeoPolygon({{2, 0}}), a));
    // Within EPS in x, by y.
    EXPECT_TRUE(vx_sort_poly_x(a, GeoPolygon({{1 + 5e-8, 6}})));
    EXPECT_FALSE(vx_sort_poly_x(GeoPolygon({{1 + 5e-8, 6}}), a));
}

namespace {
// Many openings inside one room take a quicker way through RemoveHoles than
// one by one; it must leave exactly what the openings taken out one by one in
// their order leave, to the last bit of every coordinate.
void ExpectSameAsOneByOne(const CVxDPolygon& room, std::vector<CVxDPolygon> holes)
{
    std::vector<CVxDPolygon> list{room};
    CVxDPolygon::RemoveHoles(list, holes);
    std::stable_sort(holes.begin(), holes.end(), vx_sort_poly_x);
    std::vector<CVxDPolygon> expected{room};
    for (const CVxDPolygon& hole : holes)
        CVxDPolygon::RemoveHole(expected, hole);
    ASSERT_EQ(list.size(), expected.size()) << GeoText(list);
    for (size_t k = 0; k < list.size(); ++k) {
        EXPECT_EQ(list[k].SaveToString(), expected[k].SaveToString());
        ASSERT_EQ(list[k].points.size(), expected[k].points.size());
        for (size_t i = 0; i < list[k].points.size(); ++i) {
            EXPECT_EQ(list[k].points[i].x, expected[k].points[i].x) << k << " " << i;
            EXPECT_EQ(list[k].points[i].y, expected[k].points[i].y) << k << " " << i;
        }
        EXPECT_EQ(list[k].edgeWalls, expected[k].edgeWalls);
        EXPECT_EQ(list[k].tag, expected[k].tag);
    }
}

// A diamond of floor opening winding round (x, y).
CVxDPolygon HoleDiamond(double x, double y, double r)
{
    return GeoPolygon({{x, y - r}, {x - r, y}, {x, y + r}, {x + r, y}}, CVxDPolygon::KIND_HOLE);
}
} // namespace

TEST(GeometryHoles, ManyOpeningsInAGrid)
{
    // Corners of neighbours level with each other and equally far apart: the
    // ray of the inside test runs along edges and through corners, and the
    // bridges are chosen among pairs at equal distances.
    const CVxDPolygon hall =
        WithWalls(GeoPolygon({{0, 0}, {1200, 0}, {1200, 800}, {700, 800}, {700, 600}, {0, 600}}, 2));
    std::vector<CVxDPolygon> holes;
    for (int i = 0; i < 50; ++i) {
        const double x = 40 + (i % 10) * 110.0;
        const double y = 50 + (i / 10) * 105.0;
        holes.push_back(GeoHoleRect(x, y, x + 40, y + 30));
    }
    ExpectSameAsOneByOne(hall, holes);

    // Slanted openings in a room with a slanted wall.
    const CVxDPolygon slanted = WithWalls(GeoPolygon({{0, 0}, {100, 0}, {130, 70}, {0, 70}}, 2));
    holes.clear();
    for (int i = 0; i < 24; ++i)
        holes.push_back(HoleDiamond(10 + (i % 8) * 12.5, 10 + (i / 8) * 20.0, i % 2 ? 4 : 10));
    ExpectSameAsOneByOne(slanted, holes);

    // Openings across the bridges of earlier ones, and openings overlapping.
    holes.clear();
    for (int i = 0; i < 12; ++i)
        holes.push_back(GeoHoleRect(5 + 7 * i, 30, 9 + 7 * i, 40));
    for (int i = 0; i < 6; ++i)
        holes.push_back(GeoHoleRect(3 + 14 * i, 20, 20 + 14 * i, 25));
    holes.push_back(GeoHoleRect(6, 32, 20, 38));
    ExpectSameAsOneByOne(slanted, holes);
}

TEST(GeometryHoles, ManyOpeningsBridgedOneToTheNext)
{
    // Each opening is bridged to the one before it, so that the outline takes
    // each in at the same place: a long chain of bridges.
    std::vector<CVxDPolygon> holes;
    for (int i = 0; i < 60; ++i)
        holes.push_back(GeoHoleRect(10 + 3 * i, 10 + 3 * i, 11 + 3 * i, 11 + 3 * i));
    ExpectSameAsOneByOne(WithWalls(GeoRoomRect(0, 0, 200, 200)), holes);
}
