#include "CVxMissingFilesDlg.h"

#include "CVxAppCore.h"
#include "CVxLocalize.h"
#include "VxLocalizeWidgets.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QComboBox* SolutionBox(QTableWidget* table, int row)
{
    return qobject_cast<QComboBox*>(table->cellWidget(row, CVxMissingFilesDlg::COL_SOLUTION));
}

QLineEdit* NewFileEdit(QTableWidget* table, int row)
{
    QWidget* cell = table->cellWidget(row, CVxMissingFilesDlg::COL_NEW_FILE);
    return cell ? cell->findChild<QLineEdit*>() : nullptr;
}

} // namespace

CVxMissingFilesDlg::CVxMissingFilesDlg(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Missing Files"));
    resize(760, 360);
    const std::vector<CVxMissingFileInfo>& files = VX_GetCore()->GetMissingFiles();
    m_files = files;

    auto* layout = new QVBoxLayout(this);
    m_table = new QTableWidget(static_cast<int>(m_files.size()), COL_COUNT, this);
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Missing file"), QStringLiteral("Solution"), QStringLiteral("New file")});
    m_table->horizontalHeader()->setSectionResizeMode(COL_MISSING, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(COL_NEW_FILE, QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    for (int row = 0; row < static_cast<int>(m_files.size()); ++row) {
        const CVxMissingFileInfo& info = m_files[static_cast<size_t>(row)];
        auto* missing = new QTableWidgetItem(QDir::toNativeSeparators(info.filePath.ToQString()));
        missing->setFlags(Qt::ItemIsEnabled);
        missing->setToolTip(missing->text());
        m_table->setItem(row, COL_MISSING, missing);

        // The item's index is the resolution.
        auto* solution = new QComboBox(m_table);
        solution->addItems(
            {QStringLiteral("Remove"), QStringLiteral("- ignore -"), QStringLiteral("Replace")});
        solution->setCurrentIndex(std::clamp(info.resolution, 0, 2));
        m_table->setCellWidget(row, COL_SOLUTION, solution);

        auto* cell = new QWidget(m_table);
        auto* cellLayout = new QHBoxLayout(cell);
        cellLayout->setContentsMargins(0, 0, 0, 0);
        auto* edit = new QLineEdit(info.replacementPath.ToQString(), cell);
        auto* browse = new QToolButton(cell);
        browse->setText(QStringLiteral("..."));
        cellLayout->addWidget(edit);
        cellLayout->addWidget(browse);
        m_table->setCellWidget(row, COL_NEW_FILE, cell);
        connect(browse, &QToolButton::clicked, this, [this, row] { ChooseReplacement(row); });
        connect(solution, &QComboBox::activated, this, [this, row] { OnSolutionChanged(row); });
        OnSolutionChanged(row);
    }
    layout->addWidget(m_table);

    auto* buttons = new QHBoxLayout;
    auto* removeAll = new QPushButton(QStringLiteral("Remove All"), this);
    removeAll->setObjectName(QStringLiteral("removeAllButton"));
    connect(removeAll, &QPushButton::clicked, this, &CVxMissingFilesDlg::SetAllToRemove);
    buttons->addWidget(removeAll);
    buttons->addStretch();
    m_buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_buttonBox->setObjectName(QStringLiteral("buttonBox"));
    LocalizeButtonBox(m_buttonBox);
    buttons->addWidget(m_buttonBox);
    layout->addLayout(buttons);
    // OK closes only once the project has a file to be saved into.
    connect(m_buttonBox, &QDialogButtonBox::accepted, this, &CVxMissingFilesDlg::on_buttonBox_accepted);
    connect(m_buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void CVxMissingFilesDlg::SetAllToRemove()
{
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (QComboBox* solution = SolutionBox(m_table, row))
            solution->setCurrentIndex(CVxMissingFileInfo::VX_MISSING_REMOVE);
        OnSolutionChanged(row);
    }
}

void CVxMissingFilesDlg::SetReplacement(int row, const QString& path)
{
    if (QLineEdit* edit = NewFileEdit(m_table, row))
        edit->setText(path);
}

std::vector<CVxMissingFileInfo> CVxMissingFilesDlg::ReadTable() const
{
    std::vector<CVxMissingFileInfo> files = m_files;
    for (int row = 0; row < m_table->rowCount() && row < static_cast<int>(files.size()); ++row) {
        CVxMissingFileInfo& info = files[static_cast<size_t>(row)];
        if (const QComboBox* solution = SolutionBox(m_table, row))
            info.resolution = solution->currentIndex();
        if (const QLineEdit* edit = NewFileEdit(m_table, row))
            info.replacementPath = CVxStringW(QDir::fromNativeSeparators(edit->text().trimmed()));
    }
    return files;
}

void CVxMissingFilesDlg::on_buttonBox_accepted()
{
    const std::vector<CVxMissingFileInfo> files = ReadTable();
    const bool allKept = std::all_of(files.begin(), files.end(), [](const CVxMissingFileInfo& info) {
        return info.resolution == CVxMissingFileInfo::VX_MISSING_KEEP;
    });
    if (allKept) {
        accept();
        return;
    }
    // The decisions take effect in a new file; the opened one stays as it was.
    CVxAppCore* core = VX_GetCore();
    const CVxStringW path = core->AskProjectSaveFileName();
    if (path.IsEmpty())
        return;
    accept();
    core->ResolveMissingFiles(files, path);
}

void CVxMissingFilesDlg::ChooseReplacement(int row)
{
    QLineEdit* edit = NewFileEdit(m_table, row);
    if (!edit)
        return;
    const QString start = edit->text().isEmpty() ? QString() : QFileInfo(edit->text()).absolutePath();
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("New file"), start);
    if (path.isEmpty())
        return;
    edit->setText(path);
    if (QComboBox* solution = SolutionBox(m_table, row))
        solution->setCurrentIndex(CVxMissingFileInfo::VX_MISSING_REPLACE);
    OnSolutionChanged(row);
}

void CVxMissingFilesDlg::OnSolutionChanged(int row)
{
    QComboBox* solution = SolutionBox(m_table, row);
    QLineEdit* edit = NewFileEdit(m_table, row);
    if (!solution || !edit)
        return;
    const bool replace = solution->currentIndex() == CVxMissingFileInfo::VX_MISSING_REPLACE;
    edit->setEnabled(replace);
    // Replace without a file asks for one at once.
    if (replace && edit->text().isEmpty() && isVisible())
        ChooseReplacement(row);
}
