// Commands by number: texts, icons and shortcuts from the command table, what
// the plan view's state allows, and running them. The active special editor
// is asked first throughout, which is how the tool bar changes its meaning
// while walls are being edited.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "IVxAppHelperCallback.h"
#include "VxCommandTable.h"
#include "VxUtf8.h"

#include <algorithm>

namespace {

// The toolbar table's row for the second line of the format painter's hint.
constexpr int painterHintRow = 300;

// The current floor without the repair that GetFloor makes; null when there
// is none.
const CVxFloor* CurrentFloor(const CVxProject& project)
{
    const int index = project.m_currentFloor;
    if (index < 0 || index >= project.GetFloorCount())
        return nullptr;
    return project.m_floors[static_cast<size_t>(index)];
}

const CVxPart* SelectedPart(const CVxProject& project, int index)
{
    const CVxFloor* floor = CurrentFloor(project);
    if (!floor || index < 0)
        return nullptr;
    const CVxPart* part = floor->SafeGetPart(index);
    return part && part->inUse ? part : nullptr;
}

bool IsGroup(const CVxPart* part)
{
    return part && part->type == ptComplexObject;
}

bool AnySelectedLocked(const CVxProject& project)
{
    const CVxFloor* floor = CurrentFloor(project);
    if (!floor)
        return false;
    for (const CVxPart& part : floor->m_objects)
        if (part.inUse && part.selected && part.locked != 0)
            return true;
    return false;
}

} // namespace

CVxStringW CVxAppCore::GetMainToolbarButtonHint(EVxMainToolbarButtonCode code, bool withShortcut) const
{
    CVxStringW text;
    if (!m_activeEditor || !m_activeEditor->GetMainToolbarButtonHint(code, text) || text.IsEmpty()) {
        const SVxCommandFacts* facts = VX_GetCommandFacts(code);
        if (!facts || !facts->text)
            return CVxStringW();
        CVxLocalize* loc = VX_GetLoc();
        text = loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_TOOLBAR), code, facts->text);
    }
    unsigned modifiers = 0;
    unsigned key = 0;
    if (withShortcut && GetMainToolbarButtonShortcut(code, modifiers, key)) {
        const CVxStringW shortcut = ShortcutToString(modifiers, key);
        if (!shortcut.IsEmpty())
            text += L" (" + shortcut + L")";
    }
    if (code == VX_TB_FORMAT_PAINTER || code == VX_TB_CTX_FORMAT_PAINTER) {
        CVxLocalize* loc = VX_GetLoc();
        text += L"\n" + loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_TOOLBAR), painterHintRow,
                                               L"Double-click to apply to multiple objects");
    }
    return text;
}

CVxStringW CVxAppCore::GetMainToolbarButtonIconName(EVxMainToolbarButtonCode code, bool& mirrorable,
                                                    bool& autoDark) const
{
    mirrorable = false;
    autoDark = false;
    const SVxCommandFacts* facts = VX_GetCommandFacts(code);
    if (!facts || !facts->icon)
        return CVxStringW();
    mirrorable = facts->mirrorable;
    autoDark = facts->autoDark;
    return CVxStringW(CVxStringA(facts->icon));
}

bool CVxAppCore::GetMainToolbarButtonShortcut(EVxMainToolbarButtonCode code, unsigned& modifiers,
                                              unsigned& key) const
{
    modifiers = 0;
    key = 0;
    if (m_activeEditor && m_activeEditor->GetMainToolbarButtonShortcut(code, modifiers, key))
        return key != 0;
    const SVxCommandFacts* facts = VX_GetCommandFacts(code);
    if (!facts || facts->key == 0)
        return false;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (host && host->PrefersKeyboardShortcutsWithCmdKey()) {
        modifiers = facts->cmdModifiers;
        key = facts->cmdKey;
    } else {
        modifiers = facts->modifiers;
        key = facts->key;
    }
    return true;
}

