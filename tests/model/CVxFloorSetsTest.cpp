// The small sets of a floor and a project: local coordinates, attachments and
// annotations, through the clipboard's record text and back.

#include "CVxAnnotation.h"
#include "CVxAttachments.h"
#include "CVxFloor.h"
#include "CVxLocalCoordsSet.h"
#include "CVxProject.h"
#include "CVxUnits.h"
#include "VxModelTestUtil.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

CVxAnnotItem Stroke(std::initializer_list<CVxDPoint> points)
{
    CVxAnnotItem item;
    item.m_poly.points = points;
    return item;
}

} // namespace

TEST(LocalCoords, RoundTripAndSelection)
{
    CVxLocalCoordsSet set;
    set.m_coords.emplace_back(CVxDPoint(100, 50.5), 3, L"Corner");
    set.m_coords.emplace_back(CVxDPoint(-2, 7), 0, L"Door");
    set.m_selected = 1;

    CVxStringWriter writer;
    set.SaveToFile(&writer, "LocalCoords");
    CVxLocalCoordsSet read;
    ASSERT_TRUE(VxReadSection(writer.GetString(), "LocalCoords", &read));
    EXPECT_EQ(read, set);

    double x = 10, y = 10;
    read.SubtractFrom(x, y);
    EXPECT_POINT_NEAR(CVxDPoint(x, y), CVxDPoint(12, 3));
    read.AddTo(x, y);
    EXPECT_POINT_NEAR(CVxDPoint(x, y), CVxDPoint(10, 10));

    read.m_selected = 2;
    EXPECT_NE(read, set);
    read.AddTo(x, y);
    read.SubtractFrom(x, y);
    EXPECT_POINT_NEAR(CVxDPoint(x, y), CVxDPoint(10, 10));
}

TEST(LocalCoords, TransformsSnapToTheProject)
{
    CVxProject project;
    project.m_subUnitMoves = true;
    project.m_decimalPrecision = 1;
    CVxLocalCoordsSet set;
    set.m_coords.emplace_back(CVxDPoint(10, 0), 0, L"A");
    set.Rotate(90, &project);
    EXPECT_POINT_NEAR(set.m_coords[0].m_pos, CVxDPoint(0, 10));
    set.Scale(1.013, 1.013, &project);
    EXPECT_POINT_NEAR(set.m_coords[0].m_pos, CVxDPoint(0, 10.1));
    set.Move(0.26, 0, &project);
    EXPECT_POINT_NEAR(set.m_coords[0].m_pos, CVxDPoint(0.3, 10.1));
}

TEST(Attachments, RoundTrip)
{
    CVxAttachments set;
    CVxAttachItem item;
    item.m_path = VxTestTempFolder() + L"offer.pdf";
    item.m_pos = CVxDPoint(120.5, -3);
    item.m_angle = 90;
    item.m_kind = 3000000000u;
    item.m_description = L"Kitchen offer";
    set.m_items.push_back(item);
    item.m_description = L"";
    item.m_kind = 0;
    set.m_items.push_back(item);

    CVxStringWriter writer;
    set.SaveToFile(&writer, "Attachments");
    CVxAttachments read;
    ASSERT_TRUE(VxReadSection(writer.GetString(), "Attachments", &read));
    EXPECT_EQ(read, set);
}

TEST(FloorSets, EmptyListsWriteNoSection)
{
    CVxStringWriter attachments;
    CVxAttachments().SaveToFile(&attachments, "Attachments");
    EXPECT_EQ(attachments.GetString(), CVxStringA("[Plaveno Clipboard]\r\n\r\n"));
    CVxStringWriter annotations;
    CVxAnnotation().SaveToFile(&annotations, "Annotations");
    EXPECT_EQ(annotations.GetString(), CVxStringA("[Plaveno Clipboard]\r\n\r\n"));
}

