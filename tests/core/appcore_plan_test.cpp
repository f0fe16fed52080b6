// The core's plan of the current floor: found on every change, and drawn as
// the main view shows it.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxPicBuf.h"
#include "CVxQtDC.h"
#include "VxTestEnv.h"

#include <QColor>
#include <QImage>

#include <utility>

#include <gtest/gtest.h>

#include <cmath>

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

TEST_F(AppCorePlan, TheWhiteGroundCoversTheSheetToItsEdgePixels)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    core->SetZoom(1);
    core->RebuildRoom();
    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    // A surface larger than the sheet: the sheet ends where it ends.
    for (int flags : {0, CVxAppCore::drawNoGround}) {
        SCOPED_TRACE(flags);
        CVxQtDC dc(width + 4, height + 4, true);
        core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width + 4, height + 4}, flags);
        const QImage* image = dc.GetImage();
        ASSERT_NE(image, nullptr);
        const int ground = flags ? 0 : 255;
        for (const auto& [x, y] : {std::pair{0, 0},
                                   {0, height / 2},
                                   {width / 2, 0},
                                   {width - 1, height - 1},
                                   {width - 1, 5},
                                   {5, height - 1}})
            EXPECT_EQ(qAlpha(image->pixel(x, y)), ground) << x << "," << y;
        EXPECT_EQ(qAlpha(image->pixel(width, height / 2)), 0) << "beyond the sheet";
    }
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

namespace {
// Notes the passes it is offered, and what the surface clips at each.
class CRecordingEditor : public IVxSpecialEditor
{
public:
    void OnDraw(CVxDC*, double, int, int) override { passes.push_back(10); }
    void OnDrawBackground(CVxDC*, double, int, int, const VxRECT&, int, int stage) override
    {
        passes.push_back(stage);
    }
    int GetID() const override { return VX_EDITOR_WALL; }
    std::vector<int> passes;
};
} // namespace

TEST_F(AppCorePlan, OverlaysScanAnnotationsSelectionAndEditorPasses)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    core->SetZoom(1);
    core->RebuildRoom();
    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    const int left = static_cast<int>(project.m_spaceLeft);
    const int top = static_cast<int>(project.m_spaceTop);
    auto render = [&](int flags) {
        CVxQtDC dc(width, height, false);
        core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width, height}, flags);
        return *dc.GetImage();
    };
    auto rgb = [](const QImage& image, int x, int y) { return image.pixelColor(x, y).rgb() & 0xFFFFFF; };

    // A red scan fitted into the sheet: under the walls, which let it show
    // through, and over the room floor.
    QImage red(50, 30, QImage::Format_RGB32);
    red.fill(QColor(255, 0, 0));
    auto* scan = new CVxPicBuf(red);
    ASSERT_TRUE(core->LoadCurrentBkgFloorScan(scan, true));
    scan->Release();
    QImage withScan = render(0);
    EXPECT_EQ(rgb(withScan, left + 200, top + 150), 0xFF0000u);
    const QColor wall = withScan.pixelColor(left + 2, top + 150);
    EXPECT_GT(wall.red(), wall.green() + 40) << "walls are translucent over a scan";
    core->ResetBkgFloorScanPart();
    floor->m_bkgScanFile = L"/no/such/scan.png";
    EXPECT_FALSE(core->LoadCurrentBkgFloorScan(nullptr, true));
    EXPECT_TRUE(floor->m_bkgScanFile.IsEmpty());
    EXPECT_NE(rgb(render(0), left + 200, top + 150), 0xFF0000u);

    // A dot and a stroke of the highlighter, hidden with the comments.
    CVxAnnotItem dot;
    dot.m_poly.points.push_back(CVxDPoint(100, 100));
    dot.m_color = 0x00FF00;
    dot.m_width = 12;
    CVxAnnotItem stroke;
    stroke.m_poly.points = {CVxDPoint(200, 50), CVxDPoint(300, 50)};
    stroke.m_color = 0xFF0000; // blue
    stroke.m_width = 3;
    stroke.m_scaleWidth = true;
    floor->m_annotations.m_items = {dot, stroke};
    QImage marked = render(0);
    EXPECT_EQ(rgb(marked, left + 100, top + 100), 0x00FF00u);
    EXPECT_EQ(rgb(marked, left + 250, top + 50), 0x0000FFu);
    core->SetShowAnnotations(false);
    EXPECT_NE(rgb(render(0), left + 100, top + 100), 0x00FF00u);
    core->SetShowAnnotations(true);
    floor->m_annotations.Reset();

    // Handles only where the paint event asks for them.
    CVxPart* box = floor->GetNewObject();
    box->type = ptRectangle;
    box->x = 100;
    box->y = 100;
    box->width = 100;
    box->height = 80;
    box->selected = true;
    const QImage handles = render(CVxAppCore::drawHandles);
    const QImage none = render(0);
    EXPECT_NE(handles.pixelColor(left + 150, top + 100), none.pixelColor(left + 150, top + 100));
    EXPECT_EQ(handles.pixelColor(left + 120, top + 125), none.pixelColor(left + 120, top + 125));

    // An editor is offered the background at stages 0, 1 and 2 and then
    // the top; a paused core draws nothing at all.
    CRecordingEditor editor;
    core->SetActiveEditor(&editor);
    render(0);
    core->SetActiveEditor(nullptr);
    EXPECT_EQ(editor.passes, (std::vector<int>{0, 1, 2, 10}));
    core->PauseDrawing(true);
    core->PauseDrawing(true);
    core->PauseDrawing(false);
    EXPECT_TRUE(render(0).pixelColor(left + 200, top + 150).alpha() == 0);
    core->PauseDrawing(false);
    EXPECT_FALSE(core->IsDrawingPaused());
}

