// Plan symbols of the garden, vehicles, lights, sport and leisure, roofs and
// the drawing symbols.

#include "CVxPart.h"
#include "CVxPartLibDraw.h"

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979;

// A crown of leaves: scalloped outline around the trunk, `lobes` bulges.
void Crown(const SVxLibSym& s, int lobes, double inner)
{
    VxPOINT pts[3 * 16 + 1];
    const int n = lobes > 16 ? 16 : lobes;
    for (int i = 0; i < n; ++i) {
        const double a0 = 2 * kPi * i / n;
        const double a1 = 2 * kPi * (i + 1) / n;
        const double am = (a0 + a1) / 2;
        const double out = 0.5 / std::cos(kPi / n) * 1.15;
        if (i == 0)
            pts[0] = s.P(0.5 + inner * 0.5 * std::sin(a0), 0.5 - inner * 0.5 * std::cos(a0));
        pts[3 * i + 1] = s.P(0.5 + out * std::sin(am - 0.25 / n * 2 * kPi) * 0.85,
                             0.5 - out * std::cos(am - 0.25 / n * 2 * kPi) * 0.85);
        pts[3 * i + 2] = s.P(0.5 + out * std::sin(am + 0.25 / n * 2 * kPi) * 0.85,
                             0.5 - out * std::cos(am + 0.25 / n * 2 * kPi) * 0.85);
        pts[3 * i + 3] = s.P(0.5 + inner * 0.5 * std::sin(a1), 0.5 - inner * 0.5 * std::cos(a1));
    }
    s.dc->BeginPath();
    s.dc->PolyBezier(pts, 3 * n + 1);
    s.dc->EndPath();
    s.dc->StrokeAndFillPath();
}

void SymTree(const SVxLibSym& s)
{
    Crown(s, s.libId == 97 ? 7 : 11, 0.85);
    if (s.libId != 97) {
        CVxSymBrush dark(s, 0x2F4F6F, false);
        s.Oval(0.44, 0.44, 0.56, 0.56);
    }
}

void SymConifer(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    for (int i = 0; i < 8; ++i) {
        const double a = i * kPi / 4;
        s.Lines({0.5, 0.5, 0.5 + 0.45 * std::sin(a), 0.5 - 0.45 * std::cos(a), 0.5 + 0.35 * std::sin(a + 0.3),
                 0.5 - 0.35 * std::cos(a + 0.3)});
    }
}

void SymPalm(const SVxLibSym& s)
{
    for (int i = 0; i < 7; ++i) {
        const double a = i * 2 * kPi / 7;
        const double c = std::cos(a);
        const double n = std::sin(a);
        s.Poly({0.5, 0.5, 0.5 + 0.3 * n + 0.08 * c, 0.5 - 0.3 * c + 0.08 * n, 0.5 + 0.5 * n, 0.5 - 0.5 * c,
                0.5 + 0.3 * n - 0.08 * c, 0.5 - 0.3 * c - 0.08 * n});
    }
    s.Oval(0.42, 0.42, 0.58, 0.58);
}

void SymPottedPlant(const SVxLibSym& s)
{
    if (s.libId == 152)
        s.Poly({0.25, 0, 0.75, 0, 1, 0.5, 0.75, 1, 0.25, 1, 0, 0.5});
    else if (s.libId == 257 || s.libId == 297)
        s.Outline();
    else
        s.Oval(0, 0, 1, 1);
    CVxSymBrush leaves(s, 0x50A050, false);
    Crown(s.Sub(0.15, 0.15, 0.85, 0.85), 6, 0.6);
}

void SymFlowerBed(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush bloom(s, 0x7070E0, false);
    static const double spots[7][2] = {{0.5, 0.5},  {0.3, 0.35}, {0.7, 0.35}, {0.25, 0.6},
                                       {0.75, 0.6}, {0.5, 0.2},  {0.5, 0.8}};
    for (const auto& p : spots)
        s.Oval(p[0] - 0.06, p[1] - 0.06, p[0] + 0.06, p[1] + 0.06);
}

void SymPond(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush water(s, 0xE0B070, false);
    s.Oval(0.08, 0.1, 0.92, 0.9);
    s.Bezier({0.3, 0.45, 0.4, 0.4, 0.5, 0.5, 0.6, 0.45});
    s.Bezier({0.35, 0.6, 0.45, 0.55, 0.55, 0.65, 0.65, 0.6});
}

void SymGazebo(const SVxLibSym& s)
{
    s.Poly({0.3, 0, 0.7, 0, 1, 0.3, 1, 0.7, 0.7, 1, 0.3, 1, 0, 0.7, 0, 0.3});
    s.Seg(0.3, 0, 0.7, 1);
    s.Seg(0.7, 0, 0.3, 1);
    s.Seg(0, 0.3, 1, 0.7);
    s.Seg(0, 0.7, 1, 0.3);
}

