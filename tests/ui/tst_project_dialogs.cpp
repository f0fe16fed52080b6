// The dialogues of the project's life: a new project's outline and size,
// missing files after opening, and merging a second project in.

#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxFloor.h"
#include "CVxMainWindow.h"
#include "CVxMergeProjectDlg.h"
#include "CVxMissingFilesDlg.h"
#include "CVxNewProjectDlg.h"
#include "CVxUnits.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

CVxUiTestHome* g_home = nullptr;

// Gives a set file name instead of asking, and counts the questions.
class CVxNamingHelper : public CVxAppHelperQt
{
public:
    CVxStringW GetSaveProjectFileName(const CVxStringW& /*title*/, const CVxStringW& /*filter*/,
                                      const CVxStringW& /*suggested*/) override
    {
        ++asked;
        return savePath;
    }
    int MsgBox(const CVxStringW& text, const CVxStringW& /*caption*/, unsigned /*flags*/, void* /*parent*/,
               EVxMsgButton /*defaultButton*/, EVxMsgButton /*escapeButton*/) override
    {
        lastMessage = text;
        return VX_MBR_YES;
    }
    int asked = 0;
    CVxStringW savePath;
    CVxStringW lastMessage;
};

int Resolution(QTableWidget* table, int row)
{
    auto* box = qobject_cast<QComboBox*>(table->cellWidget(row, CVxMissingFilesDlg::COL_SOLUTION));
    return box ? box->currentIndex() : -1;
}

} // namespace

class TestProjectDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("Plaveno")); }
    void missingFilesTableAndItsButtons();
    void mergeTakesTheSecondProjectAsNewFloor();
    void newProjectTakesTypedSizesInAnyUnit();
};

void TestProjectDialogs::missingFilesTableAndItsButtons()
{
    CVxMainWindow window;
    CVxNamingHelper helper;
    IVxAppHelperCallback* previous = VX_GetAppHelper();
    VX_SetAppHelperCallback(&helper);
    std::vector<CVxMissingFileInfo>& missing = VX_GetCore()->GetMissingFiles();
    missing = {CVxMissingFileInfo(CVxStringW(L"/gone/a.png")),
               CVxMissingFileInfo(CVxStringW(L"/gone/b.png"))};

    CVxMissingFilesDlg dialog(&window);
    QTableWidget* table = dialog.GetTable();
    QCOMPARE(table->rowCount(), 2);
    QStringList headers;
    for (int column = 0; column < table->columnCount(); ++column)
        headers << table->horizontalHeaderItem(column)->text();
    QCOMPARE(headers, (QStringList{QStringLiteral("Missing file"), QStringLiteral("Solution"),
                                   QStringLiteral("New file")}));
    auto* combo = qobject_cast<QComboBox*>(table->cellWidget(0, CVxMissingFilesDlg::COL_SOLUTION));
    QVERIFY(combo);
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->itemText(0), QStringLiteral("Remove"));
    QCOMPARE(combo->itemText(1), QStringLiteral("- ignore -"));
    QCOMPARE(combo->itemText(2), QStringLiteral("Replace"));
    QCOMPARE(Resolution(table, 0), 1);

    dialog.findChild<QPushButton*>(QStringLiteral("removeAllButton"))->click();
    QCOMPARE(Resolution(table, 0), 0);
    QCOMPARE(Resolution(table, 1), 0);
    dialog.SetReplacement(1, QStringLiteral("/other/b.png"));
    combo = qobject_cast<QComboBox*>(table->cellWidget(1, CVxMissingFilesDlg::COL_SOLUTION));
    combo->setCurrentIndex(2);
    const std::vector<CVxMissingFileInfo> read = dialog.ReadTable();
    QCOMPARE(read[0].resolution, int(CVxMissingFileInfo::VX_MISSING_REMOVE));
    QCOMPARE(read[1].resolution, int(CVxMissingFileInfo::VX_MISSING_REPLACE));
    QCOMPARE(read[1].replacementPath.ToQString(), QStringLiteral("/other/b.png"));

    // A decision needs a new file; without one the dialogue stays.
    dialog.show();
    dialog.GetButtonBox()->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(helper.asked, 1);
    QVERIFY(dialog.isVisible());

    // All ignored: it closes and asks nothing.
    for (int row = 0; row < 2; ++row)
        qobject_cast<QComboBox*>(table->cellWidget(row, CVxMissingFilesDlg::COL_SOLUTION))
            ->setCurrentIndex(1);
    dialog.GetButtonBox()->button(QDialogButtonBox::Ok)->click();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(helper.asked, 1);
    QCOMPARE(VX_GetCore()->GetMissingFiles().size(), size_t(2));
    QCOMPARE(VX_GetCore()->GetMissingFiles()[0].resolution, int(CVxMissingFileInfo::VX_MISSING_KEEP));
    missing.clear();
    VX_SetAppHelperCallback(previous);
}

