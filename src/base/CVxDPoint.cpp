#include "CVxDPoint.h"

#include "VxAngle.h"
#include "VxEps.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

CVxDPoint& CVxDPoint::operator+=(const CVxDPoint& other)
{
    x += other.x;
    y += other.y;
    return *this;
}

CVxDPoint& CVxDPoint::operator-=(const CVxDPoint& other)
{
    x -= other.x;
    y -= other.y;
    return *this;
}

CVxDPoint& CVxDPoint::operator*=(double factor)
{
    x *= factor;
    y *= factor;
    return *this;
}

CVxDPoint& CVxDPoint::operator/=(double divisor)
{
    x /= divisor;
    y /= divisor;
    return *this;
}

CVxDPoint::operator VxPOINT*() const
{
    m_pixels.x = VX_RoundToPixel(x);
    m_pixels.y = VX_RoundToPixel(y);
    return &m_pixels;
}

bool CVxDPoint::IsZero() const
{
    return std::fabs(x) < EPS && std::fabs(y) < EPS;
}

CVxDPoint& CVxDPoint::Negate()
{
    x = -x;
    y = -y;
    return *this;
}

CVxDPoint& CVxDPoint::Normalize()
{
    const double length = Length();
    if (length > 1e-5) {
        x /= length;
        y /= length;
    }
    return *this;
}

CVxDPoint& CVxDPoint::Rotate(double angle)
{
    const double a = angle * std::numbers::pi / 180.0;
    const double c = std::cos(a);
    const double s = std::sin(a);
    const double nx = x * c - y * s;
    const double ny = x * s + y * c;
    x = nx;
    y = ny;
    return *this;
}

double CVxDPoint::Angle() const
{
    const double length = Length();
    if (length == 0)
        return 0;
    // Rounding can push the ratio a hair past 1 for an axis-parallel vector.
    const double ratio = std::clamp(-y / length, -1.0, 1.0);
    double degrees = std::acos(ratio) * 180.0 / std::numbers::pi;
    if (x < 0)
        degrees = -degrees;
    return VX_NormalizeAngle(degrees);
}
