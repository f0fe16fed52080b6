// The wall editor's frame: taking the project over and giving it back,
// commands, keys, the touch selection, the properties of what is selected,
// the clipboard and drawing.

#include "CVxWallEditor.h"

#include "CVxDC.h"
#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxLocalize.h"
#include "CVxPart.h"
#include "CVxUndoManager.h"
#include "IVxAppHelperCallback.h"
#include "VxEps.h"
#include "VxNumbers.h"
#include "VxUtf8.h"

#include <algorithm>
#include <cmath>

namespace {
CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

unsigned EditorTag(const CVxPart& part)
{
    return part.appTag >> CVxWallEditor::tagShift;
}

constexpr unsigned kLowTagBits = (1u << CVxWallEditor::tagShift) - 1;
constexpr double kUnset = -19182.0;
// Larger corner places or wall sizes come from a typing slip, not a plan.
constexpr double kMaxWallNumber = 1e7;
} // namespace

CVxWallEditor::CVxWallEditor() = default;
CVxWallEditor::~CVxWallEditor() = default;

void CVxWallEditor::SetProject(CVxProject* project, CVxFloorPlan* plan)
{
    m_project = project;
    m_plan = plan;
}

CVxFloor* CVxWallEditor::Floor() const
{
    return m_project ? m_project->GetFloor() : nullptr;
}

double CVxWallEditor::Zoom() const
{
    return m_host ? m_host->GetEditorZoom() : 1.0;
}

void CVxWallEditor::Repaint() const
{
    if (m_host)
        m_host->EditorRepaint();
}

void CVxWallEditor::SetStatus(const CVxStringW& text) const
{
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->SetMainViewStatusMessage(text);
}

CVxStringW CVxWallEditor::GetEditorLocalizedName() const
{
    return Msg(1001, L"Wall Editor");
}

void CVxWallEditor::Activate(IVxEditorHost* host, bool viewOnly)
{
    if (m_active || !m_project)
        return;
    IVxSpecialEditor::Activate(m_project, host);
    m_operation = opNone;
    m_noRebuild = viewOnly;
    m_drawing = false;
    m_touchSelType = selNone;
    m_touchSelItems.clear();
    m_tempDimLines.clear();
    m_project->CopyTo(&m_backup);
    if (!viewOnly) {
        for (size_t i = 0; i < m_project->m_floors.size(); ++i) {
            CVxFloor* floor = m_project->m_floors[i];
            const CVxFloor* old = m_backup.m_floors[i];
            floor->m_objects.clear();
            // Dimension lines stay, tagged with where they came from.
            for (size_t j = 0; j < old->m_objects.size(); ++j) {
                const CVxPart& part = old->m_objects[j];
                if (!part.inUse || part.type != ptMeasLine || part.IsTempDimLine())
                    continue;
                CVxPart copy = part;
                copy.selected = false;
                copy.appTag =
                    (copy.appTag & kLowTagBits) | ((tagBase + static_cast<unsigned>(j)) << tagShift);
                floor->m_objects.push_back(copy);
            }
            floor->m_objectCount = floor->CountUsedObjects();
            floor->m_layers.SetLayerVisible(floor->m_layers.GetActiveLayer(), true);
            floor->m_walls.RebuildWalls();
            CVxFloorPlan temp;
            temp.CreatePlan(*floor, -1);
            SplitWallsToEdges(*floor, temp, true);
            floor->m_walls.RebuildWalls();
        }
    }
    m_undo = std::make_unique<CVxUndoManager>(m_project);
    m_undo->SetUndoLimit(40);
    if (m_host)
        m_host->EditorCreatePlan();
    const int current = m_project->m_currentFloor;
    m_floorBelow = current > 0 ? current - 1 : (m_project->GetFloorCount() >= 2 ? 1 : -1);
    if (CVxFloor* below = m_project->GetSafeFloor(m_floorBelow); below && m_floorBelow >= 0)
        below->m_walls.RebuildWalls();
    Collect();
}

bool CVxWallEditor::Deactivate(bool discard)
{
    if (!IVxSpecialEditor::Deactivate(discard))
        return false;
    DeleteTempDimLines();
    if (m_host)
        m_host->EditorSetRubber(0, 0, 0, 0, 0);
    if (m_project) {
        if (discard) {
            const bool modified = m_project->m_modified;
            m_backup.CopyTo(m_project);
            m_project->m_modified = modified;
            // The scan as it was, too.
            if (m_host)
                m_host->EditorLoadBkgScan(false);
        } else if (!m_noRebuild) {
            WriteStateToProject(m_project);
        }
    }
    m_undo.reset();
    if (m_operation == opCalibrate)
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->WallScanCalibrateDlgHide();
    m_operation = opNone;
    m_touchSelType = selNone;
    m_touchSelItems.clear();
    m_wallSelection.Clear();
    return true;
}

