#include "CVxWindowSubTypes.h"

#include <algorithm>
#include <cmath>

namespace {

using Items = std::vector<CVxSubItem>;

void Bar(Items& items, double x1, double y1, double x2, double y2)
{
    items.emplace_back(x1, y1, x2, y2, true);
}

void Mark(Items& items, double x1, double y1, double x2, double y2)
{
    items.emplace_back(x1, y1, x2, y2, false);
}

void Box(Items& items, double l, double t, double r, double b, bool frame)
{
    items.emplace_back(l, t, r, t, frame);
    items.emplace_back(r, t, r, b, frame);
    items.emplace_back(r, b, l, b, frame);
    items.emplace_back(l, b, l, t, frame);
}

// The opening mark of a sash in elevation: two lines from the corners of the
// opening side meeting at the middle of the hinged side.
enum EHinge
{
    hingeLeft,
    hingeRight,
    hingeTop,
    hingeBottom
};

void Opening(Items& items, double l, double t, double r, double b, EHinge hinge)
{
    const double mx = (l + r) / 2;
    const double my = (t + b) / 2;
    switch (hinge) {
    case hingeLeft:
        Mark(items, r, t, l, my);
        Mark(items, l, my, r, b);
        break;
    case hingeRight:
        Mark(items, l, t, r, my);
        Mark(items, r, my, l, b);
        break;
    case hingeTop:
        Mark(items, l, b, mx, t);
        Mark(items, mx, t, r, b);
        break;
    case hingeBottom:
        Mark(items, l, t, mx, b);
        Mark(items, mx, b, r, t);
        break;
    }
}

// A grid of glazing bars inside a light.
void Glazing(Items& items, double l, double t, double r, double b, int across, int down)
{
    for (int i = 1; i < across; ++i) {
        const double x = l + (r - l) * i / across;
        Mark(items, x, t, x, b);
    }
    for (int j = 1; j < down; ++j) {
        const double y = t + (b - t) * j / down;
        Mark(items, l, y, r, y);
    }
}

// A round head light of a fixed frame: a half circle as straight pieces
// over the whole width, springing at height spring.
void ArchedHead(Items& items, double spring, bool frame)
{
    constexpr int pieces = 8;
    constexpr double pi = 3.14159265358979323846;
    double px = 0;
    double py = spring;
    for (int i = 1; i <= pieces; ++i) {
        const double a = pi * i / pieces;
        const double x = 0.5 - 0.5 * std::cos(a);
        const double y = spring - spring * std::sin(a);
        items.emplace_back(px, py, x, y, frame);
        px = x;
        py = y;
    }
}

} // namespace

CVxWindowSubTypes& CVxWindowSubTypes::GetInstance()
{
    static CVxWindowSubTypes instance;
    return instance;
}

CVxWindowSubTypes::CVxWindowSubTypes()
{
    BuildWindows();
    BuildDoors();
}

