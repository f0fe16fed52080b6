// Outlines: measures, containment, edges, transformations and the text form.

#include "geometry_test_util.h"

#include "CVxDPolygon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
CVxDPolygon Square()
{
    return GeoRoomRect(0, 0, 10, 10);
}

// The square with its top edge (0,0)-(10,0) curved up into an arch that
// reaches y = -7.5; exactly, the arch adds 6 * 10 = 60 to the area.
CVxDPolygon ArchedSquare()
{
    CVxDPolygon p = Square();
    p.bezierFlags = {true, false, false, false};
    p.bezierControls = {{0, -10}, {10, -10}};
    return p;
}
} // namespace

TEST(GeometryPolygon, AreaAndWinding)
{
    bool negative = true;
    EXPECT_DOUBLE_EQ(Square().GetArea(&negative), 100);
    EXPECT_FALSE(negative);

    EXPECT_DOUBLE_EQ(GeoHoleRect(0, 0, 10, 10).GetArea(&negative), 100);
    EXPECT_TRUE(negative);

    const CVxDPolygon l = GeoPolygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
    EXPECT_DOUBLE_EQ(l.GetArea(), 300);
    EXPECT_DOUBLE_EQ(GeoPolygon({{0, 0}, {6, 0}, {0, 3}}).GetArea(), 9);
}

TEST(GeometryPolygon, FewerThanThreeVerticesHaveNoArea)
{
    bool negative = true;
    EXPECT_EQ(CVxDPolygon().GetArea(&negative), 0);
    EXPECT_FALSE(negative);
    EXPECT_EQ(GeoPolygon({{0, 0}, {5, 5}}).GetArea(), 0);
    EXPECT_POINT_NEAR(GeoPolygon({{3, 3}, {5, 5}}).GetCentroid(), CVxDPoint(0, 0), 0);
    // Collinear: no area, so the zero point.
    EXPECT_POINT_NEAR(GeoPolygon({{1, 1}, {2, 2}, {3, 3}}).GetCentroid(), CVxDPoint(0, 0), 0);
}

TEST(GeometryPolygon, CurvedEdgeAreaUsesSixteenChords)
{
    const CVxDPolygon arch = ArchedSquare();
    const double area = arch.GetArea();
    // Chords lie inside the convex arch: a little less than the exact 160.
    EXPECT_LT(area, 160);
    EXPECT_NEAR(area, 160, 0.5);
    EXPECT_NEAR(area, 159.6099853515625, 1e-9);

    // Flags of the wrong length mean straight edges only.
    CVxDPolygon wrongFlags = arch;
    wrongFlags.bezierFlags = {true};
    EXPECT_DOUBLE_EQ(wrongFlags.GetArea(), 100);
}

TEST(GeometryPolygon, CentroidOfStraightOutlines)
{
    EXPECT_POINT_NEAR(Square().GetCentroid(), CVxDPoint(5, 5), 1e-12);
    EXPECT_POINT_NEAR(GeoHoleRect(0, 0, 10, 10).GetCentroid(), CVxDPoint(5, 5), 1e-12);
    // An L of a 20 x 10 and a 10 x 10 block.
    const CVxDPolygon l = GeoPolygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
    EXPECT_POINT_NEAR(l.GetCentroid(), CVxDPoint(2500.0 / 300, 2500.0 / 300), 1e-12);
    EXPECT_POINT_NEAR(GeoPolygon({{0, 0}, {6, 0}, {0, 3}}).GetCentroid(), CVxDPoint(2, 1), 1e-12);
}

TEST(GeometryPolygon, LengthsAndPerimeter)
{
    const CVxDPolygon sq = Square();
    EXPECT_DOUBLE_EQ(sq.GetSegmentLength(1), 10);
    EXPECT_DOUBLE_EQ(sq.GetSegmentLength(4), 0);
    EXPECT_DOUBLE_EQ(sq.GetSegmentLength(-1), 0);
    EXPECT_DOUBLE_EQ(sq.GetPerimeter(), 40);
    EXPECT_DOUBLE_EQ(sq.GetPerimeter(true), 30);
    // Scaled before measuring: 20 + 10 + 20 + 10.
    EXPECT_DOUBLE_EQ(sq.GetPerimeter(false, 2, 1), 60);

    const CVxDPolygon arch = ArchedSquare();
    EXPECT_NEAR(arch.GetSegmentLength(0), 19.9693126684411, 1e-9);
    EXPECT_NEAR(arch.GetPerimeter(), 30 + 19.9693126684411, 1e-9);
}

