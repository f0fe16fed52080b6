// The core's plan of the current floor: found on every change, and drawn as
// the main view shows it.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"
#include "VxTestEnv.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

class AppCorePlan : public ::testing::Test
{
protected:
    void SetUp() override { VX_GetCore()->InitProject(); }
    void TearDown() override
    {
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->InitProject();
    }
};

TEST_F(AppCorePlan, DefaultProjectIsOneRoom)
{
    const CVxFloorPlan& plan = VX_GetCore()->GetFloorPlan();
    EXPECT_EQ(plan.GetRegionCount(), 1);
    EXPECT_EQ(plan.GetOuterRegionCount(), 1);
}

TEST_F(AppCorePlan, RoomsFollowWallEditsAndKeepTheirNameThroughTransforms)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    CVxWall* divider = floor->m_walls.GetNewWall();
    divider->Set(200, 0, 200, 300, CVxWall::ALIGN_CENTER, 10, 265, 265, true, false);
    core->UpdateFloorPlan();
    ASSERT_EQ(core->GetFloorPlan().GetRegionCount(), 2);

    CVxFloorRegion* left =
        core->GetFloorPlan().SafeGetRegion(core->GetFloorPlan().FindRegion(CVxDPoint(50, 50)));
    ASSERT_NE(left, nullptr);
    left->name = L"Hall";
    floor->SetCommonFloorAppearancesAndSave(core->GetFloorPlan(), true);

    core->TransformShift(100, 40);
    const CVxFloorPlan& plan = core->GetFloorPlan();
    const CVxFloorRegion* moved = plan.SafeGetRegion(plan.FindRegion(CVxDPoint(150, 90)));
    ASSERT_NE(moved, nullptr);
    EXPECT_EQ(moved->name, L"Hall");
}

TEST_F(AppCorePlan, DrawProjectPaintsFloorWallsAndSpaceAround)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    floor->m_wallsColor = 0x202020;
    floor->m_floorAppear.SetColor(0x3060C0);
    floor->m_planDef.Clear();
    core->UpdateFloorPlan();
    core->SetZoom(1);

    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    CVxQtDC dc(width, height, false);
    core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width, height}, 0);
    const QImage* image = dc.GetImage();
    ASSERT_NE(image, nullptr);

    const int left = static_cast<int>(project.m_spaceLeft);
    const int top = static_cast<int>(project.m_spaceTop);
    // Inside the room: the floor colour; on the wall outside the room's left
    // edge: the wall colour; far outside: the white ground.
    const QColor room = image->pixelColor(left + 100, top + 100);
    EXPECT_EQ(room.rgb() & 0xFFFFFF, 0xC06030u) << room.name().toStdString();
    const int wallX = left - static_cast<int>(floor->m_defWallThickness / 2);
    const QColor wall = image->pixelColor(wallX, top + 100);
    EXPECT_EQ(wall.rgb() & 0xFFFFFF, 0x202020u) << wall.name().toStdString();
    const QColor ground = image->pixelColor(3, 3);
    EXPECT_EQ(ground.rgb() & 0xFFFFFF, 0xFFFFFFu) << ground.name().toStdString();
}

TEST_F(AppCorePlan, ZoomLadderStepsToRungsAndStopsAtItsEnds)
{
    CVxAppCore* core = VX_GetCore();
    const double base = core->GetProject().m_baseZoom;
    double next = 0;
    // Between rungs the next step goes to the neighbouring rung, not by a
    // fixed factor.
    core->SetZoom(0.9 * base);
    ASSERT_TRUE(core->GetNextZoom(true, next));
    EXPECT_DOUBLE_EQ(next, 1.0 * base);
    ASSERT_TRUE(core->GetNextZoom(false, next));
    EXPECT_DOUBLE_EQ(next, 0.75 * base);
    core->SetZoom(50 * base);
    EXPECT_FALSE(core->GetNextZoom(true, next));
    core->SetZoom(0.025 * base);
    EXPECT_FALSE(core->GetNextZoom(false, next));
    EXPECT_DOUBLE_EQ(core->ClampZoom(1000 * base), 50 * base);

    core->SetZoom(1.27 * base);
    core->RebuildRoom();
    EXPECT_DOUBLE_EQ(core->GetRoundedZoom(), 1.3);
    EXPECT_EQ(core->GetMargins()[0], static_cast<int>(core->GetProject().m_spaceLeft * 1.27 * base));
}

