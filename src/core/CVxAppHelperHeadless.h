#pragma once
// A host without windows: files, folders, time and system facts through Qt
// Core. The headless tool and the tests run the core on it, and the window
// host builds on it.

#include "IVxAppHelperCallback.h"

#include <QElapsedTimer>

class CVxAppHelperHeadless : public IVxAppHelperCallback
{
public:
    // An empty folder means the user's application data folder of the system.
    explicit CVxAppHelperHeadless(const CVxStringW& appDataFolder = CVxStringW(),
                                  const CVxStringW& docsFolder = CVxStringW());

    int64_t GetTickCount() override;
    void Sleep(unsigned ms) override;
    bool SwapColorEndians(unsigned char* r, unsigned char* g, unsigned char* b) override;
    bool SwapsRGB24andRGB32Components() override { return true; }
    CVxStringW GenerateUuid() override;
    CVxStringA GetFileSystemRepresentation(const CVxStringW& path) override;
    CVxStringW GetStringFromFileSystemRepresentation(const CVxStringA& path) override;
    FILE* OpenFile(const CVxStringW& path, EVxOpenFileMode mode) override;
    bool FileExists(const CVxStringW& path) override;
    bool FolderExists(const CVxStringW& path) override;
    bool CreateFolder(const CVxStringW& path) override;
    bool DeleteDirectory(const CVxStringW& path) override;
    bool FileCopy(const CVxStringW& from, const CVxStringW& to) override;
    bool FileRename(const CVxStringW& from, const CVxStringW& to) override;
    bool FileDelete(const CVxStringW& path) override;
    int64_t GetFileDate(const CVxStringW& path) override;
    int64_t FileSize(const CVxStringW& path) override;
    bool FileFindFirst(const CVxStringW& mask, bool folders, SVxSearchRec* rec) override;
    bool FileFindNext(bool folders, SVxSearchRec* rec) override;
    void FileFindClose(SVxSearchRec* rec) override;
    CVxStringW GetUserAppDataPath() override;
    CVxStringW GetUserAppRoamingDataPath() override;
    CVxStringW GetUserDocsPath() override;
    CVxStringW SysGetUserName() override;
    CVxStringW SysGetCurrentTime(const CVxStringW& format) override;
    // Draws the project on white with smoothing and writes it as a picture.
    bool SaveProjectThumbnailImageToFile(CVxProject* project, const CVxStringW& path, int width,
                                         int height) override;

private:
    CVxStringW m_appDataFolder;
    CVxStringW m_docsFolder;
    QElapsedTimer m_clock;
};
