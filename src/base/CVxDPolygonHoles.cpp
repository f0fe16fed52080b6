// Subtraction of floor openings from room outlines: a Weiler-Atherton walk
// over the two outlines, which come in opposite winding so that both are
// walked forwards.

#include "CVxDPolygon.h"

#include "CVxPolyInfo.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"
#include "VxPolygonRay.h"

#include <algorithm>
#include <cmath>
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

using vx_polygon::RayCrossesEdge;
using vx_polygon::RoundingSlack;

double Magnitude(const CVxDRect& r)
{
    return std::max(std::max(std::fabs(r.left), std::fabs(r.right)),
                    std::max(std::fabs(r.top), std::fabs(r.bottom)));
}

// Whether an outline has straight edges only, no curve data at all, and
// nothing that the subtraction would first rebuild or refuse.
bool IsPlainOutline(const CVxDPolygon& polygon)
{
    const size_t n = polygon.points.size();
    if (n < 3 || !polygon.bezierFlags.empty() || !polygon.bezierControls.empty() ||
        polygon.WouldRemoveDuplicates() || !IsFinite(polygon))
        return false;
    return std::all_of(polygon.points.begin(), polygon.points.end(), [](const CVxDPoint& p) {
        return std::fabs(p.x) < kLargestFastCoordinate && std::fabs(p.y) < kLargestFastCoordinate;
    });
}

// Buckets along one axis. A range lands in every bucket it overlaps, and the
// bucket of a coordinate never decreases as the coordinate grows, so ranges
// that overlap always share a bucket; coordinates past the ends go to the end
// buckets.
class AxisBuckets
{
public:
    static constexpr int kCount = 64;

    void Reset(double low, double high, int count = kCount)
    {
        m_origin = low;
        m_count = count;
        m_scale = high > low ? count / (high - low) : 0;
        m_width = high > low ? (high - low) / count : 0;
        m_head.assign(static_cast<size_t>(count), -1);
        m_links.clear();
    }
    int Bucket(double v) const
    {
        const double f = (v - m_origin) * m_scale;
        if (!(f > 0))
            return 0;
        if (f >= m_count)
            return m_count - 1;
        return static_cast<int>(f);
    }
    int Count() const { return m_count; }
    double Width() const { return m_width; }
    void Add(int item, double low, double high)
    {
        const int last = Bucket(high);
        for (int k = Bucket(low); k <= last; ++k)
            AddToBucket(item, k);
    }
    void AddToBucket(int item, int bucket)
    {
        m_links.push_back({item, m_head[static_cast<size_t>(bucket)]});
        m_head[static_cast<size_t>(bucket)] = static_cast<int>(m_links.size()) - 1;
    }
    // Calls f for each item of a bucket; an item in several buckets comes once
    // per bucket.
    template <class F>
    void VisitBucket(int bucket, F&& f) const
    {
        for (int k = m_head[static_cast<size_t>(bucket)]; k >= 0; k = m_links[static_cast<size_t>(k)].next)
            f(m_links[static_cast<size_t>(k)].item);
    }
    template <class F>
    void Visit(double low, double high, F&& f) const
    {
        const int last = Bucket(high);
        for (int b = Bucket(low); b <= last; ++b)
            VisitBucket(b, f);
    }

private:
    struct Link
    {
        int item;
        int next;
    };
    double m_origin = 0;
    double m_scale = 0;
    double m_width = 0;
    int m_count = 1;
    std::vector<int> m_head;
    std::vector<Link> m_links;
};

