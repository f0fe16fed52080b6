// Plan symbols of storage furniture, wardrobes, shelves and the furniture
// of the living room: television, fireplace, music instruments.

#include "CVxPart.h"
#include "CVxPartLibDraw.h"

namespace {

// Shelves seen from above: the carcass, its back and the partitions.
void SymBookcase(const SVxLibSym& s)
{
    s.Outline();
    s.Seg(0, 0.1, 1, 0.1);
    const int bays = s.libId == 204 ? 2 : 3;
    for (int i = 1; i < bays; ++i)
        s.Seg(static_cast<double>(i) / bays, 0.1, static_cast<double>(i) / bays, 1);
    // A row of books on the top shelf.
    CVxSymBrush light(s, 0.5);
    for (int i = 0; i < 6; ++i)
        s.Quad(0.05 + i * 0.07, 0.15, 0.1 + i * 0.07, 0.85);
}

// Corner units: an L whose inner edges carry the doors.
void SymCornerUnit(const SVxLibSym& s)
{
    s.Poly({0, 0, 1, 0, 1, 1, 0.55, 1, 0.55, 0.45, 0, 0.45});
    if (s.front) {
        CVxSymBrush brush(s, s.frontColour, false);
        s.Poly({0, 0.4, 0.55, 0.4, 0.55, 0.45, 0, 0.45});
        s.Poly({0.6, 0.45, 0.6, 1, 0.55, 1, 0.55, 0.45});
    } else {
        s.Poly({0, 0.4, 0.55, 0.4, 0.55, 0.45, 0, 0.45});
        s.Poly({0.6, 0.45, 0.6, 1, 0.55, 1, 0.55, 0.45});
    }
}

void SymGlassCabinet(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0, 15.0 / 16, 1, 1);
    s.Seg(0.05, 0.1, 0.3, 0.85);
    s.Seg(0.35, 0.1, 0.6, 0.85);
    s.Seg(0.65, 0.1, 0.9, 0.85);
}

// Wardrobes: the hanger rail along the middle with a few hangers across,
// the doors at the front.
void SymWardrobe(const SVxLibSym& s)
{
    s.Outline();
    const int doors = s.libId == 208 ? 3 : 2;
    if (s.libId == 277) {
        // Sliding doors overlap in two runs.
        s.FrontQuad(0, 0.84, 0.52, 0.92);
        s.FrontQuad(0.48, 0.92, 1, 1);
    } else {
        s.FrontQuad(0, 0.92, 1, 1);
        for (int i = 1; i < doors; ++i)
            s.Seg(static_cast<double>(i) / doors, 0.92, static_cast<double>(i) / doors, 1);
    }
    s.Seg(0.03, 0.45, 0.97, 0.45);
    for (int i = 1; i < 8; ++i)
        s.Seg(i / 8.0 - 0.02, 0.2, i / 8.0 + 0.02, 0.7);
}

void SymChest(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0.04, 0.08, 0.96, 0.92);
    s.Seg(0.4, 1, 0.6, 1);
}

void SymFilingCabinet(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0, 0.9, 1, 1);
    s.Quad(0.35, 0.93, 0.65, 0.97);
}

void SymSafe(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.08, 0.08, 0.92, 0.88);
    s.Oval(0.4, 0.9, 0.6, 1.0);
}

void SymTelevision(const SVxLibSym& s)
{
    // The screen at the front, the foot behind it.
    s.Poly({0.3, 0.2, 0.7, 0.2, 0.75, 0.75, 0.25, 0.75});
    s.FrontQuad(0, 0.75, 1, 1);
}

void SymFlatTv(const SVxLibSym& s)
{
    s.Quad(0.1, 0, 0.9, 0.7);
    s.FrontQuad(0, 0.7, 1, 1);
}

void SymComputer(const SVxLibSym& s)
{
    s.Quad(0.1, 0.0, 0.9, 0.35);
    s.Seg(0.5, 0.35, 0.5, 0.5);
    s.Round(0.05, 0.55, 0.8, 0.85);
    s.Oval(0.85, 0.6, 0.97, 0.8);
}

void SymLaptop(const SVxLibSym& s)
{
    s.Quad(0, 0, 1, 0.35);
    s.Quad(0, 0.35, 1, 1);
    s.Quad(0.35, 0.8, 0.65, 0.95);
    for (int i = 1; i < 4; ++i)
        s.Seg(0.08, 0.35 + i * 0.1, 0.92, 0.35 + i * 0.1);
}

void SymSpeaker(const SVxLibSym& s)
{
    s.Outline();
    s.Oval(0.2, 0.55, 0.8, 1.0);
}

void SymFireplace(const SVxLibSym& s)
{
    // The hearth before the firebox, the chimney breast behind.
    s.Outline();
    s.Poly({0.2, 0.0, 0.8, 0.0, 0.7, 0.55, 0.3, 0.55});
    s.FrontQuad(0.0, 0.7, 1.0, 1.0);
    s.Lines({0.4, 0.45, 0.5, 0.15, 0.6, 0.45});
}

void SymStove(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 0.85);
    s.FrontQuad(0.15, 0.85, 0.85, 1);
    s.Oval(0.3, 0.15, 0.7, 0.55);
}

