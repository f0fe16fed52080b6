// How doors and windows hang in walls: the wall that takes them, the face
// they sit on, the run of wall they may slide along, the hand of a door that
// is dragged across, and the piece of wall they cut out.

#include "CVxPart.h"
#include "CVxProject.h"
#include "CVxRoomWalls.h"
#include "VxAngle.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"
#include "VxPartPlacement.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
// Collinear walls of one run: their ends lie this close to the line.
constexpr double kRunTolerance = 0.001;
// The face from whose points a part in the wall's own direction runs into
// the wall: the opposite of the face its normal points to.
constexpr bool kFrontFaceIsB = true;

// Things that open a wall: windows, doors and the library's doors and
// window-like openings.
bool OpensWall(const CVxPart& part)
{
    if (part.type == ptWindow || part.type == ptDoor)
        return true;
    const int lib = part.libObjID;
    return lib == 106 || (lib >= 195 && lib <= 200) || lib == 246 || (lib >= 263 && lib <= 266) ||
           (lib >= 280 && lib <= 283);
}

double DistanceToLine(const CVxDPoint& a, const CVxDPoint& b, const CVxDPoint& p)
{
    const CVxDPoint d = b - a;
    const double len = d.Length();
    if (!(len > 0))
        return p.Distance(a);
    return std::fabs(d.CrossProduct(p - a)) / len;
}

bool OnSameRun(const CVxWall& a, const CVxWall& b)
{
    if (&a == &b)
        return true;
    if (a.snapSegment != b.snapSegment || a.IsCurved() || b.IsCurved())
        return false;
    return DistanceToLine(a.start, a.end, b.start) < kRunTolerance &&
           DistanceToLine(a.start, a.end, b.end) < kRunTolerance &&
           std::fabs(a.cosA * b.sinA - a.sinA * b.cosA) < kRunTolerance;
}

// The parameter of p's projection on the infinite line a-b.
double ProjectOnLine(const CVxDPoint& a, const CVxDPoint& b, const CVxDPoint& p)
{
    const CVxDPoint d = b - a;
    const double len2 = d.LengthSquared();
    if (!(len2 > 0))
        return 0;
    return (p - a).DotProduct(d) / len2;
}

// The parameter of p on the nearer face of a straight wall.
double ParamOnNearerFace(const CVxWall& wall, const CVxDPoint& p)
{
    const double dA = DistanceToLine(wall.cornerA0, wall.cornerA1, p);
    const double dB = DistanceToLine(wall.cornerB0, wall.cornerB1, p);
    return dA < dB ? ProjectOnLine(wall.cornerA0, wall.cornerA1, p)
                   : ProjectOnLine(wall.cornerB0, wall.cornerB1, p);
}

// How far along the wall p lies, in units from the wall's start; a curved
// wall asks its chords in order.
double DistanceAlongWall(const CVxWall& wall, const CVxDPoint& p)
{
    if (wall.subWalls.empty())
        return ParamOnNearerFace(wall, p) * wall.length;
    double before = 0;
    for (size_t i = 0; i < wall.subWalls.size(); ++i) {
        const CVxWall& sub = wall.subWalls[i];
        double t = ParamOnNearerFace(sub, p);
        if (i < wall.subFlipped.size() && wall.subFlipped[i])
            t = 1 - t;
        if (t > -EPS && t - 1 < EPS)
            return before + t * sub.length;
        before += sub.length;
    }
    double t = 0;
    wall.GetDistFromWall(p.x, p.y, &t);
    return t * wall.GetBezierLength();
}

double LeastSize()
{
    const CVxProject* project = VX_GetActiveProject();
    const double baseZoom = project ? project->m_baseZoom : 1.0;
    return baseZoom > 0 ? 1.0 / baseZoom : 1.0;
}

// Where a part hangs along its wall: the fraction of the wall's length, the
// limits of its run and the length that turns fractions into units.
struct SRun
{
    const CVxWall* wall = nullptr;
    double position = 0;
    double lower = 0;
    double upper = 1;
    double length = 1;
    double half = 0;
};

