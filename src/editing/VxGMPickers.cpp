// Swatches of the property dialogs, parts of the colour dialog and the
// backdrops of the touch interface.

#include "VxGMPickers.h"

#include "CVxAppearance.h"
#include "CVxDC.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "VxColorConvert.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned pickerFrame = 0xB0B0B0;

int Width(const VxRECT& rect)
{
    return rect.right - rect.left;
}

int Height(const VxRECT& rect)
{
    return rect.bottom - rect.top;
}

VxRECT Inset(const VxRECT& rect, int by)
{
    VxRECT inner = rect;
    VxInflateRect(inner, -by, -by);
    return inner;
}

// Swatches are drawn crisp, on a transparent background; the smoothing that
// the dialog had comes back at the end.
class CVxPickerScope
{
public:
    explicit CVxPickerScope(CVxDC& dc) : m_dc(dc), m_smoothing(dc.EnableSmoothing(false))
    {
        dc.SetBkMode(CVxDC::bkTransparent);
        dc.SelectPen(CVxDC::penSolid, 1, pickerFrame);
        dc.SelectBrush(CVxDC::brushNull, 0);
    }
    ~CVxPickerScope() { m_dc.EnableSmoothing(m_smoothing); }
    CVxPickerScope(const CVxPickerScope&) = delete;
    CVxPickerScope& operator=(const CVxPickerScope&) = delete;

    void DrawFrame(const VxRECT& rect)
    {
        m_dc.Rectangle(rect.left, rect.top, rect.right, rect.bottom);
        m_dc.SelectOldBrush();
        m_dc.SelectOldPen();
    }

private:
    CVxDC& m_dc;
    bool m_smoothing;
};

