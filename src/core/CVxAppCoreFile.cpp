// The project as a document: new, open, save, revert, the recent list and
// the watch over the open file.

#include "CVxAppCore.h"

#include "CVxWallEditor.h"

#include "CVxAutoSave.h"

#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxProjectFileCheck.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxSafeSave.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

const wchar_t* const kSampleMacro = L"$SAMPLE$";
const wchar_t* const kDocsMacro = L"$DOCS$/";
constexpr int kRecentCount = 4;
// A container smaller than this holds no project; a full disk leaves such
// stubs.
constexpr int64_t kMinProjectFileSize = 20;

CVxStringW Msg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(row, english);
}

CVxStringW ProjectFileFilter()
{
    return Msg(18, L"Plaveno projects") + L" (*.pvp)";
}

CVxStringA Utf8(const CVxStringW& text)
{
    return VX_StringToUTF8(text);
}

CVxStringW NativePath(const CVxStringW& path)
{
    return CVxStringW(QDir::toNativeSeparators(path.ToQString()));
}

} // namespace

CVxStringW CVxAppCore::GetSamplesFolder() const
{
    return m_appFolder + L"samples";
}

bool CVxAppCore::IsInSamplesFolder(const CVxStringW& path) const
{
    const CVxStringW folder = GetSamplesFolder() + L"/";
    return !m_appFolder.IsEmpty() && path.GetLength() > folder.GetLength() && path.StartsWith(folder);
}

bool CVxAppCore::IsAutoSaveFile(const CVxStringW& path)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return false;
    const CVxStringW folder = host->GetUserAppDataPath();
    if (folder.IsEmpty() || !path.ExtractFileFolder().IsEqualNoCase(folder))
        return false;
    const CVxStringW title = path.ExtractFileTitle();
    return title.Left(6).IsEqualNoCase(CVxStringW(L"PVSave")) && path.ExtractFileExt().IsEqualNoCase(L".pvp");
}

CVxStringW CVxAppCore::ExpandPathMacros(const CVxStringW& path) const
{
    const CVxStringW sample(kSampleMacro);
    if (path.StartsWith(sample))
        return GetSamplesFolder() + path.Mid(sample.GetLength());
    const CVxStringW docs(kDocsMacro);
    if (path.StartsWith(docs)) {
        IVxAppHelperCallback* host = VX_GetAppHelper();
        return (host ? host->GetUserDocsPath() : CVxStringW()) + path.Mid(docs.GetLength());
    }
    return path;
}

void CVxAppCore::AddToRecentFiles(const CVxStringW& path)
{
    if (path.IsEmpty())
        return;
    CVxStringW entry = path;
    if (IsInSamplesFolder(path))
        entry = CVxStringW(kSampleMacro) + path.Mid(GetSamplesFolder().GetLength());
    CVxStringW* recent = VX_GetOptions()->m_recent;
    int found = kRecentCount - 1;
    for (int i = 0; i < kRecentCount; ++i) {
        if (recent[i].IsEqualNoCase(entry)) {
            if (i == 0)
                return;
            found = i;
            break;
        }
    }
    for (int i = found; i > 0; --i)
        recent[i] = recent[i - 1];
    recent[0] = entry;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->BuildRecentMenu();
}

CVxStringW CVxAppCore::GetRecentFile(int index) const
{
    if (index < 0 || index >= kRecentCount)
        return CVxStringW();
    return ExpandPathMacros(VX_GetOptions()->m_recent[index]);
}

void CVxAppCore::RemoveRecentFile(int index)
{
    if (index < 0 || index >= kRecentCount)
        return;
    CVxStringW* recent = VX_GetOptions()->m_recent;
    for (int i = index; i < kRecentCount - 1; ++i)
        recent[i] = recent[i + 1];
    recent[kRecentCount - 1].Empty();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->BuildRecentMenu();
    CVxAutoSave::DeleteAutoSaveFile();
}

bool CVxAppCore::ShouldEnableSaveProject() const
{
    return m_project.IsModified() || m_projectPath.IsEmpty();
}

