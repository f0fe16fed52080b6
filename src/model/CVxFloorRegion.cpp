#include "CVxFloorRegion.h"

#include "CVxDC.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "CVxPlanGraph.h"
#include "CVxRoomWalls.h"
#include "CVxWall.h"
#include "VxGMDraw.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr unsigned kWhite = 0xffffff;

// A plan coordinate in pixels, half away from zero, kept within the range
// that the drawing surface can take.
int ToPixel(double value, double zoom, int offset)
{
    const double pixel = std::round(value * zoom + offset);
    if (!(pixel > -1e9))
        return std::isnan(pixel) ? 0 : -1000000000;
    if (!(pixel < 1e9))
        return 1000000000;
    return static_cast<int>(pixel);
}

// Whether a boundary edge runs against the canonical direction of walls:
// from right to left, or upwards on a vertical.
bool RunsBackwards(const CVxPlanVertex* from, const CVxPlanVertex* to)
{
    return from->x > to->x || (from->x == to->x && from->y > to->y);
}

// The face of a wall on side A or B, untrimmed.
void FaceLine(const CVxWall& wall, bool sideB, CVxDPoint& p0, CVxDPoint& p1)
{
    p0 = sideB ? wall.cornerB0 : wall.cornerA0;
    p1 = sideB ? wall.cornerB1 : wall.cornerA1;
}

// The corner of a face where the walk reaches it in the middle of the wall:
// the graph split the wall there (a T-joint or a crossing), and the wall's
// trimmed outline knows nothing of it. The corner is where the face meets
// the face of the previous edge; without one, the vertex moved onto the face.
CVxDPoint MidWallCorner(const CVxDPoint& vertex, const CVxWall& wall, bool sideB, const CVxWall* previous,
                        bool previousSideB)
{
    CVxDPoint p0, p1;
    FaceLine(wall, sideB, p0, p1);
    if (previous && !previous->IsCurved()) {
        CVxDPoint q0, q1;
        FaceLine(*previous, previousSideB, q0, q1);
        double t = 0, u = 0;
        if (DblFindInter(p0, p1, q0, q1, t, u) && std::isfinite(t))
            return p0 + (p1 - p0) * t;
    }
    const CVxDPoint direction = p1 - p0;
    const double length2 = direction.LengthSquared();
    if (!(length2 > 0))
        return p0;
    return p0 + direction * ((vertex - p0).DotProduct(direction) / length2);
}

void RoundCoordinates(CVxDPolygon& polygon)
{
    for (CVxDPoint& point : polygon.points) {
        DblRound2(point.x);
        DblRound2(point.y);
    }
    for (CVxDPoint& point : polygon.bezierControls) {
        DblRound2(point.x);
        DblRound2(point.y);
    }
}

} // namespace

CVxFloorRegion::CVxFloorRegion() : floorAppearance(kWhite), ceilingAppearance(kWhite), wallAppearance(kWhite)
{
}

CVxFloorRegion::CVxFloorRegion(const CVxFloorRegion& other)
{
    CopyFrom(other);
}

CVxFloorRegion& CVxFloorRegion::operator=(const CVxFloorRegion& other)
{
    if (this != &other)
        CopyFrom(other);
    return *this;
}

void CVxFloorRegion::CopyFrom(const CVxFloorRegion& other)
{
    vertices = other.vertices;
    walls = other.walls;
    segmentIds = other.segmentIds;
    name = other.name;
    floorAppearance = other.floorAppearance;
    ceilingAppearance = other.ceilingAppearance;
    wallAppearance = other.wallAppearance;
    roomTag = other.roomTag;
    baseMolding = other.baseMolding;
    crownMolding = other.crownMolding;
    innerPolygon = other.innerPolygon;
    polygonsWithoutHoles = other.polygonsWithoutHoles;
    outerPolygon = other.outerPolygon;
    isOuter = other.isOuter;
}

void CVxFloorRegion::ClearBoundary()
{
    vertices.clear();
    walls.clear();
    segmentIds.clear();
    innerPolygon.Zero();
    polygonsWithoutHoles.clear();
    outerPolygon.Zero();
}

bool CVxFloorRegion::ContainsEdge(const CVxDPoint& a, const CVxDPoint& b) const
{
    const size_t n = vertices.size();
    for (size_t k = 0; k < n; ++k) {
        const CVxPlanVertex* from = vertices[k];
        const CVxPlanVertex* to = vertices[(k + 1) % n];
        if (from->x == a.x && from->y == a.y && to->x == b.x && to->y == b.y)
            return true;
    }
    return false;
}

