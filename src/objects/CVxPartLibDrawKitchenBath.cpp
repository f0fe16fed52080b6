// Plan symbols of kitchen appliances and units, sanitary ware and the
// household machines of the utility room.

#include "CVxPart.h"
#include "CVxPartLibDraw.h"

namespace {

// Four rings in a square, the rear pair smaller, as on most hobs.
void Rings(const SVxLibSym& s, double u1, double v1, double u2, double v2)
{
    CVxSymBrush hollow(s, 0, true);
    const double w = u2 - u1;
    const double d = v2 - v1;
    s.Oval(u1 + 0.08 * w, v1 + 0.08 * d, u1 + 0.42 * w, v1 + 0.42 * d);
    s.Oval(u1 + 0.55 * w, v1 + 0.1 * d, u1 + 0.85 * w, v1 + 0.4 * d);
    s.Oval(u1 + 0.1 * w, v1 + 0.58 * d, u1 + 0.4 * w, v1 + 0.88 * d);
    s.Oval(u1 + 0.52 * w, v1 + 0.52 * d, u1 + 0.92 * w, v1 + 0.92 * d);
}

// A bowl with its drain and, when asked, the ribbed drainer beside it.
void SinkBowl(const SVxLibSym& s, double u1, double v1, double u2, double v2)
{
    CVxSymBrush light(s, 0.5);
    s.Round(u1, v1, u2, v2, true);
    const double cu = (u1 + u2) / 2;
    const double cv = (v1 + v2) / 2;
    s.Oval(cu - 0.04 * (u2 - u1), cv - 0.06 * (v2 - v1), cu + 0.04 * (u2 - u1), cv + 0.06 * (v2 - v1));
}

void Drainer(const SVxLibSym& s, double u1, double v1, double u2, double v2)
{
    for (int i = 1; i < 6; ++i) {
        const double u = u1 + (u2 - u1) * i / 6.0;
        s.Seg(u, v1, u, v2);
    }
}

void SymSink(const SVxLibSym& s)
{
    s.Outline();
    if (s.libId == 86) {
        SinkBowl(s, 0.05, 0.15, 0.35, 0.85);
        SinkBowl(s, 0.38, 0.15, 0.68, 0.85);
        Drainer(s, 0.72, 0.15, 0.95, 0.85);
    } else {
        SinkBowl(s, 0.05, 0.15, 0.5, 0.85);
        Drainer(s, 0.55, 0.15, 0.95, 0.85);
    }
    s.Oval(0.25, 0.03, 0.31, 0.11);
}

void SymHob(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    if (s.libId == 88) {
        Rings(s, 0.0, 0.0, 0.7, 1.0);
        CVxSymBrush hollow(s, 0, true);
        s.Oval(0.68, 0.25, 0.98, 0.75);
    } else {
        Rings(s, 0.0, 0.0, 1.0, 1.0);
    }
}

void SymCooker(const SVxLibSym& s)
{
    s.Outline();
    Rings(s, 0.04, 0.02, 0.96, 0.86);
    s.FrontQuad(0.0, 0.9, 1.0, 1.0);
}

void SymSinkUnit(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0, 0.92, 1, 1);
    SinkBowl(s, 0.08, 0.15, 0.55, 0.82);
    Drainer(s, 0.6, 0.15, 0.94, 0.82);
}

void SymHobUnit(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0, 0.92, 1, 1);
    Rings(s, 0.08, 0.08, 0.92, 0.86);
}

void SymApplianceUnit(const SVxLibSym& s)
{
    // A built-in appliance: the carcass, its door, and a cross for the
    // machine inside.
    s.Outline();
    s.FrontQuad(0, 0.9, 1, 1);
    s.Seg(0.05, 0.05, 0.95, 0.85);
    s.Seg(0.95, 0.05, 0.05, 0.85);
}

