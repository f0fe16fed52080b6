#include "CVxDPolygon.h"

#include "VxPolygonRay.h"

#include "CVxStringTokenizer.h"
#include "VxEps.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"
#include "VxTrace.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {
// Curves are never integrated exactly: each consumer cuts a curved edge into
// a fixed number of chords.
constexpr int kChordsForMeasure = 16;
constexpr int kChordsForInside = 4;
constexpr int kChordsForNearLine = 6; // of which the first five are used

// Curve parameters are formed in single precision.
double ChordParam(int i, int chords)
{
    return static_cast<float>(i) / static_cast<float>(chords);
}

CVxDPoint CurvePoint(const CVxDPoint& p1, const CVxDPoint& c0, const CVxDPoint& c1, const CVxDPoint& p2,
                     double t)
{
    CVxDPoint q;
    GetBezierInterpolation(q, p1, c0, c1, p2, t);
    return q;
}

// Whether no edge is curved, whatever the length of the flags.
bool NoCurvedEdge(const std::vector<bool>& flags)
{
    return std::none_of(flags.begin(), flags.end(), [](bool f) { return f; });
}

using vx_polygon::RayCrossesEdge;
using vx_polygon::RoundingSlack;

} // namespace

void CVxDPolygon::Zero()
{
    points.clear();
    bezierFlags.clear();
    bezierControls.clear();
    edgeWalls.clear();
    kind = KIND_NONE;
}

void CVxDPolygon::Offset(double dx, double dy)
{
    for (CVxDPoint& p : points)
        p.Offset(dx, dy);
    for (CVxDPoint& c : bezierControls)
        c.Offset(dx, dy);
}

void CVxDPolygon::Scale(double sx, double sy)
{
    for (CVxDPoint& p : points)
        p.Scale(sx, sy);
    for (CVxDPoint& c : bezierControls)
        c.Scale(sx, sy);
}

int CVxDPolygon::GetBezierSegmentIdx(int edge, bool open) const
{
    const int edges = GetEdgeCount(open);
    if (static_cast<int>(bezierFlags.size()) < edges || edge < 0 || edge >= edges ||
        !bezierFlags[static_cast<size_t>(edge)])
        return 0;
    int curvedBefore = 0;
    for (int i = 0; i < edge; ++i)
        if (bezierFlags[static_cast<size_t>(i)])
            ++curvedBefore;
    return 2 * curvedBefore;
}

void CVxDPolygon::GetBezControlPoints(CVxDPoint& outP1, CVxDPoint& outP2, CVxDPoint& outC0, CVxDPoint& outC1,
                                      int& ioControlIndex, int edge, int vertexCount, bool open) const
{
    const int n = (vertexCount > 0 && vertexCount <= GetVertexCount()) ? vertexCount : GetVertexCount();
    if (n == 0) {
        outP1.Zero();
        outP2.Zero();
        outC0.Zero();
        outC1.Zero();
        return;
    }
    const int i1 = ((edge % n) + n) % n;
    const int i2 = (i1 + 1) % n;
    outP1 = points[static_cast<size_t>(i1)];
    outP2 = points[static_cast<size_t>(i2)];

    if (ioControlIndex >= 0 && static_cast<size_t>(ioControlIndex) + 1 < bezierControls.size()) {
        outC0 = bezierControls[static_cast<size_t>(ioControlIndex)];
        outC1 = bezierControls[static_cast<size_t>(ioControlIndex) + 1];
        ioControlIndex += 2;
        return;
    }

    auto flagOf = [&](int e) {
        e = ((e % n) + n) % n;
        return static_cast<size_t>(e) < bezierFlags.size() && bezierFlags[static_cast<size_t>(e)];
    };
    CVxDPoint prev = points[static_cast<size_t>((i1 - 1 + n) % n)];
    CVxDPoint next = points[static_cast<size_t>((i1 + 2) % n)];
    bool prevCurved = flagOf(i1 - 1);
    bool nextCurved = flagOf(i1 + 1);
    if (open) {
        // An open line has no neighbour before its first edge or after its
        // last one.
        if (i1 == 0) {
            prev = outP1;
            prevCurved = false;
        }
        if (i1 == n - 2) {
            next = outP2;
            nextCurved = false;
        }
    }
    GetBezierControlPoint(outC0, outC1, prev, outP1, outP2, next, prevCurved, nextCurved);
}

