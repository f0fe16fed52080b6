// The wall editor's work on the graph: one wall per edge while editing and
// back again, moving vertices and runs of walls, snapping, the faces'
// appearances and the dimensioning of walls.

#include "CVxWallEditor.h"

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxHitDist.h"
#include "CVxPart.h"
#include "VxEps.h"
#include "VxNumbers.h"
#include "VxTrace.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace {
constexpr double kPi = 3.14159265358979323846;

// Position of p along the wall's line, 0 at start and 1 at end.
double ParamAlong(const CVxWall& wall, const CVxDPoint& p)
{
    const double dx = wall.end.x - wall.start.x;
    const double dy = wall.end.y - wall.start.y;
    const double l2 = dx * dx + dy * dy;
    if (l2 <= 0)
        return 0;
    return ((p.x - wall.start.x) * dx + (p.y - wall.start.y) * dy) / l2;
}

double HeightAt(const CVxWall& wall, const CVxDPoint& p)
{
    const double t = std::clamp(ParamAlong(wall, p), 0.0, 1.0);
    return wall.startHeight + (wall.endHeight - wall.startHeight) * t;
}

bool SameLine(double a1, double a2)
{
    double d = std::fabs(a1 - a2);
    d = std::fmod(d, 180.0);
    return d <= 1.0 || d >= 179.0;
}
} // namespace

bool CVxWallEditor::SplitWallsToEdges(CVxFloor& floor, CVxFloorPlan& plan, bool sort)
{
    CVxRoomWalls& walls = floor.m_walls;
    const int count = walls.GetWallCount();
    std::vector<std::vector<const CVxPlanEdge*>> byWall(static_cast<size_t>(count));
    for (const CVxPlanEdge* edge : plan.edges)
        if (edge && edge->wall >= 0 && edge->wall < count)
            byWall[static_cast<size_t>(edge->wall)].push_back(edge);
    bool split = false;
    for (int i = 0; i < count; ++i) {
        const auto& edges = byWall[static_cast<size_t>(i)];
        const CVxWall original = walls.walls[static_cast<size_t>(i)];
        // A curved wall is one edge of its chord and stays whole.
        if (edges.size() < 2 || original.curved)
            continue;
        bool first = true;
        for (const CVxPlanEdge* edge : edges) {
            const CVxDPoint a = edge->from->Point();
            const CVxDPoint b = edge->to->Point();
            if ((a == original.start && b == original.end) || (a == original.end && b == original.start))
                break;
            CVxWall* target = first ? &walls.walls[static_cast<size_t>(i)] : walls.GetNewWall();
            *target = original;
            first = false;
            target->start = a;
            target->end = b;
            target->startHeight = HeightAt(original, a);
            target->endHeight = HeightAt(original, b);
            target->RecalculateProperites();
            split = true;
        }
    }
    // Walls of no length, left by a drag that put one end on the other or by
    // edges that met in one point, go.
    auto& list = walls.walls;
    const size_t before = list.size();
    list.erase(
        std::remove_if(list.begin(), list.end(), [](const CVxWall& wall) { return wall.start == wall.end; }),
        list.end());
    split = split || list.size() != before;
    if (sort)
        SortWalls(floor);
    return split;
}

void CVxWallEditor::SortWalls(CVxFloor& floor)
{
    auto& list = floor.m_walls.walls;
    std::stable_sort(list.begin(), list.end(), [](const CVxWall& a, const CVxWall& b) {
        if (a.start.x != b.start.x)
            return a.start.x < b.start.x;
        if (a.start.y != b.start.y)
            return a.start.y < b.start.y;
        if (a.end.x != b.end.x)
            return a.end.x < b.end.x;
        if (a.end.y != b.end.y)
            return a.end.y < b.end.y;
        return a.thickness < b.thickness;
    });
}

