// Lines, Bezier curves, quaternions and pointer hit distances.

#include "geometry_test_util.h"

#include "CVxHitDist.h"
#include "VxGeometryFunctions.h"
#include "VxQuaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

TEST(GeometryLines, IntersectionOfInfiniteLines)
{
    const CVxDPoint a(0, 0), b(10, 0), c(5, -5), d(5, 5);
    double t = -1, u = -1;
    ASSERT_TRUE(DblFindInter(&a, &b, &c, &d, &t, &u));
    EXPECT_DOUBLE_EQ(t, 0.5);
    EXPECT_DOUBLE_EQ(u, 0.5);
    // A vertical first line takes t from y; the lines meet beyond it.
    const CVxDPoint e(0, 0), f(0, 1), g(-5, 4), h(5, 4);
    ASSERT_TRUE(DblFindInter(e, f, g, h, t, u));
    EXPECT_DOUBLE_EQ(t, 4);
    EXPECT_DOUBLE_EQ(u, 0.5);
    // Parallel lines and a first line of no length fail.
    t = 42;
    EXPECT_FALSE(DblFindInter(a, b, CVxDPoint(0, 1), CVxDPoint(10, 1), t, u));
    EXPECT_EQ(t, 42);
    EXPECT_FALSE(DblFindInter(&c, &c, &a, &b, nullptr, nullptr));

    const VxPOINT pa{0, 0}, pb{10, 0}, pc{4, -2}, pd{4, 6};
    ASSERT_TRUE(DblFindInter(&pa, &pb, &pc, &pd, &t, &u));
    EXPECT_DOUBLE_EQ(t, 0.4);
    EXPECT_DOUBLE_EQ(u, 0.25);
}

TEST(GeometryLines, DistanceFromWallLine)
{
    const CVxDPoint a(0, 0), b(10, 0);
    double t = 0;
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, b, CVxDPoint(5, 3), &t), 3);
    EXPECT_DOUBLE_EQ(t, 0.5);
    // Beyond an end the distance is to that end; t stays unclamped.
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, b, CVxDPoint(-3, 4), t), 5);
    EXPECT_DOUBLE_EQ(t, -0.3);
    // A wall of no length: distance to its point, t untouched.
    t = 42;
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, a, CVxDPoint(3, 4), &t), 5);
    EXPECT_EQ(t, 42);
}

TEST(GeometryLines, PointInSkewedQuadrilateral)
{
    // Top edge 0..10 at y 0, bottom edge 2..14 at y 10.
    const CVxDPoint corners[4] = {{0, 0}, {10, 0}, {2, 10}, {14, 10}};
    CVxDPoint p;
    DblGetPointInRect(p, corners, 0.5, 0.5);
    EXPECT_GEO_NEAR(p, CVxDPoint(6.5, 5), 1e-12);
    DblGetPointInRect(p, corners, 1, 1);
    EXPECT_GEO_NEAR(p, CVxDPoint(14, 10), 1e-12);
}

namespace {
// An arch from (0,0) to (10,0) with both control points 10 above.
const CVxDPoint kP0(0, 0), kC0(0, -10), kC1(10, -10), kP1(10, 0);
} // namespace

TEST(GeometryCurves, PointAndNormalOfAnArch)
{
    CVxDPoint p;
    GetBezierInterpolation(p, kP0, kC0, kC1, kP1, 0.5);
    EXPECT_GEO_NEAR(p, CVxDPoint(5, -7.5), 1e-12);
    GetBezierInterpolation(p, kP0, kC0, kC1, kP1, 0.25);
    EXPECT_GEO_NEAR(p, CVxDPoint(1.5625, -5.625), 1e-12);
    // The tangent points up (0) at the start and along +x (90) at the top;
    // the angle given is 90 less.
    EXPECT_NEAR(GetBezierInterpolationAngle(kP0, kC0, kC1, kP1, 0), -90, 1e-9);
    EXPECT_NEAR(GetBezierInterpolationAngle(kP0, kC0, kC1, kP1, 0.5), 0, 1e-9);
}

TEST(GeometryCurves, SplitGivesTwoHalvesOfTheSameCurve)
{
    CVxDPoint c0l, c1l, mid, c0r, c1r;
    SplitBezierCurve(c0l, c1l, mid, c0r, c1r, kP0, kC0, kC1, kP1, 0.5);
    EXPECT_GEO_NEAR(c0l, CVxDPoint(0, -5), 1e-12);
    EXPECT_GEO_NEAR(c1l, CVxDPoint(2.5, -7.5), 1e-12);
    EXPECT_GEO_NEAR(mid, CVxDPoint(5, -7.5), 1e-12);
    EXPECT_GEO_NEAR(c0r, CVxDPoint(7.5, -7.5), 1e-12);
    EXPECT_GEO_NEAR(c1r, CVxDPoint(10, -5), 1e-12);
    // The left half at 1/2 is the whole curve at 1/4.
    CVxDPoint half;
    GetBezierInterpolation(half, kP0, c0l, c1l, mid, 0.5);
    EXPECT_GEO_NEAR(half, CVxDPoint(1.5625, -5.625), 1e-12);
}

