#include "CVxGlobalShadow.h"

#include "CVxIniWriter.h"
#include "CVxProject.h"

#include "VxNumbers.h"
#include <algorithm>

#include <cmath>

void CVxGlobalShadow::Reset(double zone, bool saving, double lat, double lon)
{
    enabled = false;
    day = 0;
    timeZone = zone;
    daylightSaving = saving;
    latitude = lat;
    longitude = lon;
    showSunObject = false;
}

void CVxGlobalShadow::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader*)
{
    const double number = DblLoad(value, 0);
    if (!std::isfinite(number))
        return;
    if (key == "Enabled")
        enabled = number > 0;
    else if (key == "Day")
        day = static_cast<int>(std::clamp(number, 0.0, 359.0));
    else if (key == "Time")
        time = static_cast<int>(std::clamp(number, 0.0, 1439.0));
    else if (key == "TimeZone")
        timeZone = std::clamp(number, -14.0, 14.0);
    else if (key == "DaylightSaving")
        daylightSaving = number > 0;
    else if (key == "Latitude")
        latitude = std::clamp(number, -90.0, 90.0);
    else if (key == "Longitude")
        longitude = std::clamp(number, -180.0, 180.0);
    else if (key == "ShowSunObject")
        showSunObject = number > 0;
}

void CVxGlobalShadow::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    writer->WriteBool("Enabled", enabled);
    writer->WriteInteger("Day", day);
    writer->WriteInteger("Time", time);
    writer->WriteDouble("TimeZone", timeZone);
    writer->WriteBool("DaylightSaving", daylightSaving);
    writer->WriteDouble("Latitude", latitude);
    writer->WriteDouble("Longitude", longitude);
    writer->WriteBool("ShowSunObject", showSunObject);
}

void CVxGlobalShadow::LoadFromKept(const CVxKeptSection& kept)
{
    for (const auto& [key, value] : kept.m_values)
        OnReadIniValue(key, value, nullptr);
}

void CVxGlobalShadow::StoreToKept(CVxKeptSection& kept) const
{
    // Settings made in the program are saved with the project.
    kept.SetPresent();
    const std::pair<const char*, CVxStringW> values[] = {
        {"Enabled", CVxStringW(enabled ? L"1" : L"0")},
        {"Day", DblSaveW(day)},
        {"Time", DblSaveW(time)},
        {"TimeZone", DblSaveW(timeZone)},
        {"DaylightSaving", CVxStringW(daylightSaving ? L"1" : L"0")},
        {"Latitude", DblSaveW(latitude)},
        {"Longitude", DblSaveW(longitude)},
        {"ShowSunObject", CVxStringW(showSunObject ? L"1" : L"0")}};
    for (const auto& [key, value] : values) {
        bool found = false;
        for (auto& item : kept.m_values)
            if (item.first == key) {
                item.second = value;
                found = true;
            }
        if (!found)
            kept.m_values.emplace_back(CVxStringA(key), value);
    }
}

bool CVxGlobalShadow::operator!=(const CVxGlobalShadow& other) const
{
    return enabled != other.enabled || day != other.day || time != other.time || timeZone != other.timeZone ||
           daylightSaving != other.daylightSaving || showSunObject != other.showSunObject ||
           std::fabs(latitude - other.latitude) >= 1e-7 || std::fabs(longitude - other.longitude) >= 1e-7;
}

void sunpos(const vx_cTime& udtTime, const vx_cLocation& udtLocation, vx_cSunCoordinates* udtSunCoordinates)
{
    constexpr double pi = 3.14159265358979323846;
    constexpr double twopi = 2 * pi;
    constexpr double rad = pi / 180;
    constexpr double dEarthMeanRadius = 6371.01;
    constexpr double dAstronomicalUnit = 149597890;

    // Days since the epoch of the Julian date 2451545.0.
    const double dDecimalHours = udtTime.dHours + (udtTime.dMinutes + udtTime.dSeconds / 60.0) / 60.0;
    const long liAux1 = (udtTime.iMonth - 14) / 12;
    const long liAux2 = (1461 * (udtTime.iYear + 4800 + liAux1)) / 4 +
                        (367 * (udtTime.iMonth - 2 - 12 * liAux1)) / 12 -
                        (3 * ((udtTime.iYear + 4900 + liAux1) / 100)) / 4 + udtTime.iDay - 32075;
    const double dJulianDate = static_cast<double>(liAux2) - 0.5 + dDecimalHours / 24.0;
    const double dElapsedJulianDays = dJulianDate - 2451545.0;

    // Ecliptic longitude and obliquity.
    const double dOmega = 2.1429 - 0.0010394594 * dElapsedJulianDays;
    const double dMeanLongitude = 4.8950630 + 0.017202791698 * dElapsedJulianDays;
    const double dMeanAnomaly = 6.2400600 + 0.0172019699 * dElapsedJulianDays;
    const double dEclipticLongitude = dMeanLongitude + 0.03341607 * std::sin(dMeanAnomaly) +
                                      0.00034894 * std::sin(2 * dMeanAnomaly) - 0.0001134 -
                                      0.0000203 * std::sin(dOmega);
    const double dEclipticObliquity =
        0.4090928 - 6.2140e-9 * dElapsedJulianDays + 0.0000396 * std::cos(dOmega);

    // Right ascension and declination.
    const double dSin_EclipticLongitude = std::sin(dEclipticLongitude);
    const double dY = std::cos(dEclipticObliquity) * dSin_EclipticLongitude;
    const double dX = std::cos(dEclipticLongitude);
    double dRightAscension = std::atan2(dY, dX);
    if (dRightAscension < 0.0)
        dRightAscension = dRightAscension + twopi;
    const double dDeclination = std::asin(std::sin(dEclipticObliquity) * dSin_EclipticLongitude);

    // Local coordinates.
    const double dGreenwichMeanSiderealTime =
        6.6974243242 + 0.0657098283 * dElapsedJulianDays + dDecimalHours;
    const double dLocalMeanSiderealTime = (dGreenwichMeanSiderealTime * 15 + udtLocation.dLongitude) * rad;
    const double dHourAngle = dLocalMeanSiderealTime - dRightAscension;
    const double dLatitudeInRadians = udtLocation.dLatitude * rad;
    const double dCos_Latitude = std::cos(dLatitudeInRadians);
    const double dSin_Latitude = std::sin(dLatitudeInRadians);
    const double dCos_HourAngle = std::cos(dHourAngle);
    double dZenithAngle = std::acos(dCos_Latitude * dCos_HourAngle * std::cos(dDeclination) +
                                    std::sin(dDeclination) * dSin_Latitude);
    const double dYa = -std::sin(dHourAngle);
    const double dXa = std::tan(dDeclination) * dCos_Latitude - dSin_Latitude * dCos_HourAngle;
    double dAzimuth = std::atan2(dYa, dXa);
    if (dAzimuth < 0.0)
        dAzimuth = dAzimuth + twopi;
    // Parallax.
    const double dParallax = (dEarthMeanRadius / dAstronomicalUnit) * std::sin(dZenithAngle);
    dZenithAngle = dZenithAngle + dParallax;
    if (udtSunCoordinates) {
        udtSunCoordinates->dAzimuth = dAzimuth / rad;
        udtSunCoordinates->dZenithAngle = dZenithAngle / rad;
    }
}
