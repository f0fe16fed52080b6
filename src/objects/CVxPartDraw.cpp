// Drawing of objects in plan: colours, transparency and the built-in shapes.
// Every point comes from the object's cached quadrilateral, so rotation,
// skew and zoom are already in the corners and no shape turns anything.

#include "CVxDC.h"
#include "CVxFloor.h"
#include "CVxPart.h"

#include "CVxPartPayload.h"
#include "CVxPicBuf.h"
#include "CVxStringTokenizer.h"
#include "IVxAppHelperCallback.h"
#include "VxAngle.h"
#include "VxDrawFlags.h"
#include "VxGMDraw.h"
#include "VxPartDrawShapes.h"
#include "VxPointInRect.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
constexpr double kEps = 1e-7;
constexpr int kMarkerSize = 68;
// Fill colours that a surface shows when its transparency is full: the
// plan never lets an object vanish.
constexpr double kTransparencyReach = 0.7;

bool IsReservedMark(double value)
{
    return value == -19182.0 || value == -19181.0;
}

CVxStringW ProgramFolder()
{
    if (!QCoreApplication::instance())
        return CVxStringW();
    return CVxStringW(QCoreApplication::applicationDirPath()) + L"/";
}

// The two faces of a tilted box, split where the top meets the front. The
// face that looks up keeps the plain fill; the other is shaded.
void DrawTiltedFaces(const CVxPart& part, CVxDC* dc, const VxPOINT* c, unsigned shade)
{
    const double t = VX_NormalizeAngle(part.rotation3D);
    const double top = std::fabs(std::cos(t * kDegToRad)) * part.height;
    const double front = std::fabs(std::sin(t * kDegToRad)) * part.zHeight;
    if (!(top + front > kEps)) {
        dc->Polygon(c, 4);
        return;
    }
    const int topShare = static_cast<int>(100 * top / (top + front) + 0.5);
    const bool frontFirst = t > 90 + kEps && t <= 270 + kEps;
    const int split = frontFirst ? 100 - topShare : topShare;
    const int topFrom = frontFirst ? split : 0;
    const int topTo = frontFirst ? 100 : split;
    const int frontFrom = frontFirst ? 0 : split;
    const int frontTo = frontFirst ? split : 100;

    VxPOINT face[4];
    if (topTo > topFrom) {
        GetPointInRectLRc(face, c, 0, 1, 1, topFrom, topTo, 100);
        dc->Polygon(face, 4);
    }
    if (frontTo > frontFrom) {
        const bool filled = dc->IsBrushNeeded();
        if (filled)
            dc->SelectHatchBrush(dc->GetCurrentBrushColor(), 4, 255, shade);
        GetPointInRectLRc(face, c, 0, 1, 1, frontFrom, frontTo, 100);
        dc->Polygon(face, 4);
        if (filled)
            dc->SelectOldBrush();
    }
}

// A tilted cylinder seen from above: the far disc, the body between the
// discs and the near disc that looks up.
void DrawDrum(const CVxPart& part, CVxDC* dc, const VxPOINT* c, unsigned shade)
{
    const double t = VX_NormalizeAngle(part.rotation3D);
    const double disc = std::fabs(std::cos(t * kDegToRad)) * part.height;
    const double body = std::fabs(std::sin(t * kDegToRad)) * part.zHeight;
    const double share = disc + body > kEps ? disc / (disc + body) : 1;
    const bool swap = t > 90 + kEps && t <= 270 + kEps;
    const double upFrom = swap ? 1 - share : 0;
    const double farFrom = swap ? 0 : 1 - share;

    const unsigned brush = dc->GetCurrentBrushColor();
    const bool filled = dc->IsBrushNeeded();
    if (filled)
        dc->SelectHatchBrush(brush, 4, 255, shade);

    VxPOINT q[4];
    GetPointInRectLRc(q, c, 0.0, farFrom, 1.0, farFrom + share);
    GMDrawEllipse(*dc, q);

    const double mid1 = share / 2;
    const double mid2 = 1 - share / 2;
    VxPOINT side[4];
    GetPointInRectLRc(side, c, 0.0, mid1, 1.0, mid2);
    dc->SelectPen(CVxDC::penNull, 1, 0);
    dc->Polygon(side, 4);
    dc->SelectOldPen();
    dc->Line(side[0], side[1]);
    dc->Line(side[3], side[2]);
    if (filled)
        dc->SelectOldBrush();

    GetPointInRectLRc(q, c, 0.0, upFrom, 1.0, upFrom + share);
    GMDrawEllipse(*dc, q);
}

