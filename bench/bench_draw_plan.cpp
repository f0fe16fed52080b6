// Painting the main view: a furnished floor of 5000 objects and about 200
// walls into a full-HD picture with antialiasing, all of it in view and
// zoomed in on one corner, where most objects fall outside and must cost no
// more than a rectangle test. The whole view is measured with the kept
// pictures of small drawings as repaints find them, with none kept from the
// last repaint, and without them.

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxFloor.h"
#include "CVxQtDC.h"
#include "IVxAppHelperCallback.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

constexpr int kImageWidth = 1920;
constexpr int kImageHeight = 1080;

// Fonts and pictures need an application object; the benchmark runs without
// a display.
struct SGuiApp
{
    SGuiApp()
    {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        static int argc = 1;
        static char name[] = "bench_draw_plan";
        static char* argv[] = {name, nullptr};
        app = new QGuiApplication(argc, argv);
        VX_SetAppHelperCallback(&helper);
    }
    QGuiApplication* app;
    CVxAppHelperHeadless helper;
};

// A block of flats: 10 by 10 rooms of 400 by 300 with their walls, and the
// rooms filled with a mix of library furniture, doors and plain shapes.
void FurnishProject(CVxProject& project)
{
    constexpr int columns = 10;
    constexpr int rows = 10;
    project.m_width = columns * 400;
    project.m_height = rows * 300;
    CVxFloor* floor = project.GetFloor();
    CVxRoomWalls& walls = floor->m_walls;
    walls.RemoveAll();
    for (int r = 0; r <= rows; ++r)
        walls.GetNewWall()->Set(0, r * 300.0, columns * 400.0, r * 300.0, 1, 10, 250, 250, true, false);
    for (int c = 0; c <= columns; ++c)
        walls.GetNewWall()->Set(c * 400.0, 0, c * 400.0, rows * 300.0, 1, 10, 250, 250, true, false);
    // Split at every room corner, as a drawn plan has its walls: one wall
    // per room side, 220 in all.
    for (int i = 0; i < walls.GetWallCount(); ++i) {
        const CVxWall& wall = walls.walls[static_cast<size_t>(i)];
        const double step = wall.start.y == wall.end.y ? 400.0 : 300.0;
        if (wall.length > step + 1)
            walls.SplitWallAtPoint(i, step / wall.length, nullptr);
    }

    static const int libraryNumbers[] = {21,  22,  23,  30,  41,  52,  63,  92,
                                         104, 131, 150, 202, 215, 230, 250, 270};
    for (int i = 0; i < 5000; ++i) {
        CVxPart* part = floor->GetNewObject();
        const int room = i % (columns * rows);
        const int slot = i / (columns * rows);
        part->type = (i % 7 == 0) ? ptRectangle : ptLibraryObject;
        part->libObjID = libraryNumbers[i % 16];
        part->x = (room % columns) * 400.0 + 20 + (slot % 7) * 50;
        part->y = (room / columns) * 300.0 + 20 + (slot / 7) * 35;
        part->width = 45;
        part->height = 30;
        part->rotation = (i % 5) * 22.5;
        part->SetFillColor(0x4080C0 + (i % 13) * 0x010203);
    }
}

// How kept pictures of small drawings take part: kept between repaints as
// in the main view, let go before each repaint as after a zoom step, or not
// used at all.
enum class ESprites
{
    kept,
    cold,
    off
};

void DrawAt(benchmark::State& state, double zoomFactor, ESprites sprites = ESprites::kept)
{
    static SGuiApp gui;
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    FurnishProject(core->GetProject());
    core->UpdateFloorPlan();
    const CVxProject& project = core->GetProject();
    const double fit =
        std::min(kImageWidth / project.GetTotalWidth(), kImageHeight / project.GetTotalHeight());
    core->SetZoom(fit * zoomFactor);
    core->RebuildRoom();
    const int flags = CVxAppCore::drawGrid | CVxAppCore::drawFloorTextures;
    CVxQtDC dc(kImageWidth, kImageHeight, true);
    const VxRECT update{0, 0, kImageWidth, kImageHeight};
    core->EnableSpriteCache(sprites != ESprites::off);
    for (auto _ : state) {
        if (sprites == ESprites::cold) {
            core->EnableSpriteCache(false);
            core->EnableSpriteCache(true);
        }
        core->DrawProject(&dc, 0, 0, update, flags);
        benchmark::DoNotOptimize(dc.GetImage());
    }
    state.counters["objects"] = project.m_floors.front()->CountUsedObjects();
    state.counters["walls"] = project.m_floors.front()->m_walls.GetWallCount();
    state.counters["sprites"] = core->GetSpriteCache().GetCount();
    core->EnableSpriteCache(true);
}

void BM_DrawFurnishedFloorAllVisible(benchmark::State& state)
{
    DrawAt(state, 1.0);
}
BENCHMARK(BM_DrawFurnishedFloorAllVisible)->Unit(benchmark::kMillisecond);

void BM_DrawFurnishedFloorAllVisibleColdSprites(benchmark::State& state)
{
    DrawAt(state, 1.0, ESprites::cold);
}
BENCHMARK(BM_DrawFurnishedFloorAllVisibleColdSprites)->Unit(benchmark::kMillisecond);

void BM_DrawFurnishedFloorAllVisibleNoSprites(benchmark::State& state)
{
    DrawAt(state, 1.0, ESprites::off);
}
BENCHMARK(BM_DrawFurnishedFloorAllVisibleNoSprites)->Unit(benchmark::kMillisecond);

// At eight times the zoom about a sixtieth of the plan is in the picture.
void BM_DrawFurnishedFloorCorner(benchmark::State& state)
{
    DrawAt(state, 8.0);
}
BENCHMARK(BM_DrawFurnishedFloorCorner)->Unit(benchmark::kMillisecond);

} // namespace