// The part's first corner runs along the wall from the position.
void ApplyFrontRule(CVxPart& part, SRun& run, bool centred)
{
    if (centred)
        run.position -= run.half;
    run.position = std::max(run.position, run.lower);
    if ((run.upper - run.position) * run.length < part.width)
        run.position = run.upper - part.width / run.length;
    const CVxDPoint p = run.wall->GetPointOnWallBaseRect(run.position, kFrontFaceIsB);
    part.x = p.x;
    part.y = p.y;
    part.rotation = run.wall->GetRotationAtPoint(run.position + run.half);
    part.snapWallSide = 0;
}

// The part faces the other way and runs back along the wall from the
// position.
void ApplyBackRule(CVxPart& part, SRun& run, bool centred)
{
    if (centred)
        run.position += run.half;
    run.position = std::min(run.position, run.upper);
    if ((run.position - run.lower) * run.length < part.width)
        run.position = run.lower + part.width / run.length;
    const CVxDPoint p = run.wall->GetPointOnWallBaseRect(run.position, !kFrontFaceIsB);
    part.x = p.x;
    part.y = p.y;
    part.rotation = run.wall->GetRotationAtPoint(run.position - run.half) + 180;
    part.snapWallSide = 180;
}

// A door keeps its quarter turn against the wall. Its square swing lies
// beside the wall with the hinge edge on one face: the front face for side
// 0, the back face for 180, and the other face for 90 and 270, where the
// leaf opens to the side the door faces.
void SnapDoor(CVxPart& part, SRun& run, bool centred)
{
    double quarter = std::round(VX_NormalizeAngle(part.rotation - part.wallRotation) / 90) * 90;
    if (!std::isfinite(quarter))
        quarter = 0;
    const int side = static_cast<int>(std::fmod(quarter + 720, 360));
    const bool front = side == 0 || side == 90;
    if (front)
        ApplyFrontRule(part, run, centred);
    else
        ApplyBackRule(part, run, centred);
    const double wallTurn = part.rotation - (front ? 0 : 180);
    part.rotation = wallTurn + side;
    part.snapWallSide = static_cast<int16_t>(side);

    const bool hingeOnFrontFace = side == 0 || side == 270;
    const CVxDPoint hinge = run.wall->GetPointOnWallBaseRect(run.position, hingeOnFrontFace == kFrontFaceIsB);
    const double r = part.rotation * kDegToRad;
    const CVxDPoint depthAxis(-std::sin(r), std::cos(r));
    const CVxDPoint first = hinge - depthAxis * part.width;
    part.x = first.x;
    part.y = first.y;
}

// A window or a library door: the side follows the angle against the wall,
// and with a twin of the other hand the part may change hands.
void SnapOpening(CVxPart& part, SRun& run, bool centred, bool mayMirror)
{
    const double turned = std::trunc(VX_NormalizeAngle(part.rotation - part.wallRotation));
    const double d = std::isfinite(turned) ? turned : 0;
    const int twin = part.GetSnapMirrorPartId();
    if (twin == -1 || !mayMirror) {
        if (std::fabs(180 - d) < 90)
            ApplyBackRule(part, run, centred);
        else
            ApplyFrontRule(part, run, centred);
        return;
    }
    if (std::fabs(180 - d) < 45) {
        ApplyBackRule(part, run, centred);
    } else if (std::fabs(90 - d) < 45 || std::fabs(270 - d) < 45) {
        const int old = part.libObjID;
        part.libObjID = twin;
        const bool lowerHand = old <= twin;
        const bool frontRule = std::fabs(90 - d) < 45 ? lowerHand : !lowerHand;
        if (frontRule)
            ApplyFrontRule(part, run, centred);
        else
            ApplyBackRule(part, run, centred);
    } else {
        ApplyFrontRule(part, run, centred);
    }
}
} // namespace

