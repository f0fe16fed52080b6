#pragma once
// Translated texts for the lowest layers. The language tables live above
// them; whoever owns the tables registers a lookup at start-up, and until
// then every text reads in English.

#include "CVxStringW.h"

// The text of row `row` of the table named `table` ("Messages" for the
// message rows), or `english` where the table has none.
using VxTextLookup = CVxStringW (*)(const char* table, int row, const CVxStringW& english);

void VX_SetTextLookup(VxTextLookup lookup);
CVxStringW VX_LookupText(const char* table, int row, const CVxStringW& english);
