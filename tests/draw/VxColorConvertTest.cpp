#include "VxColorConvert.h"

#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

struct SLabReference
{
    unsigned colour;
    double L, a, b;
};

// CIE L*a*b* (D65) of sRGB colours as colour science tables give them.
const SLabReference g_labReferences[] = {
    {VX_RGB(255, 255, 255), 100.0, 0.0, 0.0},          {VX_RGB(0, 0, 0), 0.0, 0.0, 0.0},
    {VX_RGB(255, 0, 0), 53.2408, 80.0925, 67.2032},    {VX_RGB(0, 255, 0), 87.7347, -86.1827, 83.1793},
    {VX_RGB(0, 0, 255), 32.2970, 79.1875, -107.8602},  {VX_RGB(128, 128, 128), 53.5850, 0.0, 0.0},
    {VX_RGB(255, 255, 0), 97.1393, -21.5537, 94.4780},
};

int ChannelDistance(unsigned a, unsigned b)
{
    return std::max({std::abs(int(VX_GetRValue(a)) - int(VX_GetRValue(b))),
                     std::abs(int(VX_GetGValue(a)) - int(VX_GetGValue(b))),
                     std::abs(int(VX_GetBValue(a)) - int(VX_GetBValue(b)))});
}

} // namespace

TEST(ColorWord, ChannelsAreRedInTheLowByte)
{
    EXPECT_EQ(0x0000FFu, VX_RGB(255, 0, 0));
    EXPECT_EQ(0x123456u, VX_RGB(0x56, 0x34, 0x12));
    EXPECT_TRUE(VX_IsColorOff(0xEFDEDEDE));
    EXPECT_FALSE(VX_IsColorOff(0xEEFFFFFE));
    EXPECT_EQ(0xDEDEDEu, VX_ColorSwitchOn(0xEFDEDEDE));
    EXPECT_EQ(0xEF123456u, VX_ColorSwitchOff(0x123456));
}

TEST(ColorConvert, LabOfReferenceColours)
{
    for (const SLabReference& ref : g_labReferences) {
        double L, a, b;
        VX_RGBtoLab(ref.colour, L, a, b);
        EXPECT_NEAR(ref.L, L, 0.01) << std::hex << ref.colour;
        EXPECT_NEAR(ref.a, a, 0.01) << std::hex << ref.colour;
        EXPECT_NEAR(ref.b, b, 0.01) << std::hex << ref.colour;
    }
}

TEST(ColorConvert, XyzOfRedAndWhite)
{
    double x, y, z;
    VX_RGBtoXYZ(VX_RGB(255, 0, 0), x, y, z);
    EXPECT_NEAR(41.2456, x, 0.001);
    EXPECT_NEAR(21.2673, y, 0.001);
    EXPECT_NEAR(1.9334, z, 0.001);
    VX_RGBtoXYZ(VX_RGB(255, 255, 255), x, y, z);
    EXPECT_NEAR(95.047, x, 0.001);
    EXPECT_NEAR(100.0, y, 0.001);
    EXPECT_NEAR(108.883, z, 0.001);
}

TEST(ColorConvert, HslAndHsvOfPrimaries)
{
    int h, s, l, v;
    VX_RGBtoHSL(VX_RGB(255, 0, 0), h, s, l);
    EXPECT_EQ(0, h);
    EXPECT_EQ(100, s);
    EXPECT_EQ(50, l);
    VX_RGBtoHSL(VX_RGB(0, 0, 255), h, s, l);
    EXPECT_EQ(240, h);
    VX_RGBtoHSL(VX_RGB(255, 255, 255), h, s, l);
    EXPECT_EQ(0, s);
    EXPECT_EQ(100, l);

    VX_RGBtoHSV(VX_RGB(0, 255, 255), h, s, v);
    EXPECT_EQ(180, h);
    EXPECT_EQ(100, s);
    EXPECT_EQ(100, v);
    VX_RGBtoHSV(VX_RGB(128, 0, 128), h, s, v);
    EXPECT_EQ(300, h);
    EXPECT_EQ(50, v);

    EXPECT_EQ(VX_RGB(255, 0, 0), VX_HSLtoRGB(0, 100, 50));
    EXPECT_EQ(VX_RGB(255, 0, 0), VX_HSLtoRGB(360, 100, 50));
    EXPECT_EQ(VX_RGB(255, 255, 0), VX_HSVtoRGB(60, 100, 100));
    EXPECT_EQ(VX_RGB(128, 128, 128), VX_HSVtoRGB(77, 0, 50));
}

TEST(ColorConvert, HsvAndHslRoundTripWithinRounding)
{
    for (unsigned r = 0; r < 256; r += 51)
        for (unsigned g = 0; g < 256; g += 51)
            for (unsigned b = 0; b < 256; b += 51) {
                const unsigned colour = VX_RGB(r, g, b);
                int h, s, x;
                VX_RGBtoHSV(colour, h, s, x);
                EXPECT_LE(ChannelDistance(colour, VX_HSVtoRGB(h, s, x)), 4) << std::hex << colour;
                VX_RGBtoHSL(colour, h, s, x);
                EXPECT_LE(ChannelDistance(colour, VX_HSLtoRGB(h, s, x)), 4) << std::hex << colour;
            }
}

