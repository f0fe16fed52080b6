// Where a part's corners are, how the pointer hits it, and how it is resized,
// turned and mirrored; angle objects and tables keep their data here too.

#include "CVxFont.h"
#include "CVxHitDist.h"
#include "CVxPart.h"
#include "CVxProject.h"
#include "VxAngle.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"
#include "VxPartPlacement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace {
constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
// The plan's limit of coordinates, in units and in pixels.
constexpr double kCoordLimit = 16777215.0;
constexpr int32_t kPixelLimit = 0xFFFFFF;
// A member frame is always this wide.
constexpr double kMemberFrame = 1000.0;
// An empty bounding rectangle still has a size, so that it can be hit.
constexpr double kEmptyGrowth = 0.0001;

double RoundHalfAway(double value)
{
    return std::trunc(value + std::copysign(0.5, value));
}

// Pixels of anything a broken file may hold: NaN gives 0, the rest stays in
// the plan's pixel range.
int32_t ToPixel(double value)
{
    if (std::isnan(value))
        return 0;
    return static_cast<int32_t>(std::clamp(RoundHalfAway(value), -double(kPixelLimit), double(kPixelLimit)));
}

// A pixel length, truncated after adding a half, as sizes of repaint margins
// are.
int32_t ToPixelLength(double value)
{
    if (!(value > 0))
        return 0;
    return static_cast<int32_t>(std::min(value + 0.5, double(kPixelLimit)));
}

bool IsDoorSwingLib(int libId)
{
    return (libId >= 195 && libId <= 198) || libId == 200 || (libId >= 263 && libId <= 266) ||
           (libId >= 278 && libId <= 283);
}

void CorrectPosition(double& px, double& py)
{
    if (const CVxProject* project = VX_GetActiveProject())
        project->SubUnitCorrection(px, py, VX_DF_DECIMAL);
}

// The direction of a vector as a part's rotation: 0 along +x, growing
// towards +y.
double DirectionOf(const CVxDPoint& d)
{
    const double length = d.Length();
    if (std::fabs(d.x) < EPS || length < EPS)
        return VX_NormalizeAngle(d.y < 0 ? -90.0 : 90.0);
    const double a = std::acos(std::clamp(-d.y / length, -1.0, 1.0)) / kDegToRad;
    return VX_NormalizeAngle((d.x < 0 ? -a : a) - 90.0);
}
} // namespace

bool VxPartIsTilted(const CVxPart& part, double* tiltDegrees)
{
    const double t = part.rotation3D;
    if (!part.HasCap(capSkew) || !(std::fabs(t) >= EPS) || t == VX_DBL_DIFFER || t == VX_DBL_UNSET)
        return false;
    if (tiltDegrees)
        *tiltDegrees = t;
    return true;
}

double VxPartPlanDepth(const CVxPart& part)
{
    if (part.type == ptDoor)
        return part.width;
    double t = 0;
    if (VxPartIsTilted(part, &t)) {
        const double r = t * kDegToRad;
        return part.zHeight * std::fabs(std::sin(r)) + part.height * std::fabs(std::cos(r));
    }
    return part.height;
}

CVxDPoint VxPartTiltShift(const CVxPart& part)
{
    double t = 0;
    if (!VxPartIsTilted(part, &t) || !(t > 90 + EPS))
        return CVxDPoint();
    const double tr = t * kDegToRad;
    double e = 0;
    if (t <= 180)
        e = part.height * std::fabs(std::cos(tr));
    else if (t <= 270)
        e = VxPartPlanDepth(part);
    else
        e = part.zHeight * std::fabs(std::sin(tr));
    const double r = part.rotation * kDegToRad;
    return CVxDPoint(std::sin(r) * e, -std::cos(r) * e);
}

