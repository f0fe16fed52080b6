#pragma once
// The 3D engine without a window: an offscreen OpenGL context and a
// framebuffer of the asked size, for a picture of a scene file or its size.
// The engine has one view per process, so no viewer window may be open
// meanwhile.

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

// The bounding box of a scene as the engine loads it: xmin, xmax, ymin,
// ymax, zmin, zmax in metres. False with the reason when there is none.
bool VX_Measure3dScene(const QString& scenePath, float box[6], QString& error);
