#pragma once
// Numbers as text. On disk a number is a C-locale decimal with its trailing
// zeros trimmed; on screen it follows the user's locale, and lengths in
// inches may read as feet, inches and 32nds.

#include "CVxStringA.h"
#include "CVxStringW.h"

// Reserved marks of an unset value; "differ." in dialogues for several objects.
constexpr double VX_DBL_DIFFER = -19182.0;
constexpr double VX_DBL_UNSET = -19181.0;

enum EVxDblFormat
{
    VX_DF_FEET = 0,
    VX_DF_FEET_GLYPHS = 1,
    VX_DF_INCHES = 2,
    VX_DF_INCHES_GLYPHS = 3,
    VX_DF_DECIMAL = 4
};

CVxStringA DblSave(double value);
CVxStringW DblSaveW(double value);
double DblLoad(const CVxStringA& text, double def);
double DblLoad(const CVxStringW& text, double def);
double DblLoad(const char* text, double def);
double DblRead(const CVxStringW& text, double def, bool* ok);

int DblRound(double& value);
double DblRoundx(double value);
double DblRound2(double& value);
double DblRound2x(double value);

// What formatting lengths and areas needs of the open project and the
// user's options. The core provides it; until it does, lengths are plain
// centimetres.
struct SVxNumberFormat
{
    int unit = 1;
    int inchesPrecision = 4;
    // Lengths in inches read and write as feet, inches and 32nds.
    bool feetAndInches = false;
    // Decimals of an area, or -1 for as many as its size makes worth reading.
    int areaDecimals = -1;
};
using VxNumberFormatSource = SVxNumberFormat (*)();
void VX_SetNumberFormatSource(VxNumberFormatSource source);
SVxNumberFormat VX_GetNumberFormat();

CVxStringW VX_DblFormat(double value, EVxDblFormat format, bool inchMark, int unit = -1);
double VX_DblReadText(const CVxStringW& text, double def, bool* ok, int unit = -1);
// An area with its unit's text, to the decimals that the options ask for.
CVxStringW VX_DblFormatAreaValue(double value, int unit);
