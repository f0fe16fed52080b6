#pragma once
// The context of one scene export, handed to every writer of the file, and
// what the export tells the 3D viewer about the switches it wrote.

#include "CVxStringA.h"
#include "CVxStringW.h"

#include <cstdio>
#include <set>
#include <string>
#include <vector>

// Which viewer a scene is written for: the built-in one gets the proto
// library inlined, shadows and the edge effect; an external viewer or a web
// page gets plain VRML with EXTERNPROTO references.
enum EVx3dViewerMode : int
{
    VX_3DVIEWER_BUILTIN = 0,
    VX_3DVIEWER_EXTERNAL = 1
};

// The option values that the scene follows; the core fills them from the
// user's settings.
struct SVx3DSceneOptions
{
    int zoom = 100;
    double avatarHeightCm = 160;
    double fieldOfViewDeg = 100;
    bool viewRotatedDown = false;
    bool walkThroughWalls = false;
    bool exportFileLinks = false;
};

// What the export skipped or repaired in the project's data: a scene is
// written all the same.
struct SVx3DExportReport
{
    int skippedObjects = 0;
    int clampedObjects = 0;
    int missingFiles = 0;
    int skippedWalls = 0;
    // Catalogue objects whose proto the library lacks.
    int substitutedProtos = 0;
    bool libraryInlined = false;
    // DEF and USE of whole object nodes.
    int partNodesDefined = 0;
    int partNodesReused = 0;
    long long partNodeBytesSaved = 0;
};

struct SVx3DExportPars
{
    FILE* file = nullptr;
    CVxStringA protoUrl;
    CVxStringW textureExportDir;
    CVxStringW tempDir;
    double scale = 1;
    int unit = 1;
    bool shadows = false;
    bool phong = false;
    EVx3dViewerMode mode = VX_3DVIEWER_BUILTIN;
    bool libraryInlined = false;

    // Not of the file's text, but what the writers need to know besides.
    CVxStringW projectFolder;
    SVx3DSceneOptions options;
    SVx3DExportReport* report = nullptr;
    // The protos that the proto library defines, when it could be read; a
    // catalogue object without one stands in as its basic shape.
    const std::set<std::string>* knownProtos = nullptr;

    static CVxStringA EffectEdgeEnhanceNodeName() { return "VX_EDGE_ENHANCE_EFFECT"; }
    static CVxStringA SunNodeName() { return "VX_THE_SUN"; }
    static CVxStringA SunSwitchNodeName() { return "VX_SUN_VIS"; }
    static CVxStringA SunSphereNodeName() { return "VX_SUN_OBJ"; }
    static CVxStringA BackgroundNodeName() { return "VX_BACKGROUND"; }
    static CVxStringA TerrainMaterialNodeName() { return "VX_TERRAIN_MAT"; }
    static CVxStringA FloorNodeName(int floor);
    static CVxStringA LayerNodeName(int floor, int layer);
    static CVxStringA WallNodeName(int floor, bool upper);
};

struct SVxLayerVis
{
    int layer = 0;
    bool visible = true;
};

struct SVxFloorVis
{
    int floor = 0;
    bool visible = true;
    std::vector<SVxLayerVis> layers;
};

// Which floor and layer switches a scene holds and how they stand.
class CVx3DFloorLayerVis
{
public:
    // Same floors and, floor by floor, the same layers in the same order;
    // the visibility is not compared.
    bool IsCompatible(const CVx3DFloorLayerVis& other) const;

    std::vector<SVxFloorVis> floors;
    int wallsMode = 0;
};

// printf into a growing text: the scene is written as formatted text
// throughout.
void VxAppendF(CVxStringA& text, const char* format, ...) __attribute__((format(printf, 2, 3)));
CVxStringA VxFormatA(const char* format, ...) __attribute__((format(printf, 1, 2)));
// A colour word split into 0..1 channels.
void VxSplitColor(unsigned colour, float& r, float& g, float& b);
