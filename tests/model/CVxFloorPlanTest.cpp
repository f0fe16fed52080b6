// Rooms derived from walls: the cases users meet when they draw, and the
// indexed graph and wall corners against plain scans on many random floors.

#include "CVxFloorPlan.h"
#include "CVxFloor.h"
#include "VxGeometryFunctions.h"
#include "VxModelTestUtil.h"
#include "VxNumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

int AddWall(CVxFloor& floor, double x1, double y1, double x2, double y2, double thick = 10,
            bool visible = true, bool curved = false, double h1 = 250, double h2 = 250)
{
    int index = -1;
    floor.m_walls.GetNewWall(&index)->Set(x1, y1, x2, y2, CVxWall::ALIGN_CENTER, thick, h1, h2, visible,
                                          curved);
    return index;
}

void Build(CVxFloor& floor, CVxFloorPlan& plan)
{
    floor.m_walls.RebuildWalls();
    plan.CreatePlan(floor, 1);
}

std::string Text(const std::vector<CVxDPoint>& points)
{
    std::ostringstream out;
    for (const CVxDPoint& p : points)
        out << "(" << p.x << ", " << p.y << ") ";
    return out.str();
}

std::string Boundary(const CVxFloorRegion& region)
{
    std::vector<CVxDPoint> points;
    for (const CVxPlanVertex* v : region.vertices)
        points.push_back(v->Point());
    return Text(points);
}

// The same outline up to the starting vertex, within 1e-6.
::testing::AssertionResult SameOutline(const char* actualText, const char*,
                                       const std::vector<CVxDPoint>& actual,
                                       const std::vector<CVxDPoint>& expected)
{
    const size_t n = expected.size();
    if (actual.size() == n) {
        for (size_t shift = 0; shift < n; ++shift) {
            bool same = true;
            for (size_t k = 0; k < n && same; ++k)
                same = actual[(k + shift) % n].Distance(expected[k]) < 1e-6;
            if (same)
                return ::testing::AssertionSuccess();
        }
    }
    return ::testing::AssertionFailure()
           << actualText << " is " << Text(actual) << "\n expected " << Text(expected);
}
#define EXPECT_OUTLINE(actual, ...)                                                                          \
    EXPECT_PRED_FORMAT2(SameOutline, actual, (std::vector<CVxDPoint>{__VA_ARGS__}))

TEST(CVxFloorPlanTest, RectangleGivesOneRoomAndOneOuterRegion)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    ASSERT_EQ(plan.GetOuterRegionCount(), 1);
    const CVxFloorRegion& room = plan.regions[0];
    EXPECT_FALSE(room.isOuter);
    EXPECT_POINT_NEAR(room.vertices[0]->Point(), CVxDPoint(0, 0));
    // The rectangle lies on the inside faces, the thickness outside it.
    EXPECT_OUTLINE(room.innerPolygon.points, {0, 0}, {400, 0}, {400, 300}, {0, 300});
    EXPECT_NEAR(plan.GetArea(), 120000, 1e-6);
    EXPECT_NEAR(room.GetAreaWithoutHoles(), 120000, 1e-6);
    EXPECT_EQ(room.segmentIds, (std::vector<int32_t>{0, 1, 2, 3}));
    const CVxFloorRegion& outer = plan.outerRegions[0];
    EXPECT_TRUE(outer.isOuter);
    EXPECT_OUTLINE(outer.outerPolygon.points, {-10, -10}, {410, -10}, {410, 310}, {-10, 310});
    EXPECT_NEAR(plan.GetOuterArea(), 420 * 320, 1e-6);
    // The built-up outline runs along the centre lines.
    ASSERT_EQ(outer.polygonsWithoutHoles.size(), 1u);
    EXPECT_OUTLINE(outer.polygonsWithoutHoles[0].points, {0, 0}, {400, 0}, {400, 300}, {0, 300});
    EXPECT_EQ(plan.FindRegion(CVxDPoint(100, 100)), 0);
    EXPECT_EQ(plan.FindRegion(CVxDPoint(500, 100)), -1);
}