bool CVxAppCore::IsMainToolbarButtonCheckable(EVxMainToolbarButtonCode code) const
{
    const SVxCommandFacts* facts = VX_GetCommandFacts(code);
    return facts && facts->checkable;
}

unsigned CVxAppCore::GetMainToolbarButtonInterfacePresence(EVxMainToolbarButtonCode code) const
{
    // The table of presence covers the codes of the main tool bar; all
    // later commands appear everywhere.
    if (code < 1 || code > VX_TB_CTX_UNGROUP)
        return 255;
    return VX_GetCommandFacts(code)->presence;
}

bool CVxAppCore::IsMainToolbarButtonForInterface(EVxMainToolbarButtonCode code, unsigned interfaceMask) const
{
    return (GetMainToolbarButtonInterfacePresence(code) & interfaceMask) != 0;
}

CVxStringW CVxAppCore::ShortcutToString(unsigned modifiers, unsigned key)
{
    if (key == 0)
        return CVxStringW();
    CVxStringW text;
    if (modifiers & modCtrl)
        text += L"Ctrl+";
    if (modifiers & modShift)
        text += L"Shift+";
    if (modifiers & modAlt)
        text += L"Alt+";
    static const wchar_t* const named[] = {L"left", L"right", L"up", L"down", L"Esc", L"Enter", L"Del"};
    if (key >= VX_KEY_LEFT && key <= VX_KEY_DELETE) {
        text += named[key - VX_KEY_LEFT];
    } else if (key == VX_KEY_PGUP) {
        text += L"PgUp";
    } else if (key == VX_KEY_PGDN) {
        text += L"PgDn";
    } else if (key >= VX_KEY_F1 && key <= VX_KEY_F12) {
        CVxStringW number;
        number.sprintf(L"F%u", key - VX_KEY_F1 + 1);
        text += number;
    } else if (key >= 32 && key < VX_KEY_LEFT) {
        const wchar_t character[2] = {static_cast<wchar_t>(key), 0};
        text += character;
    } else {
        return CVxStringW();
    }
    return text;
}

