#pragma once
// The application core: owns the one project of the process and every
// command on it, and reaches the host only through IVxAppHelperCallback.

#include "CVxDPoint.h"
#include "CVxFileChangeMonitor.h"
#include "CVxFloorPlan.h"
#include "CVxMissingFileInfo.h"
#include "CVxPart.h"
#include "CVxPartSelection.h"
#include "CVxProject.h"
#include "CVxProjectSettings.h"
#include "CVxSpriteCache.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "CVxUndoManager.h"
#include "IVxSpecialEditor.h"
#include "SVx3DExportPars.h"
#include "VxDrawFlags.h"
#include "VxIntGeometry.h"

#include <list>
#include <memory>
#include <vector>

class CVxDC;
class CVxPicBuf;
class CVxPrintConfig;
class CVxPageLayoutEditor;
class CVxPrintSizeCalculator;
class CVxWallEditor;
struct CVxPrintPageInfo;

class CVxAppCore
{
public:
    CVxAppCore();
    ~CVxAppCore();
    CVxAppCore(const CVxAppCore&) = delete;
    CVxAppCore& operator=(const CVxAppCore&) = delete;

    CVxProject& GetProject() { return m_project; }
    const CVxProject& GetProject() const { return m_project; }

    // Nothing is painted until the first room rebuild at the end of start-up.
    bool IsDrawingAllowed() const { return m_drawingAllowed != 0; }
    void SetDrawingAllowed(bool allowed) { m_drawingAllowed = allowed ? 1 : 0; }
    bool IsAppExiting() const { return m_appExiting != 0; }
    void SetAppExiting();

    const CVxStringW& GetProjectPath() const { return m_projectPath; }
    void SetProjectPath(const CVxStringW& path) { m_projectPath = path; }
    const CVxStringW& GetAppFolder() const { return m_appFolder; }
    void SetAppFolder(const CVxStringW& folder);
    // Where the program's data lies for a program in `programFolder`.
    static CVxStringW FindDataFolder(const CVxStringW& programFolder);
    std::vector<CVxMissingFileInfo>& GetMissingFiles() { return m_missingFiles; }

    // A new default project: a 500 by 300 room in any unit.
    void InitProject();
    // Every change to the plan passes through here: corners are joined
    // again and the rooms of the current floor found anew.
    void UpdateFloorPlan();
    // The scene file of the open project (CVxAppCoreScene.cpp). An empty
    // path becomes the scene file in the user's application data folder.
    // False when the file could not be written. report may be null.
    bool CreateWrlExportFile(CVxStringW& path, EVx3dViewerMode mode, bool phong, bool withUserViewpoints,
                             CVx3DFloorLayerVis* vis, const CVxStringA& protoUrl,
                             const CVxStringW& textureExportDir, SVx3DExportReport* report = nullptr);
    double Get3DSurfacePos(double x, double y, int floor);
    void Init3DViewpoints(CVxViewpointSet* set);
    void WriteEdgeEnhanceScreenEffect(FILE* file);
    CVxFloorPlan& GetFloorPlan() { return m_floorPlan; }
    const CVxFloorPlan& GetFloorPlan() const { return m_floorPlan; }

    // The current floor's table of rooms and wall runs, tab-separated, in
    // the project's statistical unit.
    CVxStringW GetFloorStatistics();
    // A label with name and area in every room of the current floor, in
    // place of the room labels there were; an undo step. numberEmptyRooms
    // names a room without a name "Room" and its number; unit < 0 means the
    // statistical unit.
    void InsertAreaLabels(bool numberEmptyRooms, int unit);
    // After a rebuild: each room label takes its room's present name and
    // area. Labels don't move.
    void UpdateAreaLabels();

