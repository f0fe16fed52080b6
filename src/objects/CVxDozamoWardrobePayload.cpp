#include "CVxDozamoWardrobePayload.h"

#include "CVxDC.h"
#include "CVxPart.h"
#include "CVxStringTokenizer.h"
#include "VxColorWord.h"
#include "VxPointInRect.h"

#include <algorithm>

namespace {

// The sliding doors run in two tracks along the front.
constexpr double kDoorTrackDepth = CVxDozamoWardrobePayload::trackDepth;
constexpr double kBoard = 0.02;

int ReadInt(const CVxStringW& field, int before)
{
    CVxStringW text = field;
    return text.Trim().ToIntDef(before);
}

void AddBoard(std::vector<CVxDozamoWardrobePayload::SubItem>& list, double z)
{
    list.push_back({CVxDozamoWardrobePayload::exBoard, 0, 0, z, 1, 1 - kDoorTrackDepth, z + kBoard, 0});
}

void AddShelves(std::vector<CVxDozamoWardrobePayload::SubItem>& list, double from, double to, int count)
{
    for (int i = 0; i < count; ++i)
        AddBoard(list, from + (to - from) * i / std::max(1, count));
}

void AddRail(std::vector<CVxDozamoWardrobePayload::SubItem>& list, double z)
{
    list.push_back({CVxDozamoWardrobePayload::exRail, 0.02, 0.45, z, 0.98, 0.5, z + 0.02, 0});
}

void AddDrawers(std::vector<CVxDozamoWardrobePayload::SubItem>& list, double from, double to, int count)
{
    const double h = (to - from) / std::max(1, count);
    for (int i = 0; i < count; ++i)
        list.push_back({CVxDozamoWardrobePayload::exDrawer, 0.03, 0.05, from + h * i, 0.97,
                        1 - kDoorTrackDepth - 0.02, from + h * (i + 1) - 0.01, 0});
}

} // namespace

CVxDozamoWardrobePayload::CVxDozamoWardrobePayload()
{
    ResizeVectorsWithDefaults();
    if (interiors.size() >= 2)
        interiors[1] = exEndRailRight;
}

CVxStringW CVxDozamoWardrobePayload::SaveToString() const
{
    CVxStringW text = CVxStringW().sprintf(L"%d|%d|", doors, panels);
    for (size_t i = 0; i < interiors.size(); ++i) {
        if (i > 0)
            text += L';';
        text += CVxStringW().sprintf(L"%d", interiors[i]);
    }
    text += L'|';
    for (size_t i = 0; i < appearances.size(); ++i) {
        if (i > 0)
            text += L'|';
        text += appearances[i].SaveToString(nullptr);
    }
    return text;
}

bool CVxDozamoWardrobePayload::LoadFromString(const CVxStringW& text)
{
    CVxStringTokenizer fields(text, L'|');
    if (fields.IsNextToken())
        doors = std::clamp(ReadInt(fields.GetNextToken(), doors), 1, maxDoors);
    if (fields.IsNextToken())
        panels = std::clamp(ReadInt(fields.GetNextToken(), panels), 1, maxPanels);
    if (fields.IsNextToken()) {
        CVxStringTokenizer list(fields.GetNextToken(), L';');
        std::vector<int> read;
        size_t index = 0;
        while (list.IsNextToken() && read.size() < static_cast<size_t>(maxDoors)) {
            const int before = index < interiors.size() ? interiors[index] : exRailAndShelf;
            const int value = ReadInt(list.GetNextToken(), before);
            read.push_back(value >= 0 && value < exInteriorCount ? value : before);
            ++index;
        }
        interiors = read;
    }
    // Each appearance is a run of its own tokens; the last may lack its
    // empty tail.
    std::vector<CVxStringW> tokens = fields.GetTokenList();
    const size_t most = static_cast<size_t>(maxDoors * maxPanels);
    std::vector<CVxAppearance> read;
    for (size_t at = 0; at < tokens.size() && read.size() < most; at += CVxAppearance::stringTokenCount) {
        CVxStringW one;
        const size_t end = std::min(tokens.size(), at + CVxAppearance::stringTokenCount);
        for (size_t k = at; k < end; ++k) {
            if (k > at)
                one += L'|';
            one += tokens[k];
        }
        CVxAppearance appearance;
        appearance.LoadFromString(one, nullptr);
        read.push_back(appearance);
    }
    if (!read.empty())
        appearances = read;
    ResizeVectorsWithDefaults();
    return true;
}

void CVxDozamoWardrobePayload::ResizeVectorsWithDefaults()
{
    doors = std::clamp(doors, 1, maxDoors);
    panels = std::clamp(panels, 1, maxPanels);
    interiors.resize(static_cast<size_t>(doors), exRailAndShelf);
    appearances.resize(static_cast<size_t>(doors * panels), CVxAppearance(defaultColor));
}