TEST(GeometryPolygon, BoundingRectSamplesCurves)
{
    EXPECT_RECT_NEAR(Square().GetBoundingRect(), CVxDRect(0, 0, 10, 10), 0);
    // The arch's top at t = 1/2; control points don't count.
    EXPECT_RECT_NEAR(ArchedSquare().GetBoundingRect(), CVxDRect(0, -7.5, 10, 10), 1e-12);
    EXPECT_RECT_NEAR(CVxDPolygon().GetBoundingRect(), CVxDRect(), 0);
}

TEST(GeometryPolygon, PointInsideOrOutside)
{
    const CVxDPolygon sq = Square();
    EXPECT_TRUE(sq.PtInPolygon(CVxDPoint(5, 5)));
    EXPECT_TRUE(sq.PtInPolygon(0.5, 9.5));
    EXPECT_FALSE(sq.PtInPolygon(CVxDPoint(15, 5)));
    EXPECT_FALSE(sq.PtInPolygon(CVxDPoint(-1, 5)));
    EXPECT_FALSE(GeoPolygon({{0, 0}, {10, 0}}).PtInPolygon(CVxDPoint(5, 0)));
    EXPECT_FALSE(CVxDPolygon().PtInPolygon(CVxDPoint(0, 0)));

    // Inside the notch of an L and in its arms.
    const CVxDPolygon l = GeoPolygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
    EXPECT_FALSE(l.PtInPolygon(CVxDPoint(15, 15)));
    EXPECT_TRUE(l.PtInPolygon(CVxDPoint(15, 5)));
    EXPECT_TRUE(l.PtInPolygon(CVxDPoint(5, 15)));

    // Within the arch above the straight square, found through its chords.
    EXPECT_TRUE(ArchedSquare().PtInPolygon(CVxDPoint(5, -5)));
    EXPECT_FALSE(ArchedSquare().PtInPolygon(CVxDPoint(1, -7)));
}

TEST(GeometryPolygon, RayThroughSharedVertexCountsOnce)
{
    // The ray from (5,5) to the right passes exactly through the tip (10,5)
    // where two edges meet.
    const CVxDPolygon wedge = GeoPolygon({{0, 0}, {10, 5}, {0, 10}});
    EXPECT_TRUE(wedge.PtInPolygon(CVxDPoint(5, 5)));
    const CVxDPolygon diamond = GeoPolygon({{5, 0}, {10, 5}, {5, 10}, {0, 5}});
    EXPECT_TRUE(diamond.PtInPolygon(CVxDPoint(2, 5)));
    EXPECT_TRUE(diamond.PtInPolygon(CVxDPoint(5, 5)));
}

TEST(GeometryPolygon, VerticesIncludedOnRequest)
{
    const CVxDPolygon sq = Square();
    EXPECT_TRUE(sq.PtIsPolygonVert(CVxDPoint(10, 10 + 5e-8)));
    EXPECT_FALSE(sq.PtIsPolygonVert(CVxDPoint(10, 9)));
    for (const CVxDPoint& corner : sq.points)
        EXPECT_TRUE(sq.PtInPolygonIncludeVert(corner)) << GeoText(corner);
    EXPECT_FALSE(sq.PtInPolygonIncludeVert(CVxDPoint(11, 11)));
}