TEST(CVxFloorPlanTest, SeparateGroupsOfWallsAreSeparateComponents)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    // A second building to the right, and an unconnected box inside the first.
    for (const auto& w : std::vector<std::array<double, 4>>{{600, 0, 800, 0},
                                                            {800, 0, 800, 200},
                                                            {800, 200, 600, 200},
                                                            {600, 200, 600, 0},
                                                            {100, 100, 200, 100},
                                                            {200, 100, 200, 200},
                                                            {200, 200, 100, 200},
                                                            {100, 200, 100, 100}})
        AddWall(floor, w[0], w[1], w[2], w[3]);
    CVxFloorPlan plan;
    Build(floor, plan);
    EXPECT_EQ(plan.componentCount, 3);
    EXPECT_EQ(plan.GetOuterRegionCount(), 3);
    ASSERT_EQ(plan.GetRegionCount(), 3);
    // The surrounding room has no hole for the box; the point in the box
    // belongs to the box, the smaller room.
    const int box = plan.FindRegion(CVxDPoint(150, 150));
    const int big = plan.FindRegion(CVxDPoint(50, 50));
    ASSERT_GE(box, 0);
    ASSERT_GE(big, 0);
    EXPECT_NE(box, big);
    EXPECT_NEAR(plan.regions[size_t(big)].GetAreaWithoutHoles(), 120000, 1e-6);
    EXPECT_NEAR(plan.regions[size_t(box)].GetAreaWithoutHoles(), 90 * 90, 1e-6);
}

TEST(CVxFloorPlanTest, CrossingWallsSplitRoomsButDanglingAndFreeWallsDont)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    AddWall(floor, 200, 0, 200, 300);
    CVxFloorPlan plan;
    Build(floor, plan);
    EXPECT_EQ(floor.m_walls.GetWallCount(), 5);
    ASSERT_EQ(plan.GetRegionCount(), 2) << Boundary(plan.regions[0]);
    EXPECT_NEAR(plan.GetArea(), 120000 - 300 * 10, 1e-6);

    // A dangling wall: one room whose boundary runs down and up the wall.
    floor.m_walls.walls.pop_back();
    const int dangling = AddWall(floor, 200, 0, 200, 150);
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    const std::vector<int32_t>& walls = plan.regions[0].walls;
    const auto at = std::find(walls.begin(), walls.end(), dangling);
    ASSERT_NE(at, walls.end());
    EXPECT_EQ(std::count(walls.begin(), walls.end(), dangling), 2);
    // The turn at the dead end starts a new straight run.
    const size_t k = size_t(at - walls.begin());
    EXPECT_NE(plan.regions[0].segmentIds[k], plan.regions[0].segmentIds[k + 1]);

    CVxFloor lone;

    lone.m_walls.RemoveAll();
    AddWall(lone, 0, 0, 300, 0);
    Build(lone, plan);
    EXPECT_EQ(plan.GetRegionCount(), 0);
    EXPECT_EQ(plan.GetOuterRegionCount(), 0);
    EXPECT_EQ(plan.edges.size(), 1u);
}

TEST(CVxFloorPlanTest, CrossingsLieOnTheHundredthGrid)
{
    CVxFloor floor;
    floor.m_walls.RemoveAll();
    AddWall(floor, 0, 2.006, 3, 2.006);
    AddWall(floor, 1.004, 0, 1.004, 4);
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.vertices.size(), 5u);
    EXPECT_EQ(plan.vertices[4]->x, 1.00);
    EXPECT_EQ(plan.vertices[4]->y, 2.01);
    EXPECT_EQ(plan.vertices[4]->degree, 4);
    EXPECT_EQ(plan.edges.size(), 4u);
    EXPECT_EQ(plan.FindVertex(1.00 + 5e-8, 2.01 - 5e-8), plan.vertices[4]);
    EXPECT_EQ(plan.FindVertex(1.00 + 2e-7, 2.01), nullptr);
}