void CVxPart::GetRect(CVxDPoint corners[4], double scale, bool round) const
{
    const double r = rotation * kDegToRad;
    const double c = std::cos(r);
    const double s = std::sin(r);
    const double w = width;
    const double h = VxPartPlanDepth(*this);
    corners[0].Set(x, y);
    corners[1].Set(x + w * c, y + w * s);
    corners[2].Set(x + w * c - h * s, y + w * s + h * c);
    corners[3].Set(x - h * s, y + h * c);
    if (type == ptLine) {
        corners[1] = corners[0];
        corners[2] = corners[3];
    }
    const CVxDPoint shift = VxPartTiltShift(*this);
    for (int i = 0; i < 4; ++i) {
        corners[i] += shift;
        corners[i] *= scale;
        if (round)
            corners[i].Set(RoundHalfAway(corners[i].x), RoundHalfAway(corners[i].y));
    }
}

void CVxPart::GetBoundingRect(CVxDRect* out, double scale) const
{
    if (!out)
        return;
    CVxDPoint corners[4];
    GetRect(corners, scale, false);
    CVxDRect rect(kCoordLimit, kCoordLimit, -kCoordLimit, -kCoordLimit);
    for (const CVxDPoint& p : corners) {
        rect.left = std::min(rect.left, p.x);
        rect.top = std::min(rect.top, p.y);
        rect.right = std::max(rect.right, p.x);
        rect.bottom = std::max(rect.bottom, p.y);
    }
    if (rect.right - rect.left < EPS)
        rect.right += kEmptyGrowth;
    if (rect.bottom - rect.top < EPS)
        rect.bottom += kEmptyGrowth;
    *out = rect;
}

const VxPOINT* CVxPart::GetCachedRect(double originX, double originY, double zoom, CVxDPoint* out)
{
    if (zoom != cacheScale) {
        GetRect(cacheCorners, zoom, false);
        cacheScale = zoom;
    }
    // The integers are rebuilt from the cached doubles on every call, so that
    // scrolling never recomputes the trigonometry.
    for (int i = 0; i < 4; ++i) {
        cacheCornersInt[i].x = ToPixel(cacheCorners[i].x + originX);
        cacheCornersInt[i].y = ToPixel(cacheCorners[i].y + originY);
        if (out)
            out[i].Set(cacheCornersInt[i].x, cacheCornersInt[i].y);
    }
    return cacheCornersInt;
}

void CVxPart::GetCachedBoundingRect(VxRECT* out, int originX, int originY, double zoom)
{
    if (!out)
        return;
    const VxPOINT* corners = GetCachedRect(originX, originY, zoom, nullptr);
    VxRECT rect{kPixelLimit, kPixelLimit, -kPixelLimit, -kPixelLimit};
    for (int i = 0; i < 4; ++i) {
        rect.left = std::min(rect.left, corners[i].x);
        rect.top = std::min(rect.top, corners[i].y);
        rect.right = std::max(rect.right, corners[i].x);
        rect.bottom = std::max(rect.bottom, corners[i].y);
    }
    if (rect.right == rect.left)
        ++rect.right;
    if (rect.bottom == rect.top)
        ++rect.bottom;
    *out = rect;
}

void CVxPart::GetCachedDrawingRect(VxRECT* out, int originX, int originY, double zoom)
{
    if (!out)
        return;
    GetCachedBoundingRect(out, originX, originY, zoom);
    GrowToDrawingRect(out, zoom);
}

void CVxPart::GrowToDrawingRect(VxRECT* out, double zoom) const
{
    if (thickness > 0) {
        const int32_t grow = ToPixelLength(thickness * zoom);
        VxInflateRect(out, grow, grow);
    }
    // A door leaf swings beyond its frame: the repaint covers its reach.
    if (type == ptDoor || type == ptAngle || IsDoorSwingLib(libObjID)) {
        const int32_t least = ToPixelLength(2 * width * zoom);
        const int32_t cx = out->left + (out->right - out->left) / 2;
        const int32_t cy = out->top + (out->bottom - out->top) / 2;
        if (out->right - out->left < least) {
            out->left = cx - least / 2;
            out->right = out->left + least;
        }
        if (out->bottom - out->top < least) {
            out->top = cy - least / 2;
            out->bottom = out->top + least;
        }
    }
}

