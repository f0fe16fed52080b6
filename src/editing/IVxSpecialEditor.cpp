// The frame shared by the editors that take over the plan view: activation,
// leaving with or without the result, and the editor's own undo.

#include "IVxSpecialEditor.h"

#include "CVxLocalize.h"
#include "CVxUndoManager.h"
#include "IVxAppHelperCallback.h"
#include "VxEps.h"

#include <cmath>

IVxSpecialEditor::~IVxSpecialEditor() = default;

void IVxSpecialEditor::Activate(CVxProject* project, IVxEditorHost* host)
{
    if (m_active)
        return;
    m_undoArmed = true;
    m_keyMoveItem = -1;
    m_active = true;
    m_modified = false;
    m_savedWhileEditing = false;
    m_project = project;
    m_host = host;
}

bool IVxSpecialEditor::Deactivate(bool /*discard*/)
{
    if (!m_active)
        return false;
    m_active = false;
    return true;
}

void IVxSpecialEditor::WriteStateToProject(CVxProject* target)
{
    if (m_project && target && target != m_project)
        m_project->CopyTo(target);
}

bool IVxSpecialEditor::IsModified(bool* outChanged) const
{
    if (outChanged)
        *outChanged = m_modified;
    return m_modified;
}

bool IVxSpecialEditor::QueryCanClose()
{
    if (!IsModified())
        return true;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return true;
    CVxStringW text = GetEditorLocalizedName();
    if (!text.IsEmpty())
        text += L": ";
    text +=
        VX_GetLoc()->LocalizeMessage(105, L"Project was modified. Do you really want to lose all changes?");
    return host->MsgBox(text, VX_GetLoc()->LocalizeMessage(33, L"Warning"),
                        VX_MB_YES | VX_MB_NO | VX_MB_ICON_QUESTION) != VX_MBR_NO;
}

bool IVxSpecialEditor::CanUndo() const
{
    return m_undo && m_undo->CanUndo();
}

bool IVxSpecialEditor::CanRedo() const
{
    return m_undo && m_undo->CanRedo();
}

void IVxSpecialEditor::CatchUndoStep(bool armNext)
{
    if (m_undoArmed && m_undo && m_project)
        m_undo->AddToUndoList(m_project);
    m_undoArmed = armNext;
    m_keyMoveItem = -1;
    m_modified = true;
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->EnableUndoButtons();
}

bool IVxSpecialEditor::RestoreSlot(CVxProject* slot)
{
    if (!slot || !m_project)
        return false;
    const bool sizeChanged = std::fabs(slot->GetTotalWidth() - m_project->GetTotalWidth()) > EPS ||
                             std::fabs(slot->GetTotalHeight() - m_project->GetTotalHeight()) > EPS;
    // The file name and the saved state belong to the document, not to a
    // step of the editing.
    const bool modified = m_project->m_modified;
    slot->CopyTo(m_project);
    m_project->m_modified = modified;
    m_undoArmed = true;
    m_keyMoveItem = -1;
    if (m_host)
        m_host->EditorCreatePlan();
    AfterUndoRestore();
    if (IVxAppHelperCallback* host = VX_GetAppHelper())
        host->EnableUndoButtons();
    return sizeChanged;
}

bool IVxSpecialEditor::MakeUndo()
{
    if (!CanUndo())
        return false;
    return RestoreSlot(m_undo->MakeUndo(m_project));
}

bool IVxSpecialEditor::MakeRedo()
{
    if (!CanRedo())
        return false;
    return RestoreSlot(m_undo->MakeRedo());
}