TEST_F(AppCorePlan, KeptSymbolPicturesLookLikePaintedSymbols)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    // Rows of the same few symbols at many positions and turns, and a
    // captioned one that must be painted.
    static const int numbers[] = {21, 30, 52, 92, 131, 150, 215, 270};
    for (int i = 0; i < 48; ++i) {
        CVxPart* part = floor->GetNewObject();
        part->type = ptLibraryObject;
        part->libObjID = numbers[i % 8];
        part->x = 20 + (i % 8) * 58.3;
        part->y = 20 + (i / 8) * 44.7;
        part->width = 45;
        part->height = 30;
        part->rotation = (i % 3) * 33;
        part->SetFillColor(0x4080C0);
    }
    core->SetZoom(0.9);
    core->RebuildRoom();
    const int width = static_cast<int>(project.GetTotalWidth());
    const int height = static_cast<int>(project.GetTotalHeight());
    auto render = [&]() {
        CVxQtDC dc(width, height, true);
        core->DrawProject(&dc, 0, 0, VxRECT{0, 0, width, height}, 0);
        return *dc.GetImage();
    };
    core->EnableSpriteCache(false);
    const QImage painted = render();
    core->EnableSpriteCache(true);
    const QImage cold = render();
    const QImage second = render();
    const int kept = core->GetSpriteCache().GetCount();
    const QImage warm = render();
    EXPECT_GT(kept, 0);
    EXPECT_LT(kept, 48) << "repeated symbols share a picture";
    EXPECT_EQ(core->GetSpriteCache().GetCount(), kept) << "a repaint finds them all";
    int worst = 0;
    for (const QImage* image : {&cold, &second, &warm}) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const QColor a = painted.pixelColor(x, y);
                const QColor b = image->pixelColor(x, y);
                worst = std::max({worst, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                  std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha())});
            }
        }
    }
    EXPECT_LE(worst, 2);
}

TEST_F(AppCorePlan, AZoomStepTurnsOnlyTheCornersOfObjectsInView)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    for (int i = 0; i < 100; ++i) {
        CVxPart* part = floor->GetNewObject();
        part->type = ptRectangle;
        part->x = (i % 10) * 48.0;
        part->y = (i / 10) * 28.0;
        part->width = 30;
        part->height = 20;
        part->rotation = 30;
    }
    const auto paint = [&](const VxRECT& area) {
        CVxQtDC dc(area.right, area.bottom, false);
        core->DrawProject(&dc, 0, 0, area, 0);
    };
    core->SetZoom(1);
    core->RebuildRoom();
    paint(
        VxRECT{0, 0, static_cast<int>(project.GetTotalWidth()), static_cast<int>(project.GetTotalHeight())});
    core->SetZoom(4);
    core->RebuildRoom();
    // The top-left corner of the room at four times the size: a few objects.
    const int left = static_cast<int>(project.m_spaceLeft * 4);
    const int top = static_cast<int>(project.m_spaceTop * 4);
    paint(VxRECT{0, 0, left + 150, top + 100});
    int turned = 0;
    for (const CVxPart& part : floor->m_objects)
        turned += part.inUse && part.cacheScale == 4.0;
    EXPECT_GT(turned, 0);
    EXPECT_LE(turned, 9);
    // What the cull uses is the drawing rectangle itself.
    for (CVxPart& part : floor->m_objects) {
        if (!part.inUse)
            continue;
        VxRECT culled;
        VxRECT drawn;
        part.GetCullingRect(&culled, 7, 11, 4.0);
        part.GetCachedDrawingRect(&drawn, 7, 11, 4.0);
        EXPECT_TRUE(culled.left == drawn.left && culled.top == drawn.top && culled.right == drawn.right &&
                    culled.bottom == drawn.bottom);
    }
}

namespace {
// Counts the lines drawn instead of judging pixels.
class CVxLineCountingDC : public CVxQtDC
{
public:
    using CVxQtDC::CVxQtDC;
    void Line(int x1, int y1, int x2, int y2) override
    {
        ++lines;
        CVxQtDC::Line(x1, y1, x2, y2);
    }
    long lines = 0;
};
} // namespace

TEST_F(AppCorePlan, TheGridDrawsNoMoreLinesThanTheSheetHoldsWhateverItsSize)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    const int width = 400;
    const int height = 300;
    // Values that no file can set any more, and the zoom of a deep look.
    for (const double grid : {std::nan(""), HUGE_VAL, 1e300, 1e10, 1e-300, 0.01}) {
        for (const double zoom : {1.0, 1e6}) {
            project.m_gridSize = grid;
            core->SetZoom(zoom);
            CVxLineCountingDC plain(width, height, false);
            core->DrawProject(&plain, -1000000, -1000000, VxRECT{0, 0, width, height}, 0);
            CVxLineCountingDC dc(width, height, false);
            core->DrawProject(&dc, -1000000, -1000000, VxRECT{0, 0, width, height},
                              CVxAppCore::drawGrid | CVxAppCore::drawGridLabels);
            EXPECT_LE(dc.lines - plain.lines, 2 * (width / 3 + 2)) << grid << " at zoom " << zoom;
        }
    }
}
