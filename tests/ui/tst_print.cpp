// The print dialog on a sample house: the settings go into the project and
// come back, a scale finer than the paper spreads the preview over pages,
// a print into a PDF file writes one page per page in range, the bitmap
// method puts one picture on the page, the header and footer layout is
// drawn in the plan view and brings the dialog back, and the plan goes
// into a drawing exchange file from the Project menu.

#include "CVxAction.h"
#include "CVxAppCore.h"
#include "CVxMainToolbar.h"
#include "CVxMainWindow.h"
#include "CVxPrintDlg.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace {

CVxUiTestHome* g_home = nullptr;

int PdfPageCount(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray bytes = file.readAll();
    // Each page object names its type; the page tree says "/Pages".
    return static_cast<int>(bytes.count("/Type /Page\n") + bytes.count("/Type /Page ") +
                            bytes.count("/Type /Page>") + bytes.count("/Type /Page/"));
}

// The pictures of a PDF as pdfimages lists them: width and height of each.
QList<QSize> PdfImages(const QString& path)
{
    QProcess process;
    process.start(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path});
    if (!process.waitForFinished(30000))
        return {};
    QList<QSize> sizes;
    const QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
    for (qsizetype i = 2; i < lines.size(); ++i) {
        const QList<QByteArray> fields = lines[i].simplified().split(' ');
        if (fields.size() > 4)
            sizes.append(QSize(fields[3].toInt(), fields[4].toInt()));
    }
    return sizes;
}

} // namespace

class TestPrint : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("Plaveno")); }
    void settingsPreviewAndPdfPages();
    void bitmapMethodPrintsOnePicturePerPage();
    void headerLayoutEditedInThePlanView();
    void dxfExportFromTheProjectMenu();
};