int CVxDPolygon::SampleEdge(CVxDPoint* out, int edge, int& ioControlIndex, bool open, int chords) const
{
    const int n = GetVertexCount();
    if (!IsEdgeCurved(edge, open)) {
        out[0] = points[static_cast<size_t>((edge + 1) % n)];
        return 1;
    }
    CVxDPoint p1, p2, c0, c1;
    GetBezControlPoints(p1, p2, c0, c1, ioControlIndex, edge, n, open);
    chords = std::clamp(chords, 1, kMaxChords);
    for (int i = 1; i <= chords; ++i)
        out[i - 1] = CurvePoint(p1, c0, c1, p2, ChordParam(i, chords));
    return chords;
}

bool CVxDPolygon::PtIsPolygonVert(const CVxDPoint& point) const
{
    return std::any_of(points.begin(), points.end(), [&](const CVxDPoint& p) { return p == point; });
}

int CVxDPolygon::IsEdgeOnWall(int edge, bool* outNoInfo) const
{
    if (edgeWalls.size() == points.size() && edge >= 0 && static_cast<size_t>(edge) < edgeWalls.size()) {
        if (outNoInfo)
            *outNoInfo = false;
        return edgeWalls[static_cast<size_t>(edge)];
    }
    if (outNoInfo)
        *outNoInfo = true;
    return -1;
}

CVxStringW CVxDPolygon::SaveToString() const
{
    CVxStringW text;
    text.sprintf(L"%d|%d|", GetVertexCount(), static_cast<int>(kind));
    for (size_t k = 0; k < points.size(); ++k) {
        text += DblSaveW(points[k].x);
        text += L';';
        text += DblSaveW(points[k].y);
        const bool hasFlag = k < bezierFlags.size();
        const bool hasControls = 2 * k + 1 < bezierControls.size();
        // A missing flag before control points stays an empty field, so
        // that the control points keep their places.
        if (hasFlag || hasControls) {
            text += L';';
            if (hasFlag)
                text += bezierFlags[k] ? L"1" : L"0";
        }
        if (hasControls) {
            for (size_t c = 2 * k; c <= 2 * k + 1; ++c) {
                text += L';';
                text += DblSaveW(bezierControls[c].x);
                text += L';';
                text += DblSaveW(bezierControls[c].y);
            }
        }
        text += L'|';
    }
    return text;
}

bool CVxDPolygon::LoadFromString(const CVxStringW& text)
{
    if (text.IsEmpty())
        return false;
    CVxStringTokenizer tokenizer(text, L'|');
    const std::vector<CVxStringW> tokens = tokenizer.GetTokenList();
    if (tokens.size() < 3)
        return false;

    // The count only reserves room, and never more than the text can fill.
    const int count = tokens[0].ToIntDef(0);
    const size_t vertexTokens = tokens.size() - 2;
    if (count > 0) {
        const size_t reserve = std::min(static_cast<size_t>(count), vertexTokens);
        points.reserve(points.size() + reserve);
        bezierFlags.reserve(bezierFlags.size() + reserve);
    }
    kind = tokens[1].ToIntDef(0);

    bool readVertex = false;
    for (size_t i = 2; i < tokens.size(); ++i) {
        if (tokens[i].IsEmpty())
            continue;
        const std::vector<CVxStringW> fields = tokens[i].Split(L';');
        const double x = DblLoad(fields[0], 0);
        const double y = fields.size() > 1 ? DblLoad(fields[1], 0) : 0;
        points.emplace_back(x, y);
        readVertex = true;
        if (fields.size() > 2)
            bezierFlags.push_back(DblLoad(fields[2], 0) >= 1);
        // Control points come in pairs; a pair cut short is dropped whole so
        // that the pairs of later edges keep their places.
        if (fields.size() > 6) {
            bezierControls.emplace_back(DblLoad(fields[3], 0), DblLoad(fields[4], 0));
            bezierControls.emplace_back(DblLoad(fields[5], 0), DblLoad(fields[6], 0));
        }
    }
    return readVertex;
}

bool CVxDPolygon::LoadFromString(const CVxStringA& text)
{
    // Polygon texts are ASCII; a text that isn't gives an empty string and
    // thus false.
    return LoadFromString(CVxStringW(text));
}

