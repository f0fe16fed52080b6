// The wall editor's pointer: dragging vertices, walls and openings, drawing
// new walls, wall polygons and openings, and the live dimension lines that
// measure what is being drawn.

#include "CVxWallEditor.h"

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxHitDist.h"
#include "CVxLocalize.h"
#include "CVxPart.h"
#include "CVxUndoManager.h"
#include "IVxAppHelperCallback.h"
#include "VxEps.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr unsigned kShift = 1;
constexpr int kLeft = 1;
constexpr int kRight = 2;

CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

bool IsNewOperation(int op)
{
    return op >= CVxWallEditor::opNewWallStart && op <= CVxWallEditor::opNewHolePoly;
}
} // namespace

int CVxWallEditor::FindSymbol(double x, double y, int kind) const
{
    int best = -1;
    int bestDistance = 0;
    const auto& symbols = m_wallSelection.GetSymbols();
    const int ix = static_cast<int>(std::lround(x));
    const int iy = static_cast<int>(std::lround(y));
    for (size_t i = 0; i < symbols.size(); ++i) {
        const CVxSelSymbol& symbol = symbols[i];
        if ((kind >= 0 && symbol.kind != kind) || !symbol.PtInSymbol(ix, iy))
            continue;
        const int distance = symbol.GetDistanceSq(ix, iy);
        if (best < 0 || distance < bestDistance) {
            best = static_cast<int>(i);
            bestDistance = distance;
        }
    }
    return best;
}

CVxPlanVertex* CVxWallEditor::SymbolVertex(int symbol) const
{
    const CVxSelSymbol* found = m_wallSelection.SafeGetSymbol(symbol);
    if (!found || found->kind != CVxWallSelection::kindWallVertex || !m_plan)
        return nullptr;
    return m_plan->SafeGetVertex(found->partNo);
}

void CVxWallEditor::DeleteTempDimLines()
{
    CVxFloor* floor = Floor();
    if (!floor)
        return;
    bool any = false;
    for (CVxPart& part : floor->m_objects) {
        if (part.inUse && (part.appTag & CVxPart::appTagTempDimLine) != 0) {
            part = CVxPart();
            any = true;
        }
    }
    // Free slots at the end go, so that lines made at every move of a drag
    // don't pile up.
    while (!floor->m_objects.empty() && !floor->m_objects.back().inUse)
        floor->m_objects.pop_back();
    if (any)
        floor->m_objectCount = floor->CountUsedObjects();
    m_tempDimLines.clear();
}

CVxPart* CVxWallEditor::AddTempDimLine(const CVxDPoint& from, const CVxDPoint& to, double offset)
{
    CVxFloor* floor = Floor();
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (!floor || length <= 0)
        return nullptr;
    const double zoom = std::max(Zoom(), 1e-9);
    int index = -1;
    CVxPart* line = floor->GetNewObject(&index, true);
    line->type = ptMeasLine;
    line->caption = L"~";
    line->appTag |= CVxPart::appTagTempDimLine;
    line->layer = floor->m_layers.GetActiveLayer();
    const double degrees = std::atan2(to.y - from.y, to.x - from.x) * 180.0 / kPi;
    const double r = degrees * kPi / 180.0;
    const double mark = 10.0 / zoom;
    // Off the line, on its left in the sense of the drawing.
    const CVxDPoint normal(std::sin(r), -std::cos(r));
    const CVxDPoint at(from.x + normal.x * offset, from.y + normal.y * offset);
    line->width = std::round(length * 100.0) / 100.0;
    line->height = mark;
    line->rotation = degrees < 0 ? degrees + 360 : degrees;
    line->x = at.x + std::sin(r) * mark / 2;
    line->y = at.y - std::cos(r) * mark / 2;
    line->InvalidateCache();
    m_tempDimLines.push_back(index);
    return line;
}

