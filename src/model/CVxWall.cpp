#include "CVxWall.h"

#include "CVxDPolygon.h"
#include "CVxOptions.h"
#include "VxAngle.h"
#include "VxGeometryFunctions.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kDegToRad = std::numbers::pi / 180.0;
// The chords in which GetDistFromLine measures a curved wall.
constexpr int kDistChords = 8;

CVxDPoint DirectionAt(double degrees)
{
    return CVxDPoint(std::cos(degrees * kDegToRad), std::sin(degrees * kDegToRad));
}

// Side A's line runs from cornerA0 (0) to cornerA1 (1), side B's from
// cornerB1 (0) to cornerB0 (1): both run round the wall in the same sense.
CVxDPoint PointOnSide(const CVxDPoint& from, const CVxDPoint& to, double t)
{
    return from + (to - from) * t;
}

// Whether a joint found at parameter t on a side line lies on the near part
// of the wall: beyond the wall's far end it would cut the wall away.
bool WithinFarEnd(double t, bool farEndIsOne)
{
    return farEndIsOne ? (t - 1 < EPS) : (t > -EPS);
}

// Distances are compared in ten-thousandths of a unit, so that two faces at
// the same distance within that resolution tie.
double DistanceUnits(double d)
{
    return std::floor(10000.0 * d + 0.5);
}
} // namespace

CVxWall::CVxWall()
{
    fillStyle = VX_GetOptions()->m_defWallFillStyle;
    for (int i = 0; i < 4; ++i) {
        interParam[i] = kNaN;
        interAngle[i] = 360;
    }
}

bool CVxWall::Set(double x1, double y1, double x2, double y2, int alignment, double thick,
                  double heightAtStart, double heightAtEnd, bool isVisible, bool isCurved)
{
    start.Set(x1, y1);
    end.Set(x2, y2);
    align = alignment;
    thickness = thick;
    startHeight = heightAtStart;
    endHeight = heightAtEnd;
    visible = isVisible;
    curved = isCurved;
    return RecalculateProperites();
}

bool CVxWall::RecalculateProperites()
{
    bool reversed = false;
    if (start.x > end.x || (start.x == end.x && start.y > end.y)) {
        // Entered right to left: the same wall stored the other way round,
        // its sides exchanged so that it keeps its place and its faces.
        std::swap(start, end);
        std::swap(startHeight, endHeight);
        std::swap(appearanceA, appearanceB);
        if (align == ALIGN_SIDE_A)
            align = ALIGN_SIDE_B;
        else if (align == ALIGN_SIDE_B)
            align = ALIGN_SIDE_A;
        customOffset = thickness - customOffset;
        std::swap(ctrlDist0, ctrlDist1);
        const double angle0 = ctrlAngle0;
        ctrlAngle0 = ctrlAngle1 + 180;
        ctrlAngle1 = angle0 + 180;
        reversed = true;
    }

    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    const double length2 = dx * dx + dy * dy;
    if (length2 == 0) {
        cosA = 1;
        sinA = 0;
        length = 1;
        dxOverLen2 = 1;
        dyOverLen2 = 0;
        angle = 0;
    } else {
        length = std::sqrt(length2);
        cosA = dx / length;
        sinA = dy / length;
        dxOverLen2 = dx / length2;
        dyOverLen2 = dy / length2;
        angle = std::acos(std::clamp(cosA, -1.0, 1.0)) / kDegToRad;
        if (dy < 0)
            angle = -angle;
    }

    if (visible) {
        const CVxDPoint n = CVxDPoint(-sinA, cosA) * thickness;
        bool known = true;
        CVxDPoint offsetA, offsetB;
        switch (align) {
        case ALIGN_SIDE_A:
            offsetB = -n;
            break;
        case ALIGN_CENTER:
            offsetA = n / 2;
            offsetB = -n / 2;
            break;
        case ALIGN_SIDE_B:
            offsetA = n;
            break;
        case ALIGN_CUSTOM: {
            const double f = std::fabs(thickness) < EPS ? 0.0 : customOffset / thickness;
            offsetA = n * f;
            offsetB = -(n * (1 - f));
            break;
        }
        default:
            // An alignment without a rule (a mirrored custom one) keeps the
            // corners until the wall is edited.
            known = false;
            break;
        }
        if (known) {
            cornerA0 = start + offsetA;
            cornerA1 = end + offsetA;
            cornerB0 = start + offsetB;
            cornerB1 = end + offsetB;
        }
    } else {
        cornerA0 = cornerB0 = start;
        cornerA1 = cornerB1 = end;
    }

    FillBezierSubWalls();
    // Until the next rebuild the wall stands alone with square ends.
    ResetIntersections();
    FinishIntersections();
    return reversed;
}

