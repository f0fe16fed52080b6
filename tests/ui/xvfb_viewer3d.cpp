// The 3D viewer on a real X server with the engine library: a small room is
// opened, drawn, looked at from its viewpoints, its switches turned, saved
// as a picture and exported; first without the library, which must leave
// the program working. Times and memory go to the test's output.

#include "CVx3dViewer.h"
#include "CVxAppCore.h"
#include "CVxGlobalShadow.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "CVxTimeAndPosDlg.h"
#include "GLWidget.h"
#include "VxCastleEngine.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>

#include <sys/resource.h>

class XvfbViewer3d : public QObject
{
    Q_OBJECT
private slots:
    void brokenEngineLibrary();
    void roomInTheViewer();
    void secondViewerIsANewEngine();
    void modelSizeWithoutAWindow();
    void sunOverTheFlat();
};

namespace {

const QString kScene = QStringLiteral(PLAVENO_SOURCE_DIR "/tests/data/scenes/box_room.wrl");

long ResidentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return 0;
}

bool IsSky(QRgb c)
{
    return qBlue(c) > 180 && qRed(c) < 100 && qGreen(c) < 150;
}

bool IsWall(QRgb c)
{
    return qRed(c) > 150 && qGreen(c) > 150 && qBlue(c) > 130 && std::abs(qRed(c) - qBlue(c)) < 50;
}

bool IsFloor(QRgb c)
{
    return qRed(c) > qBlue(c) + 20 && qRed(c) > qGreen(c);
}

int RedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) {
            const QRgb c = image.pixel(x, y);
            if (qRed(c) > 120 && qGreen(c) * 3 < qRed(c) && qBlue(c) * 3 < qRed(c))
                ++count;
        }
    return count;
}

// A fresh frame of the view, after whatever was changed. Occlusion culling
// decides what to draw by the queries of the frame before, so after a jump
// of the camera the second frame is the one that shows the scene.
QImage NextFrame(GLWidget* widget)
{
    for (int i = 0; i < 2; ++i) {
        QSignalSpy spy(widget, &GLWidget::FrameDrawn);
        widget->updateGL();
        if (!spy.wait(5000))
            return QImage();
    }
    return widget->grabFramebuffer();
}

QRgb At(const QImage& image, double fx, double fy)
{
    return image.pixel(static_cast<int>(image.width() * fx), static_cast<int>(image.height() * fy));
}

int DifferentPixels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return -1;
    int count = 0;
    for (int y = 0; y < a.height(); y += 2)
        for (int x = 0; x < a.width(); x += 2) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            if (std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                    std::abs(qBlue(p) - qBlue(q)) >
                30)
                ++count;
        }
    return count;
}

double CpuMs()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000.0 +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000.0;
}

struct SWalkTimes
{
    double medianMs = 1e9; // between two frames, on the clock
    double cpuMs = 1e9;    // processor time of the program a frame
    bool occlusionWhileWalking = false;
};

// Frame times while the avatar walks forward for a while, the pacing off, as
// a user holding the arrow key sees them. The processor time tells the cost
// even when other programs take the machine.
SWalkTimes WalkingFrameTimes(GLWidget* widget, int milliseconds)
{
    widget->SetSaveCPU(false);
    std::vector<qint64> stamps;
    QElapsedTimer clock;
    clock.start();
    SWalkTimes times;
    const QMetaObject::Connection connection = QObject::connect(widget, &GLWidget::FrameDrawn, [&] {
        stamps.push_back(clock.nsecsElapsed());
        if (stamps.size() > 2 && CGE_GetVariableInt(CGE_VAR_SSAO) == 1)
            times.occlusionWhileWalking = true;
    });
    const double cpuBefore = CpuMs();
    QTest::keyPress(widget, Qt::Key_Up);
    QTest::qWait(milliseconds);
    QTest::keyRelease(widget, Qt::Key_Up);
    const double cpu = CpuMs() - cpuBefore;
    QObject::disconnect(connection);
    widget->SetSaveCPU(true);
    std::vector<double> gaps;
    for (size_t i = 1; i < stamps.size(); ++i)
        gaps.push_back((stamps[i] - stamps[i - 1]) / 1e6);
    if (gaps.empty())
        return times;
    std::nth_element(gaps.begin(), gaps.begin() + gaps.size() / 2, gaps.end());
    times.medianMs = gaps[gaps.size() / 2];
    times.cpuMs = cpu / static_cast<double>(stamps.size());
    return times;
}