TEST(GeometryPolygon, PointNearOutline)
{
    const CVxDPolygon sq = Square();
    int edge = 99;
    EXPECT_TRUE(sq.PtOnPolygonLine(CVxDPoint(5, 0.5), 1, &edge));
    EXPECT_EQ(edge, 0);
    EXPECT_TRUE(sq.PtOnPolygonLine(CVxDPoint(10.5, 5), 1, edge));
    EXPECT_EQ(edge, 1);
    EXPECT_FALSE(sq.PtOnPolygonLine(CVxDPoint(5, 2), 1, &edge));
    EXPECT_EQ(edge, -1);

    // Abreast of a corner only (parameter exactly 1 of edge 0): not on a line.
    EXPECT_FALSE(sq.PtOnPolygonLine(CVxDPoint(10, -0.5), 1, &edge));

    // The closing edge counts only for a closed outline.
    EXPECT_TRUE(sq.PtOnPolygonLine(CVxDPoint(0.2, 5), 1, &edge));
    EXPECT_EQ(edge, 3);
    EXPECT_FALSE(sq.PtOnPolygonLine(CVxDPoint(0.2, 5), 1, &edge, true));

    // The nearest edge wins.
    const CVxDPolygon thin = GeoRoomRect(0, 0, 10, 1);
    EXPECT_TRUE(thin.PtOnPolygonLine(CVxDPoint(5, 0.6), 1, &edge));
    EXPECT_EQ(edge, 2);
    // On a tie, the first.
    EXPECT_TRUE(thin.PtOnPolygonLine(CVxDPoint(5, 0.5), 1, &edge));
    EXPECT_EQ(edge, 0);
}

TEST(GeometryPolygon, PointNearOutlineWithFewVertices)
{
    int edge = 99;
    EXPECT_FALSE(CVxDPolygon().PtOnPolygonLine(CVxDPoint(0, 0), 1, &edge));
    EXPECT_EQ(edge, -1);
    const CVxDPolygon one = GeoPolygon({{0, 0}});
    EXPECT_TRUE(one.PtOnPolygonLine(CVxDPoint(0.5, 0), 1, &edge));
    EXPECT_EQ(edge, 0);
    // Strictly within the distance.
    EXPECT_FALSE(one.PtOnPolygonLine(CVxDPoint(0.5, 0), 0.5, &edge));
}

TEST(GeometryPolygon, PointNearCurvedEdge)
{
    const CVxDPolygon arch = ArchedSquare();
    int edge = -1;
    // On the arch's top, far from the straight chord.
    EXPECT_TRUE(arch.PtOnPolygonLine(CVxDPoint(5, -7.4), 0.2, &edge));
    EXPECT_EQ(edge, 0);
    EXPECT_FALSE(arch.PtOnPolygonLine(CVxDPoint(5, 0), 0.2, &edge));
}

TEST(GeometryPolygon, PointOnEdge)
{
    const CVxDPolygon sq = Square();
    EXPECT_POINT_NEAR(sq.GetPointOnLine(1, 0.5), CVxDPoint(10, 5), 1e-12);
    EXPECT_POINT_NEAR(sq.GetPointOnLine(3, 0.25), CVxDPoint(0, 7.5), 1e-12);
    EXPECT_POINT_NEAR(sq.GetPointOnLine(4, 0.5), CVxDPoint(0, 0), 0);
    EXPECT_POINT_NEAR(sq.GetPointOnLine(3, 0.5, true), CVxDPoint(0, 0), 0);
    EXPECT_POINT_NEAR(ArchedSquare().GetPointOnLine(0, 0.5), CVxDPoint(5, -7.5), 1e-12);
    EXPECT_POINT_NEAR(CVxDPolygon().GetPointOnLine(0, 0.5), CVxDPoint(0, 0), 0);
}

TEST(GeometryPolygon, WallOfEdge)
{
    CVxDPolygon sq = Square();
    bool noInfo = false;
    EXPECT_EQ(sq.IsEdgeOnWall(1, &noInfo), -1);
    EXPECT_TRUE(noInfo);
    sq.edgeWalls = {4, 5, (3 << 16) | 6, -1};
    EXPECT_EQ(sq.IsEdgeOnWall(2, noInfo), (3 << 16) | 6);
    EXPECT_FALSE(noInfo);
    EXPECT_EQ(sq.IsEdgeOnWall(3, &noInfo), -1);
    EXPECT_FALSE(noInfo);
    EXPECT_EQ(sq.IsEdgeOnWall(4, &noInfo), -1);
    EXPECT_TRUE(noInfo);
}

