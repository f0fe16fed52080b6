#include "CVxPartSelection.h"

#include "CVxFloor.h"
#include "CVxHitDist.h"
#include "CVxPart.h"
#include "CVxProject.h"
#include "VxAngle.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
constexpr double kRadToDeg = 180.0 / 3.14159265358979323846;

// What a repaint of the object and its handles must cover, in pixels
// relative to the view offset.
VxRECT HandleArea(CVxPart* part, double zoom)
{
    VxRECT rect;
    part->GetCachedDrawingRect(&rect, 0, 0, zoom);
    const int margin = CVxPartSelection::SymbolDist() + CVxPartSelection::SymbolRotDist() +
                       CVxHitDist::SelSymbolSize() + CVxHitDist::TouchCircleRadius() + 4;
    rect.left -= margin;
    rect.top -= margin;
    rect.right += margin;
    rect.bottom += margin;
    return rect;
}

double Length(const CVxDPoint& a, const CVxDPoint& b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

// The direction from a fixed point rounded to the eighths of a turn; the
// axes stay exact.
CVxDPoint SnapDirection45(const CVxDPoint& fixed, const CVxDPoint& moving)
{
    const double dx = moving.x - fixed.x;
    const double dy = moving.y - fixed.y;
    const double length = std::hypot(dx, dy);
    double degrees = VX_NormalizeAngle(std::atan2(dy, dx) * kRadToDeg);
    degrees = std::floor((degrees + 22.5) / 45.0) * 45.0;
    const int eighth = static_cast<int>(degrees / 45.0) % 8;
    static const int axis[8][2] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
    const double unit = (eighth % 2) ? length / std::sqrt(2.0) : length;
    return CVxDPoint(fixed.x + axis[eighth][0] * unit, fixed.y + axis[eighth][1] * unit);
}
} // namespace

int CVxPartSelection::SymbolDist()
{
    return CVxHitDist::SelSymbolOffset() + CVxHitDist::SelSymbolSize();
}

int CVxPartSelection::SymbolRotDist()
{
    return CVxHitDist::RotationSymbolDist();
}

void CVxPartSelection::Collect(CVxFloor* floor, double zoom)
{
    const CVxSelSymbol* dragged = m_resizing ? GetResizingSymbol() : nullptr;
    const int draggedPart = dragged ? dragged->partNo : -1;
    const int draggedKind = dragged ? dragged->kind : -1;
    const int draggedSub = dragged ? dragged->subIndex : -1;
    m_symbols.clear();
    m_selectedCount = 0;
    m_symbolIdx = -1;
    m_floor = floor;
    m_zoom = zoom;
    if (!floor || zoom <= 0)
        return;
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
        if (!part.inUse || !part.selected)
            continue;
        ++m_selectedCount;
        UpdateSymbol(&part, i, zoom);
    }
    for (size_t i = 0; i < m_symbols.size() && draggedPart >= 0; ++i)
        if (m_symbols[i].partNo == draggedPart && m_symbols[i].kind == draggedKind &&
            m_symbols[i].subIndex == draggedSub)
            m_symbolIdx = static_cast<int>(i);
    if (m_resizing && m_symbolIdx < 0)
        m_resizing = false;
}

