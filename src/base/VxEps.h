#pragma once
// The one tolerance of plan geometry: coordinates and angles that differ by
// less are the same.

inline constexpr double EPS = 1e-7;
