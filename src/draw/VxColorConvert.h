#pragma once
// Conversions of colour words to and from the colour models the colour
// dialog shows: HSL and HSV with integer channels, CIE XYZ and Lab for
// distances as the eye sees them, the web's hexadecimal form and the Natural
// Colour System notation.

#include "CVxStringW.h"
#include "VxColorWord.h"

// Hue 0 to 359 (360 reads as 0), saturation and lightness 0 to 100.
void VX_RGBtoHSL(unsigned colour, int& h, int& s, int& l);
unsigned VX_HSLtoRGB(int h, int s, int l);
// Hue 0 to 359 (360 reads as 0), saturation and value 0 to 100.
void VX_RGBtoHSV(unsigned colour, int& h, int& s, int& v);
unsigned VX_HSVtoRGB(int h, int s, int v);

// sRGB with the D65 white point; Y of white is 100.
void VX_RGBtoXYZ(unsigned colour, double& x, double& y, double& z);
// CIE L*a*b* relative to D65 white.
void VX_RGBtoLab(unsigned colour, double& L, double& a, double& b);

// Six lower-case digits in the order red, green, blue, without prefix.
CVxStringW VX_RGBtoHex(unsigned colour);
// Exactly six hexadecimal digits, any case, no prefix.
bool VX_HexToRGB(const CVxStringW& text, unsigned& colour);

// NCS notation such as "S 1050-Y90R": blackness and chromaticness, then the
// hue between two elementary colours. "N" stands for a neutral grey.
bool VX_NCStoRGB(const CVxStringW& text, unsigned& colour);
CVxStringW VX_RGBtoNCS(unsigned colour);

// A colour word as files hold it: "0x" and up to eight hexadecimal digits,
// or a decimal, which old files may write negative for words with the top
// bit set. False, and colour untouched, for anything else.
bool VX_ColorFromText(const CVxStringW& text, unsigned& colour);
