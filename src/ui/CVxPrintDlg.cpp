#include "CVxPrintDlg.h"

#include "CVxAppCore.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"
#include "VxLocalizeWidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kPreviewWidth = 300;
constexpr int kPreviewHeight = 300;
// The preview draws at most this many pages; a finer scale only adds more
// of the same.
constexpr int kMaxPreviewPages = 36;
constexpr int kPreviewGap = 4;
// The bitmap method's resolution: fine enough for lines and text on paper,
// and an A3 sheet still fits in memory. Printers of less get their own.
constexpr int kBitmapDpi = 300;
constexpr double kMaxBitmapPixels = 80e6;
// A scale meant for a detail, chosen for a whole house, would feed the
// printer for days.
constexpr int kMaxPrintPages = 500;

// The paper sizes offered, by the numbers that the settings keep (those of
// the classic printer API) and Qt's page size ids.
struct SVxPaper
{
    int setting;
    QPageSize::PageSizeId id;
    const char* name;
};
constexpr SVxPaper kPapers[] = {
    {9, QPageSize::A4, "A4"},         {8, QPageSize::A3, "A3"},       {11, QPageSize::A5, "A5"},
    {1, QPageSize::Letter, "Letter"}, {5, QPageSize::Legal, "Legal"}, {3, QPageSize::Tabloid, "Tabloid"},
    {12, QPageSize::B4, "B4"},        {13, QPageSize::B5, "B5"},
};

const double kScales[] = {10, 20, 25, 50, 75, 100, 200, 250, 500, 1000};

QString Text(int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_PRINTDLG), row, CVxStringW(english))
        .ToQString();
}

// "1:50", "1 : 50" or "50" give 50; anything else fits the page.
double ParseScale(const QString& text)
{
    QString number = text.trimmed();
    const int colon = number.indexOf(QLatin1Char(':'));
    if (colon >= 0)
        number = number.mid(colon + 1).trimmed();
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok && std::isfinite(value) && value > 0 && value <= 1e6 ? value : -1;
}

} // namespace

