// Objects through the clipboard as record text, between projects and
// between running instances; measuring and dimension lines.

#include "CVxAppCore.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxPartVectorGrouper.h"
#include "CVxStringReader.h"
#include "CVxStringWriter.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {
CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

constexpr unsigned kUtf8CodePage = 65001;
constexpr int kClipboardFileVersion = 1020;
// A paste takes no more objects than a project may hold.
constexpr size_t kMaxPastedParts = CVxFloor::maxProjectObjects;

// The "Room" section of a clip: where the objects came from.
class CVxClipOrigin : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* /*reader*/) override
    {
        if (key == "Unit") {
            for (int u = 0; u < CVxUnits::UNIT_COUNT; ++u)
                if (value == CVxStringW(CVxStringA(CVxUnits::sUnitEngText[u])))
                    unit = u;
        } else if (key == "CurrentFloor") {
            floor = CVxIniFileReader::ToIntInRange(value, -1, 0, 1000, "CurrentFloor");
        } else if (key == "ProjectFile") {
            projectFile = value;
        } else if (key == "ProjectId") {
            projectId = value;
        }
    }

    int unit = -1;
    int floor = -1;
    CVxStringW projectFile;
    CVxStringW projectId;
};
// A dimension line's frame: its length along the rotation, its end marks
// across. The line runs through the middle of the marks, so the frame
// starts half a mark off the line that it measures.
void SetDimLineFrame(CVxPart& line, const CVxDPoint& from, double length, double degrees, double mark)
{
    const double r = degrees * 3.14159265358979323846 / 180.0;
    line.width = std::max(0.0, std::round(length * 100.0) / 100.0);
    line.height = mark;
    line.rotation = degrees < 0 ? degrees + 360 : degrees;
    line.x = from.x + std::sin(r) * mark / 2;
    line.y = from.y - std::cos(r) * mark / 2;
    line.InvalidateCache();
}

// The pictures that the reader refused are dropped, members included.
void ForgetRefusedFiles(CVxPart& part, const std::vector<CVxStringW>& refused, int depth)
{
    if (refused.empty() || depth > CVxPart::maxGroupDepth)
        return;
    const auto isRefused = [&refused](const CVxStringW& path) {
        return !path.IsEmpty() && std::find(refused.begin(), refused.end(), path) != refused.end();
    };
    if (isRefused(part.appearFill.GetTexture()))
        part.appearFill.SetTexture(CVxStringW());
    if (isRefused(part.appearFront.GetTexture()))
        part.appearFront.SetTexture(CVxStringW());
    if (isRefused(part.overlayTexture))
        part.overlayTexture = CVxStringW();
    for (CVxPart& member : part.subParts)
        ForgetRefusedFiles(member, refused, depth + 1);
}
} // namespace

const CVxStringW& CVxAppCore::GetClipboardProjectId()
{
    if (m_clipProjectId.IsEmpty()) {
        IVxAppHelperCallback* host = VX_GetAppHelper();
        if (host)
            m_clipProjectId = host->GenerateUuid();
        if (m_clipProjectId.IsEmpty())
            m_clipProjectId = CVxStringW().sprintf(L"%p-%lld", static_cast<void*>(this),
                                                   static_cast<long long>(host ? host->GetTickCount() : 0));
    }
    return m_clipProjectId;
}

CVxStringA CVxAppCore::GetSelectionClipboardText()
{
    CVxFloor* floor = m_project.GetFloor();
    if (GetSelCount() == 0)
        return CVxStringA();
    CVxStringWriter writer;
    writer.StartSection("Room");
    const int unit = std::clamp(m_project.m_unit, 0, CVxUnits::UNIT_COUNT - 1);
    writer.WriteString("Unit", CVxStringW(CVxStringA(CVxUnits::sUnitEngText[unit])));
    writer.WriteInteger("CurrentFloor", m_project.m_currentFloor);
    writer.WriteString("ProjectFile", m_projectPath);
    writer.WriteString("ProjectId", GetClipboardProjectId());
    int n = 0;
    for (const CVxPart& part : floor->m_objects) {
        if (!part.inUse || !part.selected || part.IsTempDimLine())
            continue;
        part.SaveToFile(&writer, CVxStringA().sprintf("Part%d", n++), false, nullptr);
    }
    return writer.GetString();
}

