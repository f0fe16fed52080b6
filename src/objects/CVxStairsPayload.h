#pragma once
// Stairs and stairs with banisters: a flight that climbs the object's
// height along its width, its steps dividing the width evenly, drawn from
// the number of steps alone.

#include "CVxPartPayload.h"

class CVxStairsPayload : public CVxPartPayload
{
public:
    static constexpr int libraryNumber = 65;
    // A flight longer than this is no staircase of a house; files that say
    // more are cut to it.
    static constexpr int maxSteps = 200;
    // Sub-types: a flight solid down to the floor; one with a sloped
    // underside; open treads on two stringers; a board along each side.
    static constexpr int subTypeSolid = 0;
    static constexpr int subTypeSloped = 1;
    static constexpr int subTypeOpen = 2;
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
    bool DrawObjectPreview(CVxPart* part, CVxDC* dc, int width, int height) override;
    CVxStringA ExportToVRML(const CVxPart* part, const CVxStringA& appearance, SVx3DExportPars* pars,
                            const CVxPart* parent) const;

    int steps = 10;
};

class CVxBanisterStairsPayload : public CVxPartPayload
{
public:
    static constexpr int libraryNumber = 162;
    // The thickness of a round tread as a share of the rise of a step.
    static constexpr double minRatio = 0.05;
    static constexpr double maxRatio = 1.0;

    static CVxStringW ClassName() { return L"BanisterStairsPayload"; }
    CVxStringW GetClassName() const override { return ClassName(); }
    CVxPartPayload* Duplicate() const override { return new CVxBanisterStairsPayload(*this); }
    // The steps, "|" and the second parameter of the form.
    CVxStringW SaveToString() const override;
    bool LoadFromString(const CVxStringW& text) override;
    bool DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* corners, CVxDPoint* points, bool fill) override;
    bool DrawPartSide(CVxPart* part, CVxDC* dc, EVxObjSide side, int units, VxPOINT* corners, bool front,
                      bool outline, int flags) override;
    bool DrawObjectPreview(CVxPart* part, CVxDC* dc, int width, int height) override;
    CVxStringA ExportToVRML(const CVxPart* part, const CVxStringA& appearance, SVx3DExportPars* pars,
                            const CVxPart* parent) const;

    int steps = 5;
    double ratio = 9.0 / 14.0;
};
