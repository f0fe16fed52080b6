#include "CVxPolyInfo.h"

#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "VxEps.h"

#include <algorithm>
#include <cmath>

CVxPolyInfo::List CVxPolyInfo::Build(const CVxDPolygon& polygon)
{
    List list(polygon.points.size());
    for (size_t i = 0; i < list.size(); ++i) {
        list[i].point = polygon.points[i];
        list[i].edge = static_cast<int32_t>(i);
    }
    return list;
}

void CVxPolyInfo::MarkOuterVertices(List& list, const CVxDPolygon& other)
{
    // A vertex well clear of the other outline's bounds is outside it and not
    // on it; this spares the full tests for most vertices of a large room
    // against a small opening. Curves may bulge past the sampled bounds, so
    // only straight outlines take the short cut.
    const CVxDRect bounds = other.GetBoundingRect();
    CVxDRect near = bounds;
    near.InflateRect(2 * kOnLineDistance, 2 * kOnLineDistance);
    const bool straight =
        std::none_of(other.bezierFlags.begin(), other.bezierFlags.end(), [](bool f) { return f; });
    const bool shortCut = straight && std::isfinite(near.left) && std::isfinite(near.top) &&
                          std::isfinite(near.right) && std::isfinite(near.bottom);
    near.NormalizeRect();
    for (CVxPolyInfo& entry : list) {
        const CVxDPoint& p = entry.point;
        if (shortCut && !(p.x >= near.left && p.x <= near.right && p.y >= near.top && p.y <= near.bottom)) {
            entry.isOnBoundary = false;
            entry.isOuter = true;
            continue;
        }
        const CVxDPolygon::EPlace place = other.PlacePoint(entry.point, kOnLineDistance, bounds);
        if (place == CVxDPolygon::PLACE_ON) {
            entry.isOnBoundary = true;
            entry.isOuter = false;
        } else {
            entry.isOuter = place == CVxDPolygon::PLACE_OUTSIDE;
        }
    }
}

bool CVxPolyInfo::IsCompletelyInner(const List& list)
{
    return std::none_of(list.begin(), list.end(),
                        [](const CVxPolyInfo& e) { return e.isOuter && !e.isOnBoundary; });
}

bool CVxPolyInfo::IsCompletelyOuter(const List& list)
{
    return std::all_of(list.begin(), list.end(), [](const CVxPolyInfo& e) { return e.isOuter; });
}

int CVxPolyInfo::InsertPoint(List& list, int edge, double param, const CVxDPoint& point, bool* outIsNew)
{
    size_t position = list.size();
    for (size_t k = 0; k < list.size(); ++k) {
        const CVxPolyInfo& entry = list[k];
        if (entry.edge == edge && std::fabs(entry.param - param) < EPS) {
            if (outIsNew)
                *outIsNew = false;
            return static_cast<int>(k);
        }
        if ((entry.edge == edge && entry.param > param) || entry.edge > edge) {
            position = k;
            break;
        }
    }
    CVxPolyInfo entry;
    entry.point = point;
    entry.edge = edge;
    entry.param = param;
    entry.isOnBoundary = true;
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(position), entry);
    if (outIsNew)
        *outIsNew = true;
    return static_cast<int>(position);
}

void CVxPolyInfo::ShiftCrossIndices(List& list, int from)
{
    for (CVxPolyInfo& entry : list)
        if (entry.crossIndex >= from)
            ++entry.crossIndex;
}

void CVxPolyInfo::MarkCross(List& a, int indexA, List& b, int indexB)
{
    CVxPolyInfo& ea = a[static_cast<size_t>(indexA)];
    CVxPolyInfo& eb = b[static_cast<size_t>(indexB)];
    ea.crossIndex = indexB;
    eb.crossIndex = indexA;
    ea.isOuter = false;
    eb.isOuter = false;
}
