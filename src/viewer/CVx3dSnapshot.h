#pragma once
// One picture of a scene file drawn by the 3D engine without a window: an
// offscreen OpenGL context and a framebuffer of the asked size. The engine
// has one view per process, so no viewer window may be open meanwhile.

#include <QImage>
#include <QString>
#include <QStringList>

struct SVx3dSnapshotRequest
{
    QString scenePath;
    int viewpoint = 0; // index in the scene's viewpoints; out of range means the first
    int width = 800;
    int height = 600;
};

struct SVx3dSnapshotResult
{
    QImage image;
    QString error;        // why there is no picture
    QStringList warnings; // what the engine said while loading and drawing
    int viewpointCount = 0;
};

// Loads the engine library if needed. Needs a QGuiApplication.
SVx3dSnapshotResult VX_Render3dSnapshot(const SVx3dSnapshotRequest& request);
