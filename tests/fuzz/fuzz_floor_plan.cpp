// Walls and a plan definition from arbitrary text, through the rebuild of
// the walls and the whole floor plan: no input may crash it or keep it
// walking for ever.

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"

#include <cstdint>

namespace {

// Crossings of n walls grow with n squared; larger inputs only find time-outs.
constexpr size_t kMaxInput = 16 * 1024;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > kMaxInput)
        return 0;
    CVxFloor floor;
    floor.m_walls.RemoveAll();
    {
        CVxStringReader reader(CVxStringA(reinterpret_cast<const char*>(data), static_cast<int>(size)),
                               65001);
        reader.Start();
        while (!reader.GetSectionName().IsEmpty()) {
            if (reader.GetSectionName() == "RoomWalls") {
                reader.ReadSection(&floor.m_walls);
                floor.m_walls.OnEndSection();
            } else if (reader.GetSectionName() == "FloorPlanDef") {
                floor.m_planDef.LoadFromSection(&reader, 1);
            } else {
                reader.ReadSection(nullptr);
            }
        }
    }
    floor.m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(floor, 1);
    const CVxFloorPlanDef def = plan.Save();
    CVxStringWriter writer;
    def.SaveToFile(&writer, "FloorPlanDef");
    plan.UpdateAllRegionPolygons(floor);
    if (plan.GetRegionCount() > 0) {
        const CVxDPoint centre = plan.regions[0].GetInnerNoHolesCentroid(nullptr);
        plan.FindRegion(centre);
        CVxDPoint a, b;
        plan.FindInnerEdgeForWall(plan.regions[0].walls.empty() ? 0 : plan.regions[0].walls[0], centre, &a,
                                  &b);
    }
    return 0;
}
