#pragma once
// The reuse of text within one scene file: textures, wall colours, object
// materials and whole object nodes are written once with DEF and then named
// with USE; the proto declarations of the objects; the lines that must
// stand at the file's end. Process-wide, emptied before and after every
// export, so that no name leaks from one scene into the next.

#include "CVxAppearance.h"
#include "CVxStringA.h"
#include "CVxStringW.h"

#include <map>
#include <string>
#include <vector>

class CVxPart;
struct SVx3DExportPars;

// The key of an object material without tile texture, and its node.
class CVxPartMatCacheItem
{
public:
    bool Matches(const CVxPartMatCacheItem& other) const;
    // The Appearance node's text.
    CVxStringA GetVRMLNode(SVx3DExportPars* pars) const;

    unsigned color = 0;
    int transparency = 0;
    CVxAppearance appearance;
    unsigned specular = 0;
    unsigned shininess = 20;
    unsigned emission = 0;
    CVxStringA name;
};

class CVxWrlProtosGenerator
{
public:
    // Empties every cache and counter.
    static void Clear();

    // The proto to instantiate for the part, declaring it in the file when
    // it is the first of its kind.
    static CVxStringA WriteExternProto(const CVxPart& part, SVx3DExportPars* pars);

    // Texture node of a floor, wall or tiled surface; empty when the
    // appearance has no usable picture.
    static CVxStringA GetFloorTextureNode(const CVxAppearance& appearance, bool repeat,
                                          SVx3DExportPars* pars);
    static CVxStringA GetSimpleColorWallApearanceNode(const CVxMaterial& material);
    static CVxStringA GetDefaultWhiteMaterial(bool unused = false);
    static CVxStringA GetDefaultWhiteWallMaterial(bool unused = false);

    // "appearance ..." text of an object: bit 1 the fill, bit 2 the front.
    static CVxStringA GetPartAppearanceNode(const CVxPart& part, SVx3DExportPars* pars, double width,
                                            double depth, int what);
    static CVxStringA GetPartAppearance_helper(const CVxPart& part, const CVxAppearance& appearance,
                                               bool front, SVx3DExportPars* pars, double width, double depth,
                                               CVxStringA* outName, unsigned* outColor);

    static CVxStringA CacheEntirePartNode(const CVxStringA& text);
    static CVxStringA ReuseAppearanceNode(const CVxStringA& text);
    static void SplitDefUseApprearance(const CVxStringA& text, CVxStringA& outDefOrUse, CVxStringA& outUse);
    static void AddLinesToEOF(const CVxStringA& text);
    static const CVxStringA& GetLinesAtEOF();
    static int GetIncDoorFrameCounter();
    static int GetIncSoundClipCounter();
    static int GetIncGenericCounter();
    static CVxStringA GetDefaultCollisionProxy();

    // Whole-node reuse so far: nodes defined and reused.
    static int GetPartNodeDefs();
    static int GetPartNodeUses();
    // The text that reuse kept out of the file.
    static long long GetPartNodeBytesSaved();

    // The number of catalogue protos that can be declared.
    static constexpr int maxStdLibObj = 1200;
};

// The texture-space transform of a tiled surface: scale and rotation that
// keep square tiles of the appearance's size over a face of that width.
struct SVxTileTransform
{
    double scaleU = 0;
    double scaleV = 0;
    double rotation = 0;
};
// Every "DEF name Node {...}" of a text as "USE name": the key under which
// equal nodes are found whether they define their materials or reuse them.
CVxStringA VxDefToUse(const CVxStringA& text);
SVxTileTransform VxTileTransform(const CVxAppearance& appearance, double width, int rotationDegrees);