void SymPiano(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0, 0.65, 1, 0.85);
    for (int i = 1; i < 14; ++i)
        s.Seg(i / 14.0, 0.65, i / 14.0, 0.85);
    CVxSymBrush dark(s, 0x202020, false);
    for (int i = 0; i < 13; ++i) {
        if (i % 7 == 2 || i % 7 == 6)
            continue;
        s.Quad(i / 14.0 + 0.045, 0.65, i / 14.0 + 0.095, 0.76);
    }
}

void SymGrandPiano(const SVxLibSym& s)
{
    // The curved case of a grand, keyboard at the front.
    s.Bezier({0.0,  0.75, 0.0, 0.0,  0.3, 0.0, 0.45, 0.0,  0.7, 0.0,
              0.75, 0.25, 1.0, 0.55, 1.0, 0.6, 1.0,  0.75, 1.0, 0.75});
    s.Poly({0.0, 0.75, 1.0, 0.75, 1.0, 0.9, 0.0, 0.9});
    for (int i = 1; i < 12; ++i)
        s.Seg(i / 12.0, 0.75, i / 12.0, 0.9);
    s.Quad(0.25, 0.92, 0.75, 1.0);
}

void SymGuitar(const SVxLibSym& s)
{
    s.Oval(0.05, 0.55, 0.95, 1.0);
    s.Oval(0.15, 0.3, 0.85, 0.65);
    s.Quad(0.42, 0.0, 0.58, 0.35);
    CVxSymBrush hollow(s, 0, true);
    s.Oval(0.35, 0.6, 0.65, 0.75);
}

void SymDrums(const SVxLibSym& s)
{
    s.Oval(0.3, 0.35, 0.7, 0.75);
    s.Oval(0.05, 0.05, 0.3, 0.3);
    s.Oval(0.7, 0.05, 0.95, 0.3);
    s.Oval(0.0, 0.45, 0.25, 0.7);
    s.Oval(0.75, 0.45, 1.0, 0.7);
    s.Oval(0.4, 0.8, 0.6, 1.0);
}

void SymRail(const SVxLibSym& s)
{
    // A clothes rail or shoe rack: the frame ends and what hangs or stands.
    s.Quad(0, 0, 0.04, 1);
    s.Quad(0.96, 0, 1, 1);
    s.Seg(0.04, 0.5, 0.96, 0.5);
    const int n = s.libId == 285 ? 5 : 9;
    for (int i = 1; i < n; ++i)
        s.Seg(i / static_cast<double>(n), 0.15, i / static_cast<double>(n), 0.85);
}

void SymCoatStand(const SVxLibSym& s)
{
    s.Oval(0.1, 0.1, 0.9, 0.9);
    s.Oval(0.4, 0.4, 0.6, 0.6);
    for (int i = 0; i < 4; ++i) {
        static const double hooks[4][2] = {{0.5, 0.0}, {1.0, 0.5}, {0.5, 1.0}, {0.0, 0.5}};
        s.Seg(0.5, 0.5, hooks[i][0], hooks[i][1]);
    }
}

void SymWallShelf(const SVxLibSym& s)
{
    s.Outline();
    s.Seg(0.1, 0, 0.1, 1);
    s.Seg(0.9, 0, 0.9, 1);
}

void SymAquarium(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush water(s, 0xE8C890, false);
    s.Quad(0.04, 0.1, 0.96, 0.9);
    s.Lines({0.3, 0.5, 0.4, 0.4, 0.5, 0.5, 0.4, 0.6, 0.3, 0.5, 0.25, 0.45, 0.25, 0.55, 0.3, 0.5});
}

void SymWineRack(const SVxLibSym& s)
{
    s.Outline();
    for (int i = 0; i < 5; ++i)
        s.Oval(0.02 + i * 0.196, 0.1, 0.18 + i * 0.196, 0.9);
}

void SymHallBench(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0.03, 0.1, 0.97, 0.9);
    for (int i = 1; i < 3; ++i)
        s.Seg(i / 3.0, 0.1, i / 3.0, 0.9);
}

} // namespace

void LibSymRegisterCabinets(FnLibSym* table)
{
    auto put = [table](int id, FnLibSym fn) { table[id - kLibSymFirst] = fn; };
    for (int id : {22, 204})
        put(id, SymBookcase);
    for (int id : {23, 83, 108})
        put(id, SymCornerUnit);
    put(24, SymGlassCabinet);
    for (int id : {207, 208, 277, 286})
        put(id, SymWardrobe);
    for (int id : {116, 161})
        put(id, SymChest);
    put(254, SymFilingCabinet);
    put(256, SymSafe);
    put(144, SymTelevision);
    put(274, SymFlatTv);
    put(145, SymComputer);
    put(146, SymLaptop);
    put(147, SymSpeaker);
    for (int id : {126, 270})
        put(id, SymFireplace);
    put(271, SymStove);
    put(91, SymPiano);
    put(94, SymGrandPiano);
    put(148, SymGuitar);
    put(149, SymDrums);
    for (int id : {155, 285})
        put(id, SymRail);
    for (int id : {158, 273})
        put(id, SymCoatStand);
    put(275, SymWallShelf);
    put(154, SymAquarium);
    put(814, SymWineRack);
    put(284, SymHallBench);
}
