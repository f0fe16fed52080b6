// Plan symbols of doors, openings and stairs. A door-like object is the
// opening of its wall: its depth is the wall's thickness, so the leaf and
// its swing are measured in multiples of width / depth, which keeps a leaf
// as long as the opening is wide whatever the wall.

#include "CVxPart.h"
#include "CVxPartLibDraw.h"

#include "VxGMDraw.h"

#include <cmath>

namespace {

constexpr double kEps = 1e-7;
// Control point distance of a quarter circle drawn as one cubic curve.
constexpr double kArc = 0.5523;

// How many depth fractions one width of the object makes.
double WidthInDepths(const SVxLibSym& s)
{
    const double depth = s.part ? s.part->height : 0;
    const double width = s.part ? s.part->width : 0;
    if (depth < kEps || width < kEps)
        return 1;
    return width / depth;
}

// The gap in the wall and, when asked for, the frame around it.
void Opening(const SVxLibSym& s)
{
    if (!s.cornersInt)
        return;
    GMDrawWallOpeningRect(*s.dc, s.cornersInt, s.part ? s.part->lineColor & 0xFFFFFF : 0, 0, nullptr);
    if (s.part && s.cornersDbl) {
        VxPOINT scratch[8];
        s.part->DrawDoorFrame(s.dc, s.units, s.cornersDbl, scratch, s.part->height);
    }
}

// A leaf hinged at u = 0 on the room face, reaching `reach` of the width,
// open at right angles, with its swing.
void SwingLeaf(const SVxLibSym& s, double reach, double r)
{
    const double t = 0.04 * reach;
    s.Poly({0, 1, t, 1, t, 1 + reach * r, 0, 1 + reach * r});
    CVxSymBrush hollow(s, 0, true);
    s.Bezier({reach, 1, reach, 1 + kArc * reach * r, kArc * reach, 1 + reach * r, 0, 1 + reach * r});
}

void SymSingleDoor(const SVxLibSym& s)
{
    Opening(s);
    const double r = WidthInDepths(s);
    SwingLeaf(s.libId == 281 ? s.Mirrored() : s, 1, r);
}

void SymDoubleDoor(const SVxLibSym& s)
{
    Opening(s);
    const double r = WidthInDepths(s);
    SwingLeaf(s, 0.5, r);
    SwingLeaf(s.Mirrored(), 0.5, r);
}

// Panels folded in a zig-zag on the room side, `panels` of them, pushed
// together to `span` of the width.
void Folding(const SVxLibSym& s, int panels, double r)
{
    const double span = 0.6;
    const double along = span / panels;
    const double out = std::sqrt(1.0 / (panels * panels) - along * along) * r;
    CVxSymBrush hollow(s, 0, true);
    switch (panels) {
    case 2:
        s.Lines({0, 1, along, 1 + out, 2 * along, 1});
        break;
    case 3:
        s.Lines({0, 1, along, 1 + out, 2 * along, 1, 3 * along, 1 + out});
        break;
    default:
        s.Lines({0, 1, along, 1 + out, 2 * along, 1, 3 * along, 1 + out, 4 * along, 1});
        break;
    }
}

void SymFoldingDoor(const SVxLibSym& s)
{
    Opening(s);
    int panels = 2;
    if (s.libId == 263 || s.libId == 264)
        panels = 3;
    else if (s.libId == 265 || s.libId == 266)
        panels = 4;
    const bool otherHand = s.libId == 198 || s.libId == 264 || s.libId == 266;
    Folding(otherHand ? s.Mirrored() : s, panels, WidthInDepths(s));
}

void SymSlidingDoor(const SVxLibSym& s)
{
    Opening(s);
    const double r = WidthInDepths(s);
    if (s.libId == 199) {
        // Two leaves that part in the middle, on two tracks in the wall.
        s.Quad(0.0, 0.38, 0.3, 0.5);
        s.Quad(0.7, 0.5, 1.0, 0.62);
        return;
    }
    // One leaf on the room face, pushed aside over the wall.
    const SVxLibSym f = s.libId == 196 ? s.Mirrored() : s;
    f.Quad(-0.6, 1 + 0.02 * r, 0.45, 1 + 0.06 * r);
    f.Seg(-0.65, 1 + 0.09 * r, 1.05, 1 + 0.09 * r);
}

void SymGarageDoor(const SVxLibSym& s)
{
    Opening(s);
    const double r = WidthInDepths(s);
    // The door lifted under the ceiling, seen from above.
    CVxSymPen dashed(s, CVxDC::penDash, 1);
    CVxSymBrush hollow(s, 0, true);
    s.Quad(0.02, 1, 0.98, 1 + 0.9 * r);
}

void SymWallOpening(const SVxLibSym& s)
{
    Opening(s);
    CVxSymPen dashed(s, CVxDC::penDash, 1);
    s.Seg(0, 0, 1, 1);
    s.Seg(1, 0, 0, 1);
}

void SymFramedPicture(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush light(s, 0.6);
    s.Quad(0.05, 0.25, 0.95, 0.75);
}

// Stairs run along the width: the first tread at u = 0, the arrow pointing
// up the flight.
void Treads(const SVxLibSym& s, double u1, double u2, double v1, double v2, int steps)
{
    for (int i = 1; i < steps; ++i) {
        const double u = u1 + (u2 - u1) * i / steps;
        s.Seg(u, v1, u, v2);
    }
}

void Arrow(const SVxLibSym& s, double u1, double u2, double v)
{
    s.Seg(u1, v, u2, v);
    const double head = (u2 - u1) * 0.08;
    s.Poly({u2, v, u2 - head, v - 0.12, u2 - head, v + 0.12});
}

void SymStairs(const SVxLibSym& s)
{
    s.Outline();
    Treads(s, 0, 1, 0, 1, 12);
    if (s.libId == 162) {
        for (int i = 0; i < 12; ++i) {
            s.Oval(i / 12.0 + 0.02, 0.0, i / 12.0 + 0.06, 0.06);
            s.Oval(i / 12.0 + 0.02, 0.94, i / 12.0 + 0.06, 1.0);
        }
    }
    Arrow(s, 1.0 / 16, 15.0 / 16, 0.5);
}

void SymSpiralStairs(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    for (int i = 0; i < 12; ++i) {
        const double a = i * 3.14159265358979 / 6;
        s.Seg(0.5 + 0.08 * std::sin(a), 0.5 - 0.08 * std::cos(a), 0.5 + 0.5 * std::sin(a),
              0.5 - 0.5 * std::cos(a));
    }
    s.Oval(0.4, 0.4, 0.6, 0.6);
    CVxSymBrush hollow(s, 0, true);
    s.Bezier({0.5, 0.2, 0.68, 0.2, 0.8, 0.32, 0.8, 0.5});
    s.Poly({0.8, 0.5, 0.76, 0.42, 0.84, 0.42});
}

void SymLStairs(const SVxLibSym& s)
{
    s.Poly({0, 0.6, 0, 1, 1, 1, 1, 0, 0.6, 0, 0.6, 0.6});
    Treads(s, 0, 0.6, 0.6, 1, 6);
    s.Seg(0.6, 0.6, 1, 1);
    for (int i = 1; i < 6; ++i)
        s.Seg(0.6, 0.6 * i / 6, 1, 0.6 * i / 6);
    s.Lines({0.05, 0.8, 0.8, 0.8, 0.8, 0.08});
    s.Poly({0.8, 0.04, 0.76, 0.14, 0.84, 0.14});
}

void SymUStairs(const SVxLibSym& s)
{
    s.Outline();
    s.Seg(0, 0.5, 0.65, 0.5);
    Treads(s, 0, 0.65, 0, 0.5, 7);
    Treads(s, 0, 0.65, 0.5, 1, 7);
    s.Seg(0.65, 0, 0.65, 1);
    s.Lines({0.05, 0.75, 0.82, 0.75, 0.82, 0.25, 0.08, 0.25});
    s.Poly({0.04, 0.25, 0.12, 0.2, 0.12, 0.3});
}

void SymLadder(const SVxLibSym& s)
{
    s.Quad(0, 0, 1, 0.12);
    s.Quad(0, 0.88, 1, 1);
    Treads(s, 0, 1, 0.12, 0.88, 8);
}

void SymRamp(const SVxLibSym& s)
{
    s.Outline();
    for (int i = 1; i < 4; ++i)
        s.Lines({i * 0.22, 0.2, i * 0.22 + 0.1, 0.5, i * 0.22, 0.8});
    Arrow(s, 0.05, 0.95, 0.5);
}

void SymLift(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.08, 0.08, 0.92, 0.85);
    s.Seg(0.08, 0.08, 0.92, 0.85);
    s.Seg(0.92, 0.08, 0.08, 0.85);
    s.Quad(0.2, 0.85, 0.8, 1.0);
}