// A straight outline, as a bridged room becomes, with the subtraction of
// openings wholly inside it carried out in place.
class BridgedOutline
{
public:
    // The outline must be IsPlainOutline.
    explicit BridgedOutline(const CVxDPolygon& polygon)
        : m_kind(polygon.kind), m_tag(polygon.tag), m_walls(polygon.edgeWalls.size() == polygon.points.size())
    {
        const size_t n = polygon.points.size();
        const CVxDRect bounds = polygon.GetBoundingRect();
        m_xEdges.Reset(bounds.left, bounds.right);
        m_yEdges.Reset(bounds.top, bounds.bottom);
        m_xVertices.Reset(bounds.left, bounds.right, kVertexCells);
        m_yVertices.Reset(bounds.top, bounds.bottom, kVertexCells);
        m_cells.assign(static_cast<size_t>(kVertexCells * kVertexCells), -1);
        m_bounds = bounds;
        for (size_t i = 0; i < n; ++i) {
            AddVertex(polygon.points[i], m_walls ? polygon.edgeWalls[i] : -1);
            m_order.push_back(static_cast<int>(i));
        }
        for (size_t i = 0; i < n; ++i)
            AddEdge(polygon.points[i], polygon.points[(i + 1) % n]);
    }

    // Whether the full subtraction of the hole, IsPlainOutline, would bridge
    // it: some vertex of the outline lies clear of the hole, the hole's first
    // vertex lies inside the outline, and no edges of the two meet.
    bool WouldBridge(const CVxDPolygon& hole) const
    {
        CVxDRect holeNear = hole.GetBoundingRect();
        holeNear.InflateRect(2 * CVxPolyInfo::kOnLineDistance, 2 * CVxPolyInfo::kOnLineDistance);
        holeNear.NormalizeRect();
        if (m_bounds.left >= holeNear.left && m_bounds.right <= holeNear.right &&
            m_bounds.top >= holeNear.top && m_bounds.bottom <= holeNear.bottom)
            return false;
        if (!IsInside(hole.points[0]))
            return false;
        return !Meets(hole);
    }

    // Bridges a hole for which WouldBridge holds, as BridgeHole does. False,
    // and nothing done, when the bridge would start and end at one point:
    // the outline would then hold a duplicate vertex.
    bool Bridge(const CVxDPolygon& hole)
    {
        int ia = 0;
        int ib = 0;
        NearestPair(hole, &ia, &ib);
        const int nB = static_cast<int>(hole.points.size());
        const CVxDPoint from = m_vertices[static_cast<size_t>(m_order[static_cast<size_t>(ia)])];
        const CVxDPoint to = hole.points[static_cast<size_t>(ib)];
        if (from == to)
            return false;

        // The outline now runs from its vertex ia round, then over the
        // bridge round the hole and back.
        const int n = static_cast<int>(m_order.size());
        std::rotate(m_order.begin(), m_order.begin() + ia, m_order.end());
        for (int p = 0; p < n; ++p)
            m_position[static_cast<size_t>(m_order[static_cast<size_t>(p)])] = p;
        AppendVertex(from);
        for (int k = 0; k <= nB; ++k)
            AppendVertex(hole.points[static_cast<size_t>((ib + k) % nB)]);

        AddEdge(from, to);
        for (int j = 0; j < nB; ++j)
            AddEdge(hole.points[static_cast<size_t>(j)], hole.points[static_cast<size_t>((j + 1) % nB)]);
        AddEdge(to, from);
        return true;
    }

    CVxDPolygon ToPolygon() const
    {
        CVxDPolygon out;
        out.kind = m_kind;
        out.tag = m_tag;
        out.points.reserve(m_order.size());
        if (m_walls)
            out.edgeWalls.reserve(m_order.size());
        for (int id : m_order) {
            out.points.push_back(m_vertices[static_cast<size_t>(id)]);
            if (m_walls)
                out.edgeWalls.push_back(m_vertexWalls[static_cast<size_t>(id)]);
        }
        return out;
    }

private:
    static constexpr int kVertexCells = 32;

    struct Edge
    {
        CVxDPoint p1;
        CVxDPoint p2;
    };

