#pragma once
// Places to put the sun over the plan, from the section "Cities" of
// Language/cities.ini. Each key "c" holds the fields of one place joined by
// ";": name, country code, then latitude and longitude as degrees with a
// "°" mark and a hemisphere letter separated by a blank ("48.14°N
// 11.58°E", minutes as "48°08'N" also read), then the standard time zone in
// hours from UTC.

#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxCityList : public IVxReadIniClient
{
public:
    struct SVxCity
    {
        CVxStringW name;
        CVxStringA country;
        double latitude = 0;
        double longitude = 0;
        double timeZone = 0;
    };

    // False when the file can't be read. A line that can't be understood,
    // or whose numbers are out of range, is skipped; at most kMaxCities.
    bool LoadFromFile(const CVxStringW& path);
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    const std::vector<SVxCity>& GetCities() const { return m_cities; }

    // One coordinate such as "48.14°N" or "58°23'W": negative to the south
    // and west. False for a text that is none, or out of range.
    static bool ParseCoordinate(const CVxStringW& text, double& degrees, bool& isLatitude);

    static constexpr size_t kMaxCities = 20000;

private:
    std::vector<SVxCity> m_cities;
};