QString Describe(QRgb c)
{
    return QStringLiteral("(%1, %2, %3)").arg(qRed(c)).arg(qGreen(c)).arg(qBlue(c));
}

} // namespace

void XvfbViewer3d::brokenEngineLibrary()
{
    // A file that is no library: the reason reaches the user, nothing loads.
    QTemporaryDir dir;
    QFile junk(dir.path() + QStringLiteral("/libcastleengine.so"));
    QVERIFY(junk.open(QIODevice::WriteOnly));
    junk.write(QByteArray(4096, 'x'));
    junk.close();
    QStringList reports;
    CGE_SetErrorReporter(
        [&reports](const QString& title, const QString& text) { reports << title + ": " + text; });
    CGE_LoadLibraryFrom(dir.path() + QStringLiteral("/castleengine"));
    QVERIFY(!CGE_IsLoaded());
    QCOMPARE(reports.size(), 1);
    QVERIFY2(reports[0].startsWith(QStringLiteral("error: ")) &&
                 reports[0].contains(QStringLiteral("libcastleengine")),
             qPrintable(reports[0]));

    // No library beside the program: the viewer opens with the reason in
    // place of the view, and the program goes on.
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QString boxText;
    QTimer::singleShot(300, [&boxText] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            boxText = box->windowTitle() + ": " + box->text();
            box->accept();
        }
    });
    window.Show3DScene(CVxStringW(kScene));
    QTRY_VERIFY(!boxText.isEmpty());
    QVERIFY2(boxText.startsWith(QStringLiteral("error: ")), qPrintable(boxText));
    QPointer<CVx3dViewer> viewer = window.Get3DViewer();
    QVERIFY(viewer);
    QVERIFY(!viewer->GetGLWidget());
    QVERIFY2(viewer->GetWaiterText().contains(QStringLiteral("could not be loaded")),
             qPrintable(viewer->GetWaiterText()));
    // Nothing was drawn, so there was nothing to crash either.
    QVERIFY(!VX_GetOptions()->m_3dViewCrashedLastTime);
    window.Close3DViewer();
    QTRY_VERIFY(!viewer);
    QVERIFY(window.isVisible());
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [untitled]"));
}