bool CVxWallEditor::OnMouseDown(int button, unsigned modifiers, double x, double y, int /*source*/,
                                bool& ioGoOn)
{
    CVxFloor* floor = Floor();
    if (!m_active || m_noRebuild || !floor || !m_plan)
        return false;
    if (m_operation == opCalibrate) {
        ioGoOn = false;
        return button == kLeft ? OnCalibrateMouseDown(x, y) : true;
    }
    DeleteTempDimLines();
    const double zoom = Zoom();
    const CVxDPoint pixels(x, y);
    ioGoOn = false;

    switch (m_operation) {
    case opNewPoly:
        SetStatus(Msg(96, L"Use Esc or double click to finish the polygon."));
        return true;
    case opNewWall:
        return true;
    case opNewHolePoly: {
        const int symbol = FindSymbol(x, y, CVxWallSelection::kindWallVertex);
        CVxDPoint point = symbol >= 0
                              ? SymbolVertex(symbol)->Point()
                              : GetSnappedWallPoint(*floor, pixels, nullptr, nullptr, nullptr, nullptr);
        m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
        if (button == kLeft) {
            if (!m_newHolePoly.points.empty())
                m_newHolePoly.points.back() = point;
            m_newHolePoly.points.push_back(point);
        } else if (button == kRight && m_newHolePoly.GetVertexCount() >= 3) {
            // The last point placed goes, the one following the pointer
            // stays; the first two stay always.
            m_newHolePoly.points.erase(m_newHolePoly.points.end() - 2);
            m_newHolePoly.points.back() = point;
        }
        m_newHolePoly.bezierFlags.assign(m_newHolePoly.points.size(), false);
        Repaint();
        return true;
    }
    default:
        break;
    }

    if (IsNewOperation(m_operation)) {
        if (button != kLeft)
            return true;
        m_mouseMoved = false;
        const int symbol = FindSymbol(x, y, CVxWallSelection::kindWallVertex);
        bool snapped = false;
        m_drawStartWall = -1;
        CVxDPoint start = symbol >= 0 ? SymbolVertex(symbol)->Point()
                                      : GetSnappedWallPoint(*floor, pixels, &snapped, nullptr,
                                                            &m_drawStartWall, &m_drawStartWallPos);
        if (symbol < 0 && !snapped) {
            CVxDPoint aligned = pixels;
            GetSnappedPointToFarVertexCoord(aligned, nullptr, nullptr);
            start = aligned / std::max(zoom, 1e-9);
        }
        m_project->SubUnitCorrection(&start, VX_DF_DECIMAL);
        m_drawStart = start;
        m_drawEnd = start;
        switch (m_operation) {
        case opNewWallStart:
            m_operation = opNewWall;
            m_drawing = true;
            break;
        case opNewPolyStart:
            m_operation = opNewPoly;
            m_drawing = true;
            m_polyFirst = start;
            break;
        case opNewHoleStart:
            m_operation = opNewHole;
            break;
        case opNewEllipseStart:
            m_operation = opNewEllipse;
            break;
        case opNewHolePolyStart:
            m_operation = opNewHolePoly;
            m_newHolePoly.Zero();
            m_newHolePoly.points = {start, start};
            m_newHolePoly.bezierFlags.assign(2, false);
            SetStatus(Msg(96, L"Use Esc or double click to finish the polygon.") + L" " +
                      Msg(128, L"Right click to remove last point."));
            break;
        default:
            break;
        }
        return true;
    }

    if (m_operation != opNone)
        return true;

    // What lies under the pointer: a handle, an opening, a wall.
    const int symbol = FindSymbol(x, y, -1);
    const CVxSelSymbol* found = m_wallSelection.SafeGetSymbol(symbol);
    const int hole = found ? -1 : floor->m_walls.FindHoleFromPoint(x, y, zoom);
    int wall = -1;
    bool onWall = false;
    if (!found && hole < 0)
        GetSnappedWallPoint(*floor, pixels, &onWall, nullptr, &wall, nullptr);

    if (button != kLeft) {
        if (button == kRight) {
            if (found && found->kind == CVxWallSelection::kindWallVertex) {
                if (!IsItemTouchSelected(selVertex, found->partNo))
                    SetTouchSelection(selVertex, found->partNo, 0);
            } else if (hole >= 0) {
                if (!IsItemTouchSelected(selHole, hole))
                    SetTouchSelection(selHole, hole, 0);
            } else if (onWall) {
                if (!IsItemTouchSelected(selWall, wall))
                    SetTouchSelection(selWall, wall, 0);
            } else {
                ClearTouchSelection();
            }
            Repaint();
            if (IVxAppHelperCallback* host = VX_GetAppHelper())
                host->ShowWallEditorPopupMenu();
        } else {
            ClearTouchSelection();
        }
        return true;
    }

    m_dragStart = pixels;
    m_mouseMoved = false;
    m_resizeEdges.clear();
    m_movedSoFar = CVxDPoint(0, 0);
    m_boundsAtStart = WallBounds();
    if (found && found->kind == CVxWallSelection::kindWallVertex) {
        SetTouchSelection(selVertex, found->partNo, modifiers);
        m_dragVertex = found->partNo;
        if (const CVxPlanVertex* vertex = m_plan->SafeGetVertex(m_dragVertex))
            m_edgeStart = vertex->Point();
        m_wallSelection.SetMovingSymbol(symbol);
        m_operation = opMoveVertex;
        Repaint();
        return true;
    }
    if (found && (found->kind == CVxWallSelection::kindCtrlPoint0 ||
                  found->kind == CVxWallSelection::kindCtrlPoint1)) {
        // The bend of a curved wall: a vertex drag of no vertex.
        m_dragVertex = -1;
        m_dragCtrlWall = found->partNo;
        m_dragCtrlKind = found->kind;
        m_wallSelection.SetMovingSymbol(symbol);
        m_operation = opMoveVertex;
        return true;
    }
    if (found && found->kind == CVxWallSelection::kindHoleHandle) {
        m_activeHole = found->partNo;
        m_dragHolePoint = -1;
        m_dragHoleHandle = found->subIndex;
        SetTouchSelection(selHole, found->partNo, 0);
        m_wallSelection.SetMovingSymbol(symbol);
        m_operation = opMoveHolePoint;
        Repaint();
        return true;
    }
    // Near the outline of a polygon opening a press adds a point there and
    // drags it.
    for (int i = 0; i < floor->m_walls.GetHoleCount() && !found; ++i) {
        CVxHoleInFloor& hole = floor->m_walls.holes[static_cast<size_t>(i)];
        int edge = -1;
        if (hole.type != CVxHoleInFloor::TYPE_POLYGON ||
            !hole.polygon.PtOnPolygonLine(pixels / zoom, 8.0 / zoom, &edge) || edge < 0)
            continue;
        CatchUndoStep(true);
        CVxDPoint point = pixels / zoom;
        m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
        hole.polygon.points.insert(hole.polygon.points.begin() + edge + 1, point);
        hole.polygon.bezierFlags.assign(hole.polygon.points.size(), false);
        hole.InvalidateCache();
        Collect();
        m_activeHole = i;
        m_dragHolePoint = edge + 1;
        m_dragHoleHandle = -1;
        SetTouchSelection(selHolePoint, edge + 1, 0);
        // The new point is the step; its drag needs no threshold of its own.
        m_mouseMoved = true;
        m_operation = opMoveHolePoint;
        Repaint();
        return true;
    }
    if (found && found->kind == CVxWallSelection::kindHolePoint) {
        m_activeHole = found->partNo;
        m_dragHolePoint = found->subIndex;
        m_dragHoleHandle = -1;
        SetTouchSelection(selHolePoint, found->subIndex, 0);
        m_wallSelection.SetMovingSymbol(symbol);
        m_operation = opMoveHolePoint;
        Repaint();
        return true;
    }
    if (hole >= 0) {
        SetTouchSelection(selHole, hole, modifiers);
        m_activeHole = hole;
        m_operation = opMoveHole;
        Repaint();
        return true;
    }
    if (onWall) {
        SetTouchSelection(selWall, wall, modifiers);
        m_dragEdge = -1;
        for (size_t i = 0; i < m_plan->edges.size(); ++i)
            if (m_plan->edges[i]->wall == wall) {
                m_dragEdge = static_cast<int>(i);
                break;
            }
        m_operation = m_dragEdge >= 0 ? opMoveEdge : opNone;
        Repaint();
        return true;
    }
    // Empty floor: the core's rubber band selects vertices.
    ClearTouchSelection();
    Repaint();
    ioGoOn = true;
    return false;
}