bool CVxAppCore::AskToSaveModifiedProject()
{
    if (!m_project.IsModified())
        return true;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return false;
    const int answer = host->MsgBox(
        Msg(5, L"The project was changed but it is not saved in the file.\nDo you want to save it?"),
        Msg(33, L"Warning"), VX_MB_SAVE | VX_MB_NO | VX_MB_CANCEL | VX_MB_ICON_QUESTION, nullptr,
        VX_MB_CANCEL);
    if (answer == VX_MBR_YES)
        return DoProjectSave();
    return answer == VX_MBR_NO;
}

bool CVxAppCore::OpenFile(const CVxStringW& requested, bool atStart)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return false;
    CVxStringW ext = requested.ExtractFileExt();
    ext.LowerCase();
    if (!ext.IsEmpty() && ext != L".mst" && ext != L".pvp" && ext != L".pvo")
        return false;
    if (!AskToSaveModifiedProject())
        return false;

    CVxStringW path = ExpandPathMacros(requested);
    if (path.IsEmpty()) {
        path = host->GetOpenProjectFileName(Msg(21, L"Open saved project"), ProjectFileFilter(),
                                            VX_GetOptions()->m_lastOpenFolder);
        if (path.IsEmpty())
            return false;
    }
    if (!host->FileExists(path)) {
        host->HideSplashScreen();
        host->MsgBox(Msg(27, L"The file doesn't exist or you don't have the permission to read it.") + L"\n" +
                         path,
                     Msg(34, L"Error"), VX_MB_ICON_CRITICAL);
        return false;
    }

    host->SetMainViewPaintable(false);
    if (!OpenMainProject(path, atStart)) {
        // The project stayed as it was, so it may be drawn again. The
        // loader told the user why, unless the user declined.
        host->SetMainViewPaintable(true);
        return false;
    }
    // Adding an opened object file to the user library waits for the library.
    if (m_project.GetFloor()->m_layers.GetLayerCount() > 1)
        host->ShowLayersWindow();
    if (!m_missingFiles.empty())
        host->ShowMissingFilesDlgLater();
    return true;
}

bool CVxAppCore::OpenRecentFile(int index)
{
    // An entry that didn't open is dropped, even when the user cancelled.
    if (OpenFile(GetRecentFile(index), false))
        return true;
    RemoveRecentFile(index);
    return false;
}

bool CVxAppCore::OpenMainProject(const CVxStringW& path, bool atStart)
{
    VxTrace("Opening project file %s\n", Utf8(path).c_str());
    std::list<CVxMissingFileInfo> missing;
    // Read beside the open project, which a damaged file must not spoil.
    CVxProject loaded;
    const EVxLoadOutcome outcome = LoadProjectForUser(path, &loaded, &missing);
    if (outcome != VX_LOAD_OK && outcome != VX_LOAD_DAMAGED) {
        loaded.RemoveTempFiles();
        return false;
    }
    m_project.RemoveTempFiles();
    loaded.CopyTo(&m_project);
    VxTrace("Opening project file done loading\n");
    m_project.RebuildAllFloorsWalls();
    UpdateFloorPlan();
    m_project.ResnapAllParts();
    if (!missing.empty())
        LibCheckFillMissingProjectFiles(&missing);
    m_missingFiles.assign(missing.begin(), missing.end());

    m_fileMonitor.StopMonitoring();
    if (outcome == VX_LOAD_DAMAGED) {
        // Untitled, so that saving asks for a name and never replaces the
        // damaged original; modified, so that closing asks first.
        m_projectPath.Empty();
        m_project.m_modified = true;
    } else if (IsAutoSaveFile(path)) {
        m_projectPath.Empty();
    } else if (IsInSamplesFolder(path)) {
        // A sample opens unnamed, so that saving can't overwrite it.
        AddToRecentFiles(path);
        m_projectPath.Empty();
    } else {
        m_projectPath = path;
        AddToRecentFiles(path);
        VX_GetOptions()->m_lastOpenFolder = path.ExtractFileFolder();
        m_fileMonitor.StartMonitoring(path);
    }

    m_undo->Reinitialize(nullptr);
    m_undoArmed = true;
    m_zoom = m_project.m_baseZoom;
    m_firstSelected = -1;
    m_clipProjectId.Empty();
    LoadCurrentBkgFloorScan(nullptr, false);
    if (atStart)
        return true;
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->BuildLayersSubMenu(true);
        host->EnableFloorButtons();
        host->LibRebuildOnUserLibChange(true);
        RebuildRoom();
        host->EnableUndoButtons();
        host->OnPartListingChange();
        host->RefreshMainViewCaption();
        host->UpdateCommentsView();
        host->UpdateProjectUI(VX_GetOptions()->m_openInBestFit, true);
    }
    VxTrace("Opening project file done updating UI\n");
    return true;
}

