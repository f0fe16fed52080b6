#include "CVxObjPropEdit.h"

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxFont.h"
#include "CVxPartPayload.h"
#include "IVxAppHelperCallback.h"
#include "VxAngle.h"
#include "VxEps.h"

#include <algorithm>
#include <cmath>

namespace {

// The value that all parts share, or none.
template <class T, class Get>
std::optional<T> Common(const std::vector<const CVxPart*>& parts, Get get)
{
    if (parts.empty())
        return std::nullopt;
    T first = get(*parts.front());
    for (const CVxPart* part : parts)
        if (!(get(*part) == first))
            return std::nullopt;
    return first;
}

// Lengths that differ by less than the plan's tolerance are the same.
std::optional<double> CommonLength(const std::vector<const CVxPart*>& parts, double (*get)(const CVxPart&))
{
    if (parts.empty())
        return std::nullopt;
    const double first = get(*parts.front());
    for (const CVxPart* part : parts)
        if (std::fabs(get(*part) - first) > EPS)
            return std::nullopt;
    return first;
}

CVxDPoint Centre(const CVxPart& part)
{
    CVxDPoint corners[4];
    part.GetRect(corners, 1.0, false);
    return CVxDPoint((corners[0].x + corners[2].x) / 2, (corners[0].y + corners[2].y) / 2);
}

template <class T>
void Take(std::optional<T>& into, const std::optional<T>& from)
{
    if (from)
        into = from;
}

} // namespace

void SVxObjPropValues::Overlay(const SVxObjPropValues& e)
{
    Take(caption, e.caption);
    Take(width, e.width);
    Take(depth, e.depth);
    Take(height, e.height);
    Take(elevation, e.elevation);
    Take(rotation, e.rotation);
    Take(layer, e.layer);
    Take(locked, e.locked);
    Take(sizeLocked, e.sizeLocked);
    Take(fill, e.fill);
    Take(front, e.front);
    Take(frontEnabled, e.frontEnabled);
    Take(lineColor, e.lineColor);
    Take(textColor, e.textColor);
    Take(subType, e.subType);
    Take(handleType, e.handleType);
    Take(opened, e.opened);
    Take(doorframe, e.doorframe);
    Take(thickness, e.thickness);
    Take(tableRows, e.tableRows);
    Take(tableCols, e.tableCols);
    Take(payload, e.payload);
    Take(comment, e.comment);
    Take(customID, e.customID);
    Take(fileLink, e.fileLink);
    Take(price, e.price);
    Take(no3D, e.no3D);
    Take(lineThick, e.lineThick);
    Take(alignment, e.alignment);
    Take(fontSize, e.fontSize);
}

