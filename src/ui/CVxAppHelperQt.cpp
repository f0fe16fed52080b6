#include "CVxAppHelperQt.h"

#include "CVxObjectPropertiesDlg.h"
#include "CVxPlanGraph.h"
#include "CVxPropertyWidgets.h"
#include "CVxRoomDlgs.h"
#include "CVxWallEditor.h"
#include "CVxWallEditorDlgs.h"

#include "CVxAppCore.h"
#include "CVxLibraryForm.h"
#include "CVxLocalize.h"
#include "CVxMainRenderArea.h"
#include "CVxMainScrollArea.h"
#include "CVxMainStatusBar.h"
#include "CVxMainToolbar.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>

#include <QClipboard>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>
#include <QUrl>
#include <QUuid>
#include <functional>
#include <memory>

CVxAppHelperQt::CVxAppHelperQt() = default;

int CVxAppHelperQt::GetLogicalDpi()
{
    // Asked once of the main window and kept for the process.
    static int dpi = 0;
    if (dpi == 0) {
        CVxMainWindow* window = CVxMainWindow::GetInstance();
        dpi = window ? window->logicalDpiX() : 96;
        if (dpi <= 0)
            dpi = 96;
    }
    return dpi;
}

void CVxAppHelperQt::GetMsgBoxButtonTexts(CVxStringW& yes, CVxStringW& no, CVxStringW& ok, CVxStringW& cancel,
                                          CVxStringW& save)
{
    CVxLocalize* loc = VX_GetLoc();
    yes = loc->LocalizeMessage(178, L"Yes");
    no = loc->LocalizeMessage(179, L"No");
    ok = loc->LocalizeMessage(1, L"OK");
    cancel = loc->LocalizeMessage(2, L"Cancel");
    save = loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_MAINMENU), 5, L"Save");
    // Accelerators only when they can tell the two answers apart.
    if (!yes.IsEmpty() && !no.IsEmpty() && yes[0] != no[0]) {
        if (yes[0] < 123)
            yes = L"&" + yes;
        if (no[0] < 123)
            no = L"&" + no;
    }
}

void CVxAppHelperQt::HideSplashScreen()
{
    if (s_splash)
        s_splash->hide();
}

int CVxAppHelperQt::MsgBox(const CVxStringW& text, const CVxStringW& caption, unsigned flags, void* parent,
                           EVxMsgButton defaultButton, EVxMsgButton /*escapeButton*/)
{
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    if (flags & VX_MB_ICON_CRITICAL)
        icon = QMessageBox::Critical;
    else if (flags & VX_MB_ICON_WARNING)
        icon = QMessageBox::Warning;
    else if (flags & VX_MB_ICON_QUESTION)
        icon = QMessageBox::Question;
    else if (flags & VX_MB_ICON_INFORMATION)
        icon = QMessageBox::Information;

    unsigned buttons = flags & 0xFF00u;
    if (buttons == 0)
        buttons = VX_MB_OK;
    // While the session ends nobody is there to answer: the careful answer
    // is given at once, and a box that the end interrupted gives it too.
    const auto unanswered = [buttons] {
        if (buttons & VX_MB_CANCEL)
            return static_cast<int>(VX_MBR_CANCEL);
        if (buttons & VX_MB_NO)
            return static_cast<int>(VX_MBR_NO);
        return static_cast<int>(VX_MBR_OTHER);
    };
    if (CVxMainWindow::IsSessionEnding())
        return unanswered();

    QWidget* owner = static_cast<QWidget*>(parent);
    if (!owner)
        owner = QApplication::activeWindow();
    if (!owner)
        owner = CVxMainWindow::GetInstance();

    QMessageBox box(icon, caption.ToQString(), text.ToQString(), QMessageBox::NoButton, owner);
    CVxStringW yes, no, ok, cancel, save;
    GetMsgBoxButtonTexts(yes, no, ok, cancel, save);
    struct SVxButton
    {
        EVxMsgButton code;
        const CVxStringW* text;
        QMessageBox::ButtonRole role;
        int result;
    };
    const SVxButton all[] = {{VX_MB_SAVE, &save, QMessageBox::AcceptRole, VX_MBR_YES},
                             {VX_MB_YES, &yes, QMessageBox::YesRole, VX_MBR_YES},
                             {VX_MB_NO, &no, QMessageBox::NoRole, VX_MBR_NO},
                             {VX_MB_OK, &ok, QMessageBox::AcceptRole, VX_MBR_OTHER},
                             {VX_MB_CANCEL, &cancel, QMessageBox::RejectRole, VX_MBR_CANCEL}};
    QHash<QAbstractButton*, int> results;
    for (const SVxButton& b : all) {
        if (!(buttons & b.code))
            continue;
        QPushButton* button = box.addButton(b.text->ToQString(), b.role);
        results.insert(button, b.result);
        if (b.code == VX_MB_CANCEL)
            box.setEscapeButton(button);
        if (b.code == defaultButton)
            box.setDefaultButton(button);
    }
    box.exec();
    if (CVxMainWindow::IsSessionEnding())
        return unanswered();
    return results.value(box.clickedButton(), VX_MBR_OTHER);
}

