#include "VxColorConvert.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

int ClampInt(int value, int lo, int hi)
{
    return std::min(std::max(value, lo), hi);
}

int RoundToInt(double value)
{
    return static_cast<int>(std::lround(value));
}

unsigned ChannelFromUnit(double value)
{
    return static_cast<unsigned>(ClampInt(RoundToInt(value * 255.0), 0, 255));
}

// Hue in degrees, 0 up to below 360, of a colour given as 0 to 1 channels;
// also returns the largest and smallest channel.
double HueOf(double r, double g, double b, double& maxC, double& minC)
{
    maxC = std::max(r, std::max(g, b));
    minC = std::min(r, std::min(g, b));
    const double delta = maxC - minC;
    if (delta <= 0)
        return 0;
    double h;
    if (maxC == r)
        h = std::fmod((g - b) / delta, 6.0);
    else if (maxC == g)
        h = (b - r) / delta + 2.0;
    else
        h = (r - g) / delta + 4.0;
    h *= 60.0;
    if (h < 0)
        h += 360.0;
    return h;
}

int NormalizeHue(int h)
{
    h %= 360;
    return h < 0 ? h + 360 : h;
}

int HueToInt(double h)
{
    return NormalizeHue(RoundToInt(h));
}

// Channels of hue h (0 to 360), chroma c and offset m, all on 0 to 1.
unsigned FromHueChroma(double h, double c, double m)
{
    const double hp = h / 60.0;
    const double x = c * (1.0 - std::fabs(std::fmod(hp, 2.0) - 1.0));
    double r = 0, g = 0, b = 0;
    if (hp < 1) {
        r = c, g = x;
    } else if (hp < 2) {
        r = x, g = c;
    } else if (hp < 3) {
        g = c, b = x;
    } else if (hp < 4) {
        g = x, b = c;
    } else if (hp < 5) {
        r = x, b = c;
    } else {
        r = c, b = x;
    }
    return VX_RGB(ChannelFromUnit(r + m), ChannelFromUnit(g + m), ChannelFromUnit(b + m));
}

void SplitUnit(unsigned colour, double& r, double& g, double& b)
{
    r = VX_GetRValue(colour) / 255.0;
    g = VX_GetGValue(colour) / 255.0;
    b = VX_GetBValue(colour) / 255.0;
}

double HsvFromDoubles(unsigned colour, double& s, double& v)
{
    double r, g, b, maxC, minC;
    SplitUnit(colour, r, g, b);
    const double h = HueOf(r, g, b, maxC, minC);
    v = maxC * 100.0;
    s = maxC > 0 ? (maxC - minC) / maxC * 100.0 : 0.0;
    return h;
}

unsigned HsvToRgbDouble(double h, double s, double v)
{
    h = std::fmod(h, 360.0);
    if (h < 0)
        h += 360.0;
    s = std::clamp(s, 0.0, 100.0) / 100.0;
    v = std::clamp(v, 0.0, 100.0) / 100.0;
    const double c = v * s;
    return FromHueChroma(h, c, v - c);
}

double LinearFromSrgb(double c)
{
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

int HexDigit(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    return -1;
}

// The elementary colours of the NCS hue circle as HSV: hue, saturation and
// value of yellow, red, blue and green as a screen shows them.
struct SVxNcsBase
{
    wchar_t letter;
    double hue;
    double saturation;
    double value;
};
constexpr SVxNcsBase g_ncsBase[4] = {
    {L'Y', 49.6, 100.0, 100.0},
    {L'R', 345.0, 99.0, 76.9},
    {L'B', 197.1, 100.0, 74.1},
    {L'G', 160.4, 100.0, 62.4},
};

const SVxNcsBase* FindNcsBase(wchar_t letter)
{
    for (const SVxNcsBase& base : g_ncsBase)
        if (base.letter == letter)
            return &base;
    return nullptr;
}

// The two elementary colours blended by t, 0 giving first, 1 second.
SVxNcsBase BlendNcs(const SVxNcsBase& first, const SVxNcsBase& second, double t)
{
    double h1 = first.hue, h2 = second.hue;
    if (std::fabs(h1 - h2) > 180.0) {
        if (h1 < h2)
            h1 += 360.0;
        else
            h2 += 360.0;
    }
    SVxNcsBase result{first.letter, h1 * (1 - t) + h2 * t, first.saturation * (1 - t) + second.saturation * t,
                      first.value * (1 - t) + second.value * t};
    result.hue = std::fmod(result.hue, 360.0);
    return result;
}

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

} // namespace

