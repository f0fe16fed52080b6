// The selection of the current floor and the commands that act on it:
// deleting, grouping, aligning, spacing, z-order, turning, mirroring,
// locking, duplicating and the format painter.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxHitDist.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "IVxAppHelperCallback.h"
#include "VxEps.h"

#include <algorithm>
#include <cmath>

namespace {
CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

// Objects of hidden and of locked layers are out of the user's hand.
bool IsVisibleOn(const CVxFloor& floor, const CVxPart& part)
{
    return part.inUse && floor.m_layers.IsLayerVisible(part.layer) &&
           !floor.m_layers.IsLayerLocked(part.layer);
}

// The selected objects that a command may change.
template <typename Fn>
void ForEachMovable(CVxFloor* floor, Fn fn)
{
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
        if (part.selected && IsVisibleOn(*floor, part) && !part.IsLocked())
            fn(part, i);
    }
}

CVxDRect Bounds(const CVxPart& part)
{
    CVxDRect rect;
    part.GetBoundingRect(&rect, 1.0);
    return rect;
}

// One axis of a moving rectangle from `low` to `high` against a wall edge
// at `edge`: the far side snaps first, then the near side if it is close
// too, else the near side alone.
void SnapAxis(double low, double high, double edge, double reach, double& delta)
{
    if (std::fabs(high + delta - edge) <= reach) {
        delta = edge - high;
        if (std::fabs(low + delta - edge) <= reach)
            delta = edge - low;
    } else if (std::fabs(low + delta - edge) <= reach) {
        delta = edge - low;
    }
}
} // namespace

int CVxAppCore::FindPartFromPoint(double x, double y, int source, bool preferSelected)
{
    if (source == sourceTouch)
        preferSelected = false;
    CVxFloor* floor = m_project.GetFloor();
    int best = -1;
    int bestLayer = -1;
    for (int i = floor->GetObjectSlotCount() - 1; i >= 0; --i) {
        CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
        if (!IsVisibleOn(*floor, part) || part.IsTempDimLine())
            continue;
        if (best >= 0 && !(part.layer > bestLayer || (preferSelected && part.selected)))
            continue;
        if (!part.PtInPart(x, y, m_zoom, false, -1.0))
            continue;
        best = i;
        bestLayer = part.layer;
        if (preferSelected && part.selected)
            break;
    }
    return best;
}

int CVxAppCore::GetSelCount() const
{
    const CVxFloor* floor = const_cast<CVxProject&>(m_project).GetFloor();
    int count = 0;
    for (const CVxPart& part : floor->m_objects)
        if (part.inUse && part.selected)
            ++count;
    return count;
}

int CVxAppCore::GetFirstSelected() const
{
    const CVxFloor* floor = const_cast<CVxProject&>(m_project).GetFloor();
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        const CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
        if (part.inUse && part.selected)
            return i;
    }
    return -1;
}

void CVxAppCore::OnSelectionChange()
{
    CVxFloor* floor = m_project.GetFloor();
    const CVxPart* last = floor->SafeGetPart(m_firstSelected);
    if (!last || !last->inUse || !last->selected)
        m_firstSelected = GetFirstSelected();
    m_selection.SetProject(&m_project);
    m_selection.Collect(floor, m_zoom);
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->AfterSelectionChanged();
        host->RebuildContextToolbar();
    }
}

bool CVxAppCore::DeselectAllParts()
{
    bool any = false;
    for (CVxPart& part : m_project.GetFloor()->m_objects) {
        any = any || part.selected;
        part.selected = false;
    }
    m_firstSelected = -1;
    return any;
}

void CVxAppCore::SelectionChanged(bool repaint)
{
    OnSelectionChange();
    if (repaint)
        Repaint();
}

void CVxAppCore::SetSelection(int index, bool repaint)
{
    m_keyMoveObject = -1;
    CVxFloor* floor = m_project.GetFloor();
    const CVxPart* target = floor->SafeGetPart(index);
    if (target && target->inUse && target->selected && GetSelCount() == 1) {
        m_firstSelected = index;
        OnSelectionChange();
        return;
    }
    DeselectAllParts();
    CVxPart* part = floor->SafeGetPart(index);
    if (part && part->inUse) {
        part->selected = true;
        m_firstSelected = index;
    }
    SelectionChanged(repaint);
}

void CVxAppCore::SetSelection(const CVxDRect& rect, bool touching, bool repaint)
{
    DeselectAllParts();
    m_keyMoveObject = -1;
    AddToSelection(rect, touching, repaint);
}