void CVxWallEditor::ConnectEdgesToWalls(CVxFloor& floor, CVxFloorPlan& /*plan*/, bool /*restrict*/,
                                        int degree, const std::vector<CVxDPoint>* points)
{
    // Worked on the wall ends themselves: while editing every joint is a
    // wall end, so the vertices of the graph are exactly the distinct ends.
    CVxRoomWalls& walls = floor.m_walls;
    auto& list = walls.walls;
    const auto key = [](const CVxDPoint& p) {
        return std::make_pair(std::llround(p.x * 1e4), std::llround(p.y * 1e4));
    };
    bool merged = true;
    while (merged) {
        merged = false;
        std::map<std::pair<long long, long long>, std::vector<int>> ends;
        for (int i = 0; i < static_cast<int>(list.size()); ++i) {
            ends[key(list[static_cast<size_t>(i)].start)].push_back(i);
            ends[key(list[static_cast<size_t>(i)].end)].push_back(i);
        }
        std::vector<bool> gone(list.size(), false);
        std::vector<bool> touched(list.size(), false);
        for (const auto& [where, at] : ends) {
            if (degree >= 1 && static_cast<int>(at.size()) != degree)
                continue;
            const CVxDPoint point(where.first / 1e4, where.second / 1e4);
            if (points && std::none_of(points->begin(), points->end(), [&](const CVxDPoint& p) {
                    return std::fabs(p.x - point.x) < 1e-3 && std::fabs(p.y - point.y) < 1e-3;
                }))
                continue;
            for (size_t m = 0; m < at.size(); ++m) {
                for (size_t n = m + 1; n < at.size(); ++n) {
                    const int i = at[m];
                    const int j = at[n];
                    if (i == j || gone[static_cast<size_t>(i)] || gone[static_cast<size_t>(j)] ||
                        touched[static_cast<size_t>(i)] || touched[static_cast<size_t>(j)])
                        continue;
                    CVxWall& a = list[static_cast<size_t>(i)];
                    const CVxWall& b = list[static_cast<size_t>(j)];
                    if (a.curved || b.curved || !SameLine(a.angle, b.angle) ||
                        std::fabs(a.thickness - b.thickness) >= EPS || a.align != b.align ||
                        (a.align == CVxWall::ALIGN_CUSTOM &&
                         std::fabs(a.customOffset - b.customOffset) >= EPS) ||
                        a.appearanceA != b.appearanceA || a.appearanceB != b.appearanceB ||
                        a.visible != b.visible || a.fillStyle != b.fillStyle || a.lineStyle != b.lineStyle)
                        continue;
                    const bool aAtStart = a.start == point;
                    const bool bAtStart = b.start == point;
                    // Both must leave the point in opposite directions.
                    if (aAtStart == bAtStart)
                        continue;
                    const double ha = aAtStart ? a.startHeight : a.endHeight;
                    const double hb = bAtStart ? b.startHeight : b.endHeight;
                    if (std::fabs(ha - hb) >= EPS)
                        continue;
                    const CVxDPoint aFar = aAtStart ? a.end : a.start;
                    const double aFarH = aAtStart ? a.endHeight : a.startHeight;
                    const CVxDPoint bFar = bAtStart ? b.end : b.start;
                    const double bFarH = bAtStart ? b.endHeight : b.startHeight;
                    const double total = std::hypot(bFar.x - aFar.x, bFar.y - aFar.y);
                    const double part = std::hypot(point.x - aFar.x, point.y - aFar.y);
                    if (total > 0 && std::fabs(aFarH + (bFarH - aFarH) * part / total - ha) > 0.001)
                        continue;
                    if (aAtStart) {
                        a.start = bFar;
                        a.startHeight = bFarH;
                    } else {
                        a.end = bFar;
                        a.endHeight = bFarH;
                    }
                    a.RecalculateProperites();
                    gone[static_cast<size_t>(j)] = true;
                    touched[static_cast<size_t>(i)] = true;
                    merged = true;
                }
            }
        }
        for (int i = static_cast<int>(list.size()) - 1; i >= 0; --i)
            if (gone[static_cast<size_t>(i)])
                walls.Remove(i);
    }
}

