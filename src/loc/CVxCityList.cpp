#include "CVxCityList.h"

#include "CVxIniFileReader.h"

#include <QRegularExpression>
#include <QString>

#include <cmath>

namespace {
constexpr int kMaxNameLength = 100;
}

bool CVxCityList::LoadFromFile(const CVxStringW& path)
{
    m_cities.clear();
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    reader.ReadAllSectionsNamed("Cities", this);
    return true;
}

bool CVxCityList::ParseCoordinate(const CVxStringW& text, double& degrees, bool& isLatitude)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^\\s*(\\d{1,3}(?:\\.\\d+)?)\\s*\\x{00B0}\\s*(?:(\\d{1,2}(?:\\.\\d+)?)\\s*')?\\s*([NSEWnsew])\\s*$"));
    const QRegularExpressionMatch match = pattern.match(text.ToQString());
    if (!match.hasMatch())
        return false;
    double value = match.captured(1).toDouble();
    if (!match.captured(2).isEmpty()) {
        const double minutes = match.captured(2).toDouble();
        if (minutes >= 60)
            return false;
        value += minutes / 60;
    }
    const QChar hemisphere = match.captured(3).at(0).toUpper();
    isLatitude = hemisphere == QLatin1Char('N') || hemisphere == QLatin1Char('S');
    if (value > (isLatitude ? 90 : 180))
        return false;
    degrees = hemisphere == QLatin1Char('S') || hemisphere == QLatin1Char('W') ? -value : value;
    return true;
}

void CVxCityList::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* /*reader*/)
{
    if (key != "c" || m_cities.size() >= kMaxCities)
        return;
    const QStringList fields = value.ToQString().split(QLatin1Char(';'));
    if (fields.size() < 4)
        return;
    SVxCity city;
    const QString name = fields.at(0).trimmed();
    if (name.isEmpty() || name.size() > kMaxNameLength)
        return;
    city.name = CVxStringW(name);
    city.country = CVxStringA(fields.at(1).trimmed().toLatin1().left(8).constData());
    const QStringList place = fields.at(2).simplified().split(QLatin1Char(' '));
    if (place.size() != 2)
        return;
    bool firstIsLatitude = false, secondIsLatitude = false;
    double first = 0, second = 0;
    if (!ParseCoordinate(CVxStringW(place.at(0)), first, firstIsLatitude) ||
        !ParseCoordinate(CVxStringW(place.at(1)), second, secondIsLatitude) ||
        firstIsLatitude == secondIsLatitude)
        return;
    city.latitude = firstIsLatitude ? first : second;
    city.longitude = firstIsLatitude ? second : first;
    bool ok = false;
    const double zone = fields.at(3).trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(zone) || zone < -12 || zone > 14)
        return;
    city.timeZone = zone;
    m_cities.push_back(city);
}
