#include "VxCastleEngine.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QtDebug>

// One pointer per engine function, as the engine declares it (cdecl, its
// booleans four bytes wide).
#define VX_CGE_FUNCTIONS(X)                                                                                  \
    X(CGE_Initialize, void, const char*)                                                                     \
    X(CGE_Finalize, void)                                                                                    \
    X(CGE_Open, void, unsigned, unsigned, unsigned, unsigned)                                                \
    X(CGE_Close, void, CgeBool)                                                                              \
    X(CGE_GetOpenGLInformation, void, char*, int)                                                            \
    X(CGE_GetCastleEngineVersion, void, char*, int)                                                          \
    X(CGE_Resize, void, unsigned, unsigned)                                                                  \
    X(CGE_Render, void)                                                                                      \
    X(CGE_SaveScreenshotToFile, void, const char*)                                                           \
    X(CGE_SetLibraryCallbackProc, void, VxCgeCallback)                                                       \
    X(CGE_Update, void)                                                                                      \
    X(CGE_MouseDown, void, int, int, CgeBool, int)                                                           \
    X(CGE_Motion, void, int, int, int)                                                                       \
    X(CGE_MouseUp, void, int, int, CgeBool, int)                                                             \
    X(CGE_MouseWheel, void, float, CgeBool)                                                                  \
    X(CGE_KeyDown, void, int)                                                                                \
    X(CGE_KeyUp, void, int)                                                                                  \
    X(CGE_LoadSceneFromFile, void, const char*)                                                              \
    X(CGE_SaveSceneToFile, void, const char*, int)                                                           \
    X(CGE_GetViewpointsCount, int)                                                                           \
    X(CGE_GetViewpointName, void, int, char*, int)                                                           \
    X(CGE_MoveToViewpoint, void, int, CgeBool)                                                               \
    X(CGE_AddViewpointFromCurrentView, void, const char*)                                                    \
    X(CGE_GetBoundingBox, void, float*, float*, float*, float*, float*, float*)                              \
    X(CGE_GetViewCoords, void, float*, float*, float*, float*, float*, float*, float*, float*, float*,       \
      float*, float*, float*)                                                                                \
    X(CGE_MoveViewToCoords, void, CgeBool, float, float, float, float, float, float, float, float, float,    \
      float, float, float)                                                                                   \
    X(CGE_SetNavigationInputShortcut, void, int, int, int, int, int)                                         \
    X(CGE_GetNavigationType, int)                                                                            \
    X(CGE_SetNavigationType, void, int)                                                                      \
    X(CGE_SetTouchInterface, void, int)                                                                      \
    X(CGE_SetAutoTouchInterface, void, CgeBool)                                                              \
    X(CGE_SetWalkNavigationMouseDragMode, void, int)                                                         \
    X(CGE_SetVariableInt, void, int, int)                                                                    \
    X(CGE_GetVariableInt, int, int)                                                                          \
    X(CGE_SetNodeFieldValue_SFFloat, void, const char*, const char*, float)                                  \
    X(CGE_SetNodeFieldValue_SFDouble, void, const char*, const char*, double)                                \
    X(CGE_SetNodeFieldValue_SFInt32, void, const char*, const char*, int)                                    \
    X(CGE_SetNodeFieldValue_SFBool, void, const char*, const char*, CgeBool)                                 \
    X(CGE_SetNodeFieldValue_SFVec2f, void, const char*, const char*, float, float)                           \
    X(CGE_SetNodeFieldValue_SFVec3f, void, const char*, const char*, float, float, float)                    \
    X(CGE_SetNodeFieldValue_SFVec4f, void, const char*, const char*, float, float, float, float)             \
    X(CGE_SetNodeFieldValue_SFVec2d, void, const char*, const char*, double, double)                         \
    X(CGE_SetNodeFieldValue_SFVec3d, void, const char*, const char*, double, double, double)                 \
    X(CGE_SetNodeFieldValue_SFVec4d, void, const char*, const char*, double, double, double, double)         \
    X(CGE_SetNodeFieldValue_SFRotation, void, const char*, const char*, float, float, float, float)          \
    X(CGE_SetNodeFieldValue_SFString, void, const char*, const char*, const char*)                           \
    X(CGE_SetNodeFieldValue_MFFloat, void, const char*, const char*, int, const float*)                      \
    X(CGE_SetNodeFieldValue_MFDouble, void, const char*, const char*, int, const double*)                    \
    X(CGE_SetNodeFieldValue_MFInt32, void, const char*, const char*, int, const int32_t*)                    \
    X(CGE_SetNodeFieldValue_MFBool, void, const char*, const char*, int, const CgeBool*)                     \
    X(CGE_SetNodeFieldValue_MFVec2f, void, const char*, const char*, int, const float*)                      \
    X(CGE_SetNodeFieldValue_MFVec3f, void, const char*, const char*, int, const float*)                      \
    X(CGE_SetNodeFieldValue_MFVec4f, void, const char*, const char*, int, const float*)                      \
    X(CGE_SetNodeFieldValue_MFVec2d, void, const char*, const char*, int, const double*)                     \
    X(CGE_SetNodeFieldValue_MFVec3d, void, const char*, const char*, int, const double*)                     \
    X(CGE_SetNodeFieldValue_MFVec4d, void, const char*, const char*, int, const double*)                     \
    X(CGE_SetNodeFieldValue_MFRotation, void, const char*, const char*, int, const float*)                   \
    X(CGE_SetNodeFieldValue_MFString, void, const char*, const char*, int, const char* const*)               \
    X(CGE_IncreaseSceneTime, void, float)

