// The property dialogues through the real window: Alt+Enter and double
// clicks open them, lengths are typed with units, several objects are edited
// together, Cancel leaves the saved project as it was byte for byte, and one
// undo takes an OK back. With German loaded no English text is left.

#include "CVxAppCore.h"
#include "CVxColorPickerDlg.h"
#include "CVxFloor.h"
#include "CVxLocalize.h"
#include "CVxMainRenderArea.h"
#include "CVxMainWindow.h"
#include "CVxObjectPropertiesDlg.h"
#include "CVxPartPayload.h"
#include "CVxPayloadPropForms.h"
#include "CVxPropertyWidgets.h"
#include "CVxRoomDlgs.h"
#include "VxUiTestEnv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {
CVxUiTestHome* g_home = nullptr;

// Runs `work` on the next modal dialogue of type T, once it is up.
template <class T>
void OnNextDialog(const std::function<void(T*)>& work)
{
    QTimer::singleShot(0, [work] {
        for (int i = 0; i < 200; ++i) {
            if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget())) {
                work(dialog);
                return;
            }
            QTest::qWait(10);
        }
        QFAIL("no dialogue came up");
    });
}

void Type(QLineEdit* edit, const QString& text)
{
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

CVxAppearance Colour(unsigned colour)
{
    CVxAppearance look;
    look.main.color = colour;
    return look;
}
} // namespace

class TestPropertyDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void objectsEditedTogetherWithOneUndo();
    void cancelLeavesTheProjectAsItWas();
    void roomsRenamedAndColouredFromTheListAndThePlan();
    void labelTextAndAlignment();
    void stairsStepsThroughTheirForm();
    void germanEverywhere();

private:
    QByteArray SavedText();
    CVxPart* AddPart(double x, double y, double w, double h, int type = ptRectangle);
    QPoint Pixel(double x, double y) const;
    CVxFloor* Floor() const { return VX_GetCore()->GetProject().GetFloor(); }

    CVxMainWindow* m_window = nullptr;
    CVxMainRenderArea* m_view = nullptr;
};

void TestPropertyDialogs::init()
{
    m_window = new CVxMainWindow;
    m_window->resize(1000, 760);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    core->UpdateFloorPlan();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    m_view = m_window->GetRenderArea();
    m_view->SetPaintable(true);
    m_view->setFocus();
    QTest::qWait(20);
}

void TestPropertyDialogs::cleanup()
{
    delete m_window;
    m_window = nullptr;
}

QByteArray TestPropertyDialogs::SavedText()
{
    const QString path = g_home->Path() + QStringLiteral("/saved.pvp");
    const bool modified = VX_GetCore()->GetProject().m_modified;
    if (!VX_GetCore()->GetProject().SaveToFile(CVxStringW(path), false, nullptr))
        return QByteArray("<not saved>");
    VX_GetCore()->GetProject().m_modified = modified;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<not read>");
}

CVxPart* TestPropertyDialogs::AddPart(double x, double y, double w, double h, int type)
{
    CVxPart* part = Floor()->GetNewObject(nullptr, true);
    part->type = static_cast<uint16_t>(type);
    part->x = x;
    part->y = y;
    part->width = w;
    part->height = h;
    part->InvalidateCache();
    Floor()->m_objectCount = Floor()->CountUsedObjects();
    return part;
}

QPoint TestPropertyDialogs::Pixel(double x, double y) const
{
    CVxAppCore* core = VX_GetCore();
    const VxPOINT origin = core->GetObjectOrigin();
    return QPoint(static_cast<int>(origin.x + x * core->GetZoom()),
                  static_cast<int>(origin.y + y * core->GetZoom()));
}