void CVxAppCore::AddToSelection(int index, bool repaint)
{
    CVxPart* part = m_project.GetFloor()->SafeGetPart(index);
    if (!part || !part->inUse)
        return;
    part->selected = true;
    m_firstSelected = index;
    m_keyMoveObject = -1;
    SelectionChanged(repaint);
}

void CVxAppCore::AddToSelection(const CVxDRect& rect, bool touching, bool repaint)
{
    CVxFloor* floor = m_project.GetFloor();
    if (rect.Width() < 3 && rect.Height() < 3) {
        // A band this small is a click: the object there changes sides.
        const int hit = FindPartFromPoint(rect.left, rect.top, 0, false);
        if (CVxPart* part = floor->SafeGetPart(hit)) {
            part->selected = !part->selected;
            if (part->selected)
                m_firstSelected = hit;
        }
    } else {
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            touching = touching || host->IsTouchInterface();
        const CVxDRect units(rect.left / m_zoom, rect.top / m_zoom, rect.right / m_zoom,
                             rect.bottom / m_zoom);
        for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
            CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
            if (!IsVisibleOn(*floor, part) || part.IsTempDimLine())
                continue;
            const CVxDRect b = Bounds(part);
            const bool inside = b.left >= units.left && b.right <= units.right && b.top >= units.top &&
                                b.bottom <= units.bottom;
            const bool meets = b.left <= units.right && b.right >= units.left && b.top <= units.bottom &&
                               b.bottom >= units.top;
            if (touching ? meets : inside) {
                part.selected = true;
                m_firstSelected = i;
            }
        }
    }
    m_keyMoveObject = -1;
    SelectionChanged(repaint);
}

void CVxAppCore::RemoveFromSelection(int index, bool repaint)
{
    CVxPart* part = m_project.GetFloor()->SafeGetPart(index);
    if (!part)
        return;
    part->selected = false;
    if (m_firstSelected == index)
        m_firstSelected = GetFirstSelected();
    m_keyMoveObject = -1;
    SelectionChanged(repaint);
}

void CVxAppCore::ClearSelection(bool repaint)
{
    const bool any = DeselectAllParts();
    m_keyMoveObject = -1;
    SelectionChanged(repaint && any);
}

void CVxAppCore::SelectAll()
{
    CVxFloor* floor = m_project.GetFloor();
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
        if (IsVisibleOn(*floor, part) && !part.IsTempDimLine()) {
            part.selected = true;
            if (m_firstSelected < 0)
                m_firstSelected = i;
        }
    }
    OnSelectionChange();
    Repaint();
}

void CVxAppCore::MoveSelection(double dx, double dy, VxRECT* dirty)
{
    CVxFloor* floor = m_project.GetFloor();
    ForEachMovable(floor, [&](CVxPart& part, int) {
        VxRECT before;
        part.GetCachedDrawingRect(&before, 0, 0, m_zoom);
        VxGrowDirtyRect(dirty, before);
        part.x += dx;
        part.y += dy;
        part.InvalidateCache();
        if (part.snapToWall)
            part.SnapToWall(&floor->m_walls, part.x, part.y, false, false, false);
        VxRECT after;
        part.GetCachedDrawingRect(&after, 0, 0, m_zoom);
        VxGrowDirtyRect(dirty, after);
    });
    if (dirty) {
        // The handles stand off the objects.
        const int margin = CVxPartSelection::SymbolDist() + CVxPartSelection::SymbolRotDist() + 12;
        dirty->left -= margin;
        dirty->top -= margin;
        dirty->right += margin;
        dirty->bottom += margin;
    }
    m_selection.Collect(floor, m_zoom);
}

