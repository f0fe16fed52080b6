#pragma once
// Lengths and angles that the user types while drawing a wall: "3.5" in the
// project's unit, or with a unit of its own: "350cm", "3.5 m", "12' 6\"",
// "12'", "6 1/2\"".

#include "CVxStringW.h"

// The length in the project's unit; false for a text that is no positive
// length.
bool VX_ParseTypedLength(const CVxStringW& text, int projectUnit, double& outLength);
// The same for a height above or below the floor: zero and a leading minus
// are allowed.
bool VX_ParseTypedOffset(const CVxStringW& text, int projectUnit, double& outLength);
// Degrees, with or without the degree sign; false for no number.
bool VX_ParseTypedAngle(const CVxStringW& text, double& outDegrees);
