#pragma once
// The wall editor: the user draws, moves, splits and removes walls and floor
// openings. While it is active the floors hold no furniture, only the walls
// and the dimension lines, and every wall is exactly one edge of the plan's
// graph, so that each interaction is a matter of moving graph vertices and
// edges. On closing, walls split at joints become one wall again and the
// objects come back from the backup, re-snapped to the new walls.

#include "CVxPartSelection.h"
#include "CVxWallSelection.h"
#include "IVxReadIniClient.h"
#include "IVxSpecialEditor.h"

#include <vector>

class CVxFloor;
class CVxFloorPlan;
class CVxFloorRegion;
class CVxPart;
class CVxPlanVertex;
class CVxRoomWalls;
class CVxWall;
class CVxHoleInFloor;
class CVxRoomWalls;

class CVxWallEditor : public IVxSpecialEditor, public IVxReadIniClient
{
public:
    enum EResizeType : int
    {
        opNone = 0,
        opMoveVertex = 1,
        opMoveEdge = 2,
        opMoveHole = 3,
        opMoveHolePoint = 4,
        opNewWallStart = 5,
        opNewWall = 6,
        opNewPolyStart = 7,
        opNewPoly = 8,
        opNewHoleStart = 9,
        opNewHole = 10,
        opNewEllipseStart = 11,
        opNewEllipse = 12,
        opNewHolePolyStart = 13,
        opNewHolePoly = 14,
        opCalibrate = 15,
    };
    // What a touch selection holds.
    enum ESelType : int
    {
        selNone = 0,
        selVertex = 1,
        selWall = 2,
        selHole = 3,
        selHolePoint = 4,
    };
    // A dimension line brought from the backup carries 100 + its index there
    // in these bits of its appTag.
    static constexpr int newRoomShapeCount = 13;
    static constexpr unsigned tagShift = 16;
    static constexpr int tagBase = 100;

    CVxWallEditor();
    ~CVxWallEditor() override;

    void SetProject(CVxProject* project, CVxFloorPlan* plan);
    // Takes over the project; viewOnly keeps the walls as they are, for a
    // look without rebuilding.
    void Activate(IVxEditorHost* host, bool viewOnly);
    bool Deactivate(bool discard) override;
    int GetID() const override { return VX_EDITOR_WALL; }
    CVxStringW GetEditorLocalizedName() const override;
    bool QueryCanClose() override;
    bool CanSaveProjectWhileEditing() const override { return true; }
    void WriteStateToProject(CVxProject* target) override;
    void CatchUndoStep(bool armNext) override;

