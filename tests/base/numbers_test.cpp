// Numbers on disk and on screen, and the units.

#include "CVxAppCore.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "VxNumbers.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(DblSave, TrimsZerosAndKeepsSixDecimalsOtherwise)
{
    EXPECT_EQ(DblSave(0.1), "0.1");
    EXPECT_EQ(DblSave(1e-9), "0");
    EXPECT_EQ(DblSave(-0.5), "-0.5");
    EXPECT_EQ(DblSave(1.23456789), "1.234568");
    EXPECT_EQ(DblSave(3.0), "3");
    EXPECT_EQ(DblSave(12.5), "12.5");
    EXPECT_EQ(DblSave(0.0), "0");
    EXPECT_EQ(DblSave(265.0), "265");
    EXPECT_EQ(DblSaveW(2.65), L"2.65");
    // Values far beyond a plan's scale still give a whole, readable number.
    EXPECT_EQ(DblLoad(DblSave(1e300), 0), 1e300);
}

TEST(DblLoad, ReadsCLocaleAndFallsBack)
{
    EXPECT_DOUBLE_EQ(DblLoad(CVxStringA("12.75"), -1), 12.75);
    EXPECT_DOUBLE_EQ(DblLoad(CVxStringW(L"-3e2"), -1), -300);
    EXPECT_DOUBLE_EQ(DblLoad(CVxStringA("abc"), -1), -1);
    EXPECT_DOUBLE_EQ(DblLoad(CVxStringA(""), 4), 4);
    EXPECT_DOUBLE_EQ(DblLoad(CVxStringW(L" 5|x"), 0), 5);
}

TEST(DblRound, HalfAwayFromZero)
{
    double v = 2.5;
    EXPECT_EQ(DblRound(v), 3);
    EXPECT_DOUBLE_EQ(v, 3.0);
    v = -2.5;
    EXPECT_EQ(DblRound(v), -3);
    EXPECT_DOUBLE_EQ(DblRoundx(0.49), 0.0);
    v = 10.125;
    EXPECT_DOUBLE_EQ(DblRound2(v), 10.13);
    EXPECT_DOUBLE_EQ(v, 10.13);
    EXPECT_DOUBLE_EQ(DblRound2x(-1.005), -1.0); // -1.005 is stored as -1.00499999...
    EXPECT_DOUBLE_EQ(DblRound2x(0.125), 0.13);
    // A damaged file's huge coordinate rounds without overflow.
    double huge = 1e300;
    EXPECT_EQ(DblRound(huge), std::numeric_limits<int>::max());
    double nan = std::nan("");
    DblRound(nan);
}

TEST(DblRead, TypedTextFallsBackToInteger)
{
    bool ok = false;
    EXPECT_DOUBLE_EQ(DblRead(CVxStringW(L"2.5"), 0, &ok), 2.5);
    EXPECT_TRUE(ok);
    EXPECT_DOUBLE_EQ(DblRead(CVxStringW(L"12cm"), 0, &ok), 12);
    EXPECT_FALSE(ok);
    EXPECT_DOUBLE_EQ(DblRead(CVxStringW(L"abc"), 7, &ok), 7);
    EXPECT_FALSE(ok);
}

// Screen texts of lengths in inches, with the feet conversion on.
class InchesFormat : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_project = &VX_GetCore()->GetProject();
        m_savedUnit = m_project->m_unit;
        m_savedPrecision = m_project->m_inchesPrecision;
        m_savedConvert = VX_GetOptions()->m_convertFeetInEdit;
        m_project->m_unit = CVxUnits::UNIT_INCH;
        VX_GetOptions()->m_convertFeetInEdit = true;
    }
    void TearDown() override
    {
        m_project->m_unit = m_savedUnit;
        m_project->m_inchesPrecision = m_savedPrecision;
        VX_GetOptions()->m_convertFeetInEdit = m_savedConvert;
    }
    CVxProject* m_project = nullptr;
    int m_savedUnit = 0;
    int m_savedPrecision = 0;
    bool m_savedConvert = true;
};

