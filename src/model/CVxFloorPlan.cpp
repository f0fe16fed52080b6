// Rooms of a floor: the faces of the planar graph, their polygons along the
// wall faces, their identity across rebuilds, and their drawing.

#include "CVxFloorPlan.h"

#include "CVxDC.h"
#include "CVxFloor.h"
#include "CVxHitDist.h"
#include "CVxRoomWalls.h"
#include "CVxWall.h"
#include "VxAngle.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <queue>

namespace {

// The segment number of the next boundary edge: it stays while the walk
// continues a straight run of walls of the same kind.
int32_t NextSegment(int32_t segment, const CVxPlanEdge* current, const CVxPlanEdge* next,
                    const CVxRoomWalls& walls)
{
    if (next == current || next->angle != current->angle)
        return segment + 1;
    const CVxWall* w1 = walls.SafeGetWall(current->wall);
    const CVxWall* w2 = walls.SafeGetWall(next->wall);
    if (!w1 || !w2)
        return segment;
    if (w1->thickness == w2->thickness && w1->visible == w2->visible && !w1->curved && !w2->curved)
        return segment;
    return segment + 1;
}

// The floor openings as polygons without touching the floor: a polygon
// opening wound the wrong way is turned round in a copy.
std::vector<CVxDPolygon> HolePolygons(const CVxRoomWalls& walls)
{
    std::vector<CVxDPolygon> list;
    for (const CVxHoleInFloor& hole : walls.holes) {
        CVxHoleInFloor copy(hole);
        CVxDPolygon polygon;
        copy.GetHolePolygon(polygon);
        if (polygon.kind == CVxDPolygon::KIND_HOLE)
            list.push_back(polygon);
    }
    return list;
}

// An exact key of a saved edge; -0 and 0 are the same coordinate.
struct CEdgeKey
{
    double v[4];
    bool outer;
    bool operator==(const CEdgeKey& o) const
    {
        return v[0] == o.v[0] && v[1] == o.v[1] && v[2] == o.v[2] && v[3] == o.v[3] && outer == o.outer;
    }
};

struct CEdgeKeyHash
{
    size_t operator()(const CEdgeKey& key) const
    {
        size_t h = key.outer ? 1 : 0;
        for (double value : key.v) {
            const double normal = value == 0 ? 0.0 : value;
            uint64_t bits = 0;
            std::memcpy(&bits, &normal, sizeof bits);
            h = h * 0x100000001b3ull ^ static_cast<size_t>(bits ^ (bits >> 29));
        }
        return VxMixHash(h);
    }
};

template <typename Each>
void ForAllRegions(CVxFloorPlan& plan, Each each)
{
    for (CVxFloorRegion& region : plan.regions)
        each(region);
    for (CVxFloorRegion& region : plan.outerRegions)
        each(region);
}

} // namespace

void CVxFloorPlan::CreatePlan(CVxFloor& floor, int unit)
{
    Reset();
    FindWallIntersections(floor.m_walls);
    MarkComponents();
    FindRegions(floor, unit);
    MatchRegions(floor.m_planDef);
    RemoveHolesFromRegions(floor.m_walls);
}

CVxFloorPlanDef CVxFloorPlan::Save() const
{
    CVxFloorPlanDef def;
    CVxFloorPlanDef::CFloorPlanItem item;
    for (const CVxFloorRegion& region : regions)
        if (region.SaveToItem(item))
            def.items.push_back(item);
    for (const CVxFloorRegion& region : outerRegions)
        if (region.SaveToItem(item))
            def.items.push_back(item);
    return def;
}

CVxFloorRegion* CVxFloorPlan::SafeGetRegion(int i)
{
    return i >= 0 && i < GetRegionCount() ? &regions[static_cast<size_t>(i)] : nullptr;
}

const CVxFloorRegion* CVxFloorPlan::SafeGetRegion(int i) const
{
    return i >= 0 && i < GetRegionCount() ? &regions[static_cast<size_t>(i)] : nullptr;
}

CVxFloorRegion* CVxFloorPlan::SafeGetOuterRegion(int i)
{
    return i >= 0 && i < GetOuterRegionCount() ? &outerRegions[static_cast<size_t>(i)] : nullptr;
}