bool CVxWallEditor::QueryCanClose()
{
    if (!IsModified())
        return true;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return true;
    return host->MsgBox(Msg(91, L"Walls were modified. Do you really want to lose all changes?"),
                        Msg(33, L"Warning"), VX_MB_YES | VX_MB_NO | VX_MB_ICON_QUESTION) != VX_MBR_NO;
}

void CVxWallEditor::WriteStateToProject(CVxProject* target)
{
    if (!m_project || !target)
        return;
    if (target != m_project)
        m_project->CopyTo(target);
    const size_t floors = std::min(target->m_floors.size(), m_backup.m_floors.size());
    for (size_t i = 0; i < floors; ++i) {
        CVxFloor* floor = target->m_floors[i];
        const CVxFloor* old = m_backup.m_floors[i];
        std::vector<CVxPart> objects = old->m_objects;
        std::vector<bool> keep(objects.size(), true);
        // A dimension line comes back only if its tagged copy survived.
        for (size_t j = 0; j < objects.size(); ++j)
            if (objects[j].inUse && objects[j].type == ptMeasLine && !objects[j].IsTempDimLine())
                keep[j] = false;
        std::vector<CVxPart> added;
        for (const CVxPart& part : floor->m_objects) {
            if (!part.inUse || part.IsTempDimLine())
                continue;
            const unsigned tag = EditorTag(part);
            CVxPart copy = part;
            copy.appTag &= kLowTagBits;
            if (tag >= static_cast<unsigned>(tagBase) && tag - tagBase < objects.size()) {
                objects[tag - tagBase] = copy;
                keep[tag - tagBase] = true;
            } else {
                added.push_back(copy);
            }
        }
        for (size_t j = 0; j < objects.size(); ++j)
            if (!keep[j])
                objects[j] = CVxPart();
        for (CVxPart& part : added)
            objects.push_back(part);
        floor->m_objects = std::move(objects);
        floor->m_objectCount = floor->CountUsedObjects();
        floor->m_layers = old->m_layers;
        // Walls split at the joints while editing are whole again.
        floor->m_walls.RebuildWalls();
        CVxFloorPlan plan;
        plan.CreatePlan(*floor, -1);
        ConnectEdgesToWalls(*floor, plan, false, 0, nullptr);
        floor->m_walls.RebuildWalls();
        plan.CreatePlan(*floor, target->m_unit);
        // New walls take the faces of the rooms they border.
        if (!floor->m_walls.appearances.empty())
            UpdateWallAppearances(*floor, plan);
        floor->ResnapAllParts(&plan);
    }
}

void CVxWallEditor::CatchUndoStep(bool armNext)
{
    IVxSpecialEditor::CatchUndoStep(armNext);
}

void CVxWallEditor::AfterUndoRestore()
{
    m_operation = opNone;
    m_touchSelType = selNone;
    m_touchSelItems.clear();
    m_tempDimLines.clear();
    if (m_host)
        m_host->EditorSetRubber(0, 0, 0, 0, 0);
    Collect();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->RefreshMainViewStatusBar();
}

void CVxWallEditor::Collect()
{
    CVxFloor* floor = Floor();
    if (!floor || !m_plan)
        return;
    m_wallSelection.Collect(floor, m_plan, Zoom());
}

void CVxWallEditor::OnZoomChanged()
{
    Collect();
}

void CVxWallEditor::RebuildAfterChange(bool sort)
{
    CVxFloor* floor = Floor();
    if (!floor || !m_host)
        return;
    m_host->EditorCreatePlan();
    if (SplitWallsToEdges(*floor, *m_plan, sort) || sort)
        m_host->EditorCreatePlan();
    floor->m_planDef = m_plan->Save();
    Collect();
}

void CVxWallEditor::OnMouseOperationChanged(int operation)
{
    if (m_operation == opCalibrate && operation != opCalibrate)
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->WallScanCalibrateDlgHide();
    m_operation = operation;
    m_drawing = false;
    DeleteTempDimLines();
    if (m_host)
        m_host->EditorSetRubber(0, 0, 0, 0, 0);
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (host) {
        static const EVxMainToolbarButtonCode tools[] = {VX_TB_NEW_WALL,
                                                         VX_TB_NEW_WALL,
                                                         VX_TB_NEW_WALL_POLYGON,
                                                         VX_TB_NEW_WALL_POLYGON,
                                                         VX_TB_NEW_FLOOR_OPENING,
                                                         VX_TB_NEW_FLOOR_OPENING,
                                                         VX_TB_NEW_ELLIPTIC_OPENING,
                                                         VX_TB_NEW_ELLIPTIC_OPENING,
                                                         VX_TB_NEW_POLYGON_OPENING};
        EVxMainToolbarButtonCode code = VX_TB_SELECTION_TOOL;
        if (operation >= opNewWallStart && operation <= opNewHolePolyStart)
            code = tools[operation - opNewWallStart];
        else if (operation == opNewHolePoly)
            code = VX_TB_NEW_POLYGON_OPENING;
        for (EVxMainToolbarButtonCode tool :
             {VX_TB_SELECTION_TOOL, VX_TB_NEW_WALL, VX_TB_NEW_WALL_POLYGON, VX_TB_NEW_FLOOR_OPENING,
              VX_TB_NEW_ELLIPTIC_OPENING, VX_TB_NEW_POLYGON_OPENING})
            host->CheckMainToolbarButton(tool, tool == code);
        host->ShowInterActionView(false, CVxStringW());
        if (operation == opNone)
            host->SetMainViewStatusMessage(CVxStringW());
    }
    Repaint();
}

