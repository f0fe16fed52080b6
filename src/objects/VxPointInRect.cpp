#include "VxPointInRect.h"

#include "VxGMDraw.h"

#include <cmath>
#include <cstdint>

namespace {

int32_t RoundedQuotient(int64_t numerator, int64_t divisor)
{
    return static_cast<int32_t>(std::llround(static_cast<double>(numerator) / static_cast<double>(divisor)));
}

template <typename Point>
void Interpolate(double& x, double& y, const Point* corners, double u, double v)
{
    const double w0 = (1 - u) * (1 - v);
    const double w1 = u * (1 - v);
    const double w2 = u * v;
    const double w3 = (1 - u) * v;
    x = corners[0].x * w0 + corners[1].x * w1 + corners[2].x * w2 + corners[3].x * w3;
    y = corners[0].y * w0 + corners[1].y * w1 + corners[2].y * w2 + corners[3].y * w3;
}

} // namespace

void GetPointInRect(VxPOINT& out, const VxPOINT* corners, int nx, int dx, int ny, int dy)
{
    if (!corners) {
        out = VxPOINT();
        return;
    }
    if (dx == 0)
        dx = 1;
    if (dy == 0)
        dy = 1;
    const int64_t ax = nx;
    const int64_t bx = static_cast<int64_t>(dx) - nx;
    const int64_t ay = ny;
    const int64_t by = static_cast<int64_t>(dy) - ny;
    const int64_t divisor = static_cast<int64_t>(dx) * dy;
    const int64_t sumX =
        (corners[0].x * ax + corners[1].x * bx) * ay + (corners[3].x * ax + corners[2].x * bx) * by;
    const int64_t sumY =
        (corners[0].y * ax + corners[1].y * bx) * ay + (corners[3].y * ax + corners[2].y * bx) * by;
    out.x = RoundedQuotient(sumX, divisor);
    out.y = RoundedQuotient(sumY, divisor);
}

void GetPointInRectL(VxPOINT& out, const VxPOINT* corners, int nx, int dx, int ny, int dy)
{
    GetPointInRect(out, corners, dx - nx, dx, dy - ny, dy);
}

void GetPointInRectLM(VxPOINT& out, VxPOINT& mirrored, const VxPOINT* corners, int nx, int dx, int ny, int dy)
{
    GetPointInRectL(out, corners, nx, dx, ny, dy);
    GetPointInRectL(mirrored, corners, dx - nx, dx, ny, dy);
}

void GetPointInRectLMX(VxPOINT& out, VxPOINT& mirrored, const VxPOINT* corners, int nx, int dx, int ny,
                       int dy)
{
    GetPointInRectL(out, corners, nx, dx, ny, dy);
    GetPointInRectL(mirrored, corners, nx, dx, dy - ny, dy);
}

void GetPointInRectLRc(VxPOINT* out, const VxPOINT* corners, int x1, int x2, int dx, int y1, int y2, int dy)
{
    GetPointInRectL(out[0], corners, x1, dx, y1, dy);
    GetPointInRectL(out[1], corners, x1, dx, y2, dy);
    GetPointInRectL(out[2], corners, x2, dx, y2, dy);
    GetPointInRectL(out[3], corners, x2, dx, y1, dy);
}

void GetPointInRectLRcM(VxPOINT* out, VxPOINT* mirrored, const VxPOINT* corners, int x1, int x2, int dx,
                        int y1, int y2, int dy)
{
    GetPointInRectLRc(out, corners, x1, x2, dx, y1, y2, dy);
    GetPointInRectLRc(mirrored, corners, dx - x1, dx - x2, dx, y1, y2, dy);
}

void GetPointInRectL(VxPOINT& out, const VxPOINT* corners, double u, double v)
{
    if (!corners) {
        out = VxPOINT();
        return;
    }
    GMGetPointInRectL(out, corners, u, v);
}

void GetPointInRectL(CVxDPoint& out, const VxPOINT* corners, double u, double v)
{
    if (!corners) {
        out = CVxDPoint();
        return;
    }
    Interpolate(out.x, out.y, corners, u, v);
}

void GetPointInRectL(VxPOINT& out, const CVxDPoint* corners, double u, double v)
{
    if (!corners) {
        out = VxPOINT();
        return;
    }
    double x = 0;
    double y = 0;
    Interpolate(x, y, corners, u, v);
    out.x = static_cast<int32_t>(std::lround(x));
    out.y = static_cast<int32_t>(std::lround(y));
}

void GetPointInRectL(CVxDPoint& out, const CVxDPoint* corners, double u, double v)
{
    if (!corners) {
        out = CVxDPoint();
        return;
    }
    Interpolate(out.x, out.y, corners, u, v);
}

namespace {

template <typename Out, typename In>
void SubRectangle(Out* out, const In* corners, double u1, double v1, double u2, double v2)
{
    GetPointInRectL(out[0], corners, u1, v1);
    GetPointInRectL(out[1], corners, u1, v2);
    GetPointInRectL(out[2], corners, u2, v2);
    GetPointInRectL(out[3], corners, u2, v1);
}

} // namespace

void GetPointInRectLRc(VxPOINT* out, const VxPOINT* corners, double u1, double v1, double u2, double v2)
{
    SubRectangle(out, corners, u1, v1, u2, v2);
}

void GetPointInRectLRc(VxPOINT* out, const CVxDPoint* corners, double u1, double v1, double u2, double v2)
{
    SubRectangle(out, corners, u1, v1, u2, v2);
}

void GetPointInRectLRc(CVxDPoint* out, const VxPOINT* corners, double u1, double v1, double u2, double v2)
{
    SubRectangle(out, corners, u1, v1, u2, v2);
}

void GetPointInRectLRc(CVxDPoint* out, const CVxDPoint* corners, double u1, double v1, double u2, double v2)
{
    SubRectangle(out, corners, u1, v1, u2, v2);
}
