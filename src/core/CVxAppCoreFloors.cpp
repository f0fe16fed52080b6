// The floors of the project as the user works them: adding one on top,
// removing, swapping with the neighbours, and going up and down.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "IVxAppHelperCallback.h"

bool CVxAppCore::AddNewFloor()
{
    CatchUndoRoom(true);
    m_project.AddNewFloor();
    m_project.m_currentFloor = m_project.GetFloorCount() - 1;
    AfterFloorChange();
    return true;
}

bool CVxAppCore::RemoveCurrentFloor(bool ask)
{
    if (m_project.GetFloorCount() < 2)
        return false;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (ask && host) {
        const int answer =
            host->MsgBox(VX_GetLoc()->LocalizeMessage(
                             910, L"Do you really want to remove this floor with all its walls and "
                                  L"objects?"),
                         VX_GetLoc()->LocalizeMessage(33, L"Warning"),
                         VX_MB_YES | VX_MB_NO | VX_MB_ICON_WARNING, nullptr, VX_MB_NO);
        if (answer != VX_MBR_YES)
            return false;
    }
    CatchUndoRoom(true);
    m_project.RemoveFloor(m_project.m_currentFloor);
    AfterFloorChange();
    return true;
}

bool CVxAppCore::SwapCurrentFloor(bool withHigher)
{
    const int current = m_project.m_currentFloor;
    const int other = withHigher ? current + 1 : current - 1;
    if (other < 0 || other >= m_project.GetFloorCount())
        return false;
    CatchUndoRoom(true);
    m_project.SwapFloors(current, other);
    AfterFloorChange();
    return true;
}

bool CVxAppCore::GoToFloor(int index)
{
    if (index < 0 || index >= m_project.GetFloorCount() || index == m_project.m_currentFloor)
        return false;
    m_project.m_currentFloor = index;
    AfterFloorChange();
    return true;
}

void CVxAppCore::AfterFloorChange()
{
    m_firstSelected = -1;
    UpdateFloorPlan();
    // Each floor has a scan of its own.
    LoadCurrentBkgFloorScan(nullptr, false);
    RebuildRoom();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    host->EnableFloorButtons();
    host->BuildLayersSubMenu(true);
    host->AfterSelectionChanged();
    host->OnPartListingChange();
    host->RefreshMainViewStatusBar();
    host->UpdateProjectUI(false, false);
}