void CVxPartSelection::UpdateRegularSymbolPos(CVxSelSymbol& symbol, const CVxDPoint corners[4], double width,
                                              double height)
{
    const double d = SymbolDist();
    double u0 = width > d ? -d / width : 0.0;
    double u1 = width > d ? (d + width) / width : 1.0;
    double v0 = height > d ? -d / height : 0.0;
    double v1 = height > d ? (d + height) / height : 1.0;
    if (width <= 0)
        u0 = u1 = 0.5;
    if (height <= 0)
        v0 = v1 = 0.5;
    static const int place[10][2] = {{1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2},
                                     {0, 2}, {0, 1}, {0, 0}, {1, 1}, {1, 1}};
    const int k = symbol.kind % 10;
    const double us[3] = {u0, 0.5, u1};
    const double vs[3] = {v0, 0.5, v1};
    const double u = us[place[k][0]];
    const double v = vs[place[k][1]];
    const CVxDPoint along = corners[1] - corners[0];
    const CVxDPoint across = corners[3] - corners[0];
    double px = corners[0].x + u * along.x + v * across.x;
    double py = corners[0].y + u * along.y + v * across.y;
    if (k == CVxSelSymbol::kindRotate) {
        // Beside the centre along the object's width, whatever its size.
        const double a = symbol.angle * kDegToRad;
        px += SymbolRotDist() * std::cos(a);
        py += SymbolRotDist() * std::sin(a);
    }
    symbol.pos = VxPOINT{static_cast<int>(std::lround(px)), static_cast<int>(std::lround(py))};
}

void CVxPartSelection::UpdateSymbol(CVxPart* part, int partIndex, double zoom)
{
    const CVxSelSymbol* dragged = m_resizing ? GetResizingSymbol() : nullptr;
    const int draggedKind = dragged && dragged->partNo == partIndex ? dragged->kind : -1;
    m_symbols.erase(std::remove_if(m_symbols.begin(), m_symbols.end(),
                                   [partIndex](const CVxSelSymbol& s) { return s.partNo == partIndex; }),
                    m_symbols.end());
    if (draggedKind >= 0)
        m_symbolIdx = -1;
    if (!part || !part->inUse || part->IsLocked())
        return;

    CVxDPoint corners[4];
    part->GetCachedRect(0, 0, zoom, corners);
    auto add = [&](int kind, CVxSelSymbol::EShape shape) {
        CVxSelSymbol symbol;
        symbol.partNo = partIndex;
        symbol.kind = kind;
        symbol.angle = part->rotation;
        symbol.shape = shape;
        symbol.isRound = shape == CVxSelSymbol::shapeCircle ? 1 : 0;
        return symbol;
    };
    const int draggedSub = dragged && dragged->partNo == partIndex ? dragged->subIndex : -1;
    auto push = [&](CVxSelSymbol symbol) {
        if (symbol.kind == draggedKind &&
            (symbol.kind != CVxSelSymbol::kindVertex || symbol.subIndex == draggedSub))
            m_symbolIdx = static_cast<int>(m_symbols.size());
        m_symbols.push_back(symbol);
    };

    if (part->type == ptLine) {
        // The two ends of the line.
        for (int k : {0, 4}) {
            CVxSelSymbol symbol = add(k, CVxSelSymbol::shapeSquare);
            const CVxDPoint& end = k == 0 ? corners[0] : corners[3];
            symbol.pos = VxPOINT{static_cast<int>(std::lround(end.x)), static_cast<int>(std::lround(end.y))};
            symbol.isRound = 1;
            push(symbol);
        }
        return;
    }

    // A point given in fractions of the object's frame, in pixels.
    const auto framePoint = [&](double u, double v) {
        const double px =
            corners[0].x + u * (corners[1].x - corners[0].x) + v * (corners[3].x - corners[0].x);
        const double py =
            corners[0].y + u * (corners[1].y - corners[0].y) + v * (corners[3].y - corners[0].y);
        return VxPOINT{static_cast<int>(std::lround(px)), static_cast<int>(std::lround(py))};
    };
    if (part->type == ptAngle) {
        // The first arm's end, the vertex and the second arm's end.
        CVxDPoint vertex, arm1, arm2;
        part->GetAnglePartPoints(vertex, arm1, arm2);
        const CVxDPoint* points[3] = {&arm1, &vertex, &arm2};
        for (int k = 0; k < 3; ++k) {
            CVxSelSymbol symbol = add(4 + k, CVxSelSymbol::shapeSquare);
            symbol.isRound = 1;
            symbol.pos = framePoint(points[k]->x, points[k]->y);
            push(symbol);
        }
        return;
    }
    if ((part->type == ptPolyline || part->type == ptPolygon) && part->polygon.GetVertexCount() >= 2 &&
        !part->IsSizeLocked()) {
        // One handle per point; the points run 0 to 1000 across the frame.
        for (int i = 0; i < part->polygon.GetVertexCount(); ++i) {
            const CVxDPoint& p = part->polygon.points[static_cast<size_t>(i)];
            CVxSelSymbol symbol = add(CVxSelSymbol::kindVertex, CVxSelSymbol::shapeSquare);
            symbol.subIndex = i;
            symbol.pos = framePoint(p.x / 1000.0, p.y / 1000.0);
            push(symbol);
        }
        if (part->HasCap(capRotate)) {
            const double w = Length(corners[0], corners[1]);
            const double h = Length(corners[0], corners[3]);
            CVxSelSymbol symbol = add(CVxSelSymbol::kindRotate, CVxSelSymbol::shapeCircle);
            symbol.color = 0xFFE0B0;
            UpdateRegularSymbolPos(symbol, corners, w, h);
            push(symbol);
        }
        return;
    }

    const double width = Length(corners[0], corners[1]);
    const double height = Length(corners[0], corners[3]);
    std::vector<int> kinds;
    if (!part->IsSizeLocked() && part->HasCap(capResize)) {
        if (part->snapToWall || part->type == ptDoor)
            kinds = {2, 6};
        else if (!part->HasCap(capResizeAnyDirection))
            kinds = {1, 3, 5, 7};
        else
            kinds = {0, 1, 2, 3, 4, 5, 6, 7};
    }
    for (int k : kinds) {
        CVxSelSymbol symbol = add(k, CVxSelSymbol::shapeSquare);
        UpdateRegularSymbolPos(symbol, corners, width, height);
        push(symbol);
    }
    if (width > SymbolDist() || height > SymbolDist()) {
        CVxSelSymbol symbol = add(CVxSelSymbol::kindCentre, CVxSelSymbol::shapeDot);
        UpdateRegularSymbolPos(symbol, corners, width, height);
        push(symbol);
    }
    if (part->HasCap(capRotate) && !part->snapToWall) {
        CVxSelSymbol symbol = add(CVxSelSymbol::kindRotate, CVxSelSymbol::shapeCircle);
        symbol.color = 0xFFE0B0;
        UpdateRegularSymbolPos(symbol, corners, width, height);
        push(symbol);
    }
}