bool CVxWallEditor::OnMainToolbarButtonAction(EVxMainToolbarButtonCode code)
{
    if (!m_active)
        return false;
    switch (code) {
    case VX_TB_SELECTION_TOOL:
        OnMouseOperationChanged(opNone);
        return true;
    case VX_TB_NEW_WALL:
    case VX_TB_NEW_WALL_POLYGON:
    case VX_TB_NEW_FLOOR_OPENING:
    case VX_TB_NEW_ELLIPTIC_OPENING:
    case VX_TB_NEW_POLYGON_OPENING: {
        static const int ops[] = {opNewWallStart, opNewPolyStart, opNewHoleStart, opNewEllipseStart,
                                  opNewHolePolyStart};
        ClearTouchSelection();
        OnMouseOperationChanged(ops[code - VX_TB_NEW_WALL]);
        return true;
    }
    case VX_TB_CTX_REMOVE:
        OnPopupWallRemove();
        return true;
    case VX_TB_SCAN_SELECT_IMAGE: {
        CVxStringW file;
        IVxAppHelperCallback* host = VX_GetAppHelper();
        if (host && host->OpenPictureDlgShowModal(file))
            OnPopupBkgScanLoadImage1Click(file);
        return true;
    }
    case VX_TB_NUMERICAL_EDITOR:
        ClearTouchSelection();
        OnMenuNumericalEditor();
        return true;
    case VX_TB_SCAN_SHOW:
        OnPopupBkgScanShow1Click();
        return true;
    case VX_TB_SCAN_SIZE_POSITION:
        OnPopupBkgScanCalibrate1Click();
        return true;
    case VX_TB_SCAN_REMOVE:
        OnPopupBkgScanRemove1Click();
        return true;
    case VX_TB_CTX_PROPERTIES:
        OnPopupWallProperties();
        return true;
    case VX_TB_CTX_ADD_POINT:
        OnPopupWallAddControlPoint();
        return true;
    case VX_TB_CTX_DIMENSION_WALL: {
        CVxFloor* floor = Floor();
        if (!floor || m_touchSelType != selWall || m_touchSelItems.empty())
            return true;
        CatchUndoStep(true);
        const double zoom = Zoom();
        for (int wall : m_touchSelItems)
            DimensionWall(*floor, *m_plan, wall, zoom > 0 ? 20.0 / zoom : 20.0, m_project->m_unit, false, 0);
        Repaint();
        return true;
    }
    case VX_TB_COPY:
    case VX_TB_CTX_COPY: {
        CVxStringA text;
        if (OnContextEditCopy(text))
            if (IVxAppHelperCallback* host = VX_GetAppHelper())
                host->SetClipboardText(text);
        return true;
    }
    case VX_TB_PASTE:
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            OnContextEditPaste(host->GetClipboardText());
        return true;
    default:
        return false;
    }
}

bool CVxWallEditor::IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code)
{
    switch (code) {
    case VX_TB_SAVE:
        return !m_noRebuild;
    case VX_TB_PRINT:
    case VX_TB_ACCEPT_CLOSE:
    case VX_TB_DISCARD_CLOSE:
    case VX_TB_UNDO:
    case VX_TB_REDO:
    case VX_TB_NEW_MEASUREMENT:
    case VX_TB_ZOOM_BEST_FIT:
    case VX_TB_ZOOM_100:
    case VX_TB_ZOOM_IN:
    case VX_TB_ZOOM_OUT:
    case VX_TB_SELECTION_TOOL:
    case VX_TB_NEW_WALL:
    case VX_TB_NEW_WALL_POLYGON:
    case VX_TB_NEW_FLOOR_OPENING:
    case VX_TB_NEW_ELLIPTIC_OPENING:
    case VX_TB_NEW_POLYGON_OPENING:
    case VX_TB_TRANSFORMATIONS:
    case VX_TB_BUILD_ON_IMAGE_TOUCH:
    case VX_TB_SHOW_OBJECTS:
        return true;
    default:
        return false;
    }
}

