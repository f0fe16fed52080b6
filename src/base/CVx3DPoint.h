#pragma once
// A point of the 3D scene: a plan point plus a height.

#include "CVxDPoint.h"

class CVx3DPoint : public CVxDPoint
{
public:
    CVx3DPoint() = default;
    CVx3DPoint(double px, double py, double pz) : CVxDPoint(px, py), z(pz) {}
    explicit CVx3DPoint(const CVxDPoint& p, double pz = 0) : CVxDPoint(p), z(pz) {}

    // Takes x and y of a plan point and keeps the height.
    CVx3DPoint& operator=(const CVxDPoint& p);

    CVx3DPoint operator+(const CVx3DPoint& o) const { return CVx3DPoint(x + o.x, y + o.y, z + o.z); }
    CVx3DPoint operator-(const CVx3DPoint& o) const { return CVx3DPoint(x - o.x, y - o.y, z - o.z); }
    CVx3DPoint operator*(double f) const { return CVx3DPoint(x * f, y * f, z * f); }
    CVx3DPoint operator/(double d) const { return CVx3DPoint(x / d, y / d, z / d); }
    CVx3DPoint& operator*=(double f);
    CVx3DPoint& operator/=(double d);

    void Offset3D(double dx, double dy, double dz);
    void Scale3D(double sx, double sy, double sz);
    void Zero() { x = y = z = 0; }

    double z = 0;
};
