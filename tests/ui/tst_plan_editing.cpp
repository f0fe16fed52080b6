// Working with objects in the plan through the real window: selecting,
// dragging, resizing, turning, rubber bands, Esc, undo, the clipboard,
// grouping and alignment.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxMainRenderArea.h"
#include "CVxMainStatusBar.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <cmath>

class TestPlanEditing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void clickSelectsAndDragMovesAsOneUndoStep();
    void shiftDragKeepsToAnAxis();
    void resizeByAHandleKeepsTheOppositeSide();
    void rotationFallsOntoEighthsOfATurn();
    void rubberBandSelectsWhatItEncloses();
    void escapeDuringADragPutsTheObjectBack();
    void arrowKeysMoveAsOneStepAndDeleteRemoves();
    void copyAndPasteIntoAnotherProject();
    void foreignClipboardTextPastesNothing();
    void groupUngroupAndAlign();
    void doorSlidesAlongItsWallWithGapLines();

private:
    // A rectangle of the current floor, in units.
    int AddBox(double x, double y, double w, double h);
    QPoint Pixel(double x, double y) const;
    QPoint Handle(int kind) const;
    void Drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
              bool release = true);
    CVxPart& Part(int index)
    {
        return VX_GetCore()->GetProject().GetFloor()->m_objects[static_cast<size_t>(index)];
    }

    CVxMainWindow* m_window = nullptr;
    CVxMainRenderArea* m_view = nullptr;
};

namespace {
CVxUiTestHome* g_home = nullptr;
}

void TestPlanEditing::init()
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

void TestPlanEditing::cleanup()
{
    VX_GetCore()->GetProject().m_modified = false;
    delete m_window;
    m_window = nullptr;
}

int TestPlanEditing::AddBox(double x, double y, double w, double h)
{
    CVxFloor* floor = VX_GetCore()->GetProject().GetFloor();
    int index = -1;
    CVxPart* part = floor->GetNewObject(&index, true);
    part->type = ptRectangle;
    part->x = x;
    part->y = y;
    part->width = w;
    part->height = h;
    part->zHeight = 50;
    part->InvalidateCache();
    floor->m_objectCount = floor->CountUsedObjects();
    return index;
}

QPoint TestPlanEditing::Pixel(double x, double y) const
{
    CVxAppCore* core = VX_GetCore();
    const VxPOINT origin = core->GetObjectOrigin();
    return QPoint(static_cast<int>(std::lround(origin.x + x * core->GetZoom())),
                  static_cast<int>(std::lround(origin.y + y * core->GetZoom())));
}

QPoint TestPlanEditing::Handle(int kind) const
{
    const VxPOINT origin = VX_GetCore()->GetObjectOrigin();
    for (const CVxSelSymbol& symbol : VX_GetCore()->GetSelectionHandles().GetSymbols())
        if (symbol.kind == kind)
            return QPoint(symbol.pos.x + origin.x, symbol.pos.y + origin.y);
    return QPoint(-1, -1);
}

void TestPlanEditing::Drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers,
                           bool release)
{
    QTest::mousePress(m_view, Qt::LeftButton, modifiers, from);
    // In steps, as a hand moves.
    for (int i = 1; i <= 4; ++i)
        QTest::mouseMove(m_view, from + (to - from) * i / 4);
    if (release)
        QTest::mouseRelease(m_view, Qt::LeftButton, modifiers, to);
}

