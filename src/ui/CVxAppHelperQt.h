#pragma once
// The window host's side of the bridge: message boxes, repaints, the cursor
// and the status bar, on top of the headless host's files and folders.

#include "CVxAppHelperHeadless.h"

class QWidget;

class CVxAppHelperQt : public CVxAppHelperHeadless
{
public:
    CVxAppHelperQt();

    bool IsDeviceInTouchMode() override { return IsTouchOnlyDevice(); }
    // The splash screen of the start, so that a question asked before the
    // window shows is not hidden behind it; null once it is gone.
    static void SetSplashScreen(QWidget* splash) { s_splash = splash; }
    void HideSplashScreen() override;
    int GetLogicalDpi() override;
    int MsgBox(const CVxStringW& text, const CVxStringW& caption, unsigned flags, void* parent = nullptr,
               EVxMsgButton defaultButton = VX_MB_NONE, EVxMsgButton escapeButton = VX_MB_NONE) override;
    bool SystemExecute(const CVxStringW& target) override;
    bool OpenHelpTopic(const CVxStringW& path) override;
    void GetCurrentMousePos(double& x, double& y) override;
    int GetKeyState(EVxKey key) override;
    bool IsGuiDarkMode() override;
    void DrawRoom(const VxRECT* dirty) override;
    void UpdateProjectUI(bool zoomToFit, bool autoSize) override;
    void EnableUndoButtons() override;
    void EnableFloorButtons() override;
    void RefillLayersList() override;
    void BuildLayersSubMenu(bool popup) override;
    void ShowLayersWindow() override;
    void OnPartListingChange() override;
    void EnableAlignCommands() override;
    void RebuildContextToolbar() override;
    void EnableMainToolbarButton(EVxMainToolbarButtonCode code, bool enable) override;
    void CheckMainToolbarButton(EVxMainToolbarButtonCode code, bool check) override;
    void AfterSelectionChanged() override;
    void ShowPopupMenuForObject(int index) override;
    void LibRebuildOnUserLibChange(bool all) override;
    void OnNewObjectAdded(int index) override;
    void RefreshMainViewCursor() override;
    void SetMainViewCursor(EVxMouseCursor cursor) override;
    bool IsMainViewScrollBarVisible(bool horizontal) override;
    void SetMainViewTooltip(const CVxStringW& text) override;
    void SetMainViewStatusMessage(const CVxStringW& text) override;
    void SetClipboardText(const CVxStringA& utf8) override;
    CVxStringA GetClipboardText() override;
    CVxStringW GenerateUuid() override;
    void RefreshMainViewStatusBar() override;
    void RefreshMainViewCaption() override;
    CVxStringW GetOpenProjectFileName(const CVxStringW& title, const CVxStringW& filter,
                                      const CVxStringW& folder) override;
    CVxStringW GetSaveProjectFileName(const CVxStringW& title, const CVxStringW& filter,
                                      const CVxStringW& suggested) override;
    void SetMainViewPaintable(bool paintable) override;
    void ShowMissingFilesDlgLater() override;
    void BuildRecentMenu() override;
    // Editors
    void AfterSpecialEditorActivated(EVxEditorCode code, bool activated, bool discard) override;
    void ShowWallEditorPopupMenu() override;
    bool WallVertexPropDlgShow(CVxPlanVertex* vertex, double value, const CVxStringW& caption,
                               VxRECT* near) override;
    bool WallEdgePropDlgShow(CVxWall* wall, const CVxStringW& caption, unsigned flags, VxRECT* near) override;
    bool WallHolePropDlgShow(CVxHoleInFloor* hole, const CVxStringW& caption, VxRECT* near) override;
    bool WallScanCalibrateDlgShow() override;
    bool WallNumericalDlgShowModal(std::vector<CVxDPoint>& corners,
                                   std::vector<SVxWallNumbers>& walls) override;
    void WallScanCalibrateDlgHide() override;
    bool OpenPictureDlgShowModal(CVxStringW& path) override;
    // The property dialogues of objects and rooms.
    bool ObjPropShowModal(bool multi, bool* changed) override;
    void ObjPropShow(bool show, CVxPart* part, bool multi) override;
    bool ObjPropPartShowModal(CVxPart* part, bool userLib) override;
    bool RoomsTuningShowModal(int room) override;

    // Texts of the message box buttons, localised and with their accelerators.
    static void GetMsgBoxButtonTexts(CVxStringW& yes, CVxStringW& no, CVxStringW& ok, CVxStringW& cancel,
                                     CVxStringW& save);

private:
    static inline QWidget* s_splash = nullptr;
};