namespace {

#define VX_CGE_POINTER(name, result, ...) result (*pfrd_##name)(__VA_ARGS__) = nullptr;
VX_CGE_FUNCTIONS(VX_CGE_POINTER)
#undef VX_CGE_POINTER

QString g_loadError;

VxCgeErrorReporter& Reporter()
{
    static VxCgeErrorReporter reporter = [](const QString& title, const QString& text) {
        qWarning("%s: %s", qUtf8Printable(title), qUtf8Printable(text));
    };
    return reporter;
}

QFunctionPointer cge_GetProc(QLibrary& library, const char* name)
{
    QFunctionPointer proc = library.resolve(name);
    if (!proc) {
        g_loadError = QStringLiteral("Cannot load Castle Game Engine function: ") + QLatin1String(name);
        Reporter()(QStringLiteral("CGE Load Error"),
                   g_loadError + QStringLiteral("\nPlease try reinstalling the software."));
    }
    return proc;
}

CgeBool B(bool value)
{
    return value ? 1 : 0;
}

} // namespace

void CGE_SetErrorReporter(VxCgeErrorReporter reporter)
{
    Reporter() = std::move(reporter);
}

bool CGE_IsLoaded()
{
    return pfrd_CGE_Open != nullptr;
}

QString CGE_LoadError()
{
    return g_loadError;
}

void CGE_LoadLibraryFrom(const QString& pathWithoutExtension)
{
    if (pfrd_CGE_Open)
        return;
    g_loadError.clear();
    // Destroyed without unloading: the engine stays for the process.
    QLibrary library(pathWithoutExtension);
    if (!library.load()) {
        g_loadError = library.errorString();
        Reporter()(QStringLiteral("error"), g_loadError);
        return;
    }
#define VX_CGE_RESOLVE(name, result, ...)                                                                    \
    pfrd_##name = reinterpret_cast<result (*)(__VA_ARGS__)>(cge_GetProc(library, #name));
    VX_CGE_FUNCTIONS(VX_CGE_RESOLVE)
#undef VX_CGE_RESOLVE
}

void CGE_LoadLibrary()
{
    CGE_LoadLibraryFrom(QCoreApplication::applicationDirPath() + QStringLiteral("/castleengine"));
}

