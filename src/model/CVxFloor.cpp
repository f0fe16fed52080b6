#include "CVxFloor.h"

#include "CVxFloorPlan.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxOptions.h"
#include "CVxPartVectorGrouper.h"
#include "CVxProject.h"
#include "CVxUnits.h"
#include "VxAngle.h"
#include "VxNumbers.h"
#include "VxTrace.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <utility>

namespace {
constexpr unsigned kDefaultWallsContour = 0x404040;

// Parts with all their members, however deep.
size_t CountAllParts(const std::vector<CVxPart>& parts)
{
    size_t count = 0;
    std::vector<const std::vector<CVxPart>*> pending{&parts};
    while (!pending.empty()) {
        const std::vector<CVxPart>* level = pending.back();
        pending.pop_back();
        count += level->size();
        for (const CVxPart& part : *level)
            if (!part.subParts.empty())
                pending.push_back(&part.subParts);
    }
    return count;
}
constexpr unsigned kWhite = 0xFFFFFF;
// The most object slots that a floor's count may reserve ahead of loading.
constexpr int kPartCountReserveLimit = 4096;

CVxStringW RectToString(const CVxDRect& rect)
{
    CVxStringW text = DblSaveW(rect.left);
    for (double value : {rect.top, rect.right, rect.bottom}) {
        text += L'|';
        text += DblSaveW(value);
    }
    return text;
}

CVxStringW ColorToString(unsigned colour)
{
    return CVxStringW::IntToHex(colour, 6, true);
}

unsigned ReadColor(const CVxStringW& value, unsigned def)
{
    return static_cast<unsigned>(CVxIniFileReader::ToInt(value, static_cast<int>(def)));
}

// An object's mirror image: the opposite corner of its frame becomes the
// first one, and the object turns about its centre to the mirrored angle.
// The outline of a polygon and the members of a group flip across their own
// frame, which the turn has already reversed along one axis.
void MirrorObject(CVxPart& part, bool vertical)
{
    constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
    const double a = part.rotation;
    const double c = std::cos(a * kDegToRad);
    const double s = std::sin(a * kDegToRad);
    const double w = part.width;
    const double d = part.type == ptDoor ? part.width : part.height;
    if (vertical)
        part.y = -part.y - (c * d + s * w);
    else
        part.x = -part.x - (c * w - s * d);
    part.InvalidateCache();
    if (part.type != ptCompass && part.type != ptQRCode) {
        double turned = vertical ? 180 - a : -a;
        if (part.type == ptDoor)
            turned -= 90;
        part.RotateAroundCenter(turned);
    }
    if (part.type == ptPolygon || part.type == ptPolyline || part.type == ptComplexObject)
        part.Mirror(true);
}
} // namespace

CVxFloor::CVxFloor()
{
    Reset(nullptr);
}

void CVxFloor::Reset(CVxProject* owner)
{
    RemoveAllObjects();
    const CVxOptions* options = VX_GetOptions();
    m_wallsColor = options->m_defWallColor;
    m_wallsContour = kDefaultWallsContour;
    m_floorAppear.Reset();
    if (!options->m_floorAppear.IsEmpty())
        m_floorAppear.LoadFromString(options->m_floorAppear, nullptr);
    m_ceilingAppear.Reset();
    m_walls3DAppear.Reset();
    m_walls3DAppear.SetColor(kWhite);
    m_wallExtAppear.Reset();
    m_wallExtAppear.SetColor(kWhite);
    SetDefaultsForUnit(1.0);
    if (owner)
        CopyDefProjectAttributes(owner);
    m_walls.RemoveAll();
    m_walls.SetAsBasicRect(owner ? owner->m_width : 500, owner ? owner->m_height : 300, m_defWallThickness,
                           m_defWallHeight);
    m_walls.RebuildWalls();
    m_planDef.Clear();
    m_baseMolding.Reset();
    m_crownMolding.Reset();

    m_layers.Reset();
    m_localCoords.Reset();
    m_printArea = CVxDRect();
    m_printAreaSet = false;
    ClearBkgScan();
    m_annotations.Reset();
}