void TestPropertyDialogs::objectsEditedTogetherWithOneUndo()
{
    AddPart(100, 100, 80, 40);
    AddPart(250, 100, 60, 50)->caption = L"Stool";
    for (CVxPart& part : Floor()->m_objects)
        part.selected = part.inUse;
    VX_GetCore()->OnSelectionChange();
    const QByteArray before = SavedText();

    bool previewed = false;
    OnNextDialog<CVxObjectPropertiesDlg>([&](CVxObjectPropertiesDlg* dlg) {
        // The two differ in depth and name: blank, and left alone.
        QVERIFY(dlg->GetDepthEdit()->GetLineEdit()->text().isEmpty());
        QVERIFY(dlg->GetNameEdit()->text().isEmpty());
        Type(dlg->GetWidthEdit()->GetLineEdit(), QStringLiteral("2.5 m"));
        previewed = Floor()->m_objects[0].width == 250 && Floor()->m_objects[1].width == 250;
        Type(dlg->GetHeightEdit()->GetLineEdit(), QStringLiteral("8' 2\""));
        dlg->GetFillButton()->Pick(Colour(0x3366CC));
        dlg->accept();
    });
    QTest::keyClick(m_view, Qt::Key_Return, Qt::AltModifier);
    QVERIFY(previewed);
    const CVxPart& a = Floor()->m_objects[0];
    const CVxPart& b = Floor()->m_objects[1];
    QCOMPARE(a.width, 250.0);
    QCOMPARE(b.width, 250.0);
    QCOMPARE(a.height, 40.0);
    QCOMPARE(b.height, 50.0);
    QCOMPARE(a.zHeight, 248.92);
    QCOMPARE(a.GetFillColor(), 0x3366CCu);
    QCOMPARE(b.GetFillColor(), 0x3366CCu);
    QVERIFY(a.caption.IsEmpty());
    QCOMPARE(b.caption.ToQString(), QStringLiteral("Stool"));

    QVERIFY(VX_GetCore()->MakeUndo());
    QCOMPARE(SavedText(), before);
    QVERIFY(!VX_GetCore()->CanUndo());
}

void TestPropertyDialogs::cancelLeavesTheProjectAsItWas()
{
    // A door in a wall, a leaf and kind picked, a size typed, and Cancel.
    CVxPart* door = AddPart(200, 0, 90, 10, ptDoor);
    door->selected = true;
    VX_GetCore()->OnSelectionChange();
    VX_GetCore()->GetProject().m_modified = false;
    const QByteArray before = SavedText();

    bool previewed = false;
    bool kinds = false;
    OnNextDialog<CVxObjectPropertiesDlg>([&](CVxObjectPropertiesDlg* dlg) {
        kinds = dlg->GetSubTypeCombo()->count() == 20;
        dlg->GetSubTypeCombo()->setCurrentIndex(3);
        Type(dlg->GetWidthEdit()->GetLineEdit(), QStringLiteral("1.1m"));
        Type(dlg->GetElevationEdit()->GetLineEdit(), QStringLiteral("-5"));
        Type(dlg->GetRotationEdit()->GetLineEdit(), QStringLiteral("90"));
        dlg->GetFillButton()->Pick(Colour(0x00FF00));
        const CVxPart& live = Floor()->m_objects[0];
        previewed = live.width == 110 && live.subType == 3 && live.z == -5;
        dlg->reject();
    });
    VX_GetCore()->MainViewDblClick(Pixel(245, 5).x(), Pixel(245, 5).y());
    QVERIFY(kinds);
    QVERIFY(previewed);
    QCOMPARE(SavedText(), before);
    QVERIFY(!VX_GetCore()->GetProject().m_modified);
    QVERIFY(!VX_GetCore()->CanUndo());

    // A text that is no length is not taken.
    CVxObjPropEdit edit;
    QVERIFY(edit.BeginSelection(*VX_GetCore()));
    CVxObjectPropertiesDlg dlg(edit);
    Type(dlg.GetWidthEdit()->GetLineEdit(), QStringLiteral("abc"));
    QVERIFY(!dlg.GetWidthEdit()->IsValid());
    QVERIFY(!dlg.GetEditedValues().width);
    dlg.accept();
    QCOMPARE(SavedText(), before);
}

