#include "CVxStairsPayload.h"

#include "CVxDC.h"
#include "CVxPart.h"
#include "CVxStringTokenizer.h"
#include "VxColorWord.h"
#include "VxGMDraw.h"
#include "VxNumbers.h"
#include "VxPointInRect.h"

#include <algorithm>
#include <cmath>

namespace {

// A field that isn't a number keeps what stood before.
int ReadSteps(const CVxStringW& field, int before)
{
    CVxStringW text = field;
    const int steps = text.Trim().ToIntDef(before);
    return std::clamp(steps, 1, CVxStairsPayload::maxSteps);
}

} // namespace

CVxStringW CVxStairsPayload::SaveToString() const
{
    return CVxStringW().sprintf(L"%d|", steps);
}

bool CVxStairsPayload::LoadFromString(const CVxStringW& text)
{
    CVxStringTokenizer fields(text, L'|');
    if (fields.IsNextToken())
        steps = ReadSteps(fields.GetNextToken(), steps);
    return true;
}

bool CVxStairsPayload::DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* c, CVxDPoint* /*points*/, bool fill)
{
    if (!part || !dc || !c)
        return false;
    if (!fill)
        dc->SelectBrush(CVxDC::brushNull, 0);
    dc->Polygon(c, 4);
    if (!fill)
        dc->SelectOldBrush();

    const int n = std::max(1, steps);
    for (int i = 1; i < n; ++i) {
        VxPOINT a, b;
        GetPointInRect(a, c, i, n, 1, 1);
        GetPointInRect(b, c, i, n, 0, 1);
        dc->Line(a, b);
    }

    // The arrow that points up the flight, its wings a fifteenth of the
    // width apart from the centre line whatever the depth.
    int h = part->height > 0 ? static_cast<int>(part->width / 15 * 100 / part->height) : 0;
    h = std::clamp(h, 0, 50);
    VxPOINT arrow[6];
    GetPointInRect(arrow[0], c, 15, 16, 1, 2);
    GetPointInRect(arrow[1], c, 1, 16, 1, 2);
    GetPointInRect(arrow[2], c, 1, 9, 50 - h, 100);
    GetPointInRect(arrow[3], c, 1, 9, 50 + h, 100);
    GetPointInRect(arrow[4], c, 1, 16, 1, 2);
    GetPointInRect(arrow[5], c, 15, 16, 1, 2);
    dc->Polygon(arrow, 6);

    if (part->subType == subTypeSideBoards) {
        VxPOINT board[4];
        GetPointInRectLRc(board, c, 0, 1, 1, 0, 1, 30);
        dc->Polygon(board, 4);
        GetPointInRectLRc(board, c, 0, 1, 1, 29, 30, 30);
        dc->Polygon(board, 4);
    }
    return true;
}

