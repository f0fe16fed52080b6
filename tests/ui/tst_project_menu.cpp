// The Project menu, the question before a modified project is closed, the
// samples and dropped files.

#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxFloor.h"
#include "CVxLayersForm.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QUrl>

namespace {

CVxUiTestHome* g_home = nullptr;

// Answers every question with a set answer and counts them.
class CVxAnsweringHelper : public CVxAppHelperQt
{
public:
    int MsgBox(const CVxStringW& text, const CVxStringW& /*caption*/, unsigned flags, void* /*parent*/,
               EVxMsgButton /*defaultButton*/, EVxMsgButton /*escapeButton*/) override
    {
        ++asked;
        lastText = text;
        lastFlags = flags;
        return answer;
    }
    CVxStringW GetSaveProjectFileName(const CVxStringW& /*title*/, const CVxStringW& /*filter*/,
                                      const CVxStringW& /*suggested*/) override
    {
        return savePath;
    }

    int answer = VX_MBR_CANCEL;
    int asked = 0;
    unsigned lastFlags = 0;
    CVxStringW lastText;
    CVxStringW savePath;
};

// The host answers for the life of one test.
class CVxHelperScope
{
public:
    explicit CVxHelperScope(IVxAppHelperCallback* helper) : m_previous(VX_GetAppHelper())
    {
        VX_SetAppHelperCallback(helper);
    }
    ~CVxHelperScope() { VX_SetAppHelperCallback(m_previous); }

private:
    IVxAppHelperCallback* m_previous;
};

QStringList ItemTexts(QMenu* menu)
{
    QStringList texts;
    for (QAction* action : menu->actions())
        if (!action->isSeparator() && action->isVisible())
            texts << action->text().remove(QLatin1Char('&'));
    return texts;
}

QAction* FindItem(QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions())
        if (action->text().remove(QLatin1Char('&')) == text)
            return action;
    return nullptr;
}

void ResetProject()
{
    VX_GetCore()->GetFileMonitor().StopMonitoring();
    VX_GetCore()->SetProjectPath(CVxStringW());
    VX_GetCore()->InitProject();
}

} // namespace

class TestProjectMenu : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();
    void itemsAndShortcuts();
    void samplesOpenUntitledAndEnterTheRecentList();
    void projectWithLayersShowsItsLayers();
    void firstStartOpensTheSampleUntitled();
    void closeOfAModifiedProjectAsks();
    void closeQuestionInARealMessageBox();
    void droppedProjectFileOpens();

private:
    QString m_samples;
    QString m_projects;
};

void TestProjectMenu::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    m_projects = g_home->Path() + QStringLiteral("/projects/");
    QDir().mkpath(m_projects);
    // A sample beside the program, written by the core itself.
    m_samples = QCoreApplication::applicationDirPath() + QStringLiteral("/samples/");
    QDir().mkpath(m_samples);
    CVxMainWindow window;
    VX_GetCore()->GetProject().m_width = 432;
    QVERIFY(VX_GetCore()->SaveMainProjectToFile(CVxStringW(m_samples + QStringLiteral("Demo.pvp"))));
    ResetProject();
}

void TestProjectMenu::cleanupTestCase()
{
    QFile::remove(m_samples + QStringLiteral("Demo.pvp"));
    QDir().rmdir(m_samples);
}

void TestProjectMenu::cleanup()
{
    ResetProject();
    for (CVxStringW& recent : VX_GetOptions()->m_recent)
        recent.Empty();
}

void TestProjectMenu::itemsAndShortcuts()
{
    CVxMainWindow window;
    QMenu* menu = window.GetMenu(CVxMainWindow::MENU_PROJECT);
    QCOMPARE(ItemTexts(menu),
             (QStringList{QStringLiteral("Start New Project"), QStringLiteral("Open"),
                          QStringLiteral("Browse..."), QStringLiteral("Save"), QStringLiteral("Save As..."),
                          QStringLiteral("Revert to Saved"), QStringLiteral("Merge Projects..."),
                          QStringLiteral("Samples"), QStringLiteral("Project Properties"),
                          QStringLiteral("Transformations"), QStringLiteral("Print"),
                          QStringLiteral("Save as Image..."), QStringLiteral("Export to DXF..."),
                          QStringLiteral("Copy to Clipboard"), QStringLiteral("Web Page with 3D..."),
                          QStringLiteral("Send as E-mail..."), QStringLiteral("Exit")}));
    QCOMPARE(FindItem(menu, QStringLiteral("Start New Project"))->shortcut(),
             QKeySequence(QStringLiteral("Ctrl+N")));
    QCOMPARE(FindItem(menu, QStringLiteral("Open"))->shortcut(), QKeySequence(QStringLiteral("Ctrl+O")));
    QCOMPARE(FindItem(menu, QStringLiteral("Save"))->shortcut(), QKeySequence(QStringLiteral("Ctrl+S")));
    // F12 rather than Ctrl+Shift+S, which is for hosts that prefer the Cmd key.
    QCOMPARE(FindItem(menu, QStringLiteral("Save As..."))->shortcut(), QKeySequence(QStringLiteral("F12")));
    QVERIFY(FindItem(menu, QStringLiteral("Revert to Saved"))->shortcut().isEmpty());
}