void SymFridge(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0, 0.88, 1, 1);
    s.Quad(0.04, 0.04, 0.96, 0.84);
    s.Seg(0.04, 0.04, 0.96, 0.84);
    if (s.libId != 60)
        s.Seg(0.96, 0.04, 0.04, 0.84);
    s.Quad(0.85, 0.92, 0.92, 0.97);
}

void SymWasher(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0, 0, 1, 0.18);
    s.Oval(0.62, 0.04, 0.72, 0.14);
    s.FrontOval(0.15, 0.25, 0.85, 0.95);
    if (s.libId == 53) {
        CVxSymBrush hollow(s, 0, true);
        s.Oval(0.28, 0.38, 0.72, 0.82);
    }
}

void SymDishwasher(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0, 0.9, 1, 1);
    for (int i = 1; i < 6; ++i)
        s.Seg(i / 6.0, 0.1, i / 6.0, 0.8);
}

void SymMicrowave(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0.0, 0.9, 0.72, 1.0);
    s.Quad(0.75, 0.9, 1.0, 1.0);
    s.Oval(0.15, 0.15, 0.6, 0.8);
}

void SymExtractor(const SVxLibSym& s)
{
    s.Poly({0, 1, 1, 1, 0.7, 0, 0.3, 0});
    s.Quad(0.35, 0.0, 0.65, 0.35);
    s.Seg(0.1, 0.8, 0.9, 0.8);
}

void SymIsland(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0, 0, 1, 0.08);
    if (s.libId == 230) {
        Rings(s, 0.1, 0.2, 0.45, 0.85);
        SinkBowl(s, 0.58, 0.25, 0.9, 0.8);
    } else {
        for (int i = 0; i < 3; ++i)
            s.Oval(0.12 + i * 0.3, 0.65, 0.28 + i * 0.3, 0.98);
    }
}

void SymKitchenCorner(const SVxLibSym& s)
{
    s.Poly({0, 0, 1, 0, 1, 0.5, 0.5, 0.5, 0.5, 1, 0, 1});
    s.FrontQuad(0.5, 0.45, 1, 0.5);
    s.FrontQuad(0.45, 0.5, 0.5, 1);
    s.Seg(0, 0, 0.5, 0.5);
}

void SymWorktop(const SVxLibSym& s)
{
    s.Outline();
    s.Seg(0, 0.92, 1, 0.92);
}

// Bathroom.

void SymBath(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush light(s, 0.5);
    s.Round(0.05, 0.1, 0.95, 0.9, true);
    s.Oval(0.08, 0.45, 0.13, 0.55);
    if (s.libId == 225) {
        CVxSymPen thick(s, CVxDC::penSolid, 2);
        s.Seg(0.65, 1, 1, 1);
    }
}

void SymOvalBath(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush light(s, 0.5);
    s.Oval(0.06, 0.1, 0.94, 0.9);
    s.Oval(0.12, 0.45, 0.17, 0.55);
}

void SymCornerBath(const SVxLibSym& s)
{
    s.Poly({0, 0, 1, 0, 1, 0.4, 0.4, 1, 0, 1});
    CVxSymBrush light(s, 0.5);
    s.Bezier({0.08, 0.1, 0.5,  0.05, 0.95, 0.05, 0.9,  0.35, 0.9,  0.6,
              0.6,  0.9, 0.35, 0.9,  0.05, 0.95, 0.05, 0.5,  0.08, 0.1});
    s.Oval(0.12, 0.12, 0.18, 0.18);
}

void SymShowerTray(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.05, 0.05, 0.95, 0.95);
    s.Seg(0.05, 0.05, 0.95, 0.95);
    s.Seg(0.95, 0.05, 0.05, 0.95);
    CVxSymBrush light(s, 0.5);
    s.Oval(0.44, 0.44, 0.56, 0.56);
    if (s.libId == 268) {
        CVxSymPen thick(s, CVxDC::penSolid, 2);
        s.Seg(0, 1, 0.6, 1);
        s.Seg(1, 0, 1, 1);
    }
}