TEST(GeometryPolygon, CurveIndexAndControlPoints)
{
    CVxDPolygon p = Square();
    p.bezierFlags = {true, false, true, true};
    EXPECT_EQ(p.GetBezierSegmentIdx(0), 0);
    EXPECT_EQ(p.GetBezierSegmentIdx(1), 0);
    EXPECT_EQ(p.GetBezierSegmentIdx(2), 2);
    EXPECT_EQ(p.GetBezierSegmentIdx(3), 4);
    p.bezierFlags = {true, true};
    EXPECT_EQ(p.GetBezierSegmentIdx(1), 0);

    // Stored points for the first curved edge; the second has none stored
    // and derives them from straight neighbours.
    p.bezierFlags = {true, false, true, false};
    p.bezierControls = {{2, -3}, {8, -3}};
    CVxDPoint p1, p2, c0, c1;
    int index = 0;
    p.GetBezControlPoints(p1, p2, c0, c1, index, 0, 4, false);
    EXPECT_EQ(index, 2);
    EXPECT_POINT_NEAR(c0, CVxDPoint(2, -3), 0);
    p.GetBezControlPoints(p1, p2, c0, c1, index, 2, 4, false);
    EXPECT_EQ(index, 2);
    EXPECT_POINT_NEAR(p1, CVxDPoint(10, 10), 0);
    EXPECT_POINT_NEAR(p2, CVxDPoint(0, 10), 0);
    EXPECT_POINT_NEAR(c0, CVxDPoint(10, 15), 1e-12);
    EXPECT_POINT_NEAR(c1, CVxDPoint(0, 15), 1e-12);

    // An open line's first edge has nothing before it.
    CVxDPolygon line = GeoPolygon({{0, 0}, {10, 0}, {10, 10}});
    line.bezierFlags = {true, false};
    index = 0;
    line.GetBezControlPoints(p1, p2, c0, c1, index, 0, 3, true);
    EXPECT_POINT_NEAR(c0, CVxDPoint(0, 0), 1e-12);
    EXPECT_POINT_NEAR(c1, CVxDPoint(10, -5), 1e-12);
}

TEST(GeometryPolygon, RotateAndMirror)
{
    CVxDPolygon sq = Square();
    sq.Rotate(90, true);
    EXPECT_VERTICES_NEAR(sq, (std::vector<CVxDPoint>{{10, 0}, {10, 10}, {0, 10}, {0, 0}}), 1e-12);
    CVxDPolygon origin = Square();
    origin.bezierControls = {{5, -5}};
    origin.Rotate(90, false);
    EXPECT_VERTICES_NEAR(origin, (std::vector<CVxDPoint>{{0, 0}, {0, 10}, {-10, 10}, {-10, 0}}), 1e-12);
    EXPECT_POINT_NEAR(origin.bezierControls[0], CVxDPoint(5, 5), 1e-12);

    CVxDPolygon shifted = GeoRoomRect(2, 0, 12, 10);
    shifted.Mirror(true, true);
    EXPECT_VERTICES_NEAR(shifted, (std::vector<CVxDPoint>{{12, 0}, {2, 0}, {2, 10}, {12, 10}}), 0);
    shifted.Mirror(false, false);
    EXPECT_VERTICES_NEAR(shifted, (std::vector<CVxDPoint>{{12, 0}, {2, 0}, {2, -10}, {12, -10}}), 0);

    // Nothing to mirror: too few vertices or no extent.
    CVxDPolygon two = GeoPolygon({{1, 1}, {5, 5}});
    two.Mirror(true, false);
    EXPECT_VERTICES_NEAR(two, (std::vector<CVxDPoint>{{1, 1}, {5, 5}}), 0);
    CVxDPolygon flat = GeoPolygon({{1, 1}, {5, 1}, {9, 1}});
    flat.Mirror(true, false);
    EXPECT_VERTICES_NEAR(flat, (std::vector<CVxDPoint>{{1, 1}, {5, 1}, {9, 1}}), 0);
}