SVxObjPropValues CVxObjPropEdit::Collect(const std::vector<const CVxPart*>& parts)
{
    SVxObjPropValues v;
    if (parts.empty())
        return v;
    v.caption = Common<CVxStringW>(parts, [](const CVxPart& p) { return p.caption; });
    v.width = CommonLength(parts, [](const CVxPart& p) { return p.width; });
    v.depth = CommonLength(parts, [](const CVxPart& p) { return p.height; });
    v.height = CommonLength(parts, [](const CVxPart& p) { return p.zHeight; });
    v.elevation = CommonLength(parts, [](const CVxPart& p) { return p.z; });
    v.rotation = CommonLength(parts, [](const CVxPart& p) { return p.rotation; });
    v.layer = Common<int>(parts, [](const CVxPart& p) { return static_cast<int>(p.layer); });
    v.locked = Common<bool>(parts, [](const CVxPart& p) { return (p.locked & CVxPart::ctxLock) != 0; });
    v.sizeLocked =
        Common<bool>(parts, [](const CVxPart& p) { return (p.locked & CVxPart::ctxLockSize) != 0; });
    v.fill = Common<CVxAppearance>(parts, [](const CVxPart& p) { return p.appearFill; });
    v.front = Common<CVxAppearance>(parts, [](const CVxPart& p) { return p.appearFront; });
    v.frontEnabled = Common<bool>(parts, [](const CVxPart& p) { return p.frontColorEnable; });
    v.lineColor = Common<unsigned>(parts, [](const CVxPart& p) { return p.lineColor; });
    v.textColor = Common<unsigned>(parts, [](const CVxPart& p) { return p.textColor; });
    v.subType = Common<int>(parts, [](const CVxPart& p) { return static_cast<int>(p.subType); });
    v.handleType = Common<int>(parts, [](const CVxPart& p) { return static_cast<int>(p.handleType); });
    v.opened = Common<bool>(parts, [](const CVxPart& p) { return p.opened; });
    v.doorframe = Common<bool>(parts, [](const CVxPart& p) { return p.doorframe; });
    v.thickness = CommonLength(parts, [](const CVxPart& p) { return p.thickness; });
    v.tableRows = Common<int>(parts, [](const CVxPart& p) {
        int rows = 0, cols = 0;
        p.GetTableRowsCols(rows, cols);
        return rows;
    });
    v.tableCols = Common<int>(parts, [](const CVxPart& p) {
        int rows = 0, cols = 0;
        p.GetTableRowsCols(rows, cols);
        return cols;
    });
    v.payload = Common<CVxStringW>(
        parts, [](const CVxPart& p) { return p.GetPayload() ? p.GetPayload()->Serialize() : CVxStringW(); });
    if (v.payload && v.payload->IsEmpty())
        v.payload.reset();
    v.comment = Common<CVxStringW>(parts, [](const CVxPart& p) { return p.comment; });
    v.customID = Common<CVxStringW>(parts, [](const CVxPart& p) { return p.customID; });
    v.fileLink = Common<CVxStringW>(parts, [](const CVxPart& p) { return p.fileLink; });
    v.price = Common<int>(parts, [](const CVxPart& p) { return static_cast<int>(p.price); });
    v.no3D = Common<bool>(parts,
                          [](const CVxPart& p) { return (p.specificDisability & CVxPart::disable3D) != 0; });
    v.lineThick = CommonLength(parts, [](const CVxPart& p) { return static_cast<double>(p.lineThick); });
    v.alignment = Common<int>(parts, [](const CVxPart& p) { return static_cast<int>(p.lineColor & 3u); });
    v.fontSize = CommonLength(parts, [](const CVxPart& p) { return p.GetCaptionFont().m_size; });
    return v;
}

SVxObjPropScope CVxObjPropEdit::ScopeOf(const std::vector<const CVxPart*>& parts)
{
    SVxObjPropScope s;
    s.count = static_cast<int>(parts.size());
    if (parts.empty())
        return s;
    const CVxPart& first = *parts.front();
    s.type = first.type;
    s.libObjID = first.libObjID;
    for (const CVxPart* part : parts) {
        const CVxPart& p = *part;
        if (p.type != first.type || p.libObjID != first.libObjID)
            s.type = -1;
        s.resize = s.resize && p.HasCap(capResize);
        s.keepAspect = s.keepAspect || p.KeepAspect();
        s.rotate = s.rotate && p.HasCap(capRotate);
        s.fill = s.fill && p.HasCap(capFillColor);
        s.front = s.front && p.HasCap(capFrontColor);
        s.lineColor = s.lineColor && p.HasCap(capLineColor);
        s.lineThick = s.lineThick && p.HasCap(capLineThickness);
        s.doorLike = s.doorLike && p.HasCap(capHandle);
        s.doorframe = s.doorframe && p.HasCap(capDoorFrame);
        s.thickness = s.thickness && p.HasCap(capThickness);
        s.table = s.table && p.type == ptTable;
        s.label = s.label && p.type == ptLabel;
        s.has3D = s.has3D && p.HasCap(capHas3D);
    }
    if (s.type >= 0) {
        s.subTypes = CVxPart::GetSubTypeCount(s.type, s.libObjID);
        s.handleTypes = s.doorLike ? CVxPart::GetHandleTypeCount(s.type, s.libObjID) : 1;
    } else {
        s.subTypes = 1;
        s.handleTypes = 1;
    }
    return s;
}