bool CVxWallEditor::OnMouseMove(unsigned modifiers, double x, double y, int /*source*/, bool& ioGoOn)
{
    CVxFloor* floor = Floor();
    if (!m_active || m_noRebuild || !floor || !m_plan)
        return false;
    const double zoom = std::max(Zoom(), 1e-9);
    const CVxDPoint pixels(x, y);
    if (m_operation == opCalibrate) {
        ioGoOn = false;
        OnCalibrateMouseMove(x, y);
        return true;
    }
    const bool dragging = m_operation >= opMoveVertex && m_operation <= opMoveHolePoint;
    if (dragging) {
        ioGoOn = false;
        IVxAppHelperCallback* host = VX_GetAppHelper();
        if (host && host->GetKeyState(VX_KEY_LBUTTON) == 0) {
            OnMouseUp(kLeft, modifiers, x, y, 0);
            return true;
        }
        if (!m_mouseMoved) {
            if (std::hypot(x - m_dragStart.x, y - m_dragStart.y) < CVxHitDist::ResizeMin())
                return true;
            m_mouseMoved = true;
            CatchUndoStep(false);
        }
    }
    switch (m_operation) {
    case opMoveVertex: {
        CVxPlanVertex* vertex = m_plan->SafeGetVertex(m_dragVertex);
        if (!vertex) {
            CVxWall* wall = floor->m_walls.SafeGetWall(m_dragCtrlWall);
            if (!wall)
                return true;
            CVxDPoint point = pixels / zoom;
            m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
            const bool first = m_dragCtrlKind == CVxWallSelection::kindCtrlPoint0;
            wall->SetBezierControlPoints(first ? &point : nullptr, first ? nullptr : &point);
            floor->m_walls.RebuildWalls();
            m_plan->UpdateAllRegionPolygons(*floor);
            Collect();
            Repaint();
            return true;
        }
        CVxDPoint target = m_edgeStart * zoom + (pixels - m_dragStart);
        if (modifiers & kShift) {
            if (std::fabs(pixels.x - m_dragStart.x) >= std::fabs(pixels.y - m_dragStart.y))
                target.y = m_edgeStart.y * zoom;
            else
                target.x = m_edgeStart.x * zoom;
        } else {
            // Line up with far corners, but never with itself.
            const double reach = CVxHitDist::ResizeSnap();
            for (const CVxPlanVertex* other : m_plan->vertices) {
                if (other == vertex)
                    continue;
                if (std::fabs(target.x - other->x * zoom) <= reach)
                    target.x = other->x * zoom;
                if (std::fabs(target.y - other->y * zoom) <= reach)
                    target.y = other->y * zoom;
            }
        }
        DeleteTempDimLines();
        m_resizeEdges.clear();
        MovePlanEdges(vertex, target.x / zoom - vertex->x, target.y / zoom - vertex->y, false, true);
        floor->m_walls.RebuildWalls();
        m_plan->UpdateAllRegionPolygons(*floor);
        // The rooms' saved edges move along, so that each room keeps its
        // name and surfaces when the plan is made anew at the release.
        floor->m_planDef = m_plan->Save();
        Collect();
        m_wallSelection.SetMovingSymbol(
            FindSymbol(vertex->x * zoom, vertex->y * zoom, CVxWallSelection::kindWallVertex));
        Repaint();
        return true;
    }
    case opMoveEdge: {
        const CVxPlanEdge* edge = m_plan->SafeGetEdge(m_dragEdge);
        if (!edge)
            return true;
        if (m_resizeEdges.empty()) {
            BeginEdgeResizing(m_dragEdge);
            SetStatus(Msg(118, L"Use Shift to move object only horizontally or vertically."));
        }
        CVxDPoint delta = (pixels - m_dragStart) / zoom;
        if (modifiers & kShift) {
            // Only across the wall.
            const double r = (edge->angle - 90) * kPi / 180.0;
            const CVxDPoint across(std::cos(r), std::sin(r));
            const double amount = delta.x * across.x + delta.y * across.y;
            delta = across * amount;
        }
        // The run has moved by how far its first vertex went so far.
        const CVxDPoint step = delta - (edge->from->Point() - m_edgeStart);
        DeleteTempDimLines();
        MoveWallFreely(m_dragEdge, step, true);
        floor->m_walls.RebuildWalls();
        m_plan->UpdateAllRegionPolygons(*floor);
        Collect();
        Repaint();
        return true;
    }
    case opMoveHole: {
        CVxDPoint delta = (pixels - m_dragStart) / zoom;
        m_project->SubUnitCorrection(&delta, VX_DF_DECIMAL);
        const CVxDPoint step = delta - m_movedSoFar;
        for (int item : m_touchSelItems)
            if (CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(item)) {
                hole->Move(step.x, step.y);
                hole->InvalidateCache();
            }
        m_movedSoFar = delta;
        m_plan->UpdateAllRegionPolygons(*floor);
        Collect();
        Repaint();
        return true;
    }
    case opMoveHolePoint: {
        CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(m_activeHole);
        if (hole && m_dragHoleHandle >= 0 && hole->type != CVxHoleInFloor::TYPE_POLYGON) {
            // The side or corner follows the pointer in the opening's own
            // frame; the opposite side stays.
            CVxDPoint pointer = pixels / zoom;
            m_project->SubUnitCorrection(&pointer, VX_DF_DECIMAL);
            const double r = hole->rotation * kPi / 180.0;
            const CVxDPoint u(std::cos(r), std::sin(r));
            const CVxDPoint v(-std::sin(r), std::cos(r));
            const CVxDPoint rel = pointer - CVxDPoint(hole->x, hole->y);
            const double px = rel.x * u.x + rel.y * u.y;
            const double py = rel.x * v.x + rel.y * v.y;
            double left = 0, top = 0, right = hole->width, bottom = hole->height;
            const double least = 1.0 / zoom;
            const int k = m_dragHoleHandle;
            if (k == 5 || k == 6 || k == 7)
                left = std::min(px, right - least);
            if (k == 1 || k == 2 || k == 3)
                right = std::max(px, left + least);
            if (k == 7 || k == 0 || k == 1)
                top = std::min(py, bottom - least);
            if (k == 3 || k == 4 || k == 5)
                bottom = std::max(py, top + least);
            const CVxDPoint corner = CVxDPoint(hole->x, hole->y) + u * left + v * top;
            hole->x = corner.x;
            hole->y = corner.y;
            hole->width = right - left;
            hole->height = bottom - top;
            hole->InvalidateCache();
            m_plan->UpdateAllRegionPolygons(*floor);
            Collect();
            Repaint();
            return true;
        }
        if (!hole || m_dragHolePoint < 0 || m_dragHolePoint >= hole->polygon.GetVertexCount())
            return true;
        CVxDPoint point = pixels / zoom;
        m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
        if (hole->polygon.points[static_cast<size_t>(m_dragHolePoint)] != point) {
            hole->polygon.points[static_cast<size_t>(m_dragHolePoint)] = point;
            hole->InvalidateCache();
            m_plan->UpdateAllRegionPolygons(*floor);
            Collect();
            Repaint();
        }
        return true;
    }
    case opNewWall:
    case opNewPoly: {
        ioGoOn = false;
        bool snapped = false;
        CVxDPoint onWall = GetSnappedWallPoint(*floor, pixels, &snapped, nullptr, nullptr, nullptr);
        bool snappedX = false;
        bool snappedY = false;
        CVxDPoint at = pixels;
        const int symbol = FindSymbol(x, y, CVxWallSelection::kindWallVertex);
        if (symbol >= 0) {
            at = SymbolVertex(symbol)->Point() * zoom;
            snappedX = snappedY = true;
        } else if (snapped) {
            at = onWall * zoom;
            snappedX = snappedY = true;
        } else {
            GetSnappedPointToFarVertexCoord(at, &snappedX, &snappedY);
        }
        m_mouseMoved = true;
        DrawUpdateNewWallLine(modifiers, at.x, at.y, snappedX, snappedY);
        return true;
    }
    case opNewHole:
    case opNewEllipse:
        ioGoOn = false;
        DrawUpdateNewHoleRect(modifiers, x, y);
        return true;
    case opNewHolePoly: {
        ioGoOn = false;
        if (m_newHolePoly.GetVertexCount() < 2)
            return true;
        CVxDPoint point = pixels / zoom;
        const CVxDPoint previous = m_newHolePoly.points[m_newHolePoly.points.size() - 2];
        if (modifiers & kShift) {
            const double length = std::hypot(point.x - previous.x, point.y - previous.y);
            double angle = std::atan2(point.y - previous.y, point.x - previous.x) * 180.0 / kPi;
            angle = std::trunc((angle + 360 + 11.25) / 22.5) * 22.5;
            point =
                previous + CVxDPoint(std::cos(angle * kPi / 180.0), std::sin(angle * kPi / 180.0)) * length;
        }
        m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
        m_newHolePoly.points.back() = point;
        Repaint();
        return true;
    }
    default:
        return IsNewOperation(m_operation);
    }
}

