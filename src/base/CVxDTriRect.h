#pragma once
// The face of a wall whose top is sloped, as laid out flat in wall space: a
// trapezoid with vertical sides, a flat edge at top and a sloped edge from
// (left, leftBottom) to (right, rightBottom).

#include "CVxDRect.h"

#include <cstdint>

class CVxDTriRect
{
public:
    CVxDTriRect() = default;
    CVxDTriRect(double l, double t, double r, double lb, double rb, int32_t tg = 0)
        : left(l), top(t), right(r), leftBottom(lb), rightBottom(rb), tag(tg)
    {
    }

    double Width() const { return right - left; }
    // From the flat edge to the lower end of the sloped edge.
    double Height() const;
    CVxDRect Bounds() const;
    CVxDPoint TopLeft() const { return CVxDPoint(left, top); }
    CVxDPoint BottomLeft() const { return CVxDPoint(left, leftBottom); }
    CVxDPoint BottomRight() const { return CVxDPoint(right, rightBottom); }

    void OffsetRect(double dx, double dy);
    // Grows by dx at both sides and by dy at the flat and the sloped edge.
    void InflateRect(double dx, double dy);
    // Larger left and top, smaller right and bottoms; true if right > left and
    // either bottom lies below top.
    bool IntersectRect(const CVxDTriRect& other);
    bool IntersectRect(const CVxDRect& other);
    bool IsEmpty() const;

    // Cuts at x1 and x2 into three pieces with the sloped edge interpolated;
    // a shape without width gives three zero pieces.
    void XSplit(double x1, double x2, CVxDTriRect& outLeft, CVxDTriRect& outMiddle,
                CVxDTriRect& outRight) const;
    // Cuts the band y1..y2 out. What lies above y1 goes to outAbove, spilling
    // into outBetween where the sloped edge crosses y1; what lies below y2
    // goes to outBelow. Pieces that don't exist are zero.
    void YExclude(double y1, double y2, CVxDTriRect& outAbove, CVxDTriRect& outBetween,
                  CVxDTriRect& outBelow) const;

    double left = 0;
    double top = 0;
    double right = 0;
    double leftBottom = 0;
    double rightBottom = 0;
    int32_t tag = 0;

private:
    // y of the sloped edge at x, by linear interpolation.
    double BottomAt(double x) const;
    // x at which the sloped edge reaches y.
    double XAtBottom(double y) const;
};
