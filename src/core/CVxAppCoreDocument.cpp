// Changes of the document as the project windows make them: the layers of
// the current floor, the project's settings, and the transforms of one floor.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>

namespace {
bool Positive(double value)
{
    return std::isfinite(value) && value > 1e-7;
}
} // namespace

void CVxAppCore::AfterLayersChange()
{
    // An object on a layer just hidden or locked can't stay selected.
    CVxFloor* floor = m_project.GetFloor();
    for (CVxPart& part : floor->m_objects)
        if (part.selected && (!part.inUse || !floor->m_layers.IsLayerVisible(part.layer) ||
                              floor->m_layers.IsLayerLocked(part.layer)))
            part.selected = false;
    if (m_firstSelected >= 0) {
        const CVxPart* first = floor->SafeGetPart(m_firstSelected);
        if (!first || !first->selected)
            m_firstSelected = -1;
    }
    m_project.m_modified = true;
    OnSelectionChange();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->RefillLayersList();
        host->BuildLayersSubMenu(false);
        host->DrawRoom(nullptr);
        host->OnPartListingChange();
    }
}

bool CVxAppCore::LayerAdd(const CVxStringW& name)
{
    CatchUndoRoom(true);
    CVxViewLayers& layers = m_project.GetFloor()->m_layers;
    layers.SetActiveLayer(layers.AddLayer(name));
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerRename(int layer, const CVxStringW& name)
{
    CVxViewLayers& layers = m_project.GetFloor()->m_layers;
    const CViewLayerItem* item = layers.SafeGetLayer(layer);
    if (!item || item->m_name == name)
        return false;
    CatchUndoRoom(true);
    layers.SetLayerName(layer, name);
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerRemove(int layer)
{
    CVxFloor* floor = m_project.GetFloor();
    if (!floor->m_layers.IsValidLayer(layer) || floor->m_layers.GetLayerCount() < 2)
        return false;
    CatchUndoRoom(true);
    floor->RemoveLayer(layer);
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerMove(int from, int to)
{
    CVxFloor* floor = m_project.GetFloor();
    if (from == to || !floor->m_layers.IsValidLayer(from) || !floor->m_layers.IsValidLayer(to))
        return false;
    CatchUndoRoom(true);
    floor->ReorderLayer(from, to);
    // Objects draw in the order of their layers.
    floor->OrderPartsByLayers();
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerSetVisible(int layer, bool visible)
{
    CVxViewLayers& layers = m_project.GetFloor()->m_layers;
    if (!layers.IsValidLayer(layer) || layers.IsLayerVisible(layer) == visible)
        return false;
    CatchUndoRoom(true);
    layers.SetLayerVisible(layer, visible);
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerSetLocked(int layer, bool locked)
{
    CVxViewLayers& layers = m_project.GetFloor()->m_layers;
    if (!layers.IsValidLayer(layer) || layers.IsLayerLocked(layer) == locked)
        return false;
    CatchUndoRoom(true);
    layers.SetLayerLocked(layer, locked);
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerSetTransparency(int layer, int percent)
{
    CVxViewLayers& layers = m_project.GetFloor()->m_layers;
    percent = std::clamp(percent, 0, 100);
    if (!layers.IsValidLayer(layer) || layers.GetLayerTransparency(layer) == percent)
        return false;
    CatchUndoRoom(true);
    layers.SetLayerTransparency(layer, percent);
    AfterLayersChange();
    return true;
}

bool CVxAppCore::LayerSetActive(int layer)
{
    CVxViewLayers& layers = m_project.GetFloor()->m_layers;
    if (!layers.IsValidLayer(layer))
        return false;
    layers.SetActiveLayer(layer);
    return true;
}

void SVxProjectSettings::ConvertLengths(int from, int to)
{
    auto convert = [from, to](double& value) {
        value = DblRound2x(CVxUnits::ConvertLength(value, from, to));
    };
    convert(width);
    convert(height);
    convert(defWallThickness);
    convert(defWallHeight);
    for (SVxFloorSettings& floor : floors) {
        convert(floor.wallHeight);
        convert(floor.floorThickness);
    }
    unit = to;
}

SVxProjectSettings CVxAppCore::ReadProjectSettings() const
{
    SVxProjectSettings settings;
    settings.unit = m_project.m_unit;
    settings.statUnit = VX_GetOptions()->m_roomStatUnit;
    settings.width = m_project.m_width;
    settings.height = m_project.m_height;
    settings.defWallThickness = m_project.m_defWallThickness;
    settings.defWallHeight = m_project.m_defWallHeight;
    for (const CVxFloor* floor : m_project.m_floors)
        settings.floors.push_back({floor->m_defWallHeight, floor->m_floorThickness});
    settings.comments = m_project.m_comments;
    return settings;
}

bool CVxAppCore::ApplyProjectSettings(const SVxProjectSettings& wanted)
{
    const SVxProjectSettings present = ReadProjectSettings();
    CVxOptions* options = VX_GetOptions();
    const bool statChanged = wanted.statUnit != present.statUnit;
    options->m_roomStatUnit = wanted.statUnit;
    SVxProjectSettings projectPart = wanted;
    projectPart.statUnit = present.statUnit;
    if (projectPart == present || !CVxUnits::IsValid(wanted.unit)) {
        if (statChanged && VX_GetAppHelper())
            VX_GetAppHelper()->OnPartListingChange();
        return false;
    }

    CatchUndoRoom(true);
    if (wanted.unit != m_project.m_unit)
        m_project.ConvertUnit(m_project.m_unit, wanted.unit, &m_floorPlan);
    // After a conversion the values given, which are in the new unit, win
    // over the converted ones.
    if (Positive(wanted.width))
        m_project.m_width = wanted.width;
    if (Positive(wanted.height))
        m_project.m_height = wanted.height;
    if (Positive(wanted.defWallThickness))
        m_project.m_defWallThickness = wanted.defWallThickness;
    if (Positive(wanted.defWallHeight))
        m_project.m_defWallHeight = wanted.defWallHeight;
    const size_t floors = std::min(wanted.floors.size(), m_project.m_floors.size());
    for (size_t i = 0; i < floors; ++i) {
        CVxFloor* floor = m_project.m_floors[i];
        if (Positive(wanted.floors[i].wallHeight))
            floor->m_defWallHeight = wanted.floors[i].wallHeight;
        if (std::isfinite(wanted.floors[i].floorThickness) && wanted.floors[i].floorThickness >= 0)
            floor->m_floorThickness = wanted.floors[i].floorThickness;
    }
    m_project.m_comments = wanted.comments;
    AfterTransform();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->UpdateCommentsView();
    return true;
}

namespace {
// Turns or mirrors a floor about the centre of its walls, so that it stays
// where it lies over the other floors.
template <typename Change>
void AboutFloorCentre(CVxFloor* floor, const CVxProject* project, Change change)
{
    CVxDRect dims;
    const bool any = floor->m_walls.GetRoomDims(dims);
    const CVxDPoint centre = any ? dims.CenterPoint() : CVxDPoint(0, 0);
    floor->MoveAllObjects(-centre.x, -centre.y, 0, project);
    change();
    CVxDRect turned;
    if (floor->m_walls.GetRoomDims(turned) && any)
        floor->MoveAllObjects(dims.left - turned.left, dims.top - turned.top, 0, project);
    else
        floor->MoveAllObjects(centre.x, centre.y, 0, project);
}
} // namespace

bool CVxAppCore::ApplyTransform(const SVxTransform& t)
{
    const bool scale = std::isfinite(t.scale) && t.scale > 1e-7 && std::fabs(t.scale - 1) > 1e-9;
    const int rotate = ((t.rotate % 360) + 360) % 360;
    const double dx = std::isfinite(t.dx) ? t.dx : 0;
    const double dy = std::isfinite(t.dy) ? t.dy : 0;
    if (!scale && rotate == 0 && !t.mirrorHorizontally && !t.mirrorVertically && dx == 0 && dy == 0)
        return false;
    CatchUndoRoom(true);
    if (t.currentFloorOnly) {
        CVxFloor* floor = m_project.GetFloor();
        if (scale)
            floor->ScaleAllObjects(t.scale, t.scale, t.scale, false, false, &m_project);
        if (rotate != 0)
            AboutFloorCentre(floor, &m_project, [&] { floor->RotateAllObjects(rotate, &m_project); });
        if (t.mirrorHorizontally)
            AboutFloorCentre(floor, &m_project, [&] { floor->MirrorAllObjects(false, &m_project); });
        if (t.mirrorVertically)
            AboutFloorCentre(floor, &m_project, [&] { floor->MirrorAllObjects(true, &m_project); });
        if (dx != 0 || dy != 0)
            floor->MoveAllObjects(dx, dy, 0, &m_project);
        m_project.SizeToWalls();
    } else {
        if (scale)
            m_project.ScaleAllObjects(t.scale, t.scale, t.scale, false, false);
        if (rotate != 0)
            m_project.RotateAllObjects(rotate);
        if (t.mirrorHorizontally)
            m_project.MirrorAllObjects(false);
        if (t.mirrorVertically)
            m_project.MirrorAllObjects(true);
        // The plan may not move beyond its own size to the left or top.
        if (dx != 0 || dy != 0)
            m_project.MoveAllObjects(dx <= -m_project.m_width ? 0 : dx, dy <= -m_project.m_height ? 0 : dy,
                                     0);
    }
    AfterTransform();
    return true;
}

void CVxAppCore::ApplyOptionsChange()
{
    CVxOptions* options = VX_GetOptions();
    options->SaveToRegistry();
    CheckViewMenuItems();
    m_project.GetFloor()->InvalidateAllObjectsCache();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->DrawRoom(nullptr);
        host->OnPartListingChange();
    }
}