// A chequer under translucent colours, so that transparency shows.
void DrawChequer(CVxDC& dc, const VxRECT& rect)
{
    const int cell = std::max(3, std::min(Width(rect), Height(rect)) / 4);
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
    dc.Rectangle(rect.left, rect.top, rect.right + 1, rect.bottom + 1);
    dc.SelectOldBrush();
    dc.SelectBrush(CVxDC::brushSolid, 0xCCCCCC);
    for (int y = rect.top, row = 0; y < rect.bottom; y += cell, ++row) {
        for (int x = rect.left + (row % 2) * cell; x < rect.right; x += 2 * cell)
            dc.Rectangle(x, y, std::min(x + cell, rect.right) + 1, std::min(y + cell, rect.bottom) + 1);
    }
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

// A filled rectangle without outline; the null pen's half-pixel shrink is
// undone so that the fill meets right and bottom.
void FillRect(CVxDC& dc, const VxRECT& rect, unsigned colour, unsigned char alpha = 255)
{
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectBrush(CVxDC::brushSolid, colour, 0, alpha);
    dc.Rectangle(rect.left, rect.top, rect.right + 1, rect.bottom + 1);
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

bool IsUndefinedColour(unsigned colour)
{
    return colour == clrUndefined;
}

} // namespace

int GMTransparencyToAlpha(int transparency)
{
    transparency = std::clamp(transparency, 0, 100);
    return static_cast<int>((100 - transparency) * 255 / 100.0 + 0.5);
}

void GMDrawGradientBackground(CVxDC& dc, const VxRECT& rect)
{
    VxRECT area = rect;
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectGradientBrush(0xFBF6F1, 0xE8DDD2, 90.0, area);
    dc.Rectangle(rect.left, rect.top, rect.right + 1, rect.bottom + 1);
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

void GMDrawRoundPanel(CVxDC& dc, const VxRECT& rect)
{
    const int radius = std::max(2, std::min(Width(rect), Height(rect)) / 12);
    dc.SelectPen(CVxDC::penSolid, 1, 0xD4D4D4);
    dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF, 0, 235);
    dc.RoundRect(rect.left, rect.top, rect.right, rect.bottom, radius);
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

void GMDrawDarkerRoundPanel(CVxDC& dc, const VxRECT& rect)
{
    const int radius = std::max(2, std::min(Width(rect), Height(rect)) / 12);
    dc.SelectPen(CVxDC::penSolid, 1, 0x505050);
    dc.SelectBrush(CVxDC::brushSolid, 0x303030, 0, 210);
    dc.RoundRect(rect.left, rect.top, rect.right, rect.bottom, radius);
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

void GMDrawLineStylePicker(CVxDC& dc, const VxRECT& rect, int lineStyle, double thickness, unsigned colour)
{
    CVxPickerScope scope(dc);
    if (!IsUndefinedColour(colour)) {
        const int width = thickness < 0 ? 2 : static_cast<int>(1.6 * thickness + 0.5);
        const int y = rect.top + Height(rect) / 2;
        dc.SelectPen(CVxDC::PenStyleFromLineStyle(lineStyle) | CVxDC::penKeepWidth, width, colour);
        dc.Line(rect.left + 3, y, rect.left + Width(rect) - 4, y);
        dc.SelectOldPen();
    }
    scope.DrawFrame(rect);
}

void GMDrawGenericPicker(CVxDC& dc, const VxRECT& rect, const CVxStringW& text)
{
    CVxPickerScope scope(dc);
    VxRECT box = Inset(rect, 1);
    dc.DrawText(text, box, CVxDC::dtCenter | CVxDC::dtVCenter | CVxDC::dtSingleLine,
                GMGetSysColor(VX_SYSCOLOR_WINDOWTEXT));
    scope.DrawFrame(rect);
}

void GMDrawAppearancePicker(CVxDC& dc, const VxRECT& rect, const CVxAppearance& appearance)
{
    CVxPickerScope scope(dc);
    const VxRECT inner = Inset(rect, 2);
    const unsigned colour = appearance.GetColor();
    CVxPicBuf* texture = appearance.GetTexture().IsEmpty()
                             ? nullptr
                             : CVxPictureLoadCache::GetPicture(appearance.GetTexture());
    if (texture) {
        dc.DrawPicture(inner.left, inner.top, Width(inner), Height(inner), 0.0, texture, true);
        CVxPictureLoadCache::ReleasePicture(texture);
    } else if (!IsUndefinedColour(colour) && !VX_IsColorOff(colour)) {
        const int transparency = appearance.GetTransparency();
        if (transparency > 0 && transparency <= 100)
            DrawChequer(dc, inner);
        FillRect(dc, inner, colour, static_cast<unsigned char>(GMTransparencyToAlpha(transparency)));
    }
    scope.DrawFrame(rect);
}

void GMDrawFillStylePicker(CVxDC& dc, const VxRECT& rect, int fillStyle, unsigned colour,
                           unsigned secondColour)
{
    CVxPickerScope scope(dc);
    if (!IsUndefinedColour(colour)) {
        const VxRECT inner = Inset(rect, 2);
        const unsigned bkColour = dc.GetBkColor();
        dc.SelectPen(CVxDC::penNull, 1, 0);
        dc.SelectHatchBrush(colour, fillStyle, 255, secondColour);
        dc.Rectangle(inner.left, inner.top, inner.right + 1, inner.bottom + 1);
        dc.SelectOldBrush();
        dc.SelectOldPen();
        dc.SetBkColor(bkColour);
        dc.SetBkMode(CVxDC::bkTransparent);
    }
    scope.DrawFrame(rect);
}

void GMDrawColorPicker(CVxDC& dc, const VxRECT& rect, unsigned colour, int transparency)
{
    CVxPickerScope scope(dc);
    if (!IsUndefinedColour(colour)) {
        const VxRECT inner = Inset(rect, 2);
        const unsigned char alpha = static_cast<unsigned char>(GMTransparencyToAlpha(transparency));
        if (alpha < 255)
            DrawChequer(dc, inner);
        FillRect(dc, inner, colour, alpha);
        const int intensity = GMGetIntensity(colour);
        const int window = GMGetIntensity(GMGetSysColor(VX_SYSCOLOR_WINDOW));
        unsigned edge = clrUndefined;
        if (intensity > 240 && window > 240)
            edge = 0xE6E6E6;
        else if (intensity < 60 && window < 60)
            edge = 7895160;
        if (edge != clrUndefined) {
            dc.SelectPen(CVxDC::penSolid, 1, edge);
            dc.SelectBrush(CVxDC::brushNull, 0);
            dc.Rectangle(inner.left, inner.top, inner.right, inner.bottom);
            dc.SelectOldBrush();
            dc.SelectOldPen();
        }
    }
    scope.DrawFrame(rect);
}

void GMDrawDisabledPicker(CVxDC& dc, const VxRECT& rect)
{
    const bool smoothing = dc.EnableSmoothing(false);
    dc.SetBkMode(CVxDC::bkTransparent);
    dc.SelectPen(CVxDC::penSolid, 1, pickerFrame, 128);
    dc.SelectBrush(CVxDC::brushNull, 0);
    dc.Rectangle(rect.left, rect.top, rect.right, rect.bottom);
    dc.SelectOldBrush();
    dc.SelectOldPen();
    dc.EnableSmoothing(smoothing);
}

void GMDrawColorPickerResult(CVxDC& dc, const VxRECT& rect, unsigned oldColour, unsigned newColour)
{
    CVxPickerScope scope(dc);
    const VxRECT inner = Inset(rect, 1);
    const int middle = inner.left + Width(inner) / 2;
    FillRect(dc, VxRectMake(inner.left, inner.top, middle, inner.bottom), oldColour);
    FillRect(dc, VxRectMake(middle, inner.top, inner.right, inner.bottom), newColour);
    scope.DrawFrame(rect);
}

void GMDrawColorPickerHueRing(CVxDC& dc, const VxRECT& rect, int hue)
{
    const double cx = (rect.left + rect.right) / 2.0;
    const double cy = (rect.top + rect.bottom) / 2.0;
    const double outer = std::min(Width(rect), Height(rect)) / 2.0 - 1.0;
    if (outer < 4)
        return;
    const double inner = outer * 0.78;
    const auto at = [&](double radius, double degrees) {
        const double a = degrees * M_PI / 180.0;
        return VxPOINT{static_cast<int32_t>(std::lround(cx + radius * std::sin(a))),
                       static_cast<int32_t>(std::lround(cy - radius * std::cos(a)))};
    };
    const bool smoothing = dc.EnableSmoothing(true);
    constexpr int step = 5;
    for (int h = 0; h < 360; h += step) {
        const unsigned colour = VX_HSVtoRGB(h, 100, 100);
        // Each sector overlaps the next by a degree so that no seam shows.
        const VxPOINT sector[4] = {at(inner, h - step / 2.0), at(outer, h - step / 2.0),
                                   at(outer, h + step / 2.0 + 1), at(inner, h + step / 2.0 + 1)};
        dc.SelectPen(CVxDC::penNull, 1, 0);
        dc.SelectBrush(CVxDC::brushSolid, colour);
        dc.Polygon(sector, 4);
        dc.SelectOldBrush();
        dc.SelectOldPen();
    }
    const VxPOINT mark = at((inner + outer) / 2.0, hue);
    const int r = std::max(2, static_cast<int>((outer - inner) / 2.0));
    dc.SelectBrush(CVxDC::brushNull, 0);
    dc.SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 3, 0x303030);
    dc.Ellipse(mark.x - r, mark.y - r, mark.x + r + 1, mark.y + r + 1);
    dc.SelectOldPen();
    dc.SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 1, 0xFFFFFF);
    dc.Ellipse(mark.x - r, mark.y - r, mark.x + r + 1, mark.y + r + 1);
    dc.SelectOldPen();
    dc.SelectOldBrush();
    dc.EnableSmoothing(smoothing);
}

void GMDrawColorPickerSlider(CVxDC& dc, const VxRECT& rect, unsigned colour1, unsigned colour2,
                             double position)
{
    CVxPickerScope scope(dc);
    VxRECT track = Inset(rect, 2);
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectGradientBrush(colour1, colour2, 0.0, track);
    dc.Rectangle(track.left, track.top, track.right + 1, track.bottom + 1);
    dc.SelectOldBrush();
    dc.SelectOldPen();
    const int x = track.left + static_cast<int>(std::clamp(position, 0.0, 1.0) * (Width(track) - 1) + 0.5);
    dc.SelectBrush(CVxDC::brushNull, 0);
    dc.SelectPen(CVxDC::penSolid, 1, 0x000000);
    dc.Rectangle(x - 2, rect.top, x + 3, rect.bottom);
    dc.SelectOldPen();
    dc.SelectPen(CVxDC::penSolid, 1, 0xFFFFFF);
    dc.Rectangle(x - 1, rect.top + 1, x + 2, rect.bottom - 1);
    dc.SelectOldPen();
    dc.SelectOldBrush();
    scope.DrawFrame(rect);
}

void GMDrawColorPickerPreset(CVxDC& dc, const VxRECT& rect, unsigned colour, bool selected)
{
    const bool smoothing = dc.EnableSmoothing(true);
    const VxRECT swatch = Inset(rect, 3);
    dc.SelectPen(CVxDC::penSolid, 1, pickerFrame);
    dc.SelectBrush(CVxDC::brushSolid, colour);
    dc.Ellipse(swatch.left, swatch.top, swatch.right, swatch.bottom);
    dc.SelectOldBrush();
    dc.SelectOldPen();
    if (selected) {
        dc.SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 2, 0x404040);
        dc.SelectBrush(CVxDC::brushNull, 0);
        dc.Ellipse(rect.left, rect.top, rect.right, rect.bottom);
        dc.SelectOldBrush();
        dc.SelectOldPen();
    }
    dc.EnableSmoothing(smoothing);
}

