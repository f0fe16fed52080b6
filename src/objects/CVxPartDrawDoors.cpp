// Doors and windows in plan and in front view, their frames and handles,
// and the sub-types of compasses and angles.

#include "CVxDC.h"
#include "CVxFloor.h"
#include "CVxPart.h"
#include "CVxUnits.h"
#include "CVxWall.h"
#include "CVxWindowSubTypes.h"
#include "VxGMDraw.h"
#include "VxPartDrawShapes.h"
#include "VxPointInRect.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kEps = 1e-7;
constexpr double kPi = 3.14159265358979323846;
constexpr unsigned kPaneColour = 0xFFFFF3;
// Depth fractions of the glass in a window's wall gap.
constexpr double kPaneFrom = 0.33;
constexpr double kPaneTo = 0.67;

unsigned FloorWallLineColour(const CVxFloor* floor, unsigned fallback)
{
    if (!floor)
        return fallback;
    return (floor->m_wallsContour & clrOffMark) != 0 ? floor->m_wallsColor : floor->m_wallsContour;
}

// The gap of an opening shows the floor of the room and the floor's walls.
const SVxOpeningShade* FloorShade(const CVxFloor* floor, SVxOpeningShade& shade)
{
    if (!floor)
        return nullptr;
    shade.floorColour = floor->m_floorAppear.GetColor();
    shade.jambColour = FloorWallLineColour(floor, 0);
    return &shade;
}

// Where the line through p along d meets the line a-b.
bool MeetLine(const CVxDPoint& p, const CVxDPoint& d, const CVxDPoint& a, const CVxDPoint& b, CVxDPoint& out)
{
    const CVxDPoint e = b - a;
    const double den = d.x * e.y - d.y * e.x;
    if (std::fabs(den) < kEps)
        return false;
    const double s = ((a.x - p.x) * e.y - (a.y - p.y) * e.x) / den;
    out = p + d * s;
    return true;
}

double DistanceToLine(const CVxDPoint& p, const CVxDPoint& a, const CVxDPoint& b)
{
    const CVxDPoint e = b - a;
    const double length = std::hypot(e.x, e.y);
    if (length < kEps)
        return std::hypot(p.x - a.x, p.y - a.y);
    return std::fabs((p.x - a.x) * e.y - (p.y - a.y) * e.x) / length;
}

// The gap that a door hung on a wall cuts between the wall's two faces. The
// edge of the square that lies on the wall is P3-P2, or P3-P0 when the door
// was turned a quarter against the wall; from there the gap runs across the
// wall to the other face, so that it follows a slanted wall exactly.
bool DoorWallGap(const CVxPart& part, CVxFloor* floor, const VxPOINT* c, double originX, double originY,
                 double zoom, CVxDPoint gap[4], double& depth)
{
    if (!floor || !part.snapToWall)
        return false;
    const CVxWall* wall = floor->m_walls.SafeGetWall(part.snapWall);
    if (!wall)
        return false;
    VxPOINT outline[CVxWall::OUT_COUNT];
    wall->GetCachedRect(outline, static_cast<int>(std::lround(originX)),
                        static_cast<int>(std::lround(originY)), zoom);
    const CVxDPoint a1(outline[CVxWall::OUT_A_START]);
    const CVxDPoint a2(outline[CVxWall::OUT_A_END]);
    const CVxDPoint b1(outline[CVxWall::OUT_B_START]);
    const CVxDPoint b2(outline[CVxWall::OUT_B_END]);

    const bool across = part.snapWallSide == 90 || part.snapWallSide == 270;
    const CVxDPoint e1(c[3]);
    const CVxDPoint e2(across ? c[0] : c[2]);
    const CVxDPoint mid = (e1 + e2) * 0.5;
    const bool nearA = DistanceToLine(mid, a1, a2) <= DistanceToLine(mid, b1, b2);
    const CVxDPoint n1 = nearA ? a1 : b1;
    const CVxDPoint n2 = nearA ? a2 : b2;
    const CVxDPoint f1 = nearA ? b1 : a1;
    const CVxDPoint f2 = nearA ? b2 : a2;

    const CVxDPoint along = e2 - e1;
    const CVxDPoint normal(-along.y, along.x);
    if (!MeetLine(e1, normal, n1, n2, gap[0]) || !MeetLine(e2, normal, n1, n2, gap[1]) ||
        !MeetLine(e2, normal, f1, f2, gap[2]) || !MeetLine(e1, normal, f1, f2, gap[3]))
        return false;
    depth = zoom > kEps ? std::hypot(gap[3].x - gap[0].x, gap[3].y - gap[0].y) / zoom : 0;
    return true;
}