bool CVxAppHelperQt::SystemExecute(const CVxStringW& target)
{
    const QString text = target.ToQString();
    if (text.contains(QStringLiteral("://")))
        return QDesktopServices::openUrl(QUrl(text));
    return QDesktopServices::openUrl(QUrl::fromLocalFile(text));
}

bool CVxAppHelperQt::OpenHelpTopic(const CVxStringW& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path.ToQString()));
}

void CVxAppHelperQt::GetCurrentMousePos(double& x, double& y)
{
    if (IsTouchInterface())
        return;
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window || !window->GetRenderArea())
        return;
    const QPoint local = window->GetRenderArea()->mapFromGlobal(QCursor::pos());
    const VxPOINT& origin = VX_GetCore()->GetViewOrigin();
    x = local.x() - origin.x;
    y = local.y() - origin.y;
}

int CVxAppHelperQt::GetKeyState(EVxKey key)
{
    switch (key) {
    case VX_KEY_SHIFT:
        return (QGuiApplication::keyboardModifiers() & Qt::ShiftModifier) ? 1 : 0;
    case VX_KEY_CTRL:
        return (QGuiApplication::keyboardModifiers() & Qt::ControlModifier) ? 1 : 0;
    case VX_KEY_LBUTTON: {
        // The view's own record of its events counts too: synthetic events
        // don't reach the application's button state.
        CVxMainWindow* window = CVxMainWindow::GetInstance();
        const bool viewDown =
            window && window->GetRenderArea() && (window->GetRenderArea()->GetButtonsDown() & Qt::LeftButton);
        return ((QGuiApplication::mouseButtons() & Qt::LeftButton) || viewDown) ? 1 : 0;
    }
    case VX_KEY_MBUTTONS:
        QGuiApplication::mouseButtons();
        return 0;
    default:
        return 0;
    }
}

bool CVxAppHelperQt::IsGuiDarkMode()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

void CVxAppHelperQt::DrawRoom(const VxRECT* dirty)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window || !window->GetRenderArea())
        return;
    CVxMainRenderArea* area = window->GetRenderArea();
    area->SetPaintable(true);
    if (!dirty) {
        area->update();
        return;
    }
    QRect rect(QPoint(dirty->left, dirty->top), QPoint(dirty->right - 1, dirty->bottom - 1));
    rect.adjust(-20, -20, 20, 20);
    area->update(rect);
}

void CVxAppHelperQt::UpdateProjectUI(bool zoomToFit, bool autoSize)
{
    VX_GetCore()->UpdateFloorPlan();
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window)
        return;
    window->RefreshProjectWindows();
    if (zoomToFit) {
        window->ZoomToBestFit();
        return;
    }
    window->RebuildRoom();
    RefreshMainViewStatusBar();
    DrawRoom(nullptr);
    if (VX_GetOptions()->m_autosize && autoSize)
        window->AutoSizeWindow();
}

void CVxAppHelperQt::EnableFloorButtons()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->EnableFloorButtons();
}

void CVxAppHelperQt::RefillLayersList()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->RefreshProjectWindows();
}

void CVxAppHelperQt::BuildLayersSubMenu(bool /*popup*/)
{
    // The layers window is the one list of layers; it follows undo and redo.
    RefillLayersList();
}