    void AddVertex(const CVxDPoint& p, int32_t wall)
    {
        const int id = static_cast<int>(m_vertices.size());
        m_vertices.push_back(p);
        m_vertexWalls.push_back(wall);
        m_position.push_back(static_cast<int>(m_order.size()));
        const size_t cell =
            static_cast<size_t>(m_yVertices.Bucket(p.y) * kVertexCells + m_xVertices.Bucket(p.x));
        m_vertexNext.push_back(m_cells[cell]);
        m_cells[cell] = id;
        m_magnitude = std::max(m_magnitude, std::max(std::fabs(p.x), std::fabs(p.y)));
    }
    // A vertex of the bridge or the hole: it starts an edge of no wall.
    void AppendVertex(const CVxDPoint& p)
    {
        const int id = static_cast<int>(m_vertices.size());
        AddVertex(p, -1);
        m_order.push_back(id);
    }

    void AddEdge(const CVxDPoint& p1, const CVxDPoint& p2)
    {
        const int id = static_cast<int>(m_edges.size());
        m_edges.push_back({p1, p2});
        m_seen.push_back(0);
        m_bounds.left = std::min(m_bounds.left, std::min(p1.x, p2.x));
        m_bounds.right = std::max(m_bounds.right, std::max(p1.x, p2.x));
        m_bounds.top = std::min(m_bounds.top, std::min(p1.y, p2.y));
        m_bounds.bottom = std::max(m_bounds.bottom, std::max(p1.y, p2.y));
        // Edges that DblFindInter measures along x are found by their extent
        // in x, the others by their extent in y; every edge is found by its
        // extent in y for the inside test.
        if (std::fabs(p2.x - p1.x) >= EPS)
            m_xEdges.Add(id, std::min(p1.x, p2.x), std::max(p1.x, p2.x));
        m_yEdges.Add(id, std::min(p1.y, p2.y), std::max(p1.y, p2.y));
    }

    // Calls f once for each edge in the buckets over low..high.
    template <class F>
    void VisitEdges(const AxisBuckets& buckets, double low, double high, F&& f) const
    {
        ++m_visit;
        buckets.Visit(low, high, [&](int id) {
            uint32_t& seen = m_seen[static_cast<size_t>(id)];
            if (seen == m_visit)
                return;
            seen = m_visit;
            f(m_edges[static_cast<size_t>(id)]);
        });
    }

    // What the subtraction's marking of the hole's vertices finds for this
    // one: inside the outline, not within 0.001 of it nor at a vertex. The
    // tests and their filters are those of CVxDPolygon::PlacePoint for the
    // bounds of the outline, over the edges near the point's y only; the
    // filter in y there skips all the others.
    bool IsInside(const CVxDPoint& point) const
    {
        const double maxDist = CVxPolyInfo::kOnLineDistance;
        const CVxDRect& bounds = m_bounds;
        CVxDRect near = bounds;
        near.InflateRect(2 * maxDist, 2 * maxDist);
        if (!(point.x >= near.left && point.x <= near.right && point.y >= near.top && point.y <= near.bottom))
            return false;

        const double magnitude = Magnitude(bounds);
        const double reach =
            maxDist + RoundingSlack(2 * std::max(magnitude, std::fabs(point.x) + std::fabs(point.y)));
        const bool ray = bounds.PtInRect(point);
        const CVxDPoint far(bounds.right + 50, point.y);
        const double slack = RoundingSlack(magnitude);
        const double low = point.y + EPS * (bounds.bottom - bounds.top) + slack;
        const double high = point.y - EPS * (bounds.bottom - bounds.top) - slack;
        const double left = point.x - EPS * (far.x - point.x + bounds.right - bounds.left) - slack;
        const double band =
            2 * std::max(std::max(reach, EPS * (bounds.bottom - bounds.top) + slack), 2 * EPS);
        bool on = false;
        int crossings = 0;
        const double margin = 2 * band + RoundingSlack(magnitude);
        VisitEdges(m_yEdges, point.y - margin, point.y + margin, [&](const Edge& edge) {
            const CVxDPoint& p1 = edge.p1;
            const CVxDPoint& p2 = edge.p2;
            const double minY = std::min(p1.y, p2.y);
            const double maxY = std::max(p1.y, p2.y);
            if (point.y < minY - band || point.y > maxY + band)
                return;
            if (p1 == point)
                on = true;
            if (!(point.x < std::min(p1.x, p2.x) - reach || point.x > std::max(p1.x, p2.x) + reach ||
                  point.y < minY - reach || point.y > maxY + reach)) {
                double t = -1;
                const double dist = DblGetDistFromLine(p1, p2, point, &t);
                if (t > 0 && t < 1 && dist <= maxDist)
                    on = true;
            }
            // A level edge is parallel to the ray: DblFindInter finds nothing.
            if (!ray || low < minY || high > maxY || std::max(p1.x, p2.x) < left || p1.y == p2.y)
                return;
            if (RayCrossesEdge(point, far, p1, p2))
                ++crossings;
        });
        return !on && (crossings % 2) == 1;
    }

