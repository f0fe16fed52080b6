// Subtraction of floor openings from room outlines: a Weiler-Atherton walk
// over the two outlines, which come in opposite winding so that both are
// walked forwards.

#include "CVxDPolygon.h"
#include "CVxPolyInfo.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"

#include <algorithm>
#include <cmath>

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
// Subtracts the holes in their order, except that holes lying wholly inside
// a polygon wait until all others are taken out. A hole inside is joined to
// the outline by a bridge there and back; a later hole that crossed the
// bridge or touched its ends would meet the outline twice at one point, which
// the walk cannot tell apart. Holes that cut the outline make no bridges.
void SubtractInOrder(std::vector<CVxDPolygon>& list, const std::vector<const CVxDPolygon*>& holes)
{
    std::vector<const CVxDPolygon*> inside;
    for (const CVxDPolygon* hole : holes) {
        std::vector<CVxDPolygon> result;
        bool wouldBridge = false;
        for (const CVxDPolygon& polygon : list) {
            std::vector<CVxDPolygon> pieces = Subtract(polygon, *hole, &wouldBridge);
            if (wouldBridge)
                break;
            for (CVxDPolygon& piece : pieces)
                result.push_back(std::move(piece));
        }
        if (wouldBridge)
            inside.push_back(hole);
        else
            list = std::move(result);
    }
    for (const CVxDPolygon* hole : inside)
        CVxDPolygon::RemoveHole(list, *hole);
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
