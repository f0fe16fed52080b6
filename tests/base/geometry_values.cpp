// Value types of plan geometry: device points and rectangles, plan points,
// rectangles, sloped wall faces, and angles.

#include "geometry_test_util.h"

#include "CVx3DPoint.h"
#include "CVxDRect.h"
#include "CVxDTriRect.h"
#include "VxAngle.h"
#include "VxEps.h"
#include "VxIntGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(GeometryIntRect, DistanceAndRectangleOperations)
{
    EXPECT_DOUBLE_EQ(VxPointDistance(VxPOINT{0, 0}, VxPOINT{3, 4}), 5.0);
    EXPECT_DOUBLE_EQ(VxPointDistance(VxPOINT{-2, 7}, VxPOINT{-2, 7}), 0.0);

    VxRECT r = VxRectMake(0, 0, 10, 20);
    VxInflateRect(r, 2, 3);
    EXPECT_EQ(r.left, -2);
    EXPECT_EQ(r.top, -3);
    EXPECT_EQ(r.right, 12);
    EXPECT_EQ(r.bottom, 23);
    VxOffsetRect(r, 2, 3);
    EXPECT_EQ(r.left, 0);
    EXPECT_EQ(r.bottom, 26);

    VxRECT both;
    EXPECT_TRUE(VxIntersectRect(both, VxRectMake(0, 0, 10, 10), VxRectMake(5, 5, 15, 15)));
    EXPECT_EQ(both.left, 5);
    EXPECT_EQ(both.right, 10);
    // Rectangles that only share a side have no area in common.
    EXPECT_FALSE(VxIntersectRect(both, VxRectMake(0, 0, 10, 10), VxRectMake(10, 0, 20, 10)));

    VxUnionRect(both, VxRectMake(0, 0, 1, 1), VxRectMake(5, -5, 6, 2));
    EXPECT_EQ(both.top, -5);
    EXPECT_EQ(both.right, 6);

    VxRECT reversed = VxRectMake(10, 8, 2, 1);
    VxNormalizeRect(reversed);
    EXPECT_EQ(reversed.left, 2);
    EXPECT_EQ(reversed.top, 1);
    EXPECT_EQ(reversed.right, 10);
    EXPECT_EQ(reversed.bottom, 8);

    // Inclusive on every side, although right and bottom are exclusive
    // elsewhere.
    EXPECT_TRUE(VxPtInRect(VxRectMake(0, 0, 10, 10), VxPOINT{10, 10}));
    EXPECT_TRUE(VxPtInRect(VxRectMake(0, 0, 10, 10), VxPOINT{0, 5}));
    EXPECT_FALSE(VxPtInRect(VxRectMake(0, 0, 10, 10), VxPOINT{11, 5}));
}

TEST(GeometryPoint, EqualityHasTolerance)
{
    EXPECT_TRUE(CVxDPoint(1, 1) == CVxDPoint(1 + 5e-8, 1 - 5e-8));
    EXPECT_TRUE(CVxDPoint(1, 1) != CVxDPoint(1 + 2e-7, 1));
    EXPECT_TRUE(CVxDPoint(3e-8, -3e-8).IsZero());
    EXPECT_FALSE(CVxDPoint(0, 2e-7).IsZero());
}

