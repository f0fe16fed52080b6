// Value types of plan geometry: device and plan points and rectangles, the
// sloped faces of walls, and angles.

#include "geometry_test_util.h"

#include "CVx3DPoint.h"
#include "VxAngle.h"
#include "VxIntGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(GeometryIntRect, OverlapIsStrictInsideIsInclusive)
{
    EXPECT_DOUBLE_EQ(VxPointDistance(VxPOINT{0, 0}, VxPOINT{3, 4}), 5.0);
    VxRECT both;
    EXPECT_TRUE(VxIntersectRect(both, VxRectMake(0, 0, 10, 10), VxRectMake(5, 5, 15, 15)));
    EXPECT_EQ(both.left, 5);
    EXPECT_FALSE(VxIntersectRect(both, VxRectMake(0, 0, 10, 10), VxRectMake(10, 0, 20, 10)));
    EXPECT_TRUE(VxPtInRect(VxRectMake(0, 0, 10, 10), VxPOINT{10, 10}));
    EXPECT_FALSE(VxPtInRect(VxRectMake(0, 0, 10, 10), VxPOINT{11, 5}));
}

TEST(GeometryPoint, EqualityHasToleranceRectangleEqualityNot)
{
    EXPECT_TRUE(CVxDPoint(1, 1) == CVxDPoint(1 + 5e-8, 1 - 5e-8));
    EXPECT_TRUE(CVxDPoint(1, 1) != CVxDPoint(1 + 2e-7, 1));
    EXPECT_TRUE(CVxDPoint(3e-8, -3e-8).IsZero());
    EXPECT_TRUE(CVxDRect(0, 0, 1, 1) != CVxDRect(0, 0, 1, 1 + 1e-12));
}

TEST(GeometryPoint, NormalizeRotateAndProducts)
{
    CVxDPoint p(3, 4);
    p.Normalize();
    EXPECT_GEO_NEAR(p, CVxDPoint(0.6, 0.8), 1e-12);
    CVxDPoint tiny(1e-6, 0);
    tiny.Normalize();
    EXPECT_GEO_NEAR(tiny, CVxDPoint(1e-6, 0), 0);

    // Positive angles turn +x towards +y, down the screen.
    CVxDPoint r(1, 0);
    r.Rotate(90);
    EXPECT_GEO_NEAR(r, CVxDPoint(0, 1), 1e-12);
    EXPECT_DOUBLE_EQ(CVxDPoint(3, 4).CrossProduct(CVxDPoint(2, -1)), -11);
    EXPECT_DOUBLE_EQ(CVxDPoint(3, 4).DotProduct(CVxDPoint(2, -1)), 2);
}

TEST(GeometryPoint, AngleIsClockwiseFromUp)
{
    EXPECT_NEAR(CVxDPoint(0, -1).Angle(), 0, 1e-12);
    EXPECT_NEAR(CVxDPoint(1, 0).Angle(), 90, 1e-12);
    EXPECT_NEAR(CVxDPoint(0, 1).Angle(), 180, 1e-12);
    EXPECT_NEAR(CVxDPoint(-1, 0).Angle(), 270, 1e-12);
    EXPECT_NEAR(CVxDPoint(2, -2).Angle(), 45, 1e-12);
    EXPECT_NEAR(CVxDPoint(-1, 1).Angle(), 225, 1e-12);
    EXPECT_EQ(CVxDPoint(0, 0).Angle(), 0);
    // Rotating by a turns the direction's angle by a.
    CVxDPoint wall(1, -2);
    const double before = wall.Angle();
    wall.Rotate(30);
    EXPECT_NEAR(wall.Angle(), before + 30, 1e-9);
}

TEST(GeometryPoint, PixelsRoundHalfAwayFromZero)
{
    // The pixels live in the value: the pointer is good while the value is.
    const CVxDPoint p(1.5, -1.5);
    const VxPOINT* a = p;
    EXPECT_EQ(a->x, 2);
    EXPECT_EQ(a->y, -2);
    const CVxDPoint damaged(1e300, std::numeric_limits<double>::quiet_NaN());
    const VxPOINT* b = damaged;
    EXPECT_EQ(b->x, std::numeric_limits<int32_t>::max());
    EXPECT_EQ(b->y, 0);
    const CVxDRect device(0.5, -0.5, 2.49, 3.5);
    const VxRECT* pixels = device;
    EXPECT_EQ(pixels->left, 1);
    EXPECT_EQ(pixels->top, -1);
    EXPECT_EQ(pixels->right, 2);
    EXPECT_EQ(pixels->bottom, 4);
}

TEST(GeometryAngle, NormalisationKeepsReservedMarks)
{
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-90), 270);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(720), 0);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-360.5), 359.5);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-19181.0), -19181.0);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-19182.0), -19182.0);
    // A tiny negative angle may not come out as 360.
    EXPECT_LT(VX_NormalizeAngle(-1e-20), 360);
    // Far-off angles from a damaged file end without a long loop.
    const double far = VX_NormalizeAngle(1e300);
    EXPECT_TRUE(far >= 0 && far < 360);
    EXPECT_TRUE(std::isinf(VX_NormalizeAngle(std::numeric_limits<double>::infinity())));
}

TEST(Geometry3DPoint, AssignmentFromPlanPointKeepsHeight)
{
    CVx3DPoint p(1, 2, 3);
    p = CVxDPoint(7, 8);
    EXPECT_DOUBLE_EQ(p.x, 7);
    EXPECT_DOUBLE_EQ(p.z, 3);
    const CVx3DPoint s = (p + CVx3DPoint(1, 1, 1)) * 2;
    EXPECT_DOUBLE_EQ(s.z, 8);
}

