#include "CVxDTriRect.h"

#include "VxEps.h"

#include <algorithm>
#include <cmath>

double CVxDTriRect::Height() const
{
    return std::max(leftBottom, rightBottom) - top;
}

CVxDRect CVxDTriRect::Bounds() const
{
    return CVxDRect(left, top, right, std::max(leftBottom, rightBottom));
}

void CVxDTriRect::OffsetRect(double dx, double dy)
{
    left += dx;
    right += dx;
    top += dy;
    leftBottom += dy;
    rightBottom += dy;
}

void CVxDTriRect::InflateRect(double dx, double dy)
{
    left -= dx;
    right += dx;
    top -= dy;
    leftBottom += dy;
    rightBottom += dy;
}

bool CVxDTriRect::IntersectRect(const CVxDTriRect& other)
{
    left = std::max(left, other.left);
    top = std::max(top, other.top);
    right = std::min(right, other.right);
    leftBottom = std::min(leftBottom, other.leftBottom);
    rightBottom = std::min(rightBottom, other.rightBottom);
    return right > left && (leftBottom > top || rightBottom > top);
}

bool CVxDTriRect::IntersectRect(const CVxDRect& other)
{
    return IntersectRect(CVxDTriRect(other.left, other.top, other.right, other.bottom, other.bottom, tag));
}

bool CVxDTriRect::IsEmpty() const
{
    return Width() < EPS || (leftBottom - top < EPS && rightBottom - top < EPS);
}

double CVxDTriRect::BottomAt(double x) const
{
    const double w = right - left;
    if (w == 0)
        return leftBottom;
    return leftBottom + (rightBottom - leftBottom) * (x - left) / w;
}

double CVxDTriRect::XAtBottom(double y) const
{
    const double slope = rightBottom - leftBottom;
    if (slope == 0)
        return left;
    return left + (right - left) * (y - leftBottom) / slope;
}

void CVxDTriRect::XSplit(double x1, double x2, CVxDTriRect& outLeft, CVxDTriRect& outMiddle,
                         CVxDTriRect& outRight) const
{
    if (left == right) {
        outLeft = outMiddle = outRight = CVxDTriRect();
        return;
    }
    const double b1 = BottomAt(x1);
    const double b2 = BottomAt(x2);
    outLeft = CVxDTriRect(left, top, x1, leftBottom, b1, tag);
    outMiddle = CVxDTriRect(x1, top, x2, b1, b2, tag);
    outRight = CVxDTriRect(x2, top, right, b2, rightBottom, tag);
}

void CVxDTriRect::YExclude(double y1, double y2, CVxDTriRect& outAbove, CVxDTriRect& outBetween,
                           CVxDTriRect& outBelow) const
{
    outAbove = outBetween = outBelow = CVxDTriRect();
    if (std::fabs(rightBottom - leftBottom) < EPS) {
        outAbove = CVxDTriRect(left, top, right, y1, y1, tag);
        outBelow = CVxDTriRect(left, y2, right, leftBottom, rightBottom, tag);
        return;
    }

    if (leftBottom > y1 && rightBottom > y1) {
        outAbove = CVxDTriRect(left, top, right, y1, y1, tag);
    } else if (leftBottom <= y1 && rightBottom <= y1) {
        // The sloped edge stays above the band: nothing is cut.
        outAbove = *this;
        return;
    } else {
        // The sloped edge crosses y1: on one side of the crossing the whole
        // height lies above the band, on the other only the part above y1.
        const double xc = XAtBottom(y1);
        outAbove = CVxDTriRect(left, top, xc, std::min(leftBottom, y1), y1, tag);
        outBetween = CVxDTriRect(xc, top, right, y1, std::min(rightBottom, y1), tag);
    }

    if (leftBottom > y2 && rightBottom > y2) {
        outBelow = CVxDTriRect(left, y2, right, leftBottom, rightBottom, tag);
    } else if (leftBottom > y2) {
        outBelow = CVxDTriRect(left, y2, XAtBottom(y2), leftBottom, y2, tag);
    } else if (rightBottom > y2) {
        outBelow = CVxDTriRect(XAtBottom(y2), y2, right, y2, rightBottom, tag);
    }
}