CVxPrintDlg::CVxPrintDlg(QWidget* parent)
    : QDialog(parent), m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
    setWindowTitle(Text(1, L"Print"));
    auto* layout = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    layout->addLayout(left);

    auto* paperGroup = new QGroupBox(Text(2, L"Paper"), this);
    auto* paperGrid = new QGridLayout(paperGroup);
    m_printerName = new QComboBox(paperGroup);
    m_printerName->setObjectName(QStringLiteral("printer"));
    FillPrinterProps();
    paperGrid->addWidget(m_printerName, 0, 0, 1, 2);
    m_paper = new QComboBox(paperGroup);
    m_paper->setObjectName(QStringLiteral("paper"));
    for (const SVxPaper& paper : kPapers)
        m_paper->addItem(QString::fromLatin1(paper.name));
    paperGrid->addWidget(m_paper, 1, 0, 1, 2);
    m_portrait = new QRadioButton(Text(3, L"Portrait"), paperGroup);
    m_landscape = new QRadioButton(Text(4, L"Landscape"), paperGroup);
    paperGrid->addWidget(m_portrait, 2, 0);
    paperGrid->addWidget(m_landscape, 2, 1);
    m_pdf = new QCheckBox(Text(5, L"Print to PDF file"), paperGroup);
    m_pdf->setObjectName(QStringLiteral("ChkPDF"));
    paperGrid->addWidget(m_pdf, 3, 0, 1, 2);
    paperGrid->addWidget(new QLabel(Text(6, L"Method:"), paperGroup), 4, 0);
    m_method = new QComboBox(paperGroup);
    m_method->setObjectName(QStringLiteral("method"));
    m_method->addItems({Text(7, L"Vector"), Text(8, L"Bitmap")});
    paperGrid->addWidget(m_method, 4, 1);
    paperGrid->addWidget(new QLabel(Text(25, L"Border (cm):"), paperGroup), 5, 0);
    m_border = new QDoubleSpinBox(paperGroup);
    m_border->setRange(0, 10);
    m_border->setDecimals(1);
    m_border->setSingleStep(0.5);
    paperGrid->addWidget(m_border, 5, 1);
    left->addWidget(paperGroup);

    auto* scaleGroup = new QGroupBox(Text(9, L"Scale:"), this);
    auto* scaleGrid = new QGridLayout(scaleGroup);
    m_scale = new QComboBox(scaleGroup);
    m_scale->setObjectName(QStringLiteral("scale"));
    m_scale->setEditable(true);
    m_scale->addItem(Text(10, L"Fit to page"));
    for (double scale : kScales)
        m_scale->addItem(QStringLiteral("1:%1").arg(scale));
    scaleGrid->addWidget(m_scale, 0, 0, 1, 2);
    m_multiPage = new QCheckBox(Text(11, L"Print over more pages (vector method)"), scaleGroup);
    m_multiPage->setObjectName(QStringLiteral("multiPage"));
    scaleGrid->addWidget(m_multiPage, 1, 0, 1, 2);
    m_allPages = new QRadioButton(Text(12, L"All pages"), scaleGroup);
    m_rangePages = new QRadioButton(Text(13, L"Pages:"), scaleGroup);
    m_range = new QLineEdit(scaleGroup);
    m_range->setObjectName(QStringLiteral("EdPrintRange"));
    m_rangePages->setObjectName(QStringLiteral("rangePages"));
    m_allPages->setChecked(true);
    scaleGrid->addWidget(m_allPages, 2, 0, 1, 2);
    scaleGrid->addWidget(m_rangePages, 3, 0);
    scaleGrid->addWidget(m_range, 3, 1);
    m_centerHorz = new QCheckBox(Text(19, L"Center horizontally"), scaleGroup);
    m_centerVert = new QCheckBox(Text(20, L"Center vertically"), scaleGroup);
    scaleGrid->addWidget(m_centerHorz, 4, 0, 1, 2);
    scaleGrid->addWidget(m_centerVert, 5, 0, 1, 2);
    m_printArea = new QCheckBox(Text(26, L"Print only the chosen area"), scaleGroup);
    scaleGrid->addWidget(m_printArea, 6, 0, 1, 2);
    left->addWidget(scaleGroup);

    auto* lookGroup = new QGroupBox(Text(32, L"Layout"), this);
    auto* lookGrid = new QGridLayout(lookGroup);
    m_inColor = new QCheckBox(Text(14, L"Print in color"), lookGroup);
    m_cropMarks = new QCheckBox(Text(15, L"Crop marks"), lookGroup);
    m_scaleBar = new QCheckBox(Text(16, L"Scale bar"), lookGroup);
    m_scaleBarLength = new QCheckBox(Text(17, L"Write the bar's length"), lookGroup);
    m_scaleText = new QCheckBox(Text(18, L"Write the scale"), lookGroup);
    lookGrid->addWidget(m_inColor, 0, 0);
    lookGrid->addWidget(m_cropMarks, 0, 1);
    lookGrid->addWidget(m_scaleBar, 1, 0);
    lookGrid->addWidget(m_scaleBarLength, 2, 0);
    lookGrid->addWidget(m_scaleText, 2, 1);
    m_header = new QLabel(lookGroup);
    m_header->setObjectName(QStringLiteral("LblHeader"));
    lookGrid->addWidget(m_header, 3, 0, 1, 2);
    auto* headerNew = new QPushButton(Text(37, L"New..."), lookGroup);
    headerNew->setObjectName(QStringLiteral("BtnHeaderNew"));
    connect(headerNew, &QPushButton::clicked, this, &CVxPrintDlg::BtnHeaderNewClick);
    auto* headerOpen = new QPushButton(Text(34, L"Open..."), lookGroup);
    connect(headerOpen, &QPushButton::clicked, this, &CVxPrintDlg::BtnHeaderOpenClick);
    m_headerEdit = new QPushButton(Text(38, L"Edit..."), lookGroup);
    m_headerEdit->setObjectName(QStringLiteral("BtnHeaderEdit"));
    connect(m_headerEdit, &QPushButton::clicked, this, &CVxPrintDlg::BtnHeaderEditClick);
    auto* headerNone = new QPushButton(Text(36, L"Remove"), lookGroup);
    connect(headerNone, &QPushButton::clicked, this, [this] {
        VX_GetOptions()->m_printCustomLayout = false;
        UpdateHeaderFilename();
        ShowPreview();
    });
    auto* headerButtons = new QHBoxLayout;
    headerButtons->addWidget(headerNew);
    headerButtons->addWidget(headerOpen);
    headerButtons->addWidget(m_headerEdit);
    headerButtons->addWidget(headerNone);
    lookGrid->addLayout(headerButtons, 4, 0, 1, 2);
    left->addWidget(lookGroup);

    auto* right = new QVBoxLayout;
    layout->addLayout(right);
    auto* textGroup = new QGroupBox(Text(33, L"Texts"), this);
    auto* textGrid = new QGridLayout(textGroup);
    m_title = new QCheckBox(Text(21, L"Title"), textGroup);
    m_titleText = new QLineEdit(textGroup);
    m_note1 = new QCheckBox(Text(22, L"Note 1"), textGroup);
    m_note1Text = new QLineEdit(textGroup);
    m_note2 = new QCheckBox(Text(23, L"Note 2"), textGroup);
    m_note2Text = new QLineEdit(textGroup);
    m_comments = new QCheckBox(Text(24, L"Print the project's comments"), textGroup);
    textGrid->addWidget(m_title, 0, 0);
    textGrid->addWidget(m_titleText, 0, 1);
    textGrid->addWidget(m_note1, 1, 0);
    textGrid->addWidget(m_note1Text, 1, 1);
    textGrid->addWidget(m_note2, 2, 0);
    textGrid->addWidget(m_note2Text, 2, 1);
    textGrid->addWidget(m_comments, 3, 0, 1, 2);
    right->addWidget(textGroup);

    m_previewLabel = new QLabel(this);
    m_previewLabel->setObjectName(QStringLiteral("ImgPreview"));
    m_previewLabel->setFixedSize(kPreviewWidth, kPreviewHeight);
    m_previewLabel->setAlignment(Qt::AlignCenter);
    m_previewLabel->setFrameShape(QFrame::StyledPanel);
    m_previewLabel->setMouseTracking(true);
    m_previewLabel->installEventFilter(this);
    right->addWidget(m_previewLabel);
    m_pageInfo = new QLabel(this);
    right->addWidget(m_pageInfo);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    buttons->button(QDialogButtonBox::Ok)->setText(Text(28, L"Print"));
    auto* previewButton = buttons->addButton(Text(27, L"Preview..."), QDialogButtonBox::ActionRole);
    connect(previewButton, &QPushButton::clicked, this, &CVxPrintDlg::ShowPrintPreviewDialog);
    connect(buttons, &QDialogButtonBox::accepted, this, &CVxPrintDlg::BtnOKClick);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    right->addWidget(buttons);

    LoadPrintConfig();
    // Every change of a control recalculates the preview.
    const auto changed = [this] {
        if (!m_loading)
            ShowPreview();
    };
    for (QCheckBox* box : findChildren<QCheckBox*>())
        connect(box, &QCheckBox::toggled, this, changed);
    for (QRadioButton* radio : findChildren<QRadioButton*>())
        connect(radio, &QRadioButton::toggled, this, changed);
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        connect(edit, &QLineEdit::textChanged, this, changed);
    connect(m_paper, &QComboBox::currentIndexChanged, this, changed);
    connect(m_method, &QComboBox::currentIndexChanged, this, changed);
    // Pages side by side are the vector method's; a bitmap is one page.
    const auto methodChanged = [this] { m_multiPage->setEnabled(m_method->currentIndex() == 0); };
    connect(m_method, &QComboBox::currentIndexChanged, this, methodChanged);
    methodChanged();
    connect(m_scale, &QComboBox::currentTextChanged, this, changed);
    connect(m_border, &QDoubleSpinBox::valueChanged, this, changed);
    ShowPreview();
}

