// The plan view's pointer and keys: what a press, a move and a release do
// in each mouse state, and the keys that act on the selection.

#include "CVxAppCore.h"

#include "CVxFloor.h"
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

// The threshold before a press becomes a drag: an object must move more
// than this many pixels, a rubber band more than its root.
constexpr double kDragThreshold = 6.0;

EVxMouseCursor HostCursor(int code)
{
    switch (code) {
    case vcSizeAll:
        return VX_CURSOR_SIZE_ALL;
    case vcPanOne:
    case 6:
        return VX_CURSOR_HAND;
    case vcCellText:
    case vcCross:
        return VX_CURSOR_CROSS;
    case vcAddNothing:
    case vcAddToSelection:
        return VX_CURSOR_ADD;
    case vcLocked:
        return VX_CURSOR_FORBIDDEN;
    case vcRotate:
        return VX_CURSOR_ROTATE;
    case vcPainter:
        return VX_CURSOR_PAINTER;
    case vcSizeVer:
        return VX_CURSOR_SIZE_VER;
    case vcSizeBDiag:
        return VX_CURSOR_SIZE_BDIAG;
    case vcSizeHor:
        return VX_CURSOR_SIZE_HOR;
    case vcSizeFDiag:
        return VX_CURSOR_SIZE_FDIAG;
    default:
        return VX_CURSOR_ARROW;
    }
}
} // namespace

VxPOINT CVxAppCore::GetObjectOrigin() const
{
    const auto pixels = [](double value) {
        constexpr double limit = 4e8;
        return static_cast<int>(std::isfinite(value) ? std::clamp(value, -limit, limit) : 0.0);
    };
    return VxPOINT{m_viewOrigin.x + pixels(m_project.m_spaceLeft * m_zoom),
                   m_viewOrigin.y + pixels(m_project.m_spaceTop * m_zoom)};
}

void CVxAppCore::RepaintDirty(const VxRECT& dirty)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    if (dirty.right <= dirty.left || dirty.bottom <= dirty.top)
        return;
    const VxPOINT origin = GetObjectOrigin();
    const VxRECT onView{dirty.left + origin.x, dirty.top + origin.y, dirty.right + origin.x,
                        dirty.bottom + origin.y};
    host->DrawRoom(&onView);
}

void CVxAppCore::Repaint()
{
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->DrawRoom(nullptr);
}

bool CVxAppCore::IsLeftButtonDown() const
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    return host && host->GetKeyState(VX_KEY_LBUTTON) != 0;
}

void CVxAppCore::DrawSelectionRect(double x1, double y1, double x2, double y2)
{
    // The band is kept in units, so that it scrolls with the plan.
    if (m_zoom <= 0)
        return;
    SetTempObject(2, x1 / m_zoom, y1 / m_zoom, x2 / m_zoom, y2 / m_zoom);
    Repaint();
}

