#pragma once
// A skirting board at the foot of a room's walls or a cornice under its
// ceiling: whether it is there, its profile and what it looks like.

#include "CVxAppearance.h"
#include "CVxStringW.h"

class CVxDecorativeMolding
{
public:
    CVxDecorativeMolding() = default;

    void Reset();
    // Height 2 and thickness 1 in inches; 5 cm by 2 cm in any other unit.
    void SetDefaultSizeForUnit(int unit);
    // Height follows sz, thickness sx.
    void Scale(double sx, double sy, double sz);

    // "enabled|height|thickness"; the appearance has a key of its own.
    CVxStringW SaveToString() const;
    // Missing or bad fields keep their values; false for an empty text.
    bool LoadFromString(const CVxStringW& text);

    bool operator==(const CVxDecorativeMolding& other) const;
    bool operator!=(const CVxDecorativeMolding& other) const { return !(*this == other); }

    bool enabled = false;
    double height = 0;
    double thickness = 0;
    CVxAppearance appearance;
};
