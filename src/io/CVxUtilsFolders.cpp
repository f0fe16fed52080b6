// The user's folders of the program and the instances that share them.

#include "CVxUtils.h"

#include "IVxAppHelperCallback.h"

#include <QDir>
#include <QLockFile>
#include <QString>
#include <QStringList>

#include <cerrno>
#include <climits>
#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

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

namespace {
const char s_runFolderPrefix[] = "Plaveno-";
} // namespace

CVxStringW CVxUtils::GetRunTempFolderTemplate()
{
    return CVxStringW(QDir::tempPath() + QLatin1Char('/') + QLatin1String(s_runFolderPrefix) +
                      QString::number(::getpid()) + QStringLiteral("-XXXXXX"));
}

void CVxUtils::RemoveTempFoldersOfDeadRuns()
{
    QDir temp(QDir::tempPath());
    const QStringList names = temp.entryList(QStringList{QLatin1String(s_runFolderPrefix) + QLatin1Char('*')},
                                             QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QString& name : names) {
        // "Plaveno-<pid>-XXXXXX"; folders of another form are not ours to judge.
        const QStringList parts = name.split(QLatin1Char('-'));
        bool isNumber = false;
        const qint64 pid = parts.size() == 3 ? parts[1].toLongLong(&isNumber) : 0;
        if (!isNumber || pid <= 0 || pid > INT_MAX || pid == ::getpid())
            continue;
        if (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH)
            continue;
        const QByteArray path = temp.filePath(name).toLocal8Bit();
        struct stat info
        {
        };
        if (::lstat(path.constData(), &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != ::getuid())
            continue;
        QDir(temp.filePath(name)).removeRecursively();
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
