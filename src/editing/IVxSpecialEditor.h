#pragma once
// A task that takes over the plan view for a while: the walls, one side of a
// room, an object's polygon, the page layout and the like. At most one is
// active; the core offers it every mouse, key, draw and toolbar event first.
// An editor works on the live project, keeping a backup of the state at
// activation, so that all drawing and object code work as usual; leaving it
// either keeps the result or puts the backup back. While active it has an
// undo history of its own, so a whole editing run is one step of the core's.

#include "CVxProject.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "VxHostTypes.h"

#include <memory>

class CVxDC;
class CVxFloorPlan;
class CVxUndoManager;
struct VxRECT;

// What an editor needs of the core that hosts it: the view's scale, the
// plan of the current floor and the rubber line of the view. Set at
// activation, so the editors never reach for the core themselves.
class IVxEditorHost
{
public:
    virtual ~IVxEditorHost() = default;
    virtual double GetEditorZoom() const = 0;
    // The rung of the zoom ladder nearest to the zoom.
    virtual double GetEditorRoundedZoom() const = 0;
    // The plan of the current floor, built anew from the floor's walls.
    virtual void EditorCreatePlan() = 0;
    // Margins and caches after the project's size changed.
    virtual void EditorRebuildRoom() = 0;
    virtual void EditorRepaint() = 0;
    // The view's rubber band: 1 line, 2 rectangle, 3 ellipse, 0 none; units.
    virtual void EditorSetRubber(int kind, double x1, double y1, double x2, double y2) = 0;
    // The pointer's last place, in pixels relative to the object origin.
    virtual CVxDPoint EditorLastPointer() const = 0;
    // The current floor's scan of a drawing, loaded anew from the floor's
    // file and rectangle; false when there is none.
    virtual bool EditorLoadBkgScan(bool show) = 0;
    // Where the loaded scan lies, in plan units; empty without one.
    virtual CVxDRect EditorBkgScanRect() const = 0;
};

class IVxSpecialEditor
{
public:
    IVxSpecialEditor() = default;
    virtual ~IVxSpecialEditor();
    IVxSpecialEditor(const IVxSpecialEditor&) = delete;
    IVxSpecialEditor& operator=(const IVxSpecialEditor&) = delete;

    // Commands while the editor is active. The editor may give a command a
    // text and a shortcut of its own (true when it filled them), decide what
    // the tool bars show, and take a command over (true when it did).
    virtual bool OnMainToolbarButtonAction(EVxMainToolbarButtonCode /*code*/) { return false; }
    virtual bool IsMainToolbarButtonVisible(EVxMainToolbarButtonCode /*code*/) { return true; }
    // 1 shown, 0 hidden, -1 when the plain plan view's rules decide.
    virtual int IsContextToolbarButtonVisible(EVxMainToolbarButtonCode /*code*/, bool& /*enabled*/)
    {
        return -1;
    }
    virtual bool GetMainToolbarButtonHint(EVxMainToolbarButtonCode /*code*/, CVxStringW& /*text*/)
    {
        return false;
    }
    virtual bool GetMainToolbarButtonShortcut(EVxMainToolbarButtonCode /*code*/, unsigned& /*modifiers*/,
                                              unsigned& /*key*/)
    {
        return false;
    }

    // Pointer and keys, in pixels relative to the object origin. True when
    // the editor took the event; an editor that has handled everything
    // clears ioGoOn, and the core's own object logic then doesn't run.
    virtual bool OnMouseMove(unsigned /*modifiers*/, double /*x*/, double /*y*/, int /*source*/,
                             bool& /*ioGoOn*/)
    {
        return false;
    }
    virtual bool OnMouseDown(int /*button*/, unsigned /*modifiers*/, double /*x*/, double /*y*/,
                             int /*source*/, bool& /*ioGoOn*/)
    {
        return false;
    }
    virtual bool OnMouseUp(int /*button*/, unsigned /*modifiers*/, double /*x*/, double /*y*/, int /*source*/)
    {
        return false;
    }
    virtual bool OnDblClick(double /*x*/, double /*y*/) { return false; }
    // A cursor code of EVxViewCursor; 1 means no opinion.
    virtual int GetMouseCursor(unsigned /*modifiers*/, double /*x*/, double /*y*/) { return 1; }
    virtual bool OnKeyDown(unsigned /*key*/, unsigned /*modifiers*/) { return false; }
    virtual bool OnKeyPress(wchar_t& /*ioChar*/) { return false; }
    virtual bool OnKeyUp(unsigned /*key*/, unsigned /*modifiers*/) { return false; }
    virtual bool OnKeyArrowsPressed(unsigned /*key*/, unsigned /*modifiers*/) { return false; }

