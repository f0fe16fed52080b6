// Saving and opening a big project: three floors of 100 walls each, 5000
// objects, and about 40 MB of photos and scans in JPEG and PNG that the
// objects wear as textures, so that the container embeds them all.
//
// The reference is what the bytes alone cost: copying the pictures and the
// project's text file to new files with read and write, as cp does, plus
// deflating the text at level 1 in memory, as gzip -1 does (zlib with a gzip
// head). Opening should take no more than 1.5 times that, saving no more
// than twice. Saving syncs its file to the disk before the rename; the copy
// does not, so BM_BaselineCopySynced gives the reference with that cost.
//
// The files go to a temporary folder, PLAVENO_BENCH_TMP if that is set.
// BM_OpenProject also reports the growth of the peak resident memory over
// one extra open, to be held against the size of the file plus 50 MB.

#include "CVxAppHelperHeadless.h"
#include "CVxFloor.h"
#include "CVxProject.h"
#include "IVxAppHelperCallback.h"
#include "VxBenchProject.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kFloors = 3;
constexpr int kWallsPerFloor = 100;
constexpr int kObjects = 5000;
constexpr int64_t kPictureBytes = 40 << 20;
constexpr size_t kCopyPiece = 128 << 10;

// Noise over a gradient: what photographs and scans look like to a
// compressor, which finds next to nothing to take out.
QImage NoisyPicture(int width, int height, std::mt19937& random)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const unsigned noise = random();
            line[x] = qRgb((x * 255 / width + (noise & 0x7F)) & 0xFF,
                           (y * 255 / height + ((noise >> 8) & 0x7F)) & 0xFF, (noise >> 16) & 0xFF);
        }
    }
    return image;
}

int64_t FileSize(const QString& path)
{
    return QFileInfo(path).size();
}

std::string ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

