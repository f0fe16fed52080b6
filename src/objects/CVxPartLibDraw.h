#pragma once
// The plan symbols of the standard library objects, shared by the files of
// the symbol families. A symbol is drawn on the object's quadrilateral: u runs
// along the width from P0 to P1, v along the depth from P0 to P3. The back of
// a piece of furniture (the side that stands against the wall) is v = 0, its
// front v = 1. Every point comes from the GetPointInRect family, so a symbol
// follows the object's rotation, skew and zoom without any turning of its own.

#include "CVxDC.h"
#include "CVxDPoint.h"
#include "VxIntGeometry.h"

#include <initializer_list>

class CVxPart;

// The frame a symbol routine draws in: the object's corners, or a piece of
// them for a sub-symbol (a chair at a table, a pillow on a bed).
struct SVxLibSym
{
    CVxDC* dc = nullptr;
    CVxPart* part = nullptr;
    // Integer corners of the object as cached; null in a sub-frame.
    VxPOINT* cornersInt = nullptr;
    // Double corners of the object, relative to the drawing surface.
    CVxDPoint* cornersDbl = nullptr;
    CVxDPoint c[4];
    int libId = 0;
    int units = 1;
    // The front surface differs from the main one and is to be shown.
    bool front = false;
    unsigned frontColour = 0;

    VxPOINT P(double u, double v) const;
    // A frame inside this one, turned by quarter turns: with turn 0 its back
    // lies at v1, with 1 at u2, with 2 at v2 and with 3 at u1.
    SVxLibSym Sub(double u1, double v1, double u2, double v2, int turn = 0) const;
    // The same frame looked at from the other side: left and right change.
    SVxLibSym Mirrored() const;
    void Corners(VxPOINT out[4]) const;

    void Outline() const;
    void Quad(double u1, double v1, double u2, double v2) const;
    void Oval(double u1, double v1, double u2, double v2) const;
    void Round(double u1, double v1, double u2, double v2, bool large = false) const;
    void Seg(double u1, double v1, double u2, double v2) const;
    // Pairs of u, v.
    void Poly(std::initializer_list<double> uv) const;
    void Lines(std::initializer_list<double> uv) const;
    void Bezier(std::initializer_list<double> uv) const;
    // A sub-rectangle in the front colour when the front surface is shown,
    // in the current brush otherwise.
    void FrontQuad(double u1, double v1, double u2, double v2) const;
    void FrontOval(double u1, double v1, double u2, double v2) const;
};

// Brushes and pens that a symbol selects for a detail and gives back when
// the detail is done, so that every routine ends with what it began with.
class CVxSymBrush
{
public:
    // The current fill mixed with white by `light` (0 keeps it).
    CVxSymBrush(const SVxLibSym& s, double light);
    // A brush of its own colour; `hollow` draws outlines only.
    CVxSymBrush(const SVxLibSym& s, unsigned colour, bool hollow);
    ~CVxSymBrush();
    CVxSymBrush(const CVxSymBrush&) = delete;
    CVxSymBrush& operator=(const CVxSymBrush&) = delete;

private:
    CVxDC* m_dc;
};

class CVxSymPen
{
public:
    CVxSymPen(const SVxLibSym& s, int style, int width);
    ~CVxSymPen();
    CVxSymPen(const CVxSymPen&) = delete;
    CVxSymPen& operator=(const CVxSymPen&) = delete;

private:
    CVxDC* m_dc;
};

using FnLibSym = void (*)(const SVxLibSym&);
constexpr int kLibSymFirst = 20;
constexpr int kLibSymLast = 820;
constexpr int kLibSymCount = kLibSymLast - kLibSymFirst + 1;

// Each family puts its routines into the table by number.
void LibSymRegisterCabinets(FnLibSym* table);
void LibSymRegisterSeating(FnLibSym* table);
void LibSymRegisterKitchenBath(FnLibSym* table);
void LibSymRegisterDoorsStairs(FnLibSym* table);
void LibSymRegisterGardenOther(FnLibSym* table);

// Sub-symbols that several families place: a chair seen from above with its
// back at v = 0, a pillow, a hob ring.
void LibSymChair(const SVxLibSym& s);
void LibSymArmchair(const SVxLibSym& s, int seats);
void LibSymTableWithChairs(const SVxLibSym& s, int acrossWidth, int alongDepth, bool round);
