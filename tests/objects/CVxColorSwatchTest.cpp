#include "CVxColorSwatch.h"
#include "CVxColorSwatchLibrary.h"
#include "VxColorConvert.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <set>

namespace {

CVxStringW DataFolder()
{
    return CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/";
}

void WriteFile(const CVxStringW& path, const QByteArray& bytes)
{
    QFile file(path.ToQString());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

CVxColorSwatch SwatchOf(std::initializer_list<unsigned> colours)
{
    CVxColorSwatch swatch;
    for (unsigned colour : colours) {
        CVxColorSwatchItem item;
        item.color = colour;
        swatch.AddItem(item);
    }
    return swatch;
}

} // namespace

TEST(ColorSwatchLibrary, ReadsTheShippedCatalogues)
{
    CVxColorSwatchLibrary library;
    library.SetDataFolder(DataFolder());
    EXPECT_EQ(DataFolder() + L"Swatches/", library.GetSwatchFolder());
    ASSERT_TRUE(library.InitLibrary());
    ASSERT_EQ(2, library.GetCount());

    CVxColorSwatch* ral = library.FindSwatch(L"ral classic");
    ASSERT_NE(nullptr, ral);
    EXPECT_GE(ral->GetCount(), 200);
    EXPECT_EQ(9u, ral->GetSubCategories().size());
    std::set<std::wstring> codes;
    for (const CVxColorSwatchItem& item : ral->GetItems()) {
        EXPECT_TRUE(item.code.StartsWith(CVxStringW(L"RAL "))) << item.code.ToQString().toStdString();
        EXPECT_FALSE(item.name.IsEmpty());
        EXPECT_FALSE(item.category.IsEmpty());
        codes.insert(item.code.Std());
    }
    EXPECT_EQ(static_cast<size_t>(ral->GetCount()), codes.size());

    CVxColorSwatch* interior = library.FindSwatch(L"Interior");
    ASSERT_NE(nullptr, interior);
    EXPECT_EQ(42, interior->GetCount());
    ASSERT_EQ(2u, interior->GetSubCategories().size());
    EXPECT_EQ(CVxStringW(L"Walls"), interior->GetSubCategories()[0]);
    EXPECT_EQ(nullptr, library.GetStandardSwatch());
}

TEST(ColorSwatchLibrary, RalColoursAreWhereTheCardHasThem)
{
    CVxColorSwatch ral;
    ral.SetName(L"RAL Classic");
    ASSERT_TRUE(ral.LoadValuesFromCsvFile(DataFolder() + L"colorswatch.csv"));
    auto find = [&](const wchar_t* code) -> const CVxColorSwatchItem* {
        for (const CVxColorSwatchItem& item : ral.GetItems())
            if (item.code == code)
                return &item;
        return nullptr;
    };
    const CVxColorSwatchItem* trafficRed = find(L"RAL 3020");
    ASSERT_NE(nullptr, trafficRed);
    EXPECT_EQ(CVxStringW(L"Traffic red"), trafficRed->name);
    EXPECT_EQ(CVxStringW(L"Red"), trafficRed->category);
    int h, s, v;
    VX_RGBtoHSV(trafficRed->color, h, s, v);
    EXPECT_TRUE(h < 15 || h > 345) << h;
    // Each group's colours lie in the group's part of the colour space.
    for (const CVxColorSwatchItem& item : ral.GetItems()) {
        double L, a, b;
        VX_RGBtoLab(item.color, L, a, b);
        const std::string code = item.code.ToQString().toStdString();
        if (item.category == L"Blue") {
            EXPECT_LT(b, 0) << code;
        } else if (item.category == L"Yellow and beige") {
            EXPECT_GT(b, 10) << code;
        } else if (item.category == L"Red") {
            EXPECT_GT(a, 10) << code;
        }
    }
    const CVxColorSwatchItem* jetBlack = find(L"RAL 9005");
    ASSERT_NE(nullptr, jetBlack);
    EXPECT_LT(VX_GetRValue(jetBlack->color), 30u);
}

TEST(ColorSwatch, ClosestColourIsExactFirstThenNearestInLab)
{
    const CVxColorSwatch swatch =
        SwatchOf({VX_RGB(250, 250, 250), VX_RGB(200, 0, 0), VX_RGB(0, 0, 200), VX_RGB(200, 0, 0)});
    EXPECT_EQ(1, swatch.GetClosestColor(VX_RGB(200, 0, 0)));
    EXPECT_EQ(1, swatch.GetClosestColor(VX_RGB(180, 20, 10)));
    EXPECT_EQ(0, swatch.GetClosestColor(VX_RGB(255, 255, 255)));
    EXPECT_EQ(2, swatch.GetClosestColor(VX_RGB(40, 40, 160)));
    // A switched-off colour still has its colour.
    EXPECT_EQ(2, swatch.GetClosestColor(VX_ColorSwitchOff(VX_RGB(0, 0, 200))));
    EXPECT_EQ(-1, CVxColorSwatch().GetClosestColor(0));
}

TEST(ColorSwatch, ClosestColourWithinACategory)
{
    CVxColorSwatch swatch;
    swatch.AddItem({L"", L"white wall", L"Walls", VX_RGB(250, 250, 250)});
    swatch.AddItem({L"", L"pale wood", L"Wood", VX_RGB(240, 230, 210)});
    swatch.AddItem({L"", L"any", L"", VX_RGB(0, 0, 0)});
    EXPECT_EQ(1, swatch.GetClosestColor(VX_RGB(245, 235, 215)));
    EXPECT_EQ(0, swatch.GetClosestColor(VX_RGB(245, 235, 215), L"Walls"));
    EXPECT_EQ(1, swatch.GetClosestColor(VX_RGB(250, 250, 250), L"Wood"));
    EXPECT_EQ(2, swatch.GetClosestColor(VX_RGB(10, 10, 10), L"Wood"));
}

TEST(ColorSwatch, CsvColumnsGoByTheHeader)
{
    CVxColorSwatch swatch;
    ASSERT_TRUE(swatch.LoadValuesFromCsvText("# comment\n"
                                             "Hex,Name,Category\n"
                                             "#ff0000,Red,Bright\n"
                                             "\"00ff00\",\"Green, light\",Bright\n"
                                             "zz0000,Broken,Bright\n"
                                             "0000ff\n"));
    ASSERT_EQ(3, swatch.GetCount());
    EXPECT_EQ(VX_RGB(255, 0, 0), swatch.GetItems()[0].color);
    EXPECT_EQ(CVxStringW(L"Green, light"), swatch.GetItems()[1].name);
    EXPECT_TRUE(swatch.GetItems()[2].name.IsEmpty());
}

TEST(ColorSwatch, CsvWithoutColourColumnsIsRejected)
{
    CVxColorSwatch swatch;
    EXPECT_FALSE(swatch.LoadValuesFromCsvText("Name;Category\nRed;Bright\n"));
    EXPECT_FALSE(swatch.LoadValuesFromCsvText("Red;Green\n1;2\n"));
    EXPECT_FALSE(swatch.LoadValuesFromCsvText(""));
    EXPECT_FALSE(swatch.LoadValuesFromCsvText("Red;Green;Blue\n256;0;0\n-1;0;0\n1;2\n;;\n"));
    EXPECT_EQ(0, swatch.GetCount());
}

TEST(ColorSwatch, CsvFileWithSeveralCatalogues)
{
    const CVxStringW path = VxTestTempFolder() + L"two.csv";
    WriteFile(path, "Swatch;Name;Red;Green;Blue\nA;a1;1;1;1\nB;b1;2;2;2\nA;a2;3;3;3\n");
    const std::vector<CVxStringW> names = CVxColorSwatch::GetCsvSwatchNames(path);
    ASSERT_EQ(2u, names.size());
    EXPECT_EQ(CVxStringW(L"A"), names[0]);
    CVxColorSwatch a;
    a.SetName(L"A");
    ASSERT_TRUE(a.LoadValuesFromCsvFile(path));
    EXPECT_EQ(2, a.GetCount());
    CVxColorSwatchLibrary library;
    ASSERT_TRUE(library.InitLibrary(path, CVxStringW()));
    ASSERT_EQ(2, library.GetCount());
    EXPECT_EQ(1, library.SafeGetSwatch(1)->GetCount());
    EXPECT_EQ(nullptr, library.SafeGetSwatch(2));

    // A file of only RAL rows is read as the RAL list.
    const CVxStringW ralPath = VxTestTempFolder() + L"ral_only.csv";
    WriteFile(ralPath, "RAL 3000;167-41-32;#A72920;Flame red\r\nRAL 3001;155-36-35;#9B2423;Signal red\r\n");
    ASSERT_TRUE(library.InitLibrary(ralPath, CVxStringW()));
    ASSERT_EQ(1, library.GetCount());
    EXPECT_EQ(2, library.SafeGetSwatch(0)->GetCount());
}

TEST(ColorSwatch, RalClassicList)
{
    CVxColorSwatch swatch;
    ASSERT_TRUE(swatch.LoadValuesFromCsvTextRalClassic("RAL,RGB,HEX,English\n"
                                                       "RAL 1000,205-186-136,#CDBA88,Green beige\n"
                                                       "ral5015,,#007CB0,Sky blue\n"
                                                       "RAL 6000,60-116,zz,Broken\n"
                                                       "RAL 9010,241-236-225\n"));
    ASSERT_EQ(3, swatch.GetCount());
    EXPECT_EQ(VX_RGB(205, 186, 136), swatch.GetItems()[0].color);
    EXPECT_EQ(CVxStringW(L"Yellow and beige"), swatch.GetItems()[0].category);
    EXPECT_EQ(CVxStringW(L"RAL 5015"), swatch.GetItems()[1].code);
    EXPECT_EQ(VX_RGB(0, 0x7C, 0xB0), swatch.GetItems()[1].color);
    EXPECT_EQ(CVxStringW(L"Blue"), swatch.GetItems()[1].category);
    EXPECT_TRUE(swatch.GetItems()[2].name.IsEmpty());
    EXPECT_EQ(CVxStringW(L"White and black"), swatch.GetItems()[2].category);
}

TEST(ColorSwatch, SwatchFileWithBadValues)
{
    CVxColorSwatch swatch;
    ASSERT_TRUE(swatch.LoadFromText("[ColorSwatch]\r\n"
                                    "Name= Mixed \r\n"
                                    "Columns=2147483647\r\n"
                                    "Lines=-5\r\n"
                                    "Item=\r\n"
                                    "Item=|no colour\r\n"
                                    "Item=#FFFFFF|White\r\n"
                                    "Item=12345|short\r\n"
                                    "Item=000000|Black|Dark|extra\r\n"
                                    "[Other]\r\n"
                                    "Item=ff0000|not ours\r\n"));
    EXPECT_EQ(CVxStringW(L"Mixed"), swatch.GetName());
    EXPECT_EQ(CVxColorSwatch::maxColumns, swatch.GetColumns());
    EXPECT_EQ(0, swatch.GetLines());
    ASSERT_EQ(2, swatch.GetCount());
    EXPECT_EQ(CVxStringW(L"Dark"), swatch.GetItems()[1].category);
    EXPECT_FALSE(swatch.LoadFromText("[ColorSwatch]\nName=Empty\n"));
}

TEST(ColorSwatchLibrary, StandardSwatchIsMarkedAndEmptyOnesAreDropped)
{
    const CVxStringW folder = VxTestTempFolder() + L"swatchlib/";
    ASSERT_TRUE(QDir().mkpath((folder + L"Swatches").ToQString()));
    WriteFile(folder + L"Swatches/b.pvswatch", "[ColorSwatch]\nName=Standard\nItem=ff0000|Red\n");
    WriteFile(folder + L"Swatches/a.pvswatch", "[ColorSwatch]\nName=Empty\n");
    WriteFile(folder + L"Swatches/c.pvswatch", "[ColorSwatch]\nItem=00ff00|Green\n");
    WriteFile(folder + L"Swatches/notes.txt", "[ColorSwatch]\nItem=00ff00|Green\n");
    CVxColorSwatchLibrary library;
    library.SetDataFolder(folder.Left(folder.GetLength() - 1));
    ASSERT_TRUE(library.InitLibrary());
    ASSERT_EQ(2, library.GetCount());
    EXPECT_EQ(CVxStringW(L"Standard"), library.SafeGetSwatch(0)->GetName());
    EXPECT_TRUE(library.SafeGetSwatch(0)->IsStandard());
    EXPECT_EQ(library.SafeGetSwatch(0), library.GetStandardSwatch());
    // Without a name the file's title names the catalogue.
    EXPECT_EQ(CVxStringW(L"c"), library.SafeGetSwatch(1)->GetName());
}