void SymQuadrantShower(const SVxLibSym& s)
{
    // The tray in the corner behind, the curved screen towards the room.
    s.Lines({0, 1, 0, 0, 1, 0});
    s.Bezier({1, 0, 1, 0.55, 0.55, 1, 0, 1});
    CVxSymBrush light(s, 0.5);
    s.Oval(0.25, 0.25, 0.37, 0.37);
    if (s.libId == 77) {
        CVxSymPen thick(s, CVxDC::penSolid, 2);
        s.Bezier({0.9, 0.05, 0.9, 0.5, 0.5, 0.9, 0.05, 0.9});
    }
}

void SymWalkInShower(const SVxLibSym& s)
{
    s.Outline();
    s.Oval(0.4, 0.4, 0.6, 0.6);
    CVxSymPen thick(s, CVxDC::penSolid, 2);
    s.Seg(0.6, 1, 0.6, 0.3);
    if (s.libId == 813) {
        CVxSymBrush hollow(s, 0, true);
        s.Oval(0.15, 0.15, 0.55, 0.55);
    }
}

void SymToilet(const SVxLibSym& s)
{
    // Cistern against the wall, the bowl in front of it.
    if (s.libId != 71)
        s.Round(0.05, 0.0, 0.95, 0.3);
    else
        s.Quad(0.1, 0.0, 0.9, 0.12);
    s.Bezier({0.15, 0.3,  0.1,  0.75, 0.25, 1.0, 0.5,  1.0, 0.75, 1.0,
              0.9,  0.75, 0.85, 0.3,  0.85, 0.3, 0.15, 0.3, 0.15, 0.3});
    CVxSymBrush light(s, 0.5);
    s.Oval(0.28, 0.4, 0.72, 0.9);
}

void SymBidet(const SVxLibSym& s)
{
    s.Bezier({0.15, 0.0, 0.05, 0.7, 0.25, 1.0, 0.5,  1.0, 0.75, 1.0,
              0.95, 0.7, 0.85, 0.0, 0.85, 0.0, 0.15, 0.0, 0.15, 0.0});
    CVxSymBrush light(s, 0.5);
    s.Oval(0.25, 0.2, 0.75, 0.9);
    s.Oval(0.45, 0.08, 0.55, 0.16);
}

void SymBasin(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    CVxSymBrush light(s, 0.5);
    if (s.libId == 74) {
        s.Oval(0.05, 0.2, 0.45, 0.9);
        s.Oval(0.55, 0.2, 0.95, 0.9);
        s.Oval(0.23, 0.05, 0.27, 0.12);
        s.Oval(0.73, 0.05, 0.77, 0.12);
    } else {
        s.Oval(0.1, 0.2, 0.9, 0.92);
        s.Oval(0.46, 0.05, 0.54, 0.14);
    }
}

void SymBowlBasin(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush light(s, 0.5);
    s.Oval(0.12, 0.12, 0.88, 0.88);
    s.Oval(0.45, 0.45, 0.55, 0.55);
}

void SymUrinal(const SVxLibSym& s)
{
    s.Bezier({0.0, 0.0, 0.0, 1.2, 1.0, 1.2, 1.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 0.0});
    s.Oval(0.42, 0.45, 0.58, 0.6);
}

void SymRadiator(const SVxLibSym& s)
{
    s.Outline();
    const int fins = s.libId == 222 ? 6 : 12;
    for (int i = 1; i < fins; ++i)
        s.Seg(i / static_cast<double>(fins), 0, i / static_cast<double>(fins), 1);
}

void SymHotTub(const SVxLibSym& s)
{
    s.Poly({0.3, 0, 0.7, 0, 1, 0.3, 1, 0.7, 0.7, 1, 0.3, 1, 0, 0.7, 0, 0.3});
    CVxSymBrush water(s, 0xF0D8A8, false);
    s.Oval(0.12, 0.12, 0.88, 0.88);
}

