// Outlines: measures, containment, edges, transformations and the text form.

#include "geometry_test_util.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
const CVxDPolygon kSquare = GeoRoomRect(0, 0, 10, 10);
const CVxDPolygon kL = GeoPolygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});

// The square with its top edge curved up into an arch that reaches
// y = -7.5; exactly, the arch adds 60 to the area.
CVxDPolygon ArchedSquare()
{
    CVxDPolygon p = kSquare;
    p.bezierFlags = {true, false, false, false};
    p.bezierControls = {{0, -10}, {10, -10}};
    return p;
}
} // namespace

TEST(GeometryPolygon, AreaWindingAndCentroid)
{
    bool negative = true;
    EXPECT_DOUBLE_EQ(kSquare.GetArea(&negative), 100);
    EXPECT_FALSE(negative);
    EXPECT_DOUBLE_EQ(GeoHoleRect(0, 0, 10, 10).GetArea(&negative), 100);
    EXPECT_TRUE(negative);
    EXPECT_DOUBLE_EQ(kL.GetArea(), 300);

    // A 20 x 10 and a 10 x 10 block; the winding doesn't move the centroid.
    EXPECT_GEO_NEAR(kL.GetCentroid(), CVxDPoint(2500.0 / 300, 2500.0 / 300), 1e-12);
    EXPECT_GEO_NEAR(GeoHoleRect(0, 0, 10, 10).GetCentroid(), CVxDPoint(5, 5), 1e-12);
    EXPECT_GEO_NEAR(GeoPolygon({{0, 0}, {6, 0}, {0, 3}}).GetCentroid(), CVxDPoint(2, 1), 1e-12);

    // Fewer than three vertices, or no area: 0 and the zero point.
    EXPECT_EQ(GeoPolygon({{0, 0}, {5, 5}}).GetArea(), 0);
    EXPECT_GEO_NEAR(GeoPolygon({{1, 1}, {2, 2}, {3, 3}}).GetCentroid(), CVxDPoint(0, 0), 0);
}

TEST(GeometryPolygon, CurvedEdgesAreMeasuredInSixteenChords)
{
    const CVxDPolygon arch = ArchedSquare();
    // Chords lie inside the convex arch: a little less than the exact 160.
    EXPECT_NEAR(arch.GetArea(), 159.6099853515625, 1e-9);
    EXPECT_NEAR(arch.GetSegmentLength(0), 19.9693126684411, 1e-9);
    EXPECT_NEAR(arch.GetPerimeter(), 30 + 19.9693126684411, 1e-9);
    // Points at 1/4, 1/2 and 3/4 count for the bounds, control points don't.
    EXPECT_GEO_NEAR(arch.GetBoundingRect(), CVxDRect(0, -7.5, 10, 10), 1e-12);

    // Flags of the wrong length mean straight edges only.
    CVxDPolygon wrongFlags = arch;
    wrongFlags.bezierFlags = {true};
    EXPECT_DOUBLE_EQ(wrongFlags.GetArea(), 100);
}

TEST(GeometryPolygon, Perimeter)
{
    EXPECT_DOUBLE_EQ(kSquare.GetPerimeter(), 40);
    EXPECT_DOUBLE_EQ(kSquare.GetPerimeter(true), 30);
    // Scaled before measuring: 20 + 10 + 20 + 10.
    EXPECT_DOUBLE_EQ(kSquare.GetPerimeter(false, 2, 1), 60);
    EXPECT_DOUBLE_EQ(kSquare.GetSegmentLength(4), 0);
}

TEST(GeometryPolygon, PointInside)
{
    EXPECT_TRUE(kSquare.PtInPolygon(CVxDPoint(5, 5)));
    EXPECT_FALSE(kSquare.PtInPolygon(CVxDPoint(15, 5)));
    EXPECT_FALSE(kL.PtInPolygon(CVxDPoint(15, 15)));
    EXPECT_TRUE(kL.PtInPolygon(CVxDPoint(5, 15)));
    EXPECT_FALSE(GeoPolygon({{0, 0}, {10, 0}}).PtInPolygon(CVxDPoint(5, 0)));
    // Within the arch, found through its four chords.
    EXPECT_TRUE(ArchedSquare().PtInPolygon(CVxDPoint(5, -5)));
    EXPECT_FALSE(ArchedSquare().PtInPolygon(CVxDPoint(1, -7)));
    for (const CVxDPoint& corner : kSquare.points)
        EXPECT_TRUE(kSquare.PtInPolygonIncludeVert(corner)) << GeoText(corner);
}

