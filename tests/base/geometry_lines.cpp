// Lines, Bezier curves, quaternions and pointer hit distances.

#include "geometry_test_util.h"

#include "CVxHitDist.h"
#include "VxGeometryFunctions.h"
#include "VxQuaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

TEST(GeometryLines, IntersectionOfCrossingWalls)
{
    const CVxDPoint a(0, 0), b(10, 0), c(5, -5), d(5, 5);
    double t = -1, u = -1;
    ASSERT_TRUE(DblFindInter(&a, &b, &c, &d, &t, &u));
    EXPECT_DOUBLE_EQ(t, 0.5);
    EXPECT_DOUBLE_EQ(u, 0.5);

    // A vertical first line takes t from the y axis.
    const CVxDPoint e(0, 0), f(0, 10), g(-5, 4), h(5, 4);
    ASSERT_TRUE(DblFindInter(e, f, g, h, t, u));
    EXPECT_DOUBLE_EQ(t, 0.4);
    EXPECT_DOUBLE_EQ(u, 0.5);
}

TEST(GeometryLines, IntersectionOfInfiniteLines)
{
    // The lines meet beyond the first segment: limiting is the caller's.
    const CVxDPoint a(0, 0), b(1, 0), c(5, -1), d(5, 3);
    double t = 0, u = 0;
    ASSERT_TRUE(DblFindInter(&a, &b, &c, &d, &t, &u));
    EXPECT_DOUBLE_EQ(t, 5);
    EXPECT_DOUBLE_EQ(u, 0.25);
}

TEST(GeometryLines, ParallelOrDegenerateLinesFail)
{
    const CVxDPoint a(0, 0), b(10, 0), c(0, 1), d(10, 1);
    double t = 42, u = 42;
    EXPECT_FALSE(DblFindInter(&a, &b, &c, &d, &t, &u));
    EXPECT_EQ(t, 42);
    const CVxDPoint p(1, 1);
    EXPECT_FALSE(DblFindInter(&p, &p, &c, &d, &t, &u));
    EXPECT_FALSE(DblFindInter(&a, &b, &a, &b, nullptr, nullptr));
}

TEST(GeometryLines, IntersectionOnDevicePoints)
{
    const VxPOINT a{0, 0}, b{10, 0}, c{4, -2}, d{4, 6};
    double t = 0, u = 0;
    ASSERT_TRUE(DblFindInter(&a, &b, &c, &d, &t, &u));
    EXPECT_DOUBLE_EQ(t, 0.4);
    EXPECT_DOUBLE_EQ(u, 0.25);
    const VxPOINT e{0, 5}, f{10, 5};
    EXPECT_FALSE(DblFindInter(&a, &b, &e, &f, &t, &u));
}

TEST(GeometryLines, DistanceFromWallLine)
{
    const CVxDPoint a(0, 0), b(10, 0);
    double t = 0;
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, b, CVxDPoint(5, 3), &t), 3);
    EXPECT_DOUBLE_EQ(t, 0.5);
    // Beyond an end the distance is to that end; t stays unclamped.
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, b, CVxDPoint(-3, 4), &t), 5);
    EXPECT_DOUBLE_EQ(t, -0.3);
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, b, CVxDPoint(13, 4), t), 5);
    EXPECT_DOUBLE_EQ(t, 1.3);
    // A wall of no length: distance to its point, t untouched.
    t = 42;
    EXPECT_DOUBLE_EQ(DblGetDistFromLine(a, a, CVxDPoint(3, 4), &t), 5);
    EXPECT_EQ(t, 42);
}

TEST(GeometryLines, PointInQuadrilateral)
{
    const CVxDPoint box[4] = {{0, 0}, {10, 0}, {0, 20}, {10, 20}};
    CVxDPoint p;
    DblGetPointInRect(p, box, 0.5, 0.25);
    EXPECT_POINT_NEAR(p, CVxDPoint(5, 5), 1e-12);
    DblGetPointInRect(p, box, 1, 1);
    EXPECT_POINT_NEAR(p, CVxDPoint(10, 20), 1e-12);

    // A skewed object: top edge 0..10 at y 0, bottom edge 2..14 at y 10.
    const CVxDPoint skew[4] = {{0, 0}, {10, 0}, {2, 10}, {14, 10}};
    DblGetPointInRect(p, skew, 0.5, 0.5);
    EXPECT_POINT_NEAR(p, CVxDPoint(6.5, 5), 1e-12);
}

namespace {
// An arch: from (0,0) to (10,0) with both control points 10 above.
const CVxDPoint kP0(0, 0), kC0(0, -10), kC1(10, -10), kP1(10, 0);
} // namespace

