#include "CVxMaterialList.h"
#include "CVxAppearance.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <set>

TEST(MaterialList, StandardColoursAreDistinct)
{
    CVxMaterialList list;
    list.push_back(CVxMaterial(1, 0, L""));
    list.StandardColors();
    ASSERT_EQ(48u, list.size());
    std::set<unsigned> colours;
    for (const CVxMaterial& material : list) {
        colours.insert(material.color);
        EXPECT_EQ(0, material.transparency);
        EXPECT_TRUE(material.texture.IsEmpty());
    }
    EXPECT_EQ(48u, colours.size());
    EXPECT_EQ(0xFFFFFFu, list[0].color);
    EXPECT_EQ(VX_RGB(255, 0, 0), list[16].color);
}

TEST(MaterialList, IndexOfAnAppearanceLooksAtItsMainMaterial)
{
    CVxMaterialList list;
    list.StandardColors();
    CVxAppearance app(VX_RGB(255, 0, 0));
    EXPECT_EQ(16, list.IndexOf(app));
    app.main.transparency = 10;
    EXPECT_EQ(-1, list.IndexOf(app));
    app.main.transparency = 0;
    app.blend.color = 0x123456;
    EXPECT_EQ(16, list.IndexOf(app));
}

TEST(MaterialList, RecentColoursMoveToTheFront)
{
    CVxMaterialList list;
    list.AddRecent(CVxMaterial(1, 0, L""), 3);
    list.AddRecent(CVxMaterial(2, 0, L""), 3);
    list.AddRecent(CVxMaterial(3, 0, L""), 3);
    list.AddRecent(CVxMaterial(1, 0, L""), 3);
    ASSERT_EQ(3u, list.size());
    EXPECT_EQ(1u, list[0].color);
    EXPECT_EQ(3u, list[1].color);
    list.AddRecent(CVxMaterial(4, 0, L""), 3);
    ASSERT_EQ(3u, list.size());
    EXPECT_EQ(4u, list[0].color);
    EXPECT_EQ(-1, list.IndexOf(CVxMaterial(2, 0, L"")));
}

TEST(MaterialList, DiskRoundTrip)
{
    CVxMaterialList list;
    list.push_back(CVxMaterial(0x123456, 0, L""));
    list.push_back(CVxMaterial(0xEFABCDEF, 40, L"/tex/marble white.jpg"));
    list.push_back(CVxMaterial(0, 100, L"/tex/ü.png"));
    const CVxStringW path = VxTestTempFolder() + L"recentcolors.ini";
    ASSERT_TRUE(list.SaveToDisk(path));

    CVxMaterialList back;
    back.push_back(CVxMaterial(7, 7, L"gone"));
    ASSERT_TRUE(back.LoadFromDisk(path));
    ASSERT_EQ(list.size(), back.size());
    for (size_t i = 0; i < list.size(); ++i)
        EXPECT_EQ(list[i], back[i]) << i;
    // A missing file leaves the list.
    EXPECT_FALSE(back.LoadFromDisk(VxTestTempFolder() + L"no-such-file.ini"));
    EXPECT_EQ(list.size(), back.size());
}

TEST(MaterialList, AFailedSaveKeepsTheColoursSavedBefore)
{
    CVxMaterialList before;
    before.push_back(CVxMaterial(0x123456, 0, L""));
    const CVxStringW path = VxTestTempFolder() + L"keptcolors.ini";
    ASSERT_TRUE(before.SaveToDisk(path));
    // Nothing can be written beside the file: a folder holds the place.
    ASSERT_TRUE(QDir().mkpath((path + L".saving~").ToQString()));
    CVxMaterialList after;
    after.push_back(CVxMaterial(0x654321, 0, L""));
    EXPECT_FALSE(after.SaveToDisk(path));
    CVxMaterialList back;
    ASSERT_TRUE(back.LoadFromDisk(path));
    ASSERT_EQ(back.size(), 1u);
    EXPECT_EQ(back[0], before[0]);
}

TEST(MaterialList, BadItemsAreSkipped)
{
    CVxMaterialList list;
    EXPECT_FALSE(list.LoadFromString(L""));
    EXPECT_FALSE(list.LoadFromString(L"|10|a.png"));
    EXPECT_FALSE(list.LoadFromString(L"green|10"));
    EXPECT_TRUE(list.LoadFromString(L"0x00FF00|500"));
    EXPECT_TRUE(list.LoadFromString(L"255"));
    ASSERT_EQ(2u, list.size());
    EXPECT_EQ(100, list[0].transparency);
    EXPECT_EQ(255u, list[1].color);
}

TEST(MaterialList, LongFilesStopAtTheLimit)
{
    const CVxStringW path = VxTestTempFolder() + L"long.ini";
    QFile file(path.ToQString());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[MaterialList]\nCount=2000000000\n");
    for (int i = 0; i < CVxMaterialList::maxItems + 50; ++i)
        file.write("Item=0x000001|0|\n");
    file.close();
    CVxMaterialList list;
    ASSERT_TRUE(list.LoadFromDisk(path));
    EXPECT_EQ(static_cast<size_t>(CVxMaterialList::maxItems), list.size());
}