void CVxWallEditor::MovePlanEdges(CVxPlanVertex* vertex, double dx, double dy, bool snapToNeighbours,
                                  bool withDims)
{
    CVxFloor* floor = Floor();
    if (!vertex || !floor || !m_project)
        return;
    const double zoom = Zoom();
    const auto moving = [this](const CVxPlanEdge* edge) {
        const int index = m_plan ? m_plan->GetEdgeIdx(edge) : -1;
        return std::find(m_resizeEdges.begin(), m_resizeEdges.end(), index) != m_resizeEdges.end();
    };
    if (snapToNeighbours && zoom > 0) {
        const double reach = CVxHitDist::ResizeSnap();
        for (const CVxPlanEdge* edge : vertex->edges) {
            if (moving(edge))
                continue;
            const CVxPlanVertex* far = edge->from == vertex ? edge->to : edge->from;
            if (std::fabs(vertex->x + dx - far->x) * zoom <= reach)
                dx = far->x - vertex->x;
            if (std::fabs(vertex->y + dy - far->y) * zoom <= reach)
                dy = far->y - vertex->y;
        }
    }
    const CVxDPoint old = vertex->Point();
    double nx = old.x + dx;
    double ny = old.y + dy;
    m_project->SubUnitCorrection(nx, ny, VX_DF_DECIMAL);
    const CVxDPoint moved(nx, ny);
    for (const CVxPlanEdge* edge : vertex->edges) {
        if (moving(edge))
            continue;
        CVxWall* wall = floor->m_walls.SafeGetWall(edge->wall);
        if (!wall)
            continue;
        const bool atStart = wall->start == old;
        const bool atEnd = wall->end == old;
        if (atStart && atEnd) {
            // A wall with both ends here: the move's sign picks the end.
            if (dx + dy < 0)
                wall->start = moved;
            else
                wall->end = moved;
        } else if (atStart) {
            wall->start = moved;
        } else if (atEnd) {
            wall->end = moved;
        } else {
            continue;
        }
        wall->RecalculateProperites();
        if (withDims)
            AddTempDimLine(wall->start, wall->end, wall->thickness / 2 + 14.0 / std::max(zoom, 1e-9));
    }
    vertex->x = nx;
    vertex->y = ny;
}

void CVxWallEditor::BeginEdgeResizing(int edgeIndex)
{
    m_resizeEdges.clear();
    const CVxPlanEdge* edge = m_plan ? m_plan->SafeGetEdge(edgeIndex) : nullptr;
    if (!edge)
        return;
    m_edgeStart = edge->from->Point();
    m_edgeEnd = edge->to->Point();
    m_resizeEdges.push_back(edgeIndex);
    // A wall interrupted by T-joints moves as a whole: follow the run of
    // edges with the same direction from both ends.
    for (const CVxPlanVertex* start : {edge->from, edge->to}) {
        const CVxPlanEdge* current = edge;
        const CVxPlanVertex* at = start;
        for (size_t guard = 0; guard < m_plan->edges.size(); ++guard) {
            const CVxPlanEdge* next = nullptr;
            for (const CVxPlanEdge* other : at->edges) {
                if (other == current || std::fabs(other->angle - edge->angle) >= EPS)
                    continue;
                const int index = m_plan->GetEdgeIdx(other);
                if (std::find(m_resizeEdges.begin(), m_resizeEdges.end(), index) != m_resizeEdges.end())
                    continue;
                next = other;
                m_resizeEdges.push_back(index);
                break;
            }
            if (!next)
                break;
            at = next->from == at ? next->to : next->from;
            current = next;
        }
    }
}

double CVxWallEditor::MoveWallFreely(int edgeIndex, CVxDPoint delta, bool withDims)
{
    CVxFloor* floor = Floor();
    const CVxPlanEdge* edge = m_plan ? m_plan->SafeGetEdge(edgeIndex) : nullptr;
    if (!floor || !edge) {
        VxTrace("Error in CVxWallEditor::MoveWallFreely: Resizing edge with unknown idx\n");
        return 0;
    }
    const double zoom = Zoom();
    const double rounded = m_host ? m_host->GetEditorRoundedZoom() : 1.0;
    if (rounded < 1 && zoom > 0) {
        const double angle = std::fmod(std::fabs(edge->angle), 180.0);
        if (std::fabs(angle - 90) < EPS)
            delta.x = std::round((edge->from->x + delta.x) * zoom) / zoom - edge->from->x;
        else if (angle < EPS)
            delta.y = std::round((edge->from->y + delta.y) * zoom) / zoom - edge->from->y;
    }
    std::set<const CVxPlanVertex*> moved;
    std::vector<int> wallList;
    std::vector<CVxDPoint> oldEnds;
    for (int index : m_resizeEdges) {
        CVxPlanEdge* e = m_plan->SafeGetEdge(index);
        if (!e)
            continue;
        if (std::find(wallList.begin(), wallList.end(), e->wall) == wallList.end())
            wallList.push_back(e->wall);
    }
    for (int index : m_resizeEdges) {
        CVxPlanEdge* e = m_plan->SafeGetEdge(index);
        if (!e)
            continue;
        for (CVxPlanVertex* v : {e->from, e->to}) {
            if (moved.insert(v).second)
                MovePlanEdges(v, delta.x, delta.y, false, withDims);
        }
    }
    for (int w : wallList) {
        CVxWall* wall = floor->m_walls.SafeGetWall(w);
        if (!wall)
            continue;
        double sx = wall->start.x + delta.x, sy = wall->start.y + delta.y;
        double ex = wall->end.x + delta.x, ey = wall->end.y + delta.y;
        m_project->SubUnitCorrection(sx, sy, VX_DF_DECIMAL);
        m_project->SubUnitCorrection(ex, ey, VX_DF_DECIMAL);
        wall->start = CVxDPoint(sx, sy);
        wall->end = CVxDPoint(ex, ey);
        wall->RecalculateProperites();
    }
    // Rooms keep their names and colours by their saved edges.
    floor->m_planDef = m_plan->Save();
    AdjustRoomSpace(*m_project, WallBounds(), true);
    return std::hypot(delta.x, delta.y);
}