void SymColumn(const SVxLibSym& s)
{
    if (s.libId == 170)
        s.Oval(0, 0, 1, 1);
    else
        s.Outline();
    for (int i = 1; i < 4; ++i) {
        s.Seg(i * 0.25, 0.15, 0.15, i * 0.25);
        s.Seg(0.85, 1 - i * 0.25, 1 - i * 0.25, 0.85);
    }
}

void SymChimney(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush dark(s, 0x303030, false);
    s.Quad(0.25, 0.25, 0.75, 0.75);
}

} // namespace

void LibSymRegisterDoorsStairs(FnLibSym* table)
{
    auto put = [table](int id, FnLibSym fn) { table[id - kLibSymFirst] = fn; };
    for (int id : {280, 281, 282})
        put(id, SymSingleDoor);
    for (int id : {200, 283})
        put(id, SymDoubleDoor);
    for (int id : {197, 198, 263, 264, 265, 266})
        put(id, SymFoldingDoor);
    for (int id : {195, 196, 199})
        put(id, SymSlidingDoor);
    put(246, SymGarageDoor);
    put(106, SymWallOpening);
    for (int id : {93, 272})
        put(id, SymFramedPicture);
    for (int id : {65, 162})
        put(id, SymStairs);
    put(163, SymSpiralStairs);
    put(164, SymLStairs);
    put(165, SymUStairs);
    put(166, SymLadder);
    put(167, SymRamp);
    put(168, SymLift);
    for (int id : {169, 170})
        put(id, SymColumn);
    put(173, SymChimney);
}
