// New objects from the library: a pick in the library view hangs the object
// on the pointer until a click fixes it, and a drag from the view carries it
// over the plan until the drop. Either way the object is one undo step, and
// a door or window finds its wall as it moves.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"

#include <cmath>
#include <utility>

namespace {
CVxStringW Msg(int row, const wchar_t* english)
{
    const CVxLocalize* loc = VX_GetLoc();
    return loc ? loc->LocalizeMessage(row, english) : CVxStringW(english);
}
} // namespace

int CVxAppCore::LibAddNewObject(const CVxPart* given, int index, double px, double py)
{
    // Of the editors only the page layout, a sheet like the plan, takes
    // objects from the library.
    if ((m_activeEditor && m_activeEditor->GetID() != VX_EDITOR_PAGE_LAYOUT) || !(m_zoom > 0) ||
        !std::isfinite(px) || !std::isfinite(py))
        return -1;
    CVxPart part;
    if (given)
        part = *given;
    else if (!LibWriteToPart(&part, index))
        return -1;
    if (m_activeEditor && !given && m_project.m_baseZoom > 0) {
        // The library's sizes are the plan's, where a centimetre is a pixel
        // at 100%; on a page layout's sheet an object comes as large as it
        // would look on the plan, and a text keeps its points.
        const double factor = CVxUnits::GetUnitCal(m_project.m_unit) / m_project.m_baseZoom;
        const double points = part.GetFont() ? part.GetFont()->m_size : 0;
        part.Scale(factor, factor, factor, true);
        if (part.GetFont())
            part.GetFont()->m_size = points;
    }
    // Whatever the view was doing ends first; an object still hanging on
    // the pointer from an earlier pick goes.
    if (m_mouseState == msPlacing || m_mouseState == msDropping)
        LibCancelCreatingObject();
    else if (m_mouseState != msIdle)
        MainViewKeyEscPressed();

    // The pointer holds the object by the middle of its outline, wherever
    // the library left its first corner.
    part.x = 0;
    part.y = 0;
    part.inUse = true;
    part.selected = true;
    part.locked = 0;
    part.snapRegion = 0;
    part.InvalidateCache();
    CVxDRect bounds;
    part.GetBoundingRect(&bounds, 1.0);
    const CVxDPoint centre = bounds.CenterPoint();
    double x = px / m_zoom - centre.x;
    double y = py / m_zoom - centre.y;
    m_project.SubUnitCorrection(x, y, VX_DF_DECIMAL);
    part.x = x;
    part.y = y;
    part.InvalidateCache();

    CVxFloor* floor = m_project.GetFloor();
    const int layer = floor->m_layers.GetActiveLayer();
    part.layer = layer;
    CatchUndoRoom(false);
    ClearSelection(false);
    int added = -1;
    CVxPart* slot = floor->GetNewObject(&added, true);
    if (!slot) {
        CatchUndoRoom(true);
        return -1;
    }
    *slot = std::move(part);
    if (slot->snapToWall)
        slot->SnapToWall(&floor->m_walls, slot->x, slot->y, false, false, false);
    floor->m_objectCount = floor->CountUsedObjects();
    if (!floor->m_layers.IsLayerVisible(layer))
        floor->m_layers.SetLayerVisible(layer, true);
    m_firstSelected = added;
    m_dragStartOffset = CVxDPoint(centre.x * m_zoom, centre.y * m_zoom);
    m_lastPointer = CVxDPoint(px, py);
    m_mouseDownPos[0] = px;
    m_mouseDownPos[1] = py;
    AfterSelectionCommand(true);
    return added;
}

bool CVxAppCore::LibStartCreatingObject(CVxPart* part, int index)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    // The pointer may still be over the library view: the object waits
    // under it, out of sight, until the pointer comes over the plan.
    double px = 0;
    double py = 0;
    if (host)
        host->GetCurrentMousePos(px, py);
    const VxPOINT origin = GetObjectOrigin();
    px -= origin.x - m_viewOrigin.x;
    py -= origin.y - m_viewOrigin.y;
    const int added = LibAddNewObject(part, index, px, py);
    if (added < 0)
        return false;
    if (!host || host->IsTouchInterface()) {
        // No pointer to hang on: it stays where it was put.
        CatchUndoRoom(true);
        return true;
    }
    m_movingPart = added;
    m_dragged = true;
    m_mouseState = msPlacing;
    host->SetMainViewStatusMessage(Msg(119, L"Click or press Enter to fix the object."));
    host->SetMainViewCursor(VX_CURSOR_CROSS);
    host->OnNewObjectAdded(added);
    return true;
}

bool CVxAppCore::LibStartCreatingObjectByDropAtPos(int index, int x, int y, bool dropNow)
{
    const VxPOINT origin = GetObjectOrigin();
    const int added = LibAddNewObject(nullptr, index, x - origin.x, y - origin.y);
    if (added < 0)
        return false;
    m_movingPart = added;
    m_dragged = true;
    m_mouseState = msDropping;
    if (dropNow)
        MainViewMouseUp(buttonLeft, 0, x, y, 0);
    return true;
}

bool CVxAppCore::LibCancelCreatingObject()
{
    if ((m_mouseState != msPlacing && m_mouseState != msDropping) || m_movingPart < 0)
        return false;
    m_mouseState = msIdle;
    m_movingPart = -1;
    m_dragged = false;
    if (m_tempDimMode)
        DeleteTempDimLines();
    // The last step holds the plan as it was before the object came; the
    // object goes with it, and leaves nothing to redo.
    MakeUndo();
    m_undo->ClearRedoHistory();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->SetMainViewStatusMessage(CVxStringW());
        host->EnableUndoButtons();
        host->OnPartListingChange();
    }
    OnSelectionChange();
    Repaint();
    return true;
}