TEST(GeometryCurves, InterpolationAndTangent)
{
    CVxDPoint p;
    lerp(p, CVxDPoint(0, 0), CVxDPoint(10, -4), 0.25);
    EXPECT_POINT_NEAR(p, CVxDPoint(2.5, -1), 1e-12);

    GetBezierInterpolation(p, kP0, kC0, kC1, kP1, 0.5);
    EXPECT_POINT_NEAR(p, CVxDPoint(5, -7.5), 1e-12);
    GetBezierInterpolation(p, kP0, kC0, kC1, kP1, 0.25);
    EXPECT_POINT_NEAR(p, CVxDPoint(1.5625, -5.625), 1e-12);
    GetBezierInterpolation(p, kP0, kC0, kC1, kP1, 1);
    EXPECT_POINT_NEAR(p, kP1, 1e-12);

    // At the top of the arch the tangent points along +x (angle 90), so the
    // normal is 0; at the start it points up (0) and the normal is -90.
    EXPECT_NEAR(GetBezierInterpolationAngle(kP0, kC0, kC1, kP1, 0.5), 0, 1e-9);
    EXPECT_NEAR(GetBezierInterpolationAngle(kP0, kC0, kC1, kP1, 0), -90, 1e-9);
    EXPECT_NEAR(GetBezierInterpolationAngle(kP0, kC0, kC1, kP1, 1), 90, 1e-9);
}

TEST(GeometryCurves, SplitGivesTwoHalvesOfTheSameCurve)
{
    CVxDPoint c0l, c1l, mid, c0r, c1r;
    SplitBezierCurve(c0l, c1l, mid, c0r, c1r, kP0, kC0, kC1, kP1, 0.5);
    EXPECT_POINT_NEAR(c0l, CVxDPoint(0, -5), 1e-12);
    EXPECT_POINT_NEAR(c1l, CVxDPoint(2.5, -7.5), 1e-12);
    EXPECT_POINT_NEAR(mid, CVxDPoint(5, -7.5), 1e-12);
    EXPECT_POINT_NEAR(c0r, CVxDPoint(7.5, -7.5), 1e-12);
    EXPECT_POINT_NEAR(c1r, CVxDPoint(10, -5), 1e-12);

    // The left half at 1/2 is the whole curve at 1/4.
    CVxDPoint half;
    GetBezierInterpolation(half, kP0, c0l, c1l, mid, 0.5);
    EXPECT_POINT_NEAR(half, CVxDPoint(1.5625, -5.625), 1e-12);
}

TEST(GeometryCurves, ParameterAbreastOfChordPoint)
{
    // Evenly spaced control points on the chord: the curve runs uniformly.
    const CVxDPoint a(0, 0), b(3, 0), c(6, 0), d(9, 0);
    EXPECT_NEAR(GetBezierParamForTAtLine(a, b, c, d, 0.3), 0.3, 1e-12);

    // Control points bunched at the ends: x(s) = 30 s^2 - 20 s^3 reaches 2.5
    // (a quarter of the chord) at s = 0.3263.
    const CVxDPoint p0(0, 0), c0(0, 0), c1(10, 0), p1(10, 0);
    const double s = GetBezierParamForTAtLine(p0, c0, c1, p1, 0.25);
    EXPECT_NEAR(s, 0.3263, 0.003);
    CVxDPoint onCurve;
    GetBezierInterpolation(onCurve, p0, c0, c1, p1, s);
    EXPECT_NEAR(onCurve.x, 2.5, 0.05);

    EXPECT_EQ(GetBezierParamForTAtLine(p0, c0, c1, p1, 0.0), 0.0);
    EXPECT_EQ(GetBezierParamForTAtLine(p0, c0, c1, p1, 1.0), 1.0);
    EXPECT_EQ(GetBezierParamForTAtLine(p0, c0, c1, p1, -0.5), -0.5);
    EXPECT_EQ(GetBezierParamForTAtLine(p0, c0, c1, p1, 1.5), 1.5);
}

TEST(GeometryCurves, ControlPointsContinueStraightNeighbours)
{
    // A curved wall between two walls at right angles: the control points lie
    // on their extensions, half the curved wall's length past its ends.
    CVxDPoint c0, c1;
    GetBezierControlPoint(c0, c1, CVxDPoint(0, -10), CVxDPoint(0, 0), CVxDPoint(10, 0), CVxDPoint(10, -10),
                          false, false);
    EXPECT_POINT_NEAR(c0, CVxDPoint(0, 5), 1e-12);
    EXPECT_POINT_NEAR(c1, CVxDPoint(10, 5), 1e-12);

    // A neighbour of no length falls back to f = half the edge: the control
    // point lands on the neighbour itself.
    GetBezierControlPoint(c0, c1, CVxDPoint(0, 0), CVxDPoint(0, 0), CVxDPoint(10, 0), CVxDPoint(10, 0), false,
                          false);
    EXPECT_POINT_NEAR(c0, CVxDPoint(0, 0), 1e-12);
    EXPECT_POINT_NEAR(c1, CVxDPoint(10, 0), 1e-12);
}

