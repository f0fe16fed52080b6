#include "CVxUnits.h"

#include "VxTextLookup.h"

const char* const CVxUnits::sUnitEngText[UNIT_COUNT] = {"mm", "cm", "\"", "dm", "ft", "yd", "m", "km"};
const double CVxUnits::dUnitCal[UNIT_COUNT] = {0.1, 1, 2.54, 10, 30.48, 91.44, 100, 100000};

namespace {
const wchar_t* const kDefaultNames[CVxUnits::UNIT_COUNT] = {L"mm", L"cm", L"inches", L"dm",
                                                            L"ft", L"yd", L"m",      L"km"};
const wchar_t* const kDefaultTexts[CVxUnits::UNIT_COUNT] = {L"mm", L"cm", L"\"", L"dm",
                                                            L"ft", L"yd", L"m",  L"km"};
} // namespace

CVxStringW CVxUnits::wsUnitName[UNIT_COUNT] = {kDefaultNames[0], kDefaultNames[1], kDefaultNames[2],
                                               kDefaultNames[3], kDefaultNames[4], kDefaultNames[5],
                                               kDefaultNames[6], kDefaultNames[7]};
CVxStringW CVxUnits::wsUnitText[UNIT_COUNT] = {kDefaultTexts[0], kDefaultTexts[1], kDefaultTexts[2],
                                               kDefaultTexts[3], kDefaultTexts[4], kDefaultTexts[5],
                                               kDefaultTexts[6], kDefaultTexts[7]};
CVxStringW CVxUnits::wsAreaUnitText[UNIT_COUNT] = {L"mm\u00B2", L"cm\u00B2", L"\"\u00B2", L"dm\u00B2",
                                                   L"ft\u00B2", L"yd\u00B2", L"m\u00B2",  L"km\u00B2"};

static int SafeUnit(int unit)
{
    return CVxUnits::IsValid(unit) ? unit : CVxUnits::UNIT_CM;
}

const CVxStringW& CVxUnits::GetUnitText(int unit)
{
    return wsUnitText[SafeUnit(unit)];
}

const CVxStringW& CVxUnits::GetUnitName(int unit)
{
    return wsUnitName[SafeUnit(unit)];
}

const CVxStringW& CVxUnits::GetAreaUnitText(int unit)
{
    return wsAreaUnitText[SafeUnit(unit)];
}

double CVxUnits::GetUnitCal(int unit)
{
    return dUnitCal[SafeUnit(unit)];
}

int CVxUnits::GetUnitEngTextIdx(const CVxStringA& name)
{
    for (int i = 0; i < UNIT_COUNT; ++i)
        if (name == sUnitEngText[i])
            return i;
    return UNIT_CM;
}

double CVxUnits::ConvertLength(double value, int from, int to)
{
    return value * GetUnitCal(from) / GetUnitCal(to);
}

void CVxUnits::LocalizeUnits()
{
    for (int i = 0; i < UNIT_COUNT; ++i) {
        wsUnitName[i] = VX_LookupText("Units", i + 1, kDefaultNames[i]);
        wsUnitText[i] = i == UNIT_INCH ? CVxStringW(kDefaultTexts[i]) : wsUnitName[i];
    }
    for (int i = 0; i < UNIT_COUNT; ++i)
        wsAreaUnitText[i] = VX_LookupText("Units", i + 11, wsUnitText[i] + L"\u00B2");
}
