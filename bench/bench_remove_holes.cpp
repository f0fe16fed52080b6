// Taking floor openings out of a room: our subtraction against the
// difference that Boost.Geometry computes for the same room and openings.

#include "CVxDPolygon.h"

#include <benchmark/benchmark.h>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bg = boost::geometry;
using BgPoint = bg::model::d2::point_xy<double>;
using BgPolygon = bg::model::polygon<BgPoint>;
using BgMultiPolygon = bg::model::multi_polygon<BgPolygon>;

namespace {
constexpr int kOpenings = 50;

// A 12 m x 8 m hall (in cm) with an L-shaped notch, as a room outline.
CVxDPolygon Room()
{
    CVxDPolygon room;
    room.kind = CVxDPolygon::KIND_ROOM;
    room.points = {{0, 0}, {1200, 0}, {1200, 800}, {700, 800}, {700, 600}, {0, 600}};
    room.edgeWalls = {0, 1, 2, 3, 4, 5};
    return room;
}

// Fifty openings of 40 x 30 cm in a 10 x 5 grid, all inside the room, wound
// against it as floor openings are.
std::vector<CVxDPolygon> Openings()
{
    std::vector<CVxDPolygon> holes;
    for (int i = 0; i < kOpenings; ++i) {
        const double x = 40 + (i % 10) * 110.0;
        const double y = 50 + (i / 10) * 105.0;
        CVxDPolygon hole;
        hole.kind = CVxDPolygon::KIND_HOLE;
        hole.points = {{x, y}, {x, y + 30}, {x + 40, y + 30}, {x + 40, y}};
        holes.push_back(hole);
    }
    return holes;
}

BgPolygon ToBoost(const CVxDPolygon& polygon)
{
    BgPolygon out;
    for (const CVxDPoint& p : polygon.points)
        bg::append(out.outer(), BgPoint(p.x, p.y));
    bg::correct(out);
    return out;
}

double Area(const std::vector<CVxDPolygon>& list)
{
    double area = 0;
    for (const CVxDPolygon& p : list)
        area += p.GetArea();
    return area;
}

// Both ways must leave the same floor, or the timings compare nothing.
void CheckSameArea(double ours, double theirs)
{
    if (std::fabs(ours - theirs) > 1e-6 * std::fabs(theirs)) {
        fprintf(stderr, "areas differ: ours %.6f, Boost.Geometry %.6f\n", ours, theirs);
        abort();
    }
}

void BM_RemoveHoles(benchmark::State& state)
{
    const CVxDPolygon room = Room();
    const std::vector<CVxDPolygon> holes = Openings();
    std::vector<CVxDPolygon> result;
    for (auto _ : state) {
        result.assign(1, room);
        CVxDPolygon::RemoveHoles(result, holes);
        benchmark::DoNotOptimize(result.data());
    }
    state.counters["pieces"] = static_cast<double>(result.size());
    state.counters["area"] = Area(result);
}
BENCHMARK(BM_RemoveHoles)->Unit(benchmark::kMicrosecond);

void BM_BoostDifference(benchmark::State& state)
{
    const BgPolygon room = ToBoost(Room());
    BgMultiPolygon holes;
    for (const CVxDPolygon& h : Openings())
        holes.push_back(ToBoost(h));
    BgMultiPolygon result;
    for (auto _ : state) {
        result.clear();
        bg::difference(room, holes, result);
        benchmark::DoNotOptimize(result.data());
    }
    state.counters["pieces"] = static_cast<double>(result.size());
    state.counters["area"] = bg::area(result);

    std::vector<CVxDPolygon> ours{Room()};
    CVxDPolygon::RemoveHoles(ours, Openings());
    CheckSameArea(Area(ours), bg::area(result));
}
BENCHMARK(BM_BoostDifference)->Unit(benchmark::kMicrosecond);
} // namespace