TEST(CVxFloorPlanTest, CurvedWallGivesOneCurvedEdgeOfTheRoom)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    CVxWall& bow = floor.m_walls.walls[3];
    bow.ctrlAngle0 = 30;
    bow.ctrlAngle1 = 150;
    bow.Set(400, 0, 400, 300, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, true);
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    const CVxFloorRegion& room = plan.regions[0];
    ASSERT_EQ(room.innerPolygon.GetVertexCount(), 4);
    ASSERT_EQ(room.innerPolygon.bezierFlags.size(), 4u);
    EXPECT_EQ(std::count(room.innerPolygon.bezierFlags.begin(), room.innerPolygon.bezierFlags.end(), true),
              1);
    EXPECT_EQ(room.innerPolygon.bezierControls.size(), 2u);
    // The detailed outline follows every chord of the curve.
    EXPECT_EQ(room.polygonsWithoutHoles[0].GetVertexCount(), 3 + 16);
    EXPECT_GT(std::fabs(room.GetAreaWithoutHoles() - 120000), 1000)
        << Text(room.polygonsWithoutHoles[0].points);
}

TEST(CVxFloorPlanTest, InvisibleWallDividesWithoutThicknessAndSlopedWallsAreFiltered)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    const int divider = AddWall(floor, 200, 0, 200, 300, 10, false);
    floor.m_walls.walls[0].startHeight = 300; // a sloped wall
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 2);
    EXPECT_NEAR(plan.GetArea(), 120000, 1e-6);
    for (const CVxFloorRegion& room : plan.regions) {
        const auto at = std::find(room.walls.begin(), room.walls.end(), divider);
        ASSERT_NE(at, room.walls.end());
        EXPECT_EQ(room.innerPolygon.edgeWalls[size_t(at - room.walls.begin())], -1);
        bool differs = false;
        CVxDPolygon level;
        room.TransformToSimplePolygon(level, floor.m_walls, 250, &differs);
        EXPECT_TRUE(differs);
        EXPECT_EQ(level.GetVertexCount(), 3);
    }
}

TEST(CVxFloorPlanTest, SimpleOutlineKeepsCornersWhereAWallIsMetFromOutside)
{
    // The divider is met from the right by a wall: the left room has two
    // edges in a row on it, which is no dangling wall.
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    AddWall(floor, 200, 0, 200, 300, 10, true);
    AddWall(floor, 200, 150, 400, 150, 10, true);
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 3);
    for (const CVxFloorRegion& room : plan.regions) {
        CVxDPolygon outline;
        room.TransformToSimplePolygon(outline, floor.m_walls, -1, nullptr);
        EXPECT_EQ(outline.GetVertexCount(), static_cast<int>(room.vertices.size())) << Text(outline.points);
        const CVxDRect box = outline.GetBoundingRect();
        EXPECT_NEAR(outline.GetArea(), box.Width() * box.Height(), 1e-6) << Text(outline.points);
    }
}

TEST(CVxFloorPlanTest, FloorOpeningIsCutFromTheRoom)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    CVxHoleInFloor hole;
    hole.type = CVxHoleInFloor::TYPE_RECTANGLE;
    hole.x = 100;
    hole.y = 100;
    hole.width = 50;
    hole.height = 40;
    floor.m_walls.holes.push_back(hole);
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    EXPECT_NEAR(plan.regions[0].GetAreaWithoutHoles(), 120000 - 2000, 1e-6);
    // The floor outline itself keeps the whole room.
    EXPECT_NEAR(plan.GetArea(), 120000, 1e-6);
    plan.UpdateAllRegionPolygons(floor);
    EXPECT_NEAR(plan.regions[0].GetAreaWithoutHoles(), 120000 - 2000, 1e-6);
}

