#include "CVxStairsPayload.h"

#include "CVxDC.h"
#include "CVxPart.h"
#include "CVxStringTokenizer.h"
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
    if (!part || !dc || !c || (part->subType != 0 && part->subType != 1))
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
