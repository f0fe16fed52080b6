// The walls of a floor: corner joints of the rebuild, the text form, floor
// openings, surfaces, searches and damaged input.

#include "CVxRoomWalls.h"
#include "CVxDecorativeMolding.h"
#include "CVxUnits.h"
#include "VxModelTestUtil.h"

#include <cmath>
#include <limits>
#include <sstream>

namespace {

// The trimmed hexagon of a wall against the expected points, printed whole
// on failure.
::testing::AssertionResult OutlineNear(const char* wallText, const char*, const CVxWall& wall,
                                       const std::vector<CVxDPoint>& expected)
{
    std::ostringstream text;
    bool ok = expected.size() == CVxWall::OUT_COUNT;
    for (int i = 0; i < CVxWall::OUT_COUNT; ++i) {
        const CVxDPoint& p = wall.outline[i];
        text << " (" << p.x << ", " << p.y << ")";
        if (ok && (std::fabs(p.x - expected[static_cast<size_t>(i)].x) > 1e-6 ||
                   std::fabs(p.y - expected[static_cast<size_t>(i)].y) > 1e-6))
            ok = false;
    }
    if (ok)
        return ::testing::AssertionSuccess();
    std::ostringstream want;
    for (const CVxDPoint& p : expected)
        want << " (" << p.x << ", " << p.y << ")";
    return ::testing::AssertionFailure()
           << wallText << " outline is" << text.str() << "\n expected" << want.str();
}
#define EXPECT_OUTLINE(wall, ...)                                                                            \
    EXPECT_PRED_FORMAT2(OutlineNear, wall, (std::vector<CVxDPoint>{__VA_ARGS__}))

class CVxRoomWallsTest : public ::testing::Test
{
protected:
    CVxWall& Add(double x1, double y1, double x2, double y2, double thickness = 10,
                 int align = CVxWall::ALIGN_CENTER, bool visible = true)
    {
        CVxWall* wall = rooms.GetNewWall();
        wall->Set(x1, y1, x2, y2, align, thickness, 250, 250, visible, false);
        return *wall;
    }
    bool Joined(int wall, int corner) const
    {
        return !std::isnan(rooms.walls[static_cast<size_t>(wall)].interParam[corner]);
    }

