// Reads a polygon's text as a project file holds it, then measures it and
// cuts it against a room and an opening, as the floor plan does.

#include "CVxDPolygon.h"
#include "CVxStringW.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {
// Outlines longer than this only make the quadratic subtraction slow; they
// teach the fuzzer nothing new.
constexpr size_t kMaxInput = 16384;

void Check(bool condition)
{
    if (!condition)
        abort();
}

// Every piece of a subtraction is bounded by the two working lists.
void CheckPieces(const std::vector<CVxDPolygon>& pieces, const CVxDPolygon& a, const CVxDPolygon& b)
{
    // Vertices, crossings (at most one per pair of edges) and midpoints.
    const size_t na = a.points.size();
    const size_t nb = b.points.size();
    const size_t bound = 2 * (na + nb + na * nb) + 8;
    for (const CVxDPolygon& piece : pieces) {
        Check(piece.points.size() <= bound);
        Check(piece.edgeWalls.empty() || piece.edgeWalls.size() == piece.points.size());
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > kMaxInput)
        return 0;
    // Each byte one character, so that any byte reaches the parser.
    std::wstring wide(data, data + size);
    CVxDPolygon polygon;
    if (!polygon.LoadFromString(CVxStringW(std::move(wide))))
        return 0;

    bool negative = false;
    (void)polygon.GetArea(&negative);
    const CVxDPoint centre = polygon.GetCentroid();
    const CVxDRect bounds = polygon.GetBoundingRect();
    (void)polygon.GetPerimeter(false, 2.0, 0.5);
    (void)polygon.GetPerimeter(true);
    (void)polygon.PtInPolygon(centre);
    (void)polygon.PtInPolygonIncludeVert(polygon.points.front());
    int edge = -1;
    (void)polygon.PtOnPolygonLine(bounds.CenterPoint(), 1.0, &edge, false);
    (void)polygon.PtOnPolygonLine(centre, 0.5, &edge, true);
    (void)polygon.GetPointOnLine(static_cast<int>(polygon.points.size()) / 2, 0.5, false);
    (void)polygon.GetSegmentLength(0);
    for (int i = 0; i < polygon.GetEdgeCount(); ++i)
        (void)polygon.IsEdgeOnWall(i);

    // The text written reads back to the same vertices and curve data.
    CVxDPolygon again;
    Check(again.LoadFromString(polygon.SaveToString()));
    Check(again.points.size() == polygon.points.size());
    Check(again.bezierFlags.size() == polygon.bezierFlags.size());
    Check(again.bezierControls.size() == polygon.bezierControls.size() / 2 * 2);

    CVxDPolygon clean = polygon;
    clean.RemoveDuplicates();

    // As an opening in a room, and as a room with an opening, in both
    // windings; the room is a rectangle round the middle of the outline.
    CVxDPolygon room;
    room.kind = CVxDPolygon::KIND_ROOM;
    room.points = {{-5, -5}, {5, -5}, {5, 5}, {-5, 5}};
    if (bounds.Width() > 0 && bounds.Height() > 0 && bounds.Width() < 1e12 && bounds.Height() < 1e12) {
        const CVxDPoint c = bounds.CenterPoint();
        const double w = bounds.Width() / 3;
        const double h = bounds.Height() / 3;
        room.points = {{c.x - w, c.y - h}, {c.x + w, c.y - h}, {c.x + w, c.y + h}, {c.x - w, c.y + h}};
    }
    CVxDPolygon opening = room;
    opening.kind = CVxDPolygon::KIND_HOLE;
    std::swap(opening.points[1], opening.points[3]);

    CheckPieces(CVxDPolygon::RemoveHoleNew(room, polygon), room, polygon);
    CheckPieces(CVxDPolygon::RemoveHoleNew(polygon, opening), polygon, opening);
    CheckPieces(CVxDPolygon::RemoveHoleNew(polygon, room), polygon, room);

    polygon.kind = CVxDPolygon::KIND_HOLE;
    std::vector<CVxDPolygon> pieces;
    (void)room.RemoveHole(std::vector<CVxDPolygon>{polygon, opening}, pieces);
    std::vector<CVxDPolygon> list{room};
    CVxDPolygon::RemoveHoles(list, {polygon, clean, opening});

    polygon.Rotate(33, true);
    polygon.Mirror(true, true);
    polygon.Scale(0.5, 2);
    return 0;
}
