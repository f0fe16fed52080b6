// The wall editor on a floor of about 500 walls, a grid of 240 rooms in a
// view of 1920 by 1080: one step of dragging a vertex (the live update of the
// rooms and the repaint), and accepting the editor (walls made whole again,
// the plan, the objects and the undo step).

#include "CVxAppCore.h"
#include "CVxQtDC.h"
#include "CVxWallEditor.h"
#include "VxBenchProject.h"

#include <benchmark/benchmark.h>

namespace {

class CVxWallBenchHost : public CVxAppHelperHeadless
{
public:
    CVxWallBenchHost() : CVxAppHelperHeadless(CVxStringW(), CVxStringW()) {}
    int GetKeyState(EVxKey key) override { return key == VX_KEY_LBUTTON ? 1 : 0; }
};

constexpr int kRows = 15;
constexpr int kCols = 16;
constexpr double kCell = 300;

// One wall per side of every cell, so that the editor splits nothing.
void BuildGrid(CVxAppCore* core)
{
    core->InitProject();
    CVxProject& project = core->GetProject();
    CVxFloor* floor = project.GetFloor();
    floor->RemoveAllObjects();
    floor->m_walls.RemoveAll();
    for (int r = 0; r <= kRows; ++r)
        for (int c = 0; c < kCols; ++c)
            floor->m_walls.GetNewWall()->Set(c * kCell, r * kCell, (c + 1) * kCell, r * kCell, 1, 10, 250,
                                             250, true, false);
    for (int c = 0; c <= kCols; ++c)
        for (int r = 0; r < kRows; ++r)
            floor->m_walls.GetNewWall()->Set(c * kCell, r * kCell, c * kCell, (r + 1) * kCell, 1, 10, 250,
                                             250, true, false);
    project.m_width = kCols * kCell;
    project.m_height = kRows * kCell;
    core->UpdateFloorPlan();
    core->SetDrawingAllowed(true);
    core->SetZoom(0.25);
    core->RebuildRoom();
    core->SetViewOrigin(VxPOINT{0, 0});
    core->GetUndoManager().Reinitialize(&project);
}

void BM_WallEditorDragVertexStep(benchmark::State& state)
{
    VxBenchApplication();
    static CVxWallBenchHost host;
    VX_SetAppHelperCallback(&host);
    CVxAppCore* core = VX_GetCore();
    BuildGrid(core);
    core->DoMainToolbarButtonAction(VX_TB_EDIT_WALLS);
    CVxQtDC dc(1920, 1080, true);
    const int flags = core->GetPartDrawFlagsFromOptions() | CVxAppCore::drawHandles;
    const VxRECT view{0, 0, 1920, 1080};
    const VxPOINT origin = core->GetObjectOrigin();
    const double zoom = core->GetZoom();
    // An inner corner where four walls and four rooms meet.
    double x = origin.x + 5 * kCell * zoom;
    double y = origin.y + 5 * kCell * zoom;
    bool handled = true;
    core->MainViewMouseDown(CVxAppCore::buttonLeft, 0, x, y, 0, &handled);
    x += 12;
    core->MainViewMouseMove(0, x, y, 0);
    int step = 0;
    for (auto _ : state) {
        x += (step++ % 20 < 10) ? 3 : -3;
        y += (step % 7 < 3) ? 2 : -2;
        core->MainViewMouseMove(0, x, y, 0);
        const VxRECT sheet = core->GetSheetRect();
        core->DrawProject(&dc, sheet.left, sheet.top, view, flags);
        benchmark::ClobberMemory();
    }
    core->MainViewMouseUp(CVxAppCore::buttonLeft, 0, x, y, 0);
    state.counters["walls"] = core->GetProject().GetFloor()->m_walls.GetWallCount();
    state.counters["rooms"] = core->GetFloorPlan().GetRegionCount();
    core->DeactivateActiveEditor(true, true);
    core->InitProject();
}
BENCHMARK(BM_WallEditorDragVertexStep)->Unit(benchmark::kMillisecond);

void BM_WallEditorAccept(benchmark::State& state)
{
    VxBenchApplication();
    static CVxWallBenchHost host;
    VX_SetAppHelperCallback(&host);
    CVxAppCore* core = VX_GetCore();
    BuildGrid(core);
    const VxPOINT origin = core->GetObjectOrigin();
    const double zoom = core->GetZoom();
    for (auto _ : state) {
        state.PauseTiming();
        core->DoMainToolbarButtonAction(VX_TB_EDIT_WALLS);
        // One vertex moved, so that there is a result to keep.
        const double x = origin.x + 5 * kCell * zoom;
        const double y = origin.y + 5 * kCell * zoom;
        bool handled = true;
        core->MainViewMouseDown(CVxAppCore::buttonLeft, 0, x, y, 0, &handled);
        core->MainViewMouseMove(0, x + 12, y, 0);
        core->MainViewMouseUp(CVxAppCore::buttonLeft, 0, x + 12, y, 0);
        state.ResumeTiming();
        core->DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE);
        benchmark::ClobberMemory();
        state.PauseTiming();
        core->MakeUndo();
        state.ResumeTiming();
    }
    state.counters["walls"] = core->GetProject().GetFloor()->m_walls.GetWallCount();
    core->InitProject();
}
BENCHMARK(BM_WallEditorAccept)->Unit(benchmark::kMillisecond);

} // namespace