TEST(Attachments, RotateTurnsInWholeDegrees)
{
    CVxProject project;
    project.m_subUnitMoves = false;
    CVxAttachments set;
    CVxAttachItem item;
    item.m_pos = CVxDPoint(0, -10.4);
    item.m_angle = 300.9;
    set.m_items.push_back(item);
    set.Rotate(90, &project);
    EXPECT_POINT_NEAR(set.m_items[0].m_pos, CVxDPoint(10, 0));
    EXPECT_DOUBLE_EQ(set.m_items[0].m_angle, 30);
}

TEST(Annotations, RoundTrip)
{
    CVxAnnotation set;
    CVxAnnotItem line = Stroke({CVxDPoint(0, 0), CVxDPoint(10.5, 2), CVxDPoint(20, -4)});
    line.m_color = 0x00FF00;
    line.m_alpha = 128;
    line.m_width = 1.5;
    line.m_scaleWidth = true;
    set.m_items.push_back(line);
    set.m_items.push_back(Stroke({CVxDPoint(7, 8)}));

    CVxStringWriter writer;
    set.SaveToFile(&writer, "Annotations");
    CVxAnnotation read;
    ASSERT_TRUE(VxReadSection(writer.GetString(), "Annotations", &read));
    ASSERT_EQ(read.GetCount(), 2);
    EXPECT_EQ(read, set);
}

TEST(Annotations, PropertiesNeedAPolygon)
{
    CVxAnnotation set;
    const CVxStringA text(
        "[Annotations]\r\nItemProps=0x112233|10|2|1\r\nItemPoly=\r\nItemProps=0x445566|-1|4|0\r\n"
        "ItemPoly=1|0|5;6|\r\nItemProps=0x778899\r\n");
    ASSERT_TRUE(VxReadSection(text, "Annotations", &set));
    ASSERT_EQ(set.GetCount(), 1);
    EXPECT_EQ(set.m_items[0].m_color, 0x778899u);
    EXPECT_EQ(set.m_items[0].m_alpha, -1);
    EXPECT_DOUBLE_EQ(set.m_items[0].m_width, 3);
    EXPECT_POINT_NEAR(set.m_items[0].m_poly.points[0], CVxDPoint(5, 6));
}

TEST(Floor, ResetTakesTheProjectDefaults)
{
    CVxProject project;
    project.m_defFloorColor = 0x0000AA;
    project.m_defWallsColor = 0x00BB00;
    project.m_defWalls3DColor = 0xCC0000;
    project.m_defWallThickness = 12;
    project.m_defWallHeight = 250;
    CVxFloor floor;
    floor.m_layers.AddLayer(L"Extra");
    floor.m_printAreaSet = true;
    floor.m_bkgScanFile = L"/scan.png";
    floor.m_annotations.m_items.push_back(Stroke({CVxDPoint(1, 1)}));
    floor.Reset(&project);
    EXPECT_EQ(floor.m_floorAppear.GetColor(), 0x0000AAu);
    EXPECT_EQ(floor.m_wallsColor, 0x00BB00u);
    EXPECT_EQ(floor.m_walls3DAppear.GetColor(), 0xCC0000u);
    EXPECT_DOUBLE_EQ(floor.m_defWallThickness, 12);
    EXPECT_DOUBLE_EQ(floor.m_defWallHeight, 250);
    EXPECT_DOUBLE_EQ(floor.m_floorThickness, 30);
    EXPECT_EQ(floor.m_layers.GetLayerCount(), 1);
    EXPECT_FALSE(floor.m_printAreaSet);
    EXPECT_FALSE(floor.HasBkgScan());
    EXPECT_EQ(floor.m_annotations.GetCount(), 0);
}