void XvfbViewer3d::roomInTheViewer()
{
    QStringList reports;
    CGE_SetErrorReporter(
        [&reports](const QString& title, const QString& text) { reports << title + ": " + text; });
    CGE_LoadLibraryFrom(QStringLiteral(PLAVENO_ENGINE_DIR "/castleengine"));
    QVERIFY2(CGE_IsLoaded(), qPrintable(reports.join('\n')));
    QVERIFY2(reports.isEmpty(), qPrintable(reports.join('\n')));

    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const long memoryBefore = ResidentKiB();
    QElapsedTimer clock;
    clock.start();
    window.Show3DScene(CVxStringW(kScene));
    QPointer<CVx3dViewer> viewer = window.Get3DViewer();
    QVERIFY(viewer && viewer->GetGLWidget());
    GLWidget* gl = viewer->GetGLWidget();
    QTRY_VERIFY_WITH_TIMEOUT(gl->IsAfterInit() && gl->GetFrameCount() > 0, 20000);
    const qint64 firstFrameMs = clock.elapsed();
    // The first frame proves the driver survived the start.
    QVERIFY(!VX_GetOptions()->m_3dViewCrashedLastTime);

    // Outside the room: sky above, floor below, the south wall ahead.
    QImage frame = NextFrame(gl);
    QVERIFY(!frame.isNull());
    frame.save(QStringLiteral("xvfb_viewer3d_outside.png"));
    QVERIFY2(IsSky(At(frame, 0.5, 0.03)), qPrintable(Describe(At(frame, 0.5, 0.03))));
    QVERIFY2(IsFloor(At(frame, 0.5, 0.97)), qPrintable(Describe(At(frame, 0.5, 0.97))));
    QVERIFY2(IsWall(At(frame, 0.5, 0.45)), qPrintable(Describe(At(frame, 0.5, 0.45))));

    // The viewpoints in file order, then adding one.
    QCOMPARE(viewer->GetViewpointCount(), 2);
    const QList<QAction*> entries = viewer->GetViewpointsMenu()->actions();
    QVERIFY(entries.size() >= 4);
    QCOMPARE(entries[0]->text(), QStringLiteral("Overview"));
    QCOMPARE(entries[1]->text(), QStringLiteral("Inside"));

    // Inside: the north wall fills the middle, the red table shows below.
    viewer->MoveToViewpoint(1, false);
    QCOMPARE(viewer->GetCurrentViewpoint(), 1);
    frame = NextFrame(gl);
    frame.save(QStringLiteral("xvfb_viewer3d_inside.png"));
    QVERIFY2(IsWall(At(frame, 0.5, 0.5)), qPrintable(Describe(At(frame, 0.5, 0.5))));
    QVERIFY(RedPixels(frame) > 50);
    // Past the last viewpoint wraps to the first.
    viewer->MoveToViewpoint(2, false);
    QCOMPARE(viewer->GetCurrentViewpoint(), 0);
    viewer->MoveToViewpoint(1, false);

    // The layer's switch through the tree: the table goes and comes back.
    QTreeWidget* tree = viewer->GetTreeWidget();
    QCOMPARE(tree->topLevelItemCount(), 1);
    QTreeWidgetItem* layer = tree->topLevelItem(0)->child(0);
    QVERIFY(layer);
    layer->setCheckState(0, Qt::Unchecked);
    QCOMPARE(RedPixels(NextFrame(gl)), 0);
    layer->setCheckState(0, Qt::Checked);
    QVERIFY(RedPixels(NextFrame(gl)) > 50);

    // Walls: invisible shows the sky through; halved keeps the lower part.
    auto* walls = viewer->findChild<QComboBox*>();
    QVERIFY(walls);
    walls->setCurrentIndex(1);
    frame = NextFrame(gl);
    QVERIFY2(IsSky(At(frame, 0.5, 0.5)), qPrintable(Describe(At(frame, 0.5, 0.5))));
    walls->setCurrentIndex(2);
    frame = NextFrame(gl);
    frame.save(QStringLiteral("xvfb_viewer3d_halved.png"));
    QVERIFY2(IsSky(At(frame, 0.5, 0.45)), qPrintable(Describe(At(frame, 0.5, 0.45))));
    QVERIFY2(IsWall(At(frame, 0.5, 0.66)), qPrintable(Describe(At(frame, 0.5, 0.66))));
    walls->setCurrentIndex(0);
    QVERIFY(IsWall(At(NextFrame(gl), 0.5, 0.45)));

    // The floor's switch takes everything of the floor away.
    viewer->OnFloorLayerVisibilityChanged(0, -1, false);
    QVERIFY(IsSky(At(NextFrame(gl), 0.5, 0.97)));
    viewer->OnFloorLayerVisibilityChanged(0, -1, true);
    QVERIFY(IsFloor(At(NextFrame(gl), 0.5, 0.97)));

    // A snapshot is the frame on the screen.
    QTemporaryDir out;
    const QString shot = out.path() + QStringLiteral("/view.png");
    QVERIFY(viewer->SaveScreenshotToFile(shot));
    const QImage saved(shot);
    QCOMPARE(saved.size(), gl->grabFramebuffer().size());
    QVERIFY(IsWall(At(saved, 0.5, 0.5)));

    // The scene exported by the engine in its three formats.
    for (const char* name : {"scene.x3d", "scene.stl", "scene.wrl"}) {
        const QString path = out.path() + QLatin1Char('/') + QLatin1String(name);
        viewer->SaveSceneToFile(path);
        QFile file(path);
        QVERIFY2(file.open(QIODevice::ReadOnly), name);
        const QByteArray text = file.readAll();
        if (path.endsWith(QLatin1String("x3d")))
            QVERIFY(text.contains("<X3D") && text.contains("VX_LAYER_F00L00"));
        else if (path.endsWith(QLatin1String("stl")))
            // Ten boxes of twelve triangles each.
            QVERIFY2(text.startsWith("solid") && text.count("facet normal") == 10 * 12,
                     text.left(300).constData());
        else
            QVERIFY(text.startsWith("#VRML V2.0") && text.contains("VX_WALLS_F00H1"));
    }

    // Walking forward with the pacing off: the frames a second, and the
    // avatar moved.
    viewer->MoveToViewpoint(0, false);
    gl->SetSaveCPU(false);
    NextFrame(gl);
    float before[12] = {};
    CGE_GetViewCoords(&before[0], &before[1], &before[2], &before[3], &before[4], &before[5], &before[6],
                      &before[7], &before[8], &before[9], &before[10], &before[11]);
    const int framesBefore = gl->GetFrameCount();
    QElapsedTimer walk;
    walk.start();
    QTest::keyPress(gl, Qt::Key_Up);
    QTest::qWait(2000);
    QTest::keyRelease(gl, Qt::Key_Up);
    const double fps = (gl->GetFrameCount() - framesBefore) * 1000.0 / static_cast<double>(walk.elapsed());
    gl->EnsureContextCurrent();
    float after[12] = {};
    CGE_GetViewCoords(&after[0], &after[1], &after[2], &after[3], &after[4], &after[5], &after[6], &after[7],
                      &after[8], &after[9], &after[10], &after[11]);
    QVERIFY2(after[2] < before[2] - 0.5f,
             qPrintable(QStringLiteral("z %1 -> %2").arg(before[2]).arg(after[2])));
    gl->SetSaveCPU(true);

    // An idle viewer with the pacing on draws nothing.
    QTest::qWait(300);
    const int idleFrames = gl->GetFrameCount();
    QTest::qWait(1000);
    QVERIFY(gl->GetFrameCount() - idleFrames <= 2);

    // Only the version line reached the log: no warning.
    QVERIFY2(viewer->GetWarnings().size() == 1 &&
                 viewer->GetWarnings()[0].startsWith(QStringLiteral("Castle Engine version: ")),
             qPrintable(viewer->GetWarnings().join('\n')));
    QVERIFY(reports.isEmpty());

    // The tour from the first viewpoint to the last, without pauses.
    viewer->MoveToViewpoint(0, false);
    for (QAction* action : viewer->findChildren<QAction*>())
        if (action->text() == QStringLiteral("Pause Movie at Viewpoints"))
            action->setChecked(false);
    QElapsedTimer tour;
    tour.start();
    viewer->BtnViewPlayClick();
    QVERIFY(!viewer->IsPlaying());
    QCOMPARE(viewer->GetCurrentViewpoint(), 1);
    QVERIFY(tour.elapsed() < 5000);
    frame = NextFrame(gl);
    frame.save(QStringLiteral("xvfb_viewer3d_tour_end.png"));
    QVERIFY2(IsWall(At(frame, 0.5, 0.5)), qPrintable(Describe(At(frame, 0.5, 0.5))));

    qInfo("first frame after %lld ms; %.1f frames a second while walking; resident memory %ld KiB more with "
          "the viewer",
          static_cast<long long>(firstFrameMs), fps, ResidentKiB() - memoryBefore);
    window.Close3DViewer();
    QTRY_VERIFY(!viewer);
}