    // The plan of the current floor with (x, y) the image's top-left corner
    // on the surface; updateRect limits the work, flags are the draw flags.
    void DrawProject(CVxDC* dc, int x, int y, const VxRECT& updateRect, int flags);
    // A picture of a project for lists and the recovery dialog: the whole
    // sheet, or with cropToObjects the objects and a tenth around them,
    // centred in width by height. False when cancel was set meanwhile.
    bool DrawProjectThumb(CVxDC* dc, CVxProject& project, int width, int height, bool cropToObjects,
                          const bool* cancel);
    // The same on a white ground with smoothing, as previews and thumbnail
    // files show it.
    bool DrawProjectThumbOnWhite(CVxDC* dc, CVxProject& project, int width, int height);
    // Drawing stops while any pause is on; pauses nest.
    void PauseDrawing(bool pause);
    bool IsDrawingPaused() const { return m_drawingPaused != 0; }
    // The editor that has taken over the plan view, null for the plain plan.
    IVxSpecialEditor* GetActiveEditor() const { return m_activeEditor; }
    void SetActiveEditor(IVxSpecialEditor* editor) { m_activeEditor = editor; }
    // The current floor's scan of a paper drawing, shown under the plan as a
    // picture part. Without a picture the floor's file is loaded; when that
    // fails the floor forgets the file and false comes back. The part takes
    // the floor's placement, or an empty one fits the picture into the sheet.
    bool LoadCurrentBkgFloorScan(CVxPicBuf* picture, bool show);
    void ResetBkgFloorScanPart();
    const CVxPart& GetBkgScanPart() const { return m_scanPart; }
    // Kept pictures of small object drawings (on by default); switching off
    // lets them go.
    void EnableSpriteCache(bool on);
    const CVxSpriteCache& GetSpriteCache() const { return m_spriteCache; }
    // Frames and handles around the selected objects of the current floor.
    void DrawSelection(CVxDC* dc, int x, int y);

    // The rubber band of a drag: 1 line, 2 rectangle, 3 ellipse, 0 none.
    void SetTempObject(int kind, double x1, double y1, double x2, double y2);
    int GetTempObjectKind() const { return m_tempKind; }
    void DrawTempObject(CVxDC* dc, double zoom, int x, int y);

    // What the user reads and types: positions relative to the selected
    // local origin, with the axes flipped when the origin counts from the
    // right or the bottom side. The two are exact inverses.
    void TranslateCoordImageToLocal(double& x, double& y) const;
    void TranslateCoordLocalToImage(double& x, double& y) const;
    int m_localOriginSignX = 1;
    int m_localOriginSignY = 1;
    double m_localOriginX = 0;
    double m_localOriginY = 0;
    bool m_absoluteCoords = false;
    bool m_showLocalCoords = true;

    // The print settings: the options' defaults, then what the project
    // keeps; saving them back marks a project that had some as changed.
    void LoadPrintConfig(CVxPrintSizeCalculator& config) const;
    void SavePrintConfig(const CVxPrintConfig& config);
    // One page of a print of the current floor, calculated beforehand;
    // flags -1 takes the view's draw flags with captions.
    void PrintProjectPage(CVxDC* dc, int pageIndex, CVxPrintSizeCalculator& calc, int flags);
    // The current floor as a drawing exchange file (release 12) in the
    // project's unit; false when the file can't be written.
    bool ExportFloorToDxf(const CVxStringW& path);

    // The draw flags that the settings and the view mode ask for.
    int GetPartDrawFlagsFromOptions() const;
    // Draw flags, as the shared set names them.
    static constexpr int drawCaptions = VX_DRAW_CAPTIONS;
    static constexpr int drawHandles = VX_DRAW_HANDLES;
    static constexpr int drawFloorTextures = VX_DRAW_FLOOR_TEXTURES;
    static constexpr int drawGrid = VX_DRAW_GRID;
    static constexpr int drawGridLabels = VX_DRAW_GRID_LABELS;
    static constexpr int drawBlackWhite = VX_DRAW_BLACK_WHITE;
    static constexpr int drawNoGround = VX_DRAW_NO_GROUND;

    // The long window title; shortTitle gets the short one.
    CVxStringW GetMainWndCaption(CVxStringW& shortTitle) const;

    bool GetDrawBlackWhite() const { return m_drawBlackWhite; }
    void SetDrawBlackWhite(bool on) { m_drawBlackWhite = on; }
    bool GetShowAnnotations() const { return m_showAnnotations; }
    void SetShowAnnotations(bool on) { m_showAnnotations = on; }