void CVxWallEditor::DrawUpdateNewWallLine(unsigned modifiers, double x, double y, bool snappedX,
                                          bool snappedY)
{
    const double zoom = std::max(Zoom(), 1e-9);
    CVxDPoint end(x / zoom, y / zoom);
    const CVxDPoint start = m_drawStart;
    if (modifiers & kShift) {
        const double dx = end.x - start.x;
        const double dy = end.y - start.y;
        const double d = std::hypot(dx, dy);
        if (d > 0 && -dy / d <= 1 && -dy / d >= -1) {
            int a = static_cast<int>(std::acos(-dy / d) * 180.0 / kPi);
            if (dx < 0)
                a = -a;
            a = (((a + 742) / 45) * 45) % 360;
            const bool general = !(a == 90 || a == 270 || a == 0 || a == 180);
            if (a == 90 || a == 270) {
                end.y = start.y;
            } else if (a == 0 || a == 180) {
                end.x = start.x;
            } else if ((a == 45 || a == 225) && snappedY) {
                end.x = start.x - dy;
            } else if ((a == 45 || a == 225) && snappedX) {
                end.y = start.y - dx;
            } else if ((a == 135 || a == 315) && snappedY) {
                end.x = start.x + dy;
            } else if ((a == 135 || a == 315) && snappedX) {
                end.y = start.y + dx;
            } else if (general) {
                end = CVxDPoint(start.x + std::sin(a * kPi / 180.0) * d,
                                start.y - std::cos(a * kPi / 180.0) * d);
            }
        }
    } else {
        const double reach = CVxHitDist::ResizeSnap();
        if (!snappedX && std::fabs(x - start.x * zoom) <= reach)
            end.x = start.x;
        if (!snappedY && std::fabs(y - start.y * zoom) <= reach)
            end.y = start.y;
    }
    m_project->SubUnitCorrection(&end, VX_DF_DECIMAL);
    if (end == m_drawEnd && !m_tempDimLines.empty())
        return;
    m_drawEnd = end;
    DeleteTempDimLines();
    // Three live lines: the run in x, the run in y, and the angle to the
    // wall that the start lies on.
    const double off = 14.0 / zoom;
    const CVxDPoint corner(end.x, start.y);
    if (std::fabs(end.x - start.x) > 0)
        if (CVxPart* line = AddTempDimLine(start, corner, end.y >= start.y ? off : -off))
            line->caption = L"x: ~";
    if (std::fabs(end.y - start.y) > 0)
        if (CVxPart* line = AddTempDimLine(corner, end, 0))
            line->caption = L"y: ~";
    const double length = std::hypot(end.x - start.x, end.y - start.y);
    if (length > 0) {
        CVxDPoint reference = end;
        if (const CVxWall* wall = Floor()->m_walls.SafeGetWall(m_drawStartWall)) {
            const CVxDPoint far = (wall->end - start).x * (wall->end - start).x +
                                              (wall->end - start).y * (wall->end - start).y >
                                          (wall->start - start).x * (wall->start - start).x +
                                              (wall->start - start).y * (wall->start - start).y
                                      ? wall->end
                                      : wall->start;
            const double farLength = std::hypot(far.x - start.x, far.y - start.y);
            if (farLength > 0)
                reference = start + (far - start) * (length / farLength);
        } else {
            reference = start + CVxDPoint(length, 0);
        }
        const double degrees = std::fabs(std::atan2(end.y - start.y, end.x - start.x) -
                                         std::atan2(reference.y - start.y, reference.x - start.x)) *
                               180.0 / kPi;
        if (static_cast<int>(degrees) % 90 != 0) {
            int index = -1;
            CVxPart* angle = Floor()->GetNewObject(&index, true);
            angle->type = ptAngle;
            angle->caption = L"~";
            angle->appTag |= CVxPart::appTagTempDimLine;
            angle->layer = Floor()->m_layers.GetActiveLayer();
            CVxDPoint vertex = start;
            CVxDPoint arm1 = reference;
            CVxDPoint arm2 = end;
            angle->SetAnglePartPoints(vertex, arm1, arm2, 0, false);
            angle->InvalidateCache();
            m_tempDimLines.push_back(index);
        }
    }
    if (m_host)
        m_host->EditorSetRubber(1, start.x, start.y, end.x, end.y);
    CVxStringW status;
    if (m_operation == opNewPoly)
        status = Msg(96, L"Use Esc or double click to finish the polygon.") + L" ";
    SetStatus(status + Msg(93, L"Use Shift to draw horizontal or vertical line."));
    Repaint();
}