int CVxWallEditor::IsContextToolbarButtonVisible(EVxMainToolbarButtonCode code, bool& enabled)
{
    enabled = true;
    const bool any = !m_touchSelItems.empty();
    switch (code) {
    case VX_TB_CTX_REMOVE:
    case VX_TB_CTX_PROPERTIES:
        return any ? 1 : 0;
    case VX_TB_CTX_ADD_POINT:
    case VX_TB_CTX_DIMENSION_WALL:
        return any && m_touchSelType == selWall ? 1 : 0;
    case VX_TB_ZOOM_IN:
    case VX_TB_ZOOM_OUT:
    case VX_TB_ZOOM_BEST_FIT:
    case VX_TB_NUMERICAL_EDITOR:
        return 1;
    default:
        return 0;
    }
}

bool CVxWallEditor::GetMainToolbarButtonHint(EVxMainToolbarButtonCode code, CVxStringW& text)
{
    if (code != VX_TB_CTX_REMOVE && code != VX_TB_CTX_PROPERTIES)
        return false;
    const bool remove = code == VX_TB_CTX_REMOVE;
    switch (m_touchSelType) {
    case selWall:
        text = remove ? Msg(1002, L"Remove Wall") : Msg(1003, L"Wall Properties");
        return true;
    case selVertex:
        text = remove ? Msg(1004, L"Remove Control Point") : Msg(1005, L"Control Point Properties");
        return true;
    case selHole:
    case selHolePoint:
        text = remove ? Msg(1006, L"Remove Floor Opening") : Msg(1007, L"Floor Opening Properties");
        return true;
    default:
        return false;
    }
}

bool CVxWallEditor::OnKeyDown(unsigned key, unsigned modifiers)
{
    if (!m_active)
        return false;
    switch (key) {
    case VX_KEY_ESC:
        if (m_operation >= opMoveVertex && m_operation <= opMoveHolePoint) {
            // A drag given up: everything back to where it was.
            const bool moved = m_mouseMoved;
            m_operation = opNone;
            m_wallSelection.EndResizing();
            m_resizeEdges.clear();
            DeleteTempDimLines();
            if (moved && m_undo && m_undo->CanUndo()) {
                MakeUndo();
                m_undo->ClearRedoHistory();
            }
            RebuildAfterChange(false);
            SetStatus(CVxStringW());
            Repaint();
            return true;
        }
        if (m_operation >= opNewWallStart && m_operation <= opNewHolePoly) {
            if (m_operation == opNewHolePoly && m_newHolePoly.GetVertexCount() > 3) {
                // The point under the pointer is the one still to place.
                m_newHolePoly.points.pop_back();
                m_newHolePoly.bezierFlags.resize(m_newHolePoly.points.size());
                OnDblClick(0, 0);
                return true;
            }
            if (m_mouseMoved && m_undo)
                m_undo->ClearRedoHistory();
            OnMouseOperationChanged(opNone);
            return true;
        }
        if (!m_touchSelItems.empty()) {
            ClearTouchSelection();
            Repaint();
            return true;
        }
        return false;
    case VX_KEY_ENTER:
        if (modifiers == 0 && !m_touchSelItems.empty()) {
            OnPopupWallProperties();
            return true;
        }
        return false;
    case VX_KEY_DELETE:
        if (m_touchSelItems.empty())
            return false;
        OnPopupWallRemove();
        return true;
    default:
        return false;
    }
}

void CVxWallEditor::ClearTouchSelection()
{
    m_touchSelType = selNone;
    m_touchSelItems.clear();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->RebuildContextToolbar();
}

void CVxWallEditor::SetTouchSelection(int type, int item, unsigned modifiers)
{
    const bool adding = (modifiers & 3u) != 0 && type == m_touchSelType;
    if (!adding) {
        m_touchSelItems.clear();
        m_touchSelType = type;
    }
    const auto found = std::find(m_touchSelItems.begin(), m_touchSelItems.end(), item);
    if (found == m_touchSelItems.end())
        m_touchSelItems.push_back(item);
    else if (adding)
        m_touchSelItems.erase(found);
    if (m_touchSelItems.empty())
        m_touchSelType = selNone;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->RebuildContextToolbar();
}

bool CVxWallEditor::IsItemTouchSelected(int type, int item) const
{
    return type == m_touchSelType &&
           std::find(m_touchSelItems.begin(), m_touchSelItems.end(), item) != m_touchSelItems.end();
}

void CVxWallEditor::OnPopupWallAddControlPoint()
{
    CVxFloor* floor = Floor();
    if (!floor)
        return;
    int wallIndex = -1;
    double t = 0.5;
    if (m_touchSelType == selWall && !m_touchSelItems.empty()) {
        wallIndex = m_touchSelItems.front();
    } else if (m_host) {
        const CVxDPoint at = m_host->EditorLastPointer() / std::max(Zoom(), 1e-9);
        wallIndex = GetNearestSnapWall(*floor, at.x, at.y, &t, nullptr);
    }
    const CVxWall* wall = floor->m_walls.SafeGetWall(wallIndex);
    if (!wall)
        return;
    CVxDPoint point = wall->GetPointOnWall(t);
    m_project->SubUnitCorrection(&point, VX_DF_DECIMAL);
    if (point == wall->start || point == wall->end)
        return;
    CatchUndoStep(true);
    floor->m_walls.SplitWallAtPoint(wallIndex, t, &point);
    RebuildAfterChange(true);
    const CVxPlanVertex* vertex = m_plan->FindVertex(point.x, point.y);
    ClearTouchSelection();
    for (size_t i = 0; i < m_plan->vertices.size(); ++i)
        if (m_plan->vertices[i] == vertex)
            SetTouchSelection(selVertex, static_cast<int>(i), 0);
    Repaint();
}

