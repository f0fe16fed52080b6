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

class CVxAppearance;
class CVxDC;
class CVxDPoint;
class CVxDPolygon;
class CVxDRect;
class CVxFloor;
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
// of the wall). With a floor the colours follow the floor's walls. With flag
// not 0 the faces are drawn with the pen already selected.
void GMDrawWallOpeningRect(CVxDC& dc, const VxPOINT* corners, unsigned colour, int flag,
                           const CVxFloor* floor);

// The small overlay icon of an object, size pixels square at (x, y). The
// icon is read once from folder + "textures/mk_soundclip.png" (or
// "mk_link.png"), else from folder + "icons/", and drawn by hand when
// neither can be read.
void GMDrawPartMarker(CVxDC& dc, int x, int y, int size, EVxMarkerType type, const CVxStringW& folder);
// Forgets the loaded marker icons.
void GMReleasePartMarkers();

// Backdrops of the touch interface.
void GMDrawGradientBackground(CVxDC& dc, const VxRECT& rect);
void GMDrawRoundPanel(CVxDC& dc, const VxRECT& rect);
void GMDrawDarkerRoundPanel(CVxDC& dc, const VxRECT& rect);

// Swatches of the property dialogs. Each draws a 0xB0B0B0 frame around its
// content with smoothing off and a transparent background, and restores the
// smoothing. An undefined value (the dialog shows several objects that
// differ) draws an empty swatch.
//
// A line across the middle in the line style (0 solid, 1 dotted, 2
// dash-dot), 1.6 times as thick as the line; thickness below 0 is undefined.
void GMDrawLineStylePicker(CVxDC& dc, const VxRECT& rect, int lineStyle, double thickness, unsigned colour);
// A swatch with a short text, for choices that are neither colour nor line.
void GMDrawGenericPicker(CVxDC& dc, const VxRECT& rect, const CVxStringW& text);
// The surface: its texture when it has one, else its colour, with its
// transparency.
void GMDrawAppearancePicker(CVxDC& dc, const VxRECT& rect, const CVxAppearance& appearance);
// The fill as SelectHatchBrush draws it.
void GMDrawFillStylePicker(CVxDC& dc, const VxRECT& rect, int fillStyle, unsigned colour,
                           unsigned secondColour);
// The colour with transparency in percent. A near-white swatch on a
// near-white window, or a near-black one on a near-black window, gets a
// frame of its own so that it stays visible.
void GMDrawColorPicker(CVxDC& dc, const VxRECT& rect, unsigned colour, int transparency);
void GMDrawDisabledPicker(CVxDC& dc, const VxRECT& rect);
// Alpha of a transparency in percent.
int GMTransparencyToAlpha(int transparency);

// Parts of the colour dialog of the touch interface.
//
// The colour chosen so far beside the new one: old on the left half.
void GMDrawColorPickerResult(CVxDC& dc, const VxRECT& rect, unsigned oldColour, unsigned newColour);
// A ring of all hues around the centre of rect, hue 0 at the top, growing
// clockwise, with a mark at hue.
void GMDrawColorPickerHueRing(CVxDC& dc, const VxRECT& rect, int hue);
// A horizontal run from colour1 to colour2 with a handle at position (0
// to 1).
void GMDrawColorPickerSlider(CVxDC& dc, const VxRECT& rect, unsigned colour1, unsigned colour2,
                             double position);
// One round preset colour; the chosen one carries a ring.
void GMDrawColorPickerPreset(CVxDC& dc, const VxRECT& rect, unsigned colour, bool selected);
// The texture filling rect, tinted by nothing; without a picture the colour.
void GMDrawColorPickerTexturePreview(CVxDC& dc, const VxRECT& rect, CVxPicBuf* picture, unsigned colour);
// The texture repeated tilesX by tilesY times across rect.
void GMDrawColorPickerTextureTilingPreview(CVxDC& dc, const VxRECT& rect, CVxPicBuf* picture, int tilesX,
                                           int tilesY);
// The main colour and the blend colour mixed by percent, as stripes of the
// two and the mixture between them.
void GMDrawColorPickerBlendPreview(CVxDC& dc, const VxRECT& rect, unsigned colour1, unsigned colour2,
                                   int percent);