void CVxWallEditor::DrawUpdateNewHoleRect(unsigned /*modifiers*/, double x, double y)
{
    const double zoom = std::max(Zoom(), 1e-9);
    CVxDPoint end(x / zoom, y / zoom);
    m_project->SubUnitCorrection(&end, VX_DF_DECIMAL);
    m_drawEnd = end;
    if (m_host)
        m_host->EditorSetRubber(m_operation == opNewEllipse ? 3 : 2, m_drawStart.x, m_drawStart.y, end.x,
                                end.y);
    Repaint();
}

void CVxWallEditor::AddNewWall(const CVxDPoint& start, const CVxDPoint& end)
{
    CVxFloor* floor = Floor();
    if (!floor || start == end)
        return;
    CatchUndoStep(true);
    CVxRoomWalls& walls = floor->m_walls;
    const int fill = walls.GetWallFillStyle();
    double thickness = m_lastThickness;
    if (thickness <= 0)
        thickness = walls.GetWallThickness();
    if (thickness <= 0)
        thickness = floor->m_defWallThickness;
    double height = walls.GetWallZHeight();
    if (height <= 0)
        height = floor->m_defWallHeight;
    // An end on a wall splits that wall there, so that the joint is a vertex.
    for (const CVxDPoint& p : {start, end}) {
        double t = 0;
        const int index = GetNearestSnapWall(*floor, p.x, p.y, &t, nullptr);
        const CVxWall* wall = walls.SafeGetWall(index);
        if (!wall || wall->curved)
            continue;
        const CVxDPoint on = wall->GetPointOnWall(t);
        if (std::hypot(on.x - p.x, on.y - p.y) > 1e-3 || p == wall->start || p == wall->end)
            continue;
        walls.SplitWallAtPoint(index, t, &p);
    }
    int index = -1;
    CVxWall* wall = walls.GetNewWall(&index);
    wall->Set(start.x, start.y, end.x, end.y, m_lastAlign, thickness, height, height, true, false);
    wall->fillStyle = fill;
    SetBestWallAlignForNewWall(*floor, index);
    AdjustRoomSpace(*m_project, WallBounds(), true);
    RebuildAfterChange(true);
}

