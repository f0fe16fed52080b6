// Painting the main view: a furnished floor of 5000 objects and about 200
// walls into a full-HD picture with antialiasing, all of it in view and
// zoomed in on one corner, where most objects fall outside and must cost no
// more than a rectangle test. The whole view is measured with the kept
// pictures of small drawings as repaints find them, with none kept from the
// last repaint, and without them.

#include "CVxAppCore.h"
#include "CVxQtDC.h"
#include "IVxAppHelperCallback.h"
#include "VxBenchProject.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kImageWidth = 1920;
constexpr int kImageHeight = 1080;

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