void TestProjectMenu::samplesOpenUntitledAndEnterTheRecentList()
{
    CVxMainWindow window;
    QMenu* samples = window.GetSamplesMenu();
    QVERIFY(samples);
    QAction* demo = FindItem(samples, QStringLiteral("Demo"));
    QVERIFY(demo);
    QCOMPARE(demo->data().toString(), m_samples + QStringLiteral("Demo.pvp"));
    demo->trigger();
    CVxAppCore* core = VX_GetCore();
    QCOMPARE(core->GetProject().m_width, 432.0);
    QVERIFY(core->GetProjectPath().IsEmpty());
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [untitled]"));
    QCOMPARE(VX_GetOptions()->m_recent[0].ToQString(), QStringLiteral("$SAMPLE$/Demo.pvp"));
    // The recent entry shows the file's name, its place as a hint, and opens
    // it again.
    QMenu* menu = window.GetMenu(CVxMainWindow::MENU_PROJECT);
    QAction* recent = FindItem(menu, QStringLiteral("1 Demo.pvp"));
    QVERIFY2(recent && recent->isVisible(), qPrintable(ItemTexts(menu).join(QLatin1Char('|'))));
    QCOMPARE(recent->toolTip(), QDir::toNativeSeparators(m_samples + QStringLiteral("Demo.pvp")));
    QCOMPARE(recent->statusTip(), recent->toolTip());
    core->InitProject();
    recent->trigger();
    QCOMPARE(core->GetProject().m_width, 432.0);

    // A project of the user's comes first, by its name as well.
    const QString own = m_projects + QStringLiteral("R&D.pvp");
    QVERIFY(core->SaveMainProjectToFile(CVxStringW(own)));
    QVERIFY(window.OpenFile(CVxStringW(own), false));
    QCOMPARE(ItemTexts(menu).mid(ItemTexts(menu).size() - 3, 2),
             (QStringList{QStringLiteral("1 RD.pvp"), QStringLiteral("2 Demo.pvp")}));
    QCOMPARE(FindItem(menu, QStringLiteral("1 RD.pvp"))->text(), QStringLiteral("&1 R&&D.pvp"));
}

