// Names that do not collide, and whether two files hold the same bytes: what
// a project needs to keep the pictures it embeds apart.

#include "CVxUtils.h"

#include "IVxAppHelperCallback.h"

#include <zlib.h>

#include <random>

namespace {

constexpr int s_fileNameTries = 5000;
constexpr int s_fileNumbers = 10000;
constexpr int s_folderNameTries = 500;
constexpr int s_folderNumbers = 1000;
constexpr size_t s_crcPiece = 2048;

int RandomBelow(int limit)
{
    static std::mt19937 generator{std::random_device{}()};
    return std::uniform_int_distribution<int>(0, limit - 1)(generator);
}

// folder + title + "_" + number + extension.
CVxStringW NumberedName(const CVxStringW& path, int number)
{
    CVxStringW suffix;
    suffix.sprintf(L"_%d", number);
    return path.ExtractFileFolder() + path.ExtractFileTitleWithoutExt() + suffix + path.ExtractFileExt();
}

template <typename Exists>
CVxStringW UniqueName(const CVxStringW& path, int tries, int numbers, Exists exists)
{
    if (!exists(path))
        return path;
    CVxStringW candidate = path;
    for (int i = 0; i < tries; ++i) {
        candidate = NumberedName(path, RandomBelow(numbers));
        if (!exists(candidate))
            break;
    }
    return candidate;
}

} // namespace

CVxStringW CVxUtils::GetUniqueFileName(const CVxStringW& path)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || path.IsEmpty())
        return path;
    return UniqueName(path, s_fileNameTries, s_fileNumbers,
                      [host](const CVxStringW& name) { return host->FileExists(name); });
}

CVxStringW CVxUtils::GetUniqueFolderName(const CVxStringW& path)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || path.IsEmpty())
        return path;
    // A file of that name blocks a folder as much as a folder does.
    return UniqueName(path, s_folderNameTries, s_folderNumbers, [host](const CVxStringW& name) {
        return host->FolderExists(name) || host->FileExists(name);
    });
}

uint32_t CVxUtils::CalcCRC(FILE* file)
{
    uLong crc = crc32(0L, Z_NULL, 0);
    if (!file || fseeko(file, 0, SEEK_SET) != 0)
        return static_cast<uint32_t>(crc);
    unsigned char piece[s_crcPiece];
    size_t count = 0;
    while ((count = fread(piece, 1, sizeof(piece), file)) > 0)
        crc = crc32(crc, piece, static_cast<uInt>(count));
    return static_cast<uint32_t>(crc);
}

bool CVxUtils::CheckTwoFilesIdentical(const CVxStringW& a, const CVxStringW& b)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || a.IsEmpty() || b.IsEmpty())
        return false;
    FILE* first = host->OpenFile(a, VX_OPEN_READ);
    FILE* second = first ? host->OpenFile(b, VX_OPEN_READ) : nullptr;
    bool identical = false;
    if (first && second && fseeko(first, 0, SEEK_END) == 0 && fseeko(second, 0, SEEK_END) == 0 &&
        ftello(first) == ftello(second))
        identical = CalcCRC(first) == CalcCRC(second);
    if (first)
        fclose(first);
    if (second)
        fclose(second);
    return identical;
}
