#pragma once
// The colour word of the whole program: 0x00BBGGRR. A top byte 0xEF marks a
// colour as switched off and keeps the colour in its low 24 bits, so that it
// returns when switched on; the exact word 0xEEFFFFFE stands for "no value".

#include <cstdint>

constexpr unsigned clrUndefined = 0xEEFFFFFEu;
constexpr unsigned clrOffMark = 0xEF000000u;

inline constexpr unsigned VX_RGB(unsigned r, unsigned g, unsigned b)
{
    return (r & 0xFFu) | ((g & 0xFFu) << 8) | ((b & 0xFFu) << 16);
}
inline constexpr unsigned VX_GetRValue(unsigned colour)
{
    return colour & 0xFFu;
}
inline constexpr unsigned VX_GetGValue(unsigned colour)
{
    return (colour >> 8) & 0xFFu;
}
inline constexpr unsigned VX_GetBValue(unsigned colour)
{
    return (colour >> 16) & 0xFFu;
}

inline constexpr bool VX_IsColorOff(unsigned colour)
{
    return (colour & 0xFF000000u) == clrOffMark;
}
inline constexpr unsigned VX_ColorSwitchOff(unsigned colour)
{
    return (colour & 0xFFFFFFu) | clrOffMark;
}
inline constexpr unsigned VX_ColorSwitchOn(unsigned colour)
{
    return colour & 0xFFFFFFu;
}
