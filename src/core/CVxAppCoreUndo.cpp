// Undo and redo of the document by whole-project snapshots.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxOptions.h"
#include "IVxAppHelperCallback.h"

#include <algorithm>
#include <cmath>

void CVxAppCore::CatchUndoRoom(bool armNext)
{
    // An open editor keeps the steps of its run itself.
    if (m_activeEditor) {
        m_activeEditor->CatchUndoStep(armNext);
        m_keyMoveObject = -1;
        return;
    }
    if (m_undoArmed)
        m_undo->AddToUndoList(&m_project);
    m_undoArmed = armNext;
    m_project.m_modified = true;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->EnableUndoButtons();
}

void CVxAppCore::PreserveInfoInUndo(CVxProject* restored, const CVxProject* current)
{
    if (!restored || !current || restored == current)
        return;
    restored->m_userCoord = current->m_userCoord;
    restored->m_bkgScanVisible = current->m_bkgScanVisible;
    // Floors that only one of the two has keep what the snapshot held.
    const int floors = std::min(restored->GetFloorCount(), current->GetFloorCount());
    for (int i = 0; i < floors; ++i) {
        CVxFloor* to = restored->m_floors[static_cast<size_t>(i)];
        const CVxFloor* from = current->m_floors[static_cast<size_t>(i)];
        to->m_localCoords = from->m_localCoords;
        to->m_printArea = from->m_printArea;
        to->m_printAreaSet = from->m_printAreaSet;
        to->m_bkgScanRect = from->m_bkgScanRect;
        to->m_bkgScanFile = from->m_bkgScanFile;
        to->m_bkgScanExtra[0] = from->m_bkgScanExtra[0];
        to->m_bkgScanExtra[1] = from->m_bkgScanExtra[1];
    }
    restored->m_printSetup = current->m_printSetup;
    restored->m_printTitle = current->m_printTitle;
    restored->m_printNote1 = current->m_printNote1;
    restored->m_printNote2 = current->m_printNote2;
    restored->m_globalShadow = current->m_globalShadow;
    restored->m_attachments = current->m_attachments;
    restored->m_comments = current->m_comments;
    // The files exist on disk whatever the undo does.
    restored->m_storedFiles = current->m_storedFiles;
    restored->m_refusedFiles = current->m_refusedFiles;
}

bool CVxAppCore::MakeUndo()
{
    if (!CanUndo())
        return false;
    if (m_activeEditor) {
        AfterEditorUndo(m_activeEditor->MakeUndo());
        return true;
    }
    m_undoArmed = true;
    RestoreUndoSlot(m_undo->MakeUndo(&m_project));
    return true;
}

bool CVxAppCore::MakeRedo()
{
    if (!CanRedo())
        return false;
    if (m_activeEditor) {
        AfterEditorUndo(m_activeEditor->MakeRedo());
        return true;
    }
    m_undoArmed = true;
    RestoreUndoSlot(m_undo->MakeRedo());
    return true;
}

void CVxAppCore::RestoreUndoSlot(CVxProject* slot)
{
    const bool sizeChanged = std::fabs(slot->GetTotalWidth() - m_project.GetTotalWidth()) > 1e-7 ||
                             std::fabs(slot->GetTotalHeight() - m_project.GetTotalHeight()) > 1e-7;
    PreserveInfoInUndo(slot, &m_project);
    slot->CopyTo(&m_project);
    UpdateFloorPlan();
    // The selection is kept by index in the object slots, which travel with
    // the project; an index beyond them is dropped.
    if (m_firstSelected >= m_project.GetFloor()->GetObjectSlotCount())
        m_firstSelected = -1;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    host->BuildLayersSubMenu(true);
    host->EnableFloorButtons();
    host->AfterSelectionChanged();
    host->EnableUndoButtons();
    host->OnPartListingChange();
    host->UpdateProjectUI(sizeChanged && VX_GetOptions()->m_openInBestFit, sizeChanged);
    host->RefreshMainViewCursor();
}

void CVxAppCore::AfterEditorUndo(bool sizeChanged)
{
    RebuildRoom();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    host->EnableUndoButtons();
    host->OnPartListingChange();
    host->RefreshMainViewStatusBar();
    host->UpdateProjectUI(sizeChanged && VX_GetOptions()->m_openInBestFit, sizeChanged);
    host->DrawRoom(nullptr);
}
