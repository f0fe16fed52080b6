#include "VxReferencedFile.h"

#include "CVxUtils.h"
#include "VxUtf8.h"

#include <QFileInfo>
#include <QImageReader>
#include <QString>

#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::vector<CVxStringW>& TrustedFolders()
{
    static std::vector<CVxStringW> folders;
    return folders;
}

bool HasExtension(const CVxStringW& lower, std::initializer_list<const wchar_t*> extensions)
{
    for (const wchar_t* ext : extensions)
        if (lower == ext)
            return true;
    return false;
}

// The first bytes of a file; fewer when the file is shorter.
size_t ReadHead(const CVxStringW& path, unsigned char* head, size_t size)
{
    FILE* file = VX_OpenPlainFileForReading(path);
    if (!file)
        return 0;
    const size_t got = fread(head, 1, size, file);
    fclose(file);
    return got;
}

bool LooksLikeSound(const unsigned char* head, size_t size)
{
    if (size >= 12 && memcmp(head, "RIFF", 4) == 0 && memcmp(head + 8, "WAVE", 4) == 0)
        return true;
    if (size >= 4 && (memcmp(head, "OggS", 4) == 0 || memcmp(head, "fLaC", 4) == 0))
        return true;
    if (size >= 3 && memcmp(head, "ID3", 3) == 0)
        return true;
    // An MPEG audio frame: eleven set bits of frame sync.
    return size >= 2 && head[0] == 0xFF && (head[1] & 0xE0) == 0xE0;
}

bool LooksLikeModel(const unsigned char* head, size_t size)
{
    if (size >= 5 && memcmp(head, "#VRML", 5) == 0)
        return true;
    // Scene files are often stored gzipped.
    return size >= 2 && head[0] == 0x1F && head[1] == 0x8B;
}

// The folder, resolved, with a trailing "/"; empty when it does not exist.
QString CanonicalFolder(const CVxStringW& folder)
{
    if (folder.IsEmpty())
        return QString();
    QString canonical = QFileInfo(folder.ToQString()).canonicalFilePath();
    if (!canonical.isEmpty() && !canonical.endsWith(QLatin1Char('/')))
        canonical += QLatin1Char('/');
    return canonical;
}

bool IsInside(const QString& file, const QString& folder)
{
    if (folder.isEmpty() || !file.startsWith(folder) || file.size() <= folder.size())
        return false;
    // Hidden files and folders below the folder are the user's settings and
    // histories, never a project's pictures.
    const QString rest = file.mid(folder.size());
    return !rest.startsWith(QLatin1Char('.')) && !rest.contains(QStringLiteral("/."));
}

} // namespace

EVxFileRole VX_FileRoleFromName(const CVxStringW& path)
{
    CVxStringW ext = path.ExtractFileExt();
    ext.LowerCase();
    if (HasExtension(ext, {L".png", L".jpg", L".jpeg", L".bmp", L".gif", L".tif", L".tiff", L".webp", L".svg",
                           L".ico", L".tga"}))
        return EVxFileRole::Picture;
    if (HasExtension(ext, {L".wav", L".mp3", L".ogg", L".oga", L".flac"}))
        return EVxFileRole::Sound;
    if (HasExtension(ext, {L".wrl", L".wrz"}))
        return EVxFileRole::Model;
    return EVxFileRole::Document;
}

bool VX_IsPlainFile(const CVxStringW& path, int64_t maxSize)
{
    if (path.IsEmpty())
        return false;
    const CVxStringA native = VX_StringToUTF8(path);
    // The kernel's own files claim a size of 0 or of a page and produce
    // whatever the process holds; ".." and links must not hide them.
    char resolved[PATH_MAX];
    if (!::realpath(native.c_str(), resolved))
        return false;
    for (const char* kernel : {"/proc/", "/sys/", "/dev/"})
        if (strncmp(resolved, kernel, strlen(kernel)) == 0)
            return false;
    struct stat info
    {
    };
    if (::stat(native.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return false;
    return info.st_size <= maxSize;
}

FILE* VX_OpenPlainFileForReading(const CVxStringW& path, int64_t maxSize)
{
    if (!VX_IsPlainFile(path, maxSize))
        return nullptr;
    // The file may have been swapped for a FIFO since it was looked at: a
    // non-blocking open never waits for a writer, and the open file itself
    // is checked again.
    const int fd = ::open(VX_StringToUTF8(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return nullptr;
    struct stat info
    {
    };
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > maxSize) {
        ::close(fd);
        return nullptr;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    FILE* file = ::fdopen(fd, "rb");
    if (!file)
        ::close(fd);
    return file;
}

bool VX_IsEmbeddableFile(const CVxStringW& path, EVxFileRole role)
{
    if (!VX_IsPlainFile(path))
        return false;
    std::array<unsigned char, 16> head{};
    switch (role) {
    case EVxFileRole::Picture: {
        QImageReader reader(path.ToQString());
        reader.setDecideFormatFromContent(true);
        return reader.canRead();
    }
    case EVxFileRole::Sound:
        return LooksLikeSound(head.data(), ReadHead(path, head.data(), head.size()));
    case EVxFileRole::Model:
        return LooksLikeModel(head.data(), ReadHead(path, head.data(), head.size()));
    case EVxFileRole::Document:
        return true;
    }
    return false;
}

void VX_SetTrustedDataFolders(const std::vector<CVxStringW>& folders)
{
    TrustedFolders() = folders;
}

bool VX_IsInsideTrustedFolders(const CVxStringW& path, const std::vector<CVxStringW>& folders)
{
    if (path.IsEmpty())
        return false;
    const QString file = QFileInfo(path.ToQString()).canonicalFilePath();
    if (file.isEmpty())
        return false;
    for (const CVxStringW& folder : folders)
        if (IsInside(file, CanonicalFolder(folder)))
            return true;
    for (const CVxStringW& folder : TrustedFolders())
        if (IsInside(file, CanonicalFolder(folder)))
            return true;
    const CVxStringW& textures = CVxUtils::GetBuiltInTextureFolder();
    return IsInside(file, CanonicalFolder(textures));
}
