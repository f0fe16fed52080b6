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
    CVxDRect bounds;
    bool any = false;
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
        part.snapRegion = 0;
        part.InvalidateCache();
        int index = -1;
        CVxPart* slot = floor->GetNewObject(&index, true);
        *slot = std::move(part);
        if (slot->snapToWall)
            slot->SnapToWall(&floor->m_walls, slot->x, slot->y, false, false, false);
        CVxDRect b;
        slot->GetBoundingRect(&b, 1.0);
        if (!any)
            bounds = b;
        else
            bounds.UnionRect(b);
        any = true;
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
        const CVxDPoint centre = bounds.CenterPoint();
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
    for (CVxPart& part : floor->m_objects)
        part.selected = false;
    int index = -1;
    CVxPart* line = floor->GetNewObject(&index, true);
    line->type = ptMeasLine;
    line->x = from.x;
    line->y = from.y;
    line->width = length;
    line->height = 0;
    line->rotation = std::atan2(to.y - from.y, to.x - from.x) * 180.0 / 3.14159265358979323846;
    if (line->rotation < 0)
        line->rotation += 360;
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
            line.x = side[0].x + uy * off;
            line.y = side[0].y - ux * off;
            line.width = std::round(len * 100.0) / 100.0;
            line.height = 0;
            line.rotation = std::atan2(uy, ux) * 180.0 / 3.14159265358979323846;
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

void CVxAppCore::UpdateTempDimLines(VxRECT* /*dirty*/)
{
    // Openings are placed by the wall editor's own dimension lines for now.
}

void CVxAppCore::DeleteTempDimLines()
{
    m_tempDimMode = false;
}