TEST(GeometryPoint, ArithmeticAndProducts)
{
    CVxDPoint p(3, 4);
    EXPECT_POINT_NEAR(p + CVxDPoint(1, 1), CVxDPoint(4, 5), 0);
    EXPECT_POINT_NEAR(p - CVxDPoint(1, 1), CVxDPoint(2, 3), 0);
    EXPECT_POINT_NEAR(p * 2, CVxDPoint(6, 8), 0);
    EXPECT_POINT_NEAR(p / 2, CVxDPoint(1.5, 2), 0);
    EXPECT_POINT_NEAR(-p, CVxDPoint(-3, -4), 0);
    p += CVxDPoint(1, 0);
    p -= CVxDPoint(0, 1);
    p *= 3;
    p /= 4;
    EXPECT_POINT_NEAR(p, CVxDPoint(3, 2.25), 1e-12);

    const CVxDPoint a(3, 4);
    EXPECT_DOUBLE_EQ(a.Length(), 5);
    EXPECT_DOUBLE_EQ(a.LengthSquared(), 25);
    EXPECT_DOUBLE_EQ(a.Distance(CVxDPoint(0, 0)), 5);
    EXPECT_DOUBLE_EQ(a.Distance2(CVxDPoint(1, 1)), 13);
    EXPECT_DOUBLE_EQ(a.DotProduct(CVxDPoint(2, -1)), 2);
    EXPECT_DOUBLE_EQ(a.CrossProduct(CVxDPoint(2, -1)), -11);

    CVxDPoint s(2, 3);
    s.Scale(2, -1);
    s.Offset(1, 1);
    EXPECT_POINT_NEAR(s, CVxDPoint(5, -2), 0);
    s.Negate();
    EXPECT_POINT_NEAR(s, CVxDPoint(-5, 2), 0);
    s.Set(VxPOINT{7, -8});
    EXPECT_POINT_NEAR(s, CVxDPoint(7, -8), 0);
    s.Zero();
    EXPECT_TRUE(s.IsZero());
}

TEST(GeometryPoint, NormalizeLeavesTinyVectors)
{
    CVxDPoint p(3, 4);
    p.Normalize();
    EXPECT_POINT_NEAR(p, CVxDPoint(0.6, 0.8), 1e-12);

    CVxDPoint tiny(1e-6, 0);
    tiny.Normalize();
    EXPECT_POINT_NEAR(tiny, CVxDPoint(1e-6, 0), 0);
}

TEST(GeometryPoint, RotateTurnsTowardsPositiveYOnScreen)
{
    CVxDPoint p(1, 0);
    p.Rotate(90);
    EXPECT_POINT_NEAR(p, CVxDPoint(0, 1), 1e-12);
    p.Rotate(-45);
    EXPECT_POINT_NEAR(p, CVxDPoint(std::sqrt(0.5), std::sqrt(0.5)), 1e-12);
}

TEST(GeometryPoint, AngleIsClockwiseFromUp)
{
    EXPECT_NEAR(CVxDPoint(0, -1).Angle(), 0, 1e-12);
    EXPECT_NEAR(CVxDPoint(1, 0).Angle(), 90, 1e-12);
    EXPECT_NEAR(CVxDPoint(0, 1).Angle(), 180, 1e-12);
    EXPECT_NEAR(CVxDPoint(-1, 0).Angle(), 270, 1e-12);
    EXPECT_NEAR(CVxDPoint(2, -2).Angle(), 45, 1e-12);
    EXPECT_NEAR(CVxDPoint(-3, -3).Angle(), 315, 1e-12);
    EXPECT_NEAR(CVxDPoint(-1, 1).Angle(), 225, 1e-12);
    EXPECT_EQ(CVxDPoint(0, 0).Angle(), 0);
    // Rotating by a turns a direction's angle by a.
    CVxDPoint wall(1, -2);
    const double before = wall.Angle();
    wall.Rotate(30);
    EXPECT_NEAR(wall.Angle(), before + 30, 1e-9);
}

TEST(GeometryPoint, ConversionRoundsHalfAwayFromZero)
{
    const VxPOINT* a = CVxDPoint(1.5, -1.5);
    EXPECT_EQ(a->x, 2);
    EXPECT_EQ(a->y, -2);
    const CVxDPoint q(2.4999, -0.5);
    const VxPOINT* b = q;
    EXPECT_EQ(b->x, 2);
    EXPECT_EQ(b->y, -1);
    // A damaged coordinate gives a defined pixel.
    const CVxDPoint huge(1e300, std::numeric_limits<double>::quiet_NaN());
    const VxPOINT* c = huge;
    EXPECT_EQ(c->x, std::numeric_limits<int32_t>::max());
    EXPECT_EQ(c->y, 0);
}

