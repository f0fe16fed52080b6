#pragma once
// Distances in pixels within which the pointer hits handles, control points
// and walls, scaled once to the screen's logical DPI and to touch use.

class CVxHitDist
{
public:
    // Reads the DPI and the touch mode from the host; without a host, 96 DPI
    // and no touch.
    static void Init();
    // The same for a given DPI (at least 96 is used) and touch mode.
    static void Init(int logicalDpi, bool touchMode);

    // Hit distance of selection handles.
    static int SelSymbol() { return s_selSymbol; }
    // Hit distance of the control points of walls.
    static int WallCtlPoint() { return s_wallCtlPoint; }
    // Least movement before a resize starts.
    static int ResizeMin() { return s_resizeMin; }
    // Snap distance when resizing.
    static int ResizeSnap() { return s_resizeSnap; }
    // Snap distance to walls.
    static int WallSnap() { return s_wallSnap; }
    // Size of a selection handle.
    static int SelSymbolSize() { return s_selSymbolSize; }
    // Distance of a selection handle from its object.
    static int SelSymbolOffset() { return s_selSymbolOffset; }
    // Distance of the rotation handle.
    static int RotationSymbolDist() { return s_rotationSymbolDist; }
    // Radius of the circle that marks a touch.
    static int TouchCircleRadius() { return s_touchCircleRadius; }

private:
    static int s_selSymbol;
    static int s_wallCtlPoint;
    static int s_resizeMin;
    static int s_resizeSnap;
    static int s_wallSnap;
    static int s_selSymbolSize;
    static int s_selSymbolOffset;
    static int s_rotationSymbolDist;
    static int s_touchCircleRadius;
};
