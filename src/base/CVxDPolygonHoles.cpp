// Subtraction of floor openings from room outlines: a Weiler-Atherton walk
// over the two outlines, which come in opposite winding so that both are
// walked forwards.

#include "CVxDPolygon.h"

#include "CVxPolyInfo.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"
#include "VxPolygonRay.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>

namespace {
bool IsFinite(const CVxDPolygon& polygon)
{
    return std::all_of(polygon.points.begin(), polygon.points.end(),
                       [](const CVxDPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

bool AcceptParam(double t)
{
    return t > -EPS && t - 1 < EPS;
}

// The bounds of a hole's vertices, for telling quickly that an edge of the
// outline cannot meet any edge of the hole within the tolerances of
// DblFindInter.
struct HoleBox
{
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
    double magnitude = 0;
    // Whether every edge is level or upright.
    bool levelAndUpright = true;

    static HoleBox Of(const CVxDPolygon& hole)
    {
        HoleBox box;
        box.left = box.right = hole.points[0].x;
        box.top = box.bottom = hole.points[0].y;
        for (const CVxDPoint& p : hole.points) {
            box.left = std::min(box.left, p.x);
            box.right = std::max(box.right, p.x);
            box.top = std::min(box.top, p.y);
            box.bottom = std::max(box.bottom, p.y);
        }
        box.magnitude = std::max(std::max(std::fabs(box.left), std::fabs(box.right)),
                                 std::max(std::fabs(box.top), std::fabs(box.bottom)));
        const CVxDPoint* last = &hole.points.back();
        for (const CVxDPoint& p : hole.points) {
            box.levelAndUpright = box.levelAndUpright && (last->x == p.x || last->y == p.y);
            last = &p;
        }
        return box;
    }

    // Whether DblFindInter(p1, p2, q1, q2) cannot accept both parameters
    // for any edge q1-q2 of the hole. The outline's parameter is measured in
    // x, or in y for an edge shorter than EPS in x; an accepted pair puts
    // the point found within EPS of both edges' extents along that axis.
    // outlineMagnitude is at least the largest absolute coordinate of the
    // outline.
    bool Misses(const CVxDPoint& p1, const CVxDPoint& p2, double outlineMagnitude) const
    {
        const double slack = 1e-9 * (1 + magnitude + 2 * outlineMagnitude);
        const double dx = p2.x - p1.x;
        if (std::fabs(dx) >= EPS)
            return Separated(p1.x, p2.x, std::fabs(dx), left, right, slack);
        const double dy = p2.y - p1.y;
        if (std::fabs(dy) >= EPS)
            return Separated(p1.y, p2.y, std::fabs(dy), top, bottom, slack);
        // DblFindInter finds nothing on such an edge.
        return true;
    }

    static bool Separated(double e1, double e2, double length, double low, double high, double slack)
    {
        const double reach = EPS * (length + (high - low)) + 2 * slack;
        return std::max(e1, e2) + reach < low || std::min(e1, e2) - reach > high;
    }
};

// Appends a vertex and, when the result carries wall indices, the wall of
// the edge that starts there.
void AppendVertex(CVxDPolygon& out, const CVxDPoint& point, bool walls, int32_t wall)
{
    out.points.push_back(point);
    if (walls)
        out.edgeWalls.push_back(wall);
}

CVxDPoint EdgeDirection(const CVxDPolygon& polygon, int edge)
{
    const size_t n = polygon.points.size();
    const size_t i = static_cast<size_t>(edge) % n;
    return polygon.points[(i + 1) % n] - polygon.points[i];
}

// The hole's entry for a crossing that the hole's list already holds, or -1
// when this crossing is to stay unlinked. An outline that took in an earlier
// opening runs out to it and back along the same bridge, so a later opening
// across that bridge meets the outline twice at each point. Each side of the
// bridge that the opening really passes gets its own entry in the hole's
// list, in the order in which the hole's outline meets them; a side that the
// opening only grazes from the other side gets none.
int SplitSharedCrossing(CVxPolyInfo::List& listA, CVxPolyInfo::List& listB, const CVxDPolygon& a,
                        const CVxDPolygon& b, int indexA, int indexB, double winding, bool* outIsNew)
{
    *outIsNew = false;
    const CVxPolyInfo found = listB[static_cast<size_t>(indexB)];
    // The run of entries at this point of the hole's outline.
    const size_t first = static_cast<size_t>(indexB);
    size_t last = first;
    while (last + 1 < listB.size() && listB[last + 1].edge == found.edge &&
           std::fabs(listB[last + 1].param - found.param) < EPS)
        ++last;
    for (size_t k = first; k <= last; ++k) {
        const int linked = listB[k].crossIndex;
        if (linked < 0 || linked == indexA)
            return static_cast<int>(k);
    }
    // Only crossings in the middle of both bridge sides are told apart; at a
    // vertex the outline's two edges there make the sides ambiguous, and the
    // one shared entry stays.
    auto onEdge = [&](int entryA) { return listA[static_cast<size_t>(entryA)].param > EPS; };
    if (!onEdge(indexA) || !onEdge(listB[first].crossIndex))
        return indexB;

    // The hole's direction of travel into and out of this point.
    const int nB = static_cast<int>(b.points.size());
    const CVxDPoint out = EdgeDirection(b, found.edge);
    const CVxDPoint in = found.param > EPS ? out : EdgeDirection(b, (found.edge + nB - 1) % nB);
    // Whether v points into the room on its side of the outline's edge.
    auto roomSide = [&](int entryA, const CVxDPoint& v) {
        return EdgeDirection(a, listA[static_cast<size_t>(entryA)].edge).CrossProduct(v) * winding > 0;
    };
    auto passes = [&](int entryA) { return roomSide(entryA, -in) || roomSide(entryA, out); };
    auto meetsFirst = [&](int entryA) { return roomSide(entryA, -in); };

    if (!passes(indexA))
        return -1;
    for (size_t k = first; k <= last; ++k) {
        const int linked = listB[k].crossIndex;
        if (!passes(linked)) {
            listA[static_cast<size_t>(linked)].crossIndex = -1;
            listB[k].crossIndex = -1;
            return static_cast<int>(k);
        }
    }
    size_t position = last + 1;
    for (size_t k = first; k <= last; ++k) {
        if (meetsFirst(indexA) && !meetsFirst(listB[k].crossIndex)) {
            position = k;
            break;
        }
    }
    CVxPolyInfo entry = found;
    entry.crossIndex = -1;
    listB.insert(listB.begin() + static_cast<std::ptrdiff_t>(position), entry);
    *outIsNew = true;
    return static_cast<int>(position);
}

// A hole wholly inside the outline: one polygon that runs round the outline
// from its vertex nearest the hole, over a bridge round the hole, and back.
CVxDPolygon BridgeHole(const CVxDPolygon& a, const CVxDPolygon& b)
{
    const size_t nA = a.points.size();
    const size_t nB = b.points.size();
    size_t ia = 0;
    size_t ib = 0;
    double best = -1;
    const HoleBox box = HoleBox::Of(b);
    for (size_t i = 0; i < nA; ++i) {
        // Rounding keeps the order of differences, so no vertex of the hole
        // comes nearer than the hole's box: a vertex whose distance to the
        // box is no less than the best cannot do better.
        if (best >= 0) {
            const CVxDPoint& p = a.points[i];
            const double gx = p.x < box.left ? box.left - p.x : (p.x > box.right ? p.x - box.right : 0);
            const double gy = p.y < box.top ? box.top - p.y : (p.y > box.bottom ? p.y - box.bottom : 0);
            if (gx * gx + gy * gy >= best)
                continue;
        }
        for (size_t j = 0; j < nB; ++j) {
            const double d = a.points[i].Distance2(b.points[j]);
            if (best < 0 || d < best) {
                best = d;
                ia = i;
                ib = j;
            }
        }
    }

    const bool walls = a.edgeWalls.size() == nA;
    const bool flagsA = a.bezierFlags.size() == nA;
    const bool flagsB = b.bezierFlags.size() == nB;
    const bool flags = flagsA || flagsB;
    CVxDPolygon out;
    out.kind = a.kind;
    out.tag = a.tag;
    out.points.reserve(nA + nB + 2);
    if (walls)
        out.edgeWalls.reserve(nA + nB + 2);
    auto pushEdge = [&](const CVxDPolygon& source, bool sourceFlags, size_t edge) {
        if (!flags)
            return;
        if (sourceFlags)
            out.PushBackBezierSegment(source, static_cast<int>(edge));
        else
            out.bezierFlags.push_back(false);
    };

    if (flags) {
        for (size_t k = 0; k < nA; ++k) {
            const size_t i = (ia + k) % nA;
            AppendVertex(out, a.points[i], walls, walls ? a.edgeWalls[i] : -1);
            pushEdge(a, flagsA, i);
        }
    } else {
        // Straight outlines: the outline's vertices and walls from ia round.
        const auto from = static_cast<std::ptrdiff_t>(ia);
        out.points.insert(out.points.end(), a.points.begin() + from, a.points.end());
        out.points.insert(out.points.end(), a.points.begin(), a.points.begin() + from);
        if (walls) {
            out.edgeWalls.insert(out.edgeWalls.end(), a.edgeWalls.begin() + from, a.edgeWalls.end());
            out.edgeWalls.insert(out.edgeWalls.end(), a.edgeWalls.begin(), a.edgeWalls.begin() + from);
        }
    }
    // The outline's vertex again, from which the bridge runs to the hole.
    AppendVertex(out, a.points[ia], walls, -1);
    if (flags)
        out.bezierFlags.push_back(false);
    for (size_t k = 0; k < nB; ++k) {
        const size_t j = (ib + k) % nB;
        AppendVertex(out, b.points[j], walls, -1);
        pushEdge(b, flagsB, j);
    }
    // The hole's vertex again, from which the bridge runs back.
    AppendVertex(out, b.points[ib], walls, -1);
    if (flags)
        out.bezierFlags.push_back(false);
    return out;
}

// The subtraction. With outWouldBridge given, a hole wholly inside the outline
// is not bridged: the flag is raised and the outline comes back unchanged.
std::vector<CVxDPolygon> Subtract(const CVxDPolygon& outer, const CVxDPolygon& hole, bool* outWouldBridge)
{
    // Copies only of outlines that lose duplicate vertices.
    CVxDPolygon ownA;
    CVxDPolygon ownB;
    const bool copyA = outer.WouldRemoveDuplicates();
    const bool copyB = hole.WouldRemoveDuplicates();
    if (copyA) {
        ownA = outer;
        ownA.RemoveDuplicates();
    }
    if (copyB) {
        ownB = hole;
        ownB.RemoveDuplicates();
    }
    const CVxDPolygon& a = copyA ? ownA : outer;
    const CVxDPolygon& b = copyB ? ownB : hole;
    // Coordinates that aren't numbers come only from a damaged file; such an
    // outline is left as it is and such a hole is ignored.
    if (a.points.size() < 3 || b.points.size() < 3 || !IsFinite(a) || !IsFinite(b))
        return {outer};

    CVxPolyInfo::List listA = CVxPolyInfo::Build(a);
    CVxPolyInfo::List listB = CVxPolyInfo::Build(b);
    CVxPolyInfo::MarkOuterVertices(listA, b);
    if (CVxPolyInfo::IsCompletelyInner(listA))
        return {};

    CVxPolyInfo::MarkOuterVertices(listB, a);
    // Whether the hole's first vertex lies inside the outline, when found
    // already: a vertex off the outline was tested.
    const bool firstTested = !listB[0].isOnBoundary;
    const bool firstInside = !listB[0].isOuter;
    const bool disjoint = CVxPolyInfo::IsCompletelyOuter(listA) && CVxPolyInfo::IsCompletelyOuter(listB) &&
                          !a.PtInPolygon(b.GetCentroid());

    const int nA = static_cast<int>(a.points.size());
    const int nB = static_cast<int>(b.points.size());
    bool negative = false;
    a.GetArea(&negative);
    const double winding = negative ? -1.0 : 1.0;
    int crossings = 0;
    bool holeGotEntry = false;
    const HoleBox box = HoleBox::Of(b);
    double magnitudeA = 0;
    for (const CVxDPoint& p : a.points)
        magnitudeA = std::max(magnitudeA, std::max(std::fabs(p.x), std::fabs(p.y)));
    for (int i = 0; i < nA; ++i) {
        const CVxDPoint& p1 = a.points[static_cast<size_t>(i)];
        const CVxDPoint& p2 = a.points[static_cast<size_t>((i + 1) % nA)];
        if (box.Misses(p1, p2, magnitudeA))
            continue;
        for (int j = 0; j < nB; ++j) {
            const CVxDPoint& q1 = b.points[static_cast<size_t>(j)];
            const CVxDPoint& q2 = b.points[static_cast<size_t>((j + 1) % nB)];
            double t = 0;
            double u = 0;
            if (!DblFindInter(&p1, &p2, &q1, &q2, &t, &u) || !AcceptParam(t) || !AcceptParam(u))
                continue;
            const CVxDPoint point = p1 * (1 - t) + p2 * t;
            int edgeA = i;
            int edgeB = j;
            // A crossing at the far end of an edge is the next edge's vertex.
            if (std::fabs(t - 1) < EPS) {
                t = 0;
                edgeA = (i + 1) % nA;
            }
            if (std::fabs(u - 1) < EPS) {
                u = 0;
                edgeB = (j + 1) % nB;
            }
            bool isNew = false;
            const int indexA = CVxPolyInfo::InsertPoint(listA, edgeA, t, point, &isNew);
            if (isNew)
                CVxPolyInfo::ShiftCrossIndices(listB, indexA);
            int indexB = CVxPolyInfo::InsertPoint(listB, edgeB, u, point, &isNew);
            if (!isNew)
                indexB = SplitSharedCrossing(listA, listB, a, b, indexA, indexB, winding, &isNew);
            if (isNew) {
                CVxPolyInfo::ShiftCrossIndices(listA, indexB);
                holeGotEntry = true;
            }
            if (indexB < 0)
                continue;
            CVxPolyInfo::MarkCross(listA, indexA, listB, indexB);
            ++crossings;
        }
    }

    if (disjoint && !holeGotEntry)
        return {outer};

    if (crossings == 0) {
        if (!(firstTested ? firstInside : a.PtInPolygon(b.points[0])))
            return {outer};
        if (outWouldBridge) {
            *outWouldBridge = true;
            return {outer};
        }
        return {BridgeHole(a, b)};
    }

    // Between two crossings on one edge the outline may run outside the
    // hole; a point in the middle marks that stretch as one to keep. A
    // stretch along the hole's own outline (an opening against the far side
    // of a wall of no thickness) is shared, not outside: the ray test may
    // give either answer there, and a wrong one sends the walk in circles.
    for (size_t k = 0; k + 1 < listA.size(); ++k) {
        const CVxPolyInfo& e0 = listA[k];
        const CVxPolyInfo& e1 = listA[k + 1];
        if (e0.edge != e1.edge || e0.crossIndex < 0 || e1.crossIndex < 0)
            continue;
        const CVxDPoint middle = (e0.point + e1.point) / 2;
        if (b.PtInPolygonIncludeVert(middle) || b.PtOnPolygonLine(middle, CVxPolyInfo::kOnLineDistance))
            continue;
        CVxPolyInfo entry;
        entry.point = middle;
        entry.edge = e0.edge;
        entry.param = (e0.param + e1.param) / 2;
        entry.isOuter = true;
        listA.insert(listA.begin() + static_cast<std::ptrdiff_t>(k + 1), entry);
        CVxPolyInfo::ShiftCrossIndices(listB, static_cast<int>(k + 1));
        ++k;
    }

    const int sizeA = static_cast<int>(listA.size());
    const int sizeB = static_cast<int>(listB.size());
    // A walk that doesn't close within this many points is going round in
    // circles on inconsistent input.
    const size_t guard = listA.size() + listB.size();
    const bool walls = a.edgeWalls.size() == a.points.size();
    std::vector<CVxDPolygon> result;
    for (;;) {
        int start = -1;
        for (int k = 0; k < sizeA; ++k) {
            if (listA[static_cast<size_t>(k)].isOuter && !listA[static_cast<size_t>(k)].visited) {
                start = k;
                break;
            }
        }
        if (start < 0)
            break;

        CVxDPolygon piece;
        piece.kind = a.kind;
        piece.tag = a.tag;
        int ia = start;
        for (;;) {
            CVxPolyInfo& entry = listA[static_cast<size_t>(ia)];
            AppendVertex(piece, entry.point, walls,
                         walls ? a.edgeWalls[static_cast<size_t>(entry.edge)] : -1);
            entry.visited = true;
            if (piece.points.size() > guard)
                break;
            int nextA = (ia + 1) % sizeA;
            const int kb = entry.crossIndex;
            if (kb >= 0 && kb < sizeB) {
                const int nextB = (kb + 1) % sizeB;
                const CVxPolyInfo& afterCross = listB[static_cast<size_t>(nextB)];
                const bool stayOnOutline = afterCross.isOuter || afterCross.crossIndex == nextA;
                if (!stayOnOutline) {
                    // Along the hole's outline, inside the room, until the
                    // room's outline leaves the hole again.
                    bool backOnOutline = false;
                    for (int ib = nextB; piece.points.size() <= guard; ib = (ib + 1) % sizeB) {
                        CVxPolyInfo& onHole = listB[static_cast<size_t>(ib)];
                        AppendVertex(piece, onHole.point, walls, -1);
                        onHole.visited = true;
                        const int m = onHole.crossIndex;
                        if (m >= 0 && m < sizeA) {
                            const int afterM = (m + 1) % sizeA;
                            const CVxPolyInfo& next = listA[static_cast<size_t>(afterM)];
                            if (next.isOuter && next.crossIndex != (ib + 1) % sizeB) {
                                listA[static_cast<size_t>(m)].visited = true;
                                nextA = afterM;
                                backOnOutline = true;
                                break;
                            }
                        }
                        // Round the whole hole and back where this leg began:
                        // a hole that touches the outline only there.
                        if (ib == kb)
                            break;
                    }
                    if (!backOnOutline)
                        break;
                }
            }
            ia = nextA;
            if (ia == start)
                break;
        }
        // A closed piece visits each entry at most once; one that ran into
        // the guard never closed and only repeats the others.
        if (piece.points.size() >= 3 && piece.points.size() <= guard)
            result.push_back(std::move(piece));
    }
    return result;
}

} // namespace

std::vector<CVxDPolygon> CVxDPolygon::RemoveHoleNew(const CVxDPolygon& outer, const CVxDPolygon& hole)
{
    return Subtract(outer, hole, nullptr);
}

void CVxDPolygon::RemoveHole(std::vector<CVxDPolygon>& list, const CVxDPolygon& hole)
{
    if (hole.points.empty())
        return;
    std::vector<CVxDPolygon> result;
    for (const CVxDPolygon& polygon : list) {
        std::vector<CVxDPolygon> pieces = RemoveHoleNew(polygon, hole);
        for (CVxDPolygon& piece : pieces)
            result.push_back(std::move(piece));
    }
    list = std::move(result);
}

namespace {
// Openings wholly inside a room are bridged into its outline one after the
// other, and each one would make the next subtraction scan a longer outline.
// For straight outlines the bridged outline is kept here with indexes of its
// edges and vertices, so that each further opening costs about as much as the
// parts of the outline near it. Every test below gives the answer of the full
// subtraction; whatever they cannot settle goes to the full subtraction.

// Coordinates below this keep every squared distance and every product in the
// intersection tests finite and well clear of overflow.
constexpr double kLargestFastCoordinate = 1e9;

using vx_polygon::CVxPlaceProbe;
using vx_polygon::RayCrossesEdge;
using vx_polygon::RoundingSlack;

double Magnitude(const CVxDRect& r)
{
    return std::max(std::max(std::fabs(r.left), std::fabs(r.right)),
                    std::max(std::fabs(r.top), std::fabs(r.bottom)));
}

// Whether an outline has straight edges only, no curve data at all, and
// nothing that the subtraction would first rebuild or refuse.
// A polygon known to be without duplicates needn't be checked again.
bool IsPlainOutline(const CVxDPolygon& polygon, bool mayHaveDuplicates = true)
{
    const size_t n = polygon.points.size();
    if (n < 3 || !polygon.bezierFlags.empty() || !polygon.bezierControls.empty() ||
        (mayHaveDuplicates && polygon.WouldRemoveDuplicates()))
        return false;
    // Not a number and infinity fail the comparison too.
    return std::all_of(polygon.points.begin(), polygon.points.end(), [](const CVxDPoint& p) {
        return std::fabs(p.x) < kLargestFastCoordinate && std::fabs(p.y) < kLargestFastCoordinate;
    });
}

// The cells of one axis. The cell of a coordinate never decreases as the
// coordinate grows, so ranges that overlap always share a cell; coordinates
// past the ends go to the end cells.
class AxisScale
{
public:
    void Reset(double low, double high, int count)
    {
        m_origin = low;
        m_count = count;
        m_last = count - 1;
        m_scale = high > low ? count / (high - low) : 0;
        m_width = high > low ? (high - low) / count : 0;
    }
    int Bucket(double v) const
    {
        // Without branches: the cells searched are seldom predictable.
        const double f = std::max(0.0, (v - m_origin) * m_scale);
        return static_cast<int>(std::min(f, m_last));
    }
    int Count() const { return m_count; }
    // Where the cell starts, up to rounding.
    double Start(int bucket) const { return m_origin + bucket * m_width; }

private:
    double m_origin = 0;
    double m_scale = 0;
    double m_width = 0;
    double m_last = 0;
    int m_count = 1;
};

// Items with a singly linked list per cell; an item goes into every cell
// that its range or box overlaps.
template <class Item>
class CellLists
{
public:
    void Reset(size_t cells, size_t links = 0)
    {
        m_head.assign(cells, -1);
        m_links.clear();
        m_links.reserve(links);
    }
    void Add(const Item& item, size_t cell)
    {
        m_links.push_back({item, m_head[cell]});
        m_head[cell] = static_cast<int>(m_links.size()) - 1;
    }
    template <class F>
    void VisitCell(size_t cell, F&& f) const
    {
        for (int k = m_head[cell]; k >= 0; k = m_links[static_cast<size_t>(k)].next)
            f(m_links[static_cast<size_t>(k)].item);
    }

private:
    struct Link
    {
        Item item;
        int next;
    };
    std::vector<int> m_head;
    std::vector<Link> m_links;
};

// Items by their range along one axis.
class AxisBuckets
{
public:
    static constexpr int kCount = 64;

    void Reset(double low, double high)
    {
        m_scale.Reset(low, high, kCount);
        m_lists.Reset(kCount);
    }
    void Add(int item, double low, double high)
    {
        const int last = m_scale.Bucket(high);
        for (int k = m_scale.Bucket(low); k <= last; ++k)
            m_lists.Add(item, static_cast<size_t>(k));
    }
    // Calls f for each item in the buckets over low..high; an item in several
    // buckets comes once per bucket.
    template <class F>
    void Visit(double low, double high, F&& f) const
    {
        const int last = m_scale.Bucket(high);
        for (int b = m_scale.Bucket(low); b <= last; ++b)
            m_lists.VisitCell(static_cast<size_t>(b), f);
    }

private:
    AxisScale m_scale;
    CellLists<int> m_lists;
};

// Items by their box in the plane, at most kMaxCells cells a side. Each row
// keeps a mask of its cells in use, so that a search skips empty ones.
template <class Item>
class BoxGrid
{
public:
    static constexpr int kMaxCells = 64;

    void Reset(const CVxDRect& bounds, int count, size_t items)
    {
        count = std::clamp(count, 1, kMaxCells);
        m_x.Reset(bounds.left, bounds.right, count);
        m_y.Reset(bounds.top, bounds.bottom, count);
        m_lists.Reset(static_cast<size_t>(count) * static_cast<size_t>(count), items);
        m_rows.assign(static_cast<size_t>(count), 0);
    }
    const AxisScale& X() const { return m_x; }
    const AxisScale& Y() const { return m_y; }
    void Add(const Item& item, double left, double top, double right, double bottom)
    {
        // Most edges are level or upright.
        const int x0 = m_x.Bucket(left);
        const int x1 = right == left ? x0 : m_x.Bucket(right);
        const int y0 = m_y.Bucket(top);
        const int y1 = bottom == top ? y0 : m_y.Bucket(bottom);
        for (int cy = y0; cy <= y1; ++cy) {
            m_rows[static_cast<size_t>(cy)] |= Span(x0, x1);
            for (int cx = x0; cx <= x1; ++cx)
                m_lists.Add(item, Cell(cx, cy));
        }
    }
    // Calls f for each item in the cells x0..x1 of row cy.
    template <class F>
    void VisitRow(int cy, int x0, int x1, F&& f) const
    {
        for (uint64_t used = m_rows[static_cast<size_t>(cy)] & Span(x0, x1); used != 0; used &= used - 1)
            m_lists.VisitCell(Cell(std::countr_zero(used), cy), f);
    }
    void AddPoint(const Item& item, double x, double y)
    {
        const int cx = m_x.Bucket(x);
        const int cy = m_y.Bucket(y);
        m_rows[static_cast<size_t>(cy)] |= uint64_t{1} << cx;
        m_lists.Add(item, Cell(cx, cy));
    }
    template <class F>
    void VisitCell(int cx, int cy, F&& f) const
    {
        if (m_rows[static_cast<size_t>(cy)] & (uint64_t{1} << cx))
            m_lists.VisitCell(Cell(cx, cy), f);
    }
    // Calls f for each item in the cells over the box; an item in several
    // cells comes once per cell.
    template <class F>
    void Visit(double left, double top, double right, double bottom, F&& f) const
    {
        const int x0 = m_x.Bucket(left);
        const int x1 = m_x.Bucket(right);
        const int y1 = m_y.Bucket(bottom);
        for (int cy = m_y.Bucket(top); cy <= y1; ++cy)
            VisitRow(cy, x0, x1, f);
    }

private:
    // The bits of cells x0..x1.
    static uint64_t Span(int x0, int x1)
    {
        const uint64_t upTo = x1 >= kMaxCells - 1 ? ~uint64_t{0} : (uint64_t{1} << (x1 + 1)) - 1;
        return upTo & ~((uint64_t{1} << x0) - 1);
    }
    size_t Cell(int cx, int cy) const
    {
        return static_cast<size_t>(cy) * static_cast<size_t>(m_x.Count()) + static_cast<size_t>(cx);
    }
    AxisScale m_x;
    AxisScale m_y;
    CellLists<Item> m_lists;
    std::vector<uint64_t> m_rows;
};

// Whether DblFindInter(p1, p2, q1, q2) cannot accept both parameters for a
// level edge p1-p2 (p1.y == p2.y) and an upright one q1-q2 (q1.x == q2.x).
// Then the determinant is one product, u is (p1.y - q1.y) / (q2.y - q1.y)
// up to a few roundings and t is (q1.x - p1.x) / (p2.x - p1.x): an accepted
// pair meets within EPS of both edges, which twice EPS covers with room to
// spare. The same holds with x and y swapped, for an upright edge p1-p2 and
// a level q1-q2.
bool PerpendicularMiss(double along1, double along2, double at, double across, double from, double to,
                       double slack)
{
    const double reach1 = 2 * EPS * std::fabs(along2 - along1) + slack;
    const double reach2 = 2 * EPS * std::fabs(to - from) + slack;
    return across < std::min(along1, along2) - reach1 || across > std::max(along1, along2) + reach1 ||
           at < std::min(from, to) - reach2 || at > std::max(from, to) + reach2;
}

// A straight outline, as a bridged room becomes, with the subtraction of
// openings wholly inside it carried out in place.
class BridgedOutline
{
public:
    // The outline must be IsPlainOutline. At most `added` vertices will come
    // in with openings; the cells are sized for about one vertex each, and
    // room is made for a good part of them. The serial tells this outline
    // from every other of the same list.
    BridgedOutline(const CVxDPolygon& polygon, size_t added, uint64_t serial)
        : m_kind(polygon.kind), m_tag(polygon.tag),
          m_walls(polygon.edgeWalls.size() == polygon.points.size()), m_serial(serial)
    {
        const size_t n = polygon.points.size();
        const size_t total = n + added;
        // Openings of a whole floor may go to each of many rooms, most of
        // them to other rooms.
        constexpr size_t kMostReserved = 4096;
        const size_t reserved = n + std::min(added, kMostReserved);
        const CVxDRect bounds = polygon.GetBoundingRect();
        m_xEdges.Reset(bounds.left, bounds.right);
        m_yEdges.Reset(bounds.top, bounds.bottom);
        const auto cells = static_cast<int>(std::clamp(std::sqrt(static_cast<double>(total)), 4.0, 64.0));
        // Level and upright outline edges span some cells, those of openings
        // and bridges mostly one or two.
        m_axisEdges.Reset(bounds, cells, n * static_cast<size_t>(cells) + 4 * (reserved - n));
        m_vertexGrid.Reset(bounds, cells, reserved);
        m_bounds = bounds;
        m_vertices.reserve(reserved);
        m_edges.reserve(reserved);
        // Labels spread evenly over the whole range leave room for openings
        // bridged in anywhere.
        const uint64_t step = std::numeric_limits<uint64_t>::max() / (n + 1);
        for (size_t i = 0; i < n; ++i) {
            Vertex& v = AddVertex(polygon.points[i], m_walls ? polygon.edgeWalls[i] : -1);
            v.label = step * i;
            v.next = static_cast<int>((i + 1) % n);
            v.prev = static_cast<int>((i + n - 1) % n);
        }
        m_head = 0;
        for (size_t i = 0; i < n; ++i)
            AddEdge(polygon.points[i], polygon.points[(i + 1) % n]);
    }

    // Whether the full subtraction of the hole, IsPlainOutline, would bridge
    // it: some vertex of the outline lies clear of the hole, the hole's first
    // vertex lies inside the outline, and no edges of the two meet.
    //
    // When this held already while the outline had only its first
    // `firstEdge` edges and the same bounds, only the later edges are
    // looked at: each edge adds to the inside count and to the meeting test
    // on its own, and the bounds set the ray and every filter, so the earlier
    // edges give what they gave then, an odd count and nothing met.
    bool WouldBridge(const CVxDPolygon& hole, const HoleBox& box, int firstEdge = 0) const
    {
        const double near = 2 * CVxPolyInfo::kOnLineDistance;
        if (m_bounds.left >= box.left - near && m_bounds.right <= box.right + near &&
            m_bounds.top >= box.top - near && m_bounds.bottom <= box.bottom + near)
            return false;
        m_firstEdge = firstEdge;
        const bool inside = IsInside(hole.points[0], firstEdge > 0 ? 1 : 0);
        const bool bridge = inside && !Meets(hole, box);
        m_firstEdge = 0;
        return bridge;
    }
    // What WouldBridge needs to look only at later edges.
    uint64_t Serial() const { return m_serial; }
    int EdgeCount() const { return static_cast<int>(m_edges.size()); }
    const CVxDRect& Bounds() const { return m_bounds; }

    // Bridges a hole for which WouldBridge holds, as BridgeHole does. False,
    // and nothing done, when the bridge would start and end at one point:
    // the outline would then hold a duplicate vertex.
    bool Bridge(const CVxDPolygon& hole, const HoleBox& box)
    {
        int start = 0;
        int ib = 0;
        NearestPair(hole, box, &start, &ib);
        const int nB = static_cast<int>(hole.points.size());
        const CVxDPoint from = At(start).point;
        const CVxDPoint to = hole.points[static_cast<size_t>(ib)];
        if (from == to)
            return false;

        // The outline now runs from `start` round, then over the bridge round
        // the hole and back: the bridge and the hole come in just before
        // `start`, which becomes the first vertex.
        const size_t added = static_cast<size_t>(nB) + 2;
        const int before = At(start).prev;
        uint64_t gap = At(start).label - At(before).label;
        if (gap / (added + 1) == 0) {
            Relabel(added);
            gap = At(start).label - At(before).label;
        }
        const uint64_t step = gap / (added + 1);
        uint64_t label = At(before).label;
        int last = before;
        auto link = [&](const CVxDPoint& p) {
            const int id = static_cast<int>(m_vertices.size());
            Vertex& v = AddVertex(p, -1);
            label += step;
            v.label = label;
            v.prev = last;
            At(last).next = id;
            last = id;
        };
        link(from);
        for (int k = ib; k < nB; ++k)
            link(hole.points[static_cast<size_t>(k)]);
        for (int k = 0; k <= ib; ++k)
            link(hole.points[static_cast<size_t>(k)]);
        At(last).next = start;
        At(start).prev = last;
        m_head = start;

        AddEdge(from, to);
        for (int j = 0; j < nB; ++j)
            AddEdge(hole.points[static_cast<size_t>(j)],
                    hole.points[static_cast<size_t>(j + 1 < nB ? j + 1 : 0)]);
        AddEdge(to, from);
        return true;
    }

    CVxDPolygon ToPolygon() const
    {
        CVxDPolygon out;
        out.kind = m_kind;
        out.tag = m_tag;
        out.points.resize(m_vertices.size());
        if (m_walls)
            out.edgeWalls.resize(m_vertices.size());
        int id = m_head;
        for (size_t k = 0; k < m_vertices.size(); ++k) {
            const Vertex& v = At(id);
            out.points[k] = v.point;
            if (m_walls)
                out.edgeWalls[k] = v.wall;
            id = v.next;
        }
        return out;
    }

private:
    struct Vertex
    {
        CVxDPoint point;
        uint64_t label;
        int next;
        int prev;
        int32_t wall;
    };
    // A vertex in its cell, with its point, so that the nearest pair is
    // found without looking up vertices that are too far anyway.
    struct GridVertex
    {
        CVxDPoint point;
        int id;
    };
    struct Edge
    {
        CVxDPoint p1;
        CVxDPoint p2;
        // The search that saw the edge last.
        mutable uint32_t seen;
    };

    // A vertex not yet linked into the order.
    Vertex& AddVertex(const CVxDPoint& p, int32_t wall)
    {
        m_vertexGrid.AddPoint({p, static_cast<int>(m_vertices.size())}, p.x, p.y);
        m_magnitude = std::max(m_magnitude, std::max(std::fabs(p.x), std::fabs(p.y)));
        return m_vertices.emplace_back(Vertex{p, 0, -1, -1, wall});
    }
    Vertex& At(int id) { return m_vertices[static_cast<size_t>(id)]; }
    const Vertex& At(int id) const { return m_vertices[static_cast<size_t>(id)]; }

    // Spreads the labels evenly again when an opening is to come in where
    // earlier ones left no room between two labels.
    void Relabel(size_t added)
    {
        const uint64_t step = std::numeric_limits<uint64_t>::max() / (m_vertices.size() + added + 1);
        uint64_t label = 0;
        int id = m_head;
        do {
            At(id).label = label;
            label += step;
            id = At(id).next;
        } while (id != m_head);
    }

    void AddEdge(const CVxDPoint& p1, const CVxDPoint& p2)
    {
        const int id = static_cast<int>(m_edges.size());
        m_edges.push_back({p1, p2, 0});
        const double left = std::min(p1.x, p2.x);
        const double right = std::max(p1.x, p2.x);
        const double top = std::min(p1.y, p2.y);
        const double bottom = std::max(p1.y, p2.y);
        m_bounds.left = std::min(m_bounds.left, left);
        m_bounds.right = std::max(m_bounds.right, right);
        m_bounds.top = std::min(m_bounds.top, top);
        m_bounds.bottom = std::max(m_bounds.bottom, bottom);
        // Level and upright edges meet a level or upright edge only near both
        // boxes (PerpendicularMiss) and are found by their box. Slanted edges
        // that DblFindInter measures along x are found by their extent in x,
        // the others by their extent in y; every slanted edge is found by its
        // extent in y for the inside test.
        if (p1.x == p2.x || p1.y == p2.y) {
            m_axisEdges.Add(id, left, top, right, bottom);
            return;
        }
        if (std::fabs(p2.x - p1.x) >= EPS)
            m_xEdges.Add(id, left, right);
        m_yEdges.Add(id, top, bottom);
    }

    // Calls f once for each edge in the buckets over low..high.
    template <class F>
    void VisitEdges(const AxisBuckets& buckets, double low, double high, F&& f) const
    {
        ++m_visit;
        buckets.Visit(low, high, [&](int id) { VisitOnce(id, f); });
    }
    // Calls f once for each level or upright edge in the cells over the box.
    template <class F>
    void VisitAxisEdges(double left, double top, double right, double bottom, F&& f) const
    {
        ++m_visit;
        m_axisEdges.Visit(left, top, right, bottom, [&](int id) { VisitOnce(id, f); });
    }
    template <class F>
    void VisitOnce(int id, F& f) const
    {
        if (id < m_firstEdge)
            return;
        const Edge& edge = m_edges[static_cast<size_t>(id)];
        if (edge.seen == m_visit)
            return;
        edge.seen = m_visit;
        f(edge);
    }

    // What the subtraction's marking of the hole's vertices finds for this
    // one: inside the outline, not within 0.001 of it nor at a vertex. The
    // tests and their filters are those of CVxDPolygon::PlacePoint for the
    // bounds of the outline, over the edges near the point's y and not left
    // of it only; the filters there skip all the others.
    // `parity` is that of the crossings of the edges not looked at.
    bool IsInside(const CVxDPoint& point, int parity) const
    {
        const double maxDist = CVxPolyInfo::kOnLineDistance;
        const CVxDRect& bounds = m_bounds;
        CVxDRect near = bounds;
        near.InflateRect(2 * maxDist, 2 * maxDist);
        if (!(point.x >= near.left && point.x <= near.right && point.y >= near.top && point.y <= near.bottom))
            return false;

        const double magnitude = Magnitude(bounds);
        CVxPlaceProbe probe(point, maxDist, bounds, magnitude);
        probe.AddCrossings(parity);
        const double margin = 2 * probe.Band() + RoundingSlack(magnitude);
        auto test = [&](const Edge& edge) { probe.Edge(edge.p1, edge.p2); };
        VisitEdges(m_yEdges, point.y - margin, point.y + margin, test);
        VisitAxisEdges(std::min(probe.Left(), point.x - margin), point.y - margin, bounds.right,
                       point.y + margin, test);
        return !probe.On() && (probe.Crossings() % 2) == 1;
    }

    // Whether an edge of the outline and one of the hole meet as the
    // subtraction's crossing search accepts it. Only edges that HoleBox does
    // not rule out are tried, as there.
    bool Meets(const CVxDPolygon& hole, const HoleBox& box) const
    {
        const size_t nB = hole.points.size();
        // HoleBox reaches at most this far past the hole's box along its axis.
        const double slack = 1e-9 * (1 + box.magnitude + 2 * m_magnitude);
        const double reach =
            2 * (EPS * (std::max(m_bounds.right - m_bounds.left, m_bounds.bottom - m_bounds.top) +
                        std::max(box.right - box.left, box.bottom - box.top)) +
                 2 * slack) +
            RoundingSlack(m_magnitude);
        bool meets = false;
        auto tryEdge = [&](const Edge& edge) {
            if (meets || box.Misses(edge.p1, edge.p2, m_magnitude))
                return;
            const bool level = edge.p1.y == edge.p2.y;
            const bool upright = edge.p1.x == edge.p2.x;
            for (size_t j = 0; j < nB && !meets; ++j) {
                const CVxDPoint& q1 = hole.points[j];
                const CVxDPoint& q2 = hole.points[j + 1 < nB ? j + 1 : 0];
                // Two level or two upright edges make DblFindInter's
                // determinant exactly zero.
                if ((level && q1.y == q2.y) || (upright && q1.x == q2.x))
                    continue;
                if (level && q1.x == q2.x &&
                    PerpendicularMiss(edge.p1.x, edge.p2.x, edge.p1.y, q1.x, q1.y, q2.y, slack))
                    continue;
                if (upright && q1.y == q2.y &&
                    PerpendicularMiss(edge.p1.y, edge.p2.y, edge.p1.x, q1.y, q1.x, q2.x, slack))
                    continue;
                double t = 0;
                double u = 0;
                meets =
                    DblFindInter(&edge.p1, &edge.p2, &q1, &q2, &t, &u) && AcceptParam(t) && AcceptParam(u);
            }
        };
        VisitEdges(m_xEdges, box.left - reach, box.right + reach, tryEdge);
        if (meets)
            return true;
        VisitEdges(m_yEdges, box.top - reach, box.bottom + reach, [&](const Edge& edge) {
            if (std::fabs(edge.p2.x - edge.p1.x) < EPS)
                tryEdge(edge);
        });
        if (meets)
            return true;
        if (box.levelAndUpright) {
            VisitAxisEdges(box.left - reach, box.top - reach, box.right + reach, box.bottom + reach, tryEdge);
            return meets;
        }
        // A slanted edge of the hole may meet a level edge of the outline
        // anywhere along the hole's extent in x, an upright one anywhere
        // along its extent in y.
        VisitAxisEdges(box.left - reach, m_bounds.top, box.right + reach, m_bounds.bottom,
                       [&](const Edge& edge) {
                           if (edge.p1.y == edge.p2.y)
                               tryEdge(edge);
                       });
        if (meets)
            return true;
        VisitAxisEdges(m_bounds.left, box.top - reach, m_bounds.right, box.bottom + reach,
                       [&](const Edge& edge) {
                           if (edge.p1.y != edge.p2.y)
                               tryEdge(edge);
                       });
        return meets;
    }

    // The vertex of the outline and the vertex of the hole nearest each
    // other, the first in the outline's order and then the hole's on a tie,
    // as BridgeHole chooses. Cells are searched in rings round the hole's
    // box until no vertex further out could come as near.
    void NearestPair(const CVxDPolygon& hole, const HoleBox& box, int* outVertex, int* outHoleVertex) const
    {
        const AxisScale& xs = m_vertexGrid.X();
        const AxisScale& ys = m_vertexGrid.Y();
        const int x0 = xs.Bucket(box.left);
        const int x1 = xs.Bucket(box.right);
        const int y0 = ys.Bucket(box.top);
        const int y1 = ys.Bucket(box.bottom);
        const int lastX = xs.Count() - 1;
        const int lastY = ys.Count() - 1;
        // Far above the rounding of cell borders.
        const double slack = RoundingSlack(4 * (m_magnitude + box.magnitude));
        const size_t nB = hole.points.size();
        double best = std::numeric_limits<double>::infinity();
        uint64_t bestRank = 0;
        const uint64_t headLabel = At(m_head).label;
        int bestVertex = m_head;
        size_t bestJ = 0;
        auto visitVertex = [&](const GridVertex& vertex) {
            const CVxDPoint& p = vertex.point;
            const int id = vertex.id;
            // Rounding keeps the order of differences, so no vertex of
            // the hole comes nearer than the hole's box; a tie may still
            // win by the order of the outline.
            const double gx = std::max(0.0, std::max(box.left - p.x, p.x - box.right));
            const double gy = std::max(0.0, std::max(box.top - p.y, p.y - box.bottom));
            if (gx * gx + gy * gy > best)
                return;
            // The place of the vertex in the order of the outline.
            const uint64_t rank = At(id).label - headLabel;
            for (size_t j = 0; j < nB; ++j) {
                const double d = p.Distance2(hole.points[j]);
                if (d < best || (d == best && (rank < bestRank || (rank == bestRank && j < bestJ)))) {
                    best = d;
                    bestRank = rank;
                    bestVertex = id;
                    bestJ = j;
                }
            }
        };
        for (int ring = 0;; ++ring) {
            const int left = x0 - ring;
            const int right = x1 + ring;
            const int top = y0 - ring;
            const int bottom = y1 + ring;
            const int fromX = std::max(left, 0);
            const int toX = std::min(right, lastX);
            if (ring == 0) {
                for (int cy = y0; cy <= y1; ++cy)
                    m_vertexGrid.VisitRow(cy, x0, x1, visitVertex);
            } else {
                if (top >= 0)
                    m_vertexGrid.VisitRow(top, fromX, toX, visitVertex);
                if (bottom <= lastY)
                    m_vertexGrid.VisitRow(bottom, fromX, toX, visitVertex);
                const int toY = std::min(bottom - 1, lastY);
                for (int cy = std::max(top + 1, 0); cy <= toY; ++cy) {
                    if (left >= 0)
                        m_vertexGrid.VisitCell(left, cy, visitVertex);
                    if (right <= lastX)
                        m_vertexGrid.VisitCell(right, cy, visitVertex);
                }
            }
            // Every vertex not yet seen lies in a cell beyond this ring, on a
            // side that doesn't yet reach the end of the grid, and at least
            // that side's gap away from the hole's box.
            double gap = std::numeric_limits<double>::infinity();
            if (left > 0)
                gap = std::min(gap, box.left - xs.Start(left));
            if (right < lastX)
                gap = std::min(gap, xs.Start(right + 1) - box.right);
            if (top > 0)
                gap = std::min(gap, box.top - ys.Start(top));
            if (bottom < lastY)
                gap = std::min(gap, ys.Start(bottom + 1) - box.bottom);
            if (gap == std::numeric_limits<double>::infinity())
                break;
            gap -= slack;
            if (gap > 0 && gap * gap > best)
                break;
        }
        *outVertex = bestVertex;
        *outHoleVertex = static_cast<int>(bestJ);
    }

    int32_t m_kind;
    int32_t m_tag;
    bool m_walls;
    uint64_t m_serial;
    // Edges below this one are left out of the search under way.
    mutable int m_firstEdge = 0;
    // By vertex id, with the order of the outline as a ring of links from
    // m_head. Labels grow along the ring from the first vertex, modulo 2^64,
    // so that they tell the order of two vertices without a walk.
    std::vector<Vertex> m_vertices;
    int m_head = 0;
    std::vector<Edge> m_edges;
    CVxDRect m_bounds;
    double m_magnitude = 0;
    AxisBuckets m_xEdges;
    AxisBuckets m_yEdges;
    BoxGrid<int> m_axisEdges;
    BoxGrid<GridVertex> m_vertexGrid;
    mutable uint32_t m_visit = 0;
};

// A hole as the subtraction takes it: without duplicate vertices.
class PreparedHole
{
public:
    explicit PreparedHole(const CVxDPolygon& hole) : m_hole(&hole)
    {
        if (hole.WouldRemoveDuplicates()) {
            m_own = hole;
            m_own.RemoveDuplicates();
            m_useOwn = true;
        }
        m_plain = IsPlainOutline(Get(), false);
        if (m_plain)
            m_box = HoleBox::Of(Get());
    }
    // The hole as given, for the full subtraction.
    const CVxDPolygon& Original() const { return *m_hole; }
    const CVxDPolygon& Get() const { return m_useOwn ? m_own : *m_hole; }
    // Whether BridgedOutline may take it.
    bool IsPlain() const { return m_plain; }
    // The bounds of a plain hole.
    const HoleBox& Box() const { return m_box; }
    // Records that the outline took the hole as wholly inside.
    void SetInside(const BridgedOutline& outline)
    {
        m_insideOf = outline.Serial();
        m_edgesThen = outline.EdgeCount();
        m_boundsThen = outline.Bounds();
    }
    // The first edge of the outline that came in after SetInside, for
    // WouldBridge; 0 if the outline has changed otherwise or is another one.
    int FirstNewEdge(const BridgedOutline& outline) const
    {
        return outline.Serial() == m_insideOf && outline.Bounds() == m_boundsThen ? m_edgesThen : 0;
    }

private:
    const CVxDPolygon* m_hole;
    CVxDPolygon m_own;
    bool m_useOwn = false;
    bool m_plain = false;
    HoleBox m_box;
    uint64_t m_insideOf = 0;
    int m_edgesThen = 0;
    CVxDRect m_boundsThen;
};

// The polygons of the list under subtraction, each with its BridgedOutline
// once one was needed; a polygon with an outline is held there and not in
// `polygon` until Take.
class WorkingList
{
public:
    // At most `added` vertices come in with the openings to be bridged.
    WorkingList(std::vector<CVxDPolygon>& list, size_t added) : m_added(added)
    {
        for (CVxDPolygon& polygon : list)
            m_items.push_back({std::move(polygon), nullptr, false});
    }

    size_t Size() const { return m_items.size(); }
    // The outline of item k, or null for one that BridgedOutline can't hold.
    BridgedOutline* Outline(size_t k)
    {
        Item& item = m_items[k];
        if (!item.tried) {
            item.tried = true;
            if (IsPlainOutline(item.polygon))
                item.outline = std::make_unique<BridgedOutline>(item.polygon, m_added, ++m_serials);
        }
        return item.outline.get();
    }
    // Whether an opening was found wholly inside item k.
    bool TookOpening(size_t k) const { return m_items[k].tookOpening; }
    void SetTookOpening(size_t k) { m_items[k].tookOpening = true; }
    const CVxDPolygon& Polygon(size_t k)
    {
        Item& item = m_items[k];
        if (item.stale) {
            item.polygon = item.outline->ToPolygon();
            item.stale = false;
        }
        return item.polygon;
    }
    // Replaces the list by these polygons.
    void Assign(std::vector<CVxDPolygon>&& polygons)
    {
        m_items.clear();
        for (CVxDPolygon& polygon : polygons)
            m_items.push_back({std::move(polygon), nullptr, false});
    }
    // CVxDPolygon::RemoveHole(list, hole) on the list: a polygon that takes
    // the hole in by a bridge stays in place, any other makes way for the
    // pieces that the full subtraction leaves of it.
    void SubtractEach(const PreparedHole& prepared, bool indexed)
    {
        for (size_t k = 0; k < m_items.size(); ++k) {
            BridgedOutline* outline = indexed && prepared.IsPlain() ? Outline(k) : nullptr;
            if (outline &&
                outline->WouldBridge(prepared.Get(), prepared.Box(), prepared.FirstNewEdge(*outline)) &&
                outline->Bridge(prepared.Get(), prepared.Box())) {
                m_items[k].stale = true;
                continue;
            }
            std::vector<CVxDPolygon> pieces = Subtract(Polygon(k), prepared.Original(), nullptr);
            const auto at = m_items.begin() + static_cast<std::ptrdiff_t>(k);
            m_items.erase(at);
            std::vector<Item> items;
            for (CVxDPolygon& piece : pieces)
                items.push_back({std::move(piece), nullptr, false});
            m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(k),
                           std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
            k += items.size();
            --k;
        }
    }
    void Take(std::vector<CVxDPolygon>& out)
    {
        out.clear();
        for (size_t k = 0; k < m_items.size(); ++k) {
            Polygon(k);
            out.push_back(std::move(m_items[k].polygon));
        }
    }

    struct Item
    {
        CVxDPolygon polygon;
        std::unique_ptr<BridgedOutline> outline;
        bool tried = false;
        bool stale = false;
        bool tookOpening = false;
    };
    std::vector<Item> m_items;
    size_t m_added = 0;
    uint64_t m_serials = 0;
};
} // namespace

namespace {
// Subtracts the holes in their order, except that holes lying wholly inside
// a polygon wait until all others are taken out. A hole inside is joined to
// the outline by a bridge there and back; a later hole that crossed the
// bridge or touched its ends would meet the outline twice at one point, which
// the walk cannot tell apart. Holes that cut the outline make no bridges.
void SubtractInOrder(std::vector<CVxDPolygon>& list, const std::vector<const CVxDPolygon*>& holes)
{
    // Indexing the outlines pays only when many openings are taken out.
    constexpr size_t kHolesWorthIndexing = 8;
    const bool indexed = holes.size() >= kHolesWorthIndexing;
    size_t added = 0;
    for (const CVxDPolygon* hole : holes)
        added += hole->points.size() + 2;
    WorkingList working(list, added);
    std::vector<PreparedHole> inside;
    inside.reserve(holes.size());
    for (const CVxDPolygon* hole : holes) {
        PreparedHole prepared(*hole);
        std::vector<CVxDPolygon> result;
        bool wouldBridge = false;
        for (size_t k = 0; k < working.Size() && !wouldBridge; ++k) {
            // An outline gets its index once an opening was found inside it:
            // openings that cut it replace it with new pieces anyway.
            const BridgedOutline* outline =
                indexed && prepared.IsPlain() && working.TookOpening(k) ? working.Outline(k) : nullptr;
            if (outline && outline->WouldBridge(prepared.Get(), prepared.Box())) {
                prepared.SetInside(*outline);
                wouldBridge = true;
                break;
            }
            std::vector<CVxDPolygon> pieces = Subtract(working.Polygon(k), *hole, &wouldBridge);
            if (wouldBridge) {
                working.SetTookOpening(k);
                break;
            }
            for (CVxDPolygon& piece : pieces)
                result.push_back(std::move(piece));
        }
        if (wouldBridge)
            inside.push_back(std::move(prepared));
        else
            working.Assign(std::move(result));
    }
    for (const PreparedHole& hole : inside)
        working.SubtractEach(hole, indexed);
    working.Take(list);
}
} // namespace

void CVxDPolygon::RemoveHoles(std::vector<CVxDPolygon>& list, const std::vector<CVxDPolygon>& holes)
{
    std::vector<const CVxDPolygon*> sorted;
    for (const CVxDPolygon& hole : holes)
        if (!hole.points.empty())
            sorted.push_back(&hole);
    // A stable sort: the order compares within a tolerance and so is no
    // strict weak ordering, which std::sort may not survive.
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const CVxDPolygon* a, const CVxDPolygon* b) { return vx_sort_poly_x(*a, *b); });
    SubtractInOrder(list, sorted);
}

bool CVxDPolygon::RemoveHole(const std::vector<CVxDPolygon>& holes, std::vector<CVxDPolygon>& out) const
{
    if (kind != KIND_ROOM)
        return false;
    std::vector<const CVxDPolygon*> openings;
    for (const CVxDPolygon& hole : holes)
        if (hole.kind == KIND_HOLE && !hole.points.empty())
            openings.push_back(&hole);
    std::vector<CVxDPolygon> list{*this};
    SubtractInOrder(list, openings);
    out = std::move(list);
    return true;
}

bool CVxDPolygon::RemoveHole(const CVxDPolygon& hole, std::vector<CVxDPolygon>& out) const
{
    return RemoveHole(std::vector<CVxDPolygon>{hole}, out);
}
