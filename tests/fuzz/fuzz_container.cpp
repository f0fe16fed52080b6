// Feeds arbitrary bytes as a compressed container to the entry unpacker, from
// a file, into an unpack folder that is emptied on every run. Whatever the
// entries say, nothing may appear beside the unpack folder.

#include "CVxCompressedFileReader.h"
#include "CVxIniFileReader.h"

#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdlib>

CVxStringW VxFuzzTempFolder();

namespace {

void UnpackAll(const CVxStringW& path, const CVxStringW& folder, unsigned flags)
{
    CVxIniFileReader reader(path, 0);
    reader.SetFlags(flags);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        CVxCompressedFileReader entry(folder, CVxStringW(L".pvp"));
        reader.ReadSection(reader.GetSectionName() == "File" ? &entry : nullptr);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const CVxStringW root = VxFuzzTempFolder() + L"container/";
    const CVxStringW unpack = root + L"unpack/";
    QDir(root.ToQString()).removeRecursively();
    QDir().mkpath(unpack.ToQString());
    const CVxStringW path = root + L"input.pvp";
    QFile file(path.ToQString());
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    UnpackAll(path, unpack, 0);
    UnpackAll(path, unpack, CVxIniFileReader::VX_READ_UNPACK_MAIN_FILE_ONLY);

    const QStringList beside =
        QDir(root.ToQString()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    if (beside != QStringList({"input.pvp", "unpack"}))
        abort();
    const QStringList inside =
        QDir(unpack.ToQString()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    if (!inside.isEmpty())
        abort();
    return 0;
}
