// Plan symbols of chairs, sofas, tables, desks and beds.

#include "CVxPart.h"
#include "CVxPartLibDraw.h"

namespace {

// Seat cushions between the arms of a sofa, from the back rest to the front.
void Cushions(const SVxLibSym& s, double u1, double u2, double v1, double v2, int seats)
{
    const double step = (u2 - u1) / seats;
    for (int i = 0; i < seats; ++i)
        s.Round(u1 + i * step, v1, u1 + (i + 1) * step, v2);
}

void SymChair(const SVxLibSym& s)
{
    LibSymChair(s);
}

void SymArmchair(const SVxLibSym& s)
{
    LibSymArmchair(s, 1);
}

void SymSofa(const SVxLibSym& s)
{
    int seats = 2;
    if (s.libId == 48 || s.libId == 818)
        seats = 3;
    else if (s.libId == 289 || s.libId == 808)
        seats = 4;
    LibSymArmchair(s, seats);
}

void SymOfficeChair(const SVxLibSym& s)
{
    // Five castors under a round seat, the back rest curved behind it.
    for (int i = 0; i < 5; ++i) {
        static const double tips[5][2] = {{0.5, 0.0}, {0.98, 0.35}, {0.8, 0.95}, {0.2, 0.95}, {0.02, 0.35}};
        s.Seg(0.5, 0.5, tips[i][0], tips[i][1]);
    }
    s.Oval(0.15, 0.2, 0.85, 0.9);
    s.Poly({0.15, 0.2, 0.3, 0.05, 0.7, 0.05, 0.85, 0.2, 0.75, 0.25, 0.25, 0.25});
    if (s.libId != 806) {
        s.Quad(0.02, 0.35, 0.12, 0.75);
        s.Quad(0.88, 0.35, 0.98, 0.75);
    }
}

void SymStool(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.FrontOval(0.15, 0.15, 0.85, 0.85);
    if (s.libId == 42) {
        CVxSymBrush hollow(s, 0, true);
        s.Oval(0.3, 0.3, 0.7, 0.7);
    }
}

void SymOttoman(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1, true);
    s.FrontQuad(0.1, 0.1, 0.9, 0.9);
    s.Seg(0.1, 0.1, 0.9, 0.9);
    s.Seg(0.9, 0.1, 0.1, 0.9);
}

void SymRockingChair(const SVxLibSym& s)
{
    // The rockers run from back to front beyond the seat.
    s.Bezier({0.08, 0.0, 0.0, 0.35, 0.0, 0.7, 0.12, 1.0});
    s.Bezier({0.92, 0.0, 1.0, 0.35, 1.0, 0.7, 0.88, 1.0});
    LibSymChair(s.Sub(0.1, 0.05, 0.9, 0.9));
}

void SymLounger(const SVxLibSym& s)
{
    // A long seat whose head part is raised: the fold is a cross line.
    s.Round(0, 0, 1, 1);
    s.Quad(0.05, 0.03, 0.95, 0.3);
    s.Seg(0.05, 0.65, 0.95, 0.65);
    for (int i = 1; i < 5; ++i)
        s.Seg(0.05, 0.3 + i * 0.07, 0.95, 0.3 + i * 0.07);
}

void SymBench(const SVxLibSym& s)
{
    s.Outline();
    const int slats = s.libId == 178 ? 3 : 2;
    for (int i = 1; i < slats; ++i)
        s.Seg(0, static_cast<double>(i) / slats, 1, static_cast<double>(i) / slats);
    if (s.libId == 178) {
        s.Quad(0, 0, 1, 0.2);
        s.Quad(0, 0, 0.05, 1);
        s.Quad(0.95, 0, 1, 1);
    }
}

void SymChaiseLongue(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    s.Quad(0, 0, 0.15, 1);
    s.Round(0.17, 0.05, 0.4, 0.95);
    s.Round(0.4, 0.05, 0.98, 0.95);
}

void SymCornerSofa(const SVxLibSym& s)
{
    // An L of seats: the long back along v = 0 and the extension on the
    // left (298) or on the right (299).
    const SVxLibSym f = s.libId == 299 ? s.Mirrored() : s;
    f.Poly({0, 0, 1, 0, 1, 0.45, 0.45, 0.45, 0.45, 1, 0, 1});
    f.Quad(0, 0, 1, 0.12);
    f.Quad(0.95, 0.12, 1, 0.45);
    f.Quad(0, 0.12, 0.12, 1);
    f.Quad(0.12, 0.95, 0.45, 1);
    Cushions(f, 0.45, 0.95, 0.12, 0.45, 2);
    f.Round(0.12, 0.12, 0.45, 0.45);
    f.Round(0.12, 0.45, 0.45, 0.95);
}