const CVxFloorRegion* CVxFloorPlan::SafeGetOuterRegion(int i) const
{
    return i >= 0 && i < GetOuterRegionCount() ? &outerRegions[static_cast<size_t>(i)] : nullptr;
}

CVxFloorRegion* CVxFloorPlan::GetInnerOtOuterRegion(int i)
{
    if (i < GetRegionCount())
        return SafeGetRegion(i);
    return SafeGetOuterRegion(i - GetRegionCount());
}

double CVxFloorPlan::GetArea() const
{
    double area = 0;
    for (const CVxFloorRegion& region : regions)
        area += region.innerPolygon.GetArea();
    return area;
}

double CVxFloorPlan::GetOuterArea() const
{
    double area = 0;
    for (const CVxFloorRegion& region : outerRegions)
        area += region.outerPolygon.GetArea();
    return area;
}

int CVxFloorPlan::FindRegion(const CVxDPoint& point) const
{
    int best = -1;
    double bestArea = 0;
    for (int i = 0; i < GetRegionCount(); ++i) {
        const CVxFloorRegion& region = regions[static_cast<size_t>(i)];
        if (!region.PtInRegion(point))
            continue;
        // A room inside another has no hole in it: the smaller one wins.
        const double area = region.GetAreaWithoutHoles();
        if (best < 0 || area < bestArea) {
            best = i;
            bestArea = area;
        }
    }
    return best;
}

void CVxFloorPlan::FindRegions(const CVxFloor& floor, int unit)
{
    regions.clear();
    outerRegions.clear();
    FindRegionsPhase1(floor);
    FindRegionsPhase2(floor, unit);
}

void CVxFloorPlan::FindRegionsPhase1(const CVxFloor& floor)
{
    const CVxRoomWalls& walls = floor.m_walls;
    // The top-left vertex of each component: its first edge in angular order
    // lies on the outer contour.
    std::vector<CVxPlanVertex*> starts(static_cast<size_t>(std::max(componentCount, 0)), nullptr);
    for (CVxPlanVertex* vertex : vertices) {
        if (vertex->component < 0 || vertex->component >= componentCount)
            continue;
        CVxPlanVertex*& best = starts[static_cast<size_t>(vertex->component)];
        if (!best || vertex->y < best->y || (vertex->y == best->y && vertex->x < best->x))
            best = vertex;
    }
    // Every step uses up one side of an edge, so no walk is longer than this.
    const size_t maxSteps = 2 * edges.size() + 2;
    CVxFloorRegion region;
    for (CVxPlanVertex* start : starts) {
        if (!start || start->edges.empty())
            continue;
        CVxPlanEdge* startEdge = start->edges[0];
        region.ClearBoundary();
        region.vertices.push_back(start);
        region.walls.push_back(startEdge->wall);
        int32_t segment = 0;
        region.segmentIds.push_back(segment);
        CVxPlanEdge* current = startEdge;
        CVxPlanVertex* reached = current->GetNextVert(start, true);
        size_t counted = 1;
        while (counted <= maxSteps) {
            region.vertices.push_back(reached);
            CVxPlanEdge* next = reached->GetNextEdge(current, false, true);
            if (!next)
                break;
            region.walls.push_back(next->wall);
            segment = NextSegment(segment, current, next, walls);
            region.segmentIds.push_back(segment);
            reached = next->GetNextVert(reached, true);
            current = next;
            ++counted;
            if (current == startEdge || reached == start)
                break;
        }
        if (counted <= 2)
            continue;
        region.isOuter = true;
        region.floorAppearance = CVxAppearance(0xffffff);
        region.wallAppearance = floor.m_wallExtAppear;
        region.ceilingAppearance = floor.m_ceilingAppear;
        region.CalculateInnerVertices(walls);
        outerRegions.push_back(region);
    }
}

