#pragma once
// The header and footer layout of a print is a project of its own: one
// sheet of the paper's size, with labels, lines and pictures around one
// "Page contents" object that marks where the plan goes. This editor lends
// the plan view to such a layout for a while: the open project steps aside
// into the backup, the layout takes its place, and on closing the layout
// goes back into its file and the project returns untouched.

#include "IVxSpecialEditor.h"

// What the print dialog hands to the editor: the paper and the file.
struct CVxPrintPageInfo
{
    // The paper standing upright, in millimetres.
    double widthMm = 210;
    double heightMm = 297;
    bool landscape = false;
    CVxStringW file;

    double PageWidthMm() const;
    double PageHeightMm() const;
};

class CVxPageLayoutEditor : public IVxSpecialEditor
{
public:
    CVxPageLayoutEditor();
    ~CVxPageLayoutEditor() override;

    // Takes over the project: the layout from info.file, or a blank page
    // of the paper's size in `unit` when newLayout is set or the file can't
    // be read. False when already active.
    bool Activate(CVxProject* project, IVxEditorHost* host, const CVxPrintPageInfo& info, bool newLayout,
                  int unit);
    // Writes the layout into its file; false when that failed, and the
    // editor then stays as it is.
    bool SaveLayout();
    // Gives the project back; an accept writes the layout first unless
    // SaveLayout just did.
    bool Deactivate(bool discard) override;
    // What the editor gives back is the project it stepped aside for, so a
    // save or an auto-save while the layout is open writes the project.
    void WriteStateToProject(CVxProject* target) override;
    bool CanSaveProjectWhileEditing() const override { return true; }
    int GetID() const override { return VX_EDITOR_PAGE_LAYOUT; }
    CVxStringW GetEditorLocalizedName() const override;

    // A page has no walls, floors or 3D: only the tools for drawing on a
    // sheet stay, and the others are refused even by their shortcuts.
    bool IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code) override;
    bool OnMainToolbarButtonAction(EVxMainToolbarButtonCode code) override;
    void CatchUndoStep(bool armNext) override;

    const CVxStringW& GetFile() const { return m_file; }

    // A blank layout: the sheet of the page in `unit` (inches for the
    // imperial units, centimetres otherwise), seen at its real size at 100%,
    // with the page contents object inside the default header and footer.
    static void ResetToPage(CVxProject& project, const CVxPrintPageInfo& info, int unit);
    // Default bands of a new layout, in millimetres.
    static constexpr double kHeaderMm = 30;
    static constexpr double kFooterMm = 20;
    static constexpr double kSideMm = 15;

protected:
    void AfterUndoRestore() override { m_saved = false; }

private:
    CVxStringW m_file;
    // The layout in the file is the one in the editor.
    bool m_saved = false;
};
