#include "VxNumbers.h"

#include "CVxUnits.h"
#include "VxEps.h"
#include "VxTextLookup.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <stdexcept>

namespace {

// printf's "%.<precision>f" of a finite value where the decimal point is
// '.'; to_chars rounds the exact binary value as printf does, without the
// cost of a formatted stream. Null elsewhere.
const char* FixedText(double value, int precision, char* first, char* last)
{
    const lconv* numeric = localeconv();
    if (!std::isfinite(value) || !numeric || std::strcmp(numeric->decimal_point, ".") != 0)
        return nullptr;
    const std::to_chars_result result =
        std::to_chars(first, last, value, std::chars_format::fixed, precision);
    return result.ec == std::errc() ? result.ptr : nullptr;
}

} // namespace

CVxStringA DblSave(double value)
{
    // "%.8f" of a huge value needs more than the usual 128 characters.
    char buffer[128];
    std::string text;
    if (const char* end = FixedText(value, 8, buffer, buffer + sizeof(buffer))) {
        text.assign(buffer, static_cast<size_t>(end - buffer));
    } else {
        const int n = snprintf(buffer, sizeof(buffer), "%.8f", value);
        if (n >= 0 && static_cast<size_t>(n) < sizeof(buffer)) {
            text.assign(buffer, static_cast<size_t>(n));
        } else if (n > 0) {
            text.resize(static_cast<size_t>(n) + 1);
            snprintf(text.data(), text.size(), "%.8f", value);
            text.resize(static_cast<size_t>(n));
        }
    }
    if (text.empty() || text.back() != '0') {
        // Eight decimals that don't end in zero are cut to six: this is how
        // every file has been written, and readers expect no more.
        if (const char* end = FixedText(value, 6, buffer, buffer + sizeof(buffer)))
            return CVxStringA(std::string(buffer, static_cast<size_t>(end - buffer)));
        return CVxStringA().sprintf("%f", value);
    }
    while (!text.empty() && text.back() == '0')
        text.pop_back();
    if (!text.empty() && text.back() == '.')
        text.pop_back();
    return CVxStringA(std::move(text));
}

CVxStringW DblSaveW(double value)
{
    // The text is ASCII: widened without the locale's conversion.
    const CVxStringA text = DblSave(value);
    return CVxStringW(std::wstring(text.Std().begin(), text.Std().end()));
}

double DblLoad(const char* text, double def)
{
    double value = 0;
    if (!text || sscanf(text, "%lf", &value) < 1)
        return def;
    return value;
}

double DblLoad(const CVxStringA& text, double def)
{
    return DblLoad(text.c_str(), def);
}

double DblLoad(const CVxStringW& text, double def)
{
    // What "%lf" of swscanf reads, without the stream that swscanf sets up
    // for every call: projects hold hundreds of thousands of numbers.
    const wchar_t* start = text.c_str();
    wchar_t* end = nullptr;
    const double value = std::wcstod(start, &end);
    if (end == start)
        return def;
    if (*end == L'x' || *end == L'X') {
        // swscanf has taken "0x" for the head of a hexadecimal number and
        // fails when none follows; wcstod settles for the 0.
        const wchar_t* digits = start;
        while (std::iswspace(*digits))
            ++digits;
        if (*digits == L'+' || *digits == L'-')
            ++digits;
        if (end - digits == 1 && *digits == L'0' && !std::iswxdigit(end[1]) && end[1] != L'.')
            return def;
    }
    return value;
}

double DblRead(const CVxStringW& text, double def, bool* ok)
{
    if (ok)
        *ok = true;
    try {
        return text.ToDouble();
    } catch (const std::exception&) {
        if (ok)
            *ok = false;
        int value = text.ToIntDef(-85975);
        return value == -85975 ? def : value;
    }
}

int DblRound(double& value)
{
    value = std::round(value);
    if (!(value > INT_MIN))
        return INT_MIN;
    if (!(value < INT_MAX))
        return INT_MAX;
    return static_cast<int>(value);
}

double DblRoundx(double value)
{
    return std::round(value);
}

double DblRound2(double& value)
{
    value = std::trunc(std::round(value * 100.0)) / 100.0;
    return value;
}

double DblRound2x(double value)
{
    return DblRound2(value);
}

namespace {

const wchar_t* const kAsciiFractions[32] = {
    L"0",   L"1/32",  L"1/16",  L"3/32",  L"1/8", L"5/32",  L"3/16",  L"7/32",
    L"1/4", L"9/32",  L"5/16",  L"11/32", L"3/8", L"13/32", L"7/16",  L"15/32",
    L"1/2", L"17/32", L"9/16",  L"19/32", L"5/8", L"21/32", L"11/16", L"23/32",
    L"3/4", L"25/32", L"13/16", L"27/32", L"7/8", L"29/32", L"15/16", L"31/32"};

// The same, with the single characters that exist for quarters and eighths.
const wchar_t* GlyphFraction(int thirtySeconds)
{
    switch (thirtySeconds) {
    case 4:
        return L"\u215B";
    case 8:
        return L"\u00BC";
    case 12:
        return L"\u215C";
    case 16:
        return L"\u00BD";
    case 20:
        return L"\u215D";
    case 24:
        return L"\u00BE";
    case 28:
        return L"\u215E";
    default:
        return kAsciiFractions[thirtySeconds];
    }
}

// More decimals than a double holds would only print noise.
constexpr int kMaxAreaDecimals = 10;

VxNumberFormatSource g_numberFormat = nullptr;

} // namespace

