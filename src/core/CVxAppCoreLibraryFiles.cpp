// Library files that the user adds beside the standard catalogue.

#include "CVxAppCore.h"
#include "CVxExternalLibraries.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxUserLibrary.h"
#include "IVxAppHelperCallback.h"
#include "VxSafeSave.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// Larger than any catalogue with its pictures; a bigger file is no library.
constexpr qint64 kMaxLibraryBytes = 512LL * 1024 * 1024;

CVxStringW Msg(int number, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(number, english);
}

// A free name in the folder for the file's title.
CVxStringW FreeName(const QString& folder, const QFileInfo& source)
{
    QString name = source.fileName();
    for (int n = 2; QFileInfo::exists(folder + name) && n < 1000; ++n)
        name = source.completeBaseName() + QStringLiteral(" (%1).").arg(n) + source.suffix();
    return CVxStringW(folder + name);
}

bool CopyFileSafely(const QString& from, const CVxStringW& to)
{
    if (!VX_SafeSaveCreateTemp(to))
        return false;
    const CVxStringW temp = VX_SafeSaveTempPath(to);
    QFile in(from);
    QFile out(temp.ToQString());
    bool ok = in.open(QIODevice::ReadOnly) && out.open(QIODevice::WriteOnly | QIODevice::Truncate);
    while (ok && !in.atEnd()) {
        const QByteArray chunk = in.read(1 << 20);
        ok = !chunk.isEmpty() && out.write(chunk) == chunk.size();
    }
    out.close();
    if (!ok) {
        VX_SafeSaveAbandon(temp);
        return false;
    }
    return VX_SafeSaveCommit(temp, to);
}

} // namespace

bool CVxAppCore::LibAddAdditionalLibrary(const CVxStringW& path, CVxStringW* error)
{
    auto fail = [error](const CVxStringW& text) {
        if (error)
            *error = text;
        return false;
    };
    const QFileInfo source(path.ToQString());
    // Only a file the user can mean: no device, pipe or folder.
    if (!source.isFile() || !source.isReadable())
        return fail(Msg(1420, L"The file could not be read."));
    if (source.size() <= 0 || source.size() > kMaxLibraryBytes)
        return fail(Msg(1421, L"The file is no object library."));
    // Read on its own first: a file with no object in it is not copied.
    {
        CVxUserLibrary trial;
        if (!trial.LoadFromFile(path, CVxUserLibrary::LIB_LOAD_ADD | CVxUserLibrary::LIB_LOAD_ADDITIONAL,
                                -1) ||
            trial.GetObjectCount() == 0) {
            trial.RemoveTempFiles();
            return fail(Msg(1421, L"The file is no object library."));
        }
        trial.RemoveTempFiles();
    }
    const CVxStringW folder = CVxUserLibrary::GetAdditionalLibraryFolder();
    if (folder.IsEmpty() || !QDir().mkpath(folder.ToQString()))
        return fail(Msg(1422, L"The library could not be copied into the folder of additional libraries."));
    const CVxStringW target = FreeName(folder.ToQString(), source);
    if (!CopyFileSafely(source.absoluteFilePath(), target))
        return fail(Msg(1422, L"The library could not be copied into the folder of additional libraries."));
    CVxExternalLibraries(VX_GetOptions()).RegisterLibrary(target);
    VxTrace("Library - added %s\n", VX_StringToUTF8(target).c_str());
    LibInitObjectLibrary();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->LibRebuildOnUserLibChange(true);
    return true;
}

bool CVxAppCore::LibSetAdditionalLibraryEnabled(int index, bool enabled)
{
    CVxExternalLibraries external(VX_GetOptions());
    if (index < 0 || index >= external.GetCount())
        return false;
    external.SetEnabled(index, enabled);
    LibInitObjectLibrary();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->LibRebuildOnUserLibChange(true);
    return true;
}

bool CVxAppCore::LibRemoveAdditionalLibrary(int index)
{
    CVxExternalLibraries external(VX_GetOptions());
    if (index < 0 || index >= external.GetCount())
        return false;
    const CVxStringW path = external.GetPath(index);
    // Only the copies the program made go; a file beside the program would
    // be found again at the next start, so it is switched off instead.
    const CVxStringW folder = CVxUserLibrary::GetAdditionalLibraryFolder();
    const QFileInfo file(path.ToQString());
    if (!folder.IsEmpty() && file.absolutePath() == QDir(folder.ToQString()).absolutePath()) {
        external.Remove(index);
        QFile::remove(file.absoluteFilePath());
    } else {
        external.SetEnabled(index, false);
    }
    LibInitObjectLibrary();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->LibRebuildOnUserLibChange(true);
    return true;
}
