#include "CVxCountryList.h"

#include "CVxIniFileReader.h"

namespace {
constexpr int kMaxNameLength = 80;
}

bool CVxCountryList::LoadFromFile(const CVxStringW& path)
{
    m_countries.clear();
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    reader.ReadAllSectionsNamed("Countries", this);
    return true;
}

void CVxCountryList::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                    CVxIniFileReader* /*reader*/)
{
    CVxStringW name = value;
    name.Trim();
    if (m_countries.size() >= kMaxCountries || key.IsEmpty() || name.IsEmpty() ||
        name.GetLength() > kMaxNameLength || Find(name) >= 0)
        return;
    m_countries.push_back({key, name});
}

int CVxCountryList::Find(const CVxStringW& name) const
{
    for (size_t i = 0; i < m_countries.size(); ++i)
        if (m_countries[i].name.IsEqualNoCase(name))
            return static_cast<int>(i);
    return -1;
}
