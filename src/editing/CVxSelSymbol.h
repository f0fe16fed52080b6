#pragma once
// A handle drawn around a selected object: a square on a side or corner to
// resize, a circle to turn, a dot in the middle to move.

#include "VxIntGeometry.h"

class CVxDC;

// Cursor codes of the plan view, as the core chooses them; the host maps
// them to its own shapes.
enum EVxViewCursor : int
{
    vcNone = 0,
    vcArrow = 1,
    vcSizeAll = 4,
    vcPanOne = 5,
    vcCellText = 9,
    vcCross = 10,
    vcAddNothing = 11,
    vcAddToSelection = 12,
    vcLocked = 13,
    vcRotate = 14,
    vcPainter = 16,
    // The four resize directions, by the side's angle on the screen.
    vcSizeVer = 20,
    vcSizeBDiag = 21,
    vcSizeHor = 22,
    vcSizeFDiag = 23,
};

class CVxSelSymbol
{
public:
    enum EShape
    {
        shapeSquare,
        shapeCircle,
        shapeDot,
    };
    // What a handle does: 0 to 7 the compass sides clockwise from the top,
    // 8 the centre, 9 rotation, 10 a point of a line; 20 + k turns by a
    // corner, 30 + k turns a dimension line.
    static constexpr int kindCentre = 8;
    static constexpr int kindRotate = 9;
    static constexpr int kindVertex = 10;

    CVxSelSymbol();

    void DrawTouchCircle(CVxDC* dc, int offsetX, int offsetY) const;
    void DrawSymbolToHdc(CVxDC* dc, int offsetX, int offsetY, bool highlighted) const;
    void DrawToHdc(CVxDC* dc, int offsetX, int offsetY, bool highlighted) const;
    bool PtInSymbol(int x, int y) const;
    int GetDistanceSq(int x, int y) const;
    // One of EVxViewCursor.
    int GetCursorShape() const;

    // Pixels relative to the view offset.
    VxPOINT pos;
    int partNo = -1;
    int subIndex = 0;
    double angle = 0;
    int kind = 0;
    int isRound = 0;
    unsigned color = 0xffffff;
    int hitSize;
    EShape shape = shapeSquare;
};