CVxAppCore::EVxLoadOutcome CVxAppCore::LoadProjectForUser(const CVxStringW& path, CVxProject* project,
                                                          std::list<CVxMissingFileInfo>* missing,
                                                          void* parent)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!project)
        return VX_LOAD_REFUSED;
    auto refuse = [&](CVxProjectFileCheck::EReason reason) {
        VxTrace("Refused to open %s: %ls\n", Utf8(path).c_str(), CVxProjectFileCheck::ReasonText(reason));
        if (host) {
            host->HideSplashScreen();
            host->MsgBox(Msg(28, L"Cannot open file") + L"\n" + NativePath(path) + L"\n\n" +
                             CVxProjectFileCheck::LocalizedReason(reason),
                         Msg(34, L"Error"), VX_MB_ICON_CRITICAL, parent);
        }
        return VX_LOAD_REFUSED;
    };
    const CVxProjectFileCheck check = CVxProjectFileCheck::Check(path);
    if (check.IsRefused())
        return refuse(check.GetReason());
    if (!project->LoadFromFile(path, missing, nullptr, false, 0))
        return refuse(CVxProjectFileCheck::VX_REASON_CORRUPT);
    const bool damaged = check.IsDamaged() || project->WasDamagedOnLoad();
    if (!damaged)
        return VX_LOAD_OK;
    const CVxProjectFileCheck::EReason reason =
        check.IsDamaged() ? check.GetReason() : CVxProjectFileCheck::VX_REASON_CORRUPT;
    // A file cut within its head reads as an empty project: nothing to offer.
    if (project->HoldsNothing())
        return refuse(reason);
    if (!host)
        return VX_LOAD_DECLINED;
    host->HideSplashScreen();
    const int answer =
        host->MsgBox(Msg(909, L"The file is damaged; open what could be read?") + L"\n\n" + NativePath(path) +
                         L"\n" + CVxProjectFileCheck::LocalizedReason(reason),
                     Msg(33, L"Warning"), VX_MB_YES | VX_MB_NO | VX_MB_ICON_WARNING, parent, VX_MB_YES);
    VxTrace("Damaged file %s: %ls, %s\n", Utf8(path).c_str(), CVxProjectFileCheck::ReasonText(reason),
            answer == VX_MBR_YES ? "opened" : "declined");
    return answer == VX_MBR_YES ? VX_LOAD_DAMAGED : VX_LOAD_DECLINED;
}

void CVxAppCore::LibCheckFillMissingProjectFiles(std::list<CVxMissingFileInfo>* missing)
{
    if (!missing)
        return;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    static const wchar_t* const skyboxNames[] = {L"skybox-left.png", L"skybox-right.png", L"skybox-front.png",
                                                 L"skybox-back.png", L"skybox-top.png"};
    for (CVxMissingFileInfo& info : *missing) {
        const CVxStringW name = info.filePath.FromWinPath().ExtractFileTitle();
        // The texture and user libraries will be asked here once they exist;
        // for now only the program's own sky pictures are proposed.
        for (const wchar_t* skybox : skyboxNames) {
            if (!name.IsEqualNoCase(CVxStringW(skybox)))
                continue;
            const CVxStringW candidate = m_appFolder + L"textures/" + name;
            if (host && host->FileExists(candidate)) {
                info.replacementPath = candidate;
                info.resolution = CVxMissingFileInfo::VX_MISSING_REPLACE;
            }
        }
    }
}

