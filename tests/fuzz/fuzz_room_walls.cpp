// Feeds arbitrary text to the walls of a floor as a "RoomWalls" section:
// reading, the check of surface indices, the corner rebuild, the opening
// outlines and writing back must cope with any wall or opening value.

#include "CVxRoomWalls.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"

#include <cstdint>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const CVxStringA head = "[RoomWalls]\r\n";
    const CVxStringA text = head + CVxStringA(reinterpret_cast<const char*>(data), static_cast<int>(size));
    CVxStringReader reader(text, 65001);
    reader.Start();
    CVxRoomWalls walls;
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName() == "RoomWalls")
            reader.ReadSection(&walls);
        else
            reader.ReadSection(nullptr);
    }
    walls.OnEndSection();
    walls.RebuildWalls();
    std::vector<CVxDPolygon> holes;
    walls.GetHolePolygonList(holes);
    walls.ResetSnapSegments(nullptr);
    walls.RemoveUnusedAppearances();
    CVxStringWriter writer;
    walls.SaveToFile(&writer, "RoomWalls");
    return 0;
}