void CVxFloor::SetDefaultsForUnit(double baseZoom)
{
    m_defWallThickness = 10;
    m_defWallHeight = 265;
    m_floorThickness = 30;
    if (baseZoom != 1.0 && baseZoom > 0) {
        m_defWallThickness /= baseZoom;
        m_defWallHeight /= baseZoom;
        m_floorThickness /= baseZoom;
    }
}

void CVxFloor::CopyDefProjectAttributes(const CVxProject* project)
{
    if (!project)
        return;
    m_floorAppear.SetColor(project->m_defFloorColor);
    m_wallsColor = project->m_defWallsColor;
    m_walls3DAppear.SetColor(project->m_defWalls3DColor);
    m_defWallThickness = project->m_defWallThickness;
    m_defWallHeight = project->m_defWallHeight;
}

void CVxFloor::ClearBkgScan()
{
    m_bkgScanFile.Empty();
    m_bkgScanRect = CVxDRect();
    m_bkgScanExtra[0] = 0;
    m_bkgScanExtra[1] = 0;
}

void CVxFloor::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    if (key == "PartCount") {
        // Only a hint for the vector; a damaged count must not size memory.
        const int count = CVxIniFileReader::ToInt(value, 0);
        if (count > 0)
            m_objects.reserve(static_cast<size_t>(std::min(count, kPartCountReserveLimit)));
    } else if (key == "FloorAppear") {
        m_floorAppear.LoadFromString(value, reader);
    } else if (key == "CeilingAppear") {
        m_ceilingAppear.LoadFromString(value, reader);
    } else if (key == "WallsColor") {
        m_wallsColor = ReadColor(value, m_wallsColor);
    } else if (key == "WallsContour") {
        m_wallsContour = ReadColor(value, m_wallsContour);
    } else if (key == "Walls3DAppear") {
        m_walls3DAppear.LoadFromString(value, reader);
    } else if (key == "WallExtAppear") {
        m_wallExtAppear.LoadFromString(value, reader);
    } else if (key == "WallThickness") {
        m_defWallThickness = CVxIniFileReader::ToDouble(value, m_defWallThickness);
    } else if (key == "WallZHeight") {
        m_defWallHeight = CVxIniFileReader::ToDouble(value, m_defWallHeight);
    } else if (key == "FloorThickness") {
        m_floorThickness = CVxIniFileReader::ToDouble(value, m_floorThickness);
    } else if (key == "PrintArea") {
        double l = 0, t = 0, r = 0, b = 0;
        int set = 0;
        if (swscanf(value.c_str(), L"%lf|%lf|%lf|%lf|%d", &l, &t, &r, &b, &set) == 5) {
            m_printArea = CVxDRect(l, t, r, b);
            m_printAreaSet = set != 0;
        }
    } else if (key == "BkgScan") {
        double l = 0, t = 0, r = 0, b = 0;
        if (swscanf(value.c_str(), L"%lf|%lf|%lf|%lf", &l, &t, &r, &b) == 4)
            m_bkgScanRect = CVxDRect(l, t, r, b);
        int separator = -1;
        for (int i = 0; i < 4; ++i) {
            separator = value.Find(L'|', separator + 1);
            if (separator < 0)
                break;
        }
        if (separator >= 0)
            m_bkgScanFile = value.Mid(separator + 1);
    } else if (key == "Color") {
        m_floorAppear.SetColor(ReadColor(value, m_floorAppear.GetColor()));
    } else if (key == "WallsColor3D") {
        m_walls3DAppear.SetColor(ReadColor(value, m_walls3DAppear.GetColor()));
    } else if (key == "WallsExtColor") {
        m_wallExtAppear.SetColor(ReadColor(value, m_wallExtAppear.GetColor()));
    }
}