// A polygon of the object's 1000-unit frame through its quadrilateral.
void DrawFramePolygon(CVxDC* dc, const CVxDPolygon& polygon, const VxPOINT* c, bool open)
{
    const int n = polygon.GetVertexCount();
    std::vector<VxPOINT> points(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const CVxDPoint& p = polygon.points[static_cast<size_t>(i)];
        GetPointInRectL(points[static_cast<size_t>(i)], c, p.x / 1000, p.y / 1000);
    }
    std::vector<VxPOINT> controls(polygon.bezierControls.size());
    for (size_t i = 0; i < controls.size(); ++i)
        GetPointInRectL(controls[i], c, polygon.bezierControls[i].x / 1000,
                        polygon.bezierControls[i].y / 1000);
    GMDrawBezierPolygon(*dc, points.data(), n, polygon.bezierFlags,
                        controls.empty() ? nullptr : controls.data(), static_cast<int>(controls.size()),
                        open);
}

void DrawFractions(CVxDC* dc, const VxPOINT* c, const double (*uv)[2], int count, bool closed)
{
    VxPOINT points[8];
    count = std::min(count, 8);
    for (int i = 0; i < count; ++i)
        GetPointInRectL(points[i], c, uv[i][0], uv[i][1]);
    if (closed)
        dc->Polygon(points, count);
    else
        dc->Polyline(points, count);
}

void DrawArrow(const CVxPart& part, CVxDC* dc, const VxPOINT* c)
{
    const double head = std::min(1.5 * part.width, part.height / 4);
    const int k = part.height > kEps ? static_cast<int>(16 - head / part.height * 16) : 12;
    VxPOINT p[7];
    GetPointInRect(p[0], c, 1, 2, 1, 1);
    GetPointInRect(p[1], c, 1, 1, k, 16);
    GetPointInRect(p[2], c, 3, 5, k, 16);
    GetPointInRect(p[3], c, 3, 5, 0, 1);
    GetPointInRect(p[4], c, 2, 5, 0, 1);
    GetPointInRect(p[5], c, 2, 5, k, 16);
    GetPointInRect(p[6], c, 0, 1, k, 16);
    dc->Polygon(p, 7);
}

// A picture laid on the object: its top-left corner on P0, turned with the
// object about that corner.
void DrawObjectPicture(const CVxPart& part, CVxDC* dc, const VxPOINT* c, CVxPicBuf* picture, double zoom)
{
    if (!picture) {
        dc->SelectBrush(CVxDC::brushNull, 0);
        dc->Polygon(c, 4);
        dc->SelectOldBrush();
        return;
    }
    const int w = static_cast<int>(std::lround(part.width * zoom));
    const int h = static_cast<int>(std::lround(part.height * zoom));
    dc->DrawPicture(c[0].x, c[0].y, w, h, part.rotation, picture, dc->IsHighQuality());
}

unsigned EnergyGradeColour(const CVxStringW& grade)
{
    static const unsigned colours[7] = {VX_RGB(0, 150, 64),  VX_RGB(80, 184, 72),  VX_RGB(190, 214, 48),
                                        VX_RGB(255, 242, 0), VX_RGB(253, 185, 19), VX_RGB(243, 112, 33),
                                        VX_RGB(237, 28, 36)};
    for (int i = 0; i < grade.GetLength(); ++i) {
        const wchar_t ch = grade[i];
        if (ch >= L'A' && ch <= L'G')
            return colours[ch - L'A'];
        if (ch >= L'a' && ch <= L'g')
            return colours[ch - L'a'];
    }
    return 0xA0A0A0;
}

