// The scene file of a big house: three floors of 10 by 10 rooms with
// 10,000 objects in all, as the 3D view asks for it. The target is below one
// second; the counters give the file's size and how many whole object nodes
// were written once and then reused.
//
// The proto library of the tree is inlined when data/library.wrl exists, as
// the built-in viewer's scene has it; without it the scene refers to it.

#include "CVxSceneExport.h"
#include "VxBenchProject.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void BuildHouse(CVxProject& project)
{
    FurnishProject(project);
    CVxFloor* first = project.GetFloor();
    // 5000 objects on the ground floor, 2500 on each of the two above.
    for (int f = 1; f < 3; ++f) {
        CVxFloor* floor = project.AddNewFloor();
        floor->m_walls = first->m_walls;
        for (int i = 0; i < 2500; ++i) {
            CVxPart* part = floor->GetNewObject();
            *part = first->m_objects[static_cast<size_t>(i * 2 + f - 1)];
        }
    }
    // Doors and windows in the walls of the ground floor.
    for (int i = 0; i < 100; ++i) {
        CVxPart* part = first->GetNewObject();
        part->type = i % 2 ? ptWindow : ptDoor;
        part->width = 90;
        part->height = 10;
        part->z = i % 2 ? 90 : 0;
        part->zHeight = i % 2 ? 120 : 200;
        part->doorframe = true;
        part->snapToWall = true;
        part->SnapToWall(&first->m_walls, (i % 10) * 400.0 + 150, (i / 10) * 300.0, true, false, false);
    }
    project.RebuildAllFloorsWalls();
    project.m_viewpoints.m_allFloors = true;
}

void BM_SceneExport(benchmark::State& state)
{
    SGuiApp app;
    QTemporaryDir folder(VxBenchFolderTemplate("plaveno-scene"));
    CVxProject project;
    BuildHouse(project);
    int objects = 0;
    for (const CVxFloor* floor : project.m_floors)
        objects += floor->CountUsedObjects();

    SVxSceneExportRequest request;
    request.path = CVxStringW(folder.filePath(QStringLiteral("scene.wrl")));
    request.mode = VX_3DVIEWER_BUILTIN;
    request.libraryFolder =
        CVxStringW(qEnvironmentVariable("PLAVENO_PROTO_FOLDER", QStringLiteral(PLAVENO_SOURCE_DIR "/data/")));
    SVx3DExportReport report;
    request.report = &report;
    for (auto _ : state) {
        if (!CVxSceneExport::Write(project, request))
            state.SkipWithError("the scene could not be written");
    }
    state.counters["objects"] = objects;
    state.counters["bytes"] = static_cast<double>(QFileInfo(request.path.ToQString()).size());
    state.counters["library_bytes"] = static_cast<double>(CVxSceneExport::GetUncompressedLibrarySize());
    state.counters["nodes_defined"] = report.partNodesDefined;
    state.counters["nodes_reused"] = report.partNodesReused;
    state.counters["bytes_saved_by_reuse"] = static_cast<double>(report.partNodeBytesSaved);
}
BENCHMARK(BM_SceneExport)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