void CVxAppCore::SnapMovingSelectionToWalls(double& dx, double& dy)
{
    CVxFloor* floor = m_project.GetFloor();
    if (m_movingPart < 0 || m_zoom <= 0)
        return;
    SVxRectUnion moving;
    for (CVxPart& part : floor->m_objects) {
        if (!part.inUse || !part.selected)
            continue;
        if (part.snapToWall)
            return; // a wall's opening slides along its wall instead
        moving.Add(Bounds(part));
    }
    if (moving.empty)
        return;
    const CVxDRect& r = moving.rect;
    const int region = m_floorPlan.FindRegion(r.CenterPoint());
    const CVxFloorRegion* room = m_floorPlan.SafeGetRegion(region);
    if (!room)
        return;
    const double reach = (CVxHitDist::WallSnap() / 3) / m_zoom;
    const CVxDPolygon& poly = room->innerPolygon;
    const int n = poly.GetVertexCount();
    for (int i = 0; i < n; ++i) {
        if (poly.IsEdgeCurved(i))
            continue;
        const CVxDPoint& a = poly.points[static_cast<size_t>(i)];
        const CVxDPoint& b = poly.points[static_cast<size_t>((i + 1) % n)];
        if (std::fabs(a.x - b.x) < EPS) {
            const double lo = std::min(a.y, b.y), hi = std::max(a.y, b.y);
            if (r.bottom + dy < lo || r.top + dy > hi)
                continue;
            SnapAxis(r.left, r.right, a.x, reach, dx);
        } else if (std::fabs(a.y - b.y) < EPS) {
            const double lo = std::min(a.x, b.x), hi = std::max(a.x, b.x);
            if (r.right + dx < lo || r.left + dx > hi)
                continue;
            SnapAxis(r.top, r.bottom, a.y, reach, dy);
        }
    }
}

void CVxAppCore::AfterSelectionCommand(bool listingChanged)
{
    m_project.m_modified = true;
    OnSelectionChange();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        if (listingChanged)
            host->OnPartListingChange();
        host->EnableUndoButtons();
    }
    Repaint();
}

void CVxAppCore::DeleteSelectedObjects()
{
    if (GetSelCount() == 0)
        return;
    CatchUndoRoom(true);
    CVxFloor* floor = m_project.GetFloor();
    for (CVxPart& part : floor->m_objects)
        if (part.inUse && part.selected && !part.IsLocked()) {
            part = CVxPart();
            part.inUse = false;
        }
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = -1;
    AfterSelectionCommand(true);
}

void CVxAppCore::GroupSelectedObjects()
{
    if (m_firstSelected < 0 || GetSelCount() == 0)
        return;
    CVxFloor* floor = m_project.GetFloor();
    std::vector<int> members;
    SVxRectUnion bounds;
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        const CVxPart& part = floor->m_objects[static_cast<size_t>(i)];
        if (!part.inUse || !part.selected || !part.HasCap(capGroup) || part.IsLocked())
            continue;
        members.push_back(i);
        bounds.Add(Bounds(part));
    }
    const CVxDRect& rect = bounds.rect;
    if (members.empty() || rect.Width() <= 0 || rect.Height() <= 0)
        return;
    CatchUndoRoom(true);
    CVxPart group;
    group.Reset();
    group.inUse = true;
    group.type = ptComplexObject;
    group.x = rect.left;
    group.y = rect.top;
    group.width = rect.Width();
    group.height = rect.Height();
    group.layer = floor->m_objects[static_cast<size_t>(members.front())].layer;
    double zTop = 0;
    double zBottom = 1e300;
    const double scale = 1000.0 / group.width;
    for (int i : members) {
        CVxPart member = floor->m_objects[static_cast<size_t>(i)];
        member.selected = false;
        member.snapToWall = false;
        member.x = (member.x - group.x) * scale;
        member.y = (member.y - group.y) * scale;
        member.width *= scale;
        member.height *= scale;
        zBottom = std::min(zBottom, member.z);
        zTop = std::max(zTop, member.z + member.zHeight);
        member.InvalidateCache();
        group.subParts.push_back(std::move(member));
        floor->m_objects[static_cast<size_t>(i)] = CVxPart();
    }
    group.z = zBottom < 1e299 ? zBottom : 0;
    group.zHeight = std::max(1.0, zTop - group.z);
    for (CVxPart& member : group.subParts)
        member.z -= group.z;
    // The group takes the place of its first member in the drawing order.
    floor->m_objects[static_cast<size_t>(members.front())] = std::move(group);
    CVxPart& placed = floor->m_objects[static_cast<size_t>(members.front())];
    placed.selected = true;
    placed.InvalidateCache();
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = members.front();
    AfterSelectionCommand(true);
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->OnNewObjectAdded(m_firstSelected);
}

