#include "IVxAppHelperCallback.h"

namespace {
IVxAppHelperCallback* g_helper = nullptr;
}

void VX_SetAppHelperCallback(IVxAppHelperCallback* helper)
{
    g_helper = helper;
}

IVxAppHelperCallback* VX_GetAppHelper()
{
    return g_helper;
}