// The grade letters of an energy plate, white on the left end of each bar.
// The text runs along the plate's width and is sized to the bars, so that it
// turns and scales with the object; bars a few pixels high keep no letters.
void DrawEnergyGradeLetters(CVxDC* dc, const VxPOINT* c, const std::vector<CVxStringW>& rows)
{
    const int n = static_cast<int>(rows.size());
    if (n == 0)
        return;
    const double depth = std::hypot(c[3].x - c[0].x, c[3].y - c[0].y);
    const double barPixels = 0.7 * depth / n;
    if (barPixels < 5)
        return;
    CVxFont font;
    font.m_bold = true;
    font.m_rotation = std::atan2(c[1].y - c[0].y, c[1].x - c[0].x) / kDegToRad;
    dc->SelectFont(font);
    VxSIZE probe{0, 0};
    dc->GetTextExtentPoint(CVxStringW(L"A"), probe);
    dc->SelectOldFont();
    if (probe.cy <= 0)
        return;
    font.m_size *= 0.9 * barPixels / probe.cy;
    dc->SelectFont(font);
    for (int i = 0; i < n; ++i) {
        CVxStringW letter = rows[static_cast<size_t>(i)];
        letter.Trim();
        if (letter.GetAt(0) == L'<')
            letter = letter.Mid(1).Trim();
        if (letter.IsEmpty())
            continue;
        // The baseline a fifth of a bar above the bar's lower edge.
        VxPOINT at;
        GetPointInRectL(at, c, 0.09, (i + 0.71) / n);
        dc->TextOut(letter, at.x, at.y, CVxDC::taBaseline, 0xFFFFFF);
    }
    dc->SelectOldFont();
}

// The plate of an energy rating: one bar per grade, longer towards the
// worse grades, and a pointer at the grade marked with "<".
void DrawEnergyLabel(const CVxPart& part, CVxDC* dc, const VxPOINT* c)
{
    dc->SelectPen(CVxDC::penNull, 1, 0);
    dc->Polygon(c, 4);

    const CVxStringW text = part.caption.IsEmpty() ? CVxStringW(L"A;<B;C;D;E;F;G") : part.caption;
    CVxStringTokenizer tokens(text, L';');
    const std::vector<CVxStringW> rows = tokens.GetTokenList();
    const int n = static_cast<int>(rows.size());
    for (int i = 0; i < n; ++i) {
        const CVxStringW& row = rows[static_cast<size_t>(i)];
        const double v0 = (i + 0.15) / n;
        const double v1 = (i + 0.85) / n;
        const double vm = (v0 + v1) / 2;
        const double u1 = 0.3 + 0.5 * (i + 1) / n;
        const double bar[5][2] = {{0.06, v0}, {u1, v0}, {u1 + 0.06, vm}, {u1, v1}, {0.06, v1}};
        dc->SelectBrush(CVxDC::brushSolid, EnergyGradeColour(row));
        DrawFractions(dc, c, bar, 5, true);
        dc->SelectOldBrush();
        if (row.GetAt(0) == L'<') {
            const double pointer[3][2] = {{0.97, v0}, {0.9, vm}, {0.97, v1}};
            dc->SelectBrush(CVxDC::brushSolid, 0);
            DrawFractions(dc, c, pointer, 3, true);
            dc->SelectOldBrush();
        }
    }
    DrawEnergyGradeLetters(dc, c, rows);
    dc->SelectOldPen();
}

void DrawLabel(const CVxPart& part, CVxDC* dc, const VxPOINT* c)
{
    if (part.caption.IsEmpty() && (part.appTag & CVxPart::appTagTableCell) == 0) {
        // A label whose text is still empty would be lost on the screen; on
        // paper it stays invisible.
        if (CVxDC::IsPrinting())
            return;
        dc->SelectPen(CVxDC::penDot, 1, 0);
        dc->SelectBrush(CVxDC::brushNull, 0);
        dc->Polygon(c, 4);
        dc->SelectOldBrush();
        dc->SelectOldPen();
        return;
    }
    if (!VX_IsColorOff(part.GetFillColor()) && part.fillStyle != 1)
        dc->Polygon(c, 4);
}

} // namespace