void CVxAppCore::UngroupSelectedObject()
{
    CVxFloor* floor = m_project.GetFloor();
    CVxPart* group = floor->SafeGetPart(m_firstSelected);
    if (!group || !group->inUse || !group->selected || group->type != ptComplexObject || group->IsLocked() ||
        group->width <= 0)
        return;
    CatchUndoRoom(true);
    const CVxPart copy = *group;
    const int at = m_firstSelected;
    DeselectAllParts();
    const double scale = copy.width / 1000.0;
    const double r = copy.rotation * 3.14159265358979323846 / 180.0;
    const double c = std::cos(r), s = std::sin(r);
    std::vector<CVxPart> members;
    for (CVxPart member : copy.subParts) {
        const double lx = member.x * scale;
        const double ly = member.y * scale;
        member.x = copy.x + lx * c - ly * s;
        member.y = copy.y + lx * s + ly * c;
        member.width *= scale;
        member.height *= scale;
        member.z += copy.z;
        member.rotation = std::fmod(member.rotation + copy.rotation, 360.0);
        member.layer = copy.layer;
        member.selected = true;
        member.inUse = true;
        member.InvalidateCache();
        members.push_back(std::move(member));
    }
    floor->m_objects.erase(floor->m_objects.begin() + at);
    floor->m_objects.insert(floor->m_objects.begin() + at, members.begin(), members.end());
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = members.empty() ? -1 : at;
    AfterSelectionCommand(true);
}

void CVxAppCore::AlignSelectedObjects(int mode)
{
    if (GetSelCount() == 0 || mode < 1 || mode > 6)
        return;
    CVxFloor* floor = m_project.GetFloor();
    const CVxOptions* options = VX_GetOptions();
    SVxRectUnion movable;
    ForEachMovable(floor, [&](CVxPart& part, int) { movable.Add(Bounds(part)); });
    if (movable.empty)
        return;
    CVxDRect ref = movable.rect;
    if (options->m_alignWithRespectToRoom) {
        const CVxFloorRegion* room = m_floorPlan.SafeGetRegion(m_floorPlan.FindRegion(ref.CenterPoint()));
        ref = room ? room->innerPolygon.GetBoundingRect()
                   : CVxDRect(0, 0, m_project.m_width, m_project.m_height);
    } else if (options->m_alignWithRespectToDrawing) {
        ref = CVxDRect(0, 0, m_project.m_width, m_project.m_height);
    }
    CatchUndoRoom(true);
    ForEachMovable(floor, [&](CVxPart& part, int) {
        const CVxDRect b = Bounds(part);
        double dx = 0, dy = 0;
        switch (mode) {
        case 1:
            dx = ref.left - b.left;
            break;
        case 2:
            dx = ref.CenterPoint().x - b.CenterPoint().x;
            break;
        case 3:
            dx = ref.right - b.right;
            break;
        case 4:
            dy = ref.top - b.top;
            break;
        case 5:
            dy = ref.CenterPoint().y - b.CenterPoint().y;
            break;
        default:
            dy = ref.bottom - b.bottom;
            break;
        }
        part.x += dx;
        part.y += dy;
        part.InvalidateCache();
        if (part.snapToWall)
            part.SnapToWall(&floor->m_walls, part.x, part.y, false, false, false);
    });
    AfterSelectionCommand(true);
}

void CVxAppCore::SpaceEquallySelectedObjects(int mode)
{
    CVxFloor* floor = m_project.GetFloor();
    struct SItem
    {
        int index;
        CVxDRect rect;
    };
    std::vector<SItem> items;
    ForEachMovable(floor, [&](CVxPart& part, int i) { items.push_back({i, Bounds(part)}); });
    if (items.size() < 3)
        return;
    const bool horizontal = mode == 1;
    std::stable_sort(items.begin(), items.end(), [horizontal](const SItem& a, const SItem& b) {
        return horizontal ? a.rect.left < b.rect.left : a.rect.top < b.rect.top;
    });
    double occupied = 0;
    for (const SItem& item : items)
        occupied += horizontal ? item.rect.Width() : item.rect.Height();
    const double start = horizontal ? items.front().rect.left : items.front().rect.top;
    const double end = horizontal ? items.back().rect.right : items.back().rect.bottom;
    const double gap = (end - start - occupied) / static_cast<double>(items.size() - 1);
    CatchUndoRoom(true);
    double at = start;
    for (size_t k = 0; k < items.size(); ++k) {
        const SItem& item = items[k];
        const double size = horizontal ? item.rect.Width() : item.rect.Height();
        if (k > 0 && k + 1 < items.size()) {
            CVxPart& part = floor->m_objects[static_cast<size_t>(item.index)];
            const double shift = at - (horizontal ? item.rect.left : item.rect.top);
            (horizontal ? part.x : part.y) += shift;
            part.InvalidateCache();
        }
        at += size + gap;
    }
    AfterSelectionCommand(true);
}