    // Whether an edge of the outline and one of the hole meet as the
    // subtraction's crossing search accepts it. Only edges that HoleBox does
    // not rule out are tried, as there.
    bool Meets(const CVxDPolygon& hole) const
    {
        const HoleBox box = HoleBox::Of(hole);
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
                const CVxDPoint& q2 = hole.points[(j + 1) % nB];
                // Two level or two upright edges make DblFindInter's
                // determinant exactly zero.
                if ((level && q1.y == q2.y) || (upright && q1.x == q2.x))
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
        return meets;
    }

    // The pair of an outline vertex (by position) and a hole vertex nearest
    // each other, the first in the outline's order and then the hole's on a
    // tie, as BridgeHole chooses. Cells are searched in rings round the
    // hole's until no vertex further out could come as near.
    void NearestPair(const CVxDPolygon& hole, int* outPosition, int* outHoleVertex) const
    {
        const HoleBox box = HoleBox::Of(hole);
        const int x0 = m_xVertices.Bucket(box.left);
        const int x1 = m_xVertices.Bucket(box.right);
        const int y0 = m_yVertices.Bucket(box.top);
        const int y1 = m_yVertices.Bucket(box.bottom);
        const double cell = std::min(m_xVertices.Width(), m_yVertices.Width());
        double best = -1;
        int bestPosition = 0;
        int bestJ = 0;
        auto visitCell = [&](int cx, int cy) {
            for (int id = m_cells[static_cast<size_t>(cy * kVertexCells + cx)]; id >= 0;
                 id = m_vertexNext[static_cast<size_t>(id)]) {
                const CVxDPoint& p = m_vertices[static_cast<size_t>(id)];
                const int position = m_position[static_cast<size_t>(id)];
                for (size_t j = 0; j < hole.points.size(); ++j) {
                    const double d = p.Distance2(hole.points[j]);
                    const int jj = static_cast<int>(j);
                    if (best < 0 || d < best ||
                        (d == best &&
                         (position < bestPosition || (position == bestPosition && jj < bestJ)))) {
                        best = d;
                        bestPosition = position;
                        bestJ = jj;
                    }
                }
            }
        };
        for (int ring = 0;; ++ring) {
            const int left = x0 - ring;
            const int right = x1 + ring;
            const int top = y0 - ring;
            const int bottom = y1 + ring;
            for (int cy = std::max(top, 0); cy <= std::min(bottom, kVertexCells - 1); ++cy) {
                const bool edgeRow = ring == 0 || cy == top || cy == bottom;
                for (int cx = std::max(left, 0); cx <= std::min(right, kVertexCells - 1); ++cx)
                    if (edgeRow || cx == left || cx == right)
                        visitCell(cx, cy);
            }
            // Every vertex not yet seen lies in a cell beyond this ring, at
            // least `ring` cells clear of the hole's box in x or y; one cell
            // less allows for rounding at the cell borders.
            const bool all = left <= 0 && top <= 0 && right >= kVertexCells - 1 && bottom >= kVertexCells - 1;
            const double gap = (ring - 1) * cell;
            if (all || (best >= 0 && ring >= 1 && gap * gap > best))
                break;
        }
        *outPosition = bestPosition;
        *outHoleVertex = bestJ;
    }

