#include "CVxHoleInFloor.h"

#include "CVxProject.h"
#include "VxAngle.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"
#include "VxTrace.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>
#include <numbers>

namespace {
constexpr double kDegToRad = std::numbers::pi / 180.0;
// Points of the polygon that stands for an elliptic opening.
constexpr int kEllipsePoints = 128;
// What an opening read from a file may hold, so that its line, written back,
// stays well inside what the reader takes: a few megabytes at most.
constexpr size_t kMaxOutlinePoints = 20000;
constexpr double kMaxCoordinate = 1e11;

bool WithinReach(double value)
{
    return std::isfinite(value) && std::fabs(value) <= kMaxCoordinate;
}

// Turns the outline round, keeping each edge's curve and wall with it: edge j
// of the result is edge n-2-j of the original, walked backwards.
void ReverseOutline(CVxDPolygon& polygon)
{
    const int n = polygon.GetVertexCount();
    if (n < 2)
        return;
    auto source = [n](int j) { return static_cast<size_t>(((n - 2 - j) % n + n) % n); };
    std::reverse(polygon.points.begin(), polygon.points.end());
    if (polygon.edgeWalls.size() == static_cast<size_t>(n)) {
        const std::vector<int32_t> walls = polygon.edgeWalls;
        for (int j = 0; j < n; ++j)
            polygon.edgeWalls[static_cast<size_t>(j)] = walls[source(j)];
    }
    if (polygon.bezierFlags.size() != static_cast<size_t>(n))
        return;
    const std::vector<bool> flags = polygon.bezierFlags;
    const size_t curvedCount = static_cast<size_t>(std::count(flags.begin(), flags.end(), true));
    // Stored control points follow the curved edges in order; a short list
    // can't be matched to its edges once they are reordered, and the points
    // are then derived from the neighbours.
    std::vector<CVxDPoint> controls;
    if (polygon.bezierControls.size() == 2 * curvedCount) {
        std::vector<size_t> firstControl(static_cast<size_t>(n), 0);
        size_t next = 0;
        for (int e = 0; e < n; ++e) {
            firstControl[static_cast<size_t>(e)] = next;
            if (flags[static_cast<size_t>(e)])
                next += 2;
        }
        for (int j = 0; j < n; ++j) {
            const size_t e = source(j);
            if (!flags[e])
                continue;
            controls.push_back(polygon.bezierControls[firstControl[e] + 1]);
            controls.push_back(polygon.bezierControls[firstControl[e]]);
        }
    }
    polygon.bezierControls = controls;
    for (int j = 0; j < n; ++j)
        polygon.bezierFlags[static_cast<size_t>(j)] = flags[source(j)];
}
} // namespace

CVxHoleInFloor::CVxHoleInFloor() = default;

const wchar_t* CVxHoleInFloor::TypeName(int holeType)
{
    switch (holeType) {
    case TYPE_RECTANGLE:
        return L"Rectangle";
    case TYPE_ELLIPSE:
        return L"Ellipse";
    case TYPE_POLYGON:
        return L"Polygon";
    default:
        return L"";
    }
}

CVxStringW CVxHoleInFloor::SaveToString() const
{
    CVxStringW text = CVxStringW(TypeName(type)) + L"|";
    if (type == TYPE_POLYGON)
        return text + polygon.SaveToString();
    CVxStringW shape;
    shape.sprintf(L"%lf|%lf|%lf|%lf|%lf", x, y, width, height, rotation);
    return text + shape;
}

bool CVxHoleInFloor::LoadFromString(const CVxStringW& text)
{
    const int bar = text.Find(L'|');
    if (bar < 0)
        return false;
    const CVxStringW name = text.Left(bar);
    const CVxStringW rest = text.Mid(bar + 1);
    int newType = -1;
    for (int candidate : {TYPE_RECTANGLE, TYPE_ELLIPSE, TYPE_POLYGON})
        if (name == TypeName(candidate))
            newType = candidate;
    if (newType < 0)
        return false;
    if (newType == TYPE_POLYGON) {
        CVxDPolygon shape;
        if (!shape.LoadFromString(rest))
            return false;
        bool inReach = shape.points.size() <= kMaxOutlinePoints;
        for (const std::vector<CVxDPoint>* list : {&shape.points, &shape.bezierControls})
            for (const CVxDPoint& point : *list)
                inReach = inReach && WithinReach(point.x) && WithinReach(point.y);
        if (!inReach) {
            VxTrace("Floor opening of %zu points or beyond the plan's reach left out\n", shape.points.size());
            return false;
        }
        polygon = shape;
    } else {
        double values[5] = {0, 0, 0, 0, 0};
        if (swscanf(rest.c_str(), L"%lf|%lf|%lf|%lf|%lf", &values[0], &values[1], &values[2], &values[3],
                    &values[4]) != 5)
            return false;
        if (!std::all_of(std::begin(values), std::end(values), WithinReach)) {
            VxTrace("Floor opening beyond the plan's reach left out\n");
            return false;
        }
        x = values[0];
        y = values[1];
        width = values[2];
        height = values[3];
        rotation = values[4];
        polygon.Zero();
    }
    type = newType;
    InvalidateCache();
    return true;
}

