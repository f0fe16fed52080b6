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
// How near the hole's outline a point may lie and still count as on it.
constexpr double kOnLineDistance = 0.001;

bool IsFinite(const CVxDPolygon& polygon)
{
    return std::all_of(polygon.points.begin(), polygon.points.end(),
                       [](const CVxDPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

bool AcceptParam(double t)
{
    return t > -EPS && t - 1 < EPS;
}

// Appends a vertex and, when the result carries wall indices, the wall of
// the edge that starts there.
void AppendVertex(CVxDPolygon& out, const CVxDPoint& point, bool walls, int32_t wall)
{
    out.points.push_back(point);
    if (walls)
        out.edgeWalls.push_back(wall);
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
    for (size_t i = 0; i < nA; ++i) {
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
    auto pushEdge = [&](const CVxDPolygon& source, bool sourceFlags, size_t edge) {
        if (!flags)
            return;
        if (sourceFlags)
            out.PushBackBezierSegment(source, static_cast<int>(edge));
        else
            out.bezierFlags.push_back(false);
    };

    for (size_t k = 0; k < nA; ++k) {
        const size_t i = (ia + k) % nA;
        AppendVertex(out, a.points[i], walls, walls ? a.edgeWalls[i] : -1);
        pushEdge(a, flagsA, i);
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
} // namespace

std::vector<CVxDPolygon> CVxDPolygon::RemoveHoleNew(const CVxDPolygon& outer, const CVxDPolygon& hole)
{
    CVxDPolygon a = outer;
    CVxDPolygon b = hole;
    a.RemoveDuplicates();
    b.RemoveDuplicates();
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
    const bool disjoint = CVxPolyInfo::IsCompletelyOuter(listA) && CVxPolyInfo::IsCompletelyOuter(listB) &&
                          !a.PtInPolygon(b.GetCentroid());

    const int nA = static_cast<int>(a.points.size());
    const int nB = static_cast<int>(b.points.size());
    int crossings = 0;
    bool holeGotEntry = false;
    for (int i = 0; i < nA; ++i) {
        const CVxDPoint& p1 = a.points[static_cast<size_t>(i)];
        const CVxDPoint& p2 = a.points[static_cast<size_t>((i + 1) % nA)];
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
            const int indexB = CVxPolyInfo::InsertPoint(listB, edgeB, u, point, &isNew);
            if (isNew) {
                CVxPolyInfo::ShiftCrossIndices(listA, indexB);
                holeGotEntry = true;
            }
            CVxPolyInfo::MarkCross(listA, indexA, listB, indexB);
            ++crossings;
        }
    }

    if (disjoint && !holeGotEntry)
        return {outer};

    if (crossings == 0) {
        if (!a.PtInPolygon(b.points[0]))
            return {outer};
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
        if (e0.edge != e1.edge || e0.crossIndex < 0 || e1.crossIndex < 0 || !(e0.param > EPS))
            continue;
        const CVxDPoint middle = (e0.point + e1.point) / 2;
        if (b.PtInPolygonIncludeVert(middle) || b.PtOnPolygonLine(middle, kOnLineDistance))
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
        if (piece.points.size() >= 3)
            result.push_back(std::move(piece));
    }
    return result;
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

void CVxDPolygon::RemoveHoles(std::vector<CVxDPolygon>& list, const std::vector<CVxDPolygon>& holes)
{
    std::vector<CVxDPolygon> sorted = holes;
    // A stable sort: the order compares within a tolerance and so is no
    // strict weak ordering, which std::sort may not survive.
    std::stable_sort(sorted.begin(), sorted.end(), vx_sort_poly_x);
    for (const CVxDPolygon& hole : sorted)
        RemoveHole(list, hole);
}

bool CVxDPolygon::RemoveHole(const std::vector<CVxDPolygon>& holes, std::vector<CVxDPolygon>& out) const
{
    if (kind != KIND_ROOM)
        return false;
    std::vector<CVxDPolygon> list{*this};
    for (const CVxDPolygon& hole : holes)
        if (hole.kind == KIND_HOLE && !hole.points.empty())
            RemoveHole(list, hole);
    out = std::move(list);
    return true;
}

bool CVxDPolygon::RemoveHole(const CVxDPolygon& hole, std::vector<CVxDPolygon>& out) const
{
    return RemoveHole(std::vector<CVxDPolygon>{hole}, out);
}