TEST(CVxFloorPlanTest, RoomKeepsItsRecordByEdgeThenByFirstVertex)
{
    CVxFloor floor;
    floor.m_walls.RemoveAll();
    floor.m_floorAppear.SetColor(0x123456);
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    CVxFloorPlan plan;
    Build(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    EXPECT_EQ(plan.regions[0].floorAppearance.GetColor(), 0x123456u);
    plan.regions[0].name = L"Kitchen";
    plan.regions[0].floorAppearance.SetColor(0xabcdef);
    plan.regions[0].roomTag = 7;
    floor.m_planDef = plan.Save();
    ASSERT_EQ(floor.m_planDef.items.size(), 2u);
    EXPECT_POINT_NEAR(floor.m_planDef.items[0].edgeTo, CVxDPoint(400, 0));

    auto roomName = [&]() {
        Build(floor, plan);
        return plan.GetRegionCount() == 1 ? plan.regions[0].name : CVxStringW(L"<no single room>");
    };
    // The far corner moves: the saved edge survives.
    floor.m_walls.walls[2].Set(0, 300, 450, 350, CVxWall::ALIGN_SIDE_B, 10, 250, 250, true, false);
    floor.m_walls.walls[3].Set(400, 0, 450, 350, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, false);
    EXPECT_EQ(roomName(), CVxStringW(L"Kitchen"));
    EXPECT_EQ(plan.regions[0].roomTag, 7);
    EXPECT_EQ(plan.regions[0].floorAppearance.GetColor(), 0xabcdefu);

    // The neighbour of the saved corner moves: the saved edge has gone, the
    // first vertex still holds.
    floor.m_walls.walls[0].Set(0, 0, 420, 0, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, false);
    floor.m_walls.walls[3].Set(420, 0, 450, 350, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, false);
    EXPECT_EQ(roomName(), CVxStringW(L"Kitchen"));

    // Walked the other way, an edge doesn't match, and a record whose first
    // vertex isn't the room's leaves the room to the floor's defaults.
    floor.m_planDef.items[0].edgeFrom = CVxDPoint(420, 0);
    floor.m_planDef.items[0].edgeTo = CVxDPoint(0, 0);
    EXPECT_EQ(roomName(), CVxStringW());
    EXPECT_EQ(plan.regions[0].floorAppearance.GetColor(), 0x123456u);
}

TEST(CVxFloorPlanTest, CommonAppearancesAndTheirChange)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    AddWall(floor, 200, 0, 200, 300);
    CVxFloorPlan plan;
    Build(floor, plan);
    CVxAppearance common;
    EXPECT_TRUE(plan.IsCommonSurfaceAppearance(common, CVxFloorRegion::SURF_FLOOR));
    const CVxAppearance old = plan.regions[1].floorAppearance;
    plan.regions[1].floorAppearance.SetColor(0x00ff00);
    EXPECT_FALSE(plan.IsCommonSurfaceAppearance(common, CVxFloorRegion::SURF_FLOOR));
    plan.ChangeSurfaceAppearace(floor, CVxAppearance(0x0000ff), old, CVxFloorRegion::SURF_FLOOR);
    EXPECT_EQ(plan.regions[0].floorAppearance.GetColor(), 0x0000ffu);
    EXPECT_EQ(plan.regions[1].floorAppearance.GetColor(), 0x00ff00u);
    CVxFloorPlan empty;
    EXPECT_FALSE(empty.IsCommonSurfaceAppearance(common, CVxFloorRegion::SURF_OUTER_WALL));
}

TEST(CVxFloorPlanTest, InnerEdgeOfWallAndSegmentUnderPointer)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    CVxFloorPlan plan;
    Build(floor, plan);
    CVxDPoint a, b;
    ASSERT_TRUE(plan.FindInnerEdgeForWall(0, CVxDPoint(390, 0), &a, &b));
    EXPECT_POINT_NEAR(a, CVxDPoint(400, 0));
    EXPECT_POINT_NEAR(b, CVxDPoint(0, 0));
    EXPECT_FALSE(plan.FindInnerEdgeForWall(9, CVxDPoint(0, 0), &a, &b));

    // The outer contour's face at x = 410 at zoom 1, offset 0.
    int region = -1;
    const int segment = plan.GetWallSegmentAtPoint(411, 150, region, 0, 0, 1.0);
    EXPECT_EQ(region, plan.GetRegionCount());
    EXPECT_GE(segment, 0);
    region = -1;
    EXPECT_EQ(plan.GetWallSegmentAtPoint(200, 150, region, 0, 0, 1.0), -1);
}