    // Pixels per project unit at 100 % display scale, and where the sheet's
    // origin lies in the render area.
    double GetZoom() const { return m_zoom; }
    void SetZoom(double zoom) { m_zoom = zoom; }
    // The rung nearest to the zoom, for display.
    double GetRoundedZoom() const { return m_roundedZoom; }
    // After a change of zoom or project size: margins in pixels, object
    // caches, and the rung shown.
    void RebuildRoom();
    // The zoom of the next rung above (in) or below the present zoom; false
    // at the end of the ladder.
    bool GetNextZoom(bool in, double& newZoom) const;
    // Into the ladder's range.
    double ClampZoom(double zoom) const;
    // Margins in pixels at the present zoom: left, top, right, bottom.
    const int* GetMargins() const { return m_margins; }
    const VxPOINT& GetViewOrigin() const { return m_viewOrigin; }
    void SetViewOrigin(const VxPOINT& origin) { m_viewOrigin = origin; }
    // The sheet in pixels at the present zoom: the room rectangle with the
    // space around it.
    VxRECT GetSheetRect() const;

    // Whole-document transforms, each one a step of the user's work.
    void TransformConvertUnit(int from, int to);
    void TransformShift(double dx, double dy);
    void TransformScale(double factor);
    void TransformRotate(int degrees);
    void TransformFlip(bool vertical);

    int GetFirstSelectedIndex() const { return m_firstSelected; }
    // Several transforms of the project or of the current floor alone, as
    // one undo step: scale, turn, mirror, then move. False when it changes
    // nothing.
    bool ApplyTransform(const SVxTransform& transform);

    // The layers of the current floor, as the layers window changes them.
    // Each change is one undo step; false, and no step, for an index out of
    // range or a change that changes nothing. Objects keep to their layers.
    bool LayerAdd(const CVxStringW& name);
    bool LayerRename(int layer, const CVxStringW& name);
    // Frees the layer's objects; the last layer stays.
    bool LayerRemove(int layer);
    bool LayerMove(int from, int to);
    bool LayerSetVisible(int layer, bool visible);
    bool LayerSetTransparency(int layer, int percent);
    // Objects of a locked layer are drawn but can't be selected.
    bool LayerSetLocked(int layer, bool locked);
    // Where new objects go; no undo step.
    bool LayerSetActive(int layer);

    // The project's settings as the project properties show them, and all
    // changes of them as one undo step; false when nothing changed.
    SVxProjectSettings ReadProjectSettings() const;
    bool ApplyProjectSettings(const SVxProjectSettings& settings);
    // After the options dialogue changed settings: the view follows at once
    // and config.ini keeps them.
    void ApplyOptionsChange();

    // Mouse states of the plan view.
    enum EVxMouseState : int32_t
    {
        msIdle = 0,
        msPlacing = 1,
        msMeasureWait = 2,
        msMeasuring = 3,
        msRubberBand = 4,
        msRubberBandAdd = 5,
        msResizing = 6,
        msPanning = 7,
        msDropping = 8,
        msPainterOnce = 9,
        msPainterSticky = 10,
    };
    int GetMouseState() const { return m_mouseState; }
    void SetMouseState(int state) { m_mouseState = state; }
    // Mouse buttons and modifier bits of the events that the host forwards.
    static constexpr int buttonLeft = 1;
    static constexpr int buttonRight = 2;
    static constexpr int buttonMiddle = 4;
    static constexpr unsigned modShift = 1;
    static constexpr unsigned modCtrl = 2;
    static constexpr unsigned modAlt = 4;
    static constexpr int sourceTouch = 1;

    // Events of the plan view, in pixels of the render area. The core owns
    // the interaction: selection, dragging, resizing, rubber bands,
    // measuring and the format painter.
    void MainViewMouseDown(int button, unsigned modifiers, double x, double y, int source, bool* outHandled);
    void MainViewMouseMove(unsigned modifiers, double x, double y, int source);
    void MainViewMouseUp(int button, unsigned modifiers, double x, double y, int source);
    // True when the key was used.
    bool MainViewKeyDown(unsigned key, unsigned modifiers);
    bool MainViewKeyUp(unsigned key, unsigned modifiers);
    bool MainViewKeyArrowsPressed(unsigned key, unsigned modifiers);
    bool MainViewKeyEscPressed();
    void MainViewFinishInterAction(bool accepted);
    // The object under the pointer, -1 for none; sets the cursor.
    int RefreshMainViewCursor(unsigned modifiers, double x, double y);
    bool IsMultiSelectMode() const { return m_multiSelectMode; }
    void SetMultiSelectMode(bool on) { m_multiSelectMode = on; }