bool CVxDozamoWardrobePayload::AllowInteriorAtDoor(int interior, int door) const
{
    if (interior > 15)
        return true;
    if (interior == exEmpty)
        return false;
    if (interior >= exEndShelvesLeft)
        return interior % 2 == 1 ? door == doors - 1 : door == 0;
    return true;
}

void CVxDozamoWardrobePayload::GetInteriorSubGeometry(std::vector<SubItem>& list, int interior)
{
    // The column's carcass: bottom and top boards.
    AddBoard(list, 0);
    AddBoard(list, 1 - kBoard);
    switch (interior) {
    case exShelves:
    case exEndShelvesLeft:
    case exEndShelvesRight:
        AddShelves(list, 0.2, 0.95, 5);
        break;
    case exRailAndShelf:
    case exEndRailLeft:
    case exEndRailRight:
        AddBoard(list, 0.82);
        AddRail(list, 0.76);
        break;
    case exDoubleRail:
        AddBoard(list, 0.82);
        AddRail(list, 0.76);
        AddRail(list, 0.38);
        break;
    case exDrawersAndShelves:
    case exEndDrawersLeft:
    case exEndDrawersRight:
        AddDrawers(list, 0.02, 0.4, 3);
        AddShelves(list, 0.4, 0.95, 3);
        break;
    case exRailAndDrawers:
        AddDrawers(list, 0.02, 0.3, 2);
        AddBoard(list, 0.82);
        AddRail(list, 0.76);
        break;
    case exEndShoesLeft:
    case exEndShoesRight:
        AddShelves(list, 0.08, 0.5, 6);
        AddShelves(list, 0.5, 0.95, 3);
        break;
    case exLowRail:
        AddBoard(list, 0.55);
        AddRail(list, 0.5);
        break;
    case exTallShelves:
        AddShelves(list, 0.1, 0.95, 8);
        break;
    default:
        break;
    }
}

void CVxDozamoWardrobePayload::GetSubGeometry(std::vector<SubItem>& list) const
{
    const int count = std::max(1, doors);
    for (int door = 0; door < count; ++door) {
        std::vector<SubItem> items;
        const int interior = door < static_cast<int>(interiors.size()) ? interiors[static_cast<size_t>(door)]
                                                                       : static_cast<int>(exRailAndShelf);
        GetInteriorSubGeometry(items, interior);
        // The doors slide in two tracks, every other one in front.
        const double track = door % 2 == 0 ? 1 - kDoorTrackDepth / 2 : 1 - kDoorTrackDepth;
        for (int p = 0; p < std::max(1, panels); ++p) {
            const double z1 = static_cast<double>(p) / panels;
            const double z2 = static_cast<double>(p + 1) / panels;
            items.push_back({exDoorPanel, 0, track, z1, 1, track + kDoorTrackDepth / 2, z2, 0});
        }
        for (SubItem item : items) {
            if (count > 1) {
                item.x1 = (door + item.x1) / count;
                item.x2 = (door + item.x2) / count;
            }
            item.door = door;
            list.push_back(item);
        }
    }
}

bool CVxDozamoWardrobePayload::DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* c, CVxDPoint* /*points*/,
                                        bool /*fill*/)
{
    if (!part || !dc || !c)
        return false;
    dc->Polygon(c, 4);
    std::vector<SubItem> items;
    GetSubGeometry(items);
    for (const SubItem& item : items) {
        // From above: rails as a line across the column, door panels as the
        // strips of their track; boards and drawers lie under the top.
        VxPOINT q[4];
        if (item.kind == exRail) {
            VxPOINT a, b;
            GetPointInRectL(a, c, item.x1, (item.y1 + item.y2) / 2);
            GetPointInRectL(b, c, item.x2, (item.y1 + item.y2) / 2);
            dc->Line(a, b);
        } else if (item.kind == exDoorPanel && item.z1 == 0) {
            GetPointInRectLRc(q, c, item.x1, item.y1, item.x2, item.y2);
            dc->Polygon(q, 4);
        }
    }
    return true;
}

bool CVxDozamoWardrobePayload::DrawPartSide(CVxPart* part, CVxDC* dc, EVxObjSide side, int /*units*/,
                                            VxPOINT* c, bool /*front*/, bool /*outline*/, int /*flags*/)
{
    if (!part || !dc || !c)
        return false;
    dc->Polygon(c, 4);
    if (side != OBJ_SIDE_FRONT)
        return true;
    // The front: every panel in its own surface, over the whole height.
    std::vector<SubItem> items;
    GetSubGeometry(items);
    size_t panel = 0;
    for (const SubItem& item : items) {
        if (item.kind != exDoorPanel)
            continue;
        const unsigned colour =
            panel < appearances.size() ? appearances[panel].GetColor() : static_cast<unsigned>(defaultColor);
        ++panel;
        VxPOINT q[4];
        // The side view's depth runs downwards: height 1 is the top.
        GetPointInRectLRc(q, c, item.x1, 1 - item.z2, item.x2, 1 - item.z1);
        dc->SelectBrush(CVxDC::brushSolid, VX_IsColorOff(colour) ? defaultColor : colour);
        dc->Polygon(q, 4);
        dc->SelectOldBrush();
    }
    return true;
}

