#pragma once
// What the benchmarks share: an application object without a display, the
// folder of a run, and the furnished floor that the plan and undo
// benchmarks work on.

#include "CVxAppHelperHeadless.h"
#include "CVxFloor.h"
#include "CVxProject.h"
#include "IVxAppHelperCallback.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdlib>

namespace {

// Fonts and pictures need an application object; the benchmarks run
// without a display. One for the whole run.
inline QGuiApplication* VxBenchApplication()
{
    static QGuiApplication* app = nullptr;
    if (!app) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        static int argc = 1;
        static char name[] = "plaveno_bench";
        static char* argv[] = {name, nullptr};
        app = new QGuiApplication(argc, argv);
    }
    return app;
}

// A template for the temporary folder of a run: in PLAVENO_BENCH_TMP, if
// set, or the system's temporary folder. On a RAM disk the figures show the
// work of the program alone, on a disk they include the waits for it.
inline QString VxBenchFolderTemplate(const char* name)
{
    const QString root = qEnvironmentVariable("PLAVENO_BENCH_TMP");
    return (root.isEmpty() ? QDir::tempPath() : root) + "/" + name + "-XXXXXX";
}

// A headless host, installed, whose application data and documents lie in
// `root` (ending in "/").
inline CVxAppHelperHeadless* VxBenchHostIn(const QString& root)
{
    auto* helper = new CVxAppHelperHeadless(CVxStringW(root + "appdata/"), CVxStringW(root + "docs/"));
    VX_SetAppHelperCallback(helper);
    return helper;
}

// The application and a headless host with the system's folders.
struct SGuiApp
{
    SGuiApp()
    {
        VxBenchApplication();
        VX_SetAppHelperCallback(&helper);
    }
    CVxAppHelperHeadless helper;
};

// A block of flats: 10 by 10 rooms of 400 by 300 with their walls, and the
// rooms filled with a mix of library furniture, doors and plain shapes.
inline void FurnishProject(CVxProject& project)
{
    constexpr int columns = 10;
    constexpr int rows = 10;
    project.m_width = columns * 400;
    project.m_height = rows * 300;
    CVxFloor* floor = project.GetFloor();
    CVxRoomWalls& walls = floor->m_walls;
    walls.RemoveAll();
    for (int r = 0; r <= rows; ++r)
        walls.GetNewWall()->Set(0, r * 300.0, columns * 400.0, r * 300.0, 1, 10, 250, 250, true, false);
    for (int c = 0; c <= columns; ++c)
        walls.GetNewWall()->Set(c * 400.0, 0, c * 400.0, rows * 300.0, 1, 10, 250, 250, true, false);
    // Split at every room corner, as a drawn plan has its walls: one wall
    // per room side, 220 in all.
    for (int i = 0; i < walls.GetWallCount(); ++i) {
        const CVxWall& wall = walls.walls[static_cast<size_t>(i)];
        const double step = wall.start.y == wall.end.y ? 400.0 : 300.0;
        if (wall.length > step + 1)
            walls.SplitWallAtPoint(i, step / wall.length, nullptr);
    }

    static const int libraryNumbers[] = {21,  22,  23,  30,  41,  52,  63,  92,
                                         104, 131, 150, 202, 215, 230, 250, 270};
    for (int i = 0; i < 5000; ++i) {
        CVxPart* part = floor->GetNewObject();
        const int room = i % (columns * rows);
        const int slot = i / (columns * rows);
        part->type = (i % 7 == 0) ? ptRectangle : ptLibraryObject;
        part->libObjID = libraryNumbers[i % 16];
        part->x = (room % columns) * 400.0 + 20 + (slot % 7) * 50;
        part->y = (room / columns) * 300.0 + 20 + (slot / 7) * 35;
        part->width = 45;
        part->height = 30;
        part->rotation = (i % 5) * 22.5;
        part->SetFillColor(0x4080C0 + (i % 13) * 0x010203);
    }
}

} // namespace