const CVxDRect& CVxPart::UnitScaleBox()
{
    // Everything the corners are made from; the tilt counts through the
    // type and library number that allow it.
    const double key[7] = {x, y, width, height, zHeight, rotation, rotation3D};
    if (std::memcmp(key, m_modelBox.key, sizeof(key)) != 0 || m_modelBox.type != type ||
        m_modelBox.libObjID != libObjID) {
        CVxDPoint corners[4];
        GetRect(corners, 1.0, false);
        CVxDRect box(corners[0].x, corners[0].y, corners[0].x, corners[0].y);
        for (const CVxDPoint& corner : corners)
            box.UnionRect(corner);
        std::memcpy(m_modelBox.key, key, sizeof(key));
        m_modelBox.type = type;
        m_modelBox.libObjID = libObjID;
        m_modelBox.box = box;
    }
    return m_modelBox.box;
}

void CVxPart::GetCullingRect(VxRECT* out, int originX, int originY, double zoom)
{
    if (!out)
        return;
    // Scaling the box at scale 1 gives the very numbers that the corners
    // at this zoom would give, so the rectangle is the drawing rectangle.
    const CVxDRect& box = UnitScaleBox();
    VxRECT rect{ToPixel(box.left * zoom + originX), ToPixel(box.top * zoom + originY),
                ToPixel(box.right * zoom + originX), ToPixel(box.bottom * zoom + originY)};
    if (rect.right == rect.left)
        ++rect.right;
    if (rect.bottom == rect.top)
        ++rect.bottom;
    *out = rect;
    GrowToDrawingRect(out, zoom);
}

bool CVxPart::PtInPart(double px, double py, double zoom, bool plain, double tolerance)
{
    return PtInPartAtDepth(px, py, zoom, plain, tolerance, 0);
}

bool CVxPart::PtInPartAtDepth(double px, double py, double zoom, bool plain, double tolerance, int depth)
{
    if (!(zoom > 0) || !std::isfinite(zoom))
        return false;
    CVxDPoint p(px / zoom - x, py / zoom - y);
    if (tolerance < EPS)
        tolerance = CVxHitDist::SelSymbol() / zoom;

    const int shape = GetShape(plain);
    const double w = type == ptLine ? 0.0 : width;
    const double h = VxPartPlanDepth(*this);
    p -= VxPartTiltShift(*this);

    const double r = rotation * kDegToRad;
    const double c = std::cos(r);
    const double s = std::sin(r);
    const double u = p.x * c + p.y * s;
    const double v = -p.x * s + p.y * c;
    // Also false for NaN anywhere in the frame.
    if (!(u >= -tolerance && v >= -tolerance && u < w + tolerance && v < h + tolerance))
        return false;

    switch (shape) {
    case ptCircle:
    case ptEllipse:
    case ptHexagon:
    case ptOctagon:
    case ptCompass: {
        const double a = w / 2;
        const double b = h / 2;
        if (a < EPS || b < EPS)
            return false;
        const double du = (u - a) / a;
        const double dv = (v - b) / b;
        return du * du + dv * dv <= 1;
    }
    case ptTriangle:
        if (rotation3D > 70 && rotation3D < 290)
            return true;
        return w < EPS || v < (w - u) * h / w;
    case ptLine:
        return u < tolerance;
    case ptPolygon: {
        if (polygon.GetVertexCount() < 3 || (rotation3D > 70 && rotation3D < 290))
            return true;
        CVxDPolygon scaled = polygon;
        scaled.Scale(w / kMemberFrame, h / kMemberFrame);
        return scaled.PtInPolygonIncludeVert(CVxDPoint(u, v));
    }
    case ptPolyline: {
        if (polygon.GetVertexCount() < 2)
            return true;
        CVxDPolygon scaled = polygon;
        scaled.Scale(w / kMemberFrame, h / kMemberFrame);
        const CVxDPoint q(u, v);
        if (scaled.PtOnPolygonLine(q, tolerance, nullptr, true))
            return true;
        // Abreast of a bend the edges don't count; the bend itself does.
        for (const CVxDPoint& vertex : scaled.points) {
            if (vertex.Distance(q) <= tolerance)
                return true;
        }
        return false;
    }
    case ptAngle: {
        CVxDPoint vertex, arm1, arm2;
        GetAnglePartPoints(vertex, arm1, arm2);
        vertex.Scale(w, h);
        arm1.Scale(w, h);
        arm2.Scale(w, h);
        const CVxDPoint q(u, v);
        return DblGetDistFromLine(vertex, arm1, q) <= tolerance ||
               DblGetDistFromLine(vertex, arm2, q) <= tolerance;
    }
    case ptComplexObject: {
        if (subParts.empty() || depth >= maxGroupDepth || !(w > EPS))
            return false;
        const double toFrame = kMemberFrame / w;
        const double zFactor = zHeight / w;
        for (CVxPart& member : subParts) {
            // A tilted member's plan depth follows the group's 3D height.
            const double memberZ = member.zHeight;
            member.zHeight *= zFactor;
            const bool hit =
                member.PtInPartAtDepth(u * toFrame, v * toFrame, 1.0, plain, tolerance * toFrame, depth + 1);
            member.zHeight = memberZ;
            if (hit)
                return true;
        }
        return false;
    }
    default:
        return true;
    }
}