// Copies with read and write in pieces of 128 KiB, as cp does.
bool CopyFile(const QString& from, const QString& to, bool sync)
{
    const int in = ::open(QFile::encodeName(from).constData(), O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return false;
    // A new file, as cp makes in a fresh folder: truncating the old one
    // would have ext4 push its blocks to the disk first.
    ::unlink(QFile::encodeName(to).constData());
    const int out = ::open(QFile::encodeName(to).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (out < 0) {
        ::close(in);
        return false;
    }
    static std::vector<char> piece(kCopyPiece);
    bool ok = true;
    for (ssize_t got; ok && (got = ::read(in, piece.data(), piece.size())) > 0;)
        ok = ::write(out, piece.data(), static_cast<size_t>(got)) == got;
    if (sync)
        ok = ::fsync(out) == 0 && ok;
    ::close(in);
    ::close(out);
    return ok;
}

// gzip -1 of the text, in memory.
size_t GzipFast(const std::string& text)
{
    z_stream stream{};
    deflateInit2(&stream, 1, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    static std::vector<unsigned char> out;
    out.resize(deflateBound(&stream, static_cast<uLong>(text.size())));
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    const size_t packed = stream.total_out;
    deflateEnd(&stream);
    return packed;
}

// Peak resident memory in bytes since the last reset of the peak.
int64_t PeakResident()
{
    FILE* status = fopen("/proc/self/status", "r");
    if (!status)
        return -1;
    char line[256];
    long long kib = -1;
    while (fgets(line, sizeof(line), status))
        if (sscanf(line, "VmHWM: %lld kB", &kib) == 1)
            break;
    fclose(status);
    return kib < 0 ? -1 : kib * 1024;
}

bool ResetPeakResident()
{
    FILE* control = fopen("/proc/self/clear_refs", "w");
    if (!control)
        return false;
    const bool ok = fputs("5", control) >= 0;
    return (fclose(control) == 0) && ok;
}

// Rooms in a grid with one wall per room side: 100 walls on each floor.
void BuildWalls(CVxFloor* floor)
{
    CVxRoomWalls& walls = floor->m_walls;
    walls.RemoveAll();
    constexpr int columns = 5;
    constexpr int rows = 5;
    for (int r = 0; r <= rows; ++r)
        for (int c = 0; c < columns; ++c)
            walls.GetNewWall()->Set(c * 400.0, r * 300.0, (c + 1) * 400.0, r * 300.0, 1, 10, 250, 250, true,
                                    false);
    for (int c = 0; c <= columns; ++c)
        for (int r = 0; r < rows; ++r)
            walls.GetNewWall()->Set(c * 400.0, r * 300.0, c * 400.0, (r + 1) * 300.0, 1, 10, 250, 250, true,
                                    false);
    walls.GetNewWall()->Set(0, 0, 2000, 1500, 1, 10, 250, 250, true, false);
    walls.GetNewWall()->Set(0, 1500, 2000, 0, 1, 10, 250, 250, true, false);
    for (int i = 0; walls.GetWallCount() < kWallsPerFloor; ++i)
        walls.GetNewWall()->Set(i * 40.0, 10, i * 40.0 + 30, 10, 1, 5, 100, 100, true, false);
    walls.RebuildWalls();
}

struct SFixture
{
    SFixture()
    {
        VxBenchApplication();
        const QString root = folder.path() + "/";
        helper = VxBenchHostIn(root);
        QDir().mkpath(root + "pictures");
        QDir().mkpath(root + "copy");

        std::mt19937 random(20261122);
        for (int i = 0; pictureBytes < kPictureBytes; ++i) {
            const bool jpeg = i % 2 == 0;
            const QString path = root + QString("pictures/picture%1.%2").arg(i).arg(jpeg ? "jpg" : "png");
            NoisyPicture(jpeg ? 2400 : 1400, jpeg ? 1800 : 1000, random)
                .save(path, jpeg ? "JPEG" : "PNG", 92);
            pictureBytes += FileSize(path);
            pictures.push_back(path);
        }

        project.m_width = 2000;
        project.m_height = 1500;
        for (int f = 1; f < kFloors; ++f) {
            auto* floor = new CVxFloor();
            floor->Reset(&project);
            project.m_floors.push_back(floor);
        }
        static const int libraryNumbers[] = {21, 22, 23, 30, 41, 52, 63, 92, 104, 131, 150, 202};
        for (int f = 0; f < kFloors; ++f) {
            CVxFloor* floor = project.m_floors[static_cast<size_t>(f)];
            BuildWalls(floor);
            floor->m_floorAppear.SetTexture(CVxStringW(pictures[static_cast<size_t>(f) % pictures.size()]));
            const int count = kObjects / kFloors + (f < kObjects % kFloors ? 1 : 0);
            for (int i = 0; i < count; ++i) {
                CVxPart* part = floor->GetNewObject();
                part->type = (i % 3 == 0) ? ptLibraryObject : ptRectangle;
                part->libObjID = libraryNumbers[i % 12];
                part->x = (i % 40) * 50.0;
                part->y = (i / 40) * 12.0;
                part->width = 45;
                part->height = 30;
                part->rotation = (i % 5) * 22.5;
                part->caption = L"Object";
                part->SetFillColor(0x4080C0 + static_cast<unsigned>(i % 13) * 0x010203);
                if (part->type == ptRectangle)
                    part->appearFill.SetTexture(
                        CVxStringW(pictures[static_cast<size_t>(i) % pictures.size()]));
            }
        }
        projectPath = CVxStringW(root + "house.pvp");
        textPath = root + "house-text.pvp";
        // The first save copies the pictures into the project's folder; the
        // timed saves are the ones that follow, as when the user saves again
        // a while later. Files younger than two seconds have their checksums
        // taken afresh at every save, so the clock moves on past that first.
        project.SaveToFile(projectPath, true, nullptr);
        std::this_thread::sleep_for(std::chrono::milliseconds(2200));
        project.SaveToFile(projectPath, true, nullptr);
        project.SaveToFile(CVxStringW(textPath), false, nullptr);
        text = ReadAll(textPath);
        projectBytes = FileSize(projectPath.ToQString());
    }

    QTemporaryDir folder{VxBenchFolderTemplate("bench_project_io")};
    CVxAppHelperHeadless* helper = nullptr;
    std::vector<QString> pictures;
    int64_t pictureBytes = 0;
    CVxProject project;
    CVxStringW projectPath;
    QString textPath;
    std::string text;
    int64_t projectBytes = 0;
};

SFixture& Fixture()
{
    static SFixture* fixture = new SFixture();
    return *fixture;
}

void SetBytes(benchmark::State& state, int64_t bytes)
{
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["MB"] = static_cast<double>(bytes) / (1 << 20);
}

void BM_SaveProject(benchmark::State& state)
{
    SFixture& fixture = Fixture();
    for (auto _ : state) {
        if (!fixture.project.SaveToFile(fixture.projectPath, true, nullptr))
            state.SkipWithError("save failed");
    }
    SetBytes(state, FileSize(fixture.projectPath.ToQString()));
    state.counters["objects"] = kObjects;
    state.counters["pictures"] = static_cast<double>(fixture.pictures.size());
}
BENCHMARK(BM_SaveProject)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_OpenProject(benchmark::State& state)
{
    SFixture& fixture = Fixture();
    int objects = 0;
    for (auto _ : state) {
        CVxProject read;
        if (!read.LoadFromFile(fixture.projectPath, nullptr, nullptr, false, 0))
            state.SkipWithError("open failed");
        state.PauseTiming();
        objects = 0;
        for (const CVxFloor* floor : read.m_floors)
            objects += floor->CountUsedObjects();
        read.RemoveTempFiles();
        state.ResumeTiming();
    }
    SetBytes(state, fixture.projectBytes);
    state.counters["objects"] = objects;

    // One more open with the peak of the resident memory reset before it;
    // the heap first gives back what it holds free, or the open would reuse
    // it unseen.
    malloc_trim(0);
    const int64_t before = ResetPeakResident() ? PeakResident() : -1;
    {
        CVxProject read;
        read.LoadFromFile(fixture.projectPath, nullptr, nullptr, false, 0);
        const int64_t peak = PeakResident();
        if (before >= 0 && peak >= 0)
            state.counters["peakGrowthMB"] = static_cast<double>(peak - before) / (1 << 20);
        read.RemoveTempFiles();
    }
    state.counters["limitMB"] = static_cast<double>(fixture.projectBytes) / (1 << 20) + 50;
}
BENCHMARK(BM_OpenProject)->Unit(benchmark::kMillisecond)->UseRealTime();

// The pictures and the text to new files.
bool CopyEverything(const SFixture& fixture, bool sync)
{
    const QString copies = fixture.folder.path() + "/copy/";
    bool ok = CopyFile(fixture.textPath, copies + "text.pvp", sync);
    for (size_t i = 0; i < fixture.pictures.size(); ++i)
        ok = CopyFile(fixture.pictures[i], copies + QString::number(i), sync) && ok;
    return ok;
}

void CopyAll(benchmark::State& state, bool sync)
{
    SFixture& fixture = Fixture();
    for (auto _ : state) {
        if (!CopyEverything(fixture, sync))
            state.SkipWithError("copy failed");
    }
    SetBytes(state, fixture.pictureBytes + static_cast<int64_t>(fixture.text.size()));
}

// The reference of the targets: cp of the pictures and the text, and gzip -1
// of the text.
void BM_BaselineCopyAndGzip(benchmark::State& state)
{
    SFixture& fixture = Fixture();
    for (auto _ : state) {
        const bool ok = CopyEverything(fixture, false);
        benchmark::DoNotOptimize(GzipFast(fixture.text));
        if (!ok)
            state.SkipWithError("copy failed");
    }
    SetBytes(state, fixture.pictureBytes + static_cast<int64_t>(fixture.text.size()));
    state.counters["textMB"] = static_cast<double>(fixture.text.size()) / (1 << 20);
}
BENCHMARK(BM_BaselineCopyAndGzip)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_BaselineCopy(benchmark::State& state)
{
    CopyAll(state, false);
}
BENCHMARK(BM_BaselineCopy)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_BaselineCopySynced(benchmark::State& state)
{
    CopyAll(state, true);
}
BENCHMARK(BM_BaselineCopySynced)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_BaselineGzipText(benchmark::State& state)
{
    SFixture& fixture = Fixture();
    size_t packed = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(packed = GzipFast(fixture.text));
    SetBytes(state, static_cast<int64_t>(fixture.text.size()));
    state.counters["packedMB"] = static_cast<double>(packed) / (1 << 20);
}
BENCHMARK(BM_BaselineGzipText)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
