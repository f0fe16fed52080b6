// The wall in the plan view: its trimmed hexagon in pixels, filled and
// outlined, and the frame of a selected wall.

#include "CVxDC.h"
#include "CVxDPolygon.h"
#include "CVxWall.h"

#include <cmath>
#include <limits>

namespace {

// The end edges of the hexagon with the corner whose joint hides each.
struct SVxEndEdge
{
    int from;
    int to;
    int corner;
};
constexpr SVxEndEdge kEndEdges[4] = {{CVxWall::OUT_START, CVxWall::OUT_A_START, CVxWall::CORNER_A_START},
                                     {CVxWall::OUT_A_END, CVxWall::OUT_END, CVxWall::CORNER_A_END},
                                     {CVxWall::OUT_END, CVxWall::OUT_B_END, CVxWall::CORNER_B_END},
                                     {CVxWall::OUT_B_START, CVxWall::OUT_START, CVxWall::CORNER_B_START}};
} // namespace

void CVxWall::GetCachedRect(VxPOINT outPixels[OUT_COUNT], int offsetX, int offsetY, double zoom) const
{
    for (int i = 0; i < OUT_COUNT; ++i) {
        outPixels[i].x = VX_RoundToPixel(outline[i].x * zoom + offsetX);
        outPixels[i].y = VX_RoundToPixel(outline[i].y * zoom + offsetY);
    }
}

void CVxWall::Draw(CVxDC* dc, unsigned fillColor, unsigned lineColor, unsigned char lineAlpha, int offsetX,
                   int offsetY, double zoom) const
{
    if (!dc)
        return;
    if (IsCurved()) {
        for (const CVxWall& sub : subWalls)
            sub.Draw(dc, fillColor, lineColor, lineAlpha, offsetX, offsetY, zoom);
        return;
    }
    VxPOINT points[OUT_COUNT];
    GetCachedRect(points, offsetX, offsetY, zoom);

    const bool ownBrush = fillStyle > 0;
    if (ownBrush) {
        // Style 1 is hollow, 2 to 6 the first five hatches; every higher
        // style draws with the diagonal cross.
        static constexpr int kHatches[6] = {0, 0, 1, 2, 3, 4};
        const int brushKind = fillStyle == 1 ? CVxDC::brushNull : CVxDC::brushHatched;
        const int hatch = fillStyle <= 6 ? kHatches[fillStyle - 1] : CVxDC::hatchDiagCross;
        dc->SelectBrush(brushKind, fillColor, hatch, lineAlpha);
    }
    const bool noOutline = fillStyle != 0 || lineAlpha < 255;
    if (noOutline)
        dc->SelectPen(CVxDC::penNull, 1, lineColor, lineAlpha);
    if (visible && fillStyle != 1)
        dc->Polygon(points, OUT_COUNT);
    if (noOutline)
        dc->SelectOldPen();

    int penStyle = CVxDC::penSolid;
    if (lineStyle == 1)
        penStyle = CVxDC::IsPrinting() ? CVxDC::penDash : CVxDC::penDot;
    else if (lineStyle == 2)
        penStyle = CVxDC::penDashDot;
    dc->SelectPen(penStyle, 1, lineColor, lineAlpha);
    dc->Line(points[OUT_A_START], points[OUT_A_END]);
    dc->Line(points[OUT_B_END], points[OUT_B_START]);
    // A joined end shows no seam, so that walls in a run read as one.
    for (const SVxEndEdge& edge : kEndEdges) {
        if (visible && std::isnan(interParam[edge.corner]))
            dc->Line(points[edge.from], points[edge.to]);
    }
    dc->SelectOldPen();
    if (ownBrush)
        dc->SelectOldBrush();
}

void CVxWall::DrawSelectionAround(CVxDC* dc, int offsetX, int offsetY, double zoom) const
{
    if (!dc)
        return;
    if (IsCurved()) {
        for (const CVxWall& sub : subWalls) {
            VxPOINT points[OUT_COUNT];
            sub.GetCachedRect(points, offsetX, offsetY, zoom);
            dc->Line(points[OUT_A_START], points[OUT_A_END]);
            dc->Line(points[OUT_B_END], points[OUT_B_START]);
        }
        return;
    }
    VxPOINT points[OUT_COUNT + 1];
    GetCachedRect(points, offsetX, offsetY, zoom);
    points[OUT_COUNT] = points[0];
    dc->Polyline(points, OUT_COUNT + 1);
}

bool CVxWall::PtInWall(double x, double y, double zoom) const
{
    if (!(zoom != 0))
        return false;
    if (IsCurved()) {
        for (const CVxWall& sub : subWalls)
            if (sub.PtInWall(x, y, zoom))
                return true;
        return false;
    }
    CVxDPolygon hexagon;
    hexagon.points.assign(outline, outline + OUT_COUNT);
    return hexagon.PtInPolygon(x / zoom, y / zoom);
}
