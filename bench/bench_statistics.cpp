// The statistics table of a floor of 500 rooms, each with a window, as the
// clipboard command writes it: rooms, wall runs with their doors and
// windows, totals. The plan is built once; the table is what is timed.

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxUnits.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kColumns = 25;
constexpr int kRows = 20;

// Columns and rows of slightly different sizes, so that hardly two rooms
// share a figure, as in a real house.
double ColumnX(int c)
{
    return c * 400.0 + c * (c - 1) * 1.37;
}

double RowY(int r)
{
    return r * 300.0 + r * (r - 1) * 2.11;
}

void MakeFloor(CVxFloor& floor)
{
    CVxRoomWalls& walls = floor.m_walls;
    walls.RemoveAll();
    for (int r = 0; r <= kRows; ++r)
        for (int c = 0; c < kColumns; ++c)
            walls.GetNewWall()->Set(ColumnX(c), RowY(r), ColumnX(c + 1), RowY(r), 1, 10, 250, 250, true,
                                    false);
    for (int r = 0; r < kRows; ++r)
        for (int c = 0; c <= kColumns; ++c)
            walls.GetNewWall()->Set(ColumnX(c), RowY(r), ColumnX(c), RowY(r + 1), 1, 10, 240 + c, 240 + c,
                                    true, false);
    walls.RebuildWalls();
}

void AddWindows(CVxFloor& floor)
{
    for (int r = 0; r < kRows; ++r) {
        for (int c = 0; c < kColumns; ++c) {
            CVxPart* window = floor.GetNewObject(nullptr, true);
            window->type = ptWindow;
            window->width = 80 + (r * kColumns + c) % 40;
            window->zHeight = 120;
            window->snapToWall = true;
            window->SnapToWall(&floor.m_walls, ColumnX(c) + 150, RowY(r) + 2, false, false, false);
        }
    }
}

void BM_FloorStatistics500Rooms(benchmark::State& state)
{
    CVxFloor floor;
    MakeFloor(floor);
    CVxFloorPlan plan;
    plan.CreatePlan(floor, CVxUnits::UNIT_CM);
    floor.ResetWallSnapSegments(&plan);
    AddWindows(floor);
    if (plan.GetRegionCount() != kColumns * kRows) {
        state.SkipWithError("the grid did not give 500 rooms");
        return;
    }
    for (auto _ : state) {
        CVxStringW table = floor.GetFloorStatisticalString(plan, CVxUnits::UNIT_CM, CVxUnits::UNIT_M);
        benchmark::DoNotOptimize(table);
    }
    state.counters["rooms"] = plan.GetRegionCount();
}
BENCHMARK(BM_FloorStatistics500Rooms)->Unit(benchmark::kMillisecond);

} // namespace