void XvfbViewer3d::secondViewerIsANewEngine()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (int round = 0; round < 2; ++round) {
        window.Show3DScene(CVxStringW(kScene));
        QPointer<CVx3dViewer> viewer = window.Get3DViewer();
        QVERIFY(viewer && viewer->GetGLWidget());
        GLWidget* gl = viewer->GetGLWidget();
        QTRY_VERIFY_WITH_TIMEOUT(gl->IsAfterInit() && gl->GetFrameCount() > 0, 20000);
        QVERIFY(IsSky(At(NextFrame(gl), 0.5, 0.03)));
        QCOMPARE(viewer->GetWarnings().size(), 1);
        window.Close3DViewer();
        QTRY_VERIFY(!viewer);
    }
}

void XvfbViewer3d::modelSizeWithoutAWindow()
{
    // A model in a folder whose name needs escaping in the URL; the viewer
    // is closed first, since the engine has one view.
    CVxMainWindow window;
    window.Show3DScene(CVxStringW(kScene));
    QPointer<CVx3dViewer> viewer = window.Get3DViewer();
    QVERIFY(viewer);
    QTemporaryDir dir;
    const QString folder = dir.path() + QStringLiteral("/my models #2");
    QVERIFY(QDir().mkpath(folder));
    QFile model(folder + QStringLiteral("/table.wrl"));
    QVERIFY(model.open(QIODevice::WriteOnly));
    model.write("#VRML V2.0 utf8\n"
                "PROTO Table [ field SFNode appearance NULL ] {\n"
                "  Transform { translation 0 0.375 0 children Shape { appearance IS appearance\n"
                "    geometry Box { size 1.2 0.75 0.8 } } }\n"
                "}\n");
    model.close();
    float box[6] = {};
    QVERIFY(CVx3dViewer::GetProtoSize(CVxStringW(model.fileName()), CVxStringA("Table"), true, box));
    QTRY_VERIFY(!viewer);
    const float expected[6] = {-0.6f, 0.6f, 0.0f, 0.75f, -0.4f, 0.4f};
    for (int i = 0; i < 6; ++i)
        QVERIFY2(std::fabs(box[i] - expected[i]) < 1e-4f, qPrintable(QString::number(box[i])));
    // A prototype the file lacks has no size.
    QVERIFY(!CVx3dViewer::GetProtoSize(CVxStringW(model.fileName()), CVxStringA("Chair"), true, box));
}

