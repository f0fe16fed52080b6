#pragma once
// Library files written by the tests and a core whose library comes from a
// chosen program folder, with a host that answers the library's questions.

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxUserLibrary.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>

#include <string>

// A file of raw bytes; the folder is made.
inline CVxStringW VxWriteLibFile(const CVxStringW& path, const std::string& bytes)
{
    QDir().mkpath(path.ExtractFileFolder().ToQString());
    QFile file(path.ToQString());
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return path;
}

inline std::string VxReadBytes(const CVxStringW& path)
{
    QFile file(path.ToQString());
    if (!file.open(QIODevice::ReadOnly))
        return std::string();
    const QByteArray bytes = file.readAll();
    return std::string(bytes.constData(), static_cast<size_t>(bytes.size()));
}

inline std::string VxLibHead(const std::string& pages = std::string())
{
    return "[LibSetup]\r\nFileVersion=1020\r\nEncoding=utf-8\r\nLibName=Test\r\nLibVersion=3\r\n" + pages;
}

inline std::string VxLibPart(int n, int libObjID, const std::string& caption,
                             const std::string& more = std::string())
{
    return "\r\n[Part" + std::to_string(n) + "]\r\nType=LibraryObject\r\nCaption=" + caption +
           "\r\nWidth=50\r\nHeight=60\r\nZHeight=70\r\nLibObjID=" + std::to_string(libObjID) + "\r\n" + more;
}

// The documents folder of the test host, where UserLib.pvl lives.
inline CVxStringW VxDocsFolder()
{
    return VxTestTempFolder() + L"docs/";
}

// The core's library as it loads from `programFolder`, with no user
// library unless one is there already.
inline CVxUserLibrary& VxInitLibraryFrom(const CVxStringW& programFolder)
{
    CVxAppCore* core = VX_GetCore();
    core->SetAppFolder(programFolder);
    core->LibInitObjectLibrary();
    return core->GetUserLibrary();
}

inline CVxStringW VxCatalogueFolder()
{
    return CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/";
}

// A host that says yes to every question, installed for one scope.
class CVxYesHost : public CVxAppHelperHeadless
{
public:
    CVxYesHost()
        : CVxAppHelperHeadless(VxTestTempFolder() + L"appdata/", VxDocsFolder()),
          m_previous(VX_GetAppHelper())
    {
        VX_SetAppHelperCallback(this);
    }
    ~CVxYesHost() override { VX_SetAppHelperCallback(m_previous); }
    int MsgBox(const CVxStringW& text, const CVxStringW&, unsigned, void*, EVxMsgButton,
               EVxMsgButton) override
    {
        ++questions;
        lastQuestion = text;
        return answer;
    }
    void LibRebuildOnUserLibChange(bool) override { ++rebuilds; }

    int answer = VX_MBR_YES;
    int questions = 0;
    int rebuilds = 0;
    CVxStringW lastQuestion;

private:
    IVxAppHelperCallback* m_previous;
};