bool CVxFloorRegion::ContainsEdge(int wall) const
{
    return std::find(walls.begin(), walls.end(), wall) != walls.end();
}

bool CVxFloorRegion::operator==(const CVxFloorRegion& other) const
{
    if (vertices.size() != other.vertices.size())
        return false;
    for (size_t k = 0; k < vertices.size(); ++k)
        if (vertices[k]->Point() != other.vertices[k]->Point())
            return false;
    return true;
}

CVxPlanVertex* CVxFloorRegion::SafeGetVertex(int i) const
{
    return i >= 0 && i < static_cast<int>(vertices.size()) ? vertices[static_cast<size_t>(i)] : nullptr;
}

const VxPOINT* CVxFloorRegion::GetPolygon(int& outCount, int offsetX, int offsetY, double zoom, int type,
                                          const std::vector<bool>** outFlags, const VxPOINT** outControls,
                                          int* outControlCount, int listIndex)
{
    const CVxDPolygon* polygon = nullptr;
    if (type == POLY_OUTER)
        polygon = &outerPolygon;
    else if (type == POLY_INNER)
        polygon = &innerPolygon;
    else if (listIndex >= 0 && listIndex < static_cast<int>(polygonsWithoutHoles.size()))
        polygon = &polygonsWithoutHoles[static_cast<size_t>(listIndex)];

    if (polygon) {
        m_cachePoints.resize(polygon->points.size());
        for (size_t k = 0; k < polygon->points.size(); ++k)
            m_cachePoints[k] = {ToPixel(polygon->points[k].x, zoom, offsetX),
                                ToPixel(polygon->points[k].y, zoom, offsetY)};
        m_cacheControls.resize(polygon->bezierControls.size());
        for (size_t k = 0; k < polygon->bezierControls.size(); ++k)
            m_cacheControls[k] = {ToPixel(polygon->bezierControls[k].x, zoom, offsetX),
                                  ToPixel(polygon->bezierControls[k].y, zoom, offsetY)};
        m_cacheFlags = polygon->bezierFlags;
    }
    outCount = static_cast<int>(m_cachePoints.size());
    if (outFlags)
        *outFlags = &m_cacheFlags;
    if (outControls)
        *outControls = m_cacheControls.empty() ? nullptr : m_cacheControls.data();
    if (outControlCount)
        *outControlCount = static_cast<int>(m_cacheControls.size());
    return m_cachePoints.empty() ? nullptr : m_cachePoints.data();
}

const CVxAppearance& CVxFloorRegion::GetSurfaceAppearance(int surface) const
{
    switch (surface) {
    case SURF_CEILING:
        return ceilingAppearance;
    case SURF_WALL:
    case SURF_OUTER_WALL:
        return wallAppearance;
    default:
        return floorAppearance;
    }
}

CVxAppearance& CVxFloorRegion::GetSurfaceAppearance(int surface)
{
    return const_cast<CVxAppearance&>(
        static_cast<const CVxFloorRegion*>(this)->GetSurfaceAppearance(surface));
}

CVxDRect CVxFloorRegion::GetBoundingRect() const
{
    if (vertices.empty())
        return CVxDRect();
    CVxDRect rect(vertices[0]->x, vertices[0]->y, vertices[0]->x, vertices[0]->y);
    for (const CVxPlanVertex* vertex : vertices)
        rect.UnionRect(vertex->Point());
    return rect;
}

CVxDRect CVxFloorRegion::GetInnerBoundingRect() const
{
    return innerPolygon.GetBoundingRect();
}

bool CVxFloorRegion::PtInRegion(const CVxDPoint& point) const
{
    return innerPolygon.PtInPolygon(point);
}

CVxDPoint CVxFloorRegion::GetInnerNoHolesCentroid(CVxDRect* outRect) const
{
    const CVxDPolygon& polygon = polygonsWithoutHoles.size() == 1 ? polygonsWithoutHoles[0] : innerPolygon;
    if (outRect)
        *outRect = polygon.GetBoundingRect();
    return polygon.GetCentroid();
}

