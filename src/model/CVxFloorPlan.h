#pragma once
// Rooms derived from walls. The wall centre lines become a planar graph, the
// outer contour of each group of connected walls is walked first, then every
// inner face becomes a room. The application keeps one plan for the current
// floor; other code builds temporary ones.

#include "CVxAppearance.h"
#include "CVxDPoint.h"
#include "CVxFloorPlanDef.h"
#include "CVxFloorRegion.h"
#include "CVxPlanGraph.h"
#include "VxFlatIndexMap.h"

#include <cstdint>
#include <vector>

class CVxDC;
class CVxFloor;
class CVxRoomWalls;
class CVxStringA;
struct SVx3DExportPars;

class CVxFloorPlan
{
public:
    CVxFloorPlan() = default;
    ~CVxFloorPlan();
    CVxFloorPlan(const CVxFloorPlan&) = delete;
    CVxFloorPlan& operator=(const CVxFloorPlan&) = delete;

    // The whole plan of the floor from its walls. unit -1: no unit, new
    // rooms get no default moulding sizes.
    void CreatePlan(CVxFloor& floor, int unit);
    CVxFloorPlanDef Save() const;
    void Reset();

    CVxPlanVertex* SafeGetVertex(int i) const;
    CVxPlanEdge* SafeGetEdge(int i) const;
    CVxFloorRegion* SafeGetRegion(int i);
    const CVxFloorRegion* SafeGetRegion(int i) const;
    CVxFloorRegion* SafeGetOuterRegion(int i);
    const CVxFloorRegion* SafeGetOuterRegion(int i) const;
    // Rooms first, then outer regions.
    CVxFloorRegion* GetInnerOtOuterRegion(int i);
    int GetRegionCount() const { return static_cast<int>(regions.size()); }
    int GetOuterRegionCount() const { return static_cast<int>(outerRegions.size()); }
    int GetEdgeIdx(const CVxPlanEdge* edge) const;
    // The first vertex within EPS on both axes, null if none.
    CVxPlanVertex* FindVertex(double x, double y) const;
    // An edge between the two in either direction.
    CVxPlanEdge* FindEdge(const CVxPlanVertex* v1, const CVxPlanVertex* v2) const;

    double GetArea() const;
    double GetOuterArea() const;
    // The smallest room containing the point, -1 if none.
    int FindRegion(const CVxDPoint& point) const;

    void ChangeSurfaceAppearace(CVxFloor& floor, const CVxAppearance& newAppearance,
                                const CVxAppearance& oldAppearance, int surface);
    bool IsCommonSurfaceAppearance(CVxAppearance& appearance, int surface) const;
    bool IsFloorTexturePresent() const;

    // Keep the plan valid across a project-wide transform without a rebuild.
    void Move(double dx, double dy, double dz);
    void Scale(double sx, double sy, double sz);
    void Rotate(double degrees, bool normalise);
    void Mirror(bool aroundX, bool normalise);

    bool FindInnerEdgeForWall(int wall, const CVxDPoint& point, CVxDPoint* outA, CVxDPoint* outB) const;
    int GetWallSegmentAtPoint(int x, int y, int& ioRegion, int offsetX, int offsetY, double zoom);
    // New polygons from the walls as they stand, keeping the graph: for a
    // drag in the wall editor.
    void UpdateAllRegionPolygons(const CVxFloor& floor);
    void DrawRegions(CVxDC* dc, int offsetX, int offsetY, double zoom, int flags);

    // Room floors and slab edges, and the ceilings, in the 3D scene
    // (written by the scene export). nextWalls may be null.
    CVxStringA ExportFloorToVRML(SVx3DExportPars* pars, const CVxFloor& floor) const;
    CVxStringA ExportCeilingToVRML(SVx3DExportPars* pars, const CVxFloor& floor,
                                   const CVxRoomWalls* nextWalls) const;

    // The steps of CreatePlan.
    void FindWallIntersections(const CVxRoomWalls& walls);
    void CreatePlanarGraph();
    void MarkComponents();
    void FindRegions(const CVxFloor& floor, int unit);
    void MatchRegions(const CVxFloorPlanDef& def);
    void RemoveHolesFromRegions(CVxRoomWalls& walls);

    std::vector<CVxFloorRegion> regions;
    std::vector<CVxFloorRegion> outerRegions;
    std::vector<CVxPlanVertex*> vertices;
    std::vector<CVxPlanEdge*> edges;
    int32_t componentCount = 0;

private:
    // Key of an unordered pair of vertices.
    struct CVxVertexPair
    {
        const CVxPlanVertex* a;
        const CVxPlanVertex* b;
        bool operator==(const CVxVertexPair& other) const { return a == other.a && b == other.b; }
    };
    struct CVxVertexPairHash
    {
        size_t operator()(const CVxVertexPair& pair) const;
    };

    CVxPlanVertex* AddVertex(double x, double y);
    void CompSearch(CVxPlanVertex* vertex, int component);

    // The indexes that keep the graph's look-ups fast while giving the
    // answers of a scan of the lists: vertices by a grid of cells, edges by
    // their pair of ends. Both are cleared by Reset; the vertex cells are
    // rebuilt after a transform moves the vertices.
    static CVxVertexPair MakePair(const CVxPlanVertex* v1, const CVxPlanVertex* v2);
    void IndexVertex(int index) const;
    void RebuildVertexIndex() const;
    void IndexEdge(int index);
    // Puts an edge into (takes it out of) the chain of its pair of ends.
    void LinkEdge(int& first, int index);
    void UnlinkEdge(int& first, int index);
    void MoveEdgeEnd(int index, CVxPlanVertex* newTo);
    // One test of CreatePlanarGraph: edge i against edge j, splitting either
    // at their crossing. True if edge i was shortened.
    bool SplitAtCrossing(size_t i, size_t j, size_t maxEdges, bool* outJChanged);
    bool SplitEdge(size_t index, const CVxDPoint& point, size_t maxEdges);
    void CreatePlanarGraphScan(size_t maxEdges);
    void CreatePlanarGraphIndexed(size_t maxEdges);
    void FindRegionsPhase1(const CVxFloor& floor);
    void FindRegionsPhase2(const CVxFloor& floor, int unit);
    void ApplyHoles(const std::vector<CVxDPolygon>& holes);

    // The vertices of a cell, and the edges of a pair of ends, are chained
    // in ascending index order: the map holds the first (and for a cell the
    // last), and the next one of each is kept beside the vertex or edge.
    struct CVxChain
    {
        int first = -1;
        int last = -1;
    };
    struct CVxCellHash
    {
        size_t operator()(uint64_t key) const { return VxMixHash(key); }
    };
    mutable CVxFlatIndexMap<uint64_t, CVxChain, CVxCellHash> m_vertexCells;
    mutable std::vector<int> m_nextInCell;
    mutable size_t m_indexedVertices = 0;
    mutable bool m_vertexIndexValid = true;
    CVxFlatIndexMap<CVxVertexPair, int, CVxVertexPairHash> m_edgesByEnds{-1};
    std::vector<int> m_nextWithEnds;
    // Whether every vertex has finite coordinates of a sensible size: only
    // then do the indexed searches run, otherwise plain scans.
    bool m_graphFinite = true;
};
