#include "VxGMDraw.h"

#include "CVxDC.h"
#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "CVxPicBuf.h"
#include "IVxAppHelperCallback.h"
#include "VxColorWord.h"
#include "VxGeometryFunctions.h"

#include <array>
#include <cmath>

bool g_bColorToGray = false;

namespace {

// Pixels of scaled plan coordinates: add 0.5 and truncate.
int32_t ToPixel(double value)
{
    return static_cast<int32_t>(value + 0.5);
}

VxPOINT ToPixel(const CVxDPoint& point, double scale, double offsetX, double offsetY)
{
    return VxPOINT{ToPixel(point.x * scale + offsetX), ToPixel(point.y * scale + offsetY)};
}

// The point at fraction t of the way from a to b.
VxPOINT Along(const VxPOINT& a, const VxPOINT& b, double t)
{
    return VxPOINT{static_cast<int32_t>(std::lround(a.x + (b.x - a.x) * t)),
                   static_cast<int32_t>(std::lround(a.y + (b.y - a.y) * t))};
}

void StrokeOpenPath(CVxDC& dc)
{
    dc.SelectBrush(CVxDC::brushNull, 0);
    dc.StrokeAndFillPath();
    dc.SelectOldBrush();
}

struct CVxMarkerIcon
{
    CVxPicBuf* picture = nullptr;
    bool tried = false;
};

std::array<CVxMarkerIcon, 2> g_markerIcons;

const wchar_t* MarkerFileName(EVxMarkerType type)
{
    return type == VX_MARKER_LINK ? L"mk_link.png" : L"mk_soundclip.png";
}

CVxPicBuf* MarkerIcon(EVxMarkerType type, const CVxStringW& folder)
{
    CVxMarkerIcon& icon = g_markerIcons[type == VX_MARKER_LINK ? 1 : 0];
    if (icon.tried)
        return icon.picture;
    icon.tried = true;
    for (const wchar_t* subFolder : {L"textures/", L"icons/"}) {
        auto* picture = new CVxPicBuf;
        if (picture->CreateFromFile(folder + subFolder + MarkerFileName(type))) {
            icon.picture = picture;
            break;
        }
        picture->Release();
    }
    return icon.picture;
}

// The icons drawn by hand, for an installation without the icon files: a
// note on a pale badge for a sound clip, two chain links for a link.
void DrawMarkerByHand(CVxDC& dc, int x, int y, int size, EVxMarkerType type)
{
    const auto at = [&](double fx, double fy) {
        return VxPOINT{x + static_cast<int32_t>(fx * size), y + static_cast<int32_t>(fy * size)};
    };
    dc.SelectPen(CVxDC::penSolid, 1, 0x505050);
    dc.SelectBrush(CVxDC::brushSolid, 0xF0F0F0);
    dc.RoundRect(x, y, x + size, y + size, std::max(1, size / 5));
    dc.SelectOldBrush();
    dc.SelectOldPen();
    const int stroke = std::max(1, size / 10);
    if (type == VX_MARKER_SOUNDCLIP) {
        const unsigned note = 0x8C3A1E;
        dc.SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, stroke, note);
        dc.SelectBrush(CVxDC::brushSolid, note);
        const VxPOINT head1 = at(0.22, 0.62);
        const VxPOINT head2 = at(0.58, 0.54);
        const int r = std::max(1, size / 9);
        dc.Ellipse(head1.x - r, head1.y - r, head1.x + r + 1, head1.y + r + 1);
        dc.Ellipse(head2.x - r, head2.y - r, head2.x + r + 1, head2.y + r + 1);
        const VxPOINT top1 = at(0.22 + 0.11, 0.22);
        const VxPOINT top2 = at(0.58 + 0.11, 0.14);
        dc.Line(head1.x + r, head1.y, top1.x, top1.y);
        dc.Line(head2.x + r, head2.y, top2.x, top2.y);
        dc.Line(top1, top2);
        dc.SelectOldBrush();
        dc.SelectOldPen();
        return;
    }
    const unsigned link = 0xB06A1A;
    dc.SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, stroke, link);
    dc.SelectBrush(CVxDC::brushNull, 0);
    const VxPOINT a[4] = {at(0.18, 0.48), at(0.46, 0.20), at(0.60, 0.34), at(0.32, 0.62)};
    const VxPOINT b[4] = {at(0.40, 0.66), at(0.68, 0.38), at(0.82, 0.52), at(0.54, 0.80)};
    GMDrawRoundRect(dc, a, true);
    GMDrawRoundRect(dc, b, true);
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

} // namespace

