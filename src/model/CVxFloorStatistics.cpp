// Figures of a floor's rooms: the table that goes to the clipboard, the text
// of the room manager and the per-wall figures the shopping list uses. Rooms
// are measured along the inside faces of their walls; a wall is counted in
// straight runs, so a long side made of several walls is one row.

#include "CVxFloor.h"

#include "CVxFloorPlan.h"
#include "CVxFloorRegion.h"
#include "CVxLocalize.h"
#include "CVxPlanGraph.h"
#include "CVxUnits.h"
#include "VxGeometryFunctions.h"
#include "VxNumberText.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <unordered_map>
#include <vector>

namespace {

constexpr double kEps = 1e-7;
constexpr double kPrintedFigure = 1e-5;
constexpr int kLibWallOpening = 106;
constexpr size_t kMostRemembered = 4096;
// Characters of a room's rows in the table, roughly, to size it once.
constexpr size_t kRoomTextGuess = 400;

// Rows of the room manager's table that the statistics share.
enum EStatText
{
    stRoom = 9,
    stWidth = 21,
    stLength = 22,
    stHeight = 23,
    stArea = 24,
    stDoorsWindows = 25,
    stOpenings = 26,
    stUseful = 27,
    stDimensions = 28,
    stBuiltUp = 29,
    stSelectedRoom = 30,
    stPerimeter = 31
};
constexpr int kListingId = 13;
constexpr int kMsgWall = 129;
constexpr int kMsgTotals = 130;

CVxStringW RoomText(int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    if (!loc)
        return CVxStringW(english);
    return loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_ROOMMNGDLG), row, CVxStringW(english));
}

CVxStringW Message(int number, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc ? loc->LocalizeMessage(number, CVxStringW(english)) : CVxStringW(english);
}

CVxStringW NoColon(const CVxStringW& text)
{
    return text.ReplaceAll(CVxStringW(L":"), CVxStringW());
}

// The point by which an object on a wall is found along the wall's face:
// the corner at its start along the face it stands on.
CVxDPoint WallObjectReference(const CVxPart& part)
{
    CVxDPoint c[4];
    part.GetRect(c, 1.0, false);
    if (part.type == ptDoor) {
        switch (part.snapWallSide) {
        case 0:
        case 90:
            return c[3];
        case 180:
            return c[2];
        case 270:
            return c[0];
        default:
            return CVxDPoint(part.x, part.y);
        }
    }
    return part.snapWallSide == 0 ? CVxDPoint(part.x, part.y) : c[2];
}

// What one table needs again for every room: the number writer, the words
// of its rows and, by wall, the doors and windows that hang on the floor's
// walls with the point by which each is found along its wall.
struct SStatContext
{
    struct SHung
    {
        const CVxPart* part;
        CVxDPoint reference;
    };

    explicit SStatContext(const CVxFloor& owner) : floor(owner)
    {
        for (const CVxPart& part : floor.m_objects) {
            if (!part.inUse || !part.snapToWall || !floor.m_layers.IsLayerVisible(part.layer))
                continue;
            const CVxWall* own = floor.m_walls.SafeGetWall(part.snapWall);
            if (!own)
                continue;
            // Walls in one line share a line number; an object counts on
            // every wall of its line, or on its own wall without one.
            const SHung hung{&part, WallObjectReference(part)};
            if (own->snapSegment != 0)
                byLine[own->snapSegment].push_back(hung);
            else
                byWall[part.snapWall].push_back(hung);
        }
    }

    // Figures repeat across a floor (heights, zeros, equal rooms), and the
    // locale's text of a number costs far more than looking it up.
    const CVxStringW& Num(double value) const
    {
        value = DblRound2x(value);
        const auto found = written.find(value);
        if (found != written.end())
            return found->second;
        if (written.size() >= kMostRemembered)
            written.clear();
        return written.emplace(value, number(value)).first->second;
    }

    const std::vector<SHung>* OnLine(uint64_t line) const
    {
        const auto found = byLine.find(line);
        return found == byLine.end() ? nullptr : &found->second;
    }
    const std::vector<SHung>* OnWall(int wall) const
    {
        const auto found = byWall.find(wall);
        return found == byWall.end() ? nullptr : &found->second;
    }