bool CVxWallEditor::ApplyTypedWall(double length, const double* angle)
{
    if (!IsDrawingWall() || !(length > 0) || !std::isfinite(length))
        return false;
    double degrees = 0;
    if (angle) {
        degrees = *angle;
    } else if (m_drawEnd != m_drawStart) {
        degrees = std::atan2(m_drawEnd.y - m_drawStart.y, m_drawEnd.x - m_drawStart.x) * 180.0 / kPi;
    }
    const double r = degrees * kPi / 180.0;
    CVxDPoint end = m_drawStart + CVxDPoint(std::cos(r), std::sin(r)) * length;
    m_project->SubUnitCorrection(&end, VX_DF_DECIMAL);
    DeleteTempDimLines();
    AddNewWall(m_drawStart, end);
    m_drawStart = end;
    m_drawEnd = end;
    if (m_operation == opNewWall)
        m_operation = opNewWallStart;
    if (m_operation == opNewWallStart) {
        // The next typed wall goes on from here.
        m_operation = opNewWall;
    }
    if (m_host)
        m_host->EditorSetRubber(0, 0, 0, 0, 0);
    Repaint();
    return true;
}

void CVxWallEditor::EndDragTail()
{
    m_wallSelection.EndResizing();
    m_operation = opNone;
    m_resizeEdges.clear();
    const CVxDRect bounds = WallBounds();
    if (bounds.left != m_boundsAtStart.left || bounds.top != m_boundsAtStart.top ||
        bounds.right != m_boundsAtStart.right || bounds.bottom != m_boundsAtStart.bottom) {
        AdjustRoomSpace(*m_project, bounds, true);
        if (m_host)
            m_host->EditorRebuildRoom();
    }
    RebuildAfterChange(true);
    SetStatus(CVxStringW());
}

bool CVxWallEditor::OnMouseUp(int /*button*/, unsigned /*modifiers*/, double x, double y, int /*source*/)
{
    CVxFloor* floor = Floor();
    if (!m_active || m_noRebuild || !floor || !m_plan)
        return false;
    const double zoom = std::max(Zoom(), 1e-9);
    const CVxDPoint pixels(x, y);
    switch (m_operation) {
    case opCalibrate:
        m_calibDrag = 0;
        return true;
    case opMoveVertex: {
        DeleteTempDimLines();
        if (!m_mouseMoved) {
            m_wallSelection.EndResizing();
            m_operation = opNone;
            Collect();
            Repaint();
            return true;
        }
        CVxPlanVertex* vertex = m_plan->SafeGetVertex(m_dragVertex);
        if (!vertex) {
            CatchUndoStep(true);
            EndDragTail();
            Repaint();
            return true;
        }
        CVxDPoint finalPoint = vertex->Point();
        // A corner let go on a wall joins it.
        bool snapped = false;
        int wall = -1;
        double t = 0;
        const CVxDPoint on = GetSnappedWallPoint(*floor, vertex->Point() * zoom, &snapped, vertex, &wall, &t);
        if (snapped && t > EPS && t < 1 - EPS) {
            CVxDPoint point = on;
            m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
            m_resizeEdges.clear();
            MovePlanEdges(vertex, point.x - vertex->x, point.y - vertex->y, false, false);
            floor->m_walls.SplitWallAtPoint(wall, t, &point);
            finalPoint = point;
        }
        CatchUndoStep(true);
        EndDragTail();
        // The vertex stays selected.
        ClearTouchSelection();
        for (size_t i = 0; i < m_plan->vertices.size(); ++i)
            if (m_plan->vertices[i]->Point() == finalPoint)
                SetTouchSelection(selVertex, static_cast<int>(i), 0);
        Repaint();
        return true;
    }
    case opMoveEdge: {
        DeleteTempDimLines();
        if (!m_mouseMoved) {
            m_operation = opNone;
            m_resizeEdges.clear();
            Repaint();
            return true;
        }
        const CVxWall* moved =
            floor->m_walls.SafeGetWall(m_touchSelItems.empty() ? -1 : m_touchSelItems.front());
        const CVxDPoint a = moved ? moved->start : CVxDPoint();
        const CVxDPoint b = moved ? moved->end : CVxDPoint();
        CatchUndoStep(true);
        EndDragTail();
        ClearTouchSelection();
        for (int i = 0; i < floor->m_walls.GetWallCount(); ++i)
            if (floor->m_walls.walls[static_cast<size_t>(i)].start == a &&
                floor->m_walls.walls[static_cast<size_t>(i)].end == b)
                SetTouchSelection(selWall, i, 0);
        Repaint();
        return true;
    }
    case opMoveHole:
    case opMoveHolePoint:
        m_wallSelection.EndResizing();
        m_operation = opNone;
        if (m_mouseMoved)
            CatchUndoStep(true);
        RebuildAfterChange(false);
        Repaint();
        return true;
    case opNewWall:
    case opNewPoly: {
        CVxDPoint end = m_drawEnd;
        const int symbol = FindSymbol(x, y, CVxWallSelection::kindWallVertex);
        if (symbol >= 0)
            end = SymbolVertex(symbol)->Point();
        else if (!m_mouseMoved) {
            bool snapped = false;
            end = GetSnappedWallPoint(*floor, pixels, &snapped, nullptr, nullptr, nullptr);
            m_project->SubUnitCorrection(&end, VX_DF_DECIMAL);
        }
        if (end == m_drawStart) {
            if (m_drawing) {
                m_drawing = false;
                return true;
            }
            OnMouseOperationChanged(opNone);
            return true;
        }
        DeleteTempDimLines();
        if (m_host)
            m_host->EditorSetRubber(0, 0, 0, 0, 0);
        const bool closes = m_operation == opNewPoly && (end == m_polyFirst || symbol >= 0);
        AddNewWall(m_drawStart, end);
        m_drawStart = end;
        m_drawEnd = end;
        m_drawStartWall = -1;
        if (m_operation == opNewPoly && !closes) {
            m_drawing = true;
        } else if (m_operation == opNewWall) {
            // The tool stays armed for the next wall.
            m_operation = opNewWallStart;
        } else {
            OnMouseOperationChanged(opNone);
        }
        Repaint();
        return true;
    }
    case opNewHole:
    case opNewEllipse: {
        CVxDPoint end = pixels / zoom;
        m_project->SubUnitCorrection(&end, VX_DF_DECIMAL);
        if (m_host)
            m_host->EditorSetRubber(0, 0, 0, 0, 0);
        if (std::fabs(end.x - m_drawStart.x) > EPS && std::fabs(end.y - m_drawStart.y) > EPS) {
            CatchUndoStep(true);
            CVxHoleInFloor hole;
            hole.type =
                m_operation == opNewEllipse ? CVxHoleInFloor::TYPE_ELLIPSE : CVxHoleInFloor::TYPE_RECTANGLE;
            hole.x = std::min(end.x, m_drawStart.x);
            hole.y = std::min(end.y, m_drawStart.y);
            hole.width = std::fabs(end.x - m_drawStart.x);
            hole.height = std::fabs(end.y - m_drawStart.y);
            floor->m_walls.holes.push_back(hole);
            RebuildAfterChange(false);
            OnMouseOperationChanged(opNone);
            SetTouchSelection(selHole, floor->m_walls.GetHoleCount() - 1, 0);
        } else {
            OnMouseOperationChanged(opNone);
        }
        Repaint();
        return true;
    }
    case opNewHolePoly:
        return true;
    default:
        return IsNewOperation(m_operation);
    }
}

