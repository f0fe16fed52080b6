// Loading the standard catalogue as the program does at every start: the
// plain text in data/, and the compressed copy that ships beside the
// program, written once per run into a temporary folder. The figure to
// watch is the median of the repetitions; a start should not wait for the
// library noticeably, so it ought to stay within a few milliseconds.

#include "CVxUserLibrary.h"
#include "VxBenchProject.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

struct SVxLibraryFixture
{
    SVxLibraryFixture() : folder(VxBenchFolderTemplate("plaveno-bench-library"))
    {
        VxBenchApplication();
        const QString root = folder.path() + "/";
        VxBenchHostIn(root);
        QDir().mkpath(root + "appdata");
        plain = CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR "/data/Library.pvl"));
        packed = CVxStringW(root + "Library.pvlz");
        CVxUserLibrary library;
        const int flags = CVxUserLibrary::LIB_LOAD_USER_PAGES | CVxUserLibrary::LIB_LOAD_STANDARD;
        if (library.LoadFromFile(plain, flags, -1))
            library.SaveToFile(packed, -1, true);
    }
    QTemporaryDir folder;
    CVxStringW plain;
    CVxStringW packed;
};

SVxLibraryFixture& Fixture()
{
    static SVxLibraryFixture fixture;
    return fixture;
}

void Load(benchmark::State& state, const CVxStringW& path)
{
    int objects = 0;
    for (auto _ : state) {
        CVxUserLibrary library;
        if (!library.LoadFromFile(path, CVxUserLibrary::LIB_LOAD_STANDARD, -1))
            state.SkipWithError("load failed");
        objects = library.GetObjectCount();
        state.PauseTiming();
        library.RemoveTempFiles();
        state.ResumeTiming();
    }
    state.counters["objects"] = objects;
}

void BM_LoadCataloguePlain(benchmark::State& state)
{
    Load(state, Fixture().plain);
}
BENCHMARK(BM_LoadCataloguePlain)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(9);

void BM_LoadCatalogueCompressed(benchmark::State& state)
{
    Load(state, Fixture().packed);
}
BENCHMARK(BM_LoadCatalogueCompressed)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(9);

} // namespace