void VX_RGBtoHSL(unsigned colour, int& h, int& s, int& l)
{
    double r, g, b, maxC, minC;
    SplitUnit(colour, r, g, b);
    const double hue = HueOf(r, g, b, maxC, minC);
    const double light = (maxC + minC) / 2.0;
    const double delta = maxC - minC;
    double sat = 0;
    if (delta > 0)
        sat = delta / (1.0 - std::fabs(2.0 * light - 1.0));
    h = HueToInt(hue);
    s = ClampInt(RoundToInt(sat * 100.0), 0, 100);
    l = ClampInt(RoundToInt(light * 100.0), 0, 100);
}

unsigned VX_HSLtoRGB(int h, int s, int l)
{
    const double sat = ClampInt(s, 0, 100) / 100.0;
    const double light = ClampInt(l, 0, 100) / 100.0;
    const double c = (1.0 - std::fabs(2.0 * light - 1.0)) * sat;
    return FromHueChroma(NormalizeHue(h), c, light - c / 2.0);
}

void VX_RGBtoHSV(unsigned colour, int& h, int& s, int& v)
{
    double sat, val;
    const double hue = HsvFromDoubles(colour, sat, val);
    h = HueToInt(hue);
    s = ClampInt(RoundToInt(sat), 0, 100);
    v = ClampInt(RoundToInt(val), 0, 100);
}

unsigned VX_HSVtoRGB(int h, int s, int v)
{
    return HsvToRgbDouble(NormalizeHue(h), ClampInt(s, 0, 100), ClampInt(v, 0, 100));
}

void VX_RGBtoXYZ(unsigned colour, double& x, double& y, double& z)
{
    double r, g, b;
    SplitUnit(colour, r, g, b);
    r = LinearFromSrgb(r) * 100.0;
    g = LinearFromSrgb(g) * 100.0;
    b = LinearFromSrgb(b) * 100.0;
    x = r * 0.4124564 + g * 0.3575761 + b * 0.1804375;
    y = r * 0.2126729 + g * 0.7151522 + b * 0.0721750;
    z = r * 0.0193339 + g * 0.1191920 + b * 0.9503041;
}

void VX_RGBtoLab(unsigned colour, double& L, double& a, double& b)
{
    double x, y, z;
    VX_RGBtoXYZ(colour, x, y, z);
    // Reference white D65, and the two constants of the CIE definition.
    constexpr double whiteX = 95.047, whiteY = 100.0, whiteZ = 108.883;
    constexpr double epsilon = 216.0 / 24389.0, kappa = 24389.0 / 27.0;
    auto f = [](double t) { return t > epsilon ? std::cbrt(t) : (kappa * t + 16.0) / 116.0; };
    const double fx = f(x / whiteX), fy = f(y / whiteY), fz = f(z / whiteZ);
    L = 116.0 * fy - 16.0;
    a = 500.0 * (fx - fy);
    b = 200.0 * (fy - fz);
}

CVxStringW VX_RGBtoHex(unsigned colour)
{
    CVxStringW text;
    text.sprintf(L"%02x%02x%02x", VX_GetRValue(colour), VX_GetGValue(colour), VX_GetBValue(colour));
    return text;
}

bool VX_HexToRGB(const CVxStringW& text, unsigned& colour)
{
    if (text.GetLength() != 6)
        return false;
    unsigned channel[3];
    for (int i = 0; i < 3; ++i) {
        const int hi = HexDigit(text[2 * i]);
        const int lo = HexDigit(text[2 * i + 1]);
        if (hi < 0 || lo < 0)
            return false;
        channel[i] = static_cast<unsigned>(hi * 16 + lo);
    }
    colour = VX_RGB(channel[0], channel[1], channel[2]);
    return true;
}

bool VX_NCStoRGB(const CVxStringW& text, unsigned& colour)
{
    CVxStringW upper(text);
    upper.UpperCase();
    const int dash = upper.Find(L'-');
    if (dash < 0)
        return false;
    CVxStringW left = upper.Left(dash);
    CVxStringW right = upper.Mid(dash + 1);
    left.Trim();
    right.Trim();

    // The nuance: an optional "NCS" and "S" ahead of four digits.
    if (left.StartsWith(CVxStringW(L"NCS")))
        left = left.Mid(3).TrimLeft();
    if (left.StartsWith(CVxStringW(L"S")))
        left = left.Mid(1).TrimLeft();
    if (left.GetLength() != 4)
        return false;
    for (int i = 0; i < 4; ++i)
        if (!IsDigit(left[i]))
            return false;
    const int nuance = left.ToIntDef(0);
    const double blackness = nuance / 100;
    const double chromaticness = nuance % 100;
    const double value = std::clamp(100.0 - blackness, 0.0, 100.0);
    double saturation = chromaticness;
    if (value > 0.01)
        saturation = std::clamp(chromaticness / value * 100.0, 0.0, 100.0);

    SVxNcsBase hue;
    if (right == CVxStringW(L"N")) {
        colour = HsvToRgbDouble(0, 0, value);
        return true;
    }
    if (right.GetLength() == 1) {
        const SVxNcsBase* base = FindNcsBase(right[0]);
        if (!base)
            return false;
        hue = *base;
    } else if (right.GetLength() == 4 && IsDigit(right[1]) && IsDigit(right[2])) {
        const SVxNcsBase* first = FindNcsBase(right[0]);
        const SVxNcsBase* second = FindNcsBase(right[3]);
        if (!first || !second)
            return false;
        const int share = (right[1] - L'0') * 10 + (right[2] - L'0');
        hue = BlendNcs(*first, *second, share / 100.0);
    } else {
        return false;
    }
    colour = HsvToRgbDouble(hue.hue, hue.saturation * saturation / 100.0, hue.value * value / 100.0);
    return true;
}