bool CVxStairsPayload::DrawPartSide(CVxPart* part, CVxDC* dc, EVxObjSide side, int /*units*/, VxPOINT* c,
                                    bool fill, bool /*outline*/, int /*flags*/)
{
    if (!part || !dc || !c || part->subType < subTypeSolid || part->subType > subTypeSideBoards)
        return false;
    const int n = std::max(1, steps);
    if (side == OBJ_SIDE_LEFT) {
        dc->Polygon(c, 4);
        return true;
    }
    if (side == OBJ_SIDE_RIGHT) {
        if (!fill)
            dc->SelectBrush(CVxDC::brushNull, 0);
        dc->Polygon(c, 4);
        if (!fill)
            dc->SelectOldBrush();
        for (int i = 1; i < n; ++i) {
            VxPOINT a, b;
            GetPointInRectL(a, c, 0, 1, i, n);
            GetPointInRectL(b, c, 1, 1, i, n);
            dc->Line(a, b);
        }
        return true;
    }
    // Front and back: the profile of the flight, up and along in turn, from
    // the bottom corner on the left (front) or on the right (back).
    const bool fromRight = side == OBJ_SIDE_BACK;
    const auto u = [&](double along) { return fromRight ? 1 - along : along; };
    const double a = 1.0 / n;
    if (part->subType == subTypeOpen) {
        // Open treads, each a board under its nosing.
        for (int k = 0; k < n; ++k) {
            VxPOINT q[4];
            GetPointInRectLRc(q, c, u(k * a), 1 - (k + 1) * a, u((k + 1) * a), 1 - (k + 0.7) * a);
            dc->Polygon(q, 4);
        }
    } else {
        auto at = [&](int along, int up) {
            VxPOINT p;
            GetPointInRectL(p, c, fromRight ? n - along : along, n, n - up, n);
            return p;
        };
        dc->MoveTo(at(0, 0));
        for (int k = 0; k < n; ++k) {
            dc->LineTo(at(k, k + 1));
            dc->LineTo(at(k + 1, k + 1));
        }
    }
    if (part->subType == subTypeOpen || part->subType == subTypeSideBoards) {
        // The edges of the stringer or the cheek that runs along the pitch.
        const double below = part->subType == subTypeOpen ? 0.6 * a : 0.3 * a;
        const double above = part->subType == subTypeOpen ? 1.15 * a : 1.3 * a;
        VxPOINT p, q;
        GetPointInRectL(p, c, u(below), 1.0);
        GetPointInRectL(q, c, u(1.0), below);
        dc->Line(p, q);
        if (above < 1) {
            GetPointInRectL(p, c, u(0.0), 1 - above);
            GetPointInRectL(q, c, u(1 - above), 0.0);
            dc->Line(p, q);
        }
    }
    return true;
}

CVxStringW CVxBanisterStairsPayload::SaveToString() const
{
    return CVxStringW().sprintf(L"%d|", steps) + DblSaveW(ratio);
}

bool CVxBanisterStairsPayload::LoadFromString(const CVxStringW& text)
{
    CVxStringTokenizer fields(text, L'|');
    if (fields.IsNextToken())
        steps = ReadSteps(fields.GetNextToken(), steps);
    if (fields.IsNextToken()) {
        const double value = DblLoad(fields.GetNextToken(), ratio);
        if (std::isfinite(value) && value > 0 && value < 100)
            ratio = value;
    }
    return true;
}

bool CVxBanisterStairsPayload::DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* c, CVxDPoint* /*points*/,
                                        bool fill)
{
    if (!part || !dc || !c)
        return false;
    if (!fill)
        dc->SelectBrush(CVxDC::brushNull, 0);
    dc->Polygon(c, 4);
    if (!fill)
        dc->SelectOldBrush();

    // One baluster per step, each as deep as the rail is wide.
    const double r = part->width > 0 ? std::clamp(part->height / part->width, 0.0, 1.0) : 0.0;
    const int n = std::max(1, steps);
    const double step = n > 1 ? (1 - r) / (n - 1) : 0;
    dc->SelectPen(CVxDC::penSolid, 1, dc->GetCurrentPenColor());
    for (int i = 0; i < n; ++i) {
        const double from = i * step + r / 4;
        VxPOINT q[4];
        GetPointInRectLRc(q, c, from, 0.25, from + r / 2, 0.75);
        GMDrawEllipse(*dc, q);
    }
    dc->SelectOldPen();
    return true;
}