double CVxWallEditor::MoveWallPerpendicular(int edgeIndex, double amount, unsigned /*flags*/)
{
    const CVxPlanEdge* edge = m_plan ? m_plan->SafeGetEdge(edgeIndex) : nullptr;
    if (!edge)
        return 0;
    const double r = (edge->angle - 90) * kPi / 180.0;
    return MoveWallFreely(edgeIndex, CVxDPoint(std::cos(r) * amount, std::sin(r) * amount), false);
}

int CVxWallEditor::GetNearestSnapWall(const CVxFloor& floor, double x, double y, double* outT,
                                      const CVxPlanVertex* excludeVertex) const
{
    long long best = -1;
    int found = -1;
    for (int i = 0; i < floor.m_walls.GetWallCount(); ++i) {
        const CVxWall& wall = floor.m_walls.walls[static_cast<size_t>(i)];
        if (excludeVertex && (wall.start == excludeVertex->Point() || wall.end == excludeVertex->Point()))
            continue;
        double t = 0;
        const double d = wall.GetDistFromLine(nullptr, nullptr, x, y, &t);
        if (!std::isfinite(d))
            continue;
        const long long rounded = static_cast<long long>(std::floor(10000 * d + 0.5));
        if (found < 0 || rounded < best) {
            best = rounded;
            found = i;
            if (outT)
                *outT = t;
        }
    }
    return found;
}

CVxDPoint CVxWallEditor::GetSnappedWallPoint(const CVxFloor& floor, const CVxDPoint& pixels, bool* outSnapped,
                                             const CVxPlanVertex* excludeVertex, int* outWall,
                                             double* outT) const
{
    const double zoom = Zoom();
    if (outSnapped)
        *outSnapped = false;
    if (outWall)
        *outWall = -1;
    if (zoom <= 0)
        return pixels;
    const CVxDPoint units = pixels / zoom;
    double t = 0;
    const int index = GetNearestSnapWall(floor, units.x, units.y, &t, excludeVertex);
    const CVxWall* wall = floor.m_walls.SafeGetWall(index);
    if (!wall)
        return units;
    const CVxDPoint on = wall->GetPointOnWall(t);
    if (std::hypot(on.x * zoom - pixels.x, on.y * zoom - pixels.y) > CVxHitDist::WallSnap())
        return units;
    if (outSnapped)
        *outSnapped = true;
    if (outWall)
        *outWall = index;
    if (outT)
        *outT = t;
    return on;
}

bool CVxWallEditor::CanBeSnappedWallPoint(const CVxFloor& floor, const CVxDPoint& pixels) const
{
    bool snapped = false;
    GetSnappedWallPoint(floor, pixels, &snapped, nullptr, nullptr, nullptr);
    return snapped;
}

void CVxWallEditor::GetSnappedPointToFarVertexCoord(CVxDPoint& ioPixels, bool* outX, bool* outY) const
{
    const double zoom = Zoom();
    if (outX)
        *outX = false;
    if (outY)
        *outY = false;
    if (!m_plan || zoom <= 0)
        return;
    const double reach = CVxHitDist::ResizeSnap();
    const double x = ioPixels.x;
    const double y = ioPixels.y;
    for (const CVxPlanVertex* vertex : m_plan->vertices) {
        if (std::fabs(x - vertex->x * zoom) <= reach) {
            ioPixels.x = vertex->x * zoom;
            if (outX)
                *outX = true;
        }
        if (std::fabs(y - vertex->y * zoom) <= reach) {
            ioPixels.y = vertex->y * zoom;
            if (outY)
                *outY = true;
        }
    }
}

