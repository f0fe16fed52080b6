#pragma once
// Rotations of the 3D navigation as single-precision quaternions (x, y, z, w)
// with w the scalar part, so that two axis-angle turns can be chained.

// q = (axis * sin(angle / 2), cos(angle / 2)); angle in radians, axis unit.
void to_quaternion(const float axis[3], float angle, float q[4]);
// angle = 2 acos(w), axis = v / sin(angle / 2). A turn of 0 has no axis and
// gives NaN there; callers chain real turns only.
void from_quaternion(const float q[4], float axis[3], float& angle);
inline void from_quaternion(const float q[4], float axis[3], float* angle)
{
    float a = 0;
    from_quaternion(q, axis, a);
    if (angle)
        *angle = a;
}
// The Hamilton product a * b: the turn b followed by the turn a.
void multiply_quaternion(const float a[4], const float b[4], float out[4]);
