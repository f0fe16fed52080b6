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
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kEps = 1e-7;
constexpr double kPrintedFigure = 1e-5;
constexpr int kLibWallOpening = 106;

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

CVxStringW Num(double value)
{
    return CVxStringW(DblRound2x(value));
}

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

} // namespace

CVxStringW CVxFloor::GetWallsInfoString(const CVxFloorRegion* region, int format, int lengthUnit,
                                        int statUnit, int segment, double* outHeight, double* outOpenings,
                                        double* outDoorsWindows, double* outArea, double* outUseful,
                                        CVxAppearance* outAppearances) const
{
    CVxStringW text;
    if (!region)
        return text;
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
        const CVxWall* wall = m_walls.SafeGetWall(wallIndex);
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
            for (const CVxPart& part : m_objects) {
                if (!part.inUse || !part.snapToWall || !m_layers.IsLayerVisible(part.layer))
                    continue;
                const CVxWall* own = m_walls.SafeGetWall(part.snapWall);
                if (!own)
                    continue;
                if (part.snapWall != wallIndex &&
                    !(own->snapSegment != 0 && own->snapSegment == wall->snapSegment))
                    continue;
                double t = 0;
                const CVxDPoint ref = WallObjectReference(part);
                DblGetDistFromLine(a, b, ref, &t);
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

        const bool last = k == count - 1;
        const bool runEnds = last || (k + 1 < static_cast<int>(region->segmentIds.size()) &&
                                      region->segmentIds[static_cast<size_t>(k + 1)] != id);
        if (!runEnds)
            continue;
        const double useful = runArea - runDoors - runOpenings;
        if (format == statText) {
            text += RoomText(stLength, L"Length:") + L" " + Num(runLength * lf) + L" " + lengthText + L"\r\n";
            text += RoomText(stHeight, L"Height:") + L" " + Num(runHeight * lf) + L" " + lengthText + L"\r\n";
            text += RoomText(stArea, L"Area:") + L" " + Num(runArea * af) + L" " + areaText + L"\r\n";
            bool more = false;
            if (runDoors > kPrintedFigure) {
                text += RoomText(stDoorsWindows, L"Doors and Windows") + L": " + Num(runDoors * af) + L" " +
                        areaText + L"\r\n";
                more = true;
            }
            if (runOpenings > kPrintedFigure) {
                text += RoomText(stOpenings, L"Floor and wall openings") + L": " + Num(runOpenings * af) +
                        L" " + areaText + L"\r\n";
                more = true;
            }
            if (more)
                text += RoomText(stUseful, L"Total useful area:") + L" " + Num(useful * af) + L" " +
                        areaText + L"\r\n";
        } else if (format == statTable) {
            text += L"\t" + Message(kMsgWall, L"Wall") + L"\t\t" + Num(runLength * lf) + L"\t" +
                    Num(runHeight * lf) + L"\t" + Num(runArea * af) + L"\t" + Num(runDoors * af) + L"\t" +
                    Num(runOpenings * af) + L"\t" + Num(useful * af) + L"\r\n";
        } else {
            if (outAppearances)
                outAppearances[k] = region->wallAppearance;
            if (outUseful)
                outUseful[k] = useful;
        }
        if (format == statText || format == statTable) {
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
    if (format == statText && segment != -1 && text.GetLength() >= 2)
        text = text.Left(text.GetLength() - 2);
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
    int number = 0;
    for (const CVxFloorRegion& region : plan.regions) {
        ++number;
        const CVxStringW name =
            region.name.IsEmpty() ? roomWord + L" " + CVxStringW().sprintf(L"%d", number) : region.name;
        const CVxDRect box = region.innerPolygon.GetBoundingRect();
        const double width = box.right - box.left;
        const double length = box.bottom - box.top;
        const double area = region.innerPolygon.GetArea();
        const double useful = region.GetAreaWithoutHoles();
        const double openings = area - useful;
        text += name + L"\t" + dimensions + L"\t" + Num(width * lf) + L"\t" + Num(length * lf) + L"\t\t" +
                Num(area * af) + L"\t\t" + Num(openings * af) + L"\t" + Num(useful * af) + L"\r\n";

        double height = 0, doors = 0, allOpenings = openings, allArea = area, allUseful = useful;
        text += GetWallsInfoString(&region, statTable, unit, statUnit, -1, &height, &allOpenings, &doors,
                                   &allArea, &allUseful, nullptr);
        text += L"\t" + totals + L"\t" + Num(width * lf) + L"\t" + Num(length * lf) + L"\t" +
                Num(height * lf) + L"\t" + Num(allArea * af) + L"\t" + Num(doors * af) + L"\t" +
                Num(allOpenings * af) + L"\t" + Num(allUseful * af) + L"\r\n\r\n";
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
