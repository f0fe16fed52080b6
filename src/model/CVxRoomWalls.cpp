#include "CVxRoomWalls.h"

#include "CVxFloorPlan.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "VxFillStyle.h"
#include "VxGeometryFunctions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace {
// Outlines name a wall in the low 16 bits of an edge's entry, so a floor
// can't hold more walls than that. Openings and surfaces share the limit: a
// damaged file can't make a floor grow without bound.
constexpr size_t kMaxWalls = 0xFFFF;
constexpr size_t kMaxHoles = 0xFFFF;
constexpr size_t kMaxAppearances = 0xFFFF;
constexpr size_t kReserveWalls = 1024;

// The common non-zero value of a list: 0 when there is none, -1 when two
// differ.
// Points by cells one unit wide: a point within EPS of another lies in its
// cell or a neighbour. Points that are no finite numbers equal nothing and
// are left out; far-out values share the outermost cells.
class CVxPointCells
{
public:
    void Add(const CVxDPoint& point, int item)
    {
        if (std::isfinite(point.x) && std::isfinite(point.y))
            m_cells[Key(Cell(point.x), Cell(point.y))].push_back(item);
    }

    // Calls visit for every item of a point in the cells that can hold a
    // point within EPS of this one; an item may come more than once.
    template <typename Visit>
    void ForNear(const CVxDPoint& point, Visit visit) const
    {
        if (!std::isfinite(point.x) || !std::isfinite(point.y))
            return;
        const int64_t x0 = Cell(point.x - 4 * EPS), x1 = Cell(point.x + 4 * EPS);
        const int64_t y0 = Cell(point.y - 4 * EPS), y1 = Cell(point.y + 4 * EPS);
        for (int64_t cx = x0; cx <= x1; ++cx)
            for (int64_t cy = y0; cy <= y1; ++cy) {
                const auto found = m_cells.find(Key(cx, cy));
                if (found != m_cells.end())
                    for (int item : found->second)
                        visit(item);
            }
    }

private:
    static int64_t Cell(double value)
    {
        constexpr double limit = 1e9;
        return static_cast<int64_t>(std::clamp(std::floor(value), -limit, limit));
    }
    static uint64_t Key(int64_t cx, int64_t cy)
    {
        return (static_cast<uint64_t>(cx + (int64_t{1} << 31)) << 32) ^
               static_cast<uint64_t>(cy + (int64_t{1} << 31));
    }

    std::unordered_map<uint64_t, std::vector<int>> m_cells;
};

// The ends through which a wall meets others: its own, or those of the
// first and last chord of a curve.
std::array<CVxDPoint, 4> WallEnds(const CVxWall& wall)
{
    if (wall.subWalls.empty())
        return {wall.start, wall.end, wall.start, wall.end};
    const CVxWall& first = wall.subWalls.front();
    const CVxWall& last = wall.subWalls.back();
    return {first.start, first.end, last.start, last.end};
}

class CVxCommonValue
{
public:
    void Add(double value)
    {
        if (m_differ || std::fabs(value) < EPS)
            return;
        if (m_value == 0)
            m_value = value;
        else if (!(std::fabs(value - m_value) < EPS))
            m_differ = true;
    }
    double Get() const { return m_differ ? -1 : m_value; }

private:
    double m_value = 0;
    bool m_differ = false;
};
} // namespace

CVxWall* CVxRoomWalls::SafeGetWall(int i)
{
    return (i >= 0 && i < GetWallCount()) ? &walls[static_cast<size_t>(i)] : nullptr;
}

const CVxWall* CVxRoomWalls::SafeGetWall(int i) const
{
    return (i >= 0 && i < GetWallCount()) ? &walls[static_cast<size_t>(i)] : nullptr;
}

CVxHoleInFloor* CVxRoomWalls::SafeGetHole(int i)
{
    return (i >= 0 && i < GetHoleCount()) ? &holes[static_cast<size_t>(i)] : nullptr;
}

const CVxHoleInFloor* CVxRoomWalls::SafeGetHole(int i) const
{
    return (i >= 0 && i < GetHoleCount()) ? &holes[static_cast<size_t>(i)] : nullptr;
}