void CVxWindowSubTypes::BuildWindows()
{
    m_windows.assign(windowModelCount, Items());
    for (Items& model : m_windows)
        Box(model, 0, 0, 1, 1, true);

    // 0: fixed light. Nothing but the frame.
    // 1, 2: side-hung casement, hinged left or right.
    Opening(m_windows[1], 0, 0, 1, 1, hingeLeft);
    Opening(m_windows[2], 0, 0, 1, 1, hingeRight);
    // 3: top-hung awning; 4: bottom-hung hopper.
    Opening(m_windows[3], 0, 0, 1, 1, hingeTop);
    Opening(m_windows[4], 0, 0, 1, 1, hingeBottom);
    // 5, 6: tilt and turn, turning on the left or the right, tilting in.
    Opening(m_windows[5], 0, 0, 1, 1, hingeLeft);
    Opening(m_windows[5], 0, 0, 1, 1, hingeBottom);
    Opening(m_windows[6], 0, 0, 1, 1, hingeRight);
    Opening(m_windows[6], 0, 0, 1, 1, hingeBottom);
    // 7: two lights on a mullion, both casements opening outwards.
    Bar(m_windows[7], 0.5, 0, 0.5, 1);
    Opening(m_windows[7], 0, 0, 0.5, 1, hingeLeft);
    Opening(m_windows[7], 0.5, 0, 1, 1, hingeRight);
    // 8: French casement pair meeting without a mullion.
    Mark(m_windows[8], 0.5, 0, 0.5, 1);
    Opening(m_windows[8], 0, 0, 0.5, 1, hingeLeft);
    Opening(m_windows[8], 0.5, 0, 1, 1, hingeRight);
    // 9: three lights, the middle one fixed.
    Bar(m_windows[9], 1.0 / 3, 0, 1.0 / 3, 1);
    Bar(m_windows[9], 2.0 / 3, 0, 2.0 / 3, 1);
    Opening(m_windows[9], 0, 0, 1.0 / 3, 1, hingeLeft);
    Opening(m_windows[9], 2.0 / 3, 0, 1, 1, hingeRight);
    // 10: double-hung sash, meeting rail at half height.
    Bar(m_windows[10], 0, 0.5, 1, 0.5);
    // 11: Georgian sash, six over six.
    Bar(m_windows[11], 0, 0.5, 1, 0.5);
    Glazing(m_windows[11], 0, 0, 1, 0.5, 3, 2);
    Glazing(m_windows[11], 0, 0.5, 1, 1, 3, 2);
    // 12: Victorian sash, two over two.
    Bar(m_windows[12], 0, 0.5, 1, 0.5);
    Glazing(m_windows[12], 0, 0, 1, 0.5, 2, 1);
    Glazing(m_windows[12], 0, 0.5, 1, 1, 2, 1);
    // 13: horizontal slider of two panes; the overlap shows as a second stile.
    Bar(m_windows[13], 0.5, 0, 0.5, 1);
    Mark(m_windows[13], 0.52, 0, 0.52, 1);
    Mark(m_windows[13], 0.62, 0.5, 0.82, 0.5);
    Mark(m_windows[13], 0.82, 0.5, 0.77, 0.46);
    Mark(m_windows[13], 0.82, 0.5, 0.77, 0.54);
    // 14: three-part slider, middle fixed.
    Bar(m_windows[14], 1.0 / 3, 0, 1.0 / 3, 1);
    Bar(m_windows[14], 2.0 / 3, 0, 2.0 / 3, 1);
    Mark(m_windows[14], 0.35, 0, 0.35, 1);
    Mark(m_windows[14], 0.65, 0, 0.65, 1);
    // 15: fixed light under a transom light.
    Bar(m_windows[15], 0, 0.25, 1, 0.25);
    // 16: casement with a top-hung fanlight over it.
    Bar(m_windows[16], 0, 0.3, 1, 0.3);
    Opening(m_windows[16], 0, 0, 1, 0.3, hingeTop);
    Opening(m_windows[16], 0, 0.3, 1, 1, hingeLeft);
    // 17: two casements under a transom.
    Bar(m_windows[17], 0, 0.3, 1, 0.3);
    Bar(m_windows[17], 0.5, 0.3, 0.5, 1);
    Opening(m_windows[17], 0, 0.3, 0.5, 1, hingeLeft);
    Opening(m_windows[17], 0.5, 0.3, 1, 1, hingeRight);
    // 18: cross window: mullion and a transom at a third of the height.
    Bar(m_windows[18], 0.5, 0, 0.5, 1);
    Bar(m_windows[18], 0, 1.0 / 3, 1, 1.0 / 3);
    // 19: fixed grid of three by three lights.
    Glazing(m_windows[19], 0, 0, 1, 1, 3, 3);
    // 20: fixed grid of four by two lights.
    Glazing(m_windows[20], 0, 0, 1, 1, 4, 2);
    // 21: horizontal centre-pivot: the axis, opening both ways.
    Mark(m_windows[21], 0, 0.5, 1, 0.5);
    Opening(m_windows[21], 0, 0, 1, 0.5, hingeBottom);
    Opening(m_windows[21], 0, 0.5, 1, 1, hingeTop);
    // 22: louvres.
    for (int i = 1; i < 6; ++i)
        Mark(m_windows[22], 0, i / 6.0, 1, i / 6.0);
    // 23: picture window with two narrow casement flankers.
    Bar(m_windows[23], 0.25, 0, 0.25, 1);
    Bar(m_windows[23], 0.75, 0, 0.75, 1);
    Opening(m_windows[23], 0, 0, 0.25, 1, hingeLeft);
    Opening(m_windows[23], 0.75, 0, 1, 1, hingeRight);
    // 24: ribbon window of four lights.
    Bar(m_windows[24], 0.25, 0, 0.25, 1);
    Bar(m_windows[24], 0.5, 0, 0.5, 1);
    Bar(m_windows[24], 0.75, 0, 0.75, 1);
    // 25: round-headed light in a square frame.
    ArchedHead(m_windows[25], 0.5, true);
    Mark(m_windows[25], 0.5, 0, 0.5, 1);
    // 26: leaded diamond lattice.
    for (int i = -2; i <= 2; ++i) {
        const double o = i / 3.0;
        Mark(m_windows[26], std::max(0.0, o), std::max(0.0, -o), std::min(1.0, 1 + o), std::min(1.0, 1 - o));
        Mark(m_windows[26], std::max(0.0, o), std::min(1.0, 1 + o), std::min(1.0, 1 + o), std::max(0.0, o));
    }
}

