#pragma once
// The place, date and time of the sun over the plan: latitude, longitude,
// time zone and daylight saving, the date and the time of day, and whether
// the sun itself is drawn. CVxTimeAndPosPresetDlg picks the place from the
// cities of Language/cities.ini, by country.

#include "CVxCityList.h"
#include "CVxGlobalShadow.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QDoubleSpinBox;
class QLineEdit;
class QListWidget;
class QTimeEdit;

class CVxTimeAndPosPresetDlg : public QDialog
{
    Q_OBJECT
public:
    // `appFolder` holds Language/countries.ini and Language/cities.ini.
    explicit CVxTimeAndPosPresetDlg(const CVxStringW& appFolder, QWidget* parent = nullptr);
    // The chosen city, or null before one is chosen.
    const CVxCityList::SVxCity* GetCity() const;
    // Selects a city by its country's name and its own name; false when the
    // lists hold no such city.
    bool SelectCity(const QString& country, const QString& city);
    QComboBox* GetCountryCombo() const { return m_country; }
    QListWidget* GetCityList() const { return m_cities; }

private:
    void FillCities();

    CVxCityList m_cityList;
    std::vector<std::pair<QString, QString>> m_countries; // code, name
    QComboBox* m_country = nullptr;
    QLineEdit* m_search = nullptr;
    QListWidget* m_cities = nullptr;
};

class CVxTimeAndPosDlg : public QDialog
{
    Q_OBJECT
public:
    CVxTimeAndPosDlg(const CVxGlobalShadow& shadow, QWidget* parent = nullptr);
    // The settings as the dialog shows them; the enabled flag is kept.
    const CVxGlobalShadow& GetResult() const { return m_shadow; }
    // Takes a city's place and time zone.
    void ApplyCity(const CVxCityList::SVxCity& city);
    void accept() override;

    // The day of the program's year (months of 30 days) that the date
    // controls show, and back.
    static QDate DayToDate(int day);
    // The project's sun settings; a project that has none yet starts at the
    // place chosen last.
    static CVxGlobalShadow ProjectShadow();
    static int DateToDay(const QDate& date);

private:
    void OnChooseCity();

    CVxGlobalShadow m_shadow;
    QDoubleSpinBox* m_latitude = nullptr;
    QDoubleSpinBox* m_longitude = nullptr;
    QDoubleSpinBox* m_timeZone = nullptr;
    QCheckBox* m_daylightSaving = nullptr;
    QDateEdit* m_date = nullptr;
    QTimeEdit* m_time = nullptr;
    QCheckBox* m_showSun = nullptr;
};
