#pragma once
// The eight length units of a project. The index is what files and the
// project store; the names in files never change with the language.

#include "CVxStringA.h"
#include "CVxStringW.h"

class CVxUnits
{
public:
    enum EUnit
    {
        UNIT_MM = 0,
        UNIT_CM = 1,
        UNIT_INCH = 2,
        UNIT_DM = 3,
        UNIT_FT = 4,
        UNIT_YD = 5,
        UNIT_M = 6,
        UNIT_KM = 7,
        UNIT_COUNT = 8
    };

    static const char* const sUnitEngText[UNIT_COUNT];
    static const double dUnitCal[UNIT_COUNT];
    static CVxStringW wsUnitName[UNIT_COUNT];
    static CVxStringW wsUnitText[UNIT_COUNT];
    static CVxStringW wsAreaUnitText[UNIT_COUNT];

    static bool IsValid(int unit) { return unit >= 0 && unit < UNIT_COUNT; }
    // Out-of-range indexes read as centimetres.
    static const CVxStringW& GetUnitText(int unit);
    static const CVxStringW& GetUnitName(int unit);
    static const CVxStringW& GetAreaUnitText(int unit);
    static double GetUnitCal(int unit);
    static int GetUnitEngTextIdx(const CVxStringA& name);
    static double ConvertLength(double value, int from, int to);
    static void LocalizeUnits();
};