TEST(CVxFloorPlanTest, TransformsKeepThePlanValid)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    CVxFloorPlan plan;
    Build(floor, plan);
    plan.Move(10.004, 20, 0);
    EXPECT_NE(plan.FindVertex(10, 20), nullptr);
    EXPECT_EQ(plan.FindVertex(0, 0), nullptr);
    EXPECT_EQ(plan.FindRegion(CVxDPoint(405, 315)), 0);
    plan.Mirror(true, true);
    EXPECT_NE(plan.FindVertex(400, 300), nullptr);
    EXPECT_NE(plan.FindVertex(0, 0), nullptr);
    plan.Rotate(90, true);
    EXPECT_NE(plan.FindVertex(300, 400), nullptr);
    plan.Scale(2, 1, 1);
    EXPECT_NE(plan.FindVertex(600, 400), nullptr);
}

TEST(CVxFloorPlanTest, BadWallsGiveADefinedResult)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    AddWall(floor, 0, 0, 400, 0);   // duplicate
    AddWall(floor, 50, 50, 50, 50); // no length
    AddWall(floor, nan, 0, 10, 10);
    AddWall(floor, 1e300, 0, -1e300, 5);
    AddWall(floor, 0, 1e300, 5, -1e300);
    CVxFloorPlan plan;
    Build(floor, plan);
    EXPECT_GE(plan.GetRegionCount(), 1);
    EXPECT_TRUE(plan.Save().items.size() >= 1);

    // Many walls through one point: a star of rooms round the centre.
    CVxFloor star;
    star.m_walls.RemoveAll();
    const int count = 1000;
    for (int k = 0; k < count; ++k) {
        const double a = k * M_PI / count;
        AddWall(star, 500 * std::cos(a), 500 * std::sin(a), -500 * std::cos(a), -500 * std::sin(a));
    }
    star.m_walls.RebuildWalls();
    plan.CreatePlan(star, -1);
    EXPECT_EQ(plan.vertices.size(), size_t(2 * count + 1));
    EXPECT_EQ(plan.GetOuterRegionCount(), 1);
}

TEST(CVxFloorPlanTest, LatticeOfLongWallsGivesARoomPerMesh)
{
    // 150 walls across and 150 down, each the whole width: every wall is cut
    // at 148 crossings and two ends, and each mesh becomes a room.
    CVxFloor floor;
    floor.m_walls.RemoveAll();
    constexpr int n = 150;
    const double length = (n - 1) * 100.0;
    for (int k = 0; k < n; ++k) {
        AddWall(floor, 0, k * 100.0, length, k * 100.0);
        AddWall(floor, k * 100.0, 0, k * 100.0, length);
    }
    CVxFloorPlan plan;
    Build(floor, plan);
    EXPECT_EQ(plan.GetRegionCount(), (n - 1) * (n - 1));
    EXPECT_EQ(plan.GetOuterRegionCount(), 1);
    EXPECT_EQ(plan.vertices.size(), size_t{n} * n);
    EXPECT_EQ(plan.edges.size(), size_t{2} * n * (n - 1));
    EXPECT_EQ(plan.componentCount, 1);
    ASSERT_GT(plan.GetRegionCount(), 0);
    ASSERT_EQ(plan.regions[0].vertices.size(), 4u);
    EXPECT_EQ(plan.regions[0].vertices[0]->Point(), CVxDPoint(0, 0));
}

// ---- The indexed graph against a plain scan of the lists ----

struct CRefGraph
{
    struct CEdge
    {
        int from, to;
        double angle;
        int wall;
    };
    std::vector<CVxDPoint> vertices;
    std::vector<CEdge> edges;
};

