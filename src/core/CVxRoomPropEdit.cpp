#include "CVxRoomPropEdit.h"

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxNumbers.h"

namespace {

double LengthFactor(int unit, int statUnit)
{
    return CVxUnits::GetUnitCal(unit) / CVxUnits::GetUnitCal(statUnit);
}

CVxStringW LengthText(double value, int unit)
{
    return VX_DblFormat(DblRound2x(value), VX_DF_FEET, unit == 2, unit) +
           (unit == 2 ? CVxStringW() : L" " + CVxUnits::GetUnitText(unit));
}

} // namespace

std::vector<SVxRoomRow> CVxRoomPropEdit::ListRooms(CVxAppCore& core)
{
    std::vector<SVxRoomRow> rows;
    const CVxProject& project = core.GetProject();
    const int unit = project.m_unit;
    const int statUnit = project.GetStatisticalUnit();
    const double lf = LengthFactor(unit, statUnit);
    CVxLocalize* loc = VX_GetLoc();
    const CVxStringW word =
        loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_ROOMMNGDLG), 9, L"Room");
    const CVxFloorPlan& plan = core.GetFloorPlan();
    for (int i = 0; i < plan.GetRegionCount(); ++i) {
        const CVxFloorRegion* room = plan.SafeGetRegion(i);
        if (!room)
            continue;
        SVxRoomRow row;
        row.region = i;
        row.named = !room->name.IsEmpty();
        row.name = row.named ? room->name : word + CVxStringW().sprintf(L" %d", i + 1);
        row.area = room->innerPolygon.GetArea() * lf * lf;
        row.perimeter = room->innerPolygon.GetPerimeter() * lf;
        row.areaText = VX_DblFormatAreaValue(row.area, statUnit);
        row.perimeterText = LengthText(row.perimeter, statUnit);
        rows.push_back(row);
    }
    return rows;
}

CVxStringW CVxRoomPropEdit::TotalAreaText(CVxAppCore& core)
{
    double total = 0;
    for (const SVxRoomRow& row : ListRooms(core))
        total += row.area;
    return VX_DblFormatAreaValue(total, core.GetProject().GetStatisticalUnit());
}

bool CVxRoomPropEdit::Begin(CVxAppCore& core, int region)
{
    const CVxFloorRegion* room = core.GetFloorPlan().SafeGetRegion(region);
    if (!room)
        return false;
    m_core = &core;
    m_region = region;
    CVxProject& project = core.GetProject();
    m_unit = project.m_unit;
    CVxFloor* floor = project.GetFloor();
    m_originalDef = floor->m_planDef;
    m_originalObjects = floor->m_objects;
    m_wasModified = project.m_modified;
    m_previewed = false;
    m_initial.name = room->name;
    m_initial.floor = room->floorAppearance;
    m_initial.ceiling = room->ceilingAppearance;
    m_initial.walls = room->wallAppearance;
    m_initial.baseMolding = room->baseMolding;
    m_initial.crownMolding = room->crownMolding;

    // The figures a user checks at a glance; the room list and the
    // statistics have the rest.
    const int statUnit = project.GetStatisticalUnit();
    const double lf = LengthFactor(m_unit, statUnit);
    double height = 0;
    double wallArea = 0;
    double doorsWindows = 0;
    double openings = 0;
    double useful = 0;
    floor->GetWallsInfoString(room, 1, m_unit, statUnit, -1, &height, &openings, &doorsWindows, &wallArea,
                              &useful, nullptr);
    CVxLocalize* loc = VX_GetLoc();
    m_info = loc->LocalizeMessage(1200, L"Floor area:") + L" " +
             VX_DblFormatAreaValue(room->innerPolygon.GetArea() * lf * lf, statUnit) + L"\r\n" +
             loc->LocalizeMessage(1201, L"Perimeter:") + L" " +
             LengthText(room->innerPolygon.GetPerimeter() * lf, statUnit) + L"\r\n" +
             loc->LocalizeMessage(1214, L"Wall area:") + L" " +
             VX_DblFormatAreaValue(wallArea * lf * lf, statUnit);
    if (doorsWindows > 1e-5)
        m_info += L"\r\n" + loc->LocalizeMessage(1215, L"Doors and windows:") + L" " +
                  VX_DblFormatAreaValue(doorsWindows * lf * lf, statUnit);
    return true;
}

void CVxRoomPropEdit::Restore()
{
    CVxProject& project = m_core->GetProject();
    CVxFloor* floor = project.GetFloor();
    floor->m_planDef = m_originalDef;
    m_core->UpdateFloorPlan();
    // Room labels take their texts from the rooms; they come back whole.
    floor->m_objects = m_originalObjects;
    project.m_modified = m_wasModified;
}

void CVxRoomPropEdit::ApplyToLive(const SVxRoomPropValues& v)
{
    CVxFloorRegion* room = m_core->GetFloorPlan().SafeGetRegion(m_region);
    if (!room)
        return;
    room->name = v.name;
    room->floorAppearance = v.floor;
    room->ceilingAppearance = v.ceiling;
    room->wallAppearance = v.walls;
    room->baseMolding = v.baseMolding;
    room->crownMolding = v.crownMolding;
    m_core->GetProject().GetFloor()->m_planDef = m_core->GetFloorPlan().Save();
    m_core->UpdateFloorPlan();
}

void CVxRoomPropEdit::Refresh()
{
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->EnableUndoButtons();
        host->DrawRoom(nullptr);
    }
}

void CVxRoomPropEdit::Preview(const SVxRoomPropValues& edited)
{
    if (!m_core)
        return;
    Restore();
    ApplyToLive(edited);
    m_previewed = true;
    Refresh();
}

void CVxRoomPropEdit::Cancel()
{
    if (!m_core)
        return;
    if (m_previewed) {
        Restore();
        Refresh();
    }
    m_core = nullptr;
}

bool CVxRoomPropEdit::Commit(const SVxRoomPropValues& edited)
{
    if (!m_core)
        return false;
    if (edited == m_initial) {
        Cancel();
        return false;
    }
    if (m_previewed)
        Restore();
    m_core->CatchUndoRoom(true);
    ApplyToLive(edited);
    m_core->GetProject().m_modified = true;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->OnPartListingChange();
    Refresh();
    m_core = nullptr;
    return true;
}