void GMGetPointInRectL(VxPOINT& out, const VxPOINT* corners, double u, double v)
{
    const double w0 = (1 - u) * (1 - v);
    const double w1 = u * (1 - v);
    const double w2 = u * v;
    const double w3 = (1 - u) * v;
    out.x = static_cast<int32_t>(
        std::lround(corners[0].x * w0 + corners[1].x * w1 + corners[2].x * w2 + corners[3].x * w3));
    out.y = static_cast<int32_t>(
        std::lround(corners[0].y * w0 + corners[1].y * w1 + corners[2].y * w2 + corners[3].y * w3));
}

void GMDrawEllipse(CVxDC& dc, const VxPOINT* corners)
{
    // Four quarter curves with control points at the usual 0.5523 of the
    // half axis, starting at the middle of the left side and going round.
    constexpr double lo = 0.224;
    constexpr double hi = 0.776;
    static const double fractions[13][2] = {{0, 0.5}, {0, lo}, {lo, 0},  {0.5, 0}, {hi, 0}, {1, lo}, {1, 0.5},
                                            {1, hi},  {hi, 1}, {0.5, 1}, {lo, 1},  {0, hi}, {0, 0.5}};
    VxPOINT points[13];
    for (int i = 0; i < 13; ++i)
        GMGetPointInRectL(points[i], corners, fractions[i][0], fractions[i][1]);
    dc.BeginPath();
    dc.PolyBezier(points, 13);
    dc.EndPath();
    dc.StrokeAndFillPath();
}

void GMDrawRoundRect(CVxDC& dc, const VxPOINT* corners, bool large)
{
    const double run = large ? 0.16 : 0.08;
    const double control = large ? 0.04 : 0.02;
    dc.BeginPath();
    dc.MoveTo(Along(corners[0], corners[1], run));
    for (int side = 0; side < 4; ++side) {
        const VxPOINT& a = corners[side];
        const VxPOINT& b = corners[(side + 1) % 4];
        const VxPOINT& c = corners[(side + 2) % 4];
        dc.LineTo(Along(a, b, 1 - run));
        const VxPOINT corner[3] = {Along(a, b, 1 - control), Along(b, c, control), Along(b, c, run)};
        dc.PolyBezierTo(corner, 3);
    }
    dc.EndPath();
    dc.StrokeAndFillPath();
}

void GMDrawBezierPolygon(CVxDC& dc, const VxPOINT* points, int count, const std::vector<bool>& curved,
                         const VxPOINT* controls, int controlCount, bool open)
{
    if (!points || count <= 0)
        return;
    if (count == 1) {
        dc.SetPixelV(points[0].x, points[0].y, dc.GetCurrentPenColor());
        return;
    }
    const int edges = open ? count - 1 : count;
    const auto flagCount = static_cast<int>(curved.size());
    bool anyCurved = false;
    if (flagCount == count || (open && flagCount == edges)) {
        for (int e = 0; e < edges && !anyCurved; ++e)
            anyCurved = curved[static_cast<size_t>(e)];
    }
    if (!anyCurved) {
        if (open)
            dc.Polyline(points, count);
        else
            dc.Polygon(points, count);
        return;
    }
    const auto isCurved = [&](int edge) { return curved[static_cast<size_t>((edge + count) % count)]; };
    dc.BeginPath();
    dc.MoveTo(points[0]);
    int controlIndex = 0;
    for (int e = 0; e < edges; ++e) {
        const VxPOINT& p1 = points[e];
        const VxPOINT& p2 = points[(e + 1) % count];
        if (!isCurved(e)) {
            dc.LineTo(p2);
            continue;
        }
        VxPOINT segment[3] = {VxPOINT(), VxPOINT(), p2};
        if (controls && controlIndex + 1 < controlCount) {
            segment[0] = controls[controlIndex];
            segment[1] = controls[controlIndex + 1];
            controlIndex += 2;
        } else {
            const bool first = open && e == 0;
            const bool last = open && e == edges - 1;
            const VxPOINT& prev = first ? p1 : points[(e - 1 + count) % count];
            const VxPOINT& next = last ? p2 : points[(e + 2) % count];
            GetBezierControlPoint(segment[0], segment[1], prev, p1, p2, next, !first && isCurved(e - 1),
                                  !last && isCurved(e + 1));
        }
        dc.PolyBezierTo(segment, 3);
    }
    dc.EndPath();
    if (open)
        StrokeOpenPath(dc);
    else
        dc.StrokeAndFillPath();
}

