#pragma once
// A drawing context that paints nothing and writes down what it is asked to
// paint: pens, brushes, background and the shapes with their device
// coordinates. The record can be played back onto another context, moved by
// whole pixels, and compared with another record regardless of where on the
// surface each was made. Text, pictures, clipping and pattern brushes whose
// look depends on the place are not recorded; a drawing that uses them is
// marked as not replayable and must be drawn directly.

#include "CVxDC.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class CVxRecordingDC final : public CVxDC
{
public:
    // Takes over the target's stacks, colour mode and background, and asks
    // it for resolution and text sizes; it never paints on it.
    CVxRecordingDC(CVxDC& target, bool smoothing);
    ~CVxRecordingDC() override;

    // False once something was asked for that the record can't hold, or a
    // shape came before its pen and brush were chosen.
    bool IsReplayable() const
    {
        return m_replayable && m_pens.size() == m_startPens && m_brushes.size() == m_startBrushes;
    }
    // Smoothing as the drawing left it.
    bool IsSmoothing() const { return m_smoothing; }
    // The pixels the shapes may touch: all coordinates grown by half the
    // widest pen and one pixel of smoothing. Empty without shapes.
    VxRECT GetBounds() const;
    // The record with every coordinate taken relative to (originX, originY).
    std::vector<int32_t> Normalized(int originX, int originY) const;
    // Plays a record made by Normalized back onto dc, moved by (dx, dy).
    static void Replay(const std::vector<int32_t>& ops, CVxDC& dc, int dx, int dy);

    int GetDPI() override;
    bool EnableSmoothing(bool enable) override;
    bool SetInterpolationQuality(bool smooth) override;
    void SelectGradientBrush(unsigned colour1, unsigned colour2, double angle, VxRECT& rect) override;
    void SelectTextureBrush(double scale, double angle, int offsetX, int offsetY,
                            CVxPicBuf* picture) override;
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
    void DrawPictureRect(int x, int y, int width, int height, CVxPicBuf* picture, int srcX, int srcY,
                         int srcWidth, int srcHeight, bool smooth) override;

    using CVxDC::Line;
    using CVxDC::LineTo;
    using CVxDC::MoveTo;

private:
    // Opens a shape of the given kind with its fixed words, then its points.
    void Shape(int32_t op, std::initializer_list<int32_t> words);
    void Points(int32_t op, const VxPOINT* points, int count);
    void Include(int x, int y);
    bool Refuse();

    CVxDC& m_target;
    std::vector<int32_t> m_ops;
    bool m_replayable = true;
    bool m_penChosen = false;
    bool m_brushChosen = false;
    bool m_smoothing;
    int m_bkMode;
    unsigned m_bkColor;
    int m_widestPen = 1;
    size_t m_startPens = 0;
    size_t m_startBrushes = 0;
    VxRECT m_bounds;
};