void CVxAppCore::MainViewMouseDown(int button, unsigned modifiers, double x, double y, int source,
                                   bool* outHandled)
{
    bool handled = true;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    const bool touch = source == sourceTouch;
    if (touch)
        MainViewRoundMousePos(x, y, source);
    if (m_multiSelectMode && button == buttonLeft)
        modifiers |= modCtrl;
    const VxPOINT origin = GetObjectOrigin();
    x -= origin.x;
    y -= origin.y;
    if (outHandled)
        *outHandled = true;
    if (m_mouseState == msPlacing)
        return;
    m_dragged = false;

    if (m_mouseState == msPanning) {
        m_mouseState = msIdle;
        Repaint();
        if (button == buttonMiddle)
            return;
    } else if (button == buttonMiddle) {
        if (m_mouseState == msIdle && host &&
            (host->IsMainViewScrollBarVisible(true) || host->IsMainViewScrollBarVisible(false)))
            m_mouseState = msPanning;
        return;
    }

    switch (m_mouseState) {
    case msMeasureWait:
        m_mouseState = msMeasuring;
        m_measureStart = CVxDPoint(x, y);
        m_mouseDownPos[0] = x;
        m_mouseDownPos[1] = y;
        MainViewMouseMove(modifiers, x + origin.x, y + origin.y, source);
        return;
    case msMeasuring:
        FinishMeasuring(button, modifiers, x, y);
        return;
    case msPainterOnce:
    case msPainterSticky: {
        const int found = FindPartFromPoint(x, y, source, false);
        if (found >= 0)
            ApplyFormatPainterToObject(found);
        if (m_mouseState == msPainterOnce)
            ActivateFormatPainter(false, false);
        handled = false;
        if (outHandled)
            *outHandled = handled;
        return;
    }
    default:
        break;
    }

    // An open editor sees the press before the objects do.
    if (m_activeEditor) {
        bool goOn = true;
        if (m_activeEditor->OnMouseDown(button, modifiers, x, y, source, goOn) || !goOn) {
            ClearSelection(false);
            return;
        }
    }

    m_mouseDownPos[0] = x;
    m_mouseDownPos[1] = y;
    const bool touchPanning = touch && host && host->IsTouchPanning();

    if (button == buttonLeft && !m_multiSelectMode) {
        if (touchPanning && m_touchSymbol >= 0) {
            m_selection.SetMovingSymbol(m_touchSymbol);
            m_selection.StartResizing(static_cast<int>(x), static_cast<int>(y));
            m_mouseState = msResizing;
            return;
        }
        const int over = m_selection.IsOverSymbol(static_cast<int>(x), static_cast<int>(y));
        if (touch) {
            if (over != 0) {
                m_touchSymbol = m_selection.GetResizingSymbolIdx();
                Repaint();
                return;
            }
            m_touchSymbol = -1;
        } else if (over != 0 && !IsCentreHandle(m_selection.GetResizingSymbolIdx())) {
            m_selection.StartResizing(static_cast<int>(x), static_cast<int>(y));
            m_mouseState = msResizing;
            if (host)
                host->RefreshMainViewStatusBar();
            return;
        }
    }

    if (button == buttonLeft && (modifiers & modCtrl)) {
        m_mouseState = msRubberBandAdd;
        MainViewMouseMove(modifiers, x + origin.x, y + origin.y, source);
        return;
    }

    int found = touchPanning ? m_firstSelected : FindPartFromPoint(x, y, source, false);
    CVxFloor* floor = m_project.GetFloor();
    CVxPart* part = floor->SafeGetPart(found);
    if (!part || !part->inUse) {
        ClearSelection(true);
        if (button == buttonRight && host)
            host->ShowPopupMenuForObject(-1);
        else if (button == buttonLeft && (!touch || m_multiSelectMode)) {
            m_mouseState = msRubberBand;
            MainViewMouseMove(modifiers, x + origin.x, y + origin.y, source);
        }
        return;
    }

    bool startDrag = true;
    if (!(modifiers & (modShift | modCtrl))) {
        if (!part->selected) {
            int preferred = -1;
            if (GetSelCount() > 0 && !touch)
                preferred = FindPartFromPoint(x, y, source, true);
            const CVxPart* other = floor->SafeGetPart(preferred);
            if (other && other->inUse && other->selected)
                found = preferred;
            else
                SetSelection(found, true);
            part = floor->SafeGetPart(found);
        }
        if (part->IsLocked())
            startDrag = false;
        if (button == buttonRight) {
            if (host)
                host->ShowPopupMenuForObject(found);
            return;
        }
    } else {
        if (part->selected)
            RemoveFromSelection(found, true);
        else
            AddToSelection(found, true);
        startDrag = VX_GetOptions()->m_moveNonSelected && part->selected && !part->IsLocked();
    }
    if (!startDrag || button != buttonLeft)
        return;
    m_movingPart = found;
    m_dragStartOffset = CVxDPoint(x - part->x * m_zoom, y - part->y * m_zoom);
    if (host)
        host->SetMainViewStatusMessage(
            Msg(118, L"Use Shift to move object only horizontally or vertically."));
}

bool CVxAppCore::IsCentreHandle(int symbolIndex) const
{
    // A press on the centre handle drags the object as a press on its body
    // does, with the same threshold, axis lock and wall snapping.
    const CVxSelSymbol* symbol = m_selection.SafeGetSymbol(symbolIndex);
    return symbol && symbol->kind == CVxSelSymbol::kindCentre;
}

void CVxAppCore::MainViewRoundMousePos(double& x, double& y, int source) const
{
    if (source != sourceTouch || m_zoom <= 0 || m_roundedZoom <= 0)
        return;
    const double k = m_roundedZoom / m_zoom;
    x = std::round(k * x) / k;
    y = std::round(k * y) / k;
}