void CVxFloorRegion::LoadFromItem(const CVxFloorPlanDef::CFloorPlanItem& item)
{
    name = item.name;
    floorAppearance = item.floorAppearance;
    ceilingAppearance = item.ceilingAppearance;
    wallAppearance = item.wallAppearance;
    roomTag = item.roomTag;
    baseMolding = item.baseMolding;
    crownMolding = item.crownMolding;
}

bool CVxFloorRegion::LoadIfMatches(const CVxFloorPlanDef::CFloorPlanItem& item)
{
    if (item.isOuter != isOuter || !ContainsEdge(item.edgeFrom, item.edgeTo))
        return false;
    LoadFromItem(item);
    return true;
}

bool CVxFloorRegion::SaveToItem(CVxFloorPlanDef::CFloorPlanItem& item) const
{
    if (vertices.size() < 2)
        return false;
    item.edgeFrom = vertices[0]->Point();
    item.edgeTo = vertices[1]->Point();
    item.isOuter = isOuter;
    item.name = name;
    item.floorAppearance = floorAppearance;
    item.ceilingAppearance = ceilingAppearance;
    item.wallAppearance = wallAppearance;
    item.roomTag = roomTag;
    item.baseMolding = baseMolding;
    item.crownMolding = crownMolding;
    return true;
}

double CVxFloorRegion::GetAreaWithoutHoles() const
{
    double area = 0;
    for (const CVxDPolygon& polygon : polygonsWithoutHoles)
        area += polygon.GetArea();
    return area;
}

void CVxFloorRegion::DrawToHdc(CVxDC* dc, int offsetX, int offsetY, double zoom, int flags)
{
    if (!dc || polygonsWithoutHoles.empty())
        return;
    CVxPicBuf* picture = nullptr;
    bool release = false;
    if (floorAppearance.kind == 1 && (flags & drawTextures) && !isOuter && dc->IsHighQuality() &&
        floorAppearance.tileSizeX > 0) {
        picture = CVxAppearance::GetTilePicture(&floorAppearance, release, false);
        if (picture && picture->GetWidth() <= 0) {
            if (release)
                CVxPictureLoadCache::ReleasePicture(picture);
            picture = nullptr;
        }
    }
    if (picture) {
        // One picture holds one repeat of the pattern; the brush scales it to
        // the tile size at this zoom.
        const double scale =
            zoom * floorAppearance.tileSizeX * floorAppearance.GetTilesPerPicture() / picture->GetWidth();
        dc->SelectTextureBrush(scale, -floorAppearance.rotation, offsetX, offsetY, picture);
    } else {
        const unsigned colour = (flags & drawMonochrome) ? kWhite : floorAppearance.GetColor();
        dc->SelectBrush(CVxDC::brushSolid, colour);
    }
    dc->SelectPen(CVxDC::penNull, 1, 0);
    for (size_t k = 0; k < polygonsWithoutHoles.size(); ++k) {
        int count = 0;
        const std::vector<bool>* curved = nullptr;
        const VxPOINT* controls = nullptr;
        int controlCount = 0;
        const VxPOINT* points = GetPolygon(count, offsetX, offsetY, zoom, POLY_WITHOUT_HOLES, &curved,
                                           &controls, &controlCount, static_cast<int>(k));
        if (points && count > 0)
            GMDrawBezierPolygon(*dc, points, count, *curved, controls, controlCount);
    }
    dc->SelectOldPen();
    dc->SelectOldBrush();
    if (picture && release)
        CVxPictureLoadCache::ReleasePicture(picture);
}

void CVxFloorRegion::CalculateWithoutHoles(const std::vector<CVxDPolygon>& holes)
{
    if (polygonsWithoutHoles.empty())
        return;
    std::vector<CVxDPolygon> list{polygonsWithoutHoles[0]};
    CalculateWithoutHoles(list, holes);
    polygonsWithoutHoles = list;
}

void CVxFloorRegion::CalculateWithoutHoles(std::vector<CVxDPolygon>& list,
                                           const std::vector<CVxDPolygon>& holes)
{
    if (list.empty() || list[0].kind != CVxDPolygon::KIND_ROOM)
        return;
    list.resize(1);
    for (const CVxDPolygon& hole : holes)
        if (hole.kind == CVxDPolygon::KIND_HOLE && hole.GetVertexCount() > 0)
            CVxDPolygon::RemoveHole(list, hole);
    for (CVxDPolygon& polygon : list)
        RoundCoordinates(polygon);
}