void CVxAppHelperQt::ShowLayersWindow()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->ShowDock(CVxMainWindow::DOCK_LAYERS, true);
}

void CVxAppHelperQt::OnPartListingChange()
{
    RefillLayersList();
}

void CVxAppHelperQt::EnableAlignCommands()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->EnableAlignCommands();
}

void CVxAppHelperQt::RebuildContextToolbar()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->RebuildContextToolbar();
}

void CVxAppHelperQt::EnableMainToolbarButton(EVxMainToolbarButtonCode code, bool enable)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (window && window->GetMainToolbar())
        window->GetMainToolbar()->EnableButton(code, enable);
}

void CVxAppHelperQt::CheckMainToolbarButton(EVxMainToolbarButtonCode code, bool check)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (window && window->GetMainToolbar())
        window->GetMainToolbar()->CheckButton(code, check);
}

void CVxAppHelperQt::AfterSelectionChanged()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->AfterSelectionChanged();
}

void CVxAppHelperQt::ShowPopupMenuForObject(int index)
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->ShowPopupMenuForObject(index);
}

void CVxAppHelperQt::LibRebuildOnUserLibChange(bool all)
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        if (window->GetLibraryForm())
            window->GetLibraryForm()->Rebuild(all);
}

void CVxAppHelperQt::OnNewObjectAdded(int /*index*/)
{
    // Enter and Esc, which fix or drop the new object, go to the plan.
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        if (window->GetRenderArea())
            window->GetRenderArea()->setFocus(Qt::OtherFocusReason);
}

void CVxAppHelperQt::EnableUndoButtons()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->EnableUndoButtons();
    RefreshMainViewCaption();
}

void CVxAppHelperQt::RefreshMainViewCursor()
{
    // The cursor's shape follows the object under it once objects can be
    // picked; until then the arrow stands.
}

void CVxAppHelperQt::SetMainViewCursor(EVxMouseCursor cursor)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window || !window->GetRenderArea())
        return;
    Qt::CursorShape shape = Qt::ArrowCursor;
    switch (cursor) {
    case VX_CURSOR_CROSS:
        shape = Qt::CrossCursor;
        break;
    case VX_CURSOR_HAND:
        shape = Qt::PointingHandCursor;
        break;
    case VX_CURSOR_SIZE_ALL:
        shape = Qt::SizeAllCursor;
        break;
    case VX_CURSOR_SIZE_HOR:
        shape = Qt::SizeHorCursor;
        break;
    case VX_CURSOR_SIZE_VER:
        shape = Qt::SizeVerCursor;
        break;
    case VX_CURSOR_SIZE_FDIAG:
        shape = Qt::SizeFDiagCursor;
        break;
    case VX_CURSOR_SIZE_BDIAG:
        shape = Qt::SizeBDiagCursor;
        break;
    case VX_CURSOR_WAIT:
        shape = Qt::WaitCursor;
        break;
    case VX_CURSOR_FORBIDDEN:
        shape = Qt::ForbiddenCursor;
        break;
    case VX_CURSOR_ADD:
        shape = Qt::DragCopyCursor;
        break;
    case VX_CURSOR_PAINTER:
    case VX_CURSOR_ROTATE:
        shape = Qt::PointingHandCursor;
        break;
    default:
        break;
    }
    window->GetRenderArea()->setCursor(shape);
}

bool CVxAppHelperQt::IsMainViewScrollBarVisible(bool horizontal)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window || !window->GetScrollArea())
        return false;
    QScrollBar* bar = horizontal ? window->GetScrollArea()->horizontalScrollBar()
                                 : window->GetScrollArea()->verticalScrollBar();
    return bar && bar->isVisible();
}

void CVxAppHelperQt::SetMainViewTooltip(const CVxStringW& text)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (window && window->GetRenderArea())
        window->GetRenderArea()->setToolTip(text.ToQString());
}

void CVxAppHelperQt::SetMainViewStatusMessage(const CVxStringW& text)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (window && window->GetStatusBar())
        window->GetStatusBar()->SetMessage(text);
}

void CVxAppHelperQt::RefreshMainViewStatusBar()
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (window && window->GetStatusBar())
        window->GetStatusBar()->update();
}