void CVxWall::ComputeControlPoints(CVxDPoint& out0, CVxDPoint& out1, const CVxDPoint& a, const CVxDPoint& b,
                                   double len) const
{
    out0 = a + DirectionAt(angle + ctrlAngle0) * (len * ctrlDist0);
    out1 = b + DirectionAt(angle + ctrlAngle1) * (len * ctrlDist1);
}

void CVxWall::FillBezierSubWalls()
{
    subWalls.clear();
    subFlipped.clear();
    if (!curved)
        return;
    CVxDPoint c0, c1;
    ComputeControlPoints(c0, c1, start, end, length);
    subWalls.reserve(subWallCount);
    subFlipped.reserve(subWallCount);
    CVxDPoint previous = start;
    for (int i = 1; i <= subWallCount; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(subWallCount);
        CVxDPoint sample;
        GetBezierInterpolation(sample, start, c0, c1, end, t);
        const double height = (1 - t) * startHeight + t * endHeight;
        CVxWall sub;
        sub.customOffset = customOffset;
        sub.lineStyle = lineStyle;
        sub.fillStyle = fillStyle;
        const bool flipped = sub.Set(previous.x, previous.y, sample.x, sample.y, align, thickness, height,
                                     height, visible, false);
        subWalls.push_back(std::move(sub));
        subFlipped.push_back(flipped);
        previous = sample;
    }
}

void CVxWall::ResetIntersections()
{
    for (int i = 0; i < 4; ++i) {
        interParam[i] = kNaN;
        interAngle[i] = 360;
    }
    for (CVxWall& sub : subWalls)
        sub.ResetIntersections();
}

bool CVxWall::SetInter(int side, double t, bool atStart, double jointAngle, bool hasPoint)
{
    const double turn = VX_NormalizeAngle(atStart ? jointAngle : -jointAngle);
    int corner;
    if (side == 0)
        corner = atStart ? CORNER_A_START : CORNER_A_END;
    else
        corner = atStart ? CORNER_B_START : CORNER_B_END;
    // Of several walls at one vertex the nearest in angular order trims the
    // corner: it turns least from this wall.
    if (!(turn - interAngle[corner] < EPS))
        return false;
    interAngle[corner] = turn;
    interParam[corner] = hasPoint ? t : kNaN;
    return true;
}

void CVxWall::CalculateIntersection(CVxWall& other, bool isSubWall)
{
    if (!visible || !other.visible)
        return;
    CVxWall* self = this;
    CVxWall* peer = &other;
    // A curved wall meets its neighbours only with its first and last chord.
    if (!self->subWalls.empty()) {
        self->subWalls.front().CalculateIntersection(other, true);
        self = &self->subWalls.back();
        isSubWall = true;
    }
    if (!peer->subWalls.empty()) {
        self->CalculateIntersection(peer->subWalls.front(), true);
        peer = &peer->subWalls.back();
        isSubWall = true;
    }
    if (self->subWalls.empty() && peer->subWalls.empty())
        self->JoinStraight(*peer, isSubWall);
}