bool CVxWallEditor::OnDblClick(double x, double y)
{
    CVxFloor* floor = Floor();
    if (!m_active || !floor || !m_plan)
        return false;
    switch (m_operation) {
    case opNewPoly:
    case opNewPolyStart:
        OnMouseOperationChanged(opNone);
        return true;
    case opNewHolePoly: {
        m_newHolePoly.RemoveDuplicates();
        if (m_newHolePoly.GetVertexCount() >= 3) {
            CatchUndoStep(true);
            CVxHoleInFloor hole;
            hole.type = CVxHoleInFloor::TYPE_POLYGON;
            hole.polygon = m_newHolePoly;
            hole.polygon.bezierFlags.assign(hole.polygon.points.size(), false);
            floor->m_walls.holes.push_back(hole);
            RebuildAfterChange(false);
            OnMouseOperationChanged(opNone);
            SetTouchSelection(selHole, floor->m_walls.GetHoleCount() - 1, 0);
        } else {
            OnMouseOperationChanged(opNone);
        }
        m_newHolePoly.Zero();
        Repaint();
        return true;
    }
    case opNone: {
        const int symbol = FindSymbol(x, y, CVxWallSelection::kindWallVertex);
        if (symbol >= 0) {
            SetTouchSelection(selVertex, m_wallSelection.SafeGetSymbol(symbol)->partNo, 0);
            OnPopupWallProperties();
            return true;
        }
        const int hole = floor->m_walls.FindHoleFromPoint(x, y, Zoom());
        if (hole >= 0) {
            SetTouchSelection(selHole, hole, 0);
            OnPopupWallProperties();
            return true;
        }
        bool snapped = false;
        int wall = -1;
        GetSnappedWallPoint(*floor, CVxDPoint(x, y), &snapped, nullptr, &wall, nullptr);
        if (snapped) {
            SetTouchSelection(selWall, wall, 0);
            OnPopupWallProperties();
            return true;
        }
        return false;
    }
    default:
        return false;
    }
}

int CVxWallEditor::GetMouseCursor(unsigned /*modifiers*/, double x, double y)
{
    CVxFloor* floor = Floor();
    if (!m_active || !floor)
        return 1;
    if (IsNewOperation(m_operation))
        return vcCross;
    if (m_operation == opCalibrate)
        return m_calibDrag != 0 || HitCalibrationLine(x, y) != 0 ? vcSizeAll : 1;
    if (m_operation == opMoveHole)
        return vcSizeAll;
    if (m_operation == opMoveHolePoint || m_operation == opMoveVertex)
        return vcCross;
    if (FindSymbol(x, y, -1) >= 0)
        return vcCross;
    static const int perpendicular[4] = {vcSizeVer, vcSizeBDiag, vcSizeHor, vcSizeFDiag};
    const CVxWall* wall = nullptr;
    if (m_operation == opMoveEdge) {
        if (const CVxPlanEdge* edge = m_plan ? m_plan->SafeGetEdge(m_dragEdge) : nullptr)
            wall = floor->m_walls.SafeGetWall(edge->wall);
    } else {
        bool snapped = false;
        int index = -1;
        GetSnappedWallPoint(*floor, CVxDPoint(x, y), &snapped, nullptr, &index, nullptr);
        if (snapped)
            wall = floor->m_walls.SafeGetWall(index);
    }
    if (wall)
        return perpendicular[((static_cast<int>(wall->angle + 720 + 22) / 45) % 4 + 4) % 4];
    if (floor->m_walls.FindHoleFromPoint(x, y, Zoom()) >= 0)
        return vcSizeAll;
    return 1;
}