void TestPlanEditing::clickSelectsAndDragMovesAsOneUndoStep()
{
    CVxAppCore* core = VX_GetCore();
    const int box = AddBox(100, 100, 60, 40);
    const double zoom = core->GetZoom();
    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(130, 120));
    QCOMPARE(core->GetSelCount(), 1);
    QVERIFY(Part(box).selected);
    QVERIFY(!core->CanUndo());

    // Less than the threshold moves nothing and costs no step.
    Drag(Pixel(130, 120), Pixel(130, 120) + QPoint(4, 0));
    QCOMPARE(Part(box).x, 100.0);
    QVERIFY(!core->CanUndo());

    Drag(Pixel(130, 120), Pixel(130, 120) + QPoint(60, 30));
    QCOMPARE(core->GetMovingPart(), -1);
    const double movedX = Part(box).x;
    QVERIFY2(std::fabs(movedX - (100 + 60 / zoom)) <= 1.0, qPrintable(QString::number(movedX)));
    QVERIFY(std::fabs(Part(box).y - (100 + 30 / zoom)) <= 1.0);
    QVERIFY(core->CanUndo());

    QTest::keyClick(m_window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(Part(box).x, 100.0);
    QCOMPARE(Part(box).y, 100.0);
    QVERIFY(!core->CanUndo());
    QTest::keyClick(m_window, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(Part(box).x, movedX);
}

void TestPlanEditing::shiftDragKeepsToAnAxis()
{
    const int box = AddBox(100, 100, 60, 40);
    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(130, 120));
    // Shift on the press would toggle the selection; it counts while moving.
    QTest::mousePress(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(130, 120));
    for (int i = 1; i <= 4; ++i)
        QTest::mouseMove(m_view, Pixel(130, 120) + QPoint(15 * i, 4 * i));
    VX_GetCore()->MainViewMouseMove(CVxAppCore::modShift, Pixel(130, 120).x() + 60, Pixel(130, 120).y() + 16,
                                    0);
    QTest::mouseRelease(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(130, 120) + QPoint(60, 16));
    QVERIFY(Part(box).x > 100);
    QCOMPARE(Part(box).y, 100.0);
}

void TestPlanEditing::resizeByAHandleKeepsTheOppositeSide()
{
    CVxAppCore* core = VX_GetCore();
    const int box = AddBox(100, 100, 60, 40);
    core->SetSelection(box, true);
    const QPoint right = Handle(2);
    QVERIFY(right.x() > 0);
    Drag(right, right + QPoint(50, 0));
    const double zoom = core->GetZoom();
    QVERIFY2(std::fabs(Part(box).width - (60 + 50 / zoom)) <= 1.0,
             qPrintable(QString::number(Part(box).width)));
    QCOMPARE(Part(box).x, 100.0);
    QCOMPARE(Part(box).height, 40.0);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));

    // The left handle moves the left side; the right one stays.
    const double rightEdge = Part(box).x + Part(box).width;
    const QPoint left = Handle(6);
    Drag(left, left + QPoint(-30, 0));
    QVERIFY(Part(box).x < 100);
    QVERIFY(std::fabs(Part(box).x + Part(box).width - rightEdge) <= 0.5);

    QVERIFY(core->MakeUndo());
    QCOMPARE(Part(box).x, 100.0);
    QVERIFY(core->MakeUndo());
    QCOMPARE(Part(box).width, 60.0);
}

void TestPlanEditing::rotationFallsOntoEighthsOfATurn()
{
    CVxAppCore* core = VX_GetCore();
    const int box = AddBox(100, 100, 80, 80);
    core->SetSelection(box, true);
    const QPoint handle = Handle(CVxSelSymbol::kindRotate);
    QVERIFY(handle.x() > 0);
    const QPointF centre = Pixel(140, 140);
    const double radius = std::hypot(handle.x() - centre.x(), handle.y() - centre.y());
    auto at = [&](double degrees) {
        const double r = degrees * 3.14159265358979323846 / 180.0;
        return QPoint(static_cast<int>(std::lround(centre.x() + radius * 4 * std::cos(r))),
                      static_cast<int>(std::lround(centre.y() + radius * 4 * std::sin(r))));
    };
    // 43 degrees is within the snap of 45.
    Drag(handle, at(43));
    QCOMPARE(Part(box).rotation, 45.0);
    // 20 degrees stays where it is, to a tenth.
    const QPoint again = Handle(CVxSelSymbol::kindRotate);
    Drag(again, at(20));
    QVERIFY2(std::fabs(Part(box).rotation - 20.0) < 1.0, qPrintable(QString::number(Part(box).rotation)));
    QVERIFY(Part(box).rotation != 0.0);
    // The centre stays put while turning.
    CVxDRect bounds;
    Part(box).GetBoundingRect(&bounds, 1.0);
    QVERIFY(std::fabs(bounds.CenterPoint().x - 140) <= 0.5 + 1e-9);

    // Shift turns by eighths only.
    QCOMPARE(CVxPartSelection::SnapRotation(20.0, true), 0.0);
    QCOMPARE(CVxPartSelection::SnapRotation(30.0, true), 45.0);
    QCOMPARE(CVxPartSelection::SnapRotation(357.5, false), 0.0);
    QCOMPARE(CVxPartSelection::SnapRotation(184.0, false), 184.0);

    QVERIFY(core->MakeUndo());
    QCOMPARE(Part(box).rotation, 45.0);
}

