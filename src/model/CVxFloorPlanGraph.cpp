// The planar graph of a floor: wall centre lines become edges, split at
// every crossing, and the vertices are grouped into connected components.
//
// The rules of the graph are those of a plain scan of the vertex and edge
// lists: the first vertex within EPS, the first edge between two vertices,
// every pair of edges tested in list order. The look-ups here give exactly
// those answers from indexes, so a floor of a few thousand walls is rebuilt
// on every mouse-up without a visible pause.

#include "CVxFloorPlan.h"
#include "CVxRoomWalls.h"
#include "CVxWall.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <queue>

namespace {

// Coordinates beyond this take the plain scans: the error bounds of the
// crossing test below hold only for sensible magnitudes.
constexpr double kMaxIndexedCoordinate = 1e12;
// Cells of the vertex grid are one unit wide; a vertex within EPS of a point
// lies in the point's cell or a neighbour.
constexpr double kVertexCellLimit = 1e9;
// The cell borders lie off the round numbers that walls are drawn on, so
// that a look-up mostly has one cell to search rather than four.
constexpr double kVertexCellShift = 0.318309886;

int64_t VertexCell(double value)
{
    double cell = std::floor(value + kVertexCellShift);
    if (!(cell > -kVertexCellLimit))
        cell = -kVertexCellLimit;
    if (!(cell < kVertexCellLimit))
        cell = kVertexCellLimit;
    return static_cast<int64_t>(cell);
}

uint64_t VertexCellKey(int64_t cx, int64_t cy)
{
    const uint64_t ux = static_cast<uint64_t>(cx + (int64_t{1} << 31));
    const uint64_t uy = static_cast<uint64_t>(cy + (int64_t{1} << 31));
    return (ux << 32) ^ uy;
}

bool IsSane(double value)
{
    return std::fabs(value) < kMaxIndexedCoordinate;
}

struct CBox
{
    double left, top, right, bottom;
};

struct CCellRect
{
    int x0, y0, x1, y1;
    bool Contains(const CCellRect& other) const
    {
        return other.x0 >= x0 && other.x1 <= x1 && other.y0 >= y0 && other.y1 <= y1;
    }
    bool Intersects(const CCellRect& other) const
    {
        return other.x0 <= x1 && other.x1 >= x0 && other.y0 <= y1 && other.y1 >= y0;
    }
    bool ContainsCell(int x, int y) const { return x >= x0 && x <= x1 && y >= y0 && y <= y1; }
    CCellRect Union(const CCellRect& other) const
    {
        return {std::min(x0, other.x0), std::min(y0, other.y0), std::max(x1, other.x1),
                std::max(y1, other.y1)};
    }
};

// A uniform grid of cells over the floor, each listing the edges whose box
// (widened by what the crossing test tolerates) reaches it. An edge stays in
// the cells of every box it had, so the lists only ever over-report.
class CEdgeGrid
{
public:
    CEdgeGrid(double left, double top, double cell, int columns, int rows)
        : m_left(left), m_top(top), m_cell(cell), m_columns(columns), m_rows(rows),
          m_cells(static_cast<size_t>(columns) * static_cast<size_t>(rows))
    {
    }

    CCellRect CellsOf(const CBox& box) const
    {
        return {Column(box.left), Row(box.top), Column(box.right), Row(box.bottom)};
    }

    void Register(size_t edge, const CBox& box)
    {
        const CCellRect cells = CellsOf(box);
        if (edge >= m_registered.size())
            m_registered.resize(edge + 1, CCellRect{0, 0, -1, -1});
        CCellRect& known = m_registered[edge];
        const bool empty = known.x1 < known.x0;
        if (!empty && known.Contains(cells))
            return;
        const CCellRect all = empty ? cells : known.Union(cells);
        for (int y = all.y0; y <= all.y1; ++y)
            for (int x = all.x0; x <= all.x1; ++x)
                if (empty || !known.ContainsCell(x, y))
                    At(x, y).push_back(static_cast<int>(edge));
        known = all;
    }

    // Calls visit for every edge listed in the cells of rect that lie
    // outside skip (may be null).
    template <typename Visit>
    void ForEach(const CCellRect& rect, const CCellRect* skip, Visit visit) const
    {
        for (int y = rect.y0; y <= rect.y1; ++y)
            for (int x = rect.x0; x <= rect.x1; ++x)
                if (!skip || !skip->ContainsCell(x, y))
                    for (int edge : m_cells[static_cast<size_t>(y) * m_columns + x])
                        visit(static_cast<size_t>(edge));
    }

private:
    int Clamp(double cell, int count) const
    {
        if (!(cell > 0))
            return 0;
        if (!(cell < count - 1))
            return count - 1;
        return static_cast<int>(cell);
    }
    int Column(double x) const { return Clamp(std::floor((x - m_left) / m_cell), m_columns); }
    int Row(double y) const { return Clamp(std::floor((y - m_top) / m_cell), m_rows); }
    std::vector<int>& At(int x, int y) { return m_cells[static_cast<size_t>(y) * m_columns + x]; }