void CVxWall::JoinStraight(CVxWall& other, bool isSubWall)
{
    bool thisAtStart, otherAtStart;
    if (start == other.end) {
        thisAtStart = true;
        otherAtStart = false;
    } else if (end == other.start) {
        thisAtStart = false;
        otherAtStart = true;
    } else if (start == other.start) {
        thisAtStart = true;
        otherAtStart = true;
    } else if (end == other.end) {
        thisAtStart = false;
        otherAtStart = false;
    } else {
        return;
    }

    const double leaveThis = thisAtStart ? angle : angle + 180;
    const double leaveOther = otherAtStart ? other.angle : other.angle + 180;
    const double joint = leaveOther - leaveThis;

    if (std::fabs(angle - other.angle) < EPS && thisAtStart != otherAtStart) {
        // One wall continues the other. Equal walls merge without a seam;
        // walls of another thickness or alignment keep their square ends.
        const bool same = align == other.align && std::fabs(thickness - other.thickness) < EPS;
        SetInter(0, thisAtStart ? 0 : 1, thisAtStart, 180, same);
        SetInter(2, thisAtStart ? 1 : 0, thisAtStart, 180, same);
        other.SetInter(0, otherAtStart ? 0 : 1, otherAtStart, 180, same);
        other.SetInter(2, otherAtStart ? 1 : 0, otherAtStart, 180, same);
        return;
    }

    struct SVxSide
    {
        const CVxDPoint* from;
        const CVxDPoint* to;
        int side;
        // Whether parameter 1 of the line lies at the wall's far end.
        bool farEndIsOne;
    };
    auto sideA = [](const CVxWall& w, bool atStart) { return SVxSide{&w.cornerA0, &w.cornerA1, 0, atStart}; };
    auto sideB = [](const CVxWall& w, bool atStart) {
        return SVxSide{&w.cornerB1, &w.cornerB0, 2, !atStart};
    };
    auto join = [&](const SVxSide& mine, const SVxSide& theirs, double angleMine, double angleTheirs) {
        double t = 0, u = 0;
        if (!DblFindInter(mine.from, mine.to, theirs.from, theirs.to, &t, &u))
            return;
        // Neighbouring chords of a curve may cross anywhere.
        if (!isSubWall && (!WithinFarEnd(t, mine.farEndIsOne) || !WithinFarEnd(u, theirs.farEndIsOne)))
            return;
        if (SetInter(mine.side, t, thisAtStart, angleMine, true))
            other.SetInter(theirs.side, u, otherAtStart, angleTheirs, true);
    };

    if (thisAtStart != otherAtStart) {
        join(sideA(*this, thisAtStart), sideA(other, otherAtStart), joint, -joint);
        join(sideB(*this, thisAtStart), sideB(other, otherAtStart), -joint, joint);
    } else {
        join(sideA(*this, thisAtStart), sideB(other, otherAtStart), joint, joint);
        join(sideB(*this, thisAtStart), sideA(other, otherAtStart), -joint, -joint);
    }
}

void CVxWall::FinishIntersections()
{
    auto onSide = [](const CVxDPoint& from, const CVxDPoint& to, double t, const CVxDPoint& untrimmed) {
        return std::isnan(t) ? untrimmed : PointOnSide(from, to, t);
    };
    outline[OUT_START] = start;
    outline[OUT_A_START] = onSide(cornerA0, cornerA1, interParam[CORNER_A_START], cornerA0);
    outline[OUT_A_END] = onSide(cornerA0, cornerA1, interParam[CORNER_A_END], cornerA1);
    outline[OUT_END] = end;
    outline[OUT_B_END] = onSide(cornerB1, cornerB0, interParam[CORNER_B_END], cornerB1);
    outline[OUT_B_START] = onSide(cornerB1, cornerB0, interParam[CORNER_B_START], cornerB0);

    for (size_t i = 0; i + 1 < subWalls.size(); ++i)
        subWalls[i].CalculateIntersection(subWalls[i + 1], true);
    for (CVxWall& sub : subWalls)
        sub.FinishIntersections();
}

