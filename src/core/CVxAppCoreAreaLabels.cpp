// Room labels that show each room's name and floor area, kept in step with
// the rooms at every rebuild of the plan, and the floor's statistics table.

#include "CVxAppCore.h"

#include "CVxDC.h"
#include "CVxFont.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxNumbers.h"

#include <memory>

namespace {

// The label text is measured as the label draws at 100 %: word-wrapped in
// a generous box, vertically centred.
constexpr int kMeasureWidth = 1000;
constexpr int kMeasureHeight = 500;
constexpr unsigned kMeasureFlags = 1028;
// A room label is text only: no frame and no ground.
constexpr unsigned kLabelNoFill = 0xEFFFFFFFu;
constexpr unsigned kAlignCentre = 1;
constexpr double kLabelFontGrowth = 4;

CVxStringW AreaLabelText(const CVxFloorRegion& room, int number, bool numberEmptyRooms, double areaFactor,
                         int statUnit)
{
    CVxStringW text = room.name;
    if (text.IsEmpty() && numberEmptyRooms) {
        CVxLocalize* loc = VX_GetLoc();
        const CVxStringW word =
            loc ? loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_ROOMMNGDLG), 9, L"Room")
                : CVxStringW(L"Room");
        text = word + CVxStringW().sprintf(L" %d", number);
    }
    if (!text.IsEmpty())
        text += L"\r\n";
    return text + VX_DblFormatAreaValue(room.innerPolygon.GetArea() * areaFactor, statUnit);
}

// The size of the label's text at 100 %, in project units.
void MeasureLabel(CVxPart& label, double baseZoom)
{
    std::unique_ptr<CVxDC> dc(CVxDC::CreateNewDC(16, 16, false));
    if (!dc)
        return;
    CVxFont font = label.GetCaptionFont();
    font.m_rotation = 0;
    dc->SelectFont(font);
    VxRECT box{0, 0, kMeasureWidth, kMeasureHeight};
    dc->DrawText(label.caption, box, kMeasureFlags, 0);
    dc->SelectOldFont();
    const double zoom = baseZoom > 0 ? baseZoom : 1.0;
    label.width = DblRound2x(std::max(1, box.right - box.left) / zoom);
    label.height = DblRound2x(std::max(1, box.bottom - box.top) / zoom);
}

double AreaFactor(int unit, int statUnit)
{
    const double lf = CVxUnits::GetUnitCal(unit) / CVxUnits::GetUnitCal(statUnit);
    return lf * lf;
}

} // namespace

CVxStringW CVxAppCore::GetFloorStatistics()
{
    return m_project.GetFloor()->GetFloorStatisticalString(m_floorPlan, m_project.m_unit,
                                                           m_project.GetStatisticalUnit());
}

void CVxAppCore::InsertAreaLabels(bool numberEmptyRooms, int unit)
{
    const int statUnit = CVxUnits::IsValid(unit) ? unit : m_project.GetStatisticalUnit();
    const double factor = AreaFactor(m_project.m_unit, statUnit);
    CVxFont font(VX_GetOptions()->m_labelFont);
    font.m_size += kLabelFontGrowth;

    CatchUndoRoom(true);
    CVxFloor* floor = m_project.GetFloor();
    // The labels of an earlier run give way to the new ones.
    for (CVxPart& part : floor->m_objects)
        if (part.inUse && part.type == ptLabel && part.snapRegion >= 0)
            part.inUse = false;

    const int layer = floor->m_layers.GetActiveLayer();
    for (int i = 0; i < m_floorPlan.GetRegionCount(); ++i) {
        const CVxFloorRegion* room = m_floorPlan.SafeGetRegion(i);
        if (!room)
            continue;
        CVxPart* label = floor->GetNewObject(nullptr, false);
        label->type = ptLabel;
        label->snapRegion = i;
        label->layer = layer;
        label->lineColor = kAlignCentre;
        label->SetFillColor(kLabelNoFill);
        *label->CreateFont() = font;
        label->caption = AreaLabelText(*room, i + 1, numberEmptyRooms, factor, statUnit);
        MeasureLabel(*label, m_project.m_baseZoom);
        const CVxDPoint centre = room->GetInnerNoHolesCentroid(nullptr);
        label->x = DblRound2x(centre.x - label->width / 2);
        label->y = DblRound2x(centre.y - label->height / 2);
        label->InvalidateCache();
    }
    floor->m_objectCount = floor->CountUsedObjects();
    if (!floor->m_layers.IsLayerVisible(layer))
        floor->m_layers.SetLayerVisible(layer, true);
    m_project.m_modified = true;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->DrawRoom(nullptr);
}

void CVxAppCore::UpdateAreaLabels()
{
    const int statUnit = m_project.GetStatisticalUnit();
    const double factor = AreaFactor(m_project.m_unit, statUnit);
    CVxFloor* floor = m_project.GetFloor();
    for (CVxPart& part : floor->m_objects) {
        if (!part.inUse || part.type != ptLabel || part.snapRegion < 0)
            continue;
        // A label whose room has gone keeps its last text.
        const CVxFloorRegion* room = m_floorPlan.SafeGetRegion(part.snapRegion);
        if (!room)
            continue;
        const CVxStringW text = AreaLabelText(*room, part.snapRegion + 1, false, factor, statUnit);
        if (text == part.caption)
            continue;
        part.caption = text;
        MeasureLabel(part, m_project.m_baseZoom);
        part.InvalidateCache();
    }
}