void ToPixels(const CVxDPoint* in, VxPOINT* out, int count)
{
    for (int i = 0; i < count; ++i) {
        out[i].x = static_cast<int32_t>(std::lround(in[i].x));
        out[i].y = static_cast<int32_t>(std::lround(in[i].y));
    }
}

// The box of the object in model units, whatever way its corners turn.
CVxDRect ModelBox(CVxPart& part, double originX, double originY, double zoom)
{
    VxRECT box;
    part.GetCachedBoundingRect(&box, static_cast<int>(std::lround(originX)),
                               static_cast<int>(std::lround(originY)), zoom);
    const double z = zoom > kEps ? zoom : 1;
    const double ox = std::lround(originX);
    const double oy = std::lround(originY);
    return CVxDRect((box.left - ox) / z, (box.top - oy) / z, (box.right - ox) / z, (box.bottom - oy) / z);
}

void ModelLine(CVxDC& dc, const CVxDRect& box, double u1, double v1, double u2, double v2, double zoom,
               double originX, double originY)
{
    const double w = box.right - box.left;
    const double h = box.bottom - box.top;
    GMDrawScaledLine(dc, CVxDPoint(box.left + u1 * w, box.top + v1 * h),
                     CVxDPoint(box.left + u2 * w, box.top + v2 * h), zoom, zoom, originX, originY);
}

void ModelRect(CVxDC& dc, const CVxDRect& box, double u1, double v1, double u2, double v2, double zoom,
               double originX, double originY)
{
    const double w = box.right - box.left;
    const double h = box.bottom - box.top;
    GMDrawScaledRect(dc, CVxDRect(box.left + u1 * w, box.top + v1 * h, box.left + u2 * w, box.top + v2 * h),
                     zoom, zoom, originX, originY);
}

// The handle of a door leaf at its usual height, on the lock side given by
// hx. The lever points towards the middle of the leaf.
void DrawDoorHandle(CVxDC& dc, const CVxDRect& box, int handleType, double hx, double zoom, double ox,
                    double oy)
{
    const double w = std::max(box.right - box.left, kEps);
    const double h = std::max(box.bottom - box.top, kEps);
    const double hy = 0.52;
    const double du = std::min(w, h) * 0.025 / w;
    const double dv = std::min(w, h) * 0.025 / h;
    const double toward = hx > 0.5 ? -1 : 1;
    const double lever = 0.12 * toward;
    switch (handleType) {
    case 1: // lever on a round rose
        ModelRect(dc, box, hx - du, hy - dv, hx + du, hy + dv, zoom, ox, oy);
        ModelLine(dc, box, hx, hy, hx + lever, hy, zoom, ox, oy);
        break;
    case 2: // knob
        ModelRect(dc, box, hx - 1.5 * du, hy - 1.5 * dv, hx + 1.5 * du, hy + 1.5 * dv, zoom, ox, oy);
        ModelRect(dc, box, hx - 0.6 * du, hy - 0.6 * dv, hx + 0.6 * du, hy + 0.6 * dv, zoom, ox, oy);
        break;
    case 3: // vertical pull bar on two stand-offs
        ModelLine(dc, box, hx, hy - 0.15, hx, hy + 0.15, zoom, ox, oy);
        ModelRect(dc, box, hx - du, hy - 0.13 - dv, hx + du, hy - 0.13 + dv, zoom, ox, oy);
        ModelRect(dc, box, hx - du, hy + 0.13 - dv, hx + du, hy + 0.13 + dv, zoom, ox, oy);
        break;
    case 4: // push bar across the leaf
        ModelRect(dc, box, 0.12, hy - dv, 0.88, hy + dv, zoom, ox, oy);
        break;
    case 5: // lever on a long back plate with its keyhole
        ModelRect(dc, box, hx - du, hy - 4 * dv, hx + du, hy + 6 * dv, zoom, ox, oy);
        ModelLine(dc, box, hx, hy, hx + lever, hy, zoom, ox, oy);
        ModelLine(dc, box, hx, hy + 3 * dv, hx, hy + 4.5 * dv, zoom, ox, oy);
        break;
    case 6: // ring pull
        ModelRect(dc, box, hx - du, hy - dv, hx + du, hy + dv, zoom, ox, oy);
        ModelRect(dc, box, hx - 2 * du, hy, hx + 2 * du, hy + 4 * dv, zoom, ox, oy);
        break;
    case 7: // flush pull of a sliding leaf
        ModelRect(dc, box, hx - 0.6 * du, hy - 4 * dv, hx + 0.6 * du, hy + 4 * dv, zoom, ox, oy);
        break;
    case 8: // push plate above a pull handle
        ModelRect(dc, box, hx - 2 * du, hy - 0.2, hx + 2 * du, hy - 0.05, zoom, ox, oy);
        ModelLine(dc, box, hx, hy - 0.02, hx, hy + 0.1, zoom, ox, oy);
        break;
    default:
        break;
    }
}

