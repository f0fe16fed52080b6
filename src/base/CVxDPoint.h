#pragma once
// A point or a vector of the plan, in the project's length unit, y down.

#include "VxEps.h"
#include "VxIntGeometry.h"

#include <cmath>

class CVxDPoint
{
public:
    CVxDPoint() = default;
    CVxDPoint(double px, double py) : x(px), y(py) {}
    explicit CVxDPoint(const VxPOINT& p) : x(p.x), y(p.y) {}

    // Equal when both axes differ by less than EPS.
    bool operator==(const CVxDPoint& other) const
    {
        return std::fabs(x - other.x) < EPS && std::fabs(y - other.y) < EPS;
    }
    bool operator!=(const CVxDPoint& other) const { return !(*this == other); }

    CVxDPoint operator+(const CVxDPoint& other) const { return CVxDPoint(x + other.x, y + other.y); }
    CVxDPoint operator-(const CVxDPoint& other) const { return CVxDPoint(x - other.x, y - other.y); }
    CVxDPoint operator*(double factor) const { return CVxDPoint(x * factor, y * factor); }
    CVxDPoint operator/(double divisor) const { return CVxDPoint(x / divisor, y / divisor); }
    CVxDPoint operator-() const { return CVxDPoint(-x, -y); }
    CVxDPoint& operator+=(const CVxDPoint& other);
    CVxDPoint& operator-=(const CVxDPoint& other);
    CVxDPoint& operator*=(double factor);
    CVxDPoint& operator/=(double divisor);

    // Device pixels, each axis rounded half away from zero. The pointer is to
    // a scratch member that the next conversion overwrites and that dies with
    // this value, so never convert a temporary.
    operator VxPOINT*() const;

    void Set(double px, double py)
    {
        x = px;
        y = py;
    }
    void Set(const VxPOINT& p)
    {
        x = p.x;
        y = p.y;
    }
    void Offset(double dx, double dy)
    {
        x += dx;
        y += dy;
    }
    void Offset(const CVxDPoint& d) { Offset(d.x, d.y); }
    void Scale(double sx, double sy)
    {
        x *= sx;
        y *= sy;
    }
    void Scale(double s) { Scale(s, s); }
    void Zero() { x = y = 0; }
    bool IsZero() const;

    double Distance(const CVxDPoint& other) const { return std::sqrt(Distance2(other)); }
    double Distance2(const CVxDPoint& other) const
    {
        const double dx = x - other.x;
        const double dy = y - other.y;
        return dx * dx + dy * dy;
    }
    double Length() const { return std::sqrt(LengthSquared()); }
    double LengthSquared() const { return x * x + y * y; }
    CVxDPoint& Negate();
    double DotProduct(const CVxDPoint& other) const { return x * other.x + y * other.y; }
    // The plain 2D cross product x1*y2 - y1*x2.
    double CrossProduct(const CVxDPoint& other) const { return x * other.y - y * other.x; }
    // To unit length; a vector of length 1e-5 or less stays as it is.
    CVxDPoint& Normalize();
    // Turns by degrees: x' = x cos a - y sin a, y' = x sin a + y cos a.
    CVxDPoint& Rotate(double angle);
    // Direction in degrees [0, 360): (0,-1) is 0, (1,0) is 90. Zero gives 0.
    double Angle() const;

    double x = 0;
    double y = 0;

private:
    mutable VxPOINT m_pixels;
};

inline CVxDPoint operator*(double factor, const CVxDPoint& p)
{
    return p * factor;
}