void CVxPart::DrawToHdc(CVxDC* dc, CVxFloor* floor, int units, double originX, double originY, double zoom,
                        int flags, int layerTransparency, double scale)
{
    if (!dc)
        return;
    const unsigned oldBkColor = dc->GetBkColor();
    const int oldBkMode = dc->GetBkMode();
    const bool setKeep = type != ptComplexObject;
    const bool oldKeep = setKeep ? dc->SetKeepSameAlpha(true) : dc->GetKeepSameAlpha();
    const bool outlinePass = (flags & VX_DRAW_OUTLINE_PASS) != 0;

    auto restore = [&]() {
        if (setKeep)
            dc->SetKeepSameAlpha(oldKeep);
        if (!outlinePass) {
            dc->SelectOldPen();
            dc->SelectOldBrush();
        }
        dc->SetBkColor(oldBkColor);
        dc->SetBkMode(oldBkMode);
    };

    if (outlinePass) {
        DrawPart(dc, floor, units, originX, originY, zoom, flags, layerTransparency, scale, -1);
        if (type == ptLabel && VX_IsColorOff(textColor) && (flags & VX_DRAW_MARKERS) == 0) {
            restore();
            return;
        }
    } else {
        unsigned line = lineColor;
        unsigned fill = GetFillColor();
        if ((flags & VX_DRAW_BLACK_WHITE) != 0 && dc->GetColorMode() == CVxDC::colorModeGrey) {
            const unsigned paper = (type == ptCompass || type == ptEntrTriangle) ? 0u : 0xFFFFFFu;
            line = VX_IsColorOff(line) ? VX_ColorSwitchOff(0) : 0u;
            fill = VX_IsColorOff(fill) ? VX_ColorSwitchOff(paper) : paper;
        }
        if (type == ptLine || type == ptMeasLine || type == ptAngle || type == ptPolyline)
            fill = VX_ColorSwitchOff(fill);

        const double layerShare = (100 - layerTransparency) / 100.0;
        const unsigned char layerAlpha =
            static_cast<unsigned char>(std::clamp(layerShare * 255 + 0.5, 0.0, 255.0));
        unsigned char brushAlpha = layerAlpha;
        const int t = std::min(appearFill.GetTransparency(), 100);
        if (t > 0) {
            // The surface's own share comes in whole steps of alpha first.
            const int surface = static_cast<int>(100 - kTransparencyReach * t) * 255 / 100;
            brushAlpha = static_cast<unsigned char>(std::clamp(surface * layerShare + 0.5, 0.0, 255.0));
        }
        dc->SelectHatchBrush(fill, fillStyle, brushAlpha, line);

        int penStyle = CVxDC::penSolid;
        if (VX_IsColorOff(line) || type == ptLabel)
            penStyle = CVxDC::penNull;
        else if (lineStyle == lsDotted)
            penStyle = CVxDC::IsPrinting() ? CVxDC::penDash : CVxDC::penDot;
        else if (lineStyle == lsDashDot)
            penStyle = CVxDC::penDashDot;
        const int penWidth = HasCap(capLineThickness) ? static_cast<int>(0.5 + lineThick) : 0;
        dc->SelectPen(penStyle, penWidth, line, layerAlpha);

        DrawPart(dc, floor, units, originX, originY, zoom, flags, layerTransparency, scale, -1);
    }

    const bool textOff = VX_IsColorOff(textColor);
    if ((!textOff || type == ptLabel) && (flags & VX_DRAW_NO_CAPTIONS) == 0 && !caption.IsEmpty()) {
        if (type == ptLabel) {
            DrawLabelCaption(dc, units, originX, originY, zoom, scale);
        } else if (type == ptMeasLine) {
            DrawMeasLineCaption(dc, units, originX, originY, zoom, scale);
        } else if ((flags & VX_DRAW_CAPTIONS) != 0 && type != ptQRCode && type != ptEnergyLabel) {
            VxRECT box;
            GetCachedBoundingRect(&box, static_cast<int>(std::lround(originX)),
                                  static_cast<int>(std::lround(originY)), zoom);
            DrawCaption(dc, &box, units, zoom, scale);
        }
    }

    if ((flags & VX_DRAW_MARKERS) != 0 && (!fileLink.IsEmpty() || !soundClip.IsEmpty())) {
        VxRECT box;
        GetCachedBoundingRect(&box, static_cast<int>(std::lround(originX)),
                              static_cast<int>(std::lround(originY)), zoom);
        GMDrawPartMarker(*dc, box.right - 1, box.bottom - 1, kMarkerSize,
                         fileLink.IsEmpty() ? VX_MARKER_SOUNDCLIP : VX_MARKER_LINK, ProgramFolder());
    }
    restore();
}

