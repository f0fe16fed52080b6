// Rooms from walls: the rebuild of a floor (wall corners and the whole floor
// plan) against the arrangement of the same centre lines that CGAL builds,
// with its faces enumerated. Two kinds of floor: a grid of rooms with every
// room side a wall of its own, and a lattice of long walls that cross each
// other, which the plan has to cut at every crossing.

#include "CVxFloor.h"
#include "CVxFloorPlan.h"

#include <benchmark/benchmark.h>

#ifdef PLAVENO_HAVE_CGAL
#include <CGAL/Arr_segment_traits_2.h>
#include <CGAL/Arrangement_2.h>
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#endif

#include <cmath>
#include <vector>

namespace {

// A grid of rooms 400 x 300 in cm. Every room side is a wall of its own,
// and on every second row the partition walls sit halfway along, so they
// end on the middle of the walls above and below: T-joints that the plan
// has to split. Every thirteenth partition wall is curved.
struct CGrid
{
    int columns;
    int rows;
};

CGrid GridFor(int walls)
{
    // About 2 n^2 + 2 n walls for an n by n grid.
    const int n = std::max(1, static_cast<int>(std::lround((std::sqrt(1.0 + 2.0 * walls) - 1) / 2)));
    return {n, n};
}

void MakeFloor(CVxFloor& floor, int wallCount)
{
    const CGrid grid = GridFor(wallCount);
    CVxRoomWalls& walls = floor.m_walls;
    walls.RemoveAll();
    int partition = 0;
    for (int r = 0; r <= grid.rows; ++r)
        for (int c = 0; c < grid.columns; ++c)
            walls.GetNewWall()->Set(c * 400.0, r * 300.0, (c + 1) * 400.0, r * 300.0, 1, 10, 250, 250, true,
                                    false);
    for (int r = 0; r < grid.rows; ++r) {
        const double shift = (r % 2) ? 200 : 0;
        for (int c = 0; c <= grid.columns; ++c) {
            double x = c * 400.0 + shift;
            // The outer walls stay on the edge of the building.
            if (c == 0 || c == grid.columns)
                x = c * 400.0;
            const bool curved = c > 0 && c < grid.columns && ++partition % 13 == 0;
            walls.GetNewWall()->Set(x, r * 300.0, x, (r + 1) * 300.0, 1, 10, 250, 250, true, curved);
        }
    }
}

// n walls across and n down, 100 apart, each running the whole length of
// the lattice: (n - 1)^2 rooms.
void MakeLattice(CVxFloor& floor, int n)
{
    CVxRoomWalls& walls = floor.m_walls;
    walls.RemoveAll();
    const double length = (n - 1) * 100.0;
    for (int k = 0; k < n; ++k)
        walls.GetNewWall()->Set(0, k * 100.0, length, k * 100.0, 1, 10, 250, 250, true, false);
    for (int k = 0; k < n; ++k)
        walls.GetNewWall()->Set(k * 100.0, 0, k * 100.0, length, 1, 10, 250, 250, true, false);
}

// Arguments of the floors: a wall count for the grid, or a negative number
// -n for the lattice of n by n walls.
void MakeBenchFloor(CVxFloor& floor, int64_t argument)
{
    floor.m_walls.RemoveAll();
    if (argument < 0)
        MakeLattice(floor, static_cast<int>(-argument));
    else
        MakeFloor(floor, static_cast<int>(argument));
}

void FloorArguments(benchmark::internal::Benchmark* bench)
{
    for (int64_t argument : {50, 200, 500, 2000, 20000, 100000, -150})
        bench->Arg(argument);
}

void BM_RebuildAndCreatePlan(benchmark::State& state)
{
    CVxFloor floor;
    MakeBenchFloor(floor, state.range(0));
    CVxFloorPlan plan;
    // As in the editor, the floor already remembers its rooms.
    floor.m_walls.RebuildWalls();
    plan.CreatePlan(floor, 1);
    floor.m_planDef = plan.Save();
    for (auto _ : state) {
        floor.m_walls.RebuildWalls();
        plan.CreatePlan(floor, 1);
        benchmark::DoNotOptimize(plan.regions.data());
    }
    state.counters["walls"] = floor.m_walls.GetWallCount();
    state.counters["rooms"] = plan.GetRegionCount();
    state.counters["edges"] = static_cast<double>(plan.edges.size());
}
BENCHMARK(BM_RebuildAndCreatePlan)->Apply(FloorArguments)->Unit(benchmark::kMillisecond);

// The plan alone, on walls already rebuilt: what the graph and rooms cost.
void BM_CreatePlanOnly(benchmark::State& state)
{
    CVxFloor floor;
    MakeBenchFloor(floor, state.range(0));
    CVxFloorPlan plan;
    floor.m_walls.RebuildWalls();
    plan.CreatePlan(floor, 1);
    floor.m_planDef = plan.Save();
    for (auto _ : state) {
        plan.CreatePlan(floor, 1);
        benchmark::DoNotOptimize(plan.regions.data());
    }
    state.counters["walls"] = floor.m_walls.GetWallCount();
    state.counters["rooms"] = plan.GetRegionCount();
}
BENCHMARK(BM_CreatePlanOnly)->Apply(FloorArguments)->Unit(benchmark::kMillisecond);

#ifdef PLAVENO_HAVE_CGAL
using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Traits = CGAL::Arr_segment_traits_2<Kernel>;
using Arrangement = CGAL::Arrangement_2<Traits>;

void BM_CgalArrangementFaces(benchmark::State& state)
{
    CVxFloor floor;
    MakeBenchFloor(floor, state.range(0));
    floor.m_walls.RebuildWalls();
    // The same centre lines that the plan graph takes: chords of curves.
    std::vector<Traits::X_monotone_curve_2> segments;
    for (const CVxWall& wall : floor.m_walls.walls)
        segments.emplace_back(Kernel::Point_2(wall.start.x, wall.start.y),
                              Kernel::Point_2(wall.end.x, wall.end.y));
    size_t faces = 0;
    for (auto _ : state) {
        Arrangement arrangement;
        CGAL::insert(arrangement, segments.begin(), segments.end());
        faces = 0;
        size_t halfedges = 0;
        for (auto face = arrangement.faces_begin(); face != arrangement.faces_end(); ++face) {
            if (face->is_unbounded())
                continue;
            ++faces;
            auto circulator = face->outer_ccb();
            auto first = circulator;
            do {
                ++halfedges;
            } while (++circulator != first);
        }
        benchmark::DoNotOptimize(halfedges);
    }
    state.counters["walls"] = floor.m_walls.GetWallCount();
    state.counters["rooms"] = static_cast<double>(faces);
}
BENCHMARK(BM_CgalArrangementFaces)->Apply(FloorArguments)->Unit(benchmark::kMillisecond);
#endif

} // namespace
