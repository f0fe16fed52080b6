#pragma once
// The sun of a real place, date and time over the plan: the settings that a
// project keeps, and the sun's position by the PSA algorithm.

#include "CVxStringA.h"
#include "IVxReadIniClient.h"

class CVxIniWriter;
class CVxKeptSection;

class CVxGlobalShadow : public IVxReadIniClient
{
public:
    // Not enabled, no date, no sun object; the place and time zone are the
    // last ones the user chose, given by the caller.
    void Reset(double timeZone, bool daylightSaving, double latitude, double longitude);

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;
    // The project keeps the section as it was read; these go between the two.
    void LoadFromKept(const CVxKeptSection& kept);
    void StoreToKept(CVxKeptSection& kept) const;

    bool operator!=(const CVxGlobalShadow& other) const;
    bool operator==(const CVxGlobalShadow& other) const { return !(*this != other); }

    bool enabled = false;
    // Months of exactly 30 days from the 1st of January.
    int day = 0;
    // Minutes of the day, local time.
    int time = 0;
    double timeZone = 0;
    bool daylightSaving = false;
    double latitude = 0;
    double longitude = 0;
    bool showSunObject = false;
};

struct vx_cTime
{
    int iYear = 2001;
    int iMonth = 1;
    int iDay = 1;
    double dHours = 0;
    double dMinutes = 0;
    double dSeconds = 0;
};

struct vx_cLocation
{
    double dLongitude = 0;
    double dLatitude = 0;
};

struct vx_cSunCoordinates
{
    double dZenithAngle = 0;
    double dAzimuth = 0;
};

// Zenith distance and azimuth in degrees of the sun at a UTC time.
void sunpos(const vx_cTime& time, const vx_cLocation& location, vx_cSunCoordinates* coordinates);