void CVxAppCore::MainViewMouseMove(unsigned modifiers, double x, double y, int source)
{
    if (!IsDrawingAllowed() || m_zoom <= 0)
        return;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    const bool touch = source == sourceTouch;
    if (touch)
        MainViewRoundMousePos(x, y, source);
    if (m_multiSelectMode)
        modifiers |= modCtrl;
    const VxPOINT origin = GetObjectOrigin();
    const double viewX = x;
    const double viewY = y;
    x -= origin.x;
    y -= origin.y;
    m_lastPointer = CVxDPoint(x, y);

    if (m_mouseState == msMeasuring) {
        DrawMeasureLine(modifiers, x, y);
        return;
    }
    if (m_mouseState == msPanning)
        return;

    const bool left = IsLeftButtonDown();
    if (m_mouseState == msRubberBand || m_mouseState == msRubberBandAdd) {
        if (!left) {
            MainViewMouseUp(buttonLeft, modifiers, viewX, viewY, source);
            return;
        }
        const double dx = x - m_mouseDownPos[0];
        const double dy = y - m_mouseDownPos[1];
        if (!m_dragged && dx * dx + dy * dy > kDragThreshold)
            m_dragged = true;
        if (m_dragged)
            DrawSelectionRect(m_mouseDownPos[0], m_mouseDownPos[1], x, y);
        return;
    }

    if (m_mouseState == msResizing) {
        if (!left) {
            MainViewMouseUp(buttonLeft, modifiers, viewX, viewY, source);
            return;
        }
        const int before = m_selection.GetResizingPartNo();
        CVxFloor* floor = m_project.GetFloor();
        CVxPart* part = floor->SafeGetPart(before);
        if (part && part->inUse) {
            // The step is taken only when something changes, so that a
            // press on a handle alone costs no undo step.
            CVxPart probe = *part;
            CVxPartSelection trial;
            trial.SetProject(&m_project);
            m_selection.SetProject(&m_project);
            VxRECT dirty{0, 0, 0, 0};
            const CVxSelSymbol* symbol = m_selection.GetResizingSymbol();
            if (symbol && trial.MouseMovePart(symbol->kind, &probe, symbol->subIndex, modifiers,
                                              static_cast<int>(x), static_cast<int>(y), m_zoom)) {
                m_dragged = true;
                CatchUndoRoom(false);
                if (m_selection.OnMouseMove(floor, modifiers, static_cast<int>(x), static_cast<int>(y),
                                            m_zoom, source, &dirty))
                    RepaintDirty(dirty);
            }
        }
        if (host)
            host->RefreshMainViewStatusBar();
        return;
    }

    if (m_activeEditor) {
        bool goOn = true;
        if (m_activeEditor->OnMouseMove(modifiers, x, y, source, goOn) || !goOn) {
            if (!touch && host) {
                host->RefreshMainViewStatusBar();
                RefreshMainViewCursor(modifiers, viewX, viewY);
            }
            return;
        }
    }

    // An object on the pointer or on a drag from the library moves with no
    // button held.
    if (m_movingPart >= 0 && (left || m_mouseState == msPlacing || m_mouseState == msDropping)) {
        CVxPart* part = m_project.GetFloor()->SafeGetPart(m_movingPart);
        if (!part || !part->inUse) {
            MainViewMouseUp(buttonLeft, modifiers, viewX, viewY, source);
            return;
        }
        double px = x;
        double py = y;
        if ((modifiers & modShift) && m_mouseState != msPlacing) {
            if (std::fabs(px - m_mouseDownPos[0]) >= std::fabs(py - m_mouseDownPos[1]))
                py = m_mouseDownPos[1];
            else
                px = m_mouseDownPos[0];
        }
        double targetX = (px - m_dragStartOffset.x) / m_zoom;
        double targetY = (py - m_dragStartOffset.y) / m_zoom;
        m_project.SubUnitCorrection(targetX, targetY, VX_DF_DECIMAL);
        double dx = targetX - part->x;
        double dy = targetY - part->y;
        if (!m_dragged && m_mouseState != msPlacing) {
            const double shift = std::hypot(dx * m_zoom, dy * m_zoom);
            if (!(shift > kDragThreshold))
                return;
            m_dragged = true;
            if (host) {
                CVxDRect rect;
                part->GetBoundingRect(&rect, 1.0);
                host->ScrollViewToEnsureRectVisible(rect);
            }
        }
        if (!(modifiers & modAlt))
            SnapMovingSelectionToWalls(dx, dy);
        if (std::fabs(dx) >= EPS || std::fabs(dy) >= EPS) {
            CatchUndoRoom(false);
            VxRECT dirty{0, 0, 0, 0};
            MoveSelection(dx, dy, &dirty);
            UpdateTempDimLines(&dirty);
            RepaintDirty(dirty);
            if (host)
                host->OnPartListingChange();
        }
        return;
    }
    if (m_movingPart >= 0 && !left) {
        MainViewMouseUp(buttonLeft, modifiers, viewX, viewY, source);
        return;
    }

    if (!touch && host) {
        host->RefreshMainViewStatusBar();
        const int over = RefreshMainViewCursor(modifiers, viewX, viewY);
        const CVxPart* part = m_project.GetFloor()->SafeGetPart(over);
        host->SetMainViewTooltip(part && part->inUse ? part->GetToolTipText(m_project.GetFloor())
                                                     : CVxStringW());
    }
}