void CVxFloorPlan::FindRegionsPhase2(const CVxFloor& floor, int unit)
{
    const CVxRoomWalls& walls = floor.m_walls;
    CVxFloorRegion templ;
    templ.floorAppearance = floor.m_floorAppear;
    templ.ceilingAppearance = floor.m_ceilingAppear;
    templ.wallAppearance = floor.m_walls3DAppear;
    templ.baseMolding = floor.m_baseMolding;
    templ.crownMolding = floor.m_crownMolding;
    templ.isOuter = false;
    if (unit >= 0) {
        templ.baseMolding.SetDefaultSizeForUnit(unit);
        templ.crownMolding.SetDefaultSizeForUnit(unit);
    }

    // The next walk starts at the top-left free side. With coordinates that
    // are numbers, (y, x, edge) entries keep that choice in order: the
    // candidate of an edge only moves from its from end to its to end as
    // its sides are used, once, and the walks report the edges they touch.
    // An entry, once its edge has moved on, never counts again; so the
    // entries known at the start are sorted once and passed over by a
    // cursor, and only those of edges that move on later go through a heap.
    struct CEntry
    {
        double y, x;
        size_t edge;
        bool atTo;
        bool operator>(const CEntry& o) const
        {
            if (y != o.y)
                return y > o.y;
            if (x != o.x)
                return x > o.x;
            return edge > o.edge;
        }
    };
    auto entryOf = [&](size_t k) {
        const CVxPlanEdge* edge = edges[k];
        const CVxPlanVertex* candidate = edge->freeSide0 ? edge->from : edge->to;
        return CEntry{candidate->y, candidate->x, k, !edge->freeSide0};
    };
    bool ordered = true;
    for (const CVxPlanVertex* vertex : vertices)
        ordered = ordered && !std::isnan(vertex->x) && !std::isnan(vertex->y);
    struct CEdgeHash
    {
        size_t operator()(const CVxPlanEdge* edge) const
        {
            return VxMixHash(reinterpret_cast<uintptr_t>(edge));
        }
    };
    CVxFlatIndexMap<const CVxPlanEdge*, size_t, CEdgeHash> edgeIndex;
    std::vector<CEntry> initial;
    // Whether the entry of an edge's to end has been made.
    std::vector<uint8_t> atToQueued;
    if (ordered) {
        edgeIndex.Reserve(edges.size());
        initial.reserve(edges.size());
        atToQueued.assign(edges.size(), 0);
        for (size_t k = 0; k < edges.size(); ++k) {
            edgeIndex[edges[k]] = k;
            if (edges[k]->IsUsed(nullptr, false))
                continue;
            initial.push_back(entryOf(k));
            atToQueued[k] = initial.back().atTo;
        }
    }
    std::sort(initial.begin(), initial.end(), [](const CEntry& a, const CEntry& b) { return b > a; });
    size_t cursor = 0;
    std::priority_queue<CEntry, std::vector<CEntry>, std::greater<CEntry>> heap;
    auto counts = [&](const CEntry& entry) {
        const CVxPlanEdge* edge = edges[entry.edge];
        return !edge->IsUsed(nullptr, false) && entry.atTo == !edge->freeSide0;
    };
    auto nextStart = [&]() -> CVxPlanEdge* {
        if (ordered) {
            while (cursor < initial.size() && !counts(initial[cursor]))
                ++cursor;
            while (!heap.empty() && !counts(heap.top()))
                heap.pop();
            const CEntry* best = cursor < initial.size() ? &initial[cursor] : nullptr;
            if (!heap.empty() && (!best || *best > heap.top()))
                best = &heap.top();
            return best ? edges[best->edge] : nullptr;
        }
        CVxPlanEdge* best = nullptr;
        const CVxPlanVertex* bestVertex = nullptr;
        for (CVxPlanEdge* edge : edges) {
            if (edge->IsUsed(nullptr, false))
                continue;
            const CVxPlanVertex* candidate = edge->freeSide0 ? edge->from : edge->to;
            if (!best || candidate->y < bestVertex->y ||
                (candidate->y == bestVertex->y && candidate->x < bestVertex->x)) {
                best = edge;
                bestVertex = candidate;
            }
        }
        return best;
    };

    const size_t maxSteps = 2 * edges.size() + 2;
    std::vector<const CVxPlanEdge*> touched;
    CVxFloorRegion region;
    for (size_t walk = 0; walk <= maxSteps; ++walk) {
        CVxPlanEdge* startEdge = nextStart();
        if (!startEdge)
            break;
        CVxPlanVertex* start = startEdge->freeSide0 ? startEdge->from : startEdge->to;
        region.ClearBoundary();
        region.vertices.push_back(start);
        region.walls.push_back(startEdge->wall);
        int32_t segment = 0;
        region.segmentIds.push_back(segment);
        CVxDPolygon polygon;
        polygon.points.push_back(start->Point());
        touched.assign(1, startEdge);

        CVxPlanEdge* current = startEdge;
        CVxPlanVertex* reached = current->GetNextVert(start, false);
        size_t counted = 1;
        if (reached != start) {
            while (counted <= maxSteps) {
                polygon.points.push_back(reached->Point());
                region.vertices.push_back(reached);
                CVxPlanEdge* next = reached->GetNextEdge(current, true, true);
                if (!next)
                    break;
                region.walls.push_back(next->wall);
                segment = NextSegment(segment, current, next, walls);
                region.segmentIds.push_back(segment);
                reached = next->GetNextVert(reached, false);
                current = next;
                touched.push_back(next);
                ++counted;
                if (reached == start)
                    break;
            }
        }
        if (ordered)
            for (const CVxPlanEdge* edge : touched) {
                const size_t k = *edgeIndex.Find(edge);
                if (!edge->freeSide0 && edge->freeSide1 && !atToQueued[k]) {
                    atToQueued[k] = 1;
                    heap.push(entryOf(k));
                }
            }
        if (counted <= 2 || !(polygon.GetArea() > 1e-5))
            continue;
        regions.push_back(templ);
        CVxFloorRegion& room = regions.back();
        room.vertices = region.vertices;
        room.walls = region.walls;
        room.segmentIds = region.segmentIds;
        room.CalculateInnerVertices(walls);
    }
}

