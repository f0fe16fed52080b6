// The payloads of stairs and the wardrobe: their record text, what a damaged
// text leaves, and the drawing of a flight of stairs.

#include "CVxDozamoWardrobePayload.h"
#include "CVxPart.h"
#include "CVxQtDC.h"
#include "CVxStairsPayload.h"

#include <QImage>

#include <gtest/gtest.h>

#include <memory>

namespace {

class PartPayload : public ::testing::Test
{
protected:
    void SetUp() override { CVxPartPayload::RegisterBuiltinClasses(); }
};

std::unique_ptr<CVxPartPayload> FromText(const wchar_t* text)
{
    return std::unique_ptr<CVxPartPayload>(CVxPartPayload::CreateFromString(CVxStringW(text)));
}

int StepsOf(const wchar_t* text)
{
    const auto payload = FromText(text);
    const auto* stairs = dynamic_cast<const CVxStairsPayload*>(payload.get());
    return stairs ? stairs->steps : -1;
}

} // namespace

TEST_F(PartPayload, StairsReadTheirStepsAndKeepTheDefaultForNonsense)
{
    EXPECT_EQ(StepsOf(L"StairsPayload:12|"), 12);
    EXPECT_EQ(StepsOf(L"StairsPayload:abc|"), 10);
    // No ":" at all is the class with its defaults; later fields are a
    // newer version's and are passed over.
    EXPECT_EQ(StepsOf(L"StairsPayload"), 10);
    EXPECT_EQ(StepsOf(L"StairsPayload:14|3|extra"), 14);
    // A count no house has is cut, never used to size the drawing.
    EXPECT_EQ(StepsOf(L"StairsPayload:2000000000|"), CVxStairsPayload::maxSteps);
    EXPECT_EQ(FromText(L"Escalator:12|"), nullptr);
    EXPECT_EQ(FromText(L""), nullptr);
}

TEST_F(PartPayload, EachClassWritesWhatItReadsBack)
{
    for (const wchar_t* text : {L"StairsPayload:12|", L"BanisterStairsPayload:7|0.5"}) {
        const auto payload = FromText(text);
        ASSERT_NE(payload, nullptr) << CVxStringA(CVxStringW(text)).c_str();
        EXPECT_EQ(payload->Serialize(), CVxStringW(text));
    }
    const auto banister = FromText(L"BanisterStairsPayload:6|");
    ASSERT_NE(banister, nullptr);
    EXPECT_EQ(banister->Serialize(), CVxStringW(L"BanisterStairsPayload:6|0.642857"));

    CVxDozamoWardrobePayload wardrobe;
    wardrobe.doors = 3;
    wardrobe.panels = 2;
    wardrobe.ResizeVectorsWithDefaults();
    wardrobe.interiors = {6, 1, 9};
    wardrobe.appearances[3].SetColor(0x102030);
    const auto copy = FromText(wardrobe.Serialize().c_str());
    const auto* back = dynamic_cast<const CVxDozamoWardrobePayload*>(copy.get());
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->doors, 3);
    EXPECT_EQ(back->panels, 2);
    EXPECT_EQ(back->interiors, (std::vector<int>{6, 1, 9}));
    ASSERT_EQ(back->appearances.size(), 6u);
    EXPECT_EQ(back->appearances[3].GetColor(), 0x102030u);
    EXPECT_EQ(back->appearances[5].GetColor(), CVxDozamoWardrobePayload::defaultColor);
    EXPECT_EQ(back->Serialize(), wardrobe.Serialize());
}

TEST_F(PartPayload, WardrobeDoorsCarryTheirInteriorsAndPanels)
{
    CVxDozamoWardrobePayload wardrobe;
    EXPECT_EQ(wardrobe.interiors, (std::vector<int>{2, 9}));
    wardrobe.doors = 4;
    wardrobe.ResizeVectorsWithDefaults();
    EXPECT_EQ(wardrobe.interiors, (std::vector<int>{2, 9, 2, 2}));
    EXPECT_EQ(wardrobe.appearances.size(), 4u);
    wardrobe.appearances[0].SetColor(0x112233);
    wardrobe.doors = 1;
    wardrobe.ResizeVectorsWithDefaults();
    EXPECT_EQ(wardrobe.interiors, (std::vector<int>{2}));
    ASSERT_EQ(wardrobe.appearances.size(), 1u);
    EXPECT_EQ(wardrobe.appearances[0].GetColor(), 0x112233u);

    wardrobe.doors = 3;
    wardrobe.ResizeVectorsWithDefaults();
    EXPECT_FALSE(wardrobe.AllowInteriorAtDoor(0, 1));
    EXPECT_TRUE(wardrobe.AllowInteriorAtDoor(6, 0));
    EXPECT_FALSE(wardrobe.AllowInteriorAtDoor(6, 2));
    EXPECT_TRUE(wardrobe.AllowInteriorAtDoor(9, 2));
    EXPECT_FALSE(wardrobe.AllowInteriorAtDoor(9, 0));
    EXPECT_TRUE(wardrobe.AllowInteriorAtDoor(16, 1));

    // Every box lies inside its door's column.
    std::vector<CVxDozamoWardrobePayload::SubItem> items;
    wardrobe.GetSubGeometry(items);
    ASSERT_FALSE(items.empty());
    for (const auto& item : items) {
        EXPECT_GE(item.x1, item.door / 3.0 - 1e-9);
        EXPECT_LE(item.x2, (item.door + 1) / 3.0 + 1e-9);
    }
}

TEST_F(PartPayload, AFlightOfOneStepKeepsItsArrowAndDrawsNoSteps)
{
    // A flight 300 long and 100 wide: the steps cross the length, the
    // arrow runs along its middle.
    const auto ink = [](int steps) {
        CVxPart part;
        part.type = ptLibraryObject;
        part.libObjID = CVxStairsPayload::libraryNumber;
        part.inUse = true;
        part.x = 10;
        part.y = 10;
        part.width = 300;
        part.height = 100;
        part.lineColor = 0;
        part.SetFillColor(0xFFFFFF);
        auto* payload = new CVxStairsPayload();
        payload->steps = steps;
        part.SetPayload(payload);
        CVxQtDC dc(340, 140, false);
        part.InvalidateCache();
        part.DrawToHdc(&dc, nullptr, 1, 0, 0, 1.0, 0, 0, 1.0);
        const QImage image = dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
        const auto darkAlongRow = [&image](int y) {
            int count = 0;
            for (int x = 20; x < 300; ++x)
                if (qAlpha(image.pixel(x, y)) > 128 && qGray(image.pixel(x, y)) < 100)
                    ++count;
            return count;
        };
        // Off the arrow the row meets only step lines; on the middle it
        // follows the arrow's shaft.
        return std::make_pair(darkAlongRow(25), darkAlongRow(60));
    };
    const auto one = ink(1);
    const auto ten = ink(10);
    EXPECT_EQ(one.first, 0);
    EXPECT_GE(ten.first, 9);
    EXPECT_GT(one.second, 200);
}
