// The project's sun over the plan and the box that the scene covers.

#include "CVx3DPoint.h"
#include "CVxGlobalShadow.h"
#include "CVxProject.h"

#include <cmath>

bool CVxProject::GetSunDirection(CVx3DPoint& out, CVxGlobalShadow* settings)
{
    CVxGlobalShadow own;
    if (!settings) {
        own.LoadFromKept(m_globalShadow);
        settings = &own;
    }
    if (settings->day == 0 && settings->time == 0) {
        // No date chosen yet: ten in the morning of the 21st of April, which
        // the user then sees as the chosen date.
        settings->day = 110;
        settings->time = 600;
        if (settings == &own)
            own.StoreToKept(m_globalShadow);
    }
    double minutes = settings->time - 60.0 * settings->timeZone;
    if (settings->daylightSaving)
        minutes -= 60;
    return GetSunDirection(out, settings->day, static_cast<int>(minutes), settings->longitude,
                           settings->latitude);
}

bool CVxProject::GetSunDirection(CVx3DPoint& out, int day, int minutesUtc, double longitude,
                                 double latitude) const
{
    vx_cTime time;
    time.iYear = 2001;
    time.iMonth = day / 30 + 1;
    time.iDay = day % 30 + 1;
    time.dHours = minutesUtc / 60;
    time.dMinutes = minutesUtc % 60;
    time.dSeconds = 0;
    vx_cLocation location;
    location.dLongitude = longitude;
    location.dLatitude = latitude;
    vx_cSunCoordinates sun;
    sunpos(time, location, &sun);
    // The first compass of the project tells where north is.
    double azimuth = sun.dAzimuth;
    bool found = false;
    for (const CVxFloor* floor : m_floors) {
        for (const CVxPart& part : floor->m_objects)
            if (part.inUse && part.type == ptCompass) {
                if (std::isfinite(part.rotation))
                    azimuth += part.rotation;
                found = true;
                break;
            }
        if (found)
            break;
    }
    const double a = azimuth * 3.14159265358979323846 / 180;
    const double e = (90 - sun.dZenithAngle) * 3.14159265358979323846 / 180;
    out.x = std::sin(a) * std::fabs(std::cos(e));
    out.y = -std::cos(a) * std::fabs(std::cos(e));
    out.z = std::sin(e);
    return true;
}

CVxDRect CVxProject::GetCoveringBBox() const
{
    CVxDRect box;
    if (GetUnionWallBoundRect(box) && std::isfinite(box.left) && std::isfinite(box.right) &&
        std::isfinite(box.top) && std::isfinite(box.bottom))
        return box;
    return CVxDRect(0, 0, GetTotalWidth(), GetTotalHeight());
}
