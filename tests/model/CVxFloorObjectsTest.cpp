// Objects held by a floor: slots that are reused, and the object sections of
// the floor's file with groups and their members.

#include "CVxFloor.h"
#include "CVxProject.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

CVxPart MakeBox(double x, double y, const wchar_t* caption)
{
    CVxPart part;
    part.inUse = true;
    part.type = ptRectangle;
    part.x = x;
    part.y = y;
    part.width = 80;
    part.height = 60;
    part.caption = caption;
    return part;
}

} // namespace

TEST(FloorObjects, FreedSlotsAreReusedAndCountedOut)
{
    CVxFloor floor;
    int first = -1;
    int second = -1;
    floor.GetNewObject(&first)->caption = L"Bed";
    floor.GetNewObject(&second)->caption = L"Desk";
    EXPECT_EQ(floor.CountUsedObjects(), 2);
    floor.SafeGetPart(first)->inUse = false;
    EXPECT_EQ(floor.CountUsedObjects(), 1);
    int reused = -1;
    CVxPart* part = floor.GetNewObject(&reused);
    EXPECT_EQ(reused, first);
    EXPECT_TRUE(part->caption.IsEmpty());
    EXPECT_EQ(floor.SafeGetPart(99), nullptr);
    EXPECT_FALSE(floor.IsLayerEmpty(0));
    EXPECT_TRUE(floor.IsLayerEmpty(1));
}

TEST(FloorObjects, GroupsAndFreeSlotsRoundTripThroughTheFloorSections)
{
    CVxProject project;
    CVxFloor* floor = project.GetFloor();
    *floor->GetNewObject() = MakeBox(10, 20, L"Wardrobe");
    floor->GetNewObject()->inUse = false; // a gap the file must not keep
    CVxPart group = MakeBox(100, 100, L"Dining");
    group.type = ptComplexObject;
    group.subParts.push_back(MakeBox(0, 0, L"Table"));
    group.subParts.push_back(MakeBox(500, 0, L"Chair"));
    *floor->GetNewObject() = group;

    CVxStringWriter writer;
    floor->SaveToFile(&writer);
    const std::string text = writer.GetString().Std();
    EXPECT_NE(text.find("[Part1]"), std::string::npos);
    EXPECT_EQ(text.find("[Part2]"), std::string::npos) << "members are written inside their group";

    CVxStringReader reader(writer.GetString(), 0);
    reader.Start();
    CVxFloor read;
    ASSERT_TRUE(read.LoadFromFile(&reader, &project));
    ASSERT_EQ(read.CountUsedObjects(), 2);
    EXPECT_EQ(read.m_objects[0].caption, L"Wardrobe");
    const CVxPart& readGroup = read.m_objects[1];
    EXPECT_EQ(readGroup.type, ptComplexObject);
    ASSERT_EQ(readGroup.subParts.size(), 2u);
    EXPECT_EQ(readGroup.subParts[1].caption, L"Chair");
}
