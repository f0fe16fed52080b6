#include "CVxUtils.h"
#include "VxQuaternion.h"

#include <cmath>

namespace {

void AxisOf(char name, float axis[3])
{
    axis[0] = name == 'x' ? 1.0f : 0.0f;
    axis[1] = name == 'y' ? 1.0f : 0.0f;
    axis[2] = name == 'z' ? 1.0f : 0.0f;
}

} // namespace

void CVxUtils::MultiplyVRMLRotation(double& angleOut, double axisOut[3], char axis1, double angle1,
                                    char axis2, double angle2)
{
    float a1[3], a2[3], q1[4], q2[4], q[4];
    AxisOf(axis1, a1);
    AxisOf(axis2, a2);
    to_quaternion(a1, static_cast<float>(angle1), q1);
    to_quaternion(a2, static_cast<float>(angle2), q2);
    multiply_quaternion(q1, q2, q);
    float axis[3];
    float angle = 0;
    from_quaternion(q, axis, angle);
    if (!std::isfinite(angle) || !std::isfinite(axis[0]) || !std::isfinite(axis[1]) ||
        !std::isfinite(axis[2])) {
        // No turn at all: any axis will do.
        angleOut = 0;
        axisOut[0] = 0;
        axisOut[1] = 1;
        axisOut[2] = 0;
        return;
    }
    angleOut = angle;
    for (int i = 0; i < 3; ++i)
        axisOut[i] = axis[i];
}
