#pragma once
// One wall of a floor: a centre line (or a cubic curve) with a thickness and
// a height at each end. The rebuild of the floor's walls joins the corners
// of walls that share an end and leaves each wall its trimmed hexagon.

#include "CVxDPoint.h"
#include "CVxDRect.h"
#include "CVxStringW.h"
#include "VxIntGeometry.h"

#include <cstdint>
#include <vector>

class CVxAppearance;
class CVxDC;
class CVxFloor;
class CVxStringA;
struct SVx3DExportPars;

class CVxWall
{
public:
    // Where the given line lies in the wall's thickness.
    enum EAlign : int32_t
    {
        ALIGN_SIDE_A = 0,
        ALIGN_CENTER = 1,
        ALIGN_SIDE_B = 2,
        ALIGN_CUSTOM = 3
    };
    // Indices into outline.
    enum EOutline
    {
        OUT_START = 0,
        OUT_A_START = 1,
        OUT_A_END = 2,
        OUT_END = 3,
        OUT_B_END = 4,
        OUT_B_START = 5,
        OUT_COUNT = 6
    };
    // Indices into interParam and interAngle.
    enum ECorner
    {
        CORNER_A_START = 0,
        CORNER_A_END = 1,
        CORNER_B_END = 2,
        CORNER_B_START = 3
    };
    static constexpr int subWallCount = 16;
    // Number of "|" separated fields of the text form.
    static constexpr int stringFieldCount = 19;

    CVxWall();
    CVxWall(const CVxWall&) = default;
    CVxWall& operator=(const CVxWall&) = default;

    // Stores the values and recalculates; true if the wall was reversed to
    // its canonical direction.
    bool Set(double x1, double y1, double x2, double y2, int alignment, double thick, double heightAtStart,
             double heightAtEnd, bool isVisible, bool isCurved);
    // Canonical direction, direction values, untrimmed corners, sub-walls.
    // True if the wall was reversed.
    bool RecalculateProperites();
    void FillBezierSubWalls();

    // The corner joints of the rebuild (see CVxRoomWalls::RebuildWalls).
    void ResetIntersections();
    // side 0 is side A, 2 side B. True if the value was accepted.
    bool SetInter(int side, double t, bool atStart, double jointAngle, bool hasPoint);
    void CalculateIntersection(CVxWall& other, bool isSubWall);
    void FinishIntersections();

    // False for a straight wall.
    bool GetBezierControlPoints(CVxDPoint& out0, CVxDPoint& out1) const;
    // Either may be null; a control point on its end is left out.
    void SetBezierControlPoints(const CVxDPoint* c0, const CVxDPoint* c1);
    bool GetBezierControlPointsOnLine(CVxDPoint& out0, CVxDPoint& out1, const CVxDPoint& a,
                                      const CVxDPoint& b) const;
    // The point at t along the centre line or curve.
    CVxDPoint GetPointOnLine(double t) const;
    CVxDPoint GetPointOnWall(double t) const { return GetPointOnLine(t); }
    double GetRotationAtPoint(double t) const;
    double GetBezierLength() const;

    // Distance from (x, y) to the line a-b (the wall's ends when either is
    // null) or the curve; outT receives the clamped parameter.
    double GetDistFromLine(const CVxDPoint* a, const CVxDPoint* b, double x, double y, double* outT) const;
    // Distance to the nearer face in ten-thousandths of a unit.
    double GetDistFromWall(double x, double y, double* outT) const;
    // A point on the face of side A (or B) at t, for snapping objects.
    CVxDPoint GetPointOnWallBaseRect(double t, bool sideB) const;

    // The six outline points in pixels.
    void GetCachedRect(VxPOINT outPixels[OUT_COUNT], int offsetX, int offsetY, double zoom) const;
    void Draw(CVxDC* dc, unsigned fillColor, unsigned lineColor, unsigned char lineAlpha, int offsetX,
              int offsetY, double zoom) const;
    void DrawSelectionAround(CVxDC* dc, int offsetX, int offsetY, double zoom) const;

    // Of the centre line; thickness doesn't count.
    void GetBoundingRect(CVxDRect& out) const;
    double GetMaxZHeight() const;
    double GetZHeightAtPos(double x, double y) const;
    // (x, y) in pixels of that zoom.
    bool PtInWall(double x, double y, double zoom) const;

    void Move(double dx, double dy);
    void Scale(double sx, double sy, double sz);
    void Rotate(double degrees);
    void Mirror(bool aroundX);

    // The 19 fields joined by "|".
    CVxStringW SaveToString() const;
    // Tolerant: missing fields keep the reading defaults; recalculates.
    // False for a text without the four coordinates.
    bool LoadFromString(const CVxStringW& text);
    // A one-line description for traces.
    CVxStringW GetString() const;

    // The wall's faces in the 3D scene, with the openings of the floor's
    // objects cut out (written by the scene export).
    CVxStringA ExportToVRMLNew(SVx3DExportPars* pars, const CVxFloor& floor, int wallIndex, bool extendBelow,
                               double topZ, double bottomExtent, double topExtent, double splitHeight,
                               bool lowerHalf) const;
    static CVxStringA GetVRMLAppearanceNode(const CVxAppearance& appearance, const CVxDRect& bounds,
                                            double shift, SVx3DExportPars* pars);

    bool IsCurved() const { return curved && !subWalls.empty(); }

    CVxDPoint start;
    CVxDPoint end;
    int32_t align = ALIGN_CENTER;
    double thickness = 0;
    double customOffset = 0;
    double startHeight = 0;
    double endHeight = 0;
    int32_t appearanceA = -1;
    int32_t appearanceB = -1;
    int32_t lineStyle = 0;
    int32_t fillStyle = 0;
    bool visible = true;
    bool curved = false;
    double ctrlDist0 = 0.3;
    double ctrlDist1 = 0.3;
    double ctrlAngle0 = 0;
    double ctrlAngle1 = 180;

    // Derived, never stored.
    CVxDPoint cornerA0, cornerA1, cornerB0, cornerB1;
    double angle = 0;
    double cosA = 1;
    double dxOverLen2 = 1;
    double sinA = 0;
    double dyOverLen2 = 0;
    double length = 1;
    uint64_t snapSegment = 0;
    std::vector<CVxWall> subWalls;
    std::vector<bool> subFlipped;
    CVxDPoint outline[OUT_COUNT];
    double interParam[4];
    double interAngle[4];

private:
    // Control points of the curve between a and b of length len, by the
    // wall's control distances and angles.
    void ComputeControlPoints(CVxDPoint& out0, CVxDPoint& out1, const CVxDPoint& a, const CVxDPoint& b,
                              double len) const;
    // The joint of two straight pieces that share an end.
    void JoinStraight(CVxWall& other, bool isSubWall);
};