    CVxRoomWalls rooms;
};

TEST_F(CVxRoomWallsTest, LJointIsMitredOnBothFaces)
{
    Add(0, 0, 100, 0, 10);
    Add(100, 0, 100, 100, 20);
    rooms.RebuildWalls();
    // Inner corner where the +y face of the first meets the -x face of the
    // second, outer corner where the other two faces meet.
    EXPECT_OUTLINE(rooms.walls[0], {0, 0}, {0, 5}, {90, 5}, {100, 0}, {110, -5}, {0, -5});
    EXPECT_OUTLINE(rooms.walls[1], {100, 0}, {90, 5}, {90, 100}, {100, 100}, {110, 100}, {110, -5});
}

TEST_F(CVxRoomWallsTest, TJointTrimsNothingAndXJointMeetsInASquare)
{
    Add(0, 0, 200, 0);
    Add(100, 0, 100, 100);
    rooms.RebuildWalls();
    for (int corner = 0; corner < 4; ++corner) {
        EXPECT_FALSE(Joined(0, corner));
        EXPECT_FALSE(Joined(1, corner));
    }

    rooms.RemoveAll();
    Add(0, 100, 100, 100);
    Add(100, 100, 200, 100);
    Add(100, 0, 100, 100);
    Add(100, 100, 100, 200);
    rooms.RebuildWalls();
    EXPECT_OUTLINE(rooms.walls[0], {0, 100}, {0, 105}, {95, 105}, {100, 100}, {95, 95}, {0, 95});
    EXPECT_OUTLINE(rooms.walls[1], {100, 100}, {105, 105}, {200, 105}, {200, 100}, {200, 95}, {105, 95});
    EXPECT_OUTLINE(rooms.walls[2], {100, 0}, {95, 0}, {95, 95}, {100, 100}, {105, 95}, {105, 0});
    EXPECT_OUTLINE(rooms.walls[3], {100, 100}, {95, 105}, {95, 200}, {100, 200}, {105, 200}, {105, 105});
}

TEST_F(CVxRoomWallsTest, CollinearWallsJoinOnlyWhenEqual)
{
    Add(0, 0, 100, 0);
    Add(100, 0, 200, 0);
    rooms.RebuildWalls();
    EXPECT_TRUE(Joined(0, CVxWall::CORNER_A_END));
    EXPECT_TRUE(Joined(1, CVxWall::CORNER_B_START));
    EXPECT_OUTLINE(rooms.walls[0], {0, 0}, {0, 5}, {100, 5}, {100, 0}, {100, -5}, {0, -5});

    rooms.walls[1].thickness = 20;
    rooms.walls[1].RecalculateProperites();
    rooms.RebuildWalls();
    EXPECT_FALSE(Joined(0, CVxWall::CORNER_A_END));
    EXPECT_FALSE(Joined(1, CVxWall::CORNER_A_START));
    EXPECT_EQ(rooms.walls[0].interAngle[CVxWall::CORNER_A_END], 180);
    EXPECT_OUTLINE(rooms.walls[1], {100, 0}, {100, 10}, {200, 10}, {200, 0}, {200, -10}, {100, -10});
}

TEST_F(CVxRoomWallsTest, EachCornerIsTrimmedByTheNearestWallInAngularOrder)
{
    Add(0, 100, 100, 100);   // west
    Add(100, 100, 200, 100); // east
    Add(100, 100, 100, 200); // south
    Add(100, 100, 200, 200); // diagonal between east and south
    rooms.RebuildWalls();
    const double d = 105 + 5 * std::sqrt(2.0);
    // The diagonal, not the south wall, trims the east wall's lower face.
    EXPECT_POINT_NEAR(rooms.walls[1].outline[CVxWall::OUT_A_START], CVxDPoint(d, 105));
    EXPECT_POINT_NEAR(rooms.walls[2].outline[CVxWall::OUT_B_START], CVxDPoint(105, d));
    EXPECT_POINT_NEAR(rooms.walls[3].outline[CVxWall::OUT_A_START], CVxDPoint(105, d));
    EXPECT_POINT_NEAR(rooms.walls[3].outline[CVxWall::OUT_B_START], CVxDPoint(d, 105));
    EXPECT_POINT_NEAR(rooms.walls[0].outline[CVxWall::OUT_A_END], CVxDPoint(95, 105));
    // The upper faces of west and east continue one another without a seam.
    EXPECT_POINT_NEAR(rooms.walls[0].outline[CVxWall::OUT_B_END], CVxDPoint(100, 95));
    EXPECT_TRUE(Joined(0, CVxWall::CORNER_B_END));
}

TEST_F(CVxRoomWallsTest, InvisibleWallTrimsNothing)
{
    Add(0, 0, 100, 0);
    Add(100, 0, 100, 100, 10, CVxWall::ALIGN_CENTER, false);
    rooms.RebuildWalls();
    for (int corner = 0; corner < 4; ++corner) {
        EXPECT_FALSE(Joined(0, corner));
        EXPECT_FALSE(Joined(1, corner));
    }
    EXPECT_OUTLINE(rooms.walls[0], {0, 0}, {0, 5}, {100, 5}, {100, 0}, {100, -5}, {0, -5});
}

TEST_F(CVxRoomWallsTest, CurvedWallJoinsItsNeighboursWithItsEndChords)
{
    Add(0, 100, 0, 0);
    CVxWall& arch = Add(0, 0, 100, 0);
    arch.curved = true;
    const CVxDPoint c0(20, -60), c1(80, -60);
    arch.SetBezierControlPoints(&c0, &c1);
    Add(100, 0, 100, 100);
    rooms.RebuildWalls();
    const CVxWall& curve = rooms.walls[1];
    ASSERT_EQ(curve.subWalls.size(), 16u);
    EXPECT_TRUE(Joined(0, CVxWall::CORNER_A_START) || Joined(0, CVxWall::CORNER_B_START));
    const CVxWall& first = curve.subWalls.front();
    EXPECT_FALSE(std::isnan(first.interParam[CVxWall::CORNER_A_START]));
    EXPECT_FALSE(std::isnan(curve.subWalls.back().interParam[CVxWall::CORNER_B_END]));
}

TEST_F(CVxRoomWallsTest, BasicRectangleLiesOnTheInsideFaces)
{
    rooms.SetAsBasicRect(400, 300, 10, 250);
    rooms.RebuildWalls();
    ASSERT_EQ(rooms.GetWallCount(), 4);
    EXPECT_OUTLINE(rooms.walls[0], {0, 0}, {0, 0}, {400, 0}, {400, 0}, {410, -10}, {-10, -10});
    EXPECT_OUTLINE(rooms.walls[1], {0, 0}, {-10, -10}, {-10, 310}, {0, 300}, {0, 300}, {0, 0});
    EXPECT_OUTLINE(rooms.walls[2], {0, 300}, {-10, 310}, {410, 310}, {400, 300}, {400, 300}, {0, 300});
    EXPECT_OUTLINE(rooms.walls[3], {400, 0}, {400, 0}, {400, 300}, {400, 300}, {410, 310}, {410, -10});
    EXPECT_EQ(rooms.GetWallThickness(), 10);
    EXPECT_EQ(rooms.GetWallZHeight(), 250);
    CVxDRect dims;
    ASSERT_TRUE(rooms.GetRoomDims(dims));
    EXPECT_EQ(dims, CVxDRect(0, 0, 400, 300));
}

TEST_F(CVxRoomWallsTest, CommonValuesOfTheWalls)
{
    EXPECT_EQ(rooms.GetWallThickness(), 0);
    EXPECT_EQ(rooms.GetMaxWallZHeight(), -1);
    Add(0, 0, 100, 0, 10).fillStyle = 3;
    Add(0, 0, 0, 100, 0).fillStyle = 2;
    EXPECT_EQ(rooms.GetWallThickness(), 10);
    Add(100, 0, 100, 100, 12).fillStyle = 3;
    EXPECT_EQ(rooms.GetWallThickness(), -1);
    EXPECT_EQ(rooms.GetWallFillStyle(), 3);
    rooms.walls[0].fillStyle = 2;
    rooms.ChangeWallFillStyle(3, 99);
    EXPECT_EQ(rooms.GetWallFillStyle(), 2);
    rooms.walls[1].endHeight = 300;
    EXPECT_EQ(rooms.GetWallZHeight(), -1);
    EXPECT_EQ(rooms.GetMaxWallZHeight(), 300);
    rooms.SetWallZHeight(200);
    EXPECT_EQ(rooms.GetWallZHeight(), 200);
}

TEST_F(CVxRoomWallsTest, TextRoundTrip)
{
    Add(0, 0, 100, 0, 10).appearanceA = 0;
    CVxHoleInFloor hole;
    hole.x = 10;
    hole.y = 20;
    hole.width = 30;
    hole.height = 40;
    rooms.holes.push_back(hole);
    ASSERT_TRUE(hole.LoadFromString(L"Polygon|3|0|0;0|10;0|0;10|"));
    rooms.holes.push_back(hole);
    CVxAppearance brick(0x3050A0);
    rooms.AddFindAppearance(brick);

    CVxStringWriter writer;
    rooms.SaveToFile(&writer, "RoomWalls");
    const std::string section = VxSectionText(writer.GetString(), "RoomWalls");
    EXPECT_EQ(section.substr(0, section.find("Appear00=")),
              "Count=1\n"
              "Wall00=0|0|100|0|1|10|250|250|0|-1|0|0|1|0|0.3|0|0.3|180|0\n"
              "Hole00=Rectangle|10.000000|20.000000|30.000000|40.000000|0.000000\n"
              "Hole01=Polygon|3|0|0;0|10;0|0;10|\n");

    CVxRoomWalls back;
    ASSERT_TRUE(VxReadSection(writer.GetString(), "RoomWalls", &back));
    back.OnEndSection();
    ASSERT_EQ(back.GetWallCount(), 1);
    ASSERT_EQ(back.GetHoleCount(), 2);
    ASSERT_EQ(back.appearances.size(), 1u);
    EXPECT_EQ(back.walls[0].SaveToString(), rooms.walls[0].SaveToString());
    EXPECT_EQ(back.holes[1].SaveToString(), rooms.holes[1].SaveToString());
    EXPECT_TRUE(back.appearances[0] == brick);
}

TEST_F(CVxRoomWallsTest, ReadingKeepsAppearanceIndicesInRange)
{
    const CVxStringA text = "[RoomWalls]\r\nCount=99999999\r\nWall00=0|0|100|0|1|10|250|250|5|0\r\n"
                            "Wall01=garbage\r\nHole00=Star|1|2|3|4|5\r\nHole01=Rectangle|1|2\r\n"
                            "Appear00=|\r\n";
    CVxRoomWalls read;
    ASSERT_TRUE(VxReadSection(text, "RoomWalls", &read));
    read.OnEndSection();
    ASSERT_EQ(read.GetWallCount(), 2);
    EXPECT_EQ(read.GetHoleCount(), 0);
    EXPECT_EQ(read.walls[0].appearanceA, -1);
    EXPECT_EQ(read.walls[0].appearanceB, 0);
    read.RebuildWalls();
}

TEST_F(CVxRoomWallsTest, SurfacesAreSharedAndPruned)
{
    const CVxAppearance red(0x0000FF), green(0x00FF00), blue(0xFF0000);
    EXPECT_EQ(rooms.AddFindAppearance(red), 0);
    EXPECT_EQ(rooms.AddFindAppearance(green), 1);
    EXPECT_EQ(rooms.AddFindAppearance(blue), 2);
    EXPECT_EQ(rooms.AddFindAppearance(green), 1);
    CVxWall& wall = Add(0, 0, 100, 0);
    wall.appearanceA = 2;
    wall.appearanceB = 0;
    rooms.RemoveUnusedAppearances();
    ASSERT_EQ(rooms.appearances.size(), 2u);
    EXPECT_EQ(rooms.walls[0].appearanceA, 1);
    EXPECT_TRUE(rooms.appearances[1] == blue);
}

TEST_F(CVxRoomWallsTest, HolePolygonsWindNegatively)
{
    CVxHoleInFloor rect, ellipse, polygon;
    ASSERT_TRUE(rect.LoadFromString(L"Rectangle|0|0|100|50|30"));
    ASSERT_TRUE(ellipse.LoadFromString(L"Ellipse|0|0|100|50|0"));
    ASSERT_TRUE(polygon.LoadFromString(L"Polygon|4|0|0;0|100;0|100;100|0;100|"));
    rooms.holes = {rect, ellipse, polygon};
    std::vector<CVxDPolygon> list;
    rooms.GetHolePolygonList(list);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[1].GetVertexCount(), 128);
    EXPECT_POINT_NEAR(list[1].points[0], CVxDPoint(100, 25));
    for (const CVxDPolygon& hole : list) {
        bool negative = false;
        EXPECT_GT(hole.GetArea(&negative), 0);
        EXPECT_TRUE(negative);
        EXPECT_EQ(hole.kind, CVxDPolygon::KIND_HOLE);
    }
    EXPECT_NEAR(list[1].GetArea(), 3.14159 * 50 * 25, 10);
    // The opening itself was turned round.
    EXPECT_POINT_NEAR(rooms.holes[2].polygon.points[0], CVxDPoint(0, 100));
}