CVxStringA CVxDPolygon::ToSvg() const
{
    const CVxDRect bounds = GetBoundingRect();
    CVxStringA svg;
    const double height = std::ceil(500.0 * bounds.Aspect());
    const int heightPixels = std::isfinite(height) ? static_cast<int>(std::clamp(height, -1e9, 1e9)) : 0;
    svg.sprintf("<svg width=\"%d\" height=\"%d\" viewbox=\"%.2f %.2f %.2f %.2f\">", 500, heightPixels,
                bounds.left, bounds.top, bounds.Width(), bounds.Height());
    svg += "<polygon points=\"";
    for (const CVxDPoint& p : points) {
        CVxStringA pair;
        pair.sprintf("%.2f,%.2f ", p.x, p.y);
        svg += pair;
    }
    svg += "\" style=\"fill:lime;fill-opacity:0.4;stroke:black\"/></svg>\n";
    return svg;
}

void CVxDPolygon::Trace() const
{
    VxTrace("%s", ToSvg().c_str());
}

double CVxDPolygon::GetArea(bool* outNegative) const
{
    if (outNegative)
        *outNegative = false;
    const int n = GetVertexCount();
    if (n < 3)
        return 0;
    double sum = 0;
    if (!HasCurveFlags(false) || NoCurvedEdge(bezierFlags)) {
        // Straight edges: one term each, in the same order.
        for (int i = 0; i < n; ++i) {
            const CVxDPoint& prev = points[static_cast<size_t>(i)];
            const CVxDPoint& q = points[static_cast<size_t>(i + 1 < n ? i + 1 : 0)];
            sum += prev.x * q.y - q.x * prev.y;
        }
        if (outNegative)
            *outNegative = sum < 0;
        return std::fabs(sum) / 2;
    }
    int control = 0;
    CVxDPoint sampled[kMaxChords];
    for (int i = 0; i < n; ++i) {
        CVxDPoint prev = points[static_cast<size_t>(i)];
        const int count = SampleEdge(sampled, i, control, false, kChordsForMeasure);
        for (int k = 0; k < count; ++k) {
            const CVxDPoint& q = sampled[k];
            sum += prev.x * q.y - q.x * prev.y;
            prev = q;
        }
    }
    if (outNegative)
        *outNegative = sum < 0;
    return std::fabs(sum) / 2;
}

CVxDPoint CVxDPolygon::GetCentroid() const
{
    bool negative = false;
    double area = GetArea(&negative);
    const int n = GetVertexCount();
    if (n < 3 || !(area >= EPS))
        return CVxDPoint();
    if (negative)
        area = -area;
    double sx = 0;
    double sy = 0;
    for (int i = 0; i < n; ++i) {
        const CVxDPoint& a = points[static_cast<size_t>(i)];
        const CVxDPoint& b = points[static_cast<size_t>((i + 1) % n)];
        const double cross = a.x * b.y - b.x * a.y;
        sx += (a.x + b.x) * cross;
        sy += (a.y + b.y) * cross;
    }
    return CVxDPoint(sx / (6 * area), sy / (6 * area));
}

double CVxDPolygon::GetSegmentLength(int edge) const
{
    const int n = GetVertexCount();
    if (edge < 0 || edge >= n)
        return 0;
    CVxDPoint prev = points[static_cast<size_t>(edge)];
    int control = GetBezierSegmentIdx(edge, false);
    CVxDPoint sampled[kMaxChords];
    const int count = SampleEdge(sampled, edge, control, false, kChordsForMeasure);
    double length = 0;
    for (int k = 0; k < count; ++k) {
        length += prev.Distance(sampled[k]);
        prev = sampled[k];
    }
    return length;
}

CVxDRect CVxDPolygon::GetBoundingRect() const
{
    const int n = GetVertexCount();
    if (n == 0)
        return CVxDRect();
    CVxDRect bounds(points[0].x, points[0].y, points[0].x, points[0].y);
    double left = bounds.left;
    double top = bounds.top;
    double right = bounds.right;
    double bottom = bounds.bottom;
    for (const CVxDPoint& p : points) {
        left = std::min(left, p.x);
        top = std::min(top, p.y);
        right = std::max(right, p.x);
        bottom = std::max(bottom, p.y);
    }
    bounds.left = left;
    bounds.top = top;
    bounds.right = right;
    bounds.bottom = bottom;
    if (HasCurveFlags(false)) {
        int control = 0;
        for (int i = 0; i < n; ++i) {
            if (!IsEdgeCurved(i, false))
                continue;
            CVxDPoint p1, p2, c0, c1;
            GetBezControlPoints(p1, p2, c0, c1, control, i, n, false);
            for (int k = 1; k <= 3; ++k)
                bounds.UnionRect(CurvePoint(p1, c0, c1, p2, ChordParam(k, 4)));
        }
    }
    return bounds;
}