bool CVxWall::GetBezierControlPoints(CVxDPoint& out0, CVxDPoint& out1) const
{
    if (!curved)
        return false;
    ComputeControlPoints(out0, out1, start, end, length);
    return true;
}

void CVxWall::SetBezierControlPoints(const CVxDPoint* c0, const CVxDPoint* c1)
{
    auto store = [this](const CVxDPoint* c, const CVxDPoint& from, double& dist, double& ctrlAngle) {
        if (!c || *c == from)
            return;
        const CVxDPoint d = *c - from;
        dist = d.Length() / length;
        ctrlAngle = VX_NormalizeAngle(std::atan2(d.y, d.x) / kDegToRad - angle);
    };
    store(c0, start, ctrlDist0, ctrlAngle0);
    store(c1, end, ctrlDist1, ctrlAngle1);
    FillBezierSubWalls();
    ResetIntersections();
    FinishIntersections();
}

bool CVxWall::GetBezierControlPointsOnLine(CVxDPoint& out0, CVxDPoint& out1, const CVxDPoint& a,
                                           const CVxDPoint& b) const
{
    if (!curved)
        return false;
    ComputeControlPoints(out0, out1, a, b, a.Distance(b));
    return true;
}

CVxDPoint CVxWall::GetPointOnLine(double t) const
{
    CVxDPoint c0, c1;
    if (!GetBezierControlPoints(c0, c1))
        return start + (end - start) * t;
    CVxDPoint out;
    GetBezierInterpolation(out, start, c0, c1, end, t);
    return out;
}

double CVxWall::GetRotationAtPoint(double t) const
{
    CVxDPoint c0, c1;
    if (!GetBezierControlPoints(c0, c1))
        return angle;
    return GetBezierInterpolationAngle(start, c0, c1, end, t);
}

double CVxWall::GetBezierLength() const
{
    if (!subWalls.empty()) {
        double sum = 0;
        for (const CVxWall& sub : subWalls)
            sum += sub.length;
        return sum;
    }
    CVxDPoint c0, c1;
    if (!GetBezierControlPoints(c0, c1))
        return length;
    double sum = 0;
    CVxDPoint previous = start;
    for (int i = 1; i <= subWallCount; ++i) {
        CVxDPoint sample;
        GetBezierInterpolation(sample, start, c0, c1, end, static_cast<float>(i) / subWallCount);
        sum += previous.Distance(sample);
        previous = sample;
    }
    return sum;
}

double CVxWall::GetDistFromLine(const CVxDPoint* a, const CVxDPoint* b, double x, double y,
                                double* outT) const
{
    if (!a || !b) {
        a = &start;
        b = &end;
    }
    const CVxDPoint p(x, y);
    double t = 0;
    CVxDPoint c0, c1;
    const bool hasCurve =
        a == &start ? GetBezierControlPoints(c0, c1) : GetBezierControlPointsOnLine(c0, c1, *a, *b);
    double dist = 0;
    if (hasCurve) {
        dist = std::numeric_limits<double>::infinity();
        CVxDPoint previous = *a;
        for (int i = 0; i < kDistChords; ++i) {
            CVxDPoint next;
            GetBezierInterpolation(next, *a, c0, c1, *b, static_cast<double>(i + 1) / kDistChords);
            double tc = 0;
            const double d = DblGetDistFromLine(previous, next, p, &tc);
            // Only the first and last chords may reach beyond the curve's ends.
            if (i > 0)
                tc = std::max(tc, 0.0);
            if (i < kDistChords - 1)
                tc = std::min(tc, 1.0);
            if (d < dist) {
                dist = d;
                t = (tc + i) / kDistChords;
            }
            previous = next;
        }
    } else {
        dist = DblGetDistFromLine(*a, *b, p, &t);
    }
    // Beyond either end the distance is to that end.
    if (t < 0) {
        dist = p.Distance(*a);
        t = 0;
    } else if (t > 1) {
        dist = p.Distance(*b);
        t = 1;
    }
    if (outT)
        *outT = t;
    return dist;
}