void TestPlanEditing::rubberBandSelectsWhatItEncloses()
{
    CVxAppCore* core = VX_GetCore();
    const int a = AddBox(100, 100, 30, 30);
    const int b = AddBox(150, 100, 30, 30);
    const int c = AddBox(300, 100, 30, 30);
    Drag(Pixel(90, 90), Pixel(200, 140));
    QVERIFY(Part(a).selected && Part(b).selected);
    QVERIFY(!Part(c).selected);
    QCOMPARE(core->GetTempObjectKind(), 0);
    // Ctrl adds a band to the selection.
    Drag(Pixel(290, 90), Pixel(340, 140), Qt::ControlModifier);
    QCOMPARE(core->GetSelCount(), 3);
    // A click on empty floor clears it.
    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(250, 250));
    QCOMPARE(core->GetSelCount(), 0);
}

void TestPlanEditing::escapeDuringADragPutsTheObjectBack()
{
    CVxAppCore* core = VX_GetCore();
    const int box = AddBox(100, 100, 60, 40);
    core->SetSelection(box, true);
    core->TransformShift(0, 0); // a step to redo would be lost
    QVERIFY(core->MakeUndo());
    QVERIFY(core->CanRedo());
    Drag(Pixel(130, 120), Pixel(130, 120) + QPoint(60, 0), Qt::NoModifier, false);
    QVERIFY(Part(box).x > 100);
    QTest::keyClick(m_view, Qt::Key_Escape);
    QCOMPARE(Part(box).x, 100.0);
    QVERIFY(!core->CanRedo());
    QTest::mouseRelease(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(130, 120) + QPoint(60, 0));
    QCOMPARE(Part(box).x, 100.0);
}

void TestPlanEditing::arrowKeysMoveAsOneStepAndDeleteRemoves()
{
    CVxAppCore* core = VX_GetCore();
    const int box = AddBox(100, 100, 60, 40);
    core->SetSelection(box, true);
    m_view->setFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(m_view, Qt::Key_Right);
    QTest::keyClick(m_view, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(Part(box).x, 103.0);
    QCOMPARE(Part(box).y, 105.0);
    QVERIFY(core->MakeUndo());
    QCOMPARE(Part(box).x, 100.0);
    QCOMPARE(Part(box).y, 100.0);

    core->SetSelection(box, true);
    QTest::keyClick(m_view, Qt::Key_Delete);
    QCOMPARE(core->GetProject().GetFloor()->CountUsedObjects(), 0);
    QVERIFY(core->MakeUndo());
    QCOMPARE(core->GetProject().GetFloor()->CountUsedObjects(), 1);
}

void TestPlanEditing::copyAndPasteIntoAnotherProject()
{
    CVxAppCore* core = VX_GetCore();
    const int box = AddBox(100, 100, 60, 40);
    Part(box).caption = L"Desk";
    core->SetSelection(box, true);
    core->CopySelectedObjectsToClipboard();
    const QString text = QGuiApplication::clipboard()->text();
    QVERIFY(text.startsWith(QStringLiteral("[Plaveno Clipboard]\r\n\r\n[Room]\r\nUnit=cm\r\n")));

    // The same floor of the same project keeps the place.
    QVERIFY(core->PasteObjectsFromClipboard(core->GetSelectionClipboardText()));
    QCOMPARE(core->GetProject().GetFloor()->CountUsedObjects(), 2);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));

    // Another project, here one in metres, takes it to the pointer, scaled
    // to its unit, hanging on the cursor until a click.
    const CVxStringA clip = core->GetSelectionClipboardText();
    core->InitProject();
    core->GetProject().GetFloor()->RemoveAllObjects();
    core->TransformConvertUnit(core->GetProject().m_unit, 6);
    QTest::mouseMove(m_view, Pixel(2, 2));
    QVERIFY(core->PasteObjectsFromClipboard(clip));
    QCOMPARE(core->GetProject().GetFloor()->CountUsedObjects(), 1);
    const CVxPart& pasted = Part(core->GetFirstSelected());
    QCOMPARE(pasted.caption, CVxStringW(L"Desk"));
    QVERIFY(std::fabs(pasted.width - 0.6) < 1e-9);
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msPlacing));
    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(3, 3));
    QCOMPARE(core->GetMouseState(), int(CVxAppCore::msIdle));
    QVERIFY(core->MakeUndo());
    QCOMPARE(core->GetProject().GetFloor()->CountUsedObjects(), 0);
}

