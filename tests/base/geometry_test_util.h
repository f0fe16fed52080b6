#pragma once
// Tolerance-aware assertions for plan geometry that print the values as text
// when they fail.

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

inline std::string GeoText(const CVxDPoint& p)
{
    std::ostringstream os;
    os.precision(10);
    os << "(" << p.x << ", " << p.y << ")";
    return os.str();
}

inline std::string GeoText(const CVxDRect& r)
{
    std::ostringstream os;
    os.precision(10);
    os << "[l " << r.left << ", t " << r.top << ", r " << r.right << ", b " << r.bottom << "]";
    return os.str();
}

inline std::string GeoText(const CVxDTriRect& r)
{
    std::ostringstream os;
    os.precision(10);
    os << "[l " << r.left << ", t " << r.top << ", r " << r.right << ", lb " << r.leftBottom << ", rb "
       << r.rightBottom << ", tag " << r.tag << "]";
    return os.str();
}

inline std::string GeoText(const std::vector<CVxDPoint>& points)
{
    std::string text = "{";
    for (size_t i = 0; i < points.size(); ++i)
        text += (i ? " " : "") + GeoText(points[i]);
    return text + "}";
}

inline std::string GeoText(const CVxDPolygon& polygon)
{
    std::string text = "kind " + std::to_string(polygon.kind) + " " + GeoText(polygon.points);
    if (!polygon.bezierFlags.empty()) {
        text += " flags ";
        for (bool f : polygon.bezierFlags)
            text += f ? '1' : '0';
    }
    if (!polygon.bezierControls.empty())
        text += " controls " + GeoText(polygon.bezierControls);
    if (!polygon.edgeWalls.empty()) {
        text += " walls";
        for (int w : polygon.edgeWalls)
            text += " " + std::to_string(w);
    }
    return text;
}

inline std::string GeoText(const std::vector<CVxDPolygon>& list)
{
    std::string text = std::to_string(list.size()) + " polygon(s)";
    for (size_t i = 0; i < list.size(); ++i)
        text += "\n  #" + std::to_string(i) + ": " + GeoText(list[i]);
    return text;
}

// gtest prints values through these.
inline void PrintTo(const CVxDPoint& p, std::ostream* os)
{
    *os << GeoText(p);
}
inline void PrintTo(const CVxDRect& r, std::ostream* os)
{
    *os << GeoText(r);
}
inline void PrintTo(const CVxDTriRect& r, std::ostream* os)
{
    *os << GeoText(r);
}
inline void PrintTo(const CVxDPolygon& p, std::ostream* os)
{
    *os << GeoText(p);
}

inline bool GeoNear(double a, double b, double tol)
{
    return std::fabs(a - b) <= tol || (std::isnan(a) && std::isnan(b));
}

inline ::testing::AssertionResult GeoPointNear(const char* actualExpr, const char* expectedExpr, const char*,
                                               const CVxDPoint& actual, const CVxDPoint& expected, double tol)
{
    if (GeoNear(actual.x, expected.x, tol) && GeoNear(actual.y, expected.y, tol))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actualExpr << " is " << GeoText(actual) << ", expected "
                                         << expectedExpr << " = " << GeoText(expected) << " within " << tol;
}

inline ::testing::AssertionResult GeoRectNear(const char* actualExpr, const char* expectedExpr, const char*,
                                              const CVxDRect& actual, const CVxDRect& expected, double tol)
{
    if (GeoNear(actual.left, expected.left, tol) && GeoNear(actual.top, expected.top, tol) &&
        GeoNear(actual.right, expected.right, tol) && GeoNear(actual.bottom, expected.bottom, tol))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actualExpr << " is " << GeoText(actual) << ", expected "
                                         << expectedExpr << " = " << GeoText(expected) << " within " << tol;
}

inline ::testing::AssertionResult GeoTriRectNear(const char* actualExpr, const char* expectedExpr,
                                                 const char*, const CVxDTriRect& actual,
                                                 const CVxDTriRect& expected, double tol)
{
    if (GeoNear(actual.left, expected.left, tol) && GeoNear(actual.top, expected.top, tol) &&
        GeoNear(actual.right, expected.right, tol) && GeoNear(actual.leftBottom, expected.leftBottom, tol) &&
        GeoNear(actual.rightBottom, expected.rightBottom, tol) && actual.tag == expected.tag)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actualExpr << " is " << GeoText(actual) << ", expected "
                                         << expectedExpr << " = " << GeoText(expected) << " within " << tol;
}

// The polygon's vertices, in order and from the same start.
inline ::testing::AssertionResult GeoVerticesNear(const char* actualExpr, const char* expectedExpr,
                                                  const char*, const CVxDPolygon& actual,
                                                  const std::vector<CVxDPoint>& expected, double tol)
{
    bool same = actual.points.size() == expected.size();
    for (size_t i = 0; same && i < expected.size(); ++i)
        same = GeoNear(actual.points[i].x, expected[i].x, tol) &&
               GeoNear(actual.points[i].y, expected[i].y, tol);
    if (same)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actualExpr << " is " << GeoText(actual) << "\nexpected vertices "
                                         << expectedExpr << " = " << GeoText(expected) << " within " << tol;
}

#define EXPECT_POINT_NEAR(actual, expected, tol) EXPECT_PRED_FORMAT3(GeoPointNear, actual, expected, tol)
#define EXPECT_RECT_NEAR(actual, expected, tol) EXPECT_PRED_FORMAT3(GeoRectNear, actual, expected, tol)
#define EXPECT_TRIRECT_NEAR(actual, expected, tol) EXPECT_PRED_FORMAT3(GeoTriRectNear, actual, expected, tol)
#define EXPECT_VERTICES_NEAR(actual, expected, tol)                                                          \
    EXPECT_PRED_FORMAT3(GeoVerticesNear, actual, expected, tol)

// Polygons by their vertices, for figures written out in a test.
inline CVxDPolygon GeoPolygon(std::initializer_list<CVxDPoint> points, int kind = 0)
{
    CVxDPolygon polygon;
    polygon.points.assign(points);
    polygon.kind = kind;
    return polygon;
}

// An axis-parallel rectangle as a room (positive signed area, y down) or
// as a floor opening (negative signed area).
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
