#pragma once
// Drawing helpers shared by the plan, the object symbols, the property
// dialogs and the touch interface. All of them draw through a CVxDC.
//
// Shapes of objects are given as the four corners of the object's
// quadrilateral, P0 to P3 in order (P0-P1 along the width, P0-P3 along the
// depth), so that a rotated or skewed object needs no transformation.

#include "CVxStringW.h"
#include "VxIntGeometry.h"

#include <vector>

class CVxDC;
class CVxDPoint;
class CVxDPolygon;
class CVxDRect;
class CVxPicBuf;

// The overlay icons of objects that carry a sound clip or a link.
enum EVxMarkerType
{
    VX_MARKER_SOUNDCLIP = 0,
    VX_MARKER_LINK = 1
};

// Set by a print job for monochrome output; GMC2G then gives greys.
extern bool g_bColorToGray;

// The point at fraction u along the width (P0 to P1) and v along the depth
// (P0 to P3), rounded half away from zero; fractions may lie outside 0 to 1.
void GMGetPointInRectL(VxPOINT& out, const VxPOINT* corners, double u, double v);

// An ellipse inscribed in the quadrilateral: four cubic curves in one path,
// stroked and filled with the current pen and brush.
void GMDrawEllipse(CVxDC& dc, const VxPOINT* corners);
// The quadrilateral with rounded corners; large rounds them twice as far.
void GMDrawRoundRect(CVxDC& dc, const VxPOINT* corners, bool large = false);

// A polygon whose edges flagged in curved are cubic curves. curved must hold
// one flag per edge (count, or count - 1 when open) or it counts as all
// straight. Control points are taken two per curved edge from controls while
// they last, then derived from the neighbouring points. An open polygon is
// stroked only.
void GMDrawBezierPolygon(CVxDC& dc, const VxPOINT* points, int count, const std::vector<bool>& curved,
                         const VxPOINT* controls = nullptr, int controlCount = 0, bool open = false);
// The same for a plan outline; pixel = coordinate * scale + offset.
void GMDrawBezierPolygon(CVxDC& dc, const CVxDPolygon& polygon, double scale, double offsetX, double offsetY,
                         bool open = false);
// One edge of a plan outline, stroked with the current pen: a wall side or
// the edge under the pointer.
void GMDrawBezierPolygonEdge(CVxDC& dc, const CVxDPolygon& polygon, int edge, double scale, double offsetX,
                             double offsetY, bool open = false);

// A plan rectangle or line at scale (sx, sy) and offset (ox, oy), rounded by
// adding 0.5 and truncating; the rectangle is normalised and grows by one
// pixel to the right and down, so that its far edge is drawn.
void GMDrawScaledRect(CVxDC& dc, const CVxDRect& rect, double sx, double sy, double ox, double oy);
void GMDrawScaledLine(CVxDC& dc, const CVxDPoint& from, const CVxDPoint& to, double sx, double sy, double ox,
                      double oy);

// 0.3 R + 0.59 G + 0.11 B, truncated.
int GMGetIntensity(unsigned colour);
// The grey of the intensity while g_bColorToGray is on, with the marks of
// the top byte kept; otherwise the colour.
unsigned GMC2G(unsigned colour);
// The channels as fractions of 255.
void GMSplitColor(unsigned colour, float& r, float& g, float& b);
// c1 * (1 - t) + c2 * t per channel, truncated.
unsigned GMCombineColors(unsigned c1, unsigned c2, double t);

// Indexes of GMGetSysColor, numbered as the host's colour roles.
constexpr int VX_SYSCOLOR_WINDOW = 5;
constexpr int VX_SYSCOLOR_WINDOWTEXT = 8;
constexpr int VX_SYSCOLOR_BTNFACE = 15;
// A colour of the desktop's theme, asked from the host; 0 without one.
unsigned GMGetSysColor(int index);

// The gap that a door or window makes in a wall, corners as the opening's
// quadrilateral (P1-P2 and P3-P0 are the jambs, P0-P1 and P2-P3 the faces
// of the wall). With a shade the gap shows the floor's colour and the jambs
// those of the cut walls. With flag not 0 the faces are drawn with the pen
// already selected.
struct SVxOpeningShade
{
    // The floor behind the gap, as 0xBBGGRR with the top byte's marks.
    unsigned floorColour = 0;
    unsigned jambColour = 0;
};
void GMDrawWallOpeningRect(CVxDC& dc, const VxPOINT* corners, unsigned colour, int flag,
                           const SVxOpeningShade* shade);

// The small overlay icon of an object, size pixels square at (x, y). The
// icon is read once from folder + "textures/mk_soundclip.png" (or
// "mk_link.png"), else from folder + "icons/", and drawn by hand when
// neither can be read.
void GMDrawPartMarker(CVxDC& dc, int x, int y, int size, EVxMarkerType type, const CVxStringW& folder);
// Forgets the loaded marker icons.
void GMReleasePartMarkers();