double CVxDPolygon::GetPerimeter(bool open, double scaleX, double scaleY) const
{
    const int edges = GetEdgeCount(open);
    if (GetVertexCount() < 2)
        return 0;
    const bool scaled = scaleX != 1.0 || scaleY != 1.0;
    auto scale = [&](CVxDPoint p) {
        if (scaled)
            p.Scale(scaleX, scaleY);
        return p;
    };
    double length = 0;
    int control = 0;
    CVxDPoint sampled[kMaxChords];
    for (int i = 0; i < edges; ++i) {
        CVxDPoint prev = scale(points[static_cast<size_t>(i)]);
        const int count = SampleEdge(sampled, i, control, open, kChordsForMeasure);
        for (int k = 0; k < count; ++k) {
            const CVxDPoint s = scale(sampled[k]);
            length += prev.Distance(s);
            prev = s;
        }
    }
    return length;
}

void CVxDPolygon::Rotate(double angle, bool aroundCentre)
{
    const CVxDPoint centre = aroundCentre ? GetBoundingRect().CenterPoint() : CVxDPoint();
    auto turn = [&](CVxDPoint& p) {
        CVxDPoint d = p - centre;
        d.Rotate(angle);
        p = d + centre;
    };
    std::for_each(points.begin(), points.end(), turn);
    std::for_each(bezierControls.begin(), bezierControls.end(), turn);
}

void CVxDPolygon::Mirror(bool horizontally, bool aroundCentre)
{
    const CVxDRect bounds = GetBoundingRect();
    if (bounds.IsRectEmpty() || GetVertexCount() < 3)
        return;
    auto flip = [&](CVxDPoint& p) {
        if (horizontally)
            p.x = aroundCentre ? bounds.right + bounds.left - p.x : -p.x;
        else
            p.y = aroundCentre ? bounds.bottom + bounds.top - p.y : -p.y;
    };
    std::for_each(points.begin(), points.end(), flip);
    std::for_each(bezierControls.begin(), bezierControls.end(), flip);
}

bool CVxDPolygon::PtInPolygon(const CVxDPoint& point) const
{
    if (GetVertexCount() < 3)
        return false;
    return PtInPolygonBounded(point, GetBoundingRect());
}

bool CVxDPolygon::PtInPolygonBounded(const CVxDPoint& point, const CVxDRect& bounds) const
{
    const int n = GetVertexCount();
    if (n < 3)
        return false;
    if (!bounds.PtInRect(point))
        return false;
    const CVxDPoint far(bounds.right + 50, point.y);
    int crossings = 0;
    if (NoCurvedEdge(bezierFlags)) {
        // Straight edges, each tested only when near enough the ray to be
        // hit within the tolerances: the edge must reach the ray's y, and
        // its right end must not lie left of the point.
        const double magnitude = std::max(std::max(std::fabs(bounds.left), std::fabs(bounds.right)),
                                          std::max(std::fabs(bounds.top), std::fabs(bounds.bottom)));
        const double slack = RoundingSlack(magnitude);
        // No edge is longer along an axis than the bounds.
        const double low = point.y + EPS * (bounds.bottom - bounds.top) + slack;
        const double high = point.y - EPS * (bounds.bottom - bounds.top) - slack;
        const double left = point.x - EPS * (far.x - point.x + bounds.right - bounds.left) - slack;
        for (int i = 0; i < n; ++i) {
            const CVxDPoint& prev = points[static_cast<size_t>(i)];
            const CVxDPoint& q = points[static_cast<size_t>(i + 1 < n ? i + 1 : 0)];
            if (low < std::min(prev.y, q.y) || high > std::max(prev.y, q.y) || std::max(prev.x, q.x) < left)
                continue;
            if (RayCrossesEdge(point, far, prev, q))
                ++crossings;
        }
        return (crossings % 2) == 1;
    }
    int control = 0;
    CVxDPoint sampled[kMaxChords];
    for (int i = 0; i < n; ++i) {
        CVxDPoint prev = points[static_cast<size_t>(i)];
        const int count = SampleEdge(sampled, i, control, false, kChordsForInside);
        for (int k = 0; k < count; ++k) {
            const CVxDPoint& q = sampled[k];
            if (RayCrossesEdge(point, far, prev, q))
                ++crossings;
            prev = q;
        }
    }
    return (crossings % 2) == 1;
}