double CVxWall::GetDistFromWall(double x, double y, double* outT) const
{
    if (subWalls.empty()) {
        double tB = 0, tA = 0;
        const double dB = DistanceUnits(GetDistFromLine(&cornerB0, &cornerB1, x, y, &tB));
        const double dA = DistanceUnits(GetDistFromLine(&cornerA0, &cornerA1, x, y, &tA));
        const bool sideA = dA < dB;
        if (outT)
            *outT = sideA ? tA : tB;
        return sideA ? dA : dB;
    }
    double best = 0, bestT = 0, before = 0, bestBefore = 0;
    int bestIndex = -1;
    for (size_t i = 0; i < subWalls.size(); ++i) {
        double t = 0;
        const double d = subWalls[i].GetDistFromWall(x, y, &t);
        if (bestIndex < 0 || d < best) {
            best = d;
            bestT = t;
            bestIndex = static_cast<int>(i);
            bestBefore = before;
        }
        before += subWalls[i].length;
    }
    if (outT) {
        const CVxWall& sub = subWalls[static_cast<size_t>(bestIndex)];
        const double along = subFlipped[static_cast<size_t>(bestIndex)] ? 1 - bestT : bestT;
        const double total = GetBezierLength();
        *outT = total > 0 ? (along * sub.length + bestBefore) / total : 0;
    }
    return best;
}

CVxDPoint CVxWall::GetPointOnWallBaseRect(double t, bool sideB) const
{
    if (subWalls.empty())
        return sideB ? PointOnSide(cornerB0, cornerB1, t) : PointOnSide(cornerA0, cornerA1, t);
    const double total = GetBezierLength();
    double target = t * total;
    for (size_t i = 0; i < subWalls.size(); ++i) {
        const CVxWall& sub = subWalls[i];
        if (target > sub.length && i + 1 < subWalls.size()) {
            target -= sub.length;
            continue;
        }
        double local = sub.length > 0 ? target / sub.length : 0;
        // A reversed chord has its sides exchanged too.
        bool side = sideB;
        if (subFlipped[i]) {
            local = 1 - local;
            side = !side;
        }
        return sub.GetPointOnWallBaseRect(local, side);
    }
    return start;
}

void CVxWall::GetBoundingRect(CVxDRect& out) const
{
    if (subWalls.empty()) {
        out.Set(start.x, start.y, end.x, end.y);
        out.NormalizeRect();
        return;
    }
    subWalls.front().GetBoundingRect(out);
    for (size_t i = 1; i < subWalls.size(); ++i) {
        CVxDRect rect;
        subWalls[i].GetBoundingRect(rect);
        out.UnionRect(rect);
    }
}

double CVxWall::GetMaxZHeight() const
{
    return std::max(startHeight, endHeight);
}

double CVxWall::GetZHeightAtPos(double x, double y) const
{
    if (x == start.x && y == start.y)
        return startHeight;
    if (x == end.x && y == end.y)
        return endHeight;
    const double t = start.Distance(CVxDPoint(x, y)) / length;
    return startHeight + (endHeight - startHeight) * t;
}

void CVxWall::Move(double dx, double dy)
{
    start.Offset(dx, dy);
    end.Offset(dx, dy);
    DblRound2(start.x);
    DblRound2(start.y);
    DblRound2(end.x);
    DblRound2(end.y);
    RecalculateProperites();
}

void CVxWall::Scale(double sx, double sy, double sz)
{
    start.Scale(sx, sy);
    end.Scale(sx, sy);
    startHeight *= sz;
    endHeight *= sz;
    thickness *= sx;
    customOffset *= sx;
    for (double* value :
         {&start.x, &start.y, &end.x, &end.y, &startHeight, &endHeight, &thickness, &customOffset})
        DblRound2(*value);
    RecalculateProperites();
}