    // Selection. Indexes are slots of the current floor's objects.
    int FindPartFromPoint(double x, double y, int source, bool preferSelected);
    void SetSelection(int index, bool repaint);
    void SetSelection(const CVxDRect& rect, bool touching, bool repaint);
    void AddToSelection(int index, bool repaint);
    void AddToSelection(const CVxDRect& rect, bool touching, bool repaint);
    void RemoveFromSelection(int index, bool repaint);
    void ClearSelection(bool repaint);
    void SelectAll();
    int GetSelCount() const;
    int GetFirstSelected() const;
    int GetLastSelected() const { return m_firstSelected; }
    void OnSelectionChange();
    // Moves the selected, unlocked objects by (dx, dy) units; dirty takes
    // the pixels that changed.
    void MoveSelection(double dx, double dy, VxRECT* dirty);
    void SnapMovingSelectionToWalls(double& dx, double& dy);

    // Commands on the selection; each is one undo step and does nothing
    // without a selection.
    void DeleteSelectedObjects();
    void GroupSelectedObjects();
    void UngroupSelectedObject();
    // 1 left, 2 centres in x, 3 right, 4 top, 5 centres in y, 6 bottom.
    void AlignSelectedObjects(int mode);
    // 1 horizontally, 2 vertically.
    void SpaceEquallySelectedObjects(int mode);
    void ZOrderBringToFront();
    void ZOrderSendToBack();
    void ZOrderBringForward();
    void ZOrderSendBackward();
    void ZOrderOrderbyZposition(bool repaint);
    void RotateSelectedObjects(double degrees);
    void FlipSelectedObjects(bool vertical);
    // bit: CVxPart::ctxLock, ctxLockSize, or 0 to unlock.
    void LockSelectedObjects(unsigned bit);
    void ActivateFormatPainter(bool on, bool sticky);
    void ApplyFormatPainterToObject(int index);
    bool IsFormatPainterOn() const
    {
        return m_mouseState == msPainterOnce || m_mouseState == msPainterSticky;
    }
    void DuplicateSelectedObjects();
    // The clipboard text of the selection; empty without one.
    CVxStringA GetSelectionClipboardText();
    void CopySelectedObjectsToClipboard();
    void CutSelectedObjectsToClipboard();
    // False, with a word in the status bar, for a text that isn't ours.
    bool PasteObjectsFromClipboard(const CVxStringA& text);
    // Measuring: the next press starts a line.
    void StartMeasuring();
    void DimensionSelectedObjects();
    void DeleteAllDimensionLines();
    // The next two presses lay a dimension line.
    void StartDimensionLine();
    void DrawMeasureLine(unsigned modifiers, double x, double y);
    // A dimension line between two points in pixels relative to the
    // object origin.
    void CreateMeasLine(const CVxDPoint& fromPixels, const CVxDPoint& toPixels);
    void UpdateTempDimLines(VxRECT* dirty);
    void DeleteTempDimLines();
    // Where objects are drawn: the sheet's corner plus its margins, in
    // pixels of the render area.
    VxPOINT GetObjectOrigin() const;
    void MainViewRoundMousePos(double& x, double& y, int source) const;
    const CVxPartSelection& GetSelectionHandles() const { return m_selection; }
    int GetMovingPart() const { return m_movingPart; }
    // The pointer's last place, in pixels relative to the object origin.
    CVxDPoint GetLastPointer() const { return m_lastPointer; }
    bool IsDragged() const { return m_dragged; }
    // The cursor code the last refresh chose, one of EVxViewCursor.
    int GetViewCursor() const { return m_cursor; }
    // Identifies this session's project in clipboard text, so that a paste
    // into the same floor keeps the objects' places.
    const CVxStringW& GetClipboardProjectId();