    // Commands.
    bool OnMainToolbarButtonAction(EVxMainToolbarButtonCode code) override;
    bool IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code) override;
    int IsContextToolbarButtonVisible(EVxMainToolbarButtonCode code, bool& enabled) override;
    bool GetMainToolbarButtonHint(EVxMainToolbarButtonCode code, CVxStringW& text) override;

    // Pointer and keys, in pixels relative to the object origin.
    bool OnMouseDown(int button, unsigned modifiers, double x, double y, int source, bool& ioGoOn) override;
    bool OnMouseMove(unsigned modifiers, double x, double y, int source, bool& ioGoOn) override;
    bool OnMouseUp(int button, unsigned modifiers, double x, double y, int source) override;
    bool OnDblClick(double x, double y) override;
    int GetMouseCursor(unsigned modifiers, double x, double y) override;
    bool OnKeyDown(unsigned key, unsigned modifiers) override;
    bool OnKeyArrowsPressed(unsigned key, unsigned modifiers) override;
    bool OnRectSelect(const CVxDRect& rect) override;
    void OnZoomChanged() override;
    bool OnContextEditCopy(CVxStringA& outText) override;
    bool OnContextEditPaste(const CVxStringA& text) override;
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    void OnDraw(CVxDC* dc, double zoom, int offsetX, int offsetY) override;
    void OnDrawBackground(CVxDC* dc, double zoom, int offsetX, int offsetY, const VxRECT& clip, int flags,
                          int stage) override;

    int GetOperation() const { return m_operation; }
    void OnMouseOperationChanged(int operation);
    // While a new wall is being drawn: whether a typed length applies.
    bool IsDrawingWall() const { return m_operation == opNewWall || m_operation == opNewPoly; }
    // A typed length for the wall being drawn, in project units, and with
    // angle (degrees clockwise from the x axis, as on the screen) when given;
    // the wall is laid at once and drawing goes on from its end.
    bool ApplyTypedWall(double length, const double* angle);

    // The outlines offered for a new project: rectangle, two rooms, a cut
    // corner, four L, T, two U, Z, bay and octagon.
    static int GetNewRoomShapesCount() { return newRoomShapeCount; }
    // The walls of one outline, filling width by depth, with their thickness
    // outside so that the rooms have that size.
    static void InitNewRoomShape(CVxRoomWalls& walls, int shape, double width, double depth, double thick,
                                 double height);

    // Graph and walls.
    // Each graph edge becomes a wall of its own; true if anything was split.
    static bool SplitWallsToEdges(CVxFloor& floor, CVxFloorPlan& plan, bool sort);
    // Walls in a straight line through a vertex become one wall again;
    // restrict to points (when given) or to vertices of the degree (>= 1).
    static void ConnectEdgesToWalls(CVxFloor& floor, CVxFloorPlan& plan, bool restrict, int degree,
                                    const std::vector<CVxDPoint>* points);
    static void SortWalls(CVxFloor& floor);
    void MovePlanEdges(CVxPlanVertex* vertex, double dx, double dy, bool snapToNeighbours, bool withDims);
    void BeginEdgeResizing(int edge);
    double MoveWallFreely(int edge, CVxDPoint delta, bool withDims);
    double MoveWallPerpendicular(int edge, double amount, unsigned flags);
    // Snapping of a point in pixels: to the centre line of the nearest wall.
    int GetNearestSnapWall(const CVxFloor& floor, double x, double y, double* outT,
                           const CVxPlanVertex* excludeVertex) const;
    CVxDPoint GetSnappedWallPoint(const CVxFloor& floor, const CVxDPoint& pixels, bool* outSnapped,
                                  const CVxPlanVertex* excludeVertex, int* outWall, double* outT) const;
    bool CanBeSnappedWallPoint(const CVxFloor& floor, const CVxDPoint& pixels) const;
    // A coordinate within snapping distance of a far vertex takes its value.
    void GetSnappedPointToFarVertexCoord(CVxDPoint& ioPixels, bool* outX, bool* outY) const;
    static void SetBestWallAlignForNewWall(CVxFloor& floor, int wall);
    // Grows the project's margins when the walls reach beyond the sheet.
    static void AdjustRoomSpace(CVxProject& project, const CVxDRect& rect, bool grow);

    // Commands on the touch selection.
    void OnPopupWallAddControlPoint();
    void OnPopupWallRemove();
    void OnPopupWallProperties();
    void FinalizeWallVertexPropDlg(const CVxDPoint& value, double height);
    void FinalizeWallEdgePropDlg(const CVxWall& wall, unsigned filled);
    void FinalizeWallHolePropDlg(const CVxHoleInFloor& hole);

    // Wall faces towards rooms.
    static int GetRegionWallAppearance(const CVxRoomWalls& walls, const CVxFloorRegion& region, int k);
    static void SetRegionWallAppearance(CVxRoomWalls& walls, const CVxFloorRegion& region, int k, int index);
    static void ChangeRegionAppearances(CVxFloor& floor, const CVxFloorRegion& region, int oldIndex);
    static void AssignRegionColorsToWalls(CVxFloor& floor);
    static void UpdateWallAppearances(CVxFloor& floor, CVxFloorPlan& plan);

    // A dimension line along the inner face of the wall, distance off it;
    // both makes one on either side. False when the wall has no room face.
    static bool DimensionWall(CVxFloor& floor, const CVxFloorPlan& plan, int wall, double distance, int unit,
                              bool both, int side);

    // Every corner and every wall's size as numbers, changed in one step.
    void OnMenuNumericalEditor();

    // The floor's scan of a drawing to build on: a new picture, shown or
    // hidden, removed; calibrated by a line that the user lays on a length
    // known in the picture, which then scales the picture to that length.
    bool OnPopupBkgScanLoadImage1Click(const CVxStringW& file);
    void OnPopupBkgScanShow1Click();
    void OnPopupBkgScanRemove1Click();
    bool OnPopupBkgScanCalibrate1Click();
    bool SetCalibrationSize(double length);
    void CloseCalibrationDialog();
    // The calibration line's ends, in plan units.
    CVxDPoint GetCalibrationFrom() const { return m_calibFrom; }
    CVxDPoint GetCalibrationTo() const { return m_calibTo; }

    void ClearTouchSelection();
    void SetTouchSelection(int type, int item, unsigned modifiers);
    bool IsItemTouchSelected(int type, int item) const;
    int GetFirstTouchSelection() const { return m_touchSelItems.empty() ? -1 : m_touchSelItems.front(); }
    int GetTouchSelType() const { return m_touchSelType; }
    const std::vector<int>& GetTouchSelItems() const { return m_touchSelItems; }
    CVxFloorPlan* GetPlan() const { return m_plan; }
    const CVxWallSelection& GetWallSelection() const { return m_wallSelection; }
    // The symbols anew from the plan.
    void Collect();