TEST(Floor, DefaultsForUnit)
{
    CVxFloor floor;
    floor.SetDefaultsForUnit(20);
    EXPECT_DOUBLE_EQ(floor.m_defWallThickness, 0.5);
    EXPECT_DOUBLE_EQ(floor.m_defWallHeight, 13.25);
    EXPECT_DOUBLE_EQ(floor.m_floorThickness, 1.5);
    floor.SetDefaultsForUnit(1);
    EXPECT_DOUBLE_EQ(floor.m_defWallHeight, 265);
}

TEST(Floor, SectionsRoundTrip)
{
    CVxProject project;
    CVxFloor floor;
    floor.m_printArea = CVxDRect(1, 2, 300, 400);
    floor.m_printAreaSet = true;
    floor.m_bkgScanFile = VxTestTempFolder() + L"scan.png";
    floor.m_bkgScanRect = CVxDRect(0, 0, 640.5, 480);
    floor.m_floorThickness = 25;
    floor.m_wallsContour = 0x010203;
    floor.m_ceilingAppear.SetColor(0x0A0B0C);
    floor.m_layers.AddLayer(L"Furniture", false, 20);
    floor.m_localCoords.m_coords.emplace_back(CVxDPoint(5, 5), 0, L"Origin");
    floor.m_annotations.m_items.push_back(Stroke({CVxDPoint(1, 2), CVxDPoint(3, 4)}));

    CVxStringWriter writer;
    floor.SaveToFile(&writer);
    CVxStringReader reader(writer.GetString(), 0);
    reader.Start();
    reader.ReadSection(nullptr);
    ASSERT_EQ(reader.GetSectionName(), "Floor");
    CVxFloor read;
    EXPECT_TRUE(read.LoadFromFile(&reader, &project));
    EXPECT_TRUE(reader.GetSectionName().IsEmpty());
    EXPECT_EQ(read.m_printArea, floor.m_printArea);
    EXPECT_TRUE(read.m_printAreaSet);
    EXPECT_EQ(read.m_bkgScanFile, floor.m_bkgScanFile);
    EXPECT_EQ(read.m_bkgScanRect, floor.m_bkgScanRect);
    EXPECT_DOUBLE_EQ(read.m_floorThickness, 25);
    EXPECT_EQ(read.m_wallsContour, 0x010203u);
    EXPECT_EQ(read.m_ceilingAppear, floor.m_ceilingAppear);
    EXPECT_EQ(read.m_layers, floor.m_layers);
    EXPECT_EQ(read.m_localCoords, floor.m_localCoords);
    EXPECT_EQ(read.m_annotations, floor.m_annotations);
}

TEST(Floor, OlderFloorKeys)
{
    CVxProject project;
    project.m_unit = CVxUnits::UNIT_M;
    const CVxStringA text("[Floor]\r\nColor=0x0000FF\r\nWallsColor3D=0x00FF00\r\n"
                          "[EndFloor]\r\n[Floor]\r\n");
    CVxStringReader reader(text, 0);
    reader.Start();
    CVxFloor floor;
    floor.LoadFromFile(&reader, &project);
    EXPECT_EQ(reader.GetSectionName(), "Floor");
    EXPECT_DOUBLE_EQ(floor.m_floorThickness, 0.3);
    EXPECT_EQ(floor.m_floorAppear.GetColor(), 0x0000FFu);
    EXPECT_EQ(floor.m_walls3DAppear.GetColor(), 0x00FF00u);

    floor.m_printArea = CVxDRect(9, 9, 9, 9);
    floor.OnReadIniValue("PrintArea", L"1|2|3|4", nullptr);
    EXPECT_EQ(floor.m_printArea, CVxDRect(9, 9, 9, 9));
    floor.OnReadIniValue("PrintArea", L"1|2|3|x|1", nullptr);
    EXPECT_EQ(floor.m_printArea, CVxDRect(9, 9, 9, 9));
    floor.OnReadIniValue("PrintArea", L"1|2|3|4|0", nullptr);
    EXPECT_EQ(floor.m_printArea, CVxDRect(1, 2, 3, 4));
}