TEST_F(InchesFormat, FeetInchesAndGlyphs)
{
    m_project->m_inchesPrecision = 3;
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_FEET_GLYPHS, true), L"5' 5\u00BD\"");
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_INCHES_GLYPHS, true), L"65\u00BD\"");
    // 3/32 has no glyph: the ASCII fraction stands apart from the inches.
    EXPECT_EQ(VX_DblFormat(2.09375, VX_DF_INCHES_GLYPHS, false), L"2 3/32");

    m_project->m_inchesPrecision = 4;
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_FEET_GLYPHS, true), L"5' 5 1/2\"");
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_INCHES_GLYPHS, true), L"65 1/2\"");
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_FEET, false), L"5' 5 1/2");
}

TEST_F(InchesFormat, EdgesOfTheFraction)
{
    EXPECT_EQ(VX_DblFormat(-0.5, VX_DF_FEET, false), L"-1/2");
    EXPECT_EQ(VX_DblFormat(0.0, VX_DF_FEET, false), L"0");
    EXPECT_EQ(VX_DblFormat(24.0, VX_DF_FEET, true), L"2' 0\"");
    // A fraction rounded up to 32/32 prints nothing: 5.99 reads as five.
    EXPECT_EQ(VX_DblFormat(5.99, VX_DF_INCHES, false), L"5");
    // Below 1/64 there is nothing to print at all.
    EXPECT_EQ(VX_DblFormat(0.01, VX_DF_INCHES, false), L"");
    EXPECT_EQ(VX_DblFormat(-30.25, VX_DF_FEET, true), L"-2' 6 1/4\"");
}

TEST_F(InchesFormat, DecimalFormatAndOtherUnitsUseTheLocale)
{
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_DECIMAL, false), CVxStringW(65.5));
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_FEET, false, CVxUnits::UNIT_CM), CVxStringW(65.5));
    VX_GetOptions()->m_convertFeetInEdit = false;
    EXPECT_EQ(VX_DblFormat(65.5, VX_DF_FEET, false), CVxStringW(65.5));
}

TEST_F(InchesFormat, DifferMarkInEveryFormat)
{
    for (int format = VX_DF_FEET; format <= VX_DF_DECIMAL; ++format)
        for (int unit = -1; unit < CVxUnits::UNIT_COUNT; ++unit)
            EXPECT_EQ(VX_DblFormat(-19182.0, static_cast<EVxDblFormat>(format), true, unit), L"differ.");
}

TEST_F(InchesFormat, ReadFeetAndFractions)
{
    bool ok = false;
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"5' 3 1/2\""), 0, &ok), 63.5);
    EXPECT_TRUE(ok);
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"5'"), 0, &ok), 60);
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"3 1/2"), 0, &ok), 3.5);
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"7/8"), 0, &ok), 0.88);
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"-2' 6"), 0, &ok), -30);
    // No apostrophe and no slash: the plain path.
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"abc"), 9, &ok), 9);
    EXPECT_FALSE(ok);
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"12.345\""), 0, &ok), 12);
    // A broken fraction keeps the default for the inches.
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"x'y/z"), 4, &ok), 4);
    EXPECT_FALSE(ok);
    // Outside inches, any text is a plain number rounded to hundredths.
    EXPECT_DOUBLE_EQ(VX_DblReadText(CVxStringW(L"2.345"), 0, &ok, CVxUnits::UNIT_M), 2.35);
}

TEST_F(InchesFormat, FormatThenReadGivesTheValueBack)
{
    m_project->m_inchesPrecision = 3;
    for (double value : {0.5, 12.0, 65.5, 100.25, 7.125}) {
        for (EVxDblFormat format : {VX_DF_FEET, VX_DF_INCHES}) {
            bool ok = false;
            const CVxStringW text = VX_DblFormat(value, format, true);
            EXPECT_DOUBLE_EQ(VX_DblReadText(text, -1, &ok), DblRound2x(value))
                << text.ToQString().toStdString();
        }
    }
}

