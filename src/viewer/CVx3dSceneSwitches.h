#pragma once
// The Switch nodes of a loaded scene that the viewer turns on and off
// without a reload: one per floor, one per layer of a floor, and the lower
// and upper walls of a floor, under the DEF names that the scene export
// gives them. Visibility is kept here while the engine holds the scene.

#include "SVx3DExportPars.h"

#include <QString>

#include <vector>

class CVx3dSceneSwitches : public CVx3DFloorLayerVis
{
public:
    SVxFloorVis* FindFloor(int floor);

    // The whichChoice of the lower or upper walls of floor entry k in the
    // walls mode: solid shows both, invisible neither, halved hides the
    // upper walls of a floor with no visible floor right above it.
    int WallChoice(size_t k, bool upper) const;

    // The export's node names, as the engine's calls take them.
    static QString FloorNodeName(int floor);
    static QString LayerNodeName(int floor, int layer);
    static QString WallNodeName(int floor, bool upper);

    // Finds the floor and layer switches in a scene file ("DEF VX_FLOOR_nn
    // Switch { whichChoice c"), floors and layers in file order, visible
    // when their choice is not negative. Reads line by line and stops after
    // a bounded number of switches; false when the file can't be read.
    bool ScanSceneFile(const QString& path);
};