void CVxFloorPlan::MatchRegions(const CVxFloorPlanDef& def)
{
    if (def.items.empty())
        return;
    // The first item, in list order, whose saved edge a region holds.
    CVxFlatIndexMap<CEdgeKey, size_t, CEdgeKeyHash> byEdge;
    byEdge.Reserve(def.items.size());
    for (size_t k = 0; k < def.items.size(); ++k) {
        const CVxFloorPlanDef::CFloorPlanItem& item = def.items[k];
        const CEdgeKey key{{item.edgeFrom.x, item.edgeFrom.y, item.edgeTo.x, item.edgeTo.y}, item.isOuter};
        if (!byEdge.Find(key))
            byEdge[key] = k;
    }
    ForAllRegions(*this, [&](CVxFloorRegion& region) {
        const size_t n = region.vertices.size();
        size_t best = def.items.size();
        for (size_t k = 0; k < n; ++k) {
            const CVxPlanVertex* from = region.vertices[k];
            const CVxPlanVertex* to = region.vertices[(k + 1) % n];
            if (const size_t* found = byEdge.Find(CEdgeKey{{from->x, from->y, to->x, to->y}, region.isOuter}))
                best = std::min(best, *found);
        }
        if (best < def.items.size()) {
            region.LoadFromItem(def.items[best]);
            return;
        }
        if (n == 0)
            return;
        // After an edit that moved the saved edge, a room that still starts
        // at the same corner keeps its record.
        const CVxDPoint first = region.vertices[0]->Point();
        for (const CVxFloorPlanDef::CFloorPlanItem& item : def.items) {
            if (item.isOuter == region.isOuter && item.edgeFrom == first) {
                region.LoadFromItem(item);
                return;
            }
        }
    });
}

void CVxFloorPlan::RemoveHolesFromRegions(CVxRoomWalls& walls)
{
    std::vector<CVxDPolygon> holes;
    walls.GetHolePolygonList(holes);
    ApplyHoles(holes);
}

void CVxFloorPlan::ApplyHoles(const std::vector<CVxDPolygon>& holes)
{
    if (holes.empty())
        return;
    ForAllRegions(*this, [&](CVxFloorRegion& region) { region.CalculateWithoutHoles(holes); });
}

