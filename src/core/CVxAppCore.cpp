#include "CVxAppCore.h"

#include "CVxPageLayoutEditor.h"
#include "CVxWallEditor.h"

#include "CVxColorSwatchLibrary.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxPartPayload.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxNumbers.h"
#include "VxReferencedFile.h"
#include "VxTextLookup.h"
#include "VxTrace.h"
#include "VxZoomLadder.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <ctime>

CVxAppCore::CVxAppCore()
{
    // Every number in every file is a C-locale decimal.
    setlocale(LC_NUMERIC, "C");
    srand(static_cast<unsigned>(time(nullptr)));
    m_undo = std::make_unique<CVxUndoManager>(&m_project);
    m_undo->SetUndoLimit(undoLimit);
    CVxPartPayload::RegisterBuiltinClasses();
    // The layers below the core learn of the open project, the user's
    // number settings and the language tables through these.
    VX_SetActiveProject(&m_project);
    VX_SetNumberFormatSource([] {
        SVxNumberFormat format;
        const CVxProject& project = VX_GetCore()->GetProject();
        const CVxOptions* options = VX_GetOptions();
        format.unit = project.m_unit;
        format.inchesPrecision = project.m_inchesPrecision;
        format.feetAndInches = options->m_convertFeetInEdit;
        format.areaDecimals = options->m_areaLabelsDecimalPrec;
        return format;
    });
    VX_SetTextLookup(&CVxLocalize::LookupText);
}

CVxAppCore::~CVxAppCore() = default;

CVxStringW CVxAppCore::FindDataFolder(const CVxStringW& programFolder)
{
    // Beside the program in a build folder or an unpacked archive; in
    // share/plaveno when installed into a prefix.
    QString folder = programFolder.ToQString();
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    if (QFileInfo::exists(folder + QStringLiteral("Language")))
        return CVxStringW(folder);
    const QString shared = QDir::cleanPath(folder + QStringLiteral("../share/plaveno")) + QLatin1Char('/');
    if (QFileInfo::exists(shared + QStringLiteral("Language")))
        return CVxStringW(shared);
    return CVxStringW(folder);
}

void CVxAppCore::SetAppFolder(const CVxStringW& folder)
{
    m_appFolder = folder;
    if (!m_appFolder.IsEmpty() && !m_appFolder.EndsWith(CVxStringW(L"/")))
        m_appFolder += L'/';
    // The colour catalogues lie beside the program; the colour dialog reads
    // them when it first opens.
    VX_GetColorSwatchLibrary()->SetDataFolder(m_appFolder);
    // Projects may use the files that come with the program and those of
    // the user's own libraries; nothing else outside their folders.
    std::vector<CVxStringW> trusted{m_appFolder};
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        trusted.push_back(host->GetUserDocsPath());
    VX_SetTrustedDataFolders(trusted);
}

void CVxAppCore::SetAppExiting()
{
    m_appExiting = 1;
    LibRemoveTempFiles();
}

void CVxAppCore::InitProject()
{
    // The first project of a run needs the library: its objects take names
    // and heights from it. The host has read the settings and chosen the
    // language by now.
    if (!m_libraryInitialized)
        LibInitObjectLibrary();
    m_project.Reset();
    // The scan belonged to the project that goes.
    ResetBkgFloorScanPart();
    m_clipProjectId.Empty();
    const CVxOptions* options = VX_GetOptions();
    m_project.m_subUnitMoves = options->m_subUnitMoves;
    m_project.m_decimalPrecision = options->m_decimalPrecision;
    m_project.SetDefaultsForUnit(m_project.m_unit);
    // The default room is 500 by 300 centimetres whatever the unit: 5 by 3 in
    // metres.
    const double scale = 1.0 / m_project.m_baseZoom;
    m_project.ScaleAllObjects(scale, scale, scale, true, true);
    UpdateFloorPlan();
    m_zoom = m_project.m_baseZoom;
    m_missingFiles.clear();
    // A new project starts without history.
    m_undo->Reinitialize(nullptr);
    m_undoArmed = true;
}

void CVxAppCore::UpdateFloorPlan()
{
    CVxFloor* floor = m_project.GetFloor();
    floor->m_walls.RebuildWalls();
    m_floorPlan.CreatePlan(*floor, m_project.m_unit);
    UpdateAreaLabels();
}

