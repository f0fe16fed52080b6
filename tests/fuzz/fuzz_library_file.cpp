// Feeds arbitrary bytes to the object library reader as a library file of
// either form, from a private folder that is emptied on every run. What
// loads is written back, plain and compressed, and read again: both must
// give as many objects and pages as the first reading.

#include "CVxUserLibrary.h"

#include <QDir>
#include <QFile>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

CVxStringW VxFuzzTempFolder();

namespace {

// Bigger inputs only make each run slower.
constexpr size_t kMaxInput = 262144;

void ReadBack(const CVxUserLibrary& first, const CVxStringW& path, int flags)
{
    CVxUserLibrary written;
    if (!written.LoadFromFile(path, flags, -1))
        return;
    if (written.GetObjectCount() != first.GetObjectCount() ||
        written.GetPages().size() != first.GetPages().size())
        abort();
    written.RemoveTempFiles();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > kMaxInput)
        return 0;
    const CVxStringW root = VxFuzzTempFolder() + L"library/";
    QDir(root.ToQString()).removeRecursively();
    QDir().mkpath(root.ToQString());
    const CVxStringW path = root + L"input.pvl";
    QFile file(path.ToQString());
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    const int flags = CVxUserLibrary::LIB_LOAD_USER_PAGES | CVxUserLibrary::LIB_LOAD_CAPTION_FROM_TITLE;
    CVxUserLibrary library;
    if (library.LoadFromFile(path, flags, -1)) {
        for (bool compressed : {false, true}) {
            const CVxStringW out = root + (compressed ? L"packed.pvl" : L"plain.pvl");
            if (library.SaveToFile(out, -1, compressed))
                ReadBack(library, out, flags);
        }
    }
    library.RemoveTempFiles();
    // The additional and the standard reading take other paths through the
    // pages and the materials table.
    CVxUserLibrary other;
    other.LoadFromFile(path, CVxUserLibrary::LIB_LOAD_ADDITIONAL | CVxUserLibrary::LIB_LOAD_STANDARD, -1);
    other.RemoveTempFiles();
    return 0;
}