CVxAppearance* CVxRoomWalls::SafeGetAppear(int i)
{
    return (i >= 0 && i < static_cast<int>(appearances.size())) ? &appearances[static_cast<size_t>(i)]
                                                                : nullptr;
}

const CVxAppearance* CVxRoomWalls::SafeGetAppear(int i) const
{
    return (i >= 0 && i < static_cast<int>(appearances.size())) ? &appearances[static_cast<size_t>(i)]
                                                                : nullptr;
}

bool CVxRoomWalls::GetRoomDims(CVxDRect& out) const
{
    if (walls.empty())
        return false;
    walls.front().GetBoundingRect(out);
    for (size_t i = 1; i < walls.size(); ++i) {
        CVxDRect rect;
        walls[i].GetBoundingRect(rect);
        out.UnionRect(rect);
    }
    return true;
}

double CVxRoomWalls::GetWallThickness() const
{
    CVxCommonValue common;
    for (const CVxWall& wall : walls)
        common.Add(wall.thickness);
    return common.Get();
}

double CVxRoomWalls::GetWallZHeight() const
{
    CVxCommonValue common;
    for (const CVxWall& wall : walls) {
        common.Add(wall.startHeight);
        common.Add(wall.endHeight);
    }
    return common.Get();
}

double CVxRoomWalls::GetMaxWallZHeight() const
{
    if (walls.empty())
        return -1;
    double highest = walls.front().GetMaxZHeight();
    for (const CVxWall& wall : walls)
        highest = std::max(highest, wall.GetMaxZHeight());
    return highest;
}

void CVxRoomWalls::SetWallZHeight(double height)
{
    for (CVxWall& wall : walls) {
        wall.startHeight = height;
        wall.endHeight = height;
    }
}

void CVxRoomWalls::SetWallThickness(double thick)
{
    for (CVxWall& wall : walls) {
        wall.thickness = thick;
        wall.RecalculateProperites();
    }
}

int CVxRoomWalls::GetWallFillStyle() const
{
    int counts[FILL_STYLE_COUNT] = {};
    for (const CVxWall& wall : walls)
        if (wall.fillStyle >= 0 && wall.fillStyle < FILL_STYLE_COUNT)
            ++counts[wall.fillStyle];
    int best = 0;
    for (int style = 1; style < FILL_STYLE_COUNT; ++style)
        if (counts[style] > counts[best])
            best = style;
    return best;
}

void CVxRoomWalls::ChangeWallFillStyle(int from, int to)
{
    for (CVxWall& wall : walls) {
        if (wall.fillStyle != from)
            continue;
        wall.fillStyle = to;
        // The chords of a curved wall draw it.
        for (CVxWall& sub : wall.subWalls)
            sub.fillStyle = to;
    }
}

int CVxRoomWalls::GetNearestWall(double x, double y, double* outT, double preferredAngle) const
{
    int best = -1;
    double bestDist = 0, bestT = 0;
    for (int i = 0; i < GetWallCount(); ++i) {
        const CVxWall& wall = walls[static_cast<size_t>(i)];
        double t = 0;
        const double dist = wall.GetDistFromWall(x, y, &t);
        // At an equal distance, a corner between two walls, the wall along
        // the object's own direction wins.
        if (best < 0 || dist < bestDist ||
            (dist == bestDist && std::fabs(wall.angle - preferredAngle) < 0.001)) {
            best = i;
            bestDist = dist;
            bestT = t;
        }
    }
    if (outT && best >= 0)
        *outT = bestT;
    return best;
}

