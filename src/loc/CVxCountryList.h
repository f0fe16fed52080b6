#pragma once
// The countries that the language dialogue offers, from the section
// "Countries" of Language/countries.ini: each key is a country's code and
// its value the country's name, which the setting "Country" and a language
// file's "DefCountry" hold.

#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxCountryList : public IVxReadIniClient
{
public:
    struct SVxCountry
    {
        CVxStringA code;
        CVxStringW name;
    };

    // False when the file can't be read; a damaged file gives what could be
    // read, at most kMaxCountries entries.
    bool LoadFromFile(const CVxStringW& path);
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    const std::vector<SVxCountry>& GetCountries() const { return m_countries; }
    // The index of the country of that name, ignoring case; -1 for none.
    int Find(const CVxStringW& name) const;

    static constexpr size_t kMaxCountries = 400;

private:
    std::vector<SVxCountry> m_countries;
};