TEST(GeometryPolygon, RayThroughSharedVertexCountsOnce)
{
    // The ray to the right passes exactly through the tip (10,5).
    EXPECT_TRUE(GeoPolygon({{0, 0}, {10, 5}, {0, 10}}).PtInPolygon(CVxDPoint(5, 5)));
    EXPECT_TRUE(GeoPolygon({{5, 0}, {10, 5}, {5, 10}, {0, 5}}).PtInPolygon(CVxDPoint(2, 5)));
}

TEST(GeometryPolygon, RayTouchingACornerDoesNotCross)
{
    // A U-shaped room; its notch spans x 30..70, y 0..50.
    const CVxDPolygon u =
        GeoPolygon({{0, 0}, {30, 0}, {30, 50}, {70, 50}, {70, 0}, {100, 0}, {100, 100}, {0, 100}});
    // The ray from (10,50) runs along the notch's floor, which the outline
    // leaves the way it came at both corners.
    EXPECT_TRUE(u.PtInPolygon(CVxDPoint(10, 50)));
    EXPECT_FALSE(u.PtInPolygon(CVxDPoint(50, 0)));
    // The ray from (2,0) only touches the diamond's top corner.
    EXPECT_FALSE(GeoPolygon({{5, 0}, {10, 5}, {5, 10}, {0, 5}}).PtInPolygon(CVxDPoint(2, 0)));
}

TEST(GeometryPolygon, PointNearOutline)
{
    int edge = 99;
    EXPECT_TRUE(kSquare.PtOnPolygonLine(CVxDPoint(10.5, 5), 1, &edge));
    EXPECT_EQ(edge, 1);
    EXPECT_FALSE(kSquare.PtOnPolygonLine(CVxDPoint(5, 2), 1, &edge));
    EXPECT_EQ(edge, -1);
    // Abreast of a corner only (parameter exactly 1 of edge 0): not on a line.
    EXPECT_FALSE(kSquare.PtOnPolygonLine(CVxDPoint(10, -0.5), 1, &edge));
    // The closing edge counts only for a closed outline.
    EXPECT_TRUE(kSquare.PtOnPolygonLine(CVxDPoint(0.2, 5), 1, edge));
    EXPECT_EQ(edge, 3);
    EXPECT_FALSE(kSquare.PtOnPolygonLine(CVxDPoint(0.2, 5), 1, &edge, true));
    // The nearest edge wins; on a tie, the first.
    const CVxDPolygon thin = GeoRoomRect(0, 0, 10, 1);
    EXPECT_TRUE(thin.PtOnPolygonLine(CVxDPoint(5, 0.6), 1, &edge));
    EXPECT_EQ(edge, 2);
    EXPECT_TRUE(thin.PtOnPolygonLine(CVxDPoint(5, 0.5), 1, &edge));
    EXPECT_EQ(edge, 0);
    // One vertex: strictly within the distance.
    EXPECT_TRUE(GeoPolygon({{0, 0}}).PtOnPolygonLine(CVxDPoint(0.5, 0), 1, &edge));
    EXPECT_EQ(edge, 0);
    EXPECT_FALSE(GeoPolygon({{0, 0}}).PtOnPolygonLine(CVxDPoint(0.5, 0), 0.5, &edge));
    // On the arch's top, far from its chord.
    EXPECT_TRUE(ArchedSquare().PtOnPolygonLine(CVxDPoint(5, -7.4), 0.2, &edge));
    EXPECT_EQ(edge, 0);
}

TEST(GeometryPolygon, PointOnEdgeAndWallOfEdge)
{
    EXPECT_GEO_NEAR(kSquare.GetPointOnLine(3, 0.25), CVxDPoint(0, 7.5), 1e-12);
    EXPECT_GEO_NEAR(kSquare.GetPointOnLine(4, 0.5), CVxDPoint(0, 0), 0);
    EXPECT_GEO_NEAR(kSquare.GetPointOnLine(3, 0.5, true), CVxDPoint(0, 0), 0);
    EXPECT_GEO_NEAR(ArchedSquare().GetPointOnLine(0, 0.5), CVxDPoint(5, -7.5), 1e-12);

    CVxDPolygon walls = kSquare;
    bool noInfo = false;
    EXPECT_EQ(walls.IsEdgeOnWall(1, &noInfo), -1);
    EXPECT_TRUE(noInfo);
    walls.edgeWalls = {4, 5, (3 << 16) | 6, -1};
    EXPECT_EQ(walls.IsEdgeOnWall(2, noInfo), (3 << 16) | 6);
    EXPECT_FALSE(noInfo);
}