void CVxWallEditor::OnPopupWallRemove()
{
    CVxFloor* floor = Floor();
    if (!floor || m_touchSelItems.empty())
        return;
    CatchUndoStep(true);
    CVxRoomWalls& walls = floor->m_walls;
    std::vector<int> removeWalls;
    std::vector<CVxDPoint> healAt;
    switch (m_touchSelType) {
    case selVertex:
        for (int item : m_touchSelItems) {
            const CVxPlanVertex* vertex = m_plan->SafeGetVertex(item);
            if (!vertex)
                continue;
            if (vertex->edges.size() == 2 && vertex->edges[0]->wall != vertex->edges[1]->wall) {
                // Two walls become one: the first takes the far end of the
                // second.
                CVxWall* first = walls.SafeGetWall(vertex->edges[0]->wall);
                const CVxWall* second = walls.SafeGetWall(vertex->edges[1]->wall);
                if (!first || !second)
                    continue;
                const CVxDPoint far = second->start == vertex->Point() ? second->end : second->start;
                const double farHeight =
                    second->start == vertex->Point() ? second->endHeight : second->startHeight;
                if (first->start == vertex->Point()) {
                    first->start = far;
                    first->startHeight = farHeight;
                } else {
                    first->end = far;
                    first->endHeight = farHeight;
                }
                first->RecalculateProperites();
                removeWalls.push_back(vertex->edges[1]->wall);
            } else {
                for (const CVxPlanEdge* edge : vertex->edges)
                    removeWalls.push_back(edge->wall);
            }
        }
        break;
    case selWall:
        for (int item : m_touchSelItems) {
            if (const CVxWall* wall = walls.SafeGetWall(item)) {
                healAt.push_back(wall->start);
                healAt.push_back(wall->end);
                removeWalls.push_back(item);
            }
        }
        break;
    case selHole: {
        std::vector<int> holes = m_touchSelItems;
        std::sort(holes.rbegin(), holes.rend());
        for (int hole : holes)
            if (walls.SafeGetHole(hole))
                walls.holes.erase(walls.holes.begin() + hole);
        break;
    }
    case selHolePoint:
        if (CVxHoleInFloor* hole = walls.SafeGetHole(m_activeHole)) {
            const int point = m_touchSelItems.front();
            if (hole->polygon.GetVertexCount() > 3 && point >= 0 && point < hole->polygon.GetVertexCount()) {
                hole->polygon.points.erase(hole->polygon.points.begin() + point);
                hole->polygon.bezierFlags.resize(hole->polygon.points.size());
                hole->InvalidateCache();
            }
        }
        break;
    default:
        break;
    }
    std::sort(removeWalls.begin(), removeWalls.end());
    removeWalls.erase(std::unique(removeWalls.begin(), removeWalls.end()), removeWalls.end());
    for (auto it = removeWalls.rbegin(); it != removeWalls.rend(); ++it)
        walls.Remove(*it);
    if (!healAt.empty()) {
        // A wall through a T-joint whose stem is gone is one wall again.
        ConnectEdgesToWalls(*floor, *m_plan, false, 2, &healAt);
    }
    ClearTouchSelection();
    AdjustRoomSpace(*m_project, WallBounds(), true);
    RebuildAfterChange(true);
    Repaint();
}

