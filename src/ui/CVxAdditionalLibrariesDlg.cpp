#include "CVxAdditionalLibrariesDlg.h"

#include "CVxAppCore.h"
#include "CVxExternalLibraries.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "IVxAppHelperCallback.h"
#include "VxLocalizeWidgets.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

CVxAdditionalLibrariesDlg::CVxAdditionalLibrariesDlg(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(VX_ToolbarText(115, L"Additional Libraries...").remove(QStringLiteral("...")));
    auto* layout = new QVBoxLayout(this);
    auto* intro =
        new QLabel(VX_MessageText(1423, L"Object libraries used beside the standard one. Switch one off to "
                                        L"hide its objects."),
                   this);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    m_list = new QListWidget(this);
    m_list->setMinimumSize(420, 160);
    layout->addWidget(m_list, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* add = buttons->addButton(VX_MessageText(1424, L"Add..."), QDialogButtonBox::ActionRole);
    m_remove = buttons->addButton(VX_MessageText(1427, L"Remove"), QDialogButtonBox::ActionRole);
    buttons->button(QDialogButtonBox::Close)->setText(VX_MessageText(1404, L"Close"));
    connect(add, &QPushButton::clicked, this, [this] { OnAdd(); });
    connect(m_remove, &QPushButton::clicked, this, &CVxAdditionalLibrariesDlg::OnRemove);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemChanged, this, &CVxAdditionalLibrariesDlg::OnItemChanged);
    connect(m_list, &QListWidget::currentRowChanged, this,
            [this](int row) { m_remove->setEnabled(row >= 0); });
    layout->addWidget(buttons);
    Fill();
}

void CVxAdditionalLibrariesDlg::Fill()
{
    m_filling = true;
    m_list->clear();
    const CVxExternalLibraries external(VX_GetOptions());
    for (int i = 0; i < external.GetCount(); ++i) {
        const QFileInfo file(external.GetPath(i).ToQString());
        auto* item = new QListWidgetItem(file.completeBaseName(), m_list);
        item->setToolTip(file.absoluteFilePath());
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(
            external.CanBeLoadedForType(i, CVxExternalLibraries::typeObjects) ? Qt::Checked : Qt::Unchecked);
    }
    if (m_list->count() == 0) {
        auto* none = new QListWidgetItem(VX_MessageText(1425, L"No additional libraries."), m_list);
        none->setFlags(Qt::NoItemFlags);
    }
    m_remove->setEnabled(false);
    m_filling = false;
}

bool CVxAdditionalLibrariesDlg::OnAdd(const QString& path)
{
    QString file = path;
    if (file.isEmpty())
        file = QFileDialog::getOpenFileName(this, VX_MessageText(1424, L"Add..."), QString(),
                                            VX_MessageText(1426, L"Object libraries") +
                                                QStringLiteral(" (*.pvl)"));
    if (file.isEmpty())
        return false;
    CVxStringW error;
    if (!VX_GetCore()->LibAddAdditionalLibrary(CVxStringW(file), &error)) {
        if (IVxAppHelperCallback* host = VX_GetAppHelper())
            host->MsgBox(error + L"\n\n" + CVxStringW(file), VX_GetLoc()->LocalizeMessage(33, L"Warning"),
                         VX_MB_ICON_WARNING, this, VX_MB_OK);
        return false;
    }
    Fill();
    return true;
}

void CVxAdditionalLibrariesDlg::OnRemove()
{
    const int row = m_list->currentRow();
    if (row < 0 || !(m_list->item(row)->flags() & Qt::ItemIsUserCheckable))
        return;
    VX_GetCore()->LibRemoveAdditionalLibrary(row);
    Fill();
}

void CVxAdditionalLibrariesDlg::OnItemChanged(QListWidgetItem* item)
{
    if (m_filling || !item)
        return;
    VX_GetCore()->LibSetAdditionalLibraryEnabled(m_list->row(item), item->checkState() == Qt::Checked);
}
