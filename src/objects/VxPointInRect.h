#pragma once
// Points of an object symbol, given as fractions of the object's own
// quadrilateral. The corners P0 to P3 come from the object's cached rectangle
// (P0-P1 along the width, P0-P3 along the depth) and already carry rotation,
// skew, scale and zoom, so a symbol built from these points draws the same at
// any of them. Every result is a bilinear interpolation of the four corners.

#include "CVxDPoint.h"
#include "VxIntGeometry.h"

// The weight of P0 is (nx / dx) * (ny / dy), of P1 ((dx - nx) / dx) *
// (ny / dy), of P2 the complement of both, of P3 (nx / dx) * ((dy - ny) / dy).
// So (1,1,1,1) is P0 and (0,1,0,1) is P2. Rounded half away from zero; a
// divisor of 0 counts as 1.
void GetPointInRect(VxPOINT& out, const VxPOINT* corners, int nx, int dx, int ny, int dy);

// The same measured from P0, the form symbols are designed in: nx / dx along
// the width, ny / dy along the depth. (0,1,0,1) is P0, (1,1,0,1) P1, (1,1,1,1)
// P2 and (0,1,1,1) P3.
void GetPointInRectL(VxPOINT& out, const VxPOINT* corners, int nx, int dx, int ny, int dy);

// The point and its mirror image across the centre line along the depth, for
// symbols that are symmetric left to right.
void GetPointInRectLM(VxPOINT& out, VxPOINT& mirrored, const VxPOINT* corners, int nx, int dx, int ny,
                      int dy);

// The point and its mirror image across the centre line along the width.
void GetPointInRectLMX(VxPOINT& out, VxPOINT& mirrored, const VxPOINT* corners, int nx, int dx, int ny,
                       int dy);

// The four corners of a sub-rectangle, in the order (x1,y1), (x1,y2), (x2,y2),
// (x2,y1). A rotated or skewed object gets a rotated or skewed sub-rectangle.
void GetPointInRectLRc(VxPOINT* out, const VxPOINT* corners, int x1, int x2, int dx, int y1, int y2, int dy);

// The sub-rectangle and its mirror image across the centre line along the
// depth.
void GetPointInRectLRcM(VxPOINT* out, VxPOINT* mirrored, const VxPOINT* corners, int x1, int x2, int dx,
                        int y1, int y2, int dy);

// Fractions as doubles: u along the width, v along the depth, measured from
// P0. They may lie outside 0 to 1, which places a point beyond the object's
// outline (a door frame standing proud of the wall, a window leaf opened
// into the room). Integer results are rounded half away from zero.
void GetPointInRectL(VxPOINT& out, const VxPOINT* corners, double u, double v);
void GetPointInRectL(CVxDPoint& out, const VxPOINT* corners, double u, double v);
void GetPointInRectL(VxPOINT& out, const CVxDPoint* corners, double u, double v);
void GetPointInRectL(CVxDPoint& out, const CVxDPoint* corners, double u, double v);

// The sub-rectangle (u1,v1), (u1,v2), (u2,v2), (u2,v1) in double fractions.
void GetPointInRectLRc(VxPOINT* out, const VxPOINT* corners, double u1, double v1, double u2, double v2);
void GetPointInRectLRc(VxPOINT* out, const CVxDPoint* corners, double u1, double v1, double u2, double v2);
void GetPointInRectLRc(CVxDPoint* out, const VxPOINT* corners, double u1, double v1, double u2, double v2);
void GetPointInRectLRc(CVxDPoint* out, const CVxDPoint* corners, double u1, double v1, double u2, double v2);
