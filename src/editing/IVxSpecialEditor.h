#pragma once
// A task that takes over the plan view for a while: the walls, one side of a
// room, an object's polygon, the page layout and the like. At most one is
// active; the core offers it the plan's drawing passes first, and the
// editors themselves extend this with their mouse, key and toolbar hooks.

#include "VxHostTypes.h"

class CVxDC;
struct VxRECT;

class IVxSpecialEditor
{
public:
    virtual ~IVxSpecialEditor() = default;

    // Over everything the plan drew, clipping already lifted, so the editor
    // may paint into the margins.
    virtual void OnDraw(CVxDC* /*dc*/, double /*zoom*/, int /*offsetX*/, int /*offsetY*/) {}
    // Under the plan: stage 0 right after the white ground, stage 1 over the
    // room colours, stage 2 over the walls and under the objects.
    virtual void OnDrawBackground(CVxDC* /*dc*/, double /*zoom*/, int /*offsetX*/, int /*offsetY*/,
                                  const VxRECT& /*clip*/, int /*flags*/, int /*stage*/)
    {
    }
    virtual void OnZoomChanged() {}
    // The editor's code, one of EVxEditorCode.
    virtual int GetID() const = 0;

    // Commands while the editor is active. The editor may give a command a
    // text and a shortcut of its own (true when it filled them), decide what
    // the tool bars show, and take a command over (true when it did).
    virtual bool GetMainToolbarButtonHint(EVxMainToolbarButtonCode /*code*/, CVxStringW& /*text*/)
    {
        return false;
    }
    virtual bool GetMainToolbarButtonShortcut(EVxMainToolbarButtonCode /*code*/, unsigned& /*modifiers*/,
                                              unsigned& /*key*/)
    {
        return false;
    }
    virtual bool IsMainToolbarButtonVisible(EVxMainToolbarButtonCode /*code*/) { return true; }
    // 1 shown, 0 hidden, -1 when the plain plan view's rules decide.
    virtual int IsContextToolbarButtonVisible(EVxMainToolbarButtonCode /*code*/, bool& /*enabled*/)
    {
        return -1;
    }
    virtual bool OnMainToolbarButtonAction(EVxMainToolbarButtonCode /*code*/) { return false; }
};