CVxPrintDlg::~CVxPrintDlg() = default;

void CVxPrintDlg::LoadPrintConfig()
{
    m_loading = true;
    CVxPrintSizeCalculator config;
    VX_GetCore()->LoadPrintConfig(config);
    m_loaded = config;
    const CVxOptions* options = VX_GetOptions();
    int paperIndex = 0;
    for (size_t i = 0; i < std::size(kPapers); ++i)
        if (kPapers[i].setting == options->m_printPaperSize)
            paperIndex = static_cast<int>(i);
    m_paper->setCurrentIndex(paperIndex);
    (config.landscape == 1 ? m_landscape : m_portrait)->setChecked(true);
    // With no printer on the system a PDF is the only way out, and says so.
    const bool printers = m_printerName->count() > 0;
    m_pdf->setChecked(options->m_printToPDF || !printers);
    m_pdf->setEnabled(printers);
    m_method->setCurrentIndex(config.method == 1 ? 1 : 0);
    m_border->setValue(config.border);
    if (config.scale > 0)
        m_scale->setCurrentText(QStringLiteral("1:%1").arg(config.scale));
    else
        m_scale->setCurrentIndex(0);
    m_multiPage->setChecked(config.multiPage);
    m_inColor->setChecked(config.inColor);
    m_cropMarks->setChecked(config.cropMarks);
    m_scaleBar->setChecked(config.scaleBar);
    m_scaleBarLength->setChecked(config.scaleBarLength);
    m_scaleText->setChecked(config.scaleText);
    m_centerHorz->setChecked(config.centerHorz);
    m_centerVert->setChecked(config.centerVert);
    m_title->setChecked(config.title);
    m_titleText->setText(config.titleText.ToQString());
    m_note1->setChecked(config.note1);
    m_note1Text->setText(config.note1Text.ToQString());
    m_note2->setChecked(config.note2);
    m_note2Text->setText(config.note2Text.ToQString());
    m_comments->setChecked(config.comments);
    m_printArea->setChecked(config.printArea);
    m_printArea->setEnabled(config.area.Width() > 0 && config.area.Height() > 0);
    UpdateHeaderFilename();
    m_loading = false;
}