void SymPool(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush water(s, 0xF0C878, false);
    s.Quad(0.04, 0.06, 0.96, 0.94);
    // The ladder at the shallow end.
    s.Seg(0.06, 0.35, 0.12, 0.35);
    s.Seg(0.06, 0.45, 0.12, 0.45);
    s.Seg(0.06, 0.55, 0.12, 0.55);
}

void SymSurface(const SVxLibSym& s)
{
    // Lawn as short strokes, paving as a joint grid.
    s.Outline();
    if (s.libId == 115 || s.libId == 250) {
        for (int i = 1; i < 4; ++i) {
            s.Seg(i / 4.0, 0, i / 4.0, 1);
            s.Seg(0, i / 4.0, 1, i / 4.0);
        }
        return;
    }
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j)
            s.Lines({0.1 + i * 0.2 - 0.03, 0.12 + j * 0.2, 0.1 + i * 0.2, 0.06 + j * 0.2,
                     0.1 + i * 0.2 + 0.03, 0.12 + j * 0.2});
}

void SymRoundRug(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.Oval(0.08, 0.08, 0.92, 0.92);
    if (s.libId == 104)
        s.Oval(0.3, 0.3, 0.7, 0.7);
}

void SymCar(const SVxLibSym& s)
{
    // A car seen from above, its bonnet towards u = 1.
    s.Round(0, 0.05, 1, 0.95, true);
    s.Poly({0.3, 0.15, 0.62, 0.18, 0.62, 0.82, 0.3, 0.85});
    CVxSymBrush glass(s, 0xD8C8B0, false);
    s.Poly({0.62, 0.18, 0.72, 0.12, 0.72, 0.88, 0.62, 0.82});
    s.Poly({0.3, 0.15, 0.22, 0.12, 0.22, 0.88, 0.3, 0.85});
    s.Quad(0.5, 0.0, 0.55, 0.05);
    s.Quad(0.5, 0.95, 0.55, 1.0);
}

void SymTwoWheeler(const SVxLibSym& s)
{
    s.Round(0, 0.4, 0.3, 0.6);
    s.Round(0.7, 0.4, 1, 0.6);
    s.Seg(0.15, 0.5, 0.85, 0.5);
    s.Seg(0.75, 0.1, 0.75, 0.9);
    if (s.libId == 109)
        s.Round(0.35, 0.3, 0.65, 0.7);
    else
        s.Quad(0.3, 0.42, 0.42, 0.58);
}

void SymParking(const SVxLibSym& s)
{
    CVxSymBrush hollow(s, 0, true);
    s.Lines({0, 0, 0, 1, 1, 1, 1, 0});
    SymCar(s.Sub(0.1, 0.1, 0.9, 0.9, 1));
}

void SymShed(const SVxLibSym& s)
{
    // A building seen from above: its ridge and the door at the front.
    s.Outline();
    s.Seg(0, 0.5, 1, 0.5);
    s.Seg(0, 0, 0.15, 0.5);
    s.Seg(0, 1, 0.15, 0.5);
    s.Seg(1, 0, 0.85, 0.5);
    s.Seg(1, 1, 0.85, 0.5);
}

void SymHedge(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1, true);
    for (int i = 0; i < 6; ++i)
        s.Bezier({i / 6.0, 0.2, i / 6.0 + 0.05, 0.0, i / 6.0 + 0.12, 0.0, (i + 1) / 6.0, 0.2});
}

void SymFence(const SVxLibSym& s)
{
    s.Seg(0, 0.5, 1, 0.5);
    const int posts = s.libId == 192 ? 2 : 6;
    for (int i = 0; i < posts; ++i) {
        const double u = posts == 2 ? i * 0.9 : i / 5.0 * 0.9;
        s.Quad(u, 0, u + 0.1, 1);
    }
    if (s.libId == 192) {
        CVxSymBrush hollow(s, 0, true);
        s.Bezier({0.9, 0.5, 0.9, 4.0, 0.1, 4.0, 0.1, 0.5});
    }
}

void SymTank(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.Oval(0.35, 0.35, 0.65, 0.65);
    s.Seg(0.5, 0.0, 0.5, 0.35);
}

void SymBarbecue(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    s.Quad(0.1, 0.15, 0.7, 0.85);
    for (int i = 1; i < 6; ++i)
        s.Seg(0.1 + i * 0.1, 0.15, 0.1 + i * 0.1, 0.85);
    s.Quad(0.75, 0.2, 0.95, 0.8);
}

