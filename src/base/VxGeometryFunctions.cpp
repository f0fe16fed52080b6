#include "VxGeometryFunctions.h"

#include "VxEps.h"

#include <cmath>
#include <limits>

namespace {
int32_t Wrap(uint32_t value)
{
    return static_cast<int32_t>(value);
}

// Differences and products in 32-bit integers that wrap rather than overflow.
int32_t Sub32(int32_t a, int32_t b)
{
    return Wrap(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

int32_t Mul32(int32_t a, int32_t b)
{
    return Wrap(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

} // namespace

bool DblFindInter(const CVxDPoint* a, const CVxDPoint* b, const CVxDPoint* c, const CVxDPoint* d, double* t,
                  double* u)
{
    if (!a || !b || !c || !d)
        return false;
    const double det = (b->y - a->y) * (d->x - c->x) - (b->x - a->x) * (d->y - c->y);
    if (!(std::fabs(det) >= EPS))
        return false;
    const double uu = ((a->x - c->x) * (b->y - a->y) - (a->y - c->y) * (b->x - a->x)) / det;
    double tt = 0;
    if (std::fabs(b->x - a->x) >= EPS)
        tt = (c->x - a->x + uu * (d->x - c->x)) / (b->x - a->x);
    else if (std::fabs(b->y - a->y) >= EPS)
        tt = (c->y - a->y + uu * (d->y - c->y)) / (b->y - a->y);
    else
        return false;
    if (t)
        *t = tt;
    if (u)
        *u = uu;
    return true;
}

bool DblFindInter(const VxPOINT* a, const VxPOINT* b, const VxPOINT* c, const VxPOINT* d, double* t,
                  double* u)
{
    if (!a || !b || !c || !d)
        return false;
    const int32_t bax = Sub32(b->x, a->x);
    const int32_t bay = Sub32(b->y, a->y);
    const int32_t dcx = Sub32(d->x, c->x);
    const int32_t dcy = Sub32(d->y, c->y);
    const int32_t det = Sub32(Mul32(bay, dcx), Mul32(bax, dcy));
    if (det == 0)
        return false;
    const int32_t num = Sub32(Mul32(Sub32(a->x, c->x), bay), Mul32(Sub32(a->y, c->y), bax));
    const double uu = static_cast<double>(num) / det;
    double tt = 0;
    if (bax != 0)
        tt = (static_cast<double>(c->x) - a->x + uu * dcx) / bax;
    else if (bay != 0)
        tt = (static_cast<double>(c->y) - a->y + uu * dcy) / bay;
    else
        return false;
    if (t)
        *t = tt;
    if (u)
        *u = uu;
    return true;
}

void DblGetPointInRect(CVxDPoint& out, const CVxDPoint* corners, double u, double v)
{
    if (!corners) {
        out.Zero();
        return;
    }
    const CVxDPoint top = corners[0] + (corners[1] - corners[0]) * u;
    const CVxDPoint bottom = corners[2] + (corners[3] - corners[2]) * u;
    out = top + (bottom - top) * v;
}

double DblGetDistFromLine(const CVxDPoint& a, const CVxDPoint& b, const CVxDPoint& p, double* t)
{
    const CVxDPoint ab = b - a;
    const double length2 = ab.LengthSquared();
    if (!(length2 > 0))
        return p.Distance(a);
    const double tt = (p - a).DotProduct(ab) / length2;
    if (t)
        *t = tt;
    if (tt < 0)
        return p.Distance(a);
    if (tt > 1)
        return p.Distance(b);
    return p.Distance(a + ab * tt);
}

void lerp(CVxDPoint& out, const CVxDPoint& a, const CVxDPoint& b, double t)
{
    out.x = a.x + (b.x - a.x) * t;
    out.y = a.y + (b.y - a.y) * t;
}

namespace {
// The second level of de Casteljau: the two points whose difference is the
// tangent at t.
void SecondLevel(CVxDPoint& outAbbc, CVxDPoint& outBccd, const CVxDPoint& p0, const CVxDPoint& c0,
                 const CVxDPoint& c1, const CVxDPoint& p1, double t)
{
    CVxDPoint ab, bc, cd;
    lerp(ab, p0, c0, t);
    lerp(bc, c0, c1, t);
    lerp(cd, c1, p1, t);
    lerp(outAbbc, ab, bc, t);
    lerp(outBccd, bc, cd, t);
}
} // namespace

void GetBezierInterpolation(CVxDPoint& out, const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                            const CVxDPoint& p1, double t)
{
    CVxDPoint abbc, bccd;
    SecondLevel(abbc, bccd, p0, c0, c1, p1, t);
    lerp(out, abbc, bccd, t);
}

double GetBezierInterpolationAngle(const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                                   const CVxDPoint& p1, double t)
{
    CVxDPoint abbc, bccd;
    SecondLevel(abbc, bccd, p0, c0, c1, p1, t);
    return (bccd - abbc).Angle() - 90.0;
}

void SplitBezierCurve(CVxDPoint& outC0L, CVxDPoint& outC1L, CVxDPoint& outMid, CVxDPoint& outC0R,
                      CVxDPoint& outC1R, const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                      const CVxDPoint& p1, double t)
{
    CVxDPoint ab, bc, cd, abbc, bccd, mid;
    lerp(ab, p0, c0, t);
    lerp(bc, c0, c1, t);
    lerp(cd, c1, p1, t);
    lerp(abbc, ab, bc, t);
    lerp(bccd, bc, cd, t);
    lerp(mid, abbc, bccd, t);
    outC0L = ab;
    outC1L = abbc;
    outMid = mid;
    outC0R = bccd;
    outC1R = cd;
}

double GetBezierParamForTAtLine(const CVxDPoint& p0, const CVxDPoint& c0, const CVxDPoint& c1,
                                const CVxDPoint& p1, double t)
{
    if (t <= 0 || t >= 1)
        return t;
    const CVxDPoint chord = p1 - p0;
    const double length = chord.Length();
    if (!(length > 0))
        return t;
    const double angle = chord.Angle();
    const CVxDPoint target = p1 * t + p0 * (1 - t);
    double param = t;
    for (int round = 0; round < 4; ++round) {
        CVxDPoint onCurve;
        GetBezierInterpolation(onCurve, p0, c0, c1, p1, param);
        // Turned so that the chord runs along negative x: the x of the
        // difference is how far the curve point lags behind the target.
        CVxDPoint diff = onCurve - target;
        diff.Rotate(-(angle + 90.0));
        param += diff.x / length;
    }
    return param;
}

void GetBezierControlPoint(CVxDPoint& outC0, CVxDPoint& outC1, const CVxDPoint& prev, const CVxDPoint& p1,
                           const CVxDPoint& p2, const CVxDPoint& next, bool prevIsCurved, bool nextIsCurved)
{
    const double d1 = p1.Distance(prev);
    const double d2 = p2.Distance(p1);
    const double d3 = next.Distance(p2);
    const CVxDPoint m1 = (prev + p1) / 2;
    const CVxDPoint m2 = (p1 + p2) / 2;
    const CVxDPoint m3 = (p2 + next) / 2;

    if (prevIsCurved) {
        const double r = d1 > 1e-4 ? d1 / (d1 + d2) : 0;
        const CVxDPoint q = m1 + (m2 - m1) * r;
        outC0 = p1 + (m2 - q) / 2;
    } else {
        // On the extension of the straight neighbour, half the edge past p1.
        const double f = d1 > 1e-4 ? (d2 / 2 + d1) / d1 : d2 / 2;
        outC0 = prev + (p1 - prev) * f;
    }

    if (nextIsCurved) {
        const double r = d2 > 1e-4 ? d2 / (d2 + d3) : 0;
        const CVxDPoint q = m2 + (m3 - m2) * r;
        outC1 = p2 + (m2 - q) / 2;
    } else {
        const double f = d3 > 1e-4 ? (d2 / 2 + d3) / d3 : d2 / 2;
        outC1 = next + (p2 - next) * f;
    }
}

void GetBezierControlPoint(VxPOINT& outC0, VxPOINT& outC1, const VxPOINT& prev, const VxPOINT& p1,
                           const VxPOINT& p2, const VxPOINT& next, bool prevIsCurved, bool nextIsCurved)
{
    CVxDPoint c0, c1;
    GetBezierControlPoint(c0, c1, CVxDPoint(prev), CVxDPoint(p1), CVxDPoint(p2), CVxDPoint(next),
                          prevIsCurved, nextIsCurved);
    outC0.x = VX_RoundToPixel(c0.x);
    outC0.y = VX_RoundToPixel(c0.y);
    outC1.x = VX_RoundToPixel(c1.x);
    outC1.y = VX_RoundToPixel(c1.y);
}