void CVxAppCore::MainViewMouseUp(int button, unsigned modifiers, double x, double y, int source)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (source == sourceTouch)
        MainViewRoundMousePos(x, y, source);
    const VxPOINT origin = GetObjectOrigin();
    x -= origin.x;
    y -= origin.y;

    if (m_mouseState == msRubberBand || m_mouseState == msRubberBandAdd) {
        const bool adding = m_mouseState == msRubberBandAdd;
        m_mouseState = msIdle;
        SetTempObject(0, 0, 0, 0, 0);
        const CVxDRect rect(std::min(m_mouseDownPos[0], x), std::min(m_mouseDownPos[1], y),
                            std::max(m_mouseDownPos[0], x), std::max(m_mouseDownPos[1], y));
        if ((m_dragged || adding) && !(m_activeEditor && m_activeEditor->OnRectSelect(rect))) {
            if (adding)
                AddToSelection(rect, false, true);
            else
                SetSelection(rect, false, true);
        }
        m_dragged = false;
        Repaint();
        return;
    }
    if (m_mouseState == msDropping) {
        if (m_movingPart >= 0 && host)
            host->OnNewObjectAdded(m_movingPart);
        m_mouseState = msIdle;
    }
    if (m_movingPart >= 0) {
        if (host)
            host->SetMainViewStatusMessage(CVxStringW());
        m_movingPart = -1;
    }
    if (m_dragged) {
        if (m_tempDimMode) {
            DeleteTempDimLines();
            Repaint();
        }
        CatchUndoRoom(true);
        if (host)
            host->OnPartListingChange();
        m_dragged = false;
    }
    if (m_mouseState == msResizing) {
        m_selection.EndResizing();
        m_mouseState = msIdle;
        m_selection.Collect(m_project.GetFloor(), m_zoom);
        if (!m_undoArmed)
            CatchUndoRoom(true);
        if (host) {
            host->RefreshMainViewStatusBar();
            host->OnPartListingChange();
        }
        Repaint();
        return;
    }
    if (m_mouseState == msMeasuring) {
        const double dx = x - m_measureStart.x;
        const double dy = y - m_measureStart.y;
        if (dx * dx + dy * dy > 30.0 * 30.0)
            FinishMeasuring(button, modifiers, x, y);
        return;
    }
    if (m_mouseState == msPlacing) {
        // The step of the new object closed with the drag above.
        m_mouseState = msIdle;
        if (host)
            host->SetMainViewStatusMessage(CVxStringW());
        Repaint();
    }
    if (m_activeEditor)
        m_activeEditor->OnMouseUp(button, modifiers, x, y, source);
}