void CVxPart::DrawPart(CVxDC* dc, CVxFloor* floor, int units, double originX, double originY, double zoom,
                       int flags, int transparency, double scale, int side)
{
    if (!dc)
        return;

    if (type == ptComplexObject) {
        // Members live in a frame 1000 units wide, turned with the group
        // about the group's first corner.
        const double f = width / 1000;
        const double r = rotation * kDegToRad;
        const double c = std::cos(r);
        const double s = std::sin(r);
        for (CVxPart& member : subParts) {
            const double oldRotation = member.rotation;
            const double oldZHeight = member.zHeight;
            member.rotation = VX_NormalizeAngle(rotation + member.rotation);
            member.zHeight *= zHeight;
            member.InvalidateCache();
            const double mx = member.x;
            const double my = member.y;
            const double ox = ((c * mx - s * my - mx) * f + x) * zoom + originX;
            const double oy = ((c * my + s * mx - my) * f + y) * zoom + originY;
            member.DrawToHdc(dc, floor, units, ox, oy, zoom * f, flags & ~VX_DRAW_CAPTIONS, transparency,
                             scale);
            member.rotation = oldRotation;
            member.zHeight = oldZHeight;
            member.InvalidateCache();
        }
        return;
    }

    if ((flags & VX_DRAW_OUTLINE_PASS) == 0 && type == ptLibraryObject && libObjID != 0 &&
        LibDrawPart(dc, libObjID, units, static_cast<int>(std::lround(originX)),
                    static_cast<int>(std::lround(originY)), zoom, flags))
        return;

    VxPOINT c[4];
    {
        const VxPOINT* cached = GetCachedRect(originX, originY, zoom, nullptr);
        if (!cached)
            return;
        for (int i = 0; i < 4; ++i)
            c[i] = cached[side >= 0 ? (i + 1) % 4 : i];
    }
    const bool tilted = HasCap(capSkew) && rotation3D >= kEps && !IsReservedMark(rotation3D);
    const unsigned shade = GMCombineColors(dc->GetCurrentBrushColor(), 0x808080, 0.2);

    switch (GetShape(false)) {
    case ptCircle:
    case ptEllipse:
        if (tilted)
            DrawDrum(*this, dc, c, shade);
        else
            GMDrawEllipse(*dc, c);
        break;
    case ptTriangle:
    case ptPolygon:
        if (type == ptTriangle && polygon.GetVertexCount() == 0)
            polygon.points = {CVxDPoint(0, 0), CVxDPoint(1000, 0), CVxDPoint(0, 1000)};
        if (type == ptPolygon && polygon.GetVertexCount() < 3) {
            static const double sample[6][2] = {{0.3, 0}, {0.7, 0}, {1, 0.2}, {0.6, 0.5}, {0.6, 1}, {0, 0.5}};
            DrawFractions(dc, c, sample, 6, true);
        } else {
            DrawFramePolygon(dc, polygon, c, false);
        }
        break;
    case ptHexagon: {
        VxPOINT p[6];
        GetPointInRect(p[0], c, 3, 4, 15, 16);
        GetPointInRect(p[1], c, 1, 4, 15, 16);
        GetPointInRect(p[2], c, 0, 1, 1, 2);
        GetPointInRect(p[3], c, 1, 4, 1, 16);
        GetPointInRect(p[4], c, 3, 4, 1, 16);
        GetPointInRect(p[5], c, 1, 1, 1, 2);
        dc->Polygon(p, 6);
        break;
    }
    case ptOctagon: {
        static const int octagon[8][2] = {{3, 0}, {7, 0}, {10, 3}, {10, 7}, {7, 10}, {3, 10}, {0, 7}, {0, 3}};
        VxPOINT p[8];
        for (int i = 0; i < 8; ++i)
            GetPointInRectL(p[i], c, octagon[i][0], 10, octagon[i][1], 10);
        dc->Polygon(p, 8);
        break;
    }
    case ptDoor:
        if ((flags & VX_DRAW_OUTLINE_PASS) != 0)
            dc->Polygon(c, 4);
        else
            VxDrawDoorSymbol(*this, dc, floor, units, c, originX, originY, zoom);
        break;
    case ptWindow:
        if ((flags & VX_DRAW_OUTLINE_PASS) == 0)
            VxDrawWindowSymbol(*this, dc, floor, c);
        break;
    case ptArrow:
        DrawArrow(*this, dc, c);
        break;
    case ptLine:
        dc->Line(c[0], c[2]);
        break;
    case ptMeasLine: {
        VxPOINT a, b, e1, e2;
        GetPointInRectL(a, c, 0.0, 0.5);
        GetPointInRectL(b, c, 1.0, 0.5);
        dc->Line(a, b);
        GetPointInRectL(e1, c, 0.0, 0.0);
        GetPointInRectL(e2, c, 0.0, 1.0);
        dc->Line(e1, e2);
        GetPointInRectL(e1, c, 1.0, 0.0);
        GetPointInRectL(e2, c, 1.0, 1.0);
        dc->Line(e1, e2);
        break;
    }
    case ptCompass:
    case ptAngle:
        SubTypeDraw(dc, units, originX, originY, zoom, false, false);
        break;
    case ptLogo:
        DrawObjectPicture(*this, dc, c, GetPicture(), zoom);
        break;
    case ptEntrTriangle: {
        static const double entrance[3][2] = {{0, 1}, {0.5, 0}, {1, 1}};
        DrawFractions(dc, c, entrance, 3, true);
        break;
    }
    case ptQRCode: {
        IVxAppHelperCallback* host = VX_GetAppHelper();
        CVxPicBuf* code = host ? host->CreatePicFromQRCode(caption.IsEmpty() ? fileLink : caption) : nullptr;
        DrawObjectPicture(*this, dc, c, code, zoom);
        if (code)
            code->Release();
        break;
    }
    case ptPolyline:
        if (polygon.GetVertexCount() == 0) {
            static const double sample[4][2] = {{0, 1}, {1.0 / 3, 0}, {2.0 / 3, 0.5}, {1, 0.5}};
            DrawFractions(dc, c, sample, 4, false);
        } else {
            DrawFramePolygon(dc, polygon, c, true);
        }
        break;
    case ptTable: {
        if (dc->IsBrushNeeded())
            dc->Polygon(c, 4);
        int rows = 1;
        int cols = 1;
        GetTableRowsCols(rows, cols);
        VxPOINT a, b;
        for (int i = 1; i < rows; ++i) {
            GetPointInRectL(a, c, 0, 1, i, rows);
            GetPointInRectL(b, c, 1, 1, i, rows);
            dc->Line(a, b);
        }
        for (int j = 1; j < cols; ++j) {
            GetPointInRectL(a, c, j, cols, 0, 1);
            GetPointInRectL(b, c, j, cols, 1, 1);
            dc->Line(a, b);
        }
        dc->SelectBrush(CVxDC::brushNull, 0);
        dc->Polygon(c, 4);
        dc->SelectOldBrush();
        for (CVxPart& cell : subParts)
            cell.DrawToHdc(dc, floor, units, originX, originY, zoom, flags & ~VX_DRAW_CAPTIONS, transparency,
                           scale);
        break;
    }
    case ptEnergyLabel:
        DrawEnergyLabel(*this, dc, c);
        break;
    case ptLabel:
        DrawLabel(*this, dc, c);
        break;
    default:
        if (tilted)
            DrawTiltedFaces(*this, dc, c, shade);
        else
            dc->Polygon(c, 4);
        break;
    }
}