void TestPropertyDialogs::roomsRenamedAndColouredFromTheListAndThePlan()
{
    CVxAppCore* core = VX_GetCore();
    QCOMPARE(core->GetFloorPlan().GetRegionCount(), 1);
    const QByteArray before = SavedText();

    // F7: the list of rooms, renamed from there.
    OnNextDialog<CVxRoomMngDlg>([&](CVxRoomMngDlg* list) {
        QCOMPARE(list->GetTable()->rowCount(), 1);
        QVERIFY(list->GetTable()->item(0, 1)->text().contains(QStringLiteral("m")));
        OnNextDialog<CVxRenameDlg>([](CVxRenameDlg* rename) {
            Type(rename->GetNameEdit(), QStringLiteral("Kitchen"));
            rename->accept();
        });
        list->OnRename();
        QCOMPARE(list->GetTable()->item(0, 0)->text(), QStringLiteral("Kitchen"));
        list->accept();
    });
    QTest::keyClick(m_view, Qt::Key_F7);
    QCOMPARE(core->GetFloorPlan().SafeGetRegion(0)->name.ToQString(), QStringLiteral("Kitchen"));
    QCOMPARE(Floor()->m_planDef.items.front().name.ToQString(), QStringLiteral("Kitchen"));
    const QByteArray renamed = SavedText();

    // A double click into the room: its dialogue, with the plan following.
    bool previewed = false;
    OnNextDialog<CVxRoomPropertiesDlg>([&](CVxRoomPropertiesDlg* dlg) {
        QCOMPARE(dlg->GetNameEdit()->text(), QStringLiteral("Kitchen"));
        Type(dlg->GetNameEdit(), QStringLiteral("Living room"));
        dlg->GetFloorButton()->Pick(Colour(0x2040A0));
        dlg->GetSkirtingCheck()->setChecked(true);
        Type(dlg->GetSkirtingHeightEdit()->GetLineEdit(), QStringLiteral("8 cm"));
        previewed = core->GetFloorPlan().SafeGetRegion(0)->floorAppearance.main.color == 0x2040A0u;
        dlg->accept();
    });
    m_view->setFocus();
    QTest::mouseDClick(m_view, Qt::LeftButton, Qt::NoModifier, Pixel(250, 150));
    QVERIFY(previewed);
    const CVxFloorRegion* room = core->GetFloorPlan().SafeGetRegion(0);
    QCOMPARE(room->name.ToQString(), QStringLiteral("Living room"));
    QCOMPARE(room->floorAppearance.main.color, 0x2040A0u);
    QVERIFY(room->baseMolding.enabled);
    QCOMPARE(room->baseMolding.height, 8.0);

    // Cancel changes nothing; one undo each takes OK back.
    OnNextDialog<CVxRoomPropertiesDlg>([](CVxRoomPropertiesDlg* dlg) {
        Type(dlg->GetNameEdit(), QStringLiteral("Hall"));
        dlg->reject();
    });
    const QByteArray done = SavedText();
    core->ShowRoomProperties(0);
    QCOMPARE(SavedText(), done);
    QVERIFY(core->MakeUndo());
    QCOMPARE(SavedText(), renamed);
    QVERIFY(core->MakeUndo());
    QCOMPARE(SavedText(), before);
}

void TestPropertyDialogs::labelTextAndAlignment()
{
    CVxPart* label = AddPart(120, 120, 60, 20, ptLabel);
    label->caption = L"Old";
    label->selected = true;
    VX_GetCore()->OnSelectionChange();
    OnNextDialog<CVxLabelPropertiesDlg>([](CVxLabelPropertiesDlg* dlg) {
        dlg->GetTextEdit()->setPlainText(QStringLiteral("Terrace\n%DATE%"));
        dlg->GetAlignCombo()->setCurrentIndex(2);
        dlg->accept();
    });
    QVERIFY(VX_GetCore()->ShowSelectedObjectProperties());
    const CVxPart& edited = Floor()->m_objects[0];
    QCOMPARE(edited.caption.ToQString(), QStringLiteral("Terrace\r\n%DATE%"));
    QCOMPARE(edited.lineColor, 2u);
}