bool CVxAppCore::SaveMainProjectToFile(const CVxStringW& path)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || path.IsEmpty())
        return false;
    // While an editor is open the file gets what the editor would give back
    // on accepting, so that a save in the wall editor holds the full project.
    std::unique_ptr<CVxProject> editorState;
    if (m_activeEditor && m_activeEditor->CanSaveProjectWhileEditing()) {
        editorState = std::make_unique<CVxProject>();
        m_activeEditor->WriteStateToProject(editorState.get());
        m_activeEditor->SetProjectSaved(true);
    }
    CVxProject& project = editorState ? *editorState : m_project;

    VxTrace("Generating thumbnail for project file\n");
    project.VerifyStoragePathExists();
    const CVxStringW thumbnail = project.m_storagePath + L"vx_projt.png";
    const double w = project.GetTotalWidth();
    const double h = project.GetTotalHeight();
    if (w > 0 && h > 0) {
        int width = thumbnailSize;
        int height = thumbnailSize;
        if (w > h)
            height = std::max(1, static_cast<int>(std::lround(thumbnailSize * h / w)));
        else
            width = std::max(1, static_cast<int>(std::lround(thumbnailSize * w / h)));
        if (host->SaveProjectThumbnailImageToFile(&project, thumbnail, width, height))
            project.m_thumbnailPath = thumbnail;
    }

    VxTrace("Saving project file %s\n", Utf8(path).c_str());
    const CVxStringW temporary =
        CVxUtils::GetUniqueFileName(host->GetUserAppDataPath() + L"saving" + path.ExtractFileExt());
    std::list<CVxMissingFileInfo> missing(m_missingFiles.begin(), m_missingFiles.end());
    const bool wasModified = project.m_modified;
    const bool written = project.SaveToFile(temporary, true, &missing);
    // Until the file itself holds the project, the project counts as unsaved.
    project.m_modified = wasModified;
    // Only a complete project may replace the file; the copy goes to a
    // temporary beside the target and is renamed over it in one step.
    if (written && host->FileSize(temporary) >= kMinProjectFileSize) {
        const CVxStringW beside = VX_SafeSaveTempPath(path);
        const bool copied = host->FileCopy(temporary, beside);
        host->FileDelete(temporary);
        if (copied && VX_SafeSaveCommit(beside, path)) {
            VxTrace("Saving project file done\n");
            return true;
        }
        VX_SafeSaveAbandon(beside);
        VxTrace("Saving project file failed\n");
        return false;
    }
    VxTrace("Saving project file failed\n");
    host->FileDelete(temporary);
    return false;
}

bool CVxAppCore::SaveMainProject()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    // The program's own write must not look like another program's.
    m_fileMonitor.StopMonitoring();
    if (!SaveMainProjectToFile(m_projectPath)) {
        if (host)
            host->MsgBox(Msg(90, L"Saving of project failed. Try selecting another file or folder."),
                         Msg(34, L"Error"), VX_MB_ICON_CRITICAL);
        m_fileMonitor.StartMonitoring(m_projectPath);
        return false;
    }
    m_project.m_modified = false;
    // Every kept state now differs from the file.
    m_undo->SetModifiedFlagToAllRooms();
    if (host) {
        host->RefreshMainViewCaption();
        host->EnableUndoButtons();
    }
    AddToRecentFiles(m_projectPath);
    m_fileMonitor.StartMonitoring(m_projectPath);
    return true;
}

bool CVxAppCore::DoProjectSave()
{
    if (m_projectPath.IsEmpty())
        return DoProjectSaveAs();
    // A failed save is reported, so that closing or opening another project
    // stops before the unsaved work is lost; the auto-save file stays then.
    if (!SaveMainProject())
        return false;
    CVxAutoSave::DeleteAutoSaveFile();
    return true;
}

