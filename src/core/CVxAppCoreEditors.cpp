// The editors that take over the plan view: opening and closing them, what
// the core gives them, and the wall commands that work through the wall
// editor's geometry.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxPageLayoutEditor.h"
#include "CVxUnits.h"
#include "CVxWallEditor.h"
#include "IVxAppHelperCallback.h"
#include "VxTypedLength.h"

namespace {
// The core as an editor sees it.
class CVxCoreEditorHost : public IVxEditorHost
{
public:
    explicit CVxCoreEditorHost(CVxAppCore* core) : m_core(core) {}
    double GetEditorZoom() const override { return m_core->GetZoom(); }
    double GetEditorRoundedZoom() const override { return m_core->GetRoundedZoom(); }
    void EditorCreatePlan() override { m_core->UpdateFloorPlan(); }
    void EditorRebuildRoom() override
    {
        m_core->RebuildRoom();
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->UpdateProjectUI(false, true);
    }
    void EditorRepaint() override
    {
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->DrawRoom(nullptr);
    }
    void EditorSetRubber(int kind, double x1, double y1, double x2, double y2) override
    {
        m_core->SetTempObject(kind, x1, y1, x2, y2);
    }
    CVxDPoint EditorLastPointer() const override { return m_core->GetLastPointer(); }
    bool EditorLoadBkgScan(bool show) override { return m_core->LoadCurrentBkgFloorScan(nullptr, show); }
    CVxDRect EditorBkgScanRect() const override
    {
        const CVxPart& scan = m_core->GetBkgScanPart();
        if (!scan.GetPicture())
            return CVxDRect();
        return CVxDRect(scan.x, scan.y, scan.x + scan.width, scan.y + scan.height);
    }

private:
    CVxAppCore* m_core;
};
} // namespace

CVxWallEditor* CVxAppCore::GetWallEditor()
{
    if (!m_wallEditor)
        m_wallEditor = std::make_unique<CVxWallEditor>();
    if (!m_editorHost)
        m_editorHost = std::make_unique<CVxCoreEditorHost>(this);
    return m_wallEditor.get();
}

bool CVxAppCore::ActivateSpecialEditor(EVxEditorCode code)
{
    switch (code) {
    case VX_EDITOR_WALL:
        return ActivateWallEditor(true, false, false);
    default:
        return false;
    }
}

bool CVxAppCore::ActivateWallEditor(bool activate, bool discard, bool newRoom)
{
    CVxWallEditor* editor = GetWallEditor();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (activate) {
        if (m_activeEditor)
            return m_activeEditor == editor;
        MainViewFinishInterAction(true);
        ClearSelection(false);
        editor->SetProject(&m_project, &m_floorPlan);
        m_activeEditor = editor;
        editor->Activate(m_editorHost.get(), false);
        RebuildRoom();
        if (host) {
            host->AfterSpecialEditorActivated(VX_EDITOR_WALL, true, false);
            host->EnableUndoButtons();
            host->OnPartListingChange();
            host->DrawRoom(nullptr);
        }
        return true;
    }
    if (m_activeEditor != editor)
        return false;
    const bool modified = editor->IsModified();
    const bool saved = editor->WasProjectSavedWhileEditing();
    editor->Deactivate(discard);
    m_activeEditor = nullptr;
    SetTempObject(0, 0, 0, 0, 0);
    if (!newRoom) {
        if (!discard && modified) {
            // The whole editing run is one step of the document's undo.
            m_undo->AddToUndoList(&editor->GetOriginalProject());
            m_project.m_modified = true;
            m_undoArmed = true;
            m_keyMoveObject = -1;
        } else if (!discard && saved) {
            m_project.m_modified = true;
        } else if (discard && modified && saved) {
            // The file now holds what was discarded.
            m_project.m_modified = true;
        }
    }
    editor->ReleaseBackup();
    UpdateFloorPlan();
    m_project.GetFloor()->ResnapAllParts(&m_floorPlan);
    RebuildRoom();
    m_firstSelected = GetFirstSelected();
    OnSelectionChange();
    if (host) {
        host->AfterSpecialEditorActivated(VX_EDITOR_WALL, false, discard);
        host->EnableUndoButtons();
        host->OnPartListingChange();
        host->UpdateProjectUI(false, true);
        host->RefreshMainViewCaption();
        host->DrawRoom(nullptr);
    }
    return true;
}

CVxPageLayoutEditor* CVxAppCore::GetPageLayoutEditor()
{
    if (!m_pageLayoutEditor)
        m_pageLayoutEditor = std::make_unique<CVxPageLayoutEditor>();
    if (!m_editorHost)
        m_editorHost = std::make_unique<CVxCoreEditorHost>(this);
    return m_pageLayoutEditor.get();
}

