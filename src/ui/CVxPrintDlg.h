#pragma once
// The print dialog: paper, scale, pages, texts and a small preview of the
// sheet with the page grid, then printing on a printer or into a PDF file.
// All arithmetic and drawing are the core's; the dialog only collects the
// choices and hands the pages to Qt's printer.

#include "CVxPageLayoutEditor.h"
#include "CVxPrintConfig.h"

#include <QDialog>
#include <QImage>

#include <memory>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPainter;
class QPrinter;
class QPushButton;
class QRadioButton;

class CVxPrintDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxPrintDlg(QWidget* parent = nullptr);
    ~CVxPrintDlg() override;

    // The controls from the project's settings, and back.
    void LoadPrintConfig();
    void SavePrintConfig();
    // The choices of the controls as a configuration.
    CVxPrintConfig GetConfig() const;
    // The calculation for the printer as it is set up now.
    CVxPrintSizeCalculator CalculateFor(QPrinter& printer, bool wholeSheet) const;
    bool IsPageInPrintRange(int page) const;
    // Prints every page in range on the printer; false when nothing could
    // be painted.
    bool DoPrint(QPrinter* printer);
    // The dialog's printer, set up for a PDF file when that is chosen;
    // null when the PDF's name was not given.
    QPrinter* GetPrinter();
    const QImage& GetPreviewImage() const { return m_preview; }
    int GetPreviewPageCount() const { return m_previewPages; }
    void SetPdfFileName(const QString& path) { m_pdfFile = path; }
    // The file of the next new header and footer layout, asked of the user
    // when empty.
    void SetLayoutFileName(const QString& path) { m_layoutFile = path; }
    // The dialog closed so that the header and footer layout is edited on
    // the plan view: the page and the file, and whether it is a new one.
    bool HasLayoutRequest() const { return !m_layoutRequest.file.IsEmpty(); }
    const CVxPrintPageInfo& GetLayoutRequest() const { return m_layoutRequest; }
    bool IsNewLayoutRequest() const { return m_newLayout; }
    // The paper as chosen now, with a layout file.
    CVxPrintPageInfo GetPageInfo(const CVxStringW& file) const;

public slots:
    void ShowPreview();
    void BtnOKClick();
    void ShowPrintPreviewDialog();
    void BtnHeaderOpenClick();
    void BtnHeaderNewClick();
    void BtnHeaderEditClick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ReadPaperSizeFromPrinter();
    // The printers of the system, the default one chosen.
    void FillPrinterProps();
    void UpdateHeaderFilename();
    void ApplyPrinterSettings(QPrinter& printer) const;
    // The page drawn into a picture at the bitmap method's resolution and
    // put on the printer's page whole.
    void PrintPageAsBitmap(QPainter& painter, const CVxPrintSizeCalculator& calc, int page) const;
    // Closes the dialog for the layout editor.
    void RequestLayoutEditor(const QString& file, bool newLayout);

    std::unique_ptr<QPrinter> m_printer;
    QComboBox* m_printerName = nullptr;
    QComboBox* m_paper = nullptr;
    QRadioButton* m_portrait = nullptr;
    QRadioButton* m_landscape = nullptr;
    QCheckBox* m_pdf = nullptr;
    QComboBox* m_method = nullptr;
    QComboBox* m_scale = nullptr;
    QCheckBox* m_multiPage = nullptr;
    QRadioButton* m_allPages = nullptr;
    QRadioButton* m_rangePages = nullptr;
    QLineEdit* m_range = nullptr;
    QCheckBox* m_inColor = nullptr;
    QCheckBox* m_cropMarks = nullptr;
    QCheckBox* m_scaleBar = nullptr;
    QCheckBox* m_scaleBarLength = nullptr;
    QCheckBox* m_scaleText = nullptr;
    QCheckBox* m_centerHorz = nullptr;
    QCheckBox* m_centerVert = nullptr;
    QCheckBox* m_title = nullptr;
    QLineEdit* m_titleText = nullptr;
    QCheckBox* m_note1 = nullptr;
    QLineEdit* m_note1Text = nullptr;
    QCheckBox* m_note2 = nullptr;
    QLineEdit* m_note2Text = nullptr;
    QCheckBox* m_comments = nullptr;
    QCheckBox* m_printArea = nullptr;
    QDoubleSpinBox* m_border = nullptr;
    QLabel* m_header = nullptr;
    QPushButton* m_headerEdit = nullptr;
    QLabel* m_previewLabel = nullptr;
    QLabel* m_pageInfo = nullptr;
    QImage m_preview;
    int m_previewPages = 1;
    // Where each page of the preview lies, for the pointer's page number.
    double m_previewScale = 1;
    int m_previewPagesX = 1;
    double m_previewStepX = 1;
    double m_previewStepY = 1;
    CVxPrintConfig m_loaded;
    QString m_pdfFile;
    QString m_layoutFile;
    CVxPrintPageInfo m_layoutRequest;
    bool m_newLayout = false;
    bool m_loading = false;
};