    // Commands by number: the facts of the command table, with the active
    // editor asked first, and what the plan view's state allows now.
    CVxStringW GetMainToolbarButtonHint(EVxMainToolbarButtonCode code, bool withShortcut) const;
    CVxStringW GetMainToolbarButtonIconName(EVxMainToolbarButtonCode code, bool& mirrorable,
                                            bool& autoDark) const;
    // False when the command has no shortcut.
    bool GetMainToolbarButtonShortcut(EVxMainToolbarButtonCode code, unsigned& modifiers,
                                      unsigned& key) const;
    bool IsMainToolbarButtonCheckable(EVxMainToolbarButtonCode code) const;
    // A mask of EVxInterface bits.
    unsigned GetMainToolbarButtonInterfacePresence(EVxMainToolbarButtonCode code) const;
    bool IsMainToolbarButtonForInterface(EVxMainToolbarButtonCode code, unsigned interfaceMask) const;
    // "Ctrl+Shift+S", "F12", "Del"; empty for no key.
    static CVxStringW ShortcutToString(unsigned modifiers, unsigned key);
    // True when the code was taken by the editor or by the core.
    bool DoMainToolbarButtonAction(EVxMainToolbarButtonCode code);
    bool IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code) const;
    // For the context tool bar and the object pop-up.
    bool IsContextToolbarButtonVisible(EVxMainToolbarButtonCode code, bool& enabled) const;
    // The drawing tools act as a radio group; `code` is the one now on.
    void CheckMouseStateToolbarButtons(EVxMainToolbarButtonCode code);
    // The host's check marks of the drawing flags and the painter.
    void CheckViewMenuItems();
    // Leaves the active editor; with `discard` its changes are dropped.
    // Without `force` a discard asks the user first; false when the editor
    // stays open.
    bool DeactivateActiveEditor(bool discard, bool force);

    // The editors that take over the plan view (see IVxSpecialEditor).
    bool ActivateSpecialEditor(EVxEditorCode code);
    // With `activate` the walls of the project become editable; without it
    // the editor closes, keeping its result unless `discard`. newRoom is
    // the run that makes the first room of a new project.
    bool ActivateWallEditor(bool activate, bool discard, bool newRoom);
    CVxWallEditor* GetWallEditor();
    // With `activate` the header and footer layout of info.file takes the
    // plan view's place, a blank page of the paper when newLayout is set or
    // the file can't be read; without it the layout goes into its file,
    // unless `discard`, and the project comes back. False when the editor
    // could not open, or when the layout could not be saved and it stays.
    bool ActivatePageLayoutEditor(bool activate, bool discard, const CVxPrintPageInfo* info = nullptr,
                                  bool newLayout = false);
    CVxPageLayoutEditor* GetPageLayoutEditor();
    // A double click in the plan view, in pixels of the render area.
    void MainViewDblClick(double x, double y);
    // A length (and an angle, may be empty) typed while a wall is being
    // drawn; false when the text is no length or no wall is being drawn.
    bool ApplyTypedWallLength(const CVxStringW& length, const CVxStringW& angle);
    // A dimension line along the inner face of every wall, or of one.
    void DimensionAllWalls();
    void DimensionOneWall(int wall);

    // Property dialogues: the core decides what a command or a double click
    // edits, the host shows the dialogue (CVxAppCoreProperties.cpp).
    // The selected objects' dialogue; false without a selection.
    bool ShowSelectedObjectProperties();
    // Add Label...: the library's label where the pointer last was over the
    // plan, selected, and its properties shown to type the text in.
    bool AddLabelAtPointer();
    // The dialogue of room `region` of the current floor; false for none.
    bool ShowRoomProperties(int region);
    // The room under a point in pixels of the render area, -1 for none.
    int FindRoomAtPoint(double x, double y) const;

    // The project as a document. Where the user must decide, the core asks
    // through the host; every way of opening a file passes OpenFile.
    bool OpenFile(const CVxStringW& path, bool atStart);
    bool OpenMainProject(const CVxStringW& path, bool atStart);

    enum EVxLoadOutcome
    {
        VX_LOAD_OK,
        // What could be read of a damaged file, taken with the user's consent.
        VX_LOAD_DAMAGED,
        VX_LOAD_REFUSED,
        VX_LOAD_DECLINED,
    };
    // Reads a file that the user asked for into `project`, a scratch
    // project of the caller's: a file that is no project is refused with a
    // message that names it and says why, and what could be read of a
    // damaged one is taken only when the user agrees. Every way in (open,
    // command line, drop, merge, recovery, reload) passes here, so that no
    // file the program could not fully read is later saved over.
    static EVxLoadOutcome LoadProjectForUser(const CVxStringW& path, CVxProject* project,
                                             std::list<CVxMissingFileInfo>* missing, void* parent = nullptr);
    bool OpenRecentFile(int index);
    bool OpenSampleFile(const CVxStringW& path) { return OpenFile(path, false); }
    bool SaveMainProject();
    // Writes through a temporary file, so the target is replaced only by a
    // complete project.
    bool SaveMainProjectToFile(const CVxStringW& path);
    bool DoProjectSave();
    bool DoProjectSaveAs();
    void RevertProjectToSaved();
    void InitProjectAsCopy(CVxProject* source);
    // shape is one of the wall editor's outlines for a new project.
    void StartNewProject(double width, double height, int unit, bool startWallEditor, int shape = 0);
    bool ShouldEnableSaveProject() const;
    // The question before a modified project is left: false when the user
    // cancelled; a chosen save runs DoProjectSave.
    bool AskToSaveModifiedProject();

    // Four entries, the newest first; a sample is kept as "$SAMPLE$/name".
    void AddToRecentFiles(const CVxStringW& path);
    CVxStringW GetRecentFile(int index) const;
    void RemoveRecentFile(int index);
    CVxStringW ExpandPathMacros(const CVxStringW& path) const;
    CVxStringW GetSamplesFolder() const;
    bool IsInSamplesFolder(const CVxStringW& path) const;
    // The auto-save files of the application data folder, "PVSave*.pvp".
    static bool IsAutoSaveFile(const CVxStringW& path);

    // Proposes replacements for the files that the last load missed.
    void LibCheckFillMissingProjectFiles(std::list<CVxMissingFileInfo>* missing);
    // The user's decisions about the missing files: the project is saved
    // into `path` with them applied and loaded again from there.
    bool ResolveMissingFiles(const std::vector<CVxMissingFileInfo>& decided, const CVxStringW& path);
    // The Save As question; empty when cancelled. A name without extension
    // gets ".pvp".
    CVxStringW AskProjectSaveFileName();

    // The second project of a merge, in the unit of `current`, under the
    // opening rules of LoadProjectForUser.
    static bool LoadProjectForMerge(const CVxStringW& path, const CVxProject& current, CVxProject* second,
                                    void* parent = nullptr);
    // `merged`, a copy of the project, takes `second` in (see
    // CVxProject::MergeProject) and becomes the project; `second` is reset.
    void MergeProjects(CVxProject* merged, CVxProject* second, const CVxDPoint& shift,
                       const CVxDPoint& secondShift, bool createNewFloor);

    // Floors as the user works them; adding, removing and swapping are
    // undo steps, going to another floor is not.
    bool AddNewFloor();
    // With `ask`, only when the user agrees; the last floor stays.
    bool RemoveCurrentFloor(bool ask);
    bool SwapCurrentFloor(bool withHigher);
    bool GoToFloor(int index);

    // Undo by snapshots of the whole project. Every command that changes
    // the document calls CatchUndoRoom first. An armed call keeps the state
    // before the change; with armNext false the calls that follow keep
    // nothing, so that a drag calling it at every move is one step, and its
    // release arms the next step with CatchUndoRoom(true).
    void CatchUndoRoom(bool armNext);
    bool CanUndo() const;
    bool CanRedo() const;
    bool MakeUndo();
    bool MakeRedo();
    // Copies into `restored`, the snapshot about to come back, what the user
    // thinks of as settings of the document rather than edits of the plan,
    // so that undo and redo never take them back: print set-up, comments,
    // attachments, local coordinates, the background scan, the files kept
    // with the project.
    static void PreserveInfoInUndo(CVxProject* restored, const CVxProject* current);
    CVxUndoManager& GetUndoManager() { return *m_undo; }
    static constexpr unsigned undoLimit = 40;

    CVxFileChangeMonitor& GetFileMonitor() { return m_fileMonitor; }
    // The watcher saw the project's file change. True asks the host to
    // call again in a few seconds: the file is not readable right now, as
    // while another program replaces it in steps.
    bool OnOpenedFileChangedOnDisk();
    static constexpr int fileChangeRetryMs = 5000;
    static constexpr int thumbnailSize = 512;

    // The object library (CVxAppCoreLibrary.cpp). Library objects are parts
    // in centimetres on pages; the names table gives every library number
    // its display name, in the current language.
    struct CVxLibLocObjName
    {
        // The display name, and the English one it was made from.
        CVxStringW name;
        CVxStringW englishName;
        // A caption "@12 large" refers to row 12: base 12, suffix " large".
        int baseNumber = 0;
        CVxStringW suffix;
    };
    // The longest chain of "@" references that is followed.
    static constexpr int maxLibNameReferenceDepth = 16;
    // At start and after a change of additional libraries: standard pages,
    // library files, the user library, names in the current language. The
    // first InitProject runs it when nobody did before.
    void LibInitObjectLibrary();
    bool IsLibraryInitialized() const { return m_libraryInitialized; }
    // The documents folder's UserLib.pvl (moved there from older places),
    // the catalogue beside the program and the additional files.
    void LibLoadObjectLibraryFiles();
    // Library files that the user adds to the standard one, kept in the
    // additional library folder, each on or off. Each change loads the
    // library anew.
    bool LibAddAdditionalLibrary(const CVxStringW& path, CVxStringW* error);
    bool LibSetAdditionalLibraryEnabled(int index, bool enabled);
    bool LibRemoveAdditionalLibrary(int index);
    // After a change of language.
    void LocalizeLibrary();
    class CVxUserLibrary& GetUserLibrary();
    const std::vector<CVxLibLocObjName>& GetLibLocObjNames() const { return m_libLocObjNames; }
    CVxStringW GetLibObjName(int libObjID) const;
    double GetLibObjZHeight(int libObjID) const;
    CVxStringW GetLibObjWrlFile(int libObjID) const;
    // The page bit of a page name; false for a name no page has.
    bool GetLibIDFromName(const CVxStringW& name, int* id) const;
    // The page of that mask bit and display name, -1 for none.
    int FindLibPartPage(int mask, const CVxStringW& name) const;
    // `part` becomes a new object from library object `index`, in the
    // project's unit; the caller places it. False for no such object.
    bool LibWriteToPart(CVxPart* part, int index) const;
    // The text under a thumbnail: the caption, with the size the object
    // would get in the project when addDimensions is set, on a second line
    // when twoLines is set.
    CVxStringW LibGetPartViewCaption(const CVxPart* part, bool addDimensions, bool twoLines) const;
    // A copy of `part` (in the project's unit) joins the user library on
    // that user page; the index of the new object or -1. The user library is
    // saved.
    int LibAddObjectToUserLibrary(const CVxPart& part, int page);
    // A .pvo file: an ordinary project of one 500 by 500 room with the
    // object in its middle.
    bool LibExportObject(int index, const CVxStringW& path);
    // The object of a .pvo file joins the user library; its index, or -1
    // for a file that holds no object.
    int LibImportObject(const CVxStringW& path, int page);
    // User objects only; each asks where the user must decide, then saves
    // the user library and has the host rebuild its view.
    bool LibRemoveObject(int index);
    bool LibRenameObject(int index, const CVxStringW& name);
    bool LibReorderObjectToPos(int from, int to, bool after);
    // The thumbnail of a library object, drawn into the rectangle: the plan
    // picture of its 3D model with show3D where there is one, else its plan
    // symbol fitted in.
    void LibDrawObjectThumb(CVxDC* dc, CVxPart* part, bool show3D, int x, int y, int width, int height);
    // Plan pictures of 3D objects, by file name; null for none.
    const class CVxLibrary3DImage* FindLib3DImage(const CVxStringW& name);
    // The folders that compressed libraries were unpacked into go at exit.
    void LibRemoveTempFiles();
    // A new object from library object `index`, or a copy of `part` when
    // given, on the current floor and its active layer: selected, and
    // hanging on the pointer until a click or Enter fixes it. One undo step.
    // False for no such object, or while an editor has the view.
    bool LibStartCreatingObject(CVxPart* part, int index);
    // The same for a drag from the library view: the object stands centred
    // at (x, y), pixels of the plan view, follows the drag and is fixed at
    // the drop; with dropNow it is fixed at once.
    bool LibStartCreatingObjectByDropAtPos(int index, int x, int y, bool dropNow);
    // The object that hangs on the pointer or on a drag goes, and its undo
    // step with it; false when there is none.
    bool LibCancelCreatingObject();

