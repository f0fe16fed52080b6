#pragma once
// Stairs and stairs with banisters: a flight whose steps divide the length
// of the object evenly, drawn from the number of steps alone.

#include "CVxPartPayload.h"

class CVxStairsPayload : public CVxPartPayload
{
public:
    static constexpr int libraryNumber = 65;
    // A flight longer than this is no staircase of a house; files that say
    // more are cut to it.
    static constexpr int maxSteps = 200;
    // Sub-type with a board along each side.
    static constexpr int subTypeSideBoards = 3;

    static CVxStringW ClassName() { return L"StairsPayload"; }
    CVxStringW GetClassName() const override { return ClassName(); }
    CVxPartPayload* Duplicate() const override { return new CVxStairsPayload(*this); }
    // The steps and "|"; later versions may add fields behind it.
    CVxStringW SaveToString() const override;
    bool LoadFromString(const CVxStringW& text) override;
    bool DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* corners, CVxDPoint* points, bool fill) override;
    bool DrawPartSide(CVxPart* part, CVxDC* dc, EVxObjSide side, int units, VxPOINT* corners, bool front,
                      bool outline, int flags) override;

    int steps = 10;
};

class CVxBanisterStairsPayload : public CVxPartPayload
{
public:
    static constexpr int libraryNumber = 162;

    static CVxStringW ClassName() { return L"BanisterStairsPayload"; }
    CVxStringW GetClassName() const override { return ClassName(); }
    CVxPartPayload* Duplicate() const override { return new CVxBanisterStairsPayload(*this); }
    // The steps, "|" and the second parameter of the form.
    CVxStringW SaveToString() const override;
    bool LoadFromString(const CVxStringW& text) override;
    bool DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* corners, CVxDPoint* points, bool fill) override;

    int steps = 5;
    double ratio = 9.0 / 14.0;
};
