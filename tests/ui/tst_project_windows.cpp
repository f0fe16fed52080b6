// The project windows driven through their widgets: the layers window,
// project properties, options, transformations, the object listing and the
// language dialogue. OK is one undo step, Cancel changes nothing, lengths
// take typed units, and German leaves no English text behind.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxLanguageDlg.h"
#include "CVxLayersForm.h"
#include "CVxLocalize.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "CVxOptionsDlg.h"
#include "CVxPartsListForm.h"
#include "CVxProjectPropertiesDlg.h"
#include "CVxTransformDlg.h"
#include "CVxUndoManager.h"
#include "CVxUnits.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <functional>
#include <memory>

namespace {

CVxUiTestHome* g_home = nullptr;

CVxFloor* Floor()
{
    return VX_GetCore()->GetProject().GetFloor();
}

// The project as its file would hold it, without touching the live one.
QByteArray ProjectBytes()
{
    CVxProject copy;
    VX_GetCore()->GetProject().CopyTo(&copy);
    const QString path = g_home->Path() + QStringLiteral("/bytes.pvp");
    copy.SaveToFile(CVxStringW(path), false, nullptr);
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ClickOk(QWidget* dialog)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

void ClickCancel(QWidget* dialog)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel),
                      Qt::LeftButton);
}

void Type(QWidget* parent, const char* name, const QString& text)
{
    auto* edit = parent->findChild<QLineEdit*>(QString::fromLatin1(name));
    QVERIFY2(edit, name);
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

int UndoSteps()
{
    return VX_GetCore()->GetUndoManager().GetPosition();
}

// Every text a user reads in a window: titles, labels, buttons, group
// boxes, tabs, column heads and choices. Lists of names (countries,
// languages) are data, not texts of the window.
QStringList VisibleTexts(QWidget* window)
{
    QStringList texts{window->windowTitle()};
    for (QLabel* label : window->findChildren<QLabel*>())
        texts << label->text();
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
        texts << button->text();
    for (QGroupBox* box : window->findChildren<QGroupBox*>())
        texts << box->title();
    for (QTabWidget* tabs : window->findChildren<QTabWidget*>())
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i);
    for (QTableWidget* table : window->findChildren<QTableWidget*>())
        for (int i = 0; i < table->columnCount(); ++i)
            if (table->horizontalHeaderItem(i))
                texts << table->horizontalHeaderItem(i)->text();
    for (QComboBox* combo : window->findChildren<QComboBox*>())
        if (combo->objectName() != QLatin1String("CbCountry"))
            for (int i = 0; i < combo->count(); ++i)
                texts << combo->itemText(i);
    return texts;
}

} // namespace

class TestProjectWindows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("Plaveno")); }
    void init()
    {
        // Each window starts from the default settings, not from what an
        // earlier test kept in config.ini.
        if (!CVxOptions::GetConfigFilePath().IsEmpty())
            QFile::remove(CVxOptions::GetConfigFilePath().ToQString());
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->InitProject();
        VX_GetCore()->GetUndoManager().Reinitialize(&VX_GetCore()->GetProject());
    }
    void layersWindowChangesTheFloor();
    void projectPropertiesTakeFeetAndInches();
    void optionsApplyAndStay();
    void transformMovesByTypedDistances();
    void listingSortsAndCopies();
    void germanWindowsShowNoEnglish();
    void userGuideIsShippedWithItsPictures();
};

