#pragma once
// Small pieces shared by the writers of the scene file.

#include "CVxDPoint.h"
#include "SVx3DExportPars.h"

#include <vector>

class CVxDPolygon;

// The outline with each curved edge replaced by innerPoints points along
// the curve.
std::vector<CVxDPoint> VxFlattenPolygon(const CVxDPolygon& polygon, int innerPoints);
bool VxIsFinite(double value);

// No length in a scene goes beyond this many metres: beyond, the numbers
// come from damaged data and only spoil the viewer's bounding box.
constexpr double kVxSceneLengthLimit = 10000.0;