void CVxWallEditor::OnPopupWallProperties()
{
    CVxFloor* floor = Floor();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!floor || !host || m_touchSelItems.empty())
        return;
    switch (m_touchSelType) {
    case selVertex: {
        CVxPlanVertex* vertex = m_plan->SafeGetVertex(m_touchSelItems.front());
        if (!vertex)
            return;
        double height = kUnset;
        if (!vertex->edges.empty())
            if (const CVxWall* wall = floor->m_walls.SafeGetWall(vertex->edges.front()->wall))
                height = wall->start == vertex->Point() ? wall->startHeight : wall->endHeight;
        // The dialog gives the new place in the vertex it is shown; a height
        // typed in comes back through FinalizeWallVertexPropDlg, which a host
        // that shows heights calls itself, answering false.
        CVxPlanVertex value(vertex->x, vertex->y);
        if (host->WallVertexPropDlgShow(&value, height, Msg(1005, L"Control Point Properties"), nullptr))
            FinalizeWallVertexPropDlg(value.Point(), kUnset);
        break;
    }
    case selWall: {
        const CVxWall* wall = floor->m_walls.SafeGetWall(m_touchSelItems.front());
        if (!wall)
            return;
        CVxWall copy = *wall;
        // Fields in which the selected walls differ are shown empty.
        unsigned differ = 0;
        for (int item : m_touchSelItems) {
            const CVxWall* other = floor->m_walls.SafeGetWall(item);
            if (!other)
                continue;
            if (std::fabs(other->thickness - copy.thickness) >= EPS)
                differ |= 1;
            if (std::fabs(other->startHeight - copy.startHeight) >= EPS ||
                std::fabs(other->endHeight - copy.endHeight) >= EPS)
                differ |= 2;
            if (other->start != copy.start || other->end != copy.end)
                differ |= 4;
        }
        if (host->WallEdgePropDlgShow(&copy, Msg(1003, L"Wall Properties"), differ, nullptr))
            FinalizeWallEdgePropDlg(copy, 0xffffffffu);
        break;
    }
    case selHole: {
        const CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(m_touchSelItems.front());
        if (!hole)
            return;
        CVxHoleInFloor copy = *hole;
        if (host->WallHolePropDlgShow(&copy, Msg(1007, L"Floor Opening Properties"), nullptr))
            FinalizeWallHolePropDlg(copy);
        break;
    }
    default:
        break;
    }
}

void CVxWallEditor::FinalizeWallVertexPropDlg(const CVxDPoint& value, double height)
{
    CVxFloor* floor = Floor();
    if (!floor || m_touchSelType != selVertex)
        return;
    CatchUndoStep(true);
    m_resizeEdges.clear();
    std::vector<CVxDPoint> targets;
    for (int item : m_touchSelItems) {
        CVxPlanVertex* vertex = m_plan->SafeGetVertex(item);
        if (!vertex)
            continue;
        const double dx = value.x == kUnset ? 0 : value.x - vertex->x;
        const double dy = value.y == kUnset ? 0 : value.y - vertex->y;
        MovePlanEdges(vertex, dx, dy, false, false);
        targets.push_back(vertex->Point());
        if (height != kUnset) {
            for (const CVxPlanEdge* edge : vertex->edges) {
                CVxWall* wall = floor->m_walls.SafeGetWall(edge->wall);
                if (!wall)
                    continue;
                if (wall->start == vertex->Point())
                    wall->startHeight = height;
                if (wall->end == vertex->Point())
                    wall->endHeight = height;
            }
        }
    }
    AdjustRoomSpace(*m_project, WallBounds(), true);
    RebuildAfterChange(true);
    ClearTouchSelection();
    for (const CVxDPoint& p : targets)
        for (size_t i = 0; i < m_plan->vertices.size(); ++i)
            if (m_plan->vertices[i]->Point() == p)
                SetTouchSelection(selVertex, static_cast<int>(i), 1);
    Repaint();
}

void CVxWallEditor::FinalizeWallEdgePropDlg(const CVxWall& value, unsigned /*filled*/)
{
    CVxFloor* floor = Floor();
    if (!floor || m_touchSelType != selWall)
        return;
    CatchUndoStep(true);
    const auto isSet = [](double v) { return v != kUnset && v != 16777215.0; };
    for (int item : m_touchSelItems) {
        CVxWall* wall = floor->m_walls.SafeGetWall(item);
        if (!wall)
            continue;
        if (isSet(value.thickness))
            wall->thickness = value.thickness;
        if (isSet(value.startHeight))
            wall->startHeight = value.startHeight;
        if (isSet(value.endHeight))
            wall->endHeight = value.endHeight;
        wall->align = value.align;
        wall->customOffset = value.customOffset;
        wall->lineStyle = value.lineStyle;
        wall->fillStyle = value.fillStyle;
        wall->visible = value.visible;
        if (wall->curved != value.curved) {
            wall->curved = value.curved;
        }
        wall->RecalculateProperites();
    }
    // New ends move the vertices, so that the neighbours follow.
    if (m_touchSelItems.size() == 1) {
        CVxWall* wall = floor->m_walls.SafeGetWall(m_touchSelItems.front());
        if (wall && isSet(value.start.x) && isSet(value.end.x) &&
            (value.start != wall->start || value.end != wall->end)) {
            const CVxDPoint oldStart = wall->start;
            const CVxDPoint oldEnd = wall->end;
            m_resizeEdges.clear();
            CVxPlanVertex* a = m_plan->FindVertex(oldStart.x, oldStart.y);
            CVxPlanVertex* b = m_plan->FindVertex(oldEnd.x, oldEnd.y);
            if (a)
                MovePlanEdges(a, value.start.x - oldStart.x, value.start.y - oldStart.y, false, false);
            if (b)
                MovePlanEdges(b, value.end.x - oldEnd.x, value.end.y - oldEnd.y, false, false);
        }
    }
    AdjustRoomSpace(*m_project, WallBounds(), true);
    ClearTouchSelection();
    RebuildAfterChange(true);
    Repaint();
}

