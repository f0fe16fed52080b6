// The library window in the real main window: its pages, the search, a
// click that hangs a new object on the pointer, Esc, and drags from the
// window onto the plan, doors into walls among them.

#include "CVxAction.h"
#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxLibraryForm.h"
#include "CVxLibraryPage.h"
#include "CVxMainRenderArea.h"
#include "CVxMainToolbar.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "CVxUserLibrary.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QTest>
#include <QTreeWidget>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <memory>

class TestLibraryWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void listsTheStandardPages();
    void searchNarrowsTheList();
    void clickThenClickInThePlanAddsOneObjectAsOneStep();
    void escapeWhilePlacingAddsNothing();
    void doorDraggedNearAWallHangsInIt();
    void dropAddsAtTheDropPoint();
    void filesDroppedOnThePlanStillOpen();
    void showLibraryCommandTogglesTheDock();
    void userObjectsShowOnTheUserLibraryPage();

private:
    QPoint Pixel(double x, double y) const;
    CVxLibraryForm* Form() const { return m_window->GetLibraryForm(); }
    // The first library object of that number, -1 for none.
    static int LibIndexOf(int libObjID);
    static int UsedObjects() { return VX_GetCore()->GetProject().GetFloor()->CountUsedObjects(); }
    // The object added last, by slot.
    static const CVxPart* LastObject();
    void ClickItem(int libIndex);

    CVxMainWindow* m_window = nullptr;
    CVxMainRenderArea* m_view = nullptr;
};

namespace {
CVxUiTestHome* g_home = nullptr;

CVxDPoint Centre(const CVxPart& part)
{
    CVxDRect rect;
    part.GetBoundingRect(&rect, 1.0);
    return rect.CenterPoint();
}
} // namespace

void TestLibraryWindow::initTestCase()
{
    // Start-up with the library window: what it costs, and that it draws
    // the thumbnails of the page it shows, not the whole catalogue.
    QElapsedTimer timer;
    timer.start();
    CVxMainWindow window;
    window.resize(1000, 760);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QApplication::processEvents();
    const qint64 shown = timer.elapsed();
    CVxLibraryForm* form = window.GetLibraryForm();
    QVERIFY(form && form->isVisible());
    QVERIFY(!form->GetShownObjects().empty());
    const int total = VX_GetCore()->GetUserLibrary().GetObjectCount();
    QVERIFY(total > 200);
    QVERIFY2(form->GetDrawnThumbnailCount() > 0 && form->GetDrawnThumbnailCount() <= 40,
             qPrintable(QString::number(form->GetDrawnThumbnailCount())));
    const int drawn = form->GetDrawnThumbnailCount();
    timer.restart();
    for (int i = 0; i < VX_GetCore()->GetUserLibrary().GetSlotCount(); ++i)
        form->GetThumbnail(i);
    qInfo("window with the library shown after %lld ms, %d thumbnails drawn; all %d would take %lld ms",
          static_cast<long long>(shown), drawn, total, static_cast<long long>(timer.elapsed()));
    VX_GetCore()->GetProject().m_modified = false;
}

void TestLibraryWindow::init()
{
    m_window = new CVxMainWindow;
    m_window->resize(1000, 760);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    core->GetProject().GetFloor()->RemoveAllObjects();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    m_view = m_window->GetRenderArea();
    m_view->SetPaintable(true);
    QVERIFY(core->GetZoom() > 0);
    QTest::qWait(20);
}

void TestLibraryWindow::cleanup()
{
    VX_GetCore()->GetProject().m_modified = false;
    delete m_window;
    m_window = nullptr;
}

QPoint TestLibraryWindow::Pixel(double x, double y) const
{
    CVxAppCore* core = VX_GetCore();
    const VxPOINT origin = core->GetObjectOrigin();
    return QPoint(static_cast<int>(std::lround(origin.x + x * core->GetZoom())),
                  static_cast<int>(std::lround(origin.y + y * core->GetZoom())));
}

int TestLibraryWindow::LibIndexOf(int libObjID)
{
    const CVxUserLibrary& library = VX_GetCore()->GetUserLibrary();
    return library.FindPartWithLibObjID(libObjID, false);
}

