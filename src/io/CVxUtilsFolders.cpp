// The user's folders of the program and the instances that share them.

#include "CVxUtils.h"

#include "IVxAppHelperCallback.h"

#include <QLockFile>
#include <QString>

#include <memory>

namespace {
bool g_runFromAnotherInstance = false;
std::unique_ptr<QLockFile> g_instanceLock;
bool g_lockHeldElsewhere = false;
} // namespace

CVxStringW CVxUtils::GetProjectsTempPath()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return CVxStringW();
    const CVxStringW folder = host->GetUserAppDataPath() + L"ProjUnpack/";
    if (!host->FolderExists(folder))
        host->CreateFolder(folder);
    return folder;
}

void CVxUtils::DeleteUserAppDataProjects()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || AnotherInstanceRunning())
        return;
    const CVxStringW root = GetProjectsTempPath();
    if (root.IsEmpty())
        return;
    SVxSearchRec rec;
    std::vector<CVxStringW> folders;
    for (bool found = host->FileFindFirst(root + L"*", true, &rec); found;
         found = host->FileFindNext(true, &rec))
        folders.push_back(root + rec.name + L"/");
    host->FileFindClose(&rec);
    for (const CVxStringW& folder : folders) {
        host->DeleteDirectory(folder + L"tmp");
        host->DeleteDirectory(folder);
    }
}

void CVxUtils::SetRunFromAnotherInstance(bool fromAnother)
{
    g_runFromAnotherInstance = fromAnother;
}

bool CVxUtils::AcquireInstanceLock()
{
    if (g_instanceLock)
        return !g_lockHeldElsewhere;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return false;
    const CVxStringW folder = host->GetUserAppDataPath();
    host->CreateFolder(folder);
    g_instanceLock = std::make_unique<QLockFile>((folder + L"instance.lock").ToQString());
    // A lock whose process has died is taken over; a live one never ages.
    g_instanceLock->setStaleLockTime(0);
    g_lockHeldElsewhere = !g_instanceLock->tryLock(0);
    return !g_lockHeldElsewhere;
}

void CVxUtils::ReleaseInstanceLock()
{
    g_instanceLock.reset();
    g_lockHeldElsewhere = false;
}

bool CVxUtils::AnotherInstanceRunning()
{
    return g_runFromAnotherInstance || g_lockHeldElsewhere;
}