void CVxFloorRegion::CalcInnerPoly(CVxDPolygon& main, CVxDPolygon& detailed,
                                   const CVxRoomWalls& roomWalls) const
{
    main.Zero();
    detailed.Zero();
    const size_t n = std::min(vertices.size(), walls.size());
    if (n == 0)
        return;

    // A room lies on one side of its walk, an outer region on the other: the
    // same edge takes the opposite face.
    std::vector<bool> reversed(n);
    for (size_t i = 0; i < n; ++i)
        reversed[i] = RunsBackwards(vertices[i], vertices[(i + 1) % n]) != isOuter;

    bool anyCurved = false;
    for (size_t i = 0; i < n; ++i) {
        const CVxWall* wall = roomWalls.SafeGetWall(walls[i]);
        anyCurved = anyCurved || (wall && wall->IsCurved());
    }

    const int first = isOuter ? CVxWall::OUT_A_END : CVxWall::OUT_A_START;
    const int firstRev = isOuter ? CVxWall::OUT_B_START : CVxWall::OUT_B_END;
    const int second = isOuter ? CVxWall::OUT_A_START : CVxWall::OUT_A_END;
    const int secondRev = isOuter ? CVxWall::OUT_B_END : CVxWall::OUT_B_START;

    for (size_t i = 0; i < n; ++i) {
        const int index = walls[i];
        const int nextIndex = walls[(i + 1) % n];
        const CVxWall* wall = roomWalls.SafeGetWall(index);
        const CVxWall* next = roomWalls.SafeGetWall(nextIndex);
        if (!wall || !next)
            continue;
        if (!wall->IsCurved()) {
            const bool sameLine = std::fabs(wall->angle - next->angle) < EPS &&
                                  std::fabs(wall->thickness - next->thickness) < EPS && !wall->curved &&
                                  !next->curved;
            const bool sameWall = index == nextIndex;
            // The walk leaves the vertex along the wall from its start, or
            // against it from its end; a vertex in between is a split.
            const bool alongWall = reversed[i] == isOuter;
            const CVxPlanVertex* from = vertices[i];
            const CVxPlanVertex* to = vertices[(i + 1) % n];
            const size_t before = (i + n - 1) % n;
            const CVxWall* previous = roomWalls.SafeGetWall(walls[before]);
            const CVxDPoint corner =
                from->Point() == (alongWall ? wall->start : wall->end)
                    ? wall->outline[reversed[i] ? firstRev : first]
                    : MidWallCorner(from->Point(), *wall, reversed[i], previous, reversed[before]);
            const int edgeWall = wall->visible ? index : -1;
            main.points.push_back(corner);
            main.edgeWalls.push_back(edgeWall);
            if (anyCurved)
                main.bezierFlags.push_back(false);
            detailed.points.push_back(corner);
            detailed.edgeWalls.push_back(edgeWall);
            // Where the next wall continues in line (or the walk turns back at
            // a dangling end) the far corner of this face is a corner too.
            if (sameLine || sameWall) {
                detailed.points.push_back(
                    to->Point() == (alongWall ? wall->end : wall->start)
                        ? wall->outline[reversed[i] ? secondRev : second]
                        : MidWallCorner(to->Point(), *wall, reversed[i], nullptr, false));
                detailed.edgeWalls.push_back(-1);
            }
            continue;
        }
        // The walk runs against the wall when its edge is reversed before the
        // outer region's inversion.
        const bool againstWall = reversed[i] != isOuter;
        const size_t subCount = wall->subWalls.size();
        for (size_t step = 0; step < subCount; ++step) {
            const size_t k = againstWall ? subCount - 1 - step : step;
            const CVxWall& sub = wall->subWalls[k];
            const bool flipped = k < wall->subFlipped.size() && wall->subFlipped[k];
            const CVxDPoint& corner = sub.outline[(reversed[i] != flipped) ? firstRev : first];
            const int edgeWall = static_cast<int>((k << 16) | (static_cast<unsigned>(index) & 0xffff));
            if (step == 0) {
                CVxDPoint c0, c1;
                wall->GetBezierControlPoints(c0, c1);
                if (againstWall)
                    std::swap(c0, c1);
                main.points.push_back(corner);
                main.edgeWalls.push_back(edgeWall);
                main.bezierFlags.push_back(true);
                main.bezierControls.push_back(c0);
                main.bezierControls.push_back(c1);
            }
            detailed.points.push_back(corner);
            detailed.edgeWalls.push_back(edgeWall);
        }
    }
    main.kind = CVxDPolygon::KIND_ROOM;
    detailed.kind = CVxDPolygon::KIND_ROOM;
}