void TestPrint::settingsPreviewAndPdfPages()
{
    CVxMainWindow window;
    QVERIFY(window.OpenFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp")), false));
    CVxAppCore* core = VX_GetCore();

    {
        CVxPrintDlg dialog(&window);
        QCOMPARE(dialog.GetPreviewPageCount(), 1);
        auto* scale = dialog.findChild<QComboBox*>(QStringLiteral("scale"));
        auto* multiPage = dialog.findChild<QCheckBox*>(QStringLiteral("multiPage"));
        QVERIFY(scale && multiPage);
        scale->setCurrentText(QStringLiteral("1:20"));
        // Without more pages the fit stands; with them the scale needs a grid.
        QCOMPARE(dialog.GetPreviewPageCount(), 1);
        multiPage->setChecked(true);
        const int pages = dialog.GetPreviewPageCount();
        QVERIFY2(pages >= 4, qPrintable(QString::number(pages)));
        QVERIFY(!dialog.GetPreviewImage().isNull());

        // Pages 2 and 3 only, into a PDF.
        dialog.findChild<QRadioButton*>(QStringLiteral("rangePages"))->setChecked(true);
        dialog.findChild<QLineEdit*>(QStringLiteral("EdPrintRange"))->setText(QStringLiteral("2-3"));
        dialog.findChild<QCheckBox*>(QStringLiteral("ChkPDF"))->setChecked(true);
        const QString pdf = g_home->Path() + QStringLiteral("/house.pdf");
        dialog.SetPdfFileName(pdf);
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(PdfPageCount(pdf), 2);
    }
    // The choices went into the project and come back in a new dialog.
    QVERIFY(core->GetProject().m_printSetup.GetLength() > 8);
    CVxPrintDlg again(&window);
    QCOMPARE(again.findChild<QComboBox*>(QStringLiteral("scale"))->currentText(), QStringLiteral("1:20"));
    QVERIFY(again.findChild<QCheckBox*>(QStringLiteral("multiPage"))->isChecked());
    QVERIFY(again.GetPreviewPageCount() >= 4);
    core->GetProject().m_modified = false;
}

void TestPrint::bitmapMethodPrintsOnePicturePerPage()
{
    CVxMainWindow window;
    QVERIFY(window.OpenFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp")), false));
    CVxPrintDlg dialog(&window);
    // A bitmap is one page, printed whatever range the pages side by side
    // of the vector method had.
    dialog.findChild<QCheckBox*>(QStringLiteral("multiPage"))->setChecked(true);
    dialog.findChild<QRadioButton*>(QStringLiteral("rangePages"))->setChecked(true);
    dialog.findChild<QLineEdit*>(QStringLiteral("EdPrintRange"))->setText(QStringLiteral("2-3"));
    dialog.findChild<QComboBox*>(QStringLiteral("method"))->setCurrentIndex(1);
    QVERIFY(!dialog.findChild<QCheckBox*>(QStringLiteral("multiPage"))->isEnabled());
    dialog.findChild<QCheckBox*>(QStringLiteral("ChkPDF"))->setChecked(true);
    const QString pdf = g_home->Path() + QStringLiteral("/bitmap.pdf");
    dialog.SetPdfFileName(pdf);
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(PdfPageCount(pdf), 1);
    // The whole printable page at 300 dots per inch: A4 is 2480 by 3508
    // dots, less the margins that the printer can't reach.
    const QList<QSize> images = PdfImages(pdf);
    QCOMPARE(images.size(), 1);
    QVERIFY2(images[0].width() > 2000 && images[0].width() <= 2480,
             qPrintable(QString::number(images[0].width())));
    QVERIFY2(images[0].height() > 3000 && images[0].height() <= 3508,
             qPrintable(QString::number(images[0].height())));
    VX_GetCore()->GetProject().m_modified = false;
}

void TestPrint::headerLayoutEditedInThePlanView()
{
    CVxMainWindow window;
    QVERIFY(window.OpenFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp")), false));
    CVxAppCore* core = VX_GetCore();
    const int walls = core->GetProject().GetFloor()->m_walls.GetWallCount();
    const QString layout = g_home->Path() + QStringLiteral("/head.pvp");

    // "New..." in the dialog closes it and opens the layout in the plan view.
    QTimer::singleShot(0, &window, [layout] {
        auto* dialog = qobject_cast<CVxPrintDlg*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->SetLayoutFileName(layout);
        dialog->findChild<QPushButton*>(QStringLiteral("BtnHeaderNew"))->click();
    });
    window.OnPrint();
    IVxSpecialEditor* editor = core->GetActiveEditor();
    QVERIFY(editor);
    QCOMPARE(editor->GetID(), int(VX_EDITOR_PAGE_LAYOUT));
    QVERIFY(!window.GetEditorBar()->isHidden());
    QCOMPARE(core->GetProject().GetFloor()->m_walls.GetWallCount(), 0);
    // Walls and floors are not the sheet's; the library's objects are.
    CVxMainToolbar* toolbar = window.GetMainToolbar();
    QVERIFY(!toolbar->FindAction(VX_TB_EDIT_WALLS, 0)->isVisible());
    QVERIFY(!toolbar->FindAction(VX_TB_EXPLORE_3D, 0)->isVisible());
    QVERIFY(toolbar->FindAction(VX_TB_UNDO, 0)->isVisible());
    // A floor command, even by its shortcut, is taken and dropped.
    QVERIFY(core->DoMainToolbarButtonAction(VX_TB_ADD_FLOOR));
    QCOMPARE(core->GetProject().GetFloorCount(), 1);

    // Accepting writes the file, gives the house back, and the print dialog
    // returns with the layout chosen.
    QVERIFY(window.DoMainToolbarAction(VX_TB_ACCEPT_CLOSE, 0));
    QCOMPARE(core->GetActiveEditor(), nullptr);
    QCOMPARE(core->GetProject().GetFloor()->m_walls.GetWallCount(), walls);
    QVERIFY(!core->GetProject().m_modified);
    QVERIFY(QFile::exists(layout));
    QString header;
    bool editEnabled = false;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &window, [&poll, &header, &editEnabled] {
        auto* dialog = qobject_cast<CVxPrintDlg*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        poll.stop();
        header = dialog->findChild<QLabel*>(QStringLiteral("LblHeader"))->text();
        editEnabled = dialog->findChild<QPushButton*>(QStringLiteral("BtnHeaderEdit"))->isEnabled();
        dialog->reject();
    });
    poll.start(10);
    QTRY_VERIFY(header.endsWith(QStringLiteral("head")));
    QVERIFY(editEnabled);
}

void TestPrint::dxfExportFromTheProjectMenu()
{
    CVxMainWindow window;
    QVERIFY(window.OpenFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp")), false));
    auto* action = window.findChild<QAction*>(QStringLiteral("ExportDxf"));
    QVERIFY(action);
    const QString path = g_home->Path() + QStringLiteral("/plan");
    QTimer::singleShot(0, &window, [path] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept();
    });
    action->trigger();
    const QByteArray dxf = VxReadFile(path + QStringLiteral(".dxf"));
    QVERIFY(dxf.startsWith("  0\nSECTION\n"));
    QVERIFY(dxf.endsWith("  0\nEOF\n"));
    QVERIFY(dxf.contains("\nWALLS\n"));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestPrint test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_print.moc"