protected:
    void AfterUndoRestore() override;

private:
    CVxFloor* Floor() const;
    double Zoom() const;
    void Repaint() const;
    void SetStatus(const CVxStringW& text) const;
    // The plan of the current floor built anew, then one edge per wall.
    void RebuildAfterChange(bool sort);
    // The symbol under the pointer (pixels), -1 none.
    int FindSymbol(double x, double y, int kind) const;
    CVxPlanVertex* SymbolVertex(int symbol) const;
    void DeleteTempDimLines();
    CVxPart* AddTempDimLine(const CVxDPoint& from, const CVxDPoint& to, double offset);
    void DrawUpdateNewWallLine(unsigned modifiers, double x, double y, bool snappedX, bool snappedY);
    void DrawUpdateNewHoleRect(unsigned modifiers, double x, double y);
    // Lays a new wall from start to end, splitting walls that its ends lie on.
    void AddNewWall(const CVxDPoint& start, const CVxDPoint& end);
    void EndDragTail();
    void MoveSelectedBy(double dx, double dy);
    void ShowCalibrationLine();
    bool OnCalibrateMouseDown(double x, double y);
    void OnCalibrateMouseMove(double x, double y);
    // 1 the line's start, 2 its end, 3 the line; 0 none; pixels.
    int HitCalibrationLine(double x, double y) const;
    CVxDRect WallBounds() const;

    CVxFloorPlan* m_plan = nullptr;
    int m_operation = opNone;
    CVxDPoint m_calibFrom;
    CVxDPoint m_calibTo;
    int m_calibDrag = 0;
    CVxDPoint m_calibGrab;
    bool m_newRoomMode = false;
    bool m_noRebuild = false;
    int m_floorBelow = -1;
    bool m_mouseMoved = false;
    bool m_drawing = false;
    CVxWallSelection m_wallSelection;
    CVxPartSelection m_holePartSelection;
    CVxDPoint m_dragStart;
    CVxDPoint m_dragHoleStart;
    CVxDPoint m_drawStart;
    CVxDPoint m_drawEnd;
    CVxDPoint m_polyFirst;
    int m_drawStartWall = -1;
    double m_drawStartWallPos = 0;
    std::vector<int> m_resizeEdges;
    CVxDPoint m_edgeStart;
    CVxDPoint m_edgeEnd;
    int m_dragEdge = -1;
    int m_dragVertex = -1;
    int m_dragHolePoint = -1;
    // A control point of a curved wall being dragged: its wall and which.
    int m_dragCtrlWall = -1;
    int m_dragCtrlKind = 0;
    // A handle of a rectangle or ellipse opening, by the compass; -1 none.
    int m_dragHoleHandle = -1;
    CVxDRect m_boundsAtStart;
    CVxDPolygon m_newHolePoly;
    std::vector<int> m_tempDimLines;
    CVxDPoint m_movedSoFar;
    int m_touchSelType = selNone;
    std::vector<int> m_touchSelItems;
    int m_activeHole = -1;
    // The last wall drawn gives the next its thickness and alignment.
    double m_lastThickness = -1;
    int m_lastAlign = 1;
    // Keys of a paste, in order of reading.
    std::vector<CVxStringW> m_pasteWalls;
    std::vector<CVxStringW> m_pasteHoles;
};
