// The places of the sun's location dialog: the shipped list, and a damaged
// file that must give only its good lines.

#include "CVxCityList.h"
#include "CVxCountryList.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>

namespace {
CVxStringW LanguageFile(const wchar_t* name)
{
    return CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/Language/" + name;
}
} // namespace

TEST(CVxCityList, ShippedListCoversTheWorldWithKnownCountries)
{
    CVxCityList cities;
    ASSERT_TRUE(cities.LoadFromFile(LanguageFile(L"cities.ini")));
    CVxCountryList countries;
    ASSERT_TRUE(countries.LoadFromFile(LanguageFile(L"countries.ini")));
    std::set<std::string> codes;
    for (const auto& country : countries.GetCountries())
        codes.insert(country.code.c_str());
    ASSERT_GE(cities.GetCities().size(), 300u);
    bool south = false, west = false;
    for (const CVxCityList::SVxCity& city : cities.GetCities()) {
        EXPECT_TRUE(codes.count(city.country.c_str())) << city.name.ToQString().toStdString();
        south = south || city.latitude < -30;
        west = west || city.longitude < -60;
    }
    EXPECT_TRUE(south && west);
    const auto munich = std::find_if(cities.GetCities().begin(), cities.GetCities().end(),
                                     [](const auto& c) { return c.name == L"Munich"; });
    ASSERT_NE(munich, cities.GetCities().end());
    EXPECT_NEAR(munich->latitude, 48.14, 1e-9);
    EXPECT_NEAR(munich->longitude, 11.58, 1e-9);
    EXPECT_EQ(munich->timeZone, 1);
    EXPECT_EQ(munich->country, "DE");
}

TEST(CVxCityList, DamagedLinesAreSkipped)
{
    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/cities.ini");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Other]\r\nc=Nowhere;XX;1°N 1°E;0\r\n[Cities]\r\n"
               "c=Quito;EC;0°13'S 78°31'W;-5\r\n"    // minutes, south and west
               "c=Swapped;XX;10.5°E 20.25°N;5.5\r\n" // longitude first
               "c=TooFarNorth;XX;91°N 1°E;0\r\n"
               "c=BadMinutes;XX;10°75'N 1°E;0\r\n"
               "c=TwoLatitudes;XX;10°N 20°S;0\r\n"
               "c=NoZone;XX;10°N 20°E;\r\n"
               "c=WildZone;XX;10°N 20°E;99\r\n"
               "c=Short;XX\r\n"
               "c=;XX;10°N 20°E;0\r\n"
               "x=Key;XX;10°N 20°E;0\r\n");
    file.close();
    CVxCityList cities;
    ASSERT_TRUE(cities.LoadFromFile(CVxStringW(path)));
    ASSERT_EQ(cities.GetCities().size(), 2u);
    const CVxCityList::SVxCity& quito = cities.GetCities()[0];
    EXPECT_NEAR(quito.latitude, -(13.0 / 60), 1e-9);
    EXPECT_NEAR(quito.longitude, -(78 + 31.0 / 60), 1e-9);
    EXPECT_EQ(quito.timeZone, -5);
    const CVxCityList::SVxCity& swapped = cities.GetCities()[1];
    EXPECT_EQ(swapped.latitude, 20.25);
    EXPECT_EQ(swapped.longitude, 10.5);
    EXPECT_EQ(swapped.timeZone, 5.5);
    EXPECT_FALSE(cities.LoadFromFile(CVxStringW(dir.path() + QStringLiteral("/missing.ini"))));
}
