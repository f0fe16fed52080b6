#pragma once
// The one way in which the core reaches its host. The host installs one
// instance with VX_SetAppHelperCallback before the core is first used; the
// bodies here are what a host gets for a slot it does not override.

#include "CVxDPoint.h"
#include "CVxDRect.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "VxHostTypes.h"
#include "VxIntGeometry.h"

#include <cstdint>
#include <cstdio>
#include <vector>

class CVxColorDialogParams;
class CVxFloor;
class CVxGroupColorMerger;
class CVxHoleInFloor;
class CVxPart;
class CVxPicBuf;
class CVxPlanVertex;
class CVxProject;
class CVxViewpoint;
class CVxWall;

// A wall's sizes in the wall editor's table of numbers.
struct SVxWallNumbers
{
    double thickness = 0;
    double height = 0;
};

class IVxAppHelperCallback
{
public:
    virtual ~IVxAppHelperCallback() = default;

    // Touch
    virtual bool IsTouchInterface() { return false; }
    virtual bool IsTouchOnlyDevice() { return false; }
    virtual bool IsDeviceInTouchMode() { return false; }
    // Display
    virtual int GetLogicalDpi() { return 96; }
    // Message box: see EVxMsgButton, EVxMsgIcon and EVxMsgResult.
    virtual int MsgBox(const CVxStringW& /*text*/, const CVxStringW& /*caption*/, unsigned /*flags*/,
                       void* /*parent*/ = nullptr, EVxMsgButton /*defaultButton*/ = VX_MB_NONE,
                       EVxMsgButton /*escapeButton*/ = VX_MB_NONE)
    {
        return VX_MBR_OTHER;
    }
    // Shell
    virtual bool SystemExecute(const CVxStringW& /*target*/) { return false; }
    virtual bool OpenHelpTopic(const CVxStringW& /*path*/) { return false; }
    // Timing
    virtual int64_t GetTickCount() { return 0; }
    virtual void Sleep(unsigned /*ms*/) {}
    // Input state
    virtual void GetCurrentMousePos(double& /*x*/, double& /*y*/) {}
    virtual int GetKeyState(EVxKey /*key*/) { return 0; }
    // Touch panning
    virtual bool IsTouchPanning() { return false; }
    // Colour bytes
    virtual bool SwapColorEndians(unsigned char* /*r*/, unsigned char* /*g*/, unsigned char* /*b*/)
    {
        return false;
    }
    virtual bool SwapsRGB24andRGB32Components() { return false; }
    // Look
    virtual bool IsGuiDarkMode() { return false; }
    virtual unsigned GetGuiSysColor(int /*index*/) { return 0; }
    virtual bool PrefersKeyboardShortcutsWithCmdKey() { return false; }
    // Identifiers
    virtual CVxStringW GenerateUuid() { return CVxStringW(); }
    // Path encoding
    virtual CVxStringA GetFileSystemRepresentation(const CVxStringW& /*path*/) { return CVxStringA(); }
    virtual CVxStringW GetStringFromFileSystemRepresentation(const CVxStringA& /*path*/)
    {
        return CVxStringW();
    }
    // Files: a binary C stream, closed by the caller with fclose.
    virtual FILE* OpenFile(const CVxStringW& /*path*/, EVxOpenFileMode /*mode*/) { return nullptr; }
    // File attributes
    virtual bool FileExists(const CVxStringW& /*path*/) { return false; }
    virtual bool FolderExists(const CVxStringW& /*path*/) { return false; }
    virtual bool CreateFolder(const CVxStringW& /*path*/) { return false; }
    virtual bool DeleteDirectory(const CVxStringW& /*path*/) { return false; }
    virtual bool FileCopy(const CVxStringW& /*from*/, const CVxStringW& /*to*/) { return false; }
    virtual bool FileRename(const CVxStringW& /*from*/, const CVxStringW& /*to*/) { return false; }
    virtual bool FileDelete(const CVxStringW& /*path*/) { return false; }
    virtual int64_t GetFileDate(const CVxStringW& /*path*/) { return 0; }
    virtual int64_t FileSize(const CVxStringW& /*path*/) { return 0; }
    // Directory listing
    virtual bool FileFindFirst(const CVxStringW& /*mask*/, bool /*folders*/, SVxSearchRec* /*rec*/)
    {
        return false;
    }
    virtual bool FileFindNext(bool /*folders*/, SVxSearchRec* /*rec*/) { return false; }
    virtual void FileFindClose(SVxSearchRec* /*rec*/) {}
    // Old data
    virtual void MoveEverythingFromAllUsersAppDataPath() {}
    // Folders, each ending in "/"
    virtual CVxStringW GetUserAppDataPath() { return CVxStringW(); }
    virtual CVxStringW GetUserAppRoamingDataPath() { return CVxStringW(); }
    virtual CVxStringW GetUserDocsPath() { return CVxStringW(); }
    // Object added
    virtual void OnNewObjectAdded(int /*index*/) {}
    // Drawing
    virtual void DrawRoom(const VxRECT* /*dirty*/) {}
    virtual void UpdateProjectUI(bool /*zoomToFit*/, bool /*autoSize*/) {}
    // Selection
    virtual void OnPartListingChange() {}
    virtual void AfterSelectionChanged() {}
    // Tool bar state
    virtual void EnableBkgFloorScanButtons() {}
    virtual void EnableUndoButtons() {}
    virtual void EnableFloorButtons() {}
    virtual void EnableAlignCommands() {}
    virtual void RebuildContextToolbar() {}
    virtual void EnableWallEditorToolbarButtons(bool /*enable*/) {}
    virtual void EnableMainToolbarButton(EVxMainToolbarButtonCode /*code*/, bool /*enable*/) {}
    virtual void CheckMainToolbarButton(EVxMainToolbarButtonCode /*code*/, bool /*check*/) {}
    // Menus and lists
    virtual void BuildLayersSubMenu(bool /*popup*/) {}
    virtual void UpdateCommentsView() {}
    virtual void ScrollViewToEnsureRectVisible(const CVxDRect& /*rect*/) {}
    virtual void BuildRecentMenu() {}
    virtual void RefillLayersList() {}
    // Measuring
    virtual void StartEndMeasuring(bool /*start*/) {}
    // Cursor and tooltip
    virtual void RefreshMainViewCursor() {}
    virtual void SetMainViewCursor(EVxMouseCursor /*cursor*/) {}
    virtual bool IsMainViewScrollBarVisible(bool /*horizontal*/) { return false; }
    virtual void SetMainViewTooltip(const CVxStringW& /*text*/) {}
    // Status and caption
    virtual void SetMainViewStatusMessage(const CVxStringW& /*text*/) {}
    // The system clipboard, as plain text.
    virtual void SetClipboardText(const CVxStringA& /*utf8*/) {}
    virtual CVxStringA GetClipboardText() { return CVxStringA(); }
    virtual void RefreshMainViewStatusBar() {}
    virtual void RefreshMainViewCaption() {}
    // Home screen
    virtual void UpdateHomeEditPicker(const CVxStringW& /*caption*/, const CVxStringW& /*appearance*/) {}
    // Pop-ups
    virtual void ShowPopupMenuForObject(int /*index*/) {}
    virtual void LibRebuildOnUserLibChange(bool /*all*/) {}
    // Project files: the path chosen, or empty when the user cancelled.
    virtual CVxStringW GetOpenProjectFileName(const CVxStringW& /*title*/, const CVxStringW& /*filter*/,
                                              const CVxStringW& /*folder*/)
    {
        return CVxStringW();
    }
    virtual CVxStringW GetSaveProjectFileName(const CVxStringW& /*title*/, const CVxStringW& /*filter*/,
                                              const CVxStringW& /*suggested*/)
    {
        return CVxStringW();
    }
    // While a project loads, the plan must not be painted half-way.
    virtual void SetMainViewPaintable(bool /*paintable*/) {}
    virtual void ShowLayersWindow() {}
    // After the event loop has settled: the user decides about the files
    // that the opened project refers to but that are missing.
    virtual void ShowMissingFilesDlgLater() {}
    // Splash: called before any modal box during start-up.
    virtual void HideSplashScreen() {}
    // Thumbnail
    virtual bool SaveProjectThumbnailImageToFile(CVxProject* /*project*/, const CVxStringW& /*path*/,
                                                 int /*width*/, int /*height*/)
    {
        return false;
    }
    // Overlay drawing
    virtual void DrawMainViewMeasureLine(CVxDPoint /*from*/, CVxDPoint /*to*/, bool /*erase*/) {}
    virtual void DrawMainViewMeasureRect(CVxDRect /*rect*/, bool /*erase*/) {}
    virtual void DrawMainViewMeasureEllipse(CVxDRect /*rect*/, bool /*erase*/) {}
    virtual void DrawMainViewSymbol(int /*x*/, int /*y*/, unsigned /*color*/, int /*symbol*/) {}
    virtual void DrawMainViewCaption(int /*x*/, int /*y*/, const wchar_t* /*text*/, int /*flags*/) {}
    // Editors
    virtual void AfterSpecialEditorActivated(EVxEditorCode /*code*/, bool /*activated*/, bool /*accepted*/) {}
    // Editor menus
    virtual void ShowPolygonEditorPopupMenu(bool /*onPoint*/, bool /*onEdge*/) {}
    virtual void ShowWallEditorPopupMenu() {}
    virtual void ShowInterActionView(bool /*show*/, const CVxStringW& /*text*/) {}
    // Viewpoints
    virtual void UpdateViewpointsList(int /*selected*/) {}
    // Attachments
    virtual void AttachmentRefillList(CVxProject* /*project*/) {}
    virtual void AttachmentAddFileToView(const CVxStringW& /*path*/, const CVxStringW& /*description*/,
                                         int /*kind*/)
    {
    }
    virtual void AttachmentSelectItem(int /*index*/) {}
    // Object properties
    virtual void ObjPropReadFromPart(bool /*multi*/, CVxPart* /*part*/) {}
    virtual void ObjPropWriteToPart(bool /*multi*/, CVxPart* /*part*/, bool /*apply*/) {}
    virtual void ObjPropMultiReadFromPart(bool /*first*/, CVxFloor* /*floor*/, CVxPart* /*part*/) {}
    virtual void ObjPropMultiWriteToPart(bool /*first*/, CVxPart* /*part*/) {}
    virtual void ObjPropSetUserLibMode(bool /*userLib*/) {}
    // Object property dialogues
    virtual bool ObjPropShowModal(bool /*multi*/, bool* /*changed*/) { return false; }
    virtual void ObjPropShow(bool /*show*/, CVxPart* /*part*/, bool /*multi*/) {}
    virtual bool ObjPropPartShowModal(CVxPart* /*part*/, bool /*userLib*/) { return false; }
    // Plan dialogues
    virtual bool WallVertexPropDlgShow(CVxPlanVertex* /*vertex*/, double /*value*/,
                                       const CVxStringW& /*caption*/, VxRECT* /*near*/)
    {
        return false;
    }
    virtual bool WallEdgePropDlgShow(CVxWall* /*wall*/, const CVxStringW& /*caption*/, unsigned /*flags*/,
                                     VxRECT* /*near*/)
    {
        return false;
    }
    virtual bool WallHolePropDlgShow(CVxHoleInFloor* /*hole*/, const CVxStringW& /*caption*/,
                                     VxRECT* /*near*/)
    {
        return false;
    }
    virtual bool WallScanCalibrateDlgShow() { return false; }
    // The plan's corners and the walls' sizes as numbers, changed in place;
    // false when cancelled.
    virtual bool WallNumericalDlgShowModal(std::vector<CVxDPoint>& /*corners*/,
                                           std::vector<SVxWallNumbers>& /*walls*/)
    {
        return false;
    }
    virtual void WallScanCalibrateDlgHide() {}
    // Other dialogues
    virtual bool RoomsTuningShowModal(int /*room*/) { return false; }
    virtual bool ColorSelectDlg(CVxColorDialogParams* /*params*/) { return false; }
    virtual bool GroupColorShowModal(CVxGroupColorMerger* /*merger*/) { return false; }
    virtual bool ViewpointPropDlgShow(CVxViewpoint* /*viewpoint*/, VxRECT* /*near*/) { return false; }
    virtual bool OpenPictureDlgShowModal(CVxStringW& /*path*/) { return false; }
    virtual bool WallNumericalDlgShowModal() { return false; }
    // System
    virtual CVxStringW SysGetUserName() { return CVxStringW(); }
    virtual CVxStringW SysGetCurrentTime(const CVxStringW& /*format*/) { return CVxStringW(); }
    virtual CVxPicBuf* CreatePicFromQRCode(const CVxStringW& /*text*/) { return nullptr; }
};

void VX_SetAppHelperCallback(IVxAppHelperCallback* helper);
// A plain pointer, never created on demand: null until a host installs one.
IVxAppHelperCallback* VX_GetAppHelper();
