#pragma once
// An axis-parallel rectangle of the plan, in the project's length unit, y down.

#include "CVxDPoint.h"
#include "VxIntGeometry.h"

class CVxDRect
{
public:
    CVxDRect() = default;
    CVxDRect(double l, double t, double r, double b) : left(l), top(t), right(r), bottom(b) {}
    explicit CVxDRect(const VxRECT& r) : left(r.left), top(r.top), right(r.right), bottom(r.bottom) {}

    double Width() const { return right - left; }
    double Height() const { return bottom - top; }

    // Exact, unlike the tolerant comparison of points.
    bool operator==(const CVxDRect& other) const;
    bool operator!=(const CVxDRect& other) const { return !(*this == other); }

    // Moved by a point.
    CVxDRect operator+(const CVxDPoint& d) const;
    CVxDRect operator-(const CVxDPoint& d) const;
    // All four values scaled.
    CVxDRect operator*(double factor) const;
    CVxDRect operator/(double divisor) const;

    // Device pixels, each value rounded half away from zero. The pointer is to
    // a scratch member that the next conversion overwrites and that dies with
    // this value, so never convert a temporary.
    operator const VxRECT*() const;

    void Set(double l, double t, double r, double b);
    // Width over height; 1 when either is below EPS.
    double Aspect() const;

    CVxDPoint TopLeft() const { return CVxDPoint(left, top); }
    CVxDPoint TopRight() const { return CVxDPoint(right, top); }
    CVxDPoint BottomLeft() const { return CVxDPoint(left, bottom); }
    CVxDPoint BottomRight() const { return CVxDPoint(right, bottom); }
    CVxDPoint CenterPoint() const { return CVxDPoint((left + right) / 2, (top + bottom) / 2); }

    void OffsetRect(double dx, double dy);
    void OffsetRect(const CVxDPoint& d) { OffsetRect(d.x, d.y); }
    void ScaleRect(double sx, double sy);
    // Moves each side outwards by its own amount.
    void InflateRect(double l, double t, double r, double b);
    // Grows by dx and dy on both sides.
    void InflateRect(double dx, double dy);

    // This rectangle becomes the overlap. True only if the overlap has
    // right > left and bottom > top, strictly.
    bool IntersectRect(const CVxDRect& other);
    bool IntersectRect(const CVxDRect& a, const CVxDRect& b);
    // This rectangle grows to hold the other one, or the point.
    void UnionRect(const CVxDRect& other);
    void UnionRect(const CVxDRect& a, const CVxDRect& b);
    void UnionRect(const CVxDPoint& p);

    // All four values below EPS, so negative values count as zero too.
    bool IsZero() const;
    // Width or height below EPS.
    bool IsRectEmpty() const;
    void NormalizeRect();

    // Inclusive on all sides. The non-const forms normalise the rectangle in
    // place first; the const forms test a normalised copy.
    bool PtInRect(const VxPOINT& p);
    bool PtInRect(const CVxDPoint& p);
    bool PtInRect(double px, double py);
    bool PtInRect(const VxPOINT& p) const;
    bool PtInRect(const CVxDPoint& p) const;
    bool PtInRect(double px, double py) const;

    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

private:
    mutable VxRECT m_pixels;
};

// Rectangles united one by one, starting from none.
struct SVxRectUnion
{
    void Add(const CVxDRect& r)
    {
        if (empty)
            rect = r;
        else
            rect.UnionRect(r);
        empty = false;
    }
    CVxDRect rect;
    bool empty = true;
};
