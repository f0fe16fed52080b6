#pragma once
// Viewpoints and attachments turn with the plan in whole degrees.

#include <cmath>

// (whole degrees of angle + degrees) modulo 360, in [0, 360). An angle that
// is no number counts as 0.
inline int VX_AddWholeDegrees(double angle, int degrees)
{
    const double reduced = std::fmod(angle, 360.0);
    const int whole = std::isfinite(reduced) ? static_cast<int>(reduced) : 0;
    const int turned = (whole + degrees % 360) % 360;
    return turned < 0 ? turned + 360 : turned;
}
