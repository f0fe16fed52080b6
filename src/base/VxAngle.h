#pragma once
// Angles of the plan are degrees in [0, 360): 0 points to negative y (up on
// the screen) and the angle grows towards positive x.

// Brings an angle into [0, 360) by whole turns. The reserved marks of an
// unset value (-19181 and -19182) pass unchanged, as do NaN and infinities.
double VX_NormalizeAngle(double angle);