void CVxFloorPlan::UpdateAllRegionPolygons(const CVxFloor& floor)
{
    ForAllRegions(*this, [&](CVxFloorRegion& region) { region.CalculateInnerVertices(floor.m_walls); });
    ApplyHoles(HolePolygons(floor.m_walls));
}

void CVxFloorPlan::ChangeSurfaceAppearace(CVxFloor& floor, const CVxAppearance& newAppearance,
                                          const CVxAppearance& oldAppearance, int surface)
{
    // The faces of the walls that follow a room's wall appearance are the
    // wall editor's: it calls ChangeRegionAppearances for surfaces 2 and 3
    // after this, with the same floor.
    (void)floor;
    std::vector<CVxFloorRegion>& list = surface == CVxFloorRegion::SURF_OUTER_WALL ? outerRegions : regions;
    for (CVxFloorRegion& region : list) {
        CVxAppearance& appearance = region.GetSurfaceAppearance(surface);
        if (appearance == oldAppearance)
            appearance = newAppearance;
    }
}

bool CVxFloorPlan::IsCommonSurfaceAppearance(CVxAppearance& appearance, int surface) const
{
    const std::vector<CVxFloorRegion>& list =
        surface == CVxFloorRegion::SURF_OUTER_WALL ? outerRegions : regions;
    if (list.empty())
        return false;
    const CVxAppearance& common = list[0].GetSurfaceAppearance(surface);
    for (const CVxFloorRegion& region : list)
        if (region.GetSurfaceAppearance(surface) != common)
            return false;
    appearance = common;
    return true;
}

bool CVxFloorPlan::IsFloorTexturePresent() const
{
    return std::any_of(regions.begin(), regions.end(),
                       [](const CVxFloorRegion& region) { return region.floorAppearance.kind == 1; });
}

void CVxFloorPlan::Move(double dx, double dy, double dz)
{
    (void)dz;
    for (CVxPlanVertex* vertex : vertices) {
        vertex->x += dx;
        vertex->y += dy;
        DblRound2(vertex->x);
        DblRound2(vertex->y);
    }
    ForAllRegions(*this, [&](CVxFloorRegion& region) {
        region.innerPolygon.Offset(dx, dy);
        region.outerPolygon.Offset(dx, dy);
        for (CVxDPolygon& polygon : region.polygonsWithoutHoles)
            polygon.Offset(dx, dy);
    });
    m_vertexIndexValid = false;
}

void CVxFloorPlan::Scale(double sx, double sy, double sz)
{
    for (CVxPlanVertex* vertex : vertices) {
        vertex->x *= sx;
        vertex->y *= sy;
        DblRound2(vertex->x);
        DblRound2(vertex->y);
    }
    ForAllRegions(*this, [&](CVxFloorRegion& region) {
        region.floorAppearance.Scale(sx, sy);
        region.baseMolding.Scale(sx, sy, sz);
        region.crownMolding.Scale(sx, sy, sz);
        region.innerPolygon.Scale(sx, sy);
        region.outerPolygon.Scale(sx, sy);
        for (CVxDPolygon& polygon : region.polygonsWithoutHoles)
            polygon.Scale(sx, sy);
    });
    m_vertexIndexValid = false;
}

namespace {

// Moves plan and polygons so that the least vertex coordinates become 0.
void NormalisePlan(CVxFloorPlan& plan)
{
    if (plan.vertices.empty())
        return;
    double left = plan.vertices[0]->x, top = plan.vertices[0]->y;
    for (const CVxPlanVertex* vertex : plan.vertices) {
        left = std::min(left, vertex->x);
        top = std::min(top, vertex->y);
    }
    plan.Move(-left, -top, 0);
}

} // namespace

void CVxFloorPlan::Rotate(double degrees, bool normalise)
{
    for (CVxPlanVertex* vertex : vertices) {
        CVxDPoint point = vertex->Point();
        point.Rotate(degrees);
        vertex->x = DblRound2x(point.x);
        vertex->y = DblRound2x(point.y);
    }
    for (CVxPlanEdge* edge : edges)
        edge->angle = VX_NormalizeAngle(edge->angle + degrees);
    ForAllRegions(*this, [&](CVxFloorRegion& region) {
        region.innerPolygon.Rotate(degrees);
        region.outerPolygon.Rotate(degrees);
        for (CVxDPolygon& polygon : region.polygonsWithoutHoles)
            polygon.Rotate(degrees);
    });
    m_vertexIndexValid = false;
    if (normalise)
        NormalisePlan(*this);
}

