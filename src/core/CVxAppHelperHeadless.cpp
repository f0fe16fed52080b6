#include "CVxAppHelperHeadless.h"

#include "CVxAppCore.h"
#include "CVxQtDC.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QStandardPaths>
#include <QStringList>
#include <QThread>
#include <QUuid>

#include <cstdlib>

namespace {

CVxStringW WithSlash(const QString& folder)
{
    CVxStringW path(folder);
    if (!path.IsEmpty() && !path.EndsWith(CVxStringW(L"/")))
        path += L'/';
    return path;
}

// The state of one listing: the names that matched, and where we are.
struct SVxListing
{
    QString folder;
    QStringList names;
    int next = 0;
};

bool FillRecord(SVxSearchRec* rec)
{
    auto* listing = static_cast<SVxListing*>(rec->handle);
    if (!listing || listing->next >= listing->names.size())
        return false;
    const QString name = listing->names.at(listing->next++);
    const QFileInfo info(QDir(listing->folder).filePath(name));
    rec->name = CVxStringW(name);
    rec->fullPath = CVxStringW(info.filePath());
    rec->isFolder = info.isDir();
    rec->size = info.size();
    rec->modified = info.lastModified().toSecsSinceEpoch();
    return true;
}

} // namespace

CVxAppHelperHeadless::CVxAppHelperHeadless(const CVxStringW& appDataFolder, const CVxStringW& docsFolder)
    : m_appDataFolder(appDataFolder), m_docsFolder(docsFolder)
{
    m_clock.start();
}

int64_t CVxAppHelperHeadless::GetTickCount()
{
    // Monotonic milliseconds, so that intervals such as the auto-save's work.
    return m_clock.elapsed();
}

void CVxAppHelperHeadless::Sleep(unsigned ms)
{
    QThread::msleep(ms);
}

bool CVxAppHelperHeadless::SwapColorEndians(unsigned char* r, unsigned char* /*g*/, unsigned char* b)
{
    if (r && b) {
        unsigned char t = *r;
        *r = *b;
        *b = t;
    }
    return true;
}

CVxStringW CVxAppHelperHeadless::GenerateUuid()
{
    return CVxStringW(QUuid::createUuid().toString(QUuid::WithBraces));
}

CVxStringA CVxAppHelperHeadless::GetFileSystemRepresentation(const CVxStringW& path)
{
    return CVxStringA(path.ToQString().toUtf8().toStdString());
}

CVxStringW CVxAppHelperHeadless::GetStringFromFileSystemRepresentation(const CVxStringA& path)
{
    return CVxStringW(QString::fromUtf8(path.c_str(), path.GetLength()));
}

FILE* CVxAppHelperHeadless::OpenFile(const CVxStringW& path, EVxOpenFileMode mode)
{
    if (path.IsEmpty())
        return nullptr;
    return fopen(GetFileSystemRepresentation(path).c_str(), mode == VX_OPEN_WRITE ? "wb" : "rb");
}

bool CVxAppHelperHeadless::FileExists(const CVxStringW& path)
{
    const QFileInfo info(path.ToQString());
    return !path.IsEmpty() && info.exists() && !info.isDir();
}

bool CVxAppHelperHeadless::FolderExists(const CVxStringW& path)
{
    return !path.IsEmpty() && QFileInfo(path.ToQString()).isDir();
}

bool CVxAppHelperHeadless::CreateFolder(const CVxStringW& path)
{
    return !path.IsEmpty() && QDir().mkpath(path.ToQString());
}

bool CVxAppHelperHeadless::DeleteDirectory(const CVxStringW& path)
{
    if (path.IsEmpty())
        return false;
    QDir dir(path.ToQString());
    return !dir.exists() || dir.removeRecursively();
}

bool CVxAppHelperHeadless::FileCopy(const CVxStringW& from, const CVxStringW& to)
{
    if (from.IsEmpty() || to.IsEmpty())
        return false;
    QFile::remove(to.ToQString());
    return QFile::copy(from.ToQString(), to.ToQString());
}