void CVxAppCore::ReorderSelection(bool selectedLast)
{
    CVxFloor* floor = m_project.GetFloor();
    std::stable_partition(
        floor->m_objects.begin(), floor->m_objects.end(), [selectedLast](const CVxPart& part) {
            return selectedLast ? !(part.inUse && part.selected) : (part.inUse && part.selected);
        });
    m_firstSelected = GetFirstSelected();
}

void CVxAppCore::ZOrderBringToFront()
{
    if (GetSelCount() == 0)
        return;
    CatchUndoRoom(true);
    ReorderSelection(true);
    AfterSelectionCommand(true);
}

void CVxAppCore::ZOrderSendToBack()
{
    if (GetSelCount() == 0)
        return;
    CatchUndoRoom(true);
    ReorderSelection(false);
    AfterSelectionCommand(true);
}

void CVxAppCore::ZOrderStep(bool forward)
{
    CVxFloor* floor = m_project.GetFloor();
    std::vector<CVxPart>& parts = floor->m_objects;
    const int count = static_cast<int>(parts.size());
    int top = -1, bottom = -1;
    SVxRectUnion selectedArea;
    for (int i = 0; i < count; ++i) {
        if (!parts[static_cast<size_t>(i)].inUse || !parts[static_cast<size_t>(i)].selected)
            continue;
        selectedArea.Add(Bounds(parts[static_cast<size_t>(i)]));
        if (bottom < 0)
            bottom = i;
        top = i;
    }
    const CVxDRect& area = selectedArea.rect;
    if (top < 0)
        return;
    auto overlaps = [&](const CVxPart& part) {
        const CVxDRect b = Bounds(part);
        return part.inUse && !part.selected && b.left < area.right && b.right > area.left &&
               b.top < area.bottom && b.bottom > area.top;
    };
    int target = -1;
    if (forward) {
        for (int i = top + 1; i < count && target < 0; ++i)
            if (overlaps(parts[static_cast<size_t>(i)]))
                target = i;
    } else {
        for (int i = bottom - 1; i >= 0 && target < 0; --i)
            if (overlaps(parts[static_cast<size_t>(i)]))
                target = i;
    }
    if (target < 0)
        return;
    CatchUndoRoom(true);
    std::vector<CVxPart> selected, rest;
    int restBefore = 0;
    for (int i = 0; i < count; ++i) {
        CVxPart& part = parts[static_cast<size_t>(i)];
        if (part.inUse && part.selected) {
            selected.push_back(std::move(part));
        } else {
            if (i < target || (forward && i == target))
                ++restBefore;
            rest.push_back(std::move(part));
        }
    }
    rest.insert(rest.begin() + restBefore, std::make_move_iterator(selected.begin()),
                std::make_move_iterator(selected.end()));
    parts = std::move(rest);
    m_firstSelected = GetFirstSelected();
    AfterSelectionCommand(true);
}

void CVxAppCore::ZOrderBringForward()
{
    ZOrderStep(true);
}

void CVxAppCore::ZOrderSendBackward()
{
    ZOrderStep(false);
}

void CVxAppCore::ZOrderOrderbyZposition(bool repaint)
{
    CatchUndoRoom(true);
    m_project.GetFloor()->OrderPartsByZposition(true, false);
    m_firstSelected = GetFirstSelected();
    OnSelectionChange();
    if (repaint)
        AfterSelectionCommand(true);
}

void CVxAppCore::RotateSelectedObjects(double degrees)
{
    if (GetSelCount() == 0)
        return;
    CatchUndoRoom(true);
    CVxFloor* floor = m_project.GetFloor();
    ForEachMovable(floor, [&](CVxPart& part, int) {
        if (!part.HasCap(capRotate) || part.snapToWall)
            return;
        part.RotateAroundCenter(part.rotation + degrees);
    });
    AfterSelectionCommand(true);
}

void CVxAppCore::FlipSelectedObjects(bool vertical)
{
    if (GetSelCount() == 0)
        return;
    CatchUndoRoom(true);
    ForEachMovable(m_project.GetFloor(), [&](CVxPart& part, int) {
        part.Mirror(!vertical);
        part.InvalidateCache();
    });
    AfterSelectionCommand(true);
}

