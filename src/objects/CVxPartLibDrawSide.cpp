// Side elevations of library objects: the same quadrilateral as in plan,
// with the object's 3D height in place of its depth. v = 0 is the top of the
// object, v = 1 the floor it stands on; side 0 looks at its front.

#include "CVxPart.h"
#include "CVxPartLibDraw.h"

namespace {

// A knob or bar handle in the middle of (u, v).
void Handle(const SVxLibSym& s, double u, double v, bool vertical)
{
    if (vertical)
        s.Quad(u - 0.01, v - 0.06, u + 0.01, v + 0.06);
    else
        s.Quad(u - 0.06, v - 0.01, u + 0.06, v + 0.01);
}

// Doors side by side between v1 and v2, each with its handle next to the
// meeting edge.
void Doors(const SVxLibSym& s, int doors, double v1, double v2)
{
    for (int i = 0; i < doors; ++i) {
        const double u1 = 0.02 + 0.96 * i / doors;
        const double u2 = 0.02 + 0.96 * (i + 1) / doors;
        s.FrontQuad(u1, v1, u2, v2);
        const bool leftHung = doors == 1 || i % 2 == 0;
        Handle(s, leftHung ? u2 - 0.05 : u1 + 0.05, v1 + (v2 - v1) * 0.3, true);
    }
}

void Drawers(const SVxLibSym& s, int drawers, double v1, double v2)
{
    for (int i = 0; i < drawers; ++i) {
        const double a = v1 + (v2 - v1) * i / drawers;
        const double b = v1 + (v2 - v1) * (i + 1) / drawers;
        s.FrontQuad(0.02, a + 0.01, 0.98, b - 0.01);
        Handle(s, 0.5, (a + b) / 2, false);
    }
}

bool IsWallHung(int libId)
{
    return libId == 202 || libId == 211 || libId == 232 || libId == 83;
}

bool CabinetFront(const SVxLibSym& s)
{
    s.Outline();
    const double plinth = IsWallHung(s.libId) ? 1.0 : 0.92;
    if (plinth < 1)
        s.Seg(0, plinth, 1, plinth);
    switch (s.libId) {
    case 203:
    case 215:
    case 254:
        Drawers(s, 4, 0.02, plinth);
        break;
    case 20:
    case 212:
    case 233:
        Doors(s, 1, 0.02, 0.6);
        Doors(s, 1, 0.62, plinth);
        break;
    case 205:
    case 217:
    case 234:
        Doors(s, 3, 0.02, plinth);
        break;
    case 206:
        Drawers(s, 1, 0.02, 0.3);
        Doors(s, 1, 0.32, plinth);
        break;
    default:
        Drawers(s, 1, 0.02, 0.2);
        Doors(s, 2, 0.22, plinth);
        break;
    }
    return true;
}

bool WardrobeFront(const SVxLibSym& s)
{
    s.Outline();
    const int doors = s.libId == 208 ? 3 : 2;
    if (s.libId == 277) {
        // Two sliding doors, the front one overlapping.
        s.FrontQuad(0.0, 0.0, 0.52, 0.97);
        s.FrontQuad(0.48, 0.0, 1.0, 0.97);
        s.Seg(0.0, 0.5, 0.52, 0.5);
        return true;
    }
    Doors(s, doors, 0.01, 0.97);
    return true;
}

bool BookcaseFront(const SVxLibSym& s)
{
    s.Outline();
    const int shelves = 5;
    for (int i = 1; i < shelves; ++i)
        s.Seg(0.03, static_cast<double>(i) / shelves, 0.97, static_cast<double>(i) / shelves);
    // Books standing on the shelves.
    CVxSymBrush light(s, 0.5);
    for (int row = 0; row < shelves; ++row) {
        const double top = static_cast<double>(row) / shelves + 0.05;
        const double bottom = static_cast<double>(row + 1) / shelves;
        for (int i = 0; i < 5; ++i)
            s.Quad(0.06 + i * 0.05 + row * 0.1, top + (i % 2) * 0.02, 0.1 + i * 0.05 + row * 0.1, bottom);
    }
    return true;
}

bool FridgeFront(const SVxLibSym& s)
{
    s.Outline();
    if (s.libId == 60) {
        s.FrontQuad(0.02, 0.01, 0.98, 0.99);
        Handle(s, 0.9, 0.25, true);
    } else {
        s.FrontQuad(0.02, 0.01, 0.98, 0.6);
        s.FrontQuad(0.02, 0.62, 0.98, 0.99);
        Handle(s, 0.9, 0.45, true);
        Handle(s, 0.9, 0.72, true);
    }
    return true;
}

bool WasherFront(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.02, 0.02, 0.98, 0.15);
    s.FrontOval(0.2, 0.25, 0.8, 0.85);
    CVxSymBrush hollow(s, 0, true);
    s.Oval(0.3, 0.35, 0.7, 0.75);
    return true;
}

bool ApplianceFront(const SVxLibSym& s)
{
    s.Outline();
    s.Quad(0.02, 0.02, 0.98, 0.12);
    s.FrontQuad(0.02, 0.14, 0.98, 0.98);
    Handle(s, 0.5, 0.2, false);
    return true;
}

bool TableSide(const SVxLibSym& s)
{
    s.Quad(0, 0, 1, 0.06);
    s.Quad(0.03, 0.06, 0.08, 1);
    s.Quad(0.92, 0.06, 0.97, 1);
    return true;
}

