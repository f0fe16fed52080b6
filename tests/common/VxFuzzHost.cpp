// Fuzz targets run the readers on a headless host whose folders lie in a
// private temporary folder, so nothing a hostile input makes the reader write
// can land among the user's files.

#include "CVxAppHelperHeadless.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <clocale>

namespace {
struct SVxFuzzHost
{
    SVxFuzzHost()
    {
        setlocale(LC_NUMERIC, "C");
        folder.setAutoRemove(true);
        const CVxStringW root = CVxStringW(folder.path()) + L"/";
        host = new CVxAppHelperHeadless(root + L"appdata/", root + L"docs/");
        host->CreateFolder(root + L"appdata/");
        VX_SetAppHelperCallback(host);
    }
    QTemporaryDir folder;
    CVxAppHelperHeadless* host;
};
SVxFuzzHost g_fuzzHost;
} // namespace

CVxStringW VxFuzzTempFolder()
{
    return CVxStringW(g_fuzzHost.folder.path()) + L"/";
}