void TestProjectWindows::layersWindowChangesTheFloor()
{
    CVxMainWindow window;
    CVxLayersForm* form = window.GetLayersForm();
    window.ShowDock(CVxMainWindow::DOCK_LAYERS, true);
    QTest::mouseClick(form->findChild<QPushButton*>(QStringLiteral("BtnAdd")), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(Floor()->m_layers.GetLayerCount(), 2);
    QCOMPARE(Floor()->m_layers.GetActiveLayer(), 1);

    QTableWidget* table = form->GetTable();
    table->item(1, CVxLayersForm::COL_NAME)->setText(QStringLiteral("Furniture"));
    QCoreApplication::processEvents();
    table->item(1, CVxLayersForm::COL_VISIBLE)->setCheckState(Qt::Unchecked);
    QCoreApplication::processEvents();
    table->item(0, CVxLayersForm::COL_LOCKED)->setCheckState(Qt::Checked);
    QCoreApplication::processEvents();
    QCOMPARE(Floor()->m_layers.GetLayerName(1).ToQString(), QStringLiteral("Furniture"));
    QVERIFY(!Floor()->m_layers.IsLayerVisible(1));
    QVERIFY(Floor()->m_layers.IsLayerLocked(0));
    QCOMPARE(UndoSteps(), 4);

    // Moving the active layer up; the list follows, and undo puts it back.
    table->selectRow(1);
    QTest::mouseClick(form->findChild<QPushButton*>(QStringLiteral("BtnUp")), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(Floor()->m_layers.GetLayerName(0).ToQString(), QStringLiteral("Furniture"));
    QCOMPARE(table->item(0, CVxLayersForm::COL_NAME)->text(), QStringLiteral("Furniture"));
    QVERIFY(VX_GetCore()->MakeUndo());
    QCoreApplication::processEvents();
    QCOMPARE(table->item(1, CVxLayersForm::COL_NAME)->text(), QStringLiteral("Furniture"));
}

void TestProjectWindows::projectPropertiesTakeFeetAndInches()
{
    CVxMainWindow window;
    const QByteArray before = ProjectBytes();
    {
        CVxProjectPropertiesDlg dialog(&window);
        dialog.findChild<QComboBox*>(QStringLiteral("CbUnit"))->setCurrentIndex(CVxUnits::UNIT_INCH);
        Type(&dialog, "EdWidth", QStringLiteral("2.5 m"));
        ClickCancel(&dialog);
    }
    QCOMPARE(ProjectBytes(), before);
    QCOMPARE(UndoSteps(), 0);

    CVxProjectPropertiesDlg dialog(&window);
    dialog.findChild<QComboBox*>(QStringLiteral("CbUnit"))->setCurrentIndex(CVxUnits::UNIT_INCH);
    // The fields now tell the same lengths in feet and inches.
    QCOMPARE(dialog.findChild<QLineEdit*>(QStringLiteral("EdWidth"))->text(),
             QStringLiteral("16' 4 27/32\""));
    Type(&dialog, "EdWidth", QStringLiteral("8' 2\""));
    Type(&dialog, "EdDepth", QStringLiteral("2.5 m"));
    Type(&dialog, "EdWallHeight", QStringLiteral("abc"));
    ClickOk(&dialog);
    // A field that holds no length keeps the dialogue open and changes nothing.
    QCOMPARE(ProjectBytes(), before);
    Type(&dialog, "EdWallHeight", QStringLiteral("250 cm"));
    ClickOk(&dialog);
    const CVxProject& project = VX_GetCore()->GetProject();
    QCOMPARE(project.m_unit, int(CVxUnits::UNIT_INCH));
    QCOMPARE(project.m_width, 98.0);
    QVERIFY(qAbs(project.m_height - 98.43) < 0.01);
    QVERIFY(qAbs(project.m_defWallHeight - 98.43) < 0.01);
    QCOMPARE(UndoSteps(), 1);
    QVERIFY(VX_GetCore()->MakeUndo());
    QCOMPARE(project.m_unit, int(CVxUnits::UNIT_CM));
    QCOMPARE(project.m_width, 500.0);
}

void TestProjectWindows::optionsApplyAndStay()
{
    CVxMainWindow window;
    const QByteArray before = ProjectBytes();
    {
        CVxOptionsDlg dialog(&window);
        static_cast<QCheckBox*>(dialog.FieldOf("ShowGrid"))->setChecked(false);
        ClickCancel(&dialog);
    }
    QVERIFY(VX_GetOptions()->m_showGrid);

    CVxOptionsDlg dialog(&window);
    static_cast<QCheckBox*>(dialog.FieldOf("ShowGrid"))->setChecked(false);
    static_cast<QComboBox*>(dialog.FieldOf("DefaultUnit"))->setCurrentIndex(CVxUnits::UNIT_FT);
    Type(&dialog, "3DAvatarHeight", QStringLiteral("5' 7\""));
    Type(&dialog, "ShadowLatitude", QStringLiteral("123"));
    ClickOk(&dialog);
    // Out of range: nothing taken.
    QVERIFY(VX_GetOptions()->m_showGrid);
    Type(&dialog, "ShadowLatitude", QStringLiteral("48.5"));
    ClickOk(&dialog);
    CVxOptions* options = VX_GetOptions();
    QVERIFY(!options->m_showGrid);
    QCOMPARE(options->m_defaultUnit.ToQString(), QStringLiteral("ft"));
    QVERIFY(qAbs(options->m_3DAvatarHeight - 170.18) < 0.01);
    QCOMPARE(options->m_shadowLatitude, 48.5);
    QCOMPARE(ProjectBytes(), before);

    QFile config(CVxOptions::GetConfigFilePath().ToQString());
    QVERIFY(config.open(QIODevice::ReadOnly));
    const QByteArray text = config.readAll();
    QVERIFY(text.contains("ShowGrid=0"));
    QVERIFY(text.contains("DefaultUnit=ft"));
}

void TestProjectWindows::transformMovesByTypedDistances()
{
    CVxMainWindow window;
    CVxDRect walls;
    Floor()->m_walls.GetRoomDims(walls);
    const QByteArray before = ProjectBytes();
    {
        CVxTransformDlg dialog(&window);
        Type(&dialog, "EdMoveX", QStringLiteral("1 m"));
        ClickCancel(&dialog);
    }
    QCOMPARE(ProjectBytes(), before);

    CVxTransformDlg dialog(&window);
    Type(&dialog, "EdMoveX", QStringLiteral("1 m"));
    Type(&dialog, "EdMoveY", QStringLiteral("-0"));
    ClickOk(&dialog);
    CVxDRect moved;
    Floor()->m_walls.GetRoomDims(moved);
    QVERIFY(qAbs(moved.left - (walls.left + 100)) < 0.01);
    QVERIFY(qAbs(moved.Width() - walls.Width()) < 0.01);
    QCOMPARE(UndoSteps(), 1);
    QVERIFY(VX_GetCore()->MakeUndo());
    QCOMPARE(ProjectBytes(), before);
}

void TestProjectWindows::listingSortsAndCopies()
{
    CVxMainWindow window;
    for (double width : {80.0, 40.0, 40.0}) {
        CVxPart* part = Floor()->GetNewObject(nullptr, true);
        part->caption = L"Chair";
        part->width = width;
    }
    window.ShowDock(CVxMainWindow::DOCK_LISTING, true);
    CVxPartsListForm* form = window.GetPartsListForm();
    QTableWidget* table = form->GetTable();
    QCOMPARE(table->rowCount(), 2);
    form->SortBy(CVxPartListing::COL_COUNT);
    form->SortBy(CVxPartListing::COL_COUNT);
    QCOMPARE(table->item(0, CVxPartListing::COL_COUNT)->text(), QStringLiteral("2"));

    CVxPartListExportDlg dialog(true, &window);
    ClickOk(&dialog);
    const QString copied = QGuiApplication::clipboard()->text();
    QVERIFY2(copied.contains(QStringLiteral("Chair\t2\t40\t")), qPrintable(copied));
    QVERIFY2(copied.startsWith(QStringLiteral("Name\tCount\tWidth (cm)")), qPrintable(copied));
}

void TestProjectWindows::germanWindowsShowNoEnglish()
{
    CVxMainWindow window;
    Floor()->m_layers.AddLayer(L"Extra");
    const std::vector<std::function<std::unique_ptr<QWidget>()>> makers = {
        [] { return std::make_unique<CVxLayersForm>(); },
        [] { return std::make_unique<CVxProjectPropertiesDlg>(); },
        [] { return std::make_unique<CVxOptionsDlg>(); },
        [] { return std::make_unique<CVxTransformDlg>(); },
        [] { return std::make_unique<CVxPartsListForm>(); },
        [] { return std::make_unique<CVxPartListExportDlg>(false); },
        [] { return std::make_unique<CVxLanguageDlg>(); },
    };
    std::vector<QStringList> english;
    for (const auto& make : makers)
        english.push_back(VisibleTexts(make().get()));

    QVERIFY(CVxLanguageDlg::ApplyLanguage(1031, CVxStringW(L"Germany")));
    // Texts that German writes as English does.
    const QStringList same = {QStringLiteral("OK"), QStringLiteral("Name"), QStringLiteral("cm"),
                              QStringLiteral("mm"), QStringLiteral("dm"),   QStringLiteral("m"),
                              QStringLiteral("km"), QStringLiteral("ft"),   QStringLiteral("yd"),
                              QStringLiteral("x:"), QStringLiteral("y:"),   QString()};
    for (size_t i = 0; i < makers.size(); ++i) {
        std::unique_ptr<QWidget> widget = makers[i]();
        const QStringList german = VisibleTexts(widget.get());
        QCOMPARE(german.size(), english[i].size());
        for (int t = 0; t < german.size(); ++t) {
            const QString text = german[t];
            if (same.contains(text) || text.contains(QLatin1Char('/')) || text.startsWith(QLatin1Char('#')))
                continue;
            QVERIFY2(text != english[i][t], qPrintable(widget->objectName() + QStringLiteral(": ") + text));
        }
    }
    // The main window follows at once, the menu bar too.
    window.LocalizeAll();
    QStringList menus;
    for (QAction* item : window.menuBar()->actions())
        menus << item->text();
    QVERIFY2(menus.contains(QStringLiteral("&Geschoss")), qPrintable(menus.join(QLatin1Char(' '))));
    QVERIFY(CVxLanguageDlg::ApplyLanguage(1033, CVxStringW()));
    QCOMPARE(VX_GetLoc()->GetSelectedLanguageID(), 0);
}

void TestProjectWindows::userGuideIsShippedWithItsPictures()
{
    CVxMainWindow window;
    const QString guide = window.GetHelpFilePath().ToQString();
    QVERIFY2(guide.endsWith(QStringLiteral("Help/index.html")), qPrintable(guide));
    QFile file(guide);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString html = QString::fromUtf8(file.readAll());
    const QDir folder = QFileInfo(guide).dir();
    static const QRegularExpression links(QStringLiteral("(?:src|href)=\"([^\":]+)\""));
    int pictures = 0;
    for (const QRegularExpressionMatch& link : links.globalMatch(html)) {
        QVERIFY2(folder.exists(link.captured(1)), qPrintable(link.captured(1)));
        pictures += link.captured(1).endsWith(QStringLiteral(".png")) ? 1 : 0;
    }
    QVERIFY(pictures >= 3);
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestProjectWindows test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_project_windows.moc"
