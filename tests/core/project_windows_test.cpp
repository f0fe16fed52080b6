// What the project windows ask of the core: layer changes and project
// settings as single undo steps, transforms of one floor, and the object
// listing.

#include "CVxAppCore.h"
#include "CVxCountryList.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxPartListing.h"
#include "CVxUndoManager.h"
#include "CVxUnits.h"
#include "VxTestEnv.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ProjectWindows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->InitProject();
        VX_GetCore()->GetUndoManager().Reinitialize(&VX_GetCore()->GetProject());
    }
    void TearDown() override
    {
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->InitProject();
    }
    static int Steps() { return VX_GetCore()->GetUndoManager().GetPosition(); }
    static CVxFloor* Floor() { return VX_GetCore()->GetProject().GetFloor(); }
    static CVxPart* AddBox(int layer, double width, unsigned color)
    {
        CVxPart* part = Floor()->GetNewObject(nullptr, true);
        part->caption = L"Box";
        part->layer = layer;
        part->width = width;
        part->height = 40;
        part->zHeight = 80;
        part->SetFillColor(color);
        Floor()->m_objectCount = Floor()->CountUsedObjects();
        return part;
    }
};

} // namespace

TEST_F(ProjectWindows, EachLayerChangeIsOneUndoStep)
{
    CVxAppCore* core = VX_GetCore();
    AddBox(0, 50, 0xFF);
    EXPECT_TRUE(core->LayerAdd(L"Furniture"));
    AddBox(1, 60, 0xFF)->selected = true;
    EXPECT_TRUE(core->LayerSetVisible(1, false));
    // A hidden layer's object can't stay selected.
    EXPECT_FALSE(Floor()->m_objects[1].selected);
    EXPECT_FALSE(core->LayerSetVisible(1, false));
    EXPECT_TRUE(core->LayerSetLocked(0, true));
    EXPECT_TRUE(core->LayerSetTransparency(0, 140));
    EXPECT_EQ(Floor()->m_layers.GetLayerTransparency(0), 100);
    EXPECT_TRUE(core->LayerRename(1, L"Chairs"));
    EXPECT_FALSE(core->LayerRename(7, L"None"));
    EXPECT_TRUE(core->LayerMove(1, 0));
    EXPECT_EQ(Floor()->m_layers.GetLayerName(0), L"Chairs");
    EXPECT_EQ(Floor()->m_objects[0].width, 60);
    EXPECT_EQ(Floor()->m_objects[0].layer, 0);
    EXPECT_TRUE(core->LayerRemove(0));
    EXPECT_EQ(Floor()->CountUsedObjects(), 1);
    EXPECT_EQ(Steps(), 7);

    // Undo brings the removed layer back with its object.
    ASSERT_TRUE(core->MakeUndo());
    EXPECT_EQ(Floor()->m_layers.GetLayerCount(), 2);
    EXPECT_EQ(Floor()->CountUsedObjects(), 2);
    EXPECT_EQ(Floor()->m_layers.GetLayerName(0), L"Chairs");
}

TEST_F(ProjectWindows, ProjectSettingsApplyAsOneStep)
{
    CVxAppCore* core = VX_GetCore();
    core->AddNewFloor();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    const SVxProjectSettings before = core->ReadProjectSettings();
    EXPECT_FALSE(core->ApplyProjectSettings(before));
    EXPECT_EQ(Steps(), 0);

    // New unit: every length given in feet.
    SVxProjectSettings wanted = before;
    wanted.ConvertLengths(CVxUnits::UNIT_CM, CVxUnits::UNIT_FT);
    EXPECT_NEAR(wanted.width, 16.40, 0.01);
    wanted.width = 20;
    wanted.defWallHeight = 9;
    wanted.floors[1].floorThickness = 1;
    wanted.comments = L"South facing";
    ASSERT_TRUE(core->ApplyProjectSettings(wanted));
    const CVxProject& project = core->GetProject();
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_FT);
    EXPECT_DOUBLE_EQ(project.m_width, 20);
    EXPECT_DOUBLE_EQ(project.m_defWallHeight, 9);
    EXPECT_DOUBLE_EQ(project.m_floors[1]->m_floorThickness, 1);
    EXPECT_NEAR(project.m_floors[0]->m_floorThickness, 30 / 30.48, 0.01);
    CVxDRect walls;
    ASSERT_TRUE(project.m_floors[0]->m_walls.GetRoomDims(walls));
    EXPECT_NEAR(walls.Width(), 500 / 30.48, 0.05);
    EXPECT_EQ(Steps(), 1);

    ASSERT_TRUE(core->MakeUndo());
    EXPECT_EQ(project.m_unit, CVxUnits::UNIT_CM);
    EXPECT_DOUBLE_EQ(project.m_width, before.width);
    EXPECT_DOUBLE_EQ(project.m_floors[1]->m_floorThickness, before.floors[1].floorThickness);

    // The statistics unit is a setting of the program, not of the project.
    SVxProjectSettings stat = core->ReadProjectSettings();
    stat.statUnit = L"yd";
    EXPECT_FALSE(core->ApplyProjectSettings(stat));
    EXPECT_EQ(VX_GetOptions()->m_roomStatUnit, L"yd");
}