void CVxPart::DrawSideToHdc(CVxDC* dc, int side, int units, double originX, double originY, double zoom,
                            int flags)
{
    if (!dc)
        return;
    if (type == ptLine || type == ptMeasLine || type == ptAngle || type == ptPolyline) {
        DrawToHdc(dc, nullptr, units, originX, originY, zoom, flags, 0, 1.0);
        return;
    }
    if (type == ptComplexObject) {
        if (width <= 0)
            return;
        const int turned = static_cast<int>(VX_NormalizeAngle(-rotation + 0.05)) / 90;
        const int memberSide = ((side - turned + 4) % 4 + 4) % 4;
        const double f = width / 1000;
        for (CVxPart& member : subParts) {
            const double oldZHeight = member.zHeight;
            member.zHeight *= zHeight / width;
            member.InvalidateCache();
            member.DrawSideToHdc(dc, memberSide, units, originX + x * zoom, originY + y * zoom, zoom * f,
                                 flags);
            member.zHeight = oldZHeight;
            member.InvalidateCache();
        }
        return;
    }

    const unsigned fill = GetFillColor();
    const bool filled = !VX_IsColorOff(fill);
    dc->SelectBrush(filled ? CVxDC::brushSolid : CVxDC::brushNull, fill);
    int penStyle = CVxDC::penSolid;
    if (VX_IsColorOff(lineColor) || type == ptLabel)
        penStyle = CVxDC::penNull;
    else if (lineStyle == lsDotted)
        penStyle = CVxDC::IsPrinting() ? CVxDC::penDash : CVxDC::penDot;
    else if (lineStyle == lsDashDot)
        penStyle = CVxDC::penDashDot;
    dc->SelectPen(penStyle, HasCap(capLineThickness) ? static_cast<int>(0.5 + lineThick) : 0, lineColor);

    const unsigned oldBkColor = dc->GetBkColor();
    const int oldBkMode = dc->GetBkMode();
    if (filled && penStyle != CVxDC::penSolid && penStyle != CVxDC::penNull) {
        // The gaps of a styled outline show the fill, not what lies behind.
        dc->SetBkColor(fill);
        dc->SetBkMode(CVxDC::bkOpaque);
    }
    LibDrawPartSide(dc, libObjID, side, units, originX, originY, zoom, flags);
    dc->SetBkColor(oldBkColor);
    dc->SetBkMode(oldBkMode);
    dc->SelectOldPen();
    dc->SelectOldBrush();
}