const CVxPart* TestLibraryWindow::LastObject()
{
    const CVxFloor* floor = VX_GetCore()->GetProject().GetFloor();
    for (int i = floor->GetObjectSlotCount() - 1; i >= 0; --i)
        if (floor->m_objects[static_cast<size_t>(i)].inUse)
            return &floor->m_objects[static_cast<size_t>(i)];
    return nullptr;
}

void TestLibraryWindow::ClickItem(int libIndex)
{
    QListView* list = Form()->GetItemView();
    const std::vector<int>& shown = Form()->GetShownObjects();
    const auto it = std::find(shown.begin(), shown.end(), libIndex);
    QVERIFY(it != shown.end());
    const QModelIndex index = list->model()->index(static_cast<int>(it - shown.begin()), 0);
    list->scrollTo(index);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualRect(index).center());
}

void TestLibraryWindow::listsTheStandardPages()
{
    QVERIFY(m_window->GetDock(CVxMainWindow::DOCK_LIBRARY)->isVisible());
    QStringList pages;
    for (QTreeWidgetItemIterator it(Form()->GetPageTree()); *it; ++it)
        pages << (*it)->text(0);
    for (int id = 0; id < CVxLibraryPage::standardPageCount; ++id)
        QVERIFY2(pages.contains(CVxLibraryPage::LibEnglishNameFromID(id).ToQString()),
                 qPrintable(pages.join(QLatin1Char(','))));
    // Each page lists its own objects: the doors are on theirs.
    Form()->SelectPage(2);
    QVERIFY(!Form()->GetShownObjects().empty());
    for (int index : Form()->GetShownObjects())
        QVERIFY(VX_GetCore()->GetUserLibrary().SafeGetPart(index)->libraryMask & (1u << 2));
}

void TestLibraryWindow::searchNarrowsTheList()
{
    Form()->SelectPage(1);
    const size_t basic = Form()->GetShownObjects().size();
    Form()->GetSearchField()->setText(QStringLiteral("SOFA"));
    const std::vector<int> found = Form()->GetShownObjects();
    QVERIFY(found.size() >= 2);
    QVERIFY(found.size() < 20);
    for (int index : found) {
        const CVxPart* part = VX_GetCore()->GetUserLibrary().SafeGetPart(index);
        QVERIFY(part->caption.ToQString().contains(QStringLiteral("sofa"), Qt::CaseInsensitive));
    }
    // Every word must be in the name.
    Form()->GetSearchField()->setText(QStringLiteral("sofa corner"));
    QVERIFY(!Form()->GetShownObjects().empty());
    QVERIFY(Form()->GetShownObjects().size() < found.size());
    Form()->GetSearchField()->setText(QStringLiteral("no such thing at all"));
    QVERIFY(Form()->GetShownObjects().empty());
    Form()->GetSearchField()->clear();
    QCOMPARE(Form()->GetShownObjects().size(), basic);
}

void TestLibraryWindow::clickThenClickInThePlanAddsOneObjectAsOneStep()
{
    CVxAppCore* core = VX_GetCore();
    Form()->GetSearchField()->setText(QStringLiteral("sofa"));
    const int libIndex = Form()->GetShownObjects().front();
    const int libObjID = core->GetUserLibrary().SafeGetPart(libIndex)->libObjID;
    const int before = UsedObjects();
    const int steps = core->GetUndoManager().GetPosition();

    ClickItem(libIndex);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msPlacing));
    QCOMPARE(m_window->focusWidget(), static_cast<QWidget*>(m_view));
    // It follows the pointer over the plan, and a click fixes it there.
    for (int i = 1; i <= 3; ++i)
        QTest::mouseMove(m_view, Pixel(100 + 30 * i, 100 + 20 * i));
    const QPoint at = Pixel(250, 180);
    QTest::mouseMove(m_view, at);
    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
    QCOMPARE(UsedObjects(), before + 1);
    const CVxPart* added = LastObject();
    QCOMPARE(added->libObjID, libObjID);
    QVERIFY(added->selected);
    QCOMPARE(added->layer, core->GetProject().GetFloor()->m_layers.GetActiveLayer());
    const CVxDPoint centre = Centre(*added);
    const double pixel = 1.0 / core->GetZoom();
    QVERIFY2(std::fabs(centre.x - 250) <= 2 * pixel && std::fabs(centre.y - 180) <= 2 * pixel,
             qPrintable(QStringLiteral("%1, %2").arg(centre.x).arg(centre.y)));
    QCOMPARE(core->GetUndoManager().GetPosition(), steps + 1);
    QVERIFY(core->MakeUndo());
    QCOMPARE(UsedObjects(), before);
}