void CVxFloorPlan::Mirror(bool aroundX, bool normalise)
{
    for (CVxPlanVertex* vertex : vertices) {
        if (aroundX)
            vertex->y = -vertex->y;
        else
            vertex->x = -vertex->x;
    }
    for (CVxPlanEdge* edge : edges) {
        edge->angle -= 180;
        std::swap(edge->from, edge->to);
    }
    ForAllRegions(*this, [&](CVxFloorRegion& region) {
        region.innerPolygon.Mirror(!aroundX);
        region.outerPolygon.Mirror(!aroundX);
        for (CVxDPolygon& polygon : region.polygonsWithoutHoles)
            polygon.Mirror(!aroundX);
    });
    m_vertexIndexValid = false;
    if (normalise)
        NormalisePlan(*this);
}

bool CVxFloorPlan::FindInnerEdgeForWall(int wall, const CVxDPoint& point, CVxDPoint* outA,
                                        CVxDPoint* outB) const
{
    double longest = 0;
    for (const CVxFloorRegion& region : regions) {
        if (region.isOuter)
            continue;
        const std::vector<CVxDPoint>& inner = region.innerPolygon.points;
        const size_t n = inner.size();
        for (size_t k = 0; k < region.walls.size() && k < n; ++k) {
            if (region.walls[k] != wall)
                continue;
            const CVxDPoint& a = inner[k];
            const CVxDPoint& b = inner[(k + 1) % n];
            const double length = a.Distance(b);
            if (!(length > longest))
                continue;
            longest = length;
            if (outA && outB) {
                const bool aNearer = a.Distance2(point) <= b.Distance2(point);
                *outA = aNearer ? a : b;
                *outB = aNearer ? b : a;
            }
        }
    }
    return longest > 0;
}

int CVxFloorPlan::GetWallSegmentAtPoint(int x, int y, int& ioRegion, int offsetX, int offsetY, double zoom)
{
    const double hitDistance = CVxHitDist::WallCtlPoint() + 0.1;
    const CVxDPoint point(x, y);
    auto search = [&](CVxFloorRegion& region) {
        int count = 0;
        const VxPOINT* pixels = region.GetPolygon(count, offsetX, offsetY, zoom, CVxFloorRegion::POLY_INNER);
        if (!pixels || count < 2 || count != static_cast<int>(region.segmentIds.size()))
            return -1;
        int segment = -1;
        double nearest = hitDistance;
        for (int k = 0; k < count; ++k) {
            const CVxDPoint a(pixels[k]);
            const CVxDPoint b(pixels[(k + 1) % count]);
            const double distance = DblGetDistFromLine(a, b, point);
            if (distance <= hitDistance && (segment < 0 || distance < nearest)) {
                nearest = distance;
                segment = region.segmentIds[static_cast<size_t>(k)];
            }
        }
        return segment;
    };
    if (ioRegion != -1) {
        CVxFloorRegion* region = GetInnerOtOuterRegion(ioRegion);
        return region ? search(*region) : -1;
    }
    for (int i = 0; i < GetOuterRegionCount(); ++i) {
        const int segment = search(outerRegions[static_cast<size_t>(i)]);
        if (segment >= 0) {
            ioRegion = GetRegionCount() + i;
            return segment;
        }
    }
    return -1;
}

void CVxFloorPlan::DrawRegions(CVxDC* dc, int offsetX, int offsetY, double zoom, int flags)
{
    if (!dc)
        return;
    // A room inside another has no hole cut for it: larger rooms go first so
    // that the smaller ones stay visible on top.
    std::vector<size_t> order(regions.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        return regions[a].GetAreaWithoutHoles() > regions[b].GetAreaWithoutHoles();
    });
    for (size_t k : order)
        regions[k].DrawToHdc(dc, offsetX, offsetY, zoom, flags);
}
