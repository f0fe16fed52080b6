// Painting a floor opening of a great many points, as a damaged file may hold,
// with the hatched brush and outline pen of the plan, antialiased, in full HD:
// a smooth circle, a star whose spikes are longer than the circle is wide,
// and points scattered at random over the opening's box. The time should grow
// with the number of points, not with the rows and columns their edges cross.

#include "CVxQtDC.h"
#include "VxBenchProject.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>
#include <vector>

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

enum EShape
{
    SHAPE_CIRCLE,
    SHAPE_STAR,
    SHAPE_RANDOM
};

std::vector<VxPOINT> Outline(EShape shape, int count)
{
    std::vector<VxPOINT> points;
    points.reserve(static_cast<size_t>(count));
    std::mt19937 random(20261124);
    std::uniform_int_distribution<int> across(560, 1360);
    std::uniform_int_distribution<int> down(240, 840);
    for (int k = 0; k < count; ++k) {
        const double angle = 2 * std::numbers::pi * k / count;
        const double radius = shape == SHAPE_STAR && k % 2 == 1 ? 300 : 120;
        if (shape == SHAPE_RANDOM)
            points.push_back(VxPOINT{across(random), down(random)});
        else
            points.push_back(VxPOINT{static_cast<int>(std::lround(960 + radius * std::cos(angle))),
                                     static_cast<int>(std::lround(540 + radius * std::sin(angle)))});
    }
    return points;
}

void BM_PaintHugeOpening(benchmark::State& state)
{
    VxBenchApplication();
    const auto shape = static_cast<EShape>(state.range(0));
    const std::vector<VxPOINT> points = Outline(shape, static_cast<int>(state.range(1)));
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        CVxQtDC dc(&painter, true, false);
        dc.SelectPen(CVxDC::penSolid, 0, 0x808080);
        dc.SelectBrush(CVxDC::brushHatched, 0xFFD6D6, CVxDC::hatchDiagCross);
        dc.Polygon(points.data(), static_cast<int>(points.size()));
    }
    state.counters["points"] = static_cast<double>(points.size());
}
BENCHMARK(BM_PaintHugeOpening)
    ->ArgNames({"shape", "points"})
    ->ArgsProduct({{SHAPE_CIRCLE, SHAPE_STAR, SHAPE_RANDOM}, {10000, 1000000}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