bool CVxDPolygon::PtInPolygonIncludeVert(const CVxDPoint& point) const
{
    return PtIsPolygonVert(point) || PtInPolygon(point);
}

bool CVxDPolygon::PtOnPolygonLine(const CVxDPoint& point, double maxDist, int* outEdge, bool open) const
{
    const int n = GetVertexCount();
    if (outEdge)
        *outEdge = -1;
    if (n == 0)
        return false;
    if (n == 1) {
        if (points[0].Distance(point) < maxDist) {
            if (outEdge)
                *outEdge = 0;
            return true;
        }
        return false;
    }

    if (NoCurvedEdge(bezierFlags)) {
        double magnitude = 0;
        for (const CVxDPoint& p : points)
            magnitude = std::max(magnitude, std::max(std::fabs(p.x), std::fabs(p.y)));
        return PtOnStraightLines(point, maxDist, outEdge, open, magnitude);
    }

    const int edges = GetEdgeCount(open);
    int best = -1;
    double bestDist = 0;
    int control = 0;
    for (int i = 0; i < edges; ++i) {
        const CVxDPoint& p1 = points[static_cast<size_t>(i)];
        double dist = 0;
        double t = 0;
        if (IsEdgeCurved(i, open)) {
            CVxDPoint a, b, c0, c1;
            GetBezControlPoints(a, b, c0, c1, control, i, n, open);
            // Five chords from the first vertex, which stop short of the
            // far one.
            CVxDPoint prev = p1;
            bool first = true;
            for (int k = 1; k < kChordsForNearLine; ++k) {
                const CVxDPoint q = CurvePoint(a, c0, c1, b, ChordParam(k, kChordsForNearLine));
                double chordT = -1;
                const double d = DblGetDistFromLine(prev, q, point, &chordT);
                if (first || d < dist) {
                    dist = d;
                    t = chordT;
                    first = false;
                }
                prev = q;
            }
        } else {
            t = -1;
            dist = DblGetDistFromLine(p1, points[static_cast<size_t>((i + 1) % n)], point, &t);
        }
        if (t > 0 && t < 1 && dist <= maxDist && (best < 0 || dist < bestDist)) {
            best = i;
            bestDist = dist;
        }
    }
    if (outEdge)
        *outEdge = best;
    return best >= 0;
}

bool CVxDPolygon::PtOnPolygonLineBounded(const CVxDPoint& point, double maxDist, const CVxDRect& bounds) const
{
    if (GetVertexCount() < 2 || !NoCurvedEdge(bezierFlags))
        return PtOnPolygonLine(point, maxDist);
    const double magnitude = std::max(std::max(std::fabs(bounds.left), std::fabs(bounds.right)),
                                      std::max(std::fabs(bounds.top), std::fabs(bounds.bottom)));
    return PtOnStraightLines(point, maxDist, nullptr, false, magnitude);
}

bool CVxDPolygon::PtOnStraightLines(const CVxDPoint& point, double maxDist, int* outEdge, bool open,
                                    double magnitude) const
{
    // Abreast of an edge, a point further than maxDist from the edge's box
    // is further than that from the edge.
    const int n = GetVertexCount();
    const int edges = GetEdgeCount(open);
    const double reach =
        maxDist + RoundingSlack(2 * std::max(magnitude, std::fabs(point.x) + std::fabs(point.y)));
    int best = -1;
    double bestDist = 0;
    for (int i = 0; i < edges; ++i) {
        const CVxDPoint& p1 = points[static_cast<size_t>(i)];
        const CVxDPoint& p2 = points[static_cast<size_t>(i + 1 < n ? i + 1 : 0)];
        if (point.x < std::min(p1.x, p2.x) - reach || point.x > std::max(p1.x, p2.x) + reach ||
            point.y < std::min(p1.y, p2.y) - reach || point.y > std::max(p1.y, p2.y) + reach)
            continue;
        double t = -1;
        const double dist = DblGetDistFromLine(p1, p2, point, &t);
        if (t > 0 && t < 1 && dist <= maxDist && (best < 0 || dist < bestDist)) {
            best = i;
            bestDist = dist;
        }
    }
    if (outEdge)
        *outEdge = best;
    return best >= 0;
}