void VX_SetNumberFormatSource(VxNumberFormatSource source)
{
    g_numberFormat = source;
}

SVxNumberFormat VX_GetNumberFormat()
{
    return g_numberFormat ? g_numberFormat() : SVxNumberFormat();
}

CVxStringW VX_DblFormat(double value, EVxDblFormat format, bool inchMark, int unit)
{
    if (value == VX_DBL_DIFFER)
        return VX_LookupText("Messages", 37, L"differ.");
    const SVxNumberFormat settings = VX_GetNumberFormat();
    unit = unit < 0 ? settings.unit : unit;
    if (!settings.feetAndInches || unit != 2 || format == VX_DF_DECIMAL)
        return CVxStringW(value);

    const bool negative = !(value > -1e-7);
    value = std::fabs(value);
    double feet = 0;
    double rest;
    if (format == VX_DF_FEET || format == VX_DF_FEET_GLYPHS) {
        feet = std::floor(value / 12.0);
        rest = DblRound2x(value - feet * 12.0);
    } else {
        rest = DblRound2x(value);
    }
    const double inches = std::floor(rest);
    const double fraction = rest - inches;
    const double thirtySeconds = std::floor(fraction * 32.0 + 0.5);

    CVxStringW text;
    if (negative)
        text += L'-';
    if (feet != 0)
        text += CVxStringW().sprintf(L"%.0f' ", feet);
    if (inches > 0 || fraction == 0)
        text += CVxStringW().sprintf(L"%.0f", inches);
    if (thirtySeconds >= 1 && thirtySeconds <= 31) {
        const int index = static_cast<int>(thirtySeconds);
        const bool glyphs =
            (format == VX_DF_FEET_GLYPHS || format == VX_DF_INCHES_GLYPHS) && settings.inchesPrecision <= 3;
        if (glyphs) {
            CVxStringW glyph = GlyphFraction(index);
            if (inches > 0 && glyph.GetLength() > 1)
                text += L' ';
            text += glyph;
        } else {
            if (inches > 0)
                text += L' ';
            text += kAsciiFractions[index];
        }
    }
    if (inchMark)
        text += L'"';
    return text;
}

CVxStringW VX_DblFormatAreaValue(double value, int unit)
{
    // A set number of decimals, or by default as many as the size of the
    // area and its unit make worth reading.
    const int decimals = VX_GetNumberFormat().areaDecimals;
    double m = 1;
    if (decimals >= 0)
        m = std::pow(10.0, std::min(decimals, kMaxAreaDecimals));
    else if (unit >= CVxUnits::UNIT_FT && unit <= CVxUnits::UNIT_M)
        m = value < 0.1 - EPS ? 1000 : value < 1 - EPS ? 100 : 10;
    else if (unit >= CVxUnits::UNIT_KM)
        m = value < 0.1 - EPS ? 1000 : 100;
    else
        m = value < 0.1 - EPS ? 1000 : value < 1 - EPS ? 100 : value < 10 - EPS ? 10 : 1;
    return CVxStringW(std::round(value * m) / m) + L" " + CVxUnits::GetAreaUnitText(unit);
}

double VX_DblReadText(const CVxStringW& text, double def, bool* ok, int unit)
{
    const SVxNumberFormat settings = VX_GetNumberFormat();
    unit = unit < 0 ? settings.unit : unit;
    const bool feetMode =
        settings.feetAndInches && unit == 2 && (text.Contains(L'\'') || text.Contains(L'/'));
    if (!feetMode)
        return DblRound2x(DblRead(text, def, ok));

    int p = text.Find(L'"');
    if (p < 0)
        p = text.GetLength();
    const int q = text.Find(L'\'');
    CVxStringW feetText, inchText;
    if (q >= 0) {
        feetText = text.Left(q).Trim();
        inchText = text.Mid(q + 1, p - q - 1).Trim();
    } else {
        inchText = text.Left(p);
    }

    CVxStringW numText, denText;
    const int slash = inchText.Find(L'/');
    const bool hasSlash = slash > 0;
    if (hasSlash) {
        const int s = inchText.Find(L' ');
        numText = inchText.Mid(s + 1, slash - s - 1).Trim();
        denText = inchText.Mid(slash + 1).Trim();
        inchText = s < 1 ? CVxStringW() : inchText.Left(s).Trim();
    }

    if (ok)
        *ok = true;
    double feet = 0, inches = 0, numerator = 0, denominator = 1;
    try {
        feet = feetText.IsEmpty() ? 0 : feetText.ToDouble();
        inches = inchText.IsEmpty() ? 0 : inchText.ToDouble();
        if (hasSlash) {
            numerator = numText.IsEmpty() ? 0 : numText.ToDouble();
            denominator = denText.IsEmpty() ? 1 : denText.ToDouble();
        }
    } catch (const std::exception&) {
        if (ok)
            *ok = false;
        feet = 0;
        numerator = 0;
        denominator = 1;
        inches = def;
    }
    if (hasSlash && numerator > 1e-7 && denominator > 1e-7)
        inches += numerator / denominator;
    if (feet > -1e-7)
        return DblRound2x(feet * 12.0 + inches);
    return DblRound2x(feet * 12.0 - inches);
}