TEST(GeometryRect, OverlapZeroAndInside)
{
    CVxDRect r(0, 0, 10, 10);
    EXPECT_TRUE(r.IntersectRect(CVxDRect(5, 5, 15, 15)));
    EXPECT_GEO_NEAR(r, CVxDRect(5, 5, 10, 10), 0);
    CVxDRect touching(0, 0, 10, 10);
    EXPECT_FALSE(touching.IntersectRect(CVxDRect(10, 0, 20, 10)));
    CVxDRect u(0, 0, 1, 1);
    u.UnionRect(CVxDPoint(4, -2));
    EXPECT_GEO_NEAR(u, CVxDRect(0, -2, 4, 1), 0);

    EXPECT_TRUE(CVxDRect(-1, -1, -1, -1).IsZero());
    EXPECT_TRUE(CVxDRect(0, 0, 5, 5e-8).IsRectEmpty());
    EXPECT_DOUBLE_EQ(CVxDRect(0, 0, 4, 8).Aspect(), 0.5);
    EXPECT_DOUBLE_EQ(CVxDRect(0, 0, 0, 5).Aspect(), 1.0);

    // The test normalises the rectangle in place and includes its sides.
    CVxDRect reversed(10, 10, 0, 0);
    EXPECT_TRUE(reversed.PtInRect(CVxDPoint(10, 0)));
    EXPECT_GEO_NEAR(reversed, CVxDRect(0, 0, 10, 10), 0);
    EXPECT_FALSE(reversed.PtInRect(10.001, 5));
}

TEST(GeometryTriRect, MeasuresAndOverlap)
{
    const CVxDTriRect face(0, 0, 10, 10, 20, 7);
    EXPECT_DOUBLE_EQ(face.Height(), 20);
    EXPECT_GEO_NEAR(face.Bounds(), CVxDRect(0, 0, 10, 20), 0);
    EXPECT_TRUE(CVxDTriRect(0, 0, 10, 0, 0).IsEmpty());
    EXPECT_FALSE(CVxDTriRect(0, 0, 10, 0, 5).IsEmpty());

    CVxDTriRect cut = face;
    EXPECT_TRUE(cut.IntersectRect(CVxDRect(2, -5, 8, 12)));
    EXPECT_GEO_NEAR(cut, CVxDTriRect(2, 0, 8, 10, 12, 7), 0);
    CVxDTriRect below = face;
    EXPECT_FALSE(below.IntersectRect(CVxDRect(0, 25, 10, 30)));
}

TEST(GeometryTriRect, XSplitInterpolatesTheSlope)
{
    CVxDTriRect l, m, r;
    CVxDTriRect(0, 0, 10, 10, 20, 5).XSplit(2, 6, l, m, r);
    EXPECT_GEO_NEAR(l, CVxDTriRect(0, 0, 2, 10, 12, 5), 1e-12);
    EXPECT_GEO_NEAR(m, CVxDTriRect(2, 0, 6, 12, 16, 5), 1e-12);
    EXPECT_GEO_NEAR(r, CVxDTriRect(6, 0, 10, 16, 20, 5), 1e-12);
    CVxDTriRect(4, 0, 4, 1, 2, 5).XSplit(2, 6, l, m, r);
    EXPECT_GEO_NEAR(m, CVxDTriRect(), 0);
}

TEST(GeometryTriRect, YExcludeFlatOrBelowTheBand)
{
    CVxDTriRect a, m, b;
    CVxDTriRect(0, 0, 10, 10, 10, 3).YExclude(3, 6, a, m, b);
    EXPECT_GEO_NEAR(a, CVxDTriRect(0, 0, 10, 3, 3, 3), 0);
    EXPECT_GEO_NEAR(m, CVxDTriRect(), 0);
    EXPECT_GEO_NEAR(b, CVxDTriRect(0, 6, 10, 10, 10, 3), 0);

    CVxDTriRect(0, 0, 10, 10, 20).YExclude(3, 6, a, m, b);
    EXPECT_GEO_NEAR(a, CVxDTriRect(0, 0, 10, 3, 3), 0);
    EXPECT_GEO_NEAR(b, CVxDTriRect(0, 6, 10, 10, 20), 0);

    // The slope stays above the band: nothing is cut.
    CVxDTriRect(0, 0, 10, 2, 4, 9).YExclude(5, 8, a, m, b);
    EXPECT_GEO_NEAR(a, CVxDTriRect(0, 0, 10, 2, 4, 9), 0);
    EXPECT_GEO_NEAR(b, CVxDTriRect(), 0);
}

TEST(GeometryTriRect, YExcludeBandCrossingTheSlope)
{
    // The slope falls from 10 to 20; y1 = 15 and y2 = 18 meet it at x = 5
    // and x = 8.
    CVxDTriRect a, m, b;
    CVxDTriRect(0, 0, 10, 10, 20).YExclude(15, 18, a, m, b);
    EXPECT_GEO_NEAR(a, CVxDTriRect(0, 0, 5, 10, 15), 1e-12);
    EXPECT_GEO_NEAR(m, CVxDTriRect(5, 0, 10, 15, 15), 1e-12);
    EXPECT_GEO_NEAR(b, CVxDTriRect(8, 18, 10, 18, 20), 1e-12);
    // Mirrored: at x = 5 and x = 2.
    CVxDTriRect(0, 0, 10, 20, 10).YExclude(15, 18, a, m, b);
    EXPECT_GEO_NEAR(a, CVxDTriRect(0, 0, 5, 15, 15), 1e-12);
    EXPECT_GEO_NEAR(m, CVxDTriRect(5, 0, 10, 15, 10), 1e-12);
    EXPECT_GEO_NEAR(b, CVxDTriRect(0, 18, 2, 20, 18), 1e-12);
}