CVxPrintConfig CVxPrintDlg::GetConfig() const
{
    CVxPrintConfig config = m_loaded;
    config.method = m_method->currentIndex() == 1 ? 1 : 0;
    config.multiPage = m_multiPage->isChecked() && config.method == 0;
    config.inColor = m_inColor->isChecked();
    config.cropMarks = m_cropMarks->isChecked();
    config.scaleBar = m_scaleBar->isChecked();
    config.landscape = m_landscape->isChecked() ? 1 : 0;
    config.border = m_border->value();
    config.scale = m_scale->currentIndex() == 0 && m_scale->currentText() == m_scale->itemText(0)
                       ? -1
                       : ParseScale(m_scale->currentText());
    config.centerHorz = m_centerHorz->isChecked();
    config.centerVert = m_centerVert->isChecked();
    config.scaleBarLength = m_scaleBarLength->isChecked();
    config.scaleText = m_scaleText->isChecked();
    config.title = m_title->isChecked();
    config.titleText = CVxStringW(m_titleText->text());
    config.note1 = m_note1->isChecked();
    config.note1Text = CVxStringW(m_note1Text->text());
    config.note2 = m_note2->isChecked();
    config.note2Text = CVxStringW(m_note2Text->text());
    config.comments = m_comments->isChecked();
    config.printArea = m_printArea->isChecked() && m_printArea->isEnabled();
    return config;
}

void CVxPrintDlg::SavePrintConfig()
{
    VX_GetCore()->SavePrintConfig(GetConfig());
    CVxOptions* options = VX_GetOptions();
    options->m_printPaperSize =
        kPapers[std::clamp(m_paper->currentIndex(), 0, static_cast<int>(std::size(kPapers)) - 1)].setting;
    if (m_pdf->isEnabled())
        options->m_printToPDF = m_pdf->isChecked();
}

void CVxPrintDlg::ApplyPrinterSettings(QPrinter& printer) const
{
    const int index = std::clamp(m_paper->currentIndex(), 0, static_cast<int>(std::size(kPapers)) - 1);
    printer.setPageSize(QPageSize(kPapers[index].id));
    printer.setPageOrientation(m_landscape->isChecked() ? QPageLayout::Landscape : QPageLayout::Portrait);
}

