#include "VxAngle.h"

#include "VxNumbers.h"

#include <cmath>

double VX_NormalizeAngle(double angle)
{
    if (angle == VX_DBL_DIFFER || angle == VX_DBL_UNSET || !std::isfinite(angle))
        return angle;
    // An angle many turns away, from a damaged file, would take millions of
    // steps; fold it first. Everyday angles take the exact stepwise path.
    if (std::fabs(angle) > 360.0 * 1024.0)
        angle = std::fmod(angle, 360.0);
    while (angle < 0)
        angle += 360.0;
    while (angle >= 360.0)
        angle -= 360.0;
    return angle;
}
