#pragma once
// The drawing context through which everything is drawn: the plan, objects,
// thumbnails, previews, colour pickers and printed pages. Coordinates are
// integer device pixels, x to the right and y down; rectangles exclude their
// right and bottom edges. Pens, brushes and fonts are selected onto stacks
// and restored by popping, the way plan code selects an object's pen, draws,
// and gives back what was there before.

#include "CVxFont.h"
#include "CVxStringW.h"
#include "VxIntGeometry.h"

#include <vector>

class CVxPicBuf;

class CVxDC
{
public:
    // Pen styles in the low four bits of the style word of SelectPen.
    static constexpr int penSolid = 0;
    static constexpr int penDash = 1;
    static constexpr int penDot = 2;
    static constexpr int penDashDot = 3;
    static constexpr int penDashDotDot = 4;
    static constexpr int penNull = 5;
    static constexpr int penStyleMask = 0xF;
    // Keeps the width in device pixels on a printer too: hairlines of
    // selection frames and crop marks.
    static constexpr int penKeepWidth = 0x100000;

    // The pen style for a line style that objects store (0 solid, 1 dotted,
    // 2 dash-dot).
    static int PenStyleFromLineStyle(int lineStyle);

    // Brush styles of SelectBrush.
    static constexpr int brushSolid = 0;
    static constexpr int brushNull = 1;
    static constexpr int brushHatched = 2;
    // Hatches of a brush of style 2.
    static constexpr int hatchHorizontal = 0;
    static constexpr int hatchVertical = 1;
    static constexpr int hatchFDiagonal = 2;
    static constexpr int hatchBDiagonal = 3;
    static constexpr int hatchCross = 4;
    static constexpr int hatchDiagCross = 5;

    // Background modes.
    static constexpr int bkTransparent = 1;
    static constexpr int bkOpaque = 2;

    // Colour modes, applied by C2G to every colour that enters the context.
    static constexpr int colorModeNormal = 0;
    static constexpr int colorModeGrey = 1;
    // Pale tints for the ghost of the floor below.
    static constexpr int colorModePale = 2;

    // Flags of DrawText.
    static constexpr unsigned dtCenter = 0x001;
    static constexpr unsigned dtRight = 0x002;
    static constexpr unsigned dtVCenter = 0x004;
    static constexpr unsigned dtBottom = 0x008;
    static constexpr unsigned dtWordBreak = 0x010;
    static constexpr unsigned dtSingleLine = 0x020;
    static constexpr unsigned dtNoClip = 0x100;
    static constexpr unsigned dtCalcRect = 0x400;

    // Vertical flags of TextOut: y is the top, the bottom or the baseline.
    static constexpr unsigned taTop = 0;
    static constexpr unsigned taBottom = 8;
    static constexpr unsigned taBaseline = 24;

    struct CVxPen
    {
        int style = 0;
        int width = 1;
        unsigned color = 0;
        unsigned char alpha = 255;
    };

    struct CVxBrush
    {
        int style = 0;
        unsigned color = 0xFFFFFF;
        int hatch = 0;
        unsigned char alpha = 255;
    };

    explicit CVxDC(bool highQuality);
    CVxDC(const CVxDC&) = delete;
    CVxDC& operator=(const CVxDC&) = delete;

    virtual ~CVxDC();
    // Vertical logical resolution of the device; 96 without one.
    virtual int GetDPI() = 0;
    // Both return the previous state.
    virtual bool EnableSmoothing(bool enable) = 0;
    virtual bool SetInterpolationQuality(bool smooth) = 0;
    // A linear gradient from colour1 to colour2 along the direction angle in
    // degrees across rect. This body only pushes a record whose colour is
    // the mean of the two, so that the brush pops like any other.
    virtual void SelectGradientBrush(unsigned colour1, unsigned colour2, double angle, VxRECT& rect);
    // A picture repeated as a fill: scaled, rotated and moved. This body only
    // pushes a record of colour 0xC0C0C0.
    virtual void SelectTextureBrush(double scale, double angle, int offsetX, int offsetY, CVxPicBuf* picture);
    virtual int GetBkMode() = 0;
    // Modes other than bkTransparent and bkOpaque are ignored.
    virtual int SetBkMode(int mode) = 0;
    virtual unsigned GetBkColor() = 0;
    virtual unsigned SetBkColor(unsigned colour, unsigned char alpha = 255) = 0;
    // What the stacks call to make a record current; colours are final here.
    virtual void SelectPen_int(int style, int width, unsigned colour, unsigned char alpha) = 0;
    virtual void SelectBrush_int(int style, unsigned colour, int hatch, unsigned char alpha) = 0;
    virtual void SelectFont_int(const CVxFont& font) = 0;
    virtual void Line(int x1, int y1, int x2, int y2) = 0;
    virtual void MoveTo(int x, int y) = 0;
    virtual void LineTo(int x, int y) = 0;
    virtual void Rectangle(int left, int top, int right, int bottom) = 0;
    virtual void RoundRect(int left, int top, int right, int bottom, int radius) = 0;
    virtual void Ellipse(int left, int top, int right, int bottom) = 0;
    // Angles in degrees, clockwise on the screen from the positive x axis.
    // The four integers of the classic form are not used.
    virtual void Pie(int left, int top, int right, int bottom, int unused1, int unused2, int unused3,
                     int unused4, float startAngle, float spanAngle) = 0;
    // Clockwise like Pie; inside a path the angles run counter-clockwise.
    virtual void Arc(int left, int top, int right, int bottom, int unused1, int unused2, int unused3,
                     int unused4, float startAngle, float spanAngle) = 0;
    virtual void Polygon(const VxPOINT* points, int count) = 0;
    virtual void Polyline(const VxPOINT* points, int count) = 0;
    // The first point, then one triple (control, control, end) per curve.
    virtual void PolyBezier(const VxPOINT* points, int count) = 0;
    // Triples from the current position.
    virtual void PolyBezierTo(const VxPOINT* points, int count) = 0;
    virtual void SetPixelV(int x, int y, unsigned colour) = 0;
    // Text in rect by the dt flags. With dtCalcRect nothing is painted and
    // rect becomes the rectangle the text needs. The last argument is kept
    // for callers of the classic form and has no effect. Returns the height
    // of the text.
    virtual int DrawText(const CVxStringW& text, VxRECT& rect, unsigned flags, unsigned colour,
                         bool unused = false) = 0;
    // Text from (x, y) with the vertical ta flags, turned by the rotation of
    // the current font.
    virtual void TextOut(const CVxStringW& text, int x, int y, unsigned flags, unsigned colour) = 0;
    // Width by advance, height by the font's height; always true.
    virtual bool GetTextExtentPoint(const CVxStringW& text, VxSIZE& size) = 0;
    // Between BeginPath and StrokeAndFillPath the line and shape operations
    // add to a path instead of painting.
    virtual void BeginPath() = 0;
    virtual void EndPath() = 0;
    virtual void StrokeAndFillPath() = 0;
    virtual void SetClipRect(const VxRECT& rect) = 0;
    virtual void ClearClipping() = 0;
    // The picture in the rectangle, turned by angle degrees (clockwise) about
    // its top-left corner; smooth asks for smooth scaling for this call.
    virtual void DrawPicture(int x, int y, int width, int height, double angle, CVxPicBuf* picture,
                             bool smooth) = 0;
    // A part of a picture, unrotated.
    virtual void DrawPictureRect(int x, int y, int width, int height, CVxPicBuf* picture, int srcX, int srcY,
                                 int srcWidth, int srcHeight, bool smooth);