    const CVxFloor& floor;
    CVxNumberText number;
    mutable std::unordered_map<double, CVxStringW> written;
    CVxStringW wallWord = Message(kMsgWall, L"Wall");
    std::unordered_map<uint64_t, std::vector<SHung>> byLine;
    std::unordered_map<int, std::vector<SHung>> byWall;
};

double LengthFactor(int unit, int statUnit)
{
    return CVxUnits::GetUnitCal(unit) / CVxUnits::GetUnitCal(statUnit);
}

// Height of a wall at a point of its centre line, straight between its ends.
double WallHeightAt(const CVxWall& wall, const CVxDPoint& at)
{
    const double t = wall.length > 0 ? at.Distance(wall.start) / wall.length : 0;
    return (1 - t) * wall.startHeight + t * wall.endHeight;
}

} // namespace

namespace {

// The wall runs of one room, appended to text; see GetWallsInfoString.
void AppendWallsInfo(const SStatContext& ctx, CVxStringW& text, const CVxFloorRegion* region, int format,
                     int lengthUnit, int statUnit, int segment, double* outHeight, double* outOpenings,
                     double* outDoorsWindows, double* outArea, double* outUseful,
                     CVxAppearance* outAppearances)
{
    if (!region)
        return;
    const size_t start = static_cast<size_t>(text.GetLength());
    const double lf = LengthFactor(lengthUnit, statUnit);
    const double af = lf * lf;
    const CVxStringW& lengthText = CVxUnits::GetUnitText(statUnit);
    const CVxStringW& areaText = CVxUnits::GetAreaUnitText(statUnit);
    const int count = static_cast<int>(region->walls.size());
    const int inner = region->innerPolygon.GetVertexCount();
    const int corners = static_cast<int>(region->vertices.size());

    double runLength = 0, runHeight = 0, runArea = 0, runDoors = 0, runOpenings = 0;
    for (int k = 0; k < count; ++k) {
        const int id =
            k < static_cast<int>(region->segmentIds.size()) ? region->segmentIds[static_cast<size_t>(k)] : k;
        if (segment != -1 && id != segment)
            continue;
        const int wallIndex = region->walls[static_cast<size_t>(k)];
        const CVxWall* wall = ctx.floor.m_walls.SafeGetWall(wallIndex);
        if (wall && inner > 0 && corners > 0) {
            const CVxDPoint a = region->innerPolygon.points[static_cast<size_t>(k % inner)];
            const CVxDPoint b = region->innerPolygon.points[static_cast<size_t>((k + 1) % inner)];
            const CVxPlanVertex* cv = region->vertices[static_cast<size_t>(k % corners)];
            const CVxPlanVertex* dv = region->vertices[static_cast<size_t>((k + 1) % corners)];
            const CVxDPoint c = cv ? cv->Point() : wall->start;
            const CVxDPoint d = dv ? dv->Point() : wall->end;
            const double length = region->innerPolygon.GetSegmentLength(k % inner);
            runLength += length;
            const double h1 = WallHeightAt(*wall, c);
            const double h2 = WallHeightAt(*wall, d);
            // The face is a trapezoid standing on the floor.
            runArea += length * (h1 + h2) / 2;
            runHeight = std::max({runHeight, h1, h2});

            const bool reversed = d.x < c.x || (d.x == c.x && d.y < c.y);
            for (const auto* hungHere :
                 {wall->snapSegment != 0 ? ctx.OnLine(wall->snapSegment) : nullptr, ctx.OnWall(wallIndex)}) {
                if (!hungHere)
                    continue;
                for (const SStatContext::SHung& hung : *hungHere) {
                    const CVxPart& part = *hung.part;
                    double t = 0;
                    DblGetDistFromLine(a, b, hung.reference, &t);
                    const CVxDPoint p(a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t);
                    double along = length * t;
                    if (reversed)
                        along -= part.width;
                    if (along > length + kEps || b.Distance(p) > length + kEps)
                        continue;
                    const double front = part.width * part.zHeight;
                    if (part.libObjID == kLibWallOpening)
                        runOpenings += front;
                    else
                        runDoors += front;
                }
            }
        }

        const bool last = k == count - 1;
        const bool runEnds = last || (k + 1 < static_cast<int>(region->segmentIds.size()) &&
                                      region->segmentIds[static_cast<size_t>(k + 1)] != id);
        if (!runEnds)
            continue;
        const double useful = runArea - runDoors - runOpenings;
        if (format == CVxFloor::statText) {
            text +=
                RoomText(stLength, L"Length:") + L" " + ctx.Num(runLength * lf) + L" " + lengthText + L"\r\n";
            text +=
                RoomText(stHeight, L"Height:") + L" " + ctx.Num(runHeight * lf) + L" " + lengthText + L"\r\n";
            text += RoomText(stArea, L"Area:") + L" " + ctx.Num(runArea * af) + L" " + areaText + L"\r\n";
            bool more = false;
            if (runDoors > kPrintedFigure) {
                text += RoomText(stDoorsWindows, L"Doors and Windows") + L": " + ctx.Num(runDoors * af) +
                        L" " + areaText + L"\r\n";
                more = true;
            }
            if (runOpenings > kPrintedFigure) {
                text += RoomText(stOpenings, L"Floor and wall openings") + L": " + ctx.Num(runOpenings * af) +
                        L" " + areaText + L"\r\n";
                more = true;
            }
            if (more)
                text += RoomText(stUseful, L"Total useful area:") + L" " + ctx.Num(useful * af) + L" " +
                        areaText + L"\r\n";
        } else if (format == CVxFloor::statTable) {
            text += L'\t';
            text += ctx.wallWord;
            text += L"\t\t";
            for (double figure :
                 {runLength * lf, runHeight * lf, runArea * af, runDoors * af, runOpenings * af}) {
                text += ctx.Num(figure);
                text += L'\t';
            }
            text += ctx.Num(useful * af);
            text += L"\r\n";
        } else {
            if (outAppearances)
                outAppearances[k] = region->wallAppearance;
            if (outUseful)
                outUseful[k] = useful;
        }
        if (format == CVxFloor::statText || format == CVxFloor::statTable) {
            if (outArea)
                *outArea += runArea;
            if (outHeight)
                *outHeight = std::max(*outHeight, runHeight);
            if (outOpenings)
                *outOpenings += runOpenings;
            if (outDoorsWindows)
                *outDoorsWindows += runDoors;
            if (outUseful)
                *outUseful += useful;
        }
        runLength = runHeight = runArea = runDoors = runOpenings = 0;
    }
    if (format == CVxFloor::statText && segment != -1 && static_cast<size_t>(text.GetLength()) >= start + 2)
        text = text.Left(text.GetLength() - 2);
}

} // namespace