bool CVxAppCore::DoMainToolbarButtonAction(EVxMainToolbarButtonCode code)
{
    if (m_activeEditor && m_activeEditor->OnMainToolbarButtonAction(code))
        return true;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    CVxOptions* options = VX_GetOptions();
    bool viewFlag = false;
    switch (code) {
    case VX_TB_ACCEPT_CLOSE:
        if (!m_activeEditor)
            return false;
        DeactivateActiveEditor(false, false);
        break;
    case VX_TB_DISCARD_CLOSE:
        if (!m_activeEditor)
            return false;
        DeactivateActiveEditor(true, false);
        break;
    case VX_TB_EDIT_WALLS:
        if (m_activeEditor)
            return false;
        ActivateSpecialEditor(VX_EDITOR_WALL);
        break;
    case VX_TB_NEW_WALL:
    case VX_TB_NEW_WALL_POLYGON:
    case VX_TB_NEW_FLOOR_OPENING:
    case VX_TB_NEW_ELLIPTIC_OPENING:
    case VX_TB_NEW_POLYGON_OPENING:
        // A drawing tool of the plain plan opens the wall editor with it.
        if (m_activeEditor || !ActivateSpecialEditor(VX_EDITOR_WALL) || !m_activeEditor)
            return false;
        m_activeEditor->OnMainToolbarButtonAction(code);
        break;
    case VX_TB_DIMENSION_ALL_WALLS:
        DimensionAllWalls();
        break;
    case VX_TB_CTX_DIMENSION_WALL: {
        // The wall nearest to where the menu was asked for.
        const double zoom = m_zoom > 0 ? m_zoom : 1.0;
        const int wall = m_project.GetFloor()->m_walls.GetNearestWall(
            m_lastPointer.x / zoom, m_lastPointer.y / zoom, nullptr, -19182.0);
        DimensionOneWall(wall);
        break;
    }
    case VX_TB_UNDO:
        MakeUndo();
        break;
    case VX_TB_REDO:
        MakeRedo();
        break;
    case VX_TB_FORMAT_PAINTER:
    case VX_TB_CTX_FORMAT_PAINTER:
        ActivateFormatPainter(!IsFormatPainterOn(), false);
        CheckViewMenuItems();
        break;
    case VX_TB_GROUP:
    case VX_TB_CTX_GROUP:
        GroupSelectedObjects();
        break;
    case VX_TB_CTX_UNGROUP:
        UngroupSelectedObject();
        break;
    case VX_TB_NEW_MEASUREMENT:
        StartMeasuring();
        break;
    case VX_TB_ADD_DIMENSION_LINE:
        StartDimensionLine();
        break;
    case VX_TB_ADD_LABEL:
    case VX_TB_ADD_LABEL_HERE:
        AddLabelAtPointer();
        break;
    case VX_TB_MULTI_SELECT:
        SetMultiSelectMode(!IsMultiSelectMode());
        break;
    case VX_TB_SELECTION_TOOL:
        // Whatever tool was on, the pointer selects again.
        if (m_mouseState == msPlacing || m_mouseState == msMeasureWait || IsFormatPainterOn())
            m_mouseState = msIdle;
        CheckMouseStateToolbarButtons(code);
        CheckViewMenuItems();
        break;
    case VX_TB_ROTATE_LEFT:
    case VX_TB_CTX_ROTATE_LEFT:
        RotateSelectedObjects(270);
        break;
    case VX_TB_ROTATE_RIGHT:
    case VX_TB_CTX_ROTATE_RIGHT:
        RotateSelectedObjects(90);
        break;
    case VX_TB_CTX_ROTATE_180:
        RotateSelectedObjects(180);
        break;
    case VX_TB_FLIP_HORIZONTALLY:
    case VX_TB_CTX_FLIP_HORIZONTALLY:
        FlipSelectedObjects(false);
        break;
    case VX_TB_FLIP_VERTICALLY:
    case VX_TB_CTX_FLIP_VERTICALLY:
        FlipSelectedObjects(true);
        break;
    case VX_TB_ADD_FLOOR:
        AddNewFloor();
        break;
    case VX_TB_REMOVE_FLOOR:
        RemoveCurrentFloor(true);
        break;
    case VX_TB_SWAP_HIGHER_FLOOR:
        SwapCurrentFloor(true);
        break;
    case VX_TB_SWAP_LOWER_FLOOR:
        SwapCurrentFloor(false);
        break;
    case VX_TB_FLOOR_UP:
        GoToFloor(m_project.m_currentFloor + 1);
        break;
    case VX_TB_FLOOR_DOWN:
        GoToFloor(m_project.m_currentFloor - 1);
        break;
    case VX_TB_CUT:
        CutSelectedObjectsToClipboard();
        break;
    case VX_TB_COPY:
    case VX_TB_CTX_COPY:
        CopySelectedObjectsToClipboard();
        break;
    case VX_TB_PASTE:
        if (host)
            PasteObjectsFromClipboard(host->GetClipboardText());
        break;
    case VX_TB_SELECT_ALL:
        SelectAll();
        break;
    case VX_TB_DESELECT:
        ClearSelection(true);
        break;
    case VX_TB_REMOVE_ALL_DIMENSIONS:
        DeleteAllDimensionLines();
        break;
    case VX_TB_EXPORT_STATISTICS:
        if (host)
            host->SetClipboardText(VX_StringToUTF8(GetFloorStatistics()));
        break;
    case VX_TB_INSERT_AREAS:
        // Without the host's dialog: empty rooms numbered, areas in the
        // statistical unit.
        InsertAreaLabels(true, -1);
        break;
    case VX_TB_BLACK_WHITE:
        m_drawBlackWhite = !m_drawBlackWhite;
        viewFlag = true;
        break;
    case VX_TB_SHOW_ANNOTATIONS:
        m_showAnnotations = !m_showAnnotations;
        viewFlag = true;
        break;
    case VX_TB_FLOOR_TEXTURES:
        options->m_drawFloorTextures = !options->m_drawFloorTextures;
        viewFlag = true;
        break;
    case VX_TB_SHOW_GRID:
        options->m_showGrid = !options->m_showGrid;
        viewFlag = true;
        break;
    case VX_TB_SHOW_GRID_LABELS:
        options->m_showGridLabels = !options->m_showGridLabels;
        viewFlag = true;
        break;
    case VX_TB_SHOW_CAPTIONS:
        options->m_showCaptions = !options->m_showCaptions;
        viewFlag = true;
        break;
    case VX_TB_CTX_REMOVE:
        DeleteSelectedObjects();
        break;
    case VX_TB_CTX_LOCK:
        LockSelectedObjects(CVxPart::ctxLock);
        break;
    case VX_TB_CTX_LOCK_SIZE:
        LockSelectedObjects(CVxPart::ctxLockSize);
        break;
    case VX_TB_CTX_UNLOCK:
        LockSelectedObjects(0);
        break;
    case VX_TB_CTX_DUPLICATE:
        DuplicateSelectedObjects();
        break;
    case VX_TB_CTX_DIMENSION_OBJECT:
        DimensionSelectedObjects();
        break;
    case VX_TB_BRING_FORWARD:
    case VX_TB_ZORDER_FORWARD:
        ZOrderBringForward();
        break;
    case VX_TB_SEND_BACKWARD:
    case VX_TB_ZORDER_BACKWARD:
        ZOrderSendBackward();
        break;
    case VX_TB_ZORDER_FRONT:
        ZOrderBringToFront();
        break;
    case VX_TB_ZORDER_BACK:
        ZOrderSendToBack();
        break;
    case VX_TB_ZORDER_BY_Z:
        ZOrderOrderbyZposition(true);
        break;
    case VX_TB_ALIGN_LEFT:
    case VX_TB_ALIGN_HCENTER:
    case VX_TB_ALIGN_RIGHT:
    case VX_TB_ALIGN_TOP:
    case VX_TB_ALIGN_VCENTER:
    case VX_TB_ALIGN_BOTTOM:
        AlignSelectedObjects(code - VX_TB_ALIGN_LEFT + 1);
        break;
    case VX_TB_DISTRIBUTE_HORIZONTALLY:
        SpaceEquallySelectedObjects(1);
        break;
    case VX_TB_DISTRIBUTE_VERTICALLY:
        SpaceEquallySelectedObjects(2);
        break;
    default:
        return false;
    }
    if (viewFlag) {
        CheckViewMenuItems();
        if (host)
            host->DrawRoom(nullptr);
    }
    return true;
}