bool CVxAppCore::DoProjectSaveAs()
{
    const CVxStringW path = AskProjectSaveFileName();
    if (path.IsEmpty())
        return false;
    // The project keeps its old name until a file of the new one exists.
    const CVxStringW previous = m_projectPath;
    m_projectPath = path;
    if (!SaveMainProject()) {
        m_projectPath = previous;
        m_fileMonitor.StartMonitoring(previous);
        return false;
    }
    VX_GetOptions()->m_lastOpenFolder = path.ExtractFileFolder();
    CVxAutoSave::DeleteAutoSaveFile();
    return true;
}

CVxStringW CVxAppCore::AskProjectSaveFileName()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return CVxStringW();
    CVxStringW suggested = m_projectPath;
    if (suggested.IsEmpty()) {
        CVxStringW project = VX_GetLoc()->LocalizeDlgString(
            VX_GetLoc()->GetTableIndex(CVxLocalize::TBL_MAINMENU), 1, L"&Project");
        project = project.ReplaceAll(CVxStringW(L"&"), CVxStringW());
        suggested = VX_GetOptions()->m_lastOpenFolder + project + L".pvp";
    }
    CVxStringW path =
        host->GetSaveProjectFileName(Msg(22, L"Save project into the file"), ProjectFileFilter(), suggested);
    if (!path.IsEmpty() && path.ExtractFileExt().IsEmpty())
        path += L".pvp";
    return path;
}

bool CVxAppCore::ResolveMissingFiles(const std::vector<CVxMissingFileInfo>& decided, const CVxStringW& path)
{
    if (path.IsEmpty())
        return false;
    const CVxStringW previous = m_projectPath;
    m_missingFiles = decided;
    m_projectPath = path;
    // The writer drops or replaces the references as decided; what the
    // file then holds is loaded again, so the project shows the result.
    if (!SaveMainProject()) {
        m_projectPath = previous;
        m_fileMonitor.StartMonitoring(previous);
        return false;
    }
    return OpenMainProject(path, false);
}

bool CVxAppCore::LoadProjectForMerge(const CVxStringW& path, const CVxProject& current, CVxProject* second,
                                     void* parent)
{
    const EVxLoadOutcome outcome = LoadProjectForUser(path, second, nullptr, parent);
    if (outcome != VX_LOAD_OK && outcome != VX_LOAD_DAMAGED)
        return false;
    second->RebuildAllFloorsWalls();
    if (second->m_unit != current.m_unit && CVxUnits::IsValid(second->m_unit) &&
        CVxUnits::IsValid(current.m_unit)) {
        const double factor = CVxUnits::dUnitCal[second->m_unit] / CVxUnits::dUnitCal[current.m_unit];
        second->ScaleAllObjects(factor, factor, factor, false, true);
        second->m_unit = current.m_unit;
    }
    return true;
}

void CVxAppCore::MergeProjects(CVxProject* merged, CVxProject* second, const CVxDPoint& shift,
                               const CVxDPoint& secondShift, bool createNewFloor)
{
    if (!merged || !second)
        return;
    merged->MergeProject(second, shift, secondShift, createNewFloor);
    CatchUndoRoom(true);
    merged->CopyTo(&m_project);
    // The files that the merged objects refer to stay in the second
    // project's unpack folder until the project is saved, so it is reset
    // without removing them.
    second->Reset();
    m_project.m_modified = true;
    UpdateFloorPlan();
    m_project.ResnapAllParts();
    m_firstSelected = -1;
    m_clipProjectId.Empty();
    ResetBkgFloorScanPart();
    RebuildRoom();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    if (m_project.GetFloor()->m_layers.GetLayerCount() > 1)
        host->ShowLayersWindow();
    host->BuildLayersSubMenu(true);
    host->EnableFloorButtons();
    host->OnPartListingChange();
    host->EnableUndoButtons();
    host->RefreshMainViewCaption();
    host->UpdateProjectUI(false, true);
}

