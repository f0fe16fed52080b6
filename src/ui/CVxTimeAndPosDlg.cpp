#include "CVxTimeAndPosDlg.h"

#include "CVxAppCore.h"
#include "CVxCountryList.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "VxLocalizeWidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimeEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

// Rows of the table LocationDlg.
enum EVxLocationRow
{
    ROW_TITLE = 1,
    ROW_PLACE,
    ROW_LATITUDE,
    ROW_LONGITUDE,
    ROW_CHOOSE_CITY,
    ROW_TIME_ZONE,
    ROW_DAYLIGHT_SAVING,
    ROW_DATE,
    ROW_TIME,
    ROW_SHOW_SUN,
    ROW_PRESET_TITLE,
    ROW_COUNTRY,
    ROW_CITY,
    ROW_SEARCH,
    ROW_DATE_AND_TIME
};

constexpr int kLastDay = 359;

QString Text(int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetDlgIndex("LocationDlg"), row, english).ToQString();
}

QDoubleSpinBox* MakeSpin(QWidget* parent, double low, double high, int decimals, double step, double value)
{
    auto* spin = new QDoubleSpinBox(parent);
    spin->setRange(low, high);
    spin->setDecimals(decimals);
    spin->setSingleStep(step);
    spin->setValue(std::isfinite(value) ? std::clamp(value, low, high) : 0);
    return spin;
}

} // namespace

// --- CVxTimeAndPosPresetDlg -------------------------------------------------