CVxDPoint CVxPartSelection::GetRotationCenter(const CVxPart& part, int /*kind*/)
{
    CVxDRect bounds;
    part.GetBoundingRect(&bounds, 1.0);
    return bounds.CenterPoint();
}

double CVxPartSelection::SnapRotation(double degrees, bool snap45)
{
    degrees = VX_NormalizeAngle(degrees);
    if (snap45)
        return VX_NormalizeAngle(std::floor((degrees + 22.5) / 45.0) * 45.0);
    degrees = std::round(degrees * 10.0) / 10.0;
    const double nearest = std::round(degrees / 45.0) * 45.0;
    if (std::fabs(degrees - nearest) <= 3.0)
        degrees = nearest;
    return VX_NormalizeAngle(degrees);
}

bool CVxPartSelection::MovePolygonPoint(CVxPart* part, int index, CVxDPoint target, bool snap45) const
{
    CVxDPolygon& poly = part->polygon;
    const int count = poly.GetVertexCount();
    if (index < 0 || index >= count || part->width <= 0 || part->height <= 0)
        return false;
    // Every point in plan units, the moved one where the pointer is.
    const double r = part->rotation * kDegToRad;
    const double c = std::cos(r), s = std::sin(r);
    std::vector<CVxDPoint> plan(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        const CVxDPoint& p = poly.points[static_cast<size_t>(i)];
        const double u = p.x / 1000.0 * part->width;
        const double v = p.y / 1000.0 * part->height;
        plan[static_cast<size_t>(i)] = CVxDPoint(part->x + u * c - v * s, part->y + u * s + v * c);
    }
    if (snap45) {
        const int neighbour = index > 0 ? index - 1 : 1;
        target = SnapDirection45(plan[static_cast<size_t>(neighbour)], target);
    }
    if (m_project)
        m_project->SubUnitCorrection(&target, VX_DF_DECIMAL);
    plan[static_cast<size_t>(index)] = target;
    // The frame grows or shrinks around the points, in the object's turn.
    double minU = 1e300, minV = 1e300, maxU = -1e300, maxV = -1e300;
    std::vector<CVxDPoint> local(plan.size());
    for (size_t i = 0; i < plan.size(); ++i) {
        const double dx = plan[i].x - part->x;
        const double dy = plan[i].y - part->y;
        local[i] = CVxDPoint(dx * c + dy * s, -dx * s + dy * c);
        minU = std::min(minU, local[i].x);
        minV = std::min(minV, local[i].y);
        maxU = std::max(maxU, local[i].x);
        maxV = std::max(maxV, local[i].y);
    }
    const double w = std::max(maxU - minU, 1e-3);
    const double h = std::max(maxV - minV, 1e-3);
    if (!std::isfinite(w) || !std::isfinite(h))
        return false;
    for (size_t i = 0; i < local.size(); ++i)
        poly.points[i] = CVxDPoint((local[i].x - minU) / w * 1000.0, (local[i].y - minV) / h * 1000.0);
    // Control points of curved edges keep their place in the plan.
    for (CVxDPoint& control : poly.bezierControls)
        control = CVxDPoint((control.x / 1000.0 * part->width - minU) / w * 1000.0,
                            (control.y / 1000.0 * part->height - minV) / h * 1000.0);
    part->x += minU * c - minV * s;
    part->y += minU * s + minV * c;
    part->width = w;
    part->height = h;
    return true;
}

