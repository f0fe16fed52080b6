// Opening a container of many entries, as a damaged or hostile file may
// hold: 20,000 and 200,000 entries of one byte each, behind the project text,
// all of one name or each of its own, none referred to by the text. The
// reference is a container of the project text alone; the entries should
// cost no more than reading past their bytes.
//
// The files go to a temporary folder, PLAVENO_BENCH_TMP if that is set. On a
// disk the figures include the file system's work for every entry that is
// written out.

#include "CVxAppHelperHeadless.h"
#include "CVxProject.h"
#include "IVxAppHelperCallback.h"
#include "VxBenchProject.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

namespace {

const std::string kProjectText = "[Room]\r\nFileVersion=1020\r\nWidth=500\r\nHeight=300\r\n\r\n";

struct SFixture
{
    SFixture()
    {
        VxBenchApplication();
        helper = VxBenchHostIn(folder.path() + "/");
    }

    // A container of the project text and `entries` entries named
    // "tile.png", or "tile0.png", "tile1.png" ... with `distinct`.
    CVxStringW Container(int entries, bool distinct)
    {
        std::string bytes = "[Room]\r\nFileVersion=1020\r\nEncoding=utf-8\r\nCompression=zlib\r\n\r\n";
        bytes += "[File]\r\nName=project.pvp\r\nDataSize=" + std::to_string(kProjectText.size()) + "\r\n" +
                 kProjectText + "\r\n\r\n";
        for (int i = 0; i < entries; ++i)
            bytes += "[File]\r\nName=tile" + (distinct ? std::to_string(i) : std::string()) +
                     ".png\r\nDataSize=1\r\nx\r\n\r\n";
        const QString path =
            folder.path() + QString(distinct ? "/distinct%1.pvp" : "/repeated%1.pvp").arg(entries);
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        return CVxStringW(path);
    }

    QTemporaryDir folder{VxBenchFolderTemplate("bench_container_names")};
    CVxAppHelperHeadless* helper = nullptr;
};

SFixture& Fixture()
{
    static SFixture* fixture = new SFixture();
    return *fixture;
}

void OpenContainer(benchmark::State& state, bool distinct)
{
    const CVxStringW path = Fixture().Container(static_cast<int>(state.range(0)), distinct);
    for (auto _ : state) {
        CVxProject read;
        if (!read.LoadFromFile(path, nullptr, nullptr, false, 0))
            state.SkipWithError("open failed");
        state.PauseTiming();
        read.RemoveTempFiles();
        state.ResumeTiming();
    }
    state.counters["entries"] = static_cast<double>(state.range(0));
}

void BM_OpenRepeatedNames(benchmark::State& state)
{
    OpenContainer(state, false);
}
BENCHMARK(BM_OpenRepeatedNames)
    ->Arg(0)
    ->Arg(20000)
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// Entries of as many names, none of which the project text refers to.
void BM_OpenDistinctNames(benchmark::State& state)
{
    OpenContainer(state, true);
}
BENCHMARK(BM_OpenDistinctNames)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
