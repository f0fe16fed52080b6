#pragma once
// One storey of the project: its default surfaces, the defaults of new walls,
// the print area, the background scan, the annotations, the view layers and
// the local coordinates.

#include "CVxAnnotation.h"
#include "CVxAppearance.h"
#include "CVxDRect.h"
#include "CVxDecorativeMolding.h"
#include "CVxFloorPlanDef.h"
#include "CVxLocalCoordsSet.h"
#include "CVxPart.h"
#include "CVxRoomWalls.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "CVxViewLayers.h"
#include "IVxReadIniClient.h"

#include <cstddef>
#include <vector>

class CVxFloorPlan;
class CVxFloorRegion;
class CVxIniFileReader;
class CVxIniWriter;
class CVxProject;

class CVxFloor : public IVxReadIniClient
{
public:
    // Object sections, members included, that loading a project takes over
    // all its floors; the rest of a file that holds more is left out.
    static constexpr size_t maxProjectObjects = 50000;

    CVxFloor();
    CVxFloor(const CVxFloor&) = default;
    CVxFloor& operator=(const CVxFloor&) = default;

    // Back to a new floor. With an owner the floor takes the project's default
    // colours and wall sizes.
    void Reset(CVxProject* owner);
    // Wall thickness 10, height 265 and floor thickness 30, divided by the
    // base zoom when it is not 1.
    void SetDefaultsForUnit(double baseZoom);
    // The project's default floor colour, walls colours and wall sizes.
    void CopyDefProjectAttributes(const CVxProject* project);

    // The keys of the "Floor" section.
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;
    // The floor's whole run of sections, from "Floor" up to "EndFloor".
    void SaveToFile(CVxIniWriter* writer) const;
    // Reads from the "Floor" section up to and including "EndFloor"; the
    // project's sets that stand between them go to the project.
    bool LoadFromFile(CVxIniFileReader* reader, CVxProject* project);

    double GetTotalZHeight() const;

    // What the statistics write: a text for one room, the rows of the
    // table, or the figures alone into the caller's arrays.
    enum EVxStatFormat
    {
        statText = 0,
        statTable = 1,
        statFigures = 2
    };
    // The tab-separated table of all rooms and their wall runs, for the
    // clipboard; lengths of the floor in unit, figures in statUnit.
    CVxStringW GetFloorStatisticalString(const CVxFloorPlan& plan, int unit, int statUnit) const;
    // The room manager's text: the floor's totals and, with a region, the
    // selected room.
    CVxStringW GetFloorInfoString(const CVxFloorRegion* region, int lengthUnit, int areaUnit, int statUnit,
                                  double totalArea, double outerArea) const;
    // The wall faces of a room, run by run (all runs with segment -1). The
    // out pointers may be null; in the text formats they sum over the runs,
    // with statFigures outUseful and outAppearances take one entry per run
    // at the index of its last boundary entry.
    CVxStringW GetWallsInfoString(const CVxFloorRegion* region, int format, int lengthUnit, int statUnit,
                                  int segment, double* outHeight, double* outOpenings,
                                  double* outDoorsWindows, double* outArea, double* outUseful,
                                  CVxAppearance* outAppearances) const;

    // A free slot, reset and in use, or a new one at the end; index may be
    // null.
    CVxPart* GetNewObject(int* index = nullptr, bool append = false);
    // Null out of range; a free slot is returned too, its inUse says so.
    CVxPart* SafeGetPart(int index);
    const CVxPart* SafeGetPart(int index) const;
    int GetObjectSlotCount() const { return static_cast<int>(m_objects.size()); }
    // Slots in use, counted anew.
    int CountUsedObjects() const;
    void RemoveAllObjects();
    void InvalidateAllObjectsCache();
    // Whether no object in use lies on the layer.
    bool IsLayerEmpty(int layer) const;

    // The floor's default surfaces from its rooms where all rooms agree,
    // and, with save, the plan definition from the plan.
    void SetCommonFloorAppearancesAndSave(const CVxFloorPlan& plan, bool save);
    // Snap keys of the walls from the plan's rooms; without a plan a
    // temporary one is built.
    void ResetWallSnapSegments(const CVxFloorPlan* plan);
    // The snap keys, then every object snapped to a wall snaps again.
    void ResnapAllParts(const CVxFloorPlan* plan);
    // The first object in use, from the first slot on, that the point (in
    // units) hits at this zoom; null when none does. With onlyVisibleIn3D
    // objects on layers hidden in 3D are passed over. index may be null.
    CVxPart* FindPartAt(double x, double y, bool plain, bool onlyVisibleIn3D, double zoom,
                        int* index = nullptr);
    // Slots by layer, ascending and stable; free slots sink to the end.
    void OrderPartsByLayers();
    // The objects in use (only the selected ones with selectedOnly) by their
    // top height, within the slots they already take.
    void OrderPartsByZposition(bool ascending, bool selectedOnly);

    // The layer operations of the layers window; objects keep to their
    // layer. Removing a layer frees its objects, and the last layer can't be
    // removed.
    bool RemoveLayer(int layer);
    bool SwitchLayers(int a, int b);
    bool ReorderLayer(int from, int to);
    // Keeps one layer, the active one, and removes the others.
    bool MergeAllLayers();
    // Keeps one visible layer, the active one if it is visible, else the
    // first visible one, and removes the other visible ones.
    bool MergeVisibleLayers();

    // Whole-floor transforms; the project gives the sub-unit correction.
    void MoveAllObjects(double dx, double dy, double dz, const CVxProject* project);
    void ScaleAllObjects(double sx, double sy, double sz, bool keepDefaults, bool keepObjectSizes,
                         const CVxProject* project);
    void RotateAllObjects(int degrees, const CVxProject* project);
    void MirrorAllObjects(bool vertical, const CVxProject* project);

    bool HasBkgScan() const { return !m_bkgScanFile.IsEmpty(); }
    void ClearBkgScan();

    unsigned m_wallsColor = 0;
    unsigned m_wallsContour = 0;
    CVxAppearance m_floorAppear;
    CVxAppearance m_ceilingAppear;
    CVxAppearance m_walls3DAppear;
    CVxAppearance m_wallExtAppear;
    double m_defWallThickness = 10;
    double m_defWallHeight = 265;
    CVxDRect m_printArea;
    bool m_printAreaSet = false;
    double m_floorThickness = 30;
    CVxStringW m_bkgScanFile;
    CVxDRect m_bkgScanRect;
    double m_bkgScanExtra[2] = {0, 0};
    CVxAnnotation m_annotations;

    CVxRoomWalls m_walls;
    // Objects by value; a slot whose inUse is false is free for reuse.
    std::vector<CVxPart> m_objects;
    int m_objectCount = 0;
    CVxViewLayers m_layers;
    CVxFloorPlanDef m_planDef;
    // What new rooms take.
    CVxDecorativeMolding m_baseMolding;
    CVxDecorativeMolding m_crownMolding;

    CVxLocalCoordsSet m_localCoords;

private:
    // Moves the objects (of visible layers only, with onlyVisible) onto the
    // target and removes the emptied layers; returns the target's new index.
    int MergeLayersInto(int target, bool onlyVisible);
};