TEST(GeometryAngle, NormalisationKeepsReservedMarks)
{
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-90), 270);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(720), 0);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(360), 0);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-360.5), 359.5);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(45), 45);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-19181.0), -19181.0);
    EXPECT_DOUBLE_EQ(VX_NormalizeAngle(-19182.0), -19182.0);
    // A tiny negative angle may not come out as 360.
    const double tiny = VX_NormalizeAngle(-1e-20);
    EXPECT_GE(tiny, 0);
    EXPECT_LT(tiny, 360);
    // Far-off and infinite angles from a damaged file end without a long loop.
    const double far = VX_NormalizeAngle(1e300);
    EXPECT_GE(far, 0);
    EXPECT_LT(far, 360);
    EXPECT_TRUE(std::isinf(VX_NormalizeAngle(std::numeric_limits<double>::infinity())));
}

TEST(Geometry3DPoint, AssignmentFromPlanPointKeepsHeight)
{
    CVx3DPoint p(1, 2, 3);
    p = CVxDPoint(7, 8);
    EXPECT_DOUBLE_EQ(p.x, 7);
    EXPECT_DOUBLE_EQ(p.y, 8);
    EXPECT_DOUBLE_EQ(p.z, 3);

    const CVx3DPoint s = (CVx3DPoint(1, 2, 3) + CVx3DPoint(1, 1, 1)) * 2 - CVx3DPoint(0, 0, 8);
    EXPECT_DOUBLE_EQ(s.x, 4);
    EXPECT_DOUBLE_EQ(s.y, 6);
    EXPECT_DOUBLE_EQ(s.z, 0);
    CVx3DPoint t(2, 4, 6);
    t /= 2;
    t.Offset3D(1, 1, 1);
    t.Scale3D(1, 2, 3);
    EXPECT_DOUBLE_EQ(t.x, 2);
    EXPECT_DOUBLE_EQ(t.y, 6);
    EXPECT_DOUBLE_EQ(t.z, 12);
    t.Zero();
    EXPECT_DOUBLE_EQ(t.z, 0);
}

TEST(GeometryRect, EqualityIsExact)
{
    EXPECT_TRUE(CVxDRect(0, 0, 1, 1) == CVxDRect(0, 0, 1, 1));
    EXPECT_TRUE(CVxDRect(0, 0, 1, 1) != CVxDRect(0, 0, 1, 1 + 1e-12));
}

TEST(GeometryRect, MovingScalingAndCorners)
{
    const CVxDRect r(1, 2, 5, 10);
    EXPECT_RECT_NEAR(r + CVxDPoint(1, 1), CVxDRect(2, 3, 6, 11), 0);
    EXPECT_RECT_NEAR(r - CVxDPoint(1, 2), CVxDRect(0, 0, 4, 8), 0);
    EXPECT_RECT_NEAR(r * 2, CVxDRect(2, 4, 10, 20), 0);
    EXPECT_RECT_NEAR(r / 2, CVxDRect(0.5, 1, 2.5, 5), 0);
    EXPECT_POINT_NEAR(r.TopRight(), CVxDPoint(5, 2), 0);
    EXPECT_POINT_NEAR(r.BottomLeft(), CVxDPoint(1, 10), 0);
    EXPECT_POINT_NEAR(r.CenterPoint(), CVxDPoint(3, 6), 0);
    EXPECT_DOUBLE_EQ(r.Aspect(), 0.5);
    EXPECT_DOUBLE_EQ(CVxDRect(0, 0, 0, 5).Aspect(), 1.0);

    CVxDRect g = r;
    g.InflateRect(1, 2);
    EXPECT_RECT_NEAR(g, CVxDRect(0, 0, 6, 12), 0);
    g.InflateRect(1, 0, 0, 2);
    EXPECT_RECT_NEAR(g, CVxDRect(-1, 0, 6, 14), 0);
    g.OffsetRect(1, -1);
    g.ScaleRect(2, 0.5);
    EXPECT_RECT_NEAR(g, CVxDRect(0, -0.5, 14, 6.5), 0);

    const VxRECT* pixels = CVxDRect(0.5, -0.5, 2.49, 3.5);
    EXPECT_EQ(pixels->left, 1);
    EXPECT_EQ(pixels->top, -1);
    EXPECT_EQ(pixels->right, 2);
    EXPECT_EQ(pixels->bottom, 4);
}