void XvfbViewer3d::sunOverTheFlat()
{
    CGE_LoadLibraryFrom(QStringLiteral(PLAVENO_ENGINE_DIR "/castleengine"));
    QVERIFY(CGE_IsLoaded());
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.OpenFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/Flat.pvp")), false));
    CVxProject& project = VX_GetCore()->GetProject();
    // Whatever happens, the window closes without asking to save.
    const auto unmodified = qScopeGuard([&project] { project.m_modified = false; });
    // The viewer closed before its first frame in the test before.
    VX_GetOptions()->m_3dViewCrashedLastTime = false;
    CVxGlobalShadow shadow;
    shadow.LoadFromKept(project.m_globalShadow);
    shadow.enabled = true;
    shadow.day = 170;
    shadow.time = 10 * 60;
    shadow.StoreToKept(project.m_globalShadow);

    const long memoryBefore = ResidentKiB();
    QElapsedTimer clock;
    clock.start();
    window.Show3D();
    QPointer<CVx3dViewer> viewer = window.Get3DViewer();
    QVERIFY(viewer && viewer->GetGLWidget());
    GLWidget* gl = viewer->GetGLWidget();
    QTRY_VERIFY_WITH_TIMEOUT(gl->IsAfterInit() && gl->GetFrameCount() > 0, 30000);
    const qint64 firstFrameMs = clock.elapsed();
    QVERIFY(viewer->GetSunCheck()->isChecked());
    QVERIFY(viewer->GetTimeSlider()->isEnabled());
    QCOMPARE(viewer->GetTimeSlider()->value(), 10 * 60);

    // The evening sun throws other shadows than the morning one.
    viewer->MoveToViewpoint(0, false);
    const QImage morning = NextFrame(gl);
    QVERIFY2(!morning.isNull(), qPrintable(viewer->GetWarnings().join(QLatin1Char('\n'))));
    morning.save(QStringLiteral("xvfb_viewer3d_flat_morning.png"));
    viewer->GetTimeSlider()->setValue(17 * 60);
    const QImage evening = NextFrame(gl);
    evening.save(QStringLiteral("xvfb_viewer3d_flat_evening.png"));
    const int changed = DifferentPixels(morning, evening);
    QVERIFY2(changed > morning.width() * morning.height() / 4 / 50, qPrintable(QString::number(changed)));
    shadow.LoadFromKept(project.m_globalShadow);
    QCOMPARE(shadow.time, 17 * 60);
    QCOMPARE(shadow.day, 170);

    // A city from the location dialog becomes the project's place.
    bool picked = false;
    QTimer::singleShot(300, [&picked] {
        auto* dialog = qobject_cast<CVxTimeAndPosDlg*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        QTimer::singleShot(300, [&picked] {
            if (auto* preset = qobject_cast<CVxTimeAndPosPresetDlg*>(QApplication::activeModalWidget())) {
                picked = preset->SelectCity(QStringLiteral("Japan"), QStringLiteral("Tokyo"));
                preset->accept();
            }
        });
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->text() == QStringLiteral("Choose a City..."))
                button->click();
        dialog->accept();
    });
    for (QPushButton* button : viewer->findChildren<QPushButton*>())
        if (button->text() == QStringLiteral("Location and Time..."))
            button->click();
    QVERIFY(picked);
    shadow.LoadFromKept(project.m_globalShadow);
    QVERIFY(std::fabs(shadow.latitude - 35.68) < 1e-6 && std::fabs(shadow.longitude - 139.69) < 1e-6);
    QCOMPARE(shadow.timeZone, 9.0);
    QCOMPARE(shadow.time, 17 * 60);
    QVERIFY(DifferentPixels(evening, NextFrame(gl)) > 0);

    // Walking draws without the ambient occlusion; the still picture has it
    // again.
    viewer->MoveToViewpoint(0, false);
    NextFrame(gl);
    QTRY_VERIFY(!gl->IsCameraMoving());
    const int occlusionAtRest = CGE_GetVariableInt(CGE_VAR_SSAO);
    const SWalkTimes walk = WalkingFrameTimes(gl, 3000);
    QVERIFY(!walk.occlusionWhileWalking);
    QTRY_VERIFY(!gl->IsCameraMoving());
    gl->EnsureContextCurrent();
    QCOMPARE(CGE_GetVariableInt(CGE_VAR_SSAO), occlusionAtRest);
    qInfo("Flat with the sun: first frame after %lld ms; walking %.1f ms a frame (median, %.1f a second), "
          "%.1f ms processor time a frame; resident memory %ld KiB more with the viewer",
          static_cast<long long>(firstFrameMs), walk.medianMs, 1000 / walk.medianMs, walk.cpuMs,
          ResidentKiB() - memoryBefore);

    // Turning the sun off is a new export in a new context.
    viewer->GetSunCheck()->click();
    shadow.LoadFromKept(project.m_globalShadow);
    QVERIFY(!shadow.enabled);
    QVERIFY(viewer->GetGLWidget() && viewer->GetGLWidget() != gl);
    gl = viewer->GetGLWidget();
    QTRY_VERIFY_WITH_TIMEOUT(gl->IsAfterInit() && gl->GetFrameCount() > 0, 30000);
    QVERIFY(!NextFrame(gl).isNull());
    QVERIFY(!viewer->GetTimeSlider()->isEnabled());
    viewer->GetSunCheck()->click();
    gl = viewer->GetGLWidget();
    QTRY_VERIFY_WITH_TIMEOUT(gl->IsAfterInit() && gl->GetFrameCount() > 0, 30000);
    QVERIFY(!NextFrame(gl).isNull());
    QVERIFY(viewer->GetTimeSlider()->isEnabled());
    window.Close3DViewer();
    QTRY_VERIFY(!viewer);
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    XvfbViewer3d test;
    return QTest::qExec(&test, argc, argv);
}

#include "xvfb_viewer3d.moc"