void CVxPrintDlg::ReadPaperSizeFromPrinter()
{
    const QPageSize::PageSizeId id = m_printer->pageLayout().pageSize().id();
    for (size_t i = 0; i < std::size(kPapers); ++i)
        if (kPapers[i].id == id)
            m_paper->setCurrentIndex(static_cast<int>(i));
}

CVxPrintSizeCalculator CVxPrintDlg::CalculateFor(QPrinter& printer, bool wholeSheet) const
{
    ApplyPrinterSettings(printer);
    CVxPrintSizeCalculator calc;
    CVxAppCore* core = VX_GetCore();
    core->LoadPrintConfig(calc);
    static_cast<CVxPrintConfig&>(calc) = GetConfig();
    calc.SetProjectArea(core->GetProject());
    const QRectF paper = printer.paperRect(QPrinter::DevicePixel);
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    calc.dpiX = printer.logicalDpiX();
    calc.dpiY = printer.logicalDpiY();
    calc.unprintable[0] = std::max(0.0, page.left() - paper.left());
    calc.unprintable[1] = std::max(0.0, page.top() - paper.top());
    calc.unprintable[2] = std::max(0.0, paper.right() - page.right());
    calc.unprintable[3] = std::max(0.0, paper.bottom() - page.bottom());
    calc.pageW = wholeSheet ? paper.width() : page.width();
    calc.pageH = wholeSheet ? paper.height() : page.height();
    CVxQtDC measure(1, 1, true);
    calc.CalcFontSize(measure);
    calc.Calculate(wholeSheet);
    return calc;
}

bool CVxPrintDlg::IsPageInPrintRange(int page) const
{
    // The bitmap method's one page is always in range.
    if (!m_multiPage->isChecked() || !m_multiPage->isEnabled() || !m_rangePages->isChecked())
        return true;
    return VX_IsPageInRange(CVxStringW(m_range->text().trimmed()), page);
}

bool CVxPrintDlg::DoPrint(QPrinter* printer)
{
    if (!printer)
        return false;
    CVxPrintSizeCalculator calc = CalculateFor(*printer, false);
    if (calc.GetPageCount() > kMaxPrintPages) {
        QMessageBox::warning(
            this, windowTitle(),
            VX_MessageText(1303, L"At this scale the plan would need %1 pages.").arg(calc.GetPageCount()));
        return false;
    }
    QPainter painter;
    if (!painter.begin(printer))
        return false;
    CVxAppCore* core = VX_GetCore();
    bool first = true;
    for (int page = 0; page < calc.GetPageCount(); ++page) {
        if (!IsPageInPrintRange(page + 1))
            continue;
        if (!first)
            printer->newPage();
        first = false;
        if (calc.method == 1) {
            PrintPageAsBitmap(painter, calc, page);
            continue;
        }
        CVxQtDC dc(&painter, true, !calc.inColor);
        core->PrintProjectPage(&dc, page, calc, -1);
    }
    return painter.end();
}

void CVxPrintDlg::PrintPageAsBitmap(QPainter& painter, const CVxPrintSizeCalculator& calc, int page) const
{
    double factor = std::min(1.0, static_cast<double>(kBitmapDpi) / std::max(1, calc.dpiX));
    const double pixels = calc.pageW * calc.pageH * factor * factor;
    if (pixels > kMaxBitmapPixels)
        factor *= std::sqrt(kMaxBitmapPixels / pixels);
    CVxPrintSizeCalculator raster = calc;
    raster.Scale(factor, factor);
    const int width = std::max(1, static_cast<int>(raster.pageW));
    const int height = std::max(1, static_cast<int>(raster.pageH));
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull())
        return;
    // Labels and pens size by the surface's resolution, which must be the
    // picture's own.
    const int dotsPerMeter = static_cast<int>(std::lround(raster.dpiY / 0.0254));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);
    {
        QPainter picture(&image);
        CVxQtDC dc(&picture, true, !raster.inColor);
        VX_GetCore()->PrintProjectPage(&dc, page, raster, -1);
    }
    painter.drawImage(QRectF(0, 0, calc.pageW, calc.pageH), image);
}

