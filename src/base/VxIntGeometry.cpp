#include "VxIntGeometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
// 32-bit arithmetic that wraps instead of overflowing, so a far-off point
// gives a wrong distance rather than undefined behaviour.
int32_t Wrap(uint32_t value)
{
    return static_cast<int32_t>(value);
}
} // namespace

double VxPointDistance(const VxPOINT& a, const VxPOINT& b)
{
    const uint32_t dx = static_cast<uint32_t>(a.x) - static_cast<uint32_t>(b.x);
    const uint32_t dy = static_cast<uint32_t>(a.y) - static_cast<uint32_t>(b.y);
    const int32_t sum = Wrap(dx * dx + dy * dy);
    return std::sqrt(static_cast<double>(sum));
}

VxRECT VxRectMake(int32_t left, int32_t top, int32_t right, int32_t bottom)
{
    VxRECT rect;
    rect.left = left;
    rect.top = top;
    rect.right = right;
    rect.bottom = bottom;
    return rect;
}

void VxSetRect(VxRECT& rect, int32_t left, int32_t top, int32_t right, int32_t bottom)
{
    rect = VxRectMake(left, top, right, bottom);
}

void VxInflateRect(VxRECT& rect, int32_t dx, int32_t dy)
{
    rect.left -= dx;
    rect.top -= dy;
    rect.right += dx;
    rect.bottom += dy;
}

void VxOffsetRect(VxRECT& rect, int32_t dx, int32_t dy)
{
    rect.left += dx;
    rect.top += dy;
    rect.right += dx;
    rect.bottom += dy;
}

bool VxUnionRect(VxRECT& out, const VxRECT& a, const VxRECT& b)
{
    out = VxRectMake(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                     std::max(a.bottom, b.bottom));
    return true;
}

void VxGrowDirtyRect(VxRECT* dirty, const VxRECT& rect)
{
    if (!dirty)
        return;
    if (dirty->right <= dirty->left || dirty->bottom <= dirty->top)
        *dirty = rect;
    else
        VxUnionRect(*dirty, *dirty, rect);
}

bool VxIntersectRect(VxRECT& out, const VxRECT& a, const VxRECT& b)
{
    out = VxRectMake(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                     std::min(a.bottom, b.bottom));
    return out.right > out.left && out.bottom > out.top;
}

void VxNormalizeRect(VxRECT& rect)
{
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    if (rect.top > rect.bottom)
        std::swap(rect.top, rect.bottom);
}

bool VxPtInRect(const VxRECT& rect, const VxPOINT& point)
{
    return point.x >= rect.left && point.x <= rect.right && point.y >= rect.top && point.y <= rect.bottom;
}