void SymFirePit(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush ember(s, 0x3060D0, false);
    s.Oval(0.2, 0.2, 0.8, 0.8);
    s.Lines({0.35, 0.65, 0.5, 0.3, 0.65, 0.65});
}

void SymSwing(const SVxLibSym& s)
{
    s.Quad(0, 0, 0.06, 1);
    s.Quad(0.94, 0, 1, 1);
    s.Seg(0.06, 0.5, 0.94, 0.5);
    s.Quad(0.2, 0.4, 0.4, 0.6);
    s.Quad(0.6, 0.4, 0.8, 0.6);
}

void SymSandpit(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush sand(s, 0x90D8F0, false);
    s.Quad(0.06, 0.06, 0.94, 0.94);
}

void SymTrampoline(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush mat(s, 0x303030, false);
    s.Oval(0.1, 0.1, 0.9, 0.9);
}

void SymPlayPen(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.04, 0.04, 0.96, 0.96);
    for (int i = 1; i < 8; ++i) {
        s.Seg(i / 8.0, 0, i / 8.0, 0.04);
        s.Seg(i / 8.0, 0.96, i / 8.0, 1);
    }
}

// Lights: the lamp's shade and the cross of a light point.
void SymLamp(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.Oval(0.3, 0.3, 0.7, 0.7);
    s.Seg(0.15, 0.15, 0.85, 0.85);
    s.Seg(0.85, 0.15, 0.15, 0.85);
}

void SymWallLight(const SVxLibSym& s)
{
    s.Quad(0.3, 0.0, 0.7, 0.2);
    s.Bezier({0.1, 0.2, 0.1, 1.1, 0.9, 1.1, 0.9, 0.2});
    s.Seg(0.1, 0.2, 0.9, 0.2);
}

void SymFan(const SVxLibSym& s)
{
    s.Oval(0.4, 0.4, 0.6, 0.6);
    s.Poly({0.45, 0.42, 0.4, 0.0, 0.6, 0.0, 0.55, 0.42});
    s.Poly({0.58, 0.45, 1.0, 0.4, 1.0, 0.6, 0.58, 0.55});
    s.Poly({0.55, 0.58, 0.6, 1.0, 0.4, 1.0, 0.45, 0.58});
    s.Poly({0.42, 0.55, 0.0, 0.6, 0.0, 0.4, 0.42, 0.45});
}

void SymPanel(const SVxLibSym& s)
{
    s.Outline();
    s.Lines({0.55, 0.15, 0.35, 0.55, 0.6, 0.5, 0.45, 0.9});
}

// Sport and leisure.

void SymTreadmill(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    CVxSymBrush belt(s, 0x404040, false);
    s.Quad(0.05, 0.2, 0.8, 0.8);
    s.Quad(0.82, 0.0, 0.95, 1.0);
}

void SymExerciseBike(const SVxLibSym& s)
{
    s.Quad(0.0, 0.4, 0.3, 0.6);
    s.Seg(0.15, 0.5, 0.8, 0.5);
    s.Quad(0.75, 0.1, 0.85, 0.9);
    s.Round(0.4, 0.35, 0.6, 0.65);
}

void SymBilliard(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1);
    CVxSymBrush cloth(s, 0x408020, false);
    s.Quad(0.05, 0.08, 0.95, 0.92);
    CVxSymBrush pocket(s, 0, false);
    static const double pockets[6][2] = {{0.05, 0.08}, {0.5, 0.08}, {0.95, 0.08},
                                         {0.05, 0.92}, {0.5, 0.92}, {0.95, 0.92}};
    for (const auto& p : pockets)
        s.Oval(p[0] - 0.025, p[1] - 0.05, p[0] + 0.025, p[1] + 0.05);
}

void SymTableTennis(const SVxLibSym& s)
{
    CVxSymBrush top(s, 0x804020, false);
    s.Outline();
    CVxSymPen white(s, CVxDC::penSolid, 1);
    s.Seg(0, 0.5, 1, 0.5);
    s.Seg(0.5, 0, 0.5, 1);
}

void SymPetBed(const SVxLibSym& s)
{
    s.Round(0, 0, 1, 1, true);
    s.Round(0.15, 0.15, 0.85, 0.85, true);
    if (s.libId == 258)
        s.Oval(0.3, 0.3, 0.7, 0.7);
}

void SymPrinter(const SVxLibSym& s)
{
    s.Round(0, 0.2, 1, 1);
    s.Quad(0.2, 0.0, 0.8, 0.3);
    s.Quad(0.2, 0.85, 0.8, 1.0);
}

