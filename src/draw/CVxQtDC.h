#pragma once
// The drawing context on a QPainter: the window's paint event, a printer
// page, an image of the headless tool, or an own off-screen surface.
//
// Lines and outlines fall on pixel centres: coordinates of lines, polylines,
// polygons and curves move by half a pixel, and rectangle-based shapes are
// drawn from (left + 0.5, top + 0.5) one pixel narrower and lower, so that a
// rectangle from 10 to 20 covers pixels 10 to 19 with a one-pixel pen.

#include "CVxDC.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

#include <memory>
#include <vector>

class QPainter;
class QPainterPath;

class CVxQtDC : public CVxDC
{
public:
    // On a painter that the caller owns and keeps active; grey starts in
    // colour mode 1.
    CVxQtDC(QPainter* painter, bool highQuality, bool grey = false);
    // On an own surface of the given size, transparent to begin with.
    CVxQtDC(int width, int height, bool highQuality);
    ~CVxQtDC() override;

    int GetDPI() override;
    bool EnableSmoothing(bool enable) override;
    bool SetInterpolationQuality(bool smooth) override;
    void SelectGradientBrush(unsigned colour1, unsigned colour2, double angle, VxRECT& rect) override;
    void SelectTextureBrush(double scale, double angle, int offsetX, int offsetY,
                            CVxPicBuf* picture) override;
    int GetBkMode() override;
    int SetBkMode(int mode) override;
    unsigned GetBkColor() override;
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

    QPainter* GetPainter() const { return m_painter; }
    bool IsSmoothingEnabled() const { return m_smoothing; }
    // A raster surface at device scale, drawn on as it is: kept pictures of
    // drawings may stand in for painting them.
    bool CanTakeSprites() const;
    // A kept picture at whole-pixel position, unscaled.
    void DrawSprite(const QImage& image, int x, int y);
    // The background and smoothing as a drawing left them that was put down
    // as a kept picture.
    void RestoreAfterReplay(int bkMode, unsigned bkColor, bool smoothing);
    // The own surface; null on a borrowed painter.
    const QImage* GetImage() const { return m_ownImage.get(); }
    // A copy of the own surface as it is now; false on a borrowed painter.
    bool CopyToPicture(CVxPicBuf& picture) const;
    bool IsPathOpen() const { return m_path != nullptr; }
    VxPOINT GetCurrentPosition() const { return m_current; }
    double GetFontRotation() const { return m_fontRotation; }

    // Picture files, for the picture buffers.
    static bool LoadPicture(const CVxStringW& path, CVxPicBuf& picture);
    static bool SavePicture(const CVxStringW& path, const CVxPicBuf& picture, int quality = -1);
    static bool GetPictureDimensions(const CVxStringW& path, int& width, int& height);

    // Filling and stroking an outline cost the rasteriser every pixel row
    // and column that each of its edges crosses, and overlapping edges cost
    // it more still. An outline of a thousand points or more whose edges
    // cross more than maxOutlineCrossings of the rows and columns of
    // `visible`, as a damaged file's floor opening of a million points may,
    // holds more than its pixels can show: every k-th point is kept, as few
    // as bring it within the limit. An invalid `visible` counts all of the
    // plane. Returns the number of points kept, moved to the front.
    static constexpr int thinOutlinesFrom = 1000;
    static constexpr double maxOutlineCrossings = 5e4;
    static int ThinOutline(QPointF* points, int count, const QRectF& visible);

private:
    void InitPainter();
    // The points moved to pixel centres, in a buffer kept between calls.
    QPointF* CentredPoints(const VxPOINT* points, int count);
    // The open path, started at the current position when it is still empty.
    QPainterPath& PathFromCurrent();
    // An upright rectangle with a solid one-pixel pen and a solid or no
    // brush, filled as strips; false when the state asks for the painter.
    bool FillFramedRect(int left, int top, int right, int bottom);

    QPainter* m_painter = nullptr;
    bool m_smoothing = true;
    std::unique_ptr<QImage> m_ownImage;
    std::unique_ptr<QPainterPath> m_path;
    VxPOINT m_current;
    double m_fontRotation = 0.0;
    std::vector<QPointF> m_points;
};