void TestLibraryWindow::escapeWhilePlacingAddsNothing()
{
    CVxAppCore* core = VX_GetCore();
    Form()->SelectPage(1);
    const int before = UsedObjects();
    ClickItem(Form()->GetShownObjects().front());
    QCOMPARE(UsedObjects(), before + 1);
    QTest::mouseMove(m_view, Pixel(200, 150));
    QTest::keyClick(m_view, Qt::Key_Escape);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
    QCOMPARE(UsedObjects(), before);
    QCOMPARE(core->GetMovingPart(), -1);
    // A second pick while one hangs replaces it.
    ClickItem(Form()->GetShownObjects().front());
    ClickItem(Form()->GetShownObjects().back());
    QCOMPARE(UsedObjects(), before + 1);
    QTest::keyClick(m_view, Qt::Key_Escape);
    QCOMPARE(UsedObjects(), before);
}

void TestLibraryWindow::doorDraggedNearAWallHangsInIt()
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    CVxRoomWalls& walls = floor->m_walls;
    walls.RemoveAll();
    walls.GetNewWall()->Set(50, 50, 450, 50, 1, 10, 250, 250, true, false);
    walls.GetNewWall()->Set(450, 50, 450, 350, 1, 10, 250, 250, true, false);
    walls.GetNewWall()->Set(450, 350, 50, 350, 1, 10, 250, 250, true, false);
    walls.GetNewWall()->Set(50, 350, 50, 50, 1, 10, 250, 250, true, false);
    core->UpdateFloorPlan();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    const int door = LibIndexOf(280);
    QVERIFY(door >= 0);
    QVERIFY(core->GetUserLibrary().SafeGetPart(door)->snapToWall);
    std::unique_ptr<QMimeData> data(CVxLibraryForm::CreateMimeData(door));
    const int before = UsedObjects();

    // Over the plan the door already stands in the wall nearest the
    // pointer; leaving the plan takes it away again.
    QDragEnterEvent enter(Pixel(150, 300), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msDropping));
    QCOMPARE(UsedObjects(), before + 1);
    QCOMPARE(int(LastObject()->snapWall), 2);
    QDragLeaveEvent leave;
    QApplication::sendEvent(m_view, &leave);
    QCOMPARE(UsedObjects(), before);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
    QVERIFY(!core->CanUndo());

    QDragEnterEvent again(Pixel(150, 300), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &again);
    for (int i = 1; i <= 4; ++i) {
        QDragMoveEvent move(Pixel(150 + 25 * i, 300 - 55 * i), Qt::CopyAction, data.get(), Qt::LeftButton,
                            Qt::NoModifier);
        QApplication::sendEvent(m_view, &move);
        QVERIFY(move.isAccepted());
    }
    QDropEvent drop(Pixel(250, 72), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
    QCOMPARE(UsedObjects(), before + 1);
    const CVxPart* added = LastObject();
    QCOMPARE(added->libObjID, 280);
    QVERIFY(added->snapToWall);
    QCOMPARE(int(added->snapWall), 0);
    // It fills the wall's thickness, near where it was dropped.
    CVxDRect rect;
    added->GetBoundingRect(&rect, 1.0);
    const CVxDRect opening = added->GetWallOpeningRect(&walls, 0, true);
    QVERIFY2(opening.Width() > 1, qPrintable(QString::number(opening.Width())));
    QVERIFY(std::fabs(added->height - 10) < 1e-6);
    QVERIFY2(std::fabs((opening.left + opening.right) / 2 + 50 - 250) < 50,
             qPrintable(QStringLiteral("%1 %2").arg(opening.left).arg(opening.right)));
    QCOMPARE(core->GetUndoManager().GetPosition(), 1);
}