void GMDrawBezierPolygon(CVxDC& dc, const CVxDPolygon& polygon, double scale, double offsetX, double offsetY,
                         bool open)
{
    const int count = polygon.GetVertexCount();
    if (count <= 0)
        return;
    const auto pixel = [&](const CVxDPoint& p) { return ToPixel(p, scale, offsetX, offsetY); };
    if (count == 1) {
        const VxPOINT p = pixel(polygon.points[0]);
        dc.SetPixelV(p.x, p.y, dc.GetCurrentPenColor());
        return;
    }
    const int edges = polygon.GetEdgeCount(open);
    bool anyCurved = false;
    for (int e = 0; e < edges && !anyCurved; ++e)
        anyCurved = polygon.IsEdgeCurved(e, open);
    if (!anyCurved) {
        std::vector<VxPOINT> points(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i)
            points[static_cast<size_t>(i)] = pixel(polygon.points[static_cast<size_t>(i)]);
        if (open)
            dc.Polyline(points.data(), count);
        else
            dc.Polygon(points.data(), count);
        return;
    }
    dc.BeginPath();
    dc.MoveTo(pixel(polygon.points[0]));
    int controlIndex = 0;
    for (int e = 0; e < edges; ++e) {
        if (!polygon.IsEdgeCurved(e, open)) {
            dc.LineTo(pixel(polygon.points[static_cast<size_t>((e + 1) % count)]));
            continue;
        }
        CVxDPoint p1;
        CVxDPoint p2;
        CVxDPoint c0;
        CVxDPoint c1;
        polygon.GetBezControlPoints(p1, p2, c0, c1, controlIndex, e, count, open);
        const VxPOINT segment[3] = {pixel(c0), pixel(c1), pixel(p2)};
        dc.PolyBezierTo(segment, 3);
    }
    dc.EndPath();
    if (open)
        StrokeOpenPath(dc);
    else
        dc.StrokeAndFillPath();
}

void GMDrawBezierPolygonEdge(CVxDC& dc, const CVxDPolygon& polygon, int edge, double scale, double offsetX,
                             double offsetY, bool open)
{
    const int count = polygon.GetVertexCount();
    if (count < 2 || edge < 0 || edge >= polygon.GetEdgeCount(open))
        return;
    const auto pixel = [&](const CVxDPoint& p) { return ToPixel(p, scale, offsetX, offsetY); };
    dc.MoveTo(pixel(polygon.points[static_cast<size_t>(edge)]));
    if (!polygon.IsEdgeCurved(edge, open)) {
        dc.LineTo(pixel(polygon.points[static_cast<size_t>((edge + 1) % count)]));
        return;
    }
    CVxDPoint p1;
    CVxDPoint p2;
    CVxDPoint c0;
    CVxDPoint c1;
    int controlIndex = polygon.GetBezierSegmentIdx(edge, open);
    polygon.GetBezControlPoints(p1, p2, c0, c1, controlIndex, edge, count, open);
    const VxPOINT segment[3] = {pixel(c0), pixel(c1), pixel(p2)};
    dc.PolyBezierTo(segment, 3);
}