// The needle and rose of a compass; its north is towards P0-P1.
void DrawCompass(CVxDC& dc, const VxPOINT* c, int subType)
{
    VxPOINT p[16];
    switch (subType) {
    case 1:
    case 2: {
        // Star of four or eight points.
        const int points = subType == 1 ? 4 : 8;
        for (int i = 0; i < 2 * points; ++i) {
            const double a = kPi * i / points;
            const double r = (i % 2 == 0) ? 0.5 : 0.14;
            GetPointInRectL(p[i], c, 0.5 + r * std::sin(a), 0.5 - r * std::cos(a));
        }
        if (subType == 1)
            GMDrawEllipse(dc, c);
        dc.Polygon(p, 2 * points);
        break;
    }
    case 3: {
        // Arrow of north only with its letter bar.
        GetPointInRectL(p[0], c, 0.5, 0.0);
        GetPointInRectL(p[1], c, 0.75, 0.6);
        GetPointInRectL(p[2], c, 0.5, 0.45);
        GetPointInRectL(p[3], c, 0.25, 0.6);
        dc.Polygon(p, 4);
        GetPointInRectL(p[4], c, 0.5, 0.45);
        GetPointInRectL(p[5], c, 0.5, 1.0);
        dc.Line(p[4], p[5]);
        break;
    }
    default: {
        // Ring and a needle whose north half is dark.
        GMDrawEllipse(dc, c);
        GetPointInRectL(p[0], c, 0.5, 0.04);
        GetPointInRectL(p[1], c, 0.62, 0.5);
        GetPointInRectL(p[2], c, 0.5, 0.96);
        GetPointInRectL(p[3], c, 0.38, 0.5);
        dc.Polygon(p, 4);
        const VxPOINT north[3] = {p[0], p[1], p[3]};
        dc.SelectBrush(CVxDC::brushSolid, dc.GetCurrentPenColor());
        dc.Polygon(north, 3);
        dc.SelectOldBrush();
        break;
    }
    }
}