void CVxPrintDlg::FillPrinterProps()
{
    m_printerName->clear();
    const QStringList names = QPrinterInfo::availablePrinterNames();
    m_printerName->addItems(names);
    const int current = names.indexOf(QPrinterInfo::defaultPrinterName());
    if (current >= 0)
        m_printerName->setCurrentIndex(current);
    m_printerName->setEnabled(!names.isEmpty());
}

QPrinter* CVxPrintDlg::GetPrinter()
{
    // Without a printer on the system the built-in PDF writer is the one.
    if (!m_pdf->isChecked() && m_printerName->count() > 0) {
        m_printer->setOutputFormat(QPrinter::NativeFormat);
        m_printer->setPrinterName(m_printerName->currentText());
        return m_printer.get();
    }
    QString path = m_pdfFile;
    if (path.isEmpty()) {
        const CVxStringW& project = VX_GetCore()->GetProjectPath();
        const QString name = project.IsEmpty() ? VX_MessageText(1302, L"Project")
                                               : QFileInfo(project.ToQString()).completeBaseName();
        path =
            QFileDialog::getSaveFileName(this, Text(5, L"Print to PDF file"), name + QStringLiteral(".pdf"),
                                         VX_MessageText(1301, L"PDF") + QStringLiteral(" (*.pdf)"));
        if (path.isEmpty())
            return nullptr;
        if (!path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
            path += QStringLiteral(".pdf");
    }
    m_printer->setOutputFormat(QPrinter::PdfFormat);
    m_printer->setOutputFileName(path);
    return m_printer.get();
}

void CVxPrintDlg::BtnOKClick()
{
    SavePrintConfig();
    QPrinter* printer = GetPrinter();
    if (!printer)
        return;
    if (DoPrint(printer))
        accept();
}

void CVxPrintDlg::ShowPrintPreviewDialog()
{
    QPrintPreviewDialog preview(m_printer.get(), this);
    connect(&preview, &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* printer) { DoPrint(printer); });
    preview.exec();
    ReadPaperSizeFromPrinter();
}

void CVxPrintDlg::ShowPreview()
{
    CVxPrintSizeCalculator calc = CalculateFor(*m_printer, true);
    const int pagesX = std::max(1, calc.pagesX);
    const int pagesY = std::max(1, calc.pagesY);
    m_previewPages = calc.GetPageCount();
    const double scale = std::min((kPreviewWidth - kPreviewGap * (pagesX + 1)) / (pagesX * calc.pageW),
                                  (kPreviewHeight - kPreviewGap * (pagesY + 1)) / (pagesY * calc.pageH));
    if (!(scale > 0) || !std::isfinite(scale))
        return;
    calc.Scale(scale, scale);
    const int pageW = std::max(1, static_cast<int>(calc.pageW));
    const int pageH = std::max(1, static_cast<int>(calc.pageH));
    m_previewScale = scale;
    m_previewPagesX = pagesX;
    m_previewStepX = pageW + kPreviewGap;
    m_previewStepY = pageH + kPreviewGap;
    m_preview = QImage(kPreviewWidth, kPreviewHeight, QImage::Format_ARGB32_Premultiplied);
    m_preview.fill(palette().color(QPalette::Window));
    QPainter sheet(&m_preview);
    CVxAppCore* core = VX_GetCore();
    for (int page = 0; page < std::min(m_previewPages, kMaxPreviewPages); ++page) {
        QImage image(pageW, pageH, QImage::Format_ARGB32_Premultiplied);
        // Labels size by the surface's resolution, which must be the
        // preview's own.
        const int dotsPerMeter = static_cast<int>(std::lround(calc.dpiY / 0.0254));
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            CVxQtDC dc(&painter, true, !calc.inColor);
            core->PrintProjectPage(&dc, page, calc, -1);
        }
        const int x = kPreviewGap + (page % pagesX) * static_cast<int>(m_previewStepX);
        const int y = kPreviewGap + (page / pagesX) * static_cast<int>(m_previewStepY);
        sheet.drawImage(x, y, image);
        sheet.setPen(IsPageInPrintRange(page + 1) ? Qt::darkGray : Qt::lightGray);
        sheet.drawRect(x, y, pageW - 1, pageH - 1);
    }
    sheet.end();
    m_previewLabel->setPixmap(QPixmap::fromImage(m_preview));
    m_pageInfo->setText(Text(35, L"Pages: %1").arg(m_previewPages));
}

