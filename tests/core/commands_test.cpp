// The command table as the core answers for it: shortcuts and their texts,
// interface presence, hints, and the active editor's say over commands.

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxOptions.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

// The test host, with the preference for the Cmd key switchable and the
// check marks the core sets remembered.
class CVxCommandHost : public CVxAppHelperHeadless
{
public:
    CVxCommandHost() : CVxAppHelperHeadless(VxTestTempFolder() + L"appdata/", VxTestTempFolder() + L"docs/")
    {
        m_previous = VX_GetAppHelper();
        VX_SetAppHelperCallback(this);
    }
    ~CVxCommandHost() override { VX_SetAppHelperCallback(m_previous); }
    bool PrefersKeyboardShortcutsWithCmdKey() override { return m_prefersCmd; }
    void CheckMainToolbarButton(EVxMainToolbarButtonCode code, bool check) override
    {
        m_checks.emplace_back(code, check);
    }
    bool ObjPropShowModal(bool /*multi*/, bool* changed) override
    {
        ++m_propertyDialogs;
        if (changed)
            *changed = false;
        return true;
    }
    bool m_prefersCmd = false;
    std::vector<std::pair<int, bool>> m_checks;
    int m_propertyDialogs = 0;

private:
    IVxAppHelperCallback* m_previous;
};

// An editor that renames Save, gives it another key, and keeps Esc to the
// core.
class CVxRenamingEditor : public IVxSpecialEditor
{
public:
    int GetID() const override { return VX_EDITOR_WALL; }
    bool GetMainToolbarButtonHint(EVxMainToolbarButtonCode code, CVxStringW& text) override
    {
        if (code != VX_TB_SAVE)
            return false;
        text = L"Keep Walls";
        return true;
    }
    bool GetMainToolbarButtonShortcut(EVxMainToolbarButtonCode code, unsigned& modifiers,
                                      unsigned& key) override
    {
        if (code != VX_TB_SAVE)
            return false;
        modifiers = CVxAppCore::modCtrl;
        key = 'K';
        return true;
    }
    bool IsMainToolbarButtonVisible(EVxMainToolbarButtonCode code) override { return code != VX_TB_PRINT; }
};

EVxMainToolbarButtonCode Code(int code)
{
    return static_cast<EVxMainToolbarButtonCode>(code);
}

} // namespace

TEST(Commands, ShortcutTexts)
{
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_F12), L"F12");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_F8), L"F8");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_F1), L"F1");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_PGUP), L"PgUp");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_PGDN), L"PgDn");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_DELETE), L"Del");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, VX_KEY_ESC), L"Esc");
    EXPECT_EQ(CVxAppCore::ShortcutToString(CVxAppCore::modCtrl, '+'), L"Ctrl++");
    EXPECT_EQ(CVxAppCore::ShortcutToString(CVxAppCore::modCtrl | CVxAppCore::modShift, 'S'), L"Ctrl+Shift+S");
    EXPECT_EQ(CVxAppCore::ShortcutToString(CVxAppCore::modAlt, VX_KEY_ENTER), L"Alt+Enter");
    EXPECT_EQ(CVxAppCore::ShortcutToString(CVxAppCore::modAlt, VX_KEY_LEFT), L"Alt+left");
    EXPECT_EQ(CVxAppCore::ShortcutToString(0, '*'), L"*");
    EXPECT_EQ(CVxAppCore::ShortcutToString(CVxAppCore::modCtrl, 0), L"");
}

TEST(Commands, FirstShortcutUnlessTheHostPrefersTheCmdKey)
{
    CVxCommandHost host;
    CVxAppCore* core = VX_GetCore();
    unsigned modifiers = 0, key = 0;
    ASSERT_TRUE(core->GetMainToolbarButtonShortcut(VX_TB_SAVE_AS, modifiers, key));
    EXPECT_EQ(CVxAppCore::ShortcutToString(modifiers, key), L"F12");
    ASSERT_TRUE(core->GetMainToolbarButtonShortcut(VX_TB_EDIT_WALLS, modifiers, key));
    EXPECT_EQ(CVxAppCore::ShortcutToString(modifiers, key), L"F8");
    ASSERT_TRUE(core->GetMainToolbarButtonShortcut(VX_TB_HELP_FILE, modifiers, key));
    EXPECT_EQ(CVxAppCore::ShortcutToString(modifiers, key), L"F1");
    host.m_prefersCmd = true;
    ASSERT_TRUE(core->GetMainToolbarButtonShortcut(VX_TB_SAVE_AS, modifiers, key));
    EXPECT_EQ(CVxAppCore::ShortcutToString(modifiers, key), L"Ctrl+Shift+S");
    ASSERT_TRUE(core->GetMainToolbarButtonShortcut(VX_TB_HELP_FILE, modifiers, key));
    EXPECT_EQ(CVxAppCore::ShortcutToString(modifiers, key), L"Ctrl+?");
    // A single shortcut is the same for both kinds of host.
    ASSERT_TRUE(core->GetMainToolbarButtonShortcut(VX_TB_ZOOM_SELECTED, modifiers, key));
    EXPECT_EQ(CVxAppCore::ShortcutToString(modifiers, key), L"Ctrl++");
}

