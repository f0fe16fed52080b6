// The plan symbols of library objects: the table of routines by library
// number, the helpers they draw with, and the shared families of storage
// furniture whose form the rest of the program relies on.

#include "CVxPartLibDraw.h"
#include "CVxPart.h"

#include "CVxPartPayload.h"
#include "VxDrawFlags.h"
#include "VxGMDraw.h"
#include "VxPointInRect.h"

#include <cstddef>

namespace {

// A routine holds its points in fixed arrays; no symbol needs more.
constexpr int kMaxSymPoints = 40;

int FillPoints(const SVxLibSym& s, std::initializer_list<double> uv, VxPOINT* out)
{
    int count = 0;
    const double* it = uv.begin();
    while (it + 1 < uv.end() && count < kMaxSymPoints) {
        out[count++] = s.P(it[0], it[1]);
        it += 2;
    }
    return count;
}

// Number 20, a tall unit: the outline and a V from the front corners to the
// middle of the back, the mark of a unit that reaches the ceiling.
void SymTallUnit(const SVxLibSym& s)
{
    s.Outline();
    VxPOINT v[3];
    v[0] = s.P(1, 1);
    GetPointInRectL(v[1], s.cornersInt, 1, 2, 0, 1);
    v[2] = s.P(0, 1);
    s.dc->MoveTo(v[0]);
    s.dc->LineTo(v[1]);
    s.dc->LineTo(v[2]);
}

// Cabinets: the body and the door strip along the front, one sixteenth or
// one eighth of the depth, in the front colour when the front differs.
void SymCabinetStrip(const SVxLibSym& s, int parts)
{
    s.dc->Polygon(s.cornersInt, 4);
    VxPOINT strip[4];
    GetPointInRectL(strip[0], s.cornersInt, 0, 1, parts - 1, parts);
    GetPointInRectL(strip[1], s.cornersInt, 1, 1, parts - 1, parts);
    GetPointInRectL(strip[2], s.cornersInt, 1, 1, 1, 1);
    GetPointInRectL(strip[3], s.cornersInt, 0, 1, 1, 1);
    if (s.front) {
        CVxSymBrush brush(s, s.frontColour, false);
        s.dc->Polygon(strip, 4);
    } else {
        s.dc->Polygon(strip, 4);
    }
}

void SymCabinet(const SVxLibSym& s)
{
    SymCabinetStrip(s, 16);
}

void SymKitchenUnit(const SVxLibSym& s)
{
    SymCabinetStrip(s, 8);
}

// Rugs and mats: the outline and a border one sixteenth in from every side.
void SymInset(const SVxLibSym& s)
{
    s.dc->Polygon(s.cornersInt, 4);
    VxPOINT inner[4];
    GetPointInRect(inner[0], s.cornersInt, 15, 16, 15, 16);
    GetPointInRect(inner[1], s.cornersInt, 1, 16, 15, 16);
    GetPointInRect(inner[2], s.cornersInt, 1, 16, 1, 16);
    GetPointInRect(inner[3], s.cornersInt, 15, 16, 1, 16);
    s.dc->Polygon(inner, 4);
}

FnLibSym* BuildTable()
{
    static FnLibSym table[kLibSymCount] = {};
    auto put = [](int id, FnLibSym fn) { table[id - kLibSymFirst] = fn; };
    put(20, SymTallUnit);
    for (int id : {21, 202, 203, 205, 206, 217})
        put(id, SymCabinet);
    for (int id : {209, 210, 211, 212, 215, 216, 231, 232, 234})
        put(id, SymKitchenUnit);
    for (int id : {92, 117, 804, 805, 807})
        put(id, SymInset);
    LibSymRegisterCabinets(table);
    LibSymRegisterSeating(table);
    LibSymRegisterKitchenBath(table);
    LibSymRegisterDoorsStairs(table);
    LibSymRegisterGardenOther(table);
    return table;
}

FnLibSym LibSymRoutine(int libId)
{
    static FnLibSym* table = BuildTable();
    if (libId < kLibSymFirst || libId > kLibSymLast)
        return nullptr;
    return table[libId - kLibSymFirst];
}

} // namespace

VxPOINT SVxLibSym::P(double u, double v) const
{
    VxPOINT p;
    GetPointInRectL(p, c, u, v);
    return p;
}

SVxLibSym SVxLibSym::Sub(double u1, double v1, double u2, double v2, int turn) const
{
    SVxLibSym sub = *this;
    sub.cornersInt = nullptr;
    CVxDPoint ring[4];
    GetPointInRectL(ring[0], c, u1, v1);
    GetPointInRectL(ring[1], c, u2, v1);
    GetPointInRectL(ring[2], c, u2, v2);
    GetPointInRectL(ring[3], c, u1, v2);
    const int k = ((turn % 4) + 4) % 4;
    for (int i = 0; i < 4; ++i)
        sub.c[i] = ring[(i + k) % 4];
    return sub;
}

SVxLibSym SVxLibSym::Mirrored() const
{
    SVxLibSym m = *this;
    m.cornersInt = nullptr;
    m.c[0] = c[1];
    m.c[1] = c[0];
    m.c[2] = c[3];
    m.c[3] = c[2];
    return m;
}

void SVxLibSym::Corners(VxPOINT out[4]) const
{
    out[0] = P(0, 0);
    out[1] = P(1, 0);
    out[2] = P(1, 1);
    out[3] = P(0, 1);
}

