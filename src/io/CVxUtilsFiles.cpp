// Names that do not collide, and whether two files hold the same bytes: what
// a project needs to keep the pictures it embeds apart.

#include "CVxUtils.h"

#include "IVxAppHelperCallback.h"

#include <zlib.h>

#include <ctime>
#include <map>
#include <mutex>
#include <random>
#include <sys/stat.h>

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

// A file as the file system describes it. While none of this changes, the
// bytes have not changed either: every write moves the change time, which no
// program can set back.
struct SFileStamp
{
    dev_t device;
    ino_t inode;
    off_t size;
    timespec modified;
    timespec changed;

    bool operator==(const SFileStamp& other) const
    {
        return device == other.device && inode == other.inode && size == other.size &&
               modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec &&
               changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
    }
};

// The checksums of files that were read already. Saving a project checks each
// picture against the project's copy of it on every save; pictures of many
// megabytes are read only when they have changed.
class CVxCrcCache
{
public:
    uint32_t Crc(FILE* file)
    {
        struct stat info;
        if (fstat(fileno(file), &info) != 0 || !S_ISREG(info.st_mode))
            return CVxUtils::CalcCRC(file);
        const SFileStamp stamp{info.st_dev, info.st_ino, info.st_size, info.st_mtim, info.st_ctim};
        const std::pair<dev_t, ino_t> key(info.st_dev, info.st_ino);
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            const auto known = m_crcs.find(key);
            if (known != m_crcs.end() && known->second.first == stamp)
                return known->second.second;
        }
        const uint32_t crc = CVxUtils::CalcCRC(file);
        // A file changed within the clock's last tick may change again
        // without its times moving on; such a file is read every time.
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        if (now.tv_sec - info.st_ctim.tv_sec < s_settledSeconds ||
            now.tv_sec - info.st_mtim.tv_sec < s_settledSeconds)
            return crc;
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_crcs.size() >= s_maxFiles)
            m_crcs.clear();
        m_crcs[key] = {stamp, crc};
        return crc;
    }

private:
    static constexpr time_t s_settledSeconds = 2;
    static constexpr size_t s_maxFiles = 4096;
    std::mutex m_mutex;
    std::map<std::pair<dev_t, ino_t>, std::pair<SFileStamp, uint32_t>> m_crcs;
};

CVxCrcCache& CrcCache()
{
    static CVxCrcCache cache;
    return cache;
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
        identical = CrcCache().Crc(first) == CrcCache().Crc(second);
    if (first)
        fclose(first);
    if (second)
        fclose(second);
    return identical;
}
