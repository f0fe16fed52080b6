#include "CVxHitDist.h"

#include "IVxAppHelperCallback.h"

#include <algorithm>

// Until Init runs, the values of a 96 DPI screen.
int CVxHitDist::s_selSymbol = 4;
int CVxHitDist::s_wallCtlPoint = 6;
int CVxHitDist::s_resizeMin = 3;
int CVxHitDist::s_resizeSnap = 5;
int CVxHitDist::s_wallSnap = 15;
int CVxHitDist::s_selSymbolSize = 2;
int CVxHitDist::s_selSymbolOffset = 4;
int CVxHitDist::s_rotationSymbolDist = 20;
int CVxHitDist::s_touchCircleRadius = 8;

void CVxHitDist::Init()
{
    int dpi = 96;
    bool touch = false;
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        dpi = host->GetLogicalDpi();
        touch = host->IsDeviceInTouchMode();
    }
    Init(dpi, touch);
}

void CVxHitDist::Init(int logicalDpi, bool touchMode)
{
    // A host that reports an absurd DPI must not overflow the products below.
    const int d = std::clamp(logicalDpi, 96, 96 * 64);
    s_selSymbol = d / 24;
    s_wallCtlPoint = d / 16;
    s_resizeMin = d / 32;
    s_resizeSnap = 5 * d / 96;
    s_wallSnap = 15 * d / 96;
    s_selSymbolSize = d / 48;
    s_selSymbolOffset = d / 24;
    s_rotationSymbolDist = 20 * d / 96;
    s_touchCircleRadius = d / 12;
    if (touchMode) {
        // A finger is less precise than a mouse.
        s_resizeSnap *= 2;
        s_wallCtlPoint = static_cast<int>(s_wallCtlPoint * 1.4);
        s_selSymbol = static_cast<int>(s_selSymbol * 2.5);
    }
}
