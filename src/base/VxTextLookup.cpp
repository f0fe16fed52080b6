#include "VxTextLookup.h"

namespace {
VxTextLookup g_lookup = nullptr;
}

void VX_SetTextLookup(VxTextLookup lookup)
{
    g_lookup = lookup;
}

CVxStringW VX_LookupText(const char* table, int row, const CVxStringW& english)
{
    return g_lookup ? g_lookup(table, row, english) : english;
}