void CVxWallEditor::FinalizeWallHolePropDlg(const CVxHoleInFloor& value)
{
    CVxFloor* floor = Floor();
    if (!floor || m_touchSelType != selHole || m_touchSelItems.empty())
        return;
    CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(m_touchSelItems.front());
    if (!hole)
        return;
    CatchUndoStep(true);
    *hole = value;
    hole->InvalidateCache();
    RebuildAfterChange(false);
    Repaint();
}

bool CVxWallEditor::OnContextEditCopy(CVxStringA& outText)
{
    CVxFloor* floor = Floor();
    if (!floor || m_touchSelItems.empty())
        return false;
    CVxStringW text = L"[Plaveno Wall Editor]\r\n";
    int number = 1;
    for (int item : m_touchSelItems) {
        CVxStringW line;
        if (m_touchSelType == selWall) {
            if (const CVxWall* wall = floor->m_walls.SafeGetWall(item))
                line.sprintf(L"Wall%d=%ls\r\n", number++, wall->SaveToString().c_str());
        } else if (m_touchSelType == selHole) {
            if (const CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(item))
                line.sprintf(L"Hole%d=%ls\r\n", number++, hole->SaveToString().c_str());
        }
        text += line;
    }
    if (number == 1)
        return false;
    outText = VX_StringToUTF8(text);
    return true;
}

bool CVxWallEditor::OnContextEditPaste(const CVxStringA& text)
{
    CVxFloor* floor = Floor();
    if (!floor)
        return false;
    const CVxStringW wide = VX_StringFromUTF8(text);
    const std::wstring& s = wide.Std();
    if (s.rfind(L"[Plaveno Wall Editor]", 0) != 0)
        return false;
    m_pasteWalls.clear();
    m_pasteHoles.clear();
    size_t at = 0;
    // Lines of key=value; a clip of a few walls is small, so a bound on the
    // number of entries keeps a hostile clip from growing the floor.
    constexpr size_t maxEntries = 10000;
    while (at < s.size() && m_pasteWalls.size() + m_pasteHoles.size() < maxEntries) {
        size_t end = s.find(L'\n', at);
        if (end == std::wstring::npos)
            end = s.size();
        std::wstring line = s.substr(at, end - at);
        at = end + 1;
        if (!line.empty() && line.back() == L'\r')
            line.pop_back();
        const size_t eq = line.find(L'=');
        if (eq == std::wstring::npos)
            continue;
        OnReadIniValue(CVxStringA(CVxStringW(line.substr(0, eq).c_str())),
                       CVxStringW(line.substr(eq + 1).c_str()), nullptr);
    }
    if (m_pasteWalls.empty() && m_pasteHoles.empty())
        return false;
    CatchUndoStep(true);
    // A little off, so that the copy is seen beside its original.
    const double off = 20.0 / std::max(Zoom(), 1e-9);
    for (const CVxStringW& value : m_pasteWalls) {
        CVxWall wall;
        if (!wall.LoadFromString(value))
            continue;
        wall.Move(off, off);
        floor->m_walls.walls.push_back(wall);
    }
    for (const CVxStringW& value : m_pasteHoles) {
        CVxHoleInFloor hole;
        if (!hole.LoadFromString(value))
            continue;
        hole.Move(off, off, m_project);
        floor->m_walls.holes.push_back(hole);
    }
    ClearTouchSelection();
    AdjustRoomSpace(*m_project, WallBounds(), true);
    RebuildAfterChange(true);
    Repaint();
    return true;
}

void CVxWallEditor::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                   CVxIniFileReader* /*reader*/)
{
    const CVxStringA head = key.Left(4);
    if (head == CVxStringA("Wall"))
        m_pasteWalls.push_back(value);
    else if (head == CVxStringA("Hole"))
        m_pasteHoles.push_back(value);
}

void CVxWallEditor::OnDrawBackground(CVxDC* dc, double zoom, int offsetX, int offsetY, const VxRECT& /*clip*/,
                                     int /*flags*/, int stage)
{
    if (!m_project || stage != 0 || m_floorBelow < 0 || m_floorBelow >= m_project->GetFloorCount() ||
        m_floorBelow == m_project->m_currentFloor)
        return;
    // The floor below, pale, to build on.
    const CVxFloor* below = m_project->m_floors[static_cast<size_t>(m_floorBelow)];
    below->m_walls.Draw(dc, 0xE8E8E8, 0x909090, 80, offsetX, offsetY, zoom);
}