TEST(GeometryPolygon, OffsetScaleAndZero)
{
    CVxDPolygon p = ArchedSquare();
    p.Offset(1, 2);
    p.Scale(2, 1);
    EXPECT_POINT_NEAR(p.points[2], CVxDPoint(22, 12), 0);
    EXPECT_POINT_NEAR(p.bezierControls[1], CVxDPoint(22, -8), 0);
    p.kind = 2;
    p.tag = 5;
    p.Zero();
    EXPECT_TRUE(p.points.empty());
    EXPECT_TRUE(p.bezierFlags.empty());
    EXPECT_TRUE(p.bezierControls.empty());
    EXPECT_EQ(p.kind, 0);
}

TEST(GeometryPolygon, RemoveDuplicatesTakesEdgeDataAlong)
{
    CVxDPolygon p = GeoPolygon({{0, 0}, {0, 0}, {10, 0}, {10, 10}, {10, 10 + 1e-8}, {0, 10}}, 2);
    p.tag = 9;
    p.edgeWalls = {10, 11, 12, 13, 14, 15};
    p.bezierFlags = {true, false, false, true, false, true};
    p.bezierControls = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}};
    p.RemoveDuplicates();
    EXPECT_VERTICES_NEAR(p, (std::vector<CVxDPoint>{{0, 0}, {10, 0}, {10, 10 + 1e-8}, {0, 10}}), 0);
    EXPECT_EQ(p.edgeWalls, (std::vector<int32_t>{11, 12, 14, 15}));
    EXPECT_EQ(p.bezierFlags, (std::vector<bool>{false, false, false, true}));
    // The dropped curved edges 0 and 3 take their control points with them.
    ASSERT_EQ(p.bezierControls.size(), 2u);
    EXPECT_POINT_NEAR(p.bezierControls[0], CVxDPoint(5, 5), 0);
    EXPECT_EQ(p.kind, 2);
    EXPECT_EQ(p.tag, 9);

    CVxDPolygon same = GeoPolygon({{3, 3}, {3, 3}, {3, 3}});
    same.RemoveDuplicates();
    EXPECT_TRUE(same.points.empty());
}

TEST(GeometryPolygon, PushBackBezierSegment)
{
    const CVxDPolygon arch = ArchedSquare();
    CVxDPolygon p;
    p.PushBackBezierSegment(arch, 1);
    p.PushBackBezierSegment(arch, 0);
    EXPECT_EQ(p.bezierFlags, (std::vector<bool>{false, true}));
    ASSERT_EQ(p.bezierControls.size(), 2u);
    EXPECT_POINT_NEAR(p.bezierControls[1], CVxDPoint(10, -10), 0);

    CVxDPolygon straight;
    straight.PushBackBezierSegment(Square(), 0);
    EXPECT_TRUE(straight.bezierFlags.empty());
}

TEST(GeometryPolygonText, SaveStraightOutline)
{
    CVxDPolygon p = GeoPolygon({{0, 0}, {10.5, 0}, {1.23456789, -0.25}}, 1);
    EXPECT_EQ(p.SaveToString(), CVxStringW(L"3|1|0;0|10.5;0|1.234568;-0.25|"));
}

TEST(GeometryPolygonText, SaveCurvedOutline)
{
    // Control points are written from the start of their vector, two per
    // vertex, whatever the flags say.
    CVxDPolygon p = Square();
    p.bezierFlags = {false, true, false, false};
    p.bezierControls = {{12, 2}, {12, 8}};
    EXPECT_EQ(p.SaveToString(), CVxStringW(L"4|2|0;0;0;12;2;12;8|10;0;1|10;10;0|0;10;0|"));

    CVxDPolygon back;
    ASSERT_TRUE(back.LoadFromString(p.SaveToString()));
    EXPECT_EQ(back.kind, 2);
    EXPECT_VERTICES_NEAR(back, p.points, 0);
    EXPECT_EQ(back.bezierFlags, p.bezierFlags);
    ASSERT_EQ(back.bezierControls.size(), 2u);
    EXPECT_POINT_NEAR(back.bezierControls[1], CVxDPoint(12, 8), 0);
    EXPECT_DOUBLE_EQ(back.GetArea(), p.GetArea());
}