TEST(GeometryCurves, ParameterAbreastOfChordPoint)
{
    // Evenly spaced control points on the chord: the curve runs uniformly.
    EXPECT_NEAR(
        GetBezierParamForTAtLine(CVxDPoint(0, 0), CVxDPoint(3, 0), CVxDPoint(6, 0), CVxDPoint(9, 0), 0.3),
        0.3, 1e-12);
    // Control points at the ends: x(s) = 30 s^2 - 20 s^3 reaches 2.5, a
    // quarter of the chord, at s = 0.3263.
    const CVxDPoint p0(0, 0), p1(10, 0);
    const double s = GetBezierParamForTAtLine(p0, p0, p1, p1, 0.25);
    EXPECT_NEAR(s, 0.3263, 0.003);
    EXPECT_EQ(GetBezierParamForTAtLine(p0, p0, p1, p1, 0.0), 0.0);
    EXPECT_EQ(GetBezierParamForTAtLine(p0, p0, p1, p1, 1.0), 1.0);
    EXPECT_EQ(GetBezierParamForTAtLine(p0, p0, p1, p1, 1.5), 1.5);
}

TEST(GeometryCurves, ControlPointsFromNeighbours)
{
    // Between two straight walls at right angles the control points lie on
    // their extensions, half the curved wall's length past its ends.
    CVxDPoint c0, c1;
    GetBezierControlPoint(c0, c1, {0, -10}, {0, 0}, {10, 0}, {10, -10}, false, false);
    EXPECT_GEO_NEAR(c0, CVxDPoint(0, 5), 1e-12);
    EXPECT_GEO_NEAR(c1, CVxDPoint(10, 5), 1e-12);
    // A neighbour of no length: f is half the edge, so the point stays put.
    GetBezierControlPoint(c0, c1, {0, 0}, {0, 0}, {10, 0}, {10, 0}, false, false);
    EXPECT_GEO_NEAR(c0, CVxDPoint(0, 0), 1e-12);
    // Curved neighbours: a smooth run; at p1 parallel to prev -> p2.
    GetBezierControlPoint(c0, c1, {-10, 0}, {0, 0}, {10, 0}, {20, 0}, true, true);
    EXPECT_GEO_NEAR(c0, CVxDPoint(2.5, 0), 1e-12);
    EXPECT_GEO_NEAR(c1, CVxDPoint(7.5, 0), 1e-12);
    GetBezierControlPoint(c0, c1, {0, -10}, {0, 0}, {10, 0}, {10, 10}, true, false);
    EXPECT_GEO_NEAR(c0, CVxDPoint(1.25, 1.25), 1e-12);

    VxPOINT i0, i1;
    GetBezierControlPoint(i0, i1, VxPOINT{0, -10}, VxPOINT{0, 0}, VxPOINT{10, 0}, VxPOINT{10, 10}, true,
                          false);
    EXPECT_EQ(i0.x, 1);
    EXPECT_EQ(i1.y, -5);
}

TEST(GeometryQuaternion, QuarterTurnsAboutXThenY)
{
    // A quarter turn about x times one about y is a third of a turn about
    // the diagonal, and turns back into that axis and angle.
    const float pi = std::numbers::pi_v<float>;
    const float x[3] = {1, 0, 0}, y[3] = {0, 1, 0};
    float qx[4], qy[4], both[4], axis[3], angle = 0;
    to_quaternion(x, pi / 2, qx);
    EXPECT_NEAR(qx[0], std::sqrt(0.5f), 1e-6);
    EXPECT_NEAR(qx[3], std::sqrt(0.5f), 1e-6);
    to_quaternion(y, pi / 2, qy);
    multiply_quaternion(qx, qy, both);
    for (float v : both)
        EXPECT_NEAR(v, 0.5f, 1e-6);
    from_quaternion(both, axis, angle);
    EXPECT_NEAR(angle, 2 * pi / 3, 1e-5);
    EXPECT_NEAR(axis[0], 1 / std::sqrt(3.0f), 1e-5);
}

TEST(GeometryHitDist, ScalesWithDpiAndTouch)
{
    CVxHitDist::Init(96, false);
    EXPECT_EQ(CVxHitDist::SelSymbol(), 4);
    EXPECT_EQ(CVxHitDist::WallCtlPoint(), 6);
    EXPECT_EQ(CVxHitDist::WallSnap(), 15);
    // Integer division, and never below 96 DPI.
    CVxHitDist::Init(144, false);
    EXPECT_EQ(CVxHitDist::ResizeSnap(), 7);
    EXPECT_EQ(CVxHitDist::WallSnap(), 22);
    CVxHitDist::Init(72, false);
    EXPECT_EQ(CVxHitDist::ResizeMin(), 3);
    CVxHitDist::Init(96, true);
    EXPECT_EQ(CVxHitDist::ResizeSnap(), 10);
    EXPECT_EQ(CVxHitDist::WallCtlPoint(), 8);
    EXPECT_EQ(CVxHitDist::SelSymbol(), 10);
    // The test host reports 96 DPI and no touch.
    CVxHitDist::Init();
    EXPECT_EQ(CVxHitDist::SelSymbol(), 4);
}
