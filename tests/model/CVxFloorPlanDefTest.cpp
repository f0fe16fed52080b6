// The text form of what a floor remembers of its rooms.

#include "CVxFloorPlanDef.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

CVxFloorPlanDef ReadBack(const CVxStringA& text, int version, int unit)
{
    CVxFloorPlanDef def;
    CVxStringReader reader(text, 65001);
    reader.SetProjectVersion(version);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName() == "FloorPlanDef")
            def.LoadFromSection(&reader, unit);
        else
            reader.ReadSection(nullptr);
    }
    return def;
}

CVxFloorPlanDef::CFloorPlanItem Kitchen()
{
    CVxFloorPlanDef::CFloorPlanItem item;
    item.name = L"Küche";
    item.edgeFrom = CVxDPoint(0, 0);
    item.edgeTo = CVxDPoint(400.5, -0.25);
    item.isOuter = false;
    item.floorAppearance.SetColor(0x00a0b0);
    item.wallAppearance.SetColor(0x123456);
    item.ceilingAppearance.SetColor(0xfedcba);
    item.roomTag = 42;
    item.baseMolding.enabled = true;
    item.baseMolding.height = 8;
    item.baseMolding.thickness = 1.5;
    item.crownMolding.height = 3;
    item.crownMolding.thickness = 3;
    return item;
}

TEST(CVxFloorPlanDefTest, TextFormRoundTrip)
{
    CVxFloorPlanDef def;
    def.items.push_back(Kitchen());
    CVxFloorPlanDef::CFloorPlanItem outer;
    outer.edgeFrom = CVxDPoint(-10, -10);
    outer.edgeTo = CVxDPoint(410, -10);
    outer.isOuter = true;
    def.items.push_back(outer);

    CVxStringWriter writer;
    def.SaveToFile(&writer, "FloorPlanDef");
    const std::string section = VxSectionText(writer.GetString(), "FloorPlanDef");
    EXPECT_EQ(section.substr(0, section.find('\n')), "Room0=Küche|00A0B0|123456|0|0|400.5|-0.25|42||0");
    EXPECT_NE(section.find("Room1=|FFFFFF|FFFFFF|-10|-10|410|-10|0||1\n"), std::string::npos) << section;
    EXPECT_NE(section.find("BaseMoldDef0="), std::string::npos);
    EXPECT_NE(section.find("CrownMoldAppear1="), std::string::npos);

    const CVxFloorPlanDef back = ReadBack(writer.GetString(), 900, 1);
    ASSERT_EQ(back.items.size(), 2u);
    const CVxFloorPlanDef::CFloorPlanItem& k = back.items[0];
    EXPECT_EQ(k.name, CVxStringW(L"Küche"));
    EXPECT_POINT_NEAR(k.edgeFrom, CVxDPoint(0, 0));
    EXPECT_POINT_NEAR(k.edgeTo, CVxDPoint(400.5, -0.25));
    EXPECT_FALSE(k.isOuter);
    EXPECT_EQ(k.roomTag, 42);
    EXPECT_EQ(k.floorAppearance.GetColor(), 0x00a0b0u);
    EXPECT_EQ(k.wallAppearance.GetColor(), 0x123456u);
    EXPECT_EQ(k.ceilingAppearance.GetColor(), 0xfedcbau);
    EXPECT_TRUE(k.baseMolding == Kitchen().baseMolding);
    EXPECT_TRUE(k.crownMolding == Kitchen().crownMolding);
    EXPECT_TRUE(back.items[1].isOuter);

    // Saved again, the text is the same.
    CVxStringWriter again;
    back.SaveToFile(&again, "FloorPlanDef");
    EXPECT_EQ(VxSectionText(again.GetString(), "FloorPlanDef"), section);
}

TEST(CVxFloorPlanDefTest, OldFilesGetDefaultMouldingsAndBadItemsAreSkipped)
{
    const CVxStringA text("[FloorPlanDef]\r\n"
                          "FloorAppear0=|||0|0|0|0|-1|0|0|0|0|0||0x00FF00\r\n"
                          "Room0=Hall|00FF00|0000FF|0|0|100|0|3\r\n"
                          "BaseMoldDef0=1|9|9\r\n"
                          "Room1=Zero|00FF00|0000FF|0|0|0|0|3\r\n"
                          "Room2=Short|00FF00|0000FF|1|2\r\n"
                          "Room3=Bad|00FF00|0000FF|a|0|1|1\r\n"
                          "CrownMoldDef3=1|7|7\r\n");
    const CVxFloorPlanDef old = ReadBack(text, 800, 2);
    ASSERT_EQ(old.items.size(), 1u);
    EXPECT_EQ(old.items[0].name, CVxStringW(L"Hall"));
    EXPECT_EQ(old.items[0].roomTag, 3);
    EXPECT_FALSE(old.items[0].isOuter);
    // Inches: 2 by 1, whatever the file held.
    EXPECT_DOUBLE_EQ(old.items[0].baseMolding.height, 2.0);
    EXPECT_DOUBLE_EQ(old.items[0].baseMolding.thickness, 1.0);
    EXPECT_DOUBLE_EQ(old.items[0].crownMolding.height, 2.0);
    EXPECT_TRUE(old.items[0].baseMolding.enabled);

    const CVxFloorPlanDef current = ReadBack(text, 900, 2);
    ASSERT_EQ(current.items.size(), 1u);
    EXPECT_DOUBLE_EQ(current.items[0].baseMolding.height, 9);
    // The crown key behind the rejected item went to the last item read.
    EXPECT_DOUBLE_EQ(current.items[0].crownMolding.height, 7);
}

} // namespace
