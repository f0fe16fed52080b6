// The header and footer layout editor: a sheet of paper in place of the
// plan, and the open project kept aside until the layout is closed.

#include "CVxPageLayoutEditor.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxPart.h"
#include "CVxUndoManager.h"
#include "CVxUnits.h"
#include "VxColorWord.h"

#include <algorithm>

namespace {

// The dots per inch at which a zoom of 100% shows the page at its size.
constexpr double kScreenDpi = 96;

bool IsImperial(int unit)
{
    return unit == CVxUnits::UNIT_INCH || unit == CVxUnits::UNIT_FT || unit == CVxUnits::UNIT_YD;
}

// The commands of a sheet of paper, by their stable numbers: accept and
// discard, undo, the library, selection, zoom, clipboard, labels and lines,
// the view flags, help, and the object commands but those of walls, rooms,
// sides and terrain.
bool IsSheetCommand(int code)
{
    switch (code) {
    case 15:
    case 16:
    case 18:
    case 19:
    case 25:
    case 29:
    case 30:
    case 31:
    case 32:
    case 33:
    case 34:
    case 39:
    case 62:
    case 71:
    case 116:
        return true;
    case 133:
    case 148:
    case 160:
    case 164:
        return false;
    default:
        return (code >= 93 && code <= 99) || (code >= 108 && code <= 113) || (code >= 130 && code <= 182);
    }
}

} // namespace

double CVxPrintPageInfo::PageWidthMm() const
{
    return landscape ? std::max(widthMm, heightMm) : std::min(widthMm, heightMm);
}

double CVxPrintPageInfo::PageHeightMm() const
{
    return landscape ? std::min(widthMm, heightMm) : std::max(widthMm, heightMm);
}

CVxPageLayoutEditor::CVxPageLayoutEditor() = default;
CVxPageLayoutEditor::~CVxPageLayoutEditor() = default;

CVxStringW CVxPageLayoutEditor::GetEditorLocalizedName() const
{
    return VX_GetLoc()->LocalizeMessage(1310, L"Page Layout Editor");
}

void CVxPageLayoutEditor::ResetToPage(CVxProject& project, const CVxPrintPageInfo& info, int unit)
{
    project.Reset();
    const int pageUnit = IsImperial(unit) ? CVxUnits::UNIT_INCH : CVxUnits::UNIT_CM;
    // Millimetres to the page's unit.
    const double mm = 0.1 / CVxUnits::GetUnitCal(pageUnit);
    project.m_unit = pageUnit;
    project.m_width = std::clamp(info.PageWidthMm(), 10.0, 2000.0) * mm;
    project.m_height = std::clamp(info.PageHeightMm(), 10.0, 2000.0) * mm;
    // The sheet is the page: the layout's origin is the paper's corner.
    project.m_spaceLeft = project.m_spaceTop = project.m_spaceRight = project.m_spaceBottom = 0;
    project.m_gridSize = pageUnit == CVxUnits::UNIT_INCH ? 0.25 : 1;
    project.m_subUnitMoves = true;
    project.m_baseZoom = kScreenDpi / 2.54 * CVxUnits::GetUnitCal(pageUnit);
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.RemoveAll();
    floor->m_walls.RebuildWalls();

    CVxPart* area = floor->GetNewObject();
    area->type = ptPageArea;
    area->inUse = true;
    area->layer = floor->m_layers.GetActiveLayer();
    area->x = kSideMm * mm;
    area->y = kHeaderMm * mm;
    area->width = std::max(mm, project.m_width - 2 * kSideMm * mm);
    area->height = std::max(mm, project.m_height - (kHeaderMm + kFooterMm) * mm);
    area->lineStyle = lsDotted;
    area->lineColor = 0x808080;
    area->SetFillColor(VX_ColorSwitchOff(0xFFFFFF));
    area->caption = VX_GetLoc()->LocalizeDlgString(VX_GetLoc()->GetDlgIndex("ObjectTypes"), ptPageArea + 1,
                                                   CVxStringW(L"Page contents"));
    area->InvalidateCache();
    floor->m_objectCount = floor->CountUsedObjects();
    project.m_modified = false;
}

bool CVxPageLayoutEditor::Activate(CVxProject* project, IVxEditorHost* host, const CVxPrintPageInfo& info,
                                   bool newLayout, int unit)
{
    if (m_active || !project)
        return false;
    IVxSpecialEditor::Activate(project, host);
    m_file = info.file;
    m_saved = false;
    project->CopyTo(&m_backup);
    // The layout unpacks into a folder of its own; the project's folder
    // stays with the backup.
    CVxProject layout;
    if (!newLayout && layout.LoadFromFile(m_file, nullptr, nullptr, false, 0)) {
        layout.CopyTo(project);
    } else {
        project->m_storagePath.Empty();
        ResetToPage(*project, info, unit);
    }
    project->m_modified = false;
    m_undo = std::make_unique<CVxUndoManager>(project);
    m_undo->SetUndoLimit(40);
    if (m_host) {
        m_host->EditorCreatePlan();
        m_host->EditorRebuildRoom();
    }
    return true;
}

bool CVxPageLayoutEditor::SaveLayout()
{
    if (!m_active || !m_project || m_file.IsEmpty())
        return false;
    const bool modified = m_project->m_modified;
    m_saved = m_project->SaveToFile(m_file, true, nullptr);
    m_project->m_modified = modified;
    return m_saved;
}

bool CVxPageLayoutEditor::Deactivate(bool discard)
{
    if (!m_active || !m_project)
        return false;
    if (!discard && !m_saved)
        SaveLayout();
    IVxSpecialEditor::Deactivate(discard);
    // The layout's unpack folder goes; the project's belongs to the backup.
    if (m_project->m_storagePath != m_backup.m_storagePath)
        m_project->RemoveTempFiles();
    m_backup.CopyTo(m_project);
    // A save while the layout was open wrote the project as it is now.
    if (m_savedWhileEditing)
        m_project->m_modified = false;
    m_undo.reset();
    m_project = nullptr;
    return true;
}

void CVxPageLayoutEditor::WriteStateToProject(CVxProject* target)
{
    if (target && target != m_project)
        m_backup.CopyTo(target);
}

bool CVxPageLayoutEditor::IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code)
{
    return IsSheetCommand(static_cast<int>(code));
}

bool CVxPageLayoutEditor::OnMainToolbarButtonAction(EVxMainToolbarButtonCode code)
{
    return !IsSheetCommand(static_cast<int>(code));
}

void CVxPageLayoutEditor::CatchUndoStep(bool armNext)
{
    IVxSpecialEditor::CatchUndoStep(armNext);
    m_saved = false;
}