void CVxObjPropEdit::Apply(const SVxObjPropValues& v, CVxPart& part, int layerCount)
{
    // A locked object takes nothing but the change of its locks.
    const bool stillLocked = v.locked ? *v.locked : part.IsLocked();
    if (stillLocked) {
        part.locked |= CVxPart::ctxLock;
        if (v.sizeLocked)
            part.locked =
                *v.sizeLocked ? (part.locked | CVxPart::ctxLockSize) : (part.locked & ~CVxPart::ctxLockSize);
        return;
    }
    if (v.caption)
        part.caption = *v.caption;
    if ((v.width || v.depth) && !part.IsSizeLocked()) {
        double w = v.width.value_or(part.width);
        double h = v.depth.value_or(part.height);
        // A circle stays a circle: the side that was left follows the other.
        if (part.KeepAspect() && part.width > EPS && part.height > EPS) {
            if (v.width && !v.depth)
                h = w * part.height / part.width;
            else if (v.depth && !v.width)
                w = h * part.width / part.height;
        }
        if (w > EPS && h > EPS && (std::fabs(w - part.width) > EPS || std::fabs(h - part.height) > EPS)) {
            // A size typed in grows the object about its middle, as it
            // stands in the room, not away from its first corner.
            const CVxDPoint before = Centre(part);
            part.ResizePart(w, h);
            part.InvalidateCache();
            const CVxDPoint after = Centre(part);
            part.x += before.x - after.x;
            part.y += before.y - after.y;
        }
    }
    if (v.height && *v.height > EPS && !part.IsSizeLocked())
        part.zHeight = *v.height;
    if (v.elevation)
        part.z = *v.elevation;
    if (v.rotation && part.HasCap(capRotate)) {
        // The user turns an object about its middle; the part keeps its
        // angle about its first corner.
        const double target = VX_NormalizeAngle(*v.rotation);
        const double delta = target - part.rotation;
        if (std::fabs(delta) > EPS) {
            part.RotateAroundCenter(delta);
            part.rotation = target;
        }
    }
    if (v.layer && *v.layer >= 0 && *v.layer < layerCount)
        part.layer = *v.layer;
    if (v.locked)
        part.locked = *v.locked ? (part.locked | CVxPart::ctxLock) : (part.locked & ~CVxPart::ctxLock);
    if (v.sizeLocked)
        part.locked =
            *v.sizeLocked ? (part.locked | CVxPart::ctxLockSize) : (part.locked & ~CVxPart::ctxLockSize);
    if (v.fill)
        part.appearFill = *v.fill;
    if (v.front && part.HasCap(capFrontColor))
        part.appearFront = *v.front;
    if (v.frontEnabled && part.HasCap(capFrontColor))
        part.frontColorEnable = *v.frontEnabled;
    if (v.lineColor && part.type != ptLabel)
        part.lineColor = *v.lineColor;
    if (v.textColor)
        part.textColor = *v.textColor;
    const int subTypes = CVxPart::GetSubTypeCount(part.type, part.libObjID);
    if (v.subType && part.type != ptTable && *v.subType >= 0 && *v.subType < subTypes)
        part.subType = static_cast<int16_t>(*v.subType);
    if (v.handleType && part.HasCap(capHandle) && *v.handleType >= 0 &&
        *v.handleType < CVxPart::GetHandleTypeCount(part.type, part.libObjID))
        part.handleType = static_cast<int16_t>(*v.handleType);
    if (v.opened && part.HasCap(capHandle))
        part.opened = *v.opened;
    if (v.doorframe && part.HasCap(capDoorFrame))
        part.doorframe = *v.doorframe;
    if (v.thickness && part.HasCap(capThickness) && *v.thickness >= 0)
        part.thickness = *v.thickness;
    if ((v.tableRows || v.tableCols) && part.type == ptTable) {
        int rows = 0, cols = 0;
        part.GetTableRowsCols(rows, cols);
        rows = std::clamp(v.tableRows.value_or(rows), 1, CVxPart::maxTableRowsCols);
        cols = std::clamp(v.tableCols.value_or(cols), 1, CVxPart::maxTableRowsCols);
        part.SetTableRowsCols(rows, cols);
    }
    if (v.payload && part.HasCap(capPayload) && part.GetPayload()) {
        // Only a payload of the part's own class: stairs stay stairs.
        CVxPartPayload* payload = CVxPartPayload::CreateFromString(*v.payload);
        if (payload && payload->GetClassName() == part.GetPayload()->GetClassName())
            part.SetPayload(payload);
        else
            delete payload;
    }
    if (v.comment)
        part.comment = *v.comment;
    if (v.customID)
        part.customID = *v.customID;
    if (v.fileLink)
        part.fileLink = *v.fileLink;
    if (v.price && *v.price >= 0)
        part.price = *v.price;
    if (v.no3D)
        part.specificDisability = *v.no3D ? (part.specificDisability | CVxPart::disable3D)
                                          : (part.specificDisability & ~CVxPart::disable3D);
    if (v.lineThick && *v.lineThick > 0 && *v.lineThick < 1000)
        part.lineThick = static_cast<float>(*v.lineThick);
    if (v.alignment && part.type == ptLabel)
        part.lineColor = static_cast<unsigned>(std::clamp(*v.alignment, 0, 2));
    if (v.fontSize && *v.fontSize >= 1 && *v.fontSize <= 1000 &&
        std::fabs(*v.fontSize - part.GetCaptionFont().m_size) > EPS) {
        const CVxFont current = part.GetCaptionFont();
        CVxFont* own = part.CreateFont();
        *own = current;
        own->m_size = *v.fontSize;
    }
    // The members of a group follow what the group was given.
    if (part.type == ptComplexObject)
        part.SetPropertiesToSubParts();
    part.InvalidateCache();
}

