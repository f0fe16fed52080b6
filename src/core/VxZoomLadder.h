#pragma once
// The rungs of the main view's zoom, as factors of the project's base zoom:
// 1 is 100 %.

inline constexpr int g_ZoomCount = 26;
inline constexpr double g_Zooms[g_ZoomCount] = {0.025, 0.05, 0.07, 0.1, 0.15, 0.2, 0.25, 0.33, 0.5,
                                                0.75,  1,    1.3,  1.6, 2,    3,   4,    5,    6.5,
                                                8,     10,   13,   16,  20,   30,  40,   50};
