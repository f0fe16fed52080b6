// What the property commands and a double click in the plan open. The
// dialogues themselves belong to the host; what they change is applied by
// CVxObjPropEdit and CVxRoomPropEdit.

#include "CVxAppCore.h"

#include "CVxFloor.h"
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
