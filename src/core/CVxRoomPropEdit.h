#pragma once
// A room's name, surfaces and mouldings as the room dialogue edits them, and
// the rooms of the current floor as the room list shows them. Rooms are
// faces of the floor plan, found anew at every rebuild; what the user gives
// them is kept in the floor's plan definition, so a change goes there and
// the plan is rebuilt. Cancel puts the definition back exactly, Commit makes
// the change one undo step.

#include "CVxAppearance.h"
#include "CVxDecorativeMolding.h"
#include "CVxFloorPlanDef.h"
#include "CVxPart.h"
#include "CVxStringW.h"

#include <vector>

class CVxAppCore;

struct SVxRoomPropValues
{
    CVxStringW name;
    CVxAppearance floor;
    CVxAppearance ceiling;
    CVxAppearance walls;
    CVxDecorativeMolding baseMolding;
    CVxDecorativeMolding crownMolding;

    bool operator==(const SVxRoomPropValues&) const = default;
};

// One row of the room list.
struct SVxRoomRow
{
    int region = -1;
    // The room's name, or "Room" and its number.
    CVxStringW name;
    bool named = false;
    // Floor area and perimeter along the wall faces in the statistical
    // unit, and their texts with the unit.
    double area = 0;
    double perimeter = 0;
    CVxStringW areaText;
    CVxStringW perimeterText;
};

class CVxRoomPropEdit
{
public:
    static std::vector<SVxRoomRow> ListRooms(CVxAppCore& core);
    // The sum of the rooms' areas with its unit.
    static CVxStringW TotalAreaText(CVxAppCore& core);

    // Room `region` of the current floor's plan; false for none.
    bool Begin(CVxAppCore& core, int region);
    bool IsActive() const { return m_core != nullptr; }
    const SVxRoomPropValues& GetValues() const { return m_initial; }
    int GetProjectUnit() const { return m_unit; }
    // The figures of the room, as lines of text.
    const CVxStringW& GetInfoText() const { return m_info; }

    void Preview(const SVxRoomPropValues& edited);
    void Cancel();
    // False when nothing changed.
    bool Commit(const SVxRoomPropValues& edited);

private:
    void ApplyToLive(const SVxRoomPropValues& edited);
    void Restore();
    void Refresh();

    CVxAppCore* m_core = nullptr;
    int m_region = -1;
    int m_unit = 1;
    CVxFloorPlanDef m_originalDef;
    std::vector<CVxPart> m_originalObjects;
    bool m_wasModified = false;
    bool m_previewed = false;
    SVxRoomPropValues m_initial;
    CVxStringW m_info;
};