    double m_left, m_top, m_cell;
    int m_columns, m_rows;
    std::vector<std::vector<int>> m_cells;
    std::vector<CCellRect> m_registered;
};

bool Overlaps(const CBox& p, const CBox& q)
{
    return p.left <= q.right && q.left <= p.right && p.top <= q.bottom && q.top <= p.bottom;
}

bool Contains(const CBox& outer, const CBox& inner)
{
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

CBox Union(const CBox& p, const CBox& q)
{
    return {std::min(p.left, q.left), std::min(p.top, q.top), std::max(p.right, q.right),
            std::max(p.bottom, q.bottom)};
}

// Where the crossing test of two edges can succeed. An edge in the role of
// the second segment (c-d) accepts parameters within EPS of 0..1, so the
// crossing lies in its box widened by EPS times its extent. The first
// segment (a-b) finds its parameter from x (or from y when nearly vertical),
// so its point agrees with the second's on that axis up to rounding; on the
// other axis they can differ by the distance of the computed point from the
// line, magnified by the edge's steepness. scale is an upper bound of all
// coordinate magnitudes.
CBox SecondRoleBox(const CVxDPoint& c, const CVxDPoint& d, double rounding)
{
    const double m = 2 * EPS * (std::fabs(d.x - c.x) + std::fabs(d.y - c.y)) + rounding;
    return {std::min(c.x, d.x) - m, std::min(c.y, d.y) - m, std::max(c.x, d.x) + m, std::max(c.y, d.y) + m};
}

CBox FirstRoleBox(const CVxDPoint& a, const CVxDPoint& b, double rounding, double lineError)
{
    const double dx = std::fabs(b.x - a.x);
    const double dy = std::fabs(b.y - a.y);
    const double base = 2 * EPS * (dx + dy) + rounding;
    const double length = dx + dy;
    double mx = base;
    double my = base;
    if (dx >= EPS)
        my += lineError * length / dx;
    else
        mx += lineError * length / dy;
    return {std::min(a.x, b.x) - mx, std::min(a.y, b.y) - my, std::max(a.x, b.x) + mx,
            std::max(a.y, b.y) + my};
}

} // namespace

size_t CVxFloorPlan::CVxVertexPairHash::operator()(const CVxVertexPair& pair) const
{
    const uint64_t a = reinterpret_cast<uintptr_t>(pair.a);
    const uint64_t b = reinterpret_cast<uintptr_t>(pair.b);
    return VxMixHash(a * 0x9e3779b97f4a7c15ull + b);
}

CVxFloorPlan::CVxVertexPair CVxFloorPlan::MakePair(const CVxPlanVertex* v1, const CVxPlanVertex* v2)
{
    if (std::less<const CVxPlanVertex*>()(v2, v1))
        std::swap(v1, v2);
    return {v1, v2};
}

CVxFloorPlan::~CVxFloorPlan()
{
    Reset();
}

void CVxFloorPlan::Reset()
{
    regions.clear();
    outerRegions.clear();
    for (CVxPlanEdge* edge : edges)
        delete edge;
    for (CVxPlanVertex* vertex : vertices)
        delete vertex;
    edges.clear();
    vertices.clear();
    componentCount = 0;
    m_vertexCells.Clear();
    m_nextInCell.clear();
    m_indexedVertices = 0;
    m_vertexIndexValid = true;
    m_edgesByEnds.Clear();
    m_nextWithEnds.clear();
    m_graphFinite = true;
}

CVxPlanVertex* CVxFloorPlan::SafeGetVertex(int i) const
{
    return i >= 0 && i < static_cast<int>(vertices.size()) ? vertices[static_cast<size_t>(i)] : nullptr;
}

CVxPlanEdge* CVxFloorPlan::SafeGetEdge(int i) const
{
    return i >= 0 && i < static_cast<int>(edges.size()) ? edges[static_cast<size_t>(i)] : nullptr;
}

int CVxFloorPlan::GetEdgeIdx(const CVxPlanEdge* edge) const
{
    const auto found = std::find(edges.begin(), edges.end(), edge);
    return found == edges.end() ? -1 : static_cast<int>(found - edges.begin());
}

void CVxFloorPlan::IndexVertex(int index) const
{
    const CVxPlanVertex* vertex = vertices[static_cast<size_t>(index)];
    m_nextInCell.resize(static_cast<size_t>(index) + 1, -1);
    // A vertex that is no finite point is never within EPS of anything.
    if (!std::isfinite(vertex->x) || !std::isfinite(vertex->y))
        return;
    CVxChain& cell = m_vertexCells[VertexCellKey(VertexCell(vertex->x), VertexCell(vertex->y))];
    if (cell.last >= 0)
        m_nextInCell[static_cast<size_t>(cell.last)] = index;
    else
        cell.first = index;
    cell.last = index;
}

void CVxFloorPlan::RebuildVertexIndex() const
{
    m_vertexCells.Clear();
    m_nextInCell.clear();
    m_indexedVertices = 0;
    m_vertexIndexValid = true;
}

CVxPlanVertex* CVxFloorPlan::FindVertex(double x, double y) const
{
    if (!std::isfinite(x) || !std::isfinite(y))
        return nullptr;
    if (!m_vertexIndexValid || m_indexedVertices > vertices.size())
        RebuildVertexIndex();
    while (m_indexedVertices < vertices.size())
        IndexVertex(static_cast<int>(m_indexedVertices++));

    // The cells of x - 4 EPS and x + 4 EPS bound every value within EPS,
    // whatever the rounding of the sums.
    const int64_t x0 = VertexCell(x - 4 * EPS), x1 = VertexCell(x + 4 * EPS);
    const int64_t y0 = VertexCell(y - 4 * EPS), y1 = VertexCell(y + 4 * EPS);
    int best = -1;
    for (int64_t cx = x0; cx <= x1; ++cx) {
        for (int64_t cy = y0; cy <= y1; ++cy) {
            const CVxChain* cell = m_vertexCells.Find(VertexCellKey(cx, cy));
            if (!cell)
                continue;
            for (int index = cell->first; index >= 0; index = m_nextInCell[static_cast<size_t>(index)]) {
                if (best >= 0 && index >= best)
                    break;
                const CVxPlanVertex* vertex = vertices[static_cast<size_t>(index)];
                if (std::fabs(vertex->x - x) < EPS && std::fabs(vertex->y - y) < EPS) {
                    best = index;
                    break;
                }
            }
        }
    }
    return best >= 0 ? vertices[static_cast<size_t>(best)] : nullptr;
}

CVxPlanEdge* CVxFloorPlan::FindEdge(const CVxPlanVertex* v1, const CVxPlanVertex* v2) const
{
    const int* first = m_edgesByEnds.Find(MakePair(v1, v2));
    return first && *first >= 0 ? edges[static_cast<size_t>(*first)] : nullptr;
}

CVxPlanVertex* CVxFloorPlan::AddVertex(double x, double y)
{
    if (CVxPlanVertex* found = FindVertex(x, y))
        return found;
    vertices.push_back(new CVxPlanVertex(x, y));
    if (!IsSane(x) || !IsSane(y))
        m_graphFinite = false;
    return vertices.back();
}

void CVxFloorPlan::LinkEdge(int& first, int index)
{
    std::vector<int>& next = m_nextWithEnds;
    const size_t k = static_cast<size_t>(index);
    if (first < 0 || index < first) {
        next[k] = first;
        first = index;
        return;
    }
    int at = first;
    while (next[static_cast<size_t>(at)] >= 0 && next[static_cast<size_t>(at)] < index)
        at = next[static_cast<size_t>(at)];
    next[k] = next[static_cast<size_t>(at)];
    next[static_cast<size_t>(at)] = index;
}

void CVxFloorPlan::UnlinkEdge(int& first, int index)
{
    std::vector<int>& next = m_nextWithEnds;
    const size_t k = static_cast<size_t>(index);
    if (first == index) {
        first = next[k];
    } else {
        for (int at = first; at >= 0; at = next[static_cast<size_t>(at)]) {
            if (next[static_cast<size_t>(at)] == index) {
                next[static_cast<size_t>(at)] = next[k];
                break;
            }
        }
    }
    next[k] = -1;
}

void CVxFloorPlan::IndexEdge(int index)
{
    const CVxPlanEdge* edge = edges[static_cast<size_t>(index)];
    m_nextWithEnds.resize(edges.size(), -1);
    LinkEdge(m_edgesByEnds[MakePair(edge->from, edge->to)], index);
}

void CVxFloorPlan::MoveEdgeEnd(int index, CVxPlanVertex* newTo)
{
    CVxPlanEdge* edge = edges[static_cast<size_t>(index)];
    if (int* old = m_edgesByEnds.Find(MakePair(edge->from, edge->to)))
        UnlinkEdge(*old, index);
    edge->to = newTo;
    LinkEdge(m_edgesByEnds[MakePair(edge->from, edge->to)], index);
}

void CVxFloorPlan::FindWallIntersections(const CVxRoomWalls& walls)
{
    for (size_t i = 0; i < walls.walls.size(); ++i) {
        const CVxWall& wall = walls.walls[i];
        if (!(wall.length > 0))
            continue;
        CVxPlanVertex* v1 = AddVertex(wall.start.x, wall.start.y);
        CVxPlanVertex* v2 = AddVertex(wall.end.x, wall.end.y);
        if (v1 == v2 || FindEdge(v1, v2))
            continue;
        edges.push_back(new CVxPlanEdge(v1, v2, wall.angle, static_cast<int32_t>(i)));
        IndexEdge(static_cast<int>(edges.size() - 1));
    }
    CreatePlanarGraph();
    // Room for every vertex's edges at once, rather than growing each list
    // step by step.
    for (CVxPlanEdge* edge : edges) {
        ++edge->from->degree;
        ++edge->to->degree;
    }
    for (CVxPlanVertex* vertex : vertices) {
        vertex->edges.reserve(static_cast<size_t>(vertex->degree));
        vertex->edgeAngles.reserve(static_cast<size_t>(vertex->degree));
        vertex->degree = 0;
    }
    for (CVxPlanEdge* edge : edges) {
        edge->from->AddEdge(edge, edge->angle);
        edge->to->AddEdge(edge, 180 + edge->angle);
    }
}

bool CVxFloorPlan::SplitEdge(size_t index, const CVxDPoint& point, size_t maxEdges)
{
    CVxPlanEdge* edge = edges[index];
    CVxPlanVertex* vertex = AddVertex(point.x, point.y);
    if (vertex == edge->from || vertex == edge->to)
        return false;
    // Crossings that keep producing crossings (walls almost on top of each
    // other, with the 0.01 grid moving the points) stop here: the graph
    // keeps the edges it has.
    if (edges.size() >= maxEdges)
        return false;
    if (!FindEdge(vertex, edge->to)) {
        edges.push_back(new CVxPlanEdge(vertex, edge->to, edge->angle, edge->wall));
        IndexEdge(static_cast<int>(edges.size() - 1));
    }
    MoveEdgeEnd(static_cast<int>(index), vertex);
    return true;
}

bool CVxFloorPlan::SplitAtCrossing(size_t i, size_t j, size_t maxEdges, bool* outJChanged)
{
    CVxPlanEdge* first = edges[i];
    CVxPlanEdge* second = edges[j];
    const CVxDPoint a = first->from->Point(), b = first->to->Point();
    const CVxDPoint c = second->from->Point(), d = second->to->Point();
    double t = 0, u = 0;
    if (!DblFindInter(a, b, c, d, t, u))
        return false;
    if (!(t > -EPS && t - 1 < EPS && u > -EPS && u - 1 < EPS))
        return false;
    // Crossings lie on the 0.01 grid of plan coordinates, so that the same
    // crossing found from different walls is the same vertex.
    CVxDPoint p = a * (1 - t) + b * t;
    DblRound2(p.x);
    DblRound2(p.y);
    bool firstChanged = false;
    if (p != a && p != b)
        firstChanged = SplitEdge(i, p, maxEdges);
    if (p != c && p != d) {
        const bool changed = SplitEdge(j, p, maxEdges);
        if (outJChanged)
            *outJChanged = changed;
    }
    return firstChanged;
}

void CVxFloorPlan::CreatePlanarGraph()
{
    const size_t initial = edges.size();
    const size_t maxEdges = initial * initial + initial + 64;
    if (m_graphFinite)
        CreatePlanarGraphIndexed(maxEdges);
    else
        CreatePlanarGraphScan(maxEdges);
}

void CVxFloorPlan::CreatePlanarGraphScan(size_t maxEdges)
{
    // The list grows while it is walked: new pieces are tested too.
    for (size_t i = 0; i < edges.size(); ++i)
        for (size_t j = i + 1; j < edges.size(); ++j)
            SplitAtCrossing(i, j, maxEdges, nullptr);
}

void CVxFloorPlan::CreatePlanarGraphIndexed(size_t maxEdges)
{
    if (edges.size() < 2)
        return;
    double left = vertices[0]->x, right = left, top = vertices[0]->y, bottom = top;
    double magnitude = 0;
    for (const CVxPlanVertex* vertex : vertices) {
        left = std::min(left, vertex->x);
        right = std::max(right, vertex->x);
        top = std::min(top, vertex->y);
        bottom = std::max(bottom, vertex->y);
        magnitude = std::max({magnitude, std::fabs(vertex->x), std::fabs(vertex->y)});
    }
    // Crossings stay within 0.01 of the walls, so one unit bounds the growth.
    magnitude += 1;
    const double rounding = 1e-12 * magnitude;
    const double lineError = 1e-13 * magnitude;

    double totalLength = 0;
    for (const CVxPlanEdge* edge : edges)
        totalLength += std::fabs(edge->to->x - edge->from->x) + std::fabs(edge->to->y - edge->from->y);
    const double count = static_cast<double>(edges.size());
    const double extent = std::max(right - left, bottom - top);
    // Cells as long as a wall, but no wider than a wall's share of the
    // floor: long walls that cross many others (a lattice) are cut into
    // pieces of about that size, and the pieces are what the grid then holds.
    double cell = std::max({std::min(totalLength / count, extent / std::sqrt(count)), extent / 1024, 1e-3});
    const int columns = std::clamp(static_cast<int>((right - left) / cell) + 1, 1, 1024);
    const int rows = std::clamp(static_cast<int>((bottom - top) / cell) + 1, 1, 1024);
    cell = std::max({cell, (right - left) / columns, (bottom - top) / rows});
    CEdgeGrid grid(left, top, cell, columns, rows);

    auto secondBox = [&](size_t k) {
        return SecondRoleBox(edges[k]->from->Point(), edges[k]->to->Point(), rounding);
    };
    for (size_t k = 0; k < edges.size(); ++k)
        grid.Register(k, secondBox(k));

    std::vector<unsigned> seen(edges.size(), 0);
    unsigned stamp = 0;
    std::priority_queue<size_t, std::vector<size_t>, std::greater<size_t>> pending;
    for (size_t i = 0; i < edges.size(); ++i) {
        const CVxDPoint a = edges[i]->from->Point(), b = edges[i]->to->Point();
        // The crossing test fails for an edge of no extent whatever the
        // other edge is.
        if (std::fabs(b.x - a.x) < EPS && std::fabs(b.y - a.y) < EPS)
            continue;
        ++stamp;
        // Every box edge i has had while it was cut: a test with an edge
        // whose box meets none of them can't succeed.
        CBox iBox = FirstRoleBox(a, b, rounding, lineError);
        CCellRect reach = grid.CellsOf(iBox);
        size_t current = i;
        auto take = [&](size_t k) {
            if (k > current && seen[k] != stamp && Overlaps(iBox, secondBox(k))) {
                seen[k] = stamp;
                pending.push(k);
            }
        };
        grid.ForEach(reach, nullptr, take);
        while (!pending.empty()) {
            const size_t j = pending.top();
            pending.pop();
            current = j;
            const size_t before = edges.size();
            bool jChanged = false;
            const bool iChanged = SplitAtCrossing(i, j, maxEdges, &jChanged);
            if (jChanged)
                grid.Register(j, secondBox(j));
            seen.resize(edges.size(), 0);
            for (size_t k = before; k < edges.size(); ++k) {
                grid.Register(k, secondBox(k));
                take(k);
            }
            if (iChanged) {
                const CBox now =
                    FirstRoleBox(edges[i]->from->Point(), edges[i]->to->Point(), rounding, lineError);
                if (!Contains(iBox, now)) {
                    // The crossing, rounded to the grid, lies a little beyond
                    // the old box: edges passed over before are offered again.
                    iBox = Union(iBox, now);
                    reach = reach.Union(grid.CellsOf(iBox));
                    grid.ForEach(reach, nullptr, take);
                }
            }
        }
    }
}

void CVxFloorPlan::MarkComponents()
{
    componentCount = 0;
    for (CVxPlanVertex* vertex : vertices) {
        if (vertex->component != -1)
            continue;
        CompSearch(vertex, componentCount);
        ++componentCount;
    }
}

void CVxFloorPlan::CompSearch(CVxPlanVertex* vertex, int component)
{
    // Iterative, as a long run of walls would overflow a recursion.
    std::vector<CVxPlanVertex*> stack{vertex};
    vertex->component = component;
    while (!stack.empty()) {
        CVxPlanVertex* current = stack.back();
        stack.pop_back();
        for (const CVxPlanEdge* edge : current->edges) {
            CVxPlanVertex* other = edge->from == current ? edge->to : edge->from;
            if (other && other->component == -1) {
                other->component = component;
                stack.push_back(other);
            }
        }
    }
}