void CVxAppCore::LockSelectedObjects(unsigned bit)
{
    if (GetSelCount() == 0)
        return;
    CatchUndoRoom(true);
    CVxFloor* floor = m_project.GetFloor();
    const CVxPart* primary = floor->SafeGetPart(m_firstSelected);
    const unsigned primaryLocked = primary ? primary->locked : 0;
    for (CVxPart& part : floor->m_objects)
        if (part.inUse && part.selected)
            part.ApplyLockCommand(bit, primaryLocked);
    AfterSelectionCommand(false);
}

void CVxAppCore::ActivateFormatPainter(bool on, bool sticky)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!on) {
        if (IsFormatPainterOn())
            m_mouseState = msIdle;
        m_painterSource.reset();
    } else {
        const CVxPart* source = m_project.GetFloor()->SafeGetPart(m_firstSelected);
        if (!source || !source->inUse)
            return;
        m_painterSource = std::make_unique<CVxPart>(*source);
        m_mouseState = sticky ? msPainterSticky : msPainterOnce;
    }
    if (host) {
        host->CheckMainToolbarButton(VX_TB_FORMAT_PAINTER, on);
        host->SetMainViewCursor(on ? VX_CURSOR_PAINTER : VX_CURSOR_ARROW);
    }
}

void CVxAppCore::ApplyFormatPainterToObject(int index)
{
    CVxPart* target = m_project.GetFloor()->SafeGetPart(index);
    if (!m_painterSource || !target || !target->inUse || target->IsLocked())
        return;
    CatchUndoRoom(true);
    const CVxPart& source = *m_painterSource;
    if (target->HasCap(capFillColor) && source.HasCap(capFillColor)) {
        target->appearFill = source.appearFill;
        target->fillStyle = source.fillStyle;
    }
    if (target->HasCap(capFrontColor) && source.HasCap(capFrontColor)) {
        target->appearFront = source.appearFront;
        target->frontColorEnable = source.frontColorEnable;
    }
    if (target->HasCap(capLineThickness) && source.HasCap(capLineThickness)) {
        target->lineThick = source.lineThick;
        target->lineStyle = source.lineStyle;
    }
    if (target->HasCap(capLineColor) && source.HasCap(capLineColor))
        target->lineColor = source.lineColor;
    target->textColor = source.textColor;
    if (target->type == ptMeasLine && source.type == ptMeasLine)
        target->lineEnds = source.lineEnds;
    target->SetPropertiesToSubParts();
    target->InvalidateCache();
    AfterSelectionCommand(false);
}

void CVxAppCore::DuplicateSelectedObjects()
{
    if (GetSelCount() == 0)
        return;
    CVxFloor* floor = m_project.GetFloor();
    std::vector<CVxPart> copies;
    SVxRectUnion bounds;
    for (const CVxPart& part : floor->m_objects) {
        if (!part.inUse || !part.selected || !part.HasCap(capDuplicate))
            continue;
        copies.push_back(part);
        bounds.Add(Bounds(part));
    }
    const CVxDRect& rect = bounds.rect;
    if (copies.empty())
        return;
    CatchUndoRoom(true);
    const double dx = rect.Width() / 10.0;
    const double dy = rect.Height() / 10.0 / 2.0 + dx;
    DeselectAllParts();
    int last = -1;
    for (CVxPart& copy : copies) {
        copy.PrepareAsDuplicate();
        copy.x += dx;
        copy.y += dy;
        copy.selected = true;
        copy.InvalidateCache();
        int index = -1;
        CVxPart* slot = floor->GetNewObject(&index, true);
        *slot = std::move(copy);
        if (slot->snapToWall)
            slot->SnapToWall(&floor->m_walls, slot->x, slot->y, false, false, false);
        last = index;
    }
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = last;
    AfterSelectionCommand(true);
    if (copies.size() == 1) {
        PlaceOnCursor(last);
    }
}

void CVxAppCore::PlaceOnCursor(int index)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    CVxPart* part = m_project.GetFloor()->SafeGetPart(index);
    if (!part || !host || host->IsTouchInterface())
        return;
    m_movingPart = index;
    m_dragged = true;
    m_undoArmed = false;
    m_mouseState = msPlacing;
    m_dragStartOffset = CVxDPoint(m_lastPointer.x - part->x * m_zoom, m_lastPointer.y - part->y * m_zoom);
    host->SetMainViewStatusMessage(Msg(119, L"Click or press Enter to fix the object."));
    host->SetMainViewCursor(VX_CURSOR_CROSS);
}