CVxStringW VX_RGBtoNCS(unsigned colour)
{
    double s, v;
    const double h = HsvFromDoubles(colour, s, v);
    CVxStringW text;
    if (s < 4.0) {
        const int blackness = std::clamp(RoundToInt(100.0 - v), 0, 99);
        text.sprintf(L"S %02d00-N", blackness);
        return text;
    }
    // Along the NCS circle Y, R, B, G the screen hue falls steadily; unwrap it
    // so that each quarter is one interval.
    double unwrapped[5];
    unwrapped[0] = g_ncsBase[0].hue;
    for (int i = 1; i < 5; ++i) {
        double next = g_ncsBase[i % 4].hue;
        while (next > unwrapped[i - 1])
            next -= 360.0;
        unwrapped[i] = next;
    }
    double hh = h;
    while (hh > unwrapped[0])
        hh -= 360.0;
    while (hh <= unwrapped[4])
        hh += 360.0;
    int quarter = 0;
    while (quarter < 3 && hh < unwrapped[quarter + 1])
        ++quarter;
    const double t = (unwrapped[quarter] - hh) / (unwrapped[quarter] - unwrapped[quarter + 1]);
    const SVxNcsBase& first = g_ncsBase[quarter];
    const SVxNcsBase& second = g_ncsBase[(quarter + 1) % 4];
    const SVxNcsBase blended = BlendNcs(first, second, t);

    const double valueShare = std::clamp(v * 100.0 / blended.value, 0.0, 100.0);
    const int blackness = std::clamp(RoundToInt(100.0 - valueShare), 0, 99);
    const double saturationShare = std::clamp(s * 100.0 / blended.saturation, 0.0, 100.0);
    const int chromaticness = std::clamp(RoundToInt(saturationShare * (100.0 - blackness) / 100.0), 0,
                                         std::min(99, 100 - blackness));

    const int share = RoundToInt(t * 100.0);
    if (share <= 0)
        text.sprintf(L"S %02d%02d-%lc", blackness, chromaticness, static_cast<wint_t>(first.letter));
    else if (share >= 100)
        text.sprintf(L"S %02d%02d-%lc", blackness, chromaticness, static_cast<wint_t>(second.letter));
    else
        text.sprintf(L"S %02d%02d-%lc%02d%lc", blackness, chromaticness, static_cast<wint_t>(first.letter),
                     share, static_cast<wint_t>(second.letter));
    return text;
}

bool VX_ColorFromText(const CVxStringW& text, unsigned& colour)
{
    CVxStringW trimmed(text);
    trimmed.Trim();
    const int length = trimmed.GetLength();
    if (length >= 2 && trimmed[0] == L'0' && (trimmed[1] == L'x' || trimmed[1] == L'X')) {
        if (length == 2 || length > 10)
            return false;
        unsigned value = 0;
        for (int i = 2; i < length; ++i) {
            const int d = HexDigit(trimmed[i]);
            if (d < 0)
                return false;
            value = value * 16 + static_cast<unsigned>(d);
        }
        colour = value;
        return true;
    }
    int i = 0;
    const bool negative = length > 0 && trimmed[0] == L'-';
    if (negative)
        ++i;
    if (i >= length || length - i > 10)
        return false;
    int64_t value = 0;
    for (; i < length; ++i) {
        if (!IsDigit(trimmed[i]))
            return false;
        value = value * 10 + (trimmed[i] - L'0');
    }
    if (negative)
        value = -value;
    if (value < INT32_MIN || value > static_cast<int64_t>(UINT32_MAX))
        return false;
    colour = static_cast<unsigned>(static_cast<uint32_t>(value));
    return true;
}
