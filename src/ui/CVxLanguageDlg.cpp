#include "CVxLanguageDlg.h"

#include "CVxAppCore.h"
#include "CVxLocFileInfo.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "VxDlgKit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace {
const CVxDlgTexts T("LanguageDlg");
constexpr int kEnglish = 1033;
} // namespace

CVxLanguageDlg::CVxLanguageDlg(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("LanguageDlg"));
    setWindowTitle(T(1, L"Language"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(T(2, L"Language of the program:"), this));
    m_languages = new QListWidget(this);
    m_languages->setObjectName(QStringLiteral("LanguageList"));
    column->addWidget(m_languages);

    CVxLocalize* loc = VX_GetLoc();
    auto* english = new QListWidgetItem(QStringLiteral("English"), m_languages);
    english->setData(Qt::UserRole, kEnglish);
    for (int i = 0; i < loc->GetLanguageFileCount(); ++i) {
        const CVxLocFileInfo* info = loc->GetLanguageFile(i);
        if (!info || info->GetLanguage().IsEmpty() || info->GetLanguageID() == kEnglish)
            continue;
        auto* item = new QListWidgetItem(info->GetLanguage().ToQString(), m_languages);
        item->setData(Qt::UserRole, info->GetLanguageID());
    }
    const int selected = loc->GetSelectedLanguageID() ? loc->GetSelectedLanguageID() : kEnglish;
    for (int row = 0; row < m_languages->count(); ++row)
        if (m_languages->item(row)->data(Qt::UserRole).toInt() == selected)
            m_languages->setCurrentRow(row);

    auto* form = new QFormLayout;
    m_countries = new QComboBox(this);
    m_countries->setObjectName(QStringLiteral("CbCountry"));
    m_countryList.LoadFromFile(VX_GetCore()->GetAppFolder() + L"Language/countries.ini");
    for (const CVxCountryList::SVxCountry& country : m_countryList.GetCountries())
        m_countries->addItem(country.name.ToQString());
    m_countries->setCurrentIndex(m_countryList.Find(VX_GetOptions()->m_country));
    form->addRow(T(3, L"Country:"), m_countries);
    column->addLayout(form);
    column->addWidget(VX_OkCancelButtons(this));
    connect(m_languages, &QListWidget::currentRowChanged, this, &CVxLanguageDlg::OnLanguageChanged);
}

void CVxLanguageDlg::OnLanguageChanged()
{
    // A language brings its country along, unless the user chose one.
    const QListWidgetItem* item = m_languages->currentItem();
    const CVxLocFileInfo* info =
        item ? VX_GetLoc()->GetLanguageInfo(item->data(Qt::UserRole).toInt()) : nullptr;
    if (info && !info->GetDefCountry().IsEmpty() && VX_GetOptions()->m_country.IsEmpty())
        m_countries->setCurrentIndex(m_countryList.Find(info->GetDefCountry()));
}

bool CVxLanguageDlg::ApplyLanguage(int languageId, const CVxStringW& country)
{
    CVxLocalize* loc = VX_GetLoc();
    if (languageId == kEnglish && !loc->GetLanguageInfo(kEnglish))
        loc->SelectNoLanguage();
    else if (!loc->SelectLanguageID(languageId))
        return false;
    CVxOptions* options = VX_GetOptions();
    options->m_language = languageId;
    options->m_country = country;
    CVxUnits::LocalizeUnits();
    options->SaveToRegistry();
    return true;
}

void CVxLanguageDlg::accept()
{
    const QListWidgetItem* item = m_languages->currentItem();
    const int id = item ? item->data(Qt::UserRole).toInt() : kEnglish;
    ApplyLanguage(id, CVxStringW(m_countries->currentText()));
    QDialog::accept();
}