CRefGraph ScanGraph(const CVxRoomWalls& walls)
{
    CRefGraph g;
    auto findVertex = [&](const CVxDPoint& p) {
        for (size_t k = 0; k < g.vertices.size(); ++k)
            if (std::fabs(g.vertices[k].x - p.x) < EPS && std::fabs(g.vertices[k].y - p.y) < EPS)
                return int(k);
        return -1;
    };
    auto addVertex = [&](const CVxDPoint& p) {
        const int found = findVertex(p);
        if (found >= 0)
            return found;
        g.vertices.push_back(p);
        return int(g.vertices.size() - 1);
    };
    auto findEdge = [&](int a, int b) {
        for (const CRefGraph::CEdge& e : g.edges)
            if ((e.from == a && e.to == b) || (e.from == b && e.to == a))
                return true;
        return false;
    };
    for (size_t i = 0; i < walls.walls.size(); ++i) {
        const CVxWall& w = walls.walls[i];
        if (!(w.length > 0))
            continue;
        const int a = addVertex(w.start), b = addVertex(w.end);
        if (a != b && !findEdge(a, b))
            g.edges.push_back({a, b, w.angle, int(i)});
    }
    const size_t n0 = g.edges.size(), maxEdges = n0 * n0 + n0 + 64;
    auto split = [&](size_t k, const CVxDPoint& p) {
        const int v = addVertex(p);
        if (v == g.edges[k].from || v == g.edges[k].to || g.edges.size() >= maxEdges)
            return;
        if (!findEdge(v, g.edges[k].to))
            g.edges.push_back({v, g.edges[k].to, g.edges[k].angle, g.edges[k].wall});
        g.edges[k].to = v;
    };
    for (size_t i = 0; i < g.edges.size(); ++i) {
        for (size_t j = i + 1; j < g.edges.size(); ++j) {
            const CVxDPoint a = g.vertices[size_t(g.edges[i].from)], b = g.vertices[size_t(g.edges[i].to)];
            const CVxDPoint c = g.vertices[size_t(g.edges[j].from)], d = g.vertices[size_t(g.edges[j].to)];
            double t, u;
            if (!DblFindInter(a, b, c, d, t, u) || !(t > -EPS && t - 1 < EPS && u > -EPS && u - 1 < EPS))
                continue;
            CVxDPoint p = a * (1 - t) + b * t;
            DblRound2(p.x);
            DblRound2(p.y);
            if (p != a && p != b)
                split(i, p);
            if (p != c && p != d)
                split(j, p);
        }
    }
    return g;
}

// Faces by plain scans: start vertices of components and of inner walks.
// Outer contours first, then rooms.
std::pair<std::vector<std::vector<int>>, std::vector<std::vector<int>>> ScanFaces(CVxFloorPlan& plan)
{
    std::unordered_map<const CVxPlanVertex*, int> index;
    for (size_t k = 0; k < plan.vertices.size(); ++k)
        index[plan.vertices[k]] = int(k);
    std::vector<std::vector<int>> faces;
    auto walk = [&](CVxPlanVertex* start, CVxPlanEdge* edge, bool outerWalk) {
        std::vector<int> face{index[start]};
        CVxDPolygon poly;
        poly.points.push_back(start->Point());
        CVxPlanVertex* reached = edge->GetNextVert(start, outerWalk);
        int counted = 1;
        if (!outerWalk && reached == start)
            return;
        for (;;) {
            face.push_back(index[reached]);
            poly.points.push_back(reached->Point());
            CVxPlanEdge* next = reached->GetNextEdge(edge, !outerWalk, true);
            if (!next)
                break;
            reached = next->GetNextVert(reached, outerWalk);
            ++counted;
            const bool wasStartEdge = outerWalk && next == start->edges[0];
            edge = next;
            if (wasStartEdge || reached == start)
                break;
        }
        if (counted > 2 && (outerWalk || poly.GetArea() > 1e-5))
            faces.push_back(face);
    };
    for (int c = 0; c < plan.componentCount; ++c) {
        CVxPlanVertex* best = nullptr;
        for (CVxPlanVertex* v : plan.vertices)
            if (v->component == c && (!best || v->y < best->y || (v->y == best->y && v->x < best->x)))
                best = v;
        if (best && !best->edges.empty())
            walk(best, best->edges[0], true);
    }
    const auto outerFaces = faces;
    faces.clear();
    for (;;) {
        CVxPlanEdge* best = nullptr;
        const CVxPlanVertex* bestVertex = nullptr;
        for (CVxPlanEdge* e : plan.edges) {
            if (e->IsUsed(nullptr, false))
                continue;
            const CVxPlanVertex* cand = e->freeSide0 ? e->from : e->to;
            if (!best || cand->y < bestVertex->y || (cand->y == bestVertex->y && cand->x < bestVertex->x)) {
                best = e;
                bestVertex = cand;
            }
        }
        if (!best)
            break;
        walk(best->freeSide0 ? best->from : best->to, best, false);
    }
    return {outerFaces, faces};
}