TEST_F(ProjectWindows, TransformsOfOneFloorLeaveTheOthers)
{
    CVxAppCore* core = VX_GetCore();
    core->AddNewFloor();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    CVxProject& project = core->GetProject();
    CVxDRect ground, upper;
    project.m_floors[0]->m_walls.GetRoomDims(ground);

    SVxTransform turn;
    turn.currentFloorOnly = true;
    turn.rotate = 90;
    turn.dx = 100;
    ASSERT_TRUE(core->ApplyTransform(turn));
    EXPECT_EQ(Steps(), 1);
    CVxDRect after;
    project.m_floors[0]->m_walls.GetRoomDims(after);
    EXPECT_EQ(after, ground);
    project.m_floors[1]->m_walls.GetRoomDims(upper);
    // Turned in place about its centre, then moved right.
    EXPECT_NEAR(upper.Width(), ground.Height(), 0.01);
    EXPECT_NEAR(upper.Height(), ground.Width(), 0.01);
    EXPECT_NEAR(upper.left, ground.left + 100, 0.01);
    EXPECT_NEAR(upper.top, ground.top, 0.01);
    EXPECT_GE(project.m_width, upper.right - 0.01);

    SVxTransform nothing;
    EXPECT_FALSE(core->ApplyTransform(nothing));
    SVxTransform scale;
    scale.scale = 2;
    ASSERT_TRUE(core->ApplyTransform(scale));
    project.m_floors[0]->m_walls.GetRoomDims(after);
    EXPECT_NEAR(after.Width(), 2 * ground.Width(), 0.01);
    EXPECT_EQ(Steps(), 2);
}

TEST_F(ProjectWindows, ListingCountsAlikeObjectsAndQuotesFields)
{
    AddBox(0, 50, 0x0000FF);
    AddBox(0, 50, 0x0000FF);
    AddBox(0, 70, 0x0000FF);
    CVxPart* odd = AddBox(0, 50, 0x00FF00);
    odd->caption = L"Shelf, \"tall\"";
    std::vector<SVxListingRow> rows = CVxPartListing::Build(VX_GetCore()->GetProject(), false);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].count, 2);
    EXPECT_EQ(CVxPartListing::ColorText(rows[0].color), L"#FF0000");

    CVxPartListing::Sort(rows, CVxPartListing::COL_WIDTH, false);
    EXPECT_EQ(rows[0].width, 70);
    CVxPartListing::Sort(rows, CVxPartListing::COL_COUNT, false);
    EXPECT_EQ(rows[0].count, 2);
    CVxPartListing::Sort(rows, CVxPartListing::COL_NAME, true);
    EXPECT_EQ(rows[2].name, L"Shelf, \"tall\"");

    const CVxStringW csv = CVxPartListing::ToText(rows, {L"Name", L"Count"}, L',');
    EXPECT_TRUE(csv.StartsWith(L"Name,Count\r\nBox,2,50,40,80,#FF0000,1\r\n"))
        << csv.ToQString().toStdString();
    EXPECT_TRUE(csv.Contains(L"\"Shelf, \"\"tall\"\"\",1,50,40,80,#00FF00,1\r\n"));
}

TEST(CountryList, ReadsCodesAndNamesWithinBounds)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("countries.ini"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "[Other]\r\nXX=Nowhere\r\n[Countries]\r\nDE=Germany\r\nAT= Austria \r\nEMPTY=\r\nD2=germany\r\n");
    for (int i = 0; i < 500; ++i)
        file.write(QStringLiteral("C%1=Land %1\r\n").arg(i).toUtf8());
    file.close();
    CVxCountryList list;
    ASSERT_TRUE(list.LoadFromFile(CVxStringW(path)));
    ASSERT_EQ(list.GetCountries().size(), CVxCountryList::kMaxCountries);
    EXPECT_EQ(list.GetCountries()[1].name, L"Austria");
    EXPECT_EQ(list.Find(L"GERMANY"), 0);
    EXPECT_EQ(list.Find(L"Nowhere"), -1);
    EXPECT_FALSE(list.LoadFromFile(CVxStringW(dir.filePath(QStringLiteral("none.ini")))));
}