TEST_F(CVxRoomWallsTest, HoleHitTestsAndTransforms)
{
    CVxHoleInFloor hole;
    ASSERT_TRUE(hole.LoadFromString(L"Ellipse|100|100|100|50|90"));
    // Turned a quarter: 50 wide to the left of x 100, 100 down.
    EXPECT_TRUE(hole.PtInHole(150, 300, 2));
    EXPECT_FALSE(hole.PtInHole(60, 102, 1));
    rooms.holes = {hole};
    EXPECT_EQ(rooms.FindHoleFromPoint(75, 150, 1), 0);
    EXPECT_EQ(rooms.FindHoleFromPoint(125, 150, 1), -1);

    CVxHoleInFloor flat;
    ASSERT_TRUE(flat.LoadFromString(L"Rectangle|10|20|30|40|0"));
    const VxPOINT* pixels = flat.GetCachedRect(5, 5, 2);
    EXPECT_EQ(pixels[2].x, 85);
    EXPECT_EQ(pixels[2].y, 125);
    flat.Mirror(true);
    EXPECT_EQ(flat.y, -60);
    flat.Rotate(90);
    EXPECT_NEAR(flat.x, 60, 1e-9);
    EXPECT_NEAR(flat.y, 10, 1e-9);
    EXPECT_EQ(flat.rotation, 90);
    EXPECT_EQ(flat.cachedZoom, 0);
}