void CVxWindowSubTypes::BuildDoors()
{
    m_doors.assign(doorModelCount, CVxDoorModel());
    for (CVxDoorModel& model : m_doors)
        Box(model.items, 0, 0, 1, 1, true);

    auto panel = [this](int model, double l, double t, double r, double b) {
        Box(m_doors[model].items, l, t, r, b, false);
    };
    auto glass = [this](int model, double l, double t, double r, double b) {
        Box(m_doors[model].items, l, t, r, b, false);
        m_doors[model].panes.emplace_back(l, t, r, b);
    };

    // 0: flush door.
    // 1: two panels, lock rail at mid height.
    panel(1, 0.15, 0.07, 0.85, 0.45);
    panel(1, 0.15, 0.55, 0.85, 0.93);
    // 2: four panels.
    for (int col = 0; col < 2; ++col) {
        const double l = col == 0 ? 0.12 : 0.56;
        panel(2, l, 0.07, l + 0.32, 0.45);
        panel(2, l, 0.55, l + 0.32, 0.93);
    }
    // 3: six-panel colonial door: short top panels, tall middle and bottom.
    for (int col = 0; col < 2; ++col) {
        const double l = col == 0 ? 0.12 : 0.56;
        panel(3, l, 0.06, l + 0.32, 0.2);
        panel(3, l, 0.25, l + 0.32, 0.58);
        panel(3, l, 0.63, l + 0.32, 0.94);
    }
    // 4: Shaker door of five stacked panels.
    for (int row = 0; row < 5; ++row)
        panel(4, 0.15, 0.06 + row * 0.18, 0.85, 0.2 + row * 0.18);
    // 5: half-glazed: glass above the lock rail, a panel below.
    glass(5, 0.15, 0.07, 0.85, 0.45);
    panel(5, 0.15, 0.55, 0.85, 0.93);
    // 6: single French door: one light with glazing bars.
    glass(6, 0.12, 0.06, 0.88, 0.86);
    Glazing(m_doors[6].items, 0.12, 0.06, 0.88, 0.86, 2, 4);
    // 7: fifteen-lite door.
    glass(7, 0.12, 0.06, 0.88, 0.92);
    Glazing(m_doors[7].items, 0.12, 0.06, 0.88, 0.92, 3, 5);
    // 8: modern flush door with a narrow vision strip by the hinges.
    glass(8, 0.18, 0.1, 0.3, 0.9);
    // 9: three horizontal glass strips.
    for (int row = 0; row < 3; ++row)
        glass(9, 0.2, 0.15 + row * 0.25, 0.8, 0.22 + row * 0.25);
    // 10: cellar or pantry door with a small square light.
    glass(10, 0.32, 0.12, 0.68, 0.32);
    panel(10, 0.15, 0.45, 0.85, 0.92);
    // 11: arched panel door.
    panel(11, 0.15, 0.55, 0.85, 0.93);
    {
        Items& items = m_doors[11].items;
        Mark(items, 0.15, 0.45, 0.85, 0.45);
        Mark(items, 0.15, 0.45, 0.15, 0.2);
        Mark(items, 0.85, 0.45, 0.85, 0.2);
        Mark(items, 0.15, 0.2, 0.3, 0.1);
        Mark(items, 0.3, 0.1, 0.5, 0.07);
        Mark(items, 0.5, 0.07, 0.7, 0.1);
        Mark(items, 0.7, 0.1, 0.85, 0.2);
    }
    // 12: ledged and braced cottage door: boards, three ledges, two braces.
    {
        Items& items = m_doors[12].items;
        for (int i = 1; i < 6; ++i)
            Mark(items, i / 6.0, 0, i / 6.0, 1);
        Bar(items, 0, 0.12, 1, 0.12);
        Bar(items, 0, 0.5, 1, 0.5);
        Bar(items, 0, 0.88, 1, 0.88);
        Mark(items, 0, 0.88, 1, 0.5);
        Mark(items, 0, 0.5, 1, 0.12);
    }
    // 13: stable door, split at half height.
    Bar(m_doors[13].items, 0, 0.5, 1, 0.5);
    panel(13, 0.15, 0.08, 0.85, 0.42);
    panel(13, 0.15, 0.58, 0.85, 0.92);
    // 14: louvred door.
    for (int i = 1; i < 16; ++i)
        Mark(m_doors[14].items, 0.12, 0.05 + i * 0.056, 0.88, 0.05 + i * 0.056);
    Box(m_doors[14].items, 0.12, 0.05, 0.88, 0.95, false);
    // 15: double door, two leaves of two panels each.
    Bar(m_doors[15].items, 0.5, 0, 0.5, 1);
    for (int col = 0; col < 2; ++col) {
        const double l = col == 0 ? 0.08 : 0.58;
        panel(15, l, 0.07, l + 0.34, 0.45);
        panel(15, l, 0.55, l + 0.34, 0.93);
    }
    m_doors[15].handleX = 0.45;
    // 16: double French door.
    Bar(m_doors[16].items, 0.5, 0, 0.5, 1);
    glass(16, 0.07, 0.05, 0.43, 0.87);
    glass(16, 0.57, 0.05, 0.93, 0.87);
    Glazing(m_doors[16].items, 0.07, 0.05, 0.43, 0.87, 1, 4);
    Glazing(m_doors[16].items, 0.57, 0.05, 0.93, 0.87, 1, 4);
    m_doors[16].handleX = 0.45;
    // 17: sliding patio door: two glazed panels overlapping at the middle.
    Bar(m_doors[17].items, 0.5, 0, 0.5, 1);
    Mark(m_doors[17].items, 0.52, 0, 0.52, 1);
    glass(17, 0.05, 0.04, 0.47, 0.96);
    glass(17, 0.55, 0.04, 0.95, 0.96);
    m_doors[17].handleX = 0.44;
    // 18: door with a glazed sidelight.
    Bar(m_doors[18].items, 0.75, 0, 0.75, 1);
    glass(18, 0.79, 0.05, 0.96, 0.95);
    panel(18, 0.1, 0.07, 0.65, 0.45);
    panel(18, 0.1, 0.55, 0.65, 0.93);
    m_doors[18].handleX = 0.66;
    // 19: door under a glazed transom light.
    Bar(m_doors[19].items, 0, 0.2, 1, 0.2);
    glass(19, 0.05, 0.03, 0.95, 0.17);
    panel(19, 0.15, 0.27, 0.85, 0.58);
    panel(19, 0.15, 0.65, 0.85, 0.94);
}

const std::vector<CVxSubItem>& CVxWindowSubTypes::GetWindowModel(int subType) const
{
    if (subType < 0 || subType >= windowModelCount)
        subType = 0;
    return m_windows[static_cast<size_t>(subType)];
}

const std::vector<CVxSubItem>& CVxWindowSubTypes::GetDoorModel(int subType,
                                                               std::vector<CVxGlassPaneItem>* panes) const
{
    if (subType < 0 || subType >= doorModelCount)
        subType = 0;
    const CVxDoorModel& model = m_doors[static_cast<size_t>(subType)];
    if (panes)
        *panes = model.panes;
    return model.items;
}

double CVxWindowSubTypes::GetDoorHandleX(int subType) const
{
    if (subType < 0 || subType >= doorModelCount)
        subType = 0;
    return m_doors[static_cast<size_t>(subType)].handleX;
}