void CVxPart::Scale(double sx, double sy, double sz, bool textures)
{
    x *= sx;
    y *= sy;
    width *= sx;
    height *= sy;
    thickness *= sx;
    z *= sz;
    zHeight *= sz;
    if (font)
        font->m_size *= sy;
    if (const CVxProject* project = VX_GetActiveProject()) {
        project->SubUnitCorrection(x, y, VX_DF_DECIMAL);
        project->SubUnitCorrection(z, VX_DF_DECIMAL);
    }
    DblRound2(width);
    DblRound2(height);
    DblRound2(zHeight);
    DblRound2(thickness);
    if (textures) {
        appearFill.Scale(sx, sy);
        appearFront.Scale(sx, sy);
        baseAppear.Scale(sx, sy);
    }
    InvalidateCache();
    ScaleSubParts(sy);
}

void CVxPart::ScaleSubParts(double factor)
{
    ScaleSubPartsAtDepth(factor, 0);
}

void CVxPart::ScaleSubPartsAtDepth(double factor, int depth)
{
    if (depth >= maxGroupDepth)
        return;
    for (CVxPart& member : subParts) {
        if (member.font)
            member.font->m_size *= factor;
        member.ScaleSubPartsAtDepth(factor, depth + 1);
    }
}

void CVxPart::RotateAroundCenter(double degrees)
{
    // The pivot of rotation is the first corner, so the position moves by
    // what the centre would.
    CVxDRect before;
    GetBoundingRect(&before, 1.0);
    rotation = VX_NormalizeAngle(degrees);
    CVxDRect after;
    GetBoundingRect(&after, 1.0);
    const CVxDPoint shift = before.CenterPoint() - after.CenterPoint();
    if (std::isfinite(shift.x) && std::isfinite(shift.y)) {
        x += shift.x;
        y += shift.y;
    }
    CorrectPosition(x, y);
    InvalidateCache();
}

void CVxPart::Mirror(bool horizontal)
{
    MirrorAtDepth(horizontal, 0);
}

void CVxPart::MirrorAtDepth(bool horizontal, int depth)
{
    if (type == ptPolygon || type == ptPolyline) {
        polygon.Mirror(horizontal, true);
        InvalidateCache();
        return;
    }
    if (type != ptComplexObject || depth >= maxGroupDepth)
        return;
    const double frameHeight = width > EPS ? kMemberFrame * height / width : 0.0;
    for (CVxPart& member : subParts) {
        const double r = member.rotation * kDegToRad;
        const double c = std::cos(r);
        const double s = std::sin(r);
        const double w = member.width;
        const double h = member.type == ptDoor ? member.width : member.height;
        // The opposite corner becomes the first one.
        if (horizontal)
            member.x = kMemberFrame - member.x - (c * w - s * h);
        else
            member.y = frameHeight - member.y - (c * h + s * w);
        member.MirrorAtDepth(horizontal, depth + 1);
    }
    InvalidateCache();
}