void GMDrawScaledRect(CVxDC& dc, const CVxDRect& rect, double sx, double sy, double ox, double oy)
{
    CVxDRect r = rect;
    r.NormalizeRect();
    dc.Rectangle(ToPixel(r.left * sx + ox), ToPixel(r.top * sy + oy), ToPixel(r.right * sx + ox) + 1,
                 ToPixel(r.bottom * sy + oy) + 1);
}

void GMDrawScaledLine(CVxDC& dc, const CVxDPoint& from, const CVxDPoint& to, double sx, double sy, double ox,
                      double oy)
{
    dc.Line(ToPixel(from.x * sx + ox), ToPixel(from.y * sy + oy), ToPixel(to.x * sx + ox),
            ToPixel(to.y * sy + oy));
}

int GMGetIntensity(unsigned colour)
{
    return static_cast<int>(0.3 * VX_GetRValue(colour) + 0.59 * VX_GetGValue(colour) +
                            0.11 * VX_GetBValue(colour));
}

unsigned GMC2G(unsigned colour)
{
    if (!g_bColorToGray)
        return colour;
    const auto grey = static_cast<unsigned>(GMGetIntensity(colour));
    return (colour & 0xFF000000u) | VX_RGB(grey, grey, grey);
}

void GMSplitColor(unsigned colour, float& r, float& g, float& b)
{
    r = static_cast<float>(VX_GetRValue(colour)) / 255.0f;
    g = static_cast<float>(VX_GetGValue(colour)) / 255.0f;
    b = static_cast<float>(VX_GetBValue(colour)) / 255.0f;
}

unsigned GMCombineColors(unsigned c1, unsigned c2, double t)
{
    const auto mix = [t](unsigned a, unsigned b) { return static_cast<unsigned>(a * (1.0 - t) + b * t); };
    return VX_RGB(mix(VX_GetRValue(c1), VX_GetRValue(c2)), mix(VX_GetGValue(c1), VX_GetGValue(c2)),
                  mix(VX_GetBValue(c1), VX_GetBValue(c2)));
}

unsigned GMGetSysColor(int index)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    return host ? host->GetGuiSysColor(index) : 0;
}

void GMDrawWallOpeningRect(CVxDC& dc, const VxPOINT* corners, unsigned colour, int flag,
                           const SVxOpeningShade* shade)
{
    unsigned background = 0xFFFFFF;
    unsigned jamb = colour;
    if (shade && dc.GetColorMode() != CVxDC::colorModeGrey) {
        // The gap shows the floor of the room; its jambs are cut walls.
        if (!VX_IsColorOff(shade->floorColour) && shade->floorColour != clrUndefined)
            background = shade->floorColour & 0xFFFFFF;
        jamb = shade->jambColour;
    }
    const unsigned face = GMCombineColors(colour, background, 0.7);

    dc.SelectPen(CVxDC::penSolid, 1, background);
    dc.SelectBrush(CVxDC::brushSolid, background);
    dc.Polygon(corners, 4);
    dc.SelectOldBrush();
    dc.SelectOldPen();

    dc.SelectPen(CVxDC::penSolid, 1, jamb);
    dc.Line(corners[1], corners[2]);
    dc.Line(corners[3], corners[0]);
    dc.SelectOldPen();

    if (flag == 0)
        dc.SelectPen(CVxDC::penSolid, 1, face);
    dc.Line(corners[0], corners[1]);
    dc.Line(corners[2], corners[3]);
    if (flag == 0)
        dc.SelectOldPen();
}

void GMDrawPartMarker(CVxDC& dc, int x, int y, int size, EVxMarkerType type, const CVxStringW& folder)
{
    if (size <= 0)
        return;
    if (CVxPicBuf* icon = MarkerIcon(type, folder))
        dc.DrawPicture(x, y, size, size, 0.0, icon, true);
    else
        DrawMarkerByHand(dc, x, y, size, type);
}

void GMReleasePartMarkers()
{
    for (CVxMarkerIcon& icon : g_markerIcons) {
        if (icon.picture)
            icon.picture->Release();
        icon = CVxMarkerIcon();
    }
}