void CVxWall::Rotate(double degrees)
{
    start.Rotate(degrees);
    end.Rotate(degrees);
    for (double* value : {&start.x, &start.y, &end.x, &end.y})
        DblRound2(*value);
    Set(start.x, start.y, end.x, end.y, align, thickness, startHeight, endHeight, visible, curved);
}

void CVxWall::Mirror(bool aroundX)
{
    if (aroundX) {
        start.y = -start.y;
        end.y = -end.y;
    } else {
        start.x = -start.x;
        end.x = -end.x;
    }
    align = 2 - align;
    std::swap(appearanceA, appearanceB);
    ctrlAngle0 = VX_NormalizeAngle(360 - ctrlAngle0);
    ctrlAngle1 = VX_NormalizeAngle(360 - ctrlAngle1);
    Set(start.x, start.y, end.x, end.y, align, thickness, startHeight, endHeight, visible, curved);
}

CVxStringW CVxWall::SaveToString() const
{
    auto number = [](double value) { return DblSaveW(value); };
    auto integer = [](int value) {
        CVxStringW text;
        text.sprintf(L"%d", value);
        return text;
    };
    const CVxStringW fields[stringFieldCount] = {
        number(start.x),      number(start.y),      number(end.x),       number(end.y),
        integer(align),       number(thickness),    number(startHeight), number(endHeight),
        integer(appearanceA), integer(appearanceB), integer(lineStyle),  integer(fillStyle),
        integer(visible),     integer(curved),      number(ctrlDist0),   number(ctrlAngle0),
        number(ctrlDist1),    number(ctrlAngle1),   number(customOffset)};
    CVxStringW text = fields[0];
    for (int i = 1; i < stringFieldCount; ++i) {
        text += L'|';
        text += fields[i];
    }
    return text;
}

bool CVxWall::LoadFromString(const CVxStringW& text)
{
    // What an old project leaves out: its walls are visible, straight and
    // level, and have no surfaces of their own.
    endHeight = -1;
    appearanceA = -1;
    appearanceB = -1;
    lineStyle = 0;
    visible = true;

    CVxStringW fields[stringFieldCount];
    int count = 0;
    int pos = 0;
    const int textLength = text.GetLength();
    while (count < stringFieldCount && pos < textLength) {
        int next = text.Find(L'|', pos);
        if (next < 0)
            next = textLength;
        fields[count++] = text.Mid(pos, next - pos);
        pos = next + 1;
    }

    auto readDouble = [&](int i, double& value) {
        if (i < count)
            value = DblLoad(fields[i], value);
    };
    auto readInt = [&](int i, int32_t& value) {
        if (i < count)
            value = fields[i].ToIntDef(value);
    };
    auto readBool = [&](int i, bool& value) {
        if (i < count)
            value = fields[i].ToBoolDef(value);
    };
    readDouble(0, start.x);
    readDouble(1, start.y);
    readDouble(2, end.x);
    readDouble(3, end.y);
    readInt(4, align);
    readDouble(5, thickness);
    readDouble(6, startHeight);
    readDouble(7, endHeight);
    readInt(8, appearanceA);
    readInt(9, appearanceB);
    readInt(10, lineStyle);
    readInt(11, fillStyle);
    readBool(12, visible);
    readBool(13, curved);
    readDouble(14, ctrlDist0);
    readDouble(15, ctrlAngle0);
    readDouble(16, ctrlDist1);
    readDouble(17, ctrlAngle1);
    readDouble(18, customOffset);
    if (endHeight == -1)
        endHeight = startHeight;
    RecalculateProperites();
    return count >= 4;
}

CVxStringW CVxWall::GetString() const
{
    CVxStringW text;
    text.sprintf(L"wall (%.2f, %.2f)-(%.2f, %.2f) align %d thickness %.2f height %.2f-%.2f angle %.2f%s%s",
                 start.x, start.y, end.x, end.y, align, thickness, startHeight, endHeight, angle,
                 visible ? L"" : L" invisible", curved ? L" curved" : L"");
    return text;
}