int CVxRoomWalls::GetNearestWallEx(double x, double y, double* outT, double preferredAngle, double otherX,
                                   double otherY) const
{
    int best = -1;
    double bestDist = 0, bestT = 0;
    for (int i = 0; i < GetWallCount(); ++i) {
        const CVxWall& wall = walls[static_cast<size_t>(i)];
        double t = 0;
        const double dist = wall.GetDistFromWall(x, y, &t);
        bool take = best < 0 || dist < bestDist;
        if (!take && dist == bestDist) {
            const CVxWall& bestWall = walls[static_cast<size_t>(best)];
            // Two faces of parallel walls at the same distance: the object
            // belongs to the one its other end lies nearer to.
            const bool farther = std::fabs(wall.angle - bestWall.angle) < EPS &&
                                 wall.GetDistFromWall(otherX, otherY, nullptr) >
                                     bestWall.GetDistFromWall(otherX, otherY, nullptr);
            take = !farther && std::fabs(wall.angle - preferredAngle) < EPS;
        }
        if (take) {
            best = i;
            bestDist = dist;
            bestT = t;
        }
    }
    if (outT && best >= 0)
        *outT = bestT;
    return best;
}

void CVxRoomWalls::RebuildWalls()
{
    for (CVxWall& wall : walls)
        wall.ResetIntersections();
    // Two walls meet only where an end of one (of its first or last chord,
    // for a curve) lies within EPS of an end of the other; every other pair
    // leaves the corners alone. The pairs that do meet are taken in the
    // order of the plain double loop, as of several walls at one point the
    // first to trim a corner wins a tie.
    std::vector<std::array<CVxDPoint, 4>> ends(walls.size());
    CVxPointCells cells;
    for (size_t i = 0; i < walls.size(); ++i) {
        if (!walls[i].visible)
            continue;
        ends[i] = WallEnds(walls[i]);
        for (const CVxDPoint& point : ends[i])
            cells.Add(point, static_cast<int>(i));
    }
    std::vector<int> partners;
    for (size_t i = 0; i < walls.size(); ++i) {
        if (!walls[i].visible)
            continue;
        partners.clear();
        for (const CVxDPoint& point : ends[i])
            cells.ForNear(point, [&](int j) {
                if (j <= static_cast<int>(i))
                    return;
                for (const CVxDPoint& other : ends[static_cast<size_t>(j)])
                    if (other == point) {
                        partners.push_back(j);
                        return;
                    }
            });
        std::sort(partners.begin(), partners.end());
        partners.erase(std::unique(partners.begin(), partners.end()), partners.end());
        for (int j : partners)
            walls[i].CalculateIntersection(walls[static_cast<size_t>(j)], false);
    }
    for (CVxWall& wall : walls)
        wall.FinishIntersections();
}

void CVxRoomWalls::SaveToFile(CVxIniWriter* writer, const CVxStringA& sectionName) const
{
    if (!writer)
        return;
    writer->StartSection(sectionName);
    writer->WriteInteger("Count", GetWallCount());
    CVxStringA key;
    for (size_t i = 0; i < walls.size(); ++i) {
        key.sprintf("Wall%02d", static_cast<int>(i));
        writer->WriteString(key, walls[i].SaveToString());
    }
    for (size_t i = 0; i < holes.size(); ++i) {
        key.sprintf("Hole%02u", static_cast<unsigned>(i));
        writer->WriteString(key, holes[i].SaveToString());
    }
    for (size_t i = 0; i < appearances.size(); ++i) {
        key.sprintf("Appear%02u", static_cast<unsigned>(i));
        writer->WriteString(key, appearances[i].SaveToString(writer));
    }
}

void CVxRoomWalls::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    if (key.Left(5) == "Count") {
        // The count only reserves room, and no more than a large house needs:
        // the walls themselves decide how many there are.
        const int count = value.ToIntDef(0);
        if (count > 0)
            walls.reserve(std::min(static_cast<size_t>(count), kReserveWalls));
    } else if (key.Left(4) == "Wall") {
        if (walls.size() >= kMaxWalls)
            return;
        // A damaged wall keeps its place, so that the walls after it keep
        // their indices.
        CVxWall wall;
        wall.LoadFromString(value);
        walls.push_back(std::move(wall));
        readingWallIndex = GetWallCount();
    } else if (key.Left(4) == "Hole") {
        CVxHoleInFloor hole;
        if (holes.size() < kMaxHoles && hole.LoadFromString(value))
            holes.push_back(hole);
    } else if (key.Left(6) == "Appear") {
        if (appearances.size() >= kMaxAppearances)
            return;
        CVxAppearance appearance;
        appearance.LoadFromString(value, reader);
        appearances.push_back(appearance);
    }
}

