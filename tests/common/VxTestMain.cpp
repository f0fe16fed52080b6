// Main of the core test programs: a Qt application object for the classes
// that need one, and a headless host whose folders lie in a temporary folder.

#include "VxTestEnv.h"

#include "CVxAppHelperHeadless.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <clocale>

namespace {
QTemporaryDir* g_tempDir = nullptr;
}

CVxStringW VxTestTempFolder()
{
    return CVxStringW(g_tempDir->path()) + L"/";
}

CVxStringW VxTestDataFolder()
{
    return CVxStringW(QString::fromUtf8(PLAVENO_TEST_DATA_DIR)) + L"/";
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    setlocale(LC_NUMERIC, "C");
    QTemporaryDir tempDir;
    g_tempDir = &tempDir;
    const CVxStringW root = VxTestTempFolder();
    static CVxAppHelperHeadless host(root + L"appdata/", root + L"docs/");
    host.CreateFolder(root + L"appdata/");
    host.CreateFolder(root + L"docs/");
    VX_SetAppHelperCallback(&host);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
