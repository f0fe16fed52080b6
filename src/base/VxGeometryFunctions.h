#pragma once
// Lines and cubic Bezier curves of the plan: wall centre lines, curved walls
// and the curved edges of outlines.

#include "CVxDPoint.h"
#include "VxIntGeometry.h"

// Intersects the infinite line a-b with the infinite line c-d. On success t
// is the parameter on a-b and u the one on c-d (either pointer may be null).
// Fails for parallel lines and for a-b of no length. Whether the hit lies on
// the segments is the caller's test, always as t > -EPS and t - 1 < EPS.
bool DblFindInter(const CVxDPoint* a, const CVxDPoint* b, const CVxDPoint* c, const CVxDPoint* d, double* t,
                  double* u);
// The same on device points, with the products formed in 32-bit integers.
bool DblFindInter(const VxPOINT* a, const VxPOINT* b, const VxPOINT* c, const VxPOINT* d, double* t,
                  double* u);
inline bool DblFindInter(const CVxDPoint& a, const CVxDPoint& b, const CVxDPoint& c, const CVxDPoint& d,
                         double& t, double& u)
{
    return DblFindInter(&a, &b, &c, &d, &t, &u);
}
inline bool DblFindInter(const VxPOINT& a, const VxPOINT& b, const VxPOINT& c, const VxPOINT& d, double& t,
                         double& u)
{
    return DblFindInter(&a, &b, &c, &d, &t, &u);
}

// Bilinear position at fractions u (across) and v (down) of a quadrilateral
// whose corners are given top-left, top-right, bottom-left, bottom-right.
void DblGetPointInRect(CVxDPoint& out, const CVxDPoint* corners, double u, double v);

// Distance from p to the segment a-b. t receives the unclamped parameter of
// the projection on a-b; beyond either end the distance is to that end. If a
// and b coincide the distance is to a and t is left alone.
double DblGetDistFromLine(const CVxDPoint& a, const CVxDPoint& b, const CVxDPoint& p, double* t = nullptr);
inline double DblGetDistFromLine(const CVxDPoint& a, const CVxDPoint& b, const CVxDPoint& p, double& t)
{
    return DblGetDistFromLine(a, b, p, &t);
}

// a + (b - a) * t
void lerp(CVxDPoint& out, const CVxDPoint& a, const CVxDPoint& b, double t);

// The point at t of the cubic p0, c0, c1, p1 (de Casteljau).
void GetBezierInterpolation(CVxDPoint& out, const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                            const CVxDPoint& p1, double t);
// The direction at t of the curve's normal: the Angle of the tangent less 90.
double GetBezierInterpolationAngle(const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                                   const CVxDPoint& p1, double t);
// Splits the cubic at t into p0, outC0L, outC1L, outMid and outMid, outC0R,
// outC1R, p1.
void SplitBezierCurve(CVxDPoint& outC0L, CVxDPoint& outC1L, CVxDPoint& outMid, CVxDPoint& outC0R,
                      CVxDPoint& outC1R, const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                      const CVxDPoint& p1, double t);
// The curve parameter at which the curve lies abreast of the point at
// fraction t of the chord p0-p1: four Newton-like rounds. t itself at and
// beyond the ends.
double GetBezierParamForTAtLine(const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                                const CVxDPoint& p1, double t);

// Control points of the curved edge p1-p2 derived from its neighbours, so
// that a curved outline drawn without stored control points runs smoothly
// into a curved neighbour and tangentially out of a straight one.
void GetBezierControlPoint(CVxDPoint& outC0, CVxDPoint& outC1, const CVxDPoint& prev, const CVxDPoint& p1,
                           const CVxDPoint& p2, const CVxDPoint& next, bool prevIsCurved, bool nextIsCurved);
// The same on device points; the results are rounded half away from zero.
void GetBezierControlPoint(VxPOINT& outC0, VxPOINT& outC1, const VxPOINT& prev, const VxPOINT& p1,
                           const VxPOINT& p2, const VxPOINT& next, bool prevIsCurved, bool nextIsCurved);
