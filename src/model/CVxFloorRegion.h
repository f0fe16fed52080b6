#pragma once
// A face of the floor plan graph: a room, or the outer contour of a group of
// connected walls. Rebuilt with the plan after every wall edit; its name and
// surfaces come back from the floor's plan definition.

#include "CVxAppearance.h"
#include "CVxDPoint.h"
#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "CVxDecorativeMolding.h"
#include "CVxFloorPlanDef.h"
#include "CVxStringW.h"
#include "VxDrawFlags.h"
#include "VxIntGeometry.h"

#include <cstdint>
#include <vector>

class CVxDC;
class CVxPlanVertex;
class CVxFloor;
class CVxRoomWalls;
class CVxStringA;
struct SVx3DExportPars;

class CVxFloorRegion
{
public:
    enum ESurface
    {
        SURF_FLOOR = 0,
        SURF_CEILING = 1,
        SURF_WALL = 2,
        SURF_OUTER_WALL = 3
    };
    enum EWallPolyType
    {
        POLY_OUTER = 0,
        POLY_INNER = 1,
        POLY_WITHOUT_HOLES = 2
    };
    // Flags of DrawToHdc.
    static constexpr int drawTextures = VX_DRAW_FLOOR_TEXTURES;
    static constexpr int drawMonochrome = VX_DRAW_BLACK_WHITE;

    CVxFloorRegion();
    CVxFloorRegion(const CVxFloorRegion& other);
    CVxFloorRegion& operator=(const CVxFloorRegion& other);
    // A plan of many rooms moves them as its list grows.
    CVxFloorRegion(CVxFloorRegion&& other) noexcept = default;
    CVxFloorRegion& operator=(CVxFloorRegion&& other) noexcept = default;

    // Everything but the pixel caches.
    void CopyFrom(const CVxFloorRegion& other);
    void ClearBoundary();

    // Consecutive boundary vertices a then b, exactly, with wrap-around.
    bool ContainsEdge(const CVxDPoint& a, const CVxDPoint& b) const;
    bool ContainsEdge(int wall) const;
    // The boundary walked the other way round from the same first vertex: a
    // mirrored room is walked so by the next plan, and its record must
    // name an edge in that direction.
    void ReverseBoundary();
    // Same boundary vertices in the same order.
    bool operator==(const CVxFloorRegion& other) const;

    CVxPlanVertex* SafeGetVertex(int i) const;
    int GetVertexCount() const { return static_cast<int>(vertices.size()); }

    // The chosen polygon in pixels, into the region's caches; outFlags and
    // outControls may be null. The pointer stays valid until the next call.
    const VxPOINT* GetPolygon(int& outCount, int offsetX, int offsetY, double zoom, int type,
                              const std::vector<bool>** outFlags = nullptr,
                              const VxPOINT** outControls = nullptr, int* outControlCount = nullptr,
                              int listIndex = 0);
    const CVxAppearance& GetSurfaceAppearance(int surface) const;
    CVxAppearance& GetSurfaceAppearance(int surface);
    CVxDRect GetBoundingRect() const;
    CVxDRect GetInnerBoundingRect() const;
    bool PtInRegion(const CVxDPoint& point) const;
    CVxDPoint GetInnerNoHolesCentroid(CVxDRect* outRect) const;

    void LoadFromItem(const CVxFloorPlanDef::CFloorPlanItem& item);
    bool LoadIfMatches(const CVxFloorPlanDef::CFloorPlanItem& item);
    bool SaveToItem(CVxFloorPlanDef::CFloorPlanItem& item) const;

    double GetAreaWithoutHoles() const;
    void DrawToHdc(CVxDC* dc, int offsetX, int offsetY, double zoom, int flags);

    // Takes the floor openings out of the first polygon without holes.
    void CalculateWithoutHoles(const std::vector<CVxDPolygon>& holes);
    static void CalculateWithoutHoles(std::vector<CVxDPolygon>& list, const std::vector<CVxDPolygon>& holes);
    // The outline along the wall faces: one vertex per boundary edge in main,
    // every corner in detailed.
    void CalcInnerPoly(CVxDPolygon& main, CVxDPolygon& detailed, const CVxRoomWalls& walls) const;
    // The outline along the wall centre lines. With heightFilter >= 0 only
    // walls of that height take part.
    void TransformToSimplePolygon(CVxDPolygon& out, const CVxRoomWalls& walls, double heightFilter,
                                  bool* outHeightDiffers) const;
    void CalculateInnerVertices(const CVxRoomWalls& walls);

    // The room's floor or ceiling, or the slab edge of an outer region, in
    // the 3D scene (written by the scene export).
    CVxStringA ExportToVRML(SVx3DExportPars* pars, int surface, bool slab, double level,
                            const CVxFloor& floor, const CVxRoomWalls* nextWalls) const;
    CVxStringA ExportPolyToVRML(const CVxDPolygon& polygon, SVx3DExportPars* pars, int surface, bool slab,
                                double level) const;
    CVxStringA ExportDecorMoldingToVRML(const CVxDecorativeMolding& molding, double z, SVx3DExportPars* pars,
                                        const std::vector<CVxDPolygon>& polygons,
                                        const CVxFloor& floor) const;

    std::vector<CVxPlanVertex*> vertices;
    std::vector<int32_t> walls;
    std::vector<int32_t> segmentIds;
    CVxStringW name;
    CVxAppearance floorAppearance;
    CVxAppearance ceilingAppearance;
    CVxAppearance wallAppearance;
    int32_t roomTag = 0;
    CVxDecorativeMolding baseMolding;
    CVxDecorativeMolding crownMolding;
    CVxDPolygon innerPolygon;
    std::vector<CVxDPolygon> polygonsWithoutHoles;
    CVxDPolygon outerPolygon;
    bool isOuter = false;

private:
    std::vector<VxPOINT> m_cachePoints;
    std::vector<VxPOINT> m_cacheControls;
    std::vector<bool> m_cacheFlags;
};