bool CVxPrintDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_previewLabel && event->type() == QEvent::MouseMove) {
        const QPointF at = static_cast<QMouseEvent*>(event)->position();
        const int column = static_cast<int>((at.x() - kPreviewGap) / m_previewStepX);
        const int row = static_cast<int>((at.y() - kPreviewGap) / m_previewStepY);
        const int page = row * m_previewPagesX + column;
        if (column >= 0 && column < m_previewPagesX && row >= 0 && page < m_previewPages)
            m_pageInfo->setText(Text(31, L"Page %1 of %2").arg(page + 1).arg(m_previewPages));
    }
    return QDialog::eventFilter(watched, event);
}

void CVxPrintDlg::BtnHeaderOpenClick()
{
    const QString filter = VX_MessageText(18, L"Plaveno projects") + QStringLiteral(" (*.pvp *.mst)");
    const QString path =
        QFileDialog::getOpenFileName(this, VX_MessageText(21, L"Open saved project"), QString(), filter);
    if (path.isEmpty())
        return;
    CVxOptions* options = VX_GetOptions();
    options->m_printCustomLayoutFile = CVxStringW(path);
    options->m_printCustomLayout = true;
    UpdateHeaderFilename();
    const CVxPrintSizeCalculator calc = CalculateFor(*m_printer, false);
    if (calc.IsCustomPageLayoutLargerThenPage())
        QMessageBox::warning(
            this, windowTitle(),
            VX_MessageText(1300, L"The loaded header/footer layout does not fit the current page size."));
    ShowPreview();
}

CVxPrintPageInfo CVxPrintDlg::GetPageInfo(const CVxStringW& file) const
{
    const int index = std::clamp(m_paper->currentIndex(), 0, static_cast<int>(std::size(kPapers)) - 1);
    const QSizeF size = QPageSize(kPapers[index].id).size(QPageSize::Millimeter);
    CVxPrintPageInfo info;
    info.widthMm = size.width();
    info.heightMm = size.height();
    info.landscape = m_landscape->isChecked();
    info.file = file;
    return info;
}

void CVxPrintDlg::RequestLayoutEditor(const QString& file, bool newLayout)
{
    SavePrintConfig();
    CVxOptions* options = VX_GetOptions();
    options->m_printCustomLayoutFile = CVxStringW(file);
    options->m_printCustomLayout = true;
    m_layoutRequest = GetPageInfo(CVxStringW(file));
    m_newLayout = newLayout;
    reject();
}

void CVxPrintDlg::BtnHeaderNewClick()
{
    QString path = m_layoutFile;
    if (path.isEmpty()) {
        const QString filter = VX_MessageText(18, L"Plaveno projects") + QStringLiteral(" (*.pvp)");
        path = QFileDialog::getSaveFileName(this, Text(39, L"New Page Layout"), QString(), filter);
        if (path.isEmpty())
            return;
    }
    if (!path.endsWith(QStringLiteral(".pvp"), Qt::CaseInsensitive))
        path += QStringLiteral(".pvp");
    RequestLayoutEditor(path, true);
}

void CVxPrintDlg::BtnHeaderEditClick()
{
    const CVxOptions* options = VX_GetOptions();
    if (!options->m_printCustomLayout || options->m_printCustomLayoutFile.IsEmpty())
        return;
    RequestLayoutEditor(options->m_printCustomLayoutFile.ToQString(), false);
}

void CVxPrintDlg::UpdateHeaderFilename()
{
    const CVxOptions* options = VX_GetOptions();
    if (m_headerEdit)
        m_headerEdit->setEnabled(options->m_printCustomLayout && !options->m_printCustomLayoutFile.IsEmpty());
    const QString file = options->m_printCustomLayout && !options->m_printCustomLayoutFile.IsEmpty()
                             ? QFileInfo(options->m_printCustomLayoutFile.ToQString()).completeBaseName()
                             : Text(30, L"none selected");
    m_header->setText(Text(29, L"Header, footer") + QStringLiteral(": ") + file);
}
