#pragma once
// An outline of the plan: a room's floor, a floor opening, a polygon object
// or an annotation line. Edges may be cubic Bezier curves.

#include "CVxDPoint.h"
#include "CVxDRect.h"
#include "CVxStringA.h"
#include "CVxStringW.h"

#include <cstdint>
#include <vector>

class CVxDPolygon
{
public:
    // What an outline stands for when holes are subtracted.
    enum EKind : int32_t
    {
        KIND_NONE = 0,
        KIND_HOLE = 1, // a floor opening, taken out of rooms
        KIND_ROOM = 2  // a room's floor, from which openings are taken
    };

    // Clears the vertices, curve data and wall indices, and the kind.
    void Zero();
    int GetVertexCount() const { return static_cast<int>(points.size()); }
    // Vertex count when closed, one less when open.
    int GetEdgeCount(bool open = false) const
    {
        const int n = GetVertexCount();
        return open ? (n > 0 ? n - 1 : 0) : n;
    }

    // Moves or scales the vertices and the stored control points.
    void Offset(double dx, double dy);
    void Offset(const CVxDPoint& d) { Offset(d.x, d.y); }
    void Scale(double sx, double sy);
    void Scale(double s) { Scale(s, s); }

    // Whether the edge from vertex i to i+1 is curved, honouring the rule
    // that a flag vector of the wrong length means straight edges only.
    bool IsEdgeCurved(int edge, bool open = false) const
    {
        if (edge < 0 || edge >= GetEdgeCount(open) || !HasCurveFlags(open))
            return false;
        return bezierFlags[static_cast<size_t>(edge)];
    }
    // Index in bezierControls of the edge's stored control points: twice the
    // number of curved edges before it; 0 for a straight edge or for too few
    // flags.
    int GetBezierSegmentIdx(int edge, bool open = false) const;
    // The end vertices of an edge and its control points. Stored points are
    // taken while ioControlIndex lies within bezierControls (and the index
    // advances by two); beyond, they are derived from the neighbours.
    void GetBezControlPoints(CVxDPoint& outP1, CVxDPoint& outP2, CVxDPoint& outC0, CVxDPoint& outC1,
                             int& ioControlIndex, int edge, int vertexCount, bool open = false) const;

    // Whether any vertex equals the point within EPS.
    bool PtIsPolygonVert(const CVxDPoint& point) const;
    // The wall (low 16 bits) and sub-wall (high 16 bits) that an edge lies on,
    // or -1. outNoInfo tells whether the polygon carries no wall indices.
    int IsEdgeOnWall(int edge, bool* outNoInfo = nullptr) const;
    int IsEdgeOnWall(int edge, bool& outNoInfo) const { return IsEdgeOnWall(edge, &outNoInfo); }

    // The text of the polygon in project files:
    // "count|kind|x;y;flag;c0x;c0y;c1x;c1y|..." with trailing fields left out.
    CVxStringW SaveToString() const;
    // Appends what the text holds, so it must start from an empty polygon.
    // False for an empty text or when no vertex was read.
    bool LoadFromString(const CVxStringW& text);
    bool LoadFromString(const CVxStringA& text);
    // Writes the polygon to the log as one line of SVG (ToSvg).
    void Trace() const;
    CVxStringA ToSvg() const;

    // Area by the shoelace formula, curved edges as 16 chords; 0 for fewer
    // than three vertices. outNegative tells a negative signed sum: the
    // winding of a floor opening.
    double GetArea(bool* outNegative = nullptr) const;
    // Centroid of the straight outline; the zero point when there is no area.
    CVxDPoint GetCentroid() const;
    // Length of one edge of the closed outline; a curved edge as 16 chords.
    double GetSegmentLength(int edge) const;
    // Vertices and points at 1/4, 1/2 and 3/4 of curved edges; zero when empty.
    CVxDRect GetBoundingRect() const;
    // Sum of the edge lengths, each sampled point first scaled per axis, so
    // that the length is right after a non-uniform scale.
    double GetPerimeter(bool open = false, double scaleX = 1.0, double scaleY = 1.0) const;

    // Turns vertices and control points by degrees about the centre of the
    // bounding rectangle or about the origin.
    void Rotate(double angle, bool aroundCentre = false);
    // Mirrors x (horizontally) or y, about the centre of the bounding
    // rectangle or the origin. Nothing happens to a degenerate outline.
    void Mirror(bool horizontally, bool aroundCentre = false);

