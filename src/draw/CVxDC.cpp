#include "CVxDC.h"

#include "CVxPicBuf.h"
#include "CVxQtDC.h"
#include "VxColorWord.h"

#include <algorithm>

namespace {
bool g_printing = false;
} // namespace

CVxDC::CVxDC(bool highQuality) : m_highQuality(highQuality) {}

CVxDC::~CVxDC()
{
    ClearOldPensAndBrushes();
}

int CVxDC::PenStyleFromLineStyle(int lineStyle)
{
    switch (lineStyle) {
    case 1:
        return penDot;
    case 2:
        return penDashDot;
    default:
        return penSolid;
    }
}

void CVxDC::SelectGradientBrush(unsigned colour1, unsigned colour2, double /*angle*/, VxRECT& /*rect*/)
{
    const unsigned r = (VX_GetRValue(colour1) + VX_GetRValue(colour2)) / 2;
    const unsigned g = (VX_GetGValue(colour1) + VX_GetGValue(colour2)) / 2;
    const unsigned b = (VX_GetBValue(colour1) + VX_GetBValue(colour2)) / 2;
    m_brushes.push_back(CVxBrush{brushSolid, VX_RGB(r, g, b), 0, 255});
}

void CVxDC::SelectTextureBrush(double /*scale*/, double /*angle*/, int /*offsetX*/, int /*offsetY*/,
                               CVxPicBuf* /*picture*/)
{
    m_brushes.push_back(CVxBrush{brushSolid, 0xC0C0C0, 0, 255});
}

void CVxDC::DrawPictureRect(int x, int y, int width, int height, CVxPicBuf* picture, int srcX, int srcY,
                            int srcWidth, int srcHeight, bool smooth)
{
    if (!picture || width <= 0 || height <= 0)
        return;
    CVxPicBuf* view = picture->CreateView(srcX, srcY, srcWidth, srcHeight);
    if (!view)
        return;
    DrawPicture(x, y, width, height, 0.0, view, smooth);
    view->Release();
}

void CVxDC::SelectPen(int style, int width, unsigned colour, unsigned char alpha)
{
    colour = C2G(colour);
    if (m_keepSameAlpha) {
        if (alpha == 255)
            alpha = m_lastPenAlpha;
        else
            m_lastPenAlpha = alpha;
    }
    SelectPen_int(style, width, colour, alpha);
    m_pens.push_back(CVxPen{style, width, colour, alpha});
}

void CVxDC::SelectBrush(int style, unsigned colour, int hatch, unsigned char alpha)
{
    colour = C2G(colour);
    if (m_keepSameAlpha) {
        if (alpha == 255)
            alpha = m_lastBrushAlpha;
        else
            m_lastBrushAlpha = alpha;
    }
    SelectBrush_int(style, colour, hatch, alpha);
    m_brushes.push_back(CVxBrush{style, colour, hatch, alpha});
}

void CVxDC::SelectFont(const CVxFont& font)
{
    SelectFont_int(font);
    m_fonts.push_back(font);
}

void CVxDC::SelectOldPen()
{
    if (m_pens.empty())
        return;
    m_pens.pop_back();
    if (!m_pens.empty()) {
        const CVxPen& top = m_pens.back();
        SelectPen_int(top.style, top.width, top.color, top.alpha);
    }
}

void CVxDC::SelectOldBrush()
{
    if (m_brushes.empty())
        return;
    m_brushes.pop_back();
    if (m_brushes.empty()) {
        SelectBrush_int(brushSolid, 0xFFFFFF, 0, 255);
        return;
    }
    const CVxBrush& top = m_brushes.back();
    SelectBrush_int(top.style, top.color, top.hatch, top.alpha);
}

void CVxDC::SelectOldFont()
{
    if (m_fonts.empty())
        return;
    m_fonts.pop_back();
    if (!m_fonts.empty())
        SelectFont_int(m_fonts.back());
}

void CVxDC::SelectHatchBrush(unsigned colour, int fillStyle, unsigned char alpha, unsigned secondColour)
{
    const bool visible = !VX_IsColorOff(colour) && fillStyle != 1;
    int style = brushSolid;
    int hatch = 0;
    if (!visible) {
        style = brushNull;
    } else if (fillStyle >= 2) {
        style = brushHatched;
        hatch = std::min(fillStyle - 2, hatchDiagCross);
    }
    unsigned brushColour = colour;
    if (fillStyle != 0 && secondColour != clrUndefined) {
        unsigned char bkAlpha = alpha;
        if (m_keepSameAlpha && alpha == 255)
            bkAlpha = m_lastBrushAlpha;
        SetBkColor(colour, bkAlpha);
        SetBkMode(bkOpaque);
        brushColour = secondColour & 0xFFFFFF;
    }
    SelectBrush(style, brushColour, hatch, alpha);
}

unsigned CVxDC::GetCurrentPenColor() const
{
    return m_pens.empty() ? 0 : m_pens.back().color;
}

unsigned CVxDC::GetCurrentBrushColor() const
{
    return m_brushes.empty() ? 0xFFFFFF : m_brushes.back().color;
}

bool CVxDC::GetCurrentFont(CVxFont& font) const
{
    if (m_fonts.empty())
        return false;
    font = m_fonts.back();
    return true;
}

bool CVxDC::IsPenNeeded() const
{
    return !m_pens.empty() && (m_pens.back().style & penStyleMask) != penNull;
}

bool CVxDC::IsBrushNeeded() const
{
    return !m_brushes.empty() && m_brushes.back().style != brushNull;
}

bool CVxDC::SetKeepSameAlpha(bool keep)
{
    const bool old = m_keepSameAlpha;
    m_keepSameAlpha = keep;
    if (!keep) {
        m_lastPenAlpha = 255;
        m_lastBrushAlpha = 255;
    }
    return old;
}

void CVxDC::ClearOldPensAndBrushes()
{
    m_pens.clear();
    m_brushes.clear();
    m_fonts.clear();
}

unsigned CVxDC::C2G(unsigned colour) const
{
    const unsigned r = VX_GetRValue(colour);
    const unsigned g = VX_GetGValue(colour);
    const unsigned b = VX_GetBValue(colour);
    switch (m_colorMode) {
    case colorModeGrey: {
        const unsigned mean = (r + g + b) / 3;
        return VX_RGB(mean, mean, mean);
    }
    case colorModePale:
        return VX_RGB(((r >> 2) + 160) & 255, ((g >> 2) + 160) & 255, ((b >> 2) + 160) & 255);
    default:
        return colour & 0xFFFFFF;
    }
}

int CVxDC::SetColorMode(int mode)
{
    const int old = m_colorMode;
    m_colorMode = mode;
    return old;
}

void CVxDC::SetPrinting(bool printing)
{
    g_printing = printing;
}

bool CVxDC::IsPrinting()
{
    return g_printing;
}

CVxDC* CVxDC::CreateNewDC(int width, int height, bool highQuality)
{
    return new CVxQtDC(width, height, highQuality);
}