TEST(Units, TableAndConversion)
{
    EXPECT_EQ(CVxUnits::GetUnitEngTextIdx(CVxStringA("mm")), 0);
    EXPECT_EQ(CVxUnits::GetUnitEngTextIdx(CVxStringA("\"")), 2);
    EXPECT_EQ(CVxUnits::GetUnitEngTextIdx(CVxStringA("km")), 7);
    EXPECT_EQ(CVxUnits::GetUnitEngTextIdx(CVxStringA("furlong")), 1);
    EXPECT_EQ(CVxUnits::GetUnitEngTextIdx(CVxStringA("")), 1);
    EXPECT_DOUBLE_EQ(CVxUnits::ConvertLength(1, CVxUnits::UNIT_FT, CVxUnits::UNIT_INCH), 12);
    EXPECT_DOUBLE_EQ(CVxUnits::ConvertLength(2.5, CVxUnits::UNIT_M, CVxUnits::UNIT_MM), 2500);
    EXPECT_DOUBLE_EQ(CVxUnits::ConvertLength(1, CVxUnits::UNIT_YD, CVxUnits::UNIT_CM), 91.44);
    EXPECT_EQ(CVxUnits::GetUnitText(CVxUnits::UNIT_INCH), L"\"");
    EXPECT_EQ(CVxUnits::GetUnitText(42), L"cm");
}

TEST(Units, LocalizeWithoutLanguageKeepsEnglish)
{
    CVxUnits::LocalizeUnits();
    EXPECT_EQ(CVxUnits::wsUnitName[CVxUnits::UNIT_INCH], L"inches");
    EXPECT_EQ(CVxUnits::wsUnitText[CVxUnits::UNIT_INCH], L"\"");
    EXPECT_EQ(CVxUnits::wsUnitText[CVxUnits::UNIT_M], L"m");
    EXPECT_EQ(CVxUnits::wsAreaUnitText[CVxUnits::UNIT_M], L"m\u00B2");
}

TEST(AreaFormat, DecimalsByTheOptionOrBySizeAndUnit)
{
    CVxOptions* options = VX_GetOptions();
    const int saved = options->m_areaLabelsDecimalPrec;
    options->m_areaLabelsDecimalPrec = -1;
    // Automatic: metres and feet keep one decimal from 1 up, three below 0.1.
    EXPECT_EQ(VX_DblFormatAreaValue(28.9789, CVxUnits::UNIT_M), CVxStringW(29.0) + L" m\u00B2");
    EXPECT_EQ(VX_DblFormatAreaValue(311.7594, CVxUnits::UNIT_FT), CVxStringW(311.8) + L" ft\u00B2");
    EXPECT_EQ(VX_DblFormatAreaValue(0.5432, CVxUnits::UNIT_M), CVxStringW(0.54) + L" m\u00B2");
    EXPECT_EQ(VX_DblFormatAreaValue(0.05, CVxUnits::UNIT_M), CVxStringW(0.05) + L" m\u00B2");
    EXPECT_EQ(VX_DblFormatAreaValue(0.04321, CVxUnits::UNIT_KM), CVxStringW(0.043) + L" km\u00B2");
    // Small units count whole ones from 10 up.
    EXPECT_EQ(VX_DblFormatAreaValue(12345.6, CVxUnits::UNIT_CM), CVxStringW(12346.0) + L" cm\u00B2");
    EXPECT_EQ(VX_DblFormatAreaValue(5.56, CVxUnits::UNIT_CM), CVxStringW(5.6) + L" cm\u00B2");
    options->m_areaLabelsDecimalPrec = 2;
    EXPECT_EQ(VX_DblFormatAreaValue(28.9789, CVxUnits::UNIT_M), CVxStringW(28.98) + L" m\u00B2");
    options->m_areaLabelsDecimalPrec = 1000;
    EXPECT_EQ(VX_DblFormatAreaValue(1.5, CVxUnits::UNIT_M), CVxStringW(1.5) + L" m\u00B2");
    options->m_areaLabelsDecimalPrec = saved;
}