void TestProjectDialogs::mergeTakesTheSecondProjectAsNewFloor()
{
    CVxMainWindow window;
    CVxAppCore* core = VX_GetCore();
    const QString path = g_home->Path() + QStringLiteral("/second.pvp");
    {
        CVxProject second;
        second.GetFloor()->m_layers.AddLayer(CVxStringW(L"Second"));
        QVERIFY(second.SaveToFile(CVxStringW(path), true, nullptr));
    }
    const int floors = core->GetProject().GetFloorCount();

    CVxMergeProjectDlg dialog(&window);
    QVERIFY(!dialog.GetPreview(CVxMergeProjectDlg::PROJECT_CURRENT).isNull());
    QVERIFY(dialog.GetPreview(CVxMergeProjectDlg::PROJECT_MERGE).isNull());
    // A file that can't be merged is explained, naming it.
    CVxNamingHelper helper;
    IVxAppHelperCallback* previous = VX_GetAppHelper();
    VX_SetAppHelperCallback(&helper);
    QVERIFY(!dialog.LoadSecondProject(CVxStringW(g_home->Path() + QStringLiteral("/none.pvp"))));
    VX_SetAppHelperCallback(previous);
    QVERIFY(helper.lastMessage.ToQString().contains(QStringLiteral("none.pvp")));
    QVERIFY(dialog.LoadSecondProject(CVxStringW(path)));
    const QImage preview = dialog.GetPreview(CVxMergeProjectDlg::PROJECT_MERGE);
    QVERIFY(!preview.isNull());
    // The walls are drawn: not everything is white.
    bool drawn = false;
    for (int y = 0; y < preview.height() && !drawn; ++y)
        for (int x = 0; x < preview.width() && !drawn; ++x)
            drawn = preview.pixel(x, y) != qRgb(255, 255, 255);
    QVERIFY(drawn);
    dialog.GetShiftBox(CVxMergeProjectDlg::PROJECT_MERGE, false)->setValue(100);
    dialog.GetNewFloorCheck()->setChecked(true);
    dialog.show();
    dialog.GetButtonBox()->button(QDialogButtonBox::Ok)->click();

    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(core->GetProject().GetFloorCount(), floors + 1);
    QCOMPARE(core->GetProject().m_floors.back()->m_layers.GetLayerName(1).ToQString(),
             QStringLiteral("Second"));
    QVERIFY(core->GetProject().IsModified());
    core->GetProject().m_modified = false;
}

void TestProjectDialogs::newProjectTakesTypedSizesInAnyUnit()
{
    CVxNewProjectDlg dialog(500, 400, CVxUnits::UNIT_CM);
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    QVERIFY(dialog.IsValid() && ok->isEnabled());
    // A unit of its own, typed into the field.
    dialog.GetWidthEdit()->clear();
    QTest::keyClicks(dialog.GetWidthEdit(), QStringLiteral("7.5 m"));
    QCOMPARE(dialog.GetWidth(), 750.0);
    // The project's unit changes; the lengths stay.
    dialog.GetUnitBox()->setCurrentIndex(dialog.GetUnitBox()->findData(int(CVxUnits::UNIT_FT)));
    QCOMPARE(dialog.GetUnit(), int(CVxUnits::UNIT_FT));
    QVERIFY(qAbs(dialog.GetWidth() - 750 / 30.48) < 1e-3);
    QVERIFY(qAbs(dialog.GetDepth() - 400 / 30.48) < 1e-3);
    // No length, or a side too small or too large, waits for a correction.
    for (const char* wrong : {"abc", "1 cm", "5 km"}) {
        dialog.GetDepthEdit()->clear();
        QTest::keyClicks(dialog.GetDepthEdit(), QString::fromLatin1(wrong));
        QVERIFY2(!ok->isEnabled() && !dialog.IsValid(), wrong);
    }
    dialog.GetDepthEdit()->clear();
    QTest::keyClicks(dialog.GetDepthEdit(), QStringLiteral("12' 6\""));
    QVERIFY(ok->isEnabled());
    QVERIFY(qAbs(dialog.GetDepth() - 12.5) < 1e-9);
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestProjectDialogs test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_project_dialogs.moc"
