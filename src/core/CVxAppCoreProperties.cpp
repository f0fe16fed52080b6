// What the property commands and a double click in the plan open. The
// dialogues themselves belong to the host; what they change is applied by
// CVxObjPropEdit and CVxRoomPropEdit.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxUnits.h"
#include "CVxUserLibrary.h"
#include "IVxAppHelperCallback.h"

bool CVxAppCore::ShowSelectedObjectProperties()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    const int count = GetSelCount();
    // The page layout's objects are the plan's kind and edited alike.
    if (!host || count < 1 || (m_activeEditor && m_activeEditor->GetID() != VX_EDITOR_PAGE_LAYOUT))
        return false;
    bool changed = false;
    host->ObjPropShowModal(count > 1, &changed);
    return changed;
}

bool CVxAppCore::AddLabelAtPointer()
{
    // The plain label of the standard library.
    constexpr int kLabelLibId = 288;
    CVxPart label;
    const int index = m_userLibrary ? m_userLibrary->FindPartWithLibObjID(kLabelLibId, false) : -1;
    if (index < 0 || !LibWriteToPart(&label, index) || label.type != ptLabel) {
        label = CVxPart();
        label.type = ptLabel;
        label.width = 100 / CVxUnits::GetUnitCal(m_project.m_unit);
        label.height = 30 / CVxUnits::GetUnitCal(m_project.m_unit);
        label.caption = L"Label";
    }
    const int added = LibAddNewObject(&label, -1, m_lastPointer.x, m_lastPointer.y);
    if (added < 0)
        return false;
    CatchUndoRoom(true);
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->OnNewObjectAdded(added);
    ShowSelectedObjectProperties();
    return true;
}

bool CVxAppCore::ShowRoomProperties(int region)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || !m_floorPlan.SafeGetRegion(region) || m_activeEditor)
        return false;
    host->RoomsTuningShowModal(region);
    return true;
}

int CVxAppCore::FindRoomAtPoint(double x, double y) const
{
    if (m_zoom <= 0)
        return -1;
    const VxPOINT origin = GetObjectOrigin();
    return m_floorPlan.FindRegion(CVxDPoint((x - origin.x) / m_zoom, (y - origin.y) / m_zoom));
}
