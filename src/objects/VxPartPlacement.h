#pragma once
// The frame rules of a part that placement, snapping and the floor share:
// the tilt of an object about its long axis and the depth it has in plan.

#include "CVxDPoint.h"

class CVxPart;

// Whether the part is tilted about its long axis; the tilt in degrees goes
// to tiltDegrees when given.
bool VxPartIsTilted(const CVxPart& part, double* tiltDegrees);
// The depth of the part's frame in plan: a door's square swing, a tilted
// object's footprint, otherwise its height.
double VxPartPlanDepth(const CVxPart& part);
// How far the corners of an object tilted past upright move, at scale 1.
CVxDPoint VxPartTiltShift(const CVxPart& part);