void CVxFloor::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    writer->WriteInteger("PartCount", CountUsedObjects());
    writer->WriteString("FloorAppear", m_floorAppear.SaveToString(writer));
    writer->WriteString("CeilingAppear", m_ceilingAppear.SaveToString(writer));
    writer->WriteString("WallsColor", ColorToString(m_wallsColor));
    writer->WriteString("WallsContour", ColorToString(m_wallsContour));
    writer->WriteString("Walls3DAppear", m_walls3DAppear.SaveToString(writer));
    writer->WriteString("WallExtAppear", m_wallExtAppear.SaveToString(writer));
    writer->WriteDouble("WallThickness", m_defWallThickness);
    writer->WriteDouble("WallZHeight", m_defWallHeight);
    writer->WriteDouble("FloorThickness", m_floorThickness);
    writer->WriteString("PrintArea", RectToString(m_printArea) + (m_printAreaSet ? L"|1" : L"|0"));
    if (HasBkgScan()) {
        CVxStringW path = m_bkgScanFile;
        writer->WriteString("BkgScan", RectToString(m_bkgScanRect) + L"|" +
                                           writer->MakeRelativePathAs(path, EVxFileRole::Picture));
    }
}

void CVxFloor::SaveToFile(CVxIniWriter* writer) const
{
    SaveToFile(writer, "Floor");
    m_walls.SaveToFile(writer, "RoomWalls");
    m_planDef.SaveToFile(writer, "FloorPlanDef");
    m_layers.SaveToFile(writer, "ViewLayers");
    m_localCoords.SaveToFile(writer, "LocalCoords");
    m_annotations.SaveToFile(writer, "Annotations");
    CVxStringA section;
    for (size_t i = 0; i < m_objects.size(); ++i) {
        const CVxPart& part = m_objects[i];
        if (!part.inUse)
            continue;
        // Sections are numbered by slot, free slots leaving gaps; a group
        // names itself by its slot too, so that its members find it.
        const int32_t groupID = part.type == ptComplexObject ? static_cast<int32_t>(i) + 1 : 0;
        section.sprintf("Part%d", static_cast<int>(i));
        if (part.groupID == groupID) {
            part.SaveToFile(writer, section, false, nullptr);
        } else {
            CVxPart numbered = part;
            numbered.groupID = groupID;
            numbered.SaveToFile(writer, section, false, nullptr);
        }
    }

    writer->StartSection("EndFloor");
}

bool CVxFloor::LoadFromFile(CVxIniFileReader* reader, CVxProject* project)
{
    Reset(project);
    // The objects, members and table cells of the floors read before this
    // one count against the limits of the whole project.
    size_t objectsRead = 0;
    if (project)
        for (const CVxFloor* floor : project->m_floors)
            if (floor != this)
                objectsRead += CountAllParts(floor->m_objects);
    CVxPartVectorGrouper grouper(m_objects, std::max<int64_t>(0, CVxPartVectorGrouper::maxTableCellsPerRun -
                                                                     static_cast<int64_t>(objectsRead)));
    bool traced = false;
    while (!reader->GetSectionName().IsEmpty()) {
        const CVxStringA section = reader->GetSectionName();
        if (section == "Floor") {
            // A file without the key gets the thickness of 30 cm in its unit.
            m_floorThickness = -1;
            reader->ReadSection(this);
            m_walls.SetAsBasicRect(project ? project->m_width : 500, project ? project->m_height : 300,
                                   m_defWallThickness, m_defWallHeight);
            if (m_floorThickness < 0)
                m_floorThickness = 30.0 / CVxUnits::GetUnitCal(project ? project->m_unit : reader->GetUnit());
            m_bkgScanFile = reader->MakeAbsolutePath(m_bkgScanFile);
        } else if (section == "RoomWalls") {
            // The section replaces the default rectangle.
            m_walls.RemoveAll();
            m_walls.appearances.clear();
            reader->ReadSection(&m_walls);
            m_walls.OnEndSection();
            m_walls.RemoveUnusedAppearances();
        } else if (section == "FloorPlanDef") {
            m_planDef.LoadFromSection(reader, project ? project->m_unit : reader->GetUnit());
        } else if (section == "EndFloor") {
            reader->ReadSection(nullptr);
            break;
        } else if (section == "ViewLayers") {
            reader->ReadSection(&m_layers);
            m_layers.EnsureValid();
        } else if (section == "LocalCoords") {
            reader->ReadSection(&m_localCoords);
        } else if (section == "Annotations") {
            reader->ReadSection(&m_annotations);
        } else if (section.Left(4) == "Part" &&
                   !(reader->GetFlags() & CVxIniFileReader::VX_READ_SKIP_FLOOR_OBJECTS)) {
            if (++objectsRead > maxProjectObjects) {
                // No home holds this many; a file that claims more only
                // wants the memory.
                if (!traced)
                    VxTrace("Too many objects, the rest are left out: more than %zu\n", maxProjectObjects);
                traced = true;
                reader->ReadSection(nullptr);
                continue;
            }
            CVxPart part;
            part.LoadFromSection(reader);
            if (!m_layers.IsValidLayer(part.layer))
                part.layer = 0;
            grouper.Add(std::move(part), reader->GetProjectVersion());
        } else if (project && section == "Viewpoints") {
            reader->ReadSection(&project->m_viewpoints);
        } else if (project && section == "Attachments") {
            reader->ReadSection(&project->m_attachments);
        } else {
            reader->ReadSection(nullptr);
        }
    }
    grouper.Finalize();
    m_objectCount = CountUsedObjects();
    return true;
}

