#pragma once
// The inside count of outlines, shared by the point tests of polygons and
// the subtraction of floor openings so that both count crossings alike.

#include "CVxDPoint.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"

#include <cmath>

namespace vx_polygon {

// Slack for rounding when a box test stands in for an exact one: far above
// the rounding of coordinates of this size, far below any tolerance.
inline double RoundingSlack(double magnitude)
{
    return 1e-9 * (1 + magnitude);
}

// Whether the ray from `point` to `far` crosses the edge p1-p2 for the
// inside count. A ray through a corner counts only for the edge that leaves
// the corner towards larger y, so that grazing a corner counts twice or not
// at all and a real crossing at a vertex counts once.
inline bool RayCrossesEdge(const CVxDPoint& point, const CVxDPoint& far, const CVxDPoint& p1,
                           const CVxDPoint& p2)
{
    double t = 0;
    double u = 0;
    if (!DblFindInter(&point, &far, &p1, &p2, &t, &u) ||
        !(t > -EPS && t - 1 < EPS && u > -EPS && u - 1 < EPS))
        return false;
    const bool atStart = std::fabs(u) < EPS;
    const bool atEnd = std::fabs(u - 1) < EPS;
    if (!atStart && !atEnd)
        return true;
    return (atStart ? p2 : p1).y > point.y;
}

} // namespace vx_polygon
