#pragma once
// An opening in the floor above a storey's walls: a stair well, a void. A
// rotated rectangle, an ellipse in such a rectangle, or a free polygon.

#include "CVxDPoint.h"
#include "CVxDPolygon.h"
#include "CVxStringW.h"
#include "VxIntGeometry.h"

#include <cstdint>

class CVxProject;

class CVxHoleInFloor
{
public:
    // The object type ids of the three shapes.
    enum EType : int32_t
    {
        TYPE_RECTANGLE = 0,
        TYPE_ELLIPSE = 2,
        TYPE_POLYGON = 13
    };

    CVxHoleInFloor();

    // Type name, "|", then the polygon's text or "x|y|width|height|rotation".
    CVxStringW SaveToString() const;
    // False for an unknown type name or a shape that doesn't parse.
    bool LoadFromString(const CVxStringW& text);

    void InvalidateCache() { cachedZoom = 0; }
    // (x, y) in pixels of that zoom.
    bool PtInHole(double x, double y, double zoom) const;

    // Move doesn't invalidate the pixel cache: the caller does.
    void Move(double dx, double dy, const CVxProject* project = nullptr);
    void Scale(double sx, double sy, const CVxProject* project = nullptr);
    void Rotate(double degrees);
    void Mirror(bool aroundX);

    // Corners times zoom: top-left, top-right, bottom-right, bottom-left of
    // the rotated rectangle, or of a polygon's bounds.
    void GetRect(CVxDPoint outCorners[4], double zoom) const;
    // The corners in pixels, recomputed only when the zoom changes.
    const VxPOINT* GetCachedRect(int offsetX, int offsetY, double zoom);
    // The opening as a polygon of negative signed area, kind 1. A polygon
    // opening wound the other way is turned round in place.
    void GetHolePolygon(CVxDPolygon& out);

    static const wchar_t* TypeName(int type);

    int32_t type = TYPE_RECTANGLE;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    double rotation = 0;
    CVxDPolygon polygon;
    VxPOINT cachedPixels[4];
    CVxDPoint cachedCorners[4];
    double cachedZoom = 0;
};