// A flight seen from its side: the stepped line from the floor at one end
// up to the top at the other.
bool StairsProfile(const SVxLibSym& s, bool fromLeft, int steps)
{
    VxPOINT pts[2 * 20 + 2];
    const int n = steps > 20 ? 20 : steps;
    int k = 0;
    for (int i = 0; i < n; ++i) {
        const double along = static_cast<double>(i) / n;
        const double up = 1 - static_cast<double>(i + 1) / n;
        const double u1 = fromLeft ? along : 1 - along;
        const double u2 = fromLeft ? along + 1.0 / n : 1 - along - 1.0 / n;
        pts[k++] = s.P(u1, up);
        pts[k++] = s.P(u2, up);
    }
    pts[k++] = s.P(fromLeft ? 1 : 0, 1);
    pts[k++] = s.P(fromLeft ? 0 : 1, 1);
    s.dc->Polygon(pts, k);
    return true;
}

bool StairsSide(const SVxLibSym& s, EVxObjSide side)
{
    if (side == OBJ_SIDE_FRONT || side == OBJ_SIDE_BACK)
        return StairsProfile(s, side == OBJ_SIDE_FRONT, 12);
    s.Outline();
    for (int i = 1; i < 12; ++i)
        s.Seg(0, i / 12.0, 1, i / 12.0);
    return true;
}

bool LadderSide(const SVxLibSym& s)
{
    s.Quad(0.0, 0.0, 0.1, 1.0);
    s.Quad(0.9, 0.0, 1.0, 1.0);
    for (int i = 1; i < 10; ++i)
        s.Seg(0.1, i / 10.0, 0.9, i / 10.0);
    return true;
}

bool GarageDoorFront(const SVxLibSym& s)
{
    s.Outline();
    for (int i = 1; i < 5; ++i)
        s.Seg(0, i / 5.0, 1, i / 5.0);
    Handle(s, 0.5, 0.9, false);
    return true;
}

bool FoldingDoorFront(const SVxLibSym& s)
{
    s.Outline();
    int panels = 2;
    if (s.libId == 263 || s.libId == 264)
        panels = 3;
    else if (s.libId == 265 || s.libId == 266)
        panels = 4;
    for (int i = 1; i < panels; ++i)
        s.Seg(static_cast<double>(i) / panels, 0, static_cast<double>(i) / panels, 1);
    Handle(s, 0.95, 0.5, true);
    return true;
}

bool FramedPictureFront(const SVxLibSym& s)
{
    s.Outline();
    CVxSymBrush light(s, 0.6);
    s.Quad(0.08, 0.08, 0.92, 0.92);
    return true;
}

bool IsCabinet(int id)
{
    switch (id) {
    case 20:
    case 21:
    case 202:
    case 203:
    case 205:
    case 206:
    case 217:
    case 209:
    case 210:
    case 211:
    case 212:
    case 213:
    case 214:
    case 215:
    case 216:
    case 218:
    case 219:
    case 231:
    case 232:
    case 233:
    case 234:
    case 254:
    case 23:
    case 83:
    case 108:
    case 228:
        return true;
    default:
        return false;
    }
}

bool IsTable(int id)
{
    switch (id) {
    case 25:
    case 26:
    case 31:
    case 32:
    case 34:
    case 50:
    case 52:
    case 68:
    case 248:
    case 292:
    case 293:
    case 294:
    case 810:
    case 816:
        return true;
    default:
        return false;
    }
}

} // namespace

bool CVxPart::LibDrawPartSide_low(CVxDC* dc, int libId, EVxObjSide side, VxPOINT* corners, bool front,
                                  bool /*plain*/)
{
    if (!dc || !corners)
        return false;
    SVxLibSym s;
    s.dc = dc;
    s.part = this;
    s.cornersInt = corners;
    for (int i = 0; i < 4; ++i)
        s.c[i] = CVxDPoint(corners[i].x, corners[i].y);
    s.libId = libId;
    s.front = front;
    s.frontColour = appearFront.main.color;
    const bool facing = side == OBJ_SIDE_FRONT;

    switch (libId) {
    case 65:
    case 162:
    case 164:
    case 165:
        return StairsSide(s, side);
    case 166:
        return LadderSide(s);
    case 246:
        return facing || side == OBJ_SIDE_BACK ? GarageDoorFront(s) : false;
    case 197:
    case 198:
    case 263:
    case 264:
    case 265:
    case 266:
        return facing || side == OBJ_SIDE_BACK ? FoldingDoorFront(s) : false;
    case 93:
    case 272:
        return facing ? FramedPictureFront(s) : false;
    default:
        break;
    }
    if (IsTable(libId))
        return TableSide(s);
    if (!facing) {
        // Storage seen from the side or the back is its plain carcass.
        if (IsCabinet(libId) || libId == 22 || libId == 204 || libId == 207 || libId == 208 || libId == 277 ||
            libId == 286 || libId == 60 || libId == 61) {
            s.Outline();
            return true;
        }
        return false;
    }
    if (IsCabinet(libId))
        return CabinetFront(s);
    switch (libId) {
    case 207:
    case 208:
    case 277:
    case 286:
        return WardrobeFront(s);
    case 22:
    case 204:
    case 24:
        return BookcaseFront(s);
    case 60:
    case 61:
        return FridgeFront(s);
    case 53:
    case 54:
        return WasherFront(s);
    case 67:
    case 139:
    case 143:
        return ApplianceFront(s);
    default:
        return false;
    }
}
