#include "VxQuaternion.h"

#include <cmath>

void to_quaternion(const float axis[3], float angle, float q[4])
{
    const float s = std::sin(angle / 2);
    q[0] = axis[0] * s;
    q[1] = axis[1] * s;
    q[2] = axis[2] * s;
    q[3] = std::cos(angle / 2);
}

void from_quaternion(const float q[4], float axis[3], float& angle)
{
    angle = 2 * std::acos(q[3]);
    const float s = std::sin(angle / 2);
    axis[0] = q[0] / s;
    axis[1] = q[1] / s;
    axis[2] = q[2] / s;
}

void multiply_quaternion(const float a[4], const float b[4], float out[4])
{
    // Computed into locals so that out may be a or b.
    const float x = a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1];
    const float y = a[3] * b[1] - a[0] * b[2] + a[1] * b[3] + a[2] * b[0];
    const float z = a[3] * b[2] + a[0] * b[1] - a[1] * b[0] + a[2] * b[3];
    const float w = a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2];
    out[0] = x;
    out[1] = y;
    out[2] = z;
    out[3] = w;
}