void CVxAppCore::CopySelectedObjectsToClipboard()
{
    const CVxStringA text = GetSelectionClipboardText();
    if (text.IsEmpty())
        return;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->SetClipboardText(text);
}

void CVxAppCore::CutSelectedObjectsToClipboard()
{
    if (GetSelCount() == 0)
        return;
    CopySelectedObjectsToClipboard();
    DeleteSelectedObjects();
}

bool CVxAppCore::PasteObjectsFromClipboard(const CVxStringA& text)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    const auto refuse = [host]() {
        if (host)
            host->SetMainViewStatusMessage(Msg(120, L"The clipboard holds no objects to paste."));
        return false;
    };
    static const char head[] = "[Plaveno Clipboard]";
    if (text.GetLength() < static_cast<int>(sizeof(head) - 1) ||
        std::strncmp(text.c_str(), head, sizeof(head) - 1))
        return refuse();
    CVxStringReader reader(text, kUtf8CodePage);
    // Pictures may come from this project's folder and the program's own
    // folders; a clip can't make the program read any other file.
    const int slash = m_projectPath.ReverseFind(L'/');
    if (slash > 0)
        reader.SetAltBaseFolder(m_projectPath.Left(slash + 1));
    if (!reader.Start() || reader.GetSectionName() != "Plaveno Clipboard")
        return refuse();
    reader.ReadSection(nullptr);

    CVxClipOrigin origin;
    std::vector<CVxPart> parts;
    {
        CVxPartVectorGrouper grouper(parts);
        size_t read = 0;
        while (!reader.GetSectionName().IsEmpty()) {
            const CVxStringA section = reader.GetSectionName();
            if (section == "Room") {
                reader.ReadSection(&origin);
            } else if (section.Left(4) == "Part" && read < kMaxPastedParts) {
                CVxPart part;
                part.LoadFromSection(&reader);
                ++read;
                grouper.Add(std::move(part), kClipboardFileVersion);
            } else {
                reader.ReadSection(nullptr);
            }
        }
        grouper.Finalize();
    }
    parts.erase(std::remove_if(parts.begin(), parts.end(), [](const CVxPart& p) { return !p.inUse; }),
                parts.end());
    for (CVxPart& part : parts)
        ForgetRefusedFiles(part, reader.GetRefusedFiles(), 0);
    if (parts.empty())
        return refuse();

    CatchUndoRoom(false);
    ClearSelection(false);
    CVxFloor* floor = m_project.GetFloor();
    const int layer = floor->m_layers.GetActiveLayer();
    const double factor = origin.unit >= 0 && origin.unit != m_project.m_unit
                              ? CVxUnits::dUnitCal[origin.unit] / CVxUnits::dUnitCal[m_project.m_unit]
                              : 1.0;
    SVxRectUnion bounds;
    int last = -1;
    for (CVxPart& part : parts) {
        if (factor != 1.0 && std::isfinite(factor) && factor > 0) {
            part.x *= factor;
            part.y *= factor;
            part.z *= factor;
            part.width *= factor;
            part.height *= factor;
            part.zHeight *= factor;
        }
        part.locked = 0;
        part.selected = true;
        part.layer = layer;
        // A pasted room label is a plain label: bound to a room of this
        // floor by number, the next rebuild would write that room's figures
        // over its text.
        part.snapRegion = -1;
        part.InvalidateCache();
        int index = -1;
        CVxPart* slot = floor->GetNewObject(&index, true);
        *slot = std::move(part);
        if (slot->snapToWall)
            slot->SnapToWall(&floor->m_walls, slot->x, slot->y, false, false, false);
        CVxDRect b;
        slot->GetBoundingRect(&b, 1.0);
        bounds.Add(b);
        last = index;
    }
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = last;
    if (!floor->m_layers.IsLayerVisible(layer))
        floor->m_layers.SetLayerVisible(layer, true);

    const bool samePlace =
        origin.floor == m_project.m_currentFloor && origin.projectId == GetClipboardProjectId();
    if (!samePlace && m_zoom > 0) {
        // The pasted objects come to the pointer.
        double mx = 0, my = 0;
        if (host)
            host->GetCurrentMousePos(mx, my);
        // The host tells the pointer from the sheet's corner; objects count
        // from inside its margins.
        const VxPOINT o = GetObjectOrigin();
        mx -= o.x - m_viewOrigin.x;
        my -= o.y - m_viewOrigin.y;
        const CVxDPoint centre = bounds.rect.CenterPoint();
        double dx = mx / m_zoom - centre.x;
        double dy = my / m_zoom - centre.y;
        if (!std::isfinite(dx) || !std::isfinite(dy))
            dx = dy = 0;
        m_project.SubUnitCorrection(dx, dy, VX_DF_DECIMAL);
        for (CVxPart& part : floor->m_objects)
            if (part.inUse && part.selected) {
                part.x += dx;
                part.y += dy;
                part.InvalidateCache();
            }
        m_lastPointer = CVxDPoint(mx, my);
    }
    CatchUndoRoom(true);
    AfterSelectionCommand(true);
    if (!samePlace && parts.size() == 1)
        PlaceOnCursor(last);
    return true;
}