bool CVxAppCore::IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code) const
{
    if (m_activeEditor)
        return m_activeEditor->IsMainToolbarButtonVisible(code);
    const int selected = GetSelCount();
    const CVxPart* first = SelectedPart(m_project, GetFirstSelected());
    const bool oneGroup = selected == 1 && IsGroup(first);
    switch (code) {
    case VX_TB_LAYERS: {
        const CVxFloor* floor = CurrentFloor(m_project);
        return floor && floor->m_layers.GetLayerCount() >= 2;
    }
    case VX_TB_BUILD_ON_IMAGE:
        return m_mouseState == msPlacing;
    case VX_TB_GROUP:
        return !oneGroup;
    case VX_TB_CTX_UNGROUP:
        return oneGroup;
    case VX_TB_SHOPPING_CART:
        // Shown only for textures of manufacturers, which no library has yet.
        return false;
    case VX_TB_ACCEPT_CLOSE:
    case VX_TB_DISCARD_CLOSE:
        // Only an active editor has changes to accept or discard.
        return false;
    case VX_TB_SELECTION_TOOL:
    case VX_TB_NEW_WALL:
    case VX_TB_NEW_WALL_POLYGON:
    case VX_TB_NEW_FLOOR_OPENING:
    case VX_TB_NEW_ELLIPTIC_OPENING:
    case VX_TB_NEW_POLYGON_OPENING:
    case VX_TB_BUILD_ON_IMAGE_TOUCH:
        // The wall editor's tools.
        return false;
    default:
        return true;
    }
}

