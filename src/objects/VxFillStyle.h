#pragma once
// How a closed shape of the plan is filled: what objects and walls store.

#include <cstdint>

enum EVxFillStyle : int32_t
{
    FILL_SOLID = 0,
    FILL_HOLLOW = 1,
    FILL_HATCH_HORIZONTAL = 2,
    FILL_HATCH_VERTICAL = 3,
    FILL_HATCH_FDIAGONAL = 4,
    FILL_HATCH_BDIAGONAL = 5,
    FILL_HATCH_CROSS = 6,
    FILL_HATCH_DIAGCROSS = 7,
    // Styles up to this count are kept as read; the plan draws those above
    // the last hatch with the diagonal cross.
    FILL_STYLE_COUNT = 20
};