void SymTrolley(const SVxLibSym& s)
{
    s.Outline();
    s.Oval(0.0, 0.0, 0.12, 0.2);
    s.Oval(0.88, 0.0, 1.0, 0.2);
    s.Oval(0.0, 0.8, 0.12, 1.0);
    s.Oval(0.88, 0.8, 1.0, 1.0);
    for (int i = 0; i < 4; ++i)
        s.Oval(0.2 + i * 0.16, 0.35, 0.3 + i * 0.16, 0.65);
}

// Pictures laid on the floor: the frame and a landscape mark.
void SymPicture(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.05, 0.05, 0.95, 0.95);
    s.Lines({0.1, 0.85, 0.35, 0.45, 0.55, 0.7, 0.7, 0.55, 0.9, 0.85});
    s.Oval(0.65, 0.15, 0.8, 0.3);
}

// Roofs seen from above: ridges and the fall lines of the slopes.
void SymRoof(const SVxLibSym& s)
{
    s.Outline();
    switch (s.libId) {
    case 121:
        s.Seg(0, 0, 1, 1);
        s.Seg(1, 0, 0, 1);
        break;
    case 123:
        for (int i = 1; i < 5; ++i)
            s.Seg(i / 5.0, 0.05, i / 5.0, 0.95);
        s.Poly({0.5, 0.95, 0.46, 0.85, 0.54, 0.85});
        break;
    default:
        s.Seg(0, 0.5, 1, 0.5);
        for (int i = 1; i < 5; ++i) {
            s.Seg(i / 5.0, 0.05, i / 5.0, 0.45);
            s.Seg(i / 5.0, 0.55, i / 5.0, 0.95);
        }
        break;
    }
}

// Symbols of the drawing.

void SymSocket(const SVxLibSym& s)
{
    s.Bezier({0.0, 1.0, 0.0, 0.2, 1.0, 0.2, 1.0, 1.0});
    s.Seg(0, 1, 1, 1);
    s.Seg(0.5, 0.4, 0.5, 0.0);
}

void SymPerson(const SVxLibSym& s)
{
    // Shoulders and head of a person seen from above, for scale.
    s.Oval(0.0, 0.25, 1.0, 0.75);
    s.Oval(0.3, 0.22, 0.7, 0.78);
    s.Poly({0.45, 0.78, 0.55, 0.78, 0.5, 0.9});
}

void SymRobotVacuum(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    s.Bezier({0.15, 0.3, 0.35, 0.1, 0.65, 0.1, 0.85, 0.3});
    s.Oval(0.42, 0.42, 0.58, 0.58);
}

void SymUmbrellaStand(const SVxLibSym& s)
{
    s.Oval(0, 0, 1, 1);
    CVxSymBrush hollow(s, 0, true);
    s.Oval(0.3, 0.3, 0.6, 0.6);
    s.Oval(0.45, 0.35, 0.8, 0.7);
}

} // namespace

void LibSymRegisterGardenOther(FnLibSym* table)
{
    auto put = [table](int id, FnLibSym fn) { table[id - kLibSymFirst] = fn; };
    for (int id : {96, 97})
        put(id, SymTree);
    put(98, SymConifer);
    put(100, SymPalm);
    for (int id : {95, 152, 251, 257, 297})
        put(id, SymPottedPlant);
    for (int id : {99, 103})
        put(id, SymFlowerBed);
    put(102, SymPond);
    put(101, SymGazebo);
    put(111, SymPool);
    for (int id : {114, 115, 250})
        put(id, SymSurface);
    for (int id : {104, 249})
        put(id, SymRoundRug);
    put(105, SymCar);
    for (int id : {109, 110})
        put(id, SymTwoWheeler);
    put(193, SymParking);
    put(189, SymShed);
    put(190, SymHedge);
    for (int id : {191, 192})
        put(id, SymFence);
    put(194, SymTank);
    put(182, SymBarbecue);
    put(819, SymFirePit);
    put(183, SymSwing);
    put(184, SymSandpit);
    put(186, SymTrampoline);
    put(259, SymPlayPen);
    for (int id : {130, 131, 815})
        put(id, SymLamp);
    put(132, SymWallLight);
    put(133, SymFan);
    put(137, SymPanel);
    put(141, SymTreadmill);
    put(142, SymExerciseBike);
    put(150, SymBilliard);
    put(151, SymTableTennis);
    for (int id : {153, 258})
        put(id, SymPetBed);
    put(255, SymPrinter);
    put(296, SymTrolley);
    for (int id : {171, 267})
        put(id, SymPicture);
    for (int id : {121, 123, 124})
        put(id, SymRoof);
    put(226, SymSocket);
    put(399, SymPerson);
    put(157, SymRobotVacuum);
    put(159, SymUmbrellaStand);
}