bool CVxAppCore::MainViewKeyDown(unsigned key, unsigned modifiers)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (m_activeEditor) {
        const bool arrow = key >= VX_KEY_LEFT && key <= VX_KEY_DOWN;
        if (arrow && m_activeEditor->OnKeyArrowsPressed(key, modifiers))
            return true;
        if (m_activeEditor->OnKeyDown(key, modifiers))
            return true;
        // With nothing going on, Esc leaves the editor and Enter keeps its
        // result.
        const bool quiet = m_mouseState == msIdle && m_movingPart < 0 && GetSelCount() == 0;
        if (quiet && key == VX_KEY_ESC)
            return DoMainToolbarButtonAction(VX_TB_DISCARD_CLOSE);
        if (quiet && key == VX_KEY_ENTER && modifiers == 0)
            return DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE);
    } else if (key == VX_KEY_F1 + 7) {
        return DoMainToolbarButtonAction(VX_TB_EDIT_WALLS);
    }
    if (key == 'F' && modifiers == modShift) {
        CVxOptions* options = VX_GetOptions();
        options->m_convertFeetInEdit = !options->m_convertFeetInEdit;
        Repaint();
        if (host) {
            host->RefreshMainViewStatusBar();
            host->OnPartListingChange();
        }
        return true;
    }
    if (key == VX_KEY_ESC)
        return MainViewKeyEscPressed();
    if (GetSelCount() == 0)
        return false;
    switch (key) {
    case VX_KEY_DELETE:
        if (modifiers != 0)
            return false;
        DeleteSelectedObjects();
        return true;
    case VX_KEY_ENTER:
        if (modifiers == modAlt)
            return false; // the properties of the host
        if (m_mouseState == msPlacing) {
            MainViewMouseUp(buttonLeft, 0, 0, 0, sourceTouch);
            RefreshMainViewCursor(0, m_lastPointer.x, m_lastPointer.y);
            return true;
        }
        return false;
    case 'L':
        if (modifiers != modCtrl)
            return false;
        RotateSelectedObjects(270);
        return true;
    case 'R':
        if (modifiers != modCtrl)
            return false;
        RotateSelectedObjects(90);
        return true;
    case 'D':
        if (modifiers != modShift)
            return false;
        DuplicateSelectedObjects();
        return true;
    case 'G':
        if (modifiers != modCtrl || GetSelCount() < 2)
            return false;
        GroupSelectedObjects();
        return true;
    case VX_KEY_LEFT:
    case VX_KEY_RIGHT:
    case VX_KEY_UP:
    case VX_KEY_DOWN:
        return MainViewKeyArrowsPressed(key, modifiers);
    default:
        return false;
    }
}

bool CVxAppCore::MainViewKeyUp(unsigned key, unsigned modifiers)
{
    if (m_activeEditor && m_activeEditor->OnKeyUp(key, modifiers))
        return true;
    if (key == VX_KEY_CTRL) {
        RefreshMainViewCursor(0, m_lastPointer.x + GetObjectOrigin().x,
                              m_lastPointer.y + GetObjectOrigin().y);
        return true;
    }
    return false;
}

bool CVxAppCore::MainViewKeyArrowsPressed(unsigned key, unsigned modifiers)
{
    if (m_activeEditor && m_activeEditor->OnKeyArrowsPressed(key, modifiers))
        return true;
    if (GetSelCount() == 0 || m_zoom <= 0)
        return false;
    if (modifiers & modAlt) {
        switch (key) {
        case VX_KEY_LEFT:
            AlignSelectedObjects(1);
            break;
        case VX_KEY_UP:
            AlignSelectedObjects(4);
            break;
        case VX_KEY_RIGHT:
            AlignSelectedObjects(3);
            break;
        case VX_KEY_DOWN:
            AlignSelectedObjects(6);
            break;
        default:
            return false;
        }
        return true;
    }
    double step = (modifiers & modShift) ? 5.0 : 1.0;
    if (m_keyMoveObject != m_firstSelected || m_keyMoveObject < 0) {
        // The presses that follow on the same object join this one step.
        m_undoArmed = true;
        CatchUndoRoom(true);
        m_keyMoveObject = m_firstSelected;
    }
    if (modifiers & modCtrl) {
        // One pixel of the screen.
        step /= m_roundedZoom > 0 ? m_roundedZoom : m_zoom;
        if (!m_project.m_subUnitMoves && std::fabs(step) < 1.0)
            step = step < 0 ? -1.0 : 1.0;
    }
    double dx = 0;
    double dy = 0;
    if (!VX_ArrowKeyOffset(key, step, dx, dy))
        return false;
    if (!(modifiers & modCtrl))
        m_project.SubUnitCorrection(dx, dy, VX_DF_DECIMAL);
    m_project.m_modified = true;
    VxRECT dirty{0, 0, 0, 0};
    MoveSelection(dx, dy, &dirty);
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->OnPartListingChange();
    RepaintDirty(dirty);
    return true;
}