bool CVxAppCore::IsContextToolbarButtonVisible(EVxMainToolbarButtonCode code, bool& enabled) const
{
    enabled = true;
    if (m_activeEditor) {
        const int decided = m_activeEditor->IsContextToolbarButtonVisible(code, enabled);
        if (decided >= 0)
            return decided != 0;
    }
    if (code < VX_TB_FORMAT_PAINTER || code > VX_TB_LAST)
        return false;
    const int selected = std::max(GetSelCount(), 0);
    const CVxPart* first = SelectedPart(m_project, GetFirstSelected());
    switch (code) {
    case VX_TB_FORMAT_PAINTER:
    case VX_TB_CTX_FORMAT_PAINTER:
        // Only an object that has an appearance gives properties to copy.
        return selected == 1 && first && first->type != ptPageArea && first->type != ptMeasLine;
    case VX_TB_PROJECT_PROPERTIES:
    case VX_TB_EDIT_WALLS:
    case VX_TB_ROOMS:
    case VX_TB_CTX_ROOMS:
    case VX_TB_ADD_LABEL_HERE:
    case VX_TB_FLOOR_COLOR:
        return selected == 0;
    case VX_TB_ZOOM_BEST_FIT:
    case VX_TB_ZOOM_IN:
    case VX_TB_ZOOM_OUT:
        return true;
    case VX_TB_BLACK_WHITE:
    case VX_TB_SHOW_ANNOTATIONS:
    case VX_TB_FLOOR_TEXTURES:
    case VX_TB_SHOW_GRID:
    case VX_TB_SHOW_GRID_LABELS:
    case VX_TB_SHOW_CAPTIONS:
        return true;
    case VX_TB_GROUP:
    case VX_TB_CTX_GROUP:
        return selected >= 2;
    case VX_TB_CTX_UNGROUP:
        return selected == 1 && IsGroup(first) && !first->IsLocked();
    case VX_TB_EDIT_FROM_SIDE:
    case VX_TB_CTX_EDIT_FROM_SIDE:
        // The side editor decides which objects it can take; without it none.
        return false;
    case VX_TB_CTX_LOCK:
    case VX_TB_CTX_LOCK_SIZE:
        return selected >= 1;
    case VX_TB_CTX_UNLOCK:
        return selected >= 1 && AnySelectedLocked(m_project);
    case VX_TB_CTX_EDIT_POINTS:
        return selected == 1 && first && (first->type == ptPolygon || first->type == ptPolyline);
    case VX_TB_CTX_SELECT_IMAGE:
        return selected == 1 && first && first->HasCap(capPicture);
    case VX_TB_CTX_SEGMENT_STRAIGHT:
    case VX_TB_CTX_SEGMENT_CURVED:
    case VX_TB_CTX_ADD_POINT:
    case VX_TB_CTX_DIMENSION_WALL:
    case VX_TB_CTX_FOLLOW_LINK:
        // Commands of the polygon and wall editors, and of linked objects.
        return false;
    case VX_TB_CTX_PLACE_TO_LAYER: {
        const CVxFloor* floor = CurrentFloor(m_project);
        return selected >= 1 && floor && floor->m_layers.GetLayerCount() >= 2;
    }
    case VX_TB_SELECT_SAME_COLOR:
    case VX_TB_SELECT_SAME_TYPE:
        return selected == 1;
    case VX_TB_CTX_ALIGN:
    case VX_TB_ALIGN_LEFT:
    case VX_TB_ALIGN_HCENTER:
    case VX_TB_ALIGN_RIGHT:
    case VX_TB_ALIGN_TOP:
    case VX_TB_ALIGN_VCENTER:
    case VX_TB_ALIGN_BOTTOM:
        enabled = selected >= 2;
        return true;
    case VX_TB_DISTRIBUTE_HORIZONTALLY:
    case VX_TB_DISTRIBUTE_VERTICALLY:
    case VX_TB_SNAP_HORIZONTALLY:
    case VX_TB_SNAP_VERTICALLY:
        enabled = selected >= 3;
        return true;
    case VX_TB_ZORDER_FRONT:
    case VX_TB_ZORDER_FORWARD:
    case VX_TB_ZORDER_BACKWARD:
    case VX_TB_ZORDER_BACK:
    case VX_TB_ZORDER_BY_Z:
        enabled = selected >= 1;
        return true;
    case VX_TB_ALIGN_CLOSE:
    case VX_TB_ALIGN_TO_PROJECT:
    case VX_TB_ALIGN_TO_DRAWING:
        return true;
    case VX_TB_CUT:
    case VX_TB_COPY:
    case VX_TB_DESELECT:
    case VX_TB_CTX_REMOVE:
    case VX_TB_CTX_RELOCATE:
    case VX_TB_CTX_PROPERTIES:
    case VX_TB_CTX_COPY:
    case VX_TB_CTX_DUPLICATE:
    case VX_TB_CTX_DIMENSION_OBJECT:
    case VX_TB_ROTATE_LEFT:
    case VX_TB_ROTATE_RIGHT:
    case VX_TB_FLIP_HORIZONTALLY:
    case VX_TB_FLIP_VERTICALLY:
    case VX_TB_CTX_ROTATE_LEFT:
    case VX_TB_CTX_ROTATE_RIGHT:
    case VX_TB_CTX_ROTATE_180:
    case VX_TB_CTX_FLIP_HORIZONTALLY:
    case VX_TB_CTX_FLIP_VERTICALLY:
    case VX_TB_BRING_FORWARD:
    case VX_TB_SEND_BACKWARD:
    case VX_TB_Z_TO_TERRAIN:
        return selected >= 1;
    default:
        return true;
    }
}