CVxPart* CVxFloor::GetNewObject(int* index, bool append)
{
    // The slot handed out was free or new: one more in use.
    CVxPart* part = CVxPart::GetNewObject(m_objects, index, append);
    ++m_objectCount;
    return part;
}

CVxPart* CVxFloor::SafeGetPart(int index)
{
    return CVxPart::SafeGetPart(m_objects, index);
}

const CVxPart* CVxFloor::SafeGetPart(int index) const
{
    if (index < 0 || index >= static_cast<int>(m_objects.size()))
        return nullptr;
    return &m_objects[static_cast<size_t>(index)];
}

int CVxFloor::CountUsedObjects() const
{
    int count = 0;
    for (const CVxPart& part : m_objects)
        count += part.inUse ? 1 : 0;
    return count;
}

void CVxFloor::RemoveAllObjects()
{
    m_objects.clear();
    m_objectCount = 0;
}

void CVxFloor::InvalidateAllObjectsCache()
{
    for (CVxPart& part : m_objects)
        part.InvalidateCache();
}

bool CVxFloor::IsLayerEmpty(int layer) const
{
    for (const CVxPart& part : m_objects) {
        if (part.inUse && part.layer == layer)
            return false;
    }
    return true;
}

double CVxFloor::GetTotalZHeight() const
{
    return std::max(0.0, m_walls.GetMaxWallZHeight());
}

void CVxFloor::SetCommonFloorAppearancesAndSave(const CVxFloorPlan& plan, bool save)
{
    CVxAppearance common;
    if (plan.IsCommonSurfaceAppearance(common, CVxFloorRegion::SURF_FLOOR))
        m_floorAppear = common;
    if (plan.IsCommonSurfaceAppearance(common, CVxFloorRegion::SURF_CEILING))
        m_ceilingAppear = common;
    if (plan.IsCommonSurfaceAppearance(common, CVxFloorRegion::SURF_WALL))
        m_walls3DAppear = common;
    if (save)
        m_planDef = plan.Save();
}

void CVxFloor::ResetWallSnapSegments(const CVxFloorPlan* plan)
{
    if (plan) {
        m_walls.ResetSnapSegments(plan);
        return;
    }
    CVxFloorPlan temporary;
    temporary.CreatePlan(*this, -1);
    m_walls.ResetSnapSegments(&temporary);
}

void CVxFloor::ResnapAllParts(const CVxFloorPlan* plan)
{
    ResetWallSnapSegments(plan);
    for (CVxPart& part : m_objects) {
        if (part.inUse && part.snapToWall)
            part.SnapToWall(&m_walls, part.x, part.y, false, false, false);
    }
}