bool CVxAppHelperHeadless::FileRename(const CVxStringW& from, const CVxStringW& to)
{
    if (from.IsEmpty() || to.IsEmpty())
        return false;
    // rename(2) replaces the target in one step, so a reader never sees a gap.
    return ::rename(GetFileSystemRepresentation(from).c_str(), GetFileSystemRepresentation(to).c_str()) == 0;
}

bool CVxAppHelperHeadless::FileDelete(const CVxStringW& path)
{
    return !path.IsEmpty() && QFile::remove(path.ToQString());
}

int64_t CVxAppHelperHeadless::GetFileDate(const CVxStringW& path)
{
    const QFileInfo info(path.ToQString());
    return info.exists() ? info.lastModified().toSecsSinceEpoch() : 0;
}

int64_t CVxAppHelperHeadless::FileSize(const CVxStringW& path)
{
    const QFileInfo info(path.ToQString());
    return info.exists() ? info.size() : 0;
}

bool CVxAppHelperHeadless::FileFindFirst(const CVxStringW& mask, bool folders, SVxSearchRec* rec)
{
    if (!rec)
        return false;
    FileFindClose(rec);
    const QFileInfo maskInfo(mask.ToQString());
    auto* listing = new SVxListing;
    listing->folder = maskInfo.path();
    QDir dir(listing->folder);
    const QDir::Filters filter = folders ? (QDir::Dirs | QDir::NoDotAndDotDot) : QDir::Files;
    listing->names = dir.entryList(QStringList{maskInfo.fileName()}, filter, QDir::Name);
    rec->handle = listing;
    return FillRecord(rec);
}

bool CVxAppHelperHeadless::FileFindNext(bool /*folders*/, SVxSearchRec* rec)
{
    return rec && FillRecord(rec);
}

void CVxAppHelperHeadless::FileFindClose(SVxSearchRec* rec)
{
    if (!rec)
        return;
    delete static_cast<SVxListing*>(rec->handle);
    rec->handle = nullptr;
}

CVxStringW CVxAppHelperHeadless::GetUserAppDataPath()
{
    if (!m_appDataFolder.IsEmpty())
        return WithSlash(m_appDataFolder.ToQString());
    QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    return WithSlash(folder);
}

CVxStringW CVxAppHelperHeadless::GetUserAppRoamingDataPath()
{
    return GetUserAppDataPath();
}

CVxStringW CVxAppHelperHeadless::GetUserDocsPath()
{
    if (!m_docsFolder.IsEmpty())
        return WithSlash(m_docsFolder.ToQString());
    return WithSlash(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) + L"Plaveno/";
}

CVxStringW CVxAppHelperHeadless::SysGetUserName()
{
    QString name = qEnvironmentVariable("USER");
    if (name.isEmpty())
        name = qEnvironmentVariable("USERNAME");
    return CVxStringW(name);
}

CVxStringW CVxAppHelperHeadless::SysGetCurrentTime(const CVxStringW& format)
{
    const QDateTime now = QDateTime::currentDateTime();
    if (format == L"ddddd")
        return CVxStringW(now.toString(QStringLiteral("yyyy-MM-dd")));
    if (format == L"t" || format == L"h:mm" || format == L"hh:mm")
        return CVxStringW(now.toString(QStringLiteral("h:mm")));
    return CVxStringW();
}

bool CVxAppHelperHeadless::SaveProjectThumbnailImageToFile(CVxProject* project, const CVxStringW& path,
                                                           int width, int height)
{
    if (!project || width < 1 || height < 1)
        return false;
    QImage image;
    bool drawn = false;
    {
        CVxQtDC dc(width, height, true);
        drawn = VX_GetCore()->DrawProjectThumbOnWhite(&dc, *project, width, height);
        image = dc.GetImage()->convertToFormat(QImage::Format_RGB32);
    }
    return drawn && image.save(path.ToQString(), "PNG");
}