CVxDPolygon::EPlace CVxDPolygon::PlacePoint(const CVxDPoint& point, double maxDist,
                                            const CVxDRect& bounds) const
{
    const int n = GetVertexCount();
    if (n < 3 || !NoCurvedEdge(bezierFlags)) {
        if (PtOnPolygonLine(point, maxDist) || PtIsPolygonVert(point))
            return PLACE_ON;
        return PtInPolygonBounded(point, bounds) ? PLACE_INSIDE : PLACE_OUTSIDE;
    }
    // The tests of PtOnStraightLines, PtIsPolygonVert and PtInPolygonBounded
    // in one pass over the edges, each edge with the same filters as there.
    const double magnitude = std::max(std::max(std::fabs(bounds.left), std::fabs(bounds.right)),
                                      std::max(std::fabs(bounds.top), std::fabs(bounds.bottom)));
    vx_polygon::CVxPlaceProbe probe(point, maxDist, bounds, magnitude);
    for (int i = 0; i < n; ++i)
        probe.Edge(points[static_cast<size_t>(i)], points[static_cast<size_t>(i + 1 < n ? i + 1 : 0)]);
    if (probe.On())
        return PLACE_ON;
    return (probe.Crossings() % 2) == 1 ? PLACE_INSIDE : PLACE_OUTSIDE;
}

CVxDPoint CVxDPolygon::GetPointOnLine(int edge, double t, bool open) const
{
    const int n = GetVertexCount();
    if (n == 0)
        return CVxDPoint();
    if (edge < 0 || edge >= GetEdgeCount(open))
        return points[0];
    const CVxDPoint& p1 = points[static_cast<size_t>(edge)];
    const CVxDPoint& p2 = points[static_cast<size_t>((edge + 1) % n)];
    if (IsEdgeCurved(edge, open)) {
        CVxDPoint a, b, c0, c1;
        int control = GetBezierSegmentIdx(edge, open);
        GetBezControlPoints(a, b, c0, c1, control, edge, n, open);
        return CurvePoint(a, c0, c1, b, t);
    }
    return p2 * t + p1 * (1 - t);
}

void CVxDPolygon::PushBackBezierSegment(const CVxDPolygon& source, int edge)
{
    if (source.points.empty() || source.bezierFlags.size() != source.points.size() || edge < 0 ||
        static_cast<size_t>(edge) >= source.bezierFlags.size())
        return;
    const bool curved = source.bezierFlags[static_cast<size_t>(edge)];
    bezierFlags.push_back(curved);
    if (!curved)
        return;
    const size_t control = static_cast<size_t>(source.GetBezierSegmentIdx(edge, false));
    if (control + 1 < source.bezierControls.size()) {
        bezierControls.push_back(source.bezierControls[control]);
        bezierControls.push_back(source.bezierControls[control + 1]);
    }
}

bool CVxDPolygon::WouldRemoveDuplicates() const
{
    const size_t n = points.size();
    // Rebuilding leaves out control points and flags or wall indices of the
    // wrong length.
    if (!bezierControls.empty() || (bezierFlags.size() != n && !bezierFlags.empty()) ||
        (edgeWalls.size() != n && !edgeWalls.empty()))
        return true;
    for (size_t i = 0; i < n; ++i)
        if (points[i] == points[i + 1 < n ? i + 1 : 0])
            return true;
    return false;
}

void CVxDPolygon::RemoveDuplicates()
{
    const size_t n = points.size();
    if (!WouldRemoveDuplicates())
        return;
    const bool flags = bezierFlags.size() == n;
    const bool walls = edgeWalls.size() == n;
    CVxDPolygon result;
    result.kind = kind;
    result.tag = tag;
    size_t control = 0;
    for (size_t i = 0; i < n; ++i) {
        const bool curved = flags && bezierFlags[i];
        const bool keep = points[i] != points[(i + 1) % n];
        if (keep) {
            result.points.push_back(points[i]);
            if (flags)
                result.bezierFlags.push_back(curved);
            if (walls)
                result.edgeWalls.push_back(edgeWalls[i]);
            if (curved && control + 1 < bezierControls.size()) {
                result.bezierControls.push_back(bezierControls[control]);
                result.bezierControls.push_back(bezierControls[control + 1]);
            }
        }
        if (curved)
            control += 2;
    }
    *this = std::move(result);
}

bool vx_sort_poly_x(const CVxDPolygon& a, const CVxDPolygon& b)
{
    // Outlines without vertices go first; they are skipped when subtracted.
    if (a.points.empty() || b.points.empty())
        return a.points.empty() && !b.points.empty();
    const CVxDPoint& pa = a.points.front();
    const CVxDPoint& pb = b.points.front();
    if (std::fabs(pa.x - pb.x) < EPS)
        return pa.y < pb.y;
    return pa.x < pb.x;
}
