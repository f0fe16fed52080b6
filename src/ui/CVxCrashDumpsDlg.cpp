#include "CVxCrashDumpsDlg.h"

#include "CVxLocalize.h"
#include "VxCrashHandler.h"
#include "VxLocalizeWidgets.h"

#include <QClipboard>
#include <QDateTime>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// A report is a few kilobytes; anything far larger is not one of ours.
constexpr qint64 kMaxReportBytes = 1 << 20;

} // namespace

CVxCrashDumpsDlg::CVxCrashDumpsDlg(const CVxStringW& crashFolder, QWidget* parent)
    : QDialog(parent), m_folder(crashFolder)
{
    setWindowTitle(VX_ToolbarText(123, L"Report App Crash"));
    auto* layout = new QVBoxLayout(this);
    auto* intro =
        new QLabel(VX_MessageText(1400, L"Reports of the times Plaveno stopped unexpectedly. Copy one into a "
                                        L"message to the developers, together with what you were doing."),
                   this);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    m_list = new QListWidget(this);
    m_list->setMaximumHeight(110);
    layout->addWidget(m_list);
    m_text = new QPlainTextEdit(this);
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setMinimumSize(560, 260);
    layout->addWidget(m_text, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    m_copy = buttons->addButton(VX_MessageText(1401, L"Copy to Clipboard"), QDialogButtonBox::ActionRole);
    m_delete = buttons->addButton(VX_MessageText(1402, L"Delete"), QDialogButtonBox::ActionRole);
    QPushButton* folder =
        buttons->addButton(VX_MessageText(1403, L"Open Folder"), QDialogButtonBox::ActionRole);
    buttons->button(QDialogButtonBox::Close)->setText(VX_MessageText(1404, L"Close"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_copy, &QPushButton::clicked, this, &CVxCrashDumpsDlg::OnCopy);
    connect(m_delete, &QPushButton::clicked, this, &CVxCrashDumpsDlg::OnDelete);
    connect(folder, &QPushButton::clicked, this, &CVxCrashDumpsDlg::OnOpenFolder);
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { ShowSelected(); });
    Fill();
}

int CVxCrashDumpsDlg::CountReportsSince(const CVxStringW& crashFolder, int64_t time)
{
    const std::vector<SVxCrashReport> reports = VX_ListCrashReports(crashFolder);
    return static_cast<int>(std::count_if(
        reports.begin(), reports.end(), [time](const SVxCrashReport& report) { return report.time > time; }));
}

void CVxCrashDumpsDlg::Fill()
{
    m_list->clear();
    for (const SVxCrashReport& report : VX_ListCrashReports(m_folder)) {
        const QString when =
            QDateTime::fromSecsSinceEpoch(report.time).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
        auto* item = new QListWidgetItem(when + QStringLiteral("  ") + report.title.ToQString(), m_list);
        item->setData(Qt::UserRole, report.path.ToQString());
    }
    if (m_list->count() > 0)
        m_list->setCurrentRow(0);
    else
        m_text->setPlainText(VX_MessageText(1405, L"There are no crash reports."));
    m_copy->setEnabled(m_list->count() > 0);
    m_delete->setEnabled(m_list->count() > 0);
}

void CVxCrashDumpsDlg::ShowSelected()
{
    const QListWidgetItem* item = m_list->currentItem();
    if (!item)
        return;
    QFile file(item->data(Qt::UserRole).toString());
    if (!file.open(QIODevice::ReadOnly)) {
        m_text->setPlainText(file.errorString());
        return;
    }
    m_text->setPlainText(QString::fromUtf8(file.read(kMaxReportBytes)));
}

void CVxCrashDumpsDlg::OnCopy()
{
    QGuiApplication::clipboard()->setText(m_text->toPlainText());
}

void CVxCrashDumpsDlg::OnDelete()
{
    const QListWidgetItem* item = m_list->currentItem();
    if (!item)
        return;
    QFile::remove(item->data(Qt::UserRole).toString());
    Fill();
}

void CVxCrashDumpsDlg::OnOpenFolder()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(m_folder.ToQString()));
}