CVxPart* CVxFloor::FindPartAt(double x, double y, bool plain, bool onlyVisibleIn3D, double zoom, int* index)
{
    for (size_t i = 0; i < m_objects.size(); ++i) {
        CVxPart& part = m_objects[i];
        if (!part.inUse || (onlyVisibleIn3D && !m_layers.IsLayerVisible3D(part.layer)))
            continue;
        if (part.PtInPart(x * zoom, y * zoom, zoom, plain, -1.0)) {
            if (index)
                *index = static_cast<int>(i);
            return &part;
        }
    }
    if (index)
        *index = -1;
    return nullptr;
}

void CVxFloor::OrderPartsByLayers()
{
    // Neighbours only, so objects of one layer keep their drawing order; a
    // free slot behind a part stops it.
    bool exchanged = true;
    while (exchanged) {
        exchanged = false;
        for (size_t i = 0; i + 1 < m_objects.size(); ++i) {
            CVxPart& first = m_objects[i];
            CVxPart& second = m_objects[i + 1];
            if (second.inUse && (!first.inUse || first.layer > second.layer)) {
                std::swap(first, second);
                exchanged = true;
            }
        }
    }
}

void CVxFloor::OrderPartsByZposition(bool ascending, bool selectedOnly)
{
    std::vector<size_t> slots;
    for (size_t i = 0; i < m_objects.size(); ++i) {
        const CVxPart& part = m_objects[i];
        if (part.inUse && (!selectedOnly || part.selected))
            slots.push_back(i);
    }
    std::vector<CVxPart> sorted;
    sorted.reserve(slots.size());
    for (size_t slot : slots)
        sorted.push_back(std::move(m_objects[slot]));
    // Insertion sort: stable, and objects of equal top keep their order.
    auto before = [ascending](const CVxPart& a, const CVxPart& b) {
        const double topA = a.z + a.zHeight;
        const double topB = b.z + b.zHeight;
        return ascending ? topA < topB : topA > topB;
    };
    for (size_t i = 1; i < sorted.size(); ++i) {
        for (size_t j = i; j > 0 && before(sorted[j], sorted[j - 1]); --j)
            std::swap(sorted[j], sorted[j - 1]);
    }
    for (size_t k = 0; k < slots.size(); ++k)
        m_objects[slots[k]] = std::move(sorted[k]);
}

bool CVxFloor::RemoveLayer(int layer)
{
    if (!m_layers.RemoveLayer(layer))
        return false;
    // The layer's objects go with it; the layers above move down one, and
    // their objects with them.
    for (CVxPart& part : m_objects) {
        if (!part.inUse)
            continue;
        if (part.layer == layer) {
            part = CVxPart();
            part.inUse = false;
        } else if (part.layer > layer) {
            --part.layer;
        }
    }
    m_objectCount = CountUsedObjects();
    return true;
}

bool CVxFloor::SwitchLayers(int a, int b)
{
    if (!m_layers.SwitchLayers(a, b))
        return false;
    for (CVxPart& part : m_objects) {
        if (part.layer == a)
            part.layer = b;
        else if (part.layer == b)
            part.layer = a;
    }
    return true;
}

bool CVxFloor::ReorderLayer(int from, int to)
{
    if (!m_layers.ReorderLayer(from, to))
        return false;
    for (CVxPart& part : m_objects)
        part.layer = CVxViewLayers::ReorderedIndex(part.layer, from, to);
    return true;
}

int CVxFloor::MergeLayersInto(int target, bool onlyVisible)
{
    // Objects are gathered first, as removing a layer frees what is left on it.
    for (CVxPart& part : m_objects)
        if (part.inUse && (!onlyVisible || m_layers.IsLayerVisible(part.layer)))
            part.layer = target;
    for (int i = m_layers.GetLayerCount() - 1; i >= 0; --i) {
        if (i == target || (onlyVisible && !m_layers.IsLayerVisible(i)) || !RemoveLayer(i))
            continue;
        if (i < target)
            --target;
    }
    m_layers.SetActiveLayer(target);
    return target;
}