void CVxRoomWalls::OnEndSection()
{
    const int count = static_cast<int>(appearances.size());
    auto check = [count](int32_t& index) {
        if (index < -1 || index >= count)
            index = -1;
    };
    for (CVxWall& wall : walls) {
        check(wall.appearanceA);
        check(wall.appearanceB);
    }
    readingWallIndex = 0;
}

int CVxRoomWalls::FindHoleFromPoint(double x, double y, double zoom) const
{
    for (int i = 0; i < GetHoleCount(); ++i)
        if (holes[static_cast<size_t>(i)].PtInHole(x, y, zoom))
            return i;
    return -1;
}

int CVxRoomWalls::GetWallUnderCursor(double x, double y, double zoom) const
{
    for (int i = 0; i < GetWallCount(); ++i)
        if (walls[static_cast<size_t>(i)].PtInWall(x, y, zoom))
            return i;
    return -1;
}

bool CVxRoomWalls::IsMouseOverWalls(double x, double y, double zoom) const
{
    return GetWallUnderCursor(x, y, zoom) >= 0;
}

void CVxRoomWalls::RemoveUnusedAppearances()
{
    for (int k = static_cast<int>(appearances.size()) - 1; k >= 0; --k) {
        const bool used = std::any_of(walls.begin(), walls.end(), [k](const CVxWall& wall) {
            return wall.appearanceA == k || wall.appearanceB == k;
        });
        if (used)
            continue;
        for (CVxWall& wall : walls) {
            if (wall.appearanceA > k)
                --wall.appearanceA;
            if (wall.appearanceB > k)
                --wall.appearanceB;
        }
        appearances.erase(appearances.begin() + k);
    }
}

void CVxRoomWalls::GetHolePolygonList(std::vector<CVxDPolygon>& out)
{
    out.clear();
    out.reserve(holes.size());
    for (CVxHoleInFloor& hole : holes) {
        CVxDPolygon polygon;
        hole.GetHolePolygon(polygon);
        if (polygon.kind == CVxDPolygon::KIND_HOLE)
            out.push_back(std::move(polygon));
    }
}

int CVxRoomWalls::AddFindAppearance(const CVxAppearance& appearance)
{
    for (size_t i = 0; i < appearances.size(); ++i)
        if (appearances[i] == appearance)
            return static_cast<int>(i);
    appearances.push_back(appearance);
    return static_cast<int>(appearances.size()) - 1;
}

void CVxRoomWalls::ResetSnapSegments(const CVxFloorPlan* plan)
{
    for (CVxWall& wall : walls)
        wall.snapSegment = 0;
    const uint64_t count = walls.size();
    if (plan) {
        // A wall between two rooms gets the runs of both sides in its key.
        for (size_t r = 0; r < plan->regions.size(); ++r) {
            const CVxFloorRegion& region = plan->regions[r];
            const size_t entries = std::min(region.walls.size(), region.segmentIds.size());
            for (size_t k = 0; k < entries; ++k) {
                CVxWall* wall = SafeGetWall(region.walls[k]);
                if (!wall)
                    continue;
                const uint64_t base = r * (count + 1);
                const uint64_t v =
                    static_cast<uint64_t>(static_cast<int64_t>(region.segmentIds[k])) + base + count;
                wall->snapSegment = wall->snapSegment == 0 ? v : v * (count + 1) + wall->snapSegment;
            }
        }
    }
    // Walls in no room: straight walls that continue one another share a key.
    std::vector<size_t> earlier;
    for (size_t i = 0; i < walls.size(); ++i) {
        CVxWall& wall = walls[i];
        if (wall.curved || !wall.visible || wall.snapSegment != 0)
            continue;
        for (size_t e : earlier) {
            const CVxWall& other = walls[e];
            const bool sharesEnd = wall.start == other.start || wall.start == other.end ||
                                   wall.end == other.start || wall.end == other.end;
            if (sharesEnd && std::fabs(wall.angle - other.angle) < EPS &&
                std::fabs(wall.thickness - other.thickness) < EPS) {
                wall.snapSegment = other.snapSegment;
                break;
            }
        }
        if (wall.snapSegment == 0)
            wall.snapSegment = i;
        earlier.push_back(i);
    }
}

