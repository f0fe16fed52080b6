#include "VxTypedLength.h"

#include "CVxUnits.h"

#include <cmath>
#include <cwctype>
#include <string>

namespace {
// A plain decimal with a point or a comma, and nothing else.
bool ReadNumber(const std::wstring& text, double& out)
{
    if (text.empty() || text.size() > 40)
        return false;
    std::string narrow;
    bool digits = false;
    bool point = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c >= L'0' && c <= L'9') {
            digits = true;
            narrow += static_cast<char>(c);
        } else if ((c == L'.' || c == L',') && !point) {
            point = true;
            narrow += '.';
        } else if ((c == L'-' || c == L'+') && i == 0) {
            narrow += static_cast<char>(c);
        } else {
            return false;
        }
    }
    if (!digits)
        return false;
    out = std::strtod(narrow.c_str(), nullptr);
    return std::isfinite(out);
}

std::wstring Trim(const std::wstring& text)
{
    size_t a = 0;
    size_t b = text.size();
    while (a < b && std::iswspace(text[a]))
        ++a;
    while (b > a && std::iswspace(text[b - 1]))
        --b;
    return text.substr(a, b - a);
}

// Inches with an optional fraction: "6", "6 1/2", "1/2".
bool ReadInches(const std::wstring& text, double& out)
{
    const std::wstring t = Trim(text);
    if (t.empty()) {
        out = 0;
        return true;
    }
    const size_t slash = t.find(L'/');
    if (slash == std::wstring::npos)
        return ReadNumber(t, out) && out >= 0;
    const size_t space = t.rfind(L' ', slash);
    double whole = 0;
    if (space != std::wstring::npos && !ReadNumber(Trim(t.substr(0, space)), whole))
        return false;
    double numerator = 0;
    double denominator = 0;
    const size_t from = space == std::wstring::npos ? 0 : space + 1;
    if (!ReadNumber(Trim(t.substr(from, slash - from)), numerator) ||
        !ReadNumber(Trim(t.substr(slash + 1)), denominator) || denominator <= 0)
        return false;
    out = whole + numerator / denominator;
    return out >= 0;
}

struct SVxSuffix
{
    const wchar_t* text;
    int unit;
};
// Longer suffixes first, so that "mm" isn't read as "m".
constexpr SVxSuffix kSuffixes[] = {{L"mm", 0}, {L"cm", 1}, {L"dm", 3}, {L"km", 7},
                                   {L"in", 2}, {L"ft", 4}, {L"yd", 5}, {L"m", 6}};
} // namespace

namespace {
bool ParseLength(const CVxStringW& text, int projectUnit, bool allowZero, double& outLength)
{
    if (!CVxUnits::IsValid(projectUnit))
        return false;
    std::wstring t = Trim(text.Std());
    if (t.empty() || t.size() > 60)
        return false;
    for (wchar_t& c : t)
        if (c == L'\u2032' || c == L'\u2019')
            c = L'\'';
        else if (c == L'\u2033' || c == L'\u201D')
            c = L'"';
    double value = 0;
    int unit = projectUnit;
    const size_t feet = t.find(L'\'');
    const size_t inch = t.find(L'"');
    if (feet != std::wstring::npos || inch != std::wstring::npos) {
        double feetValue = 0;
        double inchValue = 0;
        if (feet != std::wstring::npos) {
            if (!ReadNumber(Trim(t.substr(0, feet)), feetValue) || feetValue < 0)
                return false;
            std::wstring rest = t.substr(feet + 1);
            if (!rest.empty() && rest.back() == L'"')
                rest.pop_back();
            if (rest.find_first_of(L"'\"") != std::wstring::npos || !ReadInches(rest, inchValue))
                return false;
        } else {
            if (inch + 1 != t.size() || !ReadInches(t.substr(0, inch), inchValue))
                return false;
        }
        value = feetValue * 12 + inchValue;
        unit = 2;
    } else {
        std::wstring lower = t;
        for (wchar_t& c : lower)
            c = static_cast<wchar_t>(std::towlower(c));
        for (const SVxSuffix& suffix : kSuffixes) {
            const std::wstring s = suffix.text;
            if (lower.size() > s.size() && lower.compare(lower.size() - s.size(), s.size(), s) == 0) {
                lower = Trim(lower.substr(0, lower.size() - s.size()));
                unit = suffix.unit;
                break;
            }
        }
        if (!ReadNumber(lower, value))
            return false;
    }
    value = CVxUnits::ConvertLength(value, unit, projectUnit);
    if (!std::isfinite(value) || value < 0 || (!allowZero && !(value > 0)))
        return false;
    outLength = value;
    return true;
}
} // namespace

bool VX_ParseTypedLength(const CVxStringW& text, int projectUnit, double& outLength)
{
    return ParseLength(text, projectUnit, false, outLength);
}

bool VX_ParseTypedOffset(const CVxStringW& text, int projectUnit, double& outLength)
{
    std::wstring t = Trim(text.Std());
    const bool negative = !t.empty() && t.front() == L'-';
    if (negative)
        t.erase(0, 1);
    double value = 0;
    if (!ParseLength(CVxStringW(t.c_str()), projectUnit, true, value))
        return false;
    outLength = negative ? -value : value;
    return true;
}

bool VX_ParseTypedAngle(const CVxStringW& text, double& outDegrees)
{
    std::wstring t = Trim(text.Std());
    if (!t.empty() && t.back() == L'\u00B0')
        t.pop_back();
    double value = 0;
    if (!ReadNumber(Trim(t), value) || std::fabs(value) > 1e6)
        return false;
    outDegrees = value;
    return true;
}