private:
    // CVxAppCoreLibrary.cpp
    void BuildLibNames();
    // CVxAppCoreLibraryPlace.cpp: the new object centred at (px, py), pixels
    // from the object origin; its slot, or -1.
    int LibAddNewObject(const CVxPart* given, int index, double px, double py);
    std::shared_ptr<class CVxUserLibrary> m_userLibrary;
    std::shared_ptr<class CVxCorePartLibrary> m_partLibrary;
    std::vector<std::shared_ptr<class CVxLibrary3DImage>> m_lib3DImages;
    std::vector<CVxLibLocObjName> m_libLocObjNames;
    bool m_libraryInitialized = false;

public:
private:
    void AfterTransform();
    void AfterLayersChange();
    void Repaint();
    // Clears every object's selection flag and the last selected; true when
    // any was set.
    bool DeselectAllParts();
    void SelectionChanged(bool repaint);
    bool IsCentreHandle(int symbolIndex) const;
    // dirty is relative to the object origin.
    void RepaintDirty(const VxRECT& dirty);
    bool IsLeftButtonDown() const;
    void DrawSelectionRect(double x1, double y1, double x2, double y2);
    void FinishMeasuring(int button, unsigned modifiers, double x, double y);
    void EndMeasuring();
    // After a command on the selection: handles, listing, undo buttons,
    // repaint.
    void AfterSelectionCommand(bool listingChanged);
    // The selected objects to the end (or the start) of the drawing order.
    void ReorderSelection(bool selectedLast);
    void ZOrderStep(bool forward);
    // A single new object hangs on the pointer until a click fixes it.
    void PlaceOnCursor(int index);
    // The plan, the view and the host's floor controls for another floor.
    void AfterFloorChange();
    // Undo and redo alike, once the slot to restore is known.
    void RestoreUndoSlot(CVxProject* slot);
    // The view after an editor's own undo or redo.
    void AfterEditorUndo(bool sizeChanged);
    // The floor whose local coordinates apply, null when none do.
    const CVxFloor* LocalCoordsFloor() const;
    // True when the background scan was drawn.
    bool DrawRoomFloor(CVxDC* dc, int width, int height, double zoom, int x, int y, int clipX, int clipY,
                       int flags, const VxRECT& visible);
    void DrawRoomWalls(CVxDC* dc, double zoom, int x, int y, int flags, bool scanShown);
    // Lines only where `visible`, the part of the device being drawn, shows
    // them.
    void DrawRoomFloorGrid(CVxDC* dc, int width, int height, double zoom, int x, int y, int clipX, int clipY,
                           int flags, const VxRECT& visible);
    void DrawObjects(CVxDC* dc, double zoom, int originX, int originY, const VxRECT& updateRect, int flags);
    void DrawGridLabels(CVxDC* dc, double zoom, int x, int y, int width, int height, int flags);
    // The header and footer layout's objects on a printed page.
    void DrawPrintPageLayout(CVxDC* dc, const CVxPrintSizeCalculator& calc);

    unsigned char m_drawingAllowed = 0;
    unsigned short m_drawingPaused = 0;
    IVxSpecialEditor* m_activeEditor = nullptr;
    std::unique_ptr<CVxWallEditor> m_wallEditor;
    std::unique_ptr<CVxPageLayoutEditor> m_pageLayoutEditor;
    std::unique_ptr<IVxEditorHost> m_editorHost;
    CVxPart m_scanPart;
    CVxSpriteCache m_spriteCache;
    bool m_useSpriteCache = true;
    unsigned char m_appExiting = 0;
    CVxProject m_project;
    CVxFloorPlan m_floorPlan;
    std::vector<CVxMissingFileInfo> m_missingFiles;
    CVxStringW m_projectPath;
    CVxStringW m_appFolder;
    CVxFileChangeMonitor m_fileMonitor;
    std::unique_ptr<CVxUndoManager> m_undo;
    // The next CatchUndoRoom keeps a step.
    bool m_undoArmed = true;
    int m_firstSelected = -1;
    int m_mouseState = msIdle;
    int m_movingPart = -1;
    CVxDPoint m_dragStartOffset;
    bool m_dragged = false;
    bool m_multiSelectMode = false;
    bool m_tempDimMode = false;
    double m_mouseDownPos[2] = {0, 0};
    int m_keyMoveObject = -1;
    int m_touchSymbol = -1;
    double m_measureCalibrationLength = -1;
    CVxDPoint m_measureStart;
    CVxDPoint m_measureEnd;
    // The last pointer position, relative to the object origin.
    CVxDPoint m_lastPointer;
    int m_cursor = 1;
    CVxPartSelection m_selection;
    std::unique_ptr<CVxPart> m_painterSource;
    CVxStringW m_clipProjectId;
    bool m_drawBlackWhite = false;
    bool m_showAnnotations = true;
    double m_zoom = 1.0;
    double m_roundedZoom = 1.0;
    int m_tempKind = 0;
    double m_temp[4] = {0, 0, 0, 0};
    int m_margins[4] = {0, 0, 0, 0};
    VxPOINT m_viewOrigin;
};

CVxAppCore* VX_GetCore();
