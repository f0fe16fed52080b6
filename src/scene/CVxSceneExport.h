#pragma once
// The scene file of a project: one VRML 2.0 text written top to bottom in a
// single pass, for the built-in viewer, an external viewer or a web page.

#include "CVxStringA.h"
#include "CVxStringW.h"
#include "SVx3DExportPars.h"

#include <cstdio>

class CVxFloorPlan;
class CVxGlobalShadow;
class CVxProject;
class CVxViewpointSet;

// What the caller of an export decides.
struct SVxSceneExportRequest
{
    CVxStringW path;
    EVx3dViewerMode mode = VX_3DVIEWER_BUILTIN;
    bool phong = false;
    bool withUserViewpoints = true;
    CVx3DFloorLayerVis* vis = nullptr;
    // Empty: the program's proto library in libraryFolder.
    CVxStringA protoUrl;
    CVxStringW textureExportDir;
    // Where library_cs.wrl or library.wrl lie, ending in "/".
    CVxStringW libraryFolder;
    // The plan of the current floor, for standing heights; may be null.
    const CVxFloorPlan* currentPlan = nullptr;
    SVx3DSceneOptions options;
    SVx3DExportReport* report = nullptr;
};

class CVxSceneExport
{
public:
    // Writes the scene; false when the file could not be created. The
    // previous file stays whole until the new one is complete.
    static bool Write(CVxProject& project, const SVxSceneExportRequest& request);

    // An empty viewpoint set gets a "Start" viewpoint at the plan's centre.
    static void Init3DViewpoints(CVxProject& project, CVxViewpointSet* set);
    // The height in plan units on which someone stands at a plan point.
    static double Get3DSurfacePos(CVxProject& project, const CVxFloorPlan* plan, double x, double y,
                                  int floor);
    static void WriteEdgeEnhanceScreenEffect(FILE* file);
    // The sun of the scene in scene axes (y up, metres times the 3D zoom):
    // where it stands and the direction it shines in. `shadow` null means
    // the project's own settings; `zoom` is the option 3DZoom.
    static void GetSunPlacement(CVxProject& project, CVxGlobalShadow* shadow, int zoom, double place[3],
                                double direction[3]);

    // The bytes that inlining the proto library added to the last scene.
    static long long GetUncompressedLibrarySize();
};