TEST(GeometryRect, IntersectionIsStrictUnionGrows)
{
    CVxDRect r(0, 0, 10, 10);
    EXPECT_TRUE(r.IntersectRect(CVxDRect(5, 5, 15, 15)));
    EXPECT_RECT_NEAR(r, CVxDRect(5, 5, 10, 10), 0);
    CVxDRect touching(0, 0, 10, 10);
    EXPECT_FALSE(touching.IntersectRect(CVxDRect(10, 0, 20, 10)));

    CVxDRect u(0, 0, 1, 1);
    u.UnionRect(CVxDRect(-1, 2, 0.5, 3));
    EXPECT_RECT_NEAR(u, CVxDRect(-1, 0, 1, 3), 0);
    u.UnionRect(CVxDPoint(4, -2));
    EXPECT_RECT_NEAR(u, CVxDRect(-1, -2, 4, 3), 0);
}

TEST(GeometryRect, ZeroEmptyAndInside)
{
    EXPECT_TRUE(CVxDRect(-1, -1, -1, -1).IsZero());
    EXPECT_FALSE(CVxDRect(0, 0, 1e-6, 0).IsZero());
    EXPECT_TRUE(CVxDRect(0, 0, 0, 5).IsRectEmpty());
    EXPECT_TRUE(CVxDRect(0, 0, 5, 5e-8).IsRectEmpty());
    EXPECT_FALSE(CVxDRect(0, 0, 5, 5).IsRectEmpty());

    CVxDRect reversed(10, 10, 0, 0);
    EXPECT_TRUE(reversed.PtInRect(CVxDPoint(10, 0)));
    // The test normalises the rectangle in place.
    EXPECT_RECT_NEAR(reversed, CVxDRect(0, 0, 10, 10), 0);
    EXPECT_TRUE(reversed.PtInRect(VxPOINT{0, 10}));
    EXPECT_FALSE(reversed.PtInRect(10.001, 5));
    const CVxDRect fixed(10, 10, 0, 0);
    EXPECT_TRUE(fixed.PtInRect(5.0, 5.0));
}

TEST(GeometryTriRect, MeasuresOfASlopedFace)
{
    const CVxDTriRect face(0, 0, 10, 10, 20, 7);
    EXPECT_DOUBLE_EQ(face.Width(), 10);
    EXPECT_DOUBLE_EQ(face.Height(), 20);
    EXPECT_RECT_NEAR(face.Bounds(), CVxDRect(0, 0, 10, 20), 0);
    EXPECT_POINT_NEAR(face.BottomRight(), CVxDPoint(10, 20), 0);
    EXPECT_POINT_NEAR(face.BottomLeft(), CVxDPoint(0, 10), 0);

    CVxDTriRect moved = face;
    moved.OffsetRect(1, 2);
    moved.InflateRect(1, 1);
    EXPECT_TRIRECT_NEAR(moved, CVxDTriRect(0, 1, 12, 13, 23, 7), 0);

    EXPECT_TRUE(CVxDTriRect(0, 0, 10, 0, 0).IsEmpty());
    EXPECT_TRUE(CVxDTriRect(3, 0, 3, 5, 5).IsEmpty());
    EXPECT_FALSE(CVxDTriRect(0, 0, 10, 0, 5).IsEmpty());
}