bool CVxAppCore::MainViewKeyEscPressed()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    switch (m_mouseState) {
    case msMeasureWait:
    case msMeasuring:
        EndMeasuring();
        return true;
    case msPlacing:
        m_mouseState = msIdle;
        m_movingPart = -1;
        DeleteSelectedObjects();
        if (host)
            host->SetMainViewStatusMessage(CVxStringW());
        return true;
    case msPainterOnce:
    case msPainterSticky:
        ActivateFormatPainter(false, false);
        return true;
    case msResizing:
        if (m_dragged) {
            m_selection.EndResizing();
            m_mouseState = msIdle;
            m_dragged = false;
            MakeUndo();
            m_undo->ClearRedoHistory();
            if (host)
                host->EnableUndoButtons();
            OnSelectionChange();
            Repaint();
            return true;
        }
        m_selection.EndResizing();
        m_mouseState = msIdle;
        return true;
    case msRubberBand:
    case msRubberBandAdd:
        m_mouseState = msIdle;
        m_dragged = false;
        SetTempObject(0, 0, 0, 0, 0);
        Repaint();
        return true;
    default:
        break;
    }
    if (m_movingPart >= 0) {
        const bool dragged = m_dragged;
        m_movingPart = -1;
        m_dragged = false;
        if (host)
            host->SetMainViewStatusMessage(CVxStringW());
        if (dragged) {
            if (m_tempDimMode)
                DeleteTempDimLines();
            MakeUndo();
            m_undo->ClearRedoHistory();
            if (host)
                host->EnableUndoButtons();
            OnSelectionChange();
        }
        Repaint();
        return true;
    }
    if (GetSelCount() > 0) {
        ClearSelection(true);
        return true;
    }
    return false;
}

void CVxAppCore::MainViewFinishInterAction(bool /*accepted*/)
{
    if (IsFormatPainterOn())
        ActivateFormatPainter(false, false);
    m_mouseState = msIdle;
    if (m_multiSelectMode) {
        m_multiSelectMode = false;
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->ShowInterActionView(false, CVxStringW());
    }
}

int CVxAppCore::RefreshMainViewCursor(unsigned modifiers, double x, double y)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    const VxPOINT origin = GetObjectOrigin();
    x -= origin.x;
    y -= origin.y;
    int cursor = vcArrow;
    int over = -1;
    switch (m_mouseState) {
    case msPlacing:
    case msMeasureWait:
    case msMeasuring:
        cursor = vcCross;
        break;
    case msResizing:
        if (const CVxSelSymbol* symbol = m_selection.GetResizingSymbol())
            cursor = symbol->GetCursorShape();
        break;
    case msPanning:
        cursor = vcSizeAll;
        break;
    default:
        if (m_mouseState == msRubberBandAdd || (modifiers & modCtrl)) {
            cursor = GetSelCount() > 0 ? vcAddToSelection : vcAddNothing;
        } else if (IsFormatPainterOn()) {
            cursor = vcPainter;
        } else {
            const int symbolCursor = m_selection.IsOverSymbol(static_cast<int>(x), static_cast<int>(y));
            if (symbolCursor != 0) {
                cursor = symbolCursor;
            } else {
                over = FindPartFromPoint(x, y, 0, false);
                const CVxPart* part = m_project.GetFloor()->SafeGetPart(over);
                if (part && part->inUse)
                    cursor = part->IsLocked() ? vcLocked : vcSizeAll;
                else
                    over = -1;
            }
        }
        break;
    }
    if (over < 0 && m_mouseState == msIdle)
        over = FindPartFromPoint(x, y, 0, false);
    if (m_activeEditor) {
        const int wanted = m_activeEditor->GetMouseCursor(0, x, y);
        if (wanted != vcArrow)
            cursor = wanted;
    }
    m_cursor = cursor;
    if (host)
        host->SetMainViewCursor(HostCursor(cursor));
    return over;
}
