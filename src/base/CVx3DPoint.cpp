#include "CVx3DPoint.h"

CVx3DPoint& CVx3DPoint::operator=(const CVxDPoint& p)
{
    x = p.x;
    y = p.y;
    return *this;
}

CVx3DPoint& CVx3DPoint::operator*=(double f)
{
    x *= f;
    y *= f;
    z *= f;
    return *this;
}

CVx3DPoint& CVx3DPoint::operator/=(double d)
{
    x /= d;
    y /= d;
    z /= d;
    return *this;
}

void CVx3DPoint::Offset3D(double dx, double dy, double dz)
{
    x += dx;
    y += dy;
    z += dz;
}

void CVx3DPoint::Scale3D(double sx, double sy, double sz)
{
    x *= sx;
    y *= sy;
    z *= sz;
}