TEST(GeometryCurves, ControlPointsRunSmoothlyIntoCurvedNeighbours)
{
    CVxDPoint c0, c1;
    GetBezierControlPoint(c0, c1, CVxDPoint(-10, 0), CVxDPoint(0, 0), CVxDPoint(10, 0), CVxDPoint(20, 0),
                          true, true);
    EXPECT_POINT_NEAR(c0, CVxDPoint(2.5, 0), 1e-12);
    EXPECT_POINT_NEAR(c1, CVxDPoint(7.5, 0), 1e-12);

    // The tangent at p1 is parallel to prev -> p2.
    GetBezierControlPoint(c0, c1, CVxDPoint(0, -10), CVxDPoint(0, 0), CVxDPoint(10, 0), CVxDPoint(10, 10),
                          true, false);
    EXPECT_POINT_NEAR(c0, CVxDPoint(1.25, 1.25), 1e-12);

    VxPOINT i0, i1;
    GetBezierControlPoint(i0, i1, VxPOINT{0, -10}, VxPOINT{0, 0}, VxPOINT{10, 0}, VxPOINT{10, 10}, true,
                          false);
    EXPECT_EQ(i0.x, 1);
    EXPECT_EQ(i0.y, 1);
    EXPECT_EQ(i1.x, 10);
    EXPECT_EQ(i1.y, -5);
}

TEST(GeometryQuaternion, AxisAngleRoundTripAndProduct)
{
    const float pi = std::numbers::pi_v<float>;
    const float z[3] = {0, 0, 1};
    float q[4];
    to_quaternion(z, pi / 2, q);
    EXPECT_NEAR(q[0], 0, 1e-6);
    EXPECT_NEAR(q[2], std::sqrt(0.5f), 1e-6);
    EXPECT_NEAR(q[3], std::sqrt(0.5f), 1e-6);

    float axis[3];
    float angle = 0;
    from_quaternion(q, axis, angle);
    EXPECT_NEAR(angle, pi / 2, 1e-5);
    EXPECT_NEAR(axis[2], 1, 1e-5);

    // Two quarter turns about z are a half turn.
    float half[4];
    multiply_quaternion(q, q, half);
    EXPECT_NEAR(half[2], 1, 1e-6);
    EXPECT_NEAR(half[3], 0, 1e-6);

    // A quarter turn about x, then one about y: a third of a turn about the
    // diagonal.
    const float x[3] = {1, 0, 0}, y[3] = {0, 1, 0};
    float qx[4], qy[4], both[4];
    to_quaternion(x, pi / 2, qx);
    to_quaternion(y, pi / 2, qy);
    multiply_quaternion(qx, qy, both);
    for (float v : both)
        EXPECT_NEAR(v, 0.5f, 1e-6);
    from_quaternion(both, axis, &angle);
    EXPECT_NEAR(angle, 2 * pi / 3, 1e-5);
    EXPECT_NEAR(axis[0], 1 / std::sqrt(3.0f), 1e-5);
}

TEST(GeometryHitDist, ScalesWithDpiAndTouch)
{
    CVxHitDist::Init(96, false);
    EXPECT_EQ(CVxHitDist::SelSymbol(), 4);
    EXPECT_EQ(CVxHitDist::WallCtlPoint(), 6);
    EXPECT_EQ(CVxHitDist::ResizeMin(), 3);
    EXPECT_EQ(CVxHitDist::ResizeSnap(), 5);
    EXPECT_EQ(CVxHitDist::WallSnap(), 15);
    EXPECT_EQ(CVxHitDist::SelSymbolSize(), 2);
    EXPECT_EQ(CVxHitDist::SelSymbolOffset(), 4);
    EXPECT_EQ(CVxHitDist::RotationSymbolDist(), 20);
    EXPECT_EQ(CVxHitDist::TouchCircleRadius(), 8);

    // A screen below 96 DPI counts as 96.
    CVxHitDist::Init(72, false);
    EXPECT_EQ(CVxHitDist::WallSnap(), 15);

    CVxHitDist::Init(144, false);
    EXPECT_EQ(CVxHitDist::SelSymbol(), 6);
    EXPECT_EQ(CVxHitDist::WallCtlPoint(), 9);
    EXPECT_EQ(CVxHitDist::ResizeMin(), 4);
    EXPECT_EQ(CVxHitDist::ResizeSnap(), 7);
    EXPECT_EQ(CVxHitDist::WallSnap(), 22);
    EXPECT_EQ(CVxHitDist::RotationSymbolDist(), 30);

    CVxHitDist::Init(96, true);
    EXPECT_EQ(CVxHitDist::ResizeSnap(), 10);
    EXPECT_EQ(CVxHitDist::WallCtlPoint(), 8);
    EXPECT_EQ(CVxHitDist::SelSymbol(), 10);

    // The test host reports 96 DPI and no touch.
    CVxHitDist::Init();
    EXPECT_EQ(CVxHitDist::SelSymbol(), 4);
}
