// The user's settings in config.ini.

#include "CVxIniFileReader.h"
#include "CVxOptions.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "IVxAppHelperCallback.h"
#include "VxTestEnv.h"
#include "VxUtf8.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

namespace {

CVxStringA SaveToText(CVxOptions& options)
{
    CVxStringWriter writer;
    options.SaveToRegistry(&writer);
    return writer.GetString();
}

void LoadFromText(CVxOptions& options, const char* text)
{
    CVxStringReader reader(CVxStringA(text), 65001);
    options.LoadFromReader(&reader);
}

// The keys of the "Options" section in the order written.
std::vector<CVxStringA> KeysInOrder(const CVxStringA& text)
{
    std::vector<CVxStringA> keys;
    for (const CVxStringA& line : text.Split('\n')) {
        const int eq = line.Find('=');
        if (eq > 0)
            keys.push_back(line.Left(eq));
    }
    return keys;
}

int IndexOf(const std::vector<CVxStringA>& keys, const char* key)
{
    for (size_t i = 0; i < keys.size(); ++i)
        if (keys[i] == key)
            return static_cast<int>(i);
    return -1;
}

} // namespace

TEST(Options, DefaultsOfANewSettingsFile)
{
    CVxOptions options;
    EXPECT_EQ(options.m_defFillColor, 0xD9FFFFu);
    EXPECT_EQ(options.m_defWallColor, 0x808080u);
    EXPECT_DOUBLE_EQ(options.m_defMeasLineWidth, 25);
    EXPECT_EQ(options.m_labelFont, L"Tahoma|12|238|0|0");
    EXPECT_EQ(options.m_defCaptionFont, L"Tahoma|8|238|0|0");
    EXPECT_EQ(options.m_defaultUnit, L"cm");
    EXPECT_EQ(options.m_pageBorder, 150);
    EXPECT_DOUBLE_EQ(options.m_3DAvatarHeight, 160);
    EXPECT_EQ(options.m_inchesPrecision, 3);
    EXPECT_EQ(options.m_areaLabelsDecimalPrec, -1);
    EXPECT_EQ(options.m_feetConvX, -1);
    EXPECT_EQ(options.m_feetConvY, 0);
    EXPECT_EQ(options.m_alignPaletteX, -1);
    EXPECT_DOUBLE_EQ(options.m_shadowLatitude, 50);
    EXPECT_EQ(options.m_autoSaveInterval, 2);
    EXPECT_EQ(options.m_lastVersion, 110);
    EXPECT_EQ(options.m_language, 1);
    EXPECT_TRUE(options.m_mainWndMax);
    EXPECT_TRUE(options.m_convertFeetInEdit);
    EXPECT_FALSE(options.m_showGridLabels);
    EXPECT_EQ(options.m_lastOpenFolder, VX_GetAppHelper()->GetUserDocsPath());
}

TEST(Options, WritesEveryKeyInItsOrder)
{
    CVxOptions options;
    options.m_libAddLib = {L"/libs/garden.pvl"};
    const std::vector<CVxStringA> keys = KeysInOrder(SaveToText(options));
    ASSERT_FALSE(keys.empty());
    EXPECT_EQ(keys.front(), "DefLineColor");
    EXPECT_EQ(keys.back(), "AppUseCustomOpenSaveDlg");
    const char* const order[] = {
        "DefWallColor",       "FloorAppear", "LabelFont",  "DefaultUnit",    "3DAvatarHeight", "AntiAliasing",
        "CrashWhileAppStart", "LibAddCount", "LibAddLib0", "ExtLibOptCount", "Recent0",        "Recent3",
        "DrawFloorTextures",  "LastVersion", "Language",   "MainWndHeight"};
    int previous = -1;
    for (const char* key : order) {
        const int index = IndexOf(keys, key);
        EXPECT_GT(index, previous) << key;
        previous = index;
    }
    // No key is written twice.
    for (size_t i = 0; i < keys.size(); ++i)
        for (size_t j = i + 1; j < keys.size(); ++j)
            EXPECT_NE(keys[i], keys[j]);
}

