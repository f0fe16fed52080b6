#include "VxSafeSave.h"

#include "IVxAppHelperCallback.h"
#include "VxUtf8.h"

#include <cstdio>
#include <fcntl.h>
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

bool VX_SafeSaveCommit(const CVxStringW& temp, const CVxStringW& target)
{
    const CVxStringA tempPath = VX_StringToUTF8(temp);
    const CVxStringA targetPath = VX_StringToUTF8(target);
    if (!SyncFile(tempPath) || ::rename(tempPath.c_str(), targetPath.c_str()) != 0) {
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
