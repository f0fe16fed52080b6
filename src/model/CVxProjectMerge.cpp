// Merging a second project into this one, either floor into floor or as
// floors of their own.

#include "CVxProject.h"

#include <algorithm>
#include <cstdint>

namespace {

// The second floor's walls, openings, objects, layers and rooms join the
// first's. Layers are appended, so the poured objects keep their own
// layers by index behind the first floor's; the walls are appended too, so
// a snapped object's wall index moves by the same amount.
void PourFloor(CVxFloor& target, const CVxFloor& source)
{
    const int layerBase = target.m_layers.GetLayerCount();
    const int wallBase = target.m_walls.GetWallCount();
    for (const CViewLayerItem& layer : source.m_layers.m_layers)
        target.m_layers.m_layers.push_back(layer);

    const std::vector<CVxAppearance>& looks = source.m_walls.appearances;
    auto remap = [&](int32_t index) -> int32_t {
        if (index < 0 || index >= static_cast<int32_t>(looks.size()))
            return -1;
        return target.m_walls.AddFindAppearance(looks[static_cast<size_t>(index)]);
    };
    for (const CVxWall& wall : source.m_walls.walls) {
        CVxWall* copy = target.m_walls.GetNewWall();
        *copy = wall;
        copy->appearanceA = remap(wall.appearanceA);
        copy->appearanceB = remap(wall.appearanceB);
    }
    target.m_walls.holes.insert(target.m_walls.holes.end(), source.m_walls.holes.begin(),
                                source.m_walls.holes.end());

    for (const CVxPart& part : source.m_objects) {
        if (!part.inUse)
            continue;
        CVxPart* copy = target.GetNewObject(nullptr, true);
        *copy = part;
        copy->layer = part.layer + layerBase;
        if (part.snapWall >= 0)
            copy->snapWall = static_cast<int16_t>(std::min<int>(part.snapWall + wallBase, INT16_MAX));
    }

    target.m_planDef.items.insert(target.m_planDef.items.end(), source.m_planDef.items.begin(),
                                  source.m_planDef.items.end());
}

} // namespace

void CVxProject::MergeProject(CVxProject* second, const CVxDPoint& shift, const CVxDPoint& secondShift,
                              bool createNewFloor)
{
    if (!second || second == this)
        return;
    // The room rectangles go where the shifts take them.
    const CVxDRect first(shift.x, shift.y, shift.x + m_width, shift.y + m_height);
    const CVxDRect other(secondShift.x, secondShift.y, secondShift.x + second->m_width,
                         secondShift.y + second->m_height);
    if (shift.x != 0 || shift.y != 0)
        MoveAllObjects(shift.x, shift.y, 0);
    if (secondShift.x != 0 || secondShift.y != 0)
        second->MoveAllObjects(secondShift.x, secondShift.y, 0);

    // What the second project's text named outside its folders stays
    // refused in the merged one.
    for (const CVxStringW& refused : second->m_refusedFiles)
        if (std::find(m_refusedFiles.begin(), m_refusedFiles.end(), refused) == m_refusedFiles.end())
            m_refusedFiles.push_back(refused);
    const size_t ownCount = m_floors.size();
    for (size_t i = 0; i < second->m_floors.size(); ++i) {
        const CVxFloor& floor = *second->m_floors[i];
        if (createNewFloor || i >= ownCount)
            m_floors.push_back(new CVxFloor(floor));
        else
            PourFloor(*m_floors[i], floor);
    }

    const CVxDRect all(std::min(first.left, other.left), std::min(first.top, other.top),
                       std::max(first.right, other.right), std::max(first.bottom, other.bottom));
    m_width = all.right;
    m_height = all.bottom;
    // A shift to the left or up must not leave the plan before the sheet's
    // origin.
    if (all.left < 0 || all.top < 0)
        MoveAllObjects(-std::min(0.0, all.left), -std::min(0.0, all.top), 0);
}