void CVxAppHelperQt::RefreshMainViewCaption()
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window)
        return;
    CVxStringW shortTitle;
    QString title = VX_GetCore()->GetMainWndCaption(shortTitle).ToQString();
    const QString home = QDir::homePath();
    if (!home.isEmpty() && home != QStringLiteral("/"))
        title.replace(home, QStringLiteral("~"));
    window->setWindowTitle(QDir::toNativeSeparators(title));
}

CVxStringW CVxAppHelperQt::GetOpenProjectFileName(const CVxStringW& title, const CVxStringW& filter,
                                                  const CVxStringW& folder)
{
    return CVxStringW(QFileDialog::getOpenFileName(CVxMainWindow::GetInstance(), title.ToQString(),
                                                   folder.ToQString(), filter.ToQString()));
}

CVxStringW CVxAppHelperQt::GetSaveProjectFileName(const CVxStringW& title, const CVxStringW& filter,
                                                  const CVxStringW& suggested)
{
    return CVxStringW(QFileDialog::getSaveFileName(CVxMainWindow::GetInstance(), title.ToQString(),
                                                   suggested.ToQString(), filter.ToQString()));
}

void CVxAppHelperQt::SetMainViewPaintable(bool paintable)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (window && window->GetRenderArea())
        window->GetRenderArea()->SetPaintable(paintable);
}

void CVxAppHelperQt::ShowMissingFilesDlgLater()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        QTimer::singleShot(100, window, &CVxMainWindow::OnShowMissingFilesDlg);
}

void CVxAppHelperQt::BuildRecentMenu()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->BuildRecentMenu();
}

void CVxAppHelperQt::SetClipboardText(const CVxStringA& utf8)
{
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(QString::fromUtf8(utf8.c_str(), utf8.GetLength()));
}

CVxStringA CVxAppHelperQt::GetClipboardText()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard)
        return CVxStringA();
    // Far more than any selection of a project; a larger text isn't ours.
    constexpr qsizetype limit = 256 * 1024 * 1024;
    const QString text = clipboard->text();
    if (text.size() > limit)
        return CVxStringA();
    const QByteArray bytes = text.toUtf8();
    return CVxStringA(bytes.constData(), static_cast<int>(bytes.size()));
}

CVxStringW CVxAppHelperQt::GenerateUuid()
{
    return CVxStringW(QUuid::createUuid().toString(QUuid::WithoutBraces));
}

void CVxAppHelperQt::AfterSpecialEditorActivated(EVxEditorCode code, bool activated, bool discard)
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->AfterSpecialEditorActivated(code, activated, discard);
}

void CVxAppHelperQt::ShowWallEditorPopupMenu()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->ShowWallEditorPopupMenu();
}

bool CVxAppHelperQt::WallVertexPropDlgShow(CVxPlanVertex* vertex, double value, const CVxStringW& caption,
                                           VxRECT* /*near*/)
{
    if (!vertex)
        return false;
    CVxWallVertexDlg dialog(vertex->x, vertex->y, value, caption, CVxMainWindow::GetInstance());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    // The height has no place in the vertex: the editor takes place and
    // height at once.
    if (CVxWallEditor* editor = VX_GetCore()->GetWallEditor())
        editor->FinalizeWallVertexPropDlg(CVxDPoint(dialog.GetX(), dialog.GetY()), dialog.GetHeight());
    return false;
}

bool CVxAppHelperQt::WallEdgePropDlgShow(CVxWall* wall, const CVxStringW& caption, unsigned flags,
                                         VxRECT* /*near*/)
{
    if (!wall)
        return false;
    CVxWallEdgeDlg dialog(*wall, flags, caption, CVxMainWindow::GetInstance());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    *wall = dialog.GetWall();
    return true;
}

bool CVxAppHelperQt::WallNumericalDlgShowModal(std::vector<CVxDPoint>& corners,
                                               std::vector<SVxWallNumbers>& walls)
{
    CVxWallNumericDlg dialog(corners, walls, VX_GetCore()->GetProject().m_unit, CVxMainWindow::GetInstance());
    return dialog.exec() == QDialog::Accepted && dialog.Read(corners, walls);
}