void CVxAppCore::StartMeasuring()
{
    m_mouseState = msMeasureWait;
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->StartEndMeasuring(true);
        host->SetMainViewCursor(VX_CURSOR_CROSS);
        host->SetMainViewStatusMessage(Msg(121, L"Click where the measurement starts."));
    }
}

void CVxAppCore::EndMeasuring()
{
    m_mouseState = msIdle;
    SetTempObject(0, 0, 0, 0, 0);
    m_measureCalibrationLength = -1;
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->StartEndMeasuring(false);
        host->SetMainViewStatusMessage(CVxStringW());
        host->SetMainViewCursor(VX_CURSOR_ARROW);
    }
    Repaint();
}

void CVxAppCore::DrawMeasureLine(unsigned modifiers, double x, double y)
{
    if (m_zoom <= 0)
        return;
    double ex = x, ey = y;
    if (modifiers & modShift) {
        if (std::fabs(ex - m_measureStart.x) >= std::fabs(ey - m_measureStart.y))
            ey = m_measureStart.y;
        else
            ex = m_measureStart.x;
    }
    m_measureEnd = CVxDPoint(ex, ey);
    SetTempObject(1, m_measureStart.x / m_zoom, m_measureStart.y / m_zoom, ex / m_zoom, ey / m_zoom);
    const double length = std::hypot(ex - m_measureStart.x, ey - m_measureStart.y) / m_zoom;
    double angle =
        std::atan2(-(ey - m_measureStart.y), ex - m_measureStart.x) * 180.0 / 3.14159265358979323846;
    if (angle < 0)
        angle += 360;
    // Whole tenths, and no "-0.0" or "360.0" for a level line.
    angle = std::round(angle * 10.0) / 10.0;
    if (angle >= 360.0 || angle == 0.0)
        angle = 0.0;
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        CVxStringW value = VX_DblFormat(length, VX_DF_FEET_GLYPHS, true);
        if (m_project.m_unit != CVxUnits::UNIT_INCH)
            value += L" " + CVxUnits::GetUnitText(m_project.m_unit);
        host->SetMainViewStatusMessage(Msg(122, L"Measurement") + L" -- " + value +
                                       CVxStringW().sprintf(L", %.1f\u00B0   ", angle) +
                                       Msg(123, L"Use Shift to draw horizontal or vertical line."));
    }
    Repaint();
}

void CVxAppCore::FinishMeasuring(int button, unsigned modifiers, double x, double y)
{
    DrawMeasureLine(modifiers, x, y);
    const bool create = m_measureCalibrationLength >= 0 && button == buttonLeft;
    const CVxDPoint from = m_measureStart;
    const CVxDPoint to = m_measureEnd;
    EndMeasuring();
    if (create)
        CreateMeasLine(from, to);
}

void CVxAppCore::StartDimensionLine()
{
    StartMeasuring();
    m_measureCalibrationLength = 0;
}

