#pragma once
// The inside count of outlines, shared by the point tests of polygons and
// the subtraction of floor openings so that both count crossings alike.

#include "CVxDPoint.h"
#include "CVxDRect.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"

#include <algorithm>
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

// Placing a point against a straight outline with the given bounds, one
// edge at a time: whether the point lies on the outline (at a vertex, or
// within maxDist of an edge) and how often the ray to the right crosses it.
// The margins filter edges by boxes without ever changing an answer.
class CVxPlaceProbe
{
public:
    CVxPlaceProbe(const CVxDPoint& point, double maxDist, const CVxDRect& bounds, double magnitude)
        : m_point(point), m_far(bounds.right + 50, point.y), m_maxDist(maxDist),
          m_reach(maxDist + RoundingSlack(2 * std::max(magnitude, std::fabs(point.x) + std::fabs(point.y)))),
          m_ray(bounds.PtInRect(point))
    {
        const double slack = RoundingSlack(magnitude);
        m_low = point.y + EPS * (bounds.bottom - bounds.top) + slack;
        m_high = point.y - EPS * (bounds.bottom - bounds.top) - slack;
        m_left = point.x - EPS * (m_far.x - point.x + bounds.right - bounds.left) - slack;
        // Twice the widest of the margins in y: an edge beyond it is skipped
        // by every one of the filters, whatever their rounding.
        m_band = 2 * std::max(std::max(m_reach, EPS * (bounds.bottom - bounds.top) + slack), 2 * EPS);
    }

    // The band in y beyond which no edge matters.
    double Band() const { return m_band; }
    // Edges wholly left of this never cross the ray.
    double Left() const { return m_left; }
    bool On() const { return m_on; }
    int Crossings() const { return m_crossings; }

    void Edge(const CVxDPoint& p1, const CVxDPoint& p2)
    {
        const double minY = std::min(p1.y, p2.y);
        const double maxY = std::max(p1.y, p2.y);
        if (m_point.y < minY - m_band || m_point.y > maxY + m_band)
            return;
        if (p1 == m_point)
            m_on = true;
        if (!(m_point.x < std::min(p1.x, p2.x) - m_reach || m_point.x > std::max(p1.x, p2.x) + m_reach ||
              m_point.y < minY - m_reach || m_point.y > maxY + m_reach)) {
            double t = -1;
            const double dist = DblGetDistFromLine(p1, p2, m_point, &t);
            if (t > 0 && t < 1 && dist <= m_maxDist)
                m_on = true;
        }
        // A level edge is parallel to the ray: it never counts.
        if (!m_ray || m_low < minY || m_high > maxY || std::max(p1.x, p2.x) < m_left || p1.y == p2.y)
            return;
        if (RayCrossesEdge(m_point, m_far, p1, p2))
            ++m_crossings;
    }

    // Crossings of edges that were left out count through their parity.
    void AddCrossings(int count) { m_crossings += count; }

private:
    CVxDPoint m_point;
    CVxDPoint m_far;
    double m_maxDist;
    double m_reach;
    bool m_ray;
    double m_low = 0;
    double m_high = 0;
    double m_left = 0;
    double m_band = 0;
    bool m_on = false;
    int m_crossings = 0;
};

} // namespace vx_polygon