    // Over everything the plan drew, clipping already lifted, so the editor
    // may paint into the margins.
    virtual void OnDraw(CVxDC* /*dc*/, double /*zoom*/, int /*offsetX*/, int /*offsetY*/) {}
    // Under the plan: stage 0 right after the white ground, stage 1 over the
    // room colours, stage 2 over the walls and under the objects.
    virtual void OnDrawBackground(CVxDC* /*dc*/, double /*zoom*/, int /*offsetX*/, int /*offsetY*/,
                                  const VxRECT& /*clip*/, int /*flags*/, int /*stage*/)
    {
    }
    // A rubber band ended; the rectangle in pixels relative to the object
    // origin. True when the editor took it.
    virtual bool OnRectSelect(const CVxDRect& /*rect*/) { return false; }
    virtual void OnInterActionFinish(bool /*accepted*/) {}
    virtual void OnZoomChanged() {}
    virtual bool OnContextEditCopy(CVxStringA& /*outText*/) { return false; }
    virtual bool OnContextEditCut(CVxStringA& /*outText*/) { return false; }
    virtual bool OnContextEditPaste(const CVxStringA& /*text*/) { return false; }

    // The editor's own undo: whole copies of the project while it is active.
    virtual bool CanUndo() const;
    virtual bool CanRedo() const;
    // True when the total size of the project changed, so that the view
    // fits again.
    virtual bool MakeUndo();
    virtual bool MakeRedo();
    virtual void CatchUndoStep(bool armNext);

    // Leaves the editor: the backup comes back on a discard. True if it was
    // active.
    virtual bool Deactivate(bool discard);
    // The editor's result into target: the live project, or a copy of it for
    // saving while the editor is open.
    virtual void WriteStateToProject(CVxProject* target);
    virtual void SetProjectSaved(bool saved) { m_savedWhileEditing = saved; }
    virtual bool CanSaveProjectWhileEditing() const { return false; }
    virtual bool WasProjectSavedWhileEditing() const { return m_savedWhileEditing; }
    virtual bool IsActive() const { return m_active; }
    virtual bool IsModified(bool* outChanged = nullptr) const;
    // False when the user wants to keep the changes after all.
    virtual bool QueryCanClose();
    virtual const CVxProject& GetOriginalProject() const { return m_backup; }
    // After closing, once the core has kept what it needs of the backup.
    void ReleaseBackup() { m_backup.Reset(); }
    virtual CVxStringW GetEditorLocalizedName() const { return CVxStringW(); }
    // The editor's code, one of EVxEditorCode.
    virtual int GetID() const = 0;

    // Takes over the project; nothing if already active.
    void Activate(CVxProject* project, IVxEditorHost* host);
    CVxProject* GetProject() const { return m_project; }
    bool IsUndoArmed() const { return m_undoArmed; }

protected:
    // After the project was replaced by an undo or redo step.
    virtual void AfterUndoRestore() {}
    bool RestoreSlot(CVxProject* slot);

    CVxProject* m_project = nullptr;
    CVxProject m_backup;
    bool m_active = false;
    bool m_modified = false;
    bool m_savedWhileEditing = false;
    std::unique_ptr<CVxUndoManager> m_undo;
    bool m_undoArmed = true;
    int m_keyMoveItem = -1;
    IVxEditorHost* m_host = nullptr;
};
