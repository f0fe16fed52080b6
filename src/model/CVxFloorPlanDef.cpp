#include "CVxFloorPlanDef.h"

void CVxFloorPlanDef::OnReadIniValue(const CVxStringA&, const CVxStringW&, CVxIniFileReader*) {}