TEST(GeometryPolygon, StoredAndDerivedControlPoints)
{
    CVxDPolygon p = kSquare;
    p.bezierFlags = {true, false, true, true};
    EXPECT_EQ(p.GetBezierSegmentIdx(2), 2);
    EXPECT_EQ(p.GetBezierSegmentIdx(3), 4);
    EXPECT_EQ(p.GetBezierSegmentIdx(1), 0);

    // Stored points for the first curved edge; the second has none and
    // continues its straight neighbours.
    p.bezierFlags = {true, false, true, false};
    p.bezierControls = {{2, -3}, {8, -3}};
    CVxDPoint p1, p2, c0, c1;
    int index = 0;
    p.GetBezControlPoints(p1, p2, c0, c1, index, 0, 4);
    EXPECT_EQ(index, 2);
    EXPECT_GEO_NEAR(c0, CVxDPoint(2, -3), 0);
    p.GetBezControlPoints(p1, p2, c0, c1, index, 2, 4);
    EXPECT_EQ(index, 2);
    EXPECT_GEO_NEAR(c0, CVxDPoint(10, 15), 1e-12);
    EXPECT_GEO_NEAR(c1, CVxDPoint(0, 15), 1e-12);

    // An open line's first edge has nothing before it.
    CVxDPolygon line = GeoPolygon({{0, 0}, {10, 0}, {10, 10}});
    line.bezierFlags = {true, false};
    index = 0;
    line.GetBezControlPoints(p1, p2, c0, c1, index, 0, 3, true);
    EXPECT_GEO_NEAR(c0, CVxDPoint(0, 0), 1e-12);
    EXPECT_GEO_NEAR(c1, CVxDPoint(10, -5), 1e-12);
}

TEST(GeometryPolygon, RotateAndMirror)
{
    CVxDPolygon sq = kSquare;
    sq.Rotate(90, true);
    EXPECT_GEO_NEAR(sq.points, (GeoPoints{{10, 0}, {10, 10}, {0, 10}, {0, 0}}), 1e-12);
    CVxDPolygon origin = ArchedSquare();
    origin.Rotate(90, false);
    EXPECT_GEO_NEAR(origin.points, (GeoPoints{{0, 0}, {0, 10}, {-10, 10}, {-10, 0}}), 1e-12);
    EXPECT_GEO_NEAR(origin.bezierControls[0], CVxDPoint(10, 0), 1e-12);

    CVxDPolygon shifted = GeoRoomRect(2, 0, 12, 10);
    shifted.Mirror(true, true);
    EXPECT_GEO_NEAR(shifted.points, (GeoPoints{{12, 0}, {2, 0}, {2, 10}, {12, 10}}), 0);
    shifted.Mirror(false, false);
    EXPECT_GEO_NEAR(shifted.points, (GeoPoints{{12, 0}, {2, 0}, {2, -10}, {12, -10}}), 0);
    // Nothing to mirror without extent.
    CVxDPolygon flat = GeoPolygon({{1, 1}, {5, 1}, {9, 1}});
    flat.Mirror(true, false);
    EXPECT_GEO_NEAR(flat.points, (GeoPoints{{1, 1}, {5, 1}, {9, 1}}), 0);
}

TEST(GeometryPolygon, RemoveDuplicatesTakesEdgeDataAlong)
{
    CVxDPolygon p = GeoPolygon({{0, 0}, {0, 0}, {10, 0}, {10, 10}, {10, 10 + 1e-8}, {0, 10}}, 2);
    p.tag = 9;
    p.edgeWalls = {10, 11, 12, 13, 14, 15};
    p.bezierFlags = {true, false, false, true, false, true};
    p.bezierControls = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}};
    p.RemoveDuplicates();
    EXPECT_GEO_NEAR(p.points, (GeoPoints{{0, 0}, {10, 0}, {10, 10 + 1e-8}, {0, 10}}), 0);
    EXPECT_EQ(p.edgeWalls, (std::vector<int32_t>{11, 12, 14, 15}));
    EXPECT_EQ(p.bezierFlags, (std::vector<bool>{false, false, false, true}));
    // The dropped curved edges 0 and 3 take their control points with them.
    ASSERT_EQ(p.bezierControls.size(), 2u);
    EXPECT_GEO_NEAR(p.bezierControls[0], CVxDPoint(5, 5), 0);
    EXPECT_EQ(p.tag, 9);
}

