#pragma once
// The 3D engine, reached through its flat C functions in libcastleengine.so
// beside the program. Nothing links the library: CGE_LoadLibrary resolves
// every function once, and each wrapper below does nothing (and returns 0,
// or -1 for CGE_GetVariableInt) while its function is missing, so a missing
// function costs only its feature.
//
// The engine has one view per process and draws into the OpenGL context
// that is current; its errors come back only as texts through the callback
// (code 4). Its booleans are four bytes.

#include <QString>

#include <cstdint>
#include <functional>

using CgeBool = int32_t;

// The callback the engine calls inside its own functions, on the GUI thread.
using VxCgeCallback = int (*)(int code, int x, int y, const char* text);

// Codes of the callback.
enum EVxCgeCallbackCode
{
    CGE_CB_REDRAW = 0,
    CGE_CB_CURSOR = 1,
    CGE_CB_NAVIGATION_CHANGED = 2,
    CGE_CB_SET_MOUSE_POSITION = 3,
    CGE_CB_WARNING = 4
};

// The engine's variables.
enum EVxCgeVariable
{
    CGE_VAR_HEAD_BOBBING = 0,
    CGE_VAR_SSAO = 1,
    CGE_VAR_MOUSE_LOOK = 2,
    CGE_VAR_CROSSHAIR = 3,
    CGE_VAR_ANIMATION_RUNNING = 4,
    CGE_VAR_SCENE_PAUSED = 6,
    CGE_VAR_AUTO_REDISPLAY = 7,
    CGE_VAR_HEADLIGHT = 8,
    CGE_VAR_OCCLUSION_QUERY = 9,
    CGE_VAR_PHONG = 10,
    CGE_VAR_UI_SCALING = 11
};

// Loads the library once; a second call returns at once when it is loaded.
// A library that can't be loaded, or a function missing from it, is
// reported through the error reporter and leaves the pointers null; the
// next call then tries again.
void CGE_LoadLibrary();
// The same from another place; for tests of broken installations.
void CGE_LoadLibraryFrom(const QString& pathWithoutExtension);
bool CGE_IsLoaded();
// The last reason the library could not be loaded; empty once it was.
QString CGE_LoadError();

// Where load errors go: title and text. The host shows a message box; the
// default writes a warning to the log.
using VxCgeErrorReporter = std::function<void(const QString& title, const QString& text)>;
void CGE_SetErrorReporter(VxCgeErrorReporter reporter);

void CGE_Initialize(const char* applicationConfigDirectory);
void CGE_Finalize();
void CGE_Open(unsigned flags, unsigned width, unsigned height, unsigned dpi);
void CGE_Close(bool quitWhenNoOpenWindows);
void CGE_GetOpenGLInformation(char* buffer, int bufferSize);
void CGE_GetCastleEngineVersion(char* buffer, int bufferSize);
void CGE_Resize(unsigned width, unsigned height);
void CGE_Render();
void CGE_SaveScreenshotToFile(const char* path);
void CGE_SetLibraryCallbackProc(VxCgeCallback callback);
void CGE_Update();
void CGE_MouseDown(int x, int y, bool leftButton, int finger);
void CGE_Motion(int x, int y, int finger);
void CGE_MouseUp(int x, int y, bool leftButton, int finger);
void CGE_MouseWheel(float delta, bool vertical);
void CGE_KeyDown(int key);
void CGE_KeyUp(int key);
void CGE_LoadSceneFromFile(const char* path);
void CGE_SaveSceneToFile(const char* path, int x3dVersionMajor);
int CGE_GetViewpointsCount();
void CGE_GetViewpointName(int index, char* buffer, int bufferSize);
void CGE_MoveToViewpoint(int index, bool animated);
void CGE_AddViewpointFromCurrentView(const char* name);
void CGE_GetBoundingBox(float* xmin, float* xmax, float* ymin, float* ymax, float* zmin, float* zmax);
void CGE_GetViewCoords(float* posX, float* posY, float* posZ, float* dirX, float* dirY, float* dirZ,
                       float* upX, float* upY, float* upZ, float* gravX, float* gravY, float* gravZ);
void CGE_MoveViewToCoords(bool animated, float posX, float posY, float posZ, float dirX, float dirY,
                          float dirZ, float upX, float upY, float upZ, float gravX, float gravY, float gravZ);
void CGE_SetNavigationInputShortcut(int input, int key1, int key2, int mouseButton, int mouseWheel);
int CGE_GetNavigationType();
void CGE_SetNavigationType(int type);
void CGE_SetTouchInterface(int mode);
void CGE_SetAutoTouchInterface(bool automatic);
void CGE_SetWalkNavigationMouseDragMode(int mode);
void CGE_SetVariableInt(int variable, int value);
int CGE_GetVariableInt(int variable);
void CGE_IncreaseSceneTime(float seconds);

// Fields of named (DEF) nodes of the loaded scene. The MF kinds take the
// number of items and the items packed one after another.
void CGE_SetNodeFieldValue_SFFloat(const char* node, const char* field, float value);
void CGE_SetNodeFieldValue_SFDouble(const char* node, const char* field, double value);
void CGE_SetNodeFieldValue_SFInt32(const char* node, const char* field, int value);
void CGE_SetNodeFieldValue_SFBool(const char* node, const char* field, bool value);
void CGE_SetNodeFieldValue_SFVec2f(const char* node, const char* field, float x, float y);
void CGE_SetNodeFieldValue_SFVec3f(const char* node, const char* field, float x, float y, float z);
void CGE_SetNodeFieldValue_SFVec4f(const char* node, const char* field, float x, float y, float z, float w);
void CGE_SetNodeFieldValue_SFVec2d(const char* node, const char* field, double x, double y);
void CGE_SetNodeFieldValue_SFVec3d(const char* node, const char* field, double x, double y, double z);
void CGE_SetNodeFieldValue_SFVec4d(const char* node, const char* field, double x, double y, double z,
                                   double w);
void CGE_SetNodeFieldValue_SFRotation(const char* node, const char* field, float x, float y, float z,
                                      float angle);
void CGE_SetNodeFieldValue_SFString(const char* node, const char* field, const char* value);
void CGE_SetNodeFieldValue_MFFloat(const char* node, const char* field, int count, const float* values);
void CGE_SetNodeFieldValue_MFDouble(const char* node, const char* field, int count, const double* values);
void CGE_SetNodeFieldValue_MFInt32(const char* node, const char* field, int count, const int32_t* values);
void CGE_SetNodeFieldValue_MFBool(const char* node, const char* field, int count, const CgeBool* values);
void CGE_SetNodeFieldValue_MFVec2f(const char* node, const char* field, int count, const float* values);
void CGE_SetNodeFieldValue_MFVec3f(const char* node, const char* field, int count, const float* values);
void CGE_SetNodeFieldValue_MFVec4f(const char* node, const char* field, int count, const float* values);
void CGE_SetNodeFieldValue_MFVec2d(const char* node, const char* field, int count, const double* values);
void CGE_SetNodeFieldValue_MFVec3d(const char* node, const char* field, int count, const double* values);
void CGE_SetNodeFieldValue_MFVec4d(const char* node, const char* field, int count, const double* values);
void CGE_SetNodeFieldValue_MFRotation(const char* node, const char* field, int count, const float* values);
void CGE_SetNodeFieldValue_MFString(const char* node, const char* field, int count,
                                    const char* const* values);