// The two arms of an angle and its arc; sub-type 1 marks the arc twice.
void DrawAngle(const CVxPart& part, CVxDC& dc, const VxPOINT* c)
{
    CVxDPoint vertex, arm1, arm2;
    part.GetAnglePartPoints(vertex, arm1, arm2);
    CVxDPoint v, a, b;
    GetPointInRectL(v, c, vertex.x, vertex.y);
    GetPointInRectL(a, c, arm1.x, arm1.y);
    GetPointInRectL(b, c, arm2.x, arm2.y);
    VxPOINT pv, pa, pb;
    ToPixels(&v, &pv, 1);
    ToPixels(&a, &pa, 1);
    ToPixels(&b, &pb, 1);
    dc.Line(pv, pa);
    dc.Line(pv, pb);

    const double la = std::hypot(a.x - v.x, a.y - v.y);
    const double lb = std::hypot(b.x - v.x, b.y - v.y);
    if (la < kEps || lb < kEps)
        return;
    const double start = std::atan2(a.y - v.y, a.x - v.x);
    double span = std::atan2(b.y - v.y, b.x - v.x) - start;
    while (span > kPi)
        span -= 2 * kPi;
    while (span < -kPi)
        span += 2 * kPi;
    const int arcs = part.subType == 1 ? 2 : 1;
    for (int k = 0; k < arcs; ++k) {
        const double r = std::min(la, lb) * (0.25 + 0.06 * k);
        VxPOINT arc[13];
        for (int i = 0; i <= 12; ++i) {
            const double t = start + span * i / 12;
            arc[i].x = static_cast<int32_t>(std::lround(v.x + r * std::cos(t)));
            arc[i].y = static_cast<int32_t>(std::lround(v.y + r * std::sin(t)));
        }
        dc.Polyline(arc, 13);
    }
}

} // namespace

void VxDrawDoorSymbol(CVxPart& part, CVxDC* dc, CVxFloor* floor, int units, const VxPOINT* c, double originX,
                      double originY, double zoom)
{
    const bool wallPen = VX_IsColorOff(part.lineColor) && floor;
    if (wallPen)
        dc->SelectPen(CVxDC::penSolid, 1, FloorWallLineColour(floor, 0));

    CVxDPoint gap[4];
    double depth = 0;
    if (DoorWallGap(part, floor, c, originX, originY, zoom, gap, depth)) {
        VxPOINT gapPixels[4];
        ToPixels(gap, gapPixels, 4);
        SVxOpeningShade shade;
        GMDrawWallOpeningRect(*dc, gapPixels, FloorWallLineColour(floor, part.lineColor), 0,
                              FloorShade(floor, shade));
        VxPOINT scratch[8];
        part.DrawDoorFrame(dc, units, gap, scratch, depth);
    }

    // The swing: a quarter circle about the hinge P3, as one cubic.
    VxPOINT swing[4];
    swing[0] = c[0];
    swing[1].x = static_cast<int32_t>(std::lround((c[0].x + 3.0 * c[1].x) / 4));
    swing[1].y = static_cast<int32_t>(std::lround((c[0].y + 3.0 * c[1].y) / 4));
    swing[2].x = static_cast<int32_t>(std::lround((c[2].x + 3.0 * c[1].x) / 4));
    swing[2].y = static_cast<int32_t>(std::lround((c[2].y + 3.0 * c[1].y) / 4));
    swing[3] = c[2];
    dc->PolyBezier(swing, 4);
    dc->MoveTo(c[0]);
    dc->LineTo(c[3]);
    dc->LineTo(c[2]);

    if (wallPen)
        dc->SelectOldPen();
}

void VxDrawWindowSymbol(CVxPart& part, CVxDC* dc, CVxFloor* floor, const VxPOINT* c)
{
    const unsigned colour = FloorWallLineColour(floor, part.lineColor);
    SVxOpeningShade shade;
    GMDrawWallOpeningRect(*dc, c, colour, 0, FloorShade(floor, shade));
    // Simple openings of the library draw nothing but their gap.
    if (part.libObjID >= 10 && part.libObjID <= 199)
        return;

    VxPOINT pane[4];
    GetPointInRectLRc(pane, c, 0.0, kPaneFrom, 1.0, kPaneTo);
    dc->SelectPen(CVxDC::penSolid, 1, colour);
    dc->SelectBrush(CVxDC::brushSolid, kPaneColour);
    dc->Polygon(pane, 4);
    dc->SelectOldBrush();

    if (part.libObjID == 278 || part.libObjID == 279) {
        // The opened casement stands out of the wall on the room side.
        const bool right = part.libObjID == 278;
        VxPOINT leaf, nearCorner, farCorner;
        GetPointInRectL(leaf, c, right ? 0.98 : 0.02, 2.0);
        GetPointInRectL(nearCorner, c, right ? 1.0 : 0.0, kPaneTo);
        GetPointInRectL(farCorner, c, right ? 0.0 : 1.0, kPaneTo);
        dc->Line(leaf, nearCorner);
        dc->SelectPen(CVxDC::penSolid, 2, colour);
        dc->Line(leaf, farCorner);
        dc->SelectOldPen();
    }

    if ((part.lineColor & clrOffMark) == 0) {
        // Mullions and glazing bars that stand upright cross the pane.
        const std::vector<CVxSubItem>& model = CVxWindowSubTypes::GetInstance().GetWindowModel(part.subType);
        for (size_t i = CVxWindowSubTypes::outerFrameItemCount; i < model.size(); ++i) {
            const CVxSubItem& item = model[i];
            if (!item.IsVertical())
                continue;
            VxPOINT a, b;
            GetPointInRectL(a, c, item.x1, kPaneFrom);
            GetPointInRectL(b, c, item.x1, kPaneTo);
            dc->Line(a, b);
        }
    }
    dc->SelectOldPen();
}