void TestProjectMenu::projectWithLayersShowsItsLayers()
{
    CVxMainWindow window;
    window.show();
    CVxAppCore* core = VX_GetCore();
    core->GetProject().GetFloor()->m_layers.AddLayer(CVxStringW(L"Furniture"));
    const QString path = m_projects + QStringLiteral("Layers.pvp");
    QVERIFY(core->SaveMainProjectToFile(CVxStringW(path)));
    ResetProject();
    QVERIFY(window.OpenFile(CVxStringW(path), false));
    QCOMPARE(core->GetProject().GetFloor()->m_layers.GetLayerCount(), 2);
    QVERIFY(window.GetDock(CVxMainWindow::DOCK_LAYERS)->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(window.GetLayersForm()->GetTable()->rowCount(), 2);
}

void TestProjectMenu::firstStartOpensTheSampleUntitled()
{
    const CVxStringW sample(m_samples + QStringLiteral("Sample.pvp"));
    CVxProject expected;
    QVERIFY(expected.LoadFromFile(sample, nullptr, nullptr, false, 0));
    expected.RemoveTempFiles();
    // Settings as at a real first start: the earlier windows' recent files
    // would be opened instead.
    QFile::remove(g_home->AppDataFolder() + QStringLiteral("config.ini"));
    CVxMainWindow::SetOpenSampleAtFirstStart(true);
    CVxMainWindow window;
    CVxMainWindow::SetOpenSampleAtFirstStart(false);
    QVERIFY(window.IsFirstStart());
    const CVxProject& project = VX_GetCore()->GetProject();
    QCOMPARE(project.GetFloorCount(), expected.GetFloorCount());
    QCOMPARE(project.m_floors[0]->m_walls.GetWallCount(), expected.m_floors[0]->m_walls.GetWallCount());
    QCOMPARE(project.m_floors[0]->CountUsedObjects(), expected.m_floors[0]->CountUsedObjects());
    QVERIFY(VX_GetCore()->GetProjectPath().IsEmpty());
    QCOMPARE(VX_GetOptions()->m_recent[0].ToQString(), QStringLiteral("$SAMPLE$/Sample.pvp"));
}

void TestProjectMenu::closeOfAModifiedProjectAsks()
{
    CVxMainWindow window;
    window.show();
    CVxAnsweringHelper helper;
    CVxHelperScope scope(&helper);
    CVxAppCore* core = VX_GetCore();

    // Unmodified: no question.
    QVERIFY(window.close());
    QCOMPARE(helper.asked, 0);

    window.show();
    core->GetProject().m_modified = true;
    helper.answer = VX_MBR_CANCEL;
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    QCOMPARE(helper.asked, 1);
    QCOMPARE(helper.lastFlags, 6658u);
    QVERIFY(helper.lastText.ToQString().startsWith(QStringLiteral("The project was changed")));

    // Save with a cancelled file dialogue keeps the window too.
    helper.answer = VX_MBR_YES;
    QVERIFY(!window.close());

    // Save into a file, then the window closes.
    helper.savePath = CVxStringW(m_projects + QStringLiteral("closing.pvp"));
    QVERIFY(window.close());
    QVERIFY(QFile::exists(m_projects + QStringLiteral("closing.pvp")));
    QVERIFY(!core->GetProject().IsModified());

    // Don't save closes and writes nothing.
    window.show();
    core->GetProject().m_modified = true;
    helper.answer = VX_MBR_NO;
    helper.savePath = CVxStringW(m_projects + QStringLiteral("never.pvp"));
    QVERIFY(window.close());
    QVERIFY(!QFile::exists(m_projects + QStringLiteral("never.pvp")));
}

void TestProjectMenu::closeQuestionInARealMessageBox()
{
    CVxMainWindow window;
    window.show();
    VX_GetCore()->GetProject().m_modified = true;
    QStringList buttons;
    QTimer::singleShot(50, this, [&buttons] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        QAbstractButton* cancel = nullptr;
        for (QAbstractButton* button : box->buttons()) {
            buttons << button->text().remove(QLatin1Char('&'));
            if (box->buttonRole(button) == QMessageBox::RejectRole)
                cancel = button;
        }
        if (cancel)
            cancel->click();
    });
    QVERIFY(!window.close());
    buttons.sort();
    QCOMPARE(buttons, (QStringList{QStringLiteral("Cancel"), QStringLiteral("No"), QStringLiteral("Save")}));
    VX_GetCore()->GetProject().m_modified = false;
}

void TestProjectMenu::droppedProjectFileOpens()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // Drops are taken once the window has started.
    QTRY_VERIFY(window.acceptDrops());
    const QString path = m_projects + QStringLiteral("dropped.pvp");
    VX_GetCore()->GetProject().m_width = 612;
    QVERIFY(VX_GetCore()->SaveMainProjectToFile(CVxStringW(path)));
    ResetProject();

    QMimeData other;
    other.setUrls({QUrl::fromLocalFile(m_projects + QStringLiteral("plan.png"))});
    QDragEnterEvent refused(QPoint(10, 10), Qt::CopyAction, &other, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &refused);
    QVERIFY(!refused.isAccepted());

    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    QTRY_COMPARE(VX_GetCore()->GetProjectPath().ToQString(), path);
    QCOMPARE(VX_GetCore()->GetProject().m_width, 612.0);

    // A dropped file that is no project is refused with a message naming
    // it; neither the project nor the file changes.
    const QString junk = m_projects + QStringLiteral("junk.pvp");
    QFile file(junk);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("not a plan at all");
    file.close();
    CVxAnsweringHelper helper;
    CVxHelperScope scope(&helper);
    QMimeData junkData;
    junkData.setUrls({QUrl::fromLocalFile(junk)});
    QDragEnterEvent junkEnter(QPoint(10, 10), Qt::CopyAction, &junkData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &junkEnter);
    QDropEvent junkDrop(QPointF(10, 10), Qt::CopyAction, &junkData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &junkDrop);
    QTRY_COMPARE(helper.asked, 1);
    QVERIFY(helper.lastText.ToQString().contains(QStringLiteral("junk.pvp")));
    QCOMPARE(VX_GetCore()->GetProjectPath().ToQString(), path);
    QCOMPARE(VX_GetCore()->GetProject().m_width, 612.0);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("not a plan at all"));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestProjectMenu test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_project_menu.moc"