namespace {

// The quadrilateral of a front view (width across, height upwards) fitted
// into a w by h box at (x, y), corners in the order of the plan's.
void FitFront(VxPOINT* c, double objWidth, double objHeight, int x, int y, int w, int h)
{
    const double zoom = std::min(w / std::max(objWidth, 1e-9), h / std::max(objHeight, 1e-9));
    const int fw = std::max(1, static_cast<int>(objWidth * zoom));
    const int fh = std::max(1, static_cast<int>(objHeight * zoom));
    const int left = x + (w - fw) / 2;
    const int top = y + (h - fh) / 2;
    c[0] = {left, top};
    c[1] = {left + fw, top};
    c[2] = {left + fw, top + fh};
    c[3] = {left, top + fh};
}

// The plan above, the front below, both at one scale: what the settings of
// a flight change shows in one of the two.
bool DrawStairsPreview(CVxPartPayload& payload, CVxPart* part, CVxDC* dc, int width, int height)
{
    if (!part || !dc || width < 8 || height < 8 || !(part->width > 0) || !(part->height > 0) ||
        !(part->zHeight > 0))
        return false;
    constexpr int margin = 6;
    const double gap = 0.15 * std::max(part->height, part->zHeight);
    const double total = part->height + gap + part->zHeight;
    const double zoom =
        std::min((width - 2 * margin) / part->width, (height - 2 * margin) / std::max(total, 1e-9));
    const int planH = static_cast<int>(part->height * zoom);
    const int frontH = static_cast<int>(part->zHeight * zoom);
    const int top = (height - static_cast<int>(total * zoom)) / 2;
    dc->SelectPen(CVxDC::penSolid, 1, 0x000000);
    dc->SelectBrush(CVxDC::brushSolid,
                    VX_IsColorOff(part->appearFill.main.color) ? 0xFFFFFF : part->appearFill.main.color);
    VxPOINT c[4];
    FitFront(c, part->width, part->height, margin, top, width - 2 * margin, planH);
    payload.DrawPart(part, dc, c, nullptr, true);
    FitFront(c, part->width, part->zHeight, margin, height - top - frontH, width - 2 * margin, frontH);
    if (!payload.DrawPartSide(part, dc, OBJ_SIDE_FRONT, 1, c, true, false, 0))
        dc->Polygon(c, 4);
    dc->SelectOldBrush();
    dc->SelectOldPen();
    return true;
}

} // namespace

bool CVxStairsPayload::DrawObjectPreview(CVxPart* part, CVxDC* dc, int width, int height)
{
    return DrawStairsPreview(*this, part, dc, width, height);
}

bool CVxBanisterStairsPayload::DrawObjectPreview(CVxPart* part, CVxDC* dc, int width, int height)
{
    return DrawStairsPreview(*this, part, dc, width, height);
}

bool CVxBanisterStairsPayload::DrawPartSide(CVxPart* part, CVxDC* dc, EVxObjSide side, int /*units*/,
                                            VxPOINT* c, bool /*front*/, bool /*outline*/, int /*flags*/)
{
    if (!part || !dc || !c || !(part->width > 0))
        return false;
    // The round treads at their heights, as the scene builds them.
    const int n = std::max(1, steps);
    const double r = std::clamp(part->height / part->width, 0.0, 1.0);
    const double along = n > 1 ? (1 - r) / (n - 1) : 0;
    const double thick = std::clamp(ratio, minRatio, maxRatio);
    const double rise = 1.0 / (n - 1 + thick);
    const bool lengthwise = side == OBJ_SIDE_FRONT || side == OBJ_SIDE_BACK;
    for (int i = 0; i < n; ++i) {
        double u1 = lengthwise ? i * along + r / 4 : 0.25;
        double u2 = lengthwise ? u1 + r / 2 : 0.75;
        if (side == OBJ_SIDE_BACK) {
            u1 = 1 - u1;
            u2 = 1 - u2;
        }
        VxPOINT q[4];
        GetPointInRectLRc(q, c, u1, 1 - i * rise - thick * rise, u2, 1 - i * rise);
        dc->Polygon(q, 4);
    }
    if (n > 1) {
        // The spine from the floor up to the last tread.
        double from = r / 2;
        double to = r / 2 + (n - 1) * along;
        if (!lengthwise)
            from = to = 0.5;
        else if (side == OBJ_SIDE_BACK) {
            from = 1 - from;
            to = 1 - to;
        }
        VxPOINT a, b;
        GetPointInRectL(a, c, from, 1.0);
        GetPointInRectL(b, c, to, 1 - (n - 1) * rise);
        dc->Line(a, b);
    }
    return true;
}