void SVxLibSym::Outline() const
{
    VxPOINT q[4];
    Corners(q);
    dc->Polygon(q, 4);
}

void SVxLibSym::Quad(double u1, double v1, double u2, double v2) const
{
    VxPOINT q[4];
    GetPointInRectLRc(q, c, u1, v1, u2, v2);
    dc->Polygon(q, 4);
}

void SVxLibSym::Oval(double u1, double v1, double u2, double v2) const
{
    const SVxLibSym frame = Sub(u1, v1, u2, v2);
    VxPOINT q[4];
    frame.Corners(q);
    GMDrawEllipse(*dc, q);
}

void SVxLibSym::Round(double u1, double v1, double u2, double v2, bool large) const
{
    const SVxLibSym frame = Sub(u1, v1, u2, v2);
    VxPOINT q[4];
    frame.Corners(q);
    GMDrawRoundRect(*dc, q, large);
}

void SVxLibSym::Seg(double u1, double v1, double u2, double v2) const
{
    dc->Line(P(u1, v1), P(u2, v2));
}

void SVxLibSym::Poly(std::initializer_list<double> uv) const
{
    VxPOINT pts[kMaxSymPoints];
    const int n = FillPoints(*this, uv, pts);
    if (n >= 2)
        dc->Polygon(pts, n);
}

void SVxLibSym::Lines(std::initializer_list<double> uv) const
{
    VxPOINT pts[kMaxSymPoints];
    const int n = FillPoints(*this, uv, pts);
    if (n < 2)
        return;
    dc->MoveTo(pts[0]);
    for (int i = 1; i < n; ++i)
        dc->LineTo(pts[i]);
}

void SVxLibSym::Bezier(std::initializer_list<double> uv) const
{
    VxPOINT pts[kMaxSymPoints];
    const int n = FillPoints(*this, uv, pts);
    if (n < 4)
        return;
    const int used = 1 + (n - 1) / 3 * 3;
    const VxPOINT& a = pts[0];
    const VxPOINT& b = pts[used - 1];
    if (a.x != b.x || a.y != b.y) {
        dc->PolyBezier(pts, used);
        return;
    }
    // A closed outline is a surface of the object: filled like a polygon.
    dc->BeginPath();
    dc->PolyBezier(pts, used);
    dc->EndPath();
    dc->StrokeAndFillPath();
}

void SVxLibSym::FrontQuad(double u1, double v1, double u2, double v2) const
{
    if (!front) {
        Quad(u1, v1, u2, v2);
        return;
    }
    CVxSymBrush brush(*this, frontColour, false);
    Quad(u1, v1, u2, v2);
}

void SVxLibSym::FrontOval(double u1, double v1, double u2, double v2) const
{
    if (!front) {
        Oval(u1, v1, u2, v2);
        return;
    }
    CVxSymBrush brush(*this, frontColour, false);
    Oval(u1, v1, u2, v2);
}

CVxSymBrush::CVxSymBrush(const SVxLibSym& s, double light) : m_dc(s.dc)
{
    const unsigned current = m_dc->GetCurrentBrushColor();
    if (!m_dc->IsBrushNeeded())
        m_dc->SelectBrush(CVxDC::brushNull, current);
    else
        m_dc->SelectBrush(CVxDC::brushSolid, GMCombineColors(current & 0xFFFFFF, 0xFFFFFF, light));
}

CVxSymBrush::CVxSymBrush(const SVxLibSym& s, unsigned colour, bool hollow) : m_dc(s.dc)
{
    m_dc->SelectBrush(hollow ? CVxDC::brushNull : CVxDC::brushSolid, colour & 0xFFFFFF);
}

CVxSymBrush::~CVxSymBrush()
{
    m_dc->SelectOldBrush();
}

CVxSymPen::CVxSymPen(const SVxLibSym& s, int style, int width) : m_dc(s.dc)
{
    m_dc->SelectPen(style, width, m_dc->GetCurrentPenColor());
}

CVxSymPen::~CVxSymPen()
{
    m_dc->SelectOldPen();
}

bool CVxPart::LibDrawPart(CVxDC* dc, int libId, int units, int originX, int originY, double zoom, int flags)
{
    if (!dc)
        return false;
    // Paper in black and white shows no front surfaces.
    const bool front = frontColorEnable &&
                       !((flags & VX_DRAW_BLACK_WHITE) != 0 && dc->GetColorMode() == CVxDC::colorModeGrey);
    CVxDPoint points[4];
    VxPOINT* corners = const_cast<VxPOINT*>(GetCachedRect(originX, originY, zoom, points));
    if (!corners)
        return false;
    // Stairs and the made-to-measure wardrobe draw themselves from their own
    // parameters.
    if (payload && payload->DrawPart(this, dc, corners, points, front))
        return true;
    const FnLibSym routine = LibSymRoutine(libId);
    if (!routine)
        return false;
    SVxLibSym s;
    s.dc = dc;
    s.part = this;
    s.cornersInt = corners;
    s.cornersDbl = points;
    for (int i = 0; i < 4; ++i)
        s.c[i] = CVxDPoint(corners[i].x, corners[i].y);
    s.libId = libId;
    s.units = units;
    s.front = front;
    s.frontColour = appearFront.main.color;
    routine(s);
    return true;
}