CVxStringW CVxFloor::GetWallsInfoString(const CVxFloorRegion* region, int format, int lengthUnit,
                                        int statUnit, int segment, double* outHeight, double* outOpenings,
                                        double* outDoorsWindows, double* outArea, double* outUseful,
                                        CVxAppearance* outAppearances) const
{
    CVxStringW text;
    if (!region)
        return text;
    const SStatContext ctx(*this);
    AppendWallsInfo(ctx, text, region, format, lengthUnit, statUnit, segment, outHeight, outOpenings,
                    outDoorsWindows, outArea, outUseful, outAppearances);
    return text;
}

CVxStringW CVxFloor::GetFloorStatisticalString(const CVxFloorPlan& plan, int unit, int statUnit) const
{
    const double lf = LengthFactor(unit, statUnit);
    const double af = lf * lf;
    const CVxStringW lengthUnit = L" [" + CVxUnits::GetUnitText(statUnit) + L"]";
    const CVxStringW areaUnit = L" [" + CVxUnits::GetAreaUnitText(statUnit) + L"]";
    CVxLocalize* loc = VX_GetLoc();
    const CVxStringW id =
        loc ? loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_PARTSLISTDLG), kListingId, L"ID")
            : CVxStringW(L"ID");
    const CVxStringW roomWord = RoomText(stRoom, L"Room");

    CVxStringW text = roomWord + L"\t" + NoColon(id) + L"\t" +
                      NoColon(RoomText(stWidth, L"Width:") + lengthUnit) + L"\t" +
                      NoColon(RoomText(stLength, L"Length:") + lengthUnit) + L"\t" +
                      NoColon(RoomText(stHeight, L"Height:") + lengthUnit) + L"\t" +
                      NoColon(RoomText(stArea, L"Area:") + areaUnit) + L"\t" +
                      NoColon(RoomText(stDoorsWindows, L"Doors and Windows") + areaUnit) + L"\t" +
                      NoColon(RoomText(stOpenings, L"Floor and wall openings") + areaUnit) + L"\t" +
                      NoColon(RoomText(stUseful, L"Total useful area:") + areaUnit) + L"\r\n";

    const CVxStringW dimensions = NoColon(RoomText(stDimensions, L"Dimensions:"));
    const CVxStringW totals = Message(kMsgTotals, L"Totals");
    const SStatContext ctx(*this);
    text.Std().reserve(static_cast<size_t>(text.GetLength()) + plan.regions.size() * kRoomTextGuess);
    const auto cells = [&text, &ctx](std::initializer_list<double> figures) {
        for (double figure : figures) {
            text += L'\t';
            text += ctx.Num(figure);
        }
    };
    int number = 0;
    for (const CVxFloorRegion& region : plan.regions) {
        ++number;
        if (region.name.IsEmpty())
            text += roomWord + CVxStringW().sprintf(L" %d", number);
        else
            text += region.name;
        const CVxDRect box = region.innerPolygon.GetBoundingRect();
        const double width = box.right - box.left;
        const double length = box.bottom - box.top;
        const double area = region.innerPolygon.GetArea();
        const double useful = region.GetAreaWithoutHoles();
        const double openings = area - useful;
        text += L'\t';
        text += dimensions;
        cells({width * lf, length * lf});
        text += L'\t';
        cells({area * af});
        text += L'\t';
        cells({openings * af, useful * af});
        text += L"\r\n";

        double height = 0, doors = 0, allOpenings = openings, allArea = area, allUseful = useful;
        AppendWallsInfo(ctx, text, &region, statTable, unit, statUnit, -1, &height, &allOpenings, &doors,
                        &allArea, &allUseful, nullptr);
        text += L'\t';
        text += totals;
        cells({width * lf, length * lf, height * lf, allArea * af, doors * af, allOpenings * af,
               allUseful * af});
        text += L"\r\n\r\n";
    }
    return text;
}