void CVxAppCore::RevertProjectToSaved()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (m_projectPath.IsEmpty() || !host)
        return;
    if (m_project.IsModified()) {
        const int answer =
            host->MsgBox(Msg(105, L"Project was modified. Do you really want to lose all changes?"),
                         Msg(33, L"Warning"), VX_MB_YES | VX_MB_NO | VX_MB_ICON_WARNING, nullptr, VX_MB_NO);
        if (answer != VX_MBR_YES)
            return;
    }
    const bool wasModified = m_project.m_modified;
    m_project.m_modified = false;
    const CVxStringW path = m_projectPath;
    if (!OpenFile(path, false))
        m_project.m_modified = wasModified;
}

void CVxAppCore::InitProjectAsCopy(CVxProject* source)
{
    m_fileMonitor.StopMonitoring();
    m_projectPath.Empty();
    InitProject();
    if (source)
        source->CopyTo(&m_project);
    UpdateFloorPlan();
    m_project.ResnapAllParts();
    m_firstSelected = -1;
    m_clipProjectId.Empty();
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (host)
        host->OnPartListingChange();
    RebuildRoom();
    if (!host)
        return;
    host->BuildLayersSubMenu(true);
    host->EnableFloorButtons();
    host->EnableUndoButtons();
    host->UpdateProjectUI(true, true);
    host->RefreshMainViewCaption();
    host->UpdateCommentsView();
}

void CVxAppCore::StartNewProject(double width, double height, int unit, bool startWallEditor, int shape)
{
    m_fileMonitor.StopMonitoring();
    m_projectPath.Empty();
    InitProject();
    m_project.m_unit = unit;
    m_project.SetDefaultsForUnit(unit);
    m_project.m_width = width;
    m_project.m_height = height;
    CVxFloor* floor = m_project.GetFloor();
    CVxWallEditor::InitNewRoomShape(floor->m_walls, shape, width, height, floor->m_defWallThickness,
                                    floor->m_defWallHeight);
    const double space = std::round(width / 10);
    if (space > m_project.m_spaceLeft) {
        m_project.m_spaceLeft = space;
        m_project.m_spaceTop = space;
        m_project.m_spaceRight = space;
        m_project.m_spaceBottom = space;
    }
    floor->m_planDef.Clear();
    UpdateFloorPlan();
    m_project.ResnapAllParts();
    m_firstSelected = -1;
    m_clipProjectId.Empty();
    RebuildRoom();
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        host->EnableFloorButtons();
        host->RefillLayersList();
        host->UpdateProjectUI(true, true);
        host->UpdateCommentsView();
        host->RefreshMainViewCaption();
    }
    // A new project may go straight on to its walls, with the pen in hand.
    if (startWallEditor && ActivateSpecialEditor(VX_EDITOR_WALL) && m_activeEditor)
        m_activeEditor->OnMainToolbarButtonAction(VX_TB_NEW_WALL);
}

bool CVxAppCore::OnOpenedFileChangedOnDisk()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (m_projectPath.IsEmpty() || !host)
        return false;
    const CVxStringW path = m_projectPath;
    if (CVxFileChangeMonitor::GetFileHash(path).IsEmpty())
        return true;
    if (m_fileMonitor.IsMonitoringHashIdentical(path)) {
        m_fileMonitor.StartMonitoring(path);
        return false;
    }
    const int answer =
        host->MsgBox(Msg(186, L"The file has been modified on disk. Do you want to reload it?") + L"\n\n" +
                         path.ExtractFileTitle(),
                     Msg(33, L"Warning"), VX_MB_YES | VX_MB_NO | VX_MB_ICON_QUESTION, nullptr, VX_MB_YES);
    if (answer == VX_MBR_YES) {
        // The question about unsaved work was just answered; a reload that
        // fails leaves the project, its flag and the watch as they were.
        const bool wasModified = m_project.m_modified;
        m_project.m_modified = false;
        if (!OpenFile(path, false)) {
            m_project.m_modified = wasModified;
            m_fileMonitor.StartMonitoring(path);
        }
    } else {
        m_fileMonitor.StartMonitoring(path);
    }
    return false;
}