void GMDrawColorPickerTexturePreview(CVxDC& dc, const VxRECT& rect, CVxPicBuf* picture, unsigned colour)
{
    CVxPickerScope scope(dc);
    const VxRECT inner = Inset(rect, 2);
    if (picture && !picture->IsEmpty())
        dc.DrawPicture(inner.left, inner.top, Width(inner), Height(inner), 0.0, picture, true);
    else if (!IsUndefinedColour(colour))
        FillRect(dc, inner, colour);
    scope.DrawFrame(rect);
}

void GMDrawColorPickerTextureTilingPreview(CVxDC& dc, const VxRECT& rect, CVxPicBuf* picture, int tilesX,
                                           int tilesY)
{
    CVxPickerScope scope(dc);
    const VxRECT inner = Inset(rect, 2);
    if (picture && !picture->IsEmpty() && Width(inner) > 0 && Height(inner) > 0) {
        const int across = std::max(1, tilesX);
        const int down = std::max(1, tilesY);
        // One scale for both axes keeps the texture's proportions; the
        // direction that needs more repeats decides.
        const double scale = std::min(static_cast<double>(Width(inner)) / (across * picture->GetWidth()),
                                      static_cast<double>(Height(inner)) / (down * picture->GetHeight()));
        dc.SelectPen(CVxDC::penNull, 1, 0);
        dc.SelectTextureBrush(scale, 0.0, inner.left, inner.top, picture);
        dc.Rectangle(inner.left, inner.top, inner.right + 1, inner.bottom + 1);
        dc.SelectOldBrush();
        dc.SelectOldPen();
    }
    scope.DrawFrame(rect);
}

void GMDrawColorPickerBlendPreview(CVxDC& dc, const VxRECT& rect, unsigned colour1, unsigned colour2,
                                   int percent)
{
    CVxPickerScope scope(dc);
    const VxRECT inner = Inset(rect, 2);
    const int third = Width(inner) / 3;
    const unsigned mixed = GMCombineColors(colour1, colour2, std::clamp(percent, 0, 100) / 100.0);
    FillRect(dc, VxRectMake(inner.left, inner.top, inner.left + third, inner.bottom), colour1);
    FillRect(dc, VxRectMake(inner.left + third, inner.top, inner.right - third, inner.bottom), mixed);
    FillRect(dc, VxRectMake(inner.right - third, inner.top, inner.right, inner.bottom), colour2);
    scope.DrawFrame(rect);
}