void SymCornerBench(const SVxLibSym& s)
{
    s.Poly({0, 0, 1, 0, 1, 0.3, 0.3, 0.3, 0.3, 1, 0, 1});
    s.Seg(0, 0, 0.3, 0.3);
}

void SymBeanbag(const SVxLibSym& s)
{
    s.Bezier({0.5, 0.0, 1.1, 0.0, 1.0, 1.05, 0.5, 1.0, 0.0, 1.05, -0.1, 0.0, 0.5, 0.0});
    s.Oval(0.25, 0.35, 0.75, 0.8);
}

void SymHighchair(const SVxLibSym& s)
{
    s.Poly({0.0, 0.0, 1.0, 0.0, 0.9, 1.0, 0.1, 1.0});
    LibSymChair(s.Sub(0.2, 0.1, 0.8, 0.6));
    s.Round(0.1, 0.6, 0.9, 0.95);
}

void SymFootstool(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    s.Round(0.1, 0.1, 0.9, 0.9);
}

// Tables.

void SymRoundTable(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush hollow(s, 0, true);
    s.Oval(0.08, 0.08, 0.92, 0.92);
}

void SymRoundTableChairs(const SVxLibSym& s)
{
    LibSymTableWithChairs(s, 1, 1, true);
}

void SymDiningTable(const SVxLibSym& s)
{
    switch (s.libId) {
    case 28:
        LibSymTableWithChairs(s, 2, 0, false);
        break;
    case 29:
    case 820:
        LibSymTableWithChairs(s, 3, 0, false);
        break;
    case 30:
        LibSymTableWithChairs(s, 1, 1, false);
        break;
    case 51:
        LibSymTableWithChairs(s, 2, 1, true);
        break;
    default:
        LibSymTableWithChairs(s, 0, 0, false);
        break;
    }
}

void SymPlainTable(const SVxLibSym& s)
{
    s.Outline();
    // The boards of an extending top.
    s.Seg(0.45, 0, 0.45, 1);
    s.Seg(0.55, 0, 0.55, 1);
}

void SymOvalTable(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush light(s, 0.4);
    s.Oval(0.1, 0.12, 0.9, 0.88);
}

void SymOctagonTable(const SVxLibSym& s)
{
    s.Poly({0.3, 0, 0.7, 0, 1, 0.3, 1, 0.7, 0.7, 1, 0.3, 1, 0, 0.7, 0, 0.3});
    s.Poly({0.33, 0.08, 0.67, 0.08, 0.92, 0.33, 0.92, 0.67, 0.67, 0.92, 0.33, 0.92, 0.08, 0.67, 0.08, 0.33});
}

void SymOctagonTableChairs(const SVxLibSym& s)
{
    // Sub-type 1 seats eight, the plain one four.
    const bool eight = s.part && s.part->subType == 1;
    LibSymChair(s.Sub(0.38, 0, 0.62, 0.22, 0));
    LibSymChair(s.Sub(0.78, 0.38, 1, 0.62, 1));
    LibSymChair(s.Sub(0.38, 0.78, 0.62, 1, 2));
    LibSymChair(s.Sub(0, 0.38, 0.22, 0.62, 3));
    if (eight) {
        LibSymChair(s.Sub(0.72, 0.06, 0.94, 0.28, 1));
        LibSymChair(s.Sub(0.72, 0.72, 0.94, 0.94, 2));
        LibSymChair(s.Sub(0.06, 0.72, 0.28, 0.94, 3));
        LibSymChair(s.Sub(0.06, 0.06, 0.28, 0.28, 0));
    }
    SymOctagonTable(s.Sub(0.15, 0.15, 0.85, 0.85));
}

void SymHexagonTable(const SVxLibSym& s)
{
    s.Poly({0.25, 0, 0.75, 0, 1, 0.5, 0.75, 1, 0.25, 1, 0, 0.5});
    s.Poly({0.3, 0.1, 0.7, 0.1, 0.9, 0.5, 0.7, 0.9, 0.3, 0.9, 0.1, 0.5});
}

void SymCoffeeTable(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    CVxSymBrush glass(s, 0.6);
    s.Round(0.08, 0.12, 0.92, 0.88);
}

