#pragma once
// The door and window symbols of the plan, shared between the general shape
// drawing of an object and the door and window code. Internal to the
// object drawing.

#include "VxIntGeometry.h"

class CVxDC;
class CVxFloor;
class CVxPart;

// Square frame P0-P3 with the hinge at P3: the leaf P3-P0, the closing line
// P3-P2 and the swing from P0 to P2. A door that hangs on a wall of the floor
// first cuts its gap in the wall.
void VxDrawDoorSymbol(CVxPart& part, CVxDC* dc, CVxFloor* floor, int units, const VxPOINT* corners,
                      double originX, double originY, double zoom);
// The gap of a window in its wall, with pane, opened leaf and mullions.
void VxDrawWindowSymbol(CVxPart& part, CVxDC* dc, CVxFloor* floor, const VxPOINT* corners);