void CVxDozamoWardrobePayload::DrawInteriorSide(CVxDC* dc, const VxPOINT* c) const
{
    if (!dc || !c)
        return;
    std::vector<SubItem> items;
    GetSubGeometry(items);
    const int count = std::max(1, doors);
    for (int k = 1; k < count; ++k) {
        VxPOINT a, b;
        GetPointInRectL(a, c, static_cast<double>(k) / count, 0.0);
        GetPointInRectL(b, c, static_cast<double>(k) / count, 1.0);
        dc->Line(a, b);
    }
    for (const SubItem& item : items) {
        if (item.kind == exDoorPanel)
            continue;
        // The front view's depth runs downwards: height 1 is the top.
        VxPOINT q[4];
        GetPointInRectLRc(q, c, item.x1, 1 - item.z2, item.x2, 1 - item.z1);
        dc->Polygon(q, 4);
        if (item.kind == exDrawer) {
            // A handle in the middle of the drawer's front.
            const double mid = (item.x1 + item.x2) / 2;
            const double w = (item.x2 - item.x1) / 6;
            const double v = 1 - (item.z1 + item.z2) / 2;
            VxPOINT a, b;
            GetPointInRectL(a, c, mid - w, v);
            GetPointInRectL(b, c, mid + w, v);
            dc->Line(a, b);
        }
    }
}

bool CVxDozamoWardrobePayload::DrawObjectPreviewWithSelection(CVxPart* part, CVxDC* dc, int width, int height,
                                                              int selected)
{
    if (!part || !dc || width < 8 || height < 8 || !(part->width > 0) || !(part->zHeight > 0))
        return false;
    constexpr int margin = 6;
    const double zoom = std::min((width - 2 * margin) / part->width, (height - 2 * margin) / part->zHeight);
    const int w = std::max(1, static_cast<int>(part->width * zoom));
    const int h = std::max(1, static_cast<int>(part->zHeight * zoom));
    const int left = (width - w) / 2;
    const int top = (height - h) / 2;
    VxPOINT c[4] = {{left, top}, {left + w, top}, {left + w, top + h}, {left, top + h}};
    const unsigned body = VX_IsColorOff(part->appearFill.main.color) ? 0xFFFFFF : part->appearFill.main.color;
    dc->SelectPen(CVxDC::penSolid, 1, 0x000000);
    dc->SelectBrush(CVxDC::brushSolid, body);
    dc->Polygon(c, 4);
    DrawInteriorSide(dc, c);
    dc->SelectOldBrush();
    // Each door's panels as a strip under the carcass, in their surfaces.
    const int count = std::max(1, doors);
    const int per = std::max(1, panels);
    const int strip = std::max(3, margin - 2);
    for (int door = 0; door < count; ++door)
        for (int p = 0; p < per; ++p) {
            const size_t index = static_cast<size_t>(door * per + p);
            const unsigned colour = index < appearances.size() ? appearances[index].GetColor()
                                                               : static_cast<unsigned>(defaultColor);
            VxPOINT q[4];
            GetPointInRectLRc(q, c, static_cast<double>(door) / count, 1 - static_cast<double>(p + 1) / per,
                              static_cast<double>(door + 1) / count, 1 - static_cast<double>(p) / per);
            // Only a sliver at the door's outer edge: the interior stays to see.
            const int x = q[0].x;
            VxPOINT band[4] = {{x, q[0].y}, {x + strip, q[0].y}, {x + strip, q[1].y}, {x, q[1].y}};
            dc->SelectBrush(CVxDC::brushSolid,
                            VX_IsColorOff(colour) ? static_cast<unsigned>(defaultColor) : colour);
            dc->Polygon(band, 4);
            dc->SelectOldBrush();
        }
    if (selected >= 0 && selected < count) {
        VxPOINT q[4];
        GetPointInRectLRc(q, c, static_cast<double>(selected) / count, 0.0,
                          static_cast<double>(selected + 1) / count, 1.0);
        dc->SelectPen(CVxDC::penSolid, 3, VX_RGB(0, 120, 215));
        dc->SelectBrush(CVxDC::brushNull, 0);
        dc->Polygon(q, 4);
        dc->SelectOldBrush();
        dc->SelectOldPen();
    }
    dc->SelectOldPen();
    return true;
}

bool CVxDozamoWardrobePayload::DrawObjectPreview(CVxPart* part, CVxDC* dc, int width, int height)
{
    return DrawObjectPreviewWithSelection(part, dc, width, height, -1);
}
