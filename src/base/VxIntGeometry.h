#pragma once
// Integer device geometry: pixels on a screen or a printer page. Right and
// bottom are exclusive, as in the device coordinates of the host.

#include <cmath>
#include <cstdint>
#include <limits>

struct VxPOINT
{
    int32_t x = 0;
    int32_t y = 0;
};

struct VxRECT
{
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
};

struct VxSIZE
{
    int32_t cx = 0;
    int32_t cy = 0;
};

// Euclidean distance; the squared sum is formed in 32-bit integers, as the
// hit tests of the view always did.
double VxPointDistance(const VxPOINT& a, const VxPOINT& b);

VxRECT VxRectMake(int32_t left, int32_t top, int32_t right, int32_t bottom);
void VxSetRect(VxRECT& rect, int32_t left, int32_t top, int32_t right, int32_t bottom);
// Grows by dx and dy on both sides; negative amounts shrink.
void VxInflateRect(VxRECT& rect, int32_t dx, int32_t dy);
void VxOffsetRect(VxRECT& rect, int32_t dx, int32_t dy);
// The smallest rectangle holding both; always true.
bool VxUnionRect(VxRECT& out, const VxRECT& a, const VxRECT& b);
// Grows the area to repaint by `rect`; an empty area becomes `rect`. A null
// area is left alone.
void VxGrowDirtyRect(VxRECT* dirty, const VxRECT& rect);
// True only if the overlap has right > left and bottom > top; the overlap is
// written to out either way.
bool VxIntersectRect(VxRECT& out, const VxRECT& a, const VxRECT& b);
// Swaps left/right and top/bottom where they are reversed.
void VxNormalizeRect(VxRECT& rect);
// Inclusive on all four sides.
bool VxPtInRect(const VxRECT& rect, const VxPOINT& point);

// Pointer forms, in the manner of the device API that callers know.
inline void VxSetRect(VxRECT* rect, int32_t left, int32_t top, int32_t right, int32_t bottom)
{
    if (rect)
        VxSetRect(*rect, left, top, right, bottom);
}
inline void VxInflateRect(VxRECT* rect, int32_t dx, int32_t dy)
{
    if (rect)
        VxInflateRect(*rect, dx, dy);
}
inline void VxOffsetRect(VxRECT* rect, int32_t dx, int32_t dy)
{
    if (rect)
        VxOffsetRect(*rect, dx, dy);
}
inline bool VxUnionRect(VxRECT* out, const VxRECT* a, const VxRECT* b)
{
    return out && a && b && VxUnionRect(*out, *a, *b);
}
inline bool VxIntersectRect(VxRECT* out, const VxRECT* a, const VxRECT* b)
{
    return out && a && b && VxIntersectRect(*out, *a, *b);
}
inline void VxNormalizeRect(VxRECT* rect)
{
    if (rect)
        VxNormalizeRect(*rect);
}
inline bool VxPtInRect(const VxRECT* rect, const VxPOINT& point)
{
    return rect && VxPtInRect(*rect, point);
}
inline double VxPointDistance(const VxPOINT* a, const VxPOINT* b)
{
    return (a && b) ? VxPointDistance(*a, *b) : 0.0;
}

// A plan coordinate in device pixels: rounded half away from zero, and
// clamped so that a damaged coordinate cannot make the conversion undefined;
// NaN gives 0.
inline int32_t VX_RoundToPixel(double value)
{
    const double r = std::round(value);
    if (!(r > std::numeric_limits<int32_t>::min()))
        return std::isnan(r) ? 0 : std::numeric_limits<int32_t>::min();
    if (r >= std::numeric_limits<int32_t>::max())
        return std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(r);
}