TEST_F(AppCorePlan, GridLabelsNeedTheGridToo)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    core->SetZoom(1);
    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    auto render = [&](int flags) {
        CVxQtDC dc(width, height, false);
        core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width, height}, flags);
        return *dc.GetImage();
    };
    const QImage plain = render(0);
    EXPECT_EQ(render(CVxAppCore::drawGridLabels), plain);
    const QImage grid = render(CVxAppCore::drawGrid);
    EXPECT_NE(grid, plain);
    const QImage labelled = render(CVxAppCore::drawGrid | CVxAppCore::drawGridLabels);
    // Column letters stand in a strip along the top edge of the sheet.
    EXPECT_NE(labelled.copy(0, 0, width, 20), grid.copy(0, 0, width, 20));
    // Row numbers stand at the left edge and nowhere else.
    EXPECT_NE(labelled.copy(0, 0, 50, height), grid.copy(0, 0, 50, height));
    EXPECT_EQ(labelled.copy(60, 30, width - 60, height - 30), grid.copy(60, 30, width - 60, height - 30));
}

TEST_F(AppCorePlan, ObjectsAreDrawnLayerByLayerAndHiddenLayersCostNothing)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    floor->m_layers.AddLayer(L"Furniture", true, 0);
    auto addBox = [&](double x, unsigned colour, int layer) {
        CVxPart* part = floor->GetNewObject();
        part->type = ptRectangle;
        part->x = x;
        part->y = 100;
        part->width = 60;
        part->height = 60;
        part->layer = layer;
        part->fillStyle = 0;
        part->SetFillColor(colour);
        part->appearFill.SetTransparency(0);
    };
    addBox(100, 0x0000FF, 0);
    addBox(300, 0x00FF00, 1);
    core->SetZoom(1);
    core->RebuildRoom();

    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    auto render = [&]() {
        CVxQtDC dc(width, height, false);
        core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width, height}, 0);
        return *dc.GetImage();
    };
    const int left = static_cast<int>(project.m_spaceLeft);
    const int top = static_cast<int>(project.m_spaceTop);
    QImage shown = render();
    EXPECT_EQ(shown.pixelColor(left + 130, top + 130).rgb() & 0xFFFFFF, 0xFF0000u);
    EXPECT_EQ(shown.pixelColor(left + 330, top + 130).rgb() & 0xFFFFFF, 0x00FF00u);

    floor->m_layers.SetLayerVisible(1, false);
    QImage hidden = render();
    EXPECT_NE(hidden.pixelColor(left + 330, top + 130).rgb() & 0xFFFFFF, 0x00FF00u);
    EXPECT_EQ(hidden.pixelColor(left + 130, top + 130).rgb() & 0xFFFFFF, 0xFF0000u);
}

TEST_F(AppCorePlan, LocalCoordinatesFlipAndShiftAndComeBack)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    floor->m_localCoords.m_coords.emplace_back(CVxDPoint(100, 50), 0, L"Corner");
    floor->m_localCoords.m_selected = 0;
    core->m_localOriginSignX = -1;
    core->m_localOriginY = 10;

    double x = 130;
    double y = 80;
    core->TranslateCoordImageToLocal(x, y);
    // Relative to the corner (30, 30), then counted from the right side.
    EXPECT_DOUBLE_EQ(x, core->GetProject().m_width - 30);
    EXPECT_DOUBLE_EQ(y, 40);
    core->TranslateCoordLocalToImage(x, y);
    EXPECT_DOUBLE_EQ(x, 130);
    EXPECT_DOUBLE_EQ(y, 80);

    core->m_absoluteCoords = true;
    x = 130;
    y = 80;
    core->TranslateCoordImageToLocal(x, y);
    EXPECT_DOUBLE_EQ(x, 30);
    EXPECT_DOUBLE_EQ(y, 30);
    core->m_absoluteCoords = false;
    core->m_localOriginSignX = 1;
    core->m_localOriginY = 0;
}

TEST_F(AppCorePlan, ThumbnailShowsTheRoomAndStopsWhenCancelled)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxQtDC dc(128, 96, false);
    ASSERT_TRUE(core->DrawProjectThumb(&dc, project, 128, 96, false, nullptr));
    const QImage* image = dc.GetImage();
    int ink = 0;
    for (int y = 0; y < image->height(); ++y)
        for (int x = 0; x < image->width(); ++x)
            ink += qAlpha(image->pixel(x, y)) > 0 && (image->pixel(x, y) & 0xFFFFFF) != 0xFFFFFF ? 1 : 0;
    // The walls of the default room frame the picture.
    EXPECT_GT(ink, 200);

    const bool cancel = true;
    CVxQtDC cancelled(128, 96, false);
    EXPECT_FALSE(core->DrawProjectThumb(&cancelled, project, 128, 96, false, &cancel));
}