    // Ray-crossing test. A ray through a vertex where the outline crosses
    // the ray counts once, one that only touches a corner not at all; a
    // vertex itself may give either answer.
    bool PtInPolygon(const CVxDPoint& point) const;
    bool PtInPolygon(double px, double py) const { return PtInPolygon(CVxDPoint(px, py)); }
    // As PtInPolygon, for bounds that are GetBoundingRect(), when they are at
    // hand for many points.
    bool PtInPolygonBounded(const CVxDPoint& point, const CVxDRect& bounds) const;
    // As PtInPolygon, and true at every vertex.
    bool PtInPolygonIncludeVert(const CVxDPoint& point) const;
    bool PtInPolygonIncludeVert(double px, double py) const
    {
        return PtInPolygonIncludeVert(CVxDPoint(px, py));
    }
    // Whether the point lies within maxDist of an edge, abreast of it (not
    // beyond either end); the nearest edge goes to outEdge, or -1.
    bool PtOnPolygonLine(const CVxDPoint& point, double maxDist, int* outEdge = nullptr,
                         bool open = false) const;
    bool PtOnPolygonLine(const CVxDPoint& point, double maxDist, int& outEdge, bool open = false) const
    {
        return PtOnPolygonLine(point, maxDist, &outEdge, open);
    }
    // As PtOnPolygonLine of the closed outline, for bounds that are
    // GetBoundingRect(), when they are at hand for many points.
    bool PtOnPolygonLineBounded(const CVxDPoint& point, double maxDist, const CVxDRect& bounds) const;
    // Where a point lies against the closed outline, as PtOnPolygonLine and
    // PtIsPolygonVert (on it) and then PtInPolygon tell; bounds must be
    // GetBoundingRect().
    enum EPlace
    {
        PLACE_ON,
        PLACE_INSIDE,
        PLACE_OUTSIDE
    };
    EPlace PlacePoint(const CVxDPoint& point, double maxDist, const CVxDRect& bounds) const;
    // The point at t along an edge; the first vertex for an edge out of range.
    CVxDPoint GetPointOnLine(int edge, double t, bool open = false) const;

    // Appends the flag of a source edge and, if curved, its stored control
    // points; nothing when the source's flags are not in use.
    void PushBackBezierSegment(const CVxDPolygon& source, int edge);
    // Drops every vertex equal to its successor, with its edge's curve data
    // and wall index.
    void RemoveDuplicates();
    // Whether RemoveDuplicates would change the polygon in any way.
    bool WouldRemoveDuplicates() const;

    // Takes floor openings out of a room's floor: only a polygon of kind
    // KIND_ROOM is cut, only by holes of kind KIND_HOLE, in their order but
    // with openings wholly inside last (see RemoveHoles). out becomes the
    // polygon alone and then the pieces left. False, and out untouched, for a
    // polygon of another kind.
    bool RemoveHole(const std::vector<CVxDPolygon>& holes, std::vector<CVxDPolygon>& out) const;
    bool RemoveHole(const CVxDPolygon& hole, std::vector<CVxDPolygon>& out) const;
    // Subtracts the hole from every polygon of the list, whatever the kinds.
    static void RemoveHole(std::vector<CVxDPolygon>& list, const CVxDPolygon& hole);
    // Subtracts all holes in the order of vx_sort_poly_x, except that a hole
    // wholly inside a polygon waits until the others are out: the bridge that
    // joins it to the outline must not be crossed or touched by a later one.
    static void RemoveHoles(std::vector<CVxDPolygon>& list, const std::vector<CVxDPolygon>& holes);
    // Outline minus hole, the two in opposite winding: the outline itself when
    // the hole lies outside, one bridged polygon when it lies inside, nothing
    // when it covers the outline, otherwise the pieces left.
    static std::vector<CVxDPolygon> RemoveHoleNew(const CVxDPolygon& outer, const CVxDPolygon& hole);

    std::vector<CVxDPoint> points;
    // One per edge, true for a cubic Bezier edge; any other length means
    // straight edges only.
    std::vector<bool> bezierFlags;
    // Two per curved edge, in edge order; may run short.
    std::vector<CVxDPoint> bezierControls;
    int32_t kind = KIND_NONE;
    // One per edge when in use: wall index | sub-wall index << 16, -1 none.
    std::vector<int32_t> edgeWalls;
    int32_t tag = -1;

private:
    bool HasCurveFlags(bool open) const
    {
        const size_t n = points.size();
        return n > 0 && (bezierFlags.size() == n || (open && bezierFlags.size() == n - 1));
    }
    // The points of an edge after its first vertex: the far vertex for a
    // straight edge, the curve at t = i/chords (i = 1..chords) for a curved
    // one. out holds kMaxChords points; the count is returned.
    static constexpr int kMaxChords = 16;
    // PtOnPolygonLine for an outline without curved edges; magnitude is at
    // least the largest absolute coordinate of a vertex.
    bool PtOnStraightLines(const CVxDPoint& point, double maxDist, int* outEdge, bool open,
                           double magnitude) const;
    int SampleEdge(CVxDPoint* out, int edge, int& ioControlIndex, bool open, int chords) const;
};

// Order of holes: by the x of the first vertex, then within EPS by its y.
bool vx_sort_poly_x(const CVxDPolygon& a, const CVxDPolygon& b);