TEST(GeometryPolygonText, SaveAndLoadBack)
{
    EXPECT_EQ(GeoPolygon({{0, 0}, {10.5, 0}, {1.23456789, -0.25}}, 1).SaveToString(),
              CVxStringW(L"3|1|0;0|10.5;0|1.234568;-0.25|"));
    // Control points are written from the start of their vector, two per
    // vertex, whatever the flags say.
    CVxDPolygon p = kSquare;
    p.bezierFlags = {false, true, false, false};
    p.bezierControls = {{12, 2}, {12, 8}};
    EXPECT_EQ(p.SaveToString(), CVxStringW(L"4|2|0;0;0;12;2;12;8|10;0;1|10;10;0|0;10;0|"));

    CVxDPolygon back;
    ASSERT_TRUE(back.LoadFromString(p.SaveToString()));
    EXPECT_EQ(back.kind, 2);
    EXPECT_GEO_NEAR(back.points, p.points, 0);
    EXPECT_EQ(back.bezierFlags, p.bezierFlags);
    ASSERT_EQ(back.bezierControls.size(), 2u);
    EXPECT_GEO_NEAR(back.bezierControls[1], CVxDPoint(12, 8), 0);

    // Without flags, control points keep their places behind an empty flag.
    CVxDPolygon noFlags = GeoPolygon({{0, 0}, {1, 0}, {1, 1}});
    noFlags.bezierControls = {{5, 6}, {7, 8}};
    EXPECT_EQ(noFlags.SaveToString(), CVxStringW(L"3|0|0;0;;5;6;7;8|1;0|1;1|"));
}

TEST(GeometryPolygonText, LoadReadsWhatIsThereAndAppends)
{
    // Flags below 1 are false; a control pair cut short is dropped.
    CVxDPolygon q;
    ASSERT_TRUE(q.LoadFromString(CVxStringA("3|1|0;0;0.5|4;0;2;1;1;2;2|0;4;1;9;9|")));
    EXPECT_EQ(q.bezierFlags, (std::vector<bool>{false, true, true}));
    ASSERT_EQ(q.bezierControls.size(), 2u);
    EXPECT_GEO_NEAR(q.bezierControls[0], CVxDPoint(1, 1), 0);
    ASSERT_TRUE(q.LoadFromString(CVxStringW(L"1|2|7|")));
    EXPECT_EQ(q.points.size(), 4u);
    EXPECT_GEO_NEAR(q.points[3], CVxDPoint(7, 0), 0);
    EXPECT_EQ(q.kind, 2);
}

TEST(GeometryPolygonText, DamagedTextGivesDefinedResults)
{
    CVxDPolygon p;
    EXPECT_FALSE(p.LoadFromString(CVxStringW()));
    EXPECT_FALSE(p.LoadFromString(CVxStringW(L"4|0|")));
    EXPECT_FALSE(p.LoadFromString(CVxStringW(L"3|0||||")));
    // The count only reserves, and never more than the text can fill.
    ASSERT_TRUE(p.LoadFromString(CVxStringW(L"2000000000|0|1;2|")));
    EXPECT_EQ(p.points.size(), 1u);
    EXPECT_LT(p.points.capacity(), 1000u);

    CVxDPolygon n;
    ASSERT_TRUE(n.LoadFromString(CVxStringW(L"3|0|nan;0|10;0|0;inf|")));
    EXPECT_TRUE(std::isnan(n.points[0].x));
    (void)n.GetArea();
    (void)n.GetCentroid();
    EXPECT_FALSE(n.PtInPolygon(CVxDPoint(1, 1)));
    n.Trace();
}

TEST(GeometryPolygonText, SvgForTheLog)
{
    EXPECT_EQ(GeoRoomRect(0, 0, 20, 10).ToSvg(),
              CVxStringA("<svg width=\"500\" height=\"1000\" viewbox=\"0.00 0.00 20.00 10.00\">"
                         "<polygon points=\"0.00,0.00 20.00,0.00 20.00,10.00 0.00,10.00 \" "
                         "style=\"fill:lime;fill-opacity:0.4;stroke:black\"/></svg>\n"));
}