void CVxFloorRegion::TransformToSimplePolygon(CVxDPolygon& out, const CVxRoomWalls& roomWalls,
                                              double heightFilter, bool* outHeightDiffers) const
{
    out.Zero();
    std::vector<CVxPlanVertex*> boundary(vertices.begin(),
                                         vertices.begin() + std::min(vertices.size(), walls.size()));
    std::vector<int32_t> boundaryWalls(walls.begin(), walls.begin() + boundary.size());

    // A dangling wall is walked along both sides, out to its free end and
    // back to where it started; the built-up outline leaves the first such
    // wall out altogether. A straight wall that other walls meet on its far
    // side also gives two edges in a row, but the walk goes on along it.
    const size_t n = boundary.size();
    for (size_t k = 0; k < n; ++k) {
        if (boundaryWalls[k] != boundaryWalls[(k + 1) % n] || n < 3 || boundary[(k + 2) % n] != boundary[k])
            continue;
        const int32_t dangling = boundaryWalls[k];
        std::vector<CVxPlanVertex*> keptVertices;
        std::vector<int32_t> keptWalls;
        for (size_t m = 0; m < n; ++m) {
            if (boundaryWalls[m] == dangling)
                continue;
            keptVertices.push_back(boundary[m]);
            keptWalls.push_back(boundaryWalls[m]);
        }
        boundary.swap(keptVertices);
        boundaryWalls.swap(keptWalls);
        break;
    }

    const size_t count = boundary.size();
    for (size_t k = 0; k < count; ++k) {
        const int index = boundaryWalls[k];
        const CVxWall* wall = roomWalls.SafeGetWall(index);
        if (!wall)
            continue;
        if (heightFilter >= 0 && !(std::fabs(wall->startHeight - heightFilter) < EPS &&
                                   std::fabs(wall->endHeight - heightFilter) < EPS)) {
            if (outHeightDiffers)
                *outHeightDiffers = true;
            continue;
        }
        out.points.push_back(boundary[k]->Point());
        out.edgeWalls.push_back(wall->visible ? index : -1);
        if (!wall->IsCurved())
            continue;
        // The joints between the chords of the curve, in walking order; the
        // first joint is the vertex itself.
        const bool againstWall = RunsBackwards(boundary[k], boundary[(k + 1) % count]);
        const size_t subCount = wall->subWalls.size();
        for (size_t step = 1; step < subCount; ++step) {
            const size_t k2 = againstWall ? subCount - 1 - step : step;
            const CVxWall& sub = wall->subWalls[k2];
            const bool flipped = k2 < wall->subFlipped.size() && wall->subFlipped[k2];
            // The joint at which the walk enters this chord.
            const CVxDPoint& joint = (againstWall != flipped) ? sub.end : sub.start;
            out.points.push_back(joint);
            out.edgeWalls.push_back(
                wall->visible ? static_cast<int>((k2 << 16) | (static_cast<unsigned>(index) & 0xffff)) : -1);
        }
    }
    out.kind = CVxDPolygon::KIND_ROOM;
}

void CVxFloorRegion::CalculateInnerVertices(const CVxRoomWalls& roomWalls)
{
    innerPolygon.Zero();
    outerPolygon.Zero();
    polygonsWithoutHoles.clear();
    if (vertices.size() < 3)
        return;
    if (!isOuter) {
        CVxDPolygon local;
        CalcInnerPoly(innerPolygon, local, roomWalls);
        polygonsWithoutHoles.push_back(std::move(local));
        outerPolygon = innerPolygon;
        return;
    }
    CalcInnerPoly(innerPolygon, outerPolygon, roomWalls);
    CVxDPolygon builtUp;
    TransformToSimplePolygon(builtUp, roomWalls, -1, nullptr);
    builtUp.kind = CVxDPolygon::KIND_ROOM;
    polygonsWithoutHoles.push_back(std::move(builtUp));
}

void CVxFloorRegion::ReverseBoundary()
{
    if (vertices.size() < 2)
        return;
    // Edge k runs from vertex k to vertex k + 1; walked backwards from the
    // same start, the first edge is the old last one.
    std::reverse(vertices.begin() + 1, vertices.end());
    std::reverse(walls.begin(), walls.end());
    std::reverse(segmentIds.begin(), segmentIds.end());
}