void CVxPart::GetAnglePartPoints(CVxDPoint& vertex, CVxDPoint& arm1, CVxDPoint& arm2) const
{
    const double a = VX_NormalizeAngle(angle);
    const double c = std::cos(a * kDegToRad);
    // Above 90 degrees the vertex sits inside the frame, where both arms of
    // equal length fit.
    const double inner = c < 1 ? 1 - 1 / (1 - c) : 0;
    if (a <= 90) {
        vertex.Set(0, 1);
        arm1.Set(1, 1);
        arm2.Set(c, 0);
    } else if (a <= 180) {
        vertex.Set(inner, 1);
        arm1.Set(1, 1);
        arm2.Set(0, 0);
    } else if (a <= 270) {
        vertex.Set(inner, 0);
        arm1.Set(1, 0);
        arm2.Set(0, 1);
    } else {
        vertex.Set(0, 0);
        arm1.Set(1, 0);
        arm2.Set(c, 1);
    }
}

void CVxPart::SetAnglePartPoints(CVxDPoint& vertex, CVxDPoint& arm1, CVxDPoint& arm2, int handle, bool snap)
{
    for (CVxDPoint* p : {&vertex, &arm1, &arm2}) {
        DblRound2(p->x);
        DblRound2(p->y);
    }
    double turn = DirectionOf(arm1 - vertex);
    if (handle == 4 && snap)
        turn = VX_NormalizeAngle(std::floor((turn + 22) / 45) * 45);
    // The second arm opens against the first, towards negative y in the
    // object's own frame.
    const double open = VX_NormalizeAngle(turn - DirectionOf(arm2 - vertex));
    const double length = arm2.Distance(vertex);
    if (!std::isfinite(open) || !std::isfinite(length))
        return;
    const double c = std::cos(open * kDegToRad);
    const double s = std::fabs(std::sin(open * kDegToRad));
    double w = length;
    double vertexU = 0;
    if (open > 90 && open <= 270) {
        w = length * (1 - c);
        vertexU = -length * c;
    }
    const double h = length * s;
    const bool vertexAtBottom = open <= 180;
    rotation = turn;
    angle = open;
    width = std::max(w, kEmptyGrowth);
    height = std::max(h, kEmptyGrowth);
    // The first corner lies where the frame, turned about it, puts the vertex.
    const double r = turn * kDegToRad;
    const double vu = vertexU;
    const double vv = vertexAtBottom ? height : 0.0;
    x = vertex.x - (vu * std::cos(r) - vv * std::sin(r));
    y = vertex.y - (vu * std::sin(r) + vv * std::cos(r));
    InvalidateCache();
}

bool CVxPart::GetTableCellAtPos(double px, double py, int* row, int* col, CVxPart** cell)
{
    int rows = 1;
    int cols = 1;
    GetTableRowsCols(rows, cols);
    const CVxDPoint point(px, py);
    for (int rr = 0; rr < rows; ++rr) {
        for (int cc = 0; cc < cols; ++cc) {
            const size_t index =
                static_cast<size_t>(rr) * static_cast<size_t>(cols) + static_cast<size_t>(cc);
            if (index >= subParts.size())
                continue;
            CVxPart& candidate = subParts[index];
            CVxDPolygon outline;
            outline.points.resize(4);
            candidate.GetRect(outline.points.data(), 1.0, false);
            if (!outline.PtInPolygonIncludeVert(point))
                continue;
            if (row)
                *row = rr;
            if (col)
                *col = cc;
            if (cell)
                *cell = &candidate;
            return true;
        }
    }
    return false;
}
