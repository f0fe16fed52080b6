#pragma once
// The main tool bar, and the maker of every command item of the window: it
// owns one CVxAction per command and item index, and builds the tool bars,
// the menus and the pop-ups from the core's command table.

#include "VxHostTypes.h"

#include <QIcon>
#include <QList>
#include <QMap>
#include <QPair>
#include <QToolBar>

class CVxAction;
class CVxMainWindow;
class CVxSegmentedControl;
class QMenu;
class QToolButton;

class CVxMainToolbar : public QToolBar
{
    Q_OBJECT
public:
    // The index of the copies that the context tool bars and the pop-ups
    // show: they are shown and hidden by the selection, which must not hide
    // the menu bar's items, and their keys belong to the menu bar's items.
    static constexpr int contextIndex = 1000;

    explicit CVxMainToolbar(CVxMainWindow* window);

    // Code 0 adds a separator.
    QAction* AddButton(EVxMainToolbarButtonCode code);
    CVxAction* FindAction(int code, int index = 0) const;
    CVxAction* FindAddAction(EVxMainToolbarButtonCode code, int index = 0);
    void RemoveAction(int code, int index = 0);
    // The button of an action on this tool bar, or null.
    QToolButton* ToolButtonForAction(QAction* action) const;
    // Every item of the code: the menu bar's, the tool bars' and the pop-ups'.
    void CheckButton(int code, bool check);
    void EnableButton(int code, bool enable);
    void ShowButton(int code, bool show);
    bool IsButtonVisible(int code) const;
    CVxAction* CreateGenericAction(EVxMainToolbarButtonCode code, int index, const QString& text,
                                   QObject* parent);
    // Texts, tool tips and shortcuts again, after a change of language.
    void LocalizeAllActions();
    QList<CVxAction*> GetAllActions() const { return m_actions.values(); }

    // The buttons whose presence mask holds every bit of `interfaceMask`.
    void CreateMainToolbarForInterface(unsigned interfaceMask);
    void CreateFloorToolbar(QToolBar* bar, QMenu* floorMenu);
    void CreateContextToolbar(QToolBar* bar);
    void CreateContextAlignToolbar(QToolBar* bar);
    void CreateProjectMenu(QMenu* menu, QMenu*& samplesMenu, QAction*& recentSeparator);
    void CreateEditMenu(QMenu* menu);
    void CreateFloorMenu(QMenu* menu);
    void CreateObjectsMenu(QMenu* menu);
    void CreateViewMenu(QMenu* menu);
    void CreateConfigureMenu(QMenu* menu);
    void CreateHelpMenu(QMenu* menu);
    void CreateObjectContextMenu(QMenu* menu);
    void CreateProjectContextMenu(QMenu* menu);
    void CreateSpecialEdContextMenu(QMenu* menu);
    void CreateNewObjContextMenu(QMenu* menu);
    void CreateLongPressContextMenu(QMenu* menu);
    static bool IsTouchInterfaceAvailable();

    // The floors of the project as segments, the current one selected.
    void RebuildFloorSegments();
    CVxSegmentedControl* GetFloorControl() const { return m_floorControl; }

    // The icon of an action, drawn from its SVG at 1x and 2x: in the light
    // ink for a dark scheme when the icon allows it, mirrored in a
    // right-to-left layout when it points somewhere.
    static QIcon RenderIcon(const QString& resource, bool mirrorable, bool autoDark, bool dark);
    void UpdateButtonsWithAutoDarkIcons(bool dark);

private:
    void AddMenuItems(QMenu* menu, const QList<int>& codes, int index);
    void SetActionIcon(CVxAction* action);

    CVxMainWindow* m_window;
    QMap<QPair<int, int>, CVxAction*> m_actions;
    // The whole button list of the tool bar, before an interface picks.
    QList<QAction*> m_buttons;
    CVxSegmentedControl* m_floorControl = nullptr;
    bool m_dark = false;
};
