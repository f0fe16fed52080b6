// The auto-save file of this run and the one a crashed run left behind.

#include "CVxUtils.h"

#include "IVxAppHelperCallback.h"

#include <QCoreApplication>

#include <vector>

namespace {
CVxStringW g_autoSaveFile;

CVxStringW AutoSaveName(const CVxStringW& folder, int64_t number)
{
    return folder + L"PVSave" + CVxStringW(QString::number(number)) + L".pvp";
}
} // namespace

CVxStringW CVxUtils::GetAutoSaveFile()
{
    if (!g_autoSaveFile.IsEmpty())
        return g_autoSaveFile;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return CVxStringW();
    const CVxStringW folder = host->GetUserAppDataPath();
    // The process id keeps instances that run side by side apart before
    // either has written its file.
    int64_t number = QCoreApplication::applicationPid();
    while (host->FileExists(AutoSaveName(folder, number)) ||
           host->FileExists(AutoSaveName(folder, number) + L".new"))
        ++number;
    g_autoSaveFile = AutoSaveName(folder, number);
    return g_autoSaveFile;
}

void CVxUtils::ForgetAutoSaveFile()
{
    g_autoSaveFile = CVxStringW();
}

CVxStringW CVxUtils::InitAndGetAutoSaveCrashFile()
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || AnotherInstanceRunning())
        return CVxStringW();
    const CVxStringW own = GetAutoSaveFile();
    const CVxStringW folder = host->GetUserAppDataPath();
    std::vector<SVxSearchRec> found;
    SVxSearchRec rec;
    for (bool more = host->FileFindFirst(folder + L"PVSave*.pvp", false, &rec); more;
         more = host->FileFindNext(false, &rec))
        if (!rec.isFolder)
            found.push_back(rec);
    host->FileFindClose(&rec);
    // The newest file is the last state of the crashed run; older ones are
    // from crashes the user has already been asked about.
    const SVxSearchRec* newest = nullptr;
    for (const SVxSearchRec& file : found)
        if (!newest || file.modified > newest->modified)
            newest = &file;
    if (!newest)
        return CVxStringW();
    const CVxStringW crashed = folder + newest->name;
    for (const SVxSearchRec& file : found) {
        const CVxStringW path = folder + file.name;
        if (&file == newest || path == own)
            continue;
        host->FileDelete(path);
        host->FileDelete(path + L".png");
    }
    // The file becomes this run's own, so that a normal exit removes it and
    // opening it is recognised as a recovery.
    if (crashed != own) {
        host->FileDelete(own);
        if (!host->FileRename(crashed, own))
            return crashed;
        host->FileDelete(own + L".png");
        host->FileRename(crashed + L".png", own + L".png");
    }
    return own;
}
