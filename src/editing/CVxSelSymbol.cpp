#include "CVxSelSymbol.h"

#include "CVxDC.h"
#include "CVxHitDist.h"

#include <cstdlib>

namespace {
constexpr unsigned kSymbolOutline = 0x2060C0;
constexpr unsigned kSymbolHighlight = 0x30A0FF;
} // namespace

CVxSelSymbol::CVxSelSymbol() : hitSize(CVxHitDist::SelSymbol()) {}

void CVxSelSymbol::DrawTouchCircle(CVxDC* dc, int offsetX, int offsetY) const
{
    const int r = CVxHitDist::TouchCircleRadius();
    const int x = pos.x + offsetX;
    const int y = pos.y + offsetY;
    dc->SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 1, kSymbolOutline);
    dc->SelectBrush(CVxDC::brushSolid, kSymbolHighlight, 0, 80);
    dc->Ellipse(x - r, y - r, x + r + 1, y + r + 1);
    dc->SelectOldBrush();
    dc->SelectOldPen();
}

void CVxSelSymbol::DrawSymbolToHdc(CVxDC* dc, int offsetX, int offsetY, bool highlighted) const
{
    const int half = CVxHitDist::SelSymbolSize() + 2;
    const int x = pos.x + offsetX;
    const int y = pos.y + offsetY;
    dc->SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 1, kSymbolOutline);
    dc->SelectBrush(CVxDC::brushSolid, highlighted ? kSymbolHighlight : color);
    switch (shape) {
    case shapeCircle:
        dc->Ellipse(x - half - 1, y - half - 1, x + half + 2, y + half + 2);
        break;
    case shapeDot:
        dc->Ellipse(x - half + 1, y - half + 1, x + half, y + half);
        break;
    case shapeSquare:
        dc->Rectangle(x - half, y - half, x + half + 1, y + half + 1);
        break;
    }
    dc->SelectOldBrush();
    dc->SelectOldPen();
}

void CVxSelSymbol::DrawToHdc(CVxDC* dc, int offsetX, int offsetY, bool highlighted) const
{
    DrawSymbolToHdc(dc, offsetX, offsetY, highlighted);
}

bool CVxSelSymbol::PtInSymbol(int x, int y) const
{
    const int reach = hitSize + CVxHitDist::SelSymbolSize();
    return std::abs(x - pos.x) <= reach && std::abs(y - pos.y) <= reach;
}

int CVxSelSymbol::GetDistanceSq(int x, int y) const
{
    const int dx = x - pos.x;
    const int dy = y - pos.y;
    return dx * dx + dy * dy;
}

int CVxSelSymbol::GetCursorShape() const
{
    if (isRound)
        return vcNone;
    if (kind == kindCentre)
        return vcSizeAll;
    if (kind == kindRotate || (kind >= 20 && kind <= 27))
        return vcRotate;
    if (kind == kindVertex)
        return vcCross;
    // The side's direction on the screen: the object's angle in eighths of
    // a turn plus the side's own place on the compass.
    static const int resize[4] = {vcSizeVer, vcSizeBDiag, vcSizeHor, vcSizeFDiag};
    const int eighths = static_cast<int>(angle + 720 + 22) / 45;
    return resize[((eighths + kind % 10) % 4 + 4) % 4];
}
