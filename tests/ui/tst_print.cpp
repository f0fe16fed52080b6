// The print dialog on a sample house: the settings go into the project and
// come back, a scale finer than the paper spreads the preview over pages,
// and a print into a PDF file writes one page per page in range.

#include "CVxAppCore.h"
#include "CVxMainWindow.h"
#include "CVxPrintDlg.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

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

} // namespace

class TestPrint : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("Plaveno")); }
    void settingsPreviewAndPdfPages();
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

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestPrint test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_print.moc"