CVxStringW CVxAppCore::GetMainWndCaption(CVxStringW& shortTitle) const
{
    CVxStringW title = L"Plaveno - ";
    shortTitle = L"Plaveno";
    // While a page layout is drawn, the window names the layout's file.
    const bool layout = m_activeEditor && m_pageLayoutEditor && m_activeEditor == m_pageLayoutEditor.get();
    if (layout)
        title += m_pageLayoutEditor->GetEditorLocalizedName() + L" ";
    title += L'[';
    if (layout) {
        title += m_pageLayoutEditor->GetFile();
    } else if (m_projectPath.IsEmpty()) {
        title += VX_GetLoc()->LocalizeMessage(8, L"untitled");
    } else {
        title += m_projectPath;
        shortTitle += L" - ";
        shortTitle += m_projectPath.ExtractFileTitle();
    }
    if (m_project.IsModified())
        title += L'*';
    title += L']';
    return title;
}

VxRECT CVxAppCore::GetSheetRect() const
{
    VxRECT rect;
    rect.left = m_viewOrigin.x;
    rect.top = m_viewOrigin.y;
    rect.right = rect.left + static_cast<int>(std::lround(m_project.GetTotalWidth() * m_zoom));
    rect.bottom = rect.top + static_cast<int>(std::lround(m_project.GetTotalHeight() * m_zoom));
    return rect;
}

void CVxAppCore::AfterTransform()
{
    m_project.m_modified = true;
    UpdateFloorPlan();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->UpdateProjectUI(VX_GetOptions()->m_openInBestFit, true);
        host->OnPartListingChange();
    }
}

void CVxAppCore::TransformConvertUnit(int from, int to)
{
    if (from < 0 || to < 0 || !CVxUnits::IsValid(from) || !CVxUnits::IsValid(to))
        return;
    CatchUndoRoom(true);
    m_project.ConvertUnit(from, to, &m_floorPlan);
    AfterTransform();
}

void CVxAppCore::TransformShift(double dx, double dy)
{
    if (dx <= -m_project.m_width)
        dx = 0;
    if (dy <= -m_project.m_height)
        dy = 0;
    CatchUndoRoom(true);
    m_project.MoveAllObjects(dx, dy, 0);
    AfterTransform();
}

void CVxAppCore::TransformScale(double factor)
{
    if (factor < 1e-7)
        return;
    CatchUndoRoom(true);
    m_project.ScaleAllObjects(factor, factor, factor, false, false);
    AfterTransform();
}

void CVxAppCore::TransformRotate(int degrees)
{
    CatchUndoRoom(true);
    m_project.RotateAllObjects(degrees);
    AfterTransform();
}

void CVxAppCore::TransformFlip(bool vertical)
{
    CatchUndoRoom(true);
    m_project.MirrorAllObjects(vertical);
    AfterTransform();
}

CVxAppCore* VX_GetCore()
{
    // The project's reset reads options and folders through the host, so the
    // host must be installed first.
    if (!VX_GetAppHelper())
        VxTrace("VX_GetCore - called before the host was installed\n");
    static CVxAppCore* core = new CVxAppCore;
    return core;
}

void CVxAppCore::RebuildRoom()
{
    m_margins[0] = static_cast<int>(m_project.m_spaceLeft * m_zoom);
    m_margins[1] = static_cast<int>(m_project.m_spaceTop * m_zoom);
    m_margins[2] = static_cast<int>(m_project.m_spaceRight * m_zoom);
    m_margins[3] = static_cast<int>(m_project.m_spaceBottom * m_zoom);
    m_project.GetFloor()->InvalidateAllObjectsCache();
    if (m_activeEditor)
        m_activeEditor->OnZoomChanged();
    const double base = m_project.m_baseZoom > 0 ? m_project.m_baseZoom : 1.0;
    double best = 10 * m_zoom;
    for (double rung : g_Zooms) {
        const double distance = std::fabs(rung * base - m_zoom);
        if (rung > 0 && distance < best) {
            best = distance;
            m_roundedZoom = rung;
        }
    }
}

bool CVxAppCore::GetNextZoom(bool in, double& newZoom) const
{
    // Compared in steps of 1e-5, so that a zoom that sits on a rung after
    // arithmetic counts as that rung.
    const double base = m_project.m_baseZoom > 0 ? m_project.m_baseZoom : 1.0;
    const long long now = std::llround(m_zoom * 100000);
    if (in) {
        for (double rung : g_Zooms) {
            if (std::llround(rung * base * 100000) > now) {
                newZoom = rung * base;
                return true;
            }
        }
    } else {
        for (int i = g_ZoomCount - 1; i >= 0; --i) {
            if (std::llround(g_Zooms[i] * base * 100000) < now) {
                newZoom = g_Zooms[i] * base;
                return true;
            }
        }
    }
    return false;
}

double CVxAppCore::ClampZoom(double zoom) const
{
    const double base = m_project.m_baseZoom > 0 ? m_project.m_baseZoom : 1.0;
    return std::clamp(zoom, g_Zooms[0] * base, g_Zooms[g_ZoomCount - 1] * base);
}