CVxStringW CVxFloor::GetFloorInfoString(const CVxFloorRegion* region, int lengthUnit, int areaUnit,
                                        int statUnit, double totalArea, double outerArea) const
{
    const double lf = LengthFactor(lengthUnit, statUnit);
    const double af = LengthFactor(areaUnit, statUnit) * LengthFactor(areaUnit, statUnit);
    const CVxStringW& lengthText = CVxUnits::GetUnitText(statUnit);
    const CVxStringW& areaText = CVxUnits::GetAreaUnitText(statUnit);
    const auto figure = [](double value, int decimals) {
        return CVxStringW::FromDoubleUsingLocale(value, decimals);
    };
    CVxStringW text = RoomText(stUseful, L"Total useful area:") + L" " + figure(totalArea * af, 4) + L" " +
                      areaText + L"\r\n";
    text +=
        RoomText(stBuiltUp, L"Built-up area:") + L" " + figure(outerArea * af, 4) + L" " + areaText + L"\r\n";
    if (!region)
        return text;
    const CVxDRect box = region->GetInnerBoundingRect();
    text += RoomText(stSelectedRoom, L"Selected Room") + L":\n  ";
    text += RoomText(stDimensions, L"Dimensions:") + L" " + figure((box.right - box.left) * lf, 1) + L" x " +
            figure((box.bottom - box.top) * lf, 1) + L" " + lengthText + L"\n  ";
    text += RoomText(stPerimeter, L"Perimeter:") + L" " +
            figure(region->innerPolygon.GetPerimeter() * lf, 1) + L" " + lengthText + L"\n  ";
    text +=
        RoomText(stArea, L"Area:") + L" " + figure(region->innerPolygon.GetArea() * af, 1) + L" " + areaText;
    return text;
}
