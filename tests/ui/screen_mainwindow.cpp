// A screenshot of the real window on an X server: the frame a user sees at
// start-up. The picture is kept in the build folder for a look.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxIniFileReader.h"
#include "CVxMainRenderArea.h"
#include "CVxMainWindow.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QImage>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTest>

class ScreenMainWindow : public QObject
{
    Q_OBJECT
private slots:
    void startUpFrame();
    void furnishedRoom();
};

namespace {
// The catalogue entry with that caption, read from the copy beside the
// program through its own reader.
bool LoadCatalogueObject(const wchar_t* caption, CVxPart& out)
{
    CVxIniFileReader reader(
        CVxStringW(QCoreApplication::applicationDirPath() + QStringLiteral("/Library.pvl")), 0);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        if (reader.GetSectionName().Left(4) == "Part") {
            CVxPart part;
            part.LoadFromSection(&reader);
            if (part.caption == caption) {
                out = part;
                return true;
            }
        } else {
            reader.ReadSection(nullptr);
        }
    }
    return false;
}
} // namespace

void ScreenMainWindow::startUpFrame()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(600);
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [untitled]"));

    const QImage shot = window.grab().toImage();
    QVERIFY(shot.save(QStringLiteral("screen_mainwindow.png")));

    // The sheet lies in the middle of the plan area; the default room's
    // left wall shows in the floor's wall colour.
    CVxMainRenderArea* area = window.GetRenderArea();
    const VxRECT sheet = VX_GetCore()->GetSheetRect();
    const CVxProject& project = VX_GetCore()->GetProject();
    const CVxFloor* floor = project.m_floors.front();
    const double zoom = VX_GetCore()->GetZoom();
    const QPoint onWall = area->mapTo(
        &window,
        QPoint(sheet.left + static_cast<int>((project.m_spaceLeft - floor->m_defWallThickness / 2) * zoom),
               sheet.top + static_cast<int>((project.m_spaceTop + project.m_height / 2) * zoom)));
    const unsigned wall = floor->m_wallsColor;
    QCOMPARE(shot.pixelColor(onWall), QColor(wall & 0xFF, (wall >> 8) & 0xFF, (wall >> 16) & 0xFF));
    QVERIFY(window.menuBar()->isVisible());
    QVERIFY(window.statusBar()->isVisible());
    QVERIFY(sheet.right - sheet.left > area->width() / 3);
}

void ScreenMainWindow::furnishedRoom()
{
    CVxMainWindow window;
    window.resize(1100, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(400);

    // A bed-sitting room in the default 500 by 300 room.
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    struct SPlace
    {
        const wchar_t* caption;
        double x, y, rotation;
    };
    const SPlace places[] = {
        {L"Rug", 290, 110, 0},
        {L"Double bed", 20, 20, 0},
        {L"Bedside table", 190, 20, 0},
        {L"Sofa, three seats", 270, 205, 0},
        {L"Coffee table", 340, 130, 0},
        {L"Wardrobe, two doors", 20, 235, 0},
        {L"Floor lamp", 460, 20, 0},
        {L"Desk", 240, 20, 0},
        {L"Office chair", 300, 120, 180},
        {L"Door", 400, 10, 0},
        // Turned round on the lower wall so that it faces the room; its first
        // corner is then its right end.
        {L"Window", 210, 290, 180},
        {L"Window", 60, 10, 0},
    };
    int placed = 0;
    for (const SPlace& place : places) {
        CVxPart part;
        if (!LoadCatalogueObject(place.caption, part))
            continue;
        part.x = place.x;
        part.y = place.y;
        part.rotation = place.rotation;
        CVxPart* slot = floor->GetNewObject();
        *slot = part;
        slot->inUse = true;
        if (slot->snapToWall)
            slot->SnapToWall(&floor->m_walls, place.x, place.y, false, false, false);
        ++placed;
    }
    QCOMPARE(placed, 12);
    core->UpdateFloorPlan();
    window.ZoomToBestFit();
    QTest::qWait(200);
    const QImage shot = window.grab().toImage();
    QVERIFY(shot.save(QStringLiteral("screen_furnished.png")));
    floor->RemoveAllObjects();
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    ScreenMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "screen_mainwindow.moc"