std::vector<std::vector<int>> Faces(const CVxFloorPlan& plan, const std::vector<CVxFloorRegion>& list)
{
    std::unordered_map<const CVxPlanVertex*, int> index;
    for (size_t k = 0; k < plan.vertices.size(); ++k)
        index[plan.vertices[k]] = int(k);
    std::vector<std::vector<int>> faces;
    for (const CVxFloorRegion& r : list) {
        faces.emplace_back();
        for (const CVxPlanVertex* v : r.vertices)
            faces.back().push_back(index[v]);
    }
    return faces;
}

// Wall corners as the plain double loop over all pairs of walls finds them.
std::vector<CVxWall> CornersByPairs(const CVxRoomWalls& walls)
{
    std::vector<CVxWall> list = walls.walls;
    for (CVxWall& wall : list)
        wall.ResetIntersections();
    for (size_t i = 0; i < list.size(); ++i)
        for (size_t j = i + 1; j < list.size(); ++j)
            list[i].CalculateIntersection(list[j], false);
    for (CVxWall& wall : list)
        wall.FinishIntersections();
    return list;
}

void ExpectSameAsScan(CVxFloor& floor, const std::string& what)
{
    SCOPED_TRACE(what);
    floor.m_walls.RebuildWalls();
    const std::vector<CVxWall> corners = CornersByPairs(floor.m_walls);
    auto sameCorners = [](const CVxWall& a, const CVxWall& b) {
        for (int k = 0; k < CVxWall::OUT_COUNT; ++k)
            if (!(a.outline[k].x == b.outline[k].x && a.outline[k].y == b.outline[k].y))
                return false;
        return true;
    };
    for (size_t w = 0; w < corners.size(); ++w) {
        const CVxWall& wall = floor.m_walls.walls[w];
        ASSERT_TRUE(sameCorners(wall, corners[w])) << "wall " << w;
        ASSERT_EQ(wall.subWalls.size(), corners[w].subWalls.size());
        for (size_t k = 0; k < wall.subWalls.size(); ++k)
            ASSERT_TRUE(sameCorners(wall.subWalls[k], corners[w].subWalls[k]))
                << "wall " << w << " chord " << k;
    }
    CVxFloorPlan plan;
    plan.CreatePlan(floor, -1);
    const CRefGraph ref = ScanGraph(floor.m_walls);
    ASSERT_EQ(plan.vertices.size(), ref.vertices.size());
    std::unordered_map<const CVxPlanVertex*, int> index;
    for (size_t k = 0; k < ref.vertices.size(); ++k) {
        index[plan.vertices[k]] = int(k);
        ASSERT_EQ(plan.vertices[k]->x, ref.vertices[k].x) << "vertex " << k;
        ASSERT_EQ(plan.vertices[k]->y, ref.vertices[k].y) << "vertex " << k;
    }
    ASSERT_EQ(plan.edges.size(), ref.edges.size());
    for (size_t k = 0; k < ref.edges.size(); ++k) {
        ASSERT_EQ(index[plan.edges[k]->from], ref.edges[k].from) << "edge " << k;
        ASSERT_EQ(index[plan.edges[k]->to], ref.edges[k].to) << "edge " << k;
        ASSERT_EQ(plan.edges[k]->wall, ref.edges[k].wall) << "edge " << k;
    }

    // The same graph walked by plain scans gives the same faces.
    CVxFloorPlan scan;
    for (const CVxDPoint& p : ref.vertices)
        scan.vertices.push_back(new CVxPlanVertex(p.x, p.y));
    for (const CRefGraph::CEdge& e : ref.edges)
        scan.edges.push_back(
            new CVxPlanEdge(scan.vertices[size_t(e.from)], scan.vertices[size_t(e.to)], e.angle, e.wall));
    for (CVxPlanEdge* e : scan.edges) {
        e->from->AddEdge(e, e->angle);
        e->to->AddEdge(e, 180 + e->angle);
    }
    scan.MarkComponents();
    const auto faces = ScanFaces(scan);
    EXPECT_EQ(Faces(plan, plan.outerRegions), faces.first);
    EXPECT_EQ(Faces(plan, plan.regions), faces.second);
}