void CVxAppCore::CheckMouseStateToolbarButtons(EVxMainToolbarButtonCode code)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    static const EVxMainToolbarButtonCode tools[] = {VX_TB_SELECTION_TOOL,
                                                     VX_TB_NEW_WALL,
                                                     VX_TB_NEW_WALL_POLYGON,
                                                     VX_TB_NEW_FLOOR_OPENING,
                                                     VX_TB_NEW_ELLIPTIC_OPENING,
                                                     VX_TB_NEW_POLYGON_OPENING,
                                                     VX_TB_PEN_RED,
                                                     VX_TB_PEN_BLUE,
                                                     VX_TB_PEN_BLACK,
                                                     VX_TB_HIGHLIGHTER,
                                                     VX_TB_ERASER,
                                                     VX_TB_ADD_ATTACHMENT};
    for (EVxMainToolbarButtonCode tool : tools)
        host->CheckMainToolbarButton(tool, tool == code);
}

void CVxAppCore::CheckViewMenuItems()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    const CVxOptions* options = VX_GetOptions();
    host->CheckMainToolbarButton(VX_TB_BLACK_WHITE, m_drawBlackWhite);
    host->CheckMainToolbarButton(VX_TB_SHOW_ANNOTATIONS, m_showAnnotations);
    host->CheckMainToolbarButton(VX_TB_FLOOR_TEXTURES, options->m_drawFloorTextures);
    host->CheckMainToolbarButton(VX_TB_SHOW_GRID, options->m_showGrid);
    host->CheckMainToolbarButton(VX_TB_SHOW_GRID_LABELS, options->m_showGridLabels);
    host->CheckMainToolbarButton(VX_TB_SHOW_CAPTIONS, options->m_showCaptions);
    host->CheckMainToolbarButton(VX_TB_FORMAT_PAINTER, IsFormatPainterOn());
    host->CheckMainToolbarButton(VX_TB_CTX_FORMAT_PAINTER, IsFormatPainterOn());
    host->CheckMainToolbarButton(VX_TB_TOUCH_MODE, options->m_touchInterface);
}