TEST(GeometryTriRect, IntersectWithOpening)
{
    CVxDTriRect face(0, 0, 10, 10, 20);
    EXPECT_TRUE(face.IntersectRect(CVxDRect(2, -5, 8, 12)));
    EXPECT_TRIRECT_NEAR(face, CVxDTriRect(2, 0, 8, 10, 12), 0);

    CVxDTriRect apart(0, 0, 10, 10, 20);
    EXPECT_FALSE(apart.IntersectRect(CVxDTriRect(11, 0, 20, 10, 10)));
    CVxDTriRect below(0, 0, 10, 10, 20);
    EXPECT_FALSE(below.IntersectRect(CVxDRect(0, 25, 10, 30)));
}

TEST(GeometryTriRect, XSplitInterpolatesTheSlope)
{
    const CVxDTriRect face(0, 0, 10, 10, 20, 5);
    CVxDTriRect l, m, r;
    face.XSplit(2, 6, l, m, r);
    EXPECT_TRIRECT_NEAR(l, CVxDTriRect(0, 0, 2, 10, 12, 5), 1e-12);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(2, 0, 6, 12, 16, 5), 1e-12);
    EXPECT_TRIRECT_NEAR(r, CVxDTriRect(6, 0, 10, 16, 20, 5), 1e-12);

    CVxDTriRect(4, 0, 4, 1, 2, 5).XSplit(2, 6, l, m, r);
    EXPECT_TRIRECT_NEAR(l, CVxDTriRect(), 0);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(), 0);
    EXPECT_TRIRECT_NEAR(r, CVxDTriRect(), 0);
}

TEST(GeometryTriRect, YExcludeFlatFace)
{
    CVxDTriRect a, m, b;
    CVxDTriRect(0, 0, 10, 10, 10, 3).YExclude(3, 6, a, m, b);
    EXPECT_TRIRECT_NEAR(a, CVxDTriRect(0, 0, 10, 3, 3, 3), 0);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(), 0);
    EXPECT_TRIRECT_NEAR(b, CVxDTriRect(0, 6, 10, 10, 10, 3), 0);
}

TEST(GeometryTriRect, YExcludeBandAboveTheSlope)
{
    CVxDTriRect a, m, b;
    CVxDTriRect(0, 0, 10, 10, 20).YExclude(3, 6, a, m, b);
    EXPECT_TRIRECT_NEAR(a, CVxDTriRect(0, 0, 10, 3, 3), 0);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(), 0);
    EXPECT_TRIRECT_NEAR(b, CVxDTriRect(0, 6, 10, 10, 20), 0);
}

TEST(GeometryTriRect, YExcludeBandBelowTheSlope)
{
    CVxDTriRect a, m, b;
    CVxDTriRect(0, 0, 10, 2, 4, 9).YExclude(5, 8, a, m, b);
    EXPECT_TRIRECT_NEAR(a, CVxDTriRect(0, 0, 10, 2, 4, 9), 0);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(), 0);
    EXPECT_TRIRECT_NEAR(b, CVxDTriRect(), 0);
}

TEST(GeometryTriRect, YExcludeBandCrossingTheSlope)
{
    // The slope falls from 10 at the left to 20 at the right; y1 = 15 and
    // y2 = 18 are crossed at x = 5 and x = 8.
    CVxDTriRect a, m, b;
    CVxDTriRect(0, 0, 10, 10, 20).YExclude(15, 18, a, m, b);
    EXPECT_TRIRECT_NEAR(a, CVxDTriRect(0, 0, 5, 10, 15), 1e-12);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(5, 0, 10, 15, 15), 1e-12);
    EXPECT_TRIRECT_NEAR(b, CVxDTriRect(8, 18, 10, 18, 20), 1e-12);

    // Mirrored slope: crossings at x = 5 and x = 2.
    CVxDTriRect(0, 0, 10, 20, 10).YExclude(15, 18, a, m, b);
    EXPECT_TRIRECT_NEAR(a, CVxDTriRect(0, 0, 5, 15, 15), 1e-12);
    EXPECT_TRIRECT_NEAR(m, CVxDTriRect(5, 0, 10, 15, 10), 1e-12);
    EXPECT_TRIRECT_NEAR(b, CVxDTriRect(0, 18, 2, 20, 18), 1e-12);
}