void CVxWallEditor::OnDraw(CVxDC* dc, double zoom, int offsetX, int offsetY)
{
    CVxFloor* floor = Floor();
    if (!floor || !dc)
        return;
    if (zoom != m_wallSelection.GetZoom())
        Collect();
    // Selected walls and openings first, the handles over them.
    if (m_touchSelType == selWall) {
        for (int item : m_touchSelItems)
            if (const CVxWall* wall = floor->m_walls.SafeGetWall(item))
                wall->DrawSelectionAround(dc, offsetX, offsetY, zoom);
    }
    if (m_touchSelType == selHole) {
        dc->SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 2, 0xFF8000);
        dc->SelectBrush(CVxDC::brushNull, 0);
        for (int item : m_touchSelItems) {
            CVxHoleInFloor* hole = floor->m_walls.SafeGetHole(item);
            if (!hole)
                continue;
            CVxDPolygon outline;
            hole->GetHolePolygon(outline);
            std::vector<VxPOINT> pixels;
            for (const CVxDPoint& p : outline.points)
                pixels.push_back(VxPOINT{static_cast<int>(std::lround(p.x * zoom)) + offsetX,
                                         static_cast<int>(std::lround(p.y * zoom)) + offsetY});
            if (pixels.size() >= 2)
                dc->Polygon(pixels.data(), static_cast<int>(pixels.size()));
        }
        dc->SelectOldBrush();
        dc->SelectOldPen();
    }
    const auto& symbols = m_wallSelection.GetSymbols();
    for (size_t i = 0; i < symbols.size(); ++i) {
        const CVxSelSymbol& symbol = symbols[i];
        const bool selected =
            (symbol.kind == CVxWallSelection::kindWallVertex &&
             IsItemTouchSelected(selVertex, symbol.partNo)) ||
            (symbol.kind == CVxWallSelection::kindHolePoint && m_touchSelType == selHolePoint &&
             symbol.partNo == m_activeHole && IsItemTouchSelected(selHolePoint, symbol.subIndex));
        if (selected)
            symbol.DrawTouchCircle(dc, offsetX, offsetY);
        symbol.DrawToHdc(dc, offsetX, offsetY, static_cast<int>(i) == m_wallSelection.GetResizingSymbolIdx());
    }
    if (m_operation == opNewHolePoly && m_newHolePoly.GetVertexCount() >= 2) {
        std::vector<VxPOINT> pixels;
        for (const CVxDPoint& p : m_newHolePoly.points)
            pixels.push_back(VxPOINT{static_cast<int>(std::lround(p.x * zoom)) + offsetX,
                                     static_cast<int>(std::lround(p.y * zoom)) + offsetY});
        dc->SelectPen(CVxDC::penDash | CVxDC::penKeepWidth, 1, 0xC06000);
        dc->Polyline(pixels.data(), static_cast<int>(pixels.size()));
        dc->SelectOldPen();
    }
}

void CVxWallEditor::OnMenuNumericalEditor()
{
    CVxFloor* floor = Floor();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!m_active || m_noRebuild || !floor || !m_plan || !host)
        return;
    std::vector<CVxDPoint> corners;
    for (const CVxPlanVertex* vertex : m_plan->vertices)
        corners.push_back(vertex->Point());
    std::vector<SVxWallNumbers> walls;
    for (const CVxWall& wall : floor->m_walls.walls)
        walls.push_back({wall.thickness, wall.startHeight});
    std::vector<CVxDPoint> newCorners = corners;
    std::vector<SVxWallNumbers> newWalls = walls;
    if (!host->WallNumericalDlgShowModal(newCorners, newWalls) || newCorners.size() != corners.size() ||
        newWalls.size() != walls.size())
        return;
    CatchUndoStep(true);
    // Walls first, while their indexes are those of the table.
    for (size_t i = 0; i < walls.size(); ++i) {
        CVxWall& wall = floor->m_walls.walls[i];
        const SVxWallNumbers& value = newWalls[i];
        if (value.thickness != walls[i].thickness && value.thickness > 0 && value.thickness < kMaxWallNumber)
            wall.thickness = value.thickness;
        if (value.height != walls[i].height && value.height > 0 && value.height < kMaxWallNumber) {
            // A sloped wall keeps its slope.
            wall.endHeight += value.height - wall.startHeight;
            wall.startHeight = value.height;
        }
        wall.RecalculateProperites();
    }
    // A corner that moves takes the ends of its walls along; the others
    // stay where they are, so each is still found at its old place.
    for (size_t i = 0; i < corners.size(); ++i) {
        const CVxDPoint delta = newCorners[i] - corners[i];
        if ((delta.x == 0 && delta.y == 0) || !std::isfinite(delta.x) || !std::isfinite(delta.y) ||
            std::fabs(newCorners[i].x) > kMaxWallNumber || std::fabs(newCorners[i].y) > kMaxWallNumber)
            continue;
        m_resizeEdges.clear();
        if (CVxPlanVertex* vertex = m_plan->FindVertex(corners[i].x, corners[i].y))
            MovePlanEdges(vertex, delta.x, delta.y, false, false);
    }
    AdjustRoomSpace(*m_project, WallBounds(), true);
    RebuildAfterChange(true);
    Repaint();
}
