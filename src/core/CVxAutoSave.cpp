#include "CVxAutoSave.h"

#include "CVxAppCore.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QDateTime>
#include <QImage>

#include <cmath>
#include <list>

namespace {
constexpr int thumbnailSize = 256;
}

CVxAutoSave* VX_GetAutoSave()
{
    static CVxAutoSave autoSave(VX_GetCore());
    return &autoSave;
}

void CVxAutoSave::OnAutoSaveTimer(int64_t& lastSaveTick)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || m_core->IsAppExiting())
        return;
    if (!m_core->GetProject().IsModified())
        return;
    const int interval = VX_GetOptions()->m_autoSaveInterval;
    if (interval < 0)
        return;
    if (host->GetTickCount() - lastSaveTick >= int64_t(interval) * 60000)
        SaveProjectToAutoSaveFile(lastSaveTick);
}

bool CVxAutoSave::SaveProjectToAutoSaveFile(int64_t& lastSaveTick)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return false;
    // With an editor open the file gets what the editor would give back,
    // so that a recovery holds the objects the editor keeps aside.
    CVxProject& live = m_core->GetProject();
    CVxProject editorState;
    IVxSpecialEditor* editor = m_core->GetActiveEditor();
    const bool fromEditor = editor && editor->CanSaveProjectWhileEditing();
    if (fromEditor)
        editor->WriteStateToProject(&editorState);
    CVxProject& project = fromEditor ? editorState : live;
    const bool wasModified = live.IsModified();
    const CVxStringW target = CVxUtils::GetAutoSaveFile();
    const CVxStringW temporary = target + L".new";
    VxTrace("AutoSave - saving to %s\n", VX_StringToUTF8(target).c_str());
    std::list<CVxMissingFileInfo> missing;
    const bool saved = !target.IsEmpty() && project.SaveToFile(temporary, true, &missing) &&
                       host->FileRename(temporary, target);
    CVxOptions* options = VX_GetOptions();
    CVxLocalize* loc = VX_GetLoc();
    if (saved) {
        SaveThumbnail(target);
        host->SetMainViewStatusMessage(loc->LocalizeMessage(107, L"Autosave: The project was saved."));
        options->m_autoSaveFileRevision = CVxStringW();
        options->m_autoSaveFileWasModified = wasModified;
        VxTrace("AutoSave - saved\n");
    } else {
        host->FileDelete(temporary);
        VxTrace("AutoSave - saving failed\n");
        host->MsgBox(
            L"Automatic project saving failed. Please be careful when saving your current project and "
            L"save it to different file. Also please contact the Plaveno support.",
            loc->LocalizeMessage(33, L"Warning"), unsigned(VX_MB_OK) | unsigned(VX_MB_ICON_WARNING));
    }
    live.m_modified = wasModified;
    lastSaveTick = host->GetTickCount();
    return saved;
}

void CVxAutoSave::SaveThumbnail(const CVxStringW& file)
{
    // The recovery question shows it, so the user sees which work comes back.
    const double width = m_core->GetProject().GetTotalWidth();
    const double height = m_core->GetProject().GetTotalHeight();
    if (width <= 0 || height <= 0)
        return;
    const int w = width >= height ? thumbnailSize : int(std::lround(thumbnailSize * width / height));
    const int h = width >= height ? int(std::lround(thumbnailSize * height / width)) : thumbnailSize;
    CVxQtDC dc(std::max(w, 1), std::max(h, 1), true);
    dc.SelectPen(CVxDC::penNull, 0, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
    dc.Rectangle(0, 0, w + 1, h + 1);
    dc.SelectOldBrush();
    dc.SelectOldPen();
    if (m_core->DrawProjectThumb(&dc, m_core->GetProject(), w, h, false, nullptr))
        dc.GetImage()->save(GetThumbnailFile(file).ToQString(), "PNG");
}

CVxStringW CVxAutoSave::GetThumbnailFile(const CVxStringW& autoSaveFile)
{
    return autoSaveFile + L".png";
}

void CVxAutoSave::DeleteAutoSaveFile()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    const CVxStringW file = CVxUtils::GetAutoSaveFile();
    host->FileDelete(file);
    host->FileDelete(file + L".new");
    host->FileDelete(GetThumbnailFile(file));
}

bool CVxAutoSave::CheckForAutoSave(bool atStart, const Opener& open)
{
    const CVxStringW file = CVxUtils::InitAndGetAutoSaveCrashFile();
    if (file.IsEmpty())
        return false;
    return AskAndRecover(file, atStart, open);
}

bool CVxAutoSave::AskAndRecover(const CVxStringW& file, bool atStart, const Opener& open)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || file.IsEmpty())
        return false;
    CVxOptions* options = VX_GetOptions();
    options->m_lastTimeCheckForCrash = QDateTime::currentSecsSinceEpoch();
    host->HideSplashScreen();
    const int answer = host->MsgBox(
        VX_GetLoc()->LocalizeMessage(106, L"Automatically saved project was found. Do you want to load it?"),
        L"Plaveno", unsigned(VX_MB_YES) | unsigned(VX_MB_NO) | unsigned(VX_MB_ICON_WARNING), nullptr,
        VX_MB_YES);
    if (answer != VX_MBR_YES)
        return false;
    // A crash while loading the file would otherwise repeat at every start.
    options->m_crashWhileAppStart = true;
    options->SaveToRegistry();
    const bool opened = open ? open(file, atStart) : LoadRecoveredProject(file);
    options->m_crashWhileAppStart = false;
    options->SaveToRegistry();
    if (!opened)
        return false;
    // The user saves the recovered work under a name of their own.
    m_core->SetProjectPath(CVxStringW());
    m_core->GetProject().m_modified = true;
    return true;
}

bool CVxAutoSave::LoadRecoveredProject(const CVxStringW& file)
{
    VxTrace("Opening project file %s\n", VX_StringToUTF8(file).c_str());
    // Read beside the open project: an auto-save file cut short by a crash
    // is refused or taken only when the user agrees.
    CVxProject recovered;
    const CVxAppCore::EVxLoadOutcome outcome = CVxAppCore::LoadProjectForUser(file, &recovered, nullptr);
    if (outcome != CVxAppCore::VX_LOAD_OK && outcome != CVxAppCore::VX_LOAD_DAMAGED) {
        recovered.RemoveTempFiles();
        return false;
    }
    CVxProject& project = m_core->GetProject();
    project.RemoveTempFiles();
    recovered.CopyTo(&project);
    project.RebuildAllFloorsWalls();
    m_core->UpdateFloorPlan();
    project.ResnapAllParts();
    m_core->SetZoom(project.m_baseZoom);
    return true;
}