void SymOvalCoffeeTable(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.Seg(0.2, 0.5, 0.8, 0.5);
}

void SymSideTable(const SVxLibSym& s)
{
    s.Outline();
    s.Seg(0, 0, 1, 1);
    s.Seg(1, 0, 0, 1);
}

void SymRoundSideTable(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.Oval(0.35, 0.35, 0.65, 0.65);
}

void SymConsole(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.03, 0.1, 0.97, 0.9);
}

void SymNestOfTables(const SVxLibSym& s)
{
    s.Quad(0, 0, 1, 1);
    s.Quad(0.1, 0, 0.9, 0.9);
    s.Quad(0.2, 0, 0.8, 0.8);
}

void SymUmbrellaTable(const SVxLibSym& s)
{
    LibSymTableWithChairs(s, 1, 1, true);
    CVxSymBrush hollow(s, 0, true);
    s.Poly({0.5, 0.0, 0.85, 0.15, 1.0, 0.5, 0.85, 0.85, 0.5, 1.0, 0.15, 0.85, 0.0, 0.5, 0.15, 0.15});
    s.Seg(0.5, 0, 0.5, 1);
    s.Seg(0, 0.5, 1, 0.5);
}

// Desks: the top, drawers in the front colour, the chair in front.

void SymDesk(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0.7, 0.05, 0.97, 0.95);
    s.Seg(0.7, 0.35, 0.97, 0.35);
    s.Seg(0.7, 0.65, 0.97, 0.65);
    if (s.libId == 34 || s.libId == 816) {
        s.FrontQuad(0.03, 0.05, 0.3, 0.95);
        s.Seg(0.03, 0.5, 0.3, 0.5);
    }
    if (s.libId == 816) {
        CVxSymBrush hollow(s, 0, true);
        s.Quad(0.35, 0.1, 0.65, 0.4);
    }
}

void SymCornerDesk(const SVxLibSym& s)
{
    s.Poly({0, 0, 1, 0, 1, 0.45, 0.5, 0.45, 0.5, 1, 0, 1});
    s.FrontQuad(0.05, 0.7, 0.45, 0.97);
    s.Seg(0, 0, 0.5, 0.45);
}

void SymDressingTable(const SVxLibSym& s)
{
    s.Outline();
    s.FrontQuad(0.05, 0.3, 0.3, 0.95);
    s.FrontQuad(0.7, 0.3, 0.95, 0.95);
    CVxSymBrush mirror(s, 0.7);
    s.Quad(0.3, 0.0, 0.7, 0.12);
}

// Beds: head board at the back, pillows, and the cover folded back.

void Bed(const SVxLibSym& s, int pillows)
{
    s.Outline();
    s.Quad(0, 0, 1, 0.06);
    {
        CVxSymBrush light(s, 0.6);
        const double gap = 0.06;
        const double w = (1 - gap * (pillows + 1)) / pillows;
        for (int i = 0; i < pillows; ++i)
            s.Round(gap + i * (w + gap), 0.09, gap + i * (w + gap) + w, 0.22);
    }
    s.Quad(0.02, 0.3, 0.98, 0.98);
    CVxSymBrush light(s, 0.35);
    s.Poly({0.02, 0.3, 0.98, 0.3, 0.98, 0.4, 0.02, 0.4});
    s.Poly({0.75, 0.4, 0.98, 0.4, 0.98, 0.58});
}

void SymBed(const SVxLibSym& s)
{
    const bool dbl = s.libId == 56 || s.libId == 59 || s.libId == 809;
    if (s.libId == 809) {
        s.Outline();
        Bed(s.Sub(0.06, 0.0, 0.94, 0.94), 2);
        return;
    }
    Bed(s, dbl ? 2 : 1);
}

void SymBunkBed(const SVxLibSym& s)
{
    Bed(s.Sub(0, 0, 0.88, 1), 1);
    s.Quad(0.88, 0, 1, 1);
    for (int i = 1; i < 6; ++i)
        s.Seg(0.88, i / 6.0, 1, i / 6.0);
}

void SymCot(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.04, 0.06, 0.96, 0.94);
    for (int i = 1; i < 10; ++i) {
        s.Seg(i / 10.0, 0, i / 10.0, 0.06);
        s.Seg(i / 10.0, 0.94, i / 10.0, 1);
    }
    CVxSymBrush light(s, 0.6);
    s.Round(0.3, 0.1, 0.7, 0.25);
}

