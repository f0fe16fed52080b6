#pragma once
// A tolerance-aware assertion for plan geometry that prints the values as
// text when it fails, and small builders for the figures of the tests.

#include "CVxDPoint.h"
#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "CVxDTriRect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

// The numbers that make up a value, in the order of its fields.
inline std::vector<double> GeoFields(const CVxDPoint& p)
{
    return {p.x, p.y};
}
inline std::vector<double> GeoFields(const CVxDRect& r)
{
    return {r.left, r.top, r.right, r.bottom};
}
inline std::vector<double> GeoFields(const CVxDTriRect& r)
{
    return {r.left, r.top, r.right, r.leftBottom, r.rightBottom, static_cast<double>(r.tag)};
}
inline std::vector<double> GeoFields(const std::vector<CVxDPoint>& points)
{
    std::vector<double> fields;
    for (const CVxDPoint& p : points)
        fields.insert(fields.end(), {p.x, p.y});
    return fields;
}

// Points as "(x, y)", other values as "[a, b, ...]".
template <typename T>
std::string GeoText(const T& value)
{
    const std::vector<double> fields = GeoFields(value);
    const size_t group = std::is_same_v<T, CVxDPoint> || std::is_same_v<T, std::vector<CVxDPoint>> ? 2 : 0;
    std::ostringstream os;
    os.precision(10);
    for (size_t i = 0; i < fields.size(); ++i) {
        const bool first = group ? i % group == 0 : i == 0;
        os << (first ? (group ? "(" : "[") : ", ") << fields[i];
        if (group ? i % group == group - 1 : i + 1 == fields.size())
            os << (group ? ")" : "]");
    }
    return os.str();
}
inline std::string GeoText(const CVxDPolygon& polygon)
{
    std::string text = "kind " + std::to_string(polygon.kind) + " " + GeoText(polygon.points);
    for (bool f : polygon.bezierFlags)
        text += f ? " c" : " s";
    if (!polygon.bezierControls.empty())
        text += " controls " + GeoText(polygon.bezierControls);
    for (int w : polygon.edgeWalls)
        text += " w" + std::to_string(w);
    return text;
}
inline std::string GeoText(const std::vector<CVxDPolygon>& list)
{
    std::string text = std::to_string(list.size()) + " polygon(s)";
    for (const CVxDPolygon& p : list)
        text += "\n  " + GeoText(p);
    return text;
}

inline void PrintTo(const CVxDPoint& p, std::ostream* os)
{
    *os << GeoText(p);
}
inline void PrintTo(const CVxDPolygon& p, std::ostream* os)
{
    *os << GeoText(p);
}

// Same shape and every number within tol.
template <typename T>
::testing::AssertionResult GeoNearFormat(const char* actualExpr, const char* expectedExpr, const char*,
                                         const T& actual, const T& expected, double tol)
{
    const std::vector<double> a = GeoFields(actual);
    const std::vector<double> e = GeoFields(expected);
    bool same = a.size() == e.size();
    for (size_t i = 0; same && i < a.size(); ++i)
        same = std::fabs(a[i] - e[i]) <= tol;
    if (same)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actualExpr << " is " << GeoText(actual) << "\n  expected " << expectedExpr << " = "
           << GeoText(expected) << " within " << (std::ostringstream() << tol).str();
}

#define EXPECT_GEO_NEAR(actual, expected, tol) EXPECT_PRED_FORMAT3(GeoNearFormat, actual, expected, tol)

using GeoPoints = std::vector<CVxDPoint>;

inline CVxDPolygon GeoPolygon(std::initializer_list<CVxDPoint> points, int kind = 0)
{
    CVxDPolygon polygon;
    polygon.points.assign(points);
    polygon.kind = kind;
    return polygon;
}

// Axis-parallel rectangles: a room has a positive signed area (y down), a
// floor opening a negative one.
inline CVxDPolygon GeoRoomRect(double l, double t, double r, double b)
{
    return GeoPolygon({{l, t}, {r, t}, {r, b}, {l, b}}, CVxDPolygon::KIND_ROOM);
}
inline CVxDPolygon GeoHoleRect(double l, double t, double r, double b)
{
    return GeoPolygon({{l, t}, {l, b}, {r, b}, {r, t}}, CVxDPolygon::KIND_HOLE);
}

inline double GeoTotalArea(const std::vector<CVxDPolygon>& list)
{
    double area = 0;
    for (const CVxDPolygon& p : list)
        area += p.GetArea();
    return area;
}
