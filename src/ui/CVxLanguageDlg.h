#pragma once
// Configure -> Language...: the languages of the language files, English
// first, and the countries of Language/countries.ini. OK switches at once
// and keeps the choice in the settings.

#include "CVxCountryList.h"

#include <QDialog>

class QComboBox;
class QListWidget;

class CVxLanguageDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxLanguageDlg(QWidget* parent = nullptr);
    QListWidget* GetLanguageList() const { return m_languages; }
    QComboBox* GetCountryCombo() const { return m_countries; }
    // Selects the language of that number (1033 English) and the country,
    // stores both in the settings; false when the language can't be loaded.
    static bool ApplyLanguage(int languageId, const CVxStringW& country);

public slots:
    void accept() override;

private:
    void OnLanguageChanged();

    CVxCountryList m_countryList;
    QListWidget* m_languages = nullptr;
    QComboBox* m_countries = nullptr;
};