TEST_F(CVxRoomWallsTest, NearestWallAndWallUnderCursor)
{
    Add(0, 0, 100, 0);
    Add(100, 0, 100, 100);
    rooms.RebuildWalls();
    double t = -1;
    EXPECT_EQ(rooms.GetNearestWall(50, 30, &t, 0), 0);
    EXPECT_NEAR(t, 0.5, EPS);
    EXPECT_EQ(rooms.GetNearestWall(80, 60, &t, 0), 1);
    // In the corner both faces are 5 away: the preferred direction decides.
    EXPECT_EQ(rooms.GetNearestWall(90, 10, &t, 90), 1);
    EXPECT_EQ(rooms.GetNearestWall(90, 10, &t, 0), 0);
    EXPECT_EQ(rooms.GetWallUnderCursor(100, 4, 2), 0);
    EXPECT_EQ(rooms.GetWallUnderCursor(200, 100, 2), 1);
    EXPECT_FALSE(rooms.IsMouseOverWalls(100, 100, 1));
    CVxRoomWalls none;
    EXPECT_EQ(none.GetNearestWall(0, 0, &t, 0), -1);
}

TEST_F(CVxRoomWallsTest, SplitKeepsTheWallInPlace)
{
    CVxWall& wall = Add(100, 0, 0, 0);
    wall.startHeight = 100;
    wall.endHeight = 200;
    rooms.SplitWallAtPoint(0, 0.25, nullptr);
    ASSERT_EQ(rooms.GetWallCount(), 2);
    EXPECT_POINT_NEAR(rooms.walls[0].end, CVxDPoint(25, 0));
    EXPECT_NEAR(rooms.walls[0].endHeight, 125, EPS);
    EXPECT_POINT_NEAR(rooms.walls[1].start, CVxDPoint(25, 0));
    EXPECT_POINT_NEAR(rooms.walls[1].end, CVxDPoint(100, 0));

    CVxWall& arch = Add(0, 50, 100, 50);
    arch.curved = true;
    const CVxDPoint c0(0, 0), c1(100, 0);
    arch.SetBezierControlPoints(&c0, &c1);
    const CVxDPoint middle = arch.GetPointOnLine(0.5);
    rooms.SplitWallAtPoint(2, 0.5, nullptr);
    ASSERT_EQ(rooms.GetWallCount(), 4);
    EXPECT_POINT_NEAR(rooms.walls[2].end, middle);
    // The halves follow the old curve.
    const CVxWall old = [&] {
        CVxWall w;
        w.Set(0, 50, 100, 50, CVxWall::ALIGN_CENTER, 10, 250, 250, true, true);
        w.SetBezierControlPoints(&c0, &c1);
        return w;
    }();
    EXPECT_POINT_NEAR(rooms.walls[3].GetPointOnLine(0.5), old.GetPointOnLine(0.75));
}