void CVxWallEditor::SetBestWallAlignForNewWall(CVxFloor& floor, int index)
{
    CVxWall* wall = floor.m_walls.SafeGetWall(index);
    if (!wall)
        return;
    for (int i = 0; i < floor.m_walls.GetWallCount(); ++i) {
        const CVxWall& other = floor.m_walls.walls[static_cast<size_t>(i)];
        if (i == index || std::fabs(other.angle - wall->angle) >= EPS)
            continue;
        if (other.start == wall->start || other.start == wall->end || other.end == wall->start ||
            other.end == wall->end) {
            wall->align = other.align;
            wall->thickness = other.thickness;
            wall->customOffset = other.customOffset;
            wall->RecalculateProperites();
            return;
        }
    }
}

void CVxWallEditor::AdjustRoomSpace(CVxProject& project, const CVxDRect& rect, bool grow)
{
    if (!grow || rect.Width() < 0 || rect.Height() < 0)
        return;
    if (-rect.left > project.m_spaceLeft)
        project.m_spaceLeft = 5 - rect.left;
    if (-rect.top > project.m_spaceTop)
        project.m_spaceTop = 5 - rect.top;
    if (rect.right > project.m_width + project.m_spaceRight)
        project.m_spaceRight = rect.right - project.m_width + 5;
    if (rect.bottom > project.m_height + project.m_spaceBottom)
        project.m_spaceBottom = rect.bottom - project.m_height + 5;
}

CVxDRect CVxWallEditor::WallBounds() const
{
    CVxDRect rect;
    if (const CVxFloor* floor = Floor())
        floor->m_walls.GetRoomDims(rect);
    return rect;
}

int CVxWallEditor::GetRegionWallAppearance(const CVxRoomWalls& walls, const CVxFloorRegion& region, int k)
{
    if (k < 0 || k >= region.GetVertexCount() || k >= static_cast<int>(region.walls.size()))
        return -1;
    const CVxWall* wall = walls.SafeGetWall(region.walls[static_cast<size_t>(k)]);
    if (!wall)
        return -1;
    const bool atStart = region.vertices[static_cast<size_t>(k)]->Point() == wall->start;
    if (atStart)
        return region.isOuter ? wall->appearanceA : wall->appearanceB;
    return region.isOuter ? wall->appearanceB : wall->appearanceA;
}

void CVxWallEditor::SetRegionWallAppearance(CVxRoomWalls& walls, const CVxFloorRegion& region, int k,
                                            int index)
{
    if (k < 0 || k >= region.GetVertexCount() || k >= static_cast<int>(region.walls.size()))
        return;
    CVxWall* wall = walls.SafeGetWall(region.walls[static_cast<size_t>(k)]);
    if (!wall)
        return;
    const bool atStart = region.vertices[static_cast<size_t>(k)]->Point() == wall->start;
    if (atStart == !region.isOuter)
        wall->appearanceB = index;
    else
        wall->appearanceA = index;
}

void CVxWallEditor::ChangeRegionAppearances(CVxFloor& floor, const CVxFloorRegion& region, int oldIndex)
{
    const int index = floor.m_walls.AddFindAppearance(region.wallAppearance);
    for (int k = 0; k < region.GetVertexCount(); ++k) {
        const int now = GetRegionWallAppearance(floor.m_walls, region, k);
        if (now < 0 || now == oldIndex)
            SetRegionWallAppearance(floor.m_walls, region, k, index);
    }
}

void CVxWallEditor::AssignRegionColorsToWalls(CVxFloor& floor)
{
    CVxFloorPlan temp;
    temp.CreatePlan(floor, -1);
    SplitWallsToEdges(floor, temp, false);
    CVxFloorPlan plan;
    plan.CreatePlan(floor, -1);
    for (const CVxFloorRegion& region : plan.regions) {
        const int index = floor.m_walls.AddFindAppearance(region.wallAppearance);
        for (int k = 0; k < region.GetVertexCount(); ++k)
            SetRegionWallAppearance(floor.m_walls, region, k, index);
    }
    const int outer = floor.m_walls.AddFindAppearance(floor.m_wallExtAppear);
    for (CVxWall& wall : floor.m_walls.walls) {
        if (wall.appearanceA < 0)
            wall.appearanceA = outer;
        if (wall.appearanceB < 0)
            wall.appearanceB = outer;
    }
    SortWalls(floor);
}