    int32_t m_kind;
    int32_t m_tag;
    bool m_walls;
    // By vertex id: an id stays with its vertex while the outline turns.
    std::vector<CVxDPoint> m_vertices;
    std::vector<int32_t> m_vertexWalls;
    std::vector<int> m_position;
    std::vector<int> m_vertexNext;
    // Vertex ids in the order of the outline.
    std::vector<int> m_order;
    std::vector<Edge> m_edges;
    CVxDRect m_bounds;
    double m_magnitude = 0;
    AxisBuckets m_xEdges;
    AxisBuckets m_yEdges;
    AxisBuckets m_xVertices;
    AxisBuckets m_yVertices;
    std::vector<int> m_cells;
    mutable std::vector<uint32_t> m_seen;
    mutable uint32_t m_visit = 0;
};

// A hole as the subtraction takes it: without duplicate vertices.
class PreparedHole
{
public:
    explicit PreparedHole(const CVxDPolygon& hole) : m_source(&hole)
    {
        if (hole.WouldRemoveDuplicates()) {
            m_own = hole;
            m_own.RemoveDuplicates();
            m_source = &m_own;
        }
        m_plain = IsPlainOutline(*m_source);
    }
    const CVxDPolygon& Get() const { return *m_source; }
    // Whether BridgedOutline may take it.
    bool IsPlain() const { return m_plain; }

private:
    CVxDPolygon m_own;
    const CVxDPolygon* m_source;
    bool m_plain = false;
};

// The polygons of the list under subtraction, each with its BridgedOutline
// once one was needed; a polygon with an outline is held there and not in
// `polygon` until Take.
class WorkingList
{
public:
    explicit WorkingList(std::vector<CVxDPolygon>& list)
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
                item.outline = std::make_unique<BridgedOutline>(item.polygon);
        }
        return item.outline.get();
    }
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
    void SubtractEach(const CVxDPolygon& hole, bool indexed)
    {
        const PreparedHole prepared(hole);
        std::vector<Item> next;
        next.reserve(m_items.size());
        for (size_t k = 0; k < m_items.size(); ++k) {
            BridgedOutline* outline = indexed && prepared.IsPlain() ? Outline(k) : nullptr;
            if (outline && outline->WouldBridge(prepared.Get()) && outline->Bridge(prepared.Get())) {
                m_items[k].stale = true;
                next.push_back(std::move(m_items[k]));
                continue;
            }
            for (CVxDPolygon& piece : Subtract(Polygon(k), hole, nullptr))
                next.push_back({std::move(piece), nullptr, false});
        }
        m_items = std::move(next);
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
    };
    std::vector<Item> m_items;
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
    WorkingList working(list);
    std::vector<const CVxDPolygon*> inside;
    for (const CVxDPolygon* hole : holes) {
        const PreparedHole prepared(*hole);
        std::vector<CVxDPolygon> result;
        bool wouldBridge = false;
        for (size_t k = 0; k < working.Size() && !wouldBridge; ++k) {
            const BridgedOutline* outline = indexed && prepared.IsPlain() ? working.Outline(k) : nullptr;
            if (outline && outline->WouldBridge(prepared.Get())) {
                wouldBridge = true;
                break;
            }
            std::vector<CVxDPolygon> pieces = Subtract(working.Polygon(k), *hole, &wouldBridge);
            if (wouldBridge)
                break;
            for (CVxDPolygon& piece : pieces)
                result.push_back(std::move(piece));
        }
        if (wouldBridge)
            inside.push_back(hole);
        else
            working.Assign(std::move(result));
    }
    for (const CVxDPolygon* hole : inside)
        working.SubtractEach(*hole, indexed);
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
