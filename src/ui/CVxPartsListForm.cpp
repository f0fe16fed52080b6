#include "CVxPartsListForm.h"

#include "CVxAppCore.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "VxDlgKit.h"
#include "VxSafeSave.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
const CVxDlgTexts T("PartsListDlg");
const CVxDlgTexts E("PartListExportDlg");

QTableWidgetItem* Cell(const QString& text, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setTextAlignment(align);
    return item;
}
} // namespace

CVxPartsListForm::CVxPartsListForm(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("PartsListDlg"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    m_allFloors = new QCheckBox(this);
    m_allFloors->setObjectName(QStringLiteral("CbAllFloors"));
    column->addWidget(m_allFloors);
    m_table = new QTableWidget(0, CVxPartListing::COL_COUNT_OF_COLUMNS, this);
    m_table->setObjectName(QStringLiteral("PartList"));
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setMinimumHeight(180);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(CVxPartListing::COL_NAME, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionsClickable(true);
    column->addWidget(m_table, 1);
    m_export = new QPushButton(this);
    m_export->setObjectName(QStringLiteral("BtnExport"));
    column->addWidget(m_export);
    connect(m_allFloors, &QCheckBox::toggled, this, &CVxPartsListForm::Refill);
    connect(m_table->horizontalHeader(), &QHeaderView::sectionClicked, this, &CVxPartsListForm::SortBy);
    connect(m_export, &QPushButton::clicked, this, &CVxPartsListForm::Export);
    Localize();
}

void CVxPartsListForm::Localize()
{
    setWindowTitle(T(1, L"Object Listing"));
    m_allFloors->setText(T(2, L"All floors"));
    m_export->setText(T(10, L"Export..."));
    m_table->setHorizontalHeaderLabels({T(3, L"Name"), T(4, L"Count"), T(5, L"Width"), T(6, L"Depth"),
                                        T(7, L"Height"), T(8, L"Colour"), T(9, L"Floor")});
    Refill();
}

void CVxPartsListForm::SortBy(int column)
{
    m_ascending = column == m_sortColumn ? !m_ascending : true;
    m_sortColumn = column;
    Refill();
}

void CVxPartsListForm::Refill()
{
    const CVxProject& project = VX_GetCore()->GetProject();
    m_rows = CVxPartListing::Build(project, m_allFloors->isChecked());
    if (m_sortColumn >= 0)
        CVxPartListing::Sort(m_rows, m_sortColumn, m_ascending);
    m_table->setRowCount(static_cast<int>(m_rows.size()));
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    for (int r = 0; r < static_cast<int>(m_rows.size()); ++r) {
        const SVxListingRow& row = m_rows[static_cast<size_t>(r)];
        m_table->setItem(r, CVxPartListing::COL_NAME, Cell(row.name.ToQString()));
        m_table->setItem(r, CVxPartListing::COL_COUNT, Cell(QString::number(row.count), right));
        m_table->setItem(r, CVxPartListing::COL_WIDTH, Cell(VX_LengthText(row.width, project.m_unit), right));
        m_table->setItem(r, CVxPartListing::COL_DEPTH, Cell(VX_LengthText(row.depth, project.m_unit), right));
        m_table->setItem(r, CVxPartListing::COL_HEIGHT,
                         Cell(VX_LengthText(row.height, project.m_unit), right));
        QTableWidgetItem* colour = Cell(CVxPartListing::ColorText(row.color).ToQString());
        colour->setBackground(QColor(colour->text()));
        colour->setForeground(QColor(colour->text()).lightness() < 128 ? Qt::white : Qt::black);
        m_table->setItem(r, CVxPartListing::COL_COLOR, colour);
        m_table->setItem(r, CVxPartListing::COL_FLOOR, Cell(QString::number(row.floor + 1), right));
    }
    m_table->horizontalHeader()->setSortIndicatorShown(m_sortColumn >= 0);
    if (m_sortColumn >= 0)
        m_table->horizontalHeader()->setSortIndicator(m_sortColumn,
                                                      m_ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void CVxPartsListForm::Export()
{
    CVxPartListExportDlg dialog(false, this);
    dialog.exec();
}

CVxPartListExportDlg::CVxPartListExportDlg(bool toClipboard, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PartListExportDlg"));
    setWindowTitle(E(1, L"Export Object Listing"));
    auto* form = new QFormLayout(this);
    m_separator = new QComboBox(this);
    m_separator->setObjectName(QStringLiteral("CbSeparator"));
    m_separator->addItem(E(3, L"Comma"), QStringLiteral(","));
    m_separator->addItem(E(4, L"Semicolon"), QStringLiteral(";"));
    m_separator->addItem(E(5, L"Tab"), QStringLiteral("\t"));
    form->addRow(E(2, L"Separator:"), m_separator);
    m_allFloors = new QCheckBox(E(6, L"All floors"), this);
    m_allFloors->setObjectName(QStringLiteral("CbAllFloors"));
    m_allFloors->setChecked(true);
    form->addRow(m_allFloors);
    m_clipboard = new QRadioButton(E(7, L"To the clipboard"), this);
    m_clipboard->setObjectName(QStringLiteral("RbClipboard"));
    form->addRow(m_clipboard);
    m_file = new QRadioButton(E(8, L"To a file:"), this);
    m_file->setObjectName(QStringLiteral("RbFile"));
    m_path = new QLineEdit(this);
    m_path->setObjectName(QStringLiteral("EdPath"));
    auto* browse = new QPushButton(E(9, L"Browse..."), this);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file);
    fileRow->addWidget(m_path, 1);
    fileRow->addWidget(browse);
    form->addRow(fileRow);
    (toClipboard ? m_clipboard : m_file)->setChecked(true);
    // The choices of the last export come back.
    const QStringList last = VX_GetOptions()->m_listExportOptions.ToQString().split(QLatin1Char('|'));
    if (last.size() >= 2) {
        m_separator->setCurrentIndex(std::clamp(last[0].toInt(), 0, 2));
        m_allFloors->setChecked(last[1] != QLatin1String("0"));
    }
    if (toClipboard)
        m_separator->setCurrentIndex(2);
    form->addRow(VX_OkCancelButtons(this));
    connect(browse, &QPushButton::clicked, this, &CVxPartListExportDlg::Browse);
    connect(m_path, &QLineEdit::textEdited, this, [this] { m_file->setChecked(true); });
}

std::vector<CVxStringW> CVxPartListExportDlg::Headers()
{
    const int unit = VX_GetCore()->GetProject().m_unit;
    const QString inUnit = QStringLiteral(" (%1)").arg(CVxUnits::GetUnitText(unit).ToQString());
    std::vector<CVxStringW> headers;
    for (const QString& text :
         {T(3, L"Name"), T(4, L"Count"), T(5, L"Width") + inUnit, T(6, L"Depth") + inUnit,
          T(7, L"Height") + inUnit, T(8, L"Colour"), T(9, L"Floor")})
        headers.emplace_back(text);
    return headers;
}

void CVxPartListExportDlg::Browse()
{
    const QString path = QFileDialog::getSaveFileName(this, windowTitle(), m_path->text(),
                                                      E(10, L"CSV files") + QStringLiteral(" (*.csv)"));
    if (!path.isEmpty()) {
        m_path->setText(path);
        m_file->setChecked(true);
    }
}

bool CVxPartListExportDlg::Run()
{
    const QString separator = m_separator->currentData().toString();
    const std::vector<SVxListingRow> rows =
        CVxPartListing::Build(VX_GetCore()->GetProject(), m_allFloors->isChecked());
    const CVxStringW text = CVxPartListing::ToText(rows, Headers(), separator.at(0).unicode());
    VX_GetOptions()->m_listExportOptions = CVxStringW(
        QStringLiteral("%1|%2").arg(m_separator->currentIndex()).arg(m_allFloors->isChecked() ? 1 : 0));
    if (m_clipboard->isChecked()) {
        QGuiApplication::clipboard()->setText(text.ToQString());
        return true;
    }
    QString path = m_path->text().trimmed();
    if (path.isEmpty())
        Browse();
    path = m_path->text().trimmed();
    if (path.isEmpty())
        return false;
    if (!path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive))
        path += QStringLiteral(".csv");
    // Spreadsheets take a file with a byte order mark for UTF-8.
    const CVxStringW target(path);
    const CVxStringW temp = VX_SafeSaveTempPath(target);
    bool written = VX_SafeSaveCreateTemp(target);
    if (written) {
        QFile file(temp.ToQString());
        written = file.open(QIODevice::WriteOnly) &&
                  file.write("\xEF\xBB\xBF" + text.ToQString().toUtf8()) >= 0 && file.flush();
        file.close();
        written = written ? VX_SafeSaveCommit(temp, target) : (VX_SafeSaveAbandon(temp), false);
    }
    if (!written)
        QMessageBox::warning(this, windowTitle(), E(11, L"The file could not be written."));
    return written;
}

void CVxPartListExportDlg::accept()
{
    if (Run())
        QDialog::accept();
}