bool CVxObjPropEdit::BeginSelection(CVxAppCore& core)
{
    CVxFloor* floor = core.GetProject().GetFloor();
    std::vector<int> indexes;
    std::vector<const CVxPart*> parts;
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        const CVxPart* part = floor->SafeGetPart(i);
        if (part && part->inUse && part->selected) {
            indexes.push_back(i);
            parts.push_back(part);
        }
    }
    if (parts.empty())
        return false;
    m_core = &core;
    m_single = nullptr;
    m_indexes = indexes;
    m_originalObjects = floor->m_objects;
    m_wasModified = core.GetProject().m_modified;
    m_previewed = false;
    m_unit = core.GetProject().m_unit;
    m_initial = Collect(parts);
    m_scope = ScopeOf(parts);
    m_scope.layerCount = std::max(1, floor->m_layers.GetLayerCount());
    m_layerNames.clear();
    for (int i = 0; i < floor->m_layers.GetLayerCount(); ++i)
        m_layerNames.push_back(floor->m_layers.GetLayerName(i));
    return true;
}

bool CVxObjPropEdit::BeginPart(CVxPart* part)
{
    if (!part)
        return false;
    m_core = nullptr;
    m_single = part;
    m_singleOriginal = *part;
    m_indexes.clear();
    m_previewed = false;
    m_unit = VX_GetCore() ? VX_GetCore()->GetProject().m_unit : 1;
    std::vector<const CVxPart*> parts{part};
    m_initial = Collect(parts);
    m_scope = ScopeOf(parts);
    m_scope.layerCount = 1;
    m_layerNames.clear();
    return true;
}

const CVxPart* CVxObjPropEdit::GetFirstPart() const
{
    if (m_single)
        return &m_singleOriginal;
    if (!m_core || m_indexes.empty())
        return nullptr;
    const size_t index = static_cast<size_t>(m_indexes.front());
    return index < m_originalObjects.size() ? &m_originalObjects[index] : nullptr;
}

void CVxObjPropEdit::Restore()
{
    if (m_single) {
        *m_single = m_singleOriginal;
        return;
    }
    if (!m_core)
        return;
    CVxProject& project = m_core->GetProject();
    project.GetFloor()->m_objects = m_originalObjects;
    project.m_modified = m_wasModified;
}

void CVxObjPropEdit::ApplyToLive(const SVxObjPropValues& edited)
{
    SVxObjPropValues values = edited;
    if (m_single) {
        Apply(values, *m_single, m_scope.layerCount);
        return;
    }
    CVxFloor* floor = m_core->GetProject().GetFloor();
    for (int index : m_indexes)
        if (CVxPart* part = floor->SafeGetPart(index))
            Apply(values, *part, m_scope.layerCount);
    // Doors and windows stay in their walls after a change of size.
    floor->ResnapAllParts(&m_core->GetFloorPlan());
}

void CVxObjPropEdit::Refresh(bool listing)
{
    if (!m_core)
        return;
    m_core->OnSelectionChange();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        if (listing)
            host->OnPartListingChange();
        host->EnableUndoButtons();
        host->DrawRoom(nullptr);
    }
}

void CVxObjPropEdit::Preview(const SVxObjPropValues& edited)
{
    if (!IsActive() || m_single)
        return;
    Restore();
    ApplyToLive(edited);
    m_previewed = true;
    Refresh(false);
}

void CVxObjPropEdit::Cancel()
{
    if (!IsActive())
        return;
    Restore();
    if (m_previewed)
        Refresh(false);
    m_core = nullptr;
    m_single = nullptr;
}

bool CVxObjPropEdit::Commit(const SVxObjPropValues& edited)
{
    if (!IsActive())
        return false;
    SVxObjPropValues merged = m_initial;
    merged.Overlay(edited);
    if (merged == m_initial) {
        Cancel();
        return false;
    }
    Restore();
    if (m_core)
        m_core->CatchUndoRoom(true);
    ApplyToLive(edited);
    if (m_core)
        m_core->GetProject().m_modified = true;
    Refresh(true);
    m_core = nullptr;
    m_single = nullptr;
    return true;
}