void CVxWallEditor::UpdateWallAppearances(CVxFloor& floor, CVxFloorPlan& plan)
{
    if (floor.m_walls.appearances.empty()) {
        AssignRegionColorsToWalls(floor);
        plan.CreatePlan(floor, -1);
        return;
    }
    const auto fill = [&](const CVxFloorRegion& region) {
        for (int k = 0; k < region.GetVertexCount(); ++k) {
            if (GetRegionWallAppearance(floor.m_walls, region, k) >= 0)
                continue;
            int chosen = -1;
            const int run = k < static_cast<int>(region.segmentIds.size())
                                ? region.segmentIds[static_cast<size_t>(k)]
                                : -1;
            for (int j = 0; j < region.GetVertexCount() && chosen < 0; ++j)
                if (j != k && j < static_cast<int>(region.segmentIds.size()) &&
                    region.segmentIds[static_cast<size_t>(j)] == run)
                    chosen = GetRegionWallAppearance(floor.m_walls, region, j);
            for (int j = 0; j < region.GetVertexCount() && chosen < 0; ++j)
                chosen = GetRegionWallAppearance(floor.m_walls, region, j);
            if (chosen < 0)
                chosen = floor.m_walls.AddFindAppearance(region.wallAppearance);
            SetRegionWallAppearance(floor.m_walls, region, k, chosen);
        }
    };
    for (const CVxFloorRegion& region : plan.regions)
        fill(region);
    for (const CVxFloorRegion& region : plan.outerRegions)
        fill(region);
    floor.m_walls.RemoveUnusedAppearances();
}

bool CVxWallEditor::DimensionWall(CVxFloor& floor, const CVxFloorPlan& plan, int wallIndex, double distance,
                                  int /*unit*/, bool both, int side)
{
    const CVxWall* wall = floor.m_walls.SafeGetWall(wallIndex);
    if (!wall || wall->length <= 0)
        return false;
    CVxDPoint a, b;
    if (!plan.FindInnerEdgeForWall(wallIndex, wall->start, &a, &b)) {
        // A wall with no room on either side is measured on its line.
        a = wall->start;
        b = wall->end;
    }
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (length <= 0)
        return false;
    const CVxDPoint dir((b.x - a.x) / length, (b.y - a.y) / length);
    const CVxDPoint normal(-dir.y, dir.x);
    // The line stands on the side of the inner face that looks away from
    // the wall's centre line, so it lies inside the room.
    const CVxDPoint mid((a.x + b.x) / 2, (a.y + b.y) / 2);
    const double toward =
        (mid.x - wall->start.x) * normal.x + (mid.y - wall->start.y) * normal.y -
        ((wall->end.x - wall->start.x) * normal.x + (wall->end.y - wall->start.y) * normal.y) / 2;
    double sign = toward >= 0 ? 1.0 : -1.0;
    if (side == 1)
        sign = -sign;
    const double degrees = std::atan2(dir.y, dir.x) * 180.0 / kPi;
    const double mark = distance > 0 ? distance : 10.0;
    int made = 0;
    for (int pass = 0; pass < (both ? 2 : 1); ++pass) {
        const double s = pass == 0 ? sign : -sign;
        const double off = pass == 0 ? distance : distance + wall->thickness;
        const CVxDPoint from(a.x + normal.x * off * s, a.y + normal.y * off * s);
        CVxPart* line = floor.GetNewObject(nullptr, true);
        line->type = ptMeasLine;
        line->caption = L"~";
        line->layer = floor.m_layers.GetActiveLayer();
        const double r = degrees * kPi / 180.0;
        line->width = std::round(length * 100.0) / 100.0;
        line->height = mark;
        line->rotation = degrees < 0 ? degrees + 360 : degrees;
        line->x = from.x + std::sin(r) * mark / 2;
        line->y = from.y - std::cos(r) * mark / 2;
        line->InvalidateCache();
        ++made;
    }
    floor.m_objectCount = floor.CountUsedObjects();
    return made > 0;
}