void SymFuton(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    s.Seg(0, 0.33, 1, 0.33);
    s.Seg(0, 0.66, 1, 0.66);
}

void SymHammock(const SVxLibSym& s)
{
    s.Seg(0.5, 0, 0.5, 0.12);
    s.Seg(0.5, 0.88, 0.5, 1);
    s.Bezier({0.5, 0.12, 1.0, 0.3, 1.0, 0.7, 0.5, 0.88, 0.0, 0.7, 0.0, 0.3, 0.5, 0.12});
}

} // namespace

void LibSymChair(const SVxLibSym& s)
{
    s.Round(0.1, 0.15, 0.9, 0.97);
    s.Quad(0.05, 0, 0.95, 0.18);
}

void LibSymArmchair(const SVxLibSym& s, int seats)
{
    s.Round(0, 0, 1, 1);
    const double arm = seats > 1 ? 0.12 / seats * 2 : 0.16;
    s.Quad(0, 0, 1, 0.25);
    s.Round(0, 0, arm, 1);
    s.Round(1 - arm, 0, 1, 1);
    CVxSymBrush light(s, 0.25);
    Cushions(s, arm, 1 - arm, 0.25, 0.95, seats);
}

void LibSymTableWithChairs(const SVxLibSym& s, int acrossWidth, int alongDepth, bool round)
{
    const double mv = acrossWidth > 0 ? 0.22 : 0.0;
    const double mu = alongDepth > 0 ? 0.18 : 0.0;
    for (int i = 0; i < acrossWidth; ++i) {
        const double slot = (1 - 2 * mu) / acrossWidth;
        const double a = mu + slot * (i + 0.15);
        const double b = mu + slot * (i + 0.85);
        LibSymChair(s.Sub(a, 0, b, mv + 0.06, 0));
        LibSymChair(s.Sub(a, 1 - mv - 0.06, b, 1, 2));
    }
    for (int i = 0; i < alongDepth; ++i) {
        const double slot = (1 - 2 * mv) / alongDepth;
        const double a = mv + slot * (i + 0.2);
        const double b = mv + slot * (i + 0.8);
        LibSymChair(s.Sub(0, a, mu + 0.05, b, 3));
        LibSymChair(s.Sub(1 - mu - 0.05, a, 1, b, 1));
    }
    if (round)
        s.Oval(mu, mv, 1 - mu, 1 - mv);
    else
        s.Quad(mu, mv, 1 - mu, 1 - mv);
}

void LibSymRegisterSeating(FnLibSym* table)
{
    auto put = [table](int id, FnLibSym fn) { table[id - kLibSymFirst] = fn; };
    for (int id : {39, 43, 261})
        put(id, SymChair);
    put(288, SymBench);
    for (int id : {40, 243, 244, 801, 803})
        put(id, SymArmchair);
    for (int id : {47, 48, 289, 290, 808, 818})
        put(id, SymSofa);
    for (int id : {41, 806})
        put(id, SymOfficeChair);
    for (int id : {33, 42, 253})
        put(id, SymStool);
    put(81, SymOttoman);
    put(44, SymRockingChair);
    for (int id : {45, 177})
        put(id, SymLounger);
    for (int id : {46, 178})
        put(id, SymBench);
    put(49, SymChaiseLongue);
    for (int id : {298, 299})
        put(id, SymCornerSofa);
    put(201, SymCornerBench);
    put(245, SymBeanbag);
    put(160, SymHighchair);
    put(291, SymFootstool);

    put(25, SymOctagonTable);
    put(26, SymRoundTable);
    for (int id : {27, 262})
        put(id, SymRoundTableChairs);
    for (int id : {28, 29, 30, 51, 820})
        put(id, SymDiningTable);
    put(31, SymPlainTable);
    put(50, SymOvalTable);
    put(68, SymHexagonTable);
    put(69, SymOctagonTableChairs);
    put(52, SymCoffeeTable);
    put(248, SymOvalCoffeeTable);
    put(292, SymSideTable);
    put(294, SymRoundSideTable);
    for (int id : {293, 810})
        put(id, SymConsole);
    put(295, SymNestOfTables);
    put(112, SymUmbrellaTable);
    for (int id : {32, 34, 816})
        put(id, SymDesk);
    put(35, SymCornerDesk);
    put(252, SymDressingTable);
    for (int id : {55, 56, 59, 809})
        put(id, SymBed);
    put(57, SymBunkBed);
    put(58, SymCot);
    put(247, SymFuton);
    put(260, SymHammock);
}
