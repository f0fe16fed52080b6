// Undo by snapshots on the furnished floor of 5000 objects and 220 walls:
// the snapshot that a change takes before it starts, and one undo or redo
// with its rebuilt plan. The memory that one kept step holds is reported
// as a counter.

#include "CVxAppCore.h"
#include "VxBenchProject.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace {

CVxAppCore* FurnishedCore()
{
    static SGuiApp gui;
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    FurnishProject(core->GetProject());
    core->UpdateFloorPlan();
    return core;
}

void BM_UndoSnapshot(benchmark::State& state)
{
    CVxAppCore* core = FurnishedCore();
    // A full stack, so that each step also lets the oldest go.
    for (unsigned i = 0; i < CVxAppCore::undoLimit; ++i)
        core->CatchUndoRoom(true);
    for (auto _ : state)
        core->CatchUndoRoom(true);
    core->InitProject();
    const size_t before = mallinfo2().uordblks;
    core = FurnishedCore();
    const size_t furnished = mallinfo2().uordblks;
    core->CatchUndoRoom(true);
    state.counters["project_MB"] = static_cast<double>(furnished - before) / 1e6;
    state.counters["step_MB"] = static_cast<double>(mallinfo2().uordblks - furnished) / 1e6;
    core->InitProject();
}
BENCHMARK(BM_UndoSnapshot)->Unit(benchmark::kMillisecond);

void BM_UndoAndRedoOneStep(benchmark::State& state)
{
    CVxAppCore* core = FurnishedCore();
    core->CatchUndoRoom(true);
    core->GetProject().GetFloor()->SafeGetPart(0)->x += 10;
    bool undo = true;
    for (auto _ : state) {
        benchmark::DoNotOptimize(undo ? core->MakeUndo() : core->MakeRedo());
        undo = !undo;
    }
    core->InitProject();
}
BENCHMARK(BM_UndoAndRedoOneStep)->Unit(benchmark::kMillisecond);

} // namespace
