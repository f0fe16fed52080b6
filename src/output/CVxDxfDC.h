#pragma once
// A drawing context that turns what the plan draws into entities of an
// ASCII drawing exchange file (release 12): lines, closed and open
// polylines, circles, arcs and texts, each on the layer that the caller
// names before drawing. Device pixels go back to plan units through the
// origin and zoom of the drawing, with y turned upwards as CAD programs
// have it. Fills, pictures and clipping have no counterpart and are left
// out; a filled shape keeps its outline.

#include "CVxDC.h"
#include "CVxDRect.h"

#include <string>
#include <vector>

class CVxDxfDC final : public CVxDC
{
public:
    // The plan's origin in device pixels, pixels per plan unit, and the
    // resolution that fonts and captions take, as a print of that zoom.
    CVxDxfDC(double originX, double originY, double zoom, int dpi);
    ~CVxDxfDC() override;

    // The layer of the entities that follow; names are upper case letters,
    // digits and underscores. colour is the layer's colour number (1 red to
    // 7 black or white).
    void SetLayer(const std::string& name, int colour);
    // The whole file; layers that got no entity are listed all the same.
    std::string GetText() const;
    int GetEntityCount() const { return m_entities; }
    // What the entities cover, in plan units with y upwards; empty without
    // entities.
    const CVxDRect& GetExtents() const { return m_extents; }

    int GetDPI() override { return m_dpi; }
    bool EnableSmoothing(bool enable) override;
    bool SetInterpolationQuality(bool smooth) override;
    int GetBkMode() override { return m_bkMode; }
    int SetBkMode(int mode) override;
    unsigned GetBkColor() override { return m_bkColor; }
    unsigned SetBkColor(unsigned colour, unsigned char alpha = 255) override;
    void SelectPen_int(int style, int width, unsigned colour, unsigned char alpha) override;
    void SelectBrush_int(int style, unsigned colour, int hatch, unsigned char alpha) override;
    void SelectFont_int(const CVxFont& font) override;
    void Line(int x1, int y1, int x2, int y2) override;
    void MoveTo(int x, int y) override;
    void LineTo(int x, int y) override;
    void Rectangle(int left, int top, int right, int bottom) override;
    void RoundRect(int left, int top, int right, int bottom, int radius) override;
    void Ellipse(int left, int top, int right, int bottom) override;
    void Pie(int left, int top, int right, int bottom, int unused1, int unused2, int unused3, int unused4,
             float startAngle, float spanAngle) override;
    void Arc(int left, int top, int right, int bottom, int unused1, int unused2, int unused3, int unused4,
             float startAngle, float spanAngle) override;
    void Polygon(const VxPOINT* points, int count) override;
    void Polyline(const VxPOINT* points, int count) override;
    void PolyBezier(const VxPOINT* points, int count) override;
    void PolyBezierTo(const VxPOINT* points, int count) override;
    void SetPixelV(int x, int y, unsigned colour) override;
    int DrawText(const CVxStringW& text, VxRECT& rect, unsigned flags, unsigned colour,
                 bool unused = false) override;
    void TextOut(const CVxStringW& text, int x, int y, unsigned flags, unsigned colour) override;
    bool GetTextExtentPoint(const CVxStringW& text, VxSIZE& size) override;
    void BeginPath() override;
    void EndPath() override;
    void StrokeAndFillPath() override;
    void SetClipRect(const VxRECT& rect) override;
    void ClearClipping() override;
    void DrawPicture(int x, int y, int width, int height, double angle, CVxPicBuf* picture,
                     bool smooth) override;

    using CVxDC::Line;
    using CVxDC::LineTo;
    using CVxDC::MoveTo;

private:
    struct SVxPoint
    {
        double x;
        double y;
    };
    SVxPoint ToPlan(double x, double y) const;
    // Nothing would show: no pen and no brush.
    bool Invisible() const;
    void Begin(const char* entity);
    void Number(int code, double value);
    void Coordinates(const SVxPoint& point, int first);
    void PolylineOf(const std::vector<SVxPoint>& points, bool closed);
    // The points of an ellipse's arc, angles clockwise on the screen.
    std::vector<SVxPoint> ArcPoints(int left, int top, int right, int bottom, double start,
                                    double span) const;
    void Text(const CVxStringW& text, double x, double y, double height, int horizontal, int vertical);

    double m_originX;
    double m_originY;
    double m_zoom;
    int m_dpi;
    int m_bkMode = bkTransparent;
    unsigned m_bkColor = 0xFFFFFF;
    bool m_smoothing = true;
    bool m_inPath = false;
    bool m_penNull = false;
    bool m_brushNull = false;
    VxPOINT m_current{0, 0};
    double m_fontRotation = 0;
    int m_fontPixels = 12;
    std::string m_layer = "0";
    std::vector<std::pair<std::string, int>> m_layers;
    std::string m_entitiesText;
    int m_entities = 0;
    CVxDRect m_extents;
    bool m_anyExtent = false;
};