TEST(Commands, PresenceMasks)
{
    const CVxAppCore* core = VX_GetCore();
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(Code(0)), 255u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(Code(133)), 255u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(Code(182)), 255u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(Code(500)), 255u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(VX_TB_NEW_PROJECT), 3u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(VX_TB_CTX_UNGROUP), 3u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(VX_TB_NEW_PROJECT_TOUCH), 12u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(VX_TB_TOUCH_MODE), 6u);
    EXPECT_EQ(core->GetMainToolbarButtonInterfacePresence(VX_TB_UNDO), 255u);
    EXPECT_TRUE(core->IsMainToolbarButtonForInterface(VX_TB_NEW_PROJECT, VX_IF_DESKTOP));
    EXPECT_FALSE(core->IsMainToolbarButtonForInterface(VX_TB_NEW_PROJECT_TOUCH, VX_IF_DESKTOP));
    EXPECT_TRUE(core->IsMainToolbarButtonForInterface(VX_TB_TOUCH_MODE, VX_IF_DESKTOP_WITH_TOUCH));
    EXPECT_FALSE(core->IsMainToolbarButtonForInterface(VX_TB_TOUCH_MODE, VX_IF_TOUCH_ONLY));
}

TEST(Commands, SeparatorIsNoCommand)
{
    CVxAppCore* core = VX_GetCore();
    unsigned modifiers = 0, key = 0;
    bool mirrorable = true, autoDark = true;
    EXPECT_TRUE(core->GetMainToolbarButtonHint(VX_TB_SEPARATOR, true).IsEmpty());
    EXPECT_TRUE(core->GetMainToolbarButtonIconName(VX_TB_SEPARATOR, mirrorable, autoDark).IsEmpty());
    EXPECT_FALSE(mirrorable || autoDark);
    EXPECT_FALSE(core->GetMainToolbarButtonShortcut(VX_TB_SEPARATOR, modifiers, key));
    EXPECT_FALSE(core->IsMainToolbarButtonCheckable(VX_TB_SEPARATOR));
    EXPECT_FALSE(core->DoMainToolbarButtonAction(VX_TB_SEPARATOR));
}

TEST(Commands, EveryShortcutBelongsToANamedCommand)
{
    CVxAppCore* core = VX_GetCore();
    int withShortcut = 0;
    for (int code = 1; code <= VX_TB_LAST; ++code) {
        unsigned modifiers = 0, key = 0;
        if (!core->GetMainToolbarButtonShortcut(Code(code), modifiers, key))
            continue;
        ++withShortcut;
        EXPECT_FALSE(core->GetMainToolbarButtonHint(Code(code), false).IsEmpty()) << code;
        EXPECT_FALSE(CVxAppCore::ShortcutToString(modifiers, key).IsEmpty()) << code;
    }
    EXPECT_EQ(withShortcut, 55);
}

TEST(Commands, HintsWithShortcutAndPainterLine)
{
    CVxAppCore* core = VX_GetCore();
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_SAVE_AS, false), L"Save As...");
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_SAVE_AS, true), L"Save As... (F12)");
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_ZOOM_SELECTED, true),
              L"Zoom to Selected Objects (Ctrl++)");
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_CTX_REMOVE, true), L"Remove (Del)");
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_CUT, true), L"Cut (Ctrl+X)");
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_REVERT, true), L"Revert to Saved");
    for (EVxMainToolbarButtonCode code : {VX_TB_FORMAT_PAINTER, VX_TB_CTX_FORMAT_PAINTER})
        EXPECT_EQ(core->GetMainToolbarButtonHint(code, true),
                  L"Copy Properties\nDouble-click to apply to multiple objects");
    EXPECT_TRUE(core->GetMainToolbarButtonHint(Code(10), true).IsEmpty());
    EXPECT_TRUE(core->GetMainToolbarButtonHint(Code(121), true).IsEmpty());
}