// The wrappers: nothing while the function is missing.
#define VX_CALL(name, ...)                                                                                   \
    if (pfrd_##name)                                                                                         \
    pfrd_##name(__VA_ARGS__)

void CGE_Initialize(const char* applicationConfigDirectory)
{
    VX_CALL(CGE_Initialize, applicationConfigDirectory);
}
void CGE_Finalize()
{
    VX_CALL(CGE_Finalize);
}
void CGE_Open(unsigned flags, unsigned width, unsigned height, unsigned dpi)
{
    VX_CALL(CGE_Open, flags, width, height, dpi);
}
void CGE_Close(bool quitWhenNoOpenWindows)
{
    VX_CALL(CGE_Close, B(quitWhenNoOpenWindows));
}
void CGE_GetOpenGLInformation(char* buffer, int bufferSize)
{
    if (buffer && bufferSize > 0)
        buffer[0] = 0;
    VX_CALL(CGE_GetOpenGLInformation, buffer, bufferSize);
}
void CGE_GetCastleEngineVersion(char* buffer, int bufferSize)
{
    if (buffer && bufferSize > 0)
        buffer[0] = 0;
    VX_CALL(CGE_GetCastleEngineVersion, buffer, bufferSize);
}
void CGE_Resize(unsigned width, unsigned height)
{
    VX_CALL(CGE_Resize, width, height);
}
void CGE_Render()
{
    VX_CALL(CGE_Render);
}
void CGE_SaveScreenshotToFile(const char* path)
{
    VX_CALL(CGE_SaveScreenshotToFile, path);
}
void CGE_SetLibraryCallbackProc(VxCgeCallback callback)
{
    VX_CALL(CGE_SetLibraryCallbackProc, callback);
}
void CGE_Update()
{
    VX_CALL(CGE_Update);
}
void CGE_MouseDown(int x, int y, bool leftButton, int finger)
{
    VX_CALL(CGE_MouseDown, x, y, B(leftButton), finger);
}
void CGE_Motion(int x, int y, int finger)
{
    VX_CALL(CGE_Motion, x, y, finger);
}
void CGE_MouseUp(int x, int y, bool leftButton, int finger)
{
    VX_CALL(CGE_MouseUp, x, y, B(leftButton), finger);
}
void CGE_MouseWheel(float delta, bool vertical)
{
    VX_CALL(CGE_MouseWheel, delta, B(vertical));
}
void CGE_KeyDown(int key)
{
    VX_CALL(CGE_KeyDown, key);
}
void CGE_KeyUp(int key)
{
    VX_CALL(CGE_KeyUp, key);
}
void CGE_LoadSceneFromFile(const char* path)
{
    VX_CALL(CGE_LoadSceneFromFile, path);
}
void CGE_SaveSceneToFile(const char* path, int x3dVersionMajor)
{
    VX_CALL(CGE_SaveSceneToFile, path, x3dVersionMajor);
}
int CGE_GetViewpointsCount()
{
    return pfrd_CGE_GetViewpointsCount ? pfrd_CGE_GetViewpointsCount() : 0;
}
void CGE_GetViewpointName(int index, char* buffer, int bufferSize)
{
    if (buffer && bufferSize > 0)
        buffer[0] = 0;
    VX_CALL(CGE_GetViewpointName, index, buffer, bufferSize);
}
void CGE_MoveToViewpoint(int index, bool animated)
{
    VX_CALL(CGE_MoveToViewpoint, index, B(animated));
}
void CGE_AddViewpointFromCurrentView(const char* name)
{
    VX_CALL(CGE_AddViewpointFromCurrentView, name);
}
void CGE_GetBoundingBox(float* xmin, float* xmax, float* ymin, float* ymax, float* zmin, float* zmax)
{
    VX_CALL(CGE_GetBoundingBox, xmin, xmax, ymin, ymax, zmin, zmax);
}
void CGE_GetViewCoords(float* posX, float* posY, float* posZ, float* dirX, float* dirY, float* dirZ,
                       float* upX, float* upY, float* upZ, float* gravX, float* gravY, float* gravZ)
{
    VX_CALL(CGE_GetViewCoords, posX, posY, posZ, dirX, dirY, dirZ, upX, upY, upZ, gravX, gravY, gravZ);
}
void CGE_MoveViewToCoords(bool animated, float posX, float posY, float posZ, float dirX, float dirY,
                          float dirZ, float upX, float upY, float upZ, float gravX, float gravY, float gravZ)
{
    VX_CALL(CGE_MoveViewToCoords, B(animated), posX, posY, posZ, dirX, dirY, dirZ, upX, upY, upZ, gravX,
            gravY, gravZ);
}
void CGE_SetNavigationInputShortcut(int input, int key1, int key2, int mouseButton, int mouseWheel)
{
    VX_CALL(CGE_SetNavigationInputShortcut, input, key1, key2, mouseButton, mouseWheel);
}
int CGE_GetNavigationType()
{
    return pfrd_CGE_GetNavigationType ? pfrd_CGE_GetNavigationType() : 0;
}
void CGE_SetNavigationType(int type)
{
    VX_CALL(CGE_SetNavigationType, type);
}
void CGE_SetTouchInterface(int mode)
{
    VX_CALL(CGE_SetTouchInterface, mode);
}
void CGE_SetAutoTouchInterface(bool automatic)
{
    VX_CALL(CGE_SetAutoTouchInterface, B(automatic));
}
void CGE_SetWalkNavigationMouseDragMode(int mode)
{
    VX_CALL(CGE_SetWalkNavigationMouseDragMode, mode);
}
void CGE_SetVariableInt(int variable, int value)
{
    VX_CALL(CGE_SetVariableInt, variable, value);
}
int CGE_GetVariableInt(int variable)
{
    return pfrd_CGE_GetVariableInt ? pfrd_CGE_GetVariableInt(variable) : -1;
}
void CGE_IncreaseSceneTime(float seconds)
{
    VX_CALL(CGE_IncreaseSceneTime, seconds);
}

void CGE_SetNodeFieldValue_SFFloat(const char* node, const char* field, float value)
{
    VX_CALL(CGE_SetNodeFieldValue_SFFloat, node, field, value);
}
void CGE_SetNodeFieldValue_SFDouble(const char* node, const char* field, double value)
{
    VX_CALL(CGE_SetNodeFieldValue_SFDouble, node, field, value);
}
void CGE_SetNodeFieldValue_SFInt32(const char* node, const char* field, int value)
{
    VX_CALL(CGE_SetNodeFieldValue_SFInt32, node, field, value);
}
void CGE_SetNodeFieldValue_SFBool(const char* node, const char* field, bool value)
{
    VX_CALL(CGE_SetNodeFieldValue_SFBool, node, field, B(value));
}
void CGE_SetNodeFieldValue_SFVec2f(const char* node, const char* field, float x, float y)
{
    VX_CALL(CGE_SetNodeFieldValue_SFVec2f, node, field, x, y);
}
void CGE_SetNodeFieldValue_SFVec3f(const char* node, const char* field, float x, float y, float z)
{
    VX_CALL(CGE_SetNodeFieldValue_SFVec3f, node, field, x, y, z);
}
void CGE_SetNodeFieldValue_SFVec4f(const char* node, const char* field, float x, float y, float z, float w)
{
    VX_CALL(CGE_SetNodeFieldValue_SFVec4f, node, field, x, y, z, w);
}
void CGE_SetNodeFieldValue_SFVec2d(const char* node, const char* field, double x, double y)
{
    VX_CALL(CGE_SetNodeFieldValue_SFVec2d, node, field, x, y);
}
void CGE_SetNodeFieldValue_SFVec3d(const char* node, const char* field, double x, double y, double z)
{
    VX_CALL(CGE_SetNodeFieldValue_SFVec3d, node, field, x, y, z);
}
void CGE_SetNodeFieldValue_SFVec4d(const char* node, const char* field, double x, double y, double z,
                                   double w)
{
    VX_CALL(CGE_SetNodeFieldValue_SFVec4d, node, field, x, y, z, w);
}
void CGE_SetNodeFieldValue_SFRotation(const char* node, const char* field, float x, float y, float z,
                                      float angle)
{
    VX_CALL(CGE_SetNodeFieldValue_SFRotation, node, field, x, y, z, angle);
}
void CGE_SetNodeFieldValue_SFString(const char* node, const char* field, const char* value)
{
    VX_CALL(CGE_SetNodeFieldValue_SFString, node, field, value);
}
void CGE_SetNodeFieldValue_MFFloat(const char* node, const char* field, int count, const float* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFFloat, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFDouble(const char* node, const char* field, int count, const double* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFDouble, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFInt32(const char* node, const char* field, int count, const int32_t* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFInt32, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFBool(const char* node, const char* field, int count, const CgeBool* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFBool, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFVec2f(const char* node, const char* field, int count, const float* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFVec2f, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFVec3f(const char* node, const char* field, int count, const float* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFVec3f, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFVec4f(const char* node, const char* field, int count, const float* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFVec4f, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFVec2d(const char* node, const char* field, int count, const double* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFVec2d, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFVec3d(const char* node, const char* field, int count, const double* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFVec3d, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFVec4d(const char* node, const char* field, int count, const double* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFVec4d, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFRotation(const char* node, const char* field, int count, const float* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFRotation, node, field, count, values);
}
void CGE_SetNodeFieldValue_MFString(const char* node, const char* field, int count, const char* const* values)
{
    VX_CALL(CGE_SetNodeFieldValue_MFString, node, field, count, values);
}