TEST(ColorConvert, HexIsTheWebOrderOfSixDigits)
{
    EXPECT_EQ(CVxStringW(L"ff0000"), VX_RGBtoHex(0x0000FF));
    EXPECT_EQ(CVxStringW(L"0a0b0c"), VX_RGBtoHex(VX_RGB(10, 11, 12)));
    unsigned colour = 7;
    EXPECT_TRUE(VX_HexToRGB(L"FF0000", colour));
    EXPECT_EQ(0x0000FFu, colour);
    EXPECT_TRUE(VX_HexToRGB(L"aBcDeF", colour));
    EXPECT_EQ(VX_RGB(0xAB, 0xCD, 0xEF), colour);
    // Everything but six digits is rejected and leaves the colour.
    colour = 7;
    EXPECT_FALSE(VX_HexToRGB(L"FF00", colour));
    EXPECT_FALSE(VX_HexToRGB(L"#FF0000", colour));
    EXPECT_FALSE(VX_HexToRGB(L"0xFF0000", colour));
    EXPECT_FALSE(VX_HexToRGB(L"FF000G", colour));
    EXPECT_FALSE(VX_HexToRGB(L"", colour));
    EXPECT_FALSE(VX_HexToRGB(L"FF0000 ", colour));
    EXPECT_EQ(7u, colour);
}

TEST(ColorConvert, ColourTokensOfFiles)
{
    unsigned colour = 1;
    EXPECT_TRUE(VX_ColorFromText(L"0xEFDEDEDE", colour));
    EXPECT_EQ(0xEFDEDEDEu, colour);
    EXPECT_TRUE(VX_ColorFromText(L"0X00ff00", colour));
    EXPECT_EQ(0x00FF00u, colour);
    EXPECT_TRUE(VX_ColorFromText(L"255", colour));
    EXPECT_EQ(255u, colour);
    // Old files wrote words with the top bit set as negative decimals.
    EXPECT_TRUE(VX_ColorFromText(L"-1", colour));
    EXPECT_EQ(0xFFFFFFFFu, colour);
    colour = 5;
    EXPECT_FALSE(VX_ColorFromText(L"0x123456789", colour));
    EXPECT_FALSE(VX_ColorFromText(L"0x", colour));
    EXPECT_FALSE(VX_ColorFromText(L"red", colour));
    EXPECT_FALSE(VX_ColorFromText(L"99999999999", colour));
    EXPECT_FALSE(VX_ColorFromText(L"12abc", colour));
    EXPECT_FALSE(VX_ColorFromText(L"-", colour));
    EXPECT_FALSE(VX_ColorFromText(L"", colour));
    EXPECT_EQ(5u, colour);
}

TEST(ColorConvert, NcsElementaryAndNeutralColours)
{
    unsigned colour = 0;
    ASSERT_TRUE(VX_NCStoRGB(L"S 0500-N", colour));
    EXPECT_EQ(VX_RGB(242, 242, 242), colour);
    ASSERT_TRUE(VX_NCStoRGB(L"0080-Y", colour));
    int h, s, v;
    VX_RGBtoHSV(colour, h, s, v);
    EXPECT_NEAR(50, h, 2);
    EXPECT_EQ(80, s);
    EXPECT_EQ(100, v);

    // Ten percent towards yellow from red: an orange-leaning red.
    ASSERT_TRUE(VX_NCStoRGB(L"s 1070-r10y", colour));
    VX_RGBtoHSV(colour, h, s, v);
    EXPECT_TRUE(h >= 350 || h <= 2) << h;

    // A blend takes the short way round the hue circle.
    ASSERT_TRUE(VX_NCStoRGB(L"S 0090-Y50R", colour));
    VX_RGBtoHSV(colour, h, s, v);
    // Halfway between yellow (about 50) and red (about 345) is orange.
    EXPECT_NEAR(17, h, 2);
}

TEST(ColorConvert, NcsRejectsMalformedText)
{
    unsigned colour = 3;
    EXPECT_FALSE(VX_NCStoRGB(L"S 1050 Y90R", colour));
    EXPECT_FALSE(VX_NCStoRGB(L"S 1050-X", colour));
    EXPECT_FALSE(VX_NCStoRGB(L"S 1050-Y90X", colour));
    EXPECT_FALSE(VX_NCStoRGB(L"S 10-Y", colour));
    EXPECT_FALSE(VX_NCStoRGB(L"S 1050-Y9R", colour));
    EXPECT_FALSE(VX_NCStoRGB(L"-", colour));
    EXPECT_FALSE(VX_NCStoRGB(L"", colour));
    EXPECT_EQ(3u, colour);
}

TEST(ColorConvert, NcsNotationRoundTrips)
{
    const unsigned colours[] = {VX_RGB(200, 60, 40), VX_RGB(40, 90, 160), VX_RGB(128, 128, 128),
                                VX_RGB(240, 235, 225), VX_RGB(20, 20, 20)};
    for (unsigned colour : colours) {
        const CVxStringW ncs = VX_RGBtoNCS(colour);
        unsigned back = 0;
        ASSERT_TRUE(VX_NCStoRGB(ncs, back)) << ncs.ToQString().toStdString();
        EXPECT_LE(ChannelDistance(colour, back), 8) << ncs.ToQString().toStdString();
    }
}
