// Objects held by a floor: slots that are reused, and the object sections of
// the floor's file with groups and their members.

#include "CVxFloor.h"
#include "CVxProject.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    for (size_t at = 0, end; at < text.size(); at = end + 2) {
        end = text.find("\r\n", at);
        if (end == std::string::npos)
            end = text.size();
        lines.push_back(text.substr(at, end - at));
    }
    return lines;
}

// The section names of a floor's text in order, blank-separated.
std::string SectionNames(const std::string& text)
{
    std::string names;
    for (const std::string& line : Lines(text.substr(text.find("[Floor]"))))
        if (!line.empty() && line[0] == '[')
            names += (names.empty() ? "" : " ") + line.substr(1, line.size() - 2);
    return names;
}

// The keys of one section in order, with the value of "PartCount" kept.
std::string KeysOf(const std::string& text, const std::string& section)
{
    std::string keys;
    bool inside = false;
    for (const std::string& line : Lines(text)) {
        if (!line.empty() && line[0] == '[') {
            inside = line == "[" + section + "]";
            continue;
        }
        const std::string key = line.substr(0, line.find('='));
        if (inside && !key.empty())
            keys += (keys.empty() ? "" : " ") + (key == "PartCount" ? line : key);
    }
    return keys;
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
    floor->GetNewObject()->inUse = false; // a free slot: a gap in the numbers
    CVxPart group = MakeBox(100, 100, L"Dining");
    group.type = ptComplexObject;
    group.subParts.push_back(MakeBox(0, 0, L"Table"));
    group.subParts.push_back(MakeBox(500, 0, L"Chair"));
    *floor->GetNewObject(nullptr, true) = group;

    CVxStringWriter writer;
    floor->SaveToFile(&writer);
    const std::string text = writer.GetString().Std();
    EXPECT_EQ(SectionNames(text), "Floor RoomWalls FloorPlanDef ViewLayers LocalCoords "
                                  "Part0 Part2 Part2.1 Part2.2 EndFloor");
    EXPECT_EQ(KeysOf(text, "Floor"), "PartCount=2 FloorAppear CeilingAppear WallsColor WallsContour "
                                     "Walls3DAppear WallExtAppear WallThickness WallZHeight "
                                     "FloorThickness PrintArea");
    EXPECT_NE(text.find("[Part2]\r\nType=ComplexObject"), std::string::npos);

    CVxStringReader reader(writer.GetString(), 0);
    reader.Start();
    CVxFloor read;
    ASSERT_TRUE(read.LoadFromFile(&reader, &project));
    ASSERT_EQ(read.CountUsedObjects(), 2);
    ASSERT_EQ(read.m_objects.size(), 2u) << "loading leaves no free slot";
    EXPECT_EQ(read.m_objects[0].caption, L"Wardrobe");
    const CVxPart& readGroup = read.m_objects[1];
    EXPECT_EQ(readGroup.type, ptComplexObject);
    ASSERT_EQ(readGroup.subParts.size(), 2u);
    EXPECT_EQ(readGroup.subParts[1].caption, L"Chair");

    CVxStringWriter again;
    read.SaveToFile(&again);
    EXPECT_EQ(SectionNames(again.GetString().Std()), "Floor RoomWalls FloorPlanDef ViewLayers LocalCoords "
                                                     "Part0 Part1 Part1.1 Part1.2 EndFloor");
}

TEST(FloorObjects, ADamagedObjectCountReservesNoMemory)
{
    CVxProject project;
    CVxStringReader reader(CVxStringA("[Floor]\r\nPartCount=2000000000\r\n[EndFloor]\r\n"), 0);
    reader.Start();
    CVxFloor read;
    ASSERT_TRUE(read.LoadFromFile(&reader, &project));
    EXPECT_EQ(read.CountUsedObjects(), 0);
    EXPECT_LT(read.m_objects.capacity(), 100000u);
}