TEST(Options, RoundTripKeepsValuesAndLibraryLists)
{
    CVxOptions options;
    options.m_defFillColor = 0x123456;
    options.m_defaultUnit = L"m";
    options.m_autoSaveInterval = -1;
    options.m_3DAvatarHeight = 172;
    options.m_shadowLatitude = 48.137;
    options.m_recent[2] = L"/home/ann/Häuser/flat.pvp";
    options.m_libAddLib = {L"/libs/a.pvl", L"/libs/b.pvl"};
    options.m_extLibOpt = {L"1|x"};
    options.m_showGrid = false;
    const CVxStringA text = SaveToText(options);
    EXPECT_TRUE(text.Contains(CVxStringA("DefFillColor=0x123456\r\n")));

    CVxOptions back;
    LoadFromText(back, text.c_str());
    EXPECT_EQ(back.m_defFillColor, 0x123456u);
    EXPECT_EQ(back.m_defaultUnit, L"m");
    EXPECT_EQ(back.m_autoSaveInterval, -1);
    EXPECT_DOUBLE_EQ(back.m_3DAvatarHeight, 172);
    EXPECT_DOUBLE_EQ(back.m_shadowLatitude, 48.137);
    EXPECT_EQ(back.m_recent[2], L"/home/ann/Häuser/flat.pvp");
    ASSERT_EQ(back.m_libAddLib.size(), 2u);
    EXPECT_EQ(back.m_libAddLib[1], L"/libs/b.pvl");
    ASSERT_EQ(back.m_extLibOpt.size(), 1u);
    EXPECT_FALSE(back.m_showGrid);
    EXPECT_EQ(SaveToText(back), text);
}

TEST(Options, ToleratesDamagedValues)
{
    CVxOptions options;
    LoadFromText(options, "[Other]\r\nShowGrid=0\r\n[Options]\r\nShowGrid=-4\r\nShowCaptions=7\r\n"
                          "PageBorder=wide\r\nDefaultUnit=\r\nLabelFont=\r\nLibAddCount=99999999\r\n"
                          "LibAddLib5=x\r\nLibAddLibX=y\r\nExtLibOptCount=-3\r\nnonsense\r\n=5\r\n");
    EXPECT_FALSE(options.m_showGrid);
    EXPECT_TRUE(options.m_showCaptions);
    EXPECT_EQ(options.m_pageBorder, 150);
    EXPECT_EQ(options.m_defaultUnit, L"");
    EXPECT_EQ(options.m_labelFont, L"Tahoma|12|238|0|0");
    EXPECT_LE(options.m_libAddLib.size(), 1000u);
    EXPECT_EQ(options.m_libAddLib[5], L"x");
    EXPECT_TRUE(options.m_extLibOpt.empty());
    // A section other than "Options" is not read.
    CVxOptions other;
    LoadFromText(other, "[Other]\r\nShowGrid=0\r\n");
    EXPECT_TRUE(other.m_showGrid);
}

TEST(Options, ConfigFileRoundTripsAndGarbageReadsAsDefaults)
{
    const CVxStringW path = CVxOptions::GetConfigFilePath();
    EXPECT_TRUE(path.EndsWith(CVxStringW(L"/config.ini")));

    CVxOptions missing;
    VX_GetAppHelper()->FileDelete(path);
    EXPECT_FALSE(missing.LoadFromRegistry());
    EXPECT_EQ(missing.m_language, 1);

    CVxOptions options;
    options.m_language = 1031;
    // 64-bit keys are written only to files.
    options.m_lastTimeCheckForCrash = 1763800000123LL;
    ASSERT_TRUE(options.SaveToRegistry());
    EXPECT_FALSE(VX_GetAppHelper()->FileExists(path + L".saving~"));
    CVxOptions back;
    ASSERT_TRUE(back.LoadFromRegistry());
    EXPECT_EQ(back.m_language, 1031);
    EXPECT_EQ(back.m_lastTimeCheckForCrash, 1763800000123LL);

    // A garbled file reads as defaults where it makes no sense.
    FILE* f = fopen(VX_StringToUTF8(path).c_str(), "wb");
    ASSERT_NE(f, nullptr);
    fwrite("\xFF\xFE\x00\x01garbage\r\n[Opt", 1, 16, f);
    fclose(f);
    CVxOptions garbled;
    garbled.LoadFromRegistry();
    EXPECT_EQ(garbled.m_language, 1);
    VX_GetAppHelper()->FileDelete(path);
}