void CVxPart::SnapToWall(CVxRoomWalls* walls, double px, double py, bool centred, bool keepWall,
                         bool mayMirror)
{
    if (!walls || !snapToWall || !std::isfinite(px) || !std::isfinite(py))
        return;
    // A door is placed by its hinge corner, the others by their first one.
    CVxDPoint corners[4];
    GetRect(corners, 1.0, false);
    const CVxDPoint wanted(px, py);
    const bool byHinge = type == ptDoor && !centred;
    const CVxDPoint ref = byHinge ? wanted + (corners[3] - corners[0]) : wanted;
    const CVxDPoint far = wanted + ((byHinge ? corners[1] : corners[2]) - corners[0]);

    SRun run;
    int wallIndex = -1;
    if (keepWall) {
        if (const CVxWall* kept = walls->SafeGetWall(snapWall)) {
            if (kept->GetDistFromWall(ref.x, ref.y, &run.position) != -1)
                wallIndex = snapWall;
        }
    }
    if (wallIndex < 0)
        wallIndex = walls->GetNearestWallEx(ref.x, ref.y, &run.position, wallRotation, far.x, far.y);
    run.wall = walls->SafeGetWall(wallIndex);
    if (!run.wall || !std::isfinite(run.position))
        return;
    wallRotation = run.wall->GetRotationAtPoint(run.position);

    for (const CVxWall& other : walls->walls) {
        if (&other == run.wall || !OnSameRun(*run.wall, other))
            continue;
        for (const CVxDPoint& end : {other.start, other.end}) {
            const double t = ProjectOnLine(run.wall->start, run.wall->end, end);
            run.lower = std::min(run.lower, t);
            run.upper = std::max(run.upper, t);
        }
    }
    run.length = run.wall->GetBezierLength();
    if (!(run.length > EPS) || !std::isfinite(run.length) || !std::isfinite(width))
        return;
    run.half = 0.5 * width / run.length;

    if (!OpensWall(*this))
        return;
    if (type == ptDoor)
        SnapDoor(*this, run, centred);
    else
        SnapOpening(*this, run, centred, mayMirror);

    const double thick = run.wall->visible ? run.wall->thickness : 0.0;
    height = thick < EPS ? LeastSize() : thick;
    rotation = VX_NormalizeAngle(rotation);
    const double quarters = rotation / 90;
    if (std::fabs(quarters - std::round(quarters)) * 90 < EPS) {
        if (const CVxProject* project = VX_GetActiveProject())
            project->SubUnitCorrection(x, y, VX_DF_DECIMAL);
        DblRound2(height);
    }
    snapWall = static_cast<int16_t>(wallIndex & 0xFFFF);
    InvalidateCache();
}

CVxDRect CVxPart::GetWallOpeningRect(const CVxRoomWalls* walls, int wallIndex, bool clip) const
{
    const CVxDRect none;
    if (!walls || !snapToWall || !inUse || type == ptMeasLine)
        return none;
    const CVxWall* own = walls->SafeGetWall(snapWall);
    const CVxWall* target = walls->SafeGetWall(wallIndex);
    if (!own || !target || !OnSameRun(*own, *target))
        return none;

    // The edge that lies along the wall, from the corner that faces it.
    CVxDPoint corners[4];
    GetRect(corners, 1.0, false);
    int from = 0;
    int to = 1;
    if (type == ptDoor) {
        switch (snapWallSide) {
        case 90:
            from = 3;
            to = 0;
            break;
        case 180:
            from = 2;
            to = 3;
            break;
        case 270:
            from = 0;
            to = 3;
            break;
        default:
            from = 3;
            to = 2;
            break;
        }
    }
    const double start = DistanceAlongWall(*target, corners[from]);
    const double other = DistanceAlongWall(*target, corners[to]);
    const double end = other < start ? start - width : start + width;
    CVxDRect rect(std::min(start, end), z, std::max(start, end), z + zHeight);
    if (!std::isfinite(rect.left) || !std::isfinite(rect.right) || !std::isfinite(rect.top) ||
        !std::isfinite(rect.bottom))
        return none;
    if (clip) {
        const double length = target->GetBezierLength();
        if (rect.left >= length || rect.right <= 0)
            return none;
    }
    return rect;
}
