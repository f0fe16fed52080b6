#pragma once
// The walls of one floor, its floor openings and the appearances that the
// wall faces refer to by index.

#include "CVxAppearance.h"
#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "CVxHoleInFloor.h"
#include "CVxWall.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxDC;
class CVxFloor;
class CVxFloorPlan;
class CVxStringA;
struct SVx3DExportPars;
class CVxIniWriter;

class CVxRoomWalls : public IVxReadIniClient
{
public:
    CVxRoomWalls() = default;
    CVxRoomWalls(const CVxRoomWalls&) = default;
    CVxRoomWalls& operator=(const CVxRoomWalls&) = default;

    int GetWallCount() const { return static_cast<int>(walls.size()); }
    int GetHoleCount() const { return static_cast<int>(holes.size()); }
    CVxWall* SafeGetWall(int i);
    const CVxWall* SafeGetWall(int i) const;
    CVxHoleInFloor* SafeGetHole(int i);
    const CVxHoleInFloor* SafeGetHole(int i) const;
    CVxAppearance* SafeGetAppear(int i);
    const CVxAppearance* SafeGetAppear(int i) const;

    // False without walls, else the union of the walls' bounds.
    bool GetRoomDims(CVxDRect& out) const;
    // The common value of the walls that have one (not 0); 0 when none has,
    // -1 when they differ.
    double GetWallThickness() const;
    double GetWallZHeight() const;
    // -1 without walls.
    double GetMaxWallZHeight() const;
    void SetWallZHeight(double height);
    void SetWallThickness(double thick);
    // The most frequent style, the lowest on a tie.
    int GetWallFillStyle() const;
    void ChangeWallFillStyle(int from, int to);

    // Index of the nearest wall by face distance, -1 without walls.
    int GetNearestWall(double x, double y, double* outT, double preferredAngle) const;
    int GetNearestWallEx(double x, double y, double* outT, double preferredAngle, double otherX,
                         double otherY) const;

    // Joins the corners of all walls that share an end.
    void RebuildWalls();

    void SaveToFile(CVxIniWriter* writer, const CVxStringA& sectionName) const;
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    // Keeps the walls' appearance indices inside the list after reading.
    void OnEndSection();

    // (x, y) in pixels of that zoom; -1 if none.
    int FindHoleFromPoint(double x, double y, double zoom) const;
    int GetWallUnderCursor(double x, double y, double zoom) const;
    bool IsMouseOverWalls(double x, double y, double zoom) const;

    void RemoveUnusedAppearances();
    void GetHolePolygonList(std::vector<CVxDPolygon>& out);
    int AddFindAppearance(const CVxAppearance& appearance);
    // One key per straight run of a room, so a snapped object slides along
    // the run. The plan may be null: then every wall counts as in no room.
    void ResetSnapSegments(const CVxFloorPlan* plan);

    void Remove(int i);
    // All walls and openings; the surfaces stay until RemoveUnusedAppearances.
    void RemoveAll();
    // Four walls with the rectangle on their inside faces.
    void SetAsBasicRect(double width, double depth, double thick, double height);
    CVxWall* GetNewWall(int* outIndex = nullptr);
    // The new part of the wall is appended; point may be null.
    void SplitWallAtPoint(int i, double t, const CVxDPoint* point);

    // Whole-floor transforms of walls and openings.
    void Move(double dx, double dy, const CVxProject* project);
    void Scale(double sx, double sy, double sz, const CVxProject* project);
    void Rotate(double degrees);
    void Mirror(bool aroundX);

    // Every wall through CVxWall::Draw.
    void Draw(CVxDC* dc, unsigned fillColor, unsigned lineColor, unsigned char lineAlpha, int offsetX,
              int offsetY, double zoom) const;

    // The walls' faces in the 3D scene, a lower or upper half with halved
    // (written by the scene export).
    CVxStringA ExportToVRML(SVx3DExportPars* pars, const CVxFloor& floor, bool extendBelow, bool extendToTop,
                            double bottomExtent, double topExtent, bool halved, bool lowerHalf) const;

    std::vector<CVxWall> walls;
    std::vector<CVxHoleInFloor> holes;
    int readingWallIndex = 0;
    std::vector<CVxAppearance> appearances;
};