bool CVxPartSelection::MouseMovePart(int kind, CVxPart* part, int subIndex, unsigned modifiers, int x, int y,
                                     double zoom)
{
    if (!part || zoom <= 0)
        return false;
    constexpr unsigned shift = 1;
    const CVxDPoint pointer(x / zoom, y / zoom);
    const double oldX = part->x, oldY = part->y, oldW = part->width, oldH = part->height;
    const double oldRotation = part->rotation;

    if (part->type == ptAngle && kind >= 4 && kind <= 6) {
        CVxDPoint corners[4];
        part->GetRect(corners, 1.0, false);
        CVxDPoint fractions[3];
        part->GetAnglePartPoints(fractions[1], fractions[0], fractions[2]);
        CVxDPoint points[3];
        for (int i = 0; i < 3; ++i)
            points[i] = CVxDPoint(corners[0].x + fractions[i].x * (corners[1].x - corners[0].x) +
                                      fractions[i].y * (corners[3].x - corners[0].x),
                                  corners[0].y + fractions[i].x * (corners[1].y - corners[0].y) +
                                      fractions[i].y * (corners[3].y - corners[0].y));
        CVxDPoint moving = pointer;
        if (m_project)
            m_project->SubUnitCorrection(&moving, VX_DF_DECIMAL);
        points[kind - 4] = moving;
        if (points[0] == points[1] || points[2] == points[1])
            return false;
        part->SetAnglePartPoints(points[1], points[0], points[2], kind, (modifiers & shift) != 0);
    } else if (kind == CVxSelSymbol::kindVertex && part->polygon.GetVertexCount() >= 2) {
        if (!MovePolygonPoint(part, subIndex, pointer, (modifiers & shift) != 0))
            return false;
    } else if (part->type == ptLine && (kind == 0 || kind == 4)) {
        CVxDPoint corners[4];
        part->GetRect(corners, 1.0, false);
        const CVxDPoint fixed = kind == 0 ? corners[3] : corners[0];
        CVxDPoint moving = pointer;
        if (modifiers & shift)
            moving = SnapDirection45(fixed, moving);
        if (m_project)
            m_project->SubUnitCorrection(&moving, VX_DF_DECIMAL);
        const CVxDPoint start = kind == 0 ? moving : fixed;
        const CVxDPoint end = kind == 0 ? fixed : moving;
        const double dx = end.x - start.x;
        const double dy = end.y - start.y;
        const double length = std::hypot(dx, dy);
        if (length <= 0)
            return false;
        part->x = start.x;
        part->y = start.y;
        part->height = length;
        part->rotation = VX_NormalizeAngle(std::atan2(-dx, dy) * kRadToDeg);
    } else if (kind >= 0 && kind <= 7) {
        // Into the object's own frame, where its rectangle is [0, w] x [0, h].
        const double r = part->rotation * kDegToRad;
        const double c = std::cos(r), s = std::sin(r);
        const CVxDPoint rel(pointer.x - part->x, pointer.y - part->y);
        const double u = rel.x * c + rel.y * s;
        const double v = -rel.x * s + rel.y * c;
        const double w = part->width;
        const double h = part->type == ptDoor ? part->width : part->height;
        const double least = 1.0 / std::max(zoom, 1e-9);
        double left = 0, top = 0, right = w, bottom = h;
        const bool moveTop = kind == 7 || kind == 0 || kind == 1;
        const bool moveBottom = kind >= 3 && kind <= 5;
        const bool moveLeft = kind >= 5 && kind <= 7;
        const bool moveRight = kind >= 1 && kind <= 3;
        if (moveTop)
            top = std::min(v, bottom - least);
        if (moveBottom)
            bottom = std::max(v, top + least);
        if (moveLeft)
            left = std::min(u, right - least);
        if (moveRight)
            right = std::max(u, left + least);
        double newW = right - left;
        double newH = bottom - top;
        const bool corner = kind % 2 == 1;
        if (corner && ((modifiers & shift) || part->KeepAspect() || part->KeepXZAspect(false)) && w > 0 &&
            h > 0) {
            const double factor = std::max(newW / w, newH / h);
            newW = w * factor;
            newH = h * factor;
            if (moveLeft)
                left = right - newW;
            if (moveTop)
                top = bottom - newH;
        }
        if (m_project) {
            m_project->SubUnitCorrection(newW, VX_DF_INCHES);
            m_project->SubUnitCorrection(newH, VX_DF_INCHES);
            if (moveLeft)
                left = right - newW;
            if (moveTop)
                top = bottom - newH;
        }
        if (newW <= 0 || newH <= 0)
            return false;
        if (part->type == ptDoor)
            newH = part->height;
        double newX = part->x + left * c - top * s;
        double newY = part->y + left * s + top * c;
        if (m_project)
            m_project->SubUnitCorrection(newX, newY, VX_DF_DECIMAL);
        part->ResizePart(newW, newH);
        part->x = newX;
        part->y = newY;
    } else if (kind == CVxSelSymbol::kindCentre) {
        const CVxDPoint centre = GetRotationCenter(*part, kind);
        double dx = pointer.x - centre.x;
        double dy = pointer.y - centre.y;
        double newX = part->x + dx;
        double newY = part->y + dy;
        if (m_project)
            m_project->SubUnitCorrection(newX, newY, VX_DF_DECIMAL);
        part->x = newX;
        part->y = newY;
    } else if (kind == CVxSelSymbol::kindRotate || (kind >= 20 && kind <= 27) || (kind >= 30 && kind <= 37)) {
        if (!part->HasCap(capRotate))
            return false;
        const CVxDPoint centre = m_turning ? m_turnCentre : GetRotationCenter(*part, kind);
        // The handle's own direction from the centre at the present angle
        // is kept in step with the pointer's: the rotation handle lies along
        // the width, a corner handle towards its corner.
        double handleAngle = part->rotation * kDegToRad;
        if (kind != CVxSelSymbol::kindRotate) {
            CVxDPoint corners[4];
            part->GetRect(corners, 1.0, false);
            static const int cornerOf[8] = {0, 1, 1, 2, 2, 3, 3, 0};
            const CVxDPoint& c = corners[cornerOf[kind % 10 % 8]];
            handleAngle = std::atan2(c.y - centre.y, c.x - centre.x);
        }
        const double pointerAngle = std::atan2(pointer.y - centre.y, pointer.x - centre.x);
        const double wanted = part->rotation + (pointerAngle - handleAngle) * kRadToDeg;
        const double snapped = SnapRotation(wanted, (modifiers & shift) != 0);
        if (std::fabs(snapped - part->rotation) < 1e-9)
            return false;
        part->RotateAroundCenter(snapped);
        if (m_turning) {
            CVxDRect after;
            part->GetBoundingRect(&after, 1.0);
            double newX = part->x + centre.x - after.CenterPoint().x;
            double newY = part->y + centre.y - after.CenterPoint().y;
            if (m_project)
                m_project->SubUnitCorrection(newX, newY, VX_DF_DECIMAL);
            part->x = newX;
            part->y = newY;
        }
    } else {
        return false;
    }
    part->InvalidateCache();
    return part->x != oldX || part->y != oldY || part->width != oldW || part->height != oldH ||
           part->rotation != oldRotation;
}