    // Select with the colour turned by C2G and remember on the stack.
    void SelectPen(int style, int width, unsigned colour, unsigned char alpha = 255);
    void SelectBrush(int style, unsigned colour, int hatch = 0, unsigned char alpha = 255);
    void SelectFont(const CVxFont& font);
    // Pop and make the new top current. After the last pen the painter keeps
    // its pen; after the last brush it paints solid white; after the last
    // font it keeps its font. Empty stacks are left alone.
    void SelectOldPen();
    void SelectOldBrush();
    void SelectOldFont();
    // The brush of a stored fill: colour with its off mark, the fill style
    // objects store (0 solid, 1 hollow, 2 to 7 the six hatches), and
    // a second colour (clrUndefined for none) that draws the hatch lines over
    // a background of the first.
    void SelectHatchBrush(unsigned colour, int fillStyle, unsigned char alpha, unsigned secondColour);

    unsigned GetCurrentPenColor() const;
    unsigned GetCurrentBrushColor() const;
    bool GetCurrentFont(CVxFont& font) const;
    bool IsPenNeeded() const;
    bool IsBrushNeeded() const;
    int GetPenStackSize() const { return static_cast<int>(m_pens.size()); }
    int GetBrushStackSize() const { return static_cast<int>(m_brushes.size()); }
    int GetFontStackSize() const { return static_cast<int>(m_fonts.size()); }

    // While on, an opaque selection takes the alpha of the last translucent
    // one of its kind, so that an object's transparency reaches the parts its
    // symbol draws. Returns the old value; switching off forgets the alphas.
    bool SetKeepSameAlpha(bool keep);
    bool GetKeepSameAlpha() const { return m_keepSameAlpha; }

    void Line(const VxPOINT& from, const VxPOINT& to) { Line(from.x, from.y, to.x, to.y); }
    void MoveTo(const VxPOINT& point) { MoveTo(point.x, point.y); }
    void LineTo(const VxPOINT& point) { LineTo(point.x, point.y); }

    // Forgets all pens, brushes and fonts without selecting anything.
    void ClearOldPensAndBrushes();

    // The colour as this context paints it: grey, pale or as given, without
    // the marks of the top byte.
    unsigned C2G(unsigned colour) const;
    int GetColorMode() const { return m_colorMode; }
    // Returns the previous mode.
    int SetColorMode(int mode);
    bool IsHighQuality() const { return m_highQuality; }
    bool OwnsPainter() const { return m_ownsPainter; }
    // A print job sets the printer's resolution; fonts then size by pixels.
    int GetFontResolution() const { return m_fontResolution; }
    void SetFontResolution(int dpi) { m_fontResolution = dpi; }

    // Mirrors the printing flag of the core for the time of a print job:
    // pens keep their physical width and hatches their physical spacing.
    static void SetPrinting(bool printing);
    static bool IsPrinting();

    // An off-screen context of the given size, transparent to begin with;
    // the caller deletes it.
    static CVxDC* CreateNewDC(int width, int height, bool highQuality);
    // Hooks of the platform layer; nothing to do on this surface.
    static void InitDrawing() {}
    static int EllipsesBenchmark() { return 0; }

protected:
    // Takes over the whole state of the context it records for.
    friend class CVxRecordingDC;

    int m_colorMode = colorModeNormal;
    bool m_highQuality = false;
    bool m_ownsPainter = false;
    int m_fontResolution = -1;
    bool m_keepSameAlpha = false;
    unsigned char m_lastPenAlpha = 255;
    unsigned char m_lastBrushAlpha = 255;
    std::vector<CVxPen> m_pens;
    std::vector<CVxBrush> m_brushes;
    std::vector<CVxFont> m_fonts;
};