void TestLibraryWindow::dropAddsAtTheDropPoint()
{
    CVxAppCore* core = VX_GetCore();
    Form()->GetSearchField()->setText(QStringLiteral("sofa"));
    const int libIndex = Form()->GetShownObjects().front();
    std::unique_ptr<QMimeData> data(CVxLibraryForm::CreateMimeData(libIndex));
    const int before = UsedObjects();
    // The drop point counts, not where the drag came in.
    QDragEnterEvent enter(Pixel(120, 90), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &enter);
    QDropEvent drop(Pixel(300, 200), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(UsedObjects(), before + 1);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
    const CVxDPoint centre = Centre(*LastObject());
    const double pixel = 1.0 / core->GetZoom();
    QVERIFY2(std::fabs(centre.x - 300) <= 2 * pixel && std::fabs(centre.y - 200) <= 2 * pixel,
             qPrintable(QStringLiteral("%1, %2").arg(centre.x).arg(centre.y)));
    QCOMPARE(core->GetUndoManager().GetPosition(), 1);
    // Something that is no library object is not taken.
    QMimeData text;
    text.setText(QStringLiteral("12"));
    QDragEnterEvent junk(Pixel(300, 200), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &junk);
    QVERIFY(!junk.isAccepted());
    QCOMPARE(UsedObjects(), before + 1);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
}

void TestLibraryWindow::filesDroppedOnThePlanStillOpen()
{
    QTRY_VERIFY(m_window->acceptDrops());
    const QString path = g_home->Path() + QStringLiteral("/dropped.pvp");
    VX_GetCore()->GetProject().m_width = 613;
    QVERIFY(VX_GetCore()->SaveMainProjectToFile(CVxStringW(path)));
    VX_GetCore()->InitProject();
    VX_GetCore()->SetProjectPath(CVxStringW());
    VX_GetCore()->GetProject().m_modified = false;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view, &drop);
    QTRY_COMPARE(VX_GetCore()->GetProjectPath().ToQString(), path);
    QCOMPARE(VX_GetCore()->GetProject().m_width, 613.0);
}

void TestLibraryWindow::showLibraryCommandTogglesTheDock()
{
    QDockWidget* dock = m_window->GetDock(CVxMainWindow::DOCK_LIBRARY);
    CVxAction* show = m_window->GetMainToolbar()->FindAction(VX_TB_SHOW_LIBRARY);
    QVERIFY(show && show->isCheckable() && show->isEnabled());
    QVERIFY(show->isChecked());
    show->trigger();
    QVERIFY(dock->isHidden());
    QVERIFY(!show->isChecked());
    // Add Object brings it back with the search field ready.
    m_window->DoMainToolbarAction(VX_TB_ADD_OBJECT, 0);
    QVERIFY(!dock->isHidden());
    QVERIFY(show->isChecked());
    QCOMPARE(m_window->focusWidget(), static_cast<QWidget*>(Form()->GetSearchField()));
    show->trigger();
    // The next start remembers it.
    VX_GetCore()->GetProject().m_modified = false;
    m_window->close();
    QVERIFY(!VX_GetOptions()->m_showLibTab);
    VX_GetOptions()->m_showLibTab = true;
}

void TestLibraryWindow::userObjectsShowOnTheUserLibraryPage()
{
    CVxAppCore* core = VX_GetCore();
    m_window->DoMainToolbarAction(VX_TB_BROWSE_USER_LIBRARY, 0);
    QCOMPARE(Form()->GetCurrentPage(), 0);
    const size_t before = Form()->GetShownObjects().size();
    CVxPart part;
    QVERIFY(core->LibWriteToPart(&part, LibIndexOf(280)));
    part.caption = L"My front door";
    const int index = core->LibAddObjectToUserLibrary(part, 0);
    QVERIFY(index >= 0);
    // The library tells the window, which lists the new object at once.
    QCOMPARE(Form()->GetShownObjects().size(), before + 1);
    QCOMPARE(Form()->GetShownObjects().back(), index);
    Form()->GetSearchField()->setText(QStringLiteral("front door"));
    QCOMPARE(Form()->GetShownObjects().size(), size_t(1));
    QVERIFY(core->LibRenameObject(index, CVxStringW(L"Back door")));
    Form()->Rebuild(false);
    QVERIFY(Form()->GetShownObjects().empty());
    Form()->GetSearchField()->clear();
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestLibraryWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_library_window.moc"
