#include "CVxPlanGraph.h"

#include <algorithm>
#include <cmath>

namespace {

// Whole degrees in [0, 360) for the usual angles. An angle that is no number
// or too large for an integer sorts as 0.
double WholeDegrees(double angle)
{
    const double whole = std::trunc(angle);
    if (!(std::fabs(whole) < 2.0e9))
        return 0;
    return static_cast<double>((static_cast<int>(whole) + 360) % 360);
}

} // namespace

void CVxPlanVertex::AddEdge(CVxPlanEdge* edge, double edgeAngle)
{
    const double key = WholeDegrees(edgeAngle);
    const auto at = std::upper_bound(edgeAngles.begin(), edgeAngles.end(), key);
    const auto pos = at - edgeAngles.begin();
    edgeAngles.insert(at, key);
    edges.insert(edges.begin() + pos, edge);
    ++degree;
}

CVxPlanEdge* CVxPlanVertex::GetNextEdge(const CVxPlanEdge* edge, bool backwards, bool skipUsed) const
{
    const auto found = std::find(edges.begin(), edges.end(), edge);
    if (found == edges.end())
        return nullptr;
    const size_t count = edges.size();
    const size_t index = static_cast<size_t>(found - edges.begin());
    const bool outerWalk = !backwards;
    // The edge itself comes last: at a dead end the walk turns back along it.
    for (size_t step = 1; step <= count; ++step) {
        const size_t k = backwards ? (index + count - step % count) % count : (index + step) % count;
        CVxPlanEdge* candidate = edges[k];
        if (!skipUsed || !candidate->IsUsed(this, outerWalk))
            return candidate;
    }
    return nullptr;
}

bool CVxPlanEdge::IsUsed(const CVxPlanVertex* vertex, bool outerWalk) const
{
    if (!vertex)
        return !freeSide0 && !freeSide1;
    const bool leavesFrom = vertex == from;
    const bool sideZero = leavesFrom != outerWalk;
    return sideZero ? !freeSide0 : !freeSide1;
}

CVxPlanVertex* CVxPlanEdge::GetNextVert(const CVxPlanVertex* vertex, bool outerWalk)
{
    const bool leavesFrom = vertex == from;
    if (leavesFrom != outerWalk)
        freeSide0 = false;
    else
        freeSide1 = false;
    return leavesFrom ? to : from;
}