bool CVxFloor::MergeAllLayers()
{
    if (m_layers.GetLayerCount() < 2)
        return false;
    MergeLayersInto(m_layers.IsValidLayer(m_layers.GetActiveLayer()) ? m_layers.GetActiveLayer() : 0, false);
    return true;
}

bool CVxFloor::MergeVisibleLayers()
{
    if (m_layers.GetVisibleLayerCount() < 2)
        return false;
    MergeLayersInto(m_layers.GetAnyVisibleLayer(), true);
    return true;
}

void CVxFloor::MoveAllObjects(double dx, double dy, double dz, const CVxProject* project)
{
    // The rooms are found before the walls move, so that the plan definition
    // can follow them to their new edges.
    CVxFloorPlan plan;
    plan.CreatePlan(*this, -1);
    for (CVxPart& part : m_objects) {
        part.x += dx;
        part.y += dy;
        part.z += dz;
        if (project) {
            project->SubUnitCorrection(part.x, part.y, VX_DF_DECIMAL);
            project->SubUnitCorrection(part.z, VX_DF_INCHES);
        }
    }
    m_walls.Move(dx, dy, project);
    InvalidateAllObjectsCache();
    m_localCoords.Move(dx, dy, project);
    m_bkgScanRect.OffsetRect(dx, dy);
    m_annotations.Move(dx, dy);
    plan.Move(dx, dy, dz);
    m_planDef = plan.Save();
}

void CVxFloor::ScaleAllObjects(double sx, double sy, double sz, bool keepDefaults, bool keepObjectSizes,
                               const CVxProject* project)
{
    CVxFloorPlan plan;
    plan.CreatePlan(*this, -1);
    for (CVxPart& part : m_objects)
        part.Scale(sx, sy, sz, keepObjectSizes);
    m_walls.Scale(sx, sy, sz, project);
    m_localCoords.Scale(sx, sy, project);
    m_bkgScanRect.ScaleRect(sx, sy);
    m_annotations.Scale(sx, sy);
    plan.Scale(sx, sy, sz);
    m_planDef = plan.Save();
    if (!keepDefaults) {
        m_defWallThickness *= sx;
        m_defWallHeight *= sz;
        m_floorThickness *= sz;
        DblRound2(m_defWallThickness);
        DblRound2(m_defWallHeight);
        DblRound2(m_floorThickness);
    }
}

void CVxFloor::RotateAllObjects(int degrees, const CVxProject* project)
{
    CVxFloorPlan plan;
    plan.CreatePlan(*this, -1);
    for (CVxPart& part : m_objects) {
        // Each object turns about its first corner, which turns about the
        // origin with the walls.
        CVxDPoint corner(part.x, part.y);
        corner.Rotate(degrees);
        part.x = corner.x;
        part.y = corner.y;
        part.rotation = VX_NormalizeAngle(part.rotation + degrees);
        if (project)
            project->SubUnitCorrection(part.x, part.y, VX_DF_DECIMAL);
        part.InvalidateCache();
    }
    m_walls.Rotate(degrees);
    m_localCoords.Rotate(degrees, project);
    m_annotations.Rotate(degrees);
    plan.Rotate(degrees, false);
    m_planDef = plan.Save();
}

void CVxFloor::MirrorAllObjects(bool vertical, const CVxProject* project)
{
    CVxFloorPlan plan;
    plan.CreatePlan(*this, -1);
    for (CVxPart& part : m_objects) {
        if (part.inUse)
            MirrorObject(part, vertical);
    }
    m_walls.Mirror(vertical);
    plan.Mirror(vertical, false);
    for (CVxFloorRegion& region : plan.regions)
        region.ReverseBoundary();
    for (CVxFloorRegion& region : plan.outerRegions)
        region.ReverseBoundary();
    m_planDef = plan.Save();
    if (vertical)
        m_localCoords.Scale(1, -1, project);
    else
        m_localCoords.Scale(-1, 1, project);
}