bool CVxAppHelperQt::WallScanCalibrateDlgShow()
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!window)
        return false;
    // One at a time, beside the plan: the user drags the line meanwhile.
    auto* dialog = window->findChild<CVxScanCalibrateDlg*>();
    if (!dialog)
        dialog = new CVxScanCalibrateDlg(window);
    dialog->show();
    dialog->raise();
    return true;
}

void CVxAppHelperQt::WallScanCalibrateDlgHide()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        if (auto* dialog = window->findChild<CVxScanCalibrateDlg*>())
            dialog->deleteLater();
}

bool CVxAppHelperQt::OpenPictureDlgShowModal(CVxStringW& path)
{
    const QString chosen = QFileDialog::getOpenFileName(
        CVxMainWindow::GetInstance(), VX_GetLoc()->LocalizeMessage(1412, L"Select Image").ToQString(),
        VX_GetOptions()->m_lastOpenFolder.ToQString(),
        VX_GetLoc()->LocalizeMessage(1413, L"Pictures").ToQString() +
            QStringLiteral(" (*.png *.jpg *.jpeg *.bmp *.gif *.webp *.tif *.tiff)"));
    if (chosen.isEmpty())
        return false;
    path = CVxStringW(chosen);
    return true;
}

bool CVxAppHelperQt::WallHolePropDlgShow(CVxHoleInFloor* hole, const CVxStringW& caption, VxRECT* /*near*/)
{
    if (!hole)
        return false;
    CVxWallHoleDlg dialog(*hole, caption, CVxMainWindow::GetInstance());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    *hole = dialog.GetHole();
    return true;
}

namespace {
// Labels alone get their own dialogue; anything else the object one.
bool OnlyLabels(const CVxObjPropEdit& edit)
{
    return edit.GetScope().label;
}

QPointer<QDialog> s_modelessObjProps;
} // namespace

bool CVxAppHelperQt::ObjPropShowModal(bool /*multi*/, bool* changed)
{
    CVxObjPropEdit edit;
    if (!edit.BeginSelection(*VX_GetCore()))
        return false;
    std::unique_ptr<QDialog> dialog;
    std::function<bool()> isChanged;
    if (OnlyLabels(edit)) {
        auto* label = new CVxLabelPropertiesDlg(edit, CVxMainWindow::GetInstance());
        isChanged = [label] { return label->IsChanged(); };
        dialog.reset(label);
    } else {
        auto* object = new CVxObjectPropertiesDlg(edit, CVxMainWindow::GetInstance());
        isChanged = [object] { return object->IsChanged(); };
        dialog.reset(object);
    }
    CVxDRect around;
    if (VX_GetSelectionPlanRect(around))
        VX_PlaceBesidePlanRect(dialog.get(), around);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (changed)
        *changed = accepted && isChanged();
    return accepted;
}

void CVxAppHelperQt::ObjPropShow(bool show, CVxPart* /*part*/, bool /*multi*/)
{
    // The window over the plan follows the selection: it is closed, and
    // opened again for the new selection by the caller. It keeps the plan
    // from other edits while it is open, since Cancel puts back the objects
    // as they were when it opened.
    if (s_modelessObjProps) {
        s_modelessObjProps->reject();
        s_modelessObjProps = nullptr;
    }
    if (!show)
        return;
    auto* edit = new CVxObjPropEdit;
    if (!edit->BeginSelection(*VX_GetCore())) {
        delete edit;
        return;
    }
    auto* dialog = new CVxObjectPropertiesDlg(*edit, CVxMainWindow::GetInstance());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    QObject::connect(dialog, &QObject::destroyed, [edit] { delete edit; });
    s_modelessObjProps = dialog;
    CVxDRect around;
    if (VX_GetSelectionPlanRect(around))
        VX_PlaceBesidePlanRect(dialog, around);
    dialog->show();
}

bool CVxAppHelperQt::ObjPropPartShowModal(CVxPart* part, bool /*userLib*/)
{
    CVxObjPropEdit edit;
    if (!edit.BeginPart(part))
        return false;
    CVxObjectPropertiesDlg dialog(edit, CVxMainWindow::GetInstance());
    return dialog.exec() == QDialog::Accepted;
}

bool CVxAppHelperQt::RoomsTuningShowModal(int room)
{
    return VX_RunRoomPropertiesDlg(room, CVxMainWindow::GetInstance());
}
