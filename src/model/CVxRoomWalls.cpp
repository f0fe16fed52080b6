#include "CVxRoomWalls.h"

void CVxRoomWalls::OnReadIniValue(const CVxStringA&, const CVxStringW&, CVxIniFileReader*) {}
