#pragma once
// Swatches of the property dialogs, parts of the colour dialog and the
// backdrops of the touch interface, drawn through a CVxDC.

#include "VxGMDraw.h"

class CVxAppearance;

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