bool CVxPart::LibDrawPartSide(CVxDC* dc, int libId, int side, int units, double originX, double originY,
                              double zoom, int flags)
{
    if (!dc)
        return false;
    const int turned = static_cast<int>(VX_NormalizeAngle(-rotation + 0.05)) / 90;
    const int ownSide = ((side - turned + 4) % 4 + 4) % 4;
    if (wrl3dAsBillboard)
        libId = 276;

    VxPOINT c[4];
    {
        const VxPOINT* cached = GetCachedRect(originX, originY, zoom, nullptr);
        if (!cached)
            return false;
        std::copy(cached, cached + 4, c);
    }
    const bool grey = (flags & VX_DRAW_BLACK_WHITE) != 0 && dc->GetColorMode() == CVxDC::colorModeGrey;
    const bool front = frontColorEnable && !grey;
    if (payload &&
        payload->DrawPartSide(this, dc, static_cast<EVxObjSide>(ownSide), units, c, front, false, flags))
        return true;
    if (LibDrawPartSide_low(dc, libId, static_cast<EVxObjSide>(ownSide), c, front, false))
        return true;

    if ((type == ptDoor || type == ptWindow || IsDoorLike(type, libId)) &&
        AreSubTypesForFrontView(type, libId)) {
        SubTypeDraw(dc, units, originX, originY, zoom, true, false);
        return true;
    }
    dc->Polygon(c, 4);
    return false;
}
