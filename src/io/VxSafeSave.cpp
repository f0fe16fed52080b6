#include "VxSafeSave.h"

#include "IVxAppHelperCallback.h"
#include "VxUtf8.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

CVxStringW VX_SafeSaveTempPath(const CVxStringW& target)
{
    return target + L".saving~";
}

namespace {
bool SyncFile(const CVxStringA& path)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

void SyncFolder(const CVxStringA& folder)
{
    const int fd = ::open(folder.IsEmpty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}
} // namespace

bool VX_SafeSaveCreateTemp(const CVxStringW& target)
{
    const CVxStringA targetPath = VX_StringToUTF8(target);
    struct stat info
    {
    };
    if (::stat(targetPath.c_str(), &info) == 0 && !S_ISREG(info.st_mode))
        return false;
    const CVxStringA tempPath = VX_StringToUTF8(VX_SafeSaveTempPath(target));
    for (int attempt = 0; attempt < 2; ++attempt) {
        const int fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd >= 0)
            return ::close(fd) == 0;
        if (errno != EEXIST)
            return false;
        // A temporary that a killed save left behind, or something planted.
        if (::unlink(tempPath.c_str()) != 0)
            return false;
    }
    return false;
}

bool VX_SafeSaveCommit(const CVxStringW& temp, const CVxStringW& target)
{
    const CVxStringA tempPath = VX_StringToUTF8(temp);
    const CVxStringA targetPath = VX_StringToUTF8(target);
    struct stat info
    {
    };
    const bool plain = ::lstat(tempPath.c_str(), &info) == 0 && S_ISREG(info.st_mode);
    if (!plain || !SyncFile(tempPath) || ::rename(tempPath.c_str(), targetPath.c_str()) != 0) {
        ::unlink(tempPath.c_str());
        return false;
    }
    // The rename itself must reach the disk for the new file to survive a
    // power cut.
    SyncFolder(VX_StringToUTF8(target.ExtractFileFolder()));
    return true;
}

void VX_SafeSaveAbandon(const CVxStringW& temp)
{
    ::unlink(VX_StringToUTF8(temp).c_str());
}