void CVxPartSelection::OnStartResizing(int x, int y)
{
    m_grabOffset = CVxDPoint(0, 0);
    m_turning = false;
    const CVxSelSymbol* symbol = GetResizingSymbol();
    CVxPart* part = m_floor ? m_floor->SafeGetPart(symbol ? symbol->partNo : -1) : nullptr;
    if (!part || m_zoom <= 0)
        return;
    if (symbol->kind == CVxSelSymbol::kindRotate || symbol->kind >= 20) {
        m_turnCentre = GetRotationCenter(*part, symbol->kind);
        m_turning = true;
        return;
    }
    if (symbol->kind > 7)
        return;
    CVxDPoint corners[4];
    part->GetRect(corners, m_zoom, false);
    CVxDPoint anchor;
    if (part->type == ptLine) {
        anchor = symbol->kind == 0 ? corners[0] : corners[3];
    } else {
        static const double place[8][2] = {{0.5, 0}, {1, 0}, {1, 0.5}, {1, 1},
                                           {0.5, 1}, {0, 1}, {0, 0.5}, {0, 0}};
        const double u = place[symbol->kind][0];
        const double v = place[symbol->kind][1];
        anchor =
            CVxDPoint(corners[0].x + u * (corners[1].x - corners[0].x) + v * (corners[3].x - corners[0].x),
                      corners[0].y + u * (corners[1].y - corners[0].y) + v * (corners[3].y - corners[0].y));
    }
    m_grabOffset = CVxDPoint(x - anchor.x, y - anchor.y);
}

bool CVxPartSelection::OnMouseMove(CVxFloor* floor, unsigned modifiers, int x, int y, double zoom,
                                   int /*source*/, VxRECT* dirty)
{
    const CVxSelSymbol* symbol = GetResizingSymbol();
    if (!m_resizing || !symbol || !floor)
        return false;
    CVxPart* part = floor->SafeGetPart(symbol->partNo);
    if (!part || !part->inUse)
        return false;
    const int partIndex = symbol->partNo;
    VxGrowDirtyRect(dirty, HandleArea(part, zoom));
    if (symbol->kind <= 7) {
        x -= static_cast<int>(std::lround(m_grabOffset.x));
        y -= static_cast<int>(std::lround(m_grabOffset.y));
    }
    if (!MouseMovePart(symbol->kind, part, symbol->subIndex, modifiers, x, y, zoom))
        return false;
    if (part->snapToWall)
        part->SnapToWall(&floor->m_walls, part->x, part->y, false, true, false);
    part->InvalidateCache();
    UpdateSymbol(part, partIndex, zoom);
    VxGrowDirtyRect(dirty, HandleArea(part, zoom));
    return true;
}