void CVxAppCore::CreateMeasLine(const CVxDPoint& fromPixels, const CVxDPoint& toPixels)
{
    if (m_zoom <= 0)
        return;
    CVxDPoint from(fromPixels.x / m_zoom, fromPixels.y / m_zoom);
    CVxDPoint to(toPixels.x / m_zoom, toPixels.y / m_zoom);
    m_project.SubUnitCorrection(&from, VX_DF_DECIMAL);
    m_project.SubUnitCorrection(&to, VX_DF_DECIMAL);
    double length = std::round(std::hypot(to.x - from.x, to.y - from.y) * 100.0) / 100.0;
    if (length <= 0)
        return;
    // The caption reads upright: a line that runs leftwards is laid from
    // its other end.
    if (to.x < from.x - 1e-9)
        std::swap(from, to);
    CatchUndoRoom(true);
    CVxFloor* floor = m_project.GetFloor();
    DeselectAllParts();
    int index = -1;
    CVxPart* line = floor->GetNewObject(&index, true);
    line->type = ptMeasLine;
    line->caption = L"~";
    SetDimLineFrame(*line, from, length,
                    std::atan2(to.y - from.y, to.x - from.x) * 180.0 / 3.14159265358979323846, 10.0 / m_zoom);
    line->layer = floor->m_layers.GetActiveLayer();
    line->selected = true;
    line->InvalidateCache();
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = index;
    AfterSelectionCommand(true);
}

void CVxAppCore::DimensionSelectedObjects()
{
    CVxFloor* floor = m_project.GetFloor();
    std::vector<CVxPart> lines;
    const double off = m_zoom > 0 ? 12.0 / m_zoom : 10.0;
    for (const CVxPart& part : floor->m_objects) {
        if (!part.inUse || !part.selected || part.type == ptMeasLine || part.type == ptLine)
            continue;
        CVxDPoint c[4];
        part.GetRect(c, 1.0, false);
        // Along the front side and the left side, a little off the object.
        const CVxDPoint sides[2][2] = {{c[0], c[1]}, {c[3], c[0]}};
        for (const auto& side : sides) {
            const double len = std::hypot(side[1].x - side[0].x, side[1].y - side[0].y);
            if (len <= 0)
                continue;
            const double ux = (side[1].x - side[0].x) / len;
            const double uy = (side[1].y - side[0].y) / len;
            CVxPart line;
            line.Reset();
            line.inUse = true;
            line.type = ptMeasLine;
            line.caption = L"~";
            SetDimLineFrame(line, CVxDPoint(side[0].x + uy * off, side[0].y - ux * off), len,
                            std::atan2(uy, ux) * 180.0 / 3.14159265358979323846, 10.0 / m_zoom);
            line.layer = part.layer;
            lines.push_back(line);
        }
    }
    if (lines.empty())
        return;
    CatchUndoRoom(true);
    for (CVxPart& line : lines)
        *floor->GetNewObject(nullptr, true) = std::move(line);
    floor->m_objectCount = floor->CountUsedObjects();
    AfterSelectionCommand(true);
}

void CVxAppCore::DeleteAllDimensionLines()
{
    CVxFloor* floor = m_project.GetFloor();
    const bool any = std::any_of(floor->m_objects.begin(), floor->m_objects.end(),
                                 [](const CVxPart& p) { return p.inUse && p.type == ptMeasLine; });
    if (!any)
        return;
    CatchUndoRoom(true);
    for (CVxPart& part : floor->m_objects)
        if (part.inUse && part.type == ptMeasLine)
            part = CVxPart();
    floor->m_objectCount = floor->CountUsedObjects();
    m_firstSelected = GetFirstSelected();
    AfterSelectionCommand(true);
}