void CVxPart::DrawDoorFrame(CVxDC* dc, int units, CVxDPoint* points, VxPOINT* scratch, double depth)
{
    if (!dc || !points || !scratch || !doorframe || !snapToWall || !(thickness > kEps) || !(width > kEps) ||
        !(depth > kEps))
        return;
    const bool frontBrush = frontColorEnable && !VX_IsColorOff(appearFront.GetColor());
    if (frontBrush)
        dc->SelectBrush(CVxDC::brushSolid, appearFront.GetColor());

    // The jambs stand proud of both faces of the wall by an inch.
    const double inch = 2.54 / CVxUnits::GetUnitCal(units);
    const double t = thickness / width;
    const double d = inch / width;
    const double e = inch / depth;
    const double jamb[8][2] = {{-t, 0},     {-t, -e}, {0, -e}, {0, 1 + e},
                               {-t, 1 + e}, {-t, 1},  {-d, 1}, {-d, 0}};
    for (int i = 0; i < 8; ++i)
        GetPointInRectL(scratch[i], points, jamb[i][0], jamb[i][1]);
    dc->Polygon(scratch, 8);
    for (int i = 0; i < 8; ++i)
        GetPointInRectL(scratch[i], points, 1 - jamb[i][0], jamb[i][1]);
    dc->Polygon(scratch, 8);

    if (frontBrush)
        dc->SelectOldBrush();
}

void CVxPart::SubTypeDraw(CVxDC* dc, int units, double originX, double originY, double zoom, bool side,
                          bool plain)
{
    (void)units;
    (void)plain;
    if (!dc)
        return;
    if (!side && (type == ptCompass || type == ptAngle)) {
        const VxPOINT* cached = GetCachedRect(originX, originY, zoom, nullptr);
        if (!cached)
            return;
        VxPOINT c[4];
        std::copy(cached, cached + 4, c);
        if (type == ptCompass)
            DrawCompass(*dc, c, subType);
        else
            DrawAngle(*this, *dc, c);
        return;
    }
    if (!AreSubTypesForFrontView(type, libObjID))
        return;

    const unsigned fill = GetFillColor();
    dc->SelectBrush(VX_IsColorOff(fill) ? CVxDC::brushNull : CVxDC::brushSolid, fill);
    dc->SelectPen(CVxDC::penSolid, 1, 0);

    const CVxDRect box = ModelBox(*this, originX, originY, zoom);
    const double ox = std::lround(originX);
    const double oy = std::lround(originY);
    const bool door = type == ptDoor || IsDoorLike(type, libObjID);
    const CVxWindowSubTypes& models = CVxWindowSubTypes::GetInstance();
    const std::vector<CVxSubItem>& items =
        door ? models.GetDoorModel(subType, nullptr) : models.GetWindowModel(subType);
    for (const CVxSubItem& item : items) {
        if (item.frame)
            dc->SelectPen(CVxDC::penSolid, 2, 0);
        ModelLine(*dc, box, item.x1, item.y1, item.x2, item.y2, zoom, ox, oy);
        if (item.frame)
            dc->SelectOldPen();
    }
    if (door)
        DrawDoorHandle(*dc, box, handleType, models.GetDoorHandleX(subType), zoom, ox, oy);

    dc->SelectOldPen();
    dc->SelectOldBrush();
}