TEST(Commands, IconFlags)
{
    CVxAppCore* core = VX_GetCore();
    bool mirrorable = false, autoDark = false;
    EXPECT_EQ(core->GetMainToolbarButtonIconName(VX_TB_OPEN, mirrorable, autoDark), L"tbFileOpen");
    EXPECT_TRUE(mirrorable && autoDark);
    EXPECT_EQ(core->GetMainToolbarButtonIconName(VX_TB_ANNOTATIONS, mirrorable, autoDark), L"tbAnnotations");
    EXPECT_TRUE(autoDark);
    EXPECT_FALSE(mirrorable);
    // Coloured icons keep their colours on a dark ground.
    for (int code : {15, 16, 49, 50, 56, 57, 59, 165}) {
        EXPECT_FALSE(core->GetMainToolbarButtonIconName(Code(code), mirrorable, autoDark).IsEmpty()) << code;
        EXPECT_FALSE(autoDark) << code;
    }
    EXPECT_TRUE(core->GetMainToolbarButtonIconName(VX_TB_SAVE_AS, mirrorable, autoDark).IsEmpty());
}

TEST(Commands, ViewFlagsToggleAndShowTheirChecks)
{
    CVxCommandHost host;
    CVxAppCore* core = VX_GetCore();
    CVxOptions* options = VX_GetOptions();
    const bool grid = options->m_showGrid;
    EXPECT_TRUE(core->IsMainToolbarButtonCheckable(VX_TB_SHOW_GRID));
    EXPECT_FALSE(core->IsMainToolbarButtonCheckable(VX_TB_UNDO));
    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_SHOW_GRID));
    EXPECT_EQ(options->m_showGrid, !grid);
    EXPECT_NE(std::find(host.m_checks.begin(), host.m_checks.end(), std::make_pair(111, !grid)),
              host.m_checks.end());
    const bool blackWhite = core->GetDrawBlackWhite();
    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_BLACK_WHITE));
    EXPECT_EQ(core->GetDrawBlackWhite(), !blackWhite);
    EXPECT_NE(std::find(host.m_checks.begin(), host.m_checks.end(), std::make_pair(108, !blackWhite)),
              host.m_checks.end());
    core->DoMainToolbarButtonAction(VX_TB_BLACK_WHITE);
    core->DoMainToolbarButtonAction(VX_TB_SHOW_GRID);
    EXPECT_EQ(options->m_showGrid, grid);
}

TEST(Commands, ActiveEditorIsAskedFirst)
{
    CVxCommandHost host;
    CVxAppCore* core = VX_GetCore();
    CVxRenamingEditor editor;
    EXPECT_FALSE(core->IsMainToolbarButtonVisible(VX_TB_DISCARD_CLOSE));
    EXPECT_FALSE(core->DoMainToolbarButtonAction(VX_TB_DISCARD_CLOSE));
    core->SetActiveEditor(&editor);
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_SAVE, true), L"Keep Walls (Ctrl+K)");
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_UNDO, true), L"Undo (Ctrl+Z)");
    EXPECT_FALSE(core->IsMainToolbarButtonVisible(VX_TB_PRINT));
    EXPECT_TRUE(core->IsMainToolbarButtonVisible(VX_TB_DISCARD_CLOSE));
    // Esc leaves the editor, its changes discarded.
    EXPECT_TRUE(core->DoMainToolbarButtonAction(VX_TB_DISCARD_CLOSE));
    EXPECT_EQ(core->GetActiveEditor(), nullptr);
    EXPECT_EQ(core->GetMainToolbarButtonHint(VX_TB_SAVE, true), L"Save (Ctrl+S)");
}

TEST(Commands, ToolsActAsARadioGroup)
{
    CVxCommandHost host;
    VX_GetCore()->CheckMouseStateToolbarButtons(VX_TB_NEW_WALL);
    int checked = 0;
    for (const auto& [code, check] : host.m_checks) {
        if (check) {
            ++checked;
            EXPECT_EQ(code, VX_TB_NEW_WALL);
        }
    }
    EXPECT_EQ(checked, 1);
    EXPECT_EQ(host.m_checks.size(), 12u);
}

// Add Label puts a label where the pointer was, selected, opens its
// properties, and one undo takes it away.
TEST(Commands, AddLabelPlacesALabelAndAsksForItsText)
{
    CVxCommandHost host;
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    core->SetZoom(1.0);
    auto labels = [core] {
        int count = 0;
        for (const CVxPart& part : core->GetProject().GetFloor()->m_objects)
            count += part.inUse && part.type == ptLabel;
        return count;
    };
    const int before = labels();
    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_ADD_LABEL));
    EXPECT_EQ(labels(), before + 1);
    EXPECT_EQ(core->GetSelCount(), 1);
    EXPECT_EQ(host.m_propertyDialogs, 1);
    core->MakeUndo();
    EXPECT_EQ(labels(), before);
}