bool CVxWallEditor::OnKeyArrowsPressed(unsigned key, unsigned modifiers)
{
    CVxFloor* floor = Floor();
    if (!m_active || !floor || m_touchSelItems.empty() || m_operation != opNone)
        return false;
    const double rounded = m_host ? m_host->GetEditorRoundedZoom() : 1.0;
    double step = 1.0 / (rounded > 0 ? rounded : 1.0);
    if (modifiers & kShift)
        step *= 5;
    double dx = 0;
    double dy = 0;
    if (!VX_ArrowKeyOffset(key, step, dx, dy))
        return false;
    // Presses on the same selection join one step.
    const int item = m_touchSelType * 1000003 + m_touchSelItems.front();
    if (m_keyMoveItem != item) {
        CatchUndoStep(true);
        m_keyMoveItem = item;
    }
    MoveSelectedBy(dx, dy);
    return true;
}

void CVxWallEditor::MoveSelectedBy(double dx, double dy)
{
    CVxFloor* floor = Floor();
    std::vector<CVxDPoint> vertices;
    std::vector<std::pair<CVxDPoint, CVxDPoint>> walls;
    m_resizeEdges.clear();
    switch (m_touchSelType) {
    case selVertex:
        for (int item : m_touchSelItems)
            if (CVxPlanVertex* vertex = m_plan->SafeGetVertex(item)) {
                MovePlanEdges(vertex, dx, dy, false, false);
                vertices.push_back(vertex->Point());
            }
        break;
    case selWall:
        for (int item : m_touchSelItems) {
            int edge = -1;
            for (size_t i = 0; i < m_plan->edges.size() && edge < 0; ++i)
                if (m_plan->edges[i]->wall == item)
                    edge = static_cast<int>(i);
            const CVxPlanEdge* e = m_plan->SafeGetEdge(edge);
            if (!e)
                continue;
            // Only the part across the wall moves it.
            const double r = (e->angle - 90) * kPi / 180.0;
            const CVxDPoint across(std::cos(r), std::sin(r));
            BeginEdgeResizing(edge);
            MoveWallFreely(edge, across * (dx * across.x + dy * across.y), false);
            if (const CVxWall* wall = floor->m_walls.SafeGetWall(item))
                walls.emplace_back(wall->start, wall->end);
        }
        break;
    case selHole:
        for (int item : m_touchSelItems)
            if (CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(item)) {
                hole->Move(dx, dy);
                hole->InvalidateCache();
            }
        break;
    case selHolePoint:
        if (CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(m_activeHole))
            for (int item : m_touchSelItems)
                if (item >= 0 && item < hole->polygon.GetVertexCount()) {
                    hole->polygon.points[static_cast<size_t>(item)] += CVxDPoint(dx, dy);
                    hole->InvalidateCache();
                }
        break;
    default:
        break;
    }
    m_resizeEdges.clear();
    AdjustRoomSpace(*m_project, WallBounds(), true);
    RebuildAfterChange(true);
    // The selection follows its items to their new indexes.
    const int type = m_touchSelType;
    if (type == selVertex || type == selWall) {
        m_touchSelItems.clear();
        for (size_t i = 0; i < m_plan->vertices.size() && type == selVertex; ++i)
            for (const CVxDPoint& p : vertices)
                if (m_plan->vertices[i]->Point() == p)
                    m_touchSelItems.push_back(static_cast<int>(i));
        for (int i = 0; i < floor->m_walls.GetWallCount() && type == selWall; ++i)
            for (const auto& [a, b] : walls)
                if (floor->m_walls.walls[static_cast<size_t>(i)].start == a &&
                    floor->m_walls.walls[static_cast<size_t>(i)].end == b)
                    m_touchSelItems.push_back(i);
        if (m_touchSelItems.empty())
            m_touchSelType = selNone;
    }
    m_keyMoveItem = m_touchSelItems.empty() ? -1 : m_touchSelType * 1000003 + m_touchSelItems.front();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->RefreshMainViewStatusBar();
    Repaint();
}

bool CVxWallEditor::OnRectSelect(const CVxDRect& rect)
{
    if (!m_active || m_operation != opNone)
        return false;
    m_touchSelType = selNone;
    m_touchSelItems.clear();
    for (const CVxSelSymbol& symbol : m_wallSelection.GetSymbols()) {
        if (symbol.kind != CVxWallSelection::kindWallVertex)
            continue;
        if (symbol.pos.x >= rect.left && symbol.pos.x <= rect.right && symbol.pos.y >= rect.top &&
            symbol.pos.y <= rect.bottom) {
            m_touchSelType = selVertex;
            m_touchSelItems.push_back(symbol.partNo);
        }
    }
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->RebuildContextToolbar();
    Repaint();
    return true;
}