TEST(GeometryPolygonText, ControlPointsWithoutFlagsKeepTheirPlaces)
{
    CVxDPolygon p = GeoPolygon({{0, 0}, {1, 0}, {1, 1}});
    p.bezierControls = {{5, 6}, {7, 8}};
    EXPECT_EQ(p.SaveToString(), CVxStringW(L"3|0|0;0;;5;6;7;8|1;0|1;1|"));
    CVxDPolygon back;
    ASSERT_TRUE(back.LoadFromString(p.SaveToString()));
    ASSERT_EQ(back.bezierControls.size(), 2u);
    EXPECT_POINT_NEAR(back.bezierControls[0], CVxDPoint(5, 6), 0);
}

TEST(GeometryPolygonText, LoadReadsWhatIsThere)
{
    CVxDPolygon p;
    ASSERT_TRUE(p.LoadFromString(CVxStringW(L"2|0|1|2;3;1|")));
    EXPECT_VERTICES_NEAR(p, (std::vector<CVxDPoint>{{1, 0}, {2, 3}}), 0);
    EXPECT_EQ(p.bezierFlags, (std::vector<bool>{true}));

    // Flags below 1 are false; a control pair cut short is dropped.
    CVxDPolygon q;
    ASSERT_TRUE(q.LoadFromString(CVxStringA("3|1|0;0;0.5|4;0;2;1;1;2;2|0;4;1;9;9|")));
    EXPECT_EQ(q.bezierFlags, (std::vector<bool>{false, true, true}));
    ASSERT_EQ(q.bezierControls.size(), 2u);
    EXPECT_POINT_NEAR(q.bezierControls[0], CVxDPoint(1, 1), 0);

    // Reading appends.
    ASSERT_TRUE(q.LoadFromString(CVxStringW(L"1|2|7;7|")));
    EXPECT_EQ(q.points.size(), 4u);
    EXPECT_EQ(q.kind, 2);
}

TEST(GeometryPolygonText, LoadRejectsTextWithoutVertices)
{
    CVxDPolygon p;
    EXPECT_FALSE(p.LoadFromString(CVxStringW()));
    EXPECT_FALSE(p.LoadFromString(CVxStringW(L"4|0|")));
    EXPECT_FALSE(p.LoadFromString(CVxStringW(L"garbage")));
    EXPECT_FALSE(p.LoadFromString(CVxStringW(L"3|0||||")));
    EXPECT_TRUE(p.points.empty());
}

TEST(GeometryPolygonText, LoadDoesNotTrustTheCount)
{
    CVxDPolygon p;
    ASSERT_TRUE(p.LoadFromString(CVxStringW(L"2000000000|0|1;2|")));
    EXPECT_EQ(p.points.size(), 1u);
    EXPECT_LT(p.points.capacity(), 1000u);
    CVxDPolygon q;
    ASSERT_TRUE(q.LoadFromString(CVxStringW(L"-5|0|1;2|3;4|")));
    EXPECT_EQ(q.points.size(), 2u);
}

TEST(GeometryPolygonText, DamagedNumbersGiveDefinedResults)
{
    CVxDPolygon p;
    ASSERT_TRUE(p.LoadFromString(CVxStringW(L"3|0|nan;0|10;0|0;inf|")));
    ASSERT_EQ(p.points.size(), 3u);
    EXPECT_TRUE(std::isnan(p.points[0].x));
    // Measures may be NaN, but they return, and containment says no.
    (void)p.GetArea();
    (void)p.GetCentroid();
    EXPECT_FALSE(p.PtInPolygon(CVxDPoint(1, 1)));
    p.Trace();
    EXPECT_FALSE(p.ToSvg().IsEmpty());
}

TEST(GeometryPolygonText, SvgForTheLog)
{
    const CVxDPolygon p = GeoRoomRect(0, 0, 20, 10);
    EXPECT_EQ(p.ToSvg(), CVxStringA("<svg width=\"500\" height=\"1000\" viewbox=\"0.00 0.00 20.00 10.00\">"
                                    "<polygon points=\"0.00,0.00 20.00,0.00 20.00,10.00 0.00,10.00 \" "
                                    "style=\"fill:lime;fill-opacity:0.4;stroke:black\"/></svg>\n"));
}