TEST(CVxFloorPlanTest, IndexedGraphEqualsPlainScan)
{
    std::mt19937 random(20240611);
    auto uniform = [&](double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(random);
    };
    for (int round = 0; round < 12; ++round) {
        // A grid of rooms with walls in pieces, T-joints and a few curves.
        CVxFloor grid;
        grid.m_walls.RemoveAll();
        const int n = 2 + round % 5;
        for (int i = 0; i <= n; ++i) {
            AddWall(grid, 0, i * 300.0, n * 300.0, i * 300.0);
            for (int j = 0; j < n; ++j)
                AddWall(grid, i * 300.0, j * 300.0 + (i % 2) * 150, i * 300.0, (j + 1) * 300.0, 10, true,
                        (i + j + round) % 7 == 0);
        }
        ExpectSameAsScan(grid, "grid " + std::to_string(round));

        // Random segments, some on a coarse grid so that ends coincide.
        CVxFloor segments;
        segments.m_walls.RemoveAll();
        for (int k = 0; k < 40; ++k) {
            const bool coarse = k % 2 == 0;
            auto c = [&]() { return coarse ? std::round(uniform(0, 10)) * 10 : uniform(0, 100); };
            AddWall(segments, c(), c(), c(), c(), 5, k % 5 != 0);
        }
        ExpectSameAsScan(segments, "segments " + std::to_string(round));

        // Nearly coincident ends, nearly parallel and steep walls.
        CVxFloor near;
        near.m_walls.RemoveAll();
        for (int k = 0; k < 40; ++k) {
            const double x = std::round(uniform(0, 5)) * 20 + uniform(-2e-7, 2e-7);
            const double y = std::round(uniform(0, 5)) * 20 + uniform(-2e-7, 2e-7);
            const double dx = (k % 3 == 0) ? uniform(-3e-7, 3e-7) : std::round(uniform(-3, 3)) * 20;
            AddWall(near, x, y, x + dx, y + std::round(uniform(-3, 3)) * 20 + uniform(-1e-3, 1e-3));
        }
        ExpectSameAsScan(near, "near " + std::to_string(round));

        // A lattice of long walls with long diagonals and nearly parallel
        // walls across it: every wall is cut many times.
        CVxFloor lattice;
        lattice.m_walls.RemoveAll();
        const int lines = 6 + round % 10;
        const double side = (lines - 1) * 50.0;
        for (int k = 0; k < lines; ++k) {
            AddWall(lattice, 0, k * 50.0, side, k * 50.0);
            AddWall(lattice, k * 50.0, 0, k * 50.0, side, 10, true, k == round % lines);
        }
        AddWall(lattice, 0, 0, side, side);
        AddWall(lattice, side, uniform(0, 1), 0, side + uniform(-1, 0));
        AddWall(lattice, 0, 25 + uniform(-1e-3, 1e-3), side, 25 + uniform(-1e-3, 1e-3));
        AddWall(lattice, uniform(0, side), 0, uniform(0, side), side);
        ExpectSameAsScan(lattice, "lattice " + std::to_string(round));
    }
}

} // namespace