TEST_F(CVxRoomWallsTest, SnapSegmentsOfWallsInNoRoom)
{
    Add(0, 500, 50, 500);
    Add(0, 0, 100, 0);
    Add(100, 0, 200, 0);
    Add(200, 0, 200, 100);
    Add(300, 0, 200, 0);
    Add(400, 0, 300, 0, 20);
    rooms.walls[0].snapSegment = 77;
    rooms.ResetSnapSegments(nullptr);
    // One straight run of equal walls is one key, whichever way each was drawn.
    EXPECT_EQ(rooms.walls[1].snapSegment, 1u);
    EXPECT_EQ(rooms.walls[2].snapSegment, 1u);
    EXPECT_EQ(rooms.walls[4].snapSegment, 1u);
    EXPECT_EQ(rooms.walls[3].snapSegment, 3u);
    EXPECT_EQ(rooms.walls[5].snapSegment, 5u);
    EXPECT_EQ(rooms.walls[0].snapSegment, 0u);
}

TEST_F(CVxRoomWallsTest, DamagedWallsGiveADefinedRebuild)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Add(0, 0, 0, 0);
    Add(0, 0, 100, 0);
    Add(0, 0, 100, 0);
    Add(nan, 0, 100, nan);
    Add(-1e300, 1e300, 0, 0);
    for (int i = 0; i < 2000; ++i) {
        const double a = i * 0.18;
        Add(0, 0, 1000 * std::cos(a), 1000 * std::sin(a), i % 7);
    }
    rooms.RebuildWalls();
    std::vector<CVxDPolygon> none;
    rooms.GetHolePolygonList(none);
    EXPECT_TRUE(none.empty());
    for (const CVxWall& wall : rooms.walls)
        for (double p : wall.interParam)
            EXPECT_FALSE(std::isinf(p));
}

TEST(CVxDecorativeMolding, DefaultSizesAndText)
{
    CVxDecorativeMolding skirting;
    skirting.SetDefaultSizeForUnit(CVxUnits::UNIT_INCH);
    EXPECT_EQ(skirting.height, 2.0);
    skirting.SetDefaultSizeForUnit(CVxUnits::UNIT_MM);
    EXPECT_NEAR(skirting.height, 50, 1e-9);
    EXPECT_NEAR(skirting.thickness, 20, 1e-9);
    skirting.enabled = true;
    skirting.Scale(0.333, 1, 0.5);
    EXPECT_EQ(skirting.SaveToString(), CVxStringW(L"1|25|6.66"));
    CVxDecorativeMolding back;
    EXPECT_TRUE(back.LoadFromString(L"1|25|6.66"));
    EXPECT_TRUE(back == skirting);
    EXPECT_TRUE(back.LoadFromString(L"0|x"));
    EXPECT_FALSE(back.enabled);
    EXPECT_EQ(back.height, 25);
    EXPECT_FALSE(back.LoadFromString(L""));
}

} // namespace