void TestPlanEditing::foreignClipboardTextPastesNothing()
{
    CVxAppCore* core = VX_GetCore();
    AddBox(100, 100, 60, 40);
    for (const char* text :
         {"hello", "[Plaveno Clipboard]\r\n", "[Plaveno Clipboard]\r\n[Room]\r\nUnit=cm\r\n",
          "[Other]\r\n[Part0]\r\nPosX=1\r\n"}) {
        QVERIFY(!core->PasteObjectsFromClipboard(CVxStringA(text)));
        QCOMPARE(core->GetProject().GetFloor()->CountUsedObjects(), 1);
    }
    QVERIFY(m_window->GetStatusBar()->GetLeftText().ToQString().contains(QStringLiteral("no objects")));
    QVERIFY(!core->CanUndo());
}

void TestPlanEditing::groupUngroupAndAlign()
{
    CVxAppCore* core = VX_GetCore();
    const int a = AddBox(100, 100, 30, 30);
    const int b = AddBox(150, 120, 40, 20);
    core->SelectAll();
    core->AlignSelectedObjects(1);
    QCOMPARE(Part(a).x, 100.0);
    QCOMPARE(Part(b).x, 100.0);
    core->AlignSelectedObjects(6);
    QCOMPARE(Part(a).y + 30, 140.0);
    QCOMPARE(Part(b).y + 20, 140.0);

    core->GroupSelectedObjects();
    CVxFloor* floor = core->GetProject().GetFloor();
    QCOMPARE(floor->CountUsedObjects(), 1);
    const CVxPart& group = Part(core->GetFirstSelected());
    QCOMPARE(int(group.type), int(ptComplexObject));
    QCOMPARE(group.subParts.size(), size_t(2));
    QCOMPARE(group.width, 40.0);

    core->UngroupSelectedObject();
    QCOMPARE(floor->CountUsedObjects(), 2);
    QCOMPARE(core->GetSelCount(), 2);
    double xs[2];
    int n = 0;
    for (const CVxPart& part : floor->m_objects)
        if (part.inUse)
            xs[n++] = part.x;
    QVERIFY(std::fabs(xs[0] - 100) < 1e-9 && std::fabs(xs[1] - 100) < 1e-9);

    // Each command was one step.
    QVERIFY(core->MakeUndo());
    QCOMPARE(floor->CountUsedObjects(), 1);
    QVERIFY(core->MakeUndo());
    QVERIFY(core->MakeUndo());
    QVERIFY(core->MakeUndo());
    QCOMPARE(Part(b).x, 150.0);
}

void TestPlanEditing::doorSlidesAlongItsWallWithGapLines()
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
    const int door = AddBox(200, 45, 80, 10);
    Part(door).type = ptWindow;
    Part(door).snapToWall = true;
    Part(door).SnapToWall(&walls, 200, 50, false, false, false);
    const double startX = Part(door).x;
    core->SetSelection(door, true);
    const QPoint at = Pixel(startX + 40, 50);
    Drag(at, at + QPoint(60, 0), Qt::NoModifier, false);
    QVERIFY2(Part(door).x > startX, qPrintable(QString::number(Part(door).x)));
    QCOMPARE(Part(door).y, 45.0);
    // Two lines tell the gaps to the wall's ends.
    std::vector<const CVxPart*> lines;
    for (const CVxPart& part : floor->m_objects)
        if (part.inUse && part.IsTempDimLine())
            lines.push_back(&part);
    QCOMPARE(lines.size(), size_t(2));
    const double left = Part(door).x - 50;
    QVERIFY2(std::fabs(lines[0]->width - left) < 0.02, qPrintable(QString::number(lines[0]->width)));
    QVERIFY(std::fabs(lines[1]->width - (450 - Part(door).x - 80)) < 0.02);
    QTest::mouseRelease(m_view, Qt::LeftButton, Qt::NoModifier, at + QPoint(60, 0));
    for (const CVxPart& part : floor->m_objects)
        QVERIFY(!(part.inUse && part.IsTempDimLine()));
    QVERIFY(core->MakeUndo());
    QCOMPARE(Part(door).x, startX);
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestPlanEditing test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_plan_editing.moc"
