// Loads arbitrary bytes as a project file, plain or compressed, the way the
// program opens a file the user picked. The project's unpack folder is
// removed after each run, and nothing else may remain among the unpacked
// projects.

#include "CVxProject.h"
#include "IVxAppHelperCallback.h"

#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdlib>
#include <list>

CVxStringW VxFuzzTempFolder();

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const CVxStringW folder = VxFuzzTempFolder() + L"projects/";
    QDir(folder.ToQString()).removeRecursively();
    QDir().mkpath(folder.ToQString());
    const CVxStringW path = folder + L"input.pvp";
    QFile file(path.ToQString());
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    {
        CVxProject project;
        std::list<CVxMissingFileInfo> missing;
        project.LoadFromFile(path, &missing, nullptr, false, 0);
        project.RemoveTempFiles();
    }
    const CVxStringW unpacked = VX_GetAppHelper()->GetUserAppDataPath() + L"ProjUnpack/";
    if (!QDir(unpacked.ToQString())
             .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)
             .isEmpty())
        abort();
    if (QDir(folder.ToQString()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden) !=
        QStringList({"input.pvp"}))
        abort();
    return 0;
}