void SymSauna(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.05, 0.05, 0.95, 0.3);
    s.Quad(0.05, 0.3, 0.3, 0.95);
    s.Quad(0.7, 0.7, 0.95, 0.95);
    s.Seg(0.7, 0.7, 0.95, 0.95);
}

void SymBasket(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1, true);
    for (int i = 1; i < 4; ++i)
        s.Seg(0.05, i / 4.0, 0.95, i / 4.0);
}

void SymMirror(const SVxLibSym& s)
{
    CVxSymBrush glass(s, 0xF8E8D8, false);
    s.Outline();
    s.Seg(0.1, 0.5, 0.9, 0.5);
}

void SymIroningBoard(const SVxLibSym& s)
{
    s.Bezier(
        {0.0, 0.1, 0.0, 0.1, 0.0, 0.9, 0.0, 0.9, 0.6, 1.0, 1.0, 0.7, 1.0, 0.5, 1.0, 0.3, 0.6, 0.0, 0.0, 0.1});
    s.Quad(0.05, 0.3, 0.2, 0.7);
}

void SymAirer(const SVxLibSym& s)
{
    s.Outline();
    for (int i = 1; i < 8; ++i)
        s.Seg(i / 8.0, 0, i / 8.0, 1);
}

void SymWallBox(const SVxLibSym& s)
{
    // Boiler, water heater or air conditioner on the wall: the casing and
    // its mark.
    s.Round(0, 0, 1, 1);
    if (s.libId == 134) {
        for (int i = 1; i < 5; ++i)
            s.Seg(0.05, 0.15 * i + 0.1, 0.95, 0.15 * i + 0.1);
    } else if (s.libId == 136) {
        s.Oval(0.1, 0.05, 0.9, 0.95);
    } else {
        s.Quad(0.3, 0.6, 0.7, 0.9);
        s.Lines({0.45, 0.5, 0.5, 0.2, 0.55, 0.5});
    }
}

} // namespace

void LibSymRegisterKitchenBath(FnLibSym* table)
{
    auto put = [table](int id, FnLibSym fn) { table[id - kLibSymFirst] = fn; };
    for (int id : {85, 86})
        put(id, SymSink);
    for (int id : {87, 88})
        put(id, SymHob);
    put(67, SymCooker);
    put(213, SymSinkUnit);
    put(214, SymHobUnit);
    for (int id : {218, 219})
        put(id, SymApplianceUnit);
    for (int id : {60, 61, 233})
        put(id, SymFridge);
    for (int id : {53, 54})
        put(id, SymWasher);
    put(139, SymDishwasher);
    put(143, SymMicrowave);
    put(89, SymExtractor);
    for (int id : {229, 230})
        put(id, SymIsland);
    put(228, SymKitchenCorner);
    put(140, SymWorktop);

    for (int id : {63, 225})
        put(id, SymBath);
    for (int id : {120, 811})
        put(id, SymOvalBath);
    put(64, SymCornerBath);
    for (int id : {66, 268})
        put(id, SymShowerTray);
    for (int id : {77, 80})
        put(id, SymQuadrantShower);
    for (int id : {223, 813})
        put(id, SymWalkInShower);
    for (int id : {70, 71})
        put(id, SymToilet);
    put(72, SymBidet);
    for (int id : {73, 74})
        put(id, SymBasin);
    put(812, SymBowlBasin);
    put(75, SymUrinal);
    for (int id : {82, 222})
        put(id, SymRadiator);
    put(107, SymHotTub);
    put(269, SymSauna);
    put(224, SymBasket);
    put(227, SymMirror);
    put(156, SymIroningBoard);
    put(220, SymAirer);
    for (int id : {134, 135, 136})
        put(id, SymWallBox);
}
