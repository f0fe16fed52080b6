#pragma once
// The handles around the selected objects of a floor, and what dragging
// each of them does to its object: resizing by a side or corner with the
// opposite side kept, turning with snaps to the eighths of a turn, moving
// the ends of a line.

#include "CVxSelectionHolder.h"

class CVxPart;
class CVxProject;

class CVxPartSelection : public CVxSelectionHolder
{
public:
    // The project gives the steps that sizes and positions snap to; without
    // one they stay as the pointer gives them.
    void SetProject(const CVxProject* project) { m_project = project; }

    void Collect(CVxFloor* floor, double zoom) override;
    bool OnMouseMove(CVxFloor* floor, unsigned modifiers, int x, int y, double zoom, int source,
                     VxRECT* dirty) override;

    // The handles of one object, replacing those it had.
    void UpdateSymbol(CVxPart* part, int partIndex, double zoom);
    // Places a regular handle by its kind in the object's turned rectangle;
    // corners in pixels, width and height their lengths.
    static void UpdateRegularSymbolPos(CVxSelSymbol& symbol, const CVxDPoint corners[4], double width,
                                       double height);
    // The point, in units, that a rotation by this kind of handle turns
    // about.
    static CVxDPoint GetRotationCenter(const CVxPart& part, int kind);
    // Applies the drag of a handle of this kind to (x, y) pixels relative to
    // the view offset; false when the object didn't change.
    bool MouseMovePart(int kind, CVxPart* part, int subIndex, unsigned modifiers, int x, int y, double zoom);
    // The rotation that a free drag gives: tenths of a degree, falling onto
    // the eighths of a turn within 3 degrees; with snap45 only eighths.
    static double SnapRotation(double degrees, bool snap45);
    // Moves point `index` of a polygon or polyline to `target` (units) and
    // fits the frame to the points again.
    bool MovePolygonPoint(CVxPart* part, int index, CVxDPoint target, bool snap45) const;

    // Handle distances in pixels: from the object's rectangle, and of the
    // rotation handle from the centre.
    static int SymbolDist();
    static int SymbolRotDist();

protected:
    void OnStartResizing(int x, int y) override;

private:
    const CVxProject* m_project = nullptr;
    CVxFloor* m_floor = nullptr;
    double m_zoom = 0;
    // From the point of the object that the handle stands for to where the
    // handle was grabbed: handles stand off the object, and the side must
    // not jump out to the pointer.
    CVxDPoint m_grabOffset;
    // A turn keeps the centre that the object had when the drag began, so
    // that the rounding of positions doesn't walk it away step by step.
    CVxDPoint m_turnCentre;
    bool m_turning = false;
};