void CVxRoomWalls::Remove(int i)
{
    if (i >= 0 && i < GetWallCount())
        walls.erase(walls.begin() + i);
}

void CVxRoomWalls::RemoveAll()
{
    walls.clear();
    holes.clear();
}

void CVxRoomWalls::SetAsBasicRect(double width, double depth, double thick, double height)
{
    walls.clear();
    struct SVxSide
    {
        double x1, y1, x2, y2;
        int align;
    };
    const SVxSide sides[4] = {{0, 0, width, 0, CVxWall::ALIGN_SIDE_A},
                              {0, 0, 0, depth, CVxWall::ALIGN_SIDE_B},
                              {0, depth, width, depth, CVxWall::ALIGN_SIDE_B},
                              {width, 0, width, depth, CVxWall::ALIGN_SIDE_A}};
    for (const SVxSide& side : sides)
        GetNewWall()->Set(side.x1, side.y1, side.x2, side.y2, side.align, thick, height, height, true, false);
}

CVxWall* CVxRoomWalls::GetNewWall(int* outIndex)
{
    walls.emplace_back();
    if (outIndex)
        *outIndex = GetWallCount() - 1;
    return &walls.back();
}

void CVxRoomWalls::SplitWallAtPoint(int i, double t, const CVxDPoint* point)
{
    if (!SafeGetWall(i))
        return;
    int added = -1;
    GetNewWall(&added);
    CVxWall& first = walls[static_cast<size_t>(i)];
    CVxDPoint c0, c1, c0Left, c1Left, middle, c0Right, c1Right;
    const bool isCurved = first.GetBezierControlPoints(c0, c1);
    if (isCurved)
        SplitBezierCurve(c0Left, c1Left, middle, c0Right, c1Right, first.start, c0, c1, first.end, t);
    CVxDPoint split = middle;
    if (point)
        split = *point;
    else if (!isCurved)
        split = first.GetPointOnLine(t);
    const double height = first.startHeight * (1 - t) + first.endHeight * t;

    CVxWall& second = walls[static_cast<size_t>(added)];
    second = first;
    first.end = split;
    first.endHeight = height;
    second.start = split;
    second.startHeight = height;
    if (first.RecalculateProperites())
        std::swap(c0Left, c1Left);
    if (second.RecalculateProperites())
        std::swap(c0Right, c1Right);
    if (isCurved) {
        first.SetBezierControlPoints(&c0Left, &c1Left);
        second.SetBezierControlPoints(&c0Right, &c1Right);
    }
}

void CVxRoomWalls::Move(double dx, double dy, const CVxProject* project)
{
    for (CVxWall& wall : walls)
        wall.Move(dx, dy);
    for (CVxHoleInFloor& hole : holes) {
        hole.Move(dx, dy, project);
        hole.InvalidateCache();
    }
    RebuildWalls();
}

void CVxRoomWalls::Scale(double sx, double sy, double sz, const CVxProject* project)
{
    for (CVxWall& wall : walls)
        wall.Scale(sx, sy, sz);
    for (CVxHoleInFloor& hole : holes)
        hole.Scale(sx, sy, project);
    RebuildWalls();
}

void CVxRoomWalls::Rotate(double degrees)
{
    for (CVxWall& wall : walls)
        wall.Rotate(degrees);
    for (CVxHoleInFloor& hole : holes)
        hole.Rotate(degrees);
    RebuildWalls();
}

void CVxRoomWalls::Mirror(bool aroundX)
{
    for (CVxWall& wall : walls)
        wall.Mirror(aroundX);
    for (CVxHoleInFloor& hole : holes)
        hole.Mirror(aroundX);
    RebuildWalls();
}

void CVxRoomWalls::Draw(CVxDC* dc, unsigned fillColor, unsigned lineColor, unsigned char lineAlpha,
                        int offsetX, int offsetY, double zoom) const
{
    for (const CVxWall& wall : walls)
        wall.Draw(dc, fillColor, lineColor, lineAlpha, offsetX, offsetY, zoom);
}