bool CVxAppCore::ActivatePageLayoutEditor(bool activate, bool discard, const CVxPrintPageInfo* info,
                                          bool newLayout)
{
    CVxPageLayoutEditor* editor = GetPageLayoutEditor();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (activate) {
        if (m_activeEditor)
            return m_activeEditor == editor;
        if (!info || info->file.IsEmpty())
            return false;
        MainViewFinishInterAction(true);
        ClearSelection(false);
        const int unit = CVxUnits::GetUnitEngTextIdx(CVxStringA(VX_GetOptions()->m_defaultUnit));
        m_activeEditor = editor;
        if (!editor->Activate(&m_project, m_editorHost.get(), *info, newLayout, unit)) {
            m_activeEditor = nullptr;
            return false;
        }
        m_zoom = m_project.m_baseZoom;
        if (host) {
            host->AfterSpecialEditorActivated(VX_EDITOR_PAGE_LAYOUT, true, false);
            host->EnableFloorButtons();
            host->EnableUndoButtons();
            host->OnPartListingChange();
            host->UpdateProjectUI(true, false);
            host->RefreshMainViewCaption();
            host->DrawRoom(nullptr);
        }
        return true;
    }
    if (m_activeEditor != editor)
        return false;
    if (!discard && !editor->SaveLayout()) {
        // The work stays in the editor, where it can go into another file.
        if (host)
            host->MsgBox(VX_GetLoc()->LocalizeMessage(1311, L"The page layout could not be saved.") + L"\n" +
                             editor->GetFile(),
                         VX_GetLoc()->LocalizeMessage(34, L"Error"),
                         static_cast<unsigned>(VX_MB_OK) | VX_MB_ICON_CRITICAL);
        return false;
    }
    MainViewFinishInterAction(false);
    editor->Deactivate(discard);
    m_activeEditor = nullptr;
    editor->ReleaseBackup();
    SetTempObject(0, 0, 0, 0, 0);
    // The project comes back as it was: nothing to undo, nothing changed.
    UpdateFloorPlan();
    RebuildRoom();
    m_zoom = m_project.m_baseZoom;
    m_firstSelected = GetFirstSelected();
    OnSelectionChange();
    if (host) {
        host->AfterSpecialEditorActivated(VX_EDITOR_PAGE_LAYOUT, false, discard);
        host->EnableFloorButtons();
        host->EnableUndoButtons();
        host->OnPartListingChange();
        host->UpdateProjectUI(true, true);
        host->RefreshMainViewCaption();
        host->DrawRoom(nullptr);
    }
    return true;
}

bool CVxAppCore::DeactivateActiveEditor(bool discard, bool force)
{
    IVxSpecialEditor* editor = m_activeEditor;
    if (!editor)
        return true;
    if (discard && !force && !editor->QueryCanClose())
        return false;
    if (m_wallEditor && editor == m_wallEditor.get())
        return ActivateWallEditor(false, discard, false);
    if (m_pageLayoutEditor && editor == m_pageLayoutEditor.get()) {
        // Leaving without asking drops the layout rather than holding up
        // the program with a file that can't be written.
        if (!ActivatePageLayoutEditor(false, discard, nullptr) && force)
            return ActivatePageLayoutEditor(false, true, nullptr);
        return !m_activeEditor;
    }
    // An editor of no kind of ours simply lets go.
    editor->Deactivate(discard);
    m_activeEditor = nullptr;
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->AfterSpecialEditorActivated(static_cast<EVxEditorCode>(editor->GetID()), false, discard);
        host->RefreshMainViewCaption();
        host->DrawRoom(nullptr);
    }
    return true;
}

bool CVxAppCore::CanUndo() const
{
    if (m_activeEditor)
        return m_activeEditor->CanUndo();
    return m_undo->CanUndo();
}

bool CVxAppCore::CanRedo() const
{
    if (m_activeEditor)
        return m_activeEditor->CanRedo();
    return m_undo->CanRedo();
}

void CVxAppCore::MainViewDblClick(double x, double y)
{
    const VxPOINT origin = GetObjectOrigin();
    if (m_activeEditor && (m_activeEditor->OnDblClick(x - origin.x, y - origin.y) ||
                           m_activeEditor->GetID() != VX_EDITOR_PAGE_LAYOUT))
        return;
    // Only the plain pointer opens dialogues: a double click while an object
    // is placed or a line measured belongs to that.
    if (m_mouseState != msIdle)
        return;
    // An object is edited before the room it stands in.
    const int index = FindPartFromPoint(x - origin.x, y - origin.y, 0, true);
    if (index >= 0) {
        const CVxPart* part = m_project.GetFloor()->SafeGetPart(index);
        if (part && !part->selected)
            SetSelection(index, true);
        ShowSelectedObjectProperties();
        return;
    }
    const int region = FindRoomAtPoint(x, y);
    if (region >= 0)
        ShowRoomProperties(region);
}

bool CVxAppCore::ApplyTypedWallLength(const CVxStringW& lengthText, const CVxStringW& angleText)
{
    CVxWallEditor* editor = m_wallEditor.get();
    if (!editor || m_activeEditor != editor || !editor->IsDrawingWall())
        return false;
    double length = 0;
    if (!VX_ParseTypedLength(lengthText, m_project.m_unit, length))
        return false;
    double angle = 0;
    const bool hasAngle = !angleText.IsEmpty() && VX_ParseTypedAngle(angleText, angle);
    // The user counts angles as on a map, against the clock; the screen's y
    // grows downwards.
    const double screen = -angle;
    return editor->ApplyTypedWall(length, hasAngle ? &screen : nullptr);
}

void CVxAppCore::DimensionAllWalls()
{
    CVxFloor* floor = m_project.GetFloor();
    if (floor->m_walls.GetWallCount() == 0)
        return;
    CatchUndoRoom(true);
    const double distance = m_zoom > 0 ? 20.0 / m_zoom : 20.0;
    for (int i = 0; i < floor->m_walls.GetWallCount(); ++i)
        CVxWallEditor::DimensionWall(*floor, m_floorPlan, i, distance, m_project.m_unit, false, 0);
    floor->ResnapAllParts(&m_floorPlan);
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->OnPartListingChange();
        host->DrawRoom(nullptr);
    }
}

void CVxAppCore::DimensionOneWall(int wall)
{
    CVxFloor* floor = m_project.GetFloor();
    if (!floor->m_walls.SafeGetWall(wall))
        return;
    CatchUndoRoom(true);
    const double distance = m_zoom > 0 ? 20.0 / m_zoom : 20.0;
    CVxWallEditor::DimensionWall(*floor, m_floorPlan, wall, distance, m_project.m_unit, false, 0);
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->OnPartListingChange();
        host->DrawRoom(nullptr);
    }
}