void TestPropertyDialogs::germanEverywhere()
{
    CVxPart* door = AddPart(200, 0, 90, 10, ptDoor);
    door->selected = true;
    VX_GetCore()->OnSelectionChange();

    // Every text of a dialogue, in the order of its widgets.
    auto texts = [](QWidget* dialog) {
        QStringList out{dialog->windowTitle()};
        for (QWidget* widget : dialog->findChildren<QWidget*>()) {
            if (auto* label = qobject_cast<QLabel*>(widget))
                out << label->text();
            else if (auto* button = qobject_cast<QAbstractButton*>(widget))
                out << button->text() << button->toolTip();
            else if (auto* group = qobject_cast<QGroupBox*>(widget))
                out << group->title();
            else if (auto* combo = qobject_cast<QComboBox*>(widget);
                     combo && combo->objectName() != "SwatchCombo")
                for (int i = 0; i < combo->count(); ++i)
                    out << combo->itemText(i);
            else if (auto* line = qobject_cast<QLineEdit*>(widget))
                out << line->placeholderText();
            else if (auto* table = qobject_cast<QTableWidget*>(widget))
                for (int i = 0; i < table->columnCount(); ++i)
                    out << table->horizontalHeaderItem(i)->text();
        }
        return out;
    };
    auto all = [&]() {
        QList<QStringList> out;
        CVxObjPropEdit edit;
        edit.BeginSelection(*VX_GetCore());
        CVxObjectPropertiesDlg object(edit);
        out << texts(&object);
        CVxObjectAdvancedPropertiesDlg advanced(edit.GetValues(), edit.GetScope());
        out << texts(&advanced);
        CVxLabelPropertiesDlg label(edit);
        out << texts(&label);
        edit.Cancel();
        CVxRoomPropEdit room;
        room.Begin(*VX_GetCore(), 0);
        CVxRoomPropertiesDlg roomDlg(room);
        out << texts(&roomDlg);
        room.Cancel();
        CVxRoomMngDlg list;
        out << texts(&list);
        CVxRenameDlg rename(QStringLiteral("x"));
        out << texts(&rename);
        CVxColorPickerDlg picker(Colour(0xFFFFFF));
        out << texts(&picker);
        return out;
    };
    const QList<QStringList> english = all();
    const QString german = QStringLiteral(PLAVENO_SOURCE_DIR "/data/Language/plv_de.txt");
    QVERIFY(VX_GetLoc()->InitWithLanguageFile(CVxStringW(german)));
    const QList<QStringList> translated = all();
    QFile file(german);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString rows = QString::fromUtf8(file.readAll());
    VX_GetLoc()->Init(CVxStringW());

    QCOMPARE(translated.size(), english.size());
    QStringList left;
    for (int d = 0; d < english.size(); ++d) {
        QCOMPARE(translated[d].size(), english[d].size());
        for (int i = 0; i < english[d].size(); ++i) {
            const QString& text = english[d][i];
            // Words the same in both languages are rows of the German file.
            const bool hasWords = !text.startsWith(QLatin1Char('#')) &&
                                  text.contains(QRegularExpression(QStringLiteral("[A-Za-z]{2,}")));
            if (hasWords && translated[d][i] == text &&
                !rows.contains(QLatin1Char('=') + text + QLatin1Char('\r')))
                left << text;
        }
    }
    QVERIFY2(left.isEmpty(), qPrintable(left.join(QStringLiteral(" | "))));
}

void TestPropertyDialogs::stairsStepsThroughTheirForm()
{
    CVxPart* stairs = AddPart(100, 100, 300, 100, ptLibraryObject);
    stairs->libObjID = 65;
    stairs->zHeight = 280;
    stairs->SetPayload(CVxPartPayload::CreateNew(65));
    stairs->selected = true;
    VX_GetCore()->OnSelectionChange();

    // The form's Cancel drops its change, its OK hands it to the properties,
    // whose OK keeps it.
    for (const bool keep : {false, true}) {
        bool redrawn = false;
        OnNextDialog<CVxObjectPropertiesDlg>([&](CVxObjectPropertiesDlg* dlg) {
            QVERIFY(dlg->GetPayloadButton());
            OnNextDialog<CVxObjStairsPropForm>([&](CVxObjStairsPropForm* form) {
                const QImage before = form->GetPreview()->grab().toImage();
                form->GetStepsSpin()->setValue(keep ? 14 : 3);
                redrawn = form->GetPreview()->grab().toImage() != before;
                if (keep)
                    form->accept();
                else
                    form->reject();
            });
            dlg->GetPayloadButton()->click();
            dlg->accept();
        });
        VX_GetCore()->ShowSelectedObjectProperties();
        QVERIFY(redrawn);
        QCOMPARE(Floor()->m_objects[0].GetPayload()->Serialize().ToQString(),
                 keep ? QStringLiteral("StairsPayload:14|") : QStringLiteral("StairsPayload:10|"));
    }
    QVERIFY(VX_GetCore()->MakeUndo());
    QCOMPARE(Floor()->m_objects[0].GetPayload()->Serialize().ToQString(),
             QStringLiteral("StairsPayload:10|"));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    TestPropertyDialogs test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_property_dialogs.moc"