bool CVxHoleInFloor::PtInHole(double px, double py, double zoom) const
{
    if (!(zoom != 0))
        return false;
    CVxDPoint p(px / zoom, py / zoom);
    if (type == TYPE_POLYGON)
        return polygon.PtInPolygonIncludeVert(p);
    p -= CVxDPoint(x, y);
    p.Rotate(-rotation);
    if (!(p.x >= 0 && p.x < width && p.y >= 0 && p.y < height))
        return false;
    if (type != TYPE_ELLIPSE)
        return true;
    const double u = (p.x - width / 2) / (width / 2);
    const double v = (p.y - height / 2) / (height / 2);
    return u * u + v * v <= 1;
}

void CVxHoleInFloor::Move(double dx, double dy, const CVxProject* project)
{
    if (type == TYPE_POLYGON) {
        polygon.Offset(dx, dy);
        return;
    }
    x += dx;
    y += dy;
    if (project)
        project->SubUnitCorrection(x, y, VX_DF_DECIMAL);
}

void CVxHoleInFloor::Scale(double sx, double sy, const CVxProject* project)
{
    if (type == TYPE_POLYGON) {
        polygon.Scale(sx, sy);
    } else {
        x *= sx;
        y *= sy;
        if (project)
            project->SubUnitCorrection(x, y, VX_DF_DECIMAL);
        width *= sx;
        height *= sy;
        DblRound2(width);
        DblRound2(height);
    }
    InvalidateCache();
}

void CVxHoleInFloor::Rotate(double degrees)
{
    if (type == TYPE_POLYGON) {
        polygon.Rotate(degrees, false);
    } else {
        rotation = VX_NormalizeAngle(rotation + degrees);
        CVxDPoint position(x, y);
        position.Rotate(degrees);
        x = position.x;
        y = position.y;
    }
    InvalidateCache();
}

void CVxHoleInFloor::Mirror(bool aroundX)
{
    if (type == TYPE_POLYGON) {
        polygon.Mirror(!aroundX, false);
    } else {
        // The opposite corner becomes the position.
        const double c = std::cos(rotation * kDegToRad);
        const double s = std::sin(rotation * kDegToRad);
        if (aroundX)
            y = -y - (c * height + s * width);
        else
            x = -x - (c * width - s * height);
    }
    InvalidateCache();
}

void CVxHoleInFloor::GetRect(CVxDPoint outCorners[4], double zoom) const
{
    if (type == TYPE_POLYGON) {
        const CVxDRect bounds = polygon.GetBoundingRect() * zoom;
        outCorners[0] = bounds.TopLeft();
        outCorners[1] = bounds.TopRight();
        outCorners[2] = bounds.BottomRight();
        outCorners[3] = bounds.BottomLeft();
        return;
    }
    const CVxDPoint p(x, y);
    CVxDPoint across(width, 0);
    CVxDPoint down(0, height);
    across.Rotate(rotation);
    down.Rotate(rotation);
    outCorners[0] = p * zoom;
    outCorners[1] = (p + across) * zoom;
    outCorners[2] = (p + across + down) * zoom;
    outCorners[3] = (p + down) * zoom;
}

const VxPOINT* CVxHoleInFloor::GetCachedRect(int offsetX, int offsetY, double zoom)
{
    if (zoom != cachedZoom) {
        GetRect(cachedCorners, zoom);
        cachedZoom = zoom;
    }
    for (int i = 0; i < 4; ++i) {
        cachedPixels[i].x = VX_RoundToPixel(cachedCorners[i].x + offsetX);
        cachedPixels[i].y = VX_RoundToPixel(cachedCorners[i].y + offsetY);
    }
    return cachedPixels;
}

void CVxHoleInFloor::GetHolePolygon(CVxDPolygon& out)
{
    out.Zero();
    if (type == TYPE_POLYGON) {
        bool negative = false;
        polygon.GetArea(&negative);
        if (!negative)
            ReverseOutline(polygon);
        out = polygon;
    } else {
        CVxDPoint corners[4];
        GetRect(corners, 1);
        if (type == TYPE_ELLIPSE) {
            const CVxDPoint grid[4] = {corners[0], corners[1], corners[3], corners[2]};
            out.points.resize(kEllipsePoints);
            for (int k = 0; k < kEllipsePoints; ++k) {
                const double a = 2 * std::numbers::pi * k / kEllipsePoints;
                DblGetPointInRect(out.points[static_cast<size_t>(k)], grid, std::cos(a) / 2 + 0.5,
                                  -std::sin(a) / 2 + 0.5);
            }
        } else {
            out.points.assign({corners[3], corners[2], corners[1], corners[0]});
        }
        // A rectangle of negative size from a damaged file would wind the
        // other way and be taken for a room.
        bool negative = false;
        if (out.GetArea(&negative) > 0 && !negative)
            ReverseOutline(out);
    }
    out.kind = CVxDPolygon::KIND_HOLE;
}
