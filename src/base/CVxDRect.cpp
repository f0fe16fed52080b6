#include "CVxDRect.h"

#include "VxEps.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

bool CVxDRect::operator==(const CVxDRect& other) const
{
    return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
}

CVxDRect CVxDRect::operator+(const CVxDPoint& d) const
{
    return CVxDRect(left + d.x, top + d.y, right + d.x, bottom + d.y);
}

CVxDRect CVxDRect::operator-(const CVxDPoint& d) const
{
    return CVxDRect(left - d.x, top - d.y, right - d.x, bottom - d.y);
}

CVxDRect CVxDRect::operator*(double factor) const
{
    return CVxDRect(left * factor, top * factor, right * factor, bottom * factor);
}

CVxDRect CVxDRect::operator/(double divisor) const
{
    return CVxDRect(left / divisor, top / divisor, right / divisor, bottom / divisor);
}

CVxDRect::operator const VxRECT*() const
{
    m_pixels.left = VX_RoundToPixel(left);
    m_pixels.top = VX_RoundToPixel(top);
    m_pixels.right = VX_RoundToPixel(right);
    m_pixels.bottom = VX_RoundToPixel(bottom);
    return &m_pixels;
}

void CVxDRect::Set(double l, double t, double r, double b)
{
    left = l;
    top = t;
    right = r;
    bottom = b;
}

double CVxDRect::Aspect() const
{
    const double w = Width();
    const double h = Height();
    if (w < EPS || h < EPS)
        return 1.0;
    return w / h;
}

void CVxDRect::OffsetRect(double dx, double dy)
{
    left += dx;
    right += dx;
    top += dy;
    bottom += dy;
}

void CVxDRect::ScaleRect(double sx, double sy)
{
    left *= sx;
    right *= sx;
    top *= sy;
    bottom *= sy;
}

void CVxDRect::InflateRect(double l, double t, double r, double b)
{
    left -= l;
    top -= t;
    right += r;
    bottom += b;
}

void CVxDRect::InflateRect(double dx, double dy)
{
    InflateRect(dx, dy, dx, dy);
}

bool CVxDRect::IntersectRect(const CVxDRect& other)
{
    return IntersectRect(CVxDRect(*this), other);
}

bool CVxDRect::IntersectRect(const CVxDRect& a, const CVxDRect& b)
{
    Set(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
        std::min(a.bottom, b.bottom));
    return right > left && bottom > top;
}

void CVxDRect::UnionRect(const CVxDRect& other)
{
    UnionRect(CVxDRect(*this), other);
}

void CVxDRect::UnionRect(const CVxDRect& a, const CVxDRect& b)
{
    Set(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
        std::max(a.bottom, b.bottom));
}

void CVxDRect::UnionRect(const CVxDPoint& p)
{
    left = std::min(left, p.x);
    top = std::min(top, p.y);
    right = std::max(right, p.x);
    bottom = std::max(bottom, p.y);
}

bool CVxDRect::IsZero() const
{
    return left < EPS && top < EPS && right < EPS && bottom < EPS;
}

bool CVxDRect::IsRectEmpty() const
{
    return Width() < EPS || Height() < EPS;
}

void CVxDRect::NormalizeRect()
{
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
}

bool CVxDRect::PtInRect(double px, double py)
{
    NormalizeRect();
    return px >= left && px <= right && py >= top && py <= bottom;
}

bool CVxDRect::PtInRect(const CVxDPoint& p)
{
    return PtInRect(p.x, p.y);
}

bool CVxDRect::PtInRect(const VxPOINT& p)
{
    return PtInRect(static_cast<double>(p.x), static_cast<double>(p.y));
}

bool CVxDRect::PtInRect(double px, double py) const
{
    CVxDRect copy(*this);
    return copy.PtInRect(px, py);
}

bool CVxDRect::PtInRect(const CVxDPoint& p) const
{
    return PtInRect(p.x, p.y);
}

bool CVxDRect::PtInRect(const VxPOINT& p) const
{
    return PtInRect(static_cast<double>(p.x), static_cast<double>(p.y));
}
