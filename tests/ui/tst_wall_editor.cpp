// The wall editor through the real window: F8 opens it, walls are drawn by
// clicks and typed lengths, Esc throws the work away after asking, Ctrl+Enter
// keeps it, and the window's undo takes the whole run back in one step.

#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxFloor.h"
#include "CVxMainRenderArea.h"
#include "CVxMainWindow.h"
#include "CVxWallEditor.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QToolBar>

#include <cmath>

namespace {
CVxUiTestHome* g_home = nullptr;

// Answers every question with Yes, and counts them.
class CVxYesHelper : public CVxAppHelperQt
{
public:
    int MsgBox(const CVxStringW& /*text*/, const CVxStringW& /*caption*/, unsigned /*flags*/,
               void* /*parent*/, EVxMsgButton /*defaultButton*/, EVxMsgButton /*escapeButton*/) override
    {
        ++asked;
        return VX_MBR_YES;
    }
    int asked = 0;
};
} // namespace

class TestWallEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void f8OpensClicksDrawEscDiscards();
    void ctrlEnterAcceptsAndUndoTakesTheRunBack();
    void typedLengthLaysTheWall();

private:
    QPoint Pixel(double x, double y) const;
    void Click(double x, double y);
    int Rooms() const { return VX_GetCore()->GetFloorPlan().GetRegionCount(); }
    int Walls() const { return VX_GetCore()->GetProject().GetFloor()->m_walls.GetWallCount(); }

    CVxMainWindow* m_window = nullptr;
    CVxMainRenderArea* m_view = nullptr;
    CVxYesHelper m_helper;
    IVxAppHelperCallback* m_previous = nullptr;
};

void TestWallEditor::init()
{
    m_window = new CVxMainWindow;
    m_window->resize(1000, 760);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    m_previous = VX_GetAppHelper();
    m_helper.asked = 0;
    VX_SetAppHelperCallback(&m_helper);
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    core->GetProject().GetFloor()->m_walls.RemoveAll();
    core->UpdateFloorPlan();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    m_view = m_window->GetRenderArea();
    m_view->SetPaintable(true);
    m_view->setFocus();
    QTest::qWait(20);
}

void TestWallEditor::cleanup()
{
    VX_GetCore()->DeactivateActiveEditor(true, true);
    VX_GetCore()->GetProject().m_modified = false;
    VX_SetAppHelperCallback(m_previous);
    delete m_window;
    m_window = nullptr;
}

QPoint TestWallEditor::Pixel(double x, double y) const
{
    CVxAppCore* core = VX_GetCore();
    const VxPOINT origin = core->GetObjectOrigin();
    return QPoint(static_cast<int>(std::lround(origin.x + x * core->GetZoom())),
                  static_cast<int>(std::lround(origin.y + y * core->GetZoom())));
}

void TestWallEditor::Click(double x, double y)
{
    QTest::mouseMove(m_view, Pixel(x, y));
    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(x, y));
}

void TestWallEditor::f8OpensClicksDrawEscDiscards()
{
    CVxAppCore* core = VX_GetCore();
    QTest::keyClick(m_view, Qt::Key_F8);
    QVERIFY(core->GetActiveEditor() != nullptr);
    QVERIFY(m_window->GetEditorBar() && m_window->GetEditorBar()->isVisible());
    // "W" arms the new wall; a click starts it, the next click ends it.
    QTest::keyClick(m_view, Qt::Key_W);
    QCOMPARE(core->GetWallEditor()->GetOperation(), int(CVxWallEditor::opNewWallStart));
    Click(100, 100);
    Click(300, 100);
    QCOMPARE(Walls(), 1);
    const CVxWall& wall = core->GetProject().GetFloor()->m_walls.walls.front();
    QVERIFY2(std::fabs(wall.length - 200) < 1.0, qPrintable(QString::number(wall.length)));

    // Esc ends the tool; a second Esc asks and throws the work away.
    QTest::keyClick(m_view, Qt::Key_Escape);
    QCOMPARE(core->GetWallEditor()->GetOperation(), int(CVxWallEditor::opNone));
    QVERIFY(core->GetActiveEditor() != nullptr);
    QTest::keyClick(m_view, Qt::Key_Escape);
    QCOMPARE(m_helper.asked, 1);
    QVERIFY(core->GetActiveEditor() == nullptr);
    QVERIFY(!m_window->GetEditorBar()->isVisible());
    QCOMPARE(Walls(), 0);
    QVERIFY(!core->CanUndo());
}

void TestWallEditor::ctrlEnterAcceptsAndUndoTakesTheRunBack()
{
    CVxAppCore* core = VX_GetCore();
    // Of "F8 or Ctrl+2" only the first is the key on this desktop.
    QTest::keyClick(m_view, Qt::Key_2, Qt::ControlModifier);
    QVERIFY(core->GetActiveEditor() == nullptr);
    QTest::keyClick(m_view, Qt::Key_F8);
    QVERIFY(core->GetActiveEditor() != nullptr);
    // A wall polygon, closed on its first point.
    QTest::keyClick(m_view, Qt::Key_E);
    Click(100, 100);
    Click(400, 100);
    Click(400, 300);
    Click(100, 300);
    Click(100, 100);
    QCOMPARE(Walls(), 4);
    QCOMPARE(Rooms(), 1);
    QTest::keyClick(m_view, Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(core->GetActiveEditor() == nullptr);
    QCOMPARE(Rooms(), 1);
    QCOMPARE(m_helper.asked, 0);

    QTest::keyClick(m_window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(Walls(), 0);
    QCOMPARE(Rooms(), 0);
    QTest::keyClick(m_window, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(Rooms(), 1);
}

void TestWallEditor::typedLengthLaysTheWall()
{
    CVxAppCore* core = VX_GetCore();
    QTest::keyClick(m_view, Qt::Key_F8);
    QTest::keyClick(m_view, Qt::Key_W);
    Click(100, 100);
    QTest::mouseMove(m_view, Pixel(160, 100));
    QVERIFY(core->GetWallEditor()->IsDrawingWall());
    QTest::keyClicks(m_view, QStringLiteral("2"));
    QLineEdit* length = m_view->GetTypedLengthEdit();
    QVERIFY(length && length->isVisible());
    QTest::keyClicks(length, QStringLiteral(".5m"));
    QTest::keyClick(length, Qt::Key_Return);
    QVERIFY(!length->isVisible());
    // The Return was the field's alone: the editor stays open.
    QVERIFY(core->GetActiveEditor() != nullptr);
    QCOMPARE(Walls(), 1);
    const CVxWall& wall = core->GetProject().GetFloor()->m_walls.walls.front();
    QVERIFY2(std::fabs(wall.length - 250) < 0.01, qPrintable(QString::number(wall.length)));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestWallEditor test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_wall_editor.moc"