CVxTimeAndPosPresetDlg::CVxTimeAndPosPresetDlg(const CVxStringW& appFolder, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(Text(ROW_PRESET_TITLE, L"Choose a City"));
    m_cityList.LoadFromFile(appFolder + L"Language/cities.ini");
    CVxCountryList countries;
    countries.LoadFromFile(appFolder + L"Language/countries.ini");
    // Only the countries that have a city to offer.
    std::set<std::string> used;
    for (const CVxCityList::SVxCity& city : m_cityList.GetCities())
        used.insert(city.country.c_str());
    for (const CVxCountryList::SVxCountry& country : countries.GetCountries())
        if (used.count(country.code.c_str()))
            m_countries.emplace_back(QString::fromLatin1(country.code.c_str()), country.name.ToQString());
    std::sort(m_countries.begin(), m_countries.end(), [](const auto& a, const auto& b) {
        return QString::localeAwareCompare(a.second, b.second) < 0;
    });

    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    m_country = new QComboBox(this);
    for (const auto& [code, name] : m_countries)
        m_country->addItem(name, code);
    form->addRow(Text(ROW_COUNTRY, L"Country:"), m_country);
    m_search = new QLineEdit(this);
    m_search->setClearButtonEnabled(true);
    form->addRow(Text(ROW_SEARCH, L"Search:"), m_search);
    layout->addLayout(form);
    layout->addWidget(new QLabel(Text(ROW_CITY, L"City:"), this));
    m_cities = new QListWidget(this);
    layout->addWidget(m_cities, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_country, &QComboBox::currentIndexChanged, this, &CVxTimeAndPosPresetDlg::FillCities);
    connect(m_search, &QLineEdit::textChanged, this, &CVxTimeAndPosPresetDlg::FillCities);
    connect(m_cities, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    auto okEnabled = [this, buttons] {
        buttons->button(QDialogButtonBox::Ok)->setEnabled(GetCity() != nullptr);
    };
    connect(m_cities, &QListWidget::currentRowChanged, this, okEnabled);

    const int own = m_country->findText(VX_GetOptions()->m_country.ToQString());
    m_country->setCurrentIndex(std::max(own, 0));
    FillCities();
    okEnabled();
    resize(360, 440);
}

void CVxTimeAndPosPresetDlg::FillCities()
{
    m_cities->clear();
    const QString search = m_search->text().trimmed();
    // A search looks through every country; the list then says where.
    const QString code = m_country->currentData().toString();
    const auto& cities = m_cityList.GetCities();
    for (size_t i = 0; i < cities.size(); ++i) {
        const QString name = cities[i].name.ToQString();
        const QString country = QString::fromLatin1(cities[i].country.c_str());
        if (search.isEmpty() ? country != code : !name.contains(search, Qt::CaseInsensitive))
            continue;
        auto* item = new QListWidgetItem(
            search.isEmpty() ? name : name + QStringLiteral(" (") + country + u')', m_cities);
        item->setData(Qt::UserRole, static_cast<int>(i));
    }
    m_cities->sortItems();
    if (m_cities->count() > 0)
        m_cities->setCurrentRow(0);
}

const CVxCityList::SVxCity* CVxTimeAndPosPresetDlg::GetCity() const
{
    const QListWidgetItem* item = m_cities->currentItem();
    if (!item)
        return nullptr;
    const int index = item->data(Qt::UserRole).toInt();
    const auto& cities = m_cityList.GetCities();
    return index >= 0 && static_cast<size_t>(index) < cities.size() ? &cities[index] : nullptr;
}

bool CVxTimeAndPosPresetDlg::SelectCity(const QString& country, const QString& city)
{
    const int index = m_country->findText(country);
    if (index < 0)
        return false;
    m_search->clear();
    m_country->setCurrentIndex(index);
    const QList<QListWidgetItem*> found = m_cities->findItems(city, Qt::MatchExactly);
    if (found.isEmpty())
        return false;
    m_cities->setCurrentItem(found.first());
    return true;
}

// --- CVxTimeAndPosDlg ---------------------------------------------------------

CVxGlobalShadow CVxTimeAndPosDlg::ProjectShadow()
{
    CVxGlobalShadow shadow;
    const CVxProject& project = VX_GetCore()->GetProject();
    if (project.m_globalShadow.IsPresent()) {
        shadow.LoadFromKept(project.m_globalShadow);
    } else {
        const CVxOptions* options = VX_GetOptions();
        shadow.Reset(options->m_shadowTimeZone, options->m_shadowDaylightSaving, options->m_shadowLatitude,
                     options->m_shadowLongitude);
    }
    return shadow;
}

QDate CVxTimeAndPosDlg::DayToDate(int day)
{
    return QDate(2001, 1, 1).addDays(std::clamp(day, 0, kLastDay));
}

int CVxTimeAndPosDlg::DateToDay(const QDate& date)
{
    return static_cast<int>(std::clamp<qint64>(QDate(2001, 1, 1).daysTo(date), 0, kLastDay));
}

CVxTimeAndPosDlg::CVxTimeAndPosDlg(const CVxGlobalShadow& shadow, QWidget* parent)
    : QDialog(parent), m_shadow(shadow)
{
    setWindowTitle(Text(ROW_TITLE, L"Location and Time"));
    auto* layout = new QVBoxLayout(this);

    auto* place = new QGroupBox(Text(ROW_PLACE, L"Place"), this);
    auto* placeForm = new QFormLayout(place);
    m_latitude = MakeSpin(place, -90, 90, 4, 0.5, shadow.latitude);
    m_latitude->setSuffix(QStringLiteral("°"));
    m_longitude = MakeSpin(place, -180, 180, 4, 0.5, shadow.longitude);
    m_longitude->setSuffix(QStringLiteral("°"));
    m_timeZone = MakeSpin(place, -12, 14, 2, 0.5, shadow.timeZone);
    m_daylightSaving = new QCheckBox(Text(ROW_DAYLIGHT_SAVING, L"Daylight saving time"), place);
    m_daylightSaving->setChecked(shadow.daylightSaving);
    auto* choose = new QPushButton(Text(ROW_CHOOSE_CITY, L"Choose a City..."), place);
    connect(choose, &QPushButton::clicked, this, &CVxTimeAndPosDlg::OnChooseCity);
    placeForm->addRow(Text(ROW_LATITUDE, L"Latitude (north positive):"), m_latitude);
    placeForm->addRow(Text(ROW_LONGITUDE, L"Longitude (east positive):"), m_longitude);
    placeForm->addRow(Text(ROW_TIME_ZONE, L"Time zone (hours from UTC):"), m_timeZone);
    placeForm->addRow(QString(), m_daylightSaving);
    placeForm->addRow(QString(), choose);
    layout->addWidget(place);

    auto* when = new QGroupBox(Text(ROW_DATE_AND_TIME, L"Date and Time"), this);
    auto* whenForm = new QFormLayout(when);
    m_date = new QDateEdit(when);
    m_date->setDisplayFormat(QStringLiteral("d MMMM"));
    m_date->setDateRange(DayToDate(0), DayToDate(kLastDay));
    m_time = new QTimeEdit(when);
    m_time->setDisplayFormat(QStringLiteral("HH:mm"));
    if (shadow.day == 0 && shadow.time == 0) {
        // No date chosen yet: the dialog offers today and now.
        const QDateTime now = QDateTime::currentDateTime();
        m_date->setDate(DayToDate(now.date().dayOfYear() - 1));
        m_time->setTime(QTime(now.time().hour(), now.time().minute()));
    } else {
        m_date->setDate(DayToDate(shadow.day));
        const int minutes = std::clamp(shadow.time, 0, 24 * 60 - 1);
        m_time->setTime(QTime(minutes / 60, minutes % 60));
    }
    whenForm->addRow(Text(ROW_DATE, L"Date:"), m_date);
    whenForm->addRow(Text(ROW_TIME, L"Time:"), m_time);
    layout->addWidget(when);

    m_showSun = new QCheckBox(Text(ROW_SHOW_SUN, L"Show the sun in the 3D view"), this);
    m_showSun->setChecked(shadow.showSunObject);
    layout->addWidget(m_showSun);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    LocalizeButtonBox(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

void CVxTimeAndPosDlg::ApplyCity(const CVxCityList::SVxCity& city)
{
    m_latitude->setValue(city.latitude);
    m_longitude->setValue(city.longitude);
    m_timeZone->setValue(city.timeZone);
}

void CVxTimeAndPosDlg::OnChooseCity()
{
    CVxTimeAndPosPresetDlg dialog(VX_GetCore()->GetAppFolder(), this);
    if (dialog.exec() == QDialog::Accepted)
        if (const CVxCityList::SVxCity* city = dialog.GetCity())
            ApplyCity(*city);
}

void CVxTimeAndPosDlg::accept()
{
    m_shadow.latitude = m_latitude->value();
    m_shadow.longitude = m_longitude->value();
    m_shadow.timeZone = m_timeZone->value();
    m_shadow.daylightSaving = m_daylightSaving->isChecked();
    m_shadow.day = DateToDay(m_date->date());
    const QTime time = m_time->time();
    m_shadow.time = time.hour() * 60 + time.minute();
    if (m_shadow.day == 0 && m_shadow.time == 0)
        m_shadow.time = 1; // midnight of the 1st of January is still a chosen date
    m_shadow.showSunObject = m_showSun->isChecked();
    // New projects start at the place chosen last.
    CVxOptions* options = VX_GetOptions();
    options->m_shadowTimeZone = m_shadow.timeZone;
    options->m_shadowDaylightSaving = m_shadow.daylightSaving;
    options->m_shadowLatitude = m_shadow.latitude;
    options->m_shadowLongitude = m_shadow.longitude;
    QDialog::accept();
}
