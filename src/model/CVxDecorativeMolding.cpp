#include "CVxDecorativeMolding.h"

#include "CVxUnits.h"
#include "VxEps.h"
#include "VxNumbers.h"

#include <cmath>

void CVxDecorativeMolding::Reset()
{
    enabled = false;
    height = 0;
    thickness = 0;
    appearance.Reset();
}

void CVxDecorativeMolding::SetDefaultSizeForUnit(int unit)
{
    if (unit == CVxUnits::UNIT_INCH) {
        height = 2.0;
        thickness = 1.0;
        return;
    }
    // A skirting of 5 cm by 2 cm in the project's unit.
    const double centimetres = CVxUnits::GetUnitCal(unit);
    height = 5.0 / centimetres;
    thickness = 2.0 / centimetres;
}

void CVxDecorativeMolding::Scale(double sx, double /*sy*/, double sz)
{
    height *= sz;
    thickness *= sx;
    DblRound2(height);
    DblRound2(thickness);
}

CVxStringW CVxDecorativeMolding::SaveToString() const
{
    return CVxStringW(enabled ? L"1" : L"0") + L"|" + DblSaveW(height) + L"|" + DblSaveW(thickness);
}

bool CVxDecorativeMolding::LoadFromString(const CVxStringW& text)
{
    if (text.IsEmpty())
        return false;
    const std::vector<CVxStringW> fields = text.Split(L'|');
    if (!fields.empty())
        enabled = fields[0].ToBoolDef(enabled);
    if (fields.size() > 1)
        height = DblLoad(fields[1], height);
    if (fields.size() > 2)
        thickness = DblLoad(fields[2], thickness);
    return true;
}

bool CVxDecorativeMolding::operator==(const CVxDecorativeMolding& other) const
{
    return enabled == other.enabled && std::fabs(height - other.height) < EPS &&
           std::fabs(thickness - other.thickness) < EPS && appearance == other.appearance;
}
