#pragma once
// What the project properties show and change: the unit, the unit of the
// statistics, the room size, the defaults of new walls, each floor's height
// and thickness, and the comments. Lengths are in `unit`.

#include "CVxStringW.h"

#include <vector>

struct SVxFloorSettings
{
    // The height that new walls of the floor take.
    double wallHeight = 265;
    double floorThickness = 30;
    bool operator==(const SVxFloorSettings&) const = default;
};

struct SVxProjectSettings
{
    int unit = 1;
    // The name of the unit of room areas (option "RoomStatUnit"); empty: the
    // one that belongs to the project's unit.
    CVxStringW statUnit;
    double width = 500;
    double height = 300;
    double defWallThickness = 10;
    double defWallHeight = 265;
    std::vector<SVxFloorSettings> floors;
    CVxStringW comments;
    bool operator==(const SVxProjectSettings&) const = default;

    // Every length from the unit `from` into `to`, as the dialogue shows them
    // after a change of unit.
    void ConvertLengths(int from, int to);
};

// What the transformations dialogue asks for. A floor turns and mirrors
// about the centre of its walls, so that it stays over the other floors.
struct SVxTransform
{
    bool currentFloorOnly = false;
    double dx = 0;
    double dy = 0;
    // 1 keeps the size.
    double scale = 1;
    // Clockwise, in degrees.
    int rotate = 0;
    bool mirrorHorizontally = false;
    bool mirrorVertically = false;
};