void CVxAppCore::UpdateTempDimLines(VxRECT* dirty)
{
    // While a door or window slides along its wall, two lines measure the
    // gaps to the next stops on either side: openings on the same run of
    // walls, and the run's ends.
    CVxFloor* floor = m_project.GetFloor();
    if (GetSelCount() != 1 || m_zoom <= 0)
        return;
    const int selected = GetFirstSelected();
    const CVxPart* part = floor->SafeGetPart(selected);
    if (!part || !part->snapToWall)
        return;
    const CVxRoomWalls& walls = floor->m_walls;
    const CVxWall* wall = walls.SafeGetWall(part->snapWall);
    const CVxDRect opening = part->GetWallOpeningRect(&walls, part->snapWall, true);
    if (!wall || wall->IsCurved() || opening.Width() <= 0 || wall->length <= 0)
        return;

    const CVxDPoint a = wall->start;
    const CVxDPoint dir((wall->end.x - a.x) / wall->length, (wall->end.y - a.y) / wall->length);
    const auto along = [&](const CVxDPoint& p) { return (p.x - a.x) * dir.x + (p.y - a.y) * dir.y; };
    std::vector<double> stops;
    double low = 0;
    double high = wall->length;
    for (int i = 0; i < walls.GetWallCount(); ++i) {
        const CVxWall& other = walls.walls[static_cast<size_t>(i)];
        if (&other != wall &&
            (other.snapSegment == 0 || other.snapSegment != wall->snapSegment || other.IsCurved()))
            continue;
        const double s = along(other.start);
        const double e = along(other.end);
        // Only walls that continue this one in line.
        const auto off = [&](const CVxDPoint& p) {
            return std::fabs((p.x - a.x) * dir.y - (p.y - a.y) * dir.x);
        };
        if (off(other.start) > 1e-3 || off(other.end) > 1e-3)
            continue;
        low = std::min(low, std::min(s, e));
        high = std::max(high, std::max(s, e));
    }
    stops.push_back(low);
    stops.push_back(high);
    for (int i = 0; i < floor->GetObjectSlotCount(); ++i) {
        const CVxPart& other = floor->m_objects[static_cast<size_t>(i)];
        if (i == selected || !other.inUse || other.type == ptMeasLine || !other.snapToWall)
            continue;
        const CVxDRect r = other.GetWallOpeningRect(&walls, part->snapWall, false);
        if (r.Width() <= 0)
            continue;
        stops.push_back(r.left);
        stops.push_back(r.right);
    }
    std::sort(stops.begin(), stops.end());
    double before = low;
    double after = high;
    for (double stop : stops) {
        if (stop <= opening.left + 1e-9)
            before = std::max(before, stop);
        if (stop >= opening.right - 1e-9)
            after = std::min(after, stop);
    }

    // The lines stand beside the wall, a little off its face.
    const double offset = wall->thickness / 2 + 14.0 / m_zoom;
    const CVxDPoint normal(-dir.y, dir.x);
    const double angle = std::atan2(dir.y, dir.x) * 180.0 / 3.14159265358979323846;
    const auto place = [&](CVxPart& line, double from, double to) {
        if (dirty) {
            VxRECT r;
            line.GetCachedDrawingRect(&r, 0, 0, m_zoom);
            VxGrowDirtyRect(dirty, r);
        }
        SetDimLineFrame(
            line, CVxDPoint(a.x + dir.x * from + normal.x * offset, a.y + dir.y * from + normal.y * offset),
            to - from, angle, 10.0 / m_zoom);
        line.layer = part->layer;
        line.InvalidateCache();
        if (dirty) {
            VxRECT r;
            line.GetCachedDrawingRect(&r, 0, 0, m_zoom);
            VxGrowDirtyRect(dirty, r);
        }
    };
    std::vector<int> lines;
    for (int i = 0; i < floor->GetObjectSlotCount() && lines.size() < 2; ++i)
        if (floor->m_objects[static_cast<size_t>(i)].inUse &&
            floor->m_objects[static_cast<size_t>(i)].IsTempDimLine())
            lines.push_back(i);
    while (lines.size() < 2) {
        int index = -1;
        CVxPart* line = floor->GetNewObject(&index, true);
        line->type = ptMeasLine;
        line->caption = L"~";
        line->appTag |= CVxPart::appTagTempDimLine;
        lines.push_back(index);
    }
    m_tempDimMode = true;
    place(floor->m_objects[static_cast<size_t>(lines[0])], before, opening.left);
    place(floor->m_objects[static_cast<size_t>(lines[1])], opening.right, after);
}

void CVxAppCore::DeleteTempDimLines()
{
    CVxFloor* floor = m_project.GetFloor();
    for (CVxPart& part : floor->m_objects)
        if (part.inUse && part.IsTempDimLine())
            part = CVxPart();
    floor->m_objectCount = floor->CountUsedObjects();
    m_tempDimMode = false;
}
